// How the work on findings grows with the text.
#include <gtest/gtest.h>

#include <string>

#include "quillet.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"

namespace quillet {
namespace {

// A text that grows by its repeated part.
struct FindingGrowth {
    const char* name;
    std::string before;
    std::string part;
    std::string after;
};

class FindingWorkTest : public testing::TestWithParam<FindingGrowth> {
protected:
    [[nodiscard]] static std::string TextOf(int count) {
        const FindingGrowth& c = GetParam();
        return c.before + Repeat(c.part, count) + c.after;
    }
};

TEST_P(FindingWorkTest, IsLinear) {
    for (const bool batchMode : {false, true}) {
        SCOPED_TRACE(batchMode);
        FindOptions options;
        options.conversion.batchMode = batchMode;
        ExpectLinearWork(500, [&options](int count) {
            EXPECT_GE(FindLegacyCommands(TextOf(count), options).commands.size(), 1U);
        });
    }
}

TEST_P(FindingWorkTest, IsLinearBeforeTheConversion) {
    const Options options;
    ExpectLinearWork(500, [&options](int count) {
        const std::string text = TextOf(count);
        EXPECT_NE(EndAtBlankLines(text, options), "");
        static_cast<void>(ChooseLayout(text, options));
        static_cast<void>(FindMacroNames(text, options));
    });
}

const FindingGrowth kFindingGrowths[] = {
    {"legacy commands", "", "TABLES /TABLE=a.\n", ""},
    {"commands on one line", "", "LIST. TABLES /TABLE=a. ", "\n"},
    {"commands in an open comment", "* Old\n", "TABLES /TABLE=a\n", ""},
    {"open comments", "", "* Old\nTABLES /TABLE=a.\n", ""},
    {"commands in an open command", "LIST a\n", "TABLES /TABLE=a\n\n", ""},
    {"commands after comments", "", "LIST. /* x */\nTABLES /TABLE=a.\n", ""},
    {"comments before commands", "", "/* x */\nTABLES /TABLE=a.\n", ""},
    {"comments before one command", "", "/* x */ ", "TABLES /TABLE=a.\n"},
    {"signs", "LIST.\n", "+ TABLES /TABLE=a.\n", ""},
    {"periods", "TABLES /TABLE=a.\nLIST ", ". ", "\n"},
    {"quotes in a comment", "TABLES /TABLE=a.\n* ", "it's 'x ", ".\n"},
    {"commands in data", "BEGIN DATA\n END DATA\n", "TABLES /TABLE=a.\n", ""},
    {"ends that are none", "BEGIN DATA\n", " END DATA\nTABLES /TABLE=a.\n", ""},
    {"data", "TABLES /TABLE=a.\n", "BEGIN DATA\nTABLES /TABLE=a.\nEND DATA\n", ""},
    {"commands in a macro", "DEFINE !f ()\n", "TABLES /TABLE=a.\n", "!ENDDEFINE.\n!f.\n"},
    {"macros", "", "DEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE.\n!f.\n", ""},
    {"definitions without an end", "TABLES /TABLE=a.\n", "DEFINE !f (\n", ""},
    {"definitions with one end", "TABLES /TABLE=a.\n", "DEFINE !f (x=')'\n", "!ENDDEFINE.\n"},
    {"ends without a definition", "TABLES /TABLE=a.\n", "!ENDDEFINE.\n", ""},
    {"calls", "DEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE.\n", "!f. !g. f\n", "."},
    {"commands after blank lines", "TABLES /TABLE=a.\nLIST a\n", "\nSORT CASES BY a\n", ".\n"},
    {"commands that are lost", "TABLES /TABLE=a. /* x */\n", "LIST /* y */\n", ".\n"},
    {"text that is dropped", "TABLES /TABLE=a.\n", "LIST. /* x\n", ""},
    {"included files", "TABLES /TABLE=a.\n", "INCLUDE 'x'.\n", ""},
    {"text that is no syntax", "TITLE 'x\nTABLES /TABLE=a.\n", "TITLE 'x\n", ""},
    {"commands after the end", "TITLE 'x\n", "LIST\nTABLES /TABLE=a.\n", ""},
    {"the other layout", "GET FILE=X\n", "TABLES TABLE=A\n  /STATISTICS=COUNT\nLIST A\n", ""},
    {"commands in one of the other layout", "GET FILE=x\nEXECUTE\nEXECUTE\nEXECUTE\n* c\n",
     " TABLES /TABLE=a\n", ""},
    {"blank lines", "TABLES /TABLE=a.\nLIST", "\n \n", ".\n"},
    {"letters outside of ASCII", "TABLES /TABLE=a.\n* ", "\xCF\xF0 ", ".\n"},
};
INSTANTIATE_TEST_SUITE_P(Growth, FindingWorkTest, testing::ValuesIn(kFindingGrowths),
                         NameOfRow<FindingGrowth>);

}  // namespace
}  // namespace quillet
