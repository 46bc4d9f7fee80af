// The conversion of one IGRAPH command.
#ifndef QUILLET_DRIVER_CONVERTIGRAPH_H
#define QUILLET_DRIVER_CONVERTIGRAPH_H

#include "driver/stepresult.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet {

/// Reads an IGRAPH command and draws it anew in GPL. `tokens` stands at its first token.
///
/// Throws `CommandTooLarge` for a command that asks for more than its budget, and `std::bad_alloc`.
[[nodiscard]] StepResult ConvertIgraph(TAVQTokenSequence& tokens);

}  // namespace quillet

#endif  // QUILLET_DRIVER_CONVERTIGRAPH_H
