// The grammar of the chart elements and of the fit lines.
#ifndef QUILLET_IGRAPH_READ_ELEMENTREADER_H
#define QUILLET_IGRAPH_READ_ELEMENTREADER_H

#include "igraph/model/igraphcommand.h"
#include "igraph/read/syntaxreader.h"

namespace quillet::igraph {

/// Reads what follows the keyword of a chart element into `element`, whose kind is set and which
/// is otherwise as constructed.
[[nodiscard]] bool ReadElement(SyntaxReader& reader, ChartElement& element);

/// The same for FITLINE.
[[nodiscard]] bool ReadFitLine(SyntaxReader& reader, FitLine& fitLine);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_READ_ELEMENTREADER_H
