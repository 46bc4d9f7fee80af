// Tokens: the words, numbers, quoted literals and operators of one command.
#ifndef QUILLET_TOKENIZER_TAVQTOKEN_H
#define QUILLET_TOKENIZER_TAVQTOKEN_H

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string_view>
#include <type_traits>

namespace quillet {

/// The codes that tokens and token sequences share.
struct TokenCodes {
    enum TokenType : int {
        kAtEnd = 1,  ///< No token: the sequence is past its last one.
        kString = 2,
        kNumber = 3,
        kLiteral = 4,
        kOperator = 5,
    };

    enum OperatorCode : int {
        kNotOperator = 0,
        kLessThan = 1,
        kGreaterThan = 2,
        kEquals = 3,
        kLtOrEq = 4,
        kGtOrEq = 5,
        // 6 is "not equal"; it has no name, in listings neither.
        kNot = 7,
        kPlus = 8,
        kMinus = 9,
        kAsterisk = 10,
        kSlash = 11,
        kPower = 12,
        kLeftParen = 13,
        kRightParen = 14,
        kComma = 15,
        kColon = 16,
        kSemicolon = 17,
        kPeriod = 18,
        kUnderscore = 19,
        kQuestionMark = 20,
        kPercent = 21,
        kVerticalBar = 22,
        kAmpersand = 23,
        kLeftBrace = 24,
        kRightBrace = 25,
        kElemMult = 26,
        kElemDiv = 27,
        kElemPower = 28,
        kXtabNest = 29,
        kTo = 30,
        kWith = 31,
        kAnd = 32,
        kOr = 33,
        kBy = 34,
        kAll = 35,
        kLeftSqBracket = 36,
        kRightSqBracket = 37,
    };

    /// The operator code of "~=", "<>" and the word NE.
    static constexpr int kNotEqualCode = 6;
};

/// The name of a token type for listings; "kAtEnd" for a value that is none.
[[nodiscard]] std::string_view TokenTypeName(int type);

/// The name of an operator code for listings; "kNotOperator" for a value without a name.
[[nodiscard]] std::string_view OperatorName(int operatorCode);

/// The texts of a token that cannot be told from one place alone: see `TAVQToken`.
struct TokenTexts {
    std::string_view source;
    std::string_view value;
};

/// One lexical unit of a command. A plain value of two words: it borrows its texts, which lie in
/// the command's text, in the capitals next to it, or in the command's arena, and is good for as
/// long as they are. Where it stands in the command is known to the sequence that it comes from.
///
/// Where its texts are kept apart, `m_isApart` says so, and it borrows their place instead of the
/// source text: one of two pointers, for which a variant would take a third word.
// NOLINTBEGIN(cppcoreguidelines-pro-type-union-access,cppcoreguidelines-pro-type-member-init)
class TAVQToken : public TokenCodes {
public:
    /// No token: of the type `kAtEnd`, with empty texts.
    TAVQToken() = default;

    /// A token of any texts. `texts` must outlive it.
    TAVQToken(TokenType type, const TokenTexts& texts)
        : m_pTexts(&texts), m_isApart(1), m_type(static_cast<unsigned>(type) & 7U) {}

    /// A token whose value text is found from its source text. Nothing when it is not: then the
    /// texts have to be kept somewhere.
    [[nodiscard]] static std::optional<TAVQToken> Of(TokenType type, const TokenTexts& texts);

    [[nodiscard]] int Type() const { return static_cast<int>(m_type); }

    /// Writes the diagnostic listing, each line after `indent` tabs (after none when `indent`
    /// is above 20).
    void Dump(std::ostream& stream, unsigned indent) const;
    /// The same with the place where the token stands.
    void Dump(std::ostream& stream, unsigned indent, int line, int column) const;

    /// The source text when `raw`, otherwise the value text: upper case for words, without the
    /// quotes for literals. Numbers and operators have only their source text.
    [[nodiscard]] std::string_view Text(bool raw) const {
        if (m_isApart != 0) return raw ? m_pTexts->source : m_pTexts->value;
        if (raw) return {m_pSource, m_length};
        if (m_type == kLiteral) return {m_pSource + 1, m_value};
        return {m_pSource + m_value, m_length};
    }

    /// The value of a number token, 0.0 for every other. Converted from the text, anew each time.
    [[nodiscard]] double NumberValue() const;

    /// The code of an operator, or the one that a word carries; otherwise `kNotOperator`. Looked
    /// up anew each time.
    [[nodiscard]] int Operator() const;

    /// Compares `Text(raw)` with `text` as unsigned bytes: below, equal to or above zero. With a
    /// `count` above 0 only the first `count` bytes of each side take part.
    [[nodiscard]] int CompareText(std::string_view text, std::size_t count, bool raw) const;

    /// A number that whoever keeps tokens may store with them, up to `kMaxTag`: there is room.
    [[nodiscard]] unsigned Tag() const { return m_tag; }
    void SetTag(unsigned tag) { m_tag = tag & kMaxTag; }
    static constexpr unsigned kMaxTag = (1U << 10U) - 1;

private:
    static constexpr unsigned kLengthBits = 18;

    // What follows the type and the place.
    void DumpTexts(std::ostream& stream, unsigned indent) const;

    union {
        const char* m_pSource = "";
        const TokenTexts* m_pTexts;  // when the texts are kept apart
    };
    // How far from the source text the value text lies, which is as long; of a literal, whose value
    // text begins after the quote, its length.
    std::uint32_t m_value = 0;
    std::uint32_t m_length : kLengthBits = 0;
    std::uint32_t m_isApart : 1 = 0;
    std::uint32_t m_type : 3 = kAtEnd;
    std::uint32_t m_tag : 10 = 0;
};
// NOLINTEND(cppcoreguidelines-pro-type-union-access,cppcoreguidelines-pro-type-member-init)

static_assert(std::is_trivially_copyable_v<TAVQToken>, "a parser copies tokens byte by byte");
static_assert(sizeof(void*) > 8 || sizeof(TAVQToken) <= 16, "most of a tree is tokens");

/// The rule of `CompareText`, for texts that are not in a token: see there.
[[nodiscard]] int CompareTextPrefix(std::string_view left, std::string_view right,
                                    std::size_t count);

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TAVQTOKEN_H
