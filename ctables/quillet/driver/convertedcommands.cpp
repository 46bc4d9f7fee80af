// A result is compared command by command, so comments and frames are of no interest here: what
// counts is the text of each command that is left.
#include "driver/convertedcommands.h"

#include <utility>

#include "driver/driver.h"
#include "driver/sourcelines.h"
#include "driver/stringstreams.h"

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
                if (report.type != CommandType::kComment) Copy(report);
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
        const std::string_view last = m_lines.Line(report.lastLine);
        const std::size_t end = m_lines.BeginOf(report.lastLine) + last.size();
        m_commands.pieces.push_back(
            {report.type, false, std::string(m_lines.Text().substr(begin, end - begin))});
    }

    const SourceLines& m_lines;
    ConvertedCommands& m_commands;
};

}  // namespace

std::string WithLineFeeds(std::string_view text) {
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
    const std::string source = WithLineFeeds(text);
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
