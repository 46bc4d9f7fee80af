#include "parser/tbtrtablescommand.h"

#include <gtest/gtest.h>

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
using tablesparsing::SourceOf;
using tablesparsing::TypeName;
using Texts = std::vector<std::string>;

// The codes of the rest of a command, slashes as "/".
std::string CodesOf(TablesCommand& command) {
    std::string codes;
    for (TablesToken next = command.NextToken(); next.code != kNoNodeType;
         next = command.NextToken()) {
        EXPECT_TRUE(next.HasToken());
        codes += codes.empty() ? "" : " ";
        codes += next.code == SP_SLASH ? "/" : TypeName(next.code);
    }
    return codes;
}

// The source texts of the same.
std::string TokensOf(TablesCommand& command) {
    std::string texts;
    for (TablesToken next = command.NextToken(); next.code != kNoNodeType;
         next = command.NextToken()) {
        texts += (texts.empty() ? "" : " ") + SourceOf(next.token);
    }
    return texts;
}

struct CodeCase {
    const char* name;
    const char* text;  // what follows the word TABLES
    const char* codes;
};

void CheckCodes(const CodeCase& c) {
    SCOPED_TRACE(c.name);
    AssertionRecorder assertions;
    Command parsed(std::string("TABLES ") + c.text);
    EXPECT_EQ(CodesOf(parsed.command), c.codes);
    // The end stays the end.
    const TablesToken end = parsed.command.NextToken();
    EXPECT_EQ(end.code, kNoNodeType);
    EXPECT_FALSE(end.HasToken());
    EXPECT_EQ(assertions.Texts(), Texts{});
}

TEST(TablesCommandTest, CodesOfTokens) {
    const CodeCase cases[] = {
        {"nothing", "", ""},
        {"a slash alone", "/", "/"},
        {"empty subcommands", "// /", "/ / /"},
        {"operators", "/x > + / ( ) : ~ < >= <> * ** . _ ? % | & [ ] { } &* *>",
         "/ UNKNOWNSUBCOM ANYSUBCOMTOKEN ANYSUBCOMTOKEN / LPAREN RPAREN COLON OTHEROP OTHEROP "
         "OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP "
         "OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP"},
        {"words with an operator kind", "/TABLE GT TO BY ALL LT EQ LE GE NE NOT AND OR WITH",
         "/ TABLE GREATERTHAN TO BY ALL OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP OTHEROP "
         "OTHEROP OTHEROP"},
        {"numbers and literals", "/TABLE 5 .5 1e3 'x' \"y\"",
         "/ TABLE NUMBER NUMBER NUMBER SLITERAL SLITERAL"},
        {"names that no variable can have", "/TABLE !mean a #b $c @d",
         "/ TABLE NONVARNAME VARNAME VARNAME VARNAME VARNAME"},
        {"an implicit slash", "TABLE a", "/ TABLE VARNAME"},
        {"an implicit slash before a number", "5", "/ NUMBER"},
        {"equals signs and commas are not there",
         "=/=TABLE=a BY,b = / = TITLE = 'x' =", "/ TABLE VARNAME BY VARNAME / TITLE SLITERAL"},
        {"an equals sign before the first word", "= TABLE a", "/ TABLE VARNAME"},
        {"the word EQ is there", "/TABLE EQ a", "/ TABLE OTHEROP VARNAME"},
        {"lower case", "/table a by b", "/ TABLE VARNAME BY VARNAME"},
        {"a slash inside parentheses ends the subcommand", "/STATISTICS MEAN( /STATISTICS U",
         "/ STATISTICS VARNAME LPAREN / STATISTICS UNWEIGHTED"},
    };
    for (const CodeCase& c : cases) CheckCodes(c);
}

TEST(TablesCommandTest, SubcommandWords) {
    const CodeCase cases[] = {
        {"all of them, first half",
         "/AUTOLABEL/BASE/BOXCHARS/CAPTION/CONTINUED/CORNER/FONTCHARS/FOOTNOTE/FORMAT/FTOTAL/"
         "GBASE/INDEX/MDGROUP",
         "/ AUTOLABEL / BASE / BOXCHARS / CAPTION / CONTINUED / CORNER / FONTCHARS / FOOTNOTE / "
         "FORMAT / FTOTAL / GBASE / INDEX / MDGROUP"},
        {"second half",
         "/MRGROUP/OBSERVATION/PFOOTNOTE/PTITLE/PTOTAL/SORT/STATISTICS/TABLE/TFOOTNOTE/TITLE/"
         "WRITE",
         "/ MRGROUP / OBSERVATION / PFOOTNOTE / PTITLE / PTOTAL / SORT / STATISTICS / TABLE / "
         "TFOOTNOTE / TITLE / WRITE"},
        {"MISSING has a code of its own", "/MISSING=INCLUDE", "/ MISSINGSUBCOM INCLUDE"},
        {"three letters decide", "/AUT/BASIC/FTOXYZ/TABULATE",
         "/ AUTOLABEL / BASE / FTOTAL / TABLE"},
        {"two letters do not", "/TA x/FO y",
         "/ UNKNOWNSUBCOM ANYSUBCOMTOKEN / UNKNOWNSUBCOM "
         "ANYSUBCOMTOKEN"},
        {"a keyword of two letters matches itself alone", "/ON/ONE x/OFF",
         "/ ON / UNKNOWNSUBCOM "
         "ANYSUBCOMTOKEN / OFF"},
        {"a keyword of one letter as well", "/U/UN x/UNW",
         "/ UNWEIGHTED / UNKNOWNSUBCOM "
         "ANYSUBCOMTOKEN / UNWEIGHTED"},
        {"settings keep their codes",
         "/DEFAULT/ANSWERING/QUALIFIED/CASES/RESPONSES/EXCLUDE/INCLUDE/BLANK/ZERO/ASCENDING/"
         "DESCENDING/LABELS",
         "/ DEFAULT / ANSWERING / QUALIFIED / CASES / RESPONSES / EXCLUDE / INCLUDE / BLANK / "
         "ZERO / ASCENDING / DESCENDING / LABELS"},
        {"ALL by its operator kind, ALLX by its letters", "/ALL/ALLX", "/ ALL / ALL"},
        {"FOO is FOOTNOTE", "/FOO x", "/ FOOTNOTE ANYSUBCOMTOKEN"},
        {"no keyword", "/XYZ x", "/ UNKNOWNSUBCOM ANYSUBCOMTOKEN"},
        {"a literal is no word", "/'TABLE' a", "/ SLITERAL VARNAME"},
        {"an operator word", "/BY a", "/ BY VARNAME"},
    };
    for (const CodeCase& c : cases) CheckCodes(c);
}

TEST(TablesCommandTest, KeywordsInsideSubcommands) {
    const CodeCase cases[] = {
        {"settings subcommands know every keyword",
         "/AUTOLABEL ON TABLE BREAK x/BASE ANSWERING ALL x/GBASE CASES U x/"
         "MISSING EXCLUDE MISSING x/FORMAT ZERO MISSING x",
         "/ AUTOLABEL ON TABLE BREAK VARNAME / BASE ANSWERING ALL VARNAME / GBASE CASES "
         "UNWEIGHTED VARNAME / MISSINGSUBCOM EXCLUDE MISSING VARNAME / FORMAT ZERO MISSING "
         "VARNAME"},
        {"FORMAT MISSING", "/FORMAT MISSING('-')", "/ FORMAT MISSING LPAREN SLITERAL RPAREN"},
        {"SORT knows its directions right after the word",
         "/SORT ASCENDING x ASCENDING/SORT DES x/SORT x ASCENDING/SORT ON",
         "/ SORT ASCENDING VARNAME VARNAME / SORT DESCENDING VARNAME / SORT VARNAME VARNAME / "
         "SORT VARNAME"},
        {"an equals sign takes no position", "/SORT = ASCENDING x", "/ SORT ASCENDING VARNAME"},
        {"STATISTICS knows UNWEIGHTED outside parentheses",
         "/STATISTICS U MEAN(U UNW) UNWEIGHTED ) U ( U ON",
         "/ STATISTICS UNWEIGHTED VARNAME LPAREN VARNAME VARNAME RPAREN UNWEIGHTED RPAREN "
         "VARNAME LPAREN UNWEIGHTED VARNAME"},
        {"elsewhere keywords are names",
         "/TABLE ZERO BY STATISTICS U LABELS/TITLE ON/"
         "OBSERVATION TABLE BREAK",
         "/ TABLE VARNAME BY VARNAME VARNAME VARNAME / TITLE VARNAME / OBSERVATION VARNAME "
         "VARNAME"},
        {"ALL is a name nowhere", "/TABLE ALL /SORT ALL", "/ TABLE ALL / SORT ALL"},
        {"a literal is no keyword", "/AUTOLABEL 'ON'", "/ AUTOLABEL SLITERAL"},
        {"obsolete subcommands are swallowed", "/BOXCHARS a b",
         "/ BOXCHARS ANYSUBCOMTOKEN "
         "ANYSUBCOMTOKEN"},
        {"whatever they hold", "/WRITE ( 5 'x' ALL - : BREAK TABLE /ON",
         "/ WRITE ANYSUBCOMTOKEN ANYSUBCOMTOKEN ANYSUBCOMTOKEN ANYSUBCOMTOKEN ANYSUBCOMTOKEN "
         "ANYSUBCOMTOKEN ANYSUBCOMTOKEN ANYSUBCOMTOKEN / ON"},
        {"a parenthesis left open does not reach the next subcommand", "/TABLE ((a /STATISTICS U",
         "/ TABLE LPAREN LPAREN VARNAME / STATISTICS UNWEIGHTED"},
    };
    for (const CodeCase& c : cases) CheckCodes(c);
}

TEST(TablesCommandTest, ALongWordIsNoVariable) {
    const std::string longest(64, 'x');
    Command parsed("TABLES /TABLE " + longest + " " + longest + "y");
    EXPECT_EQ(CodesOf(parsed.command), "/ TABLE VARNAME NONVARNAME");
}

TEST(TablesCommandTest, SignsMergeWithTheNumberAfterThem) {
    struct Case {
        const char* name;
        const char* text;
        const char* codes;
        const char* tokens;
    };
    const Case cases[] = {
        {"minus", "/STATISTICS P -5", "/ STATISTICS VARNAME NUMBER", "/ STATISTICS P -5"},
        {"plus", "/TABLE a +5", "/ TABLE VARNAME NUMBER", "/ TABLE a +5"},
        {"a blank between", "/TABLE - 5", "/ TABLE NUMBER", "/ TABLE -5"},
        {"plus before a name", "/TABLE + a", "/ TABLE PLUS VARNAME", "/ TABLE + a"},
        {"minus before a name", "/TABLE - a", "/ TABLE OTHEROP VARNAME", "/ TABLE - a"},
        {"two signs", "/TABLE + - 5", "/ TABLE PLUS NUMBER", "/ TABLE + -5"},
        {"an equals sign separates", "/TABLE - = 5", "/ TABLE OTHEROP NUMBER", "/ TABLE - 5"},
        {"at the end", "/TABLE -", "/ TABLE OTHEROP", "/ TABLE -"},
        {"plus at the end", "/TABLE +", "/ TABLE PLUS", "/ TABLE +"},
        {"before a slash", "/TABLE -/5", "/ TABLE OTHEROP / NUMBER", "/ TABLE - / 5"},
        {"as a subcommand", "/-5 a", "/ NUMBER VARNAME", "/ -5 a"},
        {"inside an ignored subcommand", "/XYZ -5 -a",
         "/ UNKNOWNSUBCOM ANYSUBCOMTOKEN "
         "ANYSUBCOMTOKEN ANYSUBCOMTOKEN",
         "/ XYZ -5 - a"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Command forCodes(std::string("TABLES ") + c.text);
        EXPECT_EQ(CodesOf(forCodes.command), c.codes);
        Command forTokens(std::string("TABLES ") + c.text);
        EXPECT_EQ(TokensOf(forTokens.command), c.tokens);
    }
}

TEST(TablesCommandTest, AMergedNumberHasTheSignsPositionAndValue) {
    Command parsed("TABLES /TABLE\n  -\n  5 + 2.5");
    for (int skipped = 0; skipped < 2; ++skipped) {
        EXPECT_TRUE(parsed.command.NextToken().HasToken());
    }
    const TablesToken minus = parsed.command.NextToken();
    ASSERT_EQ(minus.code, SP_NUMBER);
    EXPECT_EQ(minus.token.NumberValue(), -5.0);
    EXPECT_EQ(minus.line, 2);
    EXPECT_EQ(minus.column, 2);
    const TablesToken plus = parsed.command.NextToken();
    ASSERT_EQ(plus.code, SP_NUMBER);
    EXPECT_EQ(plus.token.NumberValue(), 2.5);
    EXPECT_EQ(plus.token.Text(true), "+2.5");
}

TEST(TablesCommandTest, BreakIsReplayedInEveryTable) {
    struct Case {
        const char* name;
        const char* text;
        const char* tokens;
    };
    const Case cases[] = {
        {"before", "/BREAK r /TABLE a", "/ TABLE a r"},
        {"first without a slash", "BREAK r /TABLE a", "/ TABLE a r"},
        {"abbreviated", "/bre r /TABLE a", "/ TABLE a r"},
        {"several tables", "/BREAK r s /TABLE a /TITLE 'x' /TABLE b",
         "/ TABLE a r s / TITLE 'x' "
         "/ TABLE b r s"},
        {"right after a table it serves that table", "/TABLE a /BREAK r /TABLE b",
         "/ TABLE a r / TABLE b r"},
        {"after the last table", "/TABLE a /BREAK r", "/ TABLE a r"},
        {"after another subcommand it serves the later tables alone",
         "/TABLE a /TITLE 'x' /BREAK r /TABLE b", "/ TABLE a / TITLE 'x' / TABLE b r"},
        {"of several in a row the last counts", "/BREAK r /BREAK s /TABLE a", "/ TABLE a s"},
        {"several in a row without the first slash", "BREAK r /BREAK s /TABLE a", "/ TABLE a s"},
        {"a later one takes over", "/BREAK r /TABLE a /BREAK s /TABLE b",
         "/ TABLE a s / TABLE b "
         "s"},
        {"an empty one changes nothing", "/BREAK r /BREAK /TABLE a", "/ TABLE a r"},
        {"nor at the end", "/BREAK r /TABLE a /BREAK", "/ TABLE a r"},
        {"an empty one alone", "/BREAK /TABLE a", "/ TABLE a"},
        {"an empty one and nothing else", "/BREAK", ""},
        {"an empty one without a slash", "BREAK", ""},
        {"nothing else", "/BREAK r", ""},
        {"equals signs around it", "/=BREAK=r=/=TABLE a", "/ TABLE a r"},
        {"an equals sign is no content", "/BREAK r /BREAK = /TABLE a", "/ TABLE a r"},
        {"an empty subcommand does not replay", "/BREAK r /TABLE a // /TITLE 'x'",
         "/ TABLE a r / / / TITLE 'x'"},
        {"up to a slash after the table", "/BREAK r /TABLE a /", "/ TABLE a r /"},
        {"not after other subcommands", "/BREAK r /TITLE 'x' /SORT a", "/ TITLE 'x' / SORT a"},
        {"a word inside a subcommand is none", "/TABLE BREAK r /TABLE a",
         "/ TABLE BREAK r / "
         "TABLE a"},
        {"nor a literal", "/'BREAK' r /TABLE a", "/ 'BREAK' r / TABLE a"},
        {"nor a table inside another subcommand", "/BREAK r /AUTOLABEL TABLE a /TITLE 'x'",
         "/ AUTOLABEL TABLE a / TITLE 'x'"},
        {"a sign at its end does not merge across", "/BREAK - /TABLE a /TABLE 5",
         "/ TABLE a - / TABLE 5 -"},
        {"a sign before it does not merge with it", "/BREAK 5 /TABLE a - ", "/ TABLE a - 5"},
        {"slashes end it for each table", "/BREAK r s /TABLE a", "/ TABLE a r s"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AssertionRecorder assertions;
        Command parsed(std::string("TABLES ") + c.text);
        EXPECT_EQ(TokensOf(parsed.command), c.tokens);
        EXPECT_EQ(parsed.command.NextToken().code, kNoNodeType);
        EXPECT_EQ(parsed.command.NextToken().code, kNoNodeType);
        EXPECT_EQ(assertions.Texts(), Texts{});
    }
}

TEST(TablesCommandTest, ReplayedTokensAreThoseOfATable) {
    const CodeCase cases[] = {
        {"keywords are names", "/BREAK ON U ASCENDING /TABLE a",
         "/ TABLE VARNAME VARNAME VARNAME VARNAME"},
        {"parentheses close what the table opened", "/BREAK b) /TABLE (a",
         "/ TABLE LPAREN VARNAME VARNAME RPAREN"},
    };
    for (const CodeCase& c : cases) CheckCodes(c);
}

TEST(TablesCommandTest, TheSequenceMayStandAnywhere) {
    for (const int index : {0, 1, 3, 5}) {
        SCOPED_TRACE(index);
        Command parsed("TABLES /TABLE a b");
        parsed.sequence.SetNextIndex(index);
        parsed.sequence.Next();
        EXPECT_EQ(TokensOf(parsed.command), "/ TABLE a b");
    }
}

TEST(TablesCommandTest, SkippingGoesOnAtTheNextSlash) {
    struct Case {
        const char* name;
        const char* text;
        int tokensBefore;
        const char* tokensAfter;
    };
    const Case cases[] = {
        {"inside a subcommand", "/FORMAT x y z /TABLE a", 3, "/ TABLE a"},
        {"the token read last is the last of its subcommand", "/FORMAT x /TABLE a", 3, "/ TABLE a"},
        {"after a sign that looked ahead", "/FORMAT - x /TABLE a", 3, "/ TABLE a"},
        {"after a sign before a slash", "/FORMAT - /TABLE a", 3, "/ TABLE a"},
        {"to the end", "/FORMAT x y z", 3, ""},
        {"at the end", "/FORMAT x", 4, ""},
        {"a break after it is taken out", "/FORMAT x /BREAK r /TABLE a", 3, "/ TABLE a r"},
        {"a table that is passed over is not served", "/BREAK r /TABLE a b /TABLE c", 3,
         "/ TABLE c r"},
        {"nor is one that breaks off while it is served", "/BREAK r s /TABLE a /TABLE c", 4,
         "/ TABLE c r s"},
        {"the slash itself was read last", "/FORMAT x /TABLE a /SORT b", 4, "/ SORT b"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Command parsed(std::string("TABLES ") + c.text);
        for (int index = 0; index < c.tokensBefore; ++index) {
            static_cast<void>(parsed.command.NextToken());
        }
        parsed.command.SkipToNextSlash();
        EXPECT_EQ(TokensOf(parsed.command), c.tokensAfter);
    }
}

TEST(TablesCommandTest, NamesOfCodes) {
    struct Case {
        NodeType code;
        const char* name;
    };
    const Case cases[] = {
        {TB_AUTOLABEL, "AUTOLABEL"},
        {TB_WRITE, "WRITE"},
        {TB_MISSING, "MISSING"},
        {TB_MISSINGSUBCOM, ""},
        {TB_TABLE, "TABLE"},
        {TB_UNWEIGHTED, "UNWEIGHTED"},
        {SP_ALL, "ALL"},
        {TB_LABELS, "LABELS"},
        {TB_UNKNOWNSUBCOM, ""},
        {kNoNodeType, ""},
        {SP_VARNAME, ""},
        {TBI_VARLIST, ""},
    };
    for (const Case& c : cases) EXPECT_EQ(TablesCommand::NameOfCode(c.code), c.name);
}

TEST(TablesCommandTest, TheFirstReportCounts) {
    Command parsed("TABLES");
    EXPECT_EQ(parsed.command.FirstReport().kind, TablesErrorKind::kNone);
    ReportEntry first;
    first.kind = TablesErrorKind::kMisplacedTotal;
    first.line = 3;
    first.column = 4;
    first.text = "t";
    parsed.command.AddReport(first);
    parsed.command.AddReport(ReportEntry{});
    const ReportEntry counted = parsed.command.FirstReport();
    EXPECT_EQ(counted.kind, TablesErrorKind::kMisplacedTotal);
    EXPECT_EQ(counted.line, 3);
    EXPECT_EQ(counted.column, 4);
    EXPECT_EQ(counted.text, "t");
}

// At the end there is no token whose place could be told, and without a sequence none at all.
TEST(TablesCommandTest, AShortageIsToldAtTheCurrentToken) {
    Command parsed("TABLES\n  /TABLE");
    static_cast<void>(parsed.command.NextToken());
    static_cast<void>(parsed.command.NextToken());
    parsed.command.GiveUp(Shortage::kBudget);
    parsed.command.AddReport({TablesErrorKind::kTablesSyntax, 1, 1, kNoNodeType, {}});
    EXPECT_EQ(parsed.command.FirstReport().kind, TablesErrorKind::kTableTooLarge);
    EXPECT_EQ(parsed.command.FirstReport().line, 2);
    EXPECT_EQ(parsed.command.FirstReport().column, 3);

    Command atEnd("TABLES\n  /TABLE");
    EXPECT_EQ(CodesOf(atEnd.command), "/ TABLE");
    atEnd.command.GiveUp(Shortage::kBudget);
    EXPECT_EQ(atEnd.command.FirstReport().line, 1);

    TablesCommand withoutSequence(CodePage::Utf8(), nullptr);
    withoutSequence.GiveUp(Shortage::kBudget);
    EXPECT_EQ(withoutSequence.FirstReport().line, 1);
    EXPECT_EQ(withoutSequence.GivenUpFor(), Shortage::kBudget);
}

TEST(TablesCommandTest, WarningsKeepTheirOrder) {
    Command parsed("TABLES");
    EXPECT_TRUE(parsed.command.Warnings().empty());
    const Warning one{WarningKind::kUnknownSubcommand, "one"};
    const Warning two{WarningKind::kObsoleteSubcommand, "two"};
    parsed.command.AddWarning(one);
    parsed.command.AddWarning(two);
    EXPECT_EQ(parsed.command.Warnings(), (std::vector{one, two}));
}

TEST(TablesCommandTest, TheResultIsHandedOver) {
    Command parsed("TABLES");
    EXPECT_EQ(parsed.command.ParseResult(), nullptr);
    parsed.command.SetParseResult(MakeNode(TestArena(), TBI_GENERICLIST));
    ASSERT_NE(parsed.command.ParseResult(), nullptr);
    EXPECT_NE(parsed.command.ReleaseParseResult(), nullptr);
    EXPECT_EQ(parsed.command.ParseResult(), nullptr);
}

TEST(TablesCommandTest, KnowsTheWordsOfItsSubcommands) {
    for (const char* pWord : {"TABLE", "TAB", "TABULATE", "PFOOTNOTE", "STA", "BREAK"}) {
        EXPECT_TRUE(TablesCommand::IsSubcommand(pWord)) << pWord;
    }
    for (const char* pWord : {"TA", "ZERO", "LABELS", "table", "", "AND"}) {
        EXPECT_FALSE(TablesCommand::IsSubcommand(pWord)) << pWord;
    }
}

TEST(TablesCommandTest, NoSequenceIsABugAndAnEmptyCommand) {
    AssertionRecorder assertions;
    TablesCommand command(CodePage::Utf8(), nullptr);
    EXPECT_EQ(command.NextToken().code, kNoNodeType);
    command.SkipToNextSlash();
    EXPECT_EQ(assertions.Texts(), (Texts{"m_pTokSeq", "m_pTokSeq"}));
}

// A sequence that breaks the contract: its second token has a type that does not exist, and it
// has no token to hand out for a slash.
class BrokenSequence final : public TokenSequenceBase {
public:
    explicit BrokenSequence(bool isSlash) : m_isSlash(isSlash) {}
    bool Next() override {
        m_index = m_nextIndex;
        if (m_nextIndex < 3) ++m_nextIndex;
        return m_index < 3;
    }
    [[nodiscard]] int CurrentIndex() const override { return m_index; }
    void SetNextIndex(int index) override { m_nextIndex = index; }
    [[nodiscard]] int Count() const override { return 3; }
    [[nodiscard]] int Type() const override {
        if (m_index >= 3) return kAtEnd;
        if (m_index == 2) return 99;
        return m_isSlash ? kOperator : kNumber;
    }
    [[nodiscard]] int Operator() const override { return m_isSlash ? kSlash : kNotOperator; }
    std::size_t GetText(const char*&, std::size_t& length) const override { return length = 0; }
    std::size_t GetValueText(const char*&, std::size_t& length) const override {
        return length = 0;
    }
    [[nodiscard]] double NumberValue() const override { return 0.0; }
    [[nodiscard]] int Line() const override { return 1; }
    [[nodiscard]] int Column() const override { return 1; }
    std::size_t GetSourceText(const char*&, std::size_t& length) const override {
        return length = 0;
    }
    void DumpCurrent(std::ostream&) const override {}
    [[nodiscard]] int CompareCurrent(std::string_view, std::size_t) const override { return -1; }
    [[nodiscard]] TAVQToken CloneCurrent() override {
        if (m_isSlash) return {};
        static constexpr TokenTexts kNoTexts;
        return {kNumber, kNoTexts};
    }

private:
    bool m_isSlash;
    int m_index = 0;
    int m_nextIndex = 0;
};

TEST(TablesCommandTest, AnImpossibleTokenTypeIsAcceptedByNoRule) {
    AssertionRecorder assertions;
    BrokenSequence sequence(/*isSlash=*/false);
    TablesCommand command(CodePage::Utf8(), &sequence);
    EXPECT_EQ(command.NextToken().code, SP_SLASH);
    EXPECT_EQ(command.NextToken().code, SP_NUMBER);
    EXPECT_EQ(command.NextToken().code, SP_OTHEROP);
    EXPECT_EQ(command.NextToken().code, kNoNodeType);
    EXPECT_EQ(assertions.Texts(), Texts{"0"});
}

TEST(TablesCommandTest, ASlashWithoutATokenIsTheEnd) {
    AssertionRecorder assertions;
    BrokenSequence sequence(/*isSlash=*/true);
    TablesCommand command(CodePage::Utf8(), &sequence);
    EXPECT_EQ(command.NextToken().code, kNoNodeType);
    EXPECT_EQ(assertions.Texts(), Texts{"slashToken != 0"});
}

}  // namespace
}  // namespace quillet
