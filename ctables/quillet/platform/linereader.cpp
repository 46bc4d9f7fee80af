#include "platform/linereader.h"

#include <algorithm>

namespace quillet {

LineReader::LineReader(TextInput& input, std::size_t blockSize)
    : m_input(input), m_buffer(blockSize) {}

// Reads more after the unread bytes, which move to the front. False when there is no more.
bool LineReader::FillBuffer() {
    if (m_begin > 0) {
        m_end -= m_begin;
        std::copy_n(m_buffer.data() + m_begin, m_end, m_buffer.data());
        m_begin = 0;
    }
    if (m_end == m_buffer.size()) m_buffer.Double(m_end);
    const std::size_t count = m_input.Read(m_buffer.data() + m_end, m_buffer.size() - m_end);
    m_end += count;
    return count > 0;
}

bool LineReader::SkipByteOrderMark() {
    while (Unread().size() < kByteOrderMark.size() && FillBuffer()) {
    }
    if (!Unread().starts_with(kByteOrderMark)) return false;
    m_begin += kByteOrderMark.size();
    return true;
}

// Offset of the next LF in the unread bytes, of which there are then enough; npos when the
// input ends without one.
std::size_t LineReader::FindLineFeed() {
    std::size_t searched = 0;
    while (true) {
        const std::size_t position = Unread().find('\n', searched);
        if (position != std::string_view::npos) return position;
        searched = Unread().size();
        if (!FillBuffer()) return std::string_view::npos;
    }
}

bool LineReader::FirstLineEndsInCrLf() {
    if (!m_firstLineEndsInCrLf.has_value()) {
        const std::size_t length = FindLineFeed();
        m_firstLineEndsInCrLf =
            length != std::string_view::npos && Unread().substr(0, length).ends_with('\r');
    }
    return *m_firstLineEndsInCrLf;
}

bool LineReader::ReadLine(std::string_view& line) {
    static_cast<void>(FirstLineEndsInCrLf());
    const std::size_t length = FindLineFeed();
    line = Unread().substr(0, length);
    if (length != std::string_view::npos) {
        m_begin += length + 1;
        if (line.ends_with('\r')) line.remove_suffix(1);
        return true;
    }
    m_begin = m_end;
    return !line.empty() && !Failed();
}

}  // namespace quillet
