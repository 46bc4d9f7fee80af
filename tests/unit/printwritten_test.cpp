#include "outline/printwritten.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "conversionhelper.h"
#include "outline/readwritten.h"
#include "platform/codepage.h"
#include "printedalike.h"
#include "support/rownames.h"

namespace quillet::outline {
namespace {

TEST(PrintWrittenTest, PrintsASubcommandALine) {
    const std::string text =
        "MRSETS\n"
        "  /MCGROUP NAME=$m LABEL='Papers read'  VARIABLES=a b TO c\n"
        "  /MDGROUP NAME=$n VARIABLES=d VALUE=\n  1.\n"
        "CTABLES\n"
        "  /MRSETS COUNTDUPLICATES=YES /FORMAT EMPTY=ZERO   MISSING='-'\n"
        "  /TABLE a[C]+\n  (b[C]>$m) BY  BY x[S][UROWPCT.COUNT,'%' ,F8.2,\n"
        "  PTILE 5,TOTALS[ COUNT , 'n' ]]>y[C]\n"
        "  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=INCLUDE /CATEGORIES VAR=A B TOTAL=YES "
        "POSITION=BEFORE LABEL=\"T\"\n"
        "  /CLABELS ROW=OPPOSITE /SLABELS POSITION=LAYER VISIBLE=NO\n"
        "  /CATEGORIES VAR=a ORDER=D KEY=COUNT( x ) /TITLES TITLE='t'  'u' CAPTION='v'";
    CommandOutline outline;
    ReadingError error;
    ASSERT_TRUE(ReadWritten(CodePage::Utf8(), text, outline, error)) << error.message;
    EXPECT_EQ(
        PrintWritten(outline),
        "MRSETS\n"
        "  /MCGROUP NAME=$m LABEL='Papers read' VARIABLES=a b TO c\n"
        "  /MDGROUP NAME=$n VARIABLES=d VALUE=1.\n"
        "CTABLES\n"
        "  /MRSETS COUNTDUPLICATES=YES\n"
        "  /FORMAT EMPTY=ZERO MISSING='-'\n"
        "  /TABLE a[C]+(b[C]>$m) BY  BY x[S][UROWPCT.COUNT,'%',F8.2,PTILE 5,TOTALS[COUNT,'n']]"
        ">y[C]\n"
        "  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=INCLUDE\n"
        "  /CATEGORIES VAR=A B TOTAL=YES POSITION=BEFORE LABEL=\"T\"\n"
        "  /CLABELS ROW=OPPOSITE\n"
        "  /SLABELS POSITION=LAYER VISIBLE=NO\n"
        "  /CATEGORIES VAR=a ORDER=D KEY=COUNT(x)\n"
        "  /TITLES TITLE='t' 'u' CAPTION='v'.\n");
}

// A TABLES command, which is converted, read and printed.
struct PrintCase {
    const char* name;
    const char* source;
};

void PrintTo(const PrintCase& printCase, std::ostream* pStream) { *pStream << printCase.name; }

class PrintWrittenTest : public testing::TestWithParam<PrintCase> {};

TEST_P(PrintWrittenTest, PrintsWhatWasWritten) {
    const TablesConversion conversion =
        ConvertTablesCommand("TABLES " + std::string(GetParam().source));
    ASSERT_TRUE(conversion.translated);
    ExpectPrintedAlike(CodePage::Utf8(), conversion.text + ".\n");
}

INSTANTIATE_TEST_SUITE_P(
    Converted, PrintWrittenTest,
    testing::Values(
        PrintCase{"a variable", "/TABLE a"},
        PrintCase{"stacked in the rows", "/TABLE a + b > c BY d"},
        PrintCase{"stacked in the columns", "/TABLE a BY b + c > d"},
        PrintCase{"nested stackings", "/TABLE (a + b) > (c + (d > (e + f))) BY g > (h + i)"},
        PrintCase{"rows of markers", "/TABLE (LABELS) BY a + b BY (STATISTICS)"},
        PrintCase{"columns of markers", "/TABLE a BY (LABELS) BY c"},
        PrintCase{"an empty first dimension", "/FTOTAL t /TABLE t BY a BY b"},
        PrintCase{"labels in the rows", "/TABLE (LABELS) BY a /STATISTICS COUNT()"},
        PrintCase{"statistics in the layers", "/TABLE a BY b BY (STATISTICS) /STATISTICS COUNT()"},
        PrintCase{"statistics",
                  "/OBSERVATION x /TABLE a BY x /STATISTICS MEAN(x 'm' (F8.2)) "
                  "U PTILE 25 (x 'p') SUM(x (PCT5))"},
        PrintCase{"percentages",
                  "/TABLE a + b BY c BY d /STATISTICS CPCT(c '%' (PCT5.1) :a) CPCT(c:d) U CPCT(c)"},
        PrintCase{"other bases", "/BASE ALL /TABLE a BY b /STATISTICS CPCT(a:b)"},
        PrintCase{"responses",
                  "/MRGROUP m 'M' a b TO c /GBASE RESPONSES /TABLE m BY d "
                  "/STATISTICS RPCT(m:d) CPCT(m:d) CASES(m)"},
        PrintCase{"a set without statistics", "/MDGROUP many_more a b ('x') /TABLE many_more > d"},
        PrintCase{"sets of numbers", "/MDGROUP m a (5.) /MDGROUP n b (-2) /TABLE m + n"},
        PrintCase{"a set that ends in a period", "/MRGROUP m a b. /TABLE m"},
        PrintCase{"totals", "/FTOTAL t 'All' /PTOTAL p /TABLE a + t BY p + b > c"},
        PrintCase{"counting totals",
                  "/FTOTAL t 'All' /TABLE a + t BY b /STATISTICS COUNT(a t) MEAN(a)"},
        PrintCase{"counting totals of a set",
                  "/MRGROUP m a b /FTOTAL t /TABLE m + t /STATISTICS COUNT(t 'n')"},
        PrintCase{"sorted", "/TABLE a BY b /SORT ASCENDING a b (CPCT) c (MEAN(x))"},
        PrintCase{"settings", "/FORMAT ZERO MISSING('it''s') /MISSING INCLUDE /TABLE a"},
        PrintCase{"titles", "/TABLE a /TITLE 'x' 'y' /CAPTION 'z' /CORNER \"w\""},
        PrintCase{"an empty title", "/AUTOLABEL ON /TABLE a /TITLE /CORNER 'x'"},
        PrintCase{"automatic titles", "/AUTOLABEL ON /TABLE a /TABLE b /CORNER 'c'"},
        PrintCase{"glued texts", "/TABLE a /TITLE 'x'+'y' 'z' + 'w' /CORNER 'u'+\n\"v\""},
        PrintCase{"texts that go on", "/TABLE a /TITLE 'abc'+x'+y' 'z'"},
        PrintCase{"long names",
                  "/TABLE a234567890123456789012345678901234567890 BY "
                  "b234567890123456789012345678901234567890 + c /STATISTICS COUNT('x')"},
        PrintCase{"long labels",
                  "/TABLE a /STATISTICS COUNT(a 'a label that is so long that it does not fit on "
                  "any line of the new command, whatever is done' (F5.0)) MEAN(a)"},
        PrintCase{"names like keywords",
                  "/FTOTAL TOTAL /MRGROUP VALUE LABEL VARIABLES /TABLE VALUE + TOTAL BY ORDER "
                  "/SORT KEY"},
        PrintCase{"formats like functions", "/TABLE a /STATISTICS COUNT(a (MEAN)) MEAN(a (mean))"}),
    NameOfRow<PrintCase>);

}  // namespace
}  // namespace quillet::outline
