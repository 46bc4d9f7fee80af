// How the work of the tokenizer grows with the text.
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"
#include "tokenizer/commandend.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tavqtokenvector.h"
#include "tokenizer/tokencheck.h"
#include "tokenizer/tokensurvey.h"

namespace quillet {
namespace {

// A text of a head, many times a unit, and a tail.
struct TextCase {
    const char* name;
    std::string head;
    std::string unit;
    std::string tail;
};

void ExpectLinearInText(const TextCase& c, const std::function<void(const std::string&)>& work) {
    constexpr std::size_t kCount = 20'000;
    const std::string text = c.head + Repeat(c.unit, kCount) + c.tail;
    const std::string longText = c.head + Repeat(c.unit, 4 * kCount) + c.tail;
    ExpectLinearWork(std::size_t{1}, [&](std::size_t size) { work(size == 1 ? text : longText); });
}

std::vector<TextCase> TextCases() {
    return {
        {"a long literal", "x '", "a", "'"},
        {"a long literal of two-byte characters", "x '", "é", "'"},
        {"a long literal of the other quote", "x '", "\"", "'"},
        {"doubled quotes", "x '", "''", "'"},
        {"an open literal", "x '", "a", ""},
        {"many literals", "x ", "'a' ", ""},
        {"many glued parts", "x 'a'", "+'a'", ""},
        {"many glued parts on lines", "x 'a'", "+\n'a'", ""},
        {"many parts after blanks", "x 'a'", " +'a'", ""},
        {"many blanks after a literal", "x 'a'", " ", ""},
        {"many line breaks after a literal", "x 'a'", "\n", ""},
        {"many dropped pluses", "x 'a' ", "+ ", ""},
        {"many blanks after the plus of a part", "x 'a'+", " ", "'b'"},
        {"a long comment", "x /*", "a", "*/ y"},
        {"a long comment of stars", "x /*", "*", "*/ y"},
        {"an open comment", "x /*", "a", ""},
        {"an open comment of openings", "x /*", "/*", ""},
        {"many comments", "x", "/* a */", ""},
        {"many comments to the end of their lines", "x", "/* a\n", ""},
        {"many slashes", "x", "/ ", ""},
        {"many periods", "x ", ".", ""},
        {"many periods with blanks", "x ", ". ", ""},
        {"many periods with words", "x ", "a. ", ""},
        {"many periods with lines", "x ", "a.\n", ""},
        {"many periods with comments", "x ", "./*a*/", ""},
        {"a period and many blanks", "x.", " ", "y"},
        {"a long word", "x ", "a", ""},
        {"a long word with periods", "x", ".a", ""},
        {"a long word of two-byte characters", "x ", "é", ""},
        {"a long word that grows in upper case", "x ", "ɐ", ""},
        {"a long first word", "", "a", ""},
        {"a long macro word", "!", "a", ""},
        {"many words", "x ", "ab ", ""},
        {"many operator words", "x ", "by ", ""},
        {"many macro words", "x ", "!a ", ""},
        {"many numbers", "x ", "1 ", ""},
        {"many fractions", "x ", ".5", ""},
        {"a long number", "x ", "0", ""},
        {"a long fraction", "x 0.", "1", ""},
        {"a long exponent", "x 1e", "0", "1"},
        {"many operators", "x ", "=", ""},
        {"many stars", "x ", "*", ""},
        {"many commas", "x ", ",", ""},
        {"many blanks", "x ", " ", "y"},
        {"many tabs", "x ", "\t", "y"},
        {"many line breaks", "x ", "\n", "y"},
        {"many CR LF", "x ", "\r\n", "y"},
        {"a long comment command", "comment ", "it's. ", ""},
    };
}

class TokenizerWorkTest : public testing::TestWithParam<TextCase> {};

TEST_P(TokenizerWorkTest, IsLinearForKeptTokens) {
    ExpectLinearInText(GetParam(), [](const std::string& text) {
        try {
            CommandBudget budget;
            Arena arena;
            TAVQTokenVector tokens(CodePage::Utf8(), text, false, 0, budget, arena);
            EXPECT_GE(tokens.Count(), 1);
            for (int i = 0; i < tokens.Count(); ++i) EXPECT_NE(tokens.At(i), nullptr);
        } catch (const ParseError& error) {
            EXPECT_EQ(error.Kind(), ParseErrorKind::kUnclosedLiteral);
        }
    });
}

TEST_P(TokenizerWorkTest, IsLinearForCountedTokens) {
    ExpectLinearInText(GetParam(), [](const std::string& text) {
        try {
            const TokenSurvey survey = SurveyTokens(CodePage::Utf8(), text, false, 0);
            EXPECT_GE(survey.count, 1);
        } catch (const ParseError& error) {
            EXPECT_EQ(error.Kind(), ParseErrorKind::kUnclosedLiteral);
        }
    });
}

TEST_P(TokenizerWorkTest, IsLinearForTheCheckAlone) {
    ExpectLinearInText(GetParam(), [](const std::string& text) {
        try {
            CheckTokens(CodePage::Utf8(), text, false);
        } catch (const ParseError& error) {
            EXPECT_EQ(error.Kind(), ParseErrorKind::kUnclosedLiteral);
        }
    });
}

TEST_P(TokenizerWorkTest, IsLinearForTheEndOfTheCommand) {
    ExpectLinearInText(GetParam(), [](const std::string& text) {
        const auto size = static_cast<std::ptrdiff_t>(text.size());
        EXPECT_LT(FindCommandEndIn(CodePage::Utf8(), text, true), size);
        try {
            EXPECT_LT(FindCommandEndIn(CodePage::Utf8(), text, false), size);
        } catch (const ParseError& error) {
            EXPECT_EQ(error.Kind(), ParseErrorKind::kUnclosedLiteral);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Texts, TokenizerWorkTest, testing::ValuesIn(TextCases()),
                         NameOfRow<TextCase>);

// A look at the first token and the test for END DATA take as much of a long line as of a short
// one.
TEST(TokenizerWorkTest, IsBoundedForTheBeginningOfALine) {
    for (const TextCase& c : TextCases()) {
        if (c.head.empty()) continue;
        SCOPED_TRACE(c.name);
        const std::string line = c.head + Repeat(c.unit, 20'000) + c.tail;
        const auto look = [&line] {
            EXPECT_LE(SurveyTokens(CodePage::Utf8(), line, false, 1).count, 1);
            EXPECT_FALSE(IsEndDataLine(CodePage::Utf8(), line));
        };
        // A first token that goes on is read to its end.
        if (c.head.starts_with("x ")) {
            EXPECT_LT(WorkOf(look), 2000U);
        }
    }
}

}  // namespace
}  // namespace quillet
