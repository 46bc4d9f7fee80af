// The summary functions of the IGRAPH command and what they become in GPL.
#ifndef QUILLET_IGRAPH_CHARTFUNCTIONS_H
#define QUILLET_IGRAPH_CHARTFUNCTIONS_H

#include <span>
#include <string>
#include <string_view>

#include "igraph/igraphcommand.h"
#include "igraph/keywords.h"

namespace quillet::igraph {

/// The shape of the GPL statistic that stands for a function.
enum class StatisticForm {
    kPlain,        ///< A statistic of the variable alone.
    kPercent,      ///< A percentage of all cases.
    kPercentile,   ///< A statistic with a share as argument.
    kTransformed,  ///< A statistic of a computed variable: squares or absolute values.
    kComparison,   ///< Counts the cases whose value compares with one number.
    kBetween,      ///< Counts the cases whose value lies between two numbers.
    kNone,         ///< GPL has nothing like it.
};

/// One row of the table of functions.
struct SummaryFunction {
    Keyword keyword = Keyword::kMean;
    int argumentCount = 0;
    StatisticForm form = StatisticForm::kNone;
    std::string_view statistic;  ///< The GPL function.
    std::string_view operation;  ///< `kComparison`: the GPL operator; `kTransformed`: the function
                                 ///< to apply, empty for the square.
    std::string_view title;      ///< The words before the variable's name in an axis title.
    std::string_view titleSign;  ///< `kComparison`: the operator as readers write it.
    bool allowedInPie = false;
};

/// The row of one of the `keywords::kSummaryFunctions`. Constant time.
[[nodiscard]] const SummaryFunction& FindSummaryFunction(Keyword keyword);

/// All rows.
[[nodiscard]] std::span<const SummaryFunction> SummaryFunctions();

/// The title of an axis that shows the function of a variable called `name`.
[[nodiscard]] std::string SummaryTitle(const SummaryCall& call, std::string_view name);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_CHARTFUNCTIONS_H
