// The token function of the generated parser.
#ifndef QUILLET_PARSER_TBTRYYLEX_H
#define QUILLET_PARSER_TBTRYYLEX_H

#include "bison/opaquevaluemethods.h"
#include "parser/tbtrtablescommand.h"

namespace quillet {

/// Reads the next token that is no slash and returns its code, 0 at the end of the command.
///
/// Makes `*pValue` hold the token, empty at the end, without looking at what it held: the parser
/// has copied that elsewhere. At the end `*pLocation` stays that of the last token. Both
/// pointers are the parser's own and never null. A token that there is no memory for, or no room
/// in the budget, ends the command, which is given up.
int tbtryylex(OpaqueValue* pValue, TablesLocation* pLocation, TablesCommand& command);

}  // namespace quillet

#endif  // QUILLET_PARSER_TBTRYYLEX_H
