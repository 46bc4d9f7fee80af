#include "outline/askedcommand.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "outlinetext.h"
#include "platform/codepage.h"
#include "support/doublebytepage.h"
#include "support/repetition.h"
#include "support/rownames.h"

namespace quillet::outline {
namespace {

using namespace std::string_literals;

struct AskedCase {
    const char* name;
    std::string command;
    std::string asked;
};

void PrintTo(const AskedCase& askedCase, std::ostream* pStream) { *pStream << askedCase.name; }

std::string Asked(const std::string& command, const CodePage& codePage = CodePage::Utf8()) {
    return TextOfOutline(ReadAskedCommand(codePage, command, false));
}

class AskedCommandTest : public testing::TestWithParam<AskedCase> {};

TEST_P(AskedCommandTest, SaysWhatIsAsked) {
    EXPECT_EQ(Asked(GetParam().command), GetParam().asked);
}

// The examples of the guide that are converted, by what it says of each.
const AskedCase kAskedExamples[] = {
    {"the frame", "TABLES /TABLE=region BY sex", "table region BY sex"},
    {"an expression", "TABLES /OBSERVATION=income /TABLE=region + (sex > agegroup) BY income",
     "scale income | table region+(sex>agegroup) BY income:scale"},
    {"nestings over stackings",
     "TABLES /TABLE=region > (sex + agegroup) BY year > (quarter + month)",
     "table region>(sex+agegroup) BY year>(quarter+month)"},
    {"a scale variable outermost",
     "TABLES /OBSERVATION=income /TABLE=income > region BY sex /STATISTICS=MEAN(income)",
     "scale income | table income:scale>region BY sex | MEAN(income)"},
    {"labels and formats",
     "TABLES /OBSERVATION=income\n  /TABLE=region BY income\n"
     "  /STATISTICS=MEAN(income 'Average' (F8.2)) PTILE 25 (income) UNWEIGHTED COUNT(income (F6.0) "
     "'n')",
     "scale income | table region BY income:scale@2 | MEAN(income 'Average' F8.2=F 8 2)@3 | "
     "PTILE 25(income)@3 | U COUNT(income 'n' F6.0=F 6 0)@3"},
    {"functions without variables",
     "TABLES /OBSERVATION=income age\n  /TABLE=region BY income + age + sex\n"
     "  /STATISTICS=COUNT() MEAN(age 'Mean age') SUM(income)",
     "scale income | scale age | table region BY income:scale+age:scale+sex@2 | COUNT()@3 | "
     "MEAN(age 'Mean age')@3 | SUM(income)@3"},
    {"a set without functions", "TABLES /MRGROUP=media tv radio press /TABLE=media",
     "mcset media = tv radio press | table media:set"},
    {"three percentages",
     "TABLES /TABLE=region BY sex\n"
     "  /STATISTICS=CPCT(region 'of row':region) CPCT(region 'of column':sex) CPCT(region 'of "
     "all')",
     "table region BY sex | CPCT(region 'of row':region) %base valid cases@2 | CPCT(region 'of "
     "column':sex) %base valid cases@2 | CPCT(region 'of all') %table valid cases@2"},
    {"a base in a stacking", "TABLES /TABLE=region BY sex + agegroup /STATISTICS=CPCT(region:sex)",
     "table region BY sex+agegroup | CPCT(region:sex) %base valid cases"},
    {"totals",
     "TABLES /FTOTAL=total 'All regions' /PTOTAL=both\n"
     "  /TABLE=region + total BY both + sex",
     "ftotal total 'All regions' | ptotal both | table region+total:total BY both:total+sex@2 | "
     "total total 'All regions' after region@2 | total both before sex@2"},
    {"totals beside groups",
     "TABLES /OBSERVATION=income /FTOTAL=total\n"
     "  /TABLE=region + total + sex + total BY income > (year + quarter) + total",
     "scale income | ftotal total | table region+total:total+sex+total:total BY "
     "(income:scale>(year+quarter))+total:total@2 | total total after region@2 | total total after "
     "sex@2 | total total after year+quarter@2"},
    {"a total with statistics of its own",
     "TABLES /FTOTAL=total 'All' /TABLE=region + total\n"
     "  /STATISTICS=COUNT(region total) CPCT(region)",
     "ftotal total 'All' | table region+total:total | COUNT(region)@2 | COUNT(total)@2 | "
     "CPCT(region) %table valid cases@2 | total total 'All' after region"},
    {"sets of responses",
     "TABLES /MRGROUP=newspapers \"Papers read\" paper1 TO paper5\n"
     "  /MDGROUP=media tv radio press (1)\n  /TABLE=newspapers BY sex + media\n"
     "  /STATISTICS=COUNT(newspapers) RPCT(newspapers:sex media)",
     "mcset newspapers 'Papers read' = paper1-paper5 | mdset media = tv radio press (1)@2 | table "
     "newspapers:set BY sex+media:set@3 | COUNT(newspapers)@4 | RPCT(newspapers:sex media) %base "
     "responses/cases@4"},
    {"labels in the columns", "TABLES /TABLE=q1 + q2 + q3 BY (LABELS) /STATISTICS=COUNT() CPCT()",
     "table q1+q2+q3 BY (LABELS) | clabels columns | COUNT() | CPCT() %table valid cases"},
    {"statistics in the rows",
     "TABLES /OBSERVATION=income /TABLE=region > (STATISTICS) BY income /STATISTICS=MEAN(income)",
     "scale income | table region>(STATISTICS) BY income:scale | slabels rows | MEAN(income)"},
    {"a sort order",
     "TABLES /OBSERVATION=income /TABLE=region BY sex > income\n  /STATISTICS=MEAN(income)\n"
     "  /SORT=ASCENDING region sex (MEAN(income))",
     "scale income | table region BY sex>income:scale | MEAN(income)@2 | sort region up@3 | sort "
     "sex up MEAN(income)@3"},
    {"titles",
     "TABLES /AUTOLABEL=ON\n"
     "  /TABLE=region /TITLE='Regions' \"by number of cases\" /CORNER='Region' /CAPTION='Survey of "
     "1998'\n  /TABLE=sex\n  /TABLE=agegroup /CORNER='Age'",
     "autolabel on | table region@2 | title 'Regions' 'by number of cases'@2 | corner 'Region'@2 | "
     "caption 'Survey of 1998'@2 | table sex@3 | automatic title | table agegroup@4 | automatic "
     "title | corner 'Age'@4"},
    {"empty and missing cells",
     "TABLES /FORMAT=ZERO MISSING('n.a.') /MISSING=INCLUDE /TABLE=region BY sex",
     "empty zero | missing text 'n.a.' | missing include | table region BY sex | with missing"},
    {"a BREAK", "TABLES /BREAK=BY region /TABLE=sex BY agegroup /TABLE=year BY quarter",
     "table sex BY agegroup BY region | table year BY quarter BY region"},
    {"subcommands that are dropped",
     "TABLES /FORMAT=CWIDTH(12,8) /BOXCHARS='-|' /LAYOUT=wide /TABLE=region\n"
     "  /FOOTNOTE='Source: survey'",
     "table region | footnote 'Source: survey'@2 | setting FORMAT {CWIDTH(12,8)} | passed over "
     "BOXCHARS {'-|'} | unknown LAYOUT {wide}"},
    {"a BREAK beside a FORMAT that breaks off",
     "TABLES /FORMAT=MISSING /BREAK=BY region /TABLE=sex /TABLE=agegroup /TABLE=year",
     "table sex BY region | table agegroup BY region | table year BY region | taken TABLE #0 | "
     "unreadable FORMAT {MISSING}"},
};
INSTANTIATE_TEST_SUITE_P(Examples, AskedCommandTest, testing::ValuesIn(kAskedExamples),
                         NameOfRow<AskedCase>);

// What notes are about: commands whose new tables are not what these ask for.
const AskedCase kAskedKnownDifferences[] = {
    {"two totals around a variable",
     "TABLES /PTOTAL=n 'Base' /FTOTAL=t 'All' /TABLE=region BY n + q1 + t /STATISTICS=COUNT(n "
     "'Cases') CPCT(q1 '%':region)",
     "ptotal n 'Base' | ftotal t 'All' | table region BY n:total+q1+t:total | COUNT(n 'Cases') | "
     "CPCT(q1 '%':region) %base valid cases | total n 'Base' before q1 | total t 'All' after q1"},
    {"a variable beside its group",
     "TABLES /TABLE=one + region BY q1 /STATISTICS=CPCT(q1 '':region)",
     "table one+region BY q1 | CPCT(q1 '':region) %base valid cases"},
    {"several totals before one variable",
     "TABLES /PTOTAL=t n /TABLE=t + sex + age BY n + sex /STATISTICS=COUNT(n '' sex) CPCT(sex:sex "
     "age)",
     "ptotal t | ptotal n | table t:total+sex+age BY n:total+sex | COUNT(n '') | COUNT(sex) | "
     "CPCT(sex:sex age) %base valid cases | total t before sex | total n before sex"},
    {"a mean of categories", "TABLES /TABLE=q1 /STATISTICS=MEAN(q1)", "table q1 | MEAN(q1)"},
    {"a base that is not in the table", "TABLES /TABLE=q1 BY tban /STATISTICS=CPCT(q1:sban)",
     "table q1 BY tban | CPCT(q1:sban) %base valid cases"},
    {"a base within a nesting", "TABLES /TABLE=a > b /STATISTICS=CPCT(b:a)",
     "table a>b | CPCT(b:a) %base valid cases"},
    {"a total of labels", "TABLES /FTOTAL=t /TABLE=(LABELS) + t BY (q1 + q2) /STATISTICS=COUNT",
     "ftotal t | table (LABELS)+t:total BY q1+q2 | clabels rows | COUNT() | total t after "
     "(LABELS)"},
    {"a total that is a base",
     "TABLES /FTOTAL=n /TABLE=q1 + n BY sex /STATISTICS=COUNT(n '') CPCT(q1)",
     "ftotal n | table q1+n:total BY sex | COUNT(n '') | CPCT(q1) %table valid cases | total n "
     "after q1"},
    {"a total by a name that comes again", "TABLES /FTOTAL=t /TABLE=region + t BY (region > sex)",
     "ftotal t | table region+t:total BY region>sex | total t after region"},
    {"a set of one", "TABLES /MRGROUP=m 'x' q1 /TABLE=m", "mcset m 'x' = q1 | table m:set"},
    {"an OBSERVATION that is swallowed",
     "TABLES /FORMAT MISSING /OBSERVATION x /TABLE x /STATISTICS MEAN(x)",
     "scale x | table x:scale | MEAN(x) | taken OBSERVATION | unreadable FORMAT {MISSING}"},
    {"a TABLE that is swallowed", "TABLES /FORMAT MISSING /TABLE a /TABLE b",
     "table a | table b | taken TABLE #0 | unreadable FORMAT {MISSING}"},
    {"a macro's name", "TABLES /TABLE=@col BY !x", "table @col BY !x"},
    {"a sort by percentages", "TABLES /TABLE q1 BY sex /SORT q1 (CPCT)",
     "table q1 BY sex | sort q1 down CPCT"},
    {"a title of another name", "TABLES /TABLE a /TTITLE 'a'", "table a | title 'a'"},
    {"two titles", "TABLES /TABLE a /TITLE 'a' /TITLE 'b'", "table a | title 'a' | title 'b'"},
    {"a command inside", "TABLES /TABLE=a BY b. /* foo */\n\nGET FILE=x",
     "table a BY b | unreadable #0 {GET FILE=x}@3"},
    {"a function that a comment makes a subcommand",
     "TABLES /TABLE=a + b /STATISTICS=COUNT(a) /* the second */ CPCT(b)",
     "table a+b | COUNT(a) | CPCT(b) %table valid cases"},
    {"settings of FORMAT before one that counts", "TABLES /FORMAT=CWIDTH(10,8) ZERO /TABLE=a",
     "empty zero | table a | setting FORMAT {CWIDTH(10,8)}"},
};
INSTANTIATE_TEST_SUITE_P(KnownDifferences, AskedCommandTest,
                         testing::ValuesIn(kAskedKnownDifferences), NameOfRow<AskedCase>);

const AskedCase kAskedCommands[] = {
    {"nothing", "", ""},
    {"the word alone", "TABLES", ""},
    {"no first slash", "TABLES TABLE a", "table a"},
    {"an equals sign before the first slash", "TABLES = /TABLE a", "table a"},
    {"slashes without subcommands", "TABLES / / /TABLE=a / /", "table a"},
    {"subcommands have three letters", "TABLES /OBS x /TAB x /STA MEA(x) /TIT 'y'",
     "scale x | table x:scale | MEAN(x) | title 'y'"},
    {"letters after the third do not count", "TABLES /TABULATE a", "table a"},
    {"two letters are no subcommand", "TABLES /TA a /TABLE b", "table b | unknown TA {a}"},
    {"lower case", "tables /table a by b /statistics count", "table a BY b | COUNT()"},
    {"equals signs are nowhere needed", "TABLES /TABLE a BY b", "table a BY b"},
    {"equals signs anywhere", "TABLES = /= TABLE == a = BY = b", "table a BY b"},
    {"commas anywhere", "TABLES , /, TABLE ,, a , BY , b /STATISTICS COUNT(,a,,b,)",
     "table a BY b | COUNT(a) | COUNT(b)"},
    {"a stray slash", "TABLES /TABLE=a / BY b", "table a BY b"},
    {"a stray slash before a setting", "TABLES /AUTOLABEL / ON /BASE / ALL /TABLE=a",
     "base all | autolabel on | table a | automatic title"},
    {"a stray slash between texts", "TABLES /TABLE=a /TITLE='a' / 'b'", "table a | title 'a' 'b'"},
    {"a setting first", "TABLES ON /TABLE=a", "table a | unknown ON {}"},
    {"a text first", "TABLES 'a' /TABLE=b", "table b | unreadable {'a'}"},
    {"a reserved word first", "TABLES BY b", "unreadable {BY} | unreadable {b}"},
    {"a comment", "TABLES /TABLE=a /* rows */ BY b", "table a BY b"},
    {"a comment between subcommands", "TABLES /* one */ /TABLE=a /* two */ /STATISTICS=COUNT",
     "table a | COUNT()"},
    {"an open comment", "TABLES /TABLE=a /* rows\n BY b", "table a BY b"},
    {"a comment before a word", "TABLES /TABLE=a + /* b + */ table", "table a+table"},
    {"empty comments", "TABLES /TABLE=a /**/ BY /***/ b", "table a BY b"},
    {"stars before a slash are no comment", "TABLES /TABLE=a */STATISTICS=COUNT",
     "table a | COUNT() | unreadable #0 TABLE {*}"},
    {"a period before a comment", "TABLES /TABLE=a. /* b\n /STATISTICS=COUNT",
     "table a | unreadable #0 {/STATISTICS=COUNT}@2"},
    {"a period before a comment that is all", "TABLES /TABLE=a. /* b */ ", "table a"},
    {"a period before comments", "TABLES /TABLE=a. /* b */ /* c */ \n\n/SORT a",
     "table a | unreadable #0 {/SORT a}@3"},
    {"a period before a comment and more", "TABLES /TABLE=a. /* b */ /SORT a",
     "table a. | sort a down"},
    {"a period by itself before a comment", "TABLES /TABLE=(a) . /* b */\n/SORT a",
     "table a | unreadable #0 {/SORT a}@2"},
    {"a period after a number before a comment",
     "TABLES /TABLE=a /STATISTICS=PTILE 5. /* b */\nEXECUTE",
     "table a | PTILE 5() | unreadable #0 {EXECUTE}@2"},
    {"a period within a line", "TABLES /TABLE=a. BY b.c", "table a. BY b.c"},
    {"a period in a text", "TABLES /TABLE=a /TITLE='a.' /* b */ 'c'", "table a | title 'a.' 'c'"},
    {"what no token can be made of", "TABLES /TABLE=a /STATISTICS=COUNT\n \x01 CPCT",
     "table a | COUNT() | unreadable #0 {\x01 CPCT}@2"},
    {"a number that is too large", "TABLES /TABLE=a /STATISTICS=PTILE 1e999",
     "table a | PTILE 1e999()"},
    {"a number that is none", "TABLES /TABLE=a /STATISTICS=PTILE 0x5 (a)",
     "table a | PTILE() | unreadable #0 {0x5 (a)}"},
    {"a text without an end", "TABLES /TABLE=a /TITLE='b\n/STATISTICS=COUNT",
     "table a | title | unreadable #0 {'b /STATISTICS=COUNT}"},
    {"nothing that can be read", "\x01", "unreadable {\x01}"},
    {"NUL", "TABLES /TABLE=a\0 BY b"s, "table a | unreadable #0 {BY b}"},
    {"NUL at the end", "TABLES /TABLE=a\n\0"s, "table a"},
    {"a byte that is no character", "TABLES /TABLE=a /* c */\n/TITLE='x' /SORT=\xFC b",
     "table a | title 'x'@2 | unreadable #0 {\xFC b}@2"},
    {"a byte that is no character in a comment", "TABLES /TABLE=a /* \xFC */ BY b",
     "table a | unreadable #0 {\xFC */ BY b}"},
    {"doubled quotes", "TABLES /TABLE=a /TITLE='it''s' \"say \"\"a\"\"\"",
     "table a | title 'it's' 'say \"a\"'"},
    {"joined texts", "TABLES /TABLE=a /TITLE='a'+'b' +\"c\"\n+'d' 'e'",
     "table a | title 'abcd' 'e'"},
    {"a sign after a text", "TABLES /TABLE=a /TITLE='a' + /CORNER='b'",
     "table a | title 'a' | corner 'b'"},
    {"lines", "TABLES\n/FTOTAL=t\n\r\r\n/TABLE\n=a\n+t\n/STATISTICS\nCOUNT\n(a\nt)",
     "ftotal t@2 | table a+t:total@4 | COUNT(a)@9 | COUNT(t)@10 | total t after a@6"},
    {"lines after texts", "TABLES /TABLE=a\n/TITLE='a'\n\n'b'\n/CORNER='c'\n+\n'd'\n/CAPTION='e'",
     "table a | title 'a' 'b'@2 | corner 'c' 'd'@5 | caption 'e'@8"},
    {"lines in comments", "TABLES /* a */\n/* b\n /TABLE=a /* c */\n\n /STATISTICS=COUNT /* d",
     "table a@3 | COUNT()@5"},
    {"a subcommand that is not known", "TABLES /LAYOUT x 'y' (1) /TABLE=a /BAR",
     "table a | unknown LAYOUT {x 'y' (1)} | unknown #0 BAR {}"},
    {"subcommands that are passed over",
     "TABLES /BOXCHARS='-' /CONTINUED=ON /FONTCHARS x /TABLE=a /INDEX='i' /WRITE=x",
     "table a | passed over BOXCHARS {'-'} | passed over CONTINUED {ON} | passed over FONTCHARS "
     "{x} | passed over #0 INDEX {'i'} | passed over #0 WRITE {x}"},
    {"remarks in the order of lines", "TABLES /LAYOUT x\n/BOXCHARS='-'\n/TABLE=a 1\n/BAR y",
     "table a@3 | unknown LAYOUT {x} | passed over BOXCHARS {'-'}@2 | unreadable #0 TABLE {1}@3 | "
     "unknown #0 BAR {y}@4"},
    {"a long remark", "TABLES /LAYOUT " + Repeat("abcd ", 100) + "/TABLE=a",
     "table a | unknown LAYOUT {" + Repeat("abcd ", 39) + "abcd}"},
    {"white space in a remark", "TABLES /LAYOUT  x\n\ty , z  /* c */ w /TABLE=a",
     "table a@2 | unknown LAYOUT {x y , z w}"},
};
INSTANTIATE_TEST_SUITE_P(Commands, AskedCommandTest, testing::ValuesIn(kAskedCommands),
                         NameOfRow<AskedCase>);

const AskedCase kAskedExpressions[] = {
    {"one variable", "TABLES /TABLE=a", "table a"},
    {"three dimensions", "TABLES /TABLE=a BY b BY c", "table a BY b BY c"},
    {"four dimensions", "TABLES /TABLE=a BY b BY c BY d",
     "table a BY b BY c | unreadable #0 TABLE {BY d}"},
    {"stacking", "TABLES /TABLE=a + b + c", "table a+b+c"},
    {"nesting", "TABLES /TABLE=a > b > c", "table a>b>c"},
    {"nesting is stronger", "TABLES /TABLE=a + b > c + d", "table a+(b>c)+d"},
    {"nesting is stronger first", "TABLES /TABLE=a > b + c", "table (a>b)+c"},
    {"parentheses are stronger", "TABLES /TABLE=(a + b) > c", "table (a+b)>c"},
    {"parentheses at the end", "TABLES /TABLE=a > (b + c)", "table a>(b+c)"},
    {"parentheses of the same operator come out flat", "TABLES /TABLE=a + (b + (c + d)) + e",
     "table a+b+c+d+e"},
    {"groups on both sides", "TABLES /TABLE=(a > b) > (c > d)", "table a>b>c>d"},
    {"parentheses around all", "TABLES /TABLE=((a + b)) BY ((c))", "table a+b BY c"},
    {"groups in groups", "TABLES /TABLE=((a + b) > c + d) > (e + f > g)",
     "table (((a+b)>c)+d)>(e+(f>g))"},
    {"words for signs", "TABLES /TABLE=a GT b", "table a>b"},
    {"words that are keywords elsewhere", "TABLES /TABLE=labels + statistics BY zero",
     "table labels+statistics BY zero"},
    {"spelling is kept", "TABLES /TABLE=Region > SEX", "table Region>SEX"},
    {"a name in parentheses", "TABLES /TABLE=(a)", "table a"},
    {"statistics in the columns", "TABLES /TABLE=a BY (STATISTICS) /STATISTICS=COUNT",
     "table a BY (STATISTICS) | slabels columns | COUNT()"},
    {"statistics in the layers", "TABLES /TABLE=a BY b BY (STATISTICS) /STATISTICS=COUNT",
     "table a BY b BY (STATISTICS) | slabels layers | COUNT()"},
    {"statistics without statistics", "TABLES /TABLE=a BY (STATISTICS)",
     "table a BY (STATISTICS) | slabels columns hidden"},
    {"statistics in a group", "TABLES /TABLE=(a + (STATISTICS)) > b /STATISTICS=COUNT",
     "table (a+(STATISTICS))>b | slabels rows | COUNT()"},
    {"markers have three letters", "TABLES /TABLE=(sta) BY (lab)",
     "table (STATISTICS) BY (LABELS) | slabels rows hidden | clabels columns"},
    {"markers in two parentheses", "TABLES /TABLE=((STATISTICS)) BY a",
     "table (STATISTICS) BY a | slabels rows hidden"},
    {"of two markers the first counts", "TABLES /TABLE=a BY (LABELS) BY (LABELS)",
     "table a BY (LABELS) BY (LABELS) | clabels columns"},
    {"labels in the layers", "TABLES /TABLE=a BY b BY (LABELS)",
     "table a BY b BY (LABELS) | clabels layers"},
    {"a group of one is no marker", "TABLES /TABLE=(labels + a)", "table labels+a"},
    {"no operator", "TABLES /TABLE=a b BY c", "table a BY c | unreadable #0 TABLE {b}"},
    {"two operators", "TABLES /TABLE=a + + b", "table a+b | unreadable #0 TABLE {+}"},
    {"an operator first", "TABLES /TABLE=+ a", "table a | unreadable #0 TABLE {+}"},
    {"an operator last", "TABLES /TABLE=a +", "table a | unreadable #0 TABLE {+}"},
    {"an operator before BY", "TABLES /TABLE=a > BY b", "table a BY b | unreadable #0 TABLE {>}"},
    {"no rows", "TABLES /TABLE=BY b", "table  BY b | unreadable #0 TABLE {BY}"},
    {"no columns", "TABLES /TABLE=a BY", "table a | unreadable #0 TABLE {BY}"},
    {"nothing", "TABLES /TABLE /STATISTICS=COUNT", "table | COUNT() | unreadable #0 TABLE {}"},
    {"an open parenthesis", "TABLES /TABLE=(a + b", "table a+b | unreadable #0 TABLE {(}"},
    {"open parentheses", "TABLES /TABLE=a > (b + (",
     "table a>b | unreadable #0 TABLE {(} | "
     "unreadable #0 TABLE {+} | unreadable #0 TABLE {(}"},
    {"a parenthesis that closes nothing", "TABLES /TABLE=a) + b",
     "table a+b | unreadable #0 TABLE {)}"},
    {"empty parentheses", "TABLES /TABLE=a + () b",
     "table a+b | unreadable #0 TABLE {)} | "
     "unreadable #0 TABLE {(}"},
    {"BY in parentheses", "TABLES /TABLE=(a BY b) BY c",
     "table a BY c | unreadable #0 TABLE {BY b}"},
    {"a range", "TABLES /TABLE=a TO c BY d", "table a BY d | unreadable #0 TABLE {TO c}"},
    {"a number and a text", "TABLES /TABLE=a 1 'x' : + b",
     "table a+b | unreadable #0 TABLE {1 'x' :}"},
    {"ALL is no variable", "TABLES /TABLE=ALL BY b",
     "table  BY b | unreadable #0 TABLE {ALL} | unreadable #0 TABLE {BY}"},
    {"two tables", "TABLES /TABLE=a /TABLE=b BY c", "table a | table b BY c"},
    {"a scale variable", "TABLES /OBSERVATION=x /TABLE=a BY x > b",
     "scale x | table a BY x:scale>b"},
    {"names in other letters", "TABLES /OBSERVATION=Income /TABLE=INCOME BY income",
     "scale Income | table INCOME:scale BY income:scale"},
};
INSTANTIATE_TEST_SUITE_P(Expressions, AskedCommandTest, testing::ValuesIn(kAskedExpressions),
                         NameOfRow<AskedCase>);

const AskedCase kAskedStatistics[] = {
    {"one function", "TABLES /TABLE=a /STATISTICS=COUNT", "table a | COUNT()"},
    {"nothing", "TABLES /TABLE=a /STATISTICS", "table a | statistics"},
    {"empty parentheses", "TABLES /TABLE=a /STATISTICS=COUNT()", "table a | COUNT()"},
    {"a variable", "TABLES /TABLE=a /STATISTICS=COUNT(a)", "table a | COUNT(a)"},
    {"several variables", "TABLES /TABLE=a + b /STATISTICS=COUNT(a b)",
     "table a+b | COUNT(a) | COUNT(b)"},
    {"several functions", "TABLES /TABLE=a /STATISTICS=COUNT SUM(a) MEAN",
     "table a | COUNT() | SUM(a) | MEAN()"},
    {"several subcommands count as one", "TABLES /TABLE=a /STATISTICS=COUNT /STATISTICS=SUM(a)",
     "table a | COUNT() | SUM(a)"},
    {"a subcommand for each table",
     "TABLES /TABLE=a /STATISTICS=COUNT /TABLE=b /TABLE=c /STATISTICS=SUM",
     "table a | COUNT() | table b | table c | SUM()"},
    {"before the first table", "TABLES /FORMAT=MISSING /STATISTICS=COUNT /TABLE=a /TABLE=b",
     "table a | COUNT() | table b | taken STATISTICS | unreadable FORMAT {MISSING}"},
    {"without a table", "TABLES /STATISTICS=COUNT", "unreadable STATISTICS {COUNT}"},
    {"a label for all", "TABLES /TABLE=a /STATISTICS=COUNT('n')", "table a | COUNT( 'n')"},
    {"a format for all", "TABLES /TABLE=a /STATISTICS=COUNT((F5.0))",
     "table a | COUNT( F5.0=F 5 0)"},
    {"label and format for all", "TABLES /TABLE=a /STATISTICS=COUNT((F5.0) 'n')",
     "table a | COUNT( 'n' F5.0=F 5 0)"},
    {"format and label of each", "TABLES /TABLE=a+b /STATISTICS=COUNT(a (F5) 'n' b 'm' (F6))",
     "table a+b | COUNT(a 'n' F5=F 5) | COUNT(b 'm' F6=F 6)"},
    {"an empty label", "TABLES /TABLE=a /STATISTICS=COUNT(a '')", "table a | COUNT(a '')"},
    {"a label of two parts", "TABLES /TABLE=a /STATISTICS=COUNT(a 'n of '+\n'a')",
     "table a | COUNT(a 'n of a')"},
    {"formats", "TABLES /TABLE=a /STATISTICS=SUM(a (dollar10.2) b (COMMA8) c (PCT) d (F8.))",
     "table a | SUM(a dollar10.2=DOLLAR 10 2) | SUM(b COMMA8=COMMA 8) | SUM(c PCT=PCT) | SUM(d "
     "F8.=F 8)"},
    {"a huge format", "TABLES /TABLE=a /STATISTICS=SUM(a (F99999999999.99999999999))",
     "table a | SUM(a F99999999999.99999999999=F 214748363 214748363)"},
    {"two labels", "TABLES /TABLE=a /STATISTICS=COUNT(a 'x' 'y')",
     "table a | COUNT(a 'x') | unreadable #0 STATISTICS {'y'}"},
    {"two formats", "TABLES /TABLE=a /STATISTICS=COUNT(a (F5) (F6) b)",
     "table a | COUNT(a F5=F 5) | COUNT(b) | unreadable #0 STATISTICS {(F6)}"},
    {"a format in two parentheses", "TABLES /TABLE=a /STATISTICS=COUNT(a ((F5)) b)",
     "table a | COUNT(a) | COUNT(b) | unreadable #0 STATISTICS {((F5))}"},
    {"a number as a format", "TABLES /TABLE=a /STATISTICS=COUNT(a (8.2))",
     "table a | COUNT(a) | unreadable #0 STATISTICS {(8.2)}"},
    {"a percentile", "TABLES /TABLE=a /STATISTICS=PTILE 25(a) HPTILE 2.5 (a) APTILE +50",
     "table a | PTILE 25(a) | HPTILE 2.5(a) | APTILE +50()"},
    {"a negative number", "TABLES /TABLE=a /STATISTICS=PTILE -5", "table a | PTILE -5()"},
    {"a sign apart from its number", "TABLES /TABLE=a /STATISTICS=PTILE - 5",
     "table a | PTILE -5()"},
    {"unweighted", "TABLES /TABLE=a /STATISTICS=UNWEIGHTED COUNT(a b) COUNT U SUM unw MEAN",
     "table a | U COUNT(a) | U COUNT(b) | COUNT() | U SUM() | U MEAN()"},
    {"U is a name in parentheses", "TABLES /TABLE=u /STATISTICS=COUNT(u)", "table u | COUNT(u)"},
    {"unweighted nothing", "TABLES /TABLE=a /STATISTICS=COUNT U",
     "table a | COUNT() | unreadable #0 STATISTICS {U}"},
    {"three letters of a function", "TABLES /TABLE=a /STATISTICS=MEA MED MINI MAXI STDEV VAL CAS",
     "table a | MEAN() | MEDIAN() | MINIMUM() | MAXIMUM() | STDDEV() | VALIDN() | CASES()"},
    {"all functions",
     "TABLES /TABLE=a /STATISTICS=CASES COUNT MAXIMUM MEAN MEDIAN MODE MINIMUM PTILE RANGE "
     "RESPONSES SEMEAN STDDEV SUM VALIDN VARIANCE HPTILE WPTILE RPTILE EPTILE APTILE",
     "table a | CASES() | COUNT() | MAXIMUM() | MEAN() | MEDIAN() | MODE() | MINIMUM() | PTILE() "
     "| RANGE() | RESPONSES() | SEMEAN() | STDDEV() | SUM() | VALIDN() | VARIANCE() | HPTILE() | "
     "WPTILE() | RPTILE() | EPTILE() | APTILE()"},
    {"a function that is not known", "TABLES /TABLE=a /STATISTICS=average(a) MO",
     "table a | ?AVERAGE(a) | ?MO()"},
    {"the percentages", "TABLES /TABLE=a /STATISTICS=CPCT RPCT CSPCT SPCT VPCT",
     "table a | CPCT() %table valid cases | RPCT() %table responses/cases | CSPCT() %table "
     "responses/cases | SPCT() %table values | VPCT() %table valid values"},
    {"base variables", "TABLES /TABLE=a BY b /STATISTICS=SPCT(x y 'l':a b) VPCT(x:b)",
     "table a BY b | SPCT(x:a b) %base values | SPCT(y 'l':a b) %base values | VPCT(x:b) %base "
     "valid values"},
    {"base variables without a variable", "TABLES /TABLE=a /STATISTICS=CPCT('%':a) CPCT(:a)",
     "table a | CPCT( '%':a) %base valid cases | CPCT(:a) %base valid cases"},
    {"base variables of what is no percentage", "TABLES /TABLE=a /STATISTICS=COUNT(a:a)",
     "table a | COUNT(a:a)"},
    {"no base variables after the colon", "TABLES /TABLE=a /STATISTICS=CPCT(a:)",
     "table a | CPCT(a) %table valid cases | unreadable #0 STATISTICS {:}"},
    {"two colons", "TABLES /TABLE=a /STATISTICS=CPCT(a:b:c)",
     "table a | CPCT(a:b c) %base valid cases | unreadable #0 STATISTICS {:}"},
    {"texts among base variables", "TABLES /TABLE=a /STATISTICS=CPCT(a:b 'x' 1 c) COUNT",
     "table a | CPCT(a:b c) %base valid cases | COUNT() | unreadable #0 STATISTICS {'x' 1}"},
    {"a percentage of a set", "TABLES /MRGROUP=g a b /TABLE=g /STATISTICS=CPCT(g c) RPCT(g)",
     "mcset g = a b | table g:set | CPCT(g) %table cases | CPCT(c) %table valid cases | RPCT(g) "
     "%table responses/cases"},
    {"an open parenthesis", "TABLES /TABLE=a /STATISTICS=COUNT(a b",
     "table a | COUNT(a) | COUNT(b) | unreadable #0 STATISTICS {(}"},
    {"a parenthesis that closes nothing", "TABLES /TABLE=a /STATISTICS=COUNT(a)) SUM",
     "table a | COUNT(a) | SUM() | unreadable #0 STATISTICS {)}"},
    {"signs among variables", "TABLES /TABLE=a /STATISTICS=COUNT(a + b TO c)",
     "table a | COUNT(a) | COUNT(b) | COUNT(c) | unreadable #0 STATISTICS {+} | unreadable #0 "
     "STATISTICS {TO}"},
    {"parentheses before a function", "TABLES /TABLE=a /STATISTICS=(COUNT SUM)",
     "table a | COUNT() | SUM() | unreadable #0 STATISTICS {(} | unreadable #0 STATISTICS {)}"},
    {"a text between functions", "TABLES /TABLE=a /STATISTICS=COUNT 'n' SUM",
     "table a | COUNT() | SUM() | unreadable #0 STATISTICS {'n'}"},
    {"a total of its own", "TABLES /FTOTAL=t /TABLE=a+t /STATISTICS=COUNT(t 'n' (F4.0))",
     "ftotal t | table a+t:total | COUNT(t 'n' F4.0=F 4 0) | total t after a"},
};
INSTANTIATE_TEST_SUITE_P(Statistics, AskedCommandTest, testing::ValuesIn(kAskedStatistics),
                         NameOfRow<AskedCase>);

const AskedCase kAskedTotals[] = {
    {"declarations", "TABLES /FTOTAL=a 'A' b c \"C\" /PTOTAL=d /TABLE=x",
     "ftotal a 'A' | ftotal b | ftotal c 'C' | ptotal d | table x"},
    {"a declaration that is not used", "TABLES /FTOTAL=t /TABLE=a", "ftotal t | table a"},
    {"not a name", "TABLES /FTOTAL=1 t 'x' 'y' u /TABLE=a",
     "ftotal t 'x' | ftotal u | table a | unreadable FTOTAL {1} | unreadable FTOTAL {'y'}"},
    {"of two declarations the first counts", "TABLES /PTOTAL=t 'p' /FTOTAL=T 'f' /TABLE=t + a",
     "ptotal t 'p' | ftotal T 'f' | table t:total+a | total t 'p' before a"},
    {"a total that is a variable of OBSERVATION first",
     "TABLES /OBSERVATION=t /FTOTAL=t /TABLE=a + t", "scale t | ftotal t | table a+t:scale"},
    {"in other letters", "TABLES /FTOTAL=Total /TABLE=a + TOTAL",
     "ftotal Total | table a+TOTAL:total | total TOTAL after a"},
    {"declared after the table", "TABLES /TABLE=a + t /FTOTAL=t",
     "ftotal t | table a+t:total | total t after a"},
    {"after a stacking, its last term", "TABLES /FTOTAL=t /TABLE=a + b + t",
     "ftotal t | table a+b+t:total | total t after b"},
    {"before a stacking, its first term", "TABLES /PTOTAL=t /TABLE=t + (a + b)",
     "ptotal t | table t:total+a+b | total t before a"},
    {"after a nesting, the outermost", "TABLES /FTOTAL=t /TABLE=a > b + t",
     "ftotal t | table (a>b)+t:total | total t after a"},
    {"before a nesting, the outermost", "TABLES /PTOTAL=t /TABLE=t + a > b",
     "ptotal t | table t:total+(a>b) | total t before a"},
    {"after a nesting in a group, its last term", "TABLES /FTOTAL=t /TABLE=(a + b) > c + t",
     "ftotal t | table ((a+b)>c)+t:total | total t after b"},
    {"before a nesting in a group, its first term", "TABLES /PTOTAL=t /TABLE=t + (a + b) > c",
     "ptotal t | table t:total+((a+b)>c) | total t before a"},
    {"beside a nesting in a scale variable, what is nested",
     "TABLES /OBSERVATION=x /FTOTAL=t /TABLE=x > a > b + t",
     "scale x | ftotal t | table (x:scale>a>b)+t:total | total t after a"},
    {"what is nested is a group", "TABLES /OBSERVATION=x /FTOTAL=t /TABLE=x > (a + b > c) + t",
     "scale x | ftotal t | table (x:scale>(a+(b>c)))+t:total | total t after a+(b>c)"},
    {"what is nested is a group in a group",
     "TABLES /OBSERVATION=x /FTOTAL=t /TABLE=x > ((a + b) > c + d) + t",
     "scale x | ftotal t | table (x:scale>(((a+b)>c)+d))+t:total | total t after ((a+b)>c)+d"},
    {"the last nesting on the way counts",
     "TABLES /OBSERVATION=x /FTOTAL=t /TABLE=(a + x > b) > c + t",
     "scale x | ftotal t | table ((a+(x:scale>b))>c)+t:total | total t after b"},
    {"what is nested is a scale variable", "TABLES /OBSERVATION=x y /FTOTAL=t /TABLE=x > y + t",
     "scale x | scale y | ftotal t | table (x:scale>y:scale)+t:total | total t after nothing"},
    {"beside a scale variable", "TABLES /OBSERVATION=x /FTOTAL=t /TABLE=x + t",
     "scale x | ftotal t | table x:scale+t:total | total t after nothing"},
    {"beside a set", "TABLES /MRGROUP=g a b /PTOTAL=t /TABLE=t + g",
     "ptotal t | mcset g = a b | table t:total+g:set | total t before g:set"},
    {"inside a group", "TABLES /FTOTAL=t /TABLE=(a + t) > b",
     "ftotal t | table (a+t:total)>b | total t after a"},
    {"a group of totals", "TABLES /FTOTAL=t u /TABLE=a + (t + u)",
     "ftotal t | ftotal u | table a+t:total+u:total | total t after a | total u after a"},
    {"a nested group of totals", "TABLES /FTOTAL=t u v /TABLE=(t + u) > b + v",
     "ftotal t | ftotal u | ftotal v | table ((t:total+u:total)>b)+v:total | total t after nothing "
     "| total u after nothing | total v after nothing"},
    {"a total before a group that begins with one", "TABLES /PTOTAL=t u /TABLE=t + (u + a) > b",
     "ptotal t | ptotal u | table t:total+((u:total+a)>b) | total t before a | total u before a"},
    {"totals before totals", "TABLES /PTOTAL=t u /TABLE=t + u + a",
     "ptotal t | ptotal u | table t:total+u:total+a | total t before a | total u before a"},
    {"totals of both kinds between variables", "TABLES /FTOTAL=f /PTOTAL=p /TABLE=a + f + p + b",
     "ftotal f | ptotal p | table a+f:total+p:total+b | total f after a | total p before b"},
    {"totals of both kinds the other way", "TABLES /FTOTAL=f /PTOTAL=p /TABLE=a + p + f + b",
     "ftotal f | ptotal p | table a+p:total+f:total+b | total p before b | total f after a"},
    {"the statistics between", "TABLES /FTOTAL=t /TABLE=a + (STATISTICS) + t",
     "ftotal t | table a+(STATISTICS)+t:total | slabels rows hidden | total t after a"},
    {"nothing to follow", "TABLES /FTOTAL=t /TABLE=t + a",
     "ftotal t | table t:total+a | total t after nothing"},
    {"nothing to precede", "TABLES /PTOTAL=t /TABLE=a + t",
     "ptotal t | table a+t:total | total t before nothing"},
    {"a total that is nested", "TABLES /FTOTAL=t /TABLE=a > t",
     "ftotal t | table a>t:total | total t after nothing"},
    {"a total alone", "TABLES /FTOTAL=t /TABLE=t BY a",
     "ftotal t | table t:total BY a | total t after nothing"},
    {"totals at the end of a group", "TABLES /FTOTAL=t u /TABLE=(a + t) > b + u",
     "ftotal t | ftotal u | table ((a+t:total)>b)+u:total | total t after a | total u after a"},
    {"totals in all dimensions", "TABLES /FTOTAL=t 'all' /TABLE=a+t BY b+t BY c+t",
     "ftotal t 'all' | table a+t:total BY b+t:total BY c+t:total | total t 'all' after a | total t "
     "'all' after b | total t 'all' after c"},
    {"totals in several tables", "TABLES /FTOTAL=t /TABLE=a+t\n/TABLE=b+t",
     "ftotal t | table a+t:total | total t after a | table b+t:total@2 | total t after b@2"},
};
INSTANTIATE_TEST_SUITE_P(Totals, AskedCommandTest, testing::ValuesIn(kAskedTotals),
                         NameOfRow<AskedCase>);

const AskedCase kAskedDeclarations[] = {
    {"scale variables", "TABLES /OBSERVATION=x, y z /TABLE=x",
     "scale x | scale y | scale z | table "
     "x:scale"},
    {"several OBSERVATIONs", "TABLES /OBSERVATION=x /OBSERVATION=y /TABLE=x BY y",
     "scale x | scale y | table x:scale BY y:scale"},
    {"a range has two ends", "TABLES /OBSERVATION=age TO income /TABLE=age BY size BY INCOME",
     "scale age-income | table age:scale BY size BY INCOME:scale"},
    {"a range of numbers", "TABLES /OBSERVATION=q2 TO q10 /TABLE=q1+Q2+q02+q007+q10+q11+r5+q",
     "scale q2-q10 | table q1+Q2:scale+q02:scale+q007:scale+q10:scale+q11+r5+q"},
    {"ranges that overlap", "TABLES /OBSERVATION=q5 TO q9 q1 TO q6 q20 TO q21 /TABLE=q7+q3+q10+q20",
     "scale q5-q9 | scale q1-q6 | scale q20-q21 | table q7:scale+q3:scale+q10+q20:scale"},
    {"a range of other names", "TABLES /OBSERVATION=a1 TO b9 /TABLE=a5+b9",
     "scale a1-b9 | table a5+b9:scale"},
    {"a range without a beginning", "TABLES /OBSERVATION=TO x /TABLE=x",
     "scale x | table x:scale | unreadable OBSERVATION {TO}"},
    {"a range without an end", "TABLES /OBSERVATION=x TO /TABLE=x",
     "scale x | table x:scale | unreadable OBSERVATION {TO}"},
    {"what is no variable", "TABLES /OBSERVATION=x 'y' (1) z /TABLE=x",
     "scale x | scale z | table x:scale | unreadable OBSERVATION {'y' (1)}"},
    {"no variables", "TABLES /OBSERVATION /TABLE=x", "table x"},
    {"lines of variables", "TABLES /OBSERVATION=x\ny TO\nz\nw /TABLE=a",
     "scale x | scale y-z@2 | scale w@4 | table a@4"},
    {"OBSERVATION after the table", "TABLES /TABLE=x /OBSERVATION=x", "scale x | table x:scale"},
    {"a set of categories", "TABLES /MRGROUP=g 'Group' a b TO d e /TABLE=g",
     "mcset g 'Group' = a b-d e | table g:set"},
    {"a set of dichotomies", "TABLES /MDGROUP=g 'Group' a b (1) /TABLE=g",
     "mdset g 'Group' = a b (1) | table g:set"},
    {"a text that is counted", "TABLES /MDGROUP=g a b ('yes') /TABLE=g",
     "mdset g = a b ('yes') | table g:set"},
    {"a negative number that is counted", "TABLES /MDGROUP=g a b (-1) /TABLE=g",
     "mdset g = a b (-1) | table g:set"},
    {"no value", "TABLES /MDGROUP=g a b /TABLE=g", "mdset g = a b | table g:set"},
    {"a value after what is no variable", "TABLES /MDGROUP=g a : 'x' (1) /TABLE=g",
     "mdset g = a (1) | table g:set | unreadable MDGROUP {: 'x'}"},
    {"two values", "TABLES /MDGROUP=g a b (1) (2) /TABLE=g",
     "mdset g = a b (1) | table g:set | unreadable MDGROUP {(2)}"},
    {"a value that is a word", "TABLES /MDGROUP=g a b (yes) /TABLE=g",
     "mdset g = a b | table g:set | unreadable MDGROUP {(yes)}"},
    {"a value of categories", "TABLES /MRGROUP=g a b (1) /TABLE=g",
     "mcset g = a b | table g:set | unreadable MRGROUP {(1)}"},
    {"several sets", "TABLES /MRGROUP=g a b /MDGROUP=h c d (1) /TABLE=g BY h > x",
     "mcset g = a b | mdset h = c d (1) | table g:set BY h:set>x"},
    {"a set without anything", "TABLES /MRGROUP /TABLE=a", "mcset  = | table a"},
    {"a label before the name", "TABLES /MRGROUP='x' g a /TABLE=g",
     "mcset g = a | table g:set | unreadable MRGROUP {'x'}"},
    {"a set with its dollar", "TABLES /MRGROUP=$g a b /TABLE=$g BY g",
     "mcset $g = a b | table $g:set BY g"},
};
INSTANTIATE_TEST_SUITE_P(Declarations, AskedCommandTest, testing::ValuesIn(kAskedDeclarations),
                         NameOfRow<AskedCase>);

const AskedCase kAskedSettings[] = {
    {"AUTOLABEL", "TABLES /AUTOLABEL /TABLE=a", "autolabel default | table a"},
    {"AUTOLABEL ON", "TABLES /AUTOLABEL=ON /TABLE=a", "autolabel on | table a | automatic title"},
    {"AUTOLABEL OFF", "TABLES /AUTOLABEL=OFF /TABLE=a", "autolabel off | table a"},
    {"AUTOLABEL DEFAULT", "TABLES /AUTOLABEL=DEF /TABLE=a", "autolabel default | table a"},
    {"AUTOLABEL after the table", "TABLES /TABLE=a /AUTOLABEL=ON /TABLE=b",
     "autolabel on | table a | automatic title | table b | automatic title"},
    {"AUTOLABEL beside a title", "TABLES /AUTOLABEL=ON /TABLE=a /TITLE /TABLE=b /CAPTION='c'",
     "autolabel on | table a | title | table b | automatic title | caption 'c'"},
    {"of AUTOLABELs the last counts", "TABLES /AUTOLABEL=ON\n/AUTOLABEL=OFF /TABLE=a",
     "autolabel off@2 | table a@2"},
    {"AUTOLABEL anything else", "TABLES /AUTOLABEL=YES /TABLE=a",
     "autolabel default | table a | unreadable AUTOLABEL {YES}"},
    {"AUTOLABEL and more", "TABLES /AUTOLABEL=ON OFF /TABLE=a",
     "autolabel on | table a | automatic title | unreadable AUTOLABEL {OFF}"},
    {"BASE ANSWERING", "TABLES /BASE=ANSWERING /TABLE=a /STATISTICS=CPCT",
     "base answering | table a | CPCT() %table valid cases"},
    {"BASE QUALIFIED", "TABLES /BASE=QUALIFIED /TABLE=a /STATISTICS=CPCT",
     "base qualified | table a | CPCT() %table cases"},
    {"BASE ALL", "TABLES /BASE=ALL /TABLE=a /STATISTICS=CPCT",
     "base all | table a | CPCT() %table all cases"},
    {"BASE after the table", "TABLES /TABLE=a /STATISTICS=CPCT(a:a) /BASE=ALL",
     "base all | table a | CPCT(a:a) %base all cases"},
    {"BASE without a word", "TABLES /BASE=ALL /BASE /TABLE=a", "base answering | table a"},
    {"BASE does not count for sets",
     "TABLES /BASE=ALL /MRGROUP=g a /TABLE=g /STATISTICS=CPCT(g) RPCT(g)",
     "base all | mcset g = a | table g:set | CPCT(g) %table cases | RPCT(g) %table "
     "responses/cases"},
    {"GBASE CASES", "TABLES /GBASE=CASES /MRGROUP=g a /TABLE=g /STATISTICS=CPCT(g) RPCT(g)",
     "gbase cases | mcset g = a | table g:set | CPCT(g) %table cases | RPCT(g) %table "
     "responses/cases"},
    {"GBASE RESPONSES",
     "TABLES /GBASE=RESPONSES /MRGROUP=g a /TABLE=g /STATISTICS=CPCT(g b) RPCT(g) CSPCT",
     "gbase responses | mcset g = a | table g:set | CPCT(g) %table cases/responses | CPCT(b) "
     "%table valid cases | RPCT(g) %table responses | CSPCT() %table responses"},
    {"GBASE anything else", "TABLES /GBASE=ALL /TABLE=a",
     "gbase cases | table a | unreadable GBASE {ALL}"},
    {"MISSING INCLUDE", "TABLES /MISSING=INCLUDE /TABLE=a\n/TABLE=b",
     "missing include | table a | with missing | table b@2 | with missing"},
    {"MISSING EXCLUDE", "TABLES /MISSING=INC /MISSING=EXC /TABLE=a", "missing exclude | table a"},
    {"MISSING anything else", "TABLES /MISSING=NO /TABLE=a",
     "missing exclude | table a | unreadable MISSING {NO}"},
    {"FORMAT without settings", "TABLES /FORMAT /TABLE=a", "table a"},
    {"FORMAT ZERO", "TABLES /FORMAT=ZERO /TABLE=a", "empty zero | table a"},
    {"FORMAT BLANK", "TABLES /FORMAT=ZERO BLANK /TABLE=a", "empty blank | table a"},
    {"FORMAT MISSING", "TABLES /FORMAT=MISSING('-') /TABLE=a", "missing text '-' | table a"},
    {"FORMAT MISSING with nothing between the quotes", "TABLES /FORMAT=MISSING('') /TABLE=a",
     "missing text '' | table a"},
    {"FORMAT MISSING twice", "TABLES /FORMAT=MISSING('-') ZERO MISSING('.') /TABLE=a",
     "empty zero | missing text '.' | table a"},
    {"settings of several FORMATs", "TABLES /FORMAT=ZERO\n/FORMAT=MISSING('-')\n/FORMAT /TABLE=a",
     "empty zero | missing text '-'@2 | table a@3"},
    {"FORMAT about looks", "TABLES /FORMAT=NBOX CWIDTH(10, 8) MARGINS( 1,132) ZERO /TABLE=a",
     "empty zero | table a | setting FORMAT {NBOX} | setting FORMAT {CWIDTH(10, 8)} | setting "
     "FORMAT {MARGINS( 1,132)}"},
    {"FORMAT after a setting that is known", "TABLES /FORMAT=ZERO CWIDTH(10,8) /TABLE=a",
     "empty zero | table a | setting FORMAT {CWIDTH(10,8)}"},
    {"FORMAT MISSING without its text", "TABLES /FORMAT=MISSING ZERO /TABLE=a",
     "empty zero | table a | unreadable FORMAT {MISSING}"},
    {"FORMAT MISSING with a number", "TABLES /FORMAT=MISSING(0) ZERO /TABLE=a",
     "empty zero | table a | unreadable FORMAT {MISSING(0)}"},
    {"FORMAT with parentheses that stay open", "TABLES /FORMAT=CWIDTH(10 /TABLE=a",
     "table a | setting FORMAT {CWIDTH(10}"},
    {"FORMAT with what is no setting", "TABLES /FORMAT='x' 1 ZERO /TABLE=a",
     "empty zero | table a | unreadable FORMAT {'x' 1}"},
};
INSTANTIATE_TEST_SUITE_P(Settings, AskedCommandTest, testing::ValuesIn(kAskedSettings),
                         NameOfRow<AskedCase>);

// What a FORMAT takes along in a conversion is asked for all the same, and told.
const AskedCase kAskedTaken[] = {
    {"a table", "TABLES /FORMAT=MISSING /TABLE=a + b\n/TABLE=c",
     "table a+b | table c@2 | taken TABLE #0 | unreadable FORMAT {MISSING}"},
    {"a declaration", "TABLES /FORMAT=ZERO MISSING('x'\n/FTOTAL=t /TABLE=a+t",
     "empty zero | ftotal t@2 | table a+t:total@2 | total t after a@2 | taken FTOTAL@2 | "
     "unreadable FORMAT {MISSING('x'}"},
    {"a setting", "TABLES /FORMAT=MISSING( /BASE=ALL /TABLE=a",
     "base all | table a | taken BASE | unreadable FORMAT {MISSING(}"},
    {"another FORMAT", "TABLES /FORMAT=MISSING /FORMAT=ZERO MISSING /TABLE=a",
     "empty zero | table a | taken FORMAT | unreadable FORMAT {MISSING} | unreadable FORMAT "
     "{MISSING}"},
    {"a subcommand that is not known", "TABLES /FORMAT=MISSING /BREAK=BY r /LAYOUT x /TABLE=a",
     "table a BY r | taken LAYOUT | unreadable FORMAT {MISSING} | unknown LAYOUT {x}"},
    {"a subcommand after a comment", "TABLES /FORMAT=MISSING /* c */ /TABLE=a /TABLE=b",
     "table a | table b | taken TABLE #0 | unreadable FORMAT {MISSING}"},
    {"a title after an empty FORMAT", "TABLES /FORMAT /TITLE='x' /TABLE=a",
     "title 'x' | table a | taken TITLE"},
    {"statistics after an empty FORMAT", "TABLES /FORMAT /STATISTICS=COUNT /TABLE=a",
     "table a | COUNT() | taken STATISTICS"},
    {"no table after an empty FORMAT", "TABLES /FORMAT /TABLE=a", "table a"},
    {"nothing after a setting that is not known", "TABLES /FORMAT=CWIDTH(1) MISSING /TABLE=a",
     "table a | setting FORMAT {CWIDTH(1)} | unreadable FORMAT {MISSING}"},
    {"nothing after a mistake within", "TABLES /FORMAT=MISSING 5 /TABLE=a",
     "table a | unreadable FORMAT {MISSING} | unreadable FORMAT {5}"},
    {"nothing after a whole one", "TABLES /FORMAT=MISSING('-') /TABLE=a",
     "missing text '-' | table a"},
};
INSTANTIATE_TEST_SUITE_P(Taken, AskedCommandTest, testing::ValuesIn(kAskedTaken),
                         NameOfRow<AskedCase>);

const AskedCase kAskedSorts[] = {
    {"a variable", "TABLES /TABLE=a /SORT=a", "table a | sort a down"},
    {"ascending", "TABLES /TABLE=a /SORT=ASCENDING a b", "table a | sort a up | sort b up"},
    {"descending", "TABLES /TABLE=a /SORT=DES a", "table a | sort a down"},
    {"a direction further on is a name", "TABLES /TABLE=a /SORT=a ASCENDING",
     "table a | sort a down | sort ASCENDING down"},
    {"a function", "TABLES /TABLE=a /SORT=a (MEA)", "table a | sort a down MEAN"},
    {"a function of a variable", "TABLES /TABLE=a /SORT=a (SUM(x)) b (CPCT(y))",
     "table a | sort a down SUM(x) | sort b down CPCT(y)"},
    {"a function that is not known", "TABLES /TABLE=a /SORT=a (AVERAGE)",
     "table a | sort a down ?AVERAGE"},
    {"several SORTs", "TABLES /TABLE=a /SORT=a\n/SORT=ASC b /TABLE=c\n/SORT=c",
     "table a | sort a down | sort #1 b up@2 | table c@2 | sort c down@3"},
    {"before the first table", "TABLES /FORMAT=MISSING /SORT=a /TABLE=a",
     "table a | sort a down | taken SORT | unreadable FORMAT {MISSING}"},
    {"without a table", "TABLES /SORT=a", "unreadable SORT {a}"},
    {"nothing", "TABLES /TABLE=a /SORT", "table a"},
    {"a number in parentheses", "TABLES /TABLE=a /SORT=a (1) b",
     "table a | sort a down | sort b down | unreadable #0 SORT {(1)}"},
    {"parentheses in parentheses", "TABLES /TABLE=a /SORT=a ((x) y) b",
     "table a | sort a down | sort b down | unreadable #0 SORT {((x) y)}"},
    {"two functions in parentheses of their own", "TABLES /TABLE=a /SORT=a (SUM) (MEAN) b",
     "table a | sort a down SUM | sort b down | unreadable #0 SORT {(MEAN)}"},
    {"two functions", "TABLES /TABLE=a /SORT=a (SUM MEAN) b",
     "table a | sort a down | sort b down | unreadable #0 SORT {(SUM MEAN)}"},
    {"parentheses that stay open", "TABLES /TABLE=a /SORT=a (SUM(x)",
     "table a | sort a down | unreadable #0 SORT {(SUM(x)}"},
    {"texts", "TABLES /TABLE=a /SORT='a' b", "table a | sort b down | unreadable #0 SORT {'a'}"},
};
INSTANTIATE_TEST_SUITE_P(Sorts, AskedCommandTest, testing::ValuesIn(kAskedSorts),
                         NameOfRow<AskedCase>);

const AskedCase kAskedHeadings[] = {
    {"a title", "TABLES /TABLE=a /TITLE='x'", "table a | title 'x'"},
    {"lines of a title", "TABLES /TABLE=a /TITLE='x' 'y', \"z\"", "table a | title 'x' 'y' 'z'"},
    {"no text", "TABLES /TABLE=a /TITLE", "table a | title"},
    {"all kinds",
     "TABLES /TABLE=a /TITLE='1' /TTITLE='2' /PTITLE='3' /CAPTION='4' /CORNER='5' /FOOTNOTE='6' "
     "/TFOOTNOTE='7' /PFOOTNOTE='8'",
     "table a | title '1' | title '2' | page title '3' | caption '4' | corner '5' | footnote '6' | "
     "footnote '7' | page footnote '8'"},
    {"before the first table", "TABLES /PTITLE='p' /TITLE='t' /TABLE=a",
     "page title 'p' | title 't' | table a"},
    {"of each table", "TABLES /TABLE=a /TITLE='x' /TABLE=b /TITLE='y' /CORNER='z'",
     "table a | title 'x' | table b | title 'y' | corner 'z'"},
    {"words", "TABLES /TABLE=a /TITLE=Income by 'x' region",
     "table a | title 'x' | unreadable #0 TITLE {Income by} | unreadable #0 TITLE {region}"},
    {"numbers", "TABLES /TABLE=a /CAPTION=1998",
     "table a | caption | unreadable #0 CAPTION {1998}"},
};
INSTANTIATE_TEST_SUITE_P(Headings, AskedCommandTest, testing::ValuesIn(kAskedHeadings),
                         NameOfRow<AskedCase>);

const AskedCase kAskedBreaks[] = {
    {"more of the rows", "TABLES /BREAK=> r /TABLE=a", "table a>r"},
    {"a dimension", "TABLES /BREAK BY r /TABLE=a", "table a BY r"},
    {"right after the table", "TABLES /TABLE=a /BREAK=BY r /STATISTICS=COUNT /TABLE=b",
     "table a BY r | COUNT() | table b BY r"},
    {"later than right after the table", "TABLES /TABLE=a /STATISTICS=COUNT /BREAK=BY r /TABLE=b",
     "table a | COUNT() | table b BY r"},
    {"later than all tables", "TABLES /TABLE=a /STATISTICS=COUNT /BREAK=BY r",
     "table a | COUNT() | unreadable #0 BREAK {BY r}"},
    {"a later BREAK", "TABLES /BREAK=BY r /TABLE=a /STATISTICS=COUNT /BREAK=BY s /TABLE=b",
     "table a BY r | COUNT() | table b BY s"},
    {"two BREAKs", "TABLES /BREAK=BY r /BREAK=BY s /TABLE=a", "table a BY s"},
    {"an empty BREAK", "TABLES /BREAK=BY r /BREAK /TABLE=a", "table a BY r"},
    {"first", "TABLES BREAK=BY r /TABLE=a", "table a BY r"},
    {"variables only", "TABLES /BREAK=r /TABLE=a BY b", "table a BY b | unreadable #0 TABLE {r}"},
    {"a total on BREAK", "TABLES /FTOTAL=t /BREAK=+ t /TABLE=a\n/TABLE=b",
     "ftotal t | table a+t:total | total t after a | table b+t:total@2 | total t after b"},
};
INSTANTIATE_TEST_SUITE_P(Breaks, AskedCommandTest, testing::ValuesIn(kAskedBreaks),
                         NameOfRow<AskedCase>);

TEST(AskedCommandPageTest, ReadsCharactersOfItsPage) {
    EXPECT_EQ(Asked("TABLES /OBSERVATION=\xC3\xA4 /TABLE=\xC3\x84"),
              "scale \xC3\xA4 | table \xC3\x84:scale");
    EXPECT_EQ(Asked("TABLES /OBSERVATION=\xE4 /TABLE=\xC4", CodePage::Windows1252()),
              "scale \xE4 | table \xC4:scale");
    // The trail byte looks like a quote, and like a slash after a star.
    EXPECT_EQ(Asked("TABLES /TABLE=\x81' BY \x81*/SORT=a /TITLE='\x81''", DoubleByte()),
              "table \x81' BY \x81* | sort a down | title '\x81''");
}

TEST(AskedCommandPageTest, CutsRemarksBetweenCharacters) {
    EXPECT_EQ(Asked("TABLES /LAYOUT x" + Repeat("\xC3\xA4", 200)),
              "unknown LAYOUT {x" + Repeat("\xC3\xA4", 99) + "}");
}

TEST(AskedCommandLayoutTest, SkipsASignOfTheLayout) {
    const std::string command = "+TABLES /TABLE=a";
    EXPECT_EQ(TextOfOutline(ReadAskedCommand(CodePage::Utf8(), command, true)), "table a");
    EXPECT_EQ(Asked("TABLES /TABLE=a"), "table a");
}

TEST(AskedCommandLayoutTest, ReadsPastAPeriodInBatchLayout) {
    const std::string command = "TABLES /TABLE=a. /* b */\n /STATISTICS=COUNT";
    EXPECT_EQ(TextOfOutline(ReadAskedCommand(CodePage::Utf8(), command, true)),
              "table a. | COUNT()@2");
    EXPECT_EQ(Asked(command), "table a | unreadable #0 {/STATISTICS=COUNT}@2");
}

TEST(AskedCommandSourceTest, KeepsTheSpellingOfTexts) {
    const CommandOutline outline =
        ReadAskedCommand(CodePage::Utf8(),
                         "TABLES /FORMAT=MISSING(\"-\") /MDGROUP=g 'it''s' a (+ 1) /TABLE=a\n"
                         "/TITLE=\"a\" +'b' \n 'c' +\n/STATISTICS=count(a 'x' )",
                         false);
    ASSERT_EQ(outline.tables.size(), 1U);
    const TableOutline& table = outline.tables.front();
    ASSERT_EQ(table.headings.size(), 1U);
    ASSERT_EQ(table.headings.front().texts.size(), 2U);
    EXPECT_EQ(table.headings.front().texts[0].source, "\"a\" +'b'");
    EXPECT_EQ(table.headings.front().texts[0].value, "ab");
    EXPECT_EQ(table.headings.front().texts[1].source, "'c'");
    ASSERT_EQ(outline.sets.size(), 1U);
    EXPECT_EQ(outline.sets.front().label.source, "'it''s'");
    EXPECT_EQ(outline.sets.front().label.value, "it's");
    EXPECT_EQ(outline.sets.front().value.source, "+1");
    EXPECT_EQ(outline.settings.missingText.source, "\"-\"");
    ASSERT_EQ(table.assignments.size(), 1U);
    EXPECT_EQ(table.assignments.front().function.text, "count");
    EXPECT_EQ(table.assignments.front().function.key, "COUNT");
    EXPECT_EQ(table.assignments.front().label.source, "'x'");
}

TEST(AskedCommandDepthTest, ReadsParenthesesAndGroupsOfAnyDepth) {
    constexpr int kDepth = 100000;
    EXPECT_EQ(Asked("TABLES /TABLE=" + Repeat("(", kDepth) + "a" + Repeat(")", kDepth)), "table a");
    const CommandOutline outline = ReadAskedCommand(
        CodePage::Utf8(),
        "TABLES /FTOTAL=t /TABLE=" + Repeat("(a>(b+", kDepth) + "c+t" + Repeat("))", kDepth),
        false);
    ASSERT_EQ(outline.tables.size(), 1U);
    const Dimension& rows = outline.tables.front().dimensions[0];
    EXPECT_EQ(rows.size(), 4U * kDepth + 2U);
    EXPECT_EQ(rows.front().end, rows.size());
    ASSERT_EQ(outline.tables.front().totals.size(), 1U);
    EXPECT_EQ(outline.tables.front().totals.front().totaled, rows.size() - 2);
    EXPECT_TRUE(outline.remarks.empty());
    const std::string open = Asked("TABLES /TABLE=" + Repeat("(", kDepth));
    EXPECT_EQ(open.substr(0, 40), "table | unreadable #0 TABLE {(} | unread");
}

TEST(AskedCommandBudgetTest, RepeatsNoLongNames) {
    const std::string name = "MEAN" + std::string(1000, 'x');
    const CommandOutline outline =
        ReadAskedCommand(CodePage::Utf8(),
                         "TABLES /TABLE=a /STATISTICS=" + name + " 1" + std::string(1000, '0') +
                             "(a b) " + std::string(1000, 'y'),
                         false);
    ASSERT_EQ(outline.tables.size(), 1U);
    ASSERT_EQ(outline.tables.front().assignments.size(), 3U);
    for (const Assignment& assignment : outline.tables.front().assignments) {
        EXPECT_EQ(assignment.function.text.size(), 64U);
        EXPECT_LE(assignment.function.key.size(), 64U);
        EXPECT_LE(assignment.argument.size(), 64U);
    }
}

TEST(AskedCommandBudgetTest, StopsWhereBreakRepeatsTooMuch) {
    const std::string many = "TABLES /BREAK=BY b" + Repeat("+b", 5000) + Repeat("/TABLE=a", 5000);
    const CommandOutline outline = ReadAskedCommand(CodePage::Utf8(), many + "\n/TABLE=z", false);
    ASSERT_EQ(outline.remarks.size(), 1U);
    EXPECT_EQ(outline.remarks.front().subcommand.key, "TABLE");
    EXPECT_EQ(outline.remarks.front().text, "");
    EXPECT_GT(outline.tables.size(), 5U);
    EXPECT_LT(outline.tables.size(), 100U);
}

TEST(AskedCommandBudgetTest, StopsWhereTotalsRepeatTooMuchOfALabel) {
    const CommandOutline outline =
        ReadAskedCommand(CodePage::Utf8(),
                         "TABLES /FTOTAL=t '" + std::string(1000000, 'x') + "' /TABLE=a" +
                             Repeat("+t", 100) + " /TABLE=b+t",
                         false);
    ASSERT_EQ(outline.tables.size(), 2U);
    ASSERT_EQ(outline.remarks.size(), 1U);
    EXPECT_EQ(outline.remarks.front().kind, Remark::Kind::kUnreadable);
}

TEST(AskedCommandBudgetTest, StopsWhereATextRepeatsItself) {
    // Each part without a quote after its "+" repeats what is there already.
    const std::string text = "'" + std::string(100000, 'x') + "'" + Repeat("+x'", 1000);
    const CommandOutline outline =
        ReadAskedCommand(CodePage::Utf8(), "TABLES /TABLE=a /TITLE=" + text, false);
    ASSERT_EQ(outline.tables.size(), 1U);
    ASSERT_EQ(outline.remarks.size(), 1U);
    EXPECT_EQ(outline.remarks.front().text.size(), 200U);
}

}  // namespace
}  // namespace quillet::outline
