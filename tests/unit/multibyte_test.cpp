#include "platform/multibyte.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "support/doublebytepage.h"
#include "support/sign.h"

namespace quillet {
namespace {

using namespace std::string_literals;

struct LengthCase {
    const char* name;
    const CodePage& codePage;
    std::string bytes;
    std::size_t maxBytes;
    std::size_t length;
};

TEST(MultibyteTest, MeasuresOneCharacter) {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    const DoubleBytePage doubleByte;
    const LengthCase cases[] = {
        {"nothing to look at", utf8, "a", 0, 0},
        {"nothing to look at, single-byte", latin, "\xE9", 0, 0},
        {"NUL", utf8, "", 1, 0},
        {"NUL, single-byte", latin, "", 1, 0},
        {"ASCII", utf8, "ab", 3, 1},
        {"a control", utf8, "\x01", 2, 1},
        {"DEL", utf8, "\x7F", 2, 1},
        {"two bytes", utf8, "é", 3, 2},
        {"two bytes, exactly as many as there are", utf8, "é", 2, 2},
        {"two bytes, one too few", utf8, "é", 1, 0},
        {"three bytes", utf8, "€", 4, 3},
        {"three bytes, one too few", utf8, "€", 2, 0},
        {"four bytes", utf8, "𐐨", 5, 4},
        {"four bytes, one too few", utf8, "𐐨", 3, 0},
        {"a lead byte before ASCII", utf8, "\xC3(", 3, 0},
        {"a lead byte before NUL", utf8, "\xC3", 2, 0},
        {"a stray trail byte", utf8, "\xA9", 2, 0},
        {"an overlong form", utf8, "\xC0\x80", 3, 0},
        {"every byte of a single-byte page", latin, "\x81", 2, 1},
        {"what would be a lead byte elsewhere", latin, "\xC3\xA9", 3, 1},
        {"a pair with an ASCII trail byte", doubleByte, "\x81.", 3, 2},
        {"half a pair", doubleByte, "\x81.", 1, 0},
    };
    for (const LengthCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(TAVQMBmblen_A(c.codePage, c.bytes.c_str(), c.maxBytes), c.length);
    }
}

TEST(MultibyteTest, EveryAsciiByteIsACharacterInEveryPage) {
    for (int byte = 1; byte < 128; ++byte) {
        SCOPED_TRACE(byte);
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(TAVQMBmblen_A(CodePage::Utf8(), text.c_str(), 2), 1U);
        EXPECT_EQ(TAVQMBmblen_A(CodePage::Windows1252(), text.c_str(), 2), 1U);
        const std::string upper(
            1, byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : static_cast<char>(byte));
        EXPECT_EQ(TAVQMBstrupr_A(CodePage::Utf8(), text), upper);
        EXPECT_EQ(TAVQMBstrupr_A(CodePage::Windows1252(), text), upper);
    }
}

struct UpperCase {
    const char* name;
    const CodePage& codePage;
    std::string text;
    std::string expected;
};

TEST(MultibyteTest, UpperCasesLetterByLetter) {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    const DoubleBytePage doubleByte;
    const UpperCase cases[] = {
        {"empty", utf8, "", ""},
        {"ASCII", utf8, "aBc_1.z", "ABC_1.Z"},
        {"accents", utf8, "été", "ÉTÉ"},
        {"y with diaeresis", utf8, "ÿ", "Ÿ"},
        {"no single capital: sharp s", utf8, "straße", "STRAßE"},
        {"the capital would be ASCII: dotless i", utf8, "wıth", "WıTH"},
        {"the capital would be ASCII: long s", utf8, "tableſ", "TABLEſ"},
        {"no single capital: apostrophe n", utf8, "ŉ", "ŉ"},
        {"no single capital: a ligature", utf8, "ﬁ", "ﬁ"},
        {"capitals stay", utf8, "ÉŸİ", "ÉŸİ"},
        {"Greek, both small sigmas", utf8, "λόγος σ", "ΛΌΓΟΣ Σ"},
        {"Cyrillic", utf8, "вопрос", "ВОПРОС"},
        {"Polish", utf8, "łódź", "ŁÓDŹ"},
        {"four bytes", utf8, "𐐨", "𐐀"},
        {"two bytes become three", utf8, "ɐ", "Ɐ"},
        {"two bytes become three among others", utf8, "aȿb", "AⱾB"},
        {"three bytes become two", utf8, "xⱥy", "XȺY"},
        {"three bytes become two again", utf8, "ⱦ", "Ⱦ"},
        {"characters without case stay", utf8, "数€ 1", "数€ 1"},
        {"bytes that form no character stay", utf8,
         "a\xFF"
         "b\xC3",
         "A\xFF"
         "B\xC3"},
        {"half a character before ASCII stays", utf8,
         "\xC3"
         "a",
         "\xC3"
         "A"},
        {"single-byte accents", latin, "\xE9t\xE9", "\xC9T\xC9"},
        {"single-byte y with diaeresis", latin, "\xFF", "\x9F"},
        {"single-byte sharp s", latin, "\xDF", "\xDF"},
        {"single-byte s with caron, ligature oe, z with caron", latin, "\x9A\x9C\x9E",
         "\x8A\x8C\x8E"},
        {"the page has no such capital: florin sign, micro sign", latin, "\x83\xB5", "\x83\xB5"},
        {"the division sign is no letter", latin, "\xF7", "\xF7"},
        {"trail bytes that look like letters stay", doubleByte,
         "a\x81"
         "ab",
         "A\x81"
         "aB"},
    };
    for (const UpperCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(TAVQMBstrupr_A(c.codePage, c.text), c.expected);
    }
}

struct TruncateCase {
    const char* name;
    const CodePage& codePage;
    std::string text;
    std::size_t maxBytes;
    std::string expected;
};

TEST(MultibyteTest, TruncatesBetweenCharacters) {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    const DoubleBytePage doubleByte;
    const TruncateCase cases[] = {
        {"empty", utf8, "", 5, ""},
        {"nothing allowed", utf8, "abc", 0, ""},
        {"shorter than the limit", utf8, "abc", 5, "abc"},
        {"exactly the limit", utf8, "abc", 3, "abc"},
        {"one byte over", utf8, "abcd", 3, "abc"},
        {"a character fits", utf8, "aé", 3, "aé"},
        {"a character would be split", utf8, "aéb", 2, "a"},
        {"nothing whole fits", utf8, "é", 1, ""},
        {"a four-byte character would be split", utf8, "a𐐨b", 4, "a"},
        {"a four-byte character fits", utf8, "a𐐨b", 5, "a𐐨"},
        {"an invalid byte counts as one", utf8, "a\xFF\xFF", 2, "a\xFF"},
        {"half a character at the end counts as one byte", utf8, "a\xC3", 2, "a\xC3"},
        {"single bytes", latin, "\xC3\xA9\xC3\xA9", 3, "\xC3\xA9\xC3"},
        {"a pair would be split", doubleByte,
         "a\x81"
         "ab",
         2, "a"},
        {"a pair fits", doubleByte,
         "a\x81"
         "ab",
         3,
         "a\x81"
         "a"},
    };
    for (const TruncateCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string_view result = TAVQMBStringTruncate_A(c.codePage, c.text, c.maxBytes);
        EXPECT_EQ(result, c.expected);
        if (!result.empty()) {
            EXPECT_EQ(result.data(), c.text.data());
        }
    }
}

struct FindCase {
    const char* name;
    const CodePage& codePage;
    std::string text;
    char wanted;
    std::size_t expected;
};

TEST(MultibyteTest, FindsTheLastOccurrence) {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    const DoubleBytePage doubleByte;
    constexpr std::size_t kNone = std::string_view::npos;
    const FindCase cases[] = {
        {"empty", utf8, "", '.', kNone},
        {"none", utf8, "abc", '.', kNone},
        {"one", utf8, "a.c", '.', 1},
        {"the last of many", utf8, "a.b.c", '.', 3},
        {"the first byte", utf8, ".", '.', 0},
        {"the offset is in bytes", utf8, "éé.", '.', 4},
        {"after an invalid byte", utf8, "a\xFF.", '.', 2},
        {"before an invalid byte", utf8, "a.\xFF", '.', 1},
        {"single bytes", latin, "\xE9.\xE9", '.', 1},
        {"a trail byte does not count", doubleByte, "a.\x81.", '.', 1},
        {"nothing but a trail byte", doubleByte, "\x81.", '.', kNone},
    };
    for (const FindCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(TAVQMBstrrchr_A(c.codePage, c.text, c.wanted), c.expected);
    }
}

struct CompareCase {
    const char* name;
    const CodePage& codePage;
    std::string left;
    std::string right;
    int sign;
};

TEST(MultibyteTest, ComparesWithoutCase) {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    const DoubleBytePage doubleByte;
    const CompareCase cases[] = {
        {"empty texts", utf8, "", "", 0},
        {"equal but for case", utf8, "wItH", "With", 0},
        {"a shorter text is less", utf8, "ab", "ABC", -1},
        {"letters in order", utf8, "abc", "ABD", -1},
        {"case does not decide the order", utf8, "B", "a", 1},
        {"accents", utf8, "été", "ÉTÉ", 0},
        {"an accent is not its letter", utf8, "é", "e", 1},
        {"dotless i is not I", utf8, "ı", "I", 1},
        {"long s is not S", utf8, "ſ", "s", 1},
        {"capitals of another byte length", utf8, "ⱥx", "ȺX", 0},
        {"single-byte accents", latin, "\xE9", "\xC9", 0},
        {"single-byte y with diaeresis", latin, "\xFF", "\x9F", 0},
        {"trail bytes have no case", doubleByte,
         "\x81"
         "a",
         "\x81"
         "A",
         1},
    };
    for (const CompareCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(SignOf(TAVQMBqstricmp_A(c.codePage, c.left, c.right)), c.sign);
        EXPECT_EQ(SignOf(TAVQMBqstricmp_A(c.codePage, c.right, c.left)), -c.sign);
    }
}

}  // namespace
}  // namespace quillet
