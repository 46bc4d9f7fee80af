#include "outline/askedreading.h"

#include "platform/assertion.h"

namespace quillet::outline {

namespace {

constexpr std::string_view kModule = "askedreading";

// What stands where nothing stands.
const CommandToken& NoToken() {
    static const CommandToken kToken;
    return kToken;
}

}  // namespace

const CommandToken& TokenCursor::Peek() const { return PeekAt(0); }

const CommandToken& TokenCursor::PeekAt(std::size_t distance) const {
    return distance < m_tokens.size() - m_at ? *m_tokens[m_at + distance] : NoToken();
}

const CommandToken& TokenCursor::Take() {
    if (!QUILLET_ASSERT(!AtEnd(), "!AtEnd()")) return NoToken();
    return *m_tokens[m_at++];
}

bool TokenCursor::TakeOperator(int code) {
    if (AtEnd() || !Peek().Is(code)) return false;
    ++m_at;
    return true;
}

bool TokenCursor::TakeParenthesized() {
    if (!TakeOperator(TokenCodes::kLeftParen)) return false;
    for (std::size_t depth = 1; depth > 0 && !AtEnd();) {
        const CommandToken& token = Take();
        if (token.Is(TokenCodes::kLeftParen)) ++depth;
        if (token.Is(TokenCodes::kRightParen)) --depth;
    }
    return true;
}

void AskedReading::SkipParenthesized(TokenCursor& cursor) {
    const std::size_t begin = cursor.Position();
    if (cursor.TakeParenthesized()) Unreadable(cursor.Since(begin));
}

void AskedReading::Note(Remark::Kind kind, TokenPointers tokens) {
    if (tokens.empty()) return;
    Note(kind, TextOf(m_codePage, tokens), tokens.front()->line);
}

void AskedReading::Note(Remark::Kind kind, std::string_view text, long line) {
    Remark remark;
    remark.kind = kind;
    remark.subcommand = m_subcommand;
    remark.text = TextOf(m_codePage, text);
    if (!m_outline.tables.empty()) remark.table = m_outline.tables.size() - 1;
    remark.line = line;
    m_outline.remarks.push_back(std::move(remark));
}

}  // namespace quillet::outline
