#include "translator/parsetree.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "conversionhelper.h"

namespace quillet {
namespace {

std::string Converted(const std::string& source) {
    const TablesConversion conversion = ConvertTablesCommand("TABLES " + source);
    return conversion.translated ? conversion.text : "<failed>";
}

TEST(ParseTreeTest, ASmallTable) {
    EXPECT_EQ(Converted("/TABLE a BY b"),
              "CTABLES\n"
              "  /MRSETS COUNTDUPLICATES=YES\n"
              "  /FORMAT EMPTY=BLANK\n"
              "  /TABLE a[C] BY b[C]\n"
              "  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=EXCLUDE\n"
              "  /SLABELS VISIBLE=NO");
}

TEST(ParseTreeTest, EverythingInItsOrder) {
    EXPECT_EQ(Converted("/FORMAT ZERO MISSING('-') /MISSING INCLUDE /FTOTAL t 'All'/MRGROUP brands "
                        "'Brands'b1 TO b9 /MDGROUP own o1 o2 (1)\n"
                        "/TABLE region + t BY brands + (STATISTICS) BY own + (LABELS)\n"
                        "/STATISTICS COUNT(brands 'n'(F5)) CPCT(brands:region)\n"
                        "/SORT ASCENDING region /CORNER 'c'/TITLE 'T'/CAPTION 'p'"),
              "MRSETS\n"
              "  /MCGROUP NAME=$brands LABEL='Brands' VARIABLES=b1 TO b9\n"
              "  /MDGROUP NAME=$own VARIABLES=o1 o2 VALUE=1.\n"
              "CTABLES\n"
              "  /MRSETS COUNTDUPLICATES=YES\n"
              "  /FORMAT EMPTY=ZERO MISSING='-'\n"
              "  /TABLE region[C] BY $brands[COUNT,'n',F5,TABLEPCT.COUNT] BY $own\n"
              "  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=INCLUDE\n"
              "  /CATEGORIES VAR=REGION TOTAL=YES POSITION=AFTER LABEL='All'\n"
              "  /SLABELS POSITION=COLUMN\n"
              "  /CATEGORIES VAR=region ORDER=A KEY=COUNT($brands)\n"
              "  /TITLES TITLE='T' CAPTION='p' CORNER='c'");
}

TEST(ParseTreeTest, SeveralTables) {
    EXPECT_EQ(Converted("/TABLE a /TITLE 'one'/TABLE b + (LABELS) BY c /STATISTICS COUNT()"),
              "CTABLES\n"
              "  /MRSETS COUNTDUPLICATES=YES\n"
              "  /FORMAT EMPTY=BLANK\n"
              "  /TABLE a[C]\n"
              "  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=EXCLUDE\n"
              "  /SLABELS VISIBLE=NO\n"
              "  /TITLES TITLE='one'\n"
              "  /TABLE b[C] BY c[C][COUNT]\n"
              "  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=EXCLUDE\n"
              "  /CLABELS COL=OPPOSITE\n"
              "  /SLABELS POSITION=COLUMN");
}

TEST(ParseTreeTest, MissingValues) {
    struct Case {
        const char* globals;
        const char* expected;
    };
    const std::string line = "/CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=";
    const Case cases[] = {
        {"", "EXCLUDE"},
        {"/MISSING EXCLUDE", "EXCLUDE"},
        {"/MISSING INCLUDE", "INCLUDE"},
        {"/MISSING INCLUDE /MISSING EXCLUDE", "EXCLUDE"},
        {"/MISSING EXCLUDE /MISSING INCLUDE", "INCLUDE"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.globals);
        EXPECT_EQ(SubcommandsOf(Converted(std::string(c.globals) + " /TABLE a"), "/CATEGORIES"),
                  std::vector<std::string>({line + c.expected}));
    }
}

TEST(ParseTreeTest, LabelPositions) {
    struct Case {
        const char* source;
        std::vector<std::string> categoryLabels;
        const char* statisticsLabels;
    };
    const Case cases[] = {
        {"/TABLE a BY b", {}, "/SLABELS VISIBLE=NO"},
        {"/TABLE a + (LABELS) BY b", {"/CLABELS COL=OPPOSITE"}, "/SLABELS VISIBLE=NO"},
        {"/TABLE a BY b + (LABELS)", {"/CLABELS ROW=OPPOSITE"}, "/SLABELS VISIBLE=NO"},
        {"/TABLE a BY b BY c + (LABELS)", {}, "/SLABELS VISIBLE=NO"},
        {"/TABLE a BY b /STATISTICS COUNT()", {}, "/SLABELS POSITION=COLUMN"},
        {"/TABLE a /STATISTICS COUNT()", {}, "/SLABELS POSITION=ROW"},
        {"/OBSERVATION s /TABLE a BY b BY s /STATISTICS MEAN(s)", {}, "/SLABELS POSITION=LAYER"},
        {"/TABLE a + (STATISTICS) BY b /STATISTICS COUNT()", {}, "/SLABELS POSITION=ROW"},
        {"/TABLE a BY b > (STATISTICS) /STATISTICS COUNT(a)", {}, "/SLABELS POSITION=COLUMN"},
        {"/TABLE a BY b BY (STATISTICS) /STATISTICS COUNT()", {}, "/SLABELS POSITION=LAYER"},
        {"/TABLE a + (STATISTICS) BY b", {}, "/SLABELS POSITION=ROW VISIBLE=NO"},
        {"/TABLE a BY b + (STATISTICS)", {}, "/SLABELS POSITION=COLUMN VISIBLE=NO"},
        {"/TABLE a BY b BY (STATISTICS)", {}, "/SLABELS POSITION=LAYER VISIBLE=NO"},
        {"/TABLE a + (STATISTICS) BY b + (LABELS) /STATISTICS COUNT()",
         {"/CLABELS ROW=OPPOSITE"},
         "/SLABELS POSITION=ROW"},
        {"/TABLE a BY b /STATISTICS COUNT() /TABLE a BY b", {}, "/SLABELS POSITION=COLUMN"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        const std::string text = Converted(c.source);
        EXPECT_EQ(SubcommandsOf(text, "/CLABELS"), c.categoryLabels);
        const std::vector<std::string> statisticsLabels = SubcommandsOf(text, "/SLABELS");
        ASSERT_FALSE(statisticsLabels.empty());
        EXPECT_EQ(statisticsLabels.front(), c.statisticsLabels);
    }
}

TEST(ParseTreeTest, AFailureDiscardsEverything) {
    struct Case {
        const char* source;
        TablesErrorKind kind;
    };
    const Case cases[] = {
        {"/MRGROUP g x /TABLE g /TABLE a /STATISTICS XYZ()", TablesErrorKind::kUnknownFunction},
        {"/TABLE a /TABLE b /SORT b (XYZ)", TablesErrorKind::kUnknownSortFunction},
        {"/FTOTAL t /TABLE a /TABLE b > t", TablesErrorKind::kTotalWithoutStacking},
        {"/TABLE a /SORT a (XYZ) /TABLE b /STATISTICS XYZ()",
         TablesErrorKind::kUnknownSortFunction},
        // Totals come before functions, functions before the sort order.
        {"/FTOTAL t /TABLE t > a /STATISTICS XYZ() /SORT a (XYZ)",
         TablesErrorKind::kTotalWithoutStacking},
        {"/TABLE a /SORT a (XYZ) /STATISTICS XYZ()", TablesErrorKind::kUnknownFunction},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        const TablesConversion conversion = ConvertTablesCommand(std::string("TABLES ") + c.source);
        EXPECT_TRUE(conversion.parsed);
        EXPECT_FALSE(conversion.translated);
        EXPECT_EQ(conversion.text, "");
        EXPECT_EQ(conversion.report.kind, c.kind);
    }
}

TEST(ParseTreeTest, WarningsDoNotStopATranslation) {
    const TablesConversion conversion =
        ConvertTablesCommand("TABLES /BOXCHARS 'x' /XYZ a b /TABLE a");
    EXPECT_TRUE(conversion.translated);
    EXPECT_EQ(conversion.warnings.size(), 2u);
}

TEST(ParseTreeTest, WrapsAt80Columns) {
    const auto titles = [](const std::string& title) {
        return SubcommandsOf(Converted("/TABLE a /TITLE " + title), "/TITLES").front();
    };
    const std::string begin = "/TITLES TITLE=";
    for (const std::size_t length : {79u, 80u, 81u}) {
        SCOPED_TRACE(length);
        const std::string title = "'" + std::string(length - 2 - begin.size() - 2, 'x') + "'";
        EXPECT_EQ(titles(title), begin + (length > 80 ? "\n  " : "") + title);
    }
    const std::string tooLong = "'" + std::string(100, 'x') + "'";
    EXPECT_EQ(titles(tooLong + "\"y\""), begin + "\n  " + tooLong + "\n  \"y\"");
}

TEST(ParseTreeTest, WrapsTheSetsCommandToo) {
    const std::string text = Converted(
        "/MRGROUP g 'A label of some length that takes its place on the line' variable1 "
        "variable2 TO variable9 variable10 /TABLE a");
    EXPECT_EQ(text.substr(0, text.find("CTABLES")),
              "MRSETS\n"
              "  /MCGROUP NAME=$g LABEL=\n"
              "  'A label of some length that takes its place on the line'  VARIABLES=variable1\n"
              "  variable2 TO variable9 variable10.\n");
}

// What stands after a literal, up to the next token, belongs to its spelling.
TEST(ParseTreeTest, LiteralsKeepTheBlanksAfterThem) {
    EXPECT_EQ(Converted("/FTOTAL t 'All' \n /TABLE a + t /TITLE 'x'   'y'  /CORNER 'z' "),
              "CTABLES\n"
              "  /MRSETS COUNTDUPLICATES=YES\n"
              "  /FORMAT EMPTY=BLANK\n"
              "  /TABLE a[C]\n"
              "  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=EXCLUDE\n"
              "  /CATEGORIES VAR=A TOTAL=YES POSITION=AFTER LABEL='All' \n"
              " \n"
              "  /SLABELS VISIBLE=NO\n"
              "  /TITLES TITLE='x'    'y'   CORNER='z' ");
}

TEST(ParseTreeTest, NoTreeIsNoText) {
    TablesCommand command(CodePage::Utf8(), nullptr);
    std::string text = "old";
    EXPECT_TRUE(TranslateTablesCommand(nullptr, command, CodePage::Utf8(), text));
    EXPECT_EQ(text, "");
}

TEST(ParseTreeTest, AnotherEmptyListOfGlobalsIsAsGood) {
    ParsedCommand parsed("TABLES /TABLE a");
    parsed.Root().ReplaceChild(0, MakeNode(TestArena(), TBI_GENERICLIST));
    std::string text;
    EXPECT_TRUE(
        TranslateTablesCommand(parsed.TakeRoot(), parsed.Command(), CodePage::Utf8(), text));
    EXPECT_EQ(text, Converted("/TABLE a"));
}

TEST(ParseTreeTest, AssertsTheShapeOfTheTree) {
    struct Case {
        void (*damage)(TbTrParseNode& root);
        const char* assertion;
    };
    const Case cases[] = {
        {[](TbTrParseNode& root) { root.SetNodeType(TBI_VARLIST); },
         "pTablesCommand->GetNodeType() == TBI_GENERICLIST"},
        {[](TbTrParseNode& root) {
             root.RemoveChild(1);
             root.RemoveChild(0);
         },
         "tablesCommand.GetChildCount() > 0"},
        {[](TbTrParseNode& root) { root.GetChild(0)->SetNodeType(TBI_VARLIST); },
         "pGlobalsList->GetNodeType() == TBI_GENERICLIST"},
        {[](TbTrParseNode& root) {
             root.GetChild(0)->AddChild(MakeNode(TestArena(), TB_FORMAT));
             root.GetChild(0)->GetChild(0)->AddChild(MakeNode(TestArena(), TB_ON));
         },
         "nodeType == SP_SLITERAL"},
        {[](TbTrParseNode& root) { root.GetChild(0)->AddChild(MakeNode(TestArena(), TB_MRGROUP)); },
         "pMRGroup->GetChildCount() == 2"},
        {[](TbTrParseNode& root) { root.GetChild(1)->SetNodeType(TB_TABLE); },
         "pTableGroup && pTableGroup->GetNodeType() == TBI_GENERICLIST"},
        {[](TbTrParseNode& root) { root.GetChild(1)->SetNodeType(TBI_VARLIST); },
         "pTableGroup && pTableGroup->GetNodeType() == TBI_GENERICLIST"},
        {[](TbTrParseNode& root) { root.GetChild(1)->RemoveChild(0); }, "pTableSubcommand"},
        {[](TbTrParseNode& root) { root.GetChild(1)->GetChild(0)->SetNodeType(TB_TITLE); },
         "tableSubcommand.GetNodeType() == TB_TABLE"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.assertion);
        const AssertionRecorder assertions;
        ParsedCommand parsed("TABLES /TABLE a");
        c.damage(parsed.Root());
        std::string text = "old";
        EXPECT_FALSE(
            TranslateTablesCommand(parsed.TakeRoot(), parsed.Command(), CodePage::Utf8(), text));
        EXPECT_EQ(text, "");
        EXPECT_EQ(parsed.Command().FirstReport().kind, TablesErrorKind::kNone);
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>({c.assertion}));
    }
}

}  // namespace
}  // namespace quillet
