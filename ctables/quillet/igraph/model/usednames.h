// The list of variables of a GGRAPH command.
#ifndef QUILLET_IGRAPH_MODEL_USEDNAMES_H
#define QUILLET_IGRAPH_MODEL_USEDNAMES_H

#include <span>
#include <string>

#include "igraph/model/variableroles.h"

namespace quillet::igraph {

/// The names of the variables among `roles`, with a blank between two, in order of their first
/// appearance and in the spelling of it, none twice. $case is not among them. Linear in the names.
[[nodiscard]] std::string UsedNames(std::span<const VariableRole> roles);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_MODEL_USEDNAMES_H
