// How commands and messages are written into the output file.
#ifndef QUILLET_DRIVER_OUTPUTWRITER_H
#define QUILLET_DRIVER_OUTPUTWRITER_H

#include <cstddef>
#include <string>
#include <string_view>

#include "driver/outputfile.h"
#include "tokenizer/parseerror.h"

namespace quillet {

/// Writes one command or comment: `indent` blanks (one alone when it is above 20), the text
/// without its final line feed, a period unless the text has one at its end, a line feed.
/// Nothing at all for an empty text.
void WriteCommand(std::string_view text, OutputFile& out, std::size_t indent);

/// Makes `text` one command with its period at the end, the way `WriteCommand` writes it. An empty
/// text stays empty.
void EndWithPeriod(std::string& text);

/// Writes the last lines of a command whose lines before have been written as they are. They end
/// as a command does, after a blank line with a period of its own.
void WriteLastLines(std::string_view lines, OutputFile& out);

/// Writes `text` as a block of comment lines: " *" in front of every line, also of the empty one
/// after a final line feed, which ends in a period.
void WriteCommentedOut(std::string_view text, OutputFile& out);

/// What comments begin with that are messages.
inline constexpr std::string_view kStars = "***** ";

/// Writes a message as a comment line that begins with `kStars`.
void WriteStarred(std::string_view message, OutputFile& out);

/// Writes where and why tokenizing failed, as two starred lines. An error without a kind writes
/// them with empty texts.
void WriteTokenizingError(const ParseError& error, OutputFile& out);

}  // namespace quillet

#endif  // QUILLET_DRIVER_OUTPUTWRITER_H
