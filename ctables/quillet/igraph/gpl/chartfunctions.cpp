#include "igraph/gpl/chartfunctions.h"

#include <algorithm>
#include <array>

#include "igraph/gpl/gplstatement.h"
#include "igraph/gpl/gplvocabulary.h"
#include "igraph/model/summaryfunction.h"
#include "platform/assertion.h"

namespace quillet::igraph {

namespace {

constexpr std::string_view kModule = "chartfunctions";

constexpr ChartFunction Plain(Keyword keyword, std::string_view statistic, std::string_view title) {
    return {keyword, StatisticForm::kPlain, statistic, "", title, ""};
}

constexpr ChartFunction Comparison(Keyword keyword, std::string_view statistic,
                                   std::string_view operation, std::string_view title,
                                   std::string_view titleSign) {
    return {keyword, StatisticForm::kComparison, statistic, operation, title, titleSign};
}

constexpr std::string_view kNumberOf = "Number of";
constexpr std::string_view kPercentOf = "Percent of";

constexpr std::array kFunctions = {
    Plain(Keyword::kMean, gpl::kSummaryMean, "Mean"),
    Plain(Keyword::kMedian, gpl::kSummaryMedian, "Median"),
    Plain(Keyword::kMode, gpl::kSummaryMode, "Mode"),
    Plain(Keyword::kSum, gpl::kSummarySum, "Sum"),
    Plain(Keyword::kStdDev, gpl::kSummarySd, "Std. Deviation"),
    Plain(Keyword::kVariance, gpl::kSummaryVariance, "Variance"),
    Plain(Keyword::kMinimum, gpl::kSummaryMin, "Minimum"),
    Plain(Keyword::kMaximum, gpl::kSummaryMax, "Maximum"),
    Plain(Keyword::kRange, gpl::kSummaryRange, "Range"),
    Plain(Keyword::kFirst, gpl::kSummaryFirst, "First"),
    Plain(Keyword::kLast, gpl::kSummaryLast, "Last"),
    Plain(Keyword::kSeMean, gpl::kSummarySe, "Std. Error of Mean"),
    Plain(Keyword::kKurtosis, gpl::kSummaryKurtosis, "Kurtosis"),
    Plain(Keyword::kSeKurtosis, gpl::kSummarySeKurtosis, "Std. Error of Kurtosis"),
    Plain(Keyword::kSkewness, gpl::kSummarySkewness, "Skewness"),
    Plain(Keyword::kSeSkewness, gpl::kSummarySeSkewness, "Std. Error of Skewness"),
    ChartFunction{Keyword::kSumSquares, StatisticForm::kTransformed, gpl::kSummarySum, "",
                  "Sum of Squares", ""},
    ChartFunction{Keyword::kSumAbsolute, StatisticForm::kTransformed, gpl::kSummarySum, gpl::kAbs,
                  "Sum of Absolute Values", ""},
    Plain(Keyword::kCount, gpl::kSummaryCount, "Count"),
    ChartFunction{Keyword::kPercent, StatisticForm::kPercent, gpl::kSummaryPercentCount, "",
                  "Percent", ""},
    ChartFunction{Keyword::kGroupedMedian, StatisticForm::kNone, "", "", "Grouped Median", ""},
    ChartFunction{Keyword::kPercentile, StatisticForm::kPercentile, gpl::kSummaryPercentile, "",
                  "Percentile", ""},
    Comparison(Keyword::kNumberGreater, gpl::kSummaryCountTrue, gpl::kGreater, kNumberOf, ">"),
    Comparison(Keyword::kNumberLess, gpl::kSummaryCountTrue, gpl::kLess, kNumberOf, "<"),
    Comparison(Keyword::kNumberGreaterEqual, gpl::kSummaryCountTrue, gpl::kGreaterEqual, kNumberOf,
               ">="),
    Comparison(Keyword::kNumberLessEqual, gpl::kSummaryCountTrue, gpl::kLessEqual, kNumberOf, "<="),
    Comparison(Keyword::kNumberEqual, gpl::kSummaryCountTrue, gpl::kEqual, kNumberOf, "="),
    Comparison(Keyword::kPercentGreater, gpl::kSummaryPercentTrue, gpl::kGreater, kPercentOf, ">"),
    Comparison(Keyword::kPercentLess, gpl::kSummaryPercentTrue, gpl::kLess, kPercentOf, "<"),
    Comparison(Keyword::kPercentGreaterEqual, gpl::kSummaryPercentTrue, gpl::kGreaterEqual,
               kPercentOf, ">="),
    Comparison(Keyword::kPercentLessEqual, gpl::kSummaryPercentTrue, gpl::kLessEqual, kPercentOf,
               "<="),
    Comparison(Keyword::kPercentEqual, gpl::kSummaryPercentTrue, gpl::kEqual, kPercentOf, "="),
    ChartFunction{Keyword::kNumberIn, StatisticForm::kBetween, gpl::kSummaryCountTrue, "",
                  kNumberOf, ""},
    ChartFunction{Keyword::kPercentIn, StatisticForm::kBetween, gpl::kSummaryPercentTrue, "",
                  kPercentOf, ""},
};

constexpr bool MatchesSummaryFunctions() {
    return std::equal(kFunctions.begin(), kFunctions.end(), kSummaryFunctionTable.begin(),
                      kSummaryFunctionTable.end(),
                      [](const ChartFunction& left, const SummaryFunction& right) {
                          return left.keyword == right.keyword;
                      });
}
static_assert(MatchesSummaryFunctions(), "every function is drawn in some way");

}  // namespace

const ChartFunction& FindChartFunction(Keyword keyword) {
    const ChartFunction* pFound = nullptr;
    for (const ChartFunction& function : kFunctions) {
        if (function.keyword == keyword) pFound = &function;
    }
    if (!QUILLET_ASSERT(pFound != nullptr, "pFound != nullptr")) return kFunctions.front();
    return *pFound;
}

std::string SummaryTitle(const SummaryCall& call, std::string_view name) {
    const ChartFunction& function = FindChartFunction(call.function);
    std::string title(function.title);
    if (function.form == StatisticForm::kPercentile) {
        title += ' ' + FormatNumber(call.arguments[0]);
    }
    title += ' ';
    title += name;
    if (function.form == StatisticForm::kComparison) {
        title += ' ';
        title += function.titleSign;
        title += ' ' + FormatNumber(call.arguments[0]);
    } else if (function.form == StatisticForm::kBetween) {
        title += " from " + FormatNumber(call.arguments[0]);
        title += " to " + FormatNumber(call.arguments[1]);
    }
    return title;
}

}  // namespace quillet::igraph
