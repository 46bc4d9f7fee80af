// The output text on its way out: line ends as the input has them, and no blank lines.
#ifndef QUILLET_DRIVER_OUTPUTFILE_H
#define QUILLET_DRIVER_OUTPUTFILE_H

#include <cstddef>
#include <string>
#include <string_view>

#include "driver/datalines.h"
#include "platform/byteblock.h"
#include "quillet.h"

namespace quillet {

/// Collects the output and hands it on in blocks. Lines that are empty or hold only blanks,
/// tabs and carriage returns are dropped as they are written, which gives the same bytes as
/// writing them and reading the file again to take them out.
class OutputFile {
public:
    /// `output` is borrowed. Has room for `size` bytes from the beginning.
    explicit OutputFile(TextOutput& output, std::size_t size = 2 * kBlockSize);

    /// From now on each line ends in CR LF.
    void UseCrLf() { m_lineEnd = "\r\n"; }

    /// Writes `text`, which may hold any number of lines, each ending in LF, and parts of lines.
    void Write(std::string_view text);

    /// Writes lines as they stand; only where a line begins.
    void WritePlainLines(const PlainLines& lines);

    /// The number of lines that the output has so far, without the one being written.
    [[nodiscard]] long LineCount() const { return m_lineCount; }

    /// Ends the line being written where it stands; drops it when it is blank. After that, and up
    /// to a block of text, writing asks for no memory.
    void BreakOff();

    /// Ends the last line and hands on what is left. An output without any line becomes a
    /// single line end. False when some of the output could not be written.
    [[nodiscard]] bool Finish();

    /// True once some of the output could not be written; what comes later is dropped.
    [[nodiscard]] bool Failed() const { return m_failed; }

private:
    void EndLine();
    void HandOn(std::size_t length);

    TextOutput& m_output;
    std::string m_buffer;
    std::size_t m_lineBegin = 0;  // where the line being written begins in the buffer
    bool m_lineIsBlank = true;
    long m_lineCount = 0;
    bool m_failed = false;
    std::string_view m_lineEnd = "\n";
};

/// True when `line` holds nothing but blanks, tabs, line feeds and carriage returns.
[[nodiscard]] bool IsBlankLine(std::string_view line);

/// Makes `text`, which ends in no line end, what it will be in the output: without its blank lines.
void RemoveBlankLines(std::string& text);

}  // namespace quillet

#endif  // QUILLET_DRIVER_OUTPUTFILE_H
