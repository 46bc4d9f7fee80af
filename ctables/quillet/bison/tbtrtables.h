// Parses a TABLES command.
#ifndef QUILLET_BISON_TBTRTABLES_H
#define QUILLET_BISON_TBTRTABLES_H

#include "parser/tbtrtablescommand.h"

namespace quillet {

enum class ParseStatus : int {
    kSuccess = 0,         ///< The tree is in the command object.
    kAborted = 1,         ///< A report is in the command object.
    kStackExhausted = 2,  ///< Nested too deeply (nearly 10,000 levels); there is no report.
};

/// Parses `command`, once. The tree is there after `kSuccess` alone; warnings may be there in
/// every case. Stack use does not depend on the command; time is linear in the tokens delivered,
/// with a factor of at most the logarithm of their number for chains of operators that
/// parentheses cut up. A command that needs too much memory is aborted; nothing is thrown.
///
/// The language is the one in bison/tbtrtables.y.
[[nodiscard]] ParseStatus ParseTables(TablesCommand& command);

}  // namespace quillet

#endif  // QUILLET_BISON_TBTRTABLES_H
