// What a conversion step makes of one command.
#ifndef QUILLET_DRIVER_STEPRESULT_H
#define QUILLET_DRIVER_STEPRESULT_H

#include <optional>
#include <string>
#include <vector>

#include "parser/warning.h"
#include "quillet.h"

namespace quillet {

/// A place in a command.
struct PlaceInCommand {
    long line = 1;   ///< From 1, within the command.
    int column = 1;  ///< As the user is shown it.
};

/// Why a command could not be converted.
struct Failure {
    ErrorKind kind = ErrorKind::kUnknown;
    std::string name;                     ///< What the message names; may be empty.
    std::optional<PlaceInCommand> place;  ///< None where the message says enough.
};

/// A value: the step that makes it writes nothing and tells nobody.
struct StepResult {
    std::string text;                ///< Whole commands; the last one may lack its period.
    std::vector<Warning> warnings;   ///< What was left out, in the order found.
    std::optional<Failure> failure;  ///< None when the command was converted.
    bool isOutOfMemory = false;      ///< It failed for want of the system's memory.
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_STEPRESULT_H
