// The tokens of a command that could not be converted, by its subcommands.
//
// A tree is of no use here: what went wrong has mostly kept it from being made.
#ifndef QUILLET_DRIVER_FAILEDCOMMAND_H
#define QUILLET_DRIVER_FAILEDCOMMAND_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "quillet.h"
#include "tokenizer/tavqtoken.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet {

/// A token where it stands. Its texts live as long as the `FailedCommand`.
struct PlacedToken {
    int type = TokenCodes::kAtEnd;
    int operatorCode = TokenCodes::kNotOperator;
    std::string_view source;  ///< As it is written.
    std::string_view value;   ///< In upper case if it is a word.
    long line = 0;            ///< In the file, from 1.
    int column = 0;           ///< Counted as `TAVQToken::GetPosition` does.

    /// True for a word that is no operator, such as BY.
    [[nodiscard]] bool IsWord() const {
        return type == TokenCodes::kString && operatorCode == TokenCodes::kNotOperator;
    }
    [[nodiscard]] bool Is(int code) const { return operatorCode == code; }
    /// True for a word that means `keyword`, which is in upper case.
    [[nodiscard]] bool Means(std::string_view keyword) const;
};

/// What stands from one slash to the next: tokens by their indices.
struct CommandPart {
    std::size_t first = 0;  ///< Of the subcommand's word.
    std::size_t end = 0;    ///< After its last token.
};

class FailedCommand {
public:
    /// `codePage` is borrowed. A text that cannot be cut into tokens has none.
    FailedCommand(const CommandReport& report, const CodePage& codePage, bool batchMode);

    [[nodiscard]] const std::vector<PlacedToken>& Tokens() const { return m_tokens; }
    [[nodiscard]] const PlacedToken& At(std::size_t index) const { return m_tokens[index]; }

    /// The subcommands, in order. The command's own word, and what follows it without a slash, are
    /// the first part.
    [[nodiscard]] const std::vector<CommandPart>& Parts() const { return m_parts; }

    /// The index of the token at which the failure was found; the number of tokens when the place
    /// is not known.
    [[nodiscard]] std::size_t ErrorIndex() const { return m_error; }
    [[nodiscard]] bool HasErrorToken() const { return m_error < m_tokens.size(); }

    /// The part in which that token stands; a slash stands in the part that it ends. Null when the
    /// place is not known.
    [[nodiscard]] const CommandPart* ErrorPart() const;

    /// The part that is not understood: mostly `ErrorPart`. What breaks off before another
    /// subcommand is told at the word of that one; and at its own word, when it is the last.
    [[nodiscard]] const CommandPart* BrokenPart() const;

    /// The word of a part's subcommand; empty where there is none.
    [[nodiscard]] std::string_view NameOf(const CommandPart& part) const;

    /// The tokens from `first` to before `end` as one would write them, on one line.
    [[nodiscard]] std::string TextOf(std::size_t first, std::size_t end) const;

    [[nodiscard]] const CommandReport& Report() const { return m_report; }
    [[nodiscard]] const CodePage& Page() const { return m_codePage; }

private:
    void ReadTokens(bool batchMode);
    void FindParts();
    void FindError();

    const CommandReport& m_report;
    const CodePage& m_codePage;
    std::unique_ptr<TAVQTokenSequence> m_sequence;
    std::vector<PlacedToken> m_tokens;
    std::vector<CommandPart> m_parts;
    std::size_t m_error = 0;
};

/// `text` between grave accents, only its first line, and of that at most 160 bytes, with "..."
/// where it goes on.
[[nodiscard]] std::string Quoted(const CodePage& codePage, std::string_view text);

}  // namespace quillet

#endif  // QUILLET_DRIVER_FAILEDCOMMAND_H
