#include "tokenizer/variablenames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/codepage.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "tokenizer/namerepair.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet {
namespace {

TEST(VariableNamesTest, KnowsTheNameCharacters) {
    const std::string ascii = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789@#$_.";
    for (const CodePage* pPage : {&CodePage::Utf8(), &CodePage::Windows1252()}) {
        for (int byte = 1; byte < 128; ++byte) {
            SCOPED_TRACE(byte);
            const std::string text(1, static_cast<char>(byte));
            const bool expected = ascii.find(text) != std::string::npos;
            EXPECT_EQ(IsNameCharacter(*pPage, text), expected);
            EXPECT_EQ(IsNameCharacter(*pPage, text + "-"), expected);
        }
        EXPECT_FALSE(IsNameCharacter(*pPage, ""));
    }
    for (int byte = 128; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        EXPECT_TRUE(
            IsNameCharacter(CodePage::Windows1252(), std::string(1, static_cast<char>(byte))));
    }
    for (const char* character : {"é", "ß", "€", "数", "𐐨", "\xC2\xA0"}) {
        SCOPED_TRACE(character);
        EXPECT_TRUE(IsNameCharacter(CodePage::Utf8(), character));
    }
}

struct ClassCase {
    const char* name;
    const CodePage& codePage;
    std::string text;
    int plain;
    int extended;
};

std::vector<ClassCase> ClassCases() {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    return {
        {"an ordinary name", utf8, "age", 0, 0},
        {"one letter", utf8, "x", 0, 0},
        {"every kind of character", utf8, "aZ09@#$_.x", 0, 0},
        {"begins with @", utf8, "@x", 0, 0},
        {"a scratch name", utf8, "#tmp", 1, 1},
        {"a scratch name of one character", utf8, "#", 1, 1},
        {"a scratch name may begin with a digit after the mark", utf8, "#1", 1, 1},
        {"a scratch name that ends with a period", utf8, "#a.", 1, 1},
        {"a system name", utf8, "$sysmis", 2, 2},
        {"a system name of one character", utf8, "$", 2, 2},
        {"a system name that ends with an underscore", utf8, "$a_", 2, 2},
        {"empty", utf8, "", 3, 3},
        {"only blanks", utf8, "   ", 3, 3},
        {"64 bytes", utf8, Repeat("a", 64), 0, 0},
        {"64 bytes and blanks", utf8, Repeat("a", 64) + "   ", 0, 0},
        {"65 bytes", utf8, Repeat("a", 65), 3, 3},
        {"32 characters of 64 bytes", utf8, Repeat("é", 32), 0, 0},
        {"33 characters of 66 bytes", utf8, Repeat("é", 33), 3, 3},
        {"65 bytes that are no name anyway", utf8, Repeat("-", 65), 3, 3},
        {"a blank inside", utf8, "a b", 4, 4},
        {"a blank in front", utf8, " a", 4, 4},
        {"blanks after do not count", utf8, "age  ", 0, 0},
        {"a tab after counts", utf8, "age\t", 4, 4},
        {"a hyphen", utf8, "a-b", 4, 4},
        {"an exclamation mark in front", utf8, "!x", 4, 4},
        {"a bad character decides before a bad start", utf8, "1-", 4, 4},
        {"a bad character at the end", utf8, "abc%", 4, 4},
        {"a control character", utf8, "a\x01", 4, 4},
        {"an invalid byte", utf8, "a\xFF", 4, 4},
        {"half a character at the end", utf8, "a\xC3", 4, 4},
        {"the same bytes in a single-byte page", latin, "a\xC3", 0, 0},
        {"bytes 128 to 255", latin, "\x80\xA0\xFF", 0, 0},
        {"accents", utf8, "été", 0, 0},
        {"other scripts", utf8, "数€𐐨", 0, 0},
        {"begins with a digit", utf8, "1st", 6, 6},
        {"begins with a period", utf8, ".a", 6, 6},
        {"begins with an underscore", utf8, "_a", 6, 6},
        {"a lone period", utf8, ".", 6, 6},
        {"a lone underscore", utf8, "_", 6, 6},
        {"ALL", utf8, "ALL", 5, 5},
        {"AND", utf8, "and", 5, 5},
        {"BY", utf8, "By", 5, 5},
        {"EQ", utf8, "eQ", 5, 5},
        {"GE", utf8, "ge", 5, 5},
        {"GT", utf8, "GT", 5, 5},
        {"LE", utf8, "le", 5, 5},
        {"LT", utf8, "lt", 5, 5},
        {"NE", utf8, "Ne", 5, 5},
        {"NOT", utf8, "not", 5, 5},
        {"OR", utf8, "or", 5, 5},
        {"TO", utf8, "to", 5, 5},
        {"WITH", utf8, "with", 5, 5},
        {"a reserved word and blanks", utf8, "with    ", 5, 5},
        {"a reserved word in a single-byte page", latin, "WiTh", 5, 5},
        {"longer than a reserved word", utf8, "ALLX", 0, 0},
        {"shorter than a reserved word", utf8, "WIT", 0, 0},
        {"a reserved word with a mark in front", utf8, "#BY", 1, 1},
        {"a reserved word with a period", utf8, "BY.", 0, 7},
        {"a dotless i hides no reserved word", utf8, "wıth", 0, 0},
        {"ends with a period", utf8, "x.", 0, 7},
        {"ends with a period and blanks", utf8, "x.  ", 0, 7},
        {"ends with an underscore", utf8, "x_", 0, 100},
        {"ends with an underscore and blanks", utf8, "x_ ", 0, 100},
        {"the last character decides", utf8, "x._", 0, 100},
        {"the last character decides the other way", utf8, "x_.", 0, 7},
        {"ends with a mark of scratch names", utf8, "x#", 0, 0},
    };
}

class NameClassTest : public testing::TestWithParam<ClassCase> {};

TEST_P(NameClassTest, IsTold) {
    const ClassCase& c = GetParam();
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(static_cast<int>(ClassifyName(c.codePage, c.text)), c.plain);
        EXPECT_EQ(static_cast<int>(ClassifyNameExtended(c.codePage, c.text)), c.extended);
    }
}

INSTANTIATE_TEST_SUITE_P(Names, NameClassTest, testing::ValuesIn(ClassCases()),
                         NameOfRow<ClassCase>);

struct TokenCase {
    const char* name;
    const CodePage& codePage;
    std::string text;
    int expected;
};

TEST(VariableNamesTest, ClassifiesTheCurrentToken) {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    const TokenCase cases[] = {
        {"an ordinary name", utf8, "age", 1},
        {"a scratch name", utf8, "#tmp", 2},
        {"a system name", utf8, "$sysmis", 3},
        {"a name that ends with a period", utf8, "x.", 1},
        {"accents", utf8, "été", 1},
        {"accents in a single-byte page", latin, "\xE9t\xE9", 1},
        {"a reserved word", utf8, "with", 0},
        {"a name that is too long", utf8, Repeat("a", 65), 0},
        {"the longest name", utf8, Repeat("a", 64), 1},
        {"a macro word", utf8, "!x", 0},
        {"a number", utf8, "5", 0},
        {"a literal with a name in it", utf8, "'age'", 0},
        {"an operator", utf8, "=", 0},
        {"no token", utf8, "", 0},
    };
    for (const TokenCase& c : cases) {
        SCOPED_TRACE(c.name);
        TAVQTokenSequence sequence(c.codePage, c.text, false, 0);
        EXPECT_EQ(VariableNameClass(c.codePage, sequence), c.expected);
        EXPECT_EQ(sequence.CurrentNameClass(), c.expected);
        while (sequence.Next()) {
        }
        EXPECT_EQ(VariableNameClass(c.codePage, sequence), 0);
        EXPECT_EQ(sequence.CurrentNameClass(), 0);
    }
}

}  // namespace
}  // namespace quillet
