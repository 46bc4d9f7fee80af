// What surrounds the elements of a chart: coordinates, axes, legends, texts and scales.
#ifndef QUILLET_IGRAPH_GPL_CHARTGUIDES_H
#define QUILLET_IGRAPH_GPL_CHARTGUIDES_H

#include "igraph/gpl/chart.h"

namespace quillet::igraph {

/// Appends the coordinate system, unless it is the usual one.
void AddCoordinates(Chart& chart);

/// Appends axes, legends, texts and reference lines. The elements are there already: legends
/// are drawn for the aesthetics that they show.
void AddGuides(Chart& chart);

/// Appends the scales that say more than a scale does by itself. The elements are there already.
void AddScales(Chart& chart);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_CHARTGUIDES_H
