#include "parser/tbtryylex.h"

#include <cstddef>
#include <new>
#include <ostream>
#include <string_view>

#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tbtryylex";

void WriteTrace(const TablesCommand& command, const TablesToken& next) {
    if (!command.Trace()) return;
    if (next.HasToken()) {
        next.token.Dump(*command.Trace(), 0, next.line, next.column);
    } else {
        *command.Trace() << "End-of-command-token-sequence\n";
    }
}

TablesLocation LocationOf(const TablesToken& token) {
    TablesLocation location;
    location.first_line = location.last_line = token.line;
    location.first_column = location.last_column = token.column;
    const std::string_view tokenStr = token.token.Text(/*raw=*/true);
    if (QUILLET_ASSERT(!tokenStr.empty(), "tokenStr.size()")) {
        location.last_column += static_cast<int>(tokenStr.size()) - 1;
    }
    return location;
}

int ReadToken(OpaqueValue* pValue, TablesLocation* pLocation, TablesCommand& command) {
    // Subcommand words have codes of their own, so the grammar can do without the slashes.
    TablesToken next = command.NextToken();
    while (next.code == SP_SLASH) next = command.NextToken();
    WriteTrace(command, next);

    const NodeType yyTokenType = next.code;
    if (!next.HasToken()) {
        QUILLET_ASSERT(yyTokenType == kNoNodeType, "yyTokenType == 0");
        return 0;
    }
    *pLocation = LocationOf(next);
    OpaqueValue_SetTAVQToken(*pValue, next.token, yyTokenType);
    return static_cast<int>(yyTokenType);
}

}  // namespace

// No exception may pass through the parser: its stack would be lost with all that it owns.
int tbtryylex(OpaqueValue* pValue, TablesLocation* pLocation, TablesCommand& command) {
    OpaqueValue_Init(*pValue);
    try {
        return ReadToken(pValue, pLocation, command);
    } catch (const CommandTooLarge&) {
        command.GiveUp(Shortage::kBudget);
    } catch (const std::bad_alloc&) {
        command.GiveUp(Shortage::kMemory);
    }
    return 0;
}

}  // namespace quillet
