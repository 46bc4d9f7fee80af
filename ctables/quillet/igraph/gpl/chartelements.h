// The ELEMENT statements of a chart.
#ifndef QUILLET_IGRAPH_GPL_CHARTELEMENTS_H
#define QUILLET_IGRAPH_GPL_CHARTELEMENTS_H

#include "igraph/gpl/chart.h"

namespace quillet::igraph {

/// Appends the chart elements, then the fit lines, each in command order, and the computed
/// variables that they need. Notes which aesthetics they show.
void AddElements(Chart& chart);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_CHARTELEMENTS_H
