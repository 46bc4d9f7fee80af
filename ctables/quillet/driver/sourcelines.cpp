#include "driver/sourcelines.h"

#include <algorithm>

#include "platform/linereader.h"

namespace quillet {

SourceLines::SourceLines(std::string_view text) : m_text(text) {
    std::size_t begin = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    while (begin < text.size()) {
        m_begins.push_back(begin);
        const std::size_t end = text.find('\n', begin);
        begin = end == std::string_view::npos ? text.size() : end + 1;
    }
    m_begins.push_back(text.size());
}

std::string_view SourceLines::Line(long number) const {
    if (number < 1 || number > Count()) return {};
    const std::size_t begin = BeginOf(number);
    std::string_view line = m_text.substr(begin, BeginOf(number + 1) - begin);
    if (line.ends_with('\n')) line.remove_suffix(1);
    // The last line of a text ends in its own bytes, whatever they are, but for one CR.
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::size_t SourceLines::BeginOf(long number) const {
    if (number < 1) return m_begins.front();
    return m_begins[static_cast<std::size_t>(std::min(number, Count() + 1)) - 1];
}

long SourceLines::LineOf(std::size_t offset) const {
    const auto next = std::upper_bound(m_begins.begin(), m_begins.end() - 1, offset);
    return std::max(1L, static_cast<long>(next - m_begins.begin()));
}

}  // namespace quillet
