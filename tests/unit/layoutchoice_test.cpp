#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "quillet.h"

namespace quillet {
namespace {

bool ChoosesBatch(const std::string& text) { return ChooseLayout(text, Options()).batchMode; }

struct LayoutCase {
    const char* name;
    std::string text;
    bool isBatch;
};

void PrintTo(const LayoutCase& c, std::ostream* pStream) { *pStream << c.name; }

class LayoutChoiceTest : public testing::TestWithParam<LayoutCase> {};

TEST_P(LayoutChoiceTest, ChoosesTheLayout) {
    EXPECT_EQ(ChoosesBatch(GetParam().text), GetParam().isBatch);
}

const LayoutCase kLayoutCases[] = {
    {"nothing", "", false},
    {"one_command", "LIST.\n", false},
    {"one_command_without_a_period", "LIST", false},
    {"batch", "GET FILE=X\nTABLES TABLE=A\n  /STATISTICS=COUNT\nFINISH\n", true},
    {"batch_with_comments", "* One\n* Two\nGET FILE=X\n* Three\nTABLES TABLE=A\n", true},
    {"batch_with_signs", "+ GET FILE='x'.\n+ LIST.\n- TABLES /TABLE=a.\n", true},
    {"one_sign", "+ TABLES /TABLE=a.\n", false},
    {"batch_after_tabs", "\tGET FILE=X\n\tTABLES TABLE=A\n   /STATISTICS=COUNT\n\tFINISH\n", true},
    {"batch_after_blank_lines", "GET FILE=x\n\n EXECUTE\n\n LIST\n\n TABLES TABLE=a\n", true},
    {"batch_with_short_words", "tab table=a\nigr /x1=var(a)\nLIST\ntab table=b\n", true},
    {"batch_with_macro_calls", "DEFINE lst ()\n LIST\n!ENDDEFINE\nlst a\n!x a\nLIST\nlst b\n",
     true},
    {"interactive_with_an_open_comment", "* Income\nTABLES /TABLE=a.\n", false},
    {"interactive_with_open_comments",
     "* One\nTABLES /TABLE=a.\n* Two\nTABLES /TABLE=b.\n* Three\nTABLES /TABLE=c.\n", false},
    {"interactive_with_a_comment_after_a_period", "EXECUTE. /* old */\nTABLES /TABLE=a.\n", false},
    {"interactive_with_a_blank_line", "GET FILE='x'\n\nTABLES /TABLE=a.\n", false},
    {"no_command_words", "a\nb\nc\nd\n", false},
    {"an_open_literal", "GET FILE=X\nTITLE 'x\nTABLES TABLE=A\nLIST\n", false},
    {"utf16", "\xFF\xFEL", false},
};

INSTANTIATE_TEST_SUITE_P(Rows, LayoutChoiceTest, testing::ValuesIn(kLayoutCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(LayoutChoiceTest, CountsWhatItGoesBy) {
    const LayoutChoice choice = ChooseLayout(
        "* Note.\nGET FILE=X\nTABLES TABLE=A\n  /STATISTICS=COUNT.\n+LIST\n", Options());
    EXPECT_EQ(choice.interactive.commands, 2);
    EXPECT_EQ(choice.interactive.withCommandWord, 1);
    EXPECT_EQ(choice.interactive.withoutPeriod, 1);
    EXPECT_EQ(choice.interactive.withSign, 1);
    EXPECT_EQ(choice.batch.commands, 3);
    EXPECT_EQ(choice.batch.withCommandWord, 3);
    EXPECT_EQ(choice.batch.withoutPeriod, 2);
    EXPECT_EQ(choice.batch.withSign, 1);
    EXPECT_FALSE(choice.interactive.hasTokenizingError);
}

// The same commands in both layouts, as people write them.
TEST(LayoutChoiceTest, ChoosesRightForGeneratedFiles) {
    const std::vector<std::vector<std::string>> commands = {
        {"* A note about what follows, isn't it"},
        {"GET FILE='data.sav'"},
        {"TABLES", "/TABLE=a + b BY c", "/STATISTICS=COUNT(a 'Cases')"},
        {"FREQUENCIES VARIABLES=a b", "/STATISTICS=MEAN"},
        {"COMPUTE x = a + b"},
        {"IF (a = 1) x = 2"},
        {"VALUE LABELS a 1 'One'", "2 'Two. Or more'"},
        {"SELECT IF (a > 1)"},
        {"TITLE 'Report'"},
        {"CROSSTABS", "TABLES=a BY b"},
        {"EXECUTE"},
    };
    std::minstd_rand random(1);
    for (int file = 0; file < 1000; ++file) {
        std::string interactive;
        std::string batch;
        const std::size_t count = 2 + random() % 20;
        const bool isIndented = random() % 2 == 0;
        const bool hasBlankLines = random() % 2 == 0;
        std::size_t words = 0;
        for (std::size_t number = 0; number < count || words < 2; ++number) {
            const std::vector<std::string>& lines = commands[random() % commands.size()];
            if (lines.front().front() != '*') ++words;
            for (std::size_t line = 0; line < lines.size(); ++line) {
                const bool isLast = line + 1 == lines.size();
                interactive += (line > 0 && isIndented ? "  " : "") + lines[line];
                interactive += isLast ? ".\n" : "\n";
                batch += (line > 0 ? "  " : "") + lines[line] + "\n";
            }
            if (hasBlankLines) {
                interactive += "\n";
                batch += "\n";
            }
        }
        ASSERT_FALSE(ChoosesBatch(interactive)) << interactive;
        ASSERT_TRUE(ChoosesBatch(batch)) << batch;
    }
}

}  // namespace
}  // namespace quillet
