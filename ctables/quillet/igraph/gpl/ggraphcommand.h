// The GGRAPH command around a GPL program.
#ifndef QUILLET_IGRAPH_GPL_GGRAPHCOMMAND_H
#define QUILLET_IGRAPH_GPL_GGRAPHCOMMAND_H

#include <string>
#include <string_view>
#include <vector>

#include "igraph/model/igraphspec.h"

namespace quillet::igraph {

/// The command that draws the graph of `spec`, which is complete, with `program`, which
/// begins and ends with a line end. Each of `immediateTemplates` becomes a quoted item. The text
/// ends in the command's period. Linear in the text.
[[nodiscard]] std::string GgraphCommand(const iGraphSpec& spec, std::string_view program,
                                        const std::vector<std::string>& immediateTemplates);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_GGRAPHCOMMAND_H
