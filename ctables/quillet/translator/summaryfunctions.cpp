#include "translator/summaryfunctions.h"

#include <algorithm>
#include <array>

#include "platform/assertion.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "summaryfunctions";

using Resolver = SummaryFunction (*)(bool multipleResponse, const GlobalSettings& settings);

struct DictionaryEntry {
    std::string_view tablesName;
    SummaryFunction output;
    Resolver resolver;  // takes precedence over `output`; null for most
};

// For sets GBASE says what counts as the whole, for everything else BASE does.
SummaryFunction ResolveCountPercentBase(bool multipleResponse, const GlobalSettings& settings) {
    SummaryFunction function{"VALIDN", SummaryKind::kCases, true};
    const NodeType bAttr = settings.base;
    if (multipleResponse) {
        function.name = settings.gbase == TB_RESPONSES ? "COUNT.RESPONSES" : "COUNT";
    } else if (bAttr == TB_QUALIFIED) {
        function.name = "COUNT";
    } else if (bAttr == SP_ALL) {
        function.name = "TOTALN";
    } else {
        static_cast<void>(QUILLET_ASSERT(bAttr == TB_ANSWERING || bAttr == kNoNodeType,
                                         "bAttr == TB_ANSWERING || bAttr == 0"));
    }
    return function;
}

SummaryFunction ResolveResponsePercentBase(bool /*multipleResponse*/,
                                           const GlobalSettings& settings) {
    return {settings.gbase == TB_RESPONSES ? "RESPONSES" : "RESPONSES.COUNT",
            SummaryKind::kResponses, true};
}

constexpr SummaryKind C = SummaryKind::kCases;
constexpr SummaryKind R = SummaryKind::kResponses;
constexpr SummaryKind S = SummaryKind::kVariable;

// In this order: the first entry that matches an abbreviation wins. All percentiles of the old
// command are the one of the new.
constexpr std::array<DictionaryEntry, kSummaryFunctionCount> funcInfoDictionary = {{
    {"CASES", {"RESPONSES", R, false}, nullptr},
    {"COUNT", {"COUNT", C, false}, nullptr},
    {"CPCT", {"", C, true}, ResolveCountPercentBase},
    {"CSPCT", {"", R, true}, ResolveResponsePercentBase},
    {"MAXIMUM", {"MAXIMUM", S, false}, nullptr},
    {"MEAN", {"MEAN", S, false}, nullptr},
    {"MEDIAN", {"MEDIAN", S, false}, nullptr},
    {"MODE", {"MODE", S, false}, nullptr},
    {"MINIMUM", {"MINIMUM", S, false}, nullptr},
    {"PTILE", {"PTILE", S, false}, nullptr},
    {"RANGE", {"RANGE", S, false}, nullptr},
    {"RPCT", {"", R, true}, ResolveResponsePercentBase},
    {"RESPONSES", {"RESPONSES", R, false}, nullptr},
    {"SEMEAN", {"SEMEAN", S, false}, nullptr},
    {"SPCT", {"SUM", S, true}, nullptr},
    {"STDDEV", {"STDDEV", S, false}, nullptr},
    {"SUM", {"SUM", S, false}, nullptr},
    {"VALIDN", {"VALIDN", S, false}, nullptr},
    {"VARIANCE", {"VARIANCE", S, false}, nullptr},
    {"VPCT", {"VALIDN", S, true}, nullptr},
    {"HPTILE", {"PTILE", S, false}, nullptr},
    {"WPTILE", {"PTILE", S, false}, nullptr},
    {"RPTILE", {"PTILE", S, false}, nullptr},
    {"EPTILE", {"PTILE", S, false}, nullptr},
    {"APTILE", {"PTILE", S, false}, nullptr},
}};

constexpr bool EveryEntryHasAName() {
    return std::all_of(funcInfoDictionary.begin(), funcInfoDictionary.end(),
                       [](const DictionaryEntry& entry) {
                           return entry.resolver != nullptr || !entry.output.name.empty();
                       });
}
static_assert(EveryEntryHasAName(), "an empty name would read as \"unknown function\"");

}  // namespace

SummaryFunction LookUpSummaryFunction(std::string_view name, bool multipleResponse,
                                      const GlobalSettings& settings) {
    const auto* const pEntry = std::find_if(
        funcInfoDictionary.begin(), funcInfoDictionary.end(),
        [name](const DictionaryEntry& entry) { return MeansKeyword(name, entry.tablesName); });
    if (pEntry == funcInfoDictionary.end()) return {};
    return pEntry->resolver ? pEntry->resolver(multipleResponse, settings) : pEntry->output;
}

std::array<std::string_view, kSummaryFunctionCount> SummaryFunctionNames() {
    std::array<std::string_view, kSummaryFunctionCount> names;
    std::transform(funcInfoDictionary.begin(), funcInfoDictionary.end(), names.begin(),
                   [](const DictionaryEntry& entry) { return entry.tablesName; });
    return names;
}

}  // namespace quillet
