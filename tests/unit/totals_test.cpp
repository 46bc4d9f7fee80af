#include "translator/totals.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "conversionhelper.h"
#include "nodemaking.h"
#include "translator/treeediting.h"
#include "translator/variabletypes.h"

namespace quillet {
namespace {

// t, u: following totals; p, q: preceding ones; s, z: scale variables; m: a set with a long name.
const char* const kGlobals =
    "/FTOTAL t 'T'u /PTOTAL p q 'Q'/OBSERVATION s z /MRGROUP LongGroup x y /MDGROUP d x (1)";

// Every variable of a dimension, with the total that hangs on it: "a b=t".
std::string SlotsOf(const TbTrParseNode* pDimension) {
    if (!pDimension) return "-";
    std::string text;
    for (const TbTrParseNode* pLeaf : LeavesOf(*pDimension)) {
        if (!text.empty()) text += " ";
        text += SpellingOf(*pLeaf);
        const TbTrParseNode* pTotal = pLeaf->GetChild(0);
        if (!pTotal) continue;
        const bool following = pTotal->GetNodeType() == TBI_FTOTALVAR;
        text += following ? "=" : "~";
        text += SpellingOf(*pTotal);
    }
    return text;
}

std::string RecordsText(const TotalRecords& records) {
    std::string text;
    for (const auto& [name, pTotal] : records) {
        if (!text.empty()) text += " ";
        text.append(name).append("=").append(SpellingOf(*pTotal));
    }
    return text;
}

TEST(TotalsTest, GoToTheVariablesTheyTotal) {
    struct Case {
        const char* name;
        const char* rows;
        const char* slots;  // "=" a following total, "~" a preceding one
        const char* records;
    };
    const Case cases[] = {
        {"none", "a + b", "a b", ""},
        {"following", "a + t", "a=t", "A=t"},
        {"preceding", "p + a", "a~p", "A=p"},
        {"spelling of the declaration", "Abc + T", "Abc=t", "ABC=t"},
        {"between two variables", "a + t + b", "a=t b", "A=t"},
        {"between two variables, preceding", "a + p + b", "a b~p", "B=p"},
        {"both", "p + a + t", "a=t", "A=t"},
        {"both between two", "a + t + p + b", "a=t b~p", "A=t B=p"},
        {"a preceding total before a following one precedes nothing that counts", "a + p + t",
         "a=t", "A=t"},
        {"two following, the last stays", "a + t + u", "a=u", "A=u"},
        {"two preceding, the last stays", "p + q + a", "a~q", "A=q"},
        {"many of both", "a + t + p + u + q + b", "a=u b~q", "A=u B=q"},
        {"on a set", "LongGroup + t", "LongGroup=t", "$LONGGRO=t"},
        {"on a set of dichotomies", "p + d", "d~p", "$D=p"},
        {"a following total goes to the last variable of a stacking", "c > (a + b) + t", "c=t a b",
         "C=t"},
        {"inside a stacking, at the end", "(a + b) > c + t", "a b=t c", "B=t"},
        {"inside a stacking, at the front", "p + (a + b) > c", "a~p b c", "A=p"},
        {"the outermost of a nesting", "a > b > c + t", "a=t b c", "A=t"},
        {"the outermost of a nesting, preceding", "p + a > b", "a~p b", "A=p"},
        {"inside a nesting", "a > (b + t)", "a b=t", "B=t"},
        {"inside a nesting, preceding", "(p + a) > b", "a~p b", "A=p"},
        {"inside and outside", "(a + t) > b + u", "a=u b", "A=u"},
        {"the same total at several places", "(a + t) > (b + t) + c + t", "a=t b=t c=t",
         "A=t B=t C=t"},
        {"a scale variable gives it to the right operand", "s > a + t", "s a=t", "A=t"},
        {"to all of a stacking", "s > (a + b + c) + t", "s a=t b=t c=t", "A=t B=t C=t"},
        {"in a nesting to the outermost", "s > (a > b + c) + t", "s a=t b c=t", "A=t C=t"},
        {"to the second operand of many", "s > a > b + t", "s a=t b", "A=t"},
        {"preceding, to the right operand", "p + s > a", "s a~p", "A=p"},
        {"the innermost nesting on the way counts", "(s > b + c > d) > a + t", "s b c=t d a",
         "C=t"},
        {"the innermost nesting on the way counts, to the scale variable", "(c + s > b) > a + t",
         "c s b=t a", "B=t"},
        {"a stacking inside a nesting", "(a + s) > b + t", "a s b=t", "B=t"},
        {"the whole dimension", "t", "-", ""},
        {"a dimension of preceding totals", "p + q", "-", ""},
        {"a dimension of a preceding and a following total", "p + t", "-", ""},
        {"a preceding total beside a removed one", "p + q + a > b", "a~q b", "A=q"},
        {"the first recorded preceding total stays", "p + a + c + q + a", "a~p c a~q", "A=p"},
        {"a following total replaces a recorded preceding one", "p + a + c + a + t", "a~p c a=t",
         "A=t"},
        {"a preceding total does not replace a recorded following one", "a + t + p + a", "a=t a~p",
         "A=t"},
        {"a later following total replaces an earlier one", "a + t + a + u", "a=t a=u", "A=u"},
        {"a preceding total after a following one on the same variable", "p + (a + t) > b", "a=t b",
         "A=t"},
        {"many totals on one term, the last following one stays", "s > (a + b) + t + u + t + u",
         "s a=u b=u", "A=u B=u"},
        {"many totals on one term, the last preceding one stays, the first is recorded",
         "((p + s > (a + b)) > c)", "s a~p b~p c", "A=p B=p"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const AssertionRecorder assertions;
        ParsedCommand parsed(std::string("TABLES ") + kGlobals + " /TABLE " + c.rows + " BY col");
        ASSERT_TRUE(parsed.Parsed());
        const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
        TotalRecords records;
        ASSERT_TRUE(CollectTotals(parsed.Table(), 0, context, records));
        EXPECT_EQ(SlotsOf(TableView(parsed.Table()).Dimension(1)), c.slots);
        EXPECT_EQ(RecordsText(records), c.records);
        EXPECT_EQ(SlotsOf(parsed.Table().GetChild(1)), "col");
        EXPECT_EQ(parsed.Command().FirstReport().kind, TablesErrorKind::kNone);
        EXPECT_TRUE(assertions.Texts().empty());
    }
}

TEST(TotalsTest, LeaveAFlatTree) {
    EXPECT_EQ(
        ConvertedTable(std::string("TABLES ") + kGlobals + " /TABLE a > (b > c + t) > e BY col"),
        "a[C]>b[C]>c[C]>e[C] BY col[C]");
}

// Thousands of variables may share a total, and with it a long label.
TEST(TotalsTest, AttachTheNameAndLeaveTheLabelInTheDeclaration) {
    ParsedCommand parsed(std::string("TABLES ") + kGlobals + " /TABLE a + t");
    const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
    TotalRecords records;
    ASSERT_TRUE(CollectTotals(parsed.Table(), 0, context, records));
    const TbTrParseNode* pTotal = parsed.Table().GetChild(0)->GetChild(0);
    ASSERT_NE(pTotal, nullptr);
    const TbTrParseNode* pDeclaration = parsed.Globals()->GetChild(0)->GetChild(0);
    EXPECT_EQ(records["A"], pDeclaration);
    EXPECT_NE(pTotal, pDeclaration);
    EXPECT_EQ(pTotal->GetNodeType(), TBI_FTOTALVAR);
    EXPECT_EQ(SpellingOf(*pTotal), "t");
    EXPECT_EQ(pTotal->GetChildCount(), 0u);
    ASSERT_NE(pDeclaration->GetChild(0), nullptr);
    EXPECT_EQ(pDeclaration->GetChild(0)->GetToken()->Text(true), "'T'");
    EXPECT_EQ(pDeclaration->GetNodeType(), SP_VARNAME);
}

TEST(TotalsTest, ReportWhatTheyCannotTotal) {
    struct Case {
        const char* rows;
        TablesErrorKind kind;
        int column;  // within the rows, from 1
        const char* text;
    };
    const TablesErrorKind misplaced = TablesErrorKind::kMisplacedTotal;
    const TablesErrorKind nothingToFollow = TablesErrorKind::kNothingToFollow;
    const TablesErrorKind nothingToPrecede = TablesErrorKind::kNothingToPrecede;
    const TablesErrorKind withoutStacking = TablesErrorKind::kTotalWithoutStacking;
    const TablesErrorKind besideScale = TablesErrorKind::kTotalBesideScale;
    const Case cases[] = {
        {"T + a", nothingToFollow, 1, "T"},
        {"t + u", nothingToFollow, 1, "t"},
        {"p + t + a", nothingToFollow, 5, "t"},
        {"a > (t + b)", nothingToFollow, 6, "t"},
        {"a + P", nothingToPrecede, 5, "P"},
        {"a + t + p", nothingToPrecede, 9, "p"},
        {"(a + p) > b", nothingToPrecede, 6, "p"},
        {"a > t", withoutStacking, 5, "t"},
        {"p > a", withoutStacking, 1, "p"},
        {"a + b > t", withoutStacking, 9, "t"},
        {"a > (p + q)", withoutStacking, 10, "q"},
        {"a > (p + t)", withoutStacking, 10, "t"},
        {"s + t", besideScale, 5, "t"},
        {"p + s", besideScale, 1, "p"},
        {"a + s + t", besideScale, 9, "t"},
        {"s > z + t", misplaced, 5, "z"},
        {"s > (a + b + z) + t", misplaced, 14, "z"},
        {"s > (a + z > b) + t", misplaced, 10, "z"},
        {"p + s > z", misplaced, 9, "z"},
        {"p + s > (a + t)", misplaced, 14, "t"},
        {"p + s > t", misplaced, 9, "t"},
        // The first one from the left is reported.
        {"a + b > t + s + u", withoutStacking, 9, "t"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.rows);
        const std::string before = std::string("TABLES ") + kGlobals + " /TABLE ";
        const TablesConversion conversion = ConvertTablesCommand(before + c.rows + " BY a");
        EXPECT_TRUE(conversion.parsed);
        EXPECT_FALSE(conversion.translated);
        EXPECT_EQ(conversion.text, "");
        EXPECT_EQ(conversion.report.kind, c.kind);
        EXPECT_EQ(conversion.report.text, c.text);
        EXPECT_EQ(conversion.report.line, 1);
        EXPECT_EQ(conversion.report.column, static_cast<int>(before.size()) + c.column);
        EXPECT_TRUE(conversion.assertions.empty());
    }
}

TEST(TotalsTest, ReportTheLastCharacterOfAName) {
    const TablesConversion conversion =
        ConvertTablesCommand("TABLES /FTOTAL Gesamt\n /TABLE a BY b\n   > gesamt");
    EXPECT_EQ(conversion.report.kind, TablesErrorKind::kTotalWithoutStacking);
    EXPECT_EQ(conversion.report.text, "gesamt");
    EXPECT_EQ(conversion.report.line, 3);
    EXPECT_EQ(conversion.report.column, 10);
}

TEST(TotalsTest, AllDimensionsAreSearchedInOrder) {
    const TablesConversion conversion =
        ConvertTablesCommand("TABLES /FTOTAL t /PTOTAL p /TABLE a + t BY a > t BY t + a");
    EXPECT_EQ(conversion.report.kind, TablesErrorKind::kTotalWithoutStacking);
}

std::vector<std::string> CategoriesOf(const std::string& source) {
    std::vector<std::string> categories =
        SubcommandsOf(ConvertTablesCommand("TABLES " + source).text, "/CATEGORIES VAR=");
    if (!categories.empty()) categories.erase(categories.begin());  // the one for all variables
    return categories;
}

TEST(TotalsTest, AreWrittenAsCategories) {
    struct Case {
        const char* name;
        const char* source;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        {"none", "/FTOTAL t /TABLE a", {}},
        {"following",
         "/FTOTAL t 'All'/TABLE a + t",
         {"/CATEGORIES VAR=A TOTAL=YES POSITION=AFTER LABEL='All'"}},
        {"preceding",
         "/PTOTAL t \"It's\"/TABLE t + a",
         {"/CATEGORIES VAR=A TOTAL=YES POSITION=BEFORE LABEL=\"It's\""}},
        {"without a label",
         "/FTOTAL Tot /TABLE a + tot",
         {"/CATEGORIES VAR=A TOTAL=YES POSITION=AFTER LABEL=\"TOT\""}},
        {"on a set",
         "/FTOTAL t /MRGROUP VeryLong x y /TABLE verylong + t",
         {"/CATEGORIES VAR=$VERYLON TOTAL=YES POSITION=AFTER LABEL=\"T\""}},
        {"one total on several variables",
         "/FTOTAL t /TABLE b + t + a + t BY c + t",
         {"/CATEGORIES VAR=A B C TOTAL=YES POSITION=AFTER LABEL=\"T\""}},
        {"several totals, in the order of their first variables",
         "/FTOTAL t u 'U'/TABLE c + t + b + u + a + t BY d + u",
         {"/CATEGORIES VAR=A C TOTAL=YES POSITION=AFTER LABEL=\"T\"",
          "/CATEGORIES VAR=B D TOTAL=YES POSITION=AFTER LABEL='U'"}},
        {"a total declared twice is the first",
         "/FTOTAL t 'one'/PTOTAL t 'two'/TABLE a + t",
         {"/CATEGORIES VAR=A TOTAL=YES POSITION=AFTER LABEL='one'"}},
        {"a set's key may be that of another variable",
         "/FTOTAL t u /MRGROUP g x /TABLE g + t + $g + u",
         {"/CATEGORIES VAR=$G TOTAL=YES POSITION=AFTER LABEL=\"U\""}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(CategoriesOf(c.source), c.expected);
    }
}

TEST(TotalsTest, BreakLinesBetweenItems) {
    ParsedCommand parsed("TABLES /FTOTAL t 'x'u /TABLE a + t + b + t + c + u");
    const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
    TotalRecords records;
    ASSERT_TRUE(CollectTotals(parsed.Table(), 0, context, records));
    OutputSequence out;
    out.Add("old", false);
    ASSERT_TRUE(WriteTotalCategories(records, context, out));
    EXPECT_EQ(
        out.Format(3, 2),
        "old\n  /CATEGORIES VAR=\n  A\n  B\n  TOTAL=YES\n  POSITION=\n  AFTER\n  LABEL=\n  'x'\n"
        "  /CATEGORIES VAR=\n  C\n  TOTAL=YES\n  POSITION=\n  AFTER\n  LABEL=\n  \"U\"");
}

TEST(TotalsTest, AnEmptyDimensionHasNoTotals) {
    const NodeOwner table = MakeNode(TestArena(), TB_TABLE);
    table->AddChild(MakeVariable("a"));
    TableView::EmptyDimension(*table, 0);
    TablesCommand command(CodePage::Utf8(), nullptr);
    const TranslationContext context(command, CodePage::Utf8(), nullptr);
    TotalRecords records;
    EXPECT_TRUE(CollectTotals(*table, 0, context, records));
    EXPECT_TRUE(records.empty());
}

TEST(TotalsTest, AssertTheShapeOfTheTree) {
    struct Case {
        void (*damage)(ParsedCommand& parsed);
        const char* assertion;
    };
    const Case cases[] = {
        {[](ParsedCommand& parsed) { parsed.Table().SetNodeType(TB_TITLE); },
         "pTableSubcommand && pTableSubcommand->GetNodeType() == TB_TABLE"},
        {[](ParsedCommand& parsed) { parsed.Table().GetChild(0)->GetChild(1)->RemoveChild(1); },
         "pRightOp"},
        {[](ParsedCommand& parsed) {
             parsed.Table().GetChild(0)->GetChild(1)->ReplaceChild(
                 1, MakeNode(TestArena(), TB_STATISTICS));
         },
         "assocVar.GetNodeType() == SP_VARNAME"},
        {[](ParsedCommand& parsed) {
             parsed.Table().GetChild(0)->GetChild(1)->GetChild(1)->SetToken({});
         },
         "assocVar.GetToken()"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.assertion);
        const AssertionRecorder assertions;
        ParsedCommand parsed("TABLES /OBSERVATION s /PTOTAL p /TABLE p + s > a");
        c.damage(parsed);
        const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
        TotalRecords records;
        EXPECT_FALSE(CollectTotals(parsed.Table(), 0, context, records));
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>({c.assertion}));
    }
}

TEST(TotalsTest, SkipNeighborsThatAreNoVariables) {
    ParsedCommand parsed("TABLES /FTOTAL t /TABLE a + t");
    parsed.Table().GetChild(0)->ReplaceChild(0, MakeNode(TestArena(), TB_LABELS));
    const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
    TotalRecords records;
    EXPECT_TRUE(CollectTotals(parsed.Table(), 0, context, records));
    EXPECT_TRUE(records.empty());
    EXPECT_EQ(parsed.Table().GetChild(0)->GetNodeType(), TB_LABELS);
}

TEST(TotalsTest, AssertTheShapeOfADeclaration) {
    struct Case {
        void (*damage)(TbTrParseNode& declaration);
        const char* assertion;
    };
    const Case cases[] = {
        {[](TbTrParseNode& declaration) { declaration.GetChild(0)->SetNodeType(SP_NUMBER); },
         "pLabel->GetNodeType() == SP_SLITERAL"},
        {[](TbTrParseNode& declaration) { declaration.GetChild(0)->SetToken({}); }, "pLabelTok"},
        {[](TbTrParseNode& declaration) {
             declaration.RemoveChild(0);
             declaration.SetToken({});
         },
         "pTotVarNameTok"},
        {[](TbTrParseNode& declaration) { declaration.SetNodeType(SP_NUMBER); },
         "totalVarDecl.GetNodeType() == SP_VARNAME"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.assertion);
        const AssertionRecorder assertions;
        ParsedCommand parsed("TABLES /FTOTAL t 'x' /TABLE a");
        TbTrParseNode& declaration = *parsed.Globals()->GetChild(0)->GetChild(0);
        c.damage(declaration);
        const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
        OutputSequence out;
        EXPECT_FALSE(WriteTotalCategories({{"A", &declaration}}, context, out));
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>({c.assertion}));
    }
}

TEST(TotalsTest, OnlyTotalsAreWritten) {
    const AssertionRecorder assertions;
    ParsedCommand parsed("TABLES /OBSERVATION o /TABLE a");
    const TbTrParseNode& declaration = *parsed.Globals()->GetChild(0)->GetChild(0)->GetChild(0);
    const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
    OutputSequence out;
    EXPECT_FALSE(WriteTotalCategories({{"A", &declaration}}, context, out));
    EXPECT_EQ(assertions.Texts(),
              std::vector<std::string>({"totalType == TB_FTOTAL || totalType == TB_PTOTAL"}));
}

}  // namespace
}  // namespace quillet
