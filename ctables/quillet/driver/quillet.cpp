// The driver: reads command after command and sends each on its way into the output.
#include "quillet.h"

#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "driver/commandstream.h"
#include "driver/convertigraph.h"
#include "driver/converttables.h"
#include "driver/messagecatalogue.h"
#include "driver/outputfile.h"
#include "driver/outputwriter.h"
#include "platform/assertion.h"
#include "platform/blocksize.h"
#include "platform/codepage.h"
#include "platform/linereader.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tavqtokensequence.h"
#include "tokenizer/tokencheck.h"
#include "tokenizer/tokensurvey.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

const CodePage& LegacyPage(LegacyCodePage legacyCodePage) {
    const CodePage* pSystem =
        legacyCodePage == LegacyCodePage::kSystem ? CodePage::System() : nullptr;
    return pSystem != nullptr ? *pSystem : CodePage::Windows1252();
}

// An input that is read twice. The code page holds only for the text that was looked at, and a
// text that is cut or grows in between would be converted in part. So both readings have to see
// the same number of bytes, and the last line is not given out before the input has been asked
// whether it is still the same.
class RereadInput final : public TextInput {
public:
    explicit RereadInput(TextInput& input) : m_input(input) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        if (Failed()) return 0;
        const std::size_t count = m_input.Read(buffer, size);
        m_count += count;
        m_sawEnd = count == 0 && size > 0;
        m_isDifferent = m_isSecondTime && IsDifferent();
        return m_isDifferent ? 0 : count;
    }
    bool Rewind() override {
        m_countBefore = std::exchange(m_count, 0);
        m_sawEndBefore = std::exchange(m_sawEnd, false);
        m_isSecondTime = true;
        return m_input.Rewind();
    }
    [[nodiscard]] bool Failed() const override { return m_isDifferent || m_input.Failed(); }
    [[nodiscard]] bool HasChanged() const override { return m_input.HasChanged(); }

private:
    // The first reading may have stopped before the end.
    [[nodiscard]] bool IsDifferent() const {
        if (m_sawEnd && (m_count < m_countBefore || HasChanged())) return true;
        return m_sawEndBefore && m_count > m_countBefore;
    }

    TextInput& m_input;
    std::uint64_t m_count = 0;  // bytes of this reading
    std::uint64_t m_countBefore = 0;
    bool m_sawEnd = false;
    bool m_sawEndBefore = false;
    bool m_isSecondTime = false;
    bool m_isDifferent = false;
};

// UTF-32 in the order of most machines begins in the same way.
bool BeginsAsUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

// Content decides: what is valid UTF-8 as a whole is UTF-8. Null when the input cannot be read,
// not be read again or is UTF-16, whose conversion as anything else would be of no use.
const CodePage* ChooseCodePage(TextInput& input, const Options& options) {
    constexpr std::size_t kMarkSize = 2;
    std::vector<char> block(kBlockSize);
    std::string beginning;
    Utf8Validator validator;
    while (const std::size_t count = input.Read(block.data(), block.size())) {
        const std::string_view piece(block.data(), count);
        beginning.append(piece.substr(0, kMarkSize - beginning.size()));
        if (BeginsAsUtf16(beginning)) return nullptr;
        if (!validator.Add(piece) && beginning.size() == kMarkSize) break;
    }
    if (input.Failed() || !input.Rewind()) return nullptr;
    return validator.IsValid() ? &CodePage::Utf8() : &LegacyPage(options.legacyCodePage);
}

enum class Route { kCopy, kTables, kIgraph };

TextEncoding EncodingOf(const CodePage& codePage) {
    if (&codePage == &CodePage::Utf8()) return TextEncoding::kUtf8;
    if (&codePage == &CodePage::Windows1252()) return TextEncoding::kWindows1252;
    return TextEncoding::kSystem;
}

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

ErrorKind ErrorKindOf(ParseErrorKind kind) {
    switch (kind) {
        case ParseErrorKind::kNone:
            break;
        case ParseErrorKind::kUnclosedLiteral:
            return ErrorKind::kUnclosedLiteral;
        case ParseErrorKind::kExponentWithoutDigits:
            return ErrorKind::kExponentWithoutDigits;
        case ParseErrorKind::kInvalidNumber:
            return ErrorKind::kInvalidNumber;
        case ParseErrorKind::kInvalidCharacter:
            return ErrorKind::kInvalidCharacter;
    }
    return ErrorKind::kUnknown;
}

class Driver {
public:
    Driver(TextInput& input, TextOutput& output, ConversionListener& listener,
           const CodePage& codePage, bool batchMode)
        : m_lines(input),
          m_commands(m_lines, codePage, batchMode),
          m_out(output),
          m_listener(listener),
          m_codePage(codePage),
          m_batchMode(batchMode) {}

    Outcome Run() {
        Outcome outcome = Outcome::kDone;
        try {
            if (!ConvertCommands()) outcome = Outcome::kTokenizingError;
        } catch (const std::bad_alloc&) {
            RunOutOfMemory();
            outcome = Outcome::kOutOfMemory;
        }
        if (!m_out.Finish()) return Outcome::kWriteError;
        return m_lines.Failed() ? Outcome::kReadError : outcome;
    }

private:
    // False when a text that is no syntax ended the run.
    [[nodiscard]] bool ConvertCommands() {
        if (m_lines.SkipByteOrderMark()) m_out.Write(kByteOrderMark);
        if (m_lines.FirstLineEndsInCrLf()) m_out.UseCrLf();
        try {
            while (!m_out.Failed() && !m_commands.ReadCommand() && !m_lines.Failed()) {
                m_isReading = false;
                HandleCommand();
                m_isReading = true;
            }
            return true;
        } catch (const ParseError& error) {
            WriteTokenizingError(error, m_out);
            TellOfError(error);
            return false;
        }
    }

    // Without memory: the stream gives back what it holds, and the rest takes none.
    void RunOutOfMemory() {
        const OutOfMemoryLine line(m_commands.StartLine());
        m_commands.GiveMemoryBack();
        m_out.BreakOff();
        WriteStarred(line.Text(), m_out);
        m_listener.OnDiagnostic(line.Text());
        CommandReport report;
        report.outcome = CommandOutcome::kUnreadable;
        report.firstLine = m_commands.StartLine();
        report.lastLine = m_commands.EndLine();
        report.errorKind = ErrorKind::kOutOfMemory;
        report.errorLine = m_commands.StartLine();
        report.message = line.Text();
        m_listener.OnCommand(report);
    }

    void HandleCommand() {
        m_kind = m_commands.CommandKind();
        switch (RouteOf(m_commands.CommandText())) {
            case Route::kCopy:
                CopyThrough();
                TellOfCopy();
                break;
            case Route::kTables:
                Convert(CommandType::kTables, kBeginTablesComment, kEndTablesComment,
                        ConvertTables);
                break;
            case Route::kIgraph:
                Convert(CommandType::kIgraph, kBeginIgraphComment, kEndIgraphComment,
                        ConvertIgraph);
                break;
        }
    }

    // Where the command goes. A command to be copied is searched for tokenizing errors here; a
    // command to be converted will be when its tokens are kept. The first line alone has decided
    // where the command ends; what it is, its first word decides, which may go on or even begin
    // further down. Inline data has both its words on the first line.
    [[nodiscard]] Route RouteOf(const std::string& text) {
        TokenSurvey look;
        const bool looksAgain = m_commands.FirstValueMayChange();
        if (looksAgain) {
            look = SurveyTokens(m_codePage, text, m_batchMode, 1);
            m_kind = KindOf(look);
        }
        if (m_kind != CommandKind::kOrdinary) return Route::kCopy;
        const Route route = RouteByWord(looksAgain ? look.firstValue : m_commands.FirstValue());
        if (route == Route::kCopy) CheckTokens(m_codePage, text, m_batchMode);
        return route;
    }

    [[nodiscard]] static Route RouteByWord(std::string_view firstValue) {
        if (MeansKeyword(firstValue, "TABLES")) return Route::kTables;
        if (MeansKeyword(firstValue, "IGRAPH")) return Route::kIgraph;
        return Route::kCopy;
    }

    void CopyThrough() {
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

    // The texts for the listener are made before the first line is written, so that a frame that is
    // complete is never told to be what memory was not enough for. The messages of a failure are
    // made while they are written; without memory for them the frame ends after the source.
    template <class Step>
    void Convert(CommandType type, std::string_view beginComment, std::string_view endComment,
                 Step step) {
        const std::string& text = m_commands.CommandText();
        std::string source = text;
        EndWithPeriod(source);
        bool isOutOfMemory = false;
        const std::unique_ptr<TAVQTokenSequence> sequence = MakeSequence(text, isOutOfMemory);
        WriteCommand(beginComment, m_out, 0);
        WriteCommentedOut(text, m_out);
        WriteCommand(endComment, m_out, 0);
        if (sequence != nullptr) sequence->SetNextIndex(0);
        CommandResult result =
            step(m_codePage, sequence.get(), m_out, m_commands.StartLine() - 1, m_listener);
        if (isOutOfMemory) result.errorKind = ErrorKind::kOutOfMemory;
        TellOfResult(type, source, std::move(result));
    }

    void TellOfCopy() {
        CommandReport report;
        report.type = TypeOf(m_kind);
        report.firstLine = m_commands.StartLine();
        report.lastLine = m_commands.EndLine();
        m_listener.OnCommand(report);
    }

    void TellOfResult(CommandType type, std::string_view source, CommandResult result) {
        CommandReport report;
        report.type = type;
        report.outcome = result.isConverted ? CommandOutcome::kConverted : CommandOutcome::kFailed;
        report.firstLine = m_commands.StartLine();
        report.lastLine = m_commands.EndLine();
        report.source = source;
        report.generated = result.generated;
        report.generatedLine = result.generatedLine;
        report.warnings = std::move(result.warnings);
        report.errorKind = result.errorKind;
        report.errorLine = result.errorLine;
        report.errorColumn = result.errorColumn;
        report.message = result.message;
        m_listener.OnCommand(report);
    }

    // Lines of an error that `ReadCommand` found are those of the file; all others count from
    // the command's first line.
    void TellOfError(const ParseError& error) {
        const std::string source =
            m_isReading ? m_commands.TextUpToError() : m_commands.CommandText();
        CommandReport report;
        report.outcome = CommandOutcome::kUnreadable;
        report.firstLine = m_commands.StartLine();
        report.errorLine = error.Line() + (m_isReading ? 0 : m_commands.StartLine() - 1);
        report.lastLine = m_isReading ? report.errorLine : m_commands.EndLine();
        report.source = source;
        report.errorKind = ErrorKindOf(error.Kind());
        report.errorColumn = error.Column();
        report.message = ReasonOf(error.Kind());
        m_listener.OnCommand(report);
    }

    // The command's tokens; null when they take too much memory.
    [[nodiscard]] std::unique_ptr<TAVQTokenSequence> MakeSequence(const std::string& text,
                                                                  bool& isOutOfMemory) const {
        try {
            return std::make_unique<TAVQTokenSequence>(m_codePage, text, m_batchMode, 0);
        } catch (const CommandTooLarge&) {
            return nullptr;
        } catch (const std::bad_alloc&) {
            isOutOfMemory = true;
            return nullptr;
        }
    }

    LineReader m_lines;
    CommandStream m_commands;
    OutputFile m_out;
    ConversionListener& m_listener;
    const CodePage& m_codePage;
    bool m_batchMode;
    CommandKind m_kind = CommandKind::kOrdinary;  // of the command in work
    bool m_isReading = true;                      // errors come from the command stream
};

class MemoryInput final : public TextInput {
public:
    explicit MemoryInput(std::string_view text) : m_text(text), m_rest(text) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = m_rest.copy(buffer, size);
        m_rest.remove_prefix(count);
        return count;
    }
    bool Rewind() override {
        m_rest = m_text;
        return true;
    }
    [[nodiscard]] bool Failed() const override { return false; }

private:
    std::string_view m_text;
    std::string_view m_rest;
};

class MemoryOutput final : public TextOutput {
public:
    explicit MemoryOutput(std::string& text) : m_text(text) {}

    bool Write(std::string_view bytes) override {
        m_text.append(bytes);
        return true;
    }

private:
    std::string& m_text;
};

class MemoryListener final : public ConversionListener {
public:
    explicit MemoryListener(Conversion& conversion) : m_conversion(conversion) {}

    void OnResultLine(std::string_view line) override { m_conversion.resultLines.append(line); }
    void OnDiagnostic(std::string_view line) override {
        m_conversion.diagnostics.append(line).append("\n");
    }

private:
    Conversion& m_conversion;
};

}  // namespace

namespace {

// As `Driver::RunOutOfMemory`, for want of a driver.
Outcome StopBeforeTheFirstCommand(TextOutput& output, ConversionListener& listener) {
    const OutOfMemoryLine line(1);
    listener.OnDiagnostic(line.Text());
    for (const std::string_view text : {kStars, line.Text(), std::string_view("\n")}) {
        if (!output.Write(text)) return Outcome::kWriteError;
    }
    return Outcome::kOutOfMemory;
}

}  // namespace

Outcome ConvertStream(TextInput& input, TextOutput& output, ConversionListener& listener,
                      const Options& options) {
    const ScopedAssertionHandler handler([&listener](const AssertionFailure& failure) {
        listener.OnDiagnostic(AssertionLine(failure));
    });
    RereadInput source(input);
    std::optional<Driver> driver;
    try {
        const CodePage* pCodePage = ChooseCodePage(source, options);
        if (pCodePage == nullptr) return Outcome::kReadError;
        listener.OnEncoding(EncodingOf(*pCodePage));
        driver.emplace(source, output, listener, *pCodePage, options.batchMode);
    } catch (const std::bad_alloc&) {
        return StopBeforeTheFirstCommand(output, listener);
    }
    const Outcome outcome = driver->Run();
    return outcome != Outcome::kWriteError && source.HasChanged() ? Outcome::kReadError : outcome;
}

Conversion ConvertText(std::string_view input, const Options& options) {
    Conversion conversion;
    MemoryInput source(input);
    MemoryOutput target(conversion.output);
    MemoryListener listener(conversion);
    conversion.outcome = ConvertStream(source, target, listener, options);
    return conversion;
}

}  // namespace quillet
