#include "outline/writtenfunctions.h"

#include <algorithm>
#include <array>

namespace quillet::outline {

namespace {

constexpr std::array<std::string_view, 15> kPlainFunctions = {
    "COUNT",     "MAXIMUM", "MEAN",   "MEDIAN", "MINIMUM", "MODE",   "PTILE",   "RANGE",
    "RESPONSES", "SEMEAN",  "STDDEV", "SUM",    "TOTALN",  "VALIDN", "VARIANCE"};

struct PercentageBase {
    std::string_view prefix;
    PercentOf percentOf;
};

constexpr std::array<PercentageBase, 7> kPercentageBases = {{
    {"ROWPCT.", PercentOf::kRow},
    {"COLPCT.", PercentOf::kColumn},
    {"LAYERPCT.", PercentOf::kLayer},
    {"TABLEPCT.", PercentOf::kTable},
    {"SUBTABLEPCT.", PercentOf::kSubtable},
    {"LAYERROWPCT.", PercentOf::kLayerRow},
    {"LAYERCOLPCT.", PercentOf::kLayerColumn},
}};

struct Percentage {
    std::string_view name;
    Counted counted;
    Counted against;
};

constexpr std::array<Percentage, 7> kPercentages = {{
    {"COUNT", Counted::kCases, Counted::kCases},
    {"COUNT.RESPONSES", Counted::kCases, Counted::kResponses},
    {"RESPONSES", Counted::kResponses, Counted::kResponses},
    {"RESPONSES.COUNT", Counted::kResponses, Counted::kCases},
    {"SUM", Counted::kValues, Counted::kValues},
    {"TOTALN", Counted::kAllCases, Counted::kAllCases},
    {"VALIDN", Counted::kValidCases, Counted::kValidCases},
}};

std::optional<WrittenFunction> FindPercentage(std::string_view word) {
    const auto* const pBase =
        std::find_if(kPercentageBases.begin(), kPercentageBases.end(),
                     [word](const PercentageBase& base) { return word.starts_with(base.prefix); });
    if (pBase == kPercentageBases.end()) return std::nullopt;
    const std::string_view name = word.substr(pBase->prefix.size());
    const auto* const pPercentage =
        std::find_if(kPercentages.begin(), kPercentages.end(),
                     [name](const Percentage& percentage) { return name == percentage.name; });
    if (pPercentage == kPercentages.end()) return std::nullopt;
    return WrittenFunction{name, false, pBase->percentOf, pPercentage->counted,
                           pPercentage->against};
}

std::optional<WrittenFunction> FindWeighted(std::string_view word) {
    if (std::find(kPlainFunctions.begin(), kPlainFunctions.end(), word) != kPlainFunctions.end()) {
        WrittenFunction function;
        function.key = word;
        return function;
    }
    return FindPercentage(word);
}

}  // namespace

// No function begins with a U of its own.
std::optional<WrittenFunction> FindWrittenFunction(std::string_view word) {
    const bool isUnweighted = word.starts_with('U');
    std::optional<WrittenFunction> function = FindWeighted(word.substr(isUnweighted ? 1 : 0));
    if (function) function->isUnweighted = isUnweighted;
    return function;
}

}  // namespace quillet::outline
