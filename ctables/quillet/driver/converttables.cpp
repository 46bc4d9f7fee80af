#include "driver/converttables.h"

#include <cstddef>
#include <string>

#include "bison/tbtrtables.h"
#include "driver/reasons.h"
#include "parser/tbtrtablescommand.h"
#include "translator/parsetree.h"

namespace quillet {

namespace {

// False with a report in `command`, or with none where there is nothing to tell the user.
[[nodiscard]] bool ConvertToCtables(TablesCommand& command, const CodePage& codePage,
                                    std::string& text) {
    return ParseTables(command) == ParseStatus::kSuccess &&
           TranslateTablesCommand(command.ReleaseParseResult(), command, codePage, text);
}

Failure FailureOf(const ReportEntry& entry) {
    Failure failure;
    if (entry.kind == TablesErrorKind::kNone) return failure;
    failure.kind = ErrorKindOf(entry.kind);
    // What could not be read, else the name in question.
    failure.name = entry.kind == TablesErrorKind::kSubcommandSyntax
                       ? TablesCommand::NameOfCode(entry.subcommand)
                       : entry.text;
    // Stored columns count from 0 in all lines but the first; users count from 1.
    failure.place = {entry.line, entry.column + 1};
    return failure;
}

}  // namespace

StepResult ConvertTables(const CodePage& codePage, TAVQTokenSequence& tokens) {
    TablesCommand command(codePage, &tokens);
    StepResult result;
    // A large text that had to move while it grows would be there twice. What is reserved and not
    // written takes no memory.
    constexpr std::size_t kTextOfAToken = 24;
    result.text.reserve(kTextOfAToken * static_cast<std::size_t>(tokens.Count()));
    if (!ConvertToCtables(command, codePage, result.text)) {
        result.text.clear();
        result.failure = FailureOf(command.FirstReport());
    }
    result.warnings = command.Warnings();
    result.isOutOfMemory = command.GivenUpFor() == Shortage::kMemory;
    return result;
}

}  // namespace quillet
