// Cuts the input syntax into commands.
#ifndef QUILLET_DRIVER_COMMANDSTREAM_H
#define QUILLET_DRIVER_COMMANDSTREAM_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "driver/datalines.h"
#include "platform/codepage.h"
#include "platform/linereader.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet {

/// Reads one command at a time. In the default layout a command ends with a period at the end
/// of a line; in batch mode it goes on over every following line that begins with a blank.
class CommandStream {
public:
    /// Borrows both; nothing is read yet.
    CommandStream(LineReader& lines, const CodePage& codePage, bool batchMode);

    /// Gathers the next command. True when the input is exhausted and nothing was gathered.
    /// Throws `ParseError`, whose line is that of the file; the stream is of no use after that,
    /// unless `GoOnAfterError` is called.
    [[nodiscard]] bool ReadCommand();

    /// After an error of `ReadCommand`: passes over what was read of the command, up to the line
    /// with that error; the next command begins with the line after it.
    void GoOnAfterError();

    /// In the default layout commands end at blank lines, too, but for DOCUMENT, inline data, and
    /// where `endsAt`, which is asked for the line from 1, says no.
    void EndAtBlankLines(std::function<bool(long line)> endsAt) { m_endsAt = std::move(endsAt); }

    /// The command: its lines, each ending in LF, without the terminating period. Good until
    /// the next read.
    [[nodiscard]] const std::string& CommandText() const { return m_commandText; }

    /// The file line on which the command begins, from 1. Also known while it is being read: then
    /// it is the line that would be its first.
    [[nodiscard]] long StartLine() const { return m_startLine; }

    /// The file line on which the command ends, from 1. Of a command in parts: as far as read.
    [[nodiscard]] long EndLine() const { return m_lineCount - (m_lineBuffer.empty() ? 0 : 1); }

    /// What has been read of a command in which `ReadCommand` found an error, up to the line
    /// with that error.
    [[nodiscard]] std::string TextUpToError() const {
        return m_commandText + (m_keptLine.empty() ? m_lineBuffer : m_keptLine);
    }

    /// Gives back the memory of the command's text; the stream is of no use after that but for its
    /// line numbers.
    void GiveMemoryBack();

    /// The command's kind, as its first line tells.
    [[nodiscard]] quillet::CommandKind CommandKind() const { return m_commandKind; }

    /// The beginning of the first token's value text (see `TokenSurvey`); empty when the
    /// command's first line has no token.
    [[nodiscard]] const std::string& FirstValue() const { return m_firstValue; }

    /// True when the whole command may have another first token than its first line alone: that
    /// line has none, or it has a literal, to which a "+" further down can glue another one.
    [[nodiscard]] bool FirstValueMayChange() const { return m_firstValueMayChange; }

    /// Inline data can be of any size, so a long block comes in parts: when this is true, the
    /// text is only a part of the command (whole lines). `PlainLines` and then `ReadNextPart`
    /// fetch what follows.
    [[nodiscard]] bool HasMoreParts() const { return m_hasMoreParts; }

    /// Data lines that follow the text. Empty when the next lines are not of this sort. Good
    /// until the next read.
    [[nodiscard]] const quillet::PlainLines& PlainLines() const { return m_plainLines; }

    /// Replaces the text by the command's next part after the plain lines, which is never
    /// empty.
    void ReadNextPart();

private:
    void FillLineBuffer(bool skipBlankLines);
    void TakeLine(std::string& line, std::ptrdiff_t ixEnd);
    void ClassifyFirstLine();
    void ReadInlineData();
    [[nodiscard]] bool FindPlainLines();
    [[nodiscard]] bool ReadBatchLine();
    [[nodiscard]] bool EndsAtBlankLine() const;
    [[nodiscard]] std::ptrdiff_t FindTerminator(const std::string& line, long lineNumber) const;

    LineReader& m_lines;
    const CodePage& m_codePage;
    bool m_batchMode;
    std::function<bool(long line)> m_endsAt;  // empty: no blank line ends a command
    bool m_atEnd = false;
    long m_lineCount = 0;
    long m_startLine = 1;
    quillet::CommandKind m_commandKind = quillet::CommandKind::kOrdinary;
    std::string m_firstValue;
    bool m_firstValueMayChange = false;
    bool m_hasMoreParts = false;
    quillet::PlainLines m_plainLines;
    std::string m_commandText;
    std::string m_lineBuffer;  // one line read ahead, LF at its end; empty when there is none
    std::string m_keptLine;    // batch mode: the line before the one read ahead
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_COMMANDSTREAM_H
