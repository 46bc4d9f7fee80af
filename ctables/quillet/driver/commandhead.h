// What a command is, by its first words.
#ifndef QUILLET_DRIVER_COMMANDHEAD_H
#define QUILLET_DRIVER_COMMANDHEAD_H

#include <string>

#include "driver/commandstream.h"
#include "platform/codepage.h"
#include "tokenizer/commandkind.h"

namespace quillet {

/// The beginning of a command.
struct CommandHead {
    CommandKind kind = CommandKind::kOrdinary;
    /// The beginning of the first token's value text (see `TokenSurvey`); empty without a token.
    std::string firstValue;
};

/// The head of the command that `commands` has read, in the layout in which it reads. The first
/// line alone has decided where the command ends; what it is, its first word decides, which may go
/// on or even begin further down. Inline data has both its words on the first line. Throws
/// `ParseError`, whose line is that of the command.
[[nodiscard]] CommandHead HeadOf(const CommandStream& commands, const CodePage& codePage,
                                 bool batchMode);

}  // namespace quillet

#endif  // QUILLET_DRIVER_COMMANDHEAD_H
