// A result is compared command by command, so comments and frames are of no interest here: what
// counts is the text of each command that is left.
#include "driver/convertedcommands.h"

#include <algorithm>
#include <utility>

#include "driver/driver.h"
#include "driver/outputfile.h"
#include "driver/sourcelines.h"
#include "driver/stringstreams.h"
#include "macro/lexer.h"
#include "platform/multibyte.h"

namespace quillet {

namespace {

class NoOutput final : public TextOutput {
public:
    bool Write(std::string_view /*bytes*/) override { return true; }
};

class PieceRecorder final : public ConversionListener {
public:
    // Borrows the text.
    PieceRecorder(const SourceLines& lines, ConvertedCommands& commands)
        : m_lines(lines), m_commands(commands) {}

    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view /*line*/) override {}

    void OnCommand(const CommandReport& report) override {
        switch (report.outcome) {
            case CommandOutcome::kCopied:
                Copy(report);
                return;
            case CommandOutcome::kConverted:
                ++m_commands.legacyCommands;
                m_commands.pieces.push_back({report.type, true, std::string(report.generated)});
                return;
            case CommandOutcome::kFailed:
            case CommandOutcome::kUnreadable:
                if (!m_commands.hasFailed) m_commands.failure = report.message;
                m_commands.hasFailed = true;
                return;
        }
    }

private:
    void Copy(const CommandReport& report) {
        const std::size_t begin = m_lines.BeginOf(report.firstLine);
        const std::string_view text =
            m_lines.Text().substr(begin, m_lines.EndOf(report.lastLine) - begin);
        CommandType type = report.type;
        if (type == CommandType::kComment) {
            // Three letters of a word count for the converter, but COMPUTE says something.
            const std::size_t word = std::min(text.find_first_not_of(" \t+-"), text.size());
            if (InUpperAscii(text.substr(word, 4)) != "COMP") return;
            type = CommandType::kOrdinary;
        }
        m_commands.pieces.push_back({type, false, std::string(text)});
    }

    const SourceLines& m_lines;
    ConvertedCommands& m_commands;
};

// Where the comments begin that stand after the period of a command, up to the end of its line; the
// end of the line when there are none.
std::size_t FindLastComments(const macro::Lexer& lexer, std::size_t position, std::size_t end) {
    bool isAfterPeriod = false;
    while (position < end) {
        const char byte = lexer.At(position);
        if (macro::IsQuote(byte)) {
            position = lexer.LiteralEnd(position);
            isAfterPeriod = false;
        } else if (lexer.IsAtComment(position)) {
            if (isAfterPeriod && lexer.IsRestOfLineEmpty(position)) return position;
            position = lexer.CommentEnd(position);
        } else {
            if (!macro::IsBlank(byte)) isAfterPeriod = byte == '.';
            position = lexer.CharacterEnd(position);
        }
    }
    return end;
}

// `text`, with LF at line ends, without the comments that a line begins with and those after the
// period of a command; and without lines of nothing else.
std::string WithoutOuterComments(const std::string& text, const CodePage& codePage) {
    const macro::Lexer lexer(codePage, text);
    std::string result;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = lexer.LineEnd(begin);
        std::size_t first = lexer.SkipBlanks(begin);
        result.append(text, begin, first - begin);
        const bool hasComment = lexer.IsAtComment(first);
        while (lexer.IsAtComment(first)) first = lexer.SkipBlanks(lexer.CommentEnd(first));
        const bool isLeftOut = hasComment && first == end;
        if (isLeftOut) {
            result.resize(result.find_last_of('\n') + 1);
        } else {
            result.append(text, first, FindLastComments(lexer, first, end) - first).append("\n");
        }
        begin = end + 1;
    }
    return result;
}

}  // namespace

std::string WithLfAlone(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r') {
            result += text[i];
        } else if (i + 1 == text.size() || text[i + 1] != '\n') {
            result += '\n';
        }
    }
    return result;
}

ConvertedCommands ConvertCommands(std::string_view text, const CodePage& codePage, bool batchMode) {
    const std::string source = WithoutOuterComments(WithLfAlone(text), codePage);
    const SourceLines lines(source);
    ConvertedCommands commands;
    StringInput input(source);
    NoOutput nowhere;
    OutputFile output(nowhere);
    PieceRecorder listener(lines, commands);
    Driver driver(input, output, listener, codePage, batchMode);
    if (driver.Run() != Outcome::kDone) commands.hasFailed = true;
    return commands;
}

}  // namespace quillet
