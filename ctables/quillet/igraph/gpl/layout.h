// How the parts of a graph are arranged: its coordinates, its dimensions and its algebra.
#ifndef QUILLET_IGRAPH_GPL_LAYOUT_H
#define QUILLET_IGRAPH_GPL_LAYOUT_H

#include "igraph/model/igraphcommand.h"

namespace quillet::igraph {

/// The arrangement of a complete command's graph.
struct Layout {
    enum class Kind {
        kPolar,    ///< A pie.
        kThree,    ///< Three axes.
        kCluster,  ///< Two axes, with a cluster at each category of X1.
        kPlain,    ///< Two axes.
    };

    Kind kind = Kind::kPlain;
    /// `kCluster`: the variable inside the clusters, borrowed from the command;
    /// otherwise null.
    const VariableReference* pCluster = nullptr;
    /// COLOR or STYLE makes clusters of another variable than X1. Such clusters need not have
    /// got axes of their own: see `kind`.
    bool hasClusters = false;
    bool isStacked = false;  ///< COLOR or STYLE makes stacks.

    /// The numbers of the dimensions; 0 for an axis that the kind does not have.
    int x1Dimension = 1;
    int x2Dimension = 0;
    int yDimension = 2;
    int firstPanelDimension = 3;
};

/// The layout of `command`, which is complete. Linear in its elements.
[[nodiscard]] Layout LayoutOf(const IgraphCommand& command);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_LAYOUT_H
