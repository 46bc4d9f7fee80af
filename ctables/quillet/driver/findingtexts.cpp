#include "driver/findingtexts.h"

#include <cstddef>

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
    std::string_view rest = kSentences[static_cast<std::size_t>(wording)];
    std::string sentence;
    while (true) {
        const std::size_t open = rest.find('{');
        sentence.append(rest.substr(0, open));
        if (open == std::string_view::npos) return sentence;
        const std::size_t close = rest.find('}', open);
        sentence += PartOf(rest.substr(open + 1, close - open - 1), parts);
        rest.remove_prefix(close + 1);
    }
}

}  // namespace quillet
