#include "translator/tableexpression.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "conversionhelper.h"
#include "nodemaking.h"

namespace quillet {
namespace {

TEST(TableExpressionTest, RemovesMarkers) {
    struct Case {
        const char* dimensions;
        std::size_t statistics;
        std::size_t labels;
        const char* left;
    };
    const Case cases[] = {
        {"a BY b", 0, 0, "a[C] BY b[C]"},
        {"a + (STATISTICS) BY b", 1, 0, "a[C] BY b[C]"},
        {"a BY (STATISTICS)", 2, 0, "a[C]"},
        {"a BY b BY (STATISTICS)", 3, 0, "a[C] BY b[C]"},
        {"a BY (STATISTICS) BY c", 2, 0, "a[C] BY  BY c[C]"},
        {"(STATISTICS) BY b", 1, 0, " BY b[C]"},
        {"a > (STATISTICS) > b", 1, 0, "a[C]>b[C]"},
        {"a + (LABELS) BY b", 0, 1, "a[C] BY b[C]"},
        {"a BY b + (LABELS)", 0, 2, "a[C] BY b[C]"},
        {"a BY b BY c > (LABELS)", 0, 3, "a[C] BY b[C] BY c[C]"},
        {"a + (STATISTICS) BY b + (LABELS)", 1, 2, "a[C] BY b[C]"},
        {"a + (STATISTICS) + (LABELS) + c BY b", 1, 1, "a[C]+c[C] BY b[C]"},
        {"(STATISTICS) + a + (STATISTICS) > b", 1, 0, "a[C]+b[C]"},
        {"a > (b + (STATISTICS) > (c + d)) BY x", 1, 0, "a[C]>(b[C]+c[C]+d[C]) BY x[C]"},
        {"a > ((STATISTICS) + b > c) BY x", 1, 0, "a[C]>b[C]>c[C] BY x[C]"},
        {"((STATISTICS) + (STATISTICS)) > a BY x", 1, 0, "a[C] BY x[C]"},
        {"((STATISTICS) > (LABELS)) + (STATISTICS) BY x", 1, 1, " BY x[C]"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dimensions);
        const std::string source = std::string("TABLES /TABLE ") + c.dimensions;
        ParsedCommand parsed(source);
        ASSERT_TRUE(parsed.Parsed());
        EXPECT_EQ(RemoveMarkers(parsed.Table(), TB_STATISTICS), c.statistics);
        EXPECT_EQ(RemoveMarkers(parsed.Table(), TB_LABELS), c.labels);
        EXPECT_EQ(RemoveMarkers(parsed.Table(), TB_LABELS), 0u);
        EXPECT_EQ(ConvertedTable(source), c.left);
    }
}

TEST(TableExpressionTest, MarkersOfOneKindInTwoDimensionsAreAnAssertion) {
    for (const char* dimensions :
         {"(STATISTICS) BY (STATISTICS)", "a + (STATISTICS) BY b BY c + (STATISTICS)",
          "a + (LABELS) BY (LABELS)", "a BY b + (LABELS) BY c + (LABELS)",
          "a + (LABELS) BY b + (LABELS) BY c + (LABELS)"}) {
        SCOPED_TRACE(dimensions);
        const TablesConversion conversion =
            ConvertTablesCommand(std::string("TABLES /TABLE ") + dimensions);
        EXPECT_FALSE(conversion.translated);
        EXPECT_EQ(conversion.text, "");
        EXPECT_EQ(conversion.report.kind, TablesErrorKind::kNone);
        EXPECT_EQ(conversion.assertions,
                  std::vector<std::string>({"statsDisplayDim <= 3 && labelsDim <= 3"}));
    }
}

TEST(TableExpressionTest, AMarkerThatCannotGoIsAnAssertion) {
    const AssertionRecorder assertions;
    ParsedCommand parsed("TABLES /TABLE a + (LABELS)");
    parsed.Table().GetChild(0)->RemoveChild(0);
    EXPECT_EQ(RemoveMarkers(parsed.Table(), TB_LABELS), kTwoDimensions);
    EXPECT_EQ(assertions.Texts(),
              std::vector<std::string>({"pParent->GetChildCount() > 1", "removed"}));
}

TEST(TableExpressionTest, ATableWithNothingLeftFails) {
    for (const char* source : {"/TABLE (STATISTICS)", "/TABLE (LABELS) BY (STATISTICS)",
                               "/FTOTAL t /TABLE t", "/FTOTAL t /TABLE t BY (LABELS) BY t"}) {
        SCOPED_TRACE(source);
        const TablesConversion conversion = ConvertTablesCommand(std::string("TABLES ") + source);
        EXPECT_TRUE(conversion.parsed);
        EXPECT_FALSE(conversion.translated);
        EXPECT_EQ(conversion.text, "");
        EXPECT_EQ(conversion.report.kind, TablesErrorKind::kNone);
        EXPECT_TRUE(conversion.assertions.empty());
    }
}

TEST(TableExpressionTest, FindsWhereStatisticsAreComputed) {
    struct Case {
        const char* name;
        const char* source;
        std::size_t dimension;
    };
    const Case cases[] = {
        {"rows alone", "/TABLE a", 1},
        {"the columns, when nothing decides", "/TABLE a BY b", 2},
        {"the columns, also with layers", "/TABLE a BY b BY c", 2},
        {"the first one there is, without columns", "/TABLE a BY (LABELS) BY c", 1},
        {"the columns, without rows", "/TABLE (LABELS) BY b BY c", 2},
        {"the layers alone", "/FTOTAL t /TABLE (LABELS) BY t BY c", 3},
        {"a scale variable in the rows", "/OBSERVATION s /TABLE a > s BY b", 1},
        {"a scale variable in the layers", "/OBSERVATION s /TABLE a BY b BY s", 3},
        {"the first scale variable", "/OBSERVATION s /TABLE a BY s BY s", 2},
        {"an argument in the rows", "/TABLE x + a BY b /STATISTICS COUNT(a)", 1},
        {"an argument in the layers", "/TABLE a BY b BY c /STATISTICS COUNT(c)", 3},
        {"an argument of a second subcommand",
         "/TABLE a BY b BY c /STATISTICS COUNT(x) /STATISTICS COUNT(y c)", 3},
        {"an argument in any case of letters", "/TABLE Abc BY b /STATISTICS COUNT(aBC)", 1},
        {"a base variable is no argument", "/TABLE a BY b /STATISTICS CPCT(x:a)", 2},
        {"the first that decides, scale variable or argument",
         "/OBSERVATION s /TABLE a BY s BY c /STATISTICS COUNT(c)", 2},
        {"a total that is an argument", "/FTOTAL t /TABLE a + t BY b /STATISTICS COUNT(t)", 1},
        {"a total that is an argument, on a set",
         "/FTOTAL t /MRGROUP longgroup x /TABLE longgroup + t BY b /STATISTICS COUNT(t)", 1},
        {"a total that is none", "/FTOTAL t u /TABLE a + u BY b /STATISTICS COUNT(t)", 2},
        {"a total that is recorded for the name, elsewhere",
         "/FTOTAL t /TABLE a BY b BY a + t /STATISTICS COUNT(t)", 1},
        {"the recorded total, not the one in the slot",
         "/PTOTAL p q /TABLE p + a + x + q + a BY b /STATISTICS COUNT(p)", 1},
        {"the one in the slot alone does not decide",
         "/PTOTAL p q /TABLE p + a + x + q + a BY b /STATISTICS COUNT(q)", 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ParsedCommand parsed(std::string("TABLES ") + c.source);
        ASSERT_TRUE(parsed.Parsed());
        static_cast<void>(RemoveMarkers(parsed.Table(), TB_LABELS));
        const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
        TotalRecords records;
        for (std::size_t i = 0; i < parsed.Table().GetChildCount(); ++i) {
            ASSERT_TRUE(CollectTotals(parsed.Table(), i, context, records));
        }
        TableStatistics statistics;
        ASSERT_TRUE(statistics.Read(parsed.Group()));
        EXPECT_EQ(FindStatsCompDim(parsed.Table(), records, statistics, context.Types()),
                  c.dimension);
    }
}

TEST(TableExpressionTest, WritesDimensions) {
    struct Case {
        const char* name;
        const char* source;
        const char* expected;
    };
    const Case cases[] = {
        {"variables of all kinds",
         "/OBSERVATION Inc /MRGROUP Grp x /MDGROUP $Dich y (1) /TABLE Cat + Inc + Grp + $Dich",
         "Cat[C]+Inc[S]+$Grp[RESPONSES]+$Dich[RESPONSES]"},
        {"kinds do not depend on the case of letters, names keep theirs",
         "/OBSERVATION INC /MRGROUP GRP x /TABLE iNc BY gRp", "iNc[S] BY $gRp"},
        {"inner groups in parentheses, the outermost without", "/TABLE a + b > c BY x",
         "a[C]+(b[C]>c[C]) BY x[C]"},
        {"deeper groups", "/TABLE a > (b + c > (d + e)) BY x",
         "a[C]>(b[C]+(c[C]>(d[C]+e[C]))) BY x[C]"},
        {"multiplied out where the statistics are", "/TABLE x BY a > (b + c > (d + e))",
         "x[C] BY a[C]>b[C]+a[C]>c[C]>d[C]+a[C]>c[C]>e[C]"},
        {"nestings among the terms have no parentheses there", "/TABLE a + b > c",
         "a[C]+b[C]>c[C]"},
        {"layers", "/TABLE a BY b BY c > (d + e)", "a[C] BY b[C] BY c[C]>(d[C]+e[C])"},
        {"layers that carry the statistics", "/OBSERVATION s /TABLE a + b > c BY b BY s > (d + e)",
         "a[C]+(b[C]>c[C]) BY b[C] BY s[S]>d[C]+s[S]>e[C]"},
        {"rows that carry the statistics", "/OBSERVATION s /TABLE (a + b) > s BY c > (d + e)",
         "a[C]>s[S]+b[C]>s[S] BY c[C]>(d[C]+e[C])"},
        {"statistics after the innermost variable", "/TABLE a > b /STATISTICS COUNT()",
         "a[C]>b[C][COUNT]"},
        {"statistics after a scale variable, even outermost",
         "/OBSERVATION s /TABLE s > a /STATISTICS COUNT()", "s[S][COUNT]>a[C]"},
        {"no dimension after the last one that is there", "/TABLE a BY (LABELS) BY (STATISTICS)",
         "a[C]"},
        {"BREAK variables", "/BREAK BY r > q /TABLE a BY b /TABLE c", "a[C] BY b[C] BY r[C]>q[C]"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ConvertedTable(std::string("TABLES ") + c.source), c.expected);
    }
}

TEST(TableExpressionTest, KeepsShortTermsOnOneLine) {
    const std::string a(30, 'a');
    const std::string b(34, 'b');
    const std::string b1 = b + "b";
    struct Case {
        const char* name;
        std::string rows;
        std::string expected;
    };
    const Case cases[] = {
        // 33 + 1 + 44 bytes are 78, which fit after an indentation of 2.
        {"a dimension of 78 bytes", a + ">" + b + "1234567",
         "\n  " + a + "[C]>" + b + "1234567[C]"},
        {"a dimension of 79 bytes", a + ">" + b + "12345678", a + "[C]>\n  " + b + "12345678[C]"},
        {"terms of a long dimension", a + ">" + b + "+" + a + ">" + b1 + "+c",
         a + "[C]>" + b + "[C]\n  +" + a + "[C]>" + b1 + "[C]+c[C]"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ConvertedTable("TABLES /TABLE " + c.rows), c.expected);
    }
    EXPECT_EQ(ConvertedTable("TABLES /TABLE " + cases[2].rows + " BY x"),
              "\n  (" + a + "[C]>" + b + "[C])+\n  (" + a + "[C]>" + b1 + "[C])+\n  c[C] BY x[C]");
}

TEST(TableExpressionTest, BreaksALongTermBetweenItsItems) {
    // A variable and its statistics are an item together while they are short, then apart, then
    // the statistics are broken up.
    const std::string longName(60, 'v');
    EXPECT_EQ(ConvertedTable("TABLES /TABLE x BY " + longName + " /STATISTICS COUNT() CPCT()"),
              "x[C] BY " + longName + "[C]\n  [COUNT,TABLEPCT.VALIDN]");
    EXPECT_EQ(ConvertedTable("TABLES /TABLE x BY v /STATISTICS CPCT() CPCT() CPCT() CPCT() CPCT()"),
              "x[C] BY v[C][TABLEPCT.VALIDN,TABLEPCT.VALIDN,TABLEPCT.VALIDN,\n"
              "  TABLEPCT.VALIDN,TABLEPCT.VALIDN]");
    EXPECT_EQ(ConvertedTable("TABLES /TABLE aaa > " + longName + "1234 > bb BY x > y"),
              "aaa[C]>\n  " + longName + "1234[C]>bb[C] BY \n  x[C]>y[C]");
}

TEST(TableExpressionTest, ATotalThatIsLeftIsAnAssertion) {
    const AssertionRecorder assertions;
    ParsedCommand parsed("TABLES /FTOTAL t /TABLE t");
    OutputSequence out;
    out.Add("of the table before", false);
    WriteDimension(*parsed.Table().GetChild(0), VariableTypes(CodePage::Utf8(), parsed.Globals()),
                   out);
    EXPECT_EQ(out.Format(80, 2), "of the table beforet");
    EXPECT_EQ(assertions.Texts(),
              std::vector<std::string>({"varType == TB_MDGROUP || varType == TB_MRGROUP"}));
}

TEST(TableExpressionTest, StatisticsNeedOneToThreeDimensions) {
    for (const std::size_t dimensions : {std::size_t{0}, std::size_t{4}}) {
        const AssertionRecorder assertions;
        ParsedCommand parsed("TABLES /TABLE a BY b BY c");
        TbTrParseNode& table = parsed.Table();
        while (table.GetChildCount() > dimensions) table.RemoveChild(0);
        while (table.GetChildCount() < dimensions) table.AddChild(MakeVariable("d"));
        EXPECT_EQ(FindStatsCompDim(table, TotalRecords(), TableStatistics(),
                                   VariableTypes(CodePage::Utf8(), parsed.Globals())),
                  0U);
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>({"0 < dimCount && dimCount <= 3"}));
    }
}

TEST(TableExpressionTest, AMillionVariablesAreTheLimit) {
    const auto stacking = [](int count) {
        std::string text = "(a";
        for (int i = 1; i < count; ++i) text += "+a";
        return text + ")";
    };
    struct Case {
        std::string dimension;
        bool tooLarge;
    };
    const Case cases[] = {
        {stacking(1000) + ">" + stacking(500), false},  // 2 * 500,000
        {stacking(1000) + ">" + stacking(500) + "+a", true},
        {stacking(1000) + ">" + stacking(501), true},
        {stacking(50) + ">" + stacking(50) + ">" + stacking(100), false},
        {stacking(100) + ">" + stacking(100) + ">" + stacking(100), true},
    };
    for (const Case& c : cases) {
        for (const char* dimensions : {"%", "x BY %", "% BY x BY y"}) {
            std::string source = std::string("TABLES /TABLE ") + dimensions;
            source.replace(source.find('%'), 1, c.dimension);
            ParsedCommand parsed(source);
            ASSERT_TRUE(parsed.Parsed());
            EXPECT_EQ(IsTooLarge(parsed.Table()), c.tooLarge);
        }
    }
}

TEST(TableExpressionTest, ATooLargeTableIsReportedAtItsEnd) {
    std::string groups;
    for (int i = 0; i < 10; ++i)
        groups += std::string(i > 0 ? " > " : "") + "(a+b+c+d+e+f+g+h+i+j)";
    const TablesConversion conversion =
        ConvertTablesCommand("TABLES /TABLE x BY y\n/TABLE " + groups + "\n /TITLE 'x'");
    EXPECT_TRUE(conversion.parsed);
    EXPECT_FALSE(conversion.translated);
    EXPECT_EQ(conversion.text, "");
    EXPECT_EQ(conversion.report.kind, TablesErrorKind::kTableTooLarge);
    EXPECT_EQ(conversion.report.line, 2);
    EXPECT_EQ(conversion.report.column, static_cast<int>(groups.size()) + 6);
    EXPECT_TRUE(conversion.assertions.empty());
}

}  // namespace
}  // namespace quillet
