#include "outline/writtencursor.h"

#include <algorithm>
#include <cstddef>

#include "outline/numberformat.h"
#include "platform/multibyte.h"

namespace quillet::outline {

namespace {

// In bytes. No variable has more than 64, but capitals may take more room. Every statistic holds
// the name of its variable, which must not make a small text large.
constexpr std::size_t kMaxNameSize = 256;

}  // namespace

WrittenCursor::WrittenCursor(const CodePage& codePage, std::string_view text, ReadingError& error)
    : m_codePage(codePage), m_scanner(codePage, text), m_error(error) {
    Read(m_current);
    Read(m_following);
}

void WrittenCursor::Read(Place& place) {
    place.token = m_scanner.Next();
    if (place.token.Is(WrittenTokenKind::kLiteral)) place.value = m_scanner.LiteralValue();
}

void WrittenCursor::Advance() {
    if (Current().IsSign('/')) m_settings.clear();
    m_current.token = m_following.token;
    if (m_current.token.Is(WrittenTokenKind::kLiteral)) m_current.value.swap(m_following.value);
    // What follows a literal without an end is not known.
    if (m_current.token.Is(WrittenTokenKind::kUnclosed) ||
        m_current.token.Is(WrittenTokenKind::kTooLong)) {
        return;
    }
    Read(m_following);
}

bool WrittenCursor::Fail(std::string_view message) {
    m_error.message = message;
    if (Current().Is(WrittenTokenKind::kUnclosed)) m_error.message = "a quoted text is not closed";
    if (Current().Is(WrittenTokenKind::kTooLong)) {
        m_error.message = "a quoted text repeats itself too often";
    }
    m_error.offset = Current().offset;
    m_error.line = Current().line;
    return false;
}

bool WrittenCursor::Take(char sign) {
    if (!Current().IsSign(sign)) return false;
    Advance();
    return true;
}

bool WrittenCursor::Take(std::string_view word) {
    if (!Current().IsWord(word)) return false;
    Advance();
    return true;
}

bool WrittenCursor::Expect(char sign, std::string_view message) {
    return Take(sign) || Fail(message);
}

bool WrittenCursor::Expect(std::string_view word, std::string_view message) {
    return Take(word) || Fail(message);
}

bool WrittenCursor::ReadSetting(std::string_view& word) {
    if (!IsAtSetting()) return Fail("a setting is expected");
    word = Current().text;
    if (std::find(m_settings.begin(), m_settings.end(), word) != m_settings.end()) {
        return Fail("the setting stands here twice");
    }
    m_settings.push_back(word);
    Advance();
    Advance();
    return true;
}

bool WrittenCursor::ExpectSetting(std::string_view word, std::string_view message) {
    if (!IsAtSetting() || !Take(word)) return Fail(message);
    Advance();
    return true;
}

bool WrittenCursor::ReadName(Name& name) {
    if (!Current().Is(WrittenTokenKind::kWord)) return Fail("a name is expected");
    if (Current().text.size() > kMaxNameSize) return Fail("the name is too long");
    name = {std::string(Current().text), TAVQMBstrupr_A(m_codePage, Current().text)};
    Advance();
    return true;
}

bool WrittenCursor::ReadLiteral(Literal& literal) {
    if (!Current().Is(WrittenTokenKind::kLiteral)) return Fail("a quoted text is expected");
    literal.source = Current().text;
    literal.value.swap(m_current.value);
    Advance();
    return true;
}

bool WrittenCursor::ReadLiteralOrNumber(Literal& literal) {
    if (!Current().Is(WrittenTokenKind::kNumber)) return ReadLiteral(literal);
    literal.source = Current().text;
    literal.value = Current().text;
    Advance();
    return true;
}

bool WrittenCursor::ReadFormat(Format& format) {
    if (!Current().Is(WrittenTokenKind::kWord)) return Fail("a format is expected");
    format = MakeFormat(m_codePage, Current().text);
    Advance();
    return true;
}

}  // namespace quillet::outline
