#include "tokenizer/commandend.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "support/assertionrecorder.h"
#include "support/doublebytepage.h"
#include "support/rownames.h"
#include "tokenizer/parseerror.h"
#include "tokenizing.h"

namespace quillet {
namespace {

using namespace std::string_literals;
using tokenizing::Describe;
using tokenizing::ErrorCase;

constexpr const char* kLinesAssertion = "lines";

struct EndCase {
    const char* name;
    std::string text;
    std::ptrdiff_t offset;
    const CodePage* pCodePage = &CodePage::Utf8();
};

const EndCase kFreeTextCases[] = {
    {"empty", "", -1},
    {"no period", "* a\n", -1},
    {"a period and a line break", "* a.\n", 3},
    {"a period and a CR LF", "* a.\r\n", 3},
    {"a period and a CR", "* a.\rb", 3},
    {"a period at the end of the text", "* a.", 3},
    {"only a period", ".", 0},
    {"blanks and tabs after", "* a. \t \n", 3},
    {"blanks after at the end of the text", "* a.  ", 3},
    {"a period inside", "* a.b.\n", 5},
    {"a sentence inside", "* a. b.\n", 6},
    {"only a sentence inside", "* a. b\n", -1},
    {"two periods", "* a..\n", 4},
    {"periods with blanks between", "* a . .\n", 6},
    {"the first line's end", "* a.\nb.\n", 3},
    {"a later line", "* a\nb.\n", 5},
    {"quotes mean nothing", "* it's.\n", 6},
    {"double quotes mean nothing", "* \"a.\n", 4},
    {"comments mean nothing", "* /* a.\n", 6},
    {"a comment after the period is text", "* a. /* b\n", -1},
    {"the offset is in bytes", "* é.\n", 4},
    {"NUL ends the text after a period", "* a.\0b"s, 3},
    {"NUL ends the text in front of a period", "* a\0.\n"s, -1},
    {"NUL ends the text after blanks", "* a. \0b"s, 3},
    {"single bytes", "* \xE9.\n", 3, &CodePage::Windows1252()},
    {"a trail byte is no period", "* \x81.\n", -1, &DoubleByte()},
    {"a trail byte is no period, but one after it is", "* \x81..\n", 4, &DoubleByte()},
    {"a control character is no blank", "* a.\x0B\n", -1},
};

class FreeTextEndTest : public testing::TestWithParam<EndCase> {};

TEST_P(FreeTextEndTest, IsFound) {
    const EndCase& c = GetParam();
    for (int round = 0; round < 2; ++round) {
        const AssertionRecorder assertions;
        EXPECT_EQ(FindCommandEndIn(*c.pCodePage, c.text, true), c.offset);
        EXPECT_TRUE(assertions.Texts().empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, FreeTextEndTest, testing::ValuesIn(kFreeTextCases),
                         NameOfRow<EndCase>);

std::vector<EndCase> SyntaxEndCases() {
    return {
        {"empty", "", -1},
        {"no period", "freq a\n", -1},
        {"a period and a line break", "freq a.\n", 6},
        {"a period and a CR LF", "freq a.\r\n", 6},
        {"a period and a LF CR", "freq a.\n\r", 6},
        {"a period and a CR", "freq a.\rb", 6},
        {"the very last byte ends nothing", "freq a.", -1},
        {"one blank after it, and it does", "freq a. ", 6},
        {"one tab after it", "freq a.\t", 6},
        {"only a period", ".", -1},
        {"a period and a blank", ". ", 0},
        {"a period and a line break alone", ".\n", 0},
        {"blanks and tabs before the line break", "freq a. \t \n", 6},
        {"a period inside a word", "freq a.b.\n", 8},
        {"a decimal", "x=1.5.\n", 5},
        {"a period before another word", "a. b.\n", 4},
        {"only a period before another word", "a. b\n", -1},
        {"two periods", "a..\n", 2},
        {"periods with blanks between", "a. . \n", 3},
        {"the first line's end", "a.\nb.\n", 1},
        {"a later line", "a\nb.\n", 3},
        {"blank lines after", "a.\n\n\n", 1},
        {"an indented line after", "a.\n b\n", 1},
        {"a period in a literal", "x 'a.' b.\n", 8},
        {"a period and a blank in a literal", "x 'a. '\n", -1},
        {"a period after a literal", "x 'a'.\n", 5},
        {"double quotes", "x \"a.\" b.\n", 8},
        {"an apostrophe in double quotes", "x \"it's.\".\n", 9},
        {"a doubled quote", "x 'it''s.'.\n", 10},
        {"an empty literal", "x ''.\n", 4},
        {"a literal after a period", "a.'b.'.\n", 6},
        {"a literal after a period and a blank", "a. 'b.'.\n", 7},
        {"a comment to the end of its line", "a /* b.\n", -1},
        {"a comment to the end of its line, then the end", "a /* b.\nc.\n", 9},
        {"a quote in a comment", "a /* it's\nb.\n", 11},
        {"a closed comment", "a /* b. */ c.\n", 12},
        {"a quote in a closed comment", "a /* it's */ c.\n", 14},
        {"the opening does not close", "a /*/ b.\n", -1},
        {"the opening does not close, a later star does", "a /*/ b. */ c.\n", 13},
        {"the closing slash and a star open another one", "a /* b */* c. */ d.\n", 18},
        {"a slash is nothing special", "a / b.\n", 5},
        {"a slash before a literal", "a /'b.'.\n", 7},
        {"a slash before the period", "a /.\n", 3},
        {"a comment after the period to the end of the line", "a./* b\n", 1},
        {"the same after a blank", "a. /* b\n", 1},
        {"the same with a CR LF", "a. /* b\r\n", 1},
        {"a quote in that comment", "a. /* it's\n", 1},
        {"a closed comment after the period", "a./* b */\n", -1},
        {"a closed comment after the period and a blank", "a. /* b */ \n", -1},
        {"a closed comment after the period, a later period", "a. /* b */ c.\n", 12},
        {"a closed comment and an open one after the period", "a. /* b */* c\n", 1},
        {"a comment after the period to the end of the text", "a. /* b", -1},
        {"a comment glued to the period to the end of the text", "a./* b", -1},
        {"a slash after the period", "a. / b.\n", 6},
        {"the offset is in bytes", "é.\n", 2},
        {"an accent inside a literal", "'é.' x.\n", 7},
        {"single bytes", "\xE9.\n", 1, &CodePage::Windows1252()},
        {"a trail byte is no period", "\x81.\n", -1, &DoubleByte()},
        {"a trail byte is no quote", "\x81'.\n", 2, &DoubleByte()},
        {"a trail byte in a literal is no quote", "'\x81'.\x81'.'.\n", 8, &DoubleByte()},
        {"NUL directly after a period", "a.\0\n"s, -1},
        {"NUL after a period and a blank", "a. \0\n"s, 1},
        {"NUL in front of a period", "a\0.\n"s, -1},
        {"a control character is no blank", "a.\x0B\n", -1},
        {"what the tokenizer refuses is stepped over", "a \\ \x01 ^ 1e.\n", 10},
    };
}

class SyntaxEndTest : public testing::TestWithParam<EndCase> {};

TEST_P(SyntaxEndTest, IsFound) {
    const EndCase& c = GetParam();
    for (int round = 0; round < 2; ++round) {
        const AssertionRecorder assertions;
        EXPECT_EQ(FindCommandEndIn(*c.pCodePage, c.text, false), c.offset);
        EXPECT_TRUE(assertions.Texts().empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, SyntaxEndTest, testing::ValuesIn(SyntaxEndCases()),
                         NameOfRow<EndCase>);

TEST(CommandEndTest, RefusesOpenLiteralsAtTheirOpeningQuote) {
    const ErrorCase cases[] = {
        {"at the end of the line", "'abc\n", "kind 1 at 1:1"},
        {"at the end of the text", "'abc", "kind 1 at 1:1"},
        {"at a CR", "'abc\r'", "kind 1 at 1:1"},
        {"after a word", "x 'abc.\n", "kind 1 at 1:3"},
        {"after a two-byte character", "é 'abc\n", "kind 1 at 1:3"},
        {"double quotes", "x \"it's\n", "kind 1 at 1:3"},
        {"after a closed literal", "'a' 'b\n", "kind 1 at 1:5"},
        {"a doubled quote opens a new literal", "'it''s\n", "kind 1 at 1:5"},
        {"after a closed comment", "/* ' */ 'a\n", "kind 1 at 1:9"},
        {"after a period", "a. 'b\n", "kind 1 at 1:4"},
        {"on a later line", "a\n'b\n", "kind 1 at 2:0"},
        {"indented on a later line", "a\r\n  'b\n", "kind 1 at 2:2"},
        {"NUL inside", "x 'a\0'\n"s, "kind 1 at 1:3"},
        {"an invalid byte inside", "x 'a\xFF'\n", "kind 1 at 1:3"},
        {"a trail byte closes nothing", "x 'a\x81'\n", "kind 1 at 1:3", {}, &DoubleByte()},
    };
    for (int round = 0; round < 2; ++round) {
        for (const ErrorCase& c : cases) {
            SCOPED_TRACE(c.name);
            const AssertionRecorder assertions;
            std::string error;
            try {
                const std::ptrdiff_t offset = FindCommandEndIn(*c.pCodePage, c.text, false);
                ADD_FAILURE() << "no error, but " << offset;
            } catch (const ParseError& thrown) {
                error = Describe(thrown);
            }
            EXPECT_EQ(error, c.error);
            EXPECT_TRUE(assertions.Texts().empty());
            EXPECT_NO_THROW((void)FindCommandEndIn(*c.pCodePage, c.text, true));
        }
    }
}

TEST(CommandEndTest, ANullTextIsReported) {
    for (const bool isFreeText : {false, true}) {
        const AssertionRecorder assertions;
        EXPECT_EQ(FindCommandEndIn(CodePage::Utf8(), std::string_view(), isFreeText), -1);
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>{kLinesAssertion});
    }
}

struct EndDataCase {
    const char* name;
    std::string line;
    bool expected;
};

TEST(CommandEndTest, EndDataWantsEightCharactersInFront) {
    const EndDataCase cases[] = {
        {"exactly", "END DATA", true},
        {"lower case", "end data", true},
        {"mixed case", "End Data", true},
        {"a period and a line break", "end data.\n", true},
        {"anything after", "END DATAX", true},
        {"a word after", "end data this is", true},
        {"an accent after", "end dataé", true},
        {"an invalid byte after", "end data\xFF", true},
        {"empty", "", false},
        {"too short", "END DAT", false},
        {"too short with a line break", "END DAT\n", false},
        {"a blank in front", " END DATA", false},
        {"two blanks", "END  DATA", false},
        {"a tab", "END\tDATA", false},
        {"no blank", "ENDDATA  ", false},
        {"a period inside", "END DAT.A", false},
        {"another word", "END FILE", false},
        {"data", "1 2 3 END DATA", false},
        {"in quotes", "'END DATA'", false},
        {"an accent instead of a letter", "ÉND DATA", false},
    };
    for (int round = 0; round < 2; ++round) {
        for (const EndDataCase& c : cases) {
            SCOPED_TRACE(c.name);
            EXPECT_EQ(IsEndDataLine(CodePage::Utf8(), c.line), c.expected);
            EXPECT_EQ(IsEndDataLine(CodePage::Windows1252(), c.line), c.expected);
        }
    }
}

}  // namespace
}  // namespace quillet
