// The words of hints and of advice.
#ifndef QUILLET_DRIVER_HINTTEXTS_H
#define QUILLET_DRIVER_HINTTEXTS_H

#include <string>
#include <string_view>

#include "quillet.h"

namespace quillet {

/// All sentences about single commands that there are.
enum class HintWording {
#define QUILLET_HINT(wording, sentence) wording,
#include "quillet-hints.def"
};

/// What a sentence may name. Texts are bytes of any encoding in which ASCII is ASCII.
struct HintParts {
    std::string_view name = {};
    std::string_view other = {};
    std::string_view list = {};
    std::string_view expression = {};
    long line = 0;
    long count = 0;
};

/// The sentence of `wording` with its parts filled in.
[[nodiscard]] std::string HintSentence(HintWording wording, const HintParts& parts);

/// What helps against failures of this kind, whatever the command.
[[nodiscard]] std::string_view AdviceOn(ErrorKind kind);

/// What to take out of a chart that has no equivalent, for the reason that `obstacle` gives in
/// words; empty where there is nothing to say.
[[nodiscard]] std::string ChartHint(std::string_view obstacle);

}  // namespace quillet

#endif  // QUILLET_DRIVER_HINTTEXTS_H
