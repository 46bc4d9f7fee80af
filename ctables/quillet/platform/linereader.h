// Reads a text line by line, in text mode on every system.
#ifndef QUILLET_PLATFORM_LINEREADER_H
#define QUILLET_PLATFORM_LINEREADER_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/byteblock.h"
#include "quillet.h"

namespace quillet {

/// What some programs begin a text in UTF-8 with.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Cuts the bytes of a `TextInput` into lines. CR LF is read as LF; a lone CR stays a byte of
/// its line. Keeps one block of the input, or one line when that is longer.
class LineReader {
public:
    /// `input` is borrowed and read from where it stands, about `blockSize` bytes at a time, which
    /// is not 0.
    explicit LineReader(TextInput& input, std::size_t blockSize = kBlockSize);

    /// Steps over a `kByteOrderMark`. Only before the first line; true when there was one.
    [[nodiscard]] bool SkipByteOrderMark();

    /// Sets `line` to the next line without its line end; true when there was one. The view is
    /// good until the next call. After a read error the line that it cut short is not delivered.
    [[nodiscard]] bool ReadLine(std::string_view& line);

    /// True when the input failed before its end.
    [[nodiscard]] bool Failed() const { return m_input.Failed(); }

    /// True when the input's first line ends in CR LF. Looks ahead when no line was read yet.
    [[nodiscard]] bool FirstLineEndsInCrLf();

    /// Takes the first line's end as told, for an input that is a piece of a text. Only before the
    /// first line.
    void ExpectLineEnds(bool endsInCrLf) { m_firstLineEndsInCrLf = endsInCrLf; }

    /// The bytes that have been read and not yet been delivered, as they stand in the input:
    /// any number of lines and the beginning of one. Good until the next line is read.
    [[nodiscard]] std::string_view Unread() const {
        return {m_buffer.data() + m_begin, m_end - m_begin};
    }

    /// Steps over the first `length` of the unread bytes, which end a line.
    void Skip(std::size_t length) { m_begin += length; }

private:
    [[nodiscard]] std::size_t FindLineFeed();
    bool FillBuffer();

    TextInput& m_input;
    ByteBlock m_buffer;
    std::size_t m_begin = 0;  // the unread bytes are [m_begin, m_end) of the buffer
    std::size_t m_end = 0;
    std::optional<bool> m_firstLineEndsInCrLf;
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_LINEREADER_H
