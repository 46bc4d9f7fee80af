#include "driver/macrobodies.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "macro/expandfile.h"
#include "macro/lexer.h"
#include "platform/codepage.h"
#include "quillet.h"
#include "support/rownames.h"

namespace quillet {
namespace {

MacroBodies ConvertBodies(const std::string& text, const MacroOptions& options = {}) {
    return ConvertMacroBodies(text, options, /*outsideCalls=*/{});
}

bool IsWordKind(macro::TokenKind kind) {
    return kind != macro::TokenKind::kOther && kind != macro::TokenKind::kEnd;
}

// The expansions of all calls, as a reader sees them: without comments and last periods, in
// capitals but for literals, with a blank between tokens that does not depend on how they are laid
// out.
std::vector<std::string> Expansions(const std::string& text) {
    std::vector<std::string> result;
    for (const macro::Call& call :
         macro::ExpandFile(text, macro::ExpansionOptions(), /*pResolver=*/nullptr).calls) {
        const macro::Lexer lexer(CodePage::Utf8(), call.text);
        std::string plain = call.fault ? "(fault)" : "";
        macro::Token last;
        for (macro::Token token = lexer.NextToken(0); token.kind != macro::TokenKind::kEnd;
             token = lexer.NextToken(last.end)) {
            const bool isGlued =
                last.end == token.begin && IsWordKind(last.kind) && IsWordKind(token.kind);
            plain += isGlued ? "_" : " ";
            const std::string_view word = lexer.TextOf(token);
            plain += token.kind == macro::TokenKind::kLiteral
                         ? std::string(word)
                         : macro::Capitals(CodePage::Utf8(), word);
            last = token;
        }
        if (plain.ends_with(" .")) plain.resize(plain.size() - 2);
        result.push_back(std::move(plain));
    }
    return result;
}

std::string DefinitionOf(std::string_view list, std::string_view body) {
    return "DEFINE !m (" + std::string(list) + ")\n" + std::string(body) + "\n!ENDDEFINE.\n";
}

// Macros as offices write them, all of which can be converted.
struct SurveyCase {
    const char* name;
    const char* list;
    const char* body;
    const char* calls;
    const char* part;  // of the new body
};

const SurveyCase kSurvey[] = {
    {"positional names", "!POSITIONAL !TOKENS(1) / !POSITIONAL !TOKENS(1)",
     "TABLES /TABLE=!1 BY !2.", "!m q1 sex.\n!m q2 age.", "/TABLE !1[C] BY !2[C]"},
    {"keyword names", "x=!TOKENS(1) / by=!TOKENS(1)", "TABLES /TABLE=!x BY !by.",
     "!m x=q1 by=sex.\n!m by=q1 x=sex.", "/TABLE !x[C] BY !by[C]"},
    {"a period after the list", "x=!TOKENS(1)", ".\nTABLES /TABLE=!x BY sex.", "!m x=q1.",
     "/TABLE !x[C] BY sex[C]"},
    {"no period", "x=!TOKENS(1)", "TABLES /TABLE=!x BY sex", "!m x=q1.", "VISIBLE=NO."},
    {"everything in one line", "x=!TOKENS(1)", "TABLES /TABLE=!x BY sex /TITLE='a' /CORNER='b'.",
     "!m x=q1.", "TITLE='a'"},
    {"a default", "x=!DEFAULT(q1) !TOKENS(1)", "TABLES /TABLE=!x.", "!m.\n!m x=age.", "!x[C]"},
    {"all positional arguments", "!POSITIONAL !TOKENS(1)", "TABLES /TABLE=!*.", "!m q1.",
     "/TABLE !*[C]"},
    {"one name in two places", "x=!TOKENS(1)",
     "TABLES /TABLE=!x BY sex /STATISTICS=COUNT(!x) CPCT(!x).", "!m x=q1.\n!m x=age.",
     "!x[C][COUNT,TABLEPCT.VALIDN]"},
    {"statistics with a base", "x=!TOKENS(1) / by=!TOKENS(1)",
     "TABLES /TABLE=!x BY !by /STATISTICS=CPCT(!x:!by).", "!m x=q1 by=sex.", "COLPCT.VALIDN"},
    {"observations", "x=!TOKENS(1)",
     "TABLES /OBSERVATION=!x /TABLE=sex > !x /STATISTICS=MEAN(!x 'Mean').", "!m x=income.",
     "!x[S][MEAN,'Mean']"},
    {"nesting", "x=!TOKENS(1) / y=!TOKENS(1)", "TABLES /TABLE=!x > !y BY sex.", "!m x=q1 y=age.",
     "!x[C]>!y[C]"},
    {"layers", "x=!TOKENS(1)", "TABLES /TABLE=q1 BY sex BY !x.", "!m x=region.", "BY !x[C]"},
    {"totals", "x=!TOKENS(1) / by=!TOKENS(1)",
     "TABLES /FTOTAL=t 'Total' /TABLE=!x + t BY !by + t /STATISTICS=COUNT(!x).", "!m x=q1 by=sex.",
     "LABEL='Total'"},
    {"totals of names in any order", "x=!TOKENS(1) / by=!TOKENS(1)",
     "TABLES /FTOTAL=t 'Total' /TABLE=!x + t BY !by + t /STATISTICS=COUNT(!x).",
     "!m x=a by=b.\n!m x=d by=c.", "!IF (!UPCASE(!x) < !UPCASE(!by)) !THEN"},
    {"totals of a name before and after another", "x=!TOKENS(1)",
     "TABLES /FTOTAL=t 'Total' /TABLE=!x + t BY sex + t /STATISTICS=COUNT(!x).",
     "!m x=age.\n!m x=wave.", "!IF (!UPCASE(!x) < 'SEX') !THEN"},
    {"format and labels", "x=!TOKENS(1)", "TABLES /FORMAT=ZERO /TABLE=!x BY (LABELS).", "!m x=q1.",
     "EMPTY=ZERO"},
    {"several tables in one command", "x=!TOKENS(1)",
     "TABLES /TABLE=!x BY sex /TITLE='a' /TABLE=!x BY age /TITLE='b'.", "!m x=q1.", "BY age[C]"},
    {"several commands", "x=!TOKENS(1)",
     "WEIGHT BY wt.\nTABLES /TABLE=!x.\nWEIGHT OFF.\nTABLES /TABLE=!x BY sex.\nEXECUTE.",
     "!m x=q1.", "WEIGHT OFF."},
    {"a sort", "x=!TOKENS(1)", "TABLES /TABLE=!x BY sex /SORT=!x(COUNT(!x)).", "!m x=q1.",
     "/CATEGORIES VAR=!x"},
    {"a group of responses", "x=!TOKENS(1)",
     "TABLES /MRGROUP=!x 'Media' m1 m2 m3 /TABLE=!x BY sex.", "!m x=media.", "NAME=$!x"},
    {"a group with a long name", "x=!TOKENS(1)",
     "TABLES /MRGROUP=!x 'Media' m1 m2 m3 /TABLE=!x BY sex.", "!m x=mediause.\n!m x=tv.",
     "!SUBSTR(!CONCAT('$', !x), 1, 8)"},
    {"a title by a function", "x=!TOKENS(1)",
     "TABLES /TABLE=!x /TITLE=!QUOTE(!CONCAT('Table of ', !UPCASE(!x))).", "!m x=q1.",
     "TITLE=!QUOTE(!CONCAT('Table of ', !UPCASE(!x)))"},
    {"a label as a title", "x=!TOKENS(1) / t=!TOKENS(1)", "TABLES /TABLE=!x /TITLE=!t.",
     "!m x=q1 t='It''s'.\n!m x=q2 t='Sex'.", "TITLE=!t"},
    {"a label in double quotes", "t=!TOKENS(1)", "TABLES /TABLE=q1 /CAPTION=!t.", "!m t=\"Basis\".",
     "CAPTION=!t"},
    {"a label of a statistic", "t=!TOKENS(1)", "TABLES /TABLE=q1 /STATISTICS=COUNT(q1 !t).",
     "!m t='N'.", "COUNT,!t"},
    {"a label that can be missing", "x=!TOKENS(1) / t=!TOKENS(1)",
     "TABLES /TABLE=!x /TITLE='A' !t.", "!m x=q1.\n!m x=q1 t='B'.", "!IF (!t = !NULL) !THEN"},
    {"several titles", "t=!CMDEND", "TABLES /TABLE=q1 /TITLE=!t.", "!m t='A' 'B'.\n!m t='One'.",
     "TITLE=!t"},
    {"a variable that is set", "x=!TOKENS(1)",
     "!LET !t = !QUOTE(!CONCAT('Of ', !x))\nTABLES /TABLE=!x /TITLE=!t.", "!m x=q1.", "TITLE=!t"},
    {"a variable that is set inside", "x=!TOKENS(1)",
     "TABLES /TABLE=!x !LET !t = !QUOTE(!x) /TITLE=!t.", "!m x=q1.", "TITLE=!t"},
    {"a condition around commands", "w=!TOKENS(1)",
     "!IF (!w = yes) !THEN\nTABLES /TABLE=a.\n!ELSE\nTABLES /TABLE=b.\n!IFEND",
     "!m w=yes.\n!m w=no.", "/TABLE b[C]"},
    {"a condition inside a command", "x=!TOKENS(1) / s=!TOKENS(1)",
     "TABLES /TABLE=!x !IF (!s = c) !THEN /STATISTICS=COUNT(!x) !ELSE /STATISTICS=CPCT(!x) !IFEND "
     "/TITLE='t'.",
     "!m x=q1 s=c.\n!m x=q1 s=p.", "!IF (!s = c) !THEN"},
    {"a condition at the end", "x=!TOKENS(1) / t=!TOKENS(1)",
     "TABLES /TABLE=!x !IF (!t ~= !NULL) !THEN /TITLE=!t !IFEND .", "!m x=q1.\n!m x=q1 t='T'.",
     "!IF (!t ~= !NULL) !THEN"},
    {"conditions one after the other", "x=!TOKENS(1) / a=!TOKENS(1) / b=!TOKENS(1)",
     "TABLES /TABLE=!x !IF (!a = 1) !THEN /TITLE='a' !IFEND !IF (!b = 1) !THEN /CORNER='b' !IFEND "
     ".",
     "!m x=q1 a=1 b=1.\n!m x=q1 a=0 b=1.\n!m x=q1 a=1 b=0.\n!m x=q1.", "CORNER='b'"},
    {"a command that begins in a condition", "x=!TOKENS(1) / w=!TOKENS(1)",
     "!IF (!w = 1) !THEN TABLES /TABLE=!x !ELSE TABLES /TABLE=!x BY sex !IFEND /TITLE='t'.",
     "!m x=q1 w=1.\n!m x=q1 w=2.", "!x[C] BY sex[C]"},
    {"a command that ends in a condition", "x=!TOKENS(1) / w=!TOKENS(1)",
     "TABLES /TABLE=!x !IF (!w = 1) !THEN /TITLE='a'. !ELSE /TITLE='b'. !IFEND\nEXECUTE.",
     "!m x=q1 w=1.\n!m x=q1 w=2.", "TITLE='b'"},
    {"a loop around a command", "v=!CMDEND",
     "!DO !i !IN (!v)\nTABLES /TABLE=!i BY sex /TITLE=!QUOTE(!i).\n!DOEND", "!m v=a b c.",
     "/TABLE !i[C] BY sex[C]"},
    {"a loop that counts", "x=!TOKENS(1)",
     "!DO !i = 1 !TO 3\nTABLES /TABLE=q!i BY !x /TITLE=!QUOTE(!CONCAT('Table ', !i)).\n!DOEND",
     "!m x=sex.", "/TABLE q!i[C]"},
    {"names that are run together", "x=!TOKENS(1)",
     "!DO !i = 1 !TO 2 !LET !n = !CONCAT(!x, '_', !i) TABLES /TABLE=!n. !DOEND", "!m x=q.",
     "/TABLE !n[C]"},
    {"a function as a name", "x=!TOKENS(1)", "TABLES /TABLE=!CONCAT(!x, 1) BY sex.", "!m x=q.",
     "/TABLE !CONCAT(!x, 1)[C]"},
    {"a name with an end", "x=!TOKENS(1)", "TABLES /TABLE=p!x BY sex.", "!m x=q.\n!m x=r.",
     "/TABLE p!x[C]"},
    {"head and tail", "l=!CMDEND",
     "!LET !r = !l !DO !i = 1 !TO 9 !IF (!r = !NULL) !THEN !BREAK !IFEND TABLES /TABLE=!HEAD(!r). "
     "!LET !r = !TAIL(!r) !DOEND",
     "!m l=a b.", "/TABLE !HEAD(!r)[C]"},
    {"a loop inside a command", "v=!CMDEND",
     "TABLES !DO !i !IN (!v) /TABLE=!i BY sex /TITLE=!QUOTE(!i) !DOEND .", "!m v=a b c.\n!m v=a.",
     "!DO !i !IN (!v)"},
    {"a loop inside a table", "v=!CMDEND",
     "TABLES /TABLE=total !DO !i !IN (!v) + !i !DOEND BY sex.", "!m v=a b c.\n!m v=a.",
     "!DO !i !IN (!v)"},
    {"a list with plus signs", "x=!TOKENS(1) / by=!CMDEND", "TABLES /TABLE=!x BY !by.",
     "!m x=q1 by=a + b.\n!m x=q1 by=c.", "!IF (!UPCASE(!item) = '+') !THEN !item !ELSE"},
    {"two lists", "x=!ENCLOSE('(',')') / by=!ENCLOSE('(',')')", "TABLES /TABLE=!x BY !by.",
     "!m x=(a + b) by=(c + d + e).\n!m x=(a) by=(c).", "!IN (!by)"},
    {"a list of observations", "o=!ENCLOSE('(',')')",
     "TABLES /OBSERVATION=!o /TABLE=!DO !v !IN (!o) !v + !DOEND t /STATISTICS=MEAN(!o).",
     "!m o=(a b).\n!m o=(c).", "!v[S][MEAN]+ !DOEND t[C]"},
    {"an expression", "x=!CMDEND", "TABLES /TABLE=!x.", "!m x=a > b.\n!m x=c.", "!IN (!x)"},
    {"a function of statistics", "x=!TOKENS(1) / s=!TOKENS(1)",
     "TABLES /OBSERVATION=!x /TABLE=!x /STATISTICS=!s(!x).", "!m x=a s=MEAN.\n!m x=a s=MEDIAN.",
     "!x[S][!s]"},
    {"a number of decimals", "n=!TOKENS(1)",
     "TABLES /OBSERVATION=x /TABLE=x /STATISTICS=MEAN(x (F8.!n)).", "!m n=1.\n!m n=2.", "F8.!n"},
    {"a comment in the command", "x=!TOKENS(1)",
     "TABLES /* the table */ /TABLE=!x\n  /* and its */ /TITLE='t'.", "!m x=q1.",
     "/* TABLES /* the table * / /TABLE=!x */"},
    {"a comment before the command", "x=!TOKENS(1)", "/* The !x table. */\nTABLES /TABLE=!x.",
     "!m x=q1.", "/* The !x table. */\n/* TABLES /TABLE=!x. */"},
    {"a comment after the command before", "x=!TOKENS(1)",
     "EXECUTE. /* The !x table. */\nTABLES /TABLE=!x.", "!m x=q1.", "EXECUTE. /* The !x table. */"},
    {"a comment command", "x=!TOKENS(1)", "* The !x table.\nTABLES /TABLE=!x.", "!m x=q1.",
     "* The !x table."},
    {"quotes in a literal", "x=!TOKENS(1)", "TABLES /TABLE=!x /TITLE='It''s !x' /CORNER=\"a 'b'\".",
     "!m x=q1.", "TITLE='It''s !x'"},
    {"letters outside of ASCII", "x=!TOKENS(1)",
     "TABLES /TABLE=!x /TITLE=!QUOTE(!CONCAT('\xC3\x84rger ', !x)).",
     "!m x=gr\xC3\xB6\xC3\x9F"
     "e.",
     "\xC3\x84rger"},
    {"a bar chart", "x=!TOKENS(1) / y=!TOKENS(1)",
     "IGRAPH /VIEWNAME='Bar' /X1=VAR(!x) TYPE=CATEGORICAL /Y=VAR(!y) TYPE=SCALE /BAR(MEAN) "
     "/TITLE=!QUOTE(!x).",
     "!m x=sex y=income.", "name(!CONCAT('\"', !x, '\"'))"},
    {"a scatter chart with a label", "t=!TOKENS(1)",
     "IGRAPH /X1=VAR(a) TYPE=SCALE /Y=VAR(b) TYPE=SCALE /SCATTER /TITLE=!t.", "!m t='Cloud'.",
     "!UNQUOTE(!t)"},
    {"the word shortened", "x=!TOKENS(1)", "tab /tab=!x by sex /sta=cou(!x).", "!m x=q1.",
     "!x[C][COUNT]"},
};

class SurveyMacroTest : public testing::TestWithParam<SurveyCase> {};

TEST_P(SurveyMacroTest, IsConverted) {
    const SurveyCase& c = GetParam();
    const std::string source = DefinitionOf(c.list, c.body) + c.calls + "\n";
    const MacroBodies result = ConvertBodies(source);
    ASSERT_EQ(result.bodies.size(), 1U);
    const MacroBody& body = result.bodies.front();
    EXPECT_EQ(body.outcome, MacroBodyOutcome::kConverted)
        << body.reason << "\nexpected: " << body.expected << "\nfound: " << body.found;
    EXPECT_EQ(body.reason, "");
    EXPECT_EQ(body.calls, static_cast<long>(Expansions(source).size()));
    EXPECT_NE(result.text.find(c.part), std::string::npos) << result.text;
    EXPECT_TRUE(result.text.ends_with(std::string("!ENDDEFINE.\n") + c.calls + "\n"));

    // What the calls come to needs no conversion any more.
    for (const std::string& expansion : Expansions(result.text)) {
        EXPECT_EQ(expansion.find(" TABLES / TABLE"), std::string::npos) << expansion;
        EXPECT_EQ(expansion.find(" IGRAPH /"), std::string::npos) << expansion;
    }
    // Nor is there a legacy command left, and a second time nothing happens.
    EXPECT_TRUE(FindLegacyCommands(result.text, FindOptions()).commands.empty()) << result.text;
    const Conversion conversion = ConvertText(result.text, Options());
    EXPECT_EQ(conversion.outcome, Outcome::kDone);
    EXPECT_EQ(conversion.resultLines, "");
    EXPECT_EQ(Expansions(conversion.output), Expansions(result.text));
    const MacroBodies again = ConvertBodies(result.text);
    EXPECT_TRUE(again.bodies.empty());
    EXPECT_EQ(again.text, result.text);
}

INSTANTIATE_TEST_SUITE_P(Rows, SurveyMacroTest, testing::ValuesIn(kSurvey), NameOfRow<SurveyCase>);

// One mistake in a new body.
struct Mistake {
    std::string name;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string text;
};

std::vector<macro::Token> BodyTokensOf(const std::string& body) {
    const macro::Lexer lexer(CodePage::Utf8(), body);
    std::vector<macro::Token> tokens;
    for (macro::Token token = lexer.NextToken(0); token.kind != macro::TokenKind::kEnd;
         token = lexer.NextToken(token.end)) {
        tokens.push_back(token);
    }
    return tokens;
}

// What somebody could have got wrong in a body: a name, a literal, a number or an argument is
// another one, a token is missing or is there twice, two of them have changed places.
std::vector<Mistake> MistakesIn(const std::string& body) {
    std::vector<Mistake> mistakes;
    const std::vector<macro::Token> tokens = BodyTokensOf(body);
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const macro::Token& token = tokens[i];
        // Comment commands do not count.
        if (body[body.find_last_of('\n', token.begin) + 1] == '*') continue;
        const std::string word = body.substr(token.begin, token.end - token.begin);
        const auto add = [&](const char* name, std::string text) {
            mistakes.push_back({name, token.begin, token.end, std::move(text)});
        };
        switch (token.kind) {
            case macro::TokenKind::kIdentifier:
                add("another name", "other");
                add("a function", word == "COUNT" ? "MEAN" : "COUNT");
                add("a measure", word == "C" ? "S" : "C");
                add("a longer name", word + "x");
                break;
            case macro::TokenKind::kNumber:
                add("a number", word + "1");
                break;
            case macro::TokenKind::kLiteral:
                add("a label", word.substr(0, 1) + "x" + word.substr(1));
                add("a blank in a label", word.substr(0, 1) + " " + word.substr(1));
                break;
            case macro::TokenKind::kMacroWord:
                for (const char* pWord : {"!x", "!by", "!t", "!i", "!v"}) {
                    if (word != pWord) add("another argument", pWord);
                }
                break;
            default:
                break;
        }
        add("left out", "");
        add("twice", word + " " + word);
        if (i + 1 < tokens.size()) {
            const std::string between = body.substr(token.end, tokens[i + 1].begin - token.end);
            const std::string next =
                body.substr(tokens[i + 1].begin, tokens[i + 1].end - tokens[i + 1].begin);
            mistakes.push_back(
                {"exchanged", token.begin, tokens[i + 1].end, next + between + " " + word});
        }
        // A subcommand.
        if (word != "/") continue;
        std::size_t next = i + 1;
        while (next + 1 < tokens.size() && body[tokens[next].begin] != '/') ++next;
        mistakes.push_back({"a subcommand left out", token.begin, tokens[next].begin, ""});
    }
    return mistakes;
}

class SurveyMacroMistakesTest : public testing::TestWithParam<SurveyCase> {};

TEST_P(SurveyMacroMistakesTest, AreNoticed) {
    const SurveyCase& c = GetParam();
    const std::string source = DefinitionOf(c.list, c.body) + c.calls + "\n";
    std::string newBody;
    const MacroBodies right = ConvertMacroBodies(source, MacroOptions(), {},
                                                 [&newBody](std::string& body) { newBody = body; });
    ASSERT_EQ(right.bodies.at(0).outcome, MacroBodyOutcome::kConverted);
    const std::vector<std::string> expansions = Expansions(right.text);
    const std::vector<Mistake> mistakes = MistakesIn(newBody);
    EXPECT_GT(mistakes.size(), 50U);
    long noticed = 0;
    for (const Mistake& mistake : mistakes) {
        std::string wrongBody = newBody;
        wrongBody.replace(mistake.begin, mistake.end - mistake.begin, mistake.text);
        const MacroBodies result = ConvertMacroBodies(
            source, MacroOptions(), {}, [&wrongBody](std::string& body) { body = wrongBody; });
        if (result.bodies.at(0).outcome != MacroBodyOutcome::kConverted) {
            ++noticed;
            EXPECT_EQ(result.text, source);
            continue;
        }
        // Then it was none.
        EXPECT_EQ(Expansions(result.text), expansions)
            << mistake.name << " at " << newBody.substr(mistake.begin, 40);
    }
    EXPECT_GT(noticed, static_cast<long>(mistakes.size()) / 2);
}

INSTANTIATE_TEST_SUITE_P(Rows, SurveyMacroMistakesTest, testing::ValuesIn(kSurvey),
                         NameOfRow<SurveyCase>);

// Macros that stay as they are.
struct VerdictCase {
    const char* name;
    std::string source;
    MacroBodyOutcome outcome;
    const char* reason;
    const char* expected = "";
    const char* found = "";
};

class MacroBodyVerdictTest : public testing::TestWithParam<VerdictCase> {};

TEST_P(MacroBodyVerdictTest, TellsWhy) {
    const VerdictCase& c = GetParam();
    const MacroBodies result = ConvertBodies(c.source);
    EXPECT_EQ(result.text, c.source);
    ASSERT_FALSE(result.bodies.empty());
    const MacroBody& body = result.bodies.front();
    EXPECT_EQ(body.outcome, c.outcome);
    EXPECT_EQ(body.reason, c.reason);
    EXPECT_EQ(body.expected, c.expected);
    EXPECT_EQ(body.found, c.found);
}

const std::string kOneName = "DEFINE !m (x=!TOKENS(1)) TABLES /TABLE=!x BY sex. !ENDDEFINE.\n";

const VerdictCase kVerdicts[] = {
    {"no call", kOneName, MacroBodyOutcome::kNoCall, "no call of it is known"},
    {"a call before the definition", "!m x=a.\n" + kOneName, MacroBodyOutcome::kNoCall,
     "no call of it is known"},
    {"a call in a comment", kOneName + "* !m x=a.\n", MacroBodyOutcome::kNoCall,
     "no call of it is known"},
    {"a call in inline data", kOneName + "BEGIN DATA\n!m x=a.\nEND DATA.\n",
     MacroBodyOutcome::kNoCall, "no call of it is known"},
    {"a branch that no call takes",
     "DEFINE !m (x=!TOKENS(1)) !IF (!x = 1) !THEN TABLES /TABLE=a. !IFEND !ENDDEFINE.\n!m x=2.\n",
     MacroBodyOutcome::kNoCall, "no call comes to one of its legacy commands"},
    {"a call that cannot be read",
     "DEFINE !m (x=!ENCLOSE('(',')')) TABLES /TABLE=!x. !ENDDEFINE.\n!m x=(a).\n!m x=a.\n",
     MacroBodyOutcome::kDisproved,
     "the call on line 3 cannot be expanded: the value of X does not begin with its first "
     "character "
     "(line 3)"},
    {"a call that is not converted",
     "DEFINE !m (s=!TOKENS(1)) TABLES /TABLE=a /STATISTICS=!s(a). !ENDDEFINE.\n!m s=COUNT.\n"
     "!m s=foo.\n",
     MacroBodyOutcome::kDisproved,
     "the call on line 3 is not converted: Unrecognized summary function foo"},
    {"an argument that decides what it becomes",
     "DEFINE !m (s=!TOKENS(1)) TABLES /TABLE=a BY b /STATISTICS=!s(a). !ENDDEFINE.\n!m s=CPCT.\n"
     "!m s=COUNT.\n",
     MacroBodyOutcome::kNotConvertible, "Unrecognized summary function !s"},
    {"one name for two arguments",
     "DEFINE !m (x=!TOKENS(1) / by=!TOKENS(1)) TABLES /MRGROUP=!x 'g' a1 a2 /TABLE=!x BY !by. "
     "!ENDDEFINE.\n!m x=a by=b.\n!m x=c by=c.\n",
     MacroBodyOutcome::kDisproved, "the call on line 3 would give something else",
     "$C [ RESPONSES ] / CATEGORIES VAR =", "C [ C ] / CATEGORIES VAR ="},
    {"a call within a longer command", kOneName + "!m x=a /TITLE='t'.\n",
     MacroBodyOutcome::kDisproved, "the call on line 2 would give something else",
     "SEX. [ C ] / CATEGORIES VAR =", "SEX [ C ] / CATEGORIES VAR ="},
    {"a command that is put together from its caller's words",
     "DEFINE !m () TABLES /TABLE=a !ENDDEFINE.\n!m BY b.\n", MacroBodyOutcome::kDisproved,
     "the call on line 2 would give something else", "BY B [ C ] / CATEGORIES VAR",
     "/ CATEGORIES VAR = ALL EMPTY = EXCLUDE"},
    {"a call with arguments in the command",
     "DEFINE !in (y=!TOKENS(1)) !y !ENDDEFINE.\nDEFINE !m () TABLES /TABLE=!in y=a . !ENDDEFINE.\n"
     "!m.\n",
     MacroBodyOutcome::kNotConvertible, "it holds a call with arguments (!in)"},
    {"a loop with a condition in the command",
     "DEFINE !m () TABLES !DO !i !IN (a b) !IF (!i = a) !THEN /TABLE=!i !ELSE /TABLE=c !IFEND "
     "!DOEND . !ENDDEFINE.\n!m.\n",
     MacroBodyOutcome::kNotConvertible, "it holds a statement in a loop"},
    {"control characters", kOneName + "!m x=a.\nTITLE '\x01'.\n", MacroBodyOutcome::kNotConvertible,
     "the text holds control characters"},
};
INSTANTIATE_TEST_SUITE_P(Rows, MacroBodyVerdictTest, testing::ValuesIn(kVerdicts),
                         NameOfRow<VerdictCase>);

TEST(MacroBodiesTest, TextsWithoutSuchMacrosStay) {
    for (const char* pText :
         {"", "TABLES /TABLE=a.\n", "DEFINE !m () FREQ a. !ENDDEFINE.\n!m.\n", "DEFINE !m (",
          "DEFINE !m () TABLES /TABLE=a.", "\xFF\xFE\x44", "* DEFINE !m () TABLES. !ENDDEFINE."}) {
        const MacroBodies result = ConvertBodies(pText);
        EXPECT_EQ(result.text, pText);
        EXPECT_TRUE(result.bodies.empty());
    }
}

TEST(MacroBodiesTest, VerdictsTellOfEachDefinition) {
    const MacroBodies result = ConvertBodies(
        "DEFINE !a ()\nTABLES /TABLE=a.\nTABLES /TABLE=b.\n!ENDDEFINE.\n!a.\n!a.\n"
        "DEFINE @b ()\n!ENDDEFINE.\nDEFINE c ()\nIGRAPH /X1=VAR(a)\n!ENDDEFINE.\n");
    ASSERT_EQ(result.bodies.size(), 2U);
    const MacroBody& first = result.bodies.front();
    EXPECT_EQ(first.name, "!a");
    EXPECT_EQ(first.firstLine, 1);
    EXPECT_EQ(first.lastLine, 4);
    EXPECT_EQ(first.legacyCommands, 2);
    EXPECT_EQ(first.unusedCommands, 0);
    EXPECT_EQ(first.calls, 2);
    EXPECT_EQ(first.outcome, MacroBodyOutcome::kConverted);
    const MacroBody& second = result.bodies.back();
    EXPECT_EQ(second.name, "c");
    EXPECT_EQ(second.firstLine, 9);
    EXPECT_EQ(second.legacyCommands, 1);
    EXPECT_EQ(second.outcome, MacroBodyOutcome::kNoCall);
}

TEST(MacroBodiesTest, ANewBodyStandsInPlaceOfTheOldOne) {
    const MacroBodies result = ConvertBodies(
        "TITLE 'x'.\nDEFINE !m (x=!TOKENS(1))\nWEIGHT BY w.\n  TABLES\n    /TABLE=!x BY sex.\n"
        "EXECUTE.\n!ENDDEFINE.\n!m x=a.\nEXECUTE.\n");
    EXPECT_EQ(result.text,
              "TITLE 'x'.\nDEFINE !m (x=!TOKENS(1))\nWEIGHT BY w.\n/* TABLES */\n"
              "/*     /TABLE=!x BY sex. */\nCTABLES\n  /MRSETS COUNTDUPLICATES=YES\n"
              "  /FORMAT EMPTY=BLANK\n  /TABLE !x[C] BY sex[C]\n"
              "  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=EXCLUDE\n  /SLABELS VISIBLE=NO.\n"
              "EXECUTE.\n!ENDDEFINE.\n!m x=a.\nEXECUTE.\n");
}

TEST(MacroBodiesTest, LineEndsMarksAndEncodingsStay) {
    const std::string source =
        "\xEF\xBB\xBF"
        "DEFINE !m (x=!TOKENS(1))\r\nTABLES /TABLE=!x\r\n /TITLE='a'.\r\n!ENDDEFINE.\r\n"
        "!m x=q1.\r\n";
    const MacroBodies result = ConvertBodies(source);
    EXPECT_EQ(result.bodies.at(0).outcome, MacroBodyOutcome::kConverted);
    EXPECT_TRUE(
        result.text.starts_with("\xEF\xBB\xBF"
                                "DEFINE !m (x=!TOKENS(1))\r\n/* TABLES"));
    for (std::size_t i = result.text.find('\n'); i < result.text.size();
         i = result.text.find('\n', i + 1)) {
        EXPECT_EQ(result.text.at(i - 1), '\r');
    }
    const std::string legacy =
        "DEFINE !m (x=!TOKENS(1))\nTABLES /TABLE=!x /TITLE='\xC4rger'.\n!ENDDEFINE.\n!m "
        "x=gr\xF6.\n";
    const MacroBodies inWindows1252 = ConvertBodies(legacy);
    EXPECT_EQ(inWindows1252.bodies.at(0).outcome, MacroBodyOutcome::kConverted);
    EXPECT_NE(inWindows1252.text.find("TITLES TITLE='\xC4rger'"), std::string::npos);
}

TEST(MacroBodiesTest, BatchLayout) {
    MacroOptions options;
    options.conversion.batchMode = true;
    const std::string source =
        "DEFINE !m (x=!TOKENS(1))\nTABLES\n  /TABLE=!x BY sex\n  /TITLE='t'\nEXECUTE\n"
        "!ENDDEFINE.\n!m x=q1\n!m x=q2\nEXECUTE\n";
    const MacroBodies result = ConvertBodies(source, options);
    EXPECT_EQ(result.bodies.at(0).outcome, MacroBodyOutcome::kConverted)
        << result.bodies.at(0).reason << result.bodies.at(0).expected << "|"
        << result.bodies.at(0).found;
    EXPECT_EQ(result.bodies.at(0).calls, 2);
    EXPECT_NE(result.text.find("\n  /TABLE !x[C] BY sex[C]\n"), std::string::npos) << result.text;
}

TEST(MacroBodiesTest, ALaterDefinitionIsAnotherMacro) {
    const MacroBodies result = ConvertBodies(
        "DEFINE !m (x=!TOKENS(1)) TABLES /TABLE=!x. !ENDDEFINE.\n!m x=a.\n"
        "DEFINE !m (x=!TOKENS(1)) TABLES /TABLE=!x BY b. !ENDDEFINE.\n!m x=a.\n!m x=c.\n");
    ASSERT_EQ(result.bodies.size(), 2U);
    EXPECT_EQ(result.bodies[0].calls, 1);
    EXPECT_EQ(result.bodies[1].calls, 2);
    EXPECT_EQ(result.bodies[0].outcome, MacroBodyOutcome::kConverted);
    EXPECT_EQ(result.bodies[1].outcome, MacroBodyOutcome::kConverted);
    EXPECT_NE(result.text.find("BY b[C]"), std::string::npos);
}

TEST(MacroBodiesTest, MacrosThatCallOneAnother) {
    const MacroBodies result = ConvertBodies(
        "DEFINE !in (x=!TOKENS(1))\nTABLES /TABLE=!x.\n!ENDDEFINE.\n"
        "DEFINE !out (y=!TOKENS(1))\n!in x=!y.\nTABLES /TABLE=!y BY sex.\n!ENDDEFINE.\n"
        "!out y=a.\n!out y=b.\n!in x=c.\n");
    ASSERT_EQ(result.bodies.size(), 2U);
    EXPECT_EQ(result.bodies[0].outcome, MacroBodyOutcome::kConverted);
    EXPECT_EQ(result.bodies[0].calls, 3);
    EXPECT_EQ(result.bodies[1].outcome, MacroBodyOutcome::kConverted);
    EXPECT_EQ(result.bodies[1].calls, 2);
    for (const std::string& expansion : Expansions(result.text)) {
        EXPECT_EQ(expansion.find(" TABLES "), std::string::npos) << expansion;
    }
}

TEST(MacroBodiesTest, OneThatIsWrongDoesNotSpoilTheOneThatItCalls) {
    const MacroBodies result = ConvertBodies(
        "DEFINE !in (x=!TOKENS(1))\nTABLES /TABLE=!x.\n!ENDDEFINE.\n"
        "DEFINE !out (y=!TOKENS(1))\n!in x=!y.\nTABLES /TABLE=a /STATISTICS=!y(a).\n!ENDDEFINE.\n"
        "!out y=CPCT.\n!out y=COUNT.\n!in x=c.\n");
    ASSERT_EQ(result.bodies.size(), 2U);
    EXPECT_EQ(result.bodies[0].outcome, MacroBodyOutcome::kConverted) << result.bodies[0].reason;
    EXPECT_NE(result.bodies[1].outcome, MacroBodyOutcome::kConverted);
}

TEST(MacroBodiesTest, AMacroWithoutArgumentsIsPutBackByItsName) {
    const MacroBodies result = ConvertBodies(
        "DEFINE @col () sex + age !ENDDEFINE.\nDEFINE @one () sex !ENDDEFINE.\n"
        "DEFINE !m (x=!TOKENS(1)) TABLES /TABLE=!x > @one BY @col. !ENDDEFINE.\n!m x=a.\n");
    ASSERT_EQ(result.bodies.size(), 1U);
    EXPECT_EQ(result.bodies[0].outcome, MacroBodyOutcome::kConverted)
        << result.bodies[0].reason << result.bodies[0].found;
    EXPECT_NE(result.text.find("!x[C]>@one[C]"), std::string::npos) << result.text;
    EXPECT_NE(result.text.find("!IN (@col)"), std::string::npos) << result.text;
}

TEST(MacroBodiesTest, CommandsThatNoCallComesToStay) {
    const MacroBodies result = ConvertBodies(
        "DEFINE !m (w=!TOKENS(1))\n!IF (!w = 1) !THEN\nTABLES /TABLE=a.\n!ELSE\nTABLES /TABLE=b.\n"
        "!IFEND\n!ENDDEFINE.\n!m w=1.\n");
    ASSERT_EQ(result.bodies.size(), 1U);
    EXPECT_EQ(result.bodies[0].outcome, MacroBodyOutcome::kConverted);
    EXPECT_EQ(result.bodies[0].legacyCommands, 2);
    EXPECT_EQ(result.bodies[0].unusedCommands, 1);
    EXPECT_NE(result.text.find("!ELSE\nTABLES /TABLE=b.\n!IFEND"), std::string::npos)
        << result.text;
}

TEST(MacroBodiesTest, WaysThroughACommandThatNoCallTakesStay) {
    const MacroBodies result = ConvertBodies(
        "DEFINE !m (w=!TOKENS(1))\n!IF (!w = 1) !THEN TABLES /TABLE=a !IFEND "
        "!IF (!w = 2) !THEN TABLES /TABLE=b !IFEND /TITLE='t'.\n!ENDDEFINE.\n!m w=1.\n"
        "!m w=2.\n");
    ASSERT_EQ(result.bodies.size(), 1U);
    EXPECT_EQ(result.bodies[0].outcome, MacroBodyOutcome::kConverted) << result.bodies[0].reason;
    EXPECT_NE(result.text.find("TABLES /TABLE=a   TABLES /TABLE=b  /TITLE='t'.\n!ELSE\nCTABLES"),
              std::string::npos)
        << result.text;
    EXPECT_NE(result.text.find("!ELSE\n  /TITLE='t'.\n!IFEND"), std::string::npos) << result.text;
}

TEST(MacroBodiesTest, CallsOutsideOfTheTextCount) {
    OutsideCalls calls;
    calls.before = "DEFINE @col () sex !ENDDEFINE.\nDEFINE !m () FREQ a. !ENDDEFINE.\n";
    calls.calls = {{"!m x=a by=@col.", "a.sps", 7}, {"!m x=b by=c", "a.sps", 12}};
    const std::string source =
        "DEFINE !m (x=!TOKENS(1) / by=!TOKENS(1)) TABLES /TABLE=!x BY !by. !ENDDEFINE.\n";
    const MacroBodies proven = ConvertMacroBodies(source, MacroOptions(), {calls});
    ASSERT_EQ(proven.bodies.size(), 1U);
    EXPECT_EQ(proven.bodies[0].outcome, MacroBodyOutcome::kConverted) << proven.bodies[0].reason;
    EXPECT_EQ(proven.bodies[0].calls, 2);
    EXPECT_EQ(proven.text.find(calls.before), std::string::npos);

    OutsideCalls others;
    others.batchMode = true;
    others.calls = {{"!m x=a by=b\n  /TITLE='t'", "b.sps", 3}};
    const MacroBodies disproved = ConvertMacroBodies(source, MacroOptions(), {calls, others});
    EXPECT_EQ(disproved.bodies[0].outcome, MacroBodyOutcome::kDisproved);
    EXPECT_EQ(disproved.bodies[0].callFile, "b.sps");
    EXPECT_EQ(disproved.bodies[0].callLine, 3);
    EXPECT_EQ(disproved.text, source);

    OutsideCalls replaced;
    replaced.after = "DEFINE !m () FREQ a. !ENDDEFINE.\n";
    replaced.calls = {{"!m.", "c.sps", 1}};
    EXPECT_EQ(ConvertMacroBodies(source, MacroOptions(), {replaced}).bodies[0].outcome,
              MacroBodyOutcome::kNoCall);
}

TEST(MacroBodiesTest, IncludedMacrosAreKnown) {
    MacroOptions options;
    options.findInclude = [](std::string_view path, const std::string& /*includingFile*/,
                             IncludedText& file) {
        file.name = path;
        file.text = "DEFINE !out (y=!TOKENS(1)) !m x=!y. !ENDDEFINE.\n";
        return path == "lib.sps";
    };
    const std::string source = "INCLUDE 'lib.sps'.\n" + kOneName + "!out y=a.\n";
    const MacroBodies result = ConvertBodies(source, options);
    ASSERT_EQ(result.bodies.size(), 1U);
    EXPECT_EQ(result.bodies[0].outcome, MacroBodyOutcome::kConverted) << result.bodies[0].reason;
    EXPECT_EQ(result.bodies[0].calls, 1);
}

TEST(MacroBodiesTest, AnythingIsTaken) {
    const std::string deep = [] {
        std::string text = "DEFINE !m (x=!TOKENS(1)) ";
        for (int i = 0; i < 190; ++i) text += "!IF (!x = a) !THEN ";
        text += "TABLES /TABLE=!x. ";
        for (int i = 0; i < 190; ++i) text += "!IFEND ";
        return text + "!ENDDEFINE.\n!m x=a.\n";
    }();
    EXPECT_EQ(ConvertBodies(deep).bodies.at(0).outcome, MacroBodyOutcome::kConverted);
    std::string many = "DEFINE !m (x=!TOKENS(1)) TABLES /TABLE=!x ";
    for (int i = 0; i < 2000; ++i) many += "!IF (!x = a) !THEN /TITLE='a' !IFEND ";
    many += ". !ENDDEFINE.\n!m x=a.\n";
    EXPECT_EQ(ConvertBodies(many).bodies.at(0).outcome, MacroBodyOutcome::kNotConvertible);
    std::string wide = "DEFINE !m (x=!CMDEND) TABLES /TABLE=!x. !ENDDEFINE.\n!m x=a0";
    for (int i = 1; i < 2000; ++i) wide += " + a" + std::to_string(i);
    EXPECT_EQ(ConvertBodies(wide + ".\n").bodies.size(), 1U);
    const char* const kTexts[] = {
        "DEFINE !m () TABLES !m. !ENDDEFINE.\n!m.\n",
        "DEFINE !m (x=!CMDEND) TABLES !EVAL(!x). !ENDDEFINE.\n!m x=!m x=!m.\n",
        "DEFINE !m () TABLES /TABLE=!DO !i = 1 !TO 999999 !i !DOEND . !ENDDEFINE.\n!m.\n",
        "DEFINE !m (x=!CMDEND) TABLES /TABLE=!x !x !x. !ENDDEFINE.\n!m x='a.\n!m x=).\n",
        "DEFINE !m (x=!CMDEND) TABLES /* !x */ '!x' !x*/. !ENDDEFINE.\n!m x=*/ a /*.\n",
        "DEFINE !m () . TABLES /TABLE=a. !ENDDEFINE !m.\n!m",
        "DEFINE !m (x=!TOKENS(1)) TABLES !x !IF (!x) !THEN . !ELSE !IFEND !ENDDEFINE.\n!m x=1.",
    };
    for (const char* pText : kTexts) EXPECT_EQ(ConvertBodies(pText).bodies.size(), 1U) << pText;
}

}  // namespace
}  // namespace quillet
