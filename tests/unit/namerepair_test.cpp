#include "tokenizer/namerepair.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "support/repetition.h"
#include "support/rownames.h"

namespace quillet {
namespace {

struct NumberedNameCase {
    const char* name;
    std::string text;
    bool expected;
    std::string dest;
};

TEST(NameRepairTest, MakesNamesOfNumbers) {
    const NumberedNameCase cases[] = {
        {"one digit", "0", true, "@0"},
        {"three digits", "123", true, "@123"},
        {"seven digits", "1234567", true, "@1234567"},
        {"leading zeros stay", "007", true, "@007"},
        {"trailing blanks", "123   ", true, "@123"},
        {"seven digits and blanks", "1234567  ", true, "@1234567"},
        {"eight digits", "12345678", false, "old"},
        {"eight digits and a blank", "12345678 ", false, "old"},
        {"nothing", "", false, "old"},
        {"only blanks", "  ", false, "old"},
        {"a leading blank", " 12", false, "old"},
        {"a blank between", "1 2", false, "old"},
        {"a letter", "12a", false, "old"},
        {"a period", "1.2", false, "old"},
        {"a sign", "-12", false, "old"},
        {"a tab after", "12\t", false, "old"},
    };
    for (const NumberedNameCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::string dest = "old";
        EXPECT_EQ(NumberToName(dest, c.text), c.expected);
        EXPECT_EQ(dest, c.dest);
    }
}

TEST(NameRepairTest, CountsInLetters) {
    const struct {
        unsigned long n;
        const char* letters;
    } cases[] = {{0, "A"},     {1, "B"},     {25, "Z"},      {26, "AA"},
                 {27, "AB"},   {51, "AZ"},   {52, "BA"},     {701, "ZZ"},
                 {702, "AAA"}, {703, "AAB"}, {18277, "ZZZ"}, {18278, "AAAA"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.n);
        EXPECT_EQ(LetterSuffix(c.n), c.letters);
    }
    std::set<std::string> seen;
    for (unsigned long n = 0; n < 20000; ++n) seen.insert(LetterSuffix(n));
    EXPECT_EQ(seen.size(), 20000U);
}

struct SuffixCase {
    const char* name;
    const CodePage& codePage;
    std::string base;
    unsigned long n;
    std::size_t maxLen;  // the terminating NUL included
    int result;
    std::string dest;
};

TEST(NameRepairTest, AppendsSuffixes) {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    const SuffixCase cases[] = {
        {"there is room", utf8, "age", 0, 65, 0, "age_A"},
        {"two letters", utf8, "age", 26, 65, 0, "age_AA"},
        {"one character of base", utf8, "a", 1, 65, 0, "a_B"},
        {"it just fits", utf8, "age", 0, 6, 0, "age_A"},
        {"one byte too few", utf8, "age", 0, 5, 0, "ag_A"},
        {"two letters take more", utf8, "abcdef", 26, 8, 0, "abcd_AA"},
        {"no room", utf8, "age", 0, 3, 1, "old"},
        {"no length at all", utf8, "age", 0, 0, 1, "old"},
        {"the suffix alone is too long", utf8, "age", 702, 4, 1, "old"},
        {"nothing to cut from", utf8, "", 0, 65, 1, "old"},
        {"a character is not split", utf8, "éé", 0, 6, 0, "é_A"},
        {"nothing whole is left", utf8, "€€", 0, 5, 1, "old"},
        {"single bytes are cut anywhere", latin, "\xC3\xA9\xC3\xA9", 0, 6, 0, "\xC3\xA9\xC3_A"},
    };
    for (const SuffixCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::string dest = "old";
        EXPECT_EQ(AppendNameSuffix(c.codePage, dest, c.base, c.n, c.maxLen), c.result);
        EXPECT_EQ(dest, c.dest);
        if (c.result == 0) {
            EXPECT_LT(dest.size(), c.maxLen);
        }
    }
}

struct RepairCase {
    const char* name;
    const CodePage& codePage;
    std::string text;
    long n;
    std::string expected;
};

std::vector<RepairCase> RepairCases() {
    const CodePage& utf8 = CodePage::Utf8();
    const CodePage& latin = CodePage::Windows1252();
    return {
        {"a valid name stays", utf8, "Age", 1, "Age"},
        {"a period at the end goes", utf8, "x.", 1, "x"},
        {"all of them go", utf8, "x._._", 1, "x"},
        {"an underscore inside stays", utf8, "a_b", 1, "a_b"},
        {"a number", utf8, "2019", 1, "@2019"},
        {"seven digits", utf8, "1234567", 1, "@1234567"},
        {"eight digits", utf8, "12345678", 1, "@12345678"},
        {"empty", utf8, "", 17, "V17"},
        {"nothing usable", utf8, "-+ !%", 3, "V3"},
        {"a negative number", utf8, "", -5, "V-5"},
        {"a reserved word", utf8, "by", 1, "@by"},
        {"a reserved word of four letters", utf8, "With", 1, "@With"},
        {"a reserved word in front of a period", utf8, "ALL.", 1, "@ALL"},
        {"blanks go", utf8, " household  size ", 1, "householdsize"},
        {"blanks around digits go first", utf8, " 20 19 ", 1, "@2019"},
        {"punctuation goes", utf8, "income(net)/year", 1, "incomenetyear"},
        {"a scratch name", utf8, "#tmp", 1, "@#tmp"},
        {"a system name", utf8, "$sysmis", 1, "@$sysmis"},
        {"begins with a digit", utf8, "1st", 1, "@1st"},
        {"begins with an underscore", utf8, "_a", 1, "@_a"},
        {"begins with a period", utf8, ".a", 1, "@.a"},
        {"only periods", utf8, "...", 1, "@"},
        {"only underscores", utf8, "__", 1, "@"},
        {"accents stay", utf8, "année 1", 1, "année1"},
        {"accents in a single-byte page", latin,
         "ann\xE9"
         "e 1",
         1,
         "ann\xE9"
         "e1"},
        {"64 bytes stay", utf8, Repeat("a", 64), 1, Repeat("a", 64)},
        {"65 bytes are cut", utf8, Repeat("a", 65), 1, Repeat("a", 64)},
        {"only name characters count", utf8, Repeat("a-", 70), 1, Repeat("a", 64)},
        {"a cut splits no character", utf8, "a" + Repeat("é", 40), 1, "a" + Repeat("é", 31)},
        {"a mark in front of 64 bytes", utf8, "1" + Repeat("a", 63), 1, "@1" + Repeat("a", 62)},
        {"a mark in front splits no character", utf8, "1a" + Repeat("é", 31), 1,
         "@1a" + Repeat("é", 30)},
        {"the cut may leave a period, which goes", utf8, Repeat("a", 63) + ".bcd", 1,
         Repeat("a", 63)},
    };
}

class RepairedNameTest : public testing::TestWithParam<RepairCase> {};

TEST_P(RepairedNameTest, IsValid) {
    const RepairCase& c = GetParam();
    for (int round = 0; round < 2; ++round) {
        std::string name = c.text;
        MakeValidName(c.codePage, name, c.n, {});
        EXPECT_EQ(name, c.expected);
        // What was repaired needs no further repair.
        std::string again = name;
        if (c.n >= 0) MakeValidName(c.codePage, again, c.n, {});
        EXPECT_EQ(again, name);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, RepairedNameTest, testing::ValuesIn(RepairCases()),
                         NameOfRow<RepairCase>);

struct UniqueCase {
    const char* name;
    const CodePage& codePage;
    std::string text;
    long n;
    std::size_t takenCount;               // the first so many candidates are taken
    std::vector<std::string> candidates;  // in the order in which they are asked about
};

TEST(NameRepairTest, FindsAnUnusedName) {
    const CodePage& utf8 = CodePage::Utf8();
    const std::string a64 = Repeat("a", 64);
    const UniqueCase cases[] = {
        {"free", utf8, "age", 1, 0, {"age"}},
        {"taken", utf8, "age", 1, 1, {"age", "age_A"}},
        {"taken twice", utf8, "age", 1, 2, {"age", "age_A", "age_B"}},
        {"the repaired name is asked about", utf8, "by", 1, 1, {"@by", "@by_A"}},
        {"a generated name", utf8, "", 7, 2, {"V7", "V7_A", "V7_B"}},
        {"the longest name is cut", utf8, a64, 1, 1, {a64, Repeat("a", 62) + "_A"}},
        {"a cut splits no character",
         utf8,
         "a" + Repeat("é", 31) + "b",
         1,
         1,
         {"a" + Repeat("é", 31) + "b", "a" + Repeat("é", 30) + "_A"}},
    };
    for (const UniqueCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> asked;
        std::string name = c.text;
        MakeValidName(c.codePage, name, c.n, [&](const std::string& candidate) {
            asked.push_back(candidate);
            return asked.size() <= c.takenCount;
        });
        EXPECT_EQ(asked, c.candidates);
        EXPECT_EQ(name, c.candidates.back());
    }
}

TEST(NameRepairTest, GoesOnAfterTheAlphabet) {
    for (const std::size_t length : {3U, 64U}) {
        const std::string base = Repeat("a", length);
        std::vector<std::string> asked;
        std::string name = base;
        MakeValidName(CodePage::Utf8(), name, 1, [&](const std::string& candidate) {
            asked.push_back(candidate);
            return asked.size() < 1 + 26 + 2;
        });
        ASSERT_EQ(asked.size(), 29U);
        const bool isLong = length == 64;
        EXPECT_EQ(asked[26], (isLong ? Repeat("a", 62) : base) + "_Z");
        EXPECT_EQ(asked[27], (isLong ? Repeat("a", 61) : base) + "_AA");
        EXPECT_EQ(asked[28], (isLong ? Repeat("a", 61) : base) + "_AB");
        EXPECT_EQ(name, asked[28]);
    }
}

}  // namespace
}  // namespace quillet
