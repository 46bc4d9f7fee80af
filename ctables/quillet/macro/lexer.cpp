#include "macro/lexer.h"

#include "tokenizer/scanning.h"

namespace quillet::macro {

namespace {

constexpr bool IsNonAsciiByte(char byte) { return static_cast<unsigned char>(byte) >= 0x80; }

}  // namespace

std::size_t Lexer::CharacterEnd(std::size_t position) const {
    if (!IsNonAsciiByte(m_text[position])) return position + 1;
    const std::size_t length =
        m_pCodePage->NonAsciiLength(m_text.data() + position, m_text.size() - position);
    return position + (length == 0 ? 1 : length);
}

// No byte below 48 is a later part of a character in any code page, so that line breaks, quotes,
// periods and comments are found byte by byte.
std::size_t Lexer::LineEnd(std::size_t position) const {
    const std::size_t end = m_text.find_first_of("\n\r", position);
    return end == std::string_view::npos ? m_text.size() : end;
}

std::size_t Lexer::LineBreakEnd(std::size_t position) const {
    return position + (At(position) == '\r' && At(position + 1) == '\n' ? 2 : 1);
}

std::size_t Lexer::LiteralEnd(std::size_t position, bool& isClosed) const {
    const char quote = m_text[position];
    ++position;
    while (position < m_text.size() && !IsLineBreak(m_text[position])) {
        if (m_text[position] != quote) {
            ++position;
        } else if (At(position + 1) == quote) {
            position += 2;
        } else {
            isClosed = true;
            return position + 1;
        }
    }
    isClosed = false;
    return position;
}

std::size_t Lexer::LiteralEnd(std::size_t position) const {
    bool isClosed = false;
    return LiteralEnd(position, isClosed);
}

std::size_t Lexer::CommentEnd(std::size_t position) const {
    position += 2;
    while (position < m_text.size() && !IsLineBreak(m_text[position])) {
        if (m_text[position] == '*' && At(position + 1) == '/') return position + 2;
        ++position;
    }
    return position < m_text.size() ? position : m_text.size();
}

std::size_t Lexer::SkipBlanks(std::size_t position) const {
    while (position < m_text.size() && IsBlank(m_text[position])) ++position;
    return position;
}

std::size_t Lexer::SkipSpace(std::size_t position) const {
    while (position < m_text.size()) {
        if (IsSpace(m_text[position])) {
            ++position;
        } else if (IsAtComment(position)) {
            position = CommentEnd(position);
        } else {
            break;
        }
    }
    return position;
}

bool Lexer::IsRestOfLineEmpty(std::size_t position) const {
    position = SkipBlanks(position);
    while (IsAtComment(position)) position = SkipBlanks(CommentEnd(position));
    return position >= m_text.size() || IsLineBreak(m_text[position]);
}

Token Lexer::NextToken(std::size_t position) const {
    position = SkipSpace(position);
    if (position >= m_text.size()) return {TokenKind::kEnd, m_text.size(), m_text.size()};
    return TokenAt(position);
}

Token Lexer::TokenAt(std::size_t position) const {
    if (IsQuote(m_text[position])) return {TokenKind::kLiteral, position, LiteralEnd(position)};
    const std::size_t length = NumberLength(position);
    if (length > 0) return {TokenKind::kNumber, position, position + length};
    if (IsAtName(position)) {
        std::size_t end = NameEnd(position);
        if (m_text[end - 1] == '.' && IsRestOfLineEmpty(end)) end = WithoutPeriods(position, end);
        return {TokenKind::kIdentifier, position, end};
    }
    if (m_text[position] == '!' && IsAtName(position + 1)) {
        return {TokenKind::kMacroWord, position, WithoutPeriods(position, NameEnd(position + 1))};
    }
    return {TokenKind::kOther, position, CharacterEnd(position)};
}

std::size_t Lexer::NumberLength(std::size_t position) const {
    std::size_t end = position;
    while (IsDigit(At(end))) ++end;
    if (At(end) == '.' && IsDigit(At(end + 1))) {
        ++end;
        while (IsDigit(At(end))) ++end;
    }
    if (end == position) return 0;
    if (At(end) == 'e' || At(end) == 'E') {
        std::size_t exponent = end + 1;
        if (At(exponent) == '+' || At(exponent) == '-') ++exponent;
        if (IsDigit(At(exponent))) {
            while (IsDigit(At(exponent))) ++exponent;
            end = exponent;
        }
    }
    return end - position;
}

bool Lexer::IsAtName(std::size_t position) const {
    return position < m_text.size() &&
           (kNameStart.Has(m_text[position]) || IsNonAsciiByte(m_text[position]));
}

std::size_t Lexer::NameEnd(std::size_t position) const {
    while (position < m_text.size()) {
        if (IsNonAsciiByte(m_text[position])) {
            position = CharacterEnd(position);
        } else if (kNameContinuation.Has(m_text[position])) {
            ++position;
        } else {
            break;
        }
    }
    return position;
}

std::size_t Lexer::WithoutPeriods(std::size_t begin, std::size_t end) const {
    while (end > begin && m_text[end - 1] == '.') --end;
    return end;
}

std::string Capitals(const CodePage& codePage, std::string_view text) {
    const Lexer lexer(codePage, text);
    std::string capitals(text);
    for (std::size_t position = 0; position < text.size();
         position = lexer.CharacterEnd(position)) {
        char& letter = capitals[position];
        if ('a' <= letter && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    return capitals;
}

std::string LiteralContents(std::string_view literal) {
    const char quote = literal.front();
    std::string contents;
    for (std::size_t position = 1; position < literal.size(); ++position) {
        contents += literal[position];
        if (literal[position] != quote) continue;
        // The closing one, or the first of two.
        if (position + 1 == literal.size()) contents.pop_back();
        ++position;
    }
    return contents;
}

}  // namespace quillet::macro
