#include "tokenizer/tavqtokenvector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "support/assertionrecorder.h"
#include "support/doublebytepage.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "tokenizing.h"

namespace quillet {
namespace {

using namespace std::string_literals;
using namespace tokenizing;

using Texts = std::vector<std::string>;

class TokensTest : public testing::TestWithParam<TokenCase> {};

TEST_P(TokensTest, AreRead) {
    const TokenCase& c = GetParam();
    for (int round = 0; round < 2; ++round) {
        const TokenRun run = Tokenize(*c.pCodePage, c.text, false, 0);
        EXPECT_EQ(run.error, "");
        EXPECT_EQ(run.tokens, c.tokens);
        EXPECT_EQ(run.assertions, Texts{});
    }
}

INSTANTIATE_TEST_SUITE_P(Separators, TokensTest, testing::ValuesIn(SeparatorCases()),
                         NameOfRow<TokenCase>);
INSTANTIATE_TEST_SUITE_P(Comments, TokensTest, testing::ValuesIn(CommentCases()),
                         NameOfRow<TokenCase>);
INSTANTIATE_TEST_SUITE_P(Literals, TokensTest, testing::ValuesIn(LiteralCases()),
                         NameOfRow<TokenCase>);
INSTANTIATE_TEST_SUITE_P(MacroWords, TokensTest, testing::ValuesIn(MacroCases()),
                         NameOfRow<TokenCase>);
INSTANTIATE_TEST_SUITE_P(Numbers, TokensTest, testing::ValuesIn(NumberCases()),
                         NameOfRow<TokenCase>);
INSTANTIATE_TEST_SUITE_P(Operators, TokensTest, testing::ValuesIn(OperatorCases()),
                         NameOfRow<TokenCase>);
INSTANTIATE_TEST_SUITE_P(Words, TokensTest, testing::ValuesIn(WordCases()), NameOfRow<TokenCase>);

class BadTokensTest : public testing::TestWithParam<ErrorCase> {};

TEST_P(BadTokensTest, AreRefused) {
    const ErrorCase& c = GetParam();
    for (int round = 0; round < 2; ++round) {
        const TokenRun run = Tokenize(*c.pCodePage, c.text, false, 0);
        EXPECT_EQ(run.error, c.error);
        EXPECT_EQ(run.assertions, c.assertions);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, BadTokensTest, testing::ValuesIn(ErrorCases()),
                         NameOfRow<ErrorCase>);

class SpecialCommandTest : public testing::TestWithParam<StateCase> {};

TEST_P(SpecialCommandTest, IsToldByItsFirstTokens) {
    const StateCase& c = GetParam();
    for (int round = 0; round < 2; ++round) {
        const TokenRun run = Tokenize(*c.pCodePage, c.text, false, 0);
        EXPECT_EQ(run.error, "");
        EXPECT_EQ(run.state, c.state);
        EXPECT_EQ(run.count, c.count);
        EXPECT_EQ(run.assertions, Texts{});
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, SpecialCommandTest, testing::ValuesIn(StateCases()),
                         NameOfRow<StateCase>);

class TokenLimitTest : public testing::TestWithParam<LimitCase> {};

TEST_P(TokenLimitTest, IsObeyed) {
    const LimitCase& c = GetParam();
    for (int round = 0; round < 2; ++round) {
        const TokenRun run = Tokenize(CodePage::Utf8(), c.text, c.skipLeadingSign, c.maxTokens);
        EXPECT_EQ(run.error, c.error);
        EXPECT_EQ(run.tokens, c.tokens);
        EXPECT_EQ(run.state, c.state);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, TokenLimitTest, testing::ValuesIn(LimitCases()),
                         NameOfRow<LimitCase>);

TEST(TAVQTokenVectorTest, KnowsEveryOneCharacterOperator) {
    const struct {
        const char* spelling;
        int code;
    } cases[] = {{"<", 1},  {">", 2},  {"=", 3},  {"~", 7},  {"+", 8},  {"-", 9},
                 {"*", 10}, {"/", 11}, {"(", 13}, {")", 14}, {":", 16}, {";", 17},
                 {".", 18}, {"_", 19}, {"?", 20}, {"%", 21}, {"|", 22}, {"&", 23},
                 {"{", 24}, {"}", 25}, {"[", 36}, {"]", 37}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.spelling);
        const TokenRun run = Tokenize(CodePage::Utf8(), "x "s + c.spelling + " y", false, 0);
        const std::vector<std::string> expected = {
            "word [x] [X] 1:1", "operator ["s + c.spelling + "] " + std::to_string(c.code) + " 1:3",
            "word [y] [Y] 1:5"};
        EXPECT_EQ(run.tokens, expected);
    }
}

TEST(TAVQTokenVectorTest, TakesEveryAsciiCharacterAsItsClassSays) {
    const std::string operators = "<>=~+-*/():;._?%|&{}[]";
    for (const CodePage* pPage : {&CodePage::Utf8(), &CodePage::Windows1252()}) {
        for (int byte = 1; byte < 128; ++byte) {
            SCOPED_TRACE(byte);
            const std::string text(1, static_cast<char>(byte));
            const TokenRun run = Tokenize(*pPage, text, false, 0);
            std::vector<std::string> assertions;
            std::string error;
            std::string type;
            if (byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r' || byte == ',') {
                // a separator
            } else if (byte == '\'' || byte == '"') {
                error = "kind 1 at 1:2";
            } else if (byte < 32) {
                error = "kind 4 at 1:1";
            } else if (byte == '\\' || byte == '^' || byte == '`' || byte == 127) {
                error = "kind 4 at 1:1";
                assertions = {kInvalidAssertion};
            } else if (byte >= '0' && byte <= '9') {
                type = "number";
            } else if (operators.find(text) != std::string::npos) {
                type = "operator";
            } else {
                type = "word";
            }
            EXPECT_EQ(run.error, error);
            EXPECT_EQ(run.assertions, assertions);
            if (type.empty()) {
                EXPECT_TRUE(run.tokens.empty());
            } else {
                ASSERT_EQ(run.tokens.size(), 1U);
                EXPECT_EQ(run.tokens[0].substr(0, type.size()), type);
            }
        }
    }
}

TEST(TAVQTokenVectorTest, TakesEveryByteOfWindows1252AsALetter) {
    for (int byte = 128; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const std::string text(1, static_cast<char>(byte));
        const AssertionRecorder assertions;
        KeptTokens tokensKept(CodePage::Windows1252(), text, false, 0);
        TAVQTokenVector& tokens = tokensKept.tokens;
        ASSERT_EQ(tokens.Count(), 1);
        EXPECT_EQ(tokens.At(0)->type, TokenCodes::kString);
        EXPECT_EQ(tokens.At(0)->texts.source, text);
        EXPECT_TRUE(assertions.Texts().empty());
    }
}

TEST(TAVQTokenVectorTest, ConvertsNumbersExactly) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"0", 0.0},
        {"0.1", 0.1},
        {".3", 0.3},
        {"2.2250738585072014e-308", 2.2250738585072014e-308},
        {"1.7976931348623157e308", 1.7976931348623157e308},
        {"123456789012345678901234567890", 123456789012345678901234567890.0},
        {"9007199254740993", 9007199254740992.0},
        {"9007199254740993.00000000000000000000000001", 9007199254740994.0},
        {"0.1000000000000000055511151231257827021181583404541015625", 0.1},
        {"1e23", 1e23},
        {"8.5e-17", 8.5e-17},
        {"0e999", 0.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const AssertionRecorder assertions;
        KeptTokens tokensKept(CodePage::Utf8(), std::string(c.text), false, 0);
        TAVQTokenVector& tokens = tokensKept.tokens;
        ASSERT_EQ(tokens.Count(), 1);
        EXPECT_EQ(tokens.At(0)->number, c.value);
        EXPECT_EQ(tokens.At(0)->texts.source, c.text);
        EXPECT_TRUE(assertions.Texts().empty());
    }
}

TEST(TAVQTokenVectorTest, NumbersDoNotFollowTheLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* locale : {"C", "de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "pl_PL.UTF-8"}) {
        if (std::setlocale(LC_NUMERIC, locale) == nullptr) continue;
        SCOPED_TRACE(locale);
        const TokenRun run = Tokenize(CodePage::Utf8(), "x 2.5 2,5", false, 0);
        const std::vector<std::string> values = run.tokens;
        const std::string after = std::setlocale(LC_NUMERIC, nullptr);
        EXPECT_EQ(after, std::setlocale(LC_NUMERIC, locale));
        std::setlocale(LC_NUMERIC, "C");
        EXPECT_EQ(run.error, "");
        ASSERT_EQ(values.size(), 4U);
        KeptTokens tokensKept(CodePage::Utf8(), "x 2.5 2,5"s, false, 0);
        TAVQTokenVector& tokens = tokensKept.tokens;
        EXPECT_EQ(tokens.At(1)->number, 2.5);
    }
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(TAVQTokenVectorTest, AnOutOfRangeNumberIsReportedAndKept) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* name;
        std::string number;
        double value;
    } cases[] = {
        {"an exponent too large", "1e999", infinity},
        {"just too large", "1.8e308", infinity},
        {"too many digits", Repeat("9", 400), infinity},
        {"too small", "1e-999", 0.0},
    };
    for (int round = 0; round < 2; ++round) {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.name);
            const AssertionRecorder assertions;
            KeptTokens tokensKept(CodePage::Utf8(), "x = " + c.number + " y", false, 0);
            TAVQTokenVector& tokens = tokensKept.tokens;
            ASSERT_EQ(tokens.Count(), 4);
            EXPECT_EQ(tokens.At(2)->type, TokenCodes::kNumber);
            EXPECT_EQ(tokens.At(2)->number, c.value);
            EXPECT_EQ(tokens.At(2)->texts.source, c.number);
            EXPECT_EQ(tokens.At(3)->texts.source, "y");
            EXPECT_EQ(assertions.Texts(), std::vector<std::string>{kRangeAssertion});
        }
    }
    // An earlier failure leaves nothing after that a number in range could trip over.
    const AssertionRecorder assertions;
    KeptTokens tokensKept(CodePage::Utf8(), "1e999 5 1e999 2.5"s, false, 0);
    TAVQTokenVector& tokens = tokensKept.tokens;
    EXPECT_EQ(tokens.Count(), 4);
    EXPECT_EQ(assertions.Texts().size(), 2U);
}

TEST(TAVQTokenVectorTest, ANullTextIsEmpty) {
    const AssertionRecorder assertions;
    KeptTokens tokensKept(CodePage::Utf8(), std::string_view(), true, 2);
    TAVQTokenVector& tokens = tokensKept.tokens;
    EXPECT_EQ(tokens.Count(), 0);
    EXPECT_EQ(tokens.State(), SpecialCommandState::kOrdinary);
    EXPECT_TRUE(assertions.Texts().empty());
}

TEST(TAVQTokenVectorTest, AnIndexOutsideIsReported) {
    KeptTokens tokensKept(CodePage::Utf8(), "a b"s, false, 0);
    TAVQTokenVector& tokens = tokensKept.tokens;
    KeptTokens noneKept(CodePage::Utf8(), ""s, false, 0);
    TAVQTokenVector& none = noneKept.tokens;
    const std::vector<std::string> reported = {kIndexAssertion};
    for (int round = 0; round < 2; ++round) {
        for (const int index :
             {-1, 2, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            SCOPED_TRACE(index);
            const AssertionRecorder assertions;
            EXPECT_EQ(tokens.At(index), nullptr);
            EXPECT_EQ(assertions.Texts(), reported);
        }
        const AssertionRecorder assertions;
        EXPECT_EQ(none.At(0), nullptr);
        EXPECT_EQ(assertions.Texts(), reported);
    }
    const AssertionRecorder assertions;
    EXPECT_NE(tokens.At(0), nullptr);
    EXPECT_NE(tokens.At(1), nullptr);
    EXPECT_TRUE(assertions.Texts().empty());
}

TEST(TAVQTokenVectorTest, RandomTextsKeepTheRules) {
    std::mt19937 random(4711);
    const CodePage* const pages[] = {&CodePage::Utf8(), &CodePage::Windows1252(), &DoubleByte()};
    int complete = 0;
    for (int run = 0; run < 20000; ++run) {
        const std::string text = RandomText(random);
        SCOPED_TRACE("run " + std::to_string(run) + ": " + text);
        const CodePage& codePage = *pages[random() % 3];
        const TokenRun whole = Tokenize(codePage, text, false, 0);
        const TokenRun again = Tokenize(codePage, text, false, 0);
        ASSERT_EQ(again.tokens, whole.tokens);
        ASSERT_EQ(again.error, whole.error);
        for (const int maxTokens : {1, 2, 3}) {
            const TokenRun limited = Tokenize(codePage, text, false, maxTokens);
            if (!whole.error.empty() && !limited.error.empty()) {
                ASSERT_EQ(limited.error, whole.error);
            }
            if (whole.error.empty()) {
                ASSERT_EQ(limited.error, "");
                const std::size_t count =
                    std::min(whole.tokens.size(), static_cast<std::size_t>(maxTokens));
                ASSERT_EQ(limited.tokens,
                          std::vector<std::string>(
                              whole.tokens.begin(),
                              whole.tokens.begin() + static_cast<std::ptrdiff_t>(count)));
            }
        }
        if (!whole.error.empty()) continue;
        ++complete;
        // The source texts stand in the text one after the other.
        const AssertionRecorder ignored;
        KeptTokens tokensKept(codePage, text, false, 0);
        TAVQTokenVector& tokens = tokensKept.tokens;
        std::size_t offset = 0;
        int lastLine = 1;
        for (int i = 0; i < tokens.Count(); ++i) {
            const std::string source(tokens.At(i)->texts.source);
            ASSERT_FALSE(source.empty());
            offset = text.find(source, offset);
            ASSERT_NE(offset, std::string::npos);
            offset += source.size();
            const int line = tokens.At(i)->line;
            const int column = tokens.At(i)->column;
            ASSERT_GE(line, lastLine);
            ASSERT_GE(column, line == 1 ? 1 : 0);
            lastLine = line;
        }
    }
    EXPECT_GT(complete, 2000);
}

// However the tokens are asked for, each is the same as when they are read in turn.
TEST(TAVQTokenVectorTest, TokensMayBeReadInAnyOrder) {
    const std::string text = Repeat("Ab 'c''d' + 2.5, \n\"x\"+'y' (stra\u00dfe)\n> \u0250b ", 200);
    KeptTokens inTurn(CodePage::Utf8(), text, false, 0);
    KeptTokens jumping(CodePage::Utf8(), text, false, 0);
    const int count = inTurn.tokens.Count();
    ASSERT_EQ(count, 200 * 9);
    std::vector<ScannedToken> all;
    for (int i = 0; i < count; ++i) all.push_back(*inTurn.tokens.At(i));
    std::mt19937 random(1);
    int index = 0;
    for (int step = 0; step < 20000; ++step) {
        switch (random() % 4) {
            case 0:
                index = static_cast<int>(random() % static_cast<unsigned>(count));
                break;
            case 1:
                index = std::max(0, index - static_cast<int>(random() % 12));
                break;
            default:
                index = std::min(count - 1, index + 1);
                break;
        }
        const ScannedToken& token = *jumping.tokens.At(index);
        const ScannedToken& expected = all[static_cast<std::size_t>(index)];
        ASSERT_EQ(token.type, expected.type);
        ASSERT_EQ(token.operatorCode, expected.operatorCode);
        ASSERT_EQ(token.texts.source, expected.texts.source);
        ASSERT_EQ(token.texts.value, expected.texts.value);
        ASSERT_EQ(token.number, expected.number);
        ASSERT_EQ(token.line, expected.line);
        ASSERT_EQ(token.column, expected.column);
        int line = 0;
        int column = 0;
        if (step % 100 == 0) {
            ASSERT_TRUE(jumping.tokens.FindPosition(token.texts.source, line, column));
            ASSERT_EQ(line, expected.line);
            ASSERT_EQ(column, expected.column);
        }
    }
    int line = 7;
    int column = 8;
    EXPECT_FALSE(jumping.tokens.FindPosition("elsewhere", line, column));
    EXPECT_EQ(line, 7);
    EXPECT_EQ(column, 8);
}

}  // namespace
}  // namespace quillet
