#include "igraph/chartfunctions.h"

#include <array>
#include <cstddef>

#include "igraph/gplstatement.h"
#include "igraph/gplvocabulary.h"
#include "platform/assertion.h"

namespace quillet::igraph {

namespace {

constexpr std::string_view kModule = "chartfunctions";

constexpr SummaryFunction Plain(Keyword keyword, std::string_view statistic,
                                std::string_view title) {
    return {keyword, 0, StatisticForm::kPlain, statistic, "", title, "", false};
}

constexpr SummaryFunction Comparison(Keyword keyword, std::string_view statistic,
                                     std::string_view operation, std::string_view title,
                                     std::string_view titleSign, bool allowedInPie) {
    return {keyword,   1,           StatisticForm::kComparison, statistic, operation, title,
            titleSign, allowedInPie};
}

constexpr std::string_view kNumberOf = "Number of";
constexpr std::string_view kPercentOf = "Percent of";

constexpr std::array kFunctions = {
    Plain(Keyword::kMean, gpl::kSummaryMean, "Mean"),
    Plain(Keyword::kMedian, gpl::kSummaryMedian, "Median"),
    Plain(Keyword::kMode, gpl::kSummaryMode, "Mode"),
    SummaryFunction{Keyword::kSum, 0, StatisticForm::kPlain, gpl::kSummarySum, "", "Sum", "", true},
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
    SummaryFunction{Keyword::kSumSquares, 0, StatisticForm::kTransformed, gpl::kSummarySum, "",
                    "Sum of Squares", "", true},
    SummaryFunction{Keyword::kSumAbsolute, 0, StatisticForm::kTransformed, gpl::kSummarySum,
                    gpl::kAbs, "Sum of Absolute Values", "", true},
    Plain(Keyword::kCount, gpl::kSummaryCount, "Count"),
    SummaryFunction{Keyword::kPercent, 0, StatisticForm::kPercent, gpl::kSummaryPercentCount, "",
                    "Percent", "", false},
    SummaryFunction{Keyword::kGroupedMedian, 0, StatisticForm::kNone, "", "", "Grouped Median", "",
                    false},
    SummaryFunction{Keyword::kPercentile, 1, StatisticForm::kPercentile, gpl::kSummaryPercentile,
                    "", "Percentile", "", false},
    Comparison(Keyword::kNumberGreater, gpl::kSummaryCountTrue, gpl::kGreater, kNumberOf, ">",
               true),
    Comparison(Keyword::kNumberLess, gpl::kSummaryCountTrue, gpl::kLess, kNumberOf, "<", true),
    Comparison(Keyword::kNumberGreaterEqual, gpl::kSummaryCountTrue, gpl::kGreaterEqual, kNumberOf,
               ">=", true),
    Comparison(Keyword::kNumberLessEqual, gpl::kSummaryCountTrue, gpl::kLessEqual, kNumberOf,
               "<=", true),
    Comparison(Keyword::kNumberEqual, gpl::kSummaryCountTrue, gpl::kEqual, kNumberOf, "=", true),
    Comparison(Keyword::kPercentGreater, gpl::kSummaryPercentTrue, gpl::kGreater, kPercentOf, ">",
               false),
    Comparison(Keyword::kPercentLess, gpl::kSummaryPercentTrue, gpl::kLess, kPercentOf, "<", false),
    Comparison(Keyword::kPercentGreaterEqual, gpl::kSummaryPercentTrue, gpl::kGreaterEqual,
               kPercentOf, ">=", false),
    Comparison(Keyword::kPercentLessEqual, gpl::kSummaryPercentTrue, gpl::kLessEqual, kPercentOf,
               "<=", false),
    Comparison(Keyword::kPercentEqual, gpl::kSummaryPercentTrue, gpl::kEqual, kPercentOf, "=",
               false),
    SummaryFunction{Keyword::kNumberIn, 2, StatisticForm::kBetween, gpl::kSummaryCountTrue, "",
                    kNumberOf, "", true},
    SummaryFunction{Keyword::kPercentIn, 2, StatisticForm::kBetween, gpl::kSummaryPercentTrue, "",
                    kPercentOf, "", false},
};

}  // namespace

std::span<const SummaryFunction> SummaryFunctions() { return kFunctions; }

const SummaryFunction& FindSummaryFunction(Keyword keyword) {
    const SummaryFunction* pFound = nullptr;
    for (const SummaryFunction& function : kFunctions) {
        if (function.keyword == keyword) pFound = &function;
    }
    if (!QUILLET_ASSERT(pFound != nullptr, "pFound != nullptr")) return kFunctions.front();
    return *pFound;
}

std::string SummaryTitle(const SummaryCall& call, std::string_view name) {
    const SummaryFunction& function = FindSummaryFunction(call.function);
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
