// Some programs end a command, and above all a comment, at a blank line. The conversion does not:
// a text for such a program becomes one for the conversion by the periods that are missing. They
// have to be where the conversion sees them, which a closed comment after a period prevents.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "driver/macrodefinitions.h"
#include "driver/outputfile.h"
#include "driver/sourcelines.h"
#include "driver/stringstreams.h"
#include "driver/textcut.h"
#include "driver/textencoding.h"
#include "platform/assertion.h"
#include "quillet.h"

namespace quillet {

namespace {

// The tokens and the comments of a line of syntax.
struct LineParts {
    std::size_t tokensEnd = 0;  // after the last token
    bool hasToken = false;
    bool hasOpenComment = false;  // which goes to the line's end
};

LineParts PartsOf(std::string_view line) {
    LineParts parts;
    std::size_t position = 0;
    while (position < line.size()) {
        const char c = line[position];
        if (line.substr(position, 2) == "/*") {
            const std::size_t end = line.find("*/", position + 2);
            parts.hasOpenComment = end == std::string_view::npos;
            position = parts.hasOpenComment ? line.size() : end + 2;
            continue;
        }
        if (c == '\'' || c == '"') {
            const std::size_t end = line.find(c, position + 1);
            position = end == std::string_view::npos ? line.size() : end + 1;
        } else {
            ++position;
        }
        if (c == ' ' || c == '\t' || c == '\r') continue;
        parts.hasToken = true;
        parts.tokensEnd = position;
    }
    return parts;
}

// True when a literal on a later line is glued to one that this line ends in.
bool EndsInGlue(std::string_view line) {
    const std::size_t plus = line.find_last_not_of(" \t");
    if (plus == std::string_view::npos || line[plus] != '+') return false;
    const std::size_t quote = line.substr(0, plus).find_last_not_of(" \t");
    return quote != std::string_view::npos && (line[quote] == '\'' || line[quote] == '"');
}

class BlankLineEnder {
public:
    BlankLineEnder(const SourceLines& lines, const CodePage& codePage)
        : m_lines(lines), m_codePage(codePage) {}

    std::string Run() {
        m_definitions = FindMacroDefinitions(m_lines, CutText(m_lines, m_codePage, {}).extents);
        CutSettings settings;
        settings.endsAtBlankLine = [this](long line) { return EndsAt(line); };
        const TextCut cut = CutText(m_lines, m_codePage, settings);
        for (const CommandExtent& extent : cut.extents) {
            // The conversion reads no further.
            if (!extent.isReadable) break;
            if (IsEndedByBlankLine(extent)) End(extent);
        }
        m_result.append(m_lines.Text().substr(m_copied));
        return std::move(m_result);
    }

private:
    // Asked for ever later lines.
    bool EndsAt(long line) {
        const std::size_t offset = m_lines.BeginOf(line);
        while (m_next < m_definitions.size() && m_definitions[m_next].bodyEnd <= offset) ++m_next;
        const bool isInMacro =
            m_next < m_definitions.size() && m_definitions[m_next].bodyBegin <= offset;
        while (m_textLine + 1 < line) {
            ++m_textLine;
            if (!IsBlankLine(m_lines.Line(m_textLine))) m_lastTextLine = m_textLine;
        }
        return !isInMacro && !EndsInGlue(m_lines.Line(m_lastTextLine));
    }

    [[nodiscard]] bool IsEndedByBlankLine(const CommandExtent& extent) const {
        const bool isCommand =
            extent.kind == CommandKind::kOrdinary || extent.kind == CommandKind::kComment;
        return isCommand && !extent.isEnded && extent.lastLine < m_lines.Count();
    }

    void End(const CommandExtent& extent) {
        if (extent.kind == CommandKind::kComment) {
            const std::string_view line = m_lines.Line(extent.lastLine);
            const std::size_t end = line.find_last_not_of(" \t\r") + 1;
            // COMPUTE is cut like a comment, so its period has to be the last of the line. Unlike
            // one it may have comments of its own.
            const bool isInOpenComment =
                !IsRealComment(m_lines, extent, false) && PartsOf(line).hasOpenComment;
            return Insert(m_lines.BeginOf(extent.lastLine) + end, isInOpenComment ? " */." : ".");
        }
        long line = extent.lastLine;
        while (line >= extent.firstLine && !PartsOf(m_lines.Line(line)).hasToken) --line;
        if (line >= extent.firstLine) EndAfterToken(line);
        // What is left are comments, which are a command of their own now.
        if (line < extent.lastLine) EndComments(extent.lastLine);
    }

    // Of two periods, the first would belong to the command.
    void EndAfterToken(long number) {
        const std::string_view line = m_lines.Line(number);
        const std::size_t end = PartsOf(line).tokensEnd;
        const std::size_t begin = m_lines.BeginOf(number);
        Insert(begin + end, line[end - 1] == '.' ? "" : ".");
        const std::size_t comment = line.find("/*", end);
        if (comment == std::string_view::npos) return;
        std::size_t close = line.find("*/", comment + 2);
        while (close != std::string_view::npos) {
            Insert(begin + close + 1, " ");
            ++m_copied;
            close = line.find("*/", close + 2);
        }
    }

    void EndComments(long number) {
        const bool isOpen = PartsOf(m_lines.Line(number)).hasOpenComment;
        Insert(m_lines.EndOf(number), isOpen ? " */." : ".");
    }

    // Copies the text up to `offset`, and then `text`.
    void Insert(std::size_t offset, std::string_view text) {
        m_result.append(m_lines.Text().substr(m_copied, offset - m_copied)).append(text);
        m_copied = offset;
    }

    const SourceLines& m_lines;
    const CodePage& m_codePage;
    std::vector<MacroDefinition> m_definitions;
    std::size_t m_next = 0;
    long m_textLine = 0;  // the last line looked at for text
    long m_lastTextLine = 0;
    std::string m_result;
    std::size_t m_copied = 0;
};

}  // namespace

std::string EndAtBlankLines(std::string_view text, const Options& options) {
    StringInput input(text);
    const CodePage* pCodePage = ChooseCodePage(input, options);
    if (options.batchMode || pCodePage == nullptr) return std::string(text);
    const ScopedAssertionHandler handler(TellNobody);
    const SourceLines lines(text);
    return BlankLineEnder(lines, *pCodePage).Run();
}

}  // namespace quillet
