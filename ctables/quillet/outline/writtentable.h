// Reads a table of a generated CTABLES command.
#ifndef QUILLET_OUTLINE_WRITTENTABLE_H
#define QUILLET_OUTLINE_WRITTENTABLE_H

#include <string_view>

#include "outline/tableoutline.h"
#include "outline/writtencursor.h"

namespace quillet::outline {

/// Reads what TABLE says, which is the table's expression. The cursor stands after that word.
[[nodiscard]] bool ReadTableExpression(WrittenCursor& cursor, TableOutline& table);

/// Reads a subcommand that belongs to `table`. The cursor stands at its word.
[[nodiscard]] bool ReadTableSubcommand(WrittenCursor& cursor, TableOutline& table);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_WRITTENTABLE_H
