#include "tokenizer/variablenames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "tokenizer/namerepair.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet {
namespace {

std::string Repeat(std::string_view piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
}

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
        {"a scratch name may begin with a digit behind the mark", utf8, "#1", 1, 1},
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
        {"blanks behind do not count", utf8, "age  ", 0, 0},
        {"a tab behind counts", utf8, "age\t", 4, 4},
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

TEST(VariableNamesTest, ClassifiesNames) {
    for (int round = 0; round < 2; ++round) {
        for (const ClassCase& c : ClassCases()) {
            SCOPED_TRACE(c.name);
            EXPECT_EQ(static_cast<int>(ClassifyName(c.codePage, c.text)), c.plain);
            EXPECT_EQ(static_cast<int>(ClassifyNameExtended(c.codePage, c.text)), c.extended);
        }
    }
}

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

struct NumberCase {
    const char* name;
    std::string text;
    bool expected;
    std::string dest;
};

TEST(VariableNamesTest, MakesNamesOfNumbers) {
    const NumberCase cases[] = {
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
        {"a tab behind", "12\t", false, "old"},
    };
    for (const NumberCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::string dest = "old";
        EXPECT_EQ(NumberToName(dest, c.text), c.expected);
        EXPECT_EQ(dest, c.dest);
    }
}

TEST(VariableNamesTest, CountsInLetters) {
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

TEST(VariableNamesTest, AppendsSuffixes) {
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

TEST(VariableNamesTest, RepairsNames) {
    for (int round = 0; round < 2; ++round) {
        for (const RepairCase& c : RepairCases()) {
            SCOPED_TRACE(c.name);
            std::string name = c.text;
            MakeValidName(c.codePage, name, c.n, {});
            EXPECT_EQ(name, c.expected);
            // What was repaired needs no further repair.
            std::string again = name;
            if (c.n >= 0) MakeValidName(c.codePage, again, c.n, {});
            EXPECT_EQ(again, name);
        }
    }
}

struct UniqueCase {
    const char* name;
    const CodePage& codePage;
    std::string text;
    long n;
    std::size_t takenCount;               // the first so many candidates are taken
    std::vector<std::string> candidates;  // in the order in which they are asked about
};

TEST(VariableNamesTest, FindsAnUnusedName) {
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

TEST(VariableNamesTest, GoesOnBehindTheAlphabet) {
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

double BestSeconds(const std::function<void()>& work) {
    double best = 1e9;
    for (int run = 0; run < 5; ++run) {
        const std::clock_t begin = std::clock();
        work();
        best = std::min(best, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
    }
    return best;
}

TEST(VariableNamesTest, CostIsLinear) {
    constexpr std::size_t kCount = 50000;
    for (const char* piece : {"a", "é", ".", "_", " ", "-", "7", "\xFF", "@#"}) {
        SCOPED_TRACE(piece);
        const auto work = [&](std::size_t count) {
            const std::string text = Repeat(piece, count);
            return BestSeconds([&] {
                std::string name = text;
                MakeValidName(CodePage::Utf8(), name, 1, {});
                EXPECT_LE(name.size(), kMaxNameLength);
                EXPECT_FALSE(name.empty());
                EXPECT_EQ(ClassifyName(CodePage::Utf8(), text), NameClass::kBadLength);
                EXPECT_FALSE(NumberToName(name, text));
                EXPECT_LE(AppendNameSuffix(CodePage::Utf8(), name, text, 0, 65), 1);
            });
        };
        const double once = work(kCount);
        const double fourTimes = work(4 * kCount);
        EXPECT_LT(fourTimes, 10 * once + 0.02);
    }
}

}  // namespace
}  // namespace quillet
