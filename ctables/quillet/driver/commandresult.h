// What a conversion of one command came to.
#ifndef QUILLET_DRIVER_COMMANDRESULT_H
#define QUILLET_DRIVER_COMMANDRESULT_H

#include <string>
#include <vector>

#include "quillet.h"

namespace quillet {

/// The part of a `CommandReport` that the conversion of a command knows; it owns its texts.
struct CommandResult {
    bool isConverted = false;
    bool isOutOfMemory = false;  ///< It was the system's memory that a conversion failed for.
    std::string generated;       ///< Whole commands, each with its period.
    long generatedLine = 0;      ///< As in `CommandReport`.
    std::vector<std::string> warnings;
    ErrorKind errorKind = ErrorKind::kNone;
    long errorLine = 0;
    int errorColumn = 0;
    std::string message;
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_COMMANDRESULT_H
