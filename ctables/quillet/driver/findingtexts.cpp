#include "driver/findingtexts.h"

#include <cstddef>

#include "driver/sentences.h"

namespace quillet {

namespace {

struct FindingRow {
    std::string_view name;
    FindingKind kind;
};

constexpr FindingRow kFindings[] = {
#define QUILLET_FINDING(code, name, kind, sentence) {name, FindingKind::kind},
#include "quillet-findings.def"
};

constexpr std::string_view kSentences[] = {
#define QUILLET_FINDING(code, name, kind, sentence) sentence,
#define QUILLET_FINDING_VARIANT(wording, sentence) sentence,
#include "quillet-findings.def"
};

std::string PartOf(std::string_view placeholder, const SentenceParts& parts) {
    if (placeholder == "command") return std::string(parts.command);
    if (placeholder == "name") return std::string(parts.name);
    if (placeholder == "other") return std::string(parts.other);
    if (placeholder == "line") return std::to_string(parts.line);
    if (placeholder == "cause") return std::to_string(parts.cause);
    return std::to_string(parts.count);
}

}  // namespace

std::string_view NameOf(FindingCode code) { return kFindings[static_cast<std::size_t>(code)].name; }

FindingKind KindOf(FindingCode code) { return kFindings[static_cast<std::size_t>(code)].kind; }

std::string SentenceOf(Wording wording, const SentenceParts& parts) {
    return FillSentence(kSentences[static_cast<std::size_t>(wording)],
                        [&parts](std::string_view name) { return PartOf(name, parts); });
}

}  // namespace quillet
