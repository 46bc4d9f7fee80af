#include "translator/statistics.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "conversionhelper.h"
#include "translator/totals.h"

namespace quillet {
namespace {

struct TableCase {
    const char* name;
    const char* source;  // after TABLES
    const char* expected;
};

template <std::size_t kCount>
void ExpectTables(const TableCase (&cases)[kCount]) {
    for (const TableCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ConvertedTable(std::string("TABLES ") + c.source), c.expected);
    }
}

TEST(StatisticsTest, FunctionsWithoutVariables) {
    const TableCase cases[] = {
        {"no functions", "/TABLE a BY b", "a[C] BY b[C]"},
        {"no parentheses", "/TABLE a BY b /STATISTICS COUNT", "a[C] BY b[C][COUNT]"},
        {"empty parentheses", "/TABLE a BY b /STATISTICS COUNT()", "a[C] BY b[C][COUNT]"},
        {"a display specification alone", "/TABLE a BY b /STATISTICS COUNT('n'(F5.0))",
         "a[C] BY b[C][COUNT,'n',F5.0]"},
        {"several, in order", "/TABLE a BY b /STATISTICS CPCT() COUNT() TOT()", "<kind 5>"},
        {"several, all known", "/TABLE a BY b /STATISTICS CPCT() COUNT() CPCT()",
         "a[C] BY b[C][TABLEPCT.VALIDN,COUNT,TABLEPCT.VALIDN]"},
        {"several subcommands count as one",
         "/TABLE a BY b /STATISTICS COUNT() /TITLE 'x' /STATISTICS CPCT()",
         "a[C] BY b[C][COUNT,TABLEPCT.VALIDN]"},
        {"those of another table do not count",
         "/TABLE a BY b /STATISTICS COUNT() /TABLE c /STATISTICS CPCT()", "a[C] BY b[C][COUNT]"},
    };
    ExpectTables(cases);
}

TEST(StatisticsTest, KindsAgreeWithVariables) {
    const std::string all = "/STATISTICS COUNT() RESPONSES() MEAN()";
    struct Case {
        const char* table;
        const char* expected;
    };
    const Case cases[] = {
        {"a", "a[C][COUNT]"},
        {"a > b", "a[C]>b[C][COUNT]"},
        {"m", "$m[COUNT,RESPONSES]"},
        {"d", "$d[COUNT,RESPONSES]"},
        {"s", "s[S][COUNT,MEAN]"},
        {"a > m", "a[C]>$m[COUNT,RESPONSES]"},
        {"m > a", "$m[COUNT,RESPONSES]>a[C]"},
        {"a > s", "a[C]>s[S][COUNT,MEAN]"},
        {"s > a", "s[S][COUNT,MEAN]>a[C]"},
        {"m > s", "$m>s[S][COUNT,RESPONSES,MEAN]"},
        {"a + m + s", "a[C][COUNT]+$m[COUNT,RESPONSES]+s[S][COUNT,MEAN]"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.table);
        EXPECT_EQ(ConvertedTable("TABLES /OBSERVATION s /MRGROUP m x y /MDGROUP d x y (1) /TABLE " +
                                 std::string(c.table) + " " + all),
                  c.expected);
    }
}

TEST(StatisticsTest, FunctionsWithVariablesGoWhereTheVariablesAre) {
    const TableCase cases[] = {
        {"one variable", "/OBSERVATION s t /TABLE s + t /STATISTICS MEAN(s)", "s[S][MEAN]+t[S]"},
        {"each argument by itself", "/OBSERVATION s t /TABLE s + t /STATISTICS MEAN(t s) SUM(s)",
         "s[S][MEAN,SUM]+t[S][MEAN]"},
        {"each with its own label and format",
         "/OBSERVATION s t /TABLE s + t /STATISTICS MEAN(s 'S'(F5.1)t(F8)'T') SUM(s)",
         "s[S][MEAN,'S',F5.1,SUM]+t[S][MEAN,'T',F8]"},
        {"letter case does not matter", "/OBSERVATION Inc /TABLE inc /STATISTICS mean(INC)",
         "inc[S][MEAN]"},
        {"anywhere in the nesting", "/TABLE a > b > c /STATISTICS COUNT(a)",
         "a[C]>b[C]>c[C][COUNT]"},
        {"whatever the kind",
         "/OBSERVATION s /MRGROUP m x y /TABLE a + m + s /STATISTICS "
         "MEAN(a m) RESPONSES(s a) COUNT(m)",
         "a[C][MEAN,RESPONSES]+$m[MEAN,COUNT]+s[S][RESPONSES]"},
        {"a variable that is nowhere", "/TABLE a /STATISTICS COUNT(x)", "a[C]"},
        {"a variable twice in a term is one", "/TABLE a > a /STATISTICS COUNT(a)",
         "a[C]>a[C][COUNT]"},
        {"in the order of the command, with or without variables",
         "/OBSERVATION s /TABLE s /STATISTICS MEAN() SUM(s) COUNT() MODE(s) MEDIAN()",
         "s[S][MEAN,SUM,COUNT,MODE,MEDIAN]"},
        {"the same function on every term", "/TABLE a + b + c /STATISTICS COUNT(c a b)",
         "a[C][COUNT]+b[C][COUNT]+c[C][COUNT]"},
    };
    ExpectTables(cases);
}

TEST(StatisticsTest, EachTermOfAMultipliedDimensionHasItsOwn) {
    const TableCase cases[] = {
        {"nesting over stacking", "/TABLE a > (b + c) /STATISTICS COUNT()",
         "a[C]>b[C][COUNT]+a[C]>c[C][COUNT]"},
        {"stacking over nesting, different magnets",
         "/OBSERVATION s /TABLE (a + s) > b /STATISTICS COUNT(b) MEAN(s)",
         "a[C]>b[C][COUNT]+s[S][COUNT,MEAN]>b[C]"},
    };
    ExpectTables(cases);
}

TEST(StatisticsTest, WritesNamesNumbersLabelsAndFormats) {
    const TableCase cases[] = {
        {"unweighted", "/TABLE a /STATISTICS U COUNT()", "a[C][UCOUNT]"},
        {"unweighted, in full", "/TABLE a /STATISTICS UNWEIGHTED COUNT() COUNT()",
         "a[C][UCOUNT,COUNT]"},
        {"unweighted percentage", "/TABLE a /STATISTICS U CPCT()", "a[C][UTABLEPCT.VALIDN]"},
        {"a percentile", "/OBSERVATION s /TABLE s /STATISTICS PTILE 25 (s)", "s[S][PTILE 25]"},
        {"percentiles of all names",
         "/OBSERVATION s /TABLE s /STATISTICS HPTILE 5 () WPTILE 95.5()",
         "s[S][PTILE 5,PTILE 95.5]"},
        {"a number as written", "/OBSERVATION s /TABLE s /STATISTICS PTILE 2.50 (s)",
         "s[S][PTILE 2.50]"},
        {"a number with label and format",
         "/OBSERVATION s /TABLE s /STATISTICS U PTILE 25 (s 'low'(f5.1))",
         "s[S][UPTILE 25,'low',f5.1]"},
        {"a label", "/TABLE a /STATISTICS COUNT(a 'It''s')", "a[C][COUNT,'It''s']"},
        {"a format as written", "/TABLE a /STATISTICS COUNT(a (Pct5.1))", "a[C][COUNT,Pct5.1]"},
        {"a label in front of the format", "/TABLE a /STATISTICS COUNT(a 'n'(F3))",
         "a[C][COUNT,'n',F3]"},
        {"a label after the format", "/TABLE a /STATISTICS COUNT(a(F3)'n')", "a[C][COUNT,'n',F3]"},
    };
    ExpectTables(cases);
}

TEST(StatisticsTest, SetsGetResponsesWhenTheyGetNothing) {
    const TableCase cases[] = {
        {"no functions", "/MRGROUP m x y /TABLE m", "$m[RESPONSES]"},
        {"a function, but not for the set", "/MRGROUP m x y /TABLE m + a /STATISTICS COUNT(a)",
         "$m[RESPONSES]+a[C][COUNT]"},
        {"the magnet must be the set", "/OBSERVATION s /MRGROUP m x y /TABLE m > s", "$m>s[S]"},
        {"a set inside a nesting is the magnet", "/MRGROUP m x y /TABLE m > a",
         "$m[RESPONSES]>a[C]"},
        {"a set in the other dimension", "/MRGROUP m x y /TABLE m BY a", "$m BY a[C]"},
    };
    ExpectTables(cases);
}

TEST(StatisticsTest, SetsChooseOtherCountPercentages) {
    const TableCase cases[] = {
        {"without settings", "/MRGROUP m x y /TABLE a + m /STATISTICS CPCT()",
         "a[C][TABLEPCT.VALIDN]+$m[TABLEPCT.COUNT]"},
        {"responses", "/GBASE RESPONSES /MRGROUP m x y /TABLE a + m /STATISTICS CPCT()",
         "a[C][TABLEPCT.VALIDN]+$m[TABLEPCT.COUNT.RESPONSES]"},
        {"any set of the nesting", "/MRGROUP m x y /TABLE m > a /STATISTICS CPCT(a)",
         "$m[TABLEPCT.COUNT]>a[C]"},
        {"a set below a scale variable",
         "/OBSERVATION s /MRGROUP m x y /TABLE s > m /STATISTICS CPCT(s)",
         "s[S][TABLEPCT.COUNT]>$m"},
        {"percentages of responses", "/MRGROUP m x y /TABLE m /STATISTICS RPCT() CSPCT()",
         "$m[TABLEPCT.RESPONSES.COUNT,TABLEPCT.RESPONSES.COUNT]"},
    };
    ExpectTables(cases);
}

TEST(StatisticsTest, PercentagesHaveTheirBases) {
    const TableCase cases[] = {
        {"columns", "/TABLE a BY b /STATISTICS CPCT(a:b)", "a[C][COLPCT.VALIDN] BY b[C]"},
        {"rows", "/TABLE a BY b /STATISTICS CPCT(b:a)", "a[C] BY b[C][ROWPCT.VALIDN]"},
        {"layers", "/TABLE a BY b BY c /STATISTICS CPCT(b:c)",
         "a[C] BY b[C][LAYERPCT.VALIDN] BY c[C]"},
        {"several, in their order", "/TABLE a BY b + c BY d + e /STATISTICS CPCT(a:b d)",
         "a[C][COLPCT.VALIDN,LAYERPCT.VALIDN,TABLEPCT.VALIDN] BY b[C]+c[C] BY \n  d[C]+e[C]"},
        {"each with everything it has", "/TABLE a BY b + c /STATISTICS U CPCT(a 'p'(PCT5.1):b)",
         "a[C][UCOLPCT.VALIDN,'p',PCT5.1,ULAYERPCT.VALIDN,'p',PCT5.1] BY \n  b[C]+c[C]"},
        {"the base variables serve all arguments", "/TABLE a + c BY b /STATISTICS CPCT(a c:b)",
         "a[C][COLPCT.VALIDN]+c[C][COLPCT.VALIDN] BY b[C]"},
        {"with a display specification alone", "/TABLE a BY b /STATISTICS CPCT('p':b)",
         "a[C] BY b[C][COLPCT.VALIDN,'p']"},
        {"a function that is no percentage has no base", "/TABLE a BY b /STATISTICS COUNT(a:b)",
         "a[C][COUNT] BY b[C]"},
        {"sums and valid cases are percentages too",
         "/OBSERVATION s /TABLE a BY s /STATISTICS SPCT(s) VPCT(s:a)",
         "a[C] BY s[S][TABLEPCT.SUM,ROWPCT.VALIDN]"},
        {"the term that is written answers", "/TABLE a + b BY c /STATISTICS CPCT(a b:a)",
         "a[C][ROWPCT.VALIDN]+b[C][LAYERPCT.VALIDN] BY c[C]"},
        {"a nesting holds what is in it", "/TABLE a > b BY c /STATISTICS CPCT(b:a)",
         "a[C]>b[C][ROWPCT.VALIDN] BY c[C]"},
    };
    ExpectTables(cases);
}

TEST(StatisticsTest, TotalsHaveStatisticsOfTheirOwnWhereAFunctionNamesThem) {
    const TableCase cases[] = {
        {"no function names the total", "/FTOTAL t /TABLE a + t /STATISTICS COUNT(a)",
         "a[C][COUNT]"},
        {"the total alone", "/FTOTAL t /TABLE a + t /STATISTICS COUNT(t)", "a[C][TOTALS[COUNT]]"},
        {"variable and total", "/FTOTAL t /TABLE a + t /STATISTICS COUNT(a t)",
         "a[C][COUNT,TOTALS[COUNT,COUNT]]"},
        {"what is on the variable is on the total",
         "/FTOTAL t /TABLE a + t /STATISTICS CPCT() COUNT(t 'N') CPCT(a)",
         "a[C][TABLEPCT.VALIDN,TABLEPCT.VALIDN,TOTALS[TABLEPCT.VALIDN,COUNT,'N',\n"
         "  TABLEPCT.VALIDN]]"},
        {"a preceding total", "/PTOTAL t /TABLE t + a /STATISTICS COUNT(t)", "a[C][TOTALS[COUNT]]"},
        {"only the total's own variable", "/FTOTAL t /TABLE a + t + b /STATISTICS COUNT(t)",
         "a[C][TOTALS[COUNT]]+b[C]"},
        {"the total of any variable of the term",
         "/FTOTAL t /TABLE (a + t) > b /STATISTICS COUNT(t)", "a[C]>b[C][TOTALS[COUNT]]"},
        {"the first variable with a total decides, though a later one would count",
         "/FTOTAL t u /TABLE (a + u) > (b + t) /STATISTICS COUNT(t)", "a[C]>b[C]"},
        {"the first variable with a total decides, and counts",
         "/FTOTAL t u /TABLE (a + u) > (b + t) /STATISTICS COUNT(u)", "a[C]>b[C][TOTALS[COUNT]]"},
        {"a total that is a base variable does not count",
         "/FTOTAL t /TABLE a + t /STATISTICS CPCT(a:t)", "a[C][COLPCT.VALIDN]"},
        {"the default of a set", "/FTOTAL t /MRGROUP m x y /TABLE m + t /STATISTICS COUNT(t)",
         "$m[RESPONSES,TOTALS[COUNT,RESPONSES]]"},
        {"no default where something was placed",
         "/FTOTAL t /MRGROUP m x y /TABLE m + t /STATISTICS COUNT(t m)",
         "$m[COUNT,TOTALS[COUNT,COUNT]]"},
        {"no totals list without a counting total", "/FTOTAL t /MRGROUP m x y /TABLE m + t",
         "$m[RESPONSES]"},
    };
    ExpectTables(cases);
}

TEST(StatisticsTest, ReportsUnknownFunctions) {
    struct Case {
        const char* source;
        int line;
        int column;
        const char* text;
    };
    // A column is that of the name's last character; the first line counts from 1, others from 0.
    const Case cases[] = {
        {"TABLES /TABLE a /STATISTICS Xyz(a)", 1, 31, "Xyz"},
        {"TABLES /TABLE a /STATISTICS COUNT(a) mo()", 1, 39, "mo"},
        {"TABLES /TABLE a /STATISTICS COUNT(a)\n FOO(zz) BAR(a)", 2, 3, "FOO"},
        {"TABLES /TABLE a /STATISTICS COUNT(a) /STATISTICS foo(a)", 1, 52, "foo"},
        {"TABLES /TABLE a\n/STATISTICS größe(a)", 2, 18, "größe"},
        // Placed nowhere, but unknown all the same.
        {"TABLES /TABLE a /STATISTICS unknown(zz)", 1, 35, "unknown"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        for (int run = 0; run < 2; ++run) {
            const TablesConversion conversion = ConvertTablesCommand(c.source);
            EXPECT_TRUE(conversion.parsed);
            EXPECT_FALSE(conversion.translated);
            EXPECT_EQ(conversion.text, "");
            EXPECT_EQ(conversion.report.kind, TablesErrorKind::kUnknownFunction);
            EXPECT_EQ(conversion.report.line, c.line);
            EXPECT_EQ(conversion.report.column, c.column);
            EXPECT_EQ(conversion.report.text, c.text);
            EXPECT_TRUE(conversion.assertions.empty());
        }
    }
}

TEST(StatisticsTest, BreaksLinesBetweenItems) {
    // Groups of functions are items, as long as they are short.
    const std::string label = "'" + std::string(60, 'x') + "'";
    ParsedCommand parsed("TABLES /FTOTAL t /OBSERVATION s /TABLE s /STATISTICS PTILE 25 (s " +
                         label + "(F5.1)) U SUM()");
    const VariableTypes types(CodePage::Utf8(), parsed.Globals());
    TablesCommand command(CodePage::Utf8(), nullptr);
    const TranslationContext context(command, CodePage::Utf8(), parsed.Globals());
    TableStatistics statistics;
    ASSERT_TRUE(statistics.Read(parsed.Group()));
    ASSERT_TRUE(statistics.LookUpFunctions(context));
    CommandBudget budget;
    PercentageBases bases(parsed.Table(), 1, budget);
    OutputSequence out;
    out.Add("old", false);
    statistics.WriteList(Term({parsed.Table().GetChild(0)}, types), bases, budget, out);
    EXPECT_EQ(out.Format(78, 0), "old[\nPTILE 25," + label + ",F5.1,\nUSUM]");
}

TEST(StatisticsTest, ALongGroupIsBrokenBetweenItsItems) {
    // 7 + 1 + 70 bytes stay together; one more, and they are items of their own.
    const std::string label68(68, 'x');
    for (const bool tooLong : {false, true}) {
        const std::string label = "'" + label68 + (tooLong ? "y" : "") + "'";
        const std::string table =
            ConvertedTable("TABLES /OBSERVATION s /TABLE s /STATISTICS PTILE 5(s " + label + ")");
        EXPECT_EQ(table, tooLong ? "s[S][PTILE 5,\n  " + label + "]"
                                 : "s[S][\n  PTILE 5," + label + "\n  ]");
    }
}

TEST(StatisticsTest, AssertsTheShapeOfATotal) {
    struct Case {
        void (*damage)(TbTrParseNode& variable);
        const char* assertion;
    };
    const Case cases[] = {
        {[](TbTrParseNode& variable) { variable.GetChild(0)->SetNodeType(SP_VARNAME); },
         "totalType == TBI_FTOTALVAR || totalType == TBI_PTOTALVAR"},
        {[](TbTrParseNode& variable) { variable.GetChild(0)->SetToken({}); }, "pTotalTok"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.assertion);
        const AssertionRecorder assertions;
        ParsedCommand parsed("TABLES /FTOTAL t /TABLE a + t /STATISTICS COUNT(t)");
        const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
        TotalRecords records;
        ASSERT_TRUE(CollectTotals(parsed.Table(), 0, context, records));
        TableStatistics statistics;
        ASSERT_TRUE(statistics.Read(parsed.Group()));
        ASSERT_TRUE(statistics.LookUpFunctions(context));
        TbTrParseNode& variable = *parsed.Table().GetChild(0);
        c.damage(variable);
        CommandBudget budget;
        PercentageBases bases(parsed.Table(), 1, budget);
        OutputSequence out;
        statistics.WriteList(Term({&variable}, context.Types()), bases, budget, out);
        EXPECT_TRUE(out.IsEmpty());
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>({c.assertion}));
    }
}

TEST(StatisticsTest, AssertsTheShapeOfTheTree) {
    struct Case {
        const char* name;
        const char* statistics;
        void (*damage)(TbTrParseNode& fullFunction);
        const char* assertion;
    };
    const Case cases[] = {
        {"full function", "COUNT(a)",
         [](TbTrParseNode& function) { function.SetNodeType(TBI_GENERICLIST); },
         "pNode->GetNodeType() == TBI_FULLSTATFUNCTION"},
        {"function", "COUNT(a)",
         [](TbTrParseNode& function) { function.GetChild(0)->SetNodeType(TBI_FMT); },
         "pNode->GetNodeType() == TBI_STATFUNCTION"},
        {"argument", "COUNT(a)",
         [](TbTrParseNode& function) { function.GetChild(1)->SetNodeType(TBI_FMT); },
         "pNode->GetNodeType() == TBI_STATFUNCARG"},
        {"format", "COUNT(a(F5))",
         [](TbTrParseNode& function) { function.GetChild(1)->GetChild(1)->SetNodeType(SP_NUMBER); },
         "pLabel->GetNodeType() == SP_SLITERAL"},
        {"label", "COUNT(a'l')",
         [](TbTrParseNode& function) { function.GetChild(1)->GetChild(1)->SetNodeType(SP_NUMBER); },
         "pLabel->GetNodeType() == SP_SLITERAL"},
        {"base variables", "CPCT(a:b)",
         [](TbTrParseNode& function) { function.GetChild(0)->SetNodeType(SP_NUMBER); },
         "pBaseVarList->GetNodeType() == TBI_VARLIST"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const AssertionRecorder assertions;
        ParsedCommand parsed(std::string("TABLES /TABLE a BY b /STATISTICS ") + c.statistics);
        ASSERT_TRUE(parsed.Parsed());
        c.damage(*parsed.Group().GetChild(1)->GetChild(0));
        TableStatistics statistics;
        EXPECT_FALSE(statistics.Read(parsed.Group()));
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>({c.assertion}));
    }
}

}  // namespace
}  // namespace quillet
