// Hints about TABLES commands.
#ifndef QUILLET_DRIVER_TABLEHINTS_H
#define QUILLET_DRIVER_TABLEHINTS_H

#include <string>

#include "driver/failedcommand.h"

namespace quillet {

/// What to change in a TABLES command; empty where there is nothing to say about it in particular.
/// Linear in the command.
[[nodiscard]] std::string TablesHint(const FailedCommand& command);

/// The last line, up to that of the failure, that follows a blank line inside the command: there a
/// period may be missing before. Unless `isAnywhere`, only one that begins with a command's word
/// counts. 0 when there is none. Linear.
[[nodiscard]] long LineAfterBlankLine(const CommandReport& report, bool isAnywhere);

}  // namespace quillet

#endif  // QUILLET_DRIVER_TABLEHINTS_H
