#include "driver/driver.h"

#include <new>
#include <optional>
#include <utility>

#include "driver/commandhead.h"
#include "driver/convertigraph.h"
#include "driver/converttables.h"
#include "driver/messagecatalogue.h"
#include "driver/outputwriter.h"
#include "driver/reasons.h"
#include "platform/commandbudget.h"
#include "tokenizer/tavqtokensequence.h"
#include "tokenizer/tokencheck.h"
#include "tokenizer/words.h"

namespace quillet {

/// A command that has a modern replacement: how it is known, what converts it, what frames it.
struct ConvertedCommand {
    CommandType type;
    std::string_view word;
    StepResult (*pConvert)(const CodePage& codePage, TAVQTokenSequence& tokens);
    ErrorKind tooLarge;       // the reason when it asks for more than its budget
    bool isTooLargeInAPlace;  // and whether that is told with a place: its first word
    std::string_view beginSource;
    std::string_view endSource;
    std::string_view beginResult;
    std::string_view endResult;
    std::string_view succeeded;
    std::string_view failed;
};

namespace {

constexpr ConvertedCommand kConvertedCommands[] = {
    {CommandType::kTables, "TABLES", ConvertTables, ErrorKind::kTableTooLarge, true,
     kBeginTablesComment, kEndTablesComment, kBeginCtables, kEndCtables, kTablesSucceeded,
     kTablesFailed},
    {CommandType::kIgraph, "IGRAPH",
     [](const CodePage& /*codePage*/, TAVQTokenSequence& tokens) { return ConvertIgraph(tokens); },
     ErrorKind::kIgraphTooLarge, false, kBeginIgraphComment, kEndIgraphComment, kBeginGgraph,
     kEndGgraph, kIgraphSucceeded, kIgraphFailed},
};

// The type of a command that is only copied.
CommandType TypeOf(CommandKind kind) {
    switch (kind) {
        case CommandKind::kComment:
            return CommandType::kComment;
        case CommandKind::kDocument:
            return CommandType::kDocument;
        case CommandKind::kInlineData:
            return CommandType::kInlineData;
        case CommandKind::kOrdinary:
            break;
    }
    return CommandType::kOrdinary;
}

StepResult TooLarge(const ConvertedCommand& command) {
    StepResult result;
    result.failure.emplace().kind = command.tooLarge;
    if (command.isTooLargeInAPlace) result.failure->place.emplace();
    return result;
}

}  // namespace

Driver::Driver(TextInput& input, OutputFile& output, ConversionListener& listener,
               const CodePage& codePage, bool batchMode, InputPlace place)
    : m_lines(input, place.blockSize),
      m_commands(m_lines, codePage, batchMode),
      m_out(output),
      m_listener(listener),
      m_codePage(codePage),
      m_batchMode(batchMode),
      m_place(place) {}

Outcome Driver::Run() {
    Outcome outcome = Outcome::kDone;
    try {
        outcome = HandleAll();
    } catch (const std::bad_alloc&) {
        StopWithoutMemory();
        outcome = Outcome::kOutOfMemory;
    }
    if (!m_out.Finish()) return Outcome::kWriteError;
    return m_lines.Failed() ? Outcome::kReadError : outcome;
}

Outcome Driver::RunPiece(bool endsLinesInCrLf) {
    m_lines.ExpectLineEnds(endsLinesInCrLf);
    try {
        const Outcome outcome = HandleCommands();
        return m_out.Failed() ? Outcome::kWriteError : outcome;
    } catch (const std::bad_alloc&) {
        StopWithoutMemory();
        return Outcome::kOutOfMemory;
    }
}

Outcome Driver::HandleAll() {
    if (m_lines.SkipByteOrderMark()) m_out.Write(kByteOrderMark);
    if (m_lines.FirstLineEndsInCrLf()) m_out.UseCrLf();
    return HandleCommands();
}

Outcome Driver::HandleCommands() {
    try {
        while (ReadCommand()) HandleCommand();
        return Outcome::kDone;
    } catch (const ParseError& error) {
        StopAtError(error);
        return Outcome::kTokenizingError;
    }
}

bool Driver::ReadCommand() {
    return !m_out.Failed() && !m_commands.ReadCommand() && !m_lines.Failed();
}

void Driver::HandleCommand() {
    m_kind = m_commands.CommandKind();
    const ConvertedCommand* pCommand = FindConversion();
    if (pCommand != nullptr) return Convert(*pCommand);
    CopyThrough();
    CommandReport report = ReportOfCommand();
    report.type = TypeOf(m_kind);
    m_listener.OnCommand(report);
}

// What the command in work is to be converted by; null for one that is only copied. That one is
// searched for tokenizing errors here; a command to be converted will be when its tokens are kept.
const ConvertedCommand* Driver::FindConversion() {
    const CommandHead head = HeadOf(m_commands, m_codePage, m_batchMode);
    m_kind = head.kind;
    if (m_kind != CommandKind::kOrdinary) return nullptr;
    for (const ConvertedCommand& command : kConvertedCommands) {
        if (MeansKeyword(head.firstValue, command.word)) return &command;
    }
    CheckTokens(m_codePage, m_commands.CommandText(), m_batchMode);
    return nullptr;
}

void Driver::CopyThrough() {
    if (!m_commands.HasMoreParts()) {
        if (!m_lines.Failed()) WriteCommand(m_commands.CommandText(), m_out, 0);
        return;
    }
    while (m_commands.HasMoreParts() && !m_out.Failed()) {
        m_out.Write(m_commands.CommandText());
        m_out.WritePlainLines(m_commands.PlainLines());
        m_commands.ReadNextPart();
    }
    if (!m_lines.Failed()) WriteLastLines(m_commands.CommandText(), m_out);
}

// All texts are made before the first line is written: a frame is whole, or memory ran out and
// there is none.
void Driver::Convert(const ConvertedCommand& command) {
    StepResult result = RunStep(command);
    EndWithPeriod(result.text);
    RemoveBlankLines(result.text);
    std::string source = m_commands.CommandText();
    EndWithPeriod(source);
    CommandReport report = ReportOfCommand();
    report.type = command.type;
    report.source = source;
    for (const Warning& warning : result.warnings) report.warnings.push_back(MessageOf(warning));
    if (!result.failure) {
        report.outcome = CommandOutcome::kConverted;
        report.generated = result.text;
        return WriteConverted(command, report);
    }
    const Failure& failure = *result.failure;
    report.outcome = CommandOutcome::kFailed;
    report.errorKind = result.isOutOfMemory ? ErrorKind::kOutOfMemory : failure.kind;
    const std::string message = FillMessage(ReasonOf(failure.kind).message, failure.name);
    report.message = message;
    if (failure.place) {
        report.errorLine = failure.place->line + m_commands.StartLine() - 1;
        report.errorColumn = failure.place->column;
    }
    WriteFailed(command, report, failure.place.has_value());
}

// The tokens take memory in proportion to the command, and go before anything is written.
StepResult Driver::RunStep(const ConvertedCommand& command) const {
    try {
        TAVQTokenSequence tokens(m_codePage, m_commands.CommandText(), m_batchMode, 0);
        tokens.SetNextIndex(0);
        return command.pConvert(m_codePage, tokens);
    } catch (const CommandTooLarge&) {
        return TooLarge(command);
    } catch (const std::bad_alloc&) {
        StepResult result = TooLarge(command);
        result.isOutOfMemory = true;
        return result;
    }
}

void Driver::WriteConverted(const ConvertedCommand& command, CommandReport& report) {
    WriteSource(command);
    m_listener.OnResultLine(command.succeeded);
    WriteCommand(command.beginResult, m_out, 0);
    for (const std::string& warning : report.warnings) WriteStarred(warning, m_out);
    report.generatedLine = m_out.LineCount() + 1;
    WriteCommand(report.generated, m_out, 0);
    WriteCommand(command.endResult, m_out, 0);
    m_listener.OnCommand(report);
}

// A reason with a place is a message of two lines, one without a place a plain comment; where
// nothing is known, nothing is said.
void Driver::WriteFailed(const ConvertedCommand& command, const CommandReport& report,
                         bool hasPlace) {
    const int column = m_place.callLine != 0 ? m_place.callColumn : report.errorColumn;
    const std::string position =
        hasPlace ? FillPosition(kTablesPosition, m_place.LineOf(report.errorLine), column) : "";
    const std::string comment = "*" + std::string(report.message);
    WriteSource(command);
    m_listener.OnResultLine(command.failed);
    WriteCommand(command.beginResult, m_out, 0);
    if (hasPlace) {
        WriteStarred(position, m_out);
        WriteStarred(report.message, m_out);
    } else if (!report.message.empty()) {
        WriteCommand(comment, m_out, 0);
    }
    WriteCommand(command.endResult, m_out, 0);
    m_listener.OnCommand(report);
}

void Driver::WriteSource(const ConvertedCommand& command) {
    WriteCommand(command.beginSource, m_out, 0);
    WriteCommentedOut(m_commands.CommandText(), m_out);
    WriteCommand(command.endSource, m_out, 0);
}

// The output gives the error's line as it counts; the listener is told that of the file.
void Driver::StopAtError(const ParseError& error) {
    const bool wasReading = error.CountsFromFile();
    ParseError told = error;
    if (wasReading) told.CountFromFile(m_place.linesBefore + 1);
    WriteTokenizingError(told, m_out);
    const std::string source = wasReading ? m_commands.TextUpToError() : m_commands.CommandText();
    CommandReport report = ReportOfCommand();
    report.outcome = CommandOutcome::kUnreadable;
    report.errorLine = error.Line() + (wasReading ? 0 : m_commands.StartLine() - 1);
    if (wasReading) report.lastLine = report.errorLine;
    report.source = source;
    report.errorKind = ErrorKindOf(error.Kind());
    report.errorColumn = error.Column();
    report.message = ReasonOf(report.errorKind).message;
    m_listener.OnCommand(report);
}

// The stream gives back what it holds, and the rest takes no memory.
void Driver::StopWithoutMemory() {
    const OutOfMemoryLine line(m_place.LineOf(m_commands.StartLine()));
    m_commands.GiveMemoryBack();
    m_out.BreakOff();
    WriteStarred(line.Text(), m_out);
    m_listener.OnDiagnostic(line.Text());
    CommandReport report = ReportOfCommand();
    report.outcome = CommandOutcome::kUnreadable;
    report.errorKind = ErrorKind::kOutOfMemory;
    report.errorLine = m_commands.StartLine();
    report.message = line.Text();
    m_listener.OnCommand(report);
}

CommandReport Driver::ReportOfCommand() const {
    CommandReport report;
    report.firstLine = m_commands.StartLine();
    report.lastLine = m_commands.EndLine();
    return report;
}

Outcome StopBeforeTheFirstCommand(TextOutput& output, ConversionListener& listener) {
    const OutOfMemoryLine line(1);
    listener.OnDiagnostic(line.Text());
    for (const std::string_view text : {kStars, line.Text(), std::string_view("\n")}) {
        if (!output.Write(text)) return Outcome::kWriteError;
    }
    return Outcome::kOutOfMemory;
}

}  // namespace quillet
