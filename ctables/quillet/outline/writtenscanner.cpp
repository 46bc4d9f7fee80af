#include "outline/writtenscanner.h"

#include <algorithm>

namespace quillet::outline {

// Texts go from the old command into the new one as they are spelled there, so this scanner has to
// find the end of a literal where the old language does, with all its habits. It has its own words
// for them on purpose: it is to tell what is written without asking those who wrote it.

namespace {

// More than any text can need that was written within a command's budget.
constexpr std::size_t kMaxRepeated = std::size_t{32} * 1024 * 1024;

// What follows the line end after the period of an MRSETS command.
constexpr std::string_view kNextCommand = "\nCTABLES";

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// What may stand between a closing quote and the "+" that glues another part to it.
constexpr bool IsGap(char c) { return c == ' ' || c == '\n' || c == '\r'; }

constexpr bool IsQuote(char c) { return c == '\'' || c == '"'; }

constexpr bool IsDigit(char c) { return '0' <= c && c <= '9'; }

constexpr bool IsNonAscii(char c) { return static_cast<unsigned char>(c) >= 0x80; }

constexpr bool BeginsName(char c) {
    return ('A' <= c && c <= 'Z') || ('a' <= c && c <= 'z') || c == '#' || c == '$' || c == '@' ||
           IsNonAscii(c);
}

constexpr bool ContinuesName(char c) { return BeginsName(c) || IsDigit(c) || c == '.' || c == '_'; }

std::string_view WithoutBlanksAtEnd(std::string_view text) {
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

}  // namespace

WrittenScanner::WrittenScanner(const CodePage& codePage, std::string_view text)
    : m_codePage(codePage), m_text(WithoutBlanksAtEnd(text)) {}

WrittenToken WrittenScanner::Next() {
    SkipBlanks();
    WrittenToken token{WrittenTokenKind::kEnd, {}, m_place, m_line};
    if (m_place == m_text.size()) return token;
    token.kind = ReadToken();
    token.text = m_text.substr(token.offset, m_place - token.offset);
    if (token.Is(WrittenTokenKind::kLiteral)) {
        // Blanks after a literal are skipped like all others.
        token.text = WithoutBlanksAtEnd(token.text);
        m_place = token.offset + token.text.size();
    }
    m_line += static_cast<long>(std::count(token.text.begin(), token.text.end(), '\n'));
    return token;
}

// Moves to the end of the token at `m_place`.
WrittenTokenKind WrittenScanner::ReadToken() {
    const char first = m_text[m_place];
    if (IsQuote(first)) return ReadLiteral();
    if (BeginsName(first)) {
        m_place = AfterName(m_place);
        return WrittenTokenKind::kWord;
    }
    if (first == '!') {
        m_place = AfterMacroWord(m_place);
        return WrittenTokenKind::kWord;
    }
    const std::size_t afterNumber = AfterNumber(m_place);
    if (afterNumber > m_place) {
        m_place = afterNumber;
        return WrittenTokenKind::kNumber;
    }
    ++m_place;
    return WrittenTokenKind::kSign;
}

void WrittenScanner::SkipBlanks() {
    for (; m_place < m_text.size() && IsBlank(m_text[m_place]); ++m_place) {
        if (m_text[m_place] == '\n') ++m_line;
    }
}

bool WrittenScanner::EndsCommand(std::size_t period) const {
    if (At(period) != '.') return false;
    const std::string_view rest = m_text.substr(period + 1);
    if (rest.empty()) return true;
    if (!rest.starts_with(kNextCommand)) return false;
    return rest.size() == kNextCommand.size() || IsBlank(rest[kNextCommand.size()]);
}

std::size_t WrittenScanner::AfterCharacter(std::size_t place) const {
    if (!IsNonAscii(m_text[place])) return place + 1;
    const std::string_view rest = m_text.substr(place);
    return place + std::max<std::size_t>(m_codePage.NonAsciiLength(rest.data(), rest.size()), 1);
}

std::size_t WrittenScanner::AfterName(std::size_t place) const {
    while (ContinuesName(At(place)) && !EndsCommand(place)) place = AfterCharacter(place);
    return place;
}

// Such a word may stand for a format: "!*", "!" and digits, or "!" and a name.
std::size_t WrittenScanner::AfterMacroWord(std::size_t place) const {
    ++place;
    if (At(place) == '*') return place + 1;
    return IsDigit(At(place)) ? AfterDigits(place) : AfterName(place);
}

std::size_t WrittenScanner::AfterDigits(std::size_t place) const {
    while (IsDigit(At(place))) ++place;
    return place;
}

// `place` itself when no number begins there.
std::size_t WrittenScanner::AfterNumber(const std::size_t place) const {
    std::size_t end = place;
    if (At(end) == '+' || At(end) == '-') ++end;
    const std::size_t digits = end;
    end = AfterDigits(end);
    bool hasDigits = end > digits;
    if (At(end) == '.' && !EndsCommand(end)) {
        const std::size_t fraction = end + 1;
        if (!hasDigits && !IsDigit(At(fraction))) return place;
        hasDigits = true;
        end = AfterDigits(fraction);
    }
    if (!hasDigits) return place;
    if (At(end) != 'E' && At(end) != 'e') return end;
    std::size_t exponent = end + 1;
    if (At(exponent) == '+' || At(exponent) == '-') ++exponent;
    return IsDigit(At(exponent)) ? AfterDigits(exponent) : end;
}

bool WrittenScanner::FindClosingQuote(char quote, std::size_t& place) const {
    for (; place < m_text.size(); place = AfterCharacter(place)) {
        const char c = m_text[place];
        if (c == quote) return true;
        if (c == '\n' || c == '\r' || c == '\0') return false;
    }
    return false;
}

// After a quote that closes a part: true, and `place` is at the quote that opens another one.
bool WrittenScanner::FindGluedPart(std::size_t& place) const {
    while (true) {
        while (IsGap(At(place))) ++place;
        if (At(place) != '+') return false;
        ++place;
        if (IsQuote(At(place))) return true;
    }
}

// A "+" that stands directly after a closing quote and is followed by anything but a quote makes
// the literal go on, up to the next such quote, its last part repeated. A "+" after a blank is
// dropped when no quote follows it directly.
WrittenTokenKind WrittenScanner::ReadLiteral() {
    m_value.clear();
    char quote = m_text[m_place++];
    std::size_t part = m_place;
    while (true) {
        if (!FindClosingQuote(quote, m_place)) return WrittenTokenKind::kUnclosed;
        const std::size_t size = m_place - part;
        m_value.append(m_text.substr(part, size));
        ++m_place;
        if (At(m_place) == quote) {
            m_value += quote;
            part = ++m_place;
            continue;
        }
        if (At(m_place) == '+') {
            ++m_place;
            while (IsGap(At(m_place))) ++m_place;
            if (!IsQuote(At(m_place))) {
                m_repeated += size;
                if (m_repeated > kMaxRepeated) return WrittenTokenKind::kTooLong;
                continue;
            }
        } else if (!FindGluedPart(m_place)) {
            return WrittenTokenKind::kLiteral;
        }
        quote = m_text[m_place++];
        part = m_place;
    }
}

}  // namespace quillet::outline
