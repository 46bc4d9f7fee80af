// The conversion of one TABLES command.
#ifndef QUILLET_DRIVER_CONVERTTABLES_H
#define QUILLET_DRIVER_CONVERTTABLES_H

#include "driver/stepresult.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet {

/// Parses and translates a TABLES command. `tokens` stands at its first token.
///
/// A command that asks for more than its budget fails with the reason `kTableTooLarge`. Throws
/// `std::bad_alloc` alone.
[[nodiscard]] StepResult ConvertTables(const CodePage& codePage, TAVQTokenSequence& tokens);

}  // namespace quillet

#endif  // QUILLET_DRIVER_CONVERTTABLES_H
