// How a legacy command is known in any text, whatever the conversion makes of that.
#ifndef QUILLET_DRIVER_LEGACYWORDS_H
#define QUILLET_DRIVER_LEGACYWORDS_H

#include <cstddef>
#include <string_view>

#include "quillet.h"

namespace quillet {

/// `kTables` or `kIgraph` when the bytes of `text` at `offset` begin such a command: its word, in
/// full or shortened to three letters or more, and then, on this line or a later one, a slash or a
/// subcommand of it. Else `kOrdinary`. "TABLES = a BY b", a name that begins with "tab" and a
/// sentence about tables are none.
[[nodiscard]] CommandType LegacyCommandAt(std::string_view text, std::size_t offset);

/// "TABLES" or "IGRAPH"; empty for all other types.
[[nodiscard]] std::string_view WordOf(CommandType type);

}  // namespace quillet

#endif  // QUILLET_DRIVER_LEGACYWORDS_H
