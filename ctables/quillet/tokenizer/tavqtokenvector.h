// The tokenizer: cuts the text of one command into tokens and finds where a command ends.
#ifndef QUILLET_TOKENIZER_TAVQTOKENVECTOR_H
#define QUILLET_TOKENIZER_TAVQTOKENVECTOR_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "platform/commandbudget.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

/// What the first one or two tokens say about a command.
enum class SpecialCommandState : int {
    kOrdinary = 0,
    kFirstTokenSeen = 1,
    kBeginSeen = 2,  ///< The first token was BEGIN; the second decides.
    kComment = 3,
    kDocument = 4,
    kBeginData = 5,
};

/// The tokens of one command, kept.
///
/// Texts are byte strings in `codePage` whose bytes are followed by a NUL (as those of a
/// `std::string` are); a NUL among them ends the text for the tokenizer. Lines of a
/// `ParseError` count from 1 within the text; its column counts characters, from 1 on the first
/// line and from 0 on every later one.
class TAVQTokenVector {
public:
    /// Tokenizes `text`; throws `ParseError`, or `CommandTooLarge` when literals repeat more text
    /// than `budget` allows. With `skipLeadingSign` a "+" or "-" that is the first character is
    /// stepped over. `maxTokens` above 0 stops after that many tokens; a special command stops by
    /// itself, since its body is no syntax. Linear in the text and what the literals repeat.
    TAVQTokenVector(const CodePage& codePage, std::string_view text, bool skipLeadingSign,
                    int maxTokens, CommandBudget& budget);

    /// The same with a budget of its own.
    TAVQTokenVector(const CodePage& codePage, std::string_view text, bool skipLeadingSign,
                    int maxTokens);

    [[nodiscard]] int Count() const { return static_cast<int>(m_TokVec.size()); }

    /// The token at `index`, from 0; null, behind an assertion, when there is none.
    [[nodiscard]] const TAVQToken* At(int index) const;

    /// `kOrdinary`, `kComment`, `kDocument` or `kBeginData`.
    [[nodiscard]] SpecialCommandState State() const { return m_state; }

private:
    std::vector<std::unique_ptr<TAVQToken>> m_TokVec;
    SpecialCommandState m_state = SpecialCommandState::kOrdinary;
};

/// What a look at a command tells without keeping its tokens.
struct TokenSurvey {
    SpecialCommandState state = SpecialCommandState::kOrdinary;
    int count = 0;  ///< Tokens seen.
    /// The beginning of the first token's value text, long enough for every keyword comparison.
    std::string firstValue;
    bool firstIsLiteral = false;  ///< The first token is a literal; further lines may lengthen it.
};

/// Throws the `ParseError` and reports the assertions that a `TAVQTokenVector` of `text` would,
/// many times faster: what can hold no error is stepped over without being cut into tokens.
void CheckTokens(const CodePage& codePage, std::string_view text, bool skipLeadingSign);

/// Tokenizes `text` as `TAVQTokenVector` does, with the same errors and assertions, but only
/// counts: no token is built.
[[nodiscard]] TokenSurvey SurveyTokens(const CodePage& codePage, std::string_view text,
                                       bool skipLeadingSign, int maxTokens);

/// True when `line`, in upper case, begins with "END DATA".
[[nodiscard]] bool IsEndDataLine(const CodePage& codePage, std::string_view line);

/// Where the period stands that ends the command in `lines`: a byte offset from the start, or
/// -1 when there is none yet. `isFreeText` is set for comment and DOCUMENT commands, whose
/// quotes and comments mean nothing. Throws `ParseError` for a literal that its line leaves
/// open. A null `lines` asserts and gives -1. Linear in the text.
[[nodiscard]] std::ptrdiff_t FindCommandEndIn(const CodePage& codePage, std::string_view lines,
                                              bool isFreeText);

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TAVQTOKENVECTOR_H
