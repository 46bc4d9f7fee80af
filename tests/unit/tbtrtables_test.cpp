#include "bison/tbtrtables.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/repetition.h"
#include "support/rownames.h"
#include "tablesparsing.h"

namespace quillet {
namespace {

using tablesparsing::Command;
using tablesparsing::Parse;
using tablesparsing::Parsed;
using tablesparsing::TreeText;
using Texts = std::vector<std::string>;

struct RuleCase {
    std::vector<int> rules;  // the rules that the case is there for
    std::string text;
    std::string tree;
    Texts warnings = {};
};

// Subcommands before the tables, and what the global list then holds.
RuleCase Global(std::vector<int> rules, const std::string& text, const std::string& nodes,
                Texts warnings = {}) {
    return {std::move(rules), "TABLES " + text + " /TABLE a",
            "LIST(LIST(" + nodes + ") LIST(TABLE(a)))", std::move(warnings)};
}

// What follows a table, and what its group then holds after the table.
RuleCase Local(std::vector<int> rules, const std::string& text, const std::string& nodes,
               Texts warnings = {}) {
    return {std::move(rules), "TABLES /TABLE a " + text,
            "LIST(LIST() LIST(TABLE(a)" + (nodes.empty() ? "" : " " + nodes) + "))",
            std::move(warnings)};
}

// A table's expressions, and its dimensions.
RuleCase Table(std::vector<int> rules, const std::string& text, const std::string& dimensions) {
    return {std::move(rules), "TABLES /TABLE " + text,
            "LIST(LIST() LIST(TABLE(" + dimensions + ")))"};
}

std::string Obsolete(const std::string& name) {
    return "Obsolete subcommand " + name + " has been ignored.";
}

std::string Unknown(const std::string& name) {
    return "Unrecognized or obsolete subcommand " + name + " has been ignored.";
}

const char* const kObsoleteFormatText = "Obsolete form of the FORMAT subcommand has been ignored.";

std::vector<RuleCase> RuleCases() {
    const std::string longStatistics = "STATISTICS" + std::string(60, 'x');
    std::vector<RuleCase> cases = {
        // Command and groups.
        Table({1, 3, 25, 27, 28, 136, 140}, "a", "a"),
        {{26},
         "TABLES /TABLE a /TABLE b /TABLE c",
         "LIST(LIST() LIST(TABLE(a)) LIST(TABLE(b)) LIST(TABLE(c)))"},
        {{4, 29},
         "TABLES /BASE /GBASE /TABLE a /TITLE 'x' /TITLE /TABLE b /CORNER",
         "LIST(LIST(BASE GBASE) LIST(TABLE(a) TITLE('x') TITLE) LIST(TABLE(b) CORNER))"},
        Global({5, 45}, "/AUTOLABEL", "AUTOLABEL"),
        Global({6, 50}, "/BASE", "BASE"),
        Global({7, 76, 80, 82}, "/FTOTAL t", "FTOTAL(t)"),
        Global({8, 78}, "/PTOTAL t", "PTOTAL(t)"),
        Global({9, 61}, "/GBASE", "GBASE"),
        Global({10, 88}, "/MDGROUP d a b (1)", "MDGROUP(d VARLIST(a b) 1)"),
        Global({11, 84}, "/MRGROUP m a b", "MRGROUP(m VARLIST(a b))"),
        Global({12, 66}, "/MISSING INCLUDE", "MISSINGSUBCOM(INCLUDE)"),
        Global({13, 92, 96, 147}, "/OBSERVATION x", "OBSERVATION(VARLIST(x))"),
        Global({14, 69, 71, 73}, "/FORMAT BLANK", "FORMAT(BLANK)"),
        Local({30, 55}, "/CAPTION 'x'", "CAPTION('x')"),
        Local({31, 59}, "/CORNER 'x'", "CORNER('x')"),
        Local({32, 98, 102, 104}, "/SORT x", "SORT(SORTVAR:x)"),
        Local({33, 110, 112, 114, 116, 120}, "/STATISTICS MEAN",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:MEAN))"),
        Local({34, 57}, "/TITLE 'x'", "TITLE('x')"),
        Global({24, 151}, "/xyz a", "", {Unknown("XYZ")}),
        Local({44}, "/xyz a", "", {Unknown("XYZ")}),
        Global({152}, "/WRITE a 'b' ( /XYZ - + 5 /BASE", "BASE",
               {Obsolete("WRITE"), Unknown("XYZ")}),

        // Settings.
        Global({46}, "/AUTOLABEL DEFAULT", "AUTOLABEL(DEFAULT)"),
        Global({47}, "/AUTOLABEL=ON", "AUTOLABEL(ON)"),
        Global({48}, "/AUTOLABEL OFF", "AUTOLABEL(OFF)"),
        Global({51}, "/BASE ANSWERING", "BASE(ANSWERING)"),
        Global({52}, "/BASE QUALIFIED", "BASE(QUALIFIED)"),
        Global({53}, "/BASE ALL", "BASE(ALL)"),
        Local({55, 149}, "/CAPTION", "CAPTION"),
        Local({150}, "/CAPTION 'x' 'y'", "CAPTION('x' 'y')"),
        Local({149}, "/TITLE /CORNER", "TITLE CORNER"),
        Global({62}, "/GBASE CASES", "GBASE(CASES)"),
        Global({63}, "/GBASE RESPONSES", "GBASE(RESPONSES)"),
        Global({65}, "/MISSING=EXCLUDE", "MISSINGSUBCOM(EXCLUDE)"),
        Global({68}, "/FORMAT", ""),
        Global({68}, "/FORMAT /BASE /FORMAT", "BASE"),
        Global({70}, "/FORMAT CWIDTH(10)", "", {kObsoleteFormatText}),
        Global({70}, "/FORMAT CWIDTH(10) /FORMAT ZERO", "FORMAT(ZERO)", {kObsoleteFormatText}),
        Global({72}, "/FORMAT ZERO BLANK", "FORMAT(BLANK)"),
        Global({74}, "/FORMAT ZERO", "FORMAT(ZERO)"),
        Global({75}, "/FORMAT MISSING('-')", "FORMAT('-')"),
        Global({72, 75}, "/FORMAT ZERO MISSING('-') BLANK", "FORMAT(BLANK '-')"),
        Global({72, 75}, "/FORMAT MISSING('-') MISSING('.')", "FORMAT('.')"),

        // Totals, sets and observation.
        Global({81, 83}, "/FTOTAL s t 'x' u", "FTOTAL(s t['x'] u)"),
        Global({83}, "/PTOTAL t 'x'", "PTOTAL(t['x'])"),
        Global({85}, "/MRGROUP m 'x' a", "MRGROUP(m['x'] VARLIST(a))"),
        Global({87}, "/MDGROUP d a ('y')", "MDGROUP(d VARLIST(a) 'y')"),
        Global({89}, "/MDGROUP d 'x' a ('y')", "MDGROUP(d['x'] VARLIST(a) 'y')"),
        Global({90}, "/MDGROUP d 'x' a (-1)", "MDGROUP(d['x'] VARLIST(a) -1)"),
        Global({97, 148}, "/MRGROUP m a b TO c d", "MRGROUP(m VARLIST(a VARRANGE(b c) d))"),
        Global({92, 97}, "/OBSERVATION x y", "OBSERVATION(VARLIST(x y))"),

        // SORT.
        Local({99}, "/SORT ASCENDING x", "SORT(ASCENDING SORTVAR:x)"),
        Local({100, 103}, "/SORT DESCENDING x y", "SORT(DESCENDING SORTVAR:x SORTVAR:y)"),
        Local({105, 106}, "/SORT x (COUNT)", "SORT(SORTVAR:x(SORTFUNCTION:COUNT))"),
        Local({107}, "/SORT x (!f)", "SORT(SORTVAR:x(SORTFUNCTION:!f))"),
        Local({108}, "/SORT x (MEAN(y))", "SORT(SORTVAR:x(SORTFUNCTION:MEAN(y)))"),
        Local({109}, "/SORT x (!f(y))", "SORT(SORTVAR:x(SORTFUNCTION:!f(y)))"),
        Local({98}, "/SORT x ASCENDING", "SORT(SORTVAR:x SORTVAR:ASCENDING)"),

        // STATISTICS.
        Local({113}, "/STATISTICS MEAN SUM",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:MEAN) "
              "FULLSTATFUNCTION(STATFUNCTION:SUM))"),
        Local({115}, "/STATISTICS U MEAN",
              "STATISTICS(FULLSTATFUNCTION(UNWEIGHTED STATFUNCTION:MEAN))"),
        Local({117}, "/STATISTICS MEAN()", "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:MEAN))"),
        Local({118, 125, 132, 134}, "/STATISTICS MEAN(x)",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:MEAN x))"),
        Local({133}, "/STATISTICS MEAN(x y)",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:MEAN x y))"),
        Local({119, 94}, "/STATISTICS CPCT(x : y)",
              "STATISTICS(FULLSTATFUNCTION(VARLIST(y) STATFUNCTION:CPCT x))"),
        Local({95}, "/STATISTICS CPCT(x : y z)",
              "STATISTICS(FULLSTATFUNCTION(VARLIST(y z) STATFUNCTION:CPCT x))"),
        Local({121}, "/STATISTICS !f", "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:!f))"),
        Local({122}, "/STATISTICS PTILE 90",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:PTILE(90)))"),
        Local({122}, "/STATISTICS PTILE -5(x)",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:PTILE(-5) x))"),
        Local({123}, "/STATISTICS !f 90", "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:!f(90)))"),
        Local({124, 126, 130}, "/STATISTICS COUNT((F8.2))",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:COUNT STATFUNCARG(FMT:F8.2)))"),
        Local({127}, "/STATISTICS COUNT((F8.2) 'n')",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:COUNT STATFUNCARG(FMT:F8.2 'n')))"),
        Local({128}, "/STATISTICS COUNT('n' (F8.2))",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:COUNT STATFUNCARG(FMT:F8.2 'n')))"),
        Local({129}, "/STATISTICS COUNT('n')",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:COUNT STATFUNCARG('n')))"),
        Local({131}, "/STATISTICS COUNT((!f))",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:COUNT STATFUNCARG(FMT:!f)))"),
        Local({135}, "/STATISTICS MEAN(x (F8.2) 'n' y 'm' z 'k'(F3) w)",
              "STATISTICS(FULLSTATFUNCTION(STATFUNCTION:MEAN STATFUNCARG(x FMT:F8.2 'n') "
              "STATFUNCARG(y 'm') STATFUNCARG(z FMT:F3 'k') w))"),
        Local({115, 119}, "/STATISTICS UNWEIGHTED CPCT(x (PCT5.1) 'n' : y)",
              "STATISTICS(FULLSTATFUNCTION(UNWEIGHTED VARLIST(y) STATFUNCTION:CPCT STATFUNCARG(x "
              "FMT:PCT5.1 'n')))"),

        // TABLE.
        Table({137}, "a BY b", "a b"),
        Table({138}, "a BY b BY c", "a b c"),
        {{141},
         "TABLES /TABLE a BY (" + longStatistics + ") BY (LABELS" + std::string(60, 'y') + ")",
         "LIST(LIST() LIST(TABLE(a STATISTICS LABELS)))"},
        Table({142}, "a BY (STATISTICS)", "a STATISTICS"),
        Table({142}, "(Labels) BY (stat)", "LABELS STATISTICS"),
        Table({142}, "((LAB)) BY (((a)))", "LABELS a"),
        Table({142}, "(STATE) BY STATE", "STATISTICS STATE"),
        Table({142}, "((a + b)) BY ((a > b))", "PLUS(a b) GREATERTHAN(a b)"),
        Table({143}, "a + b + c", "PLUS(a b c)"),
        Table({144}, "(a + b)", "PLUS(a b)"),
        Table({143, 144}, "(a + b) + c", "PLUS(a b c)"),
        Table({143, 144}, "a + (b + c)", "PLUS(a b c)"),
        Table({143, 144}, "(a + b + c)", "PLUS(a b c)"),
        Table({143, 144}, "(a + b) + (c + d)", "PLUS(a b c d)"),
        Table({145}, "a > b > c", "GREATERTHAN(a b c)"),
        Table({145}, "a GT b", "GREATERTHAN(a b)"),
        Table({146}, "(a > b)", "GREATERTHAN(a b)"),
        Table({145, 146}, "a > (b > c)", "GREATERTHAN(a b c)"),
        Table({143, 145}, "a + b > c BY d", "PLUS(a GREATERTHAN(b c)) d"),
        Table({143, 145}, "a > b + c", "PLUS(GREATERTHAN(a b) c)"),
        Table({144, 145}, "a > (b + c)", "GREATERTHAN(a PLUS(b c))"),
        Table({144, 145}, "(a + b) > (c + d)", "GREATERTHAN(PLUS(a b) PLUS(c d))"),
        // The expression in parentheses ends with an operation of the other kind.
        Table({145, 144}, "(a + b > c)", "PLUS(a GREATERTHAN(b c))"),
        Table({145, 144}, "(a > b + c)", "PLUS(GREATERTHAN(a b) c)"),
        Table({142, 143}, "(a) + (LABELS) + STATISTICS", "PLUS(a LABELS STATISTICS)"),

        // By the letter of the tables: slashes do not reach the grammar, and a keyword inside a
        // settings subcommand has its code.
        Global({47}, "/AUTOLABEL /ON", "AUTOLABEL(ON)"),
        {{45}, "TABLES /AUTOLABEL TABLE a", "LIST(LIST(AUTOLABEL) LIST(TABLE(a)))"},
        Table({136}, "= a =", "a"),
        {{1}, "TABLES TABLE a", "LIST(LIST() LIST(TABLE(a)))"},
        {{1}, "TABLES /TABLE a /", "LIST(LIST() LIST(TABLE(a)))"},
        {{143},
         "TABLES /BREAK + r /TABLE a /TABLE b",
         "LIST(LIST() LIST(TABLE(PLUS(a r))) LIST(TABLE(PLUS(b r))))"},
        {{137}, "TABLES /TABLE a /BREAK BY r", "LIST(LIST() LIST(TABLE(a r)))"},
        // What stands after the mistake up to the slash is passed over, whatever it is.
        Global({70}, "/FORMAT ( ' / ' 5 TABLE - /BASE", "BASE", {kObsoleteFormatText}),
        Global({70}, "/FORMAT CWIDTH(10) /BASE /FORMAT X", "BASE", {kObsoleteFormatText}),
        Global({70}, "/FORMAT X /WRITE x /FORMAT X", "",
               {kObsoleteFormatText, Obsolete("WRITE"), kObsoleteFormatText}),
        Global({70}, "/FORMAT MISSING('-' X", "", {kObsoleteFormatText}),
        // The mistake is found on the word after the slash; what belongs to it goes as well.
        Global({70}, "/FORMAT /CAPTION 'x'", "", {kObsoleteFormatText}),
        Global({70}, "/FORMAT /ON", "", {kObsoleteFormatText}),
        {{70},
         "TABLES /BREAK + r /FORMAT MISSING /TABLE a /TABLE b",
         "LIST(LIST() LIST(TABLE(PLUS(b r))))",
         {kObsoleteFormatText}},
        Global({70}, "/FORMAT X /BREAK /BREAK", "", {kObsoleteFormatText}),
        Global({19, 22}, "/FOO x /PTITLE x", "", {Obsolete("FOOTNOTE"), Obsolete("PTITLE")}),
    };
    const char* const obsolete[] = {"BOXCHARS", "CONTINUED", "TFOOTNOTE", "FONTCHARS", "FOOTNOTE",
                                    "INDEX",    "PFOOTNOTE", "PTITLE",    "WRITE"};
    int rule = 15;
    for (const char* name : obsolete) {
        const std::string text = std::string("/") + name + " anything";
        cases.push_back(Global({rule}, text, "", {Obsolete(name)}));
        cases.push_back(Local({rule + 20}, text, "", {Obsolete(name)}));
        ++rule;
    }
    return cases;
}

// A row is called by what it has after the word TABLES; one text may be the case of several rules.
template <class Row>
std::string NameOfCommand(const testing::TestParamInfo<Row>& info) {
    constexpr std::string_view kCommandWord = "TABLES";
    const std::string_view text = info.param.text;
    std::string name = RowNameOf(text.substr(kCommandWord.size()));
    if (name.empty()) name = "nothing";
    if constexpr (requires { info.param.rules; }) {
        name = "Rule" + std::to_string(info.param.rules.front()) + "_" + name;
    }
    return name;
}

class GrammarRuleTest : public testing::TestWithParam<RuleCase> {};

TEST_P(GrammarRuleTest, BuildsItsNode) {
    const RuleCase& c = GetParam();
    // Twice: nothing may be left of the first time.
    for (int time = 0; time < 2; ++time) {
        const Parsed parsed = Parse(c.text);
        EXPECT_EQ(parsed.status, ParseStatus::kSuccess);
        EXPECT_EQ(parsed.tree, c.tree);
        EXPECT_EQ(parsed.warnings, c.warnings);
        EXPECT_EQ(parsed.report.kind, TablesErrorKind::kNone);
        EXPECT_EQ(parsed.assertions, Texts{});
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, GrammarRuleTest, testing::ValuesIn(RuleCases()),
                         NameOfCommand<RuleCase>);

TEST(TbTrTablesTest, EveryTableRecordsItsLastToken) {
    Command parsed("TABLES /TABLE (a)\n/SORT x\n/TABLE b\n BY (c > d)\n");
    ASSERT_EQ(ParseTables(parsed.command), ParseStatus::kSuccess);
    const std::vector<TablesLocation>& tables = parsed.command.TableLocations();
    ASSERT_EQ(tables.size(), 2U);
    EXPECT_EQ(tables[0].first_column, 9);
    EXPECT_EQ(tables[0].last_line, 1);
    EXPECT_EQ(tables[0].last_column, 17);
    EXPECT_EQ(tables[1].first_line, 3);
    EXPECT_EQ(tables[1].last_line, 4);
    EXPECT_EQ(tables[1].last_column, 10);
}

struct MistakeCase {
    const char* text;
    int kind;
    int line;
    int column;
    NodeType subcommand = kNoNodeType;
};

// Positions are those of the END of the token that the parser stumbled over, or, at the end of
// the command, of the last token it was given (slashes are not). "TABLES /" takes the columns 1
// to 8, so the first subcommand's word begins in column 9.
//
// Kind 1 belongs to the subcommand in which the token was met while a state of its rules, below
// the point of the error, can still shift `error`: only the state right after the subcommand's
// word can. A state that holds one complete rule and no `error` reduces whatever comes next.
// Once the subcommand has been reduced in that way, only state 0 is left: kind 4.
const MistakeCase kErrorCases[] = {
    // Nothing at all: no token was read, so the place is the start of the command.
    {"TABLES", 4, 1, 1},
    {"TABLES /", 4, 1, 1},
    {"TABLES // /", 4, 1, 1},
    {"TABLES /BREAK", 4, 1, 1},
    {"TABLES /BREAK r", 4, 1, 1},

    // Words in the place of a subcommand.
    {"TABLES 5", 4, 1, 8},
    {"TABLES 'x'", 4, 1, 10},
    {"TABLES BY", 4, 1, 9},
    {"TABLES /ON", 4, 1, 10},
    {"TABLES /( a", 4, 1, 9},
    {"TABLES /ALL", 4, 1, 11},
    {"TABLES /LABELS x", 4, 1, 14},
    // The sign and the number are one token of two bytes.
    {"TABLES /- 5", 4, 1, 10},

    // Order of the subcommands.
    {"TABLES /BASE ALL", 4, 1, 16},
    {"TABLES /CAPTION 'a' /TABLE b", 4, 1, 15},
    {"TABLES /STATISTICS MEAN", 4, 1, 18},
    {"TABLES /SORT x", 4, 1, 12},
    {"TABLES /TABLE a /AUTOLABEL ON", 4, 1, 26},
    {"TABLES /TABLE a /FORMAT", 4, 1, 23},

    // Ignored subcommands need something to ignore; no rule of theirs has an `error`.
    {"TABLES /BOXCHARS /TABLE a", 4, 1, 23},
    {"TABLES /XYZ", 4, 1, 11},
    {"TABLES /TABLE a /WRITE", 4, 1, 22},
    {"TABLES /TABLE a /XYZ /TITLE", 4, 1, 27},
    {"TABLES /XYZ a", 4, 1, 13},

    // AUTOLABEL: a table cannot follow yet, nor may the command end, so the word answers for it.
    {"TABLES /AUTOLABEL", 1, 1, 17, TB_AUTOLABEL},
    {"TABLES /AUTOLABEL XYZ", 1, 1, 21, TB_AUTOLABEL},
    {"TABLES /AUTOLABEL 5", 1, 1, 19, TB_AUTOLABEL},
    {"TABLES /AUTOLABEL ALL", 1, 1, 21, TB_AUTOLABEL},
    {"TABLES /AUTOLABEL CAPTION", 1, 1, 25, TB_AUTOLABEL},
    {"TABLES /AUTOLABEL /CAPTION 'x'", 1, 1, 26, TB_AUTOLABEL},
    // Complete after ON.
    {"TABLES /AUTOLABEL ON", 4, 1, 20},
    {"TABLES /AUTOLABEL ON OFF", 4, 1, 24},
    // The keyword TABLE is the subcommand's code, and what is missing is missing there.
    {"TABLES /AUTOLABEL TABLE", 1, 1, 23, TB_TABLE},

    // BASE and GBASE.
    {"TABLES /BASE XYZ", 1, 1, 16, TB_BASE},
    {"TABLES /BASE ON", 1, 1, 15, TB_BASE},
    {"TABLES /BASE (ALL)", 1, 1, 14, TB_BASE},
    {"TABLES /BASE ALL ANSWERING", 4, 1, 26},
    {"TABLES /GBASE ALL", 1, 1, 17, TB_GBASE},
    {"TABLES /GBASE 'x'", 1, 1, 17, TB_GBASE},
    // The source text of a literal takes in the blank after it.
    {"TABLES /GBASE 'x' /TABLE a", 1, 1, 18, TB_GBASE},
    {"TABLES /GBASE CASES RESPONSES", 4, 1, 29},

    // MISSING cannot be without a setting.
    {"TABLES /MISSING", 1, 1, 15, TB_MISSINGSUBCOM},
    {"TABLES /MISSING ZERO", 1, 1, 20, TB_MISSINGSUBCOM},
    {"TABLES /MISSING /TABLE a", 1, 1, 22, TB_MISSINGSUBCOM},
    {"TABLES /MISSING=INCLUDE EXCLUDE", 4, 1, 31},

    // FORMAT drops what it does not know up to the slash, and then the table is missing. The last
    // token read is the one it stumbled over.
    {"TABLES /FORMAT", 4, 1, 14},
    {"TABLES /FORMAT (", 4, 1, 16},
    {"TABLES /FORMAT MISSING", 4, 1, 22},
    {"TABLES /FORMAT CWIDTH(10)", 4, 1, 21},
    // It stumbles over TABLE and takes that subcommand for its own.
    {"TABLES /FORMAT MISSING /TABLE a", 4, 1, 29},
    // Complete after BLANK: nothing is left that could drop CWIDTH.
    {"TABLES /FORMAT BLANK CWIDTH(10) /TABLE a", 4, 1, 27},
    {"TABLES /FORMAT MISSING('-') 5 /TABLE a", 4, 1, 29},

    // Totals.
    {"TABLES /FTOTAL", 1, 1, 14, TB_FTOTAL},
    {"TABLES /FTOTAL 'x'", 1, 1, 18, TB_FTOTAL},
    {"TABLES /FTOTAL t 'x' 'y'", 4, 1, 24},
    {"TABLES /FTOTAL t TO u", 4, 1, 19},
    {"TABLES /PTOTAL 5", 1, 1, 16, TB_PTOTAL},
    {"TABLES /PTOTAL ALL", 1, 1, 18, TB_PTOTAL},
    {"TABLES /PTOTAL /TABLE t", 1, 1, 21, TB_PTOTAL},

    // Sets. MRGROUP is complete with its first variable, MDGROUP with its closing parenthesis.
    {"TABLES /MRGROUP", 1, 1, 15, TB_MRGROUP},
    {"TABLES /MRGROUP m", 1, 1, 17, TB_MRGROUP},
    {"TABLES /MRGROUP 5 a", 1, 1, 17, TB_MRGROUP},
    {"TABLES /MRGROUP m 'l'", 1, 1, 21, TB_MRGROUP},
    {"TABLES /MRGROUP m a TO", 1, 1, 22, TB_MRGROUP},
    {"TABLES /MRGROUP m a TO 5", 1, 1, 24, TB_MRGROUP},
    {"TABLES /MRGROUP m a 'l'", 4, 1, 23},
    {"TABLES /MRGROUP m a TO b TO c", 4, 1, 27},
    {"TABLES /MDGROUP d a b", 1, 1, 21, TB_MDGROUP},
    {"TABLES /MDGROUP d a /TABLE b", 1, 1, 26, TB_MDGROUP},
    {"TABLES /MDGROUP d (1)", 1, 1, 19, TB_MDGROUP},
    {"TABLES /MDGROUP d a (1", 1, 1, 22, TB_MDGROUP},
    {"TABLES /MDGROUP d a (x)", 1, 1, 22, TB_MDGROUP},
    {"TABLES /MDGROUP d a (1 2)", 1, 1, 24, TB_MDGROUP},
    {"TABLES /MDGROUP d a (1) b", 4, 1, 25},

    // OBSERVATION: the range is found when the list ends, so the place is that of its last name.
    {"TABLES /OBSERVATION", 1, 1, 19, TB_OBSERVATION},
    {"TABLES /OBSERVATION 'x'", 1, 1, 23, TB_OBSERVATION},
    {"TABLES /OBSERVATION a TO", 1, 1, 24, TB_OBSERVATION},
    {"TABLES /OBSERVATION a TO c", 2, 1, 26},
    {"TABLES /OBSERVATION a TO c /TABLE a", 2, 1, 26},
    {"TABLES /OBSERVATION a b TO c d /TABLE a", 2, 1, 30},
    // The list is reduced before the literal is looked at: the range comes first.
    {"TABLES /OBSERVATION a TO c 'x'", 2, 1, 26},

    // TABLE.
    {"TABLES /TABLE", 1, 1, 13, TB_TABLE},
    {"TABLES /TABLE a /TABLE", 1, 1, 22, TB_TABLE},
    {"TABLES /TABLE /TITLE 'x'", 1, 1, 20, TB_TABLE},
    {"TABLES /TABLE 5", 1, 1, 15, TB_TABLE},
    {"TABLES /TABLE ALL", 1, 1, 17, TB_TABLE},
    {"TABLES /TABLE !m", 1, 1, 16, TB_TABLE},
    {"TABLES /TABLE - b", 1, 1, 15, TB_TABLE},
    {"TABLES /TABLE BY a", 1, 1, 16, TB_TABLE},
    {"TABLES /TABLE a BY", 1, 1, 18, TB_TABLE},
    {"TABLES /TABLE a BY BY b", 1, 1, 21, TB_TABLE},
    {"TABLES /TABLE a +", 1, 1, 17, TB_TABLE},
    {"TABLES /TABLE a > > b", 1, 1, 19, TB_TABLE},
    {"TABLES /TABLE a + - 5", 1, 1, 20, TB_TABLE},
    // Complete after every operand: what cannot go on is met in state 0.
    {"TABLES /TABLE a b", 4, 1, 17},
    {"TABLES /TABLE a)", 4, 1, 16},
    {"TABLES /TABLE a - b", 4, 1, 17},
    {"TABLES /TABLE a + 5", 4, 1, 18},
    {"TABLES /TABLE a AND b", 4, 1, 19},
    {"TABLES /TABLE a TO b", 4, 1, 18},
    {"TABLES /TABLE a 'x'", 4, 1, 19},
    {"TABLES /TABLE a BY b BY c BY d", 4, 1, 28},
    // Inside an open parenthesis nothing is complete.
    {"TABLES /TABLE (a", 1, 1, 16, TB_TABLE},
    {"TABLES /TABLE ()", 1, 1, 16, TB_TABLE},
    {"TABLES /TABLE (a b)", 1, 1, 18, TB_TABLE},
    {"TABLES /TABLE (BY)", 1, 1, 17, TB_TABLE},
    {"TABLES /TABLE (a + b", 1, 1, 20, TB_TABLE},
    {"TABLES /TABLE (a /TITLE 'x'", 1, 1, 23, TB_TABLE},
    {"TABLES /TABLE (a BY b)", 1, 1, 19, TB_TABLE},
    {"TABLES /TABLE (!m + a)", 1, 1, 19, TB_TABLE},
    // Found when the parenthesis closes, whatever comes after it.
    {"TABLES /TABLE (!m)", 3, 1, 18},
    {"TABLES /TABLE a BY b + (!stat) 5", 3, 1, 30},
    {"TABLES /TABLE ((!m))", 3, 1, 19},

    // Texts: complete after a literal, not right after the word.
    {"TABLES /TABLE a /CAPTION b", 1, 1, 26, TB_CAPTION},
    {"TABLES /TABLE a /CAPTION 'a' b", 4, 1, 30},
    {"TABLES /TABLE a /TITLE 5", 1, 1, 24, TB_TITLE},
    {"TABLES /TABLE a /TITLE /BASE", 1, 1, 28, TB_TITLE},
    {"TABLES /TABLE a /CORNER )", 1, 1, 25, TB_CORNER},
    {"TABLES /TABLE a /CORNER 'a' )", 4, 1, 29},

    // SORT.
    {"TABLES /TABLE a /SORT", 1, 1, 21, TB_SORT},
    {"TABLES /TABLE a /SORT ASCENDING", 1, 1, 31, TB_SORT},
    {"TABLES /TABLE a /SORT DESCENDING 5", 1, 1, 34, TB_SORT},
    {"TABLES /TABLE a /SORT (x)", 1, 1, 23, TB_SORT},
    {"TABLES /TABLE a /SORT x (MEAN", 1, 1, 29, TB_SORT},
    {"TABLES /TABLE a /SORT x ()", 1, 1, 26, TB_SORT},
    {"TABLES /TABLE a /SORT x (MEAN(!m))", 1, 1, 32, TB_SORT},
    {"TABLES /TABLE a /SORT x (MEAN())", 1, 1, 31, TB_SORT},
    {"TABLES /TABLE a /SORT x 5", 4, 1, 25},
    {"TABLES /TABLE a /SORT x (MEAN) )", 4, 1, 32},

    // STATISTICS.
    {"TABLES /TABLE a /STATISTICS", 1, 1, 27, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS 5", 1, 1, 29, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS U", 1, 1, 29, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS U U", 1, 1, 31, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN(", 1, 1, 33, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN(5)", 1, 1, 34, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN(x:)", 1, 1, 36, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN(x : 5)", 1, 1, 38, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN(x : y TO z)", 1, 1, 41, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN(x ())", 1, 1, 37, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN('n' 'm')", 1, 1, 40, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN('n' x)", 1, 1, 38, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN(x (F8.2) (F3))", 1, 1, 43, TB_STATISTICS},
    {"TABLES /TABLE a /STATISTICS MEAN(x) 'l'", 4, 1, 39},
    {"TABLES /TABLE a /STATISTICS MEAN 5 6", 4, 1, 36},
    // A function is complete with its name, so a comma's place does not matter, but a sign does.
    {"TABLES /TABLE a /STATISTICS MEAN, - SUM", 4, 1, 35},

    // Lines: columns of later lines count from 0.
    {"TABLES /TABLE a\n  BY b c", 4, 2, 7},
    {"TABLES\n/TABLE\na\n+", 1, 4, 0, TB_TABLE},
    {"TABLES /AUTOLABEL\n\nXYZ", 1, 3, 2, TB_AUTOLABEL},
    {"TABLES\n /OBSERVATION x TO\n y\n /TABLE x", 2, 3, 1},
    {"\nTABLES /ON", 4, 2, 9},

    // BREAK: its tokens keep their own places.
    {"TABLES /BREAK r /TABLE a /TITLE 'x'", 4, 1, 15},
    {"TABLES /TABLE a /BREAK b", 4, 1, 24},
    {"TABLES /BREAK + /TABLE a", 1, 1, 15, TB_TABLE},
    {"TABLES /BREAK (!m) /TABLE a + /TABLE b", 3, 1, 18},

    // A character is one column, but a token's length is in bytes: the second variable begins in
    // column 17 and has two bytes.
    {"TABLES /TABLE \xC3\xA4 \xC3\xB6", 4, 1, 18},
};

class GrammarMistakeTest : public testing::TestWithParam<MistakeCase> {};

TEST_P(GrammarMistakeTest, IsReportedWhereItIsMet) {
    const MistakeCase& c = GetParam();
    for (int time = 0; time < 2; ++time) {
        const Parsed parsed = Parse(c.text);
        EXPECT_EQ(parsed.status, ParseStatus::kAborted);
        EXPECT_EQ(parsed.tree, "");
        EXPECT_EQ(static_cast<int>(parsed.report.kind), c.kind);
        EXPECT_EQ(parsed.report.line, c.line);
        EXPECT_EQ(parsed.report.column, c.column);
        EXPECT_EQ(parsed.report.subcommand, c.subcommand);
        EXPECT_EQ(parsed.report.text, "");
        EXPECT_EQ(parsed.assertions, Texts{});
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, GrammarMistakeTest, testing::ValuesIn(kErrorCases),
                         NameOfCommand<MistakeCase>);

TEST(TbTrTablesTest, WarningsBeforeAMistakeAreKept) {
    const Parsed parsed = Parse("TABLES /xyz a /FORMAT X /WRITE x /BASE 5");
    EXPECT_EQ(parsed.status, ParseStatus::kAborted);
    EXPECT_EQ(parsed.warnings, (Texts{Unknown("XYZ"), kObsoleteFormatText, Obsolete("WRITE")}));
    EXPECT_EQ(parsed.report.subcommand, TB_BASE);
}

// The parser's stack begins with state 0, the global list and TABLE; then come the open
// parentheses, the expression and the parenthesis that closes it.
constexpr int kEntriesBesideParentheses = 5;
constexpr int kStackLimit = 10000;
// A stack that is full cannot take another state, so its last entry is never used.
constexpr int kDeepest = kStackLimit - 1 - kEntriesBesideParentheses;

TEST(TbTrTablesTest, ParenthesesNestUpToTheStacksLimit) {
    std::vector<int> depths = {1,           kDeepest - 1,   kDeepest, kDeepest + 1, kDeepest + 2,
                               kStackLimit, 3 * kStackLimit};
    // The stacks are first copied near 200 entries, and again each time they double.
    for (int depth = 190; depth <= 210; ++depth) depths.push_back(depth);
    for (const int size : {400, 800, 1600, 3200, 6400}) {
        for (int depth = size - 8; depth <= size + 2; ++depth) depths.push_back(depth);
    }
    for (const int depth : depths) {
        SCOPED_TRACE(depth);
        const Parsed parsed =
            Parse("TABLES /TABLE " + Repeat("(", depth) + "a" + Repeat(")", depth) + " BY b");
        const bool fits = depth <= kDeepest;
        EXPECT_EQ(parsed.status, fits ? ParseStatus::kSuccess : ParseStatus::kStackExhausted);
        EXPECT_EQ(parsed.tree, fits ? "LIST(LIST() LIST(TABLE(a b)))" : "");
        EXPECT_EQ(parsed.report.kind, TablesErrorKind::kNone);
    }
}

// A mistake inside deep parentheses is still one of the TABLE subcommand.
TEST(TbTrTablesTest, DeepMistakesUnwindTheStack) {
    for (const int depth : {195, 200, 205, 5000, kDeepest}) {
        SCOPED_TRACE(depth);
        const Parsed parsed = Parse("TABLES /TABLE " + Repeat("(", depth) + "a b");
        EXPECT_EQ(parsed.status, ParseStatus::kAborted);
        EXPECT_EQ(parsed.report.kind, TablesErrorKind::kSubcommandSyntax);
        EXPECT_EQ(parsed.report.subcommand, TB_TABLE);
        EXPECT_EQ(parsed.report.column, 17 + depth);
    }
}

std::size_t DepthAlong(const TbTrParseNode* pNode, std::size_t slot) {
    std::size_t depth = 0;
    for (; pNode && (pNode->GetNodeType() == SP_PLUS || pNode->GetNodeType() == SP_GREATERTHAN);
         pNode = pNode->GetChild(slot)) {
        ++depth;
    }
    return depth;
}

// Operators that alternate from level to level make a tree as deep as the parentheses.
TEST(TbTrTablesTest, DeepTreesAreBuiltAndListed) {
    constexpr int kLevels = 9990;
    std::string leftDeep = Repeat("(", kLevels) + "a";
    for (int level = 0; level < kLevels; ++level) leftDeep += level % 2 == 0 ? " + b)" : " > b)";
    Command left("TABLES /TABLE " + leftDeep);
    ASSERT_EQ(ParseTables(left.command), ParseStatus::kSuccess);
    const NodeOwner root = left.command.ReleaseParseResult();
    EXPECT_EQ(DepthAlong(root->GetChild(1)->GetChild(0)->GetChild(0), 0),
              static_cast<std::size_t>(kLevels));
    std::ostringstream listing;
    root->Dump(listing, 0);
    const std::string text = listing.str();
    // An operator and a variable of each level, the innermost variable, and what is around them.
    std::size_t nodes = 0;
    for (std::size_t at = text.find("--Node"); at != std::string::npos; ++nodes) {
        at = text.find("--Node", at + 1);
    }
    EXPECT_EQ(nodes, std::size_t{2} * kLevels + 5);

    // To the right each level keeps its operand and operator on the stack as well.
    constexpr int kRightLevels = 3300;
    std::string rightDeep;
    for (int level = 0; level < kRightLevels; ++level) {
        rightDeep += level % 2 == 0 ? "b + (" : "b > (";
    }
    rightDeep += "a" + Repeat(")", kRightLevels);
    Command right("TABLES /TABLE " + rightDeep);
    ASSERT_EQ(ParseTables(right.command), ParseStatus::kSuccess);
    EXPECT_EQ(DepthAlong(right.command.ParseResult()->GetChild(1)->GetChild(0)->GetChild(0), 1),
              static_cast<std::size_t>(kRightLevels));
}

// A long chain whose parentheses all close at its end; each level joins the chain so far.
TEST(TbTrTablesTest, ChainsMayGrowFromTheRight) {
    constexpr int kLevels = 3300;
    constexpr int kInner = 100'000;
    Command parsed("TABLES /TABLE " + Repeat("b+(", kLevels) + "a" + Repeat("+a", kInner) +
                   Repeat(")", kLevels));
    ASSERT_EQ(ParseTables(parsed.command), ParseStatus::kSuccess);
    const TbTrParseNode* pRows =
        parsed.command.ParseResult()->GetChild(1)->GetChild(0)->GetChild(0);
    EXPECT_EQ(pRows->GetChildCount(), static_cast<std::size_t>(kLevels + kInner + 1));
    EXPECT_EQ(pRows->GetChild(0)->GetToken()->Text(true), "b");
    EXPECT_EQ(pRows->GetChild(kLevels)->GetToken()->Text(true), "a");
}

TEST(TbTrTablesTest, TheTraceNamesSyntaxErrorsAndReports) {
    Command parsed("TABLES /TABLE a b");
    std::ostringstream trace;
    parsed.command.SetTrace(&trace);
#if TBTRYYDEBUG
    ::testing::internal::CaptureStderr();
#endif
    EXPECT_EQ(ParseTables(parsed.command), ParseStatus::kAborted);
#if TBTRYYDEBUG
    EXPECT_NE(::testing::internal::GetCapturedStderr().find("Starting parse"), std::string::npos);
#endif
    EXPECT_EQ(trace.str(),
              "kString\t1:9\tkNotOperator\tTABLE\n"
              "kString\t1:15\tkNotOperator\ta\n"
              "kString\t1:17\tkNotOperator\tb\n"
              "1:17: syntax error\n"
              "reportGenericError \n");
}

#if TBTRYYDEBUG
// The numbers of the rules that were reduced.
std::set<int> ReducedRules(const std::string& text) {
    static const std::string kMark = "Reducing stack by rule ";
    Command parsed(text);
    std::ostringstream trace;
    parsed.command.SetTrace(&trace);
    ::testing::internal::CaptureStderr();
    static_cast<void>(ParseTables(parsed.command));
    const std::string steps = ::testing::internal::GetCapturedStderr();
    std::set<int> rules;
    for (std::size_t at = steps.find(kMark); at != std::string::npos;
         at = steps.find(kMark, at + 1)) {
        rules.insert(std::stoi(steps.substr(at + kMark.size())));
    }
    return rules;
}

TEST(TbTrTablesTest, EveryRuleIsReducedSomewhere) {
    std::set<int> reduced;
    for (const RuleCase& c : RuleCases()) {
        SCOPED_TRACE(c.text);
        const std::set<int> rules = ReducedRules(c.text);
        for (const int rule : c.rules) EXPECT_EQ(rules.count(rule), 1U) << "rule " << rule;
        reduced.insert(rules.begin(), rules.end());
    }
    // The rules that end the parse build nothing.
    for (const MistakeCase& c : kErrorCases) {
        const std::set<int> rules = ReducedRules(c.text);
        reduced.insert(rules.begin(), rules.end());
    }
    constexpr int kRules = 152;
    for (int rule = 1; rule <= kRules; ++rule)
        EXPECT_EQ(reduced.count(rule), 1U) << "rule " << rule;
    EXPECT_EQ(reduced.size(), static_cast<std::size_t>(kRules));
}
#endif

}  // namespace
}  // namespace quillet
