// The grammar of the IGRAPH command.
#ifndef QUILLET_IGRAPH_READ_COMMANDREADER_H
#define QUILLET_IGRAPH_READ_COMMANDREADER_H

#include "igraph/model/igraphcommand.h"
#include "igraph/read/syntaxreader.h"
#include "tokenizer/tokensequencebase.h"

namespace quillet::igraph {

/// Reads a command from its first token on into `command`, which is as constructed. Linear in the
/// tokens, without recursion. After a fault `command` is of no use.
[[nodiscard]] SyntaxFault ReadCommand(TokenSequenceBase& sequence, IgraphCommand& command);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_READ_COMMANDREADER_H
