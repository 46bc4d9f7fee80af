#include "driver/hinttexts.h"

#include <cstddef>
#include <iterator>
#include <optional>

#include "driver/reasons.h"
#include "driver/sentences.h"

namespace quillet {

namespace {

struct Advice {
    std::string_view name;
    std::string_view text;
};

constexpr Advice kAdvice[] = {
#define QUILLET_ADVICE(name, advice) {name, advice},
#include "quillet-hints.def"
};

constexpr bool EveryReasonHasAdvice() {
    for (std::size_t row = 0; row < std::size(kAdvice); ++row) {
        if (row >= std::size(kReasons) || kAdvice[row].name != kReasons[row].name) return false;
    }
    return std::size(kAdvice) == std::size(kReasons);
}
static_assert(EveryReasonHasAdvice(), "a piece of advice for each reason, in their order");

constexpr std::string_view kHintSentences[] = {
#define QUILLET_HINT(wording, sentence) sentence,
#include "quillet-hints.def"
};

struct ObstacleHint {
    std::string_view obstacle;
    std::string_view sentence;
};

constexpr ObstacleHint kChartHints[] = {
#define QUILLET_CHART_HINT(obstacle, sentence) {obstacle, sentence},
#include "quillet-hints.def"
};

std::string HintPart(std::string_view placeholder, const HintParts& parts) {
    if (placeholder == "name") return std::string(parts.name);
    if (placeholder == "other") return std::string(parts.other);
    if (placeholder == "list") return std::string(parts.list);
    if (placeholder == "expression") return std::string(parts.expression);
    return std::to_string(placeholder == "line" ? parts.line : parts.count);
}

std::string FillHint(std::string_view sentence, const HintParts& parts) {
    return FillSentence(sentence,
                        [&parts](std::string_view name) { return HintPart(name, parts); });
}

}  // namespace

std::string HintSentence(HintWording wording, const HintParts& parts) {
    return FillHint(kHintSentences[static_cast<std::size_t>(wording)], parts);
}

std::string_view AdviceOn(ErrorKind kind) {
    return kAdvice[static_cast<std::size_t>(ReasonOf(kind).kind) - 1].text;
}

std::string ChartHint(std::string_view obstacle) {
    for (const ObstacleHint& hint : kChartHints) {
        const std::optional<std::string_view> name = FilledIn(hint.obstacle, obstacle);
        if (name) return FillHint(hint.sentence, {.name = *name});
    }
    return {};
}

}  // namespace quillet
