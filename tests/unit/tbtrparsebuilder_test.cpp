#include "bison/tbtrparsebuilder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "nodemaking.h"
#include "tablesparsing.h"

namespace quillet {
namespace {

using tablesparsing::Command;
using tablesparsing::TreeText;
using Texts = std::vector<std::string>;

// A value that a test owns, made the way the lexer or an earlier action makes it.
class Value {
public:
    Value() = default;
    explicit Value(OpaqueValue made) : m_value(made) {}
    ~Value() { OpaqueValue_Clear(m_value); }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    operator OpaqueValue&() { return m_value; }  // NOLINT: the actions take the bare value
    [[nodiscard]] bool IsEmpty() const { return OpaqueValue_IsEmpty(m_value); }
    [[nodiscard]] std::string Text() const {
        return OpaqueValue_IsParseNode(m_value) ? TreeText(m_value.pParseNode) : "empty";
    }

private:
    OpaqueValue m_value;
};

OpaqueValue WordValue(NodeType code, const std::string& text = "w") {
    OpaqueValue value;
    OpaqueValue_SetTAVQToken(value, MakeWord(text), code);
    return value;
}

OpaqueValue LiteralValue(const std::string& text) {
    OpaqueValue value;
    OpaqueValue_SetTAVQToken(value, MakeLiteral(text), SP_SLITERAL);
    return value;
}

OpaqueValue Number(double number) {
    const std::string text = std::to_string(static_cast<int>(number));
    OpaqueValue value;
    OpaqueValue_SetTAVQToken(value, MakeToken(TokenCodes::kNumber, text, text), SP_NUMBER);
    return value;
}

OpaqueValue NodeValue(NodeType type) {
    OpaqueValue value;
    OpaqueValue_SetParseNode(value, MakeNode(TestArena(), type));
    return value;
}

OpaqueValue VariableValue(const std::string& name) {
    Value token(WordValue(SP_VARNAME, name));
    return BuildVariable(TestArena(), token);
}

TablesLocation At(int line, int column) { return {1, 1, line, column}; }

TEST(TbTrParseBuilderTest, ReportsRecordWhereTheirRuleEnds) {
    struct Case {
        const char* name;
        std::function<void(TablesCommand&)> report;
        TablesErrorKind kind;
        NodeType subcommand;
        const char* trace;
    };
    const Case cases[] = {
        {"generic error",
         [](TablesCommand& command) {
             EXPECT_TRUE(OpaqueValue_IsEmpty(reportGenericError(command, At(3, 14))));
         },
         TablesErrorKind::kTablesSyntax, kNoNodeType, "reportGenericError \n"},
        {"argument error",
         [](TablesCommand& command) {
             Value keyword(WordValue(TB_SORT));
             EXPECT_TRUE(
                 OpaqueValue_IsEmpty(reportSubcommandArgumentError(command, At(3, 14), keyword)));
             EXPECT_TRUE(keyword.IsEmpty());
         },
         TablesErrorKind::kSubcommandSyntax, TB_SORT, "reportSubcommandArgumentError for 295\n"},
        {"range in OBSERVATION",
         [](TablesCommand& command) {
             Value keyword(WordValue(TB_OBSERVATION));
             Value from(WordValue(SP_VARNAME, "a"));
             Value to(WordValue(SP_TO));
             Value last(WordValue(SP_VARNAME, "b"));
             Value range(BuildVariableRange(TestArena(), from, to, last));
             Value list(StartList(TestArena(), TBI_VARLIST, range));
             Value result;
             EXPECT_FALSE(BuildObservation(command, At(3, 14), result, keyword, list));
             EXPECT_TRUE(result.IsEmpty());
             EXPECT_TRUE(list.IsEmpty());
         },
         TablesErrorKind::kObservationRange, kNoNodeType, "reportObservationRange \n"},
        {"word in parentheses",
         [](TablesCommand& command) {
             Value left(WordValue(SP_LPAREN));
             Value word(WordValue(SP_NONVARNAME, "!x"));
             Value right(WordValue(SP_RPAREN));
             Value result;
             EXPECT_FALSE(BuildParenthesizedWord(command, At(3, 14), result, left, word, right));
             EXPECT_TRUE(result.IsEmpty());
         },
         TablesErrorKind::kParenthesizedWord, kNoNodeType, "reportParenthesizedWord \n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AssertionRecorder assertions;
        Command parsed("TABLES");
        std::ostringstream trace;
        parsed.command.SetTrace(&trace);
        c.report(parsed.command);
        const ReportEntry report = parsed.command.FirstReport();
        EXPECT_EQ(report.kind, c.kind);
        EXPECT_EQ(report.line, 3);
        EXPECT_EQ(report.column, 14);
        EXPECT_EQ(report.subcommand, c.subcommand);
        EXPECT_EQ(report.text, "");
        EXPECT_EQ(trace.str(), c.trace);
        EXPECT_EQ(assertions.Texts(), Texts{});
    }
}

TEST(TbTrParseBuilderTest, WarningsNameWhatIsPassedOver) {
    Command parsed("TABLES");
    std::ostringstream trace;
    parsed.command.SetTrace(&trace);
    Value obsolete(WordValue(TB_WRITE));
    Value unknown(WordValue(TB_UNKNOWNSUBCOM, "XYZ"));
    Value arguments;
    EXPECT_TRUE(OpaqueValue_IsEmpty(reportObsoleteSubcommand(parsed.command, obsolete, arguments)));
    EXPECT_TRUE(OpaqueValue_IsEmpty(reportUnknownSubcommand(parsed.command, unknown, arguments)));
    EXPECT_TRUE(obsolete.IsEmpty());
    EXPECT_TRUE(unknown.IsEmpty());
    EXPECT_EQ(parsed.command.Warnings(),
              (std::vector<Warning>{{WarningKind::kObsoleteSubcommand, "WRITE"},
                                    {WarningKind::kUnknownSubcommand, "XYZ"}}));
    EXPECT_EQ(trace.str(), "reportObsoleteSubcommand for WRITE\nreportUnknownSubcommand for XYZ\n");
    EXPECT_EQ(parsed.command.FirstReport().kind, TablesErrorKind::kNone);

    AssertionRecorder assertions;
    Value none;
    EXPECT_TRUE(OpaqueValue_IsEmpty(reportUnknownSubcommand(parsed.command, none, arguments)));
    EXPECT_EQ(assertions.Texts(), Texts{"subcommandString"});
    EXPECT_EQ(parsed.command.Warnings().size(), 2U);
}

TEST(TbTrParseBuilderTest, AnObsoleteFormatIsWarnedAboutOnceInARow) {
    const Warning warning{WarningKind::kObsoleteFormat, {}};
    const Warning another{WarningKind::kUnknownSubcommand, "XYZ"};
    Command parsed("TABLES /FORMAT x y /FORMAT z /TABLE a");
    for (int token = 0; token < 3; ++token) static_cast<void>(parsed.command.NextToken());
    for (int time = 0; time < 2; ++time) {
        Value keyword(WordValue(TB_FORMAT));
        Value lookAhead(WordValue(SP_VARNAME));
        EXPECT_TRUE(OpaqueValue_IsEmpty(reportObsoleteFormat(parsed.command, keyword, lookAhead)));
        EXPECT_TRUE(keyword.IsEmpty());
        EXPECT_TRUE(lookAhead.IsEmpty());
        EXPECT_EQ(parsed.command.Warnings(), std::vector{warning});
        EXPECT_EQ(parsed.command.NextToken().code, SP_SLASH);
    }
    EXPECT_EQ(parsed.command.NextToken().code, TB_TABLE);
    parsed.command.AddWarning(another);
    Value keyword(WordValue(TB_FORMAT));
    Value lookAhead;
    static_cast<void>(reportObsoleteFormat(parsed.command, keyword, lookAhead));
    EXPECT_EQ(parsed.command.Warnings(), (std::vector{warning, another, warning}));
}

TEST(TbTrParseBuilderTest, ListsStartWithWhatTheirTypeNeeds) {
    struct Case {
        NodeType type;
        const char* withoutElement;
        const char* withElement;
    };
    const Case cases[] = {
        {TBI_GENERICLIST, "LIST()", "LIST(FMT)"}, {TBI_VARLIST, "VARLIST", "VARLIST(FMT)"},
        {TB_SORT, "SORT", "SORT(FMT)"},           {TB_STATISTICS, "STATISTICS", "STATISTICS(FMT)"},
        {TB_FORMAT, "FORMAT", "FORMAT(FMT)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.withElement);
        AssertionRecorder assertions;
        Value none;
        Value list(StartList(TestArena(), c.type, none));
        EXPECT_EQ(list.Text(), c.withoutElement);
        Value element(NodeValue(TBI_FMT));
        Value longer(AddToList(TestArena(), c.type, list, element));
        EXPECT_EQ(longer.Text(), c.withElement);
        Value unchanged(AddToList(TestArena(), c.type, longer, none));
        EXPECT_EQ(unchanged.Text(), c.withElement);
        EXPECT_EQ(assertions.Texts(), Texts{});
    }
}

TEST(TbTrParseBuilderTest, TheLastFormatSettingOfAKindCounts) {
    struct Case {
        const char* name;
        std::vector<NodeType> settings;
        const char* expected;
    };
    const Case cases[] = {
        {"one", {TB_ZERO}, "FORMAT(ZERO)"},
        {"the other fill takes its place", {TB_ZERO, SP_SLITERAL, TB_BLANK}, "FORMAT(BLANK '')"},
        {"twice the same", {TB_BLANK, TB_BLANK}, "FORMAT(BLANK)"},
        {"back and forth", {TB_BLANK, TB_ZERO, TB_BLANK, TB_ZERO}, "FORMAT(ZERO)"},
        {"two literals", {SP_SLITERAL, TB_ZERO, SP_SLITERAL}, "FORMAT('' ZERO)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AssertionRecorder assertions;
        OpaqueValue list;
        for (const NodeType type : c.settings) {
            Value token(type == SP_SLITERAL ? LiteralValue("") : WordValue(type));
            Value missing(WordValue(TB_MISSING));
            Value left(WordValue(SP_LPAREN));
            Value right(WordValue(SP_RPAREN));
            Value setting(type == SP_SLITERAL
                              ? BuildMissingSetting(TestArena(), missing, left, token, right)
                              : BuildEmptyCellSetting(TestArena(), token));
            list = AddFormatSetting(TestArena(), list, setting);
        }
        Value settings(list);
        Value keyword(WordValue(TB_FORMAT));
        Value format(BuildFormat(keyword, settings));
        EXPECT_EQ(format.Text(), c.expected);
        EXPECT_EQ(assertions.Texts(), Texts{});
    }
}

TEST(TbTrParseBuilderTest, FormatChecksItsSettings) {
    struct Case {
        const char* name;
        std::vector<NodeType> children;
        Texts assertions;
    };
    const std::string child =
        "child->GetNodeType() == SP_SLITERAL || child->GetNodeType() == TB_ZERO || "
        "child->GetNodeType() == TB_BLANK";
    const Case cases[] = {
        {"too many", {SP_SLITERAL, TB_ZERO, SP_SLITERAL}, {"numchildren >=0 && numchildren <= 2"}},
        {"a stranger", {TBI_FMT}, {child}},
        {"both fills", {TB_ZERO, TB_BLANK}, {"nzeros == 0"}},
        {"both fills, blank first", {TB_BLANK, TB_ZERO}, {"nblanks == 0"}},
        {"a fill twice", {TB_BLANK, TB_BLANK}, {"nblanks == 0"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AssertionRecorder assertions;
        NodeOwner node = MakeNode(TestArena(), TB_FORMAT);
        for (const NodeType type : c.children) node->AddChild(MakeNode(TestArena(), type));
        OpaqueValue list;
        OpaqueValue_SetParseNode(list, std::move(node));
        Value settings(list);
        Value keyword(WordValue(TB_FORMAT));
        const Value format(BuildFormat(keyword, settings));
        EXPECT_FALSE(format.IsEmpty());
        EXPECT_EQ(assertions.Texts(), c.assertions);
    }
}

// Operands are written as "a", "+(ab)" or ">(ab)"; children are single letters.
OpaqueValue Operand(std::string_view text) {
    if (text == "STAT") return NodeValue(TB_STATISTICS);
    if (text == "LAB") return NodeValue(TB_LABELS);
    if (text.size() == 1) return VariableValue(std::string(text));
    NodeOwner node = MakeNode(TestArena(), text[0] == '+' ? SP_PLUS : SP_GREATERTHAN);
    for (const char name : text.substr(2, text.size() - 3)) {
        Value child(VariableValue(std::string(1, name)));
        node->AddChild(OpaqueValue_ReleaseParseNode(child));
    }
    OpaqueValue value;
    OpaqueValue_SetParseNode(value, std::move(node));
    return value;
}

TEST(TbTrParseBuilderTest, OperandsOfTheSameOperatorAreDissolved) {
    struct Case {
        const char* name;
        const char* left;
        NodeType operation;
        const char* right;
        const char* expected;
    };
    const Case cases[] = {
        {"two leaves", "a", SP_PLUS, "b", "PLUS(a b)"},
        {"two leaves nested", "a", SP_GREATERTHAN, "b", "GREATERTHAN(a b)"},
        {"markers are leaves", "STAT", SP_PLUS, "LAB", "PLUS(STATISTICS LABELS)"},
        {"same on the left", "+(ab)", SP_PLUS, "c", "PLUS(a b c)"},
        {"same on the right", "a", SP_PLUS, "+(bc)", "PLUS(a b c)"},
        {"same on both, the left longer", "+(abc)", SP_PLUS, "+(de)", "PLUS(a b c d e)"},
        {"same on both, the right longer", "+(ab)", SP_PLUS, "+(cde)", "PLUS(a b c d e)"},
        {"the other on the left", ">(ab)", SP_PLUS, "c", "PLUS(GREATERTHAN(a b) c)"},
        {"the other on the right", "a", SP_PLUS, ">(bc)", "PLUS(a GREATERTHAN(b c))"},
        {"same left, other right", "+(ab)", SP_PLUS, ">(cd)", "PLUS(a b GREATERTHAN(c d))"},
        {"other left, same right", ">(ab)", SP_PLUS, "+(cd)", "PLUS(GREATERTHAN(a b) c d)"},
        {"other on both", "+(ab)", SP_GREATERTHAN, "+(cd)", "GREATERTHAN(PLUS(a b) PLUS(c d))"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AssertionRecorder assertions;
        {
            Value left(Operand(c.left));
            Value operation(WordValue(c.operation));
            Value right(Operand(c.right));
            const Value result(BuildOperation(TestArena(), left, operation, right));
            EXPECT_EQ(result.Text(), c.expected);
            EXPECT_TRUE(left.IsEmpty() && operation.IsEmpty() && right.IsEmpty());
        }
        {
            Value leftParen(WordValue(SP_LPAREN));
            Value left(Operand(c.left));
            Value operation(WordValue(c.operation));
            Value right(Operand(c.right));
            Value rightParen(WordValue(SP_RPAREN));
            const Value result(
                BuildOperation(TestArena(), leftParen, left, operation, right, rightParen));
            EXPECT_EQ(result.Text(), c.expected);
        }
        EXPECT_EQ(assertions.Texts(), Texts{});
    }
}

TEST(TbTrParseBuilderTest, LongChainsMayGrowOnEitherSide) {
    constexpr int kCount = 200'000;
    for (const bool growsLeft : {false, true}) {
        SCOPED_TRACE(growsLeft);
        OpaqueValue chain = VariableValue("a");
        for (int index = 0; index < kCount; ++index) {
            Value longer(chain);
            Value operation(WordValue(SP_PLUS));
            Value leaf(VariableValue("b"));
            chain = growsLeft ? BuildOperation(TestArena(), leaf, operation, longer)
                              : BuildOperation(TestArena(), longer, operation, leaf);
        }
        Value result(chain);
        const NodeOwner node = OpaqueValue_ReleaseParseNode(result);
        ASSERT_EQ(node->GetChildCount(), kCount + 1U);
        const std::size_t first = growsLeft ? kCount : 0;
        EXPECT_EQ(node->GetChild(first)->GetToken()->Text(true), "a");
    }
}

TEST(TbTrParseBuilderTest, MissingAndForeignOperandsAssert) {
    struct Case {
        const char* name;
        NodeType operation;
        bool isLeftThere;
        OpaqueValue right;
        const char* expected;
        Texts assertions;
    };
    const Case cases[] = {
        {"stacking without its right operand",
         SP_PLUS,
         true,
         OpaqueValue{},
         "PLUS(a)",
         {"0 && \"Illegal TABLE STACK subcommand: missing argument\""}},
        {"nesting without its right operand",
         SP_GREATERTHAN,
         true,
         OpaqueValue{},
         "GREATERTHAN(a)",
         {"0 && \"Illegal TABLE NEST subcommand: missing argument\""}},
        {"stacking without its left operand",
         SP_PLUS,
         false,
         Operand("+(bc)"),
         "PLUS(b c)",
         {"0 && \"Illegal TABLE STACK subcommand: missing argument\""}},
        {"an operand that is none",
         SP_PLUS,
         true,
         NodeValue(TBI_FMT),
         "PLUS(a)",
         {"0 && \"illegal left node type for TABLE operation\""}},
        {"no operator",
         SP_BY,
         true,
         VariableValue("b"),
         "empty",
         {"type == SP_PLUS || type == SP_GREATERTHAN"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AssertionRecorder assertions;
        Value left(c.isLeftThere ? VariableValue("a") : OpaqueValue{});
        Value operation(WordValue(c.operation));
        Value right(c.right);
        const Value result(BuildOperation(TestArena(), left, operation, right));
        EXPECT_EQ(result.Text(), c.expected);
        EXPECT_EQ(assertions.Texts(), c.assertions);
    }
}

TEST(TbTrParseBuilderTest, WordsInParentheses) {
    struct Case {
        const char* name;
        NodeType code;
        const char* word;
        const char* expected;
    };
    const Case cases[] = {
        {"statistics", SP_VARNAME, "STATISTICS", "STATISTICS"},
        {"three letters", SP_VARNAME, "STA", "STATISTICS"},
        {"another word that begins so", SP_VARNAME, "STATE", "STATISTICS"},
        {"two letters", SP_VARNAME, "ST", "ST"},
        {"labels", SP_VARNAME, "LAB", "LABELS"},
        {"a variable", SP_VARNAME, "x", "x"},
        {"no variable but statistics", SP_NONVARNAME, "STATISTICS!", "STATISTICS"},
        {"no variable but labels", SP_NONVARNAME, "LABELS!", "LABELS"},
        {"no variable", SP_NONVARNAME, "!x", "empty"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AssertionRecorder assertions;
        Command parsed("TABLES");
        Value left(WordValue(SP_LPAREN));
        Value word(WordValue(c.code, c.word));
        Value right(WordValue(SP_RPAREN));
        Value result;
        const bool built =
            BuildParenthesizedWord(parsed.command, At(1, 1), result, left, word, right);
        EXPECT_EQ(built, !result.IsEmpty());
        EXPECT_EQ(result.Text(), c.expected);
        EXPECT_EQ(parsed.command.FirstReport().kind == TablesErrorKind::kNone, built);
        EXPECT_EQ(assertions.Texts(), Texts{});
    }
}

TEST(TbTrParseBuilderTest, ExpressionsInParentheses) {
    Command parsed("TABLES");
    struct Case {
        const char* name;
        OpaqueValue inner;
        const char* expected;
        TablesErrorKind kind;
    };
    OpaqueValue noVariable;
    OpaqueValue_SetParseNode(noVariable, MakeNode(TestArena(), SP_NONVARNAME));
    const Case cases[] = {
        {"a variable", VariableValue("x"), "x", TablesErrorKind::kNone},
        {"a variable that is spelled so", VariableValue("LABEL"), "LABELS", TablesErrorKind::kNone},
        {"a marker", NodeValue(TB_LABELS), "LABELS", TablesErrorKind::kNone},
        {"an operation", Operand("+(ab)"), "PLUS(a b)", TablesErrorKind::kNone},
        {"a word that is no variable", noVariable, "empty", TablesErrorKind::kParenthesizedWord},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Value left(WordValue(SP_LPAREN));
        Value inner(c.inner);
        Value right(WordValue(SP_RPAREN));
        Value result;
        EXPECT_EQ(
            BuildParenthesizedExpression(parsed.command, At(1, 1), result, left, inner, right),
            c.kind == TablesErrorKind::kNone);
        EXPECT_EQ(result.Text(), c.expected);
        EXPECT_EQ(parsed.command.FirstReport().kind, c.kind);
    }
}

TEST(TbTrParseBuilderTest, TableRecordsWhereItStands) {
    Command parsed("TABLES");
    Value keyword(WordValue(TB_TABLE));
    Value rows(VariableValue("a"));
    Value by(WordValue(SP_BY));
    Value columns(VariableValue("b"));
    const Value table(BuildTable(parsed.command, At(2, 9), keyword, rows, by, columns));
    EXPECT_EQ(table.Text(), "TABLE(a b)");
    ASSERT_EQ(parsed.command.TableLocations().size(), 1U);
    EXPECT_EQ(parsed.command.TableLocations()[0].last_line, 2);
    EXPECT_EQ(parsed.command.TableLocations()[0].last_column, 9);
}

// Each action is given one argument that the grammar cannot deliver. It says so, forgets all
// that it was given and comes out empty.
TEST(TbTrParseBuilderTest, WrongArgumentsAssert) {
    struct Case {
        const char* name;
        std::function<OpaqueValue(TablesCommand&, std::vector<std::unique_ptr<Value>>&)> act;
        std::vector<OpaqueValue> arguments;
        Texts assertions;
    };
    using Arguments = std::vector<std::unique_ptr<Value>>;
    const std::string isKeyword = "OpaqueValue_IsTAVQToken(keyword)";
    const std::string isList = "OpaqueValue_IsParseNode(list)";
    const std::string isGenericList = "OpaqueValue_GetParseNodeType(list) == TBI_GENERICLIST";
    const std::string isVarList = "OpaqueValue_GetParseNodeType(list) == TBI_VARLIST";
    const std::string isVarname = "OpaqueValue_CheckTAVQToken(varname, SP_VARNAME, 0, 0)";
    const std::string isLiteral = "OpaqueValue_CheckTAVQToken(literal, SP_SLITERAL, 0, 0)";
    const std::string isLeftParen = "OpaqueValue_CheckTAVQToken(leftParen, SP_LPAREN, 0, 0)";
    const std::string isRightParen = "OpaqueValue_CheckTAVQToken(rightParen, SP_RPAREN, 0, 0)";
    const std::string isName =
        "OpaqueValue_CheckTAVQToken(functionName, SP_VARNAME, SP_NONVARNAME, 0)";
    const Case cases[] = {
        {"root with a token for its global list",
         [](TablesCommand& command, Arguments& a) { return BuildCommand(command, *a[0], *a[1]); },
         {WordValue(SP_VARNAME), NodeValue(TBI_GENERICLIST)},
         {isList}},
        {"root with a wrong list",
         [](TablesCommand& command, Arguments& a) { return BuildCommand(command, *a[0], *a[1]); },
         {NodeValue(TBI_GENERICLIST), NodeValue(TBI_VARLIST)},
         {isGenericList}},
        {"group without a table",
         [](TablesCommand&, Arguments& a) { return BuildTableGroup(TestArena(), *a[0], *a[1]); },
         {NodeValue(TB_SORT), NodeValue(TBI_GENERICLIST)},
         {"OpaqueValue_CheckParseNode(table, TB_TABLE, 0, 0)"}},
        {"AUTOLABEL of a node",
         [](TablesCommand&, Arguments& a) { return BuildAutolabel(TestArena(), *a[0]); },
         {NodeValue(TB_TABLE)},
         {isKeyword}},
        {"AUTOLABEL with a wrong setting",
         [](TablesCommand&, Arguments& a) { return BuildAutolabel(TestArena(), *a[0], *a[1]); },
         {WordValue(TB_AUTOLABEL), WordValue(SP_ALL)},
         {"tokenType == TB_DEFAULT || tokenType == TB_ON || tokenType == TB_OFF"}},
        {"AUTOLABEL with a node as setting",
         [](TablesCommand&, Arguments& a) { return BuildAutolabel(TestArena(), *a[0], *a[1]); },
         {WordValue(TB_AUTOLABEL), NodeValue(TB_ON)},
         {"OpaqueValue_IsTAVQToken(settingKeyword)"}},
        {"BASE with a wrong setting",
         [](TablesCommand&, Arguments& a) { return BuildBase(TestArena(), *a[0], *a[1]); },
         {WordValue(TB_BASE), WordValue(TB_ON)},
         {"tokenType == TB_ANSWERING || tokenType == TB_QUALIFIED || tokenType == SP_ALL"}},
        {"GBASE with a wrong setting",
         [](TablesCommand&, Arguments& a) { return BuildGbase(TestArena(), *a[0], *a[1]); },
         {WordValue(TB_GBASE), WordValue(TB_ON)},
         {"nodeType == TB_CASES || nodeType == TB_RESPONSES"}},
        {"MISSING with a wrong setting",
         [](TablesCommand&, Arguments& a) { return BuildMissing(TestArena(), *a[0], *a[1]); },
         {WordValue(TB_MISSINGSUBCOM), WordValue(TB_ON)},
         {"tokenType == TB_EXCLUDE || tokenType == TB_INCLUDE"}},
        {"FORMAT of another node",
         [](TablesCommand&, Arguments& a) { return BuildFormat(*a[0], *a[1]); },
         {WordValue(TB_FORMAT), NodeValue(TB_SORT)},
         {"parseNode->GetNodeType() == TB_FORMAT"}},
        {"FORMAT of a token",
         [](TablesCommand&, Arguments& a) { return BuildFormat(*a[0], *a[1]); },
         {WordValue(TB_FORMAT), WordValue(TB_ZERO)},
         {"OpaqueValue_IsParseNode(formatSettingList)"}},
        {"a fill that is none",
         [](TablesCommand&, Arguments& a) { return BuildEmptyCellSetting(TestArena(), *a[0]); },
         {WordValue(TB_ON)},
         {"tokenType == TB_BLANK || tokenType == TB_ZERO"}},
        {"a missing value that is no literal",
         [](TablesCommand&, Arguments& a) {
             return BuildMissingSetting(TestArena(), *a[0], *a[1], *a[2], *a[3]);
         },
         {WordValue(TB_MISSING), WordValue(SP_LPAREN), Number(5), WordValue(SP_RPAREN)},
         {isLiteral}},
        {"parentheses that are none",
         [](TablesCommand&, Arguments& a) {
             return BuildMissingSetting(TestArena(), *a[0], *a[1], *a[2], *a[3]);
         },
         {WordValue(TB_MISSING), WordValue(SP_BY), LiteralValue("x"), WordValue(SP_BY)},
         {isLeftParen, isRightParen}},
        {"texts without a list",
         [](TablesCommand&, Arguments& a) { return BuildTexts(TB_TITLE, *a[0], *a[1]); },
         {WordValue(TB_TITLE), OpaqueValue{}},
         {isList}},
        {"totals in a wrong list",
         [](TablesCommand&, Arguments& a) { return BuildTotals(TB_FTOTAL, *a[0], *a[1]); },
         {WordValue(TB_FTOTAL), NodeValue(TBI_GENERICLIST)},
         {isVarList}},
        {"a variable that is none",
         [](TablesCommand&, Arguments& a) { return BuildVariable(TestArena(), *a[0]); },
         {WordValue(SP_NONVARNAME)},
         {isVarname}},
        {"a range without TO",
         [](TablesCommand&, Arguments& a) {
             return BuildVariableRange(TestArena(), *a[0], *a[1], *a[2]);
         },
         {WordValue(SP_VARNAME), WordValue(SP_BY), WordValue(SP_VARNAME)},
         {"OpaqueValue_CheckTAVQToken(to, SP_TO, 0, 0)"}},
        {"a set without a name",
         [](TablesCommand&, Arguments& a) {
             return BuildMrGroup(TestArena(), *a[0], *a[1], *a[2]);
         },
         {WordValue(TB_MRGROUP), LiteralValue("x"), NodeValue(TBI_VARLIST)},
         {isVarname}},
        {"a counted value that is a word",
         [](TablesCommand&, Arguments& a) {
             return BuildMdGroup(TestArena(), *a[0], *a[1], *a[2], *a[3], *a[4], *a[5]);
         },
         {WordValue(TB_MDGROUP), WordValue(SP_VARNAME), NodeValue(TBI_VARLIST),
          WordValue(SP_LPAREN), WordValue(SP_VARNAME), WordValue(SP_RPAREN)},
         {"OpaqueValue_CheckTAVQToken(countedValue, SP_SLITERAL, SP_NUMBER, 0)"}},
        {"SORT of another list",
         [](TablesCommand&, Arguments& a) { return BuildSort(*a[0], *a[1]); },
         {WordValue(TB_SORT), NodeValue(TB_STATISTICS)},
         {"OpaqueValue_CheckParseNode(list, TB_SORT, 0, 0)"}},
        {"a sort function that is none",
         [](TablesCommand&, Arguments& a) {
             return BuildSortVariable(TestArena(), *a[0], *a[1], *a[2], *a[3]);
         },
         {WordValue(SP_VARNAME), WordValue(SP_LPAREN), NodeValue(TBI_STATFUNCTION),
          WordValue(SP_RPAREN)},
         {"OpaqueValue_CheckParseNode(sortFunction, TBI_SORTFUNCTION, 0, 0)"}},
        {"a function named by a number",
         [](TablesCommand&, Arguments& a) { return BuildSortFunction(TestArena(), *a[0]); },
         {Number(5)},
         {isName}},
        {"STATISTICS of another list",
         [](TablesCommand&, Arguments& a) { return BuildStatistics(*a[0], *a[1]); },
         {WordValue(TB_STATISTICS), NodeValue(TB_SORT)},
         {"OpaqueValue_CheckParseNode(list, TB_STATISTICS, 0, 0)"}},
        {"unweighted nothing",
         [](TablesCommand&, Arguments& a) { return BuildUnweighted(TestArena(), *a[0], *a[1]); },
         {WordValue(TB_UNWEIGHTED), NodeValue(TBI_STATFUNCTION)},
         {"OpaqueValue_CheckParseNode(statFuncSpec, TBI_FULLSTATFUNCTION, 0, 0)"}},
        {"a full function of another node",
         [](TablesCommand&, Arguments& a) { return BuildFullStatFunction(TestArena(), *a[0]); },
         {NodeValue(TBI_SORTFUNCTION)},
         {"OpaqueValue_CheckParseNode(statFunc, TBI_STATFUNCTION, 0, 0)"}},
        {"a function's number that is a literal",
         [](TablesCommand&, Arguments& a) { return BuildStatFunction(TestArena(), *a[0], *a[1]); },
         {WordValue(SP_VARNAME), LiteralValue("x")},
         {"OpaqueValue_CheckTAVQToken(number, SP_NUMBER, 0, 0)"}},
        {"a display without a format",
         [](TablesCommand&, Arguments& a) {
             return BuildStatDisplay(TestArena(), *a[0], *a[1], *a[2]);
         },
         {WordValue(SP_LPAREN), NodeValue(TBI_VARLIST), WordValue(SP_RPAREN)},
         {"OpaqueValue_CheckParseNode(statFormat, TBI_FMT, 0, 0)"}},
        {"a format that is a number",
         [](TablesCommand&, Arguments& a) { return BuildStatFormat(TestArena(), *a[0]); },
         {Number(5)},
         {"OpaqueValue_CheckTAVQToken(formatWord, SP_VARNAME, SP_NONVARNAME, 0)"}},
        {"an argument's display that is none",
         [](TablesCommand&, Arguments& a) { return BuildStatArgument(TestArena(), *a[0], *a[1]); },
         {WordValue(SP_VARNAME), NodeValue(TBI_FMT)},
         {"OpaqueValue_CheckParseNode(statDisplaySpec, TBI_STATFUNCARG, 0, 0)"}},
        {"a list element that is a token",
         [](TablesCommand&, Arguments& a) {
             return AddToList(TestArena(), TBI_VARLIST, *a[0], *a[1]);
         },
         {NodeValue(TBI_VARLIST), WordValue(SP_VARNAME)},
         {"OpaqueValue_IsEmpty(element) || OpaqueValue_IsParseNode(element)"}},
        {"a list of another type",
         [](TablesCommand&, Arguments& a) {
             return AddToList(TestArena(), TBI_VARLIST, *a[0], *a[1]);
         },
         {NodeValue(TBI_GENERICLIST), NodeValue(TBI_FMT)},
         {isVarList}},
        {"a list of a type that has none",
         [](TablesCommand&, Arguments& a) {
             return AddToList(TestArena(), TB_TABLE, *a[0], *a[1]);
         },
         {NodeValue(TB_TABLE), NodeValue(TBI_FMT)},
         {"0 && \"illegal list node type\""}},
        {"a table without rows",
         [](TablesCommand& command, Arguments& a) {
             return BuildTable(command, At(1, 1), *a[0], *a[1]);
         },
         {WordValue(TB_TABLE), OpaqueValue{}},
         {"0 && \"Illegal TABLE subcommand: no arguments\""}},
        {"a table with columns alone",
         [](TablesCommand& command, Arguments& a) {
             return BuildTable(command, At(1, 1), *a[0], *a[1], *a[2], *a[3]);
         },
         {WordValue(TB_TABLE), OpaqueValue{}, WordValue(SP_BY), VariableValue("a")},
         {"OpaqueValue_IsEmpty(tableExpressionColumns)",
          "0 && \"Illegal TABLE subcommand: no arguments\""}},
        {"a table with layers but no columns",
         [](TablesCommand& command, Arguments& a) {
             return BuildTable(command, At(1, 1), *a[0], *a[1], *a[2], *a[3], *a[4], *a[5]);
         },
         {WordValue(TB_TABLE), VariableValue("a"), WordValue(SP_BY), OpaqueValue{},
          WordValue(SP_BY), VariableValue("b")},
         {"OpaqueValue_IsEmpty(tableExpressionLayers)"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AssertionRecorder assertions;
        Command parsed("TABLES");
        Arguments arguments;
        for (const OpaqueValue& argument : c.arguments) {
            arguments.push_back(std::make_unique<Value>(argument));
        }
        const Value result(c.act(parsed.command, arguments));
        EXPECT_EQ(result.Text(), "empty");
        EXPECT_EQ(assertions.Texts(), c.assertions);
        for (const std::unique_ptr<Value>& argument : arguments) {
            EXPECT_TRUE(argument->IsEmpty());
        }
        EXPECT_TRUE(parsed.command.TableLocations().empty());
    }
}

TEST(TbTrParseBuilderTest, TakenSlotsAssert) {
    AssertionRecorder assertions;
    const auto withChild = [](NodeType type, NodeType childType) {
        OpaqueValue value = NodeValue(type);
        value.pParseNode->AddChild(MakeNode(TestArena(), childType));
        return value;
    };
    {
        Value unweighted(WordValue(TB_UNWEIGHTED));
        Value function(withChild(TBI_FULLSTATFUNCTION, TB_UNWEIGHTED));
        const Value result(BuildUnweighted(TestArena(), unweighted, function));
        EXPECT_EQ(result.Text(), "FULLSTATFUNCTION(UNWEIGHTED)");
    }
    {
        Value keyword(WordValue(TB_SORT));
        Value direction(WordValue(TB_ASCENDING));
        Value keys(withChild(TB_SORT, TB_DESCENDING));
        const Value result(BuildSort(TestArena(), keyword, direction, keys));
        EXPECT_EQ(result.Text(), "SORT(ASCENDING)");
    }
    {
        Value keyword(WordValue(TB_SORT));
        Value direction(WordValue(TB_ASCENDING));
        Value keys(NodeValue(TB_SORT));
        const Value result(BuildSort(TestArena(), keyword, direction, keys));
        EXPECT_EQ(result.Text(), "SORT(ASCENDING)");
    }
    {
        Value keyword(WordValue(TB_SORT));
        Value direction(WordValue(TB_ON));
        Value keys(withChild(TB_SORT, TBI_FMT));
        const Value result(BuildSort(TestArena(), keyword, direction, keys));
        EXPECT_EQ(result.Text(), "SORT(FMT)");
    }
    {
        Value varname(WordValue(SP_VARNAME, "a"));
        Value display(withChild(TBI_STATFUNCARG, SP_VARNAME));
        const Value result(BuildStatArgument(TestArena(), varname, display));
        EXPECT_EQ(result.Text(), "STATFUNCARG(a)");
    }
    {
        Value varname(WordValue(SP_VARNAME, "a"));
        Value display(NodeValue(TBI_STATFUNCARG));
        const Value result(BuildStatArgument(TestArena(), varname, display));
        EXPECT_EQ(result.Text(), "STATFUNCARG(a)");
    }
    EXPECT_EQ(
        assertions.Texts(),
        (Texts{"pOldChild == 0", "pExistingChild == 0",
               "tbTokenType == TB_ASCENDING || tbTokenType == TB_DESCENDING", "pOldChild == 0"}));
}

TEST(TbTrParseBuilderTest, AFunctionStaysWithoutAWrongList) {
    AssertionRecorder assertions;
    {
        Value function(NodeValue(TBI_STATFUNCTION));
        Value left(WordValue(SP_LPAREN));
        Value arguments(NodeValue(TBI_VARLIST));
        Value right(WordValue(SP_RPAREN));
        const Value result(BuildFullStatFunction(TestArena(), function, left, arguments, right));
        EXPECT_EQ(result.Text(), "FULLSTATFUNCTION(STATFUNCTION)");
    }
    {
        Value function(NodeValue(TBI_STATFUNCTION));
        Value left(WordValue(SP_LPAREN));
        Value arguments(NodeValue(TBI_GENERICLIST));
        Value colon(WordValue(SP_COLON));
        Value bases(NodeValue(TBI_GENERICLIST));
        Value right(WordValue(SP_RPAREN));
        const Value result(
            BuildFullStatFunction(TestArena(), function, left, arguments, colon, bases, right));
        EXPECT_EQ(result.Text(), "FULLSTATFUNCTION(STATFUNCTION)");
        EXPECT_TRUE(bases.IsEmpty());
    }
    EXPECT_EQ(assertions.Texts(), (Texts{"OpaqueValue_GetParseNodeType(list) == TBI_GENERICLIST",
                                         "OpaqueValue_GetParseNodeType(list) == TBI_VARLIST"}));
}

TEST(TbTrParseBuilderTest, ObservationChecksItsVariables) {
    AssertionRecorder assertions;
    Command parsed("TABLES");
    Value keyword(WordValue(TB_OBSERVATION));
    Value element(NodeValue(TBI_FMT));
    Value list(StartList(TestArena(), TBI_VARLIST, element));
    Value result;
    EXPECT_TRUE(BuildObservation(parsed.command, At(1, 1), result, keyword, list));
    EXPECT_EQ(result.Text(), "OBSERVATION(VARLIST(FMT))");
    EXPECT_EQ(assertions.Texts(),
              Texts{"childNodeType == TBI_VARRANGE || childNodeType == SP_VARNAME"});
}

TEST(TbTrParseBuilderTest, ObservationNeedsKeywordAndList) {
    struct Case {
        OpaqueValue keyword;
        OpaqueValue list;
        std::string assertion;
    };
    const Case cases[] = {
        {NodeValue(TB_OBSERVATION), NodeValue(TBI_VARLIST), "OpaqueValue_IsTAVQToken(keyword)"},
        {WordValue(TB_OBSERVATION), NodeValue(TBI_GENERICLIST),
         "OpaqueValue_GetParseNodeType(list) == TBI_VARLIST"},
    };
    for (const Case& c : cases) {
        AssertionRecorder assertions;
        Command parsed("TABLES");
        Value keyword(c.keyword);
        Value list(c.list);
        Value result;
        EXPECT_FALSE(BuildObservation(parsed.command, At(1, 1), result, keyword, list));
        EXPECT_TRUE(result.IsEmpty() && keyword.IsEmpty() && list.IsEmpty());
        EXPECT_EQ(assertions.Texts(), Texts{c.assertion});
    }
}

TEST(TbTrParseBuilderTest, AWordInParenthesesMustBeOne) {
    AssertionRecorder assertions;
    Command parsed("TABLES");
    Value left(WordValue(SP_LPAREN));
    Value word(Number(5));
    Value right(WordValue(SP_RPAREN));
    Value result;
    EXPECT_FALSE(BuildParenthesizedWord(parsed.command, At(1, 1), result, left, word, right));
    EXPECT_EQ(assertions.Texts(), Texts{"type == SP_VARNAME || type == SP_NONVARNAME"});
    EXPECT_EQ(parsed.command.FirstReport().kind, TablesErrorKind::kNone);
}

}  // namespace
}  // namespace quillet
