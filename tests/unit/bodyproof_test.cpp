#include "driver/bodyproof.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "driver/convertedcommands.h"
#include "platform/codepage.h"
#include "support/rownames.h"

namespace quillet {
namespace {

std::optional<TextDifference> CompareConversions(const std::string& expected,
                                                 const std::string& found) {
    const CodePage& codePage = CodePage::Utf8();
    return FindDifference(ConvertCommands(expected, codePage, /*batchMode=*/false),
                          ConvertCommands(found, codePage, /*batchMode=*/false), codePage);
}

struct SameTextsCase {
    const char* name;
    std::string first;
    std::string second;
};

class BodyProofSameTest : public testing::TestWithParam<SameTextsCase> {};

TEST_P(BodyProofSameTest, InBothDirections) {
    EXPECT_FALSE(CompareConversions(GetParam().first, GetParam().second));
    EXPECT_FALSE(CompareConversions(GetParam().second, GetParam().first));
}

const SameTextsCase kSameTexts[] = {
    {"nothing", "", ""},
    {"blanks and line ends", "CTABLES /TABLE a[C]BY b .", "CTABLES\r\n  /TABLE  a [C] BY\n  b."},
    {"letter case of names", "CTABLES /TABLE sex[c].", "ctables /table SEX[C]."},
    {"comments", "/* x */\nWEIGHT /* y */ OFF.\n* z.", "COMMENT -- a.\nWEIGHT OFF."},
    {"what looks like a comment", "COMMENT a.\nCOMMEN b.", ""},
    {"the last period", "WEIGHT OFF.\nEXECUTE", "WEIGHT OFF.\nEXECUTE."},
    {"a legacy command and its conversion", "TABLES /TABLE=a BY b.",
     "CTABLES /MRSETS COUNTDUPLICATES=YES /FORMAT EMPTY=BLANK /TABLE a[C] BY b[C] /CATEGORIES "
     "VAR=ALL EMPTY=EXCLUDE MISSING=EXCLUDE /SLABELS VISIBLE=NO."},
    {"a legacy command after a comment", "/* x */ TABLES /TABLE=a.", "TABLES /TABLE=a."},
    {"a legacy command after one with a comment", "EXECUTE. /* x. */ /* y\nTABLES /TABLE=a.",
     "EXECUTE.\nTABLES /TABLE=a."},
    {"what looks like a comment after a period", "TITLE 'a. /* b'.", "TITLE 'a. /* b' ."},
    {"the order of different variables",
     "CTABLES /CATEGORIES VAR=a TOTAL=YES /CATEGORIES VAR=b c TOTAL=NO.",
     "CTABLES /CATEGORIES VAR=B C TOTAL=NO /CATEGORIES VAR=a TOTAL=YES."},
    {"the order of three of which two are about one variable",
     "CTABLES /CATEGORIES VAR=a ORDER=A /CATEGORIES VAR=b TOTAL=YES /CATEGORIES VAR=a ORDER=D.",
     "CTABLES /CATEGORIES VAR=b TOTAL=YES /CATEGORIES VAR=a ORDER=A /CATEGORIES VAR=a ORDER=D."},
    {"inline data", "BEGIN DATA\n1  2\nEND DATA.", "BEGIN DATA\r\n1  2\r\nEND DATA."},
};

struct DifferentTextsCase {
    const char* name;
    std::string expected;
    std::string found;
    std::string expectedPart;
    std::string foundPart;
};

class BodyProofDifferentTest : public testing::TestWithParam<DifferentTextsCase> {};

TEST_P(BodyProofDifferentTest, TellsWhere) {
    const DifferentTextsCase& c = GetParam();
    const std::optional<TextDifference> difference = CompareConversions(c.expected, c.found);
    ASSERT_TRUE(difference);
    EXPECT_EQ(difference->expected, c.expectedPart);
    EXPECT_EQ(difference->found, c.foundPart);
}

const DifferentTextsCase kDifferentTexts[] = {
    {"a variable", "CTABLES /TABLE a.", "CTABLES /TABLE b.", "A .", "B ."},
    {"the letter case of a literal", "TITLE 'Sex'.", "TITLE 'sex'.", "'Sex' .", "'sex' ."},
    {"a blank in a literal", "TITLE 'a b'.", "TITLE 'a  b'.", "'a b' .", "'a  b' ."},
    {"the quotes of a literal", "TITLE 'a'.", "TITLE \"a\".", "'a' .", "\"a\" ."},
    {"one literal more", "TITLE 'a'.", "TITLE 'a' 'b'.", ".", "'b' ."},
    {"a number in another form", "COMPUTE x=1.", "COMPUTE x=1.0.", "1 .", "1.0 ."},
    {"a name that is cut", "COMPUTE x=ab.", "COMPUTE x=a b.", "AB .", "A B ."},
    {"a number that is cut", "COMPUTE x=1a.", "COMPUTE x=1 a.", "A .", "A ."},
    {"a sign that is cut", "IF (a<=b) c=1.", "IF (a< =b) c=1.", "= B ) C = 1 .", "= B ) C = 1 ."},
    {"a command more", "EXECUTE.", "EXECUTE.\nEXECUTE.", "", "EXECUTE ."},
    {"a command that begins like a comment", "COMPUTE x=1.", "COMPUTE y=1.", "X = 1 .", "Y = 1 ."},
    {"a command that is lost and begins like a comment", "COMP x=1.", "EXECUTE.", "COMP X = 1 .",
     "EXECUTE ."},
    {"a command less", "EXECUTE.\nEXECUTE.", "EXECUTE.", "EXECUTE .", ""},
    {"a command that is a comment", "EXECUTE.", "* EXECUTE.", "EXECUTE .", ""},
    {"a subcommand that is a comment", "CTABLES /TABLE a /SLABELS VISIBLE=NO.",
     "CTABLES /TABLE a /* /SLABELS VISIBLE=NO */ .", "/ SLABELS VISIBLE = NO .", "."},
    {"two commands in one", "EXECUTE.\nWEIGHT OFF.", "EXECUTE WEIGHT OFF.", ". WEIGHT OFF .",
     "WEIGHT OFF ."},
    {"the order of one variable's", "CTABLES /CATEGORIES VAR=a ORDER=A /CATEGORIES VAR=a ORDER=D.",
     "CTABLES /CATEGORIES VAR=a ORDER=D /CATEGORIES VAR=a ORDER=A.",
     "A / CATEGORIES VAR = A ORDER =", "D / CATEGORIES VAR = A ORDER ="},
    {"the order of those that share a variable",
     "CTABLES /CATEGORIES VAR=a b ORDER=A /CATEGORIES VAR=b c ORDER=D.",
     "CTABLES /CATEGORIES VAR=b c ORDER=D /CATEGORIES VAR=a b ORDER=A.",
     "A B ORDER = A / CATEGORIES VAR", "B C ORDER = D / CATEGORIES VAR"},
    {"the order of one and of all", "CTABLES /CATEGORIES VAR=ALL EMPTY=EXCLUDE /CATEGORIES VAR=a.",
     "CTABLES /CATEGORIES VAR=a /CATEGORIES VAR=ALL EMPTY=EXCLUDE.",
     "ALL EMPTY = EXCLUDE / CATEGORIES VAR =", "A / CATEGORIES VAR = ALL EMPTY ="},
    {"the order of the variables", "CTABLES /CATEGORIES VAR=a b ORDER=A.",
     "CTABLES /CATEGORIES VAR=b a ORDER=A.", "A B ORDER = A .", "B A ORDER = A ."},
    {"the order of other subcommands", "CTABLES /SLABELS VISIBLE=NO /CLABELS ROW=OPPOSITE.",
     "CTABLES /CLABELS ROW=OPPOSITE /SLABELS VISIBLE=NO.",
     "SLABELS VISIBLE = NO / CLABELS ROW =", "CLABELS ROW = OPPOSITE / SLABELS VISIBLE ="},
    {"a blank in inline data", "BEGIN DATA\n1  2\nEND DATA.", "BEGIN DATA\n1 2\nEND DATA.",
     "BEGIN DATA\n1  2\nEND DATA.", "BEGIN DATA\n1 2\nEND DATA."},
    {"letter case outside of ASCII", "COMPUTE \xC3\x84=1.", "COMPUTE \xC3\xA4=1.", "\xC3\x84 = 1 .",
     "\xC3\xA4 = 1 ."},
};

INSTANTIATE_TEST_SUITE_P(Rows, BodyProofSameTest, testing::ValuesIn(kSameTexts),
                         NameOfRow<SameTextsCase>);
INSTANTIATE_TEST_SUITE_P(Rows, BodyProofDifferentTest, testing::ValuesIn(kDifferentTexts),
                         NameOfRow<DifferentTextsCase>);

TEST(ConvertedCommandsTest, TellsOfFailures) {
    const CodePage& codePage = CodePage::Utf8();
    const ConvertedCommands failed =
        ConvertCommands("TABLES /TABLE=a /STATISTICS=foo(a).", codePage, /*batchMode=*/false);
    EXPECT_TRUE(failed.hasFailed);
    EXPECT_EQ(failed.failure, "Unrecognized summary function foo");
    const ConvertedCommands unreadable =
        ConvertCommands("IF (a = 'b) c=1.", codePage, /*batchMode=*/false);
    EXPECT_TRUE(unreadable.hasFailed);
    const ConvertedCommands converted =
        ConvertCommands("TABLES /TABLE=a.\nEXECUTE.", codePage, /*batchMode=*/false);
    EXPECT_FALSE(converted.hasFailed);
    EXPECT_EQ(converted.legacyCommands, 1);
    EXPECT_EQ(converted.pieces.size(), 2U);
}

}  // namespace
}  // namespace quillet
