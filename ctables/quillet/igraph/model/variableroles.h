// Which variables a graph is made of, and what it needs them as.
#ifndef QUILLET_IGRAPH_MODEL_VARIABLEROLES_H
#define QUILLET_IGRAPH_MODEL_VARIABLEROLES_H

#include <vector>

#include "igraph/model/igraphcommand.h"

namespace quillet::igraph {

/// A place of the command that makes a variable part of the graph's data.
struct VariableRole {
    const VariableReference* pReference;  ///< Borrowed from the command; $case among them.
    MeasurementLevel level;               ///< What the graph needs the variable as.
};

/// The roles that are given, in order of the command. Levels are right once it is complete.
/// Linear in the command but for the sorting.
[[nodiscard]] std::vector<VariableRole> VariableRoles(const IgraphCommand& command);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_MODEL_VARIABLEROLES_H
