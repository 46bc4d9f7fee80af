// A text with calls of macros is converted piece by piece: what stands between the calls as any
// text, each expansion for itself, and definitions not at all. So a frame never begins inside of a
// command that went on over the call, and no command goes on over a definition.
#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "driver/driver.h"
#include "driver/findingtexts.h"
#include "driver/legacycommands.h"
#include "driver/legacywords.h"
#include "driver/macroexpansion.h"
#include "driver/outputfile.h"
#include "driver/outputwriter.h"
#include "driver/sourcelines.h"
#include "driver/stringstreams.h"
#include "driver/textencoding.h"
#include "macro/lexer.h"
#include "platform/assertion.h"
#include "platform/linereader.h"
#include "quillet.h"

namespace quillet {

namespace {

constexpr std::string_view kExpansionComment =
    "COMMENT -- Expansion of the macro %s, called in line ";
constexpr std::string_view kExpansionSentence = "In the expansion of %s, called in line ";

// One of the two with the call filled in.
std::string AboutCall(std::string_view format, std::string_view macro, long line) {
    constexpr std::string_view kPlace = "%s";
    const std::size_t place = format.find(kPlace);
    std::string text(format.substr(0, place));
    return text.append(macro)
        .append(format.substr(place + kPlace.size()))
        .append(std::to_string(line));
}

// Pieces are mostly short.
std::size_t BlockSizeFor(std::string_view piece) {
    constexpr std::size_t kSmallest = 256;
    return std::clamp(piece.size() + 1, kSmallest, kBlockSize);
}

std::string WithLineFeeds(std::string_view text) {
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '\r' && index + 1 < text.size() && text[index + 1] == '\n') continue;
        result += text[index];
    }
    return result;
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

CommandOutline OutlineOf(const CommandReport& report) {
    return {report.type, report.outcome, report.firstLine, report.lastLine, report.errorLine};
}

// Keeps everything that the conversion of an expansion tells.
class ExpansionRecorder final : public ConversionListener {
public:
    void OnResultLine(std::string_view line) override { m_resultLines.append(line); }
    void OnDiagnostic(std::string_view line) override { m_diagnostics.emplace_back(line); }
    void OnCommand(const CommandReport& report) override {
        m_outlines.push_back(OutlineOf(report));
        CommandReport kept = report;
        for (std::string_view* pText : {&kept.source, &kept.generated, &kept.message}) {
            *pText = m_texts.emplace_back(*pText);
        }
        m_reports.push_back(std::move(kept));
    }

    // What was told stands in these lines and this column of the text.
    void MoveTo(long firstLine, long lastLine, int column, std::string_view macro) {
        for (CommandReport& report : m_reports) {
            report.firstLine = firstLine;
            report.lastLine = lastLine;
            if (report.errorLine != 0) {
                report.errorLine = firstLine;
                report.errorColumn = column;
            }
            report.macro = macro;
        }
    }

    [[nodiscard]] const std::vector<CommandOutline>& Outlines() const { return m_outlines; }
    [[nodiscard]] std::vector<CommandReport>& Reports() { return m_reports; }
    [[nodiscard]] const std::string& ResultLines() const { return m_resultLines; }
    [[nodiscard]] const std::vector<std::string>& Diagnostics() const { return m_diagnostics; }

private:
    std::deque<std::string> m_texts;  // which the reports refer to
    std::vector<CommandReport> m_reports;
    std::vector<CommandOutline> m_outlines;
    std::string m_resultLines;
    std::vector<std::string> m_diagnostics;
};

// Converts expansions, each for itself.
class ExpansionConverter {
public:
    ExpansionConverter(std::string_view text, const MacroExpansion& expansion,
                       const FindOptions& options, const CodePage& codePage)
        : m_text(text),
          m_lines(text),
          m_expansion(expansion),
          m_options(options),
          m_codePage(codePage) {}

    // False when no call of the command could be expanded, or it holds no legacy command.
    [[nodiscard]] bool Convert(const CommandWithCalls& command) {
        const MacroCall* pCall = FirstExpanded(command);
        if (pCall == nullptr) return false;
        const bool batchMode = m_options.conversion.batchMode;
        m_expanded = ExpandedTextOf(m_text, m_expansion, command, m_codePage, batchMode);
        if (!MayHoldLegacyCommand(m_expanded)) return false;
        m_macro = m_expansion.macros[pCall->macro].name;
        m_command = command;
        m_callLine = pCall->line;
        RunDriver();
        FindCommands();
        return !m_found.commands.empty();
    }

    // Of the last command for which that was true:

    void TellTo(ExpansionListener& listener) {
        std::vector<CommandReport> reports;
        for (const CommandReport& report : m_recorder->Reports()) {
            if (report.outcome == CommandOutcome::kCopied) continue;
            // It is known only when the expansion is put in.
            reports.push_back(report);
            reports.back().generatedLine = 0;
        }
        ExpandedCommand told{m_lines.LineOf(m_command.begin),
                             LastLine(),
                             m_command.firstCall,
                             m_command.callCount,
                             m_macro,
                             m_expanded,
                             IsConverted(),
                             reports,
                             m_found};
        listener.OnExpandedCommand(told);
    }

    [[nodiscard]] bool IsConverted() const { return m_outcome == Outcome::kDone; }
    [[nodiscard]] Outcome LastOutcome() const { return m_outcome; }
    [[nodiscard]] const std::string& Output() const { return m_output; }
    [[nodiscard]] ExpansionRecorder& Recorder() { return *m_recorder; }
    [[nodiscard]] LegacyFindings& Found() { return m_found; }
    [[nodiscard]] std::string_view Macro() const { return m_macro; }
    [[nodiscard]] long CallLine() const { return m_callLine; }

private:
    [[nodiscard]] const MacroCall* FirstExpanded(const CommandWithCalls& command) const {
        for (std::size_t index = 0; index < command.callCount; ++index) {
            const MacroCall& call = m_expansion.calls[command.firstCall + index];
            if (!call.fault) return &call;
        }
        return nullptr;
    }

    [[nodiscard]] long LastLine() const {
        return m_lines.LineOf(std::max(m_command.end, m_command.begin + 1) - 1);
    }

    // In characters, from 1.
    [[nodiscard]] int Column() const {
        const std::size_t lineBegin = m_lines.BeginOf(m_lines.LineOf(m_command.begin));
        const macro::Lexer lexer(m_codePage, m_text.substr(0, m_command.begin));
        int column = 1;
        std::size_t position = lineBegin;
        while (position < m_command.begin) {
            position = lexer.CharacterEnd(position);
            ++column;
        }
        return column;
    }

    void RunDriver() {
        InputPlace place;
        place.callLine = m_lines.LineOf(m_command.begin);
        place.callColumn = Column();
        place.blockSize = BlockSizeFor(m_expanded);
        m_output.clear();
        m_recorder.emplace();
        StringInput input(m_expanded);
        StringOutput target(m_output);
        OutputFile out(target, place.blockSize);
        Driver driver(input, out, *m_recorder, m_codePage, m_options.conversion.batchMode, place);
        m_outcome = driver.RunPiece(/*endsLinesInCrLf=*/false);
        static_cast<void>(out.Finish());
        m_place = place;
    }

    void FindCommands() {
        m_found = FindLegacyCommandsIn(m_expanded, m_options, m_recorder->Outlines(), m_codePage,
                                       m_place);
        const long lastLine = LastLine();
        const std::string prefix = AboutCall(kExpansionSentence, m_macro, m_callLine).append(": ");
        for (LegacyCommand& command : m_found.commands) command.lastLine = lastLine;
        for (Finding& finding : m_found.findings) {
            finding.lastLine = lastLine;
            finding.macro = m_macro;
            finding.sentence.insert(0, prefix);
        }
        m_recorder->MoveTo(m_place.callLine, lastLine, m_place.callColumn, m_macro);
    }

    std::string_view m_text;
    SourceLines m_lines;
    const MacroExpansion& m_expansion;
    const FindOptions& m_options;
    const CodePage& m_codePage;
    // Of the command in work.
    CommandWithCalls m_command;
    std::string_view m_macro;
    long m_callLine = 0;
    InputPlace m_place;
    std::string m_expanded;
    std::string m_output;  // its lines end in LF
    Outcome m_outcome = Outcome::kDone;
    std::optional<ExpansionRecorder> m_recorder;
    LegacyFindings m_found;
};

// Tells the listener the lines of the text, and keeps those of the piece.
class PieceListener final : public ConversionListener {
public:
    PieceListener(ConversionListener& listener, long linesBefore)
        : m_listener(listener), m_linesBefore(linesBefore) {}

    void OnResultLine(std::string_view line) override { m_listener.OnResultLine(line); }
    void OnDiagnostic(std::string_view line) override { m_listener.OnDiagnostic(line); }
    void OnCommand(const CommandReport& report) override {
        m_outlines.push_back(OutlineOf(report));
        CommandReport told = report;
        for (long* pLine : {&told.firstLine, &told.lastLine, &told.errorLine}) {
            if (*pLine != 0) *pLine += m_linesBefore;
        }
        m_listener.OnCommand(told);
    }

    [[nodiscard]] const std::vector<CommandOutline>& Outlines() const { return m_outlines; }

private:
    ConversionListener& m_listener;
    long m_linesBefore;
    std::vector<CommandOutline> m_outlines;
};

class TextConverter {
public:
    TextConverter(std::string_view text, const ExpandedConversion& conversion,
                  const MacroExpansion& expansion, const FindOptions& options,
                  const CodePage& codePage)
        : m_text(text),
          m_lines(text),
          m_conversion(conversion),
          m_expansion(expansion),
          m_options(options),
          m_codePage(codePage),
          m_converter(text, expansion, options, codePage),
          m_out(conversion.output),
          m_callsLeft(expansion.macros.size(), 0) {
        for (std::size_t place = 0; place < expansion.macros.size(); ++place) {
            m_callsLeft[place] = expansion.macros[place].callsLeft;
        }
    }

    Outcome Run() {
        if (m_text.starts_with(kByteOrderMark)) {
            m_out.Write(kByteOrderMark);
            m_written = kByteOrderMark.size();
        }
        const std::size_t lineFeed = m_text.find('\n');
        m_endsLinesInCrLf =
            lineFeed != std::string_view::npos && lineFeed > 0 && m_text[lineFeed - 1] == '\r';
        if (m_endsLinesInCrLf) m_out.UseCrLf();
        Outcome outcome = ConvertPieces();
        if (outcome == Outcome::kDone) outcome = ConvertUpTo(m_text.size());
        if (m_isStopped) {
            for (const MacroCall& call : m_expansion.calls) {
                if (call.begin >= m_stop && !call.fault) LeaveCall(call);
            }
        }
        if (!m_out.Finish()) return Outcome::kWriteError;
        return outcome;
    }

    // Everything that was found, by lines.
    LegacyFindings Found() {
        Add(FindingsOfWhole(m_text, m_options, m_codePage));
        m_found.findings.insert(m_found.findings.end(), m_expansion.findings.begin(),
                                m_expansion.findings.end());
        TellOfBodies();
        const auto byLine = [](const auto& one, const auto& other) {
            return one.firstLine < other.firstLine;
        };
        std::stable_sort(m_found.commands.begin(), m_found.commands.end(), byLine);
        std::stable_sort(m_found.findings.begin(), m_found.findings.end(), byLine);
        return std::move(m_found);
    }

private:
    // Definitions and commands with calls, as they come.
    Outcome ConvertPieces() {
        const std::vector<CommandWithCalls> commands = CommandsWithCalls(m_expansion);
        auto command = commands.begin();
        Outcome outcome = Outcome::kDone;
        for (const DefinedMacro& macro : m_expansion.macros) {
            // Those of other files come last.
            if (macro.end == 0) break;
            while (command != commands.end() && command->begin < macro.begin) {
                outcome = ConvertCommand(*command++);
                if (outcome != Outcome::kDone) return outcome;
            }
            outcome = CopyDefinition(macro);
            if (outcome != Outcome::kDone) return outcome;
        }
        while (command != commands.end() && outcome == Outcome::kDone) {
            outcome = ConvertCommand(*command++);
        }
        return outcome;
    }

    Outcome CopyDefinition(const DefinedMacro& macro) {
        const std::size_t begin = BeginOf(macro.begin);
        const Outcome outcome = ConvertUpTo(begin);
        if (outcome != Outcome::kDone) return outcome;
        const std::size_t end = EndOf(macro.end);
        WriteCommand(WithLineFeeds(m_text.substr(begin, end - begin)), m_out, 0);
        m_written = end;
        CommandReport report;
        report.firstLine = macro.firstLine;
        report.lastLine = macro.lastLine;
        m_conversion.listener.OnCommand(report);
        return outcome;
    }

    Outcome ConvertCommand(const CommandWithCalls& command) {
        if (!m_converter.Convert(command)) return Outcome::kDone;
        if (m_converter.LastOutcome() == Outcome::kTokenizingError) {
            m_converter.TellTo(m_conversion.expansions);
            LeaveCalls(command);
            return Outcome::kDone;
        }
        if (m_converter.LastOutcome() != Outcome::kDone) return m_converter.LastOutcome();
        const std::size_t begin = BeginOf(command.begin);
        const Outcome outcome = ConvertUpTo(begin);
        if (outcome != Outcome::kDone) return outcome;
        m_converter.TellTo(m_conversion.expansions);
        const std::size_t end = EndOf(command.end);
        WriteExpansion(m_text.substr(begin, end - begin));
        m_written = end;
        m_found.fromMacros += static_cast<long>(m_converter.Found().commands.size());
        Add(std::move(m_converter.Found()));
        return outcome;
    }

    void WriteExpansion(std::string_view source) {
        WriteCommentedOut(WithLineFeeds(source.substr(0, source.find_last_not_of(" \t\r\n") + 1)),
                          m_out);
        WriteCommand(AboutCall(kExpansionComment, m_converter.Macro(), m_converter.CallLine()),
                     m_out, 0);
        const long linesBefore = m_out.LineCount();
        m_out.Write(m_converter.Output());
        ExpansionRecorder& recorder = m_converter.Recorder();
        if (!recorder.ResultLines().empty()) {
            m_conversion.listener.OnResultLine(recorder.ResultLines());
        }
        for (const std::string& line : recorder.Diagnostics()) {
            m_conversion.listener.OnDiagnostic(line);
        }
        for (CommandReport& report : recorder.Reports()) {
            if (report.generatedLine != 0) report.generatedLine += linesBefore;
            m_conversion.listener.OnCommand(report);
        }
    }

    // The commands that it would have become are nowhere: so those of the bodies are not dealt
    // with.
    void LeaveCalls(const CommandWithCalls& command) {
        for (std::size_t index = 0; index < command.callCount; ++index) {
            const MacroCall& call = m_expansion.calls[command.firstCall + index];
            if (!call.fault) LeaveCall(call);
        }
        Finding finding;
        finding.code = FindingCode::kMacroFault;
        finding.firstLine = finding.causeLine = m_converter.CallLine();
        finding.lastLine = m_lines.LineOf(std::max(command.end, command.begin + 1) - 1);
        finding.macro = m_converter.Macro();
        finding.sentence = SentenceOf(Wording::kMacroFaultInExpansion,
                                      {.name = finding.macro, .line = finding.firstLine});
        m_found.findings.push_back(std::move(finding));
    }

    void LeaveCall(const MacroCall& call) {
        for (const std::size_t place : call.expanded) ++m_callsLeft[place];
    }

    // What stands between the pieces.
    Outcome ConvertUpTo(std::size_t end) {
        std::string_view piece = m_text.substr(m_written, end - m_written);
        if (IsBlank(piece)) return Outcome::kDone;
        const bool isInLine =
            m_written > 0 && m_text[m_written - 1] != '\n' && m_written != kByteOrderMark.size();
        if (isInLine) piece.remove_prefix(std::min(piece.find_first_not_of(" \t"), piece.size()));
        InputPlace place;
        place.linesBefore = m_lines.LineOf(m_written) - 1;
        place.blockSize = BlockSizeFor(piece);
        StringInput input(piece);
        PieceListener listener(m_conversion.listener, place.linesBefore);
        Driver driver(input, m_out, listener, m_codePage, m_options.conversion.batchMode, place);
        const Outcome outcome = driver.RunPiece(m_endsLinesInCrLf);
        // After an error nothing of the text is read.
        if (outcome != Outcome::kDone) {
            m_isStopped = true;
            m_stop = m_written;
            piece = m_text.substr(end - piece.size());
        }
        Add(FindLegacyCommandsIn(piece, m_options, listener.Outlines(), m_codePage, place));
        return outcome;
    }

    // The line's beginning where only blanks stand before.
    [[nodiscard]] std::size_t BeginOf(std::size_t position) const {
        std::size_t begin = position;
        while (begin > m_written && macro::IsBlank(m_text[begin - 1])) --begin;
        const bool isLine = begin == 0 || m_text[begin - 1] == '\n' || begin == m_written;
        return isLine ? begin : position;
    }

    // After the line where only blanks and comments stand there.
    [[nodiscard]] std::size_t EndOf(std::size_t position) const {
        const macro::Lexer lexer(m_codePage, m_text);
        if (!lexer.IsRestOfLineEmpty(position)) return position;
        const std::size_t end = lexer.LineEnd(position);
        return end < m_text.size() ? lexer.LineBreakEnd(end) : end;
    }

    void TellOfBodies() {
        for (std::size_t place = 0; place < m_expansion.macros.size(); ++place) {
            const DefinedMacro& macro = m_expansion.macros[place];
            if (macro.end == 0) break;
            if (macro.commands.empty() || (m_isStopped && macro.begin >= m_stop)) continue;
            TellOfBody(macro, m_callsLeft[place]);
        }
    }

    void TellOfBody(const DefinedMacro& macro, long callsLeft) {
        const long calls = macro.calls + macro.callsElsewhere;
        callsLeft += macro.callsLeftElsewhere;
        const bool isDone = calls > 0 && callsLeft == 0;
        const bool tellsOfOthers = macro.callsElsewhere > 0;
        const std::string other = std::to_string(tellsOfOthers ? callsLeft : macro.firstCallLine);
        InputPlace place;
        place.linesBefore = macro.firstLine - 1;
        LegacyFindings inBody = FindLegacyCommandsIn(
            m_text.substr(macro.begin, macro.end - macro.begin), m_options, {}, m_codePage, place);
        for (Finding& finding : inBody.findings) {
            if (KindOf(finding.code) != FindingKind::kOverlooked) continue;
            finding.code = isDone ? FindingCode::kMacroExpanded : FindingCode::kMacroBody;
            finding.causeLine = macro.firstLine;
            finding.macro = macro.name;
            finding.sentence = SentenceOf(WordingOf(isDone, tellsOfOthers, calls),
                                          {.command = WordOf(finding.command),
                                           .name = macro.name,
                                           .other = other,
                                           .line = finding.firstLine,
                                           .cause = macro.firstLine,
                                           .count = calls});
            if (!isDone) {
                m_found.commands.push_back({finding.command, LegacyOutcome::kOverlooked,
                                            finding.firstLine, finding.lastLine});
            }
            m_found.findings.push_back(std::move(finding));
        }
    }

    static Wording WordingOf(bool isDone, bool tellsOfOthers, long calls) {
        if (tellsOfOthers) {
            return isDone ? Wording::kMacroExpandedElsewhere : Wording::kMacroBodyCalledElsewhere;
        }
        if (isDone) return calls == 1 ? Wording::kMacroExpanded : Wording::kMacroExpandedOften;
        if (calls == 0) return Wording::kMacroBody;
        return calls == 1 ? Wording::kMacroBodyCalledOnce : Wording::kMacroBodyCalled;
    }

    void Add(LegacyFindings found) {
        std::move(found.commands.begin(), found.commands.end(),
                  std::back_inserter(m_found.commands));
        std::move(found.findings.begin(), found.findings.end(),
                  std::back_inserter(m_found.findings));
    }

    std::string_view m_text;
    SourceLines m_lines;
    const ExpandedConversion& m_conversion;
    const MacroExpansion& m_expansion;
    const FindOptions& m_options;
    const CodePage& m_codePage;
    ExpansionConverter m_converter;
    OutputFile m_out;
    bool m_endsLinesInCrLf = false;
    std::size_t m_written = 0;  // of the text
    bool m_isStopped = false;
    std::size_t m_stop = 0;         // where the piece begins that an error stopped
    std::vector<long> m_callsLeft;  // of each macro
    LegacyFindings m_found;
};

}  // namespace

void ConvertExpansions(std::string_view text, const MacroExpansion& expansion,
                       const Options& options, ExpansionListener& listener) {
    StringInput input(text);
    const CodePage* pCodePage = ChooseCodePage(input, options);
    if (pCodePage == nullptr) return;
    const ScopedAssertionHandler handler(TellNobody);
    FindOptions search;
    search.conversion = options;
    ExpansionConverter converter(text, expansion, search, *pCodePage);
    for (const CommandWithCalls& command : CommandsWithCalls(expansion)) {
        if (converter.Convert(command)) converter.TellTo(listener);
    }
}

Outcome ConvertExpanded(std::string_view text, const ExpandedConversion& conversion,
                        const MacroExpansion& expansion, const FindOptions& options,
                        LegacyFindings& found) {
    const ScopedAssertionHandler handler([&conversion](const AssertionFailure& failure) {
        conversion.listener.OnDiagnostic(AssertionLine(failure));
    });
    StringInput input(text);
    const CodePage* pCodePage = ChooseCodePage(input, options.conversion);
    if (pCodePage == nullptr) return Outcome::kReadError;
    conversion.listener.OnEncoding(EncodingOf(*pCodePage, options.conversion));
    TextConverter converter(text, conversion, expansion, options, *pCodePage);
    const Outcome outcome = converter.Run();
    found = converter.Found();
    return outcome;
}

}  // namespace quillet
