// The tokens of an IGRAPH command as its parser wants to see them.
#ifndef QUILLET_IGRAPH_READ_SYNTAXITEMS_H
#define QUILLET_IGRAPH_READ_SYNTAXITEMS_H

#include <string_view>
#include <vector>

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

/// Reads all tokens from where `sequence` stands, calling `Next` first.
///
/// An equals sign is left out, since users write or omit it freely. A sign before a number
/// becomes part of it. At the end of the command a lone period is left out and one that sticks
/// to the last word is cut off: some inputs keep the command's terminator. The last item is
/// `kEnd`. Linear in the tokens.
[[nodiscard]] std::vector<SyntaxItem> ReadSyntaxItems(TokenSequenceBase& sequence);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_READ_SYNTAXITEMS_H
