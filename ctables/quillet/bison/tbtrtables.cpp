#include "bison/tbtrtables.h"

#include "bison/tbtrtables.tab.h"

namespace quillet {

ParseStatus ParseTables(TablesCommand& command) {
#if TBTRYYDEBUG
    // Exists in developers' builds alone; the parser then writes its steps to standard error.
    tbtryydebug = command.Trace() != nullptr ? 1 : 0;
#endif
    auto status = static_cast<ParseStatus>(tbtryyparse(command));
    // What is left of a command that was given up may parse.
    if (command.GivenUpFor() != Shortage::kNone) status = ParseStatus::kAborted;
    // The whole command may have been reduced before the mistake that follows was found.
    if (status != ParseStatus::kSuccess) command.SetParseResult(nullptr);
    return status;
}

}  // namespace quillet
