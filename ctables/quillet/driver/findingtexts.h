// The words of findings.
#ifndef QUILLET_DRIVER_FINDINGTEXTS_H
#define QUILLET_DRIVER_FINDINGTEXTS_H

#include <string>
#include <string_view>

#include "quillet.h"

namespace quillet {

/// All sentences that there are: that of each finding, and their variants.
enum class Wording {
#define QUILLET_FINDING(code, name, kind, sentence) code,
#define QUILLET_FINDING_VARIANT(wording, sentence) wording,
#include "quillet-findings.def"
};

/// What a sentence may name.
struct SentenceParts {
    std::string_view command = {};
    std::string_view name = {};
    std::string_view other = {};
    long line = 0;
    long cause = 0;
    long count = 0;
};

/// The sentence of `wording` with its parts filled in.
[[nodiscard]] std::string SentenceOf(Wording wording, const SentenceParts& parts);

}  // namespace quillet

#endif  // QUILLET_DRIVER_FINDINGTEXTS_H
