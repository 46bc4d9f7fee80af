// A result is compared command by command, so comments and frames are of no interest here: what
// counts is the text of each command that is left.
#include "driver/convertedcommands.h"

#include <algorithm>
#include <utility>

#include "driver/driver.h"
#include "driver/sourcelines.h"
#include "driver/stringstreams.h"
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

// `text` without the comments that lines begin with, and without lines of nothing else.
std::string WithoutFirstComments(const std::string& text) {
    std::string result;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        const std::string_view line = std::string_view(text).substr(begin, end - begin);
        begin = end;
        std::size_t first = std::min(line.find_first_not_of(" \t"), line.size());
        const std::string_view indentation = line.substr(0, first);
        bool hasComment = false;
        while (line.substr(first).starts_with("/*")) {
            hasComment = true;
            const std::size_t close = line.find("*/", first + 2);
            first = close == std::string_view::npos ? line.size() : close + 2;
            first = std::min(line.find_first_not_of(" \t\n", first), line.size());
        }
        if (hasComment && first == line.size()) continue;
        result.append(indentation).append(line.substr(first));
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
    const std::string source = WithoutFirstComments(WithLfAlone(text));
    const SourceLines lines(source);
    ConvertedCommands commands;
    StringInput input(source);
    NoOutput output;
    PieceRecorder listener(lines, commands);
    Driver driver(input, output, listener, codePage, batchMode);
    if (driver.Run() != Outcome::kDone) commands.hasFailed = true;
    return commands;
}

}  // namespace quillet
