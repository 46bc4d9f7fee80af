// What the grammar has to tell the user: why a command cannot be parsed, and what is passed over.
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "bison/tbtrparsebuilder.h"
#include "bison/tbtrparsevalues.h"
#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "bison/tbtrparsereports";

}  // namespace

OpaqueValue reportGenericError(TablesCommand& command, const TablesLocation& location) {
    AddTrace(command, "reportGenericError ", "");
    AddReport(command, TablesErrorKind::kTablesSyntax, location, kNoNodeType);
    return {};
}

OpaqueValue reportSubcommandArgumentError(TablesCommand& command, const TablesLocation& location,
                                          OpaqueValue& keyword) {
    const ConsumedValues consumed(keyword);
    CheckKeyword(keyword);
    const NodeType subcommand =
        OpaqueValue_IsTAVQToken(keyword) ? OpaqueValue_GetTbTokenType(keyword) : kNoNodeType;
    AddTrace(command, "reportSubcommandArgumentError for ", std::to_string(subcommand));
    AddReport(command, TablesErrorKind::kSubcommandSyntax, location, subcommand);
    return {};
}

OpaqueValue reportObsoleteSubcommand(TablesCommand& command, OpaqueValue& keyword,
                                     OpaqueValue& arguments) {
    const ConsumedValues consumed(keyword, arguments);
    const std::string_view name = TablesCommand::NameOfCode(OpaqueValue_GetTbTokenType(keyword));
    AddTrace(command, "reportObsoleteSubcommand for ", name);
    command.AddWarning({WarningKind::kObsoleteSubcommand, std::string(name)});
    return {};
}

OpaqueValue reportUnknownSubcommand(TablesCommand& command, OpaqueValue& subcommandString,
                                    OpaqueValue& arguments) {
    const ConsumedValues consumed(subcommandString, arguments);
    const TAVQToken* pWord = OpaqueValue_IsTAVQToken(subcommandString)
                                 ? OpaqueValue_PeekTAVQToken(subcommandString)
                                 : nullptr;
    if (!QUILLET_ASSERT(pWord, "subcommandString")) return {};
    const std::string text(pWord->Text(/*raw=*/false));
    AddTrace(command, "reportUnknownSubcommand for ", text);
    command.AddWarning({WarningKind::kUnknownSubcommand, text});
    return {};
}

OpaqueValue reportObsoleteFormat(TablesCommand& command, OpaqueValue& keyword,
                                 OpaqueValue& lookAhead) {
    const ConsumedValues consumed(keyword, lookAhead);
    // One line is enough however often a command does it.
    const Warning warning{WarningKind::kObsoleteFormat, {}};
    if (command.Warnings().empty() || command.Warnings().back() != warning) {
        command.AddWarning(warning);
    }
    command.SkipToNextSlash();
    return {};
}

void TraceSyntaxError(const TablesCommand& command, const TablesLocation& location,
                      std::string_view message) {
    if (!command.Trace()) return;
    *command.Trace() << location.last_line << ':' << location.last_column << ": " << message
                     << '\n';
}

}  // namespace quillet
