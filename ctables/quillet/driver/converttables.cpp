#include "driver/converttables.h"

#include <new>
#include <string>
#include <string_view>

#include "bison/tbtrtables.h"
#include "driver/messagecatalogue.h"
#include "driver/outputwriter.h"
#include "platform/assertion.h"
#include "translator/parsetree.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "converttables";

// The message without its name filled in; empty for a kind that has none.
std::string_view MessageOf(TablesErrorKind kind) {
    switch (kind) {
        case TablesErrorKind::kNone:
            break;
        case TablesErrorKind::kSubcommandArgument:
            return kBadSubcommand;
        case TablesErrorKind::kObservationRange:
            return kObservationRangeText;
        case TablesErrorKind::kParenthesizedWord:
            return kBadParenthesizedWord;
        case TablesErrorKind::kGeneric:
            return kBadTablesSyntax;
        case TablesErrorKind::kUnknownSummaryFunction:
            return kUnknownFunctionText;
        case TablesErrorKind::kUnknownSortFunction:
            return kUnknownSortFunctionText;
        case TablesErrorKind::kMisplacedTotal:
            return kTotalAssociatesWrongly;
        case TablesErrorKind::kNothingToFollow:
            return kTotalFollowsNothing;
        case TablesErrorKind::kNothingToPrecede:
            return kTotalPrecedesNothing;
        case TablesErrorKind::kTotalWithoutStacking:
            return kTotalWithoutStack;
        case TablesErrorKind::kTotalBesideScale:
            return kTotalStacksWithScale;
        case TablesErrorKind::kTableTooLarge:
            return kTableTooLargeText;
    }
    return {};
}

// What the message speaks of: the subcommand that could not be read, else the name in question.
std::string_view NameIn(const ReportEntry& entry) {
    if (entry.kind == TablesErrorKind::kSubcommandArgument) {
        return TablesCommand::NameOfCode(entry.subcommand);
    }
    return entry.text;
}

ErrorKind ErrorKindOf(TablesErrorKind kind) {
    switch (kind) {
        case TablesErrorKind::kNone:
            break;
        case TablesErrorKind::kSubcommandArgument:
            return ErrorKind::kSubcommandSyntax;
        case TablesErrorKind::kObservationRange:
            return ErrorKind::kObservationRange;
        case TablesErrorKind::kParenthesizedWord:
            return ErrorKind::kParenthesizedWord;
        case TablesErrorKind::kGeneric:
            return ErrorKind::kTablesSyntax;
        case TablesErrorKind::kUnknownSummaryFunction:
            return ErrorKind::kUnknownFunction;
        case TablesErrorKind::kUnknownSortFunction:
            return ErrorKind::kUnknownSortFunction;
        case TablesErrorKind::kMisplacedTotal:
            return ErrorKind::kMisplacedTotal;
        case TablesErrorKind::kNothingToFollow:
            return ErrorKind::kNothingToFollow;
        case TablesErrorKind::kNothingToPrecede:
            return ErrorKind::kNothingToPrecede;
        case TablesErrorKind::kTotalWithoutStacking:
            return ErrorKind::kTotalWithoutStacking;
        case TablesErrorKind::kTotalBesideScale:
            return ErrorKind::kTotalBesideScale;
        case TablesErrorKind::kTableTooLarge:
            return ErrorKind::kTableTooLarge;
    }
    return ErrorKind::kUnknown;
}

// The facts that `ReportTablesFailure` writes. Without a report there is only the failure.
void DescribeFailure(const ReportEntry& entry, long lineOffset, CommandResult& result) {
    result.generated.clear();
    result.errorKind = result.isOutOfMemory ? ErrorKind::kOutOfMemory : ErrorKindOf(entry.kind);
    if (entry.kind == TablesErrorKind::kNone) return;
    result.errorLine = entry.line + lineOffset;
    result.errorColumn = entry.column + 1;
    result.message = FillMessage(MessageOf(entry.kind), NameIn(entry));
}

// Parses and translates; false with a report in `command`, or with none where there is nothing
// to tell the user.
[[nodiscard]] bool ConvertToCtables(TablesCommand& command, const CodePage& codePage,
                                    std::string& text) {
    return ParseTables(command) == ParseStatus::kSuccess &&
           TranslateTablesCommand(command.ReleaseParseResult(), command, codePage, text);
}

// Where nothing is known about the place: the command's first word.
ReportEntry TooLarge() {
    ReportEntry entry;
    entry.kind = TablesErrorKind::kTableTooLarge;
    entry.line = 1;
    entry.subcommand = TB_TABLE;
    return entry;
}

// What became of the command: an entry of kind `kNone` and no text when there is nothing to tell.
ReportEntry Convert(const CodePage& codePage, TAVQTokenSequence* pSequence, CommandResult& result) {
    if (pSequence == nullptr) return TooLarge();
    try {
        TablesCommand command(codePage, pSequence);
        result.isConverted = ConvertToCtables(command, codePage, result.generated);
        if (result.isConverted) EndWithPeriod(result.generated);
        for (const Warning& warning : command.Warnings()) {
            result.warnings.push_back(MessageOf(warning));
        }
        result.isOutOfMemory = command.GivenUpFor() == Shortage::kMemory;
        return command.FirstReport();
    } catch (const std::bad_alloc&) {
        result = {};
        result.isOutOfMemory = true;
        return TooLarge();
    }
}

}  // namespace

CommandResult ConvertTables(const CodePage& codePage, TAVQTokenSequence* pSequence, OutputFile& out,
                            long lineOffset, ConversionListener& listener) {
    CommandResult result;
    const ReportEntry report = Convert(codePage, pSequence, result);
    if (!result.isConverted) DescribeFailure(report, lineOffset, result);
    listener.OnResultLine(result.isConverted ? kTablesSucceeded : kTablesFailed);
    WriteCommand(kBeginCtables, out, 0);
    if (result.isConverted) {
        for (const std::string& warning : result.warnings) WriteStarred(warning, out);
        result.generatedLine = out.LineCount() + 1;
        WriteCommand(result.generated, out, 0);
    } else {
        ReportTablesFailure(report, out, lineOffset);
    }
    WriteCommand(kEndCtables, out, 0);
    return result;
}

void ReportTablesFailure(const ReportEntry& entry, OutputFile& out, long lineOffset) {
    if (entry.kind == TablesErrorKind::kNone) return;
    // Stored columns count from 0 in all lines but the first; users count from 1.
    WriteStarred(FillPosition(kTablesPosition, entry.line + lineOffset, entry.column + 1), out);
    const std::string_view message = MessageOf(entry.kind);
    if (!QUILLET_ASSERT(!message.empty(), "0")) return;
    WriteStarred(FillMessage(message, NameIn(entry)), out);
}

}  // namespace quillet
