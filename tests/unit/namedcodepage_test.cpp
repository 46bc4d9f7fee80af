#include "platform/namedcodepage.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "support/rownames.h"

namespace quillet {
namespace {

struct CharacterCase {
    std::string_view name;
    std::string_view encoding;
    std::string_view bytes;  // a character, and what may follow it
    std::size_t length;
    std::string_view text;     // in UTF-8
    std::string_view capital;  // the bytes
};

constexpr CharacterCase kCharacters[] = {
    {"Central European", "windows-1250", "\xB3x", 1, "ł", "\xA3"},
    {"the same encoding by another name", "cp1250", "\xB3x", 1, "ł", "\xA3"},
    {"letter case of the name", "WINDOWS-1250", "\xB3x", 1, "ł", "\xA3"},
    {"an unused byte", "windows-1250", "\x81x", 0, "", ""},
    {"without a capital of its own", "windows-1252", "\xDFx", 1, "ß", "\xDF"},
    {"with a capital in ASCII", "windows-1254", "\xFDx", 1, "ı", "\xFD"},
    {"with a capital that the page lacks", "ISO-8859-1", "\xFFx", 1, "ÿ", "\xFF"},
    {"Cyrillic", "windows-1251", "\xE6x", 1, "ж", "\xC6"},
    {"Cyrillic of terminals", "KOI8-R", "\xD6x", 1, "ж", "\xF6"},
    {"a letter that waits for a mark", "windows-1258", "\xE2x", 1, "â", "\xC2"},
    {"Korean", "EUC-KR", "\xB0\xA1x", 2, "가", "\xB0\xA1"},
    {"Korean, beyond the old set", "CP949", "\x81\x41x", 2, "갂", "\x81\x41"},
    {"a lead alone", "EUC-KR", "\xB0", 0, "", ""},
    {"a lead before ASCII", "EUC-KR", "\xB0x", 0, "", ""},
    {"Japanese, a backslash within", "CP932", "\x83\x5Cx", 2, "ソ", "\x83\x5C"},
    {"Japanese, half width", "CP932", "\xB1x", 1, "ｱ", "\xB1"},
    {"Greek in Japanese", "CP932", "\x83\xBFx", 2, "α", "\x83\x9F"},
    {"three bytes", "EUC-JP", "\x8F\xA2\xAFx", 3, "˘", "\x8F\xA2\xAF"},
    {"three bytes that break off", "EUC-JP", "\x8F\xA2", 0, "", ""},
    {"four bytes", "GB18030", "\x90\x30\x81\x30x", 4, "𐀀", "\x90\x30\x81\x30"},
    {"several code points", "BIG5-HKSCS", "\x88\x62x", 2, "Ê̄", "\x88\x62"},
};

class NamedCodePageTest : public testing::TestWithParam<CharacterCase> {};

TEST_P(NamedCodePageTest, KnowsTheCharacter) {
    const CharacterCase& c = GetParam();
    const std::unique_ptr<const CodePage> page = MakeNamedCodePage(std::string(c.encoding));
    ASSERT_NE(page, nullptr);
    ASSERT_EQ(page->NonAsciiLength(c.bytes.data(), c.bytes.size()), c.length);
    if (c.length == 0) return;
    std::string text;
    page->AppendAsUtf8(c.bytes.substr(0, c.length), text);
    EXPECT_EQ(text, c.text);
    std::string capital = "<";
    page->AppendUpper(c.bytes.substr(0, c.length), capital);
    EXPECT_EQ(capital, "<" + std::string(c.capital));
}

INSTANTIATE_TEST_SUITE_P(Characters, NamedCodePageTest, testing::ValuesIn(kCharacters),
                         NameOfRow<CharacterCase>);

TEST(NamedCodePagesTest, RefusesWhatSyntaxCannotBeReadIn) {
    for (const char* name : {"", "no-such-encoding", "UTF-16", "UTF-16LE", "UTF-32", "UTF-7",
                             "ISO-2022-JP", "EBCDIC-US", "windows-1250//TRANSLIT", "/"}) {
        EXPECT_EQ(MakeNamedCodePage(name), nullptr) << name;
    }
}

TEST(NamedCodePagesTest, Windows1252IsTheSameButForUnusedBytes) {
    const std::unique_ptr<const CodePage> page = MakeNamedCodePage("windows-1252");
    ASSERT_NE(page, nullptr);
    const CodePage& known = CodePage::Windows1252();
    int unused = 0;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const std::string character(1, static_cast<char>(byte));
        if (page->NonAsciiLength(character.data(), 1) == 0) {
            ++unused;
            continue;
        }
        EXPECT_EQ(TextAsUtf8(*page, character), TextAsUtf8(known, character)) << byte;
        std::string capital;
        std::string knownCapital;
        page->AppendUpper(character, capital);
        known.AppendUpper(character, knownCapital);
        EXPECT_EQ(capital, knownCapital) << byte;
    }
    EXPECT_EQ(unused, 5);
}

// Longer characters are not in the tables.
TEST(NamedCodePagesTest, ThreadsShareIt) {
    const std::unique_ptr<const CodePage> page = MakeNamedCodePage("GB18030");
    ASSERT_NE(page, nullptr);
    std::string text;
    std::string expected;
    for (int i = 0; i < 100; ++i) {
        text += "\x90\x30\x81\x30 \xB0\xA1";
        expected += "𐀀 啊";
    }
    std::vector<std::string> results(4);
    {
        std::vector<std::jthread> threads;
        threads.reserve(results.size());
        for (std::string& result : results) {
            threads.emplace_back([&] { result = TextAsUtf8(*page, text); });
        }
    }
    for (const std::string& result : results) EXPECT_EQ(result, expected);
}

}  // namespace
}  // namespace quillet
