#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "quillet.h"

namespace quillet {
namespace {

std::string Ended(const std::string& text, bool batchMode = false) {
    Options options;
    options.batchMode = batchMode;
    return EndAtBlankLines(text, options);
}

struct BlankLineCase {
    const char* name;
    std::string text;
    std::string expected;
};

void PrintTo(const BlankLineCase& c, std::ostream* pStream) { *pStream << c.name; }

class BlankLinesTest : public testing::TestWithParam<BlankLineCase> {};

TEST_P(BlankLinesTest, PutsThePeriods) {
    EXPECT_EQ(Ended(GetParam().text), GetParam().expected);
    EXPECT_EQ(Ended(GetParam().expected), GetParam().expected) << "once is enough";
}

const BlankLineCase kBlankLineCases[] = {
    {"nothing", "", ""},
    {"ended_commands", "LIST.\n\n* Note.\n\nEXECUTE.\n", "LIST.\n\n* Note.\n\nEXECUTE.\n"},
    {"a_command", "GET FILE='x'\n\nLIST.\n", "GET FILE='x'.\n\nLIST.\n"},
    {"a_comment", "* Isn't it?  \n \t\nLIST.\n", "* Isn't it?.  \n \t\nLIST.\n"},
    {"compute", "COMPUTE x=1 /* one */\n\nLIST.\n", "COMPUTE x=1 /* one */.\n\nLIST.\n"},
    {"compute_before_an_open_comment", "COMPUTE x=1 /* one\n\nLIST.\n",
     "COMPUTE x=1 /* one */.\n\nLIST.\n"},
    {"a_comment_that_opens_one", "* Note /* one\n\nLIST.\n", "* Note /* one.\n\nLIST.\n"},
    {"over_lines", "FREQUENCIES\n a\n\n\nLIST\n\n", "FREQUENCIES\n a.\n\n\nLIST.\n\n"},
    {"the_last_command_is_left", "LIST\n\nLIST", "LIST.\n\nLIST"},
    {"before_an_open_comment", "LIST /* all\n\nLIST.\n", "LIST. /* all\n\nLIST.\n"},
    {"before_a_closed_comment", "LIST a /* b */ /* c */\n\nLIST.\n",
     "LIST a. /* b *  /* c * \n\nLIST.\n"},
    {"after_a_period_that_does_not_end", "LIST. /* b */\n\nLIST.\n", "LIST. /* b * \n\nLIST.\n"},
    {"comments_on_lines_of_their_own", "LIST a\n/* b */\n/* c\n\n* It's.\n",
     "LIST a.\n/* b */\n/* c */.\n\n* It's.\n"},
    {"comments_alone", "/* a */\n\nTABLES /TABLE=a.\n", "/* a */.\n\nTABLES /TABLE=a.\n"},
    {"a_period_in_a_literal", "TITLE 'a. '\n\nLIST.\n", "TITLE 'a. '.\n\nLIST.\n"},
    {"a_glued_literal", "TITLE 'a' +\n\n'b'\n\nLIST.\n", "TITLE 'a' +\n\n'b'.\n\nLIST.\n"},
    {"a_macro", "DEFINE !f ()\nLIST\n\nLIST\n!ENDDEFINE\n\nLIST.\n",
     "DEFINE !f ()\nLIST\n\nLIST\n!ENDDEFINE.\n\nLIST.\n"},
    {"document", "DOCUMENT a\n\nb.\nLIST\n\n", "DOCUMENT a\n\nb.\nLIST.\n\n"},
    {"inline_data", "BEGIN DATA\n1\n\n2\nEND DATA\n\nLIST\n\n",
     "BEGIN DATA\n1\n\n2\nEND DATA\n\nLIST.\n\n"},
    {"line_ends", "\xEF\xBB\xBFLIST\r\n\r\nLIST\r\n", "\xEF\xBB\xBFLIST.\r\n\r\nLIST\r\n"},
    {"nothing_after_an_error", "LIST\n\nTITLE 'a\n\nLIST\n\n", "LIST.\n\nTITLE 'a\n\nLIST\n\n"},
    {"other_bytes", "TITLE '\xE4'\n\nLIST.\n", "TITLE '\xE4'.\n\nLIST.\n"},
};

INSTANTIATE_TEST_SUITE_P(Rows, BlankLinesTest, testing::ValuesIn(kBlankLineCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(BlankLinesTest, MeanNothingInBatchLayout) {
    EXPECT_EQ(Ended("LIST\n  \n a\n\nLIST\n", true), "LIST\n  \n a\n\nLIST\n");
}

// Whatever the text, no command of it goes on after a blank line any more.
TEST(BlankLinesTest, LeaveNothingToBeSwallowed) {
    const std::vector<std::string> lines = {"\n",
                                            "\n",
                                            "* Note\n",
                                            "LIST a\n",
                                            "SORT CASES BY a.\n",
                                            "/* b\n",
                                            "/* c */\n",
                                            "EXECUTE. /* d */\n",
                                            "TITLE 'e'\n",
                                            "  a b\n",
                                            "COMPUTE x=1\n",
                                            "TABLES /TABLE=a\n",
                                            "  /STATISTICS=COUNT. /* f\n"};
    std::minstd_rand random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        const std::size_t count = random() % 15;
        for (std::size_t line = 0; line < count; ++line) text += lines[random() % lines.size()];
        SCOPED_TRACE(text);
        const std::string ended = Ended(text);
        ASSERT_EQ(Ended(ended), ended);
        const LegacyFindings found = FindLegacyCommands(ended, FindOptions());
        for (const Finding& finding : found.findings) {
            EXPECT_NE(NameOf(finding.code), "swallowed") << finding.sentence << "\n" << ended;
            EXPECT_EQ(finding.sentence.find("blank line"), std::string::npos) << ended;
        }
    }
}

}  // namespace
}  // namespace quillet
