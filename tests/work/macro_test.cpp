// How the work on macros grows with the text read and the text made.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "macro/expandfile.h"
#include "macro/functions.h"
#include "platform/includepaths.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"

namespace quillet::macro {
namespace {

// A file that grows by its repeated part.
struct GrowthCase {
    const char* name;
    std::string before;
    std::string part;
    std::string after;
};

class MacroWorkTest : public testing::TestWithParam<GrowthCase> {};

TEST_P(MacroWorkTest, IsLinear) {
    const GrowthCase& c = GetParam();
    ExpectLinearWork(1000, [&c](int count) {
        const std::string source = c.before + Repeat(c.part, count) + c.after;
        const FileExpansion expansion = ExpandFile(source, {}, nullptr);
        EXPECT_NE(ExpandedText(source, expansion), "");
    });
}

const std::string kCalled =
    "DEFINE !m (!POS !TOKENS(1) / x=!CHAREND('/') / y=!CMDEND) f !1 !x !y "
    "!ENDDEFINE.\n";

const GrowthCase kGrowths[] = {
    {"calls", kCalled, "!m a x=b/ y=c d.\n", ""},
    {"calls in one command", kCalled, "!m a x=b/\n", "."},
    {"calls that cannot be read", "DEFINE !m (x=!ENCLOSE('(',')')) f !ENDDEFINE.\n", "!m x=(a\n",
     "."},
    {"calls that fail", "DEFINE !m () " + Repeat("a\n", 1000) + "!BREAK !ENDDEFINE.\n", "!m.\n",
     ""},
    {"calls of a macro with many arguments",
     "DEFINE !m (" + Repeat("!POS !TOKENS(1) / ", 1000) + "x=!CMDEND) f !1 !* !ENDDEFINE.\n",
     "!m a.\n", ""},
    {"definitions", "", "DEFINE !m (x=!TOKENS(1)) f !x !ENDDEFINE.\n!m x=1.\n", ""},
    {"definitions without an end", "", "DEFINE !m (x=!TOKENS(1)) f !x.\n", ""},
    {"definitions without a closing parenthesis", "", "DEFINE !m (x=!DEFAULT((\n!ENDDEFINE.\n", ""},
    {"arguments", "DEFINE !m (!POS !CMDEND", " / !POS !CMDEND !DEFAULT(a b)",
     ") f !* !ENDDEFINE.\n!m."},
    {"names that are no macros", kCalled, "abc !def 'ghi' 1.5 ", "."},
    {"periods and comments", kCalled, "a. /* . */ ", "\n."},
    {"periods in a comment command", kCalled + "* ", ". /* . */ /* ", "x\n."},
    {"open literals", kCalled, "a 'b . /* ", "\n."},
    {"open comments", kCalled, "/* . ", "\n."},
    {"a long value", kCalled + "!m a x=", "b 'c' /* d */\n", "/."},
    {"a long expansion", "DEFINE !m (!POS !CMDEND) !1 ", "!1 f\n", "!ENDDEFINE.\n!m a."},
    {"many calls in a macro", "DEFINE !i () a !ENDDEFINE.\nDEFINE !m () ", "!i b\n",
     "!ENDDEFINE.\n!m."},
    {"text that is skipped", "DEFINE !m () !DO !i = 1 !TO 1000 !IF (0) !THEN ", "f a\n",
     " !IFEND !DOEND !ENDDEFINE.\n!m.\n"},
    {"statements", "DEFINE !m () ", "!IF (1 = 1) !THEN a. !IFEND !LET !v = b\n",
     "!ENDDEFINE.\n!m."},
    {"open statements", "DEFINE !m () ", "!IF (1) !THEN ", "!ENDDEFINE.\n!m."},
    {"open parentheses", "DEFINE !m () !IF ", "(", "!ENDDEFINE.\n!m."},
    {"negations", "DEFINE !m () !IF (", "~", "1) !THEN a !IFEND !ENDDEFINE.\n!m."},
    {"operands", "DEFINE !m () !CONCAT(a", ",b", ") !ENDDEFINE.\n!m."},
    {"variables", "DEFINE !m () ", "!LET !v = !CONCAT(a,b) !v !w\n", "!ENDDEFINE.\n!m."},
    {"bangs", "DEFINE !m () ", "!", "!ENDDEFINE.\n!m."},
    {"includes that are not found", "", "INCLUDE 'a'.\n", ""},
};
INSTANTIATE_TEST_SUITE_P(Growth, MacroWorkTest, testing::ValuesIn(kGrowths), NameOfRow<GrowthCase>);

TEST(MacroFunctionsWorkTest, AreLinear) {
    const CodePage& codePage = CodePage::Utf8();
    ExpectLinearWork(std::size_t{10000}, [&codePage](std::size_t count) {
        // The worst case of a naive search.
        const std::string text(2 * count, 'a');
        EXPECT_EQ(IndexOf(codePage, text, std::string(count, 'a') + "b"), 0U);
        EXPECT_EQ(Substring(codePage, text, count, count).size(), count);
        EXPECT_EQ(LengthOf(codePage, text), 2 * count);
        EXPECT_EQ(Unquoted(codePage, Quoted(text)), text);
    });
}

TEST(MacroIncludePathsWorkTest, IsLinear) {
    ExpectLinearWork(1000, [](int count) {
        std::vector<std::string> names;
        for (int i = 0; i < count; ++i) names.push_back("a/b" + std::to_string(i) + "/c.sps");
        const IncludePaths paths(names);
        for (int i = 0; i < count; ++i) EXPECT_FALSE(paths.Find("X:\\y\\c.sps", names.front()));
        EXPECT_FALSE(paths.Find(Repeat("a/", 100 * count), names.front()));
    });
}

// Loops and expansions multiply, but what a file may take is bounded by its size.
TEST(MacroWorkLimitTest, BoundsWhatAFileTakes) {
    ExpansionOptions options;
    options.limits.work = 100000;
    options.limits.workPerByte = 100;
    ExpectLinearWork(100, [&options](int count) {
        const std::string source =
            "DEFINE !m () !DO !i = 1 !TO 1000 !DO !j = 1 !TO 900 !DOEND !DOEND !ENDDEFINE.\n" +
            Repeat("!m.\n", 100 * count);
        const FileExpansion expansion = ExpandFile(source, options, nullptr);
        EXPECT_TRUE(expansion.calls.back().fault);
    });
}

}  // namespace
}  // namespace quillet::macro
