// Reads the commands that a TABLES command was converted to.
#ifndef QUILLET_OUTLINE_READWRITTEN_H
#define QUILLET_OUTLINE_READWRITTEN_H

#include <cstddef>
#include <string_view>

#include "outline/tableoutline.h"
#include "platform/codepage.h"

namespace quillet::outline {

/// Why a text could not be read, and where.
struct ReadingError {
    std::string_view message;  ///< What was expected there, or what is wrong; lives for ever.
    std::size_t offset = 0;    ///< In bytes, from the beginning of the text.
    long line = 0;             ///< From 1.
};

/// Reads `text`, which is all that a TABLES command was converted to: an MRSETS command with its
/// period, if there are sets, and a CTABLES command, whose period may be missing.
///
/// Only what quillet can write is read, in capitals as it writes it, but white space, the order of
/// subcommands and of what they say, and leaving parts out make no difference. What is left out is
/// in the outline as the new command takes it. A word in a list of statistics that is the name of a
/// function is one, even where an odd old command has it for a format.
///
/// Of a title that the new command makes itself the text is kept as well.
///
/// Returns true and fills `outline`. Any other text makes it false, with the first place that could
/// not be read in `error`; `outline` then holds what was read so far. Linear in the text.
[[nodiscard]] bool ReadWritten(const CodePage& codePage, std::string_view text,
                               CommandOutline& outline, ReadingError& error);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_READWRITTEN_H
