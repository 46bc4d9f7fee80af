// What the summary functions of the IGRAPH command become in GPL.
#ifndef QUILLET_IGRAPH_GPL_CHARTFUNCTIONS_H
#define QUILLET_IGRAPH_GPL_CHARTFUNCTIONS_H

#include <string>
#include <string_view>

#include "igraph/model/igraphcommand.h"
#include "igraph/model/keyword.h"

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

/// How a summary function is drawn.
struct ChartFunction {
    Keyword keyword = Keyword::kMean;
    StatisticForm form = StatisticForm::kNone;
    std::string_view statistic;  ///< The GPL function.
    std::string_view operation;  ///< `kComparison`: the GPL operator; `kTransformed`: the function
                                 ///< to apply, empty for the square.
    std::string_view title;      ///< The words before the variable's name in an axis title.
    std::string_view titleSign;  ///< `kComparison`: the operator as readers write it.
};

/// The row of one of the `kSummaryFunctionTable`; asserts, and gives that of MEAN, for any other
/// keyword. Constant time.
[[nodiscard]] const ChartFunction& FindChartFunction(Keyword keyword);

/// The title of an axis that shows the function of a variable called `name`.
[[nodiscard]] std::string SummaryTitle(const SummaryCall& call, std::string_view name);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_CHARTFUNCTIONS_H
