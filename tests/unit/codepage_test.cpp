#include "platform/codepage.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {
namespace {

using namespace std::string_literals;

std::string Encode(std::uint32_t code) {
    const auto byte = [](std::uint32_t value) { return static_cast<char>(value & 0xFFU); };
    std::string text;
    if (code < 0x80) {
        text += byte(code);
    } else if (code < 0x800) {
        text += byte(0xC0U | code >> 6);
        text += byte(0x80U | (code & 0x3FU));
    } else if (code < 0x10000) {
        text += byte(0xE0U | code >> 12);
        text += byte(0x80U | (code >> 6 & 0x3FU));
        text += byte(0x80U | (code & 0x3FU));
    } else {
        text += byte(0xF0U | code >> 18);
        text += byte(0x80U | (code >> 12 & 0x3FU));
        text += byte(0x80U | (code >> 6 & 0x3FU));
        text += byte(0x80U | (code & 0x3FU));
    }
    return text;
}

std::string Upper(const CodePage& codePage, std::string_view character) {
    std::string result = "<";
    codePage.AppendUpper(character, result);
    EXPECT_EQ(result.substr(0, 1), "<");
    return result.substr(1);
}

TEST(CodePageTest, Utf8KnowsEveryCharacter) {
    const CodePage& utf8 = CodePage::Utf8();
    for (std::uint32_t code = 0x80; code < 0x110000; ++code) {
        const std::string text = Encode(code);
        const bool surrogate = code >= 0xD800 && code < 0xE000;
        ASSERT_EQ(utf8.NonAsciiLength(text.c_str(), text.size() + 1), surrogate ? 0 : text.size())
            << code;
        ASSERT_EQ(utf8.NonAsciiLength(text.c_str(), text.size()), surrogate ? 0 : text.size())
            << code;
        for (std::size_t most = 1; most < text.size(); ++most) {
            ASSERT_EQ(utf8.NonAsciiLength(text.c_str(), most), 0U) << code;
        }
    }
}

TEST(CodePageTest, Utf8RefusesWhatIsNoCharacter) {
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"a trail byte first", "\x80\x80\x80\x80"},
        {"the last trail byte first", "\xBF\x80\x80\x80"},
        {"two bytes for an ASCII character", "\xC0\xAF"},
        {"two bytes for an ASCII letter", "\xC1\x81"},
        {"three bytes for a shorter one", "\xE0\x9F\xBF"},
        {"four bytes for a shorter one", "\xF0\x8F\xBF\xBF"},
        {"the first surrogate", "\xED\xA0\x80"},
        {"the last surrogate", "\xED\xBF\xBF"},
        {"above the last code point", "\xF4\x90\x80\x80"},
        {"a lead byte of the old five-byte form", "\xF8\x88\x80\x80\x80"},
        {"0xF5", "\xF5\x80\x80\x80"},
        {"0xFE", "\xFE\x80\x80\x80"},
        {"0xFF", "\xFF\x80\x80\x80"},
        {"the second byte is ASCII", "\xC3z"},
        {"the second byte leads", "\xC3\xC3"},
        {"the third byte is ASCII", "\xE2\x82z"},
        {"the fourth byte is ASCII", "\xF0\x90\x90z"},
        {"the second byte is NUL", "\xC3\0"s},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(CodePage::Utf8().NonAsciiLength(c.bytes.c_str(), c.bytes.size() + 1), 0U);
    }
}

TEST(CodePageTest, EveryByteOfWindows1252IsACharacter) {
    for (int byte = 0x80; byte < 0x100; ++byte) {
        SCOPED_TRACE(byte);
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(CodePage::Windows1252().NonAsciiLength(text.c_str(), 2), 1U);
        EXPECT_EQ(CodePage::Windows1252().NonAsciiLength(text.c_str(), 1), 1U);
    }
}

TEST(CodePageTest, UpperCaseInWindows1252) {
    for (int byte = 0x80; byte < 0x100; ++byte) {
        SCOPED_TRACE(byte);
        int capital = byte;
        if (byte >= 0xE0 && byte <= 0xFE && byte != 0xF7) capital = byte - 0x20;
        if (byte == 0xFF) capital = 0x9F;
        if (byte == 0x9A || byte == 0x9C || byte == 0x9E) capital = byte - 0x10;
        EXPECT_EQ(Upper(CodePage::Windows1252(), std::string(1, static_cast<char>(byte))),
                  std::string(1, static_cast<char>(capital)));
    }
}

TEST(CodePageTest, UpperCaseInUtf8) {
    const struct {
        const char* name;
        std::uint32_t code;
        std::uint32_t capital;
    } cases[] = {
        {"e with acute", 0xE9, 0xC9},
        {"y with diaeresis", 0xFF, 0x178},
        {"sharp s has no single capital", 0xDF, 0xDF},
        {"the capital of dotless i is ASCII", 0x131, 0x131},
        {"the capital of long s is ASCII", 0x17F, 0x17F},
        {"apostrophe n has no single capital", 0x149, 0x149},
        {"iota with two accents has no single capital", 0x390, 0x390},
        {"a ligature has no single capital", 0xFB01, 0xFB01},
        {"long s with dot has one outside ASCII", 0x1E9B, 0x1E60},
        {"the multiplication sign", 0xD7, 0xD7},
        {"the division sign", 0xF7, 0xF7},
        {"alpha", 0x3B1, 0x391},
        {"final sigma", 0x3C2, 0x3A3},
        {"Cyrillic ya", 0x44F, 0x42F},
        {"Cyrillic io", 0x451, 0x401},
        {"Armenian ayb", 0x561, 0x531},
        {"a letter whose capital is longer", 0x250, 0x2C6F},
        {"another one", 0x23F, 0x2C7E},
        {"a letter whose capital is shorter", 0x2C65, 0x23A},
        {"another one", 0x2C66, 0x23E},
        {"beyond the first plane", 0x10428, 0x10400},
        {"a capital stays", 0x178, 0x178},
        {"I with dot stays", 0x130, 0x130},
        {"the Kelvin sign stays", 0x212A, 0x212A},
        {"an ideograph stays", 0x6570, 0x6570},
        {"an emoji stays", 0x1F600, 0x1F600},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Upper(CodePage::Utf8(), Encode(c.code)), Encode(c.capital));
    }
}

TEST(CodePageTest, UpperCaseInUtf8NeverGivesAsciiAndIsStable) {
    const CodePage& utf8 = CodePage::Utf8();
    std::size_t changed = 0;
    for (std::uint32_t code = 0x80; code < 0x20000; ++code) {
        if (code >= 0xD800 && code < 0xE000) continue;
        const std::string text = Encode(code);
        const std::string upper = Upper(utf8, text);
        ASSERT_FALSE(upper.empty()) << code;
        ASSERT_GE(static_cast<unsigned char>(upper[0]), 0x80) << code;
        ASSERT_EQ(utf8.NonAsciiLength(upper.c_str(), upper.size()), upper.size()) << code;
        ASSERT_EQ(Upper(utf8, upper), upper) << code;
        if (upper != text) ++changed;
    }
    // The Latin, Greek, Cyrillic and Armenian blocks alone hold more pairs than this.
    EXPECT_GT(changed, 500U);
}

struct ValidCase {
    const char* name;
    std::string text;
    bool valid;
};

std::vector<ValidCase> ValidCases() {
    return {
        {"empty", "", true},
        {"ASCII", "FREQ x.\n", true},
        {"NUL bytes are characters", "a\0b"s, true},
        {"two bytes", "é", true},
        {"three and four bytes", "a€b𐐨c", true},
        {"a byte-order mark",
         "\xEF\xBB\xBF"
         "x",
         true},
        {"the last code point", "\xF4\x8F\xBF\xBF", true},
        {"around the surrogates", "\xED\x9F\xBF\xEE\x80\x80", true},
        {"Latin-1", "\xE9t\xE9", false},
        {"a trail byte", "a\x80", false},
        {"ends inside two bytes", "a\xC3", false},
        {"ends inside three bytes", "a\xE2\x82", false},
        {"ends inside four bytes", "a\xF0\x90\x90", false},
        {"broken off by ASCII",
         "\xE2\x82"
         "a",
         false},
        {"broken off by another character", "\xE2\x82\xC3\xA9", false},
        {"overlong", "\xC0\x80", false},
        {"overlong, three bytes", "\xE0\x80\x80", false},
        {"overlong, four bytes", "\xF0\x80\x80\x80", false},
        {"a surrogate", "\xED\xA0\x80", false},
        {"above the last code point", "\xF4\x90\x80\x80", false},
        {"0xFF", "\xFF", false},
        {"invalid between valid", "éé\xFFéé", false},
    };
}

TEST(Utf8ValidatorTest, DecidesOnTheWholeText) {
    for (int round = 0; round < 2; ++round) {
        for (const ValidCase& c : ValidCases()) {
            SCOPED_TRACE(c.name);
            Utf8Validator validator;
            const bool added = validator.Add(c.text);
            EXPECT_EQ(validator.IsValid(), c.valid);
            if (c.valid) {
                EXPECT_TRUE(added);
            }
        }
    }
}

TEST(Utf8ValidatorTest, PiecesMayEndAnywhere) {
    for (const ValidCase& c : ValidCases()) {
        SCOPED_TRACE(c.name);
        for (std::size_t first = 0; first <= c.text.size(); ++first) {
            for (std::size_t second = first; second <= c.text.size(); ++second) {
                const std::string_view text = c.text;
                Utf8Validator validator;
                const bool one = validator.Add(text.substr(0, first));
                const bool two = validator.Add(text.substr(first, second - first));
                const bool three = validator.Add(text.substr(second));
                EXPECT_EQ(validator.IsValid(), c.valid) << first << " " << second;
                if (c.valid) {
                    EXPECT_TRUE(one && two && three) << first << " " << second;
                }
                if (!one) {
                    EXPECT_FALSE(two);
                }
                if (!two) {
                    EXPECT_FALSE(three);
                }
            }
        }
        Utf8Validator byteByByte;
        bool added = true;
        for (const char byte : c.text) added = byteByByte.Add(std::string_view(&byte, 1));
        EXPECT_EQ(byteByByte.IsValid(), c.valid);
        if (c.valid) {
            EXPECT_TRUE(added);
        }
    }
}

TEST(Utf8ValidatorTest, SaysSoAtOnceWhenNothingCanHelp) {
    const struct {
        const char* name;
        std::string bytes;
        bool open;  // more bytes could still make it valid
    } cases[] = {
        {"a lead byte of two", "\xC3", true},
        {"a lead byte of three", "\xE2", true},
        {"two of three", "\xE2\x82", true},
        {"three of four", "\xF0\x90\x90", true},
        {"a trail byte", "\x80", false},
        {"0xC0", "\xC0", false},
        {"0xC1", "\xC1", false},
        {"0xF5", "\xF5", false},
        {"0xFF", "\xFF", false},
        {"the beginning of an overlong form", "\xE0\x80", false},
        {"the beginning of a longer overlong form", "\xF0\x80", false},
        {"the beginning of a surrogate", "\xED\xA0", false},
        {"the beginning of more than the last code point", "\xF4\x90", false},
        {"a lead byte twice", "\xC3\xC3", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Utf8Validator validator;
        EXPECT_EQ(validator.Add(c.bytes), c.open);
        EXPECT_FALSE(validator.IsValid());
    }
}

TEST(Utf8ValidatorTest, NothingAddedIsValid) { EXPECT_TRUE(Utf8Validator().IsValid()); }

// The answer is fixed at the first call, so each locale gets a process of its own.
void ExitWithSystemPageUnder(const char* locale) {
    if (std::setlocale(LC_CTYPE, locale) == nullptr) std::exit(3);
    std::exit(CodePage::System() == nullptr ? 0 : 1);
}

bool HasLocale(const char* locale) {
    const std::string before = std::setlocale(LC_CTYPE, nullptr);
    const bool has = std::setlocale(LC_CTYPE, locale) != nullptr;
    std::setlocale(LC_CTYPE, before.c_str());
    return has;
}

TEST(CodePageDeathTest, TheSystemHasALegacyPageUnlessItIsPlainOrUtf8) {
    const struct {
        const char* locale;
        int exitCode;  // 0 for no legacy page
    } cases[] = {
        {"C", 0},
        {"POSIX", 0},
        {"C.UTF-8", 0},
        {"en_US.UTF-8", 0},
        {"de_DE.ISO-8859-1", 1},
        {"en_US.ISO-8859-1", 1},
        {"ja_JP.EUC-JP", 1},
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.locale);
        // Only the first two locales exist on every system.
        if (!HasLocale(c.locale)) continue;
        EXPECT_EXIT(ExitWithSystemPageUnder(c.locale), testing::ExitedWithCode(c.exitCode), "");
    }
}

}  // namespace
}  // namespace quillet
