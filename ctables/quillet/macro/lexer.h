// The pieces of a text that macros are made of: tokens, literals, comments, white space.
//
// These are coarser than the tokens of a command: a macro takes source text apart and puts it
// together again, so nothing is converted and nothing is an error. Positions are byte offsets from
// the text's beginning; LF, CR and CR LF end a line.
#ifndef QUILLET_MACRO_LEXER_H
#define QUILLET_MACRO_LEXER_H

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/codepage.h"

namespace quillet::macro {

enum class TokenKind : int {
    kEnd,         ///< There is none.
    kLiteral,     ///< With its quotes; one that is not closed runs to the end of its line.
    kNumber,      ///< Without a sign.
    kIdentifier,  ///< A name without "!".
    kMacroWord,   ///< "!" and an identifier.
    kOther,       ///< A single other character.
};

/// A place in a text: the bytes [begin, end).
struct Token {
    TokenKind kind = TokenKind::kEnd;
    std::size_t begin = 0;
    std::size_t end = 0;
};

[[nodiscard]] constexpr bool IsBlank(char byte) { return byte == ' ' || byte == '\t'; }
[[nodiscard]] constexpr bool IsLineBreak(char byte) { return byte == '\n' || byte == '\r'; }
[[nodiscard]] constexpr bool IsSpace(char byte) { return IsBlank(byte) || IsLineBreak(byte); }
[[nodiscard]] constexpr bool IsQuote(char byte) { return byte == '\'' || byte == '"'; }
[[nodiscard]] constexpr bool IsDigit(char byte) { return '0' <= byte && byte <= '9'; }

/// Looks at one text. Every function takes a position in it, at most its size, and each is linear
/// in what it steps over.
class Lexer {
public:
    /// Borrows both.
    Lexer(const CodePage& codePage, std::string_view text) : m_pCodePage(&codePage), m_text(text) {}

    [[nodiscard]] std::string_view Text() const { return m_text; }
    [[nodiscard]] std::string_view TextOf(const Token& token) const {
        return m_text.substr(token.begin, token.end - token.begin);
    }
    /// The byte at a position; NUL at the end.
    [[nodiscard]] char At(std::size_t position) const {
        return position < m_text.size() ? m_text[position] : '\0';
    }

    /// After the character that begins here; a byte that begins none counts as one.
    [[nodiscard]] std::size_t CharacterEnd(std::size_t position) const;
    /// The next line break, or the end of the text.
    [[nodiscard]] std::size_t LineEnd(std::size_t position) const;
    /// After the line break that stands here: LF, CR or CR LF.
    [[nodiscard]] std::size_t LineBreakEnd(std::size_t position) const;

    /// After the literal whose quote stands here. Doubled quotes belong to it; when it is not
    /// closed, the end of its line, and `isClosed` is false.
    [[nodiscard]] std::size_t LiteralEnd(std::size_t position, bool& isClosed) const;
    [[nodiscard]] std::size_t LiteralEnd(std::size_t position) const;

    [[nodiscard]] bool IsAtComment(std::size_t position) const {
        return At(position) == '/' && At(position + 1) == '*';
    }
    /// After the comment that begins here: after its "*/", or the end of its line.
    [[nodiscard]] std::size_t CommentEnd(std::size_t position) const;

    [[nodiscard]] std::size_t SkipBlanks(std::size_t position) const;
    /// Steps over blanks, line breaks and comments.
    [[nodiscard]] std::size_t SkipSpace(std::size_t position) const;
    /// Whether only blanks and comments stand here up to the end of the line.
    [[nodiscard]] bool IsRestOfLineEmpty(std::size_t position) const;

    /// The token at or after the position, with space before it stepped over.
    [[nodiscard]] Token NextToken(std::size_t position) const;
    /// The token that begins here; the position is neither space nor the end.
    [[nodiscard]] Token TokenAt(std::size_t position) const;

    /// The length of the number that begins here, without a sign; 0 when there is none.
    [[nodiscard]] std::size_t NumberLength(std::size_t position) const;
    /// Whether an identifier begins here.
    [[nodiscard]] bool IsAtName(std::size_t position) const;
    /// After the identifier that begins here, periods at its end included.
    [[nodiscard]] std::size_t NameEnd(std::size_t position) const;

private:
    [[nodiscard]] std::size_t WithoutPeriods(std::size_t begin, std::size_t end) const;

    const CodePage* m_pCodePage;
    std::string_view m_text;
};

/// `text` with its ASCII letters in capitals: two names are the same when these are.
[[nodiscard]] std::string Capitals(const CodePage& codePage, std::string_view text);

/// The contents of a literal: without its quotes, doubled ones made single.
[[nodiscard]] std::string LiteralContents(std::string_view literal);

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_LEXER_H
