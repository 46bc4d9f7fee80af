// What the tests of the tokenizer share: all that can be seen of a run, and texts to run it on.
#ifndef QUILLET_TESTS_UNIT_TOKENIZING_H
#define QUILLET_TESTS_UNIT_TOKENIZING_H

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "tokenizer/commandkind.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tavqtokenvector.h"

namespace quillet::tokenizing {

inline constexpr const char* kInvalidAssertion = "IsInvalidUnquoted( currChar.Code() )";
inline constexpr const char* kRangeAssertion = "errno != ERANGE";
inline constexpr const char* kIndexAssertion = "0 <= index && index < (int)m_TokVec.size()";

/// All that can be seen of one run of the tokenizer.
struct TokenRun {
    std::vector<std::string> tokens;  // empty when it threw
    std::string error;                // "kind K at L:C", or empty
    SpecialCommandState state = SpecialCommandState::kOrdinary;
    int count = 0;
    std::string firstValue;
    bool firstIsLiteral = false;
    std::vector<std::string> assertions;
};

/// A `TAVQTokenVector` with a budget and memory of its own.
struct KeptTokens {
    KeptTokens(const CodePage& codePage, std::string_view text, bool skipLeadingSign, int maxTokens)
        : tokens(codePage, text, skipLeadingSign, maxTokens, budget, arena) {}

    CommandBudget budget;
    Arena arena;
    TAVQTokenVector tokens;
};

/// "kind K at L:C".
[[nodiscard]] std::string Describe(const ParseError& error);

/// The run of a `TAVQTokenVector`.
[[nodiscard]] TokenRun Tokenize(const CodePage& codePage, const std::string& text,
                                bool skipLeadingSign, int maxTokens);

/// The run of `SurveyTokens`; without the tokens.
[[nodiscard]] TokenRun Survey(const CodePage& codePage, const std::string& text,
                              bool skipLeadingSign, int maxTokens);

struct TokenCase {
    const char* name;
    std::string text;
    std::vector<std::string> tokens;
    const CodePage* pCodePage = &CodePage::Utf8();
};

[[nodiscard]] std::vector<TokenCase> SeparatorCases();
[[nodiscard]] std::vector<TokenCase> CommentCases();
[[nodiscard]] std::vector<TokenCase> LiteralCases();
[[nodiscard]] std::vector<TokenCase> MacroCases();
[[nodiscard]] std::vector<TokenCase> NumberCases();
[[nodiscard]] std::vector<TokenCase> OperatorCases();
[[nodiscard]] std::vector<TokenCase> WordCases();

struct ErrorCase {
    const char* name;
    std::string text;
    std::string error;  // "kind K at line:column"
    std::vector<std::string> assertions = {};
    const CodePage* pCodePage = &CodePage::Utf8();
};

[[nodiscard]] std::vector<ErrorCase> ErrorCases();

struct StateCase {
    const char* name;
    std::string text;
    SpecialCommandState state;
    int count;
    const CodePage* pCodePage = &CodePage::Utf8();
};

[[nodiscard]] std::vector<StateCase> StateCases();

struct LimitCase {
    const char* name;
    std::string text;
    bool skipLeadingSign;
    int maxTokens;
    std::vector<std::string> tokens;
    SpecialCommandState state;
    std::string error;
};

[[nodiscard]] std::vector<LimitCase> LimitCases();

/// The texts of all these, each byte in several places, and some long ones.
[[nodiscard]] std::vector<std::string> AllTexts();

/// A text made of the pieces that the rules tell apart, in any order.
[[nodiscard]] std::string RandomText(std::mt19937& random);

}  // namespace quillet::tokenizing

#endif  // QUILLET_TESTS_UNIT_TOKENIZING_H
