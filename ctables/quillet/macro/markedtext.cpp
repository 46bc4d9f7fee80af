#include "macro/markedtext.h"

#include <utility>

#include "macro/lexer.h"

namespace quillet::macro {

MarkedView MarkedView::Part(std::size_t begin, std::size_t end) const {
    const std::size_t size = end - begin;
    return {text.substr(begin, size), marks.empty() ? marks : marks.substr(begin, size)};
}

bool MarkedView::IsWritten(std::size_t begin, std::size_t end) const {
    if (marks.empty()) return true;
    for (std::size_t position = begin; position < end; ++position) {
        const unsigned mark = static_cast<unsigned char>(marks[position]);
        if ((mark & static_cast<unsigned>(kPutIn)) != 0) return false;
        if (position > begin && (mark & static_cast<unsigned>(kSeam)) != 0) return false;
    }
    return true;
}

void MarkedText::Append(const MarkedView& part) {
    text += part.text;
    if (part.marks.empty()) {
        marks.append(part.text.size(), kWritten);
    } else {
        marks += part.marks;
    }
}

void MarkedText::Append(std::string_view part, Mark mark) {
    text += part;
    marks.append(part.size(), mark);
}

void TextBuilder::Append(const MarkedView& part) {
    std::size_t begin = 0;
    while (true) {
        const std::size_t end = part.text.find('\n', begin);
        if (end == std::string_view::npos) break;
        AppendInLine(part.Part(begin, end));
        BreakLine();
        begin = end + 1;
    }
    AppendInLine(part.Part(begin, part.text.size()));
}

void TextBuilder::AppendPutIn(std::string_view part) {
    const std::string marks(part.size(), kPutIn);
    Append({part, marks});
    AddSeam();
}

void TextBuilder::EndCommand() {
    BreakLine();
    m_dropsBlanks = true;
}

MarkedText TextBuilder::Take() {
    MarkedText result = std::exchange(m_result, {});
    *this = {};
    std::size_t end = result.text.size();
    while (end > 0 && IsSpace(result.text[end - 1])) --end;
    std::size_t begin = 0;
    while (begin < end && IsSpace(result.text[begin])) ++begin;
    result.text.resize(end);
    result.marks.resize(end);
    result.text.erase(0, begin);
    result.marks.erase(0, begin);
    return result;
}

void TextBuilder::AppendInLine(const MarkedView& part) {
    std::size_t begin = 0;
    if (m_dropsBlanks) {
        while (begin < part.text.size() && IsBlank(part.text[begin])) ++begin;
    }
    if (begin == part.text.size()) return;
    m_dropsBlanks = false;
    const std::size_t first = m_result.text.size();
    m_result.Append(part.Part(begin, part.text.size()));
    if (std::exchange(m_seamIsNext, false)) {
        const unsigned mark = static_cast<unsigned char>(m_result.marks[first]);
        m_result.marks[first] = static_cast<Mark>(mark | static_cast<unsigned>(kSeam));
    }
    if (m_lineIsBlank) {
        m_lineIsBlank = part.text.find_first_not_of(" \t", begin) == std::string_view::npos;
    }
}

void TextBuilder::BreakLine() {
    m_dropsBlanks = false;
    if (m_lineIsBlank) {
        m_result.text.resize(m_lineBegin);
        m_result.marks.resize(m_lineBegin);
    } else {
        m_result.text += '\n';
        m_result.marks += kWritten;
    }
    m_lineBegin = m_result.text.size();
    m_lineIsBlank = true;
}

}  // namespace quillet::macro
