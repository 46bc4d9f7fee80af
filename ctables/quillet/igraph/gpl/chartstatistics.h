// The statistics of a chart: what its elements show of the data.
#ifndef QUILLET_IGRAPH_GPL_CHARTSTATISTICS_H
#define QUILLET_IGRAPH_GPL_CHARTSTATISTICS_H

#include <string>
#include <vector>

#include "igraph/gpl/chart.h"
#include "igraph/gpl/gplstatement.h"
#include "igraph/model/igraphcommand.h"

namespace quillet::igraph {

/// The number of cases at each place of the chart.
[[nodiscard]] Expression CountOfCases(const Chart& chart);

/// The share of all cases at each place of the chart, or of those at the same place of an axis.
[[nodiscard]] Expression PercentOfCases(const Chart& chart);

/// `function` of `arguments` as a percentage of all cases in all panels.
[[nodiscard]] Expression PercentOfAll(std::string_view function, std::vector<Expression> arguments);

/// The number of cases with a valid Y; of all cases where Y is no variable.
[[nodiscard]] Expression CountOfValidCases(const Chart& chart);

/// What a BAR, AREA or LINE shows. Computed variables that it needs are declared.
[[nodiscard]] Expression SummaryOf(Chart& chart, const ChartElement& element);

/// What the slices of a pie show; likewise.
[[nodiscard]] Expression PieStatistic(Chart& chart, const ChartElement& element);

/// The title of the Y axis where the command gives none.
[[nodiscard]] std::string DefaultTitleOfY(const IgraphCommand& command, const Layout& layout);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_CHARTSTATISTICS_H
