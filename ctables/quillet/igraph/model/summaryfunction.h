// The summary functions of the IGRAPH command.
#ifndef QUILLET_IGRAPH_MODEL_SUMMARYFUNCTION_H
#define QUILLET_IGRAPH_MODEL_SUMMARYFUNCTION_H

#include <array>

#include "igraph/model/keyword.h"

namespace quillet::igraph {

/// What the command may do with a function.
struct SummaryFunction {
    Keyword keyword = Keyword::kMean;
    int argumentCount = 0;
    bool allowedInPie = false;
};

/// All functions. Whatever else lists them is made from this table or checked against it.
inline constexpr std::array kSummaryFunctionTable = {
    SummaryFunction{Keyword::kMean, 0, false},
    SummaryFunction{Keyword::kMedian, 0, false},
    SummaryFunction{Keyword::kMode, 0, false},
    SummaryFunction{Keyword::kSum, 0, true},
    SummaryFunction{Keyword::kStdDev, 0, false},
    SummaryFunction{Keyword::kVariance, 0, false},
    SummaryFunction{Keyword::kMinimum, 0, false},
    SummaryFunction{Keyword::kMaximum, 0, false},
    SummaryFunction{Keyword::kRange, 0, false},
    SummaryFunction{Keyword::kFirst, 0, false},
    SummaryFunction{Keyword::kLast, 0, false},
    SummaryFunction{Keyword::kSeMean, 0, false},
    SummaryFunction{Keyword::kKurtosis, 0, false},
    SummaryFunction{Keyword::kSeKurtosis, 0, false},
    SummaryFunction{Keyword::kSkewness, 0, false},
    SummaryFunction{Keyword::kSeSkewness, 0, false},
    SummaryFunction{Keyword::kSumSquares, 0, true},
    SummaryFunction{Keyword::kSumAbsolute, 0, true},
    SummaryFunction{Keyword::kCount, 0, false},
    SummaryFunction{Keyword::kPercent, 0, false},
    SummaryFunction{Keyword::kGroupedMedian, 0, false},
    SummaryFunction{Keyword::kPercentile, 1, false},
    SummaryFunction{Keyword::kNumberGreater, 1, true},
    SummaryFunction{Keyword::kNumberLess, 1, true},
    SummaryFunction{Keyword::kNumberGreaterEqual, 1, true},
    SummaryFunction{Keyword::kNumberLessEqual, 1, true},
    SummaryFunction{Keyword::kNumberEqual, 1, true},
    SummaryFunction{Keyword::kPercentGreater, 1, false},
    SummaryFunction{Keyword::kPercentLess, 1, false},
    SummaryFunction{Keyword::kPercentGreaterEqual, 1, false},
    SummaryFunction{Keyword::kPercentLessEqual, 1, false},
    SummaryFunction{Keyword::kPercentEqual, 1, false},
    SummaryFunction{Keyword::kNumberIn, 2, true},
    SummaryFunction{Keyword::kPercentIn, 2, false},
};

/// The row of a function; asserts, and gives that of MEAN, for any other keyword. Constant time.
[[nodiscard]] const SummaryFunction& FindSummaryFunction(Keyword keyword);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_MODEL_SUMMARYFUNCTION_H
