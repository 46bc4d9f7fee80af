#include "platform/unicodeuppercase.h"

#include <gtest/gtest.h>

#include <ios>

namespace quillet {
namespace {

struct LetterCase {
    const char* name;
    char32_t letter;
    char32_t capital;
};

TEST(UnicodeUppercaseTest, KnowsTheSingleCapital) {
    const LetterCase cases[] = {
        {"e acute", 0xE9, 0xC9},
        {"the first small letter outside ASCII", 0xE0, 0xC0},
        {"thorn", 0xFE, 0xDE},
        {"y with diaeresis, whose capital lies elsewhere", 0xFF, 0x178},
        {"micro sign: the Greek capital", 0xB5, 0x39C},
        {"a with macron", 0x101, 0x100},
        {"s with caron", 0x161, 0x160},
        {"oe", 0x153, 0x152},
        {"z with caron, an odd code", 0x17E, 0x17D},
        {"a capital two bytes away from a letter of three", 0x250, 0x2C6F},
        {"dz digraph", 0x1C6, 0x1C4},
        {"dz digraph, only its first letter large", 0x1C5, 0x1C4},
        {"alpha", 0x3B1, 0x391},
        {"alpha with tonos", 0x3AC, 0x386},
        {"final sigma", 0x3C2, 0x3A3},
        {"Cyrillic ya", 0x44F, 0x42F},
        {"Cyrillic io", 0x451, 0x401},
        {"Armenian ayb", 0x561, 0x531},
        {"a letter of three bytes", 0x1E01, 0x1E00},
        {"Vietnamese a with circumflex and acute", 0x1EA5, 0x1EA4},
        {"Greek extended", 0x1F00, 0x1F08},
        {"small Roman numeral one", 0x2170, 0x2160},
        {"circled a", 0x24D0, 0x24B6},
        {"full-width a", 0xFF41, 0xFF21},
        {"a letter of four bytes", 0x10428, 0x10400},
    };
    for (const LetterCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(SimpleUppercase(c.letter), c.capital);
        EXPECT_EQ(SimpleUppercase(c.capital), c.capital);
    }
}

struct KeptCase {
    const char* name;
    char32_t letter;
};

TEST(UnicodeUppercaseTest, KeepsAllElse) {
    const KeptCase cases[] = {
        {"the first code outside ASCII", 0x80},
        {"no-break space", 0xA0},
        {"feminine ordinal", 0xAA},
        {"multiplication sign", 0xD7},
        {"division sign, where the capital of a letter would be one row up", 0xF7},
        {"sharp s: two capitals", 0xDF},
        {"capital sharp s", 0x1E9E},
        {"n with apostrophe: two capitals", 0x149},
        {"j with caron: two capitals", 0x1F0},
        {"iota with two accents: several capitals", 0x390},
        {"Armenian ligature: two capitals", 0x587},
        {"fi ligature: two capitals", 0xFB01},
        {"dotless i: its capital is in ASCII", 0x131},
        {"long s: its capital is in ASCII", 0x17F},
        {"capital I with dot", 0x130},
        {"Kelvin sign", 0x212A},
        {"kra has no capital", 0x138},
        {"a Hebrew letter", 0x5D0},
        {"an Arabic letter", 0x627},
        {"a Korean syllable", 0xAC00},
        {"a Chinese character", 0x4E2D},
        {"a surrogate", 0xD800},
        {"an emoji", 0x1F600},
        {"the last code", 0x10FFFF},
        {"beyond the last code", 0x110000},
        {"no code at all", 0xFFFFFFFF},
    };
    for (const KeptCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(SimpleUppercase(c.letter), c.letter);
    }
}

TEST(UnicodeUppercaseTest, ACapitalIsItsOwnCapitalAndNeverAscii) {
    for (char32_t letter = 0x80; letter < 0x110000; ++letter) {
        const char32_t capital = SimpleUppercase(letter);
        ASSERT_GE(capital, 0x80U) << std::hex << static_cast<unsigned long>(letter);
        ASSERT_LT(capital, 0x110000U) << std::hex << static_cast<unsigned long>(letter);
        ASSERT_EQ(static_cast<unsigned long>(SimpleUppercase(capital)),
                  static_cast<unsigned long>(capital))
            << std::hex << static_cast<unsigned long>(letter);
    }
}

}  // namespace
}  // namespace quillet
