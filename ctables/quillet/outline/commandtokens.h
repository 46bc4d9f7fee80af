// The tokens of a command as a reader of its text meets them.
#ifndef QUILLET_OUTLINE_COMMANDTOKENS_H
#define QUILLET_OUTLINE_COMMANDTOKENS_H

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "outline/tableoutline.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtoken.h"

namespace quillet::outline {

/// One token. Views lead into the text of the command.
struct CommandToken {
    int type = TokenCodes::kAtEnd;
    int operatorCode = TokenCodes::kNotOperator;  ///< Of operators and of words that stand for one.
    std::string_view source;                      ///< With everything up to the next token.
    std::string value;  ///< A word in upper case, a literal without quotes, a number as spelled.
    long line = 0;      ///< From 1 within the text.

    /// True for a word that stands for no operator.
    [[nodiscard]] bool IsWord() const {
        return type == TokenCodes::kString && operatorCode == TokenCodes::kNotOperator;
    }
    [[nodiscard]] bool IsLiteral() const { return type == TokenCodes::kLiteral; }
    [[nodiscard]] bool IsNumber() const { return type == TokenCodes::kNumber; }
    /// True for an operator, spelled as a sign or as a word.
    [[nodiscard]] bool Is(int code) const { return operatorCode == code; }
    /// True for a word that means `keyword`, which is in upper case.
    [[nodiscard]] bool Means(std::string_view keyword) const;
};

/// What was read of a command.
struct CommandTokens {
    std::vector<CommandToken> tokens;
    /// What was not read, mostly nothing: what stands after a period that ends the command for
    /// people, while the comment after it hides the period from the rules by which commands are
    /// cut; or what no tokens can be made of, and all after it.
    std::string_view rest;
    long restLine = 0;  ///< The line on which that begins.
};

/// Reads a command without its closing period, with three differences to how a conversion sees it:
/// comments are comments, where the "/" at the end of one begins a subcommand there; lines are
/// those of the text, where line breaks after a literal are not counted there; a sign and the
/// number after it are one token. In batch layout (`isBatch`) a "+" or "-" that is the first
/// character is stepped over, and no period inside ends the command. `text` is borrowed. Linear;
/// never throws for what stands there.
[[nodiscard]] CommandTokens ReadCommandTokens(const CodePage& codePage, const std::string& text,
                                              bool isBatch);

/// Some tokens of one command, in an order of their own.
using TokenPointers = std::span<const CommandToken* const>;

/// The text of these tokens for a remark: white space and comments become one blank, and it is cut
/// after 200 bytes.
[[nodiscard]] std::string TextOf(const CodePage& codePage, TokenPointers tokens);

/// The same for a stretch of text.
[[nodiscard]] std::string TextOf(const CodePage& codePage, std::string_view text);

/// A word as a name.
[[nodiscard]] Name NameOf(const CommandToken& word);

/// A keyword as a name: at most 64 bytes of it, of which three count, so that what repeats it takes
/// no room. `whole` is the word that it means.
[[nodiscard]] Name KeywordName(const CodePage& codePage, const CommandToken& word,
                               std::string_view whole);

/// A literal or a number as a text.
[[nodiscard]] Literal LiteralOf(const CommandToken& token);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_COMMANDTOKENS_H
