// The driver: reads command after command and sends each on its way into the output.
#include "quillet.h"

#include <memory>
#include <utility>
#include <vector>

#include "driver/commandstream.h"
#include "driver/convertigraph.h"
#include "driver/converttables.h"
#include "driver/messagecatalogue.h"
#include "driver/outputfile.h"
#include "driver/outputwriter.h"
#include "platform/assertion.h"
#include "platform/codepage.h"
#include "platform/linereader.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tavqtokensequence.h"
#include "tokenizer/tavqtokenvector.h"

namespace quillet {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kBlockSize = 128UL * 1024;

// A command is recognised by this many bytes of its first word.
constexpr std::size_t kWordBytesCompared = 3;

const CodePage& LegacyPage(LegacyCodePage legacyCodePage) {
    const CodePage* pSystem =
        legacyCodePage == LegacyCodePage::kSystem ? CodePage::System() : nullptr;
    return pSystem != nullptr ? *pSystem : CodePage::Windows1252();
}

// Content decides: what is valid UTF-8 as a whole is UTF-8. Null when the input cannot be read
// or not be read again.
const CodePage* ChooseCodePage(TextInput& input, const Options& options) {
    std::vector<char> block(kBlockSize);
    Utf8Validator validator;
    while (const std::size_t count = input.Read(block.data(), block.size())) {
        if (!validator.Add({block.data(), count})) break;
    }
    if (input.Failed() || !input.Rewind()) return nullptr;
    return validator.IsValid() ? &CodePage::Utf8() : &LegacyPage(options.legacyCodePage);
}

enum class Route { kCopy, kTables, kIgraph };

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
        if (m_lines.SkipByteOrderMark()) m_out.Write(kByteOrderMark);
        if (m_lines.FirstLineEndsInCrLf()) m_out.UseCrLf();
        Outcome outcome = Outcome::kDone;
        try {
            while (!m_out.Failed() && !m_commands.ReadCommand() && !m_lines.Failed()) {
                HandleCommand();
            }
        } catch (const ParseError& error) {
            WriteTokenizingError(error, m_out);
            outcome = Outcome::kTokenizingError;
        }
        if (!m_out.Finish()) return Outcome::kWriteError;
        return m_lines.Failed() ? Outcome::kReadError : outcome;
    }

private:
    void HandleCommand() {
        switch (RouteOf(m_commands.CommandText())) {
            case Route::kCopy:
                CopyThrough();
                break;
            case Route::kTables:
                Convert(kBeginTablesComment, kEndTablesComment, ConvertTables);
                break;
            case Route::kIgraph:
                Convert(kBeginIgraphComment, kEndIgraphComment, ConvertIgraph);
                break;
        }
    }

    // Where the command goes. A command to be copied is searched for tokenizing errors here; a
    // command to be converted will be when its tokens are kept.
    [[nodiscard]] Route RouteOf(const std::string& text) const {
        if (m_commands.CommandKind() != CommandKind::kOrdinary) return Route::kCopy;
        Route route = RouteByWord(m_commands.FirstValue());
        if (m_commands.FirstValue().empty()) {
            // The first line is a comment alone; the first word stands further down.
            const TokenSurvey look = SurveyTokens(m_codePage, text, m_batchMode, 1);
            if (KindOf(look) != CommandKind::kOrdinary) return Route::kCopy;
            route = RouteByWord(look.firstValue);
        }
        if (route == Route::kCopy) CheckTokens(m_codePage, text, m_batchMode);
        return route;
    }

    [[nodiscard]] static Route RouteByWord(std::string_view firstValue) {
        if (CompareTextPrefix(firstValue, "TABLES", kWordBytesCompared) == 0) {
            return Route::kTables;
        }
        if (CompareTextPrefix(firstValue, "IGRAPH", kWordBytesCompared) == 0) {
            return Route::kIgraph;
        }
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

    template <class Step>
    void Convert(std::string_view beginComment, std::string_view endComment, Step step) {
        const std::string& text = m_commands.CommandText();
        const std::unique_ptr<TAVQTokenSequence> sequence = MakeSequence(text);
        WriteCommand(beginComment, m_out, 0);
        WriteCommand(CommentOut(text), m_out, 1);
        WriteCommand(endComment, m_out, 0);
        if (sequence != nullptr) sequence->SetNextIndex(0);
        step(m_codePage, sequence.get(), m_out, m_commands.StartLine() - 1, m_listener);
    }

    [[nodiscard]] std::unique_ptr<TAVQTokenSequence> MakeSequence(const std::string& text) const {
        try {
            return std::make_unique<TAVQTokenSequence>(m_codePage, text, m_batchMode, 0);
        } catch (const CommandTooLarge&) {
            return nullptr;
        }
    }

    LineReader m_lines;
    CommandStream m_commands;
    OutputFile m_out;
    ConversionListener& m_listener;
    const CodePage& m_codePage;
    bool m_batchMode;
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

Outcome ConvertStream(TextInput& input, TextOutput& output, ConversionListener& listener,
                      const Options& options) {
    const ScopedAssertionHandler handler([&listener](const AssertionFailure& failure) {
        listener.OnDiagnostic(AssertionLine(failure));
    });
    const CodePage* pCodePage = ChooseCodePage(input, options);
    if (pCodePage == nullptr) return Outcome::kReadError;
    return Driver(input, output, listener, *pCodePage, options.batchMode).Run();
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
