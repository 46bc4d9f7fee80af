#include <gtest/gtest.h>

#include <string_view>

#include "migrate/encodings.h"
#include "support/rownames.h"

namespace quillet::migrate {
namespace {

TEST(MigrateEncodingsTest, FindsEachOnce) {
    Encodings encodings;
    const Encoding* pFirst = encodings.Find("windows-1250");
    ASSERT_NE(pFirst, nullptr);
    EXPECT_EQ(pFirst->name, "windows-1250");
    EXPECT_NE(pFirst->codePage, nullptr);
    EXPECT_FALSE(pFirst->byteOrder);
    EXPECT_EQ(encodings.Find("Windows-1250"), pFirst);
    EXPECT_NE(encodings.Find("windows-1251"), pFirst);
}

TEST(MigrateEncodingsTest, SpellingsHaveOneKey) {
    EXPECT_EQ(EncodingKeyOf("CP1250"), "cp1250");
    EXPECT_EQ(EncodingKeyOf("cp1250"), "cp1250");
    EXPECT_EQ(EncodingKeyOf(""), "");
}

TEST(MigrateEncodingsTest, KnowsUnicode) {
    Encodings encodings;
    for (const char* name : {"UTF-8", "utf8"}) {
        const Encoding* pUtf8 = encodings.Find(name);
        ASSERT_NE(pUtf8, nullptr);
        EXPECT_EQ(ToUtf8("\xC3\xA9\xFF", TextEncoding::kNamed, pUtf8->codePage.get()), "é\uFFFD");
    }
    for (const char* name : {"UTF-16", "utf-16le", "UTF16"}) {
        ASSERT_NE(encodings.Find(name), nullptr);
        EXPECT_EQ(encodings.Find(name)->byteOrder, ByteOrder::kLittleEndian);
    }
    EXPECT_EQ(encodings.Find("UTF-16BE")->byteOrder, ByteOrder::kBigEndian);
}

TEST(MigrateEncodingsTest, RefusesOthers) {
    Encodings encodings;
    for (const char* name : {"", "no-such-encoding", "UTF-32", "ISO-2022-JP"}) {
        EXPECT_EQ(encodings.Find(name), nullptr) << name;
        EXPECT_EQ(encodings.Find(name), nullptr) << name << ", the second time";
    }
}

TEST(MigrateEncodingsTest, TheLastMatchingRuleCounts) {
    Encodings encodings;
    const Encoding* pLatin2 = encodings.Find("ISO-8859-2");
    const Encoding* pKorean = encodings.Find("EUC-KR");
    const Encoding* pGreek = encodings.Find("windows-1253");
    EncodingRules rules;
    EXPECT_EQ(rules.ForPath("a.syn"), nullptr);
    rules.Add("pl/*", *pLatin2);
    rules.Add("*.sps", *pKorean);
    EXPECT_EQ(rules.ForPath("pl/a.syn"), pLatin2);
    EXPECT_EQ(rules.ForPath("pl/a.sps"), pKorean);
    EXPECT_EQ(rules.ForPath("a.syn"), nullptr);
    rules.SetForAll(*pGreek);
    EXPECT_EQ(rules.ForPath("a.syn"), pGreek);
    EXPECT_EQ(rules.ForPath("pl/a.syn"), pLatin2);
}

struct FirstLineCase {
    std::string_view name;
    std::string_view text;
    std::string_view encoding;
};

constexpr FirstLineCase kFirstLines[] = {
    {"as it is written", "* Encoding: windows-1250.\nTABLES x.\n", "windows-1250"},
    {"with a carriage return", "* Encoding: UTF-8.\r\n", "UTF-8"},
    {"without a period", "* Encoding: KOI8-R", "KOI8-R"},
    {"in capitals, with blanks", " *\tENCODING :  EUC-KR . \n", "EUC-KR"},
    {"without any blank", "*encoding:latin2.", "latin2"},
    {"after a byte-order mark", "\xEF\xBB\xBF* Encoding: UTF-8.\n", "UTF-8"},
    {"another comment", "* Encodings: x.\n", ""},
    {"more than a name", "* Encoding: of the file.\n", ""},
    {"no name", "* Encoding: .\n", ""},
    {"no comment", "Encoding: UTF-8.\n", ""},
    {"the second line", "\n* Encoding: UTF-8.\n", ""},
    {"nothing", "", ""},
};

class FirstLineTest : public testing::TestWithParam<FirstLineCase> {};

TEST_P(FirstLineTest, NamesTheEncoding) {
    EXPECT_EQ(EncodingNamedIn(GetParam().text), GetParam().encoding);
}

INSTANTIATE_TEST_SUITE_P(Texts, FirstLineTest, testing::ValuesIn(kFirstLines),
                         NameOfRow<FirstLineCase>);

}  // namespace
}  // namespace quillet::migrate
