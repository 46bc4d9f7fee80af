// The stream that the conversion reads from cuts here as well, so that both agree on every command.
#include "driver/textcut.h"

#include <string>
#include <string_view>
#include <utility>

#include "driver/commandhead.h"
#include "driver/commandstream.h"
#include "driver/commandwords.h"
#include "driver/linewalker.h"
#include "driver/stringstreams.h"
#include "platform/linereader.h"
#include "tokenizer/commandend.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tokencheck.h"

namespace quillet {

namespace {

class TextCutter {
public:
    TextCutter(const SourceLines& lines, const CodePage& codePage, const CutSettings& settings)
        : m_lines(lines),
          m_codePage(codePage),
          m_settings(settings),
          m_input(lines.Text()),
          m_reader(m_input),
          m_commands(m_reader, codePage, settings.batchMode) {
        static_cast<void>(m_reader.SkipByteOrderMark());
        if (settings.endsAtBlankLine) m_commands.EndAtBlankLines(settings.endsAtBlankLine);
    }

    TextCut Run() {
        while (ReadCommand()) {
        }
        return std::move(m_cut);
    }

private:
    bool ReadCommand() {
        try {
            if (m_commands.ReadCommand()) return false;
            AddCommand();
        } catch (const ParseError& error) {
            m_cut.hasError = true;
            AddUnreadable(m_commands.StartLine(), error.Line());
            m_commands.GoOnAfterError();
        }
        return true;
    }

    void AddCommand() {
        if (m_commands.CommandKind() == CommandKind::kInlineData) return AddInlineData();
        CommandExtent extent;
        extent.kind = m_commands.CommandKind();
        extent.firstLine = m_commands.StartLine();
        extent.lastLine = m_commands.EndLine();
        FindEnd(extent);
        if (m_settings.checksTokens) CheckTokensOfCommand();
        m_cut.extents.push_back(extent);
    }

    // The command has its lines as they stand, but for what a period cuts off the last one.
    void FindEnd(CommandExtent& extent) const {
        std::string_view text = m_commands.CommandText();
        if (text.ends_with('\n')) text.remove_suffix(1);
        const std::size_t lastBegin = text.rfind('\n') + 1;
        const std::size_t length = text.size() - lastBegin;
        extent.isEnded = length < m_lines.Line(extent.lastLine).size();
        extent.end = m_lines.BeginOf(extent.lastLine) + length;
    }

    void AddInlineData() {
        CommandExtent extent;
        extent.kind = CommandKind::kInlineData;
        extent.firstLine = m_commands.StartLine();
        while (m_commands.HasMoreParts()) m_commands.ReadNextPart();
        extent.lastLine = m_commands.EndLine();
        extent.isEnded = extent.lastLine > extent.firstLine &&
                         IsEndDataLine(m_codePage, m_lines.Line(extent.lastLine));
        extent.end = m_lines.EndOf(extent.lastLine);
        m_cut.extents.push_back(extent);
    }

    void CheckTokensOfCommand() {
        try {
            const CommandHead head = HeadOf(m_commands, m_codePage, m_settings.batchMode);
            if (head.kind != CommandKind::kOrdinary) return;
            CheckTokens(m_codePage, m_commands.CommandText(), m_settings.batchMode);
        } catch (const ParseError&) {
            m_cut.hasError = true;
        }
    }

    void AddUnreadable(long firstLine, long lastLine) {
        CommandExtent extent;
        extent.firstLine = firstLine;
        extent.lastLine = lastLine;
        extent.isReadable = false;
        extent.end = m_lines.EndOf(lastLine);
        m_cut.extents.push_back(extent);
    }

    const SourceLines& m_lines;
    const CodePage& m_codePage;
    const CutSettings& m_settings;
    StringInput m_input;
    LineReader m_reader;
    CommandStream m_commands;
    TextCut m_cut;
};

}  // namespace

TextCut CutText(const SourceLines& lines, const CodePage& codePage, const CutSettings& settings) {
    return TextCutter(lines, codePage, settings).Run();
}

std::size_t FirstTextIn(const SourceLines& lines, long firstLine, long lastLine,
                        bool skipLeadingSign) {
    for (long line = firstLine; line <= lastLine; ++line) {
        LinePlace place;
        LineWalker walker(lines.Line(line), LineContext::kSyntax);
        if (!walker.Next(place) || place.kind != LinePlace::Kind::kBeginning) continue;
        const bool isSign = place.sign != '\0' && !(skipLeadingSign && line == firstLine);
        if (isSign) return lines.BeginOf(line);
        if (place.offset < lines.Line(line).size()) return lines.BeginOf(line) + place.offset;
    }
    return lines.EndOf(lastLine);
}

bool IsRealComment(const SourceLines& lines, const CommandExtent& extent, bool batchMode) {
    if (extent.kind != CommandKind::kComment) return false;
    const std::size_t begin = FirstTextIn(lines, extent.firstLine, extent.lastLine, batchMode);
    return CommandAt(lines.Text().substr(begin, kLongestCommandName)) != "COMPUTE";
}

}  // namespace quillet
