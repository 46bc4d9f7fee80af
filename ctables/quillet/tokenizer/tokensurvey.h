// A look at the tokens of a command that builds none of them.
#ifndef QUILLET_TOKENIZER_TOKENSURVEY_H
#define QUILLET_TOKENIZER_TOKENSURVEY_H

#include <string>
#include <string_view>

#include "platform/codepage.h"
#include "tokenizer/commandkind.h"

namespace quillet {

/// What a look at a command tells without keeping its tokens.
struct TokenSurvey {
    SpecialCommandState state = SpecialCommandState::kOrdinary;
    int count = 0;  ///< Tokens seen.
    /// The beginning of the first token's value text, long enough for every keyword comparison.
    std::string firstValue;
    bool firstIsLiteral = false;  ///< The first token is a literal; further lines may lengthen it.
};

/// Tokenizes `text` as a `TAVQTokenVector` does, with the same errors and assertions, but only
/// counts: no token is built.
[[nodiscard]] TokenSurvey SurveyTokens(const CodePage& codePage, std::string_view text,
                                       bool skipLeadingSign, int maxTokens);

/// The kind that a survey found.
[[nodiscard]] inline CommandKind KindOf(const TokenSurvey& survey) { return KindOf(survey.state); }

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TOKENSURVEY_H
