// What the IGRAPH command can say and GPL cannot.
#ifndef QUILLET_IGRAPH_GPL_EXPRESSIBILITY_H
#define QUILLET_IGRAPH_GPL_EXPRESSIBILITY_H

#include <string>
#include <string_view>

#include "igraph/gpl/layout.h"
#include "igraph/model/igraphcommand.h"

namespace quillet::igraph {

/// Why the graph of `command`, which is complete, cannot be written in GPL; empty when it can. A
/// graph that only looks like what was asked for is worse than none, so whatever would be drawn
/// differently has a reason here. Of several reasons the first in a fixed order is given.
/// `layout` and `usedNames` are those of `command`. Linear in the command.
[[nodiscard]] std::string FindObstacle(const IgraphCommand& command, const Layout& layout,
                                       std::string_view usedNames);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_EXPRESSIBILITY_H
