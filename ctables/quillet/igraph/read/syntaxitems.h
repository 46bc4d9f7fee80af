// The tokens of an IGRAPH command as its parser wants to see them.
#ifndef QUILLET_IGRAPH_READ_SYNTAXITEMS_H
#define QUILLET_IGRAPH_READ_SYNTAXITEMS_H

#include <optional>
#include <string_view>

#include "tokenizer/tokensequencebase.h"

namespace quillet::igraph {

/// One lexical unit of the command. The views live as long as the token sequence.
struct SyntaxItem {
    enum class Kind {
        kEnd,           ///< After the last token.
        kWord,          ///< A keyword or a name.
        kReservedWord,  ///< TO, WITH, BY, ALL, EQ and the like: never a name.
        kNumber,        ///< Its sign included.
        kLiteral,
        kSlash,
        kLeftParen,
        kRightParen,
        kOther,  ///< Any other operator, and a number too large to be one.
    };

    Kind kind = Kind::kEnd;
    std::string_view value;   ///< A word in upper case, a literal's contents.
    std::string_view source;  ///< As written.
    double number = 0.0;
};

/// The items of a command, one after the other.
///
/// An equals sign is left out, since users write or omit it freely. A sign before a number
/// becomes part of it. At the end of the command a lone period is left out and one that sticks
/// to the last word is cut off: some inputs keep the command's terminator. Linear in the tokens.
class SyntaxItems {
public:
    /// Begins with the token that the first `Next` of `sequence` makes current. The sequence is
    /// borrowed, and nobody else moves it meanwhile.
    explicit SyntaxItems(TokenSequenceBase& sequence) : m_sequence(sequence) {}

    /// The next item; `kEnd` after the last one, however often it is asked for.
    [[nodiscard]] SyntaxItem Next();

private:
    struct RawToken {
        int operatorCode = TokenCodes::kNotOperator;
        SyntaxItem item;
    };

    [[nodiscard]] RawToken Take();
    [[nodiscard]] RawToken CurrentToken() const;
    [[nodiscard]] bool IsLastButSlashes();

    TokenSequenceBase& m_sequence;
    std::optional<RawToken> m_next;  // what was read too far
};

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_READ_SYNTAXITEMS_H
