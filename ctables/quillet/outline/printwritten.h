// Writes down again what was read of generated commands.
#ifndef QUILLET_OUTLINE_PRINTWRITTEN_H
#define QUILLET_OUTLINE_PRINTWRITTEN_H

#include <string>

#include "outline/tableoutline.h"

namespace quillet::outline {

/// The MRSETS and CTABLES commands that `outline`, filled by `ReadWritten`, was read from: for all
/// that quillet has written the same text up to white space outside of literals and the blanks
/// after them. A line for each subcommand, however long it is. Linear in the outline.
[[nodiscard]] std::string PrintWritten(const CommandOutline& outline);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_PRINTWRITTEN_H
