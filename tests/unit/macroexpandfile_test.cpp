#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "macro/expandfile.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "unit/macrotesting.h"

namespace quillet::macro {
namespace {

struct ExpansionCase {
    const char* name;
    std::string definitions;
    std::string calls;
    std::string expected;
};

class MacroExpansionTest : public testing::TestWithParam<ExpansionCase> {};

TEST_P(MacroExpansionTest, GivesTheText) {
    const ExpansionCase& c = GetParam();
    EXPECT_EQ(ExpandAfter(c.definitions, c.calls), c.expected);
}

const ExpansionCase kWorkedExamples[] = {
    {"one keyword", "DEFINE !one (x=!TOKENS(1)) TABLES /TABLE=a BY !x /TITLE='t'. !ENDDEFINE.",
     "!one x=sex.", "TABLES /TABLE=a BY sex /TITLE='t'."},
    {"two positional",
     "DEFINE tab (!POSITIONAL !TOKENS(1) / !POSITIONAL !CMDEND) TABLES /TABLE=!1 BY !2. "
     "!ENDDEFINE.",
     "tab q1 a + b + c.", "TABLES /TABLE=q1 BY a + b + c."},
    {"three kinds",
     "DEFINE !m (v=!ENCLOSE('(',')') / t=!DEFAULT('All') !CHAREND('/') / s=!CMDEND) /TABLE=!v "
     "/TITLE=!t /STAT=!s !ENDDEFINE.",
     "TABLES !m v=(a + b) t='x y'/ s=COUNT.", "TABLES /TABLE=a + b /TITLE='x y' /STAT=COUNT."},
    {"three kinds with a default",
     "DEFINE !m (v=!ENCLOSE('(',')') / t=!DEFAULT('All') !CHAREND('/') / s=!CMDEND) /TABLE=!v "
     "/TITLE=!t /STAT=!s !ENDDEFINE.",
     "TABLES !m v=(a) s=MEAN(b).", "TABLES /TABLE=a /TITLE='All' /STAT=MEAN(b)."},
    {"loop over a list",
     "DEFINE !loop (vars=!CMDEND) !DO !v !IN (!vars) TABLES /TABLE=!v. !DOEND !ENDDEFINE.",
     "!loop vars=a b c.", "TABLES /TABLE=a.\nTABLES /TABLE=b.\nTABLES /TABLE=c."},
    {"loop that counts",
     "DEFINE !n () !DO !i = 1 !TO 3 !LET !name = !CONCAT(q, !i) TABLES /TABLE=!name "
     "/TITLE=!QUOTE(!CONCAT('Table ', !i)). !DOEND !ENDDEFINE.",
     "!n.",
     "TABLES /TABLE=q1 /TITLE='Table 1'.\nTABLES /TABLE=q2 /TITLE='Table 2'.\n"
     "TABLES /TABLE=q3 /TITLE='Table 3'."},
    {"condition that holds",
     "DEFINE !c (w=!DEFAULT(no) !TOKENS(1)) !IF (!UPCASE(!w) = YES) !THEN WEIGHT BY wt. !ELSE "
     "WEIGHT OFF. !IFEND !ENDDEFINE.",
     "!c w=yes.", "WEIGHT BY wt."},
    {"condition that does not hold",
     "DEFINE !c (w=!DEFAULT(no) !TOKENS(1)) !IF (!UPCASE(!w) = YES) !THEN WEIGHT BY wt. !ELSE "
     "WEIGHT OFF. !IFEND !ENDDEFINE.",
     "!c.", "WEIGHT OFF."},
    {"inside a command", "DEFINE @col () sex + age !ENDDEFINE.", "TABLES /TABLE=@col BY q1.",
     "TABLES /TABLE=sex + age BY q1."},
    {"macro in a macro",
     "DEFINE !in (x=!TOKENS(1)) !x !x !ENDDEFINE.\n"
     "DEFINE !out (y=!TOKENS(1)) FREQ !in x=!y. !ENDDEFINE.",
     "!out y=z.", "FREQ z z."},
    {"head and tail",
     "DEFINE !h (l=!CMDEND) !LET !rest = !l !DO !i = 1 !TO 9 !IF (!rest = !NULL) !THEN !BREAK "
     "!IFEND FREQ !HEAD(!rest). !LET !rest = !TAIL(!rest) !DOEND !ENDDEFINE.",
     "!h l=a b.", "FREQ a.\nFREQ b."},
    {"literal", "DEFINE !lit (x=!TOKENS(1)) TITLE '!x is here' . !ENDDEFINE.", "!lit x=a.",
     "TITLE '!x is here' ."},
};
INSTANTIATE_TEST_SUITE_P(WorkedExamples, MacroExpansionTest, testing::ValuesIn(kWorkedExamples),
                         NameOfRow<ExpansionCase>);

const ExpansionCase kDefinitions[] = {
    {"any letter case", "define !M (X=!tokens(1)) f !x !enddefine.", "!m x=1.", "f 1."},
    {"the bang belongs to the name", "DEFINE !freq () a !ENDDEFINE.\nDEFINE freq () b !ENDDEFINE.",
     "x !freq freq.", "x a b."},
    {"a later one replaces an earlier one", "DEFINE m () a !ENDDEFINE.\nDEFINE M () b !ENDDEFINE.",
     "x m.", "x b."},
    {"not known before", "DEFINE n () a !ENDDEFINE.", "x m.\nDEFINE m () b !ENDDEFINE.\nx m.",
     "x m.\nDEFINE m () b !ENDDEFINE.\nx b."},
    {"list over lines",
     "DEFINE !m (x = !TOKENS(1)\n  /* of two */ / y = !TOKENS(1)\n) !x-!y "
     "!ENDDEFINE.",
     "f !m x=1 y=2.", "f 1-2."},
    {"body over periods, blank lines, quotes and comments",
     "DEFINE !m ()\nf 'it.\n\n* don't.\n/* !ENDDEF */ g\n!ENDDEFINE.", "!m.",
     "f 'it.\n* don't.\n/* !ENDDEF */ g."},
    {"a literal does not hold the end back", "DEFINE !m () f 'x !ENDDEFINE.", "!m y'.", "f 'x y'."},
    {"no definition inside", "DEFINE a () DEFINE b () c !ENDDEFINE.", "x b.", "x b."},
    {"a longer word is not the end", "DEFINE a () !ENDDEFINES b !ENDDEFINE.", "x a.",
     "x !ENDDEFINES b."},
    {"period after the list", "DEFINE !m () .\nf a.\n!ENDDEFINE.", "!m.", "f a."},
    {"number after the list", "DEFINE m () .5 !ENDDEFINE.", "f m.", "f .5."},
    {"one period only", "DEFINE m () .. f !ENDDEFINE.", "m.", ". f."},
    {"no period after the end", "DEFINE m () f !ENDDEFINE", "* m\nm.\nm.", "* m\nm.\nf."},
    {"shortened words of lists",
     "DEFINE !m (!POS !TOK(1) / !POSIT !CHA('/') /!POS !ENC('<','>') / s=!DEF(d) !NOE !CMD) !1 "
     "!2 !3 !s !ENDDEFINE.",
     "f !m a b/<c> s=d e.", "f a b c d e."},
    {"positional with a sign", "DEFINE !m (!POSITIONAL = !TOKENS(1)) f !1 !ENDDEFINE.", "!m a.",
     "f a."},
    {"keyword with a bang", "DEFINE !m (!x = !TOKENS(1)) f !x !ENDDEFINE.", "!m x=a !x=b.", "f b."},
    {"modifiers in any order",
     "DEFINE !m (x=!NOEXPAND !TOKENS(1) !DEFAULT(a) / y=!DEFAULT(b) !TOKENS(1)) f !x !y "
     "!ENDDEFINE.",
     "!m.", "f a b."},
    {"default with parentheses and quotes",
     "DEFINE !m (x=!DEFAULT( MEAN(a) ')' ) !TOKENS(1)) f !x !ENDDEFINE.", "!m.", "f MEAN(a) ')'."},
    {"empty default", "DEFINE !m (x=!DEFAULT() !TOKENS(1)) f(!x) !ENDDEFINE.", "!m.", "f()."},
    {"default over lines", "DEFINE !m (x=!DEFAULT(a\n  b) !TOKENS(1)) f !x !ENDDEFINE.", "!m.",
     "f a b."},
    {"missing without a default",
     "DEFINE !m (!POS !TOKENS(1) / x=!TOKENS(1)) f(!1,!x) "
     "!ENDDEFINE.",
     "!m.", "f(,)."},
    {"command end in the middle", "DEFINE !m (x=!CMDEND / y=!TOKENS(1)) f !x (!y) !ENDDEFINE.",
     "!m y=1 x=a y=2.", "f a y=2 (1)."},
    {"wrong list leaves the earlier one", "DEFINE m () a !ENDDEFINE.\nDEFINE m (/) b !ENDDEFINE.",
     "x m.", "x a."},
    {"characters outside ASCII in names", "DEFINE größe () f !ENDDEFINE.", "größe groß größer.",
     "f groß größer."},
    {"only ASCII letters change case", "DEFINE größe () f !ENDDEFINE.", "GRößE GRÖSSE GRÖßE.",
     "f GRÖSSE GRÖßE."},
};
INSTANTIATE_TEST_SUITE_P(Definitions, MacroExpansionTest, testing::ValuesIn(kDefinitions),
                         NameOfRow<ExpansionCase>);

const std::string kCol = "DEFINE @c () sex !ENDDEFINE.";

const ExpansionCase kPlaces[] = {
    {"not in a literal", kCol, "f '@c' \"@c\" @c.", "f '@c' \"@c\" sex."},
    {"not in an unclosed literal", kCol, "f 'x @c\n @c.", "f 'x @c\n sex."},
    {"not in a comment", kCol, "f /* @c */ @c /* @c\n @c.", "f /* @c */ sex /* @c\n sex."},
    {"not in a comment command", kCol, "* @c.\nCOMMENT @c.\ncomm @c\n @c.\nf @c.",
     "* @c.\nCOMMENT @c.\ncomm @c\n @c.\nf sex."},
    {"in a computation", kCol, "COMPUTE x=@c.\nCOMP y=@c.", "COMPUTE x=sex.\nCOMP y=sex."},
    {"not in a document", kCol, "DOCUMENT @c\n @c.\ndoc @c.\nf @c.",
     "DOCUMENT @c\n @c.\ndoc @c.\nf sex."},
    {"not in inline data", kCol, "BEGIN DATA.\n@c.\nend data @c.\nf @c.",
     "BEGIN DATA.\n@c.\nend data @c.\nf sex."},
    {"data without their end", kCol, "BEGIN DATA.\n@c.\n END DATA.\nf @c.",
     "BEGIN DATA.\n@c.\n END DATA.\nf @c."},
    {"BEGIN alone", kCol, "BEGIN\nDATA @c.", "BEGIN\nDATA sex."},
    {"whole tokens only", kCol, "f @cc a@c @c.d !@c (@c)@c-@c.",
     "f @cc a@c @c.d !@c (sex)sex-sex."},
    {"a number before it", kCol, "f 1@c.", "f 1sex."},
    {"period at the line end is no part", kCol, "f @c.\ng @c. /* x */\n",
     "f sex.\ng sex. /* x */\n"},
    {"period inside a line is", kCol, "f @c. x.", "f @c. x."},
    {"a period in an unclosed literal ends the command", kCol, "f 'x.\n* @c.\n", "f 'x.\n* @c.\n"},
    {"a comment command with an apostrophe", kCol, "* don't.\nf @c.", "* don't.\nf sex."},
    {"a comment command with a comment at its end", kCol, "* x. /* y. */ \nf @c.",
     "* x. /* y. */ \nf sex."},
    {"a comment before the command", kCol, "/* x */ * @c.\nf @c.", "/* x */ * @c.\nf sex."},
    {"a byte-order mark",
     "\xEF\xBB\xBF"
     "DEFINE @c () sex !ENDDEFINE.",
     "f @c.", "f sex."},
    {"lines that end in CR LF", "DEFINE !m ()\r\nf a.\r\n\r\ng b.\r\n!ENDDEFINE.\r", "!m.\r\n!m.",
     "f a.\r\ng b.\r\nf a.\r\ng b."},
    {"a line break of the file's own kind", "DEFINE !m () f. !IF (1) !THEN g !IFEND !ENDDEFINE.\r",
     "!m.\r\n", "f.\r\ng.\r\n"},
};
INSTANTIATE_TEST_SUITE_P(Places, MacroExpansionTest, testing::ValuesIn(kPlaces),
                         NameOfRow<ExpansionCase>);

const std::string kOneToken = "DEFINE !m (!POS !TOKENS(1)) <!1> !ENDDEFINE.";
const std::string kThreeTokens = "DEFINE !m (x=!TOKENS(3)) <!x> !ENDDEFINE.";
const std::string kCharEnd = "DEFINE !m (x=!CHAREND('/') / y=!TOKENS(1)) <!x,!y> !ENDDEFINE.";
const std::string kEnclose = "DEFINE !m (x=!ENCLOSE('(',')')) <!x> !ENDDEFINE.";
const std::string kCommandEnd = "DEFINE !m (x=!CMDEND) <!x> !ENDDEFINE.";
const std::string kOptional =
    "DEFINE !t (!POS !DEFAULT(d) !TOKENS(1) / a=!TOKENS(1)) <!1,!a> "
    "!ENDDEFINE.";

const ExpansionCase kArguments[] = {
    {"a literal with its quotes", kOneToken, "f !m 'a ''b' c.", "f <'a ''b'> c."},
    {"a number", kOneToken, "f !m 1.5e-3 c.", "f <1.5e-3> c."},
    {"a number that begins with a period", kOneToken, "f !m .5 c.", "f <.5> c."},
    {"a period after a number", kOneToken, "f !m 5. c.", "f <5>. c."},
    {"a number before a letter", kOneToken, "f !m 1a.", "f <1>a."},
    {"a sign", kOneToken, "f !m -1.", "f <->1."},
    {"an identifier", kOneToken, "f !m a.b_$#@1- c.", "f <a.b_$#@1>- c."},
    {"an identifier at the line end", kOneToken, "f !m a..", "f <a>.."},
    {"an identifier with a period inside a line", kOneToken, "f !m a. b.", "f <a.> b."},
    {"a macro word", kOneToken, "f !m !xyz. b.", "f <!xyz>. b."},
    {"a single character", kOneToken, "f !m (a).", "f <(>a)."},
    {"a character outside ASCII", kOneToken, "f !m äö b.", "f <äö> b."},
    {"three tokens as they stand", kThreeTokens, "f !m x=a  +b c.", "f <a  +b> c."},
    {"three tokens over lines", kThreeTokens, "f !m x=a \n\n  + /* x */ b c.", "f <a + b> c."},
    {"fewer tokens", kThreeTokens, "f !m x=a b.", "f <a b>."},
    {"tokens around a comment", kThreeTokens, "f !m x=a/* x */+ b c.", "f <a + b> c."},
    {"up to a character", kCharEnd, "f !m x= a  b / y=1.", "f <a  b,1>."},
    {"not up to one in a literal", kCharEnd, "f !m x='a/b' \"/\" / y=1.", "f <'a/b' \"/\",1>."},
    {"not up to one in a comment", kCharEnd, "f !m x=a /* / */ b/ y=1.", "f <a b,1>."},
    {"up to a character over lines", kCharEnd, "f !m x=a\n  b\n/ y=1.", "f <a b,1>."},
    {"the character never comes", kCharEnd, "f !m x=a y=1 .", "f <a y=1,> ."},
    {"a character outside ASCII ends it", "DEFINE !m (x=!CHAREND('§')) <!x> !ENDDEFINE.",
     "f !m x=a b§ c.", "f <a b> c."},
    {"an apostrophe ends it", "DEFINE !m (x=!CHAREND('''')) <!x> !ENDDEFINE.", "f !m x=a b' c.",
     "f <a b> c."},
    {"enclosed", kEnclose, "f !m x=( a \n b ) c.", "f <a b> c."},
    {"enclosed without nesting", kEnclose, "f !m x=(a(b) c).", "f <a(b> c)."},
    {"enclosed with a literal", kEnclose, "f !m x=(')' b).", "f <')' b>."},
    {"enclosed with a comment", kEnclose, "f !m x=(a /* ) */ b).", "f <a b>."},
    {"enclosed and empty", kEnclose, "f !m x=().", "f <>."},
    {"up to the end of the command", kCommandEnd, "f !m x=a 'b.\n' c. d.\ng.",
     "f <a 'b>.\n' c. d.\ng."},
    {"up to the end, over lines", kCommandEnd, "f !m x=a 'b.c'\n c. d.\ng.",
     "f <a 'b.c' c. d>.\ng."},
    {"a comment at the end stays", kCommandEnd, "f !m x=a /* y */ .", "f <a> /* y */ ."},
    {"keywords in any order", "DEFINE !m (x=!TOKENS(1) / y=!TOKENS(1)) <!x!y> !ENDDEFINE.",
     "f !m y = 2 x\n= 1.", "f <12>."},
    {"an unknown keyword ends the call", "DEFINE !m (x=!TOKENS(1)) <!x> !ENDDEFINE.",
     "f !m x=1 z=2 x=3.", "f <1> z=2 x=3."},
    {"a keyword without a sign ends the call", "DEFINE !m (x=!TOKENS(1)) <!x> !ENDDEFINE.",
     "f !m x 1.", "f <> x 1."},
    {"nothing after the sign", "DEFINE !m (x=!DEFAULT(d) !TOKENS(1)) <!x> !ENDDEFINE.", "f !m x=.",
     "f <>."},
    {"nothing after the sign, enclosed",
     "DEFINE !m (x=!DEFAULT(d) !ENCLOSE('(',')')) <!x> !ENDDEFINE.", "f !m x=.", "f <>."},
    {"given twice", "DEFINE !m (x=!TOKENS(1)) <!x> !ENDDEFINE.", "f !m x=1 x=2.", "f <2>."},
    {"a positional one takes what comes", kOptional, "f !t a=2.", "f <a,>=2."},
    {"a positional one is not given at the end", kOptional, "f !t.", "f <d,>."},
    {"positional, then keyword", kOptional, "f !t 1 a=2 b.", "f <1,2> b."},
    {"a macro word is one token",
     "DEFINE !in (x=!TOKENS(1)) i(!x) !ENDDEFINE.\nDEFINE !t (!POS !TOKENS(1)) <!1> !ENDDEFINE.",
     "f !t !in x=k.", "f <i()> x=k."},
    {"all positional ones",
     "DEFINE !m (!POS !TOKENS(1) / !POS !TOKENS(2) / !POS !DEFAULT(d e) !TOKENS(1) / !POS "
     "!TOKENS(1)) <!*> !ENDDEFINE.",
     "f !m a b  c.", "f <a b  c d e>."},
    {"all positional ones but empty ones",
     "DEFINE !m (!POS !CHAREND(',') / !POS !CHAREND(',') / !POS !TOKENS(1)) <!*> !ENDDEFINE.",
     "f !m a,,b.", "f <a b>."},
    {"a number beyond them stays",
     kOneToken + "\nDEFINE !n (!POS !TOKENS(1)) !2 !0 !1 !01 "
                 "!ENDDEFINE.",
     "f !n a.", "f !2 !0 a !01."},
    {"a call in an argument", kCol + "\n" + kOneToken, "f !m @c.", "f <sex>."},
    {"a call in a given argument with arguments",
     "DEFINE !in (!POS !TOKENS(1)) i(!1) !ENDDEFINE.\n" + kEnclose, "f !m x=(!in a b).",
     "f <i(a) b>."},
    {"a call in a default", kCol + "\nDEFINE !m (x=!DEFAULT(@c a) !TOKENS(1)) <!x> !ENDDEFINE.",
     "f !m.", "f <sex a>."},
    {"no call in a literal argument", kCol + "\n" + kOneToken, "f !m '@c'.", "f <'@c'>."},
    {"not expanded", kCol + "\nDEFINE !m (x=!NOEXPAND !TOKENS(1)) <!x> !ENDDEFINE.", "f !m x=@c.",
     "f <@c>."},
    {"a default that is not expanded",
     kCol + "\nDEFINE !m (x=!NOEXPAND !DEFAULT(@c) !TOKENS(1)) <!x> !ENDDEFINE.", "f !m.",
     "f <@c>."},
};
INSTANTIATE_TEST_SUITE_P(Arguments, MacroExpansionTest, testing::ValuesIn(kArguments),
                         NameOfRow<ExpansionCase>);

const ExpansionCase kBodies[] = {
    {"nothing in a literal", "DEFINE !m (!POS !TOKENS(1)) f '!1 !x' \"!1\" !1 !ENDDEFINE.", "!m a.",
     "f '!1 !x' \"!1\" a."},
    {"nothing in a comment", "DEFINE !m (!POS !TOKENS(1)) f /* !1 ' !IF */ !1 !ENDDEFINE.", "!m a.",
     "f /* !1 ' !IF */ a."},
    {"an unknown word stays", "DEFINE !m () f !y !TO !THEN ! !! !ENDDEFINE.", "!m.",
     "f !y !TO !THEN ! !!."},
    {"the longest word counts", "DEFINE !m (a=!TOKENS(1)) f !a !abc !a.b !a. g !ENDDEFINE.",
     "!m a=1.", "f 1 !abc !a.b 1. g."},
    {"a number word ends with its digits", "DEFINE !m (!POS !TOKENS(1)) f !1x !12 !1.5 !ENDDEFINE.",
     "!m a.", "f ax !12 a.5."},
    {"joined without a blank", "DEFINE !m (!POS !TOKENS(1)) f q!1 q!1!1_ !ENDDEFINE.", "!m 3.",
     "f q3 q33_."},
    {"names in any case", "DEFINE !m (Ab=!TOKENS(1)) f !aB !ENDDEFINE.", "!M AB=1.", "f 1."},
    {"a function's word without a parenthesis", "DEFINE !m () f !HEAD !LEN !ENDDEFINE.", "!m.",
     "f !HEAD !LEN."},
    {"an argument before a function",
     "DEFINE !m (len=!TOKENS(1)) f !len (abc) !LENG(abc) !ENDDEFINE.", "!m len=x.", "f x (abc) 3."},
    {"an argument before a statement", "DEFINE !m (do=!TOKENS(1)) f !do !i !ENDDEFINE.", "!m do=x.",
     "f x !i."},
    {"arguments named like words of forms",
     "DEFINE !m (to=!TOKENS(1) / by=!TOKENS(1) / eq=!TOKENS(1)) f !DO !i = 1 !TO !to !BY !by !i "
     "!DOEND !IF (!eq !EQ 7) !THEN yes !IFEND !ENDDEFINE.",
     "!m to=3 by=2 eq=7.", "f  1  3   yes."},
    {"put-in text is not searched",
     kCol + "\nDEFINE !m (x=!NOEXPAND !TOKENS(1)) f !x @c !ENDDEFINE.", "!m x=@c.", "f @c sex."},
    {"text that is run together is not searched",
     kCol + "\nDEFINE !m (!POS !TOKENS(1)) f @!1 !CONCAT('@',c) @c !ENDDEFINE.", "!m c.",
     "f @c @c sex."},
    {"what is empty still parts a name", kCol + "\nDEFINE !m (!POS !TOKENS(1)) f @!1c !ENDDEFINE.",
     "!m.", "f @c."},
    {"a name in the body with an argument of the body",
     "DEFINE !in (x=!TOKENS(1)) i(!x) !ENDDEFINE.\n"
     "DEFINE !m (a=!TOKENS(1)) f !in x=!a b !ENDDEFINE.",
     "!m a=1.", "f i(1) b."},
    {"put-in text can be an argument's name",
     "DEFINE !in (x=!TOKENS(1)) i(!x) !ENDDEFINE.\n"
     "DEFINE !m (a=!CMDEND) f !in !a !ENDDEFINE.",
     "!m a=x=1 b.", "f i(1) b."},
    {"macros that are defined later", "DEFINE !m () f @c !ENDDEFINE.\n" + kCol, "!m.", "f sex."},
    {"the period of a call inside a macro",
     "DEFINE !in () i. !ENDDEFINE.\nDEFINE !m () !in. !in. !in .\nf !in.\n!in !ENDDEFINE.", "!m.",
     "i.. i.. i.\nf i.\ni."},
    {"a comment command in the body",
     kCol + "\nDEFINE !m (!POS !TOKENS(1))\n* !1 @c.\nCOMMENT !1 @c\n@c.\nf @c.\n!ENDDEFINE.",
     "!m a.", "* a @c.\nCOMMENT a @c\n@c.\nf sex."},
    {"no comment command in the middle of a command", kCol + "\nDEFINE !m () * @c !ENDDEFINE.",
     "f a !m.\n!m.", "f a * sex.\n* @c."},
    {"off and on",
     kCol + "\nDEFINE !m (!POS !TOKENS(1)) f @c !1 !OFFEXPAND @c !1 !ONEXPAND @c "
            "!ENDDEFINE.",
     "!m a.", "f sex a  @c a  sex."},
    {"off ends with the macro",
     kCol + "\nDEFINE !in () !OFFEXPAND @c !ENDDEFINE.\nDEFINE !m () f !in @c !ENDDEFINE.", "!m.",
     "f @c sex."},
    {"off is not for inner macros",
     kCol + "\nDEFINE !in () @c !ENDDEFINE.\n"
            "DEFINE !m () f !OFFEXPAND @c !EVAL(!in) !ENDDEFINE.",
     "!m.", "f  @c sex."},
    {"off where it is not reached",
     kCol + "\nDEFINE !m () f !IF (0) !THEN !OFFEXPAND !IFEND @c !ENDDEFINE.", "!m.", "f  sex."},
    {"evaluation when expansion is off",
     kCol + "\nDEFINE !m () f !OFFEXPAND @c !EVAL(@c) !ENDDEFINE.", "!m.", "f  @c sex."},
};
INSTANTIATE_TEST_SUITE_P(Bodies, MacroExpansionTest, testing::ValuesIn(kBodies),
                         NameOfRow<ExpansionCase>);

std::string Body(const std::string& body) {
    return "DEFINE !m (x=!TOKENS(1) / l=!ENCLOSE('(',')')) " + body + " !ENDDEFINE.";
}

const ExpansionCase kStatements[] = {
    {"a variable", Body("!LET !v = !x f !v !V"), "!m x=1.", "f 1 1."},
    {"a variable before it is set", Body("f !v !LET !v = 1 !v"), "!m.", "f !v  1."},
    {"a variable ends with its operand", Body("!LET !v = a b !v"), "!m.", "b a."},
    {"a variable without blanks", Body("!LET !v=!x/f !v"), "!m x=1.", "/f 1."},
    {"an argument that is set", Body("!LET !x = 2 f !x"), "!m x=1.", "f 2."},
    {"a literal without its quotes", Body("!LET !t = 'My ''title' f !t"), "!m.", "f My 'title."},
    {"a signed number", Body("!LET !t = -1 f !t"), "!m.", "f -1."},
    {"a variable with a function's name", Body("!LET !length = !LENGTH(abc) f !length !length(a)"),
     "!m.", "f 3 3(a)."},
    {"a variable belongs to one expansion",
     "DEFINE !in () <!v> !LET !v = 1 !ENDDEFINE.\nDEFINE !m () !LET !v = 2 f !in !in !v "
     "!ENDDEFINE.",
     "!m.", "f <!v> <!v> 2."},
    {"if", Body("f !IF (!x = 1) !THEN a !IFEND b"), "!m x=1.", "f  a  b."},
    {"if not", Body("f !IF (!x = 1) !THEN a !IFEND b"), "!m x=2.", "f  b."},
    {"else", Body("f !IF (!x = 1) !THEN a !ELSE b !IFEND"), "!m x=2.", "f  b."},
    {"nested if", Body("f !IF (!x > 0) !THEN !IF (!x > 1) !THEN a !ELSE b !IFEND !ELSE c !IFEND"),
     "!m x=1.\n!m x=2.\n!m x=0.", "f   b.\nf   a.\nf  c."},
    {"count up", Body("f !DO !i = 2 !TO 4 !i !DOEND"), "!m.", "f  2  3  4."},
    {"count by a step", Body("f !DO !i = 1 !TO 6 !BY 2 !i !DOEND"), "!m.", "f  1  3  5."},
    {"count down", Body("f !DO !i = 3 !TO 1 !BY -1 !i !DOEND"), "!m.", "f  3  2  1."},
    {"count from below 0", Body("f !DO !i = -1 !TO +1 !i !DOEND"), "!m.", "f  -1  0  1."},
    {"an empty range", Body("f !DO !i = 3 !TO 1 !i !DOEND g"), "!m.", "f  g."},
    {"an empty range downwards", Body("f !DO !i = 1 !TO 3 !BY -1 !i !DOEND g"), "!m.", "f  g."},
    {"the last value is kept", Body("!DO !i = 1 !TO 6 !BY 4 !DOEND f !i"), "!m.", "f 5."},
    {"the count is not changed", Body("f !DO !i = 1 !TO 3 !LET !i = 9 !i !DOEND"), "!m.",
     "f   9   9   9."},
    {"a loop on an argument", Body("f !DO !x = 1 !TO 2 !x !DOEND !x"), "!m x=7.", "f  1  2  2."},
    {"a list", Body("f !DO !i !IN (a, -1 'b c') <!i> !DOEND"), "!m.",
     "f  <a>  <,>  <->  <1>  <'b c'>."},
    {"an empty list", Body("f !DO !i !IN () <!i> !DOEND"), "!m.", "f."},
    {"a list with parentheses", Body("f !DO !i !IN (a(b)) <!i> !DOEND"), "!m.",
     "f  <a>  <(>  <b>  <)>."},
    {"a list with a call",
     kCol + "\nDEFINE !two () a b !ENDDEFINE.\n" + Body("f !DO !i !IN (!two !x @c) <!i> !DOEND"),
     "!m x=z.", "f  <a>  <b>  <z>  <sex>."},
    {"a list that names a macro in a value",
     kCol + "\nDEFINE !m (l=!NOEXPAND !CMDEND) f !DO !i !IN (!l) !i !DOEND !ENDDEFINE.",
     "!m l=@c d.", "f  @c  d."},
    {"a list with a function", Body("f !DO !i !IN (!UPCASE(!x) b) !i !DOEND"), "!m x=z.",
     "f  Z  b."},
    {"break", Body("f !DO !i = 1 !TO 9 !IF (!i = 3) !THEN !BREAK !IFEND !i !DOEND g"), "!m.",
     "f   1   2    g."},
    {"break leaves the innermost loop",
     Body("f !DO !i = 1 !TO 2 !DO !j !IN (a b) !j !BREAK !DOEND !i !DOEND"), "!m.",
     "f   a  1   a  2."},
    {"break that is not reached", Body("f !IF (0) !THEN !BREAK !IFEND g"), "!m.", "f  g."},
    {"nested loops", Body("f !DO !i = 1 !TO 2 !DO !j = !i !TO 2 (!i,!j) !DOEND !DOEND"), "!m.",
     "f   (1,1)  (1,2)    (2,2)."},
    {"list inside a loop's list",
     Body("f !DO !i !IN (!DO !j !IN (a b) !CONCAT(!j,!j) !DOEND) <!i> !DOEND"), "!m.",
     "f  <aa>  <bb>."},
};
INSTANTIATE_TEST_SUITE_P(Statements, MacroExpansionTest, testing::ValuesIn(kStatements),
                         NameOfRow<ExpansionCase>);

const ExpansionCase kWhiteSpace[] = {
    {"statements on lines of their own",
     "DEFINE !m (x=!TOKENS(1))\n!IF (!x = 1) !THEN\n  f a.\n!ELSE\n  f b.\n!IFEND\ng.\n!ENDDEFINE.",
     "!m x=1.\n", "f a.\ng.\n"},
    {"indentation stays", "DEFINE !m ()\n  f a\n    /b.\n  g.\n!ENDDEFINE.", "!m.",
     "f a\n    /b.\n  g."},
    {"a loop over lines", "DEFINE !m ()\n!DO !i = 1 !TO 2\n  f q!i.\n!DOEND\n!ENDDEFINE.", "!m.",
     "f q1.\n  f q2."},
    {"empty lines", "DEFINE !m ()\n\nf a\n\n \t\n /b\n\n!ENDDEFINE.", "!m.", "f a\n /b."},
    {"a line whose argument is empty", "DEFINE !m (x=!TOKENS(1))\nf a\n  !x\n /b\n!ENDDEFINE.",
     "!m.", "f a\n /b."},
    {"a line whose call is empty",
     "DEFINE !e () !ENDDEFINE.\nDEFINE !m ()\nf a\n  !e\n /b\n"
     "!ENDDEFINE.",
     "!m.", "f a\n /b."},
    {"blanks in a line", "DEFINE !m () f   a\t b  !ENDDEFINE.", "!m.", "f   a\t b."},
    {"a period before a statement",
     "DEFINE !m () f. \t !LET !v = 1   g. !IF (1) !THEN   h. "
     "!IFEND i !ENDDEFINE.",
     "!m.", "f.\ng.\nh.\ni."},
    {"a period right before a statement", "DEFINE !m () f.!IF (1) !THEN g.!IFEND h !ENDDEFINE.",
     "!m.", "f.\ng.\nh."},
    {"a period in a literal before a statement",
     "DEFINE !m () f 'a.' !IF (1) !THEN g !IFEND !ENDDEFINE.", "!m.", "f 'a.'  g."},
    {"a value's period before a statement",
     "DEFINE !m (x=!CHAREND('/')) f !x !IF (1) !THEN g !IFEND !ENDDEFINE.", "!m x=a. /.",
     "f a.  g."},
    {"a period before on and off", "DEFINE !m () f. !OFFEXPAND g. !ONEXPAND h !ENDDEFINE.", "!m.",
     "f.\ng.\nh."},
    {"a period before a break", "DEFINE !m () !DO !i = 1 !TO 2 f. !BREAK !DOEND g !ENDDEFINE.",
     "!m.", "f.\ng."},
    {"a period before other words", "DEFINE !m () f. g. !x. h !ENDDEFINE.", "!m.", "f. g. !x. h."},
    {"a name at a command's end",
     kCol + "\nDEFINE !m () f @c. !IF (1) !THEN g @c. !IFEND !ENDDEFINE.", "!m.", "f sex.\ng sex."},
    {"no period of its own", "DEFINE !m () f a !ENDDEFINE.", "!m.", "f a."},
    {"its own period", "DEFINE !m () f a. !ENDDEFINE.", "!m .\ng.", "f a.\ng."},
    {"its own period on the next line", "DEFINE !m () f a. !ENDDEFINE.", "!m\n  .\ng.", "f a.\ng."},
    {"a comment before its period", "DEFINE !m () f a. !ENDDEFINE.", "!m /* x */ .\ng.",
     "f a. /* x */\ng."},
    {"a comment after its period", "DEFINE !m () f a. !ENDDEFINE.", "!m. /* x */\ng.",
     "f a. /* x */\ng."},
    {"text after the call", "DEFINE !m () f a. !ENDDEFINE.", "!m b.", "f a. b."},
    {"no period at all", "DEFINE !m () f a. !ENDDEFINE.", "!m", "f a."},
    {"an empty expansion", "DEFINE !m () !ENDDEFINE.", "!m.", "."},
    {"two calls in a command", "DEFINE !m () f a. !ENDDEFINE.", "!m !m.", "f a. f a."},
    {"blanks as a value", "DEFINE !m () f.!BLANKS(3)g !ENDDEFINE.", "!m.", "f.   g."},
    {"an expansion in its line", "DEFINE !m () a\nb !ENDDEFINE.", "f  !m  /c.", "f  a\nb  /c."},
};
INSTANTIATE_TEST_SUITE_P(WhiteSpace, MacroExpansionTest, testing::ValuesIn(kWhiteSpace),
                         NameOfRow<ExpansionCase>);

struct ValueCase {
    const char* expression;
    std::string expected;
};

class MacroFunctionTest : public testing::TestWithParam<ValueCase> {};

// `!x` is "Ab c", `!q` is "'it''s'".
std::string ValueOf(const std::string& expression) {
    const std::string definitions =
        kCol + "\nDEFINE !m (x=!ENCLOSE('(',')') / q=!TOKENS(1) / e=!TOKENS(1)) <" + expression +
        "> !ENDDEFINE.";
    return ExpandAfter(definitions, "!m x=(Ab c) q='it''s'");
}

TEST_P(MacroFunctionTest, GivesTheText) {
    EXPECT_EQ(ValueOf(GetParam().expression), "<" + GetParam().expected + ">");
}

const ValueCase kFunctions[] = {
    {"!LENGTH(!x)", "4"},
    {"!LENGTH('äöü')", "3"},
    {"!LENGTH(!q)", "7"},
    {"!LENGTH('it''s')", "4"},
    {"!LENGTH(!e)", "0"},
    {"!LENGTH(!NULL)", "0"},
    {"!LEN (abc)", "3"},
    {"!CONCAT(a)", "a"},
    {"!CONCAT(a, 'b c', 1, !x, !y, -1)", "ab c1Ab c!y-1"},
    {"!CONC(!CONC(a,b),!NULL,=)", "ab="},
    {"!SUBSTR(!x, 2)", "b c"},
    {"!SUBSTR(!x, 2, 1)", "b"},
    {"!SUBSTR(!x, 4, 9)", "c"},
    {"!SUBSTR(!x, 5)", ""},
    {"!SUBSTR(!x, 99, 1)", ""},
    {"!SUBSTR(!x, 1, 0)", ""},
    {"!SUBSTR('äöü', 2, 1)", "ö"},
    {"!INDEX(!x, c)", "4"},
    {"!INDEX(!x, C)", "0"},
    {"!INDEX(!x, '')", "0"},
    {"!INDEX('äöaab', aab)", "3"},
    {"!INDEX(aaab, aab)", "2"},
    {"!HEAD(!x)", "Ab"},
    {"!HEAD('-1 b')", "-"},
    {"!HEAD(!q)", "'it''s'"},
    {"!HEAD(!e)", ""},
    {"!TAIL(!x)", "c"},
    {"!TAIL('-1 b')", "1 b"},
    {"!TAIL(a)", ""},
    {"!HEAD(!TAIL(!TAIL('a,b c')))", "b"},
    {"!QUOTE(!x)", "'Ab c'"},
    {"!QUOTE('it''s')", "'it''s'"},
    {"!QUOTE(!NULL)", "''"},
    {"!UNQUOTE(!q)", "it's"},
    {"!UNQUOTE(!x)", "Ab c"},
    {"!UNQUOTE(!QUOTE(!q))", "'it''s'"},
    {"!UNQUOTE('''a'' ''b''')", "'a' 'b'"},
    {"!UNQUOTE(!CONCAT('\"', a, '\"'))", "a"},
    {"!UPCASE(!x)", "AB C"},
    {"!UPCASE('äb')", "äB"},
    {"!CONCAT(a,!BLANKS(2),b)", "a  b"},
    {"!BLANKS(0)", ""},
    {"!NULL", ""},
    {"!EVAL(@c)", "sex"},
    {"!EVAL('x @c @c')", "x sex sex"},
    {"!EVAL(!CONCAT('@', c))", "sex"},
    {"!UPCASE(@c)", "@C"},
    {"!QUOTE(!EVAL(@c))", "'sex'"},
    {"!1 !*", "!1 "},
};
INSTANTIATE_TEST_SUITE_P(Table, MacroFunctionTest, testing::ValuesIn(kFunctions),
                         [](const testing::TestParamInfo<ValueCase>& row) {
                             return RowNameOf(row.param.expression) + "_" +
                                    std::to_string(row.index);
                         });

struct ConditionCase {
    const char* condition;
    bool holds;
};

class MacroConditionTest : public testing::TestWithParam<ConditionCase> {};

TEST_P(MacroConditionTest, Holds) {
    const std::string condition = GetParam().condition;
    EXPECT_EQ(ValueOf("!IF (" + condition + ") !THEN(yes)!ELSE(no)!IFEND"),
              GetParam().holds ? "<(yes)>" : "<(no)>");
}

const ConditionCase kConditions[] = {
    {"1 = 1", true},
    {"'01' = 1", true},
    {"1.50 = '1.5'", true},
    {"1e1 = 10", true},
    {".5 = 0.5", true},
    {"-1 < 1", true},
    {"'10' > '9'", true},
    {"'10a' > '9a'", false},
    {"a = A", false},
    {"'a  ' = a", true},
    {"' a' = a", false},
    {"a ~= b", true},
    {"a <> b", true},
    {"a <> a", false},
    {"a < b", true},
    {"a <= a", true},
    {"b > a", true},
    {"b >= c", false},
    {"a !EQ a", true},
    {"a !ne a", false},
    {"1 !LT 2", true},
    {"2 !LE 2", true},
    {"2 !GT 2", false},
    {"2 !GE 2", true},
    {"1", true},
    {"0", false},
    {"0.0", false},
    {"'  '", false},
    {"''", false},
    {"!NULL", false},
    {"a", true},
    {"!e", false},
    {"!e = !NULL", true},
    {"!q = 'it''s'", false},
    {"!UNQUOTE(!q) = 'it''s'", true},
    {"!y = '!y'", true},
    {"!NOT 0", true},
    {"~ 1", false},
    {"~~1", true},
    {"!NOT a = b", true},
    {"1 !AND 0", false},
    {"1 & 1", true},
    {"0 !OR 1", true},
    {"0 | 0", false},
    {"1 | 0 & 0", true},
    {"(1 | 0) & 0", false},
    {"!NOT 0 & 0", false},
    {"!NOT (0 & 0)", true},
    {"((1))", true},
    {"0 | !NOT (a = b | 0) & 1", true},
    {"!LENGTH(!x) = 4", true},
    {"!CONCAT(a,=) = 'a='", true},
    {"a\n =\n a", true},
    {"a /* x */ = a", true},
};
INSTANTIATE_TEST_SUITE_P(Table, MacroConditionTest, testing::ValuesIn(kConditions),
                         [](const testing::TestParamInfo<ConditionCase>& row) {
                             return RowNameOf(row.param.condition) + "_" +
                                    std::to_string(row.index);
                         });

struct FaultCase {
    const char* name;
    std::string source;
    std::string expected;
};

class MacroFaultTest : public testing::TestWithParam<FaultCase> {};

TEST_P(MacroFaultTest, IsReportedAndLeft) {
    const std::string& source = GetParam().source;
    const FileExpansion expansion = ExpandFile(source, {}, /*pResolver=*/nullptr);
    EXPECT_EQ(FaultsOf(expansion), GetParam().expected);
    EXPECT_EQ(ExpandedText(source, expansion), source);
    for (const Call& call : expansion.calls) {
        EXPECT_TRUE(call.fault) << call.name;
        EXPECT_EQ(call.text, "");
    }
}

std::string List(const std::string& list) {
    return "DEFINE !m " + list + " f !ENDDEFINE.\n!m x=1.";
}

const FaultCase kWrongLists[] = {
    {"no end", "f.\nDEFINE !m () f.\n!m.", "unclosed-definition 2"},
    {"no end and nothing", "DEFINE", "unclosed-definition 1"},
    {"no name", "DEFINE (x=!TOKENS(1)) f !ENDDEFINE.", "no-macro-name 1"},
    {"no parentheses", List(""), "no-argument-list 1"},
    {"no closing parenthesis", List("(x=!TOKENS(1)"), "argument-list-form 1"},
    {"stray slash first", List("(/ x=!TOKENS(1))"), "argument-list-form 1"},
    {"stray slash last", List("(x=!TOKENS(1) /)"), "argument-list-form 1"},
    {"two slashes", List("(x=!TOKENS(1) // y=!TOKENS(1))"), "argument-list-form 1"},
    {"no slash", List("(x=!TOKENS(1) y=!TOKENS(1))"), "argument-list-form 1"},
    {"no tokens", List("(x=!TOKENS(0))"), "argument-list-form 1"},
    {"a fraction of tokens", List("(x=!TOKENS(1.5))"), "argument-list-form 1"},
    {"tokens without a number", List("(x=!TOKENS)"), "argument-list-form 1"},
    {"no kind", List("(x=!DEFAULT(1))"), "argument-list-form 1"},
    {"two kinds", List("(x=!TOKENS(1) !CMDEND)"), "argument-list-form 1"},
    {"a modifier twice", List("(x=!NOEXPAND !CMDEND !NOEXPAND)"), "argument-list-form 1"},
    {"a default twice", List("(x=!DEFAULT(a) !CMDEND !DEFAULT(b))"), "argument-list-form 1"},
    {"an open default", List("(x=!DEFAULT((a) !CMDEND)"), "argument-list-form 1"},
    {"no sign", List("(x !TOKENS(1))"), "argument-list-form 1"},
    {"no quotes", List("(x=!CHAREND(/))"), "argument-list-form 1"},
    {"two characters", List("(x=!CHAREND('//'))"), "argument-list-form 1"},
    {"no character", List("(x=!CHAREND(''))"), "argument-list-form 1"},
    {"one of two characters", List("(x=!ENCLOSE('('))"), "argument-list-form 1"},
    {"words too short", List("(x=!TO(1))"), "argument-list-form 1"},
    {"positional after keyword", List("(x=!TOKENS(1)\n/ !POS !TOKENS(1))"),
     "positional-after-keyword 2"},
    {"an argument twice", List("(x=!TOKENS(1) / !X=!TOKENS(1))"), "argument-twice 1"},
};
INSTANTIATE_TEST_SUITE_P(Lists, MacroFaultTest, testing::ValuesIn(kWrongLists),
                         NameOfRow<FaultCase>);

// The body begins on line 2.
std::string Called(const std::string& body) {
    return "DEFINE !m (x=!TOKENS(1))\n" + body + "\n!ENDDEFINE.\n!m x=1.";
}

const FaultCase kWrongBodies[] = {
    {"no then", Called("!IF (1) f !IFEND"), "statement-form 2"},
    {"no condition", Called("!IF !THEN f !IFEND"), "statement-form 2"},
    {"an empty condition", Called("!IF () !THEN f !IFEND"), "statement-form 2"},
    {"an open condition", Called("!IF (1 !THEN f !IFEND"), "statement-form 2"},
    {"two conditions", Called("!IF (1) !OR (1) !THEN f !IFEND"), "statement-form 2"},
    {"no operator", Called("!IF (1 1) !THEN f !IFEND"), "statement-form 2"},
    {"no right side", Called("!IF (1 =) !THEN f !IFEND"), "statement-form 2"},
    {"no left side", Called("!IF (= 1) !THEN f !IFEND"), "statement-form 2"},
    {"three sides", Called("!IF (1 = 1 = 1) !THEN f !IFEND"), "statement-form 2"},
    {"no end of if", Called("a\n!IF (1) !THEN f"), "unclosed-statement 3"},
    {"no end of do", Called("!DO !i = 1 !TO 2 f"), "unclosed-statement 2"},
    {"no end of a list", Called("!DO !i !IN (a b f !DOEND"), "stray-statement 2"},
    {"else alone", Called("!ELSE"), "stray-statement 2"},
    {"else twice", Called("!IF (1) !THEN !ELSE !ELSE !IFEND"), "stray-statement 2"},
    {"end of if alone", Called("!IFEND"), "stray-statement 2"},
    {"end of do alone", Called("!DOEND"), "stray-statement 2"},
    {"crossed ends", Called("!DO !i = 1 !TO 2 !IF (1) !THEN !DOEND !IFEND"), "stray-statement 2"},
    {"do without a variable", Called("!DO i = 1 !TO 2 !DOEND"), "statement-form 2"},
    {"do without to", Called("!DO !i = 1 2 !DOEND"), "statement-form 2"},
    {"do without an end", Called("!DO !i = 1 !TO !DOEND"), "statement-form 2"},
    {"do with nothing", Called("!DO !i !DOEND"), "statement-form 2"},
    {"let without a variable", Called("!LET v = 1"), "statement-form 2"},
    {"let without a sign", Called("!LET !v 1"), "statement-form 2"},
    {"let without a value", Called("!LET !v ="), "statement-form 2"},
    {"let with a parenthesis", Called("!LET !v = (a)"), "statement-form 2"},
    {"no operand", Called("!LENGTH()"), "statement-form 2"},
    {"an empty operand", Called("!CONCAT(a,,b)"), "statement-form 2"},
    {"an operand of two tokens", Called("!CONCAT(a b)"), "statement-form 2"},
    {"an open function", Called("!CONCAT(a"), "statement-form 2"},
    {"too many operands", Called("!LENGTH(a,b)"), "operand-count 2"},
    {"too few operands", Called("!INDEX(a)"), "operand-count 2"},
    {"wrong where it is not reached", Called("!IF (0) !THEN !SUBSTR(a) !IFEND"), "operand-count 2"},
    {"a statement in an operand", Called("!LET !v = !DO"), "statement-form 2"},
};
INSTANTIATE_TEST_SUITE_P(Bodies, MacroFaultTest, testing::ValuesIn(kWrongBodies),
                         NameOfRow<FaultCase>);

const FaultCase kWrongCalls[] = {
    {"nothing before the first character", "DEFINE !m (x=!ENCLOSE('(',')')) f !ENDDEFINE.\n!m x=a.",
     "no-first-character 2"},
    {"no last character", "DEFINE !m (x=!ENCLOSE('(',')')) f !ENDDEFINE.\n\n!m x=(a.",
     "no-last-character 3"},
    {"positional without its first character",
     "DEFINE !m (!POS !DEFAULT(d) !ENCLOSE('(',')')) f !ENDDEFINE.\n!m a.", "no-first-character 2"},
    {"the rest of the command is left",
     "DEFINE !m (x=!ENCLOSE('(',')')) f !ENDDEFINE.\ng !m x=(a !m.", "no-last-character 2"},
    {"no whole number", Called("!SUBSTR(abc,1.5)"), "no-whole-number 2"},
    {"no number", Called("!BLANKS(a)"), "no-whole-number 2"},
    {"a position below 1", Called("!SUBSTR(abc,0)"), "number-too-small 2"},
    {"a length below 0", Called("!SUBSTR(abc,1,-1)"), "number-too-small 2"},
    {"blanks below 0", Called("!BLANKS(-1)"), "number-too-small 2"},
    {"a loop from a word", Called("\n!DO !i = a !TO 3 !DOEND"), "no-whole-number 3"},
    {"a loop to an infinite number", Called("!DO !i = 1 !TO 1e999 !DOEND"), "no-whole-number 2"},
    {"a step of 0", Called("!DO !i = 1 !TO 3 !BY 0 !DOEND"), "step-is-zero 2"},
    {"break outside a loop", Called("f.\n\n!BREAK"), "break-outside-loop 4"},
    {"a macro in itself", Called("a !m x=1 b"), "macros-too-deep 1"},
    {"a macro in its argument", Called("a !m x=!m"), "macros-too-deep 1"},
    {"too many passes", Called("!DO !i = 1 !TO 1001 !DOEND"), "too-many-loop-passes 2"},
    {"too many passes over a list",
     "DEFINE !m (l=!CMDEND) !DO !i !IN (!l) !DOEND !ENDDEFINE.\n!m l=" + Repeat("a ", 1001) + ".",
     "too-many-loop-passes 1"},
    {"too many passes altogether", Called("!DO !i = 1 !TO 1000 !DO !j = 1 !TO 1000 !DOEND !DOEND"),
     "too-many-passes 2"},
    {"a text that doubles", Called("!DO !i = 1 !TO 30 !LET !x = !CONCAT(!x,!x) !DOEND"),
     "text-too-long 2"},
    {"blanks without end", Called("!BLANKS(16777217)"), "text-too-long 2"},
    {"a failure inside a macro",
     "DEFINE !in ()\n!BREAK !ENDDEFINE.\nDEFINE !m () f !in !ENDDEFINE.\n!m.\ng !m.",
     "break-outside-loop 2, break-outside-loop 2"},
    {"a failure inside an argument",
     "DEFINE !in () !BREAK !ENDDEFINE.\nDEFINE !m (x=!TOKENS(1)) f !x !ENDDEFINE.\ng !m x=!in.",
     "break-outside-loop 1"},
};
INSTANTIATE_TEST_SUITE_P(Calls, MacroFaultTest, testing::ValuesIn(kWrongCalls),
                         NameOfRow<FaultCase>);

std::string Expanded(const std::string& source, const ExpansionOptions& options = {}) {
    return ExpandedText(source, ExpandFile(source, options, /*pResolver=*/nullptr));
}

TEST(ExpandFileTest, BeginsANewCommandAfterADefinition) {
    EXPECT_EQ(Expanded("DEFINE m () f !ENDDEFINE. m."), "DEFINE m () f !ENDDEFINE. f.");
    EXPECT_EQ(Expanded("DEFINE m () f !ENDDEFINE .m."), "DEFINE m () f !ENDDEFINE .f.");
    EXPECT_EQ(Expanded("DEFINE m () f !ENDDEFINE * m."), "DEFINE m () f !ENDDEFINE * m.");
}

TEST(ExpandFileTest, ReadsLinesThatEndInCr) {
    const std::string source = "DEFINE !m ()\rf a.\rg b.\r!ENDDEFINE.\r!m.\r* x.\r!m.";
    const FileExpansion expansion = ExpandFile(source, {}, nullptr);
    EXPECT_EQ(ExpandedText(source, expansion),
              "DEFINE !m ()\rf a.\rg b.\r!ENDDEFINE.\rf a.\rg b.\r* x.\rf a.\rg b.");
    ASSERT_EQ(expansion.calls.size(), 2U);
    EXPECT_EQ(expansion.calls[1].line, 7);
}

TEST(ExpandFileTest, TellsWhereThingsStand) {
    const std::string source =
        "\xEF\xBB\xBF* x.\r\nDEFINE !M (a=!TOKENS(1)\r\n) f.\r\n!ENDDEFINE.\r\n"
        "GET\r\n  !m a=1 .\r\ng !m a=2 b.\r\n";
    const FileExpansion expansion = ExpandFile(source, {}, nullptr);
    ASSERT_EQ(expansion.definitions.size(), 1U);
    const Definition& definition = expansion.definitions.front();
    EXPECT_EQ(definition.name, "!M");
    EXPECT_EQ(definition.firstLine, 2);
    EXPECT_EQ(definition.lastLine, 4);
    EXPECT_EQ(source.substr(definition.begin, definition.end - definition.begin),
              "DEFINE !M (a=!TOKENS(1)\r\n) f.\r\n!ENDDEFINE.");
    EXPECT_EQ(source.substr(definition.bodyBegin, definition.bodyEnd - definition.bodyBegin),
              " f.\r\n");
    ASSERT_EQ(expansion.calls.size(), 2U);
    const Call& first = expansion.calls[0];
    EXPECT_EQ(first.name, "!M");
    EXPECT_EQ(first.line, 6);
    EXPECT_EQ(first.text, "f.");
    EXPECT_EQ(first.macro, definition.macro);
    EXPECT_EQ(source.substr(first.begin, first.end - first.begin), "!m a=1");
    EXPECT_EQ(source.substr(first.droppedBegin, first.droppedEnd - first.droppedBegin), " .");
    ASSERT_EQ(first.arguments.arguments.size(), 1U);
    EXPECT_EQ(first.arguments.arguments[0].value.text, "1");
    EXPECT_EQ(expansion.calls[1].line, 7);
    EXPECT_EQ(expansion.calls[1].droppedEnd, 0U);
}

TEST(ExpandFileTest, GoesOnAfterACallThatFails) {
    const std::string source =
        "DEFINE !bad (x=!TOKENS(1)) !BREAK !ENDDEFINE.\nDEFINE !m () f !ENDDEFINE.\n"
        "g !m !bad x=!m !m.";
    EXPECT_EQ(Expanded(source),
              "DEFINE !bad (x=!TOKENS(1)) !BREAK !ENDDEFINE.\nDEFINE !m () f !ENDDEFINE.\n"
              "g f !bad x=!m f.");
}

TEST(ExpandFileTest, EndsACallWhereItsCommandEndsInBatchLayout) {
    ExpansionOptions options;
    options.layout.batchMode = true;
    EXPECT_EQ(ExpandAfter("DEFINE !m (x=!CMDEND) f !x !ENDDEFINE.",
                          "!m x=a.\n b\n!m x=c\n\n+ !m x=d.\n-!m\n \n x=e\n\tg !m x=h", options),
              "f a. b\nf c\n\n+ f d.\n-f e\n\tg f h");
    EXPECT_EQ(ExpandAfter("DEFINE !m (x=!CMDEND)\nf !x.\n!ENDDEFINE.", "!m x=a\n!m x=b.", options),
              "f a.\nf b.");
    EXPECT_EQ(ExpandAfter("DEFINE @c () sex !ENDDEFINE.", "* @c\n  @c.\nf @c\n*@c", options),
              "* @c\n  @c.\nf sex\n*@c");
    // In an expansion as well.
    EXPECT_EQ(ExpandAfter("DEFINE !in (x=!CMDEND) <!x> !ENDDEFINE.\n"
                          "DEFINE !m ()\nf !in x=a\n b\ng !in x=c\n!ENDDEFINE.",
                          "!m.", options),
              "f <a b>\ng <c>.");
}

TEST(ExpandFileTest, EndsACommandAtABlankLineIfWanted) {
    const std::string definitions = "DEFINE !m (x=!CMDEND) f !x. !ENDDEFINE.";
    const std::string calls = "!m x=a\n \n* b\n\n!m x=c.";
    EXPECT_EQ(ExpandAfter(definitions, calls), "f a * b f c..");
    ExpansionOptions options;
    options.layout.endAtBlankLines = true;
    EXPECT_EQ(ExpandAfter(definitions, calls, options), "f a.\n \n* b\n\nf c.");
}

TEST(ExpandFileTest, CountsCharactersOfTheCodePage) {
    ExpansionOptions options;
    options.pCodePage = &CodePage::Windows1252();
    EXPECT_EQ(ExpandAfter("DEFINE !m () !LENGTH('\xE4\xF6') !INDEX('\xE4\xF6', '\xF6') "
                          "!SUBSTR('\xE4\xF6', 2) !UPCASE('\xE4z') !ENDDEFINE.",
                          "f !m", options),
              "f 2 2 \xF6 \xE4Z");
}

TEST(ExpandFileTest, KeepsWhatIsNoText) {
    using namespace std::string_literals;
    const std::string source = "DEFINE @c () sex !ENDDEFINE.\nf \0 @c \xFF\x80 \x01 @c.\0\n"s;
    EXPECT_EQ(Expanded(source), "DEFINE @c () sex !ENDDEFINE.\nf \0 sex \xFF\x80 \x01 @c.\0\n"s);
    EXPECT_EQ(Expanded(""), "");
}

// At a limit all is well, one step beyond it is not.
struct NestingCase {
    const char* name;
    std::string opening;
    std::string closing;
};

class MacroNestingTest : public testing::TestWithParam<NestingCase> {};

TEST_P(MacroNestingTest, IsReachedAndNotExceeded) {
    const NestingCase& c = GetParam();
    for (const int count : {200, 201, 10000}) {
        const std::string source = "DEFINE !m () f " + Repeat(c.opening, count) + "a" +
                                   Repeat(c.closing, count) + " !ENDDEFINE.\n!m.";
        EXPECT_EQ(FaultsOf(source), count > 200 ? "nesting-too-deep 1" : "") << count;
    }
}

const NestingCase kNestings[] = {
    {"if", "!IF (1) !THEN ", " !IFEND"},
    {"do", "!DO !i !IN (a) ", " !DOEND"},
    {"functions", "!UPCASE(", ")"},
};
INSTANTIATE_TEST_SUITE_P(Nesting, MacroNestingTest, testing::ValuesIn(kNestings),
                         NameOfRow<NestingCase>);

TEST(MacroLimitTest, CountsParenthesesOfConditions) {
    for (const int count : {200, 201, 10000}) {
        const std::string source = "DEFINE !m () !IF " + Repeat("(", count) + "1" +
                                   Repeat(")", count) + " !THEN f !IFEND !ENDDEFINE.\n!m.";
        EXPECT_EQ(FaultsOf(source), count > 200 ? "nesting-too-deep 1" : "") << count;
    }
}

TEST(MacroLimitTest, CountsMacrosInsideMacros) {
    for (const int count : {50, 51}) {
        std::string source = "DEFINE m1 () end !ENDDEFINE.\n";
        for (int i = 2; i <= count; ++i) {
            source += "DEFINE m" + std::to_string(i) + " () !EVAL(m" + std::to_string(i - 1) +
                      ") !ENDDEFINE.\n";
        }
        source += "f m" + std::to_string(count) + ".";
        EXPECT_EQ(FaultsOf(source), count > 50 ? "macros-too-deep 2" : "") << count;
    }
}

TEST(MacroLimitTest, CountsCallsInArguments) {
    for (const int count : {49, 50}) {
        const std::string source =
            "DEFINE m (!POS !CMDEND) <!1> !ENDDEFINE.\nf " + Repeat("m ", count + 1) + ".";
        EXPECT_EQ(FaultsOf(source), count > 49 ? "macros-too-deep 2" : "") << count;
    }
}

TEST(MacroLimitTest, CountsExpansions) {
    const auto source = [](int count) {
        return "DEFINE @c () !ENDDEFINE.\nDEFINE !d () " + Repeat("@c ", 999) +
               "!ENDDEFINE.\nDEFINE !m () " + Repeat("!d ", count) + " !ENDDEFINE.\nf !m.";
    };
    EXPECT_EQ(FaultsOf(source(99)), "");
    EXPECT_EQ(FaultsOf(source(100)), "too-many-expansions 2");
}

TEST(MacroLimitTest, CountsOnlyPassesThatAreMade) {
    EXPECT_EQ(FaultsOf(Called("!DO !i = 1 !TO 1000 !DOEND")), "");
    EXPECT_EQ(FaultsOf(Called("!DO !i = 1 !TO 1000000000000 !IF (!i = 1000) !THEN !BREAK !IFEND "
                              "!DOEND")),
              "");
}

TEST(MacroLimitTest, HoldsForAFile) {
    const std::string source =
        "DEFINE !m () !BLANKS(900)x !ENDDEFINE.\nDEFINE !n () !DO !i = 1 !TO 1000 !DOEND "
        "!ENDDEFINE.\n!m.\n!m.\n!n.\n!n.";
    ExpansionOptions options;
    EXPECT_EQ(FaultsOf(ExpandFile(source, options, nullptr)), "");
    options.limits.fileTextSize = 1;
    EXPECT_EQ(FaultsOf(ExpandFile(source, options, nullptr)), "file-too-large 4");
    options = {};
    options.limits.work = 40000;
    options.limits.workPerByte = 0;
    EXPECT_EQ(FaultsOf(ExpandFile(source, options, nullptr)), "too-much-work 2, too-much-work 2");
}

TEST(MacroFaultTextTest, NamesTheThingAndTheLine) {
    Fault fault;
    fault.kind = FaultKind::kNoWholeNumber;
    fault.name = "!SUBSTR";
    fault.line = 12;
    EXPECT_EQ(ReasonText(fault), "!SUBSTR needs a whole number (line 12)");
    fault.kind = FaultKind::kStepIsZero;
    fault.file = "lib/a.sps";
    EXPECT_EQ(ReasonText(fault), "the step of a loop is 0 (line 12 of lib/a.sps)");
}

using Files = std::map<std::string, std::string>;

// A few files by their names.
class MapResolver final : public IncludeResolver {
public:
    explicit MapResolver(Files files) : m_files(std::move(files)) {}

    bool Find(std::string_view path, const std::string& includingFile,
              IncludedFile& file) override {
        asked.push_back(includingFile + ":" + std::string(path));
        const auto found = m_files.find(std::string(path));
        if (found == m_files.end()) return false;
        file.name = found->first;
        file.text = found->second;
        return true;
    }

    std::vector<std::string> asked;

private:
    Files m_files;
};

std::string ExpandWith(MapResolver& resolver, const std::string& source, std::string& faults) {
    ExpansionOptions options;
    options.fileName = "main";
    const FileExpansion expansion = ExpandFile(source, options, &resolver);
    faults = FaultsOf(expansion);
    return ExpandedText(source, expansion);
}

TEST(MacroIncludeTest, MakesDefinitionsKnown) {
    MapResolver resolver(Files{{"a", "DEFINE @c () sex !ENDDEFINE.\nf @c."}});
    std::string faults;
    for (const std::string include : {"INCLUDE 'a'.", "include file = \"a\" .",
                                      "INSERT FILE='a' CD=NO.", "INSERT\n file /* x */ ='a'."}) {
        EXPECT_EQ(ExpandWith(resolver, "f @c.\n" + include + "\nf @c.", faults),
                  "f @c.\n" + include + "\nf sex.");
        EXPECT_EQ(faults, "");
    }
}

TEST(MacroIncludeTest, IsAnOrdinaryCommandWithoutAPath) {
    MapResolver resolver(Files{{"a", ""}});
    std::string faults;
    const std::string definitions = "DEFINE @c () sex !ENDDEFINE.\n";
    EXPECT_EQ(ExpandWith(resolver,
                         definitions + "INCLUDE @c.\nINSERT 'a'.\nINSERT FILE @c.\n"
                                       "INCLUDES 'a'.\nf INCLUDE 'a'.\n* INCLUDE 'a'.",
                         faults),
              definitions +
                  "INCLUDE sex.\nINSERT 'a'.\nINSERT FILE sex.\nINCLUDES 'a'.\n"
                  "f INCLUDE 'a'.\n* INCLUDE 'a'.");
    EXPECT_EQ(faults, "");
    EXPECT_TRUE(resolver.asked.empty());
}

TEST(MacroIncludeTest, KnowsWhatTheIncludingFileKnows) {
    MapResolver resolver(
        Files{{"a", "DEFINE x () from a !ENDDEFINE.\nINCLUDE 'b''c'."},
              {"b'c", "DEFINE y () x @c !ENDDEFINE.\nDEFINE @c () 1 !ENDDEFINE."}});
    std::string faults;
    const std::string source = "DEFINE @c () sex !ENDDEFINE.\nINCLUDE 'a'.\n";
    EXPECT_EQ(ExpandWith(resolver, source + "f y.", faults), source + "f from a 1.");
    EXPECT_EQ(faults, "");
    EXPECT_EQ(resolver.asked, (std::vector<std::string>{"main:a", "a:b'c"}));
}

TEST(MacroIncludeTest, ReportsWhatItCannotFollow) {
    MapResolver resolver(Files{
        {"a", "\nINCLUDE 'b'."}, {"b", "INCLUDE 'a'.\nDEFINE y () 1 !ENDDEFINE."}, {"main", ""}});
    std::string faults;
    const std::string source = "INCLUDE 'x'.\nINCLUDE 'a'.\nINSERT FILE='main'.\n";
    EXPECT_EQ(ExpandWith(resolver, source + "f y.", faults), source + "f 1.");
    EXPECT_EQ(faults, "include-not-found 1, included-within-itself 1, included-within-itself 3");
}

TEST(MacroIncludeTest, TellsOnlyOfTheFileItself) {
    MapResolver resolver(Files{{"a",
                                "DEFINE x () 1 !ENDDEFINE.\nx.\nDEFINE bad (/) !ENDDEFINE.\n"
                                "DEFINE z () !BREAK !ENDDEFINE."}});
    ExpansionOptions options;
    const FileExpansion expansion = ExpandFile("INCLUDE 'a'.\nx.\nf z.", options, &resolver);
    EXPECT_TRUE(expansion.definitions.empty());
    ASSERT_EQ(expansion.calls.size(), 2U);
    EXPECT_EQ(expansion.calls[0].line, 2);
    EXPECT_EQ(expansion.calls[0].macro->file, "a");
    ASSERT_TRUE(expansion.calls[1].fault);
    EXPECT_EQ(ReasonText(*expansion.calls[1].fault), "!BREAK stands outside a loop (line 4 of a)");
    ASSERT_EQ(expansion.faults.size(), 1U);
    EXPECT_EQ(ReasonText(expansion.faults[0]),
              "the argument list of bad is not written as one (line 3 of a)");
    ASSERT_EQ(expansion.includes.size(), 1U);
    EXPECT_EQ(expansion.includes[0].path, "a");
    EXPECT_EQ(expansion.includes[0].file, "a");
}

TEST(MacroIncludeTest, IsBounded) {
    Files files;
    for (int i = 0; i < 60; ++i) {
        const std::string next = std::to_string(i + 1);
        files[std::to_string(i)] = "INCLUDE '" + next + "'.\nINCLUDE '" + next + "'.";
    }
    MapResolver resolver(files);
    ExpansionOptions options;
    options.limits.includedSize = 100000;
    const FileExpansion expansion = ExpandFile("INCLUDE '0'.", options, &resolver);
    EXPECT_EQ(expansion.faults.front().kind, FaultKind::kIncludesTooDeep);
    EXPECT_EQ(expansion.faults.back().kind, FaultKind::kIncludesTooLarge);
    EXPECT_LT(resolver.asked.size(), 10000U);
}

}  // namespace
}  // namespace quillet::macro
