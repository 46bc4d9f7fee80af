// The conversion has such a dictionary as well; this one is its own, so that a mistake in the one
// shows in the other.
#include "outline/accountfunctions.h"

#include <algorithm>
#include <iterator>

#include "outline/accountbuilder.h"
#include "platform/multibyte.h"

namespace quillet::outline {

namespace {

struct FunctionNames {
    std::string_view asked;
    std::string_view written;
    FunctionKind kind;
};

// The percentages of cases and responses depend on settings.
constexpr FunctionNames kAskedNames[] = {
    {"CASES", "RESPONSES", FunctionKind::kResponses},
    {"COUNT", "COUNT", FunctionKind::kCases},
    {"CPCT", "", FunctionKind::kCases},
    {"CSPCT", "", FunctionKind::kResponses},
    {"RPCT", "", FunctionKind::kResponses},
    {"RESPONSES", "RESPONSES", FunctionKind::kResponses},
    {"SPCT", "SUM", FunctionKind::kValues},
    {"VPCT", "VALIDN", FunctionKind::kValues},
    {"APTILE", "PTILE", FunctionKind::kValues},
    {"EPTILE", "PTILE", FunctionKind::kValues},
    {"HPTILE", "PTILE", FunctionKind::kValues},
    {"RPTILE", "PTILE", FunctionKind::kValues},
    {"WPTILE", "PTILE", FunctionKind::kValues},
};

constexpr std::string_view kOfValues[] = {"MAXIMUM", "MEAN",  "MEDIAN",  "MINIMUM",
                                          "MODE",    "PTILE", "RANGE",   "SEMEAN",
                                          "STDDEV",  "SUM",   "VARIANCE"};

[[nodiscard]] const FunctionNames* FindNames(std::string_view askedKey) {
    const auto* const pFound =
        std::find_if(std::begin(kAskedNames), std::end(kAskedNames),
                     [askedKey](const FunctionNames& one) { return one.asked == askedKey; });
    return pFound == std::end(kAskedNames) ? nullptr : pFound;
}

[[nodiscard]] std::string_view CasesKey(bool hasSet, const Settings& settings) {
    if (hasSet) return settings.groupBase == GroupBase::kResponses ? "COUNT.RESPONSES" : "COUNT";
    switch (settings.base) {
        case CaseBase::kQualified:
            return "COUNT";
        case CaseBase::kAll:
            return "TOTALN";
        case CaseBase::kAnswering:
            break;
    }
    return "VALIDN";
}

}  // namespace

FunctionKind KindOfFunction(std::string_view askedKey) {
    const FunctionNames* pNames = FindNames(askedKey);
    return pNames == nullptr ? FunctionKind::kValues : pNames->kind;
}

bool NeedsValues(std::string_view writtenKey) {
    return std::find(std::begin(kOfValues), std::end(kOfValues), writtenKey) != std::end(kOfValues);
}

bool NeedsSet(std::string_view writtenKey) {
    return writtenKey.find("RESPONSES") != std::string_view::npos;
}

std::string_view WrittenFunctionKey(const Assignment& asked, bool hasSet,
                                    const Settings& settings) {
    const FunctionNames* pNames = FindNames(asked.function.key);
    if (pNames == nullptr) return asked.function.key;
    if (!pNames->written.empty()) return pNames->written;
    if (pNames->kind == FunctionKind::kCases) return CasesKey(hasSet, settings);
    return settings.groupBase == GroupBase::kResponses ? "RESPONSES" : "RESPONSES.COUNT";
}

std::string LooksOf(const Assignment& assignment) {
    std::string looks(assignment.isUnweighted ? "U" : "W");
    looks += assignment.argument + '\n';
    if (!assignment.label.IsEmpty()) looks += '\'' + Normalized(assignment.label);
    looks += '\n' + InUpperAscii(assignment.format.text);
    return looks;
}

std::string TextOfFunction(const Assignment& asked) {
    std::string text(asked.isUnweighted ? "UNWEIGHTED " : "");
    text += asked.function.key;
    if (!asked.argument.empty()) text += ' ' + asked.argument;
    if (!asked.on.IsEmpty()) text += '(' + asked.on.text + ')';
    return text;
}

std::string TextOfWritten(const Assignment& written) {
    std::string text = written.function.text;
    if (!written.argument.empty()) text += ' ' + written.argument;
    if (!written.label.IsEmpty()) text += ' ' + written.label.source;
    if (!written.format.text.empty()) text += ' ' + written.format.text;
    return text;
}

}  // namespace quillet::outline
