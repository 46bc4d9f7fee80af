// How the work of reading what a command asks for grows with its text.
#include <gtest/gtest.h>

#include <string>

#include "outline/askedcommand.h"
#include "platform/codepage.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"

namespace quillet::outline {
namespace {

// A command that grows by its repeated parts.
struct GrowthCase {
    const char* name;
    std::string before;
    std::string part;
    std::string between;
    std::string otherPart;
    std::string after;
};

class OutlineWorkTest : public testing::TestWithParam<GrowthCase> {};

TEST_P(OutlineWorkTest, IsLinear) {
    const GrowthCase& c = GetParam();
    ExpectLinearWork(1000, [&c](int count) {
        const std::string command =
            c.before + Repeat(c.part, count) + c.between + Repeat(c.otherPart, count) + c.after;
        const CommandOutline outline = ReadAskedCommand(CodePage::Utf8(), command, false);
        EXPECT_FALSE(outline.tables.empty());
    });
}

const GrowthCase kGrowths[] = {
    {"tables", "TABLES ", "/TABLE=a BY b /STATISTICS=COUNT(a) /TITLE='x' /SORT=a\n", "", "", ""},
    {"stacking", "TABLES /TABLE=a", "+b", " BY c", "+d", ""},
    {"nesting", "TABLES /TABLE=a", ">b", " BY c", ">d", ""},
    {"parentheses", "TABLES /TABLE=", "(", "a", ")", ""},
    {"open parentheses", "TABLES /TABLE=", "(a+", "", "", ""},
    {"groups to the left", "TABLES /TABLE=", "(", "a", "+b)>c", ""},
    {"groups to the right", "TABLES /TABLE=", "(a>(b+", "c", "))", ""},
    {"totals of one group", "TABLES /FTOTAL=t /TABLE=(a", "+b", ")>c", "+t", ""},
    {"totals before one group", "TABLES /PTOTAL=t /TABLE=", "t+", "(a", "+b", ")>c"},
    {"totals of groups in groups", "TABLES /FTOTAL=t /TABLE=", "(", "a", ">b+t)", ""},
    {"totals of what is nested", "TABLES /OBSERVATION=x /FTOTAL=t /TABLE=", "(x>", "a", ")+t", ""},
    {"totals of totals", "TABLES /FTOTAL=t u /TABLE=a+(t", "+u", "", "+t", ")"},
    {"what is no expression", "TABLES /TABLE=", "a b : 1 + + ", "", "", ""},
    {"functions", "TABLES /TABLE=a /STATISTICS=", "MEAN(a 'l' (F8.2) b:c) ", "", "", ""},
    {"variables of a function with base variables", "TABLES /TABLE=a /STATISTICS=CPCT(", "a ", ":",
     "b ", ")"},
    {"variables of a function with a long name", "TABLES /TABLE=a /STATISTICS=COUNT", "x", "(",
     "a ", ")"},
    {"what is no statistic", "TABLES /TABLE=a /STATISTICS=", "((a 1 : 'x' ) ", "", "", ""},
    {"ranges", "TABLES /OBSERVATION=", "q1 TO q9 ", " /TABLE=q5", "+q5", ""},
    {"declarations", "TABLES /FTOTAL=t /MRGROUP=g ", "a b TO c ", "/TABLE=a /MDGROUP=h ", "a ",
     "(1)"},
    {"sorts", "TABLES /TABLE=a /SORT=", "a (MEAN(b)) ", "", "c (1 ", ""},
    {"titles", "TABLES /TABLE=a /TITLE=", "'x' ", "/CAPTION=", "y ", ""},
    {"formats", "TABLES /FORMAT=", "CWIDTH(8,9) MISSING ", "/TABLE=a", "", ""},
    {"slashes and signs", "TABLES ", "/ = , ", "/TABLE=a", " / ", ""},
    {"comments", "TABLES /TABLE=a ", "/* b */ ", "", "/* c\n", ""},
    {"periods", "TABLES /TABLE=a ", "b. ", "", "1. \n", ""},
    {"periods before comments", "TABLES /TABLE=a ", "b. /* c */ ", "", "/* . */ ", ""},
    {"a period before comments", "TABLES /TABLE=a. ", "/* c */ ", "b", "", ""},
    {"a text without an end", "TABLES /TABLE=a /TITLE='", "x", "", "\n", ""},
    {"subcommands that are not known", "TABLES /TABLE=a ", "/layout x ", "", "", ""},
    {"BREAK", "TABLES /BREAK=BY b ", "/TABLE=a ", "", "/BREAK=BY c ", ""},
};
INSTANTIATE_TEST_SUITE_P(Growth, OutlineWorkTest, testing::ValuesIn(kGrowths),
                         NameOfRow<GrowthCase>);

}  // namespace
}  // namespace quillet::outline
