#include "tokenizing.h"

#include <cstddef>
#include <cstdio>

#include "support/assertionrecorder.h"
#include "support/doublebytepage.h"
#include "support/repetition.h"
#include "tokenizer/tavqtokenvector.h"
#include "tokenizer/tokensurvey.h"

namespace quillet::tokenizing {

using namespace std::string_literals;

namespace {

// A token as one line: type, [source], what it stands for, line:column.
std::string Describe(const ScannedToken& token) {
    const std::string place = " " + std::to_string(token.line) + ":" + std::to_string(token.column);
    const std::string source = " [" + std::string(token.texts.source) + "]";
    const std::string value(token.texts.value);
    switch (token.type) {
        case TokenCodes::kString:
            return "word" + source + " [" + value + "]" +
                   (token.operatorCode != 0 ? " =" + std::to_string(token.operatorCode) : "") +
                   place;
        case TokenCodes::kNumber: {
            char number[40];
            std::snprintf(number, sizeof number, "%g", token.number);
            return "number" + source + " " + number + place;
        }
        case TokenCodes::kLiteral:
            return "literal" + source + " [" + value + "]" + place;
        case TokenCodes::kOperator:
            return "operator" + source + " " + std::to_string(token.operatorCode) + place;
        default:
            return "unknown type";
    }
}

}  // namespace

std::string Describe(const ParseError& error) {
    return "kind " + std::to_string(static_cast<int>(error.Kind())) + " at " +
           std::to_string(error.Line()) + ":" + std::to_string(error.Column());
}

TokenRun Tokenize(const CodePage& codePage, const std::string& text, bool skipLeadingSign,
                  int maxTokens) {
    TokenRun run;
    const AssertionRecorder assertions;
    try {
        KeptTokens kept(codePage, text, skipLeadingSign, maxTokens);
        TAVQTokenVector& tokens = kept.tokens;
        run.state = tokens.State();
        run.count = tokens.Count();
        for (int i = 0; i < tokens.Count(); ++i) {
            run.tokens.push_back(Describe(*tokens.At(i)));
        }
        if (tokens.Count() > 0) {
            run.firstValue = tokens.At(0)->texts.value;
            run.firstIsLiteral = tokens.At(0)->type == TokenCodes::kLiteral;
        }
    } catch (const ParseError& error) {
        run.error = Describe(error);
    }
    run.assertions = assertions.Texts();
    return run;
}

TokenRun Survey(const CodePage& codePage, const std::string& text, bool skipLeadingSign,
                int maxTokens) {
    TokenRun run;
    const AssertionRecorder assertions;
    try {
        const TokenSurvey survey = SurveyTokens(codePage, text, skipLeadingSign, maxTokens);
        run.state = survey.state;
        run.count = survey.count;
        run.firstValue = survey.firstValue;
        run.firstIsLiteral = survey.firstIsLiteral;
    } catch (const ParseError& error) {
        run.error = Describe(error);
    }
    run.assertions = assertions.Texts();
    return run;
}

std::vector<TokenCase> SeparatorCases() {
    return {
        {"empty", "", {}},
        {"only separators", " \t\n\r\n ", {}},
        {"columns count from 1 on the first line", "a b", {"word [a] [A] 1:1", "word [b] [B] 1:3"}},
        {"columns count from 0 on later lines", "a\nb", {"word [a] [A] 1:1", "word [b] [B] 2:0"}},
        {"a blank in front on a later line", "a\n b", {"word [a] [A] 1:1", "word [b] [B] 2:1"}},
        {"a blank in front on the first line", " a", {"word [a] [A] 1:2"}},
        {"a tab is one column", "\ta\tb", {"word [a] [A] 1:2", "word [b] [B] 1:4"}},
        {"CR is a line break", "a\rb", {"word [a] [A] 1:1", "word [b] [B] 2:0"}},
        {"CR LF is one line break", "a\r\nb", {"word [a] [A] 1:1", "word [b] [B] 2:0"}},
        {"LF CR is one line break", "a\n\rb", {"word [a] [A] 1:1", "word [b] [B] 2:0"}},
        {"LF LF is two", "a\n\nb", {"word [a] [A] 1:1", "word [b] [B] 3:0"}},
        {"CR CR is two", "a\r\rb", {"word [a] [A] 1:1", "word [b] [B] 3:0"}},
        {"CR LF CR LF is two", "a\r\n\r\nb", {"word [a] [A] 1:1", "word [b] [B] 3:0"}},
        {"LF CR LF is a pair and one more", "a\n\r\nb", {"word [a] [A] 1:1", "word [b] [B] 3:0"}},
        {"LF CR LF CR is two pairs", "a\n\r\n\rb", {"word [a] [A] 1:1", "word [b] [B] 3:0"}},
        {"a blank parts a pair", "a\r \nb", {"word [a] [A] 1:1", "word [b] [B] 3:0"}},
        {"line breaks in front", "\n\n  a", {"word [a] [A] 3:2"}},
        {"a two-byte character is one column",
         "é b\né b",
         {"word [é] [É] 1:1", "word [b] [B] 1:3", "word [é] [É] 2:0", "word [b] [B] 2:2"}},
        {"the comma is no token", "a,b", {"word [a] [A] 1:1", "word [b] [B] 1:3"}},
        {"only commas", ",, ,", {}},
        {"a comma counts a column", ",a", {"word [a] [A] 1:2"}},
        {"a comma joins no operator",
         "a <,= b",
         {"word [a] [A] 1:1", "operator [<] 1 1:3", "operator [=] 3 1:5", "word [b] [B] 1:7"}},
        {"NUL ends the text", "a\0b"s, {"word [a] [A] 1:1"}},
        {"NUL first", "\0b"s, {}},
        {"an invalid byte ends the text", "a \xFF b", {"word [a] [A] 1:1"}},
        {"half a character ends the text", "a \xC3", {"word [a] [A] 1:1"}},
    };
}

std::vector<TokenCase> CommentCases() {
    return {
        {"the closing slash is a token",
         "/* note */ x",
         {"operator [/] 11 1:10", "word [x] [X] 1:12"}},
        {"an empty comment", "/**/ x", {"operator [/] 11 1:4", "word [x] [X] 1:6"}},
        {"stars inside", "/***/ x", {"operator [/] 11 1:5", "word [x] [X] 1:7"}},
        {"the opening does not close", "/*/ x", {}},
        {"the opening does not close, a later star does",
         "/*/ x */ y",
         {"operator [/] 11 1:8", "word [y] [Y] 1:10"}},
        {"up to the end of the line", "a /* b\nc", {"word [a] [A] 1:1", "word [c] [C] 2:0"}},
        {"up to a CR", "a /* b\rc", {"word [a] [A] 1:1", "word [c] [C] 2:0"}},
        {"up to a CR LF", "a /* b\r\nc", {"word [a] [A] 1:1", "word [c] [C] 2:0"}},
        {"up to the end of the text", "a /* b", {"word [a] [A] 1:1"}},
        {"nothing after the opening", "a /*", {"word [a] [A] 1:1"}},
        {"a star at the end of the line does not close",
         "a /* b *\n/ c",
         {"word [a] [A] 1:1", "operator [/] 11 2:0", "word [c] [C] 2:2"}},
        {"a comment does not go on in the next line",
         "/* a\nb */ c",
         {"word [b] [B] 2:0", "operator [*] 10 2:2", "operator [/] 11 2:3", "word [c] [C] 2:5"}},
        {"quotes inside mean nothing",
         "/* it's */ x",
         {"operator [/] 11 1:10", "word [x] [X] 1:12"}},
        {"control characters inside mean nothing",
         "/*\x01\\*/x",
         {"operator [/] 11 1:6", "word [x] [X] 1:7"}},
        {"characters inside are columns", "/*é€*/x", {"operator [/] 11 1:6", "word [x] [X] 1:7"}},
        {"directly after a word",
         "a/*b*/c",
         {"word [a] [A] 1:1", "operator [/] 11 1:6", "word [c] [C] 1:7"}},
        {"directly after a number", "5/*b*/", {"number [5] 5 1:1", "operator [/] 11 1:6"}},
        {"the closing slash and a star open another one",
         "/* a */* b */ x",
         {"operator [/] 11 1:13", "word [x] [X] 1:15"}},
        {"two comments apart",
         "/* a */ /* b */ x",
         {"operator [/] 11 1:7", "operator [/] 11 1:15", "word [x] [X] 1:17"}},
        {"a slash without a star is a token",
         "/ * x",
         {"operator [/] 11 1:1", "operator [*] 10 1:3", "word [x] [X] 1:5"}},
        {"a slash at the end", "x/", {"word [x] [X] 1:1", "operator [/] 11 1:2"}},
        {"a double slash", "x //*y", {"word [x] [X] 1:1", "operator [/] 11 1:3"}},
        {"NUL inside ends the text", "a /* b\0*/ c"s, {"word [a] [A] 1:1"}},
        {"an invalid byte inside ends the text", "a /* \xFF */ c", {"word [a] [A] 1:1"}},
        {"trail bytes inside do not close",
         "/*\x81*/x*/y",
         {"operator [/] 11 1:7", "word [y] [Y] 1:8"},
         &DoubleByte()},
    };
}

std::vector<TokenCase> LiteralCases() {
    return {
        {"apostrophes", "'abc'", {"literal ['abc'] [abc] 1:1"}},
        {"double quotes", "\"abc\"", {"literal [\"abc\"] [abc] 1:1"}},
        {"the other quote is contents",
         "\"it's\" x",
         {"literal [\"it's\" ] [it's] 1:1", "word [x] [X] 1:8"}},
        {"empty", "''", {"literal [''] [] 1:1"}},
        {"a doubled quote", "'it''s'", {"literal ['it''s'] [it's] 1:1"}},
        {"only a doubled quote", "''''", {"literal [''''] ['] 1:1"}},
        {"two doubled quotes", "''''''", {"literal [''''''] [''] 1:1"}},
        {"a doubled double quote", "\"a\"\"b\"", {"literal [\"a\"\"b\"] [a\"b] 1:1"}},
        {"two quotes of the other kind are contents",
         "'a\"\"b'",
         {"literal ['a\"\"b'] [a\"\"b] 1:1"}},
        {"case and blanks inside stay", "' aB\t '", {"literal [' aB\t '] [ aB\t ] 1:1"}},
        {"comments and operators inside stay",
         "'a /* b */ + .'",
         {"literal ['a /* b */ + .'] [a /* b */ + .] 1:1"}},
        {"control characters inside stay", "'\x01\\'", {"literal ['\x01\\'] [\x01\\] 1:1"}},
        {"characters are columns", "'é€' x", {"literal ['é€' ] [é€] 1:1", "word [x] [X] 1:6"}},
        {"single bytes",
         "'\xE9' x",
         {"literal ['\xE9' ] [\xE9] 1:1", "word [x] [X] 1:5"},
         &CodePage::Windows1252()},
        {"a trail byte does not close",
         "'\x81'' x",
         {"literal ['\x81'' ] [\x81'] 1:1", "word [x] [X] 1:5"},
         &DoubleByte()},
        {"on a later line", "a\n  'b'", {"word [a] [A] 1:1", "literal ['b'] [b] 2:2"}},
        {"directly after a word",
         "a'b'c",
         {"word [a] [A] 1:1", "literal ['b'] [b] 1:2", "word [c] [C] 1:5"}},
        {"two kinds side by side are two",
         "'a'\"b\"",
         {"literal ['a'] [a] 1:1", "literal [\"b\"] [b] 1:4"}},
        {"two with a blank between are two",
         "'a' 'b'",
         {"literal ['a' ] [a] 1:1", "literal ['b'] [b] 1:5"}},
        {"the skipped blanks are source",
         "'a'   x",
         {"literal ['a'   ] [a] 1:1", "word [x] [X] 1:7"}},
        {"blanks at the end are source", "'a'  ", {"literal ['a'  ] [a] 1:1"}},
        {"a tab is not skipped", "'a' \t x", {"literal ['a' ] [a] 1:1", "word [x] [X] 1:7"}},
        {"a skipped line break counts no line",
         "'a'\nx",
         {"literal ['a'\n] [a] 1:1", "word [x] [X] 1:5"}},
        {"a skipped CR LF counts no line",
         "'a'\r\nx",
         {"literal ['a'\r\n] [a] 1:1", "word [x] [X] 1:6"}},
        {"a skipped CR counts no line", "'a'\rx", {"literal ['a'\r] [a] 1:1", "word [x] [X] 1:5"}},
        {"counting starts again at the next line break",
         "'a'\n\nx\ny",
         {"literal ['a'\n\n] [a] 1:1", "word [x] [X] 1:6", "word [y] [Y] 2:0"}},
        {"a line break after a tab counts",
         "'a' \n\t\nx",
         {"literal ['a' \n] [a] 1:1", "word [x] [X] 2:0"}},
        {"a line break after a comment counts",
         "'a'\n/* b\nx",
         {"literal ['a'\n] [a] 1:1", "word [x] [X] 2:0"}},
        {"concatenation without blanks", "'a'+'b'", {"literal ['a'+'b'] [ab] 1:1"}},
        {"a blank in front of the plus", "'a' +'b'", {"literal ['a' +'b'] [ab] 1:1"}},
        {"a blank after the plus alone", "'a'+ 'b'", {"literal ['a'+ 'b'] [ab] 1:1"}},
        {"blanks on both sides are no concatenation",
         "'a' + 'b'",
         {"literal ['a' + ] [a] 1:1", "literal ['b'] [b] 1:7"}},
        {"a line break after the plus",
         "'a'+\n'b' c",
         {"literal ['a'+\n'b' ] [ab] 1:1", "word [c] [C] 1:10"}},
        {"blanks and line breaks after the plus",
         "'a'+ \r\n  'b'",
         {"literal ['a'+ \r\n  'b'] [ab] 1:1"}},
        {"a line break in front of the plus", "'a'\n+'b'", {"literal ['a'\n+'b'] [ab] 1:1"}},
        {"line breaks on both sides are no concatenation",
         "'a'\n+\n'b'",
         {"literal ['a'\n+\n] [a] 1:1", "literal ['b'] [b] 1:7"}},
        {"a line counted after a concatenation",
         "'a'+\n'b'\t\nc",
         {"literal ['a'+\n'b'] [ab] 1:1", "word [c] [C] 2:0"}},
        {"a tab after the first quote stops the skipping",
         "'a'\t+'b'",
         {"literal ['a'] [a] 1:1", "operator [+] 8 1:5", "literal ['b'] [b] 1:6"}},
        {"quotes of two kinds", "'a'+\"b\"", {"literal ['a'+\"b\"] [ab] 1:1"}},
        {"quotes of two kinds after a blank", "\"a\" +'b'", {"literal [\"a\" +'b'] [ab] 1:1"}},
        {"the last quote is the one that closes",
         "'a'+\"b''c\"\"d\"",
         {"literal ['a'+\"b''c\"\"d\"] [ab''c\"d] 1:1"}},
        {"three parts", "'a'+'b' +'c'", {"literal ['a'+'b' +'c'] [abc] 1:1"}},
        {"blanks after a concatenation are source",
         "'a'+'b'  x",
         {"literal ['a'+'b'  ] [ab] 1:1", "word [x] [X] 1:10"}},
        {"an empty part", "''+'b'+''", {"literal [''+'b'+''] [b] 1:1"}},
        {"a dropped plus", "'a' + x", {"literal ['a' + ] [a] 1:1", "word [x] [X] 1:7"}},
        {"a dropped plus directly before a word",
         "'a' +x",
         {"literal ['a' +] [a] 1:1", "word [x] [X] 1:6"}},
        {"a dropped plus at the end", "'a' +", {"literal ['a' +] [a] 1:1"}},
        {"a dropped plus before a line break",
         "'a' +\nx",
         {"literal ['a' +\n] [a] 1:1", "word [x] [X] 1:7"}},
        {"several dropped pluses",
         "'a' + + +x",
         {"literal ['a' + + +] [a] 1:1", "word [x] [X] 1:10"}},
        {"a dropped plus and one that counts", "'a' ++'b'", {"literal ['a' ++'b'] [ab] 1:1"}},
        {"a dropped plus apart from one that counts",
         "'a' + +'b'",
         {"literal ['a' + +'b'] [ab] 1:1"}},
        {"another operator is not skipped",
         "'a' - 'b'",
         {"literal ['a' ] [a] 1:1", "operator [-] 9 1:5", "literal ['b'] [b] 1:7"}},
        {"the odd concatenation", "'abc'+x'", {"literal ['abc'+x'] [abcabc'+x] 1:1"}},
        {"the odd concatenation and what follows",
         "'abc'+x' y",
         {"literal ['abc'+x' ] [abcabc'+x] 1:1", "word [y] [Y] 1:10"}},
        {"the odd concatenation over blanks", "'a'+  x'", {"literal ['a'+  x'] [aa'+  x] 1:1"}},
        {"the odd concatenation over a line break",
         "'a'+\nx'\t\ny",
         {"literal ['a'+\nx'] [aa'+\nx] 1:1", "word [y] [Y] 2:0"}},
        {"the odd concatenation with another plus",
         "'a'++' b",
         {"literal ['a'++' ] [aa'++] 1:1", "word [b] [B] 1:8"}},
        {"the odd concatenation with a tab", "'a'+\t'", {"literal ['a'+\t'] [aa'+\t] 1:1"}},
        {"the odd concatenation with a doubled quote",
         "'a'+x''y'",
         {"literal ['a'+x''y'] [aa'+x'y] 1:1"}},
        {"the odd concatenation after a doubled quote",
         "'a''b'+x'",
         {"literal ['a''b'+x'] [a'bb'+x] 1:1"}},
        {"the odd concatenation of the second part",
         "'a'+'b'+x'",
         {"literal ['a'+'b'+x'] [abb'+x] 1:1"}},
        {"the odd concatenation twice", "'a'+x'+y'", {"literal ['a'+x'+y'] [aa'+xa'+x'+y] 1:1"}},
        {"the odd concatenation of the other quote",
         "\"a\"+x'y\"",
         {"literal [\"a\"+x'y\"] [aa\"+x'y] 1:1"}},
        {"the first part's contents decide nothing", "'*' x", {"literal ['*' ] [*] 1:1"}},
    };
}

std::vector<TokenCase> MacroCases() {
    return {
        {"alone", "!", {"word [!] [!] 1:1"}},
        {"with a star", "!*", {"word [!*] [!*] 1:1"}},
        {"with a star and more", "!*a", {"word [!*] [!*] 1:1", "word [a] [A] 1:3"}},
        {"with a star and digits", "!*12", {"word [!*] [!*] 1:1", "number [12] 12 1:3"}},
        {"with two stars", "!**", {"word [!*] [!*] 1:1", "operator [*] 10 1:3"}},
        {"one digit", "!1", {"word [!1] [!1] 1:1"}},
        {"two digits", "!12", {"word [!12] [!12] 1:1"}},
        {"letters after digits", "!1a", {"word [!1] [!1] 1:1", "word [a] [A] 1:3"}},
        {"a fraction after digits", "!5.5", {"word [!5] [!5] 1:1", "number [.5] 0.5 1:3"}},
        {"an exponent after digits", "!1e5", {"word [!1] [!1] 1:1", "word [e5] [E5] 1:3"}},
        {"a name", "!abC", {"word [!abC] [!ABC] 1:1"}},
        {"a name with everything in it", "!a.b_1#$@é", {"word [!a.b_1#$@é] [!A.B_1#$@É] 1:1"}},
        {"begins with a period", "!.x", {"word [!.x] [!.X] 1:1"}},
        {"begins with an underscore", "!_x", {"word [!_x] [!_X] 1:1"}},
        {"a blank ends it", "! x", {"word [!] [!] 1:1", "word [x] [X] 1:3"}},
        {"two of them", "!a!b", {"word [!a] [!A] 1:1", "word [!b] [!B] 1:3"}},
        {"after a word", "a!b", {"word [a] [A] 1:1", "word [!b] [!B] 1:2"}},
        {"no operator word", "!with", {"word [!with] [!WITH] 1:1"}},
        {"no comment command",
         "!comment x",
         {"word [!comment] [!COMMENT] 1:1", "word [x] [X] 1:10"}},
        {"before a literal", "!'a'", {"word [!] [!] 1:1", "literal ['a'] [a] 1:2"}},
        {"single bytes", "!\xE9", {"word [!\xE9] [!\xC9] 1:1"}, &CodePage::Windows1252()},
    };
}

std::vector<TokenCase> NumberCases() {
    return {
        {"an integer", "5", {"number [5] 5 1:1"}},
        {"leading zeros", "005", {"number [005] 5 1:1"}},
        {"a period after digits belongs to it", "5.", {"number [5.] 5 1:1"}},
        {"a fraction", "5.25", {"number [5.25] 5.25 1:1"}},
        {"only a fraction", ".5", {"number [.5] 0.5 1:1"}},
        {"an exponent", "1e5", {"number [1e5] 100000 1:1"}},
        {"a capital exponent", "1E5", {"number [1E5] 100000 1:1"}},
        {"an exponent with a plus", "1e+5", {"number [1e+5] 100000 1:1"}},
        {"an exponent with a minus", "25e-1", {"number [25e-1] 2.5 1:1"}},
        {"an exponent after a period", "1.e2", {"number [1.e2] 100 1:1"}},
        {"an exponent after a fraction", ".5e1", {"number [.5e1] 5 1:1"}},
        {"a long exponent", "1e005", {"number [1e005] 100000 1:1"}},
        {"a second period", "5..", {"number [5.] 5 1:1", "operator [.] 18 1:3"}},
        {"a second fraction", "1.2.3", {"number [1.2] 1.2 1:1", "number [.3] 0.3 1:4"}},
        {"a fraction after an exponent",
         "1e5.5",
         {"number [1e5] 100000 1:1", "number [.5] 0.5 1:4"}},
        {"an exponent after an exponent",
         "1e5e5",
         {"number [1e5] 100000 1:1", "word [e5] [E5] 1:4"}},
        {"a lone period", ".", {"operator [.] 18 1:1"}},
        {"two periods and a digit", "..5", {"operator [.] 18 1:1", "number [.5] 0.5 1:2"}},
        {"a period and a letter", ".a", {"operator [.] 18 1:1", "word [a] [A] 1:2"}},
        {"a period and an exponent", ".e5", {"operator [.] 18 1:1", "word [e5] [E5] 1:2"}},
        {"a letter after it", "5a", {"number [5] 5 1:1", "word [a] [A] 1:2"}},
        {"a letter after a period", "5.a", {"number [5.] 5 1:1", "word [a] [A] 1:3"}},
        {"a sign is an operator", "-5", {"operator [-] 9 1:1", "number [5] 5 1:2"}},
        {"after an operator",
         "x=5",
         {"word [x] [X] 1:1", "operator [=] 3 1:2", "number [5] 5 1:3"}},
        {"an x without hexadecimal digits", "0x", {"number [0] 0 1:1", "word [x] [X] 1:2"}},
        {"an x and a letter", "0xg", {"number [0] 0 1:1", "word [xg] [XG] 1:2"}},
        {"an x after another digit", "10x1F", {"number [10] 10 1:1", "word [x1F] [X1F] 1:3"}},
        {"an x after two zeros", "00x1F", {"number [00] 0 1:1", "word [x1F] [X1F] 1:3"}},
        {"an x after a period", "0.x1", {"number [0.] 0 1:1", "word [x1] [X1] 1:3"}},
        {"words that strtod would take",
         "inf nan infinity",
         {"word [inf] [INF] 1:1", "word [nan] [NAN] 1:5", "word [infinity] [INFINITY] 1:9"}},
        {"a comma is no decimal mark", "1,5", {"number [1] 1 1:1", "number [5] 5 1:3"}},
        {"an accented letter after it", "5é", {"number [5] 5 1:1", "word [é] [É] 1:2"}},
        {"NUL after it", "5\0005"s, {"number [5] 5 1:1"}},
    };
}

std::vector<TokenCase> OperatorCases() {
    return {
        {"two characters before one",
         "x <= y",
         {"word [x] [X] 1:1", "operator [<=] 4 1:3", "word [y] [Y] 1:6"}},
        {"without blanks", "x<=y", {"word [x] [X] 1:1", "operator [<=] 4 1:2", "word [y] [Y] 1:4"}},
        {">=", "x>=y", {"word [x] [X] 1:1", "operator [>=] 5 1:2", "word [y] [Y] 1:4"}},
        {"~=", "x~=y", {"word [x] [X] 1:1", "operator [~=] 6 1:2", "word [y] [Y] 1:4"}},
        {"<>", "x<>y", {"word [x] [X] 1:1", "operator [<>] 6 1:2", "word [y] [Y] 1:4"}},
        {"**", "x**y", {"word [x] [X] 1:1", "operator [**] 12 1:2", "word [y] [Y] 1:4"}},
        {"&*", "x&*y", {"word [x] [X] 1:1", "operator [&*] 26 1:2", "word [y] [Y] 1:4"}},
        {"&/", "x&/y", {"word [x] [X] 1:1", "operator [&/] 27 1:2", "word [y] [Y] 1:4"}},
        {"&**", "x&**y", {"word [x] [X] 1:1", "operator [&**] 28 1:2", "word [y] [Y] 1:5"}},
        {"*>", "x*>y", {"word [x] [X] 1:1", "operator [*>] 29 1:2", "word [y] [Y] 1:4"}},
        {"three stars",
         "x***y",
         {"word [x] [X] 1:1", "operator [**] 12 1:2", "operator [*] 10 1:4", "word [y] [Y] 1:5"}},
        {"an ampersand and three stars",
         "x&***",
         {"word [x] [X] 1:1", "operator [&**] 28 1:2", "operator [*] 10 1:5"}},
        {"an ampersand, a slash and a star are no comment",
         "x &/* y",
         {"word [x] [X] 1:1", "operator [&/] 27 1:3", "operator [*] 10 1:5", "word [y] [Y] 1:7"}},
        {"not in the wrong order",
         "x =< =>",
         {"word [x] [X] 1:1", "operator [=] 3 1:3", "operator [<] 1 1:4", "operator [=] 3 1:6",
          "operator [>] 2 1:7"}},
        {"a blank parts them",
         "x ~ =",
         {"word [x] [X] 1:1", "operator [~] 7 1:3", "operator [=] 3 1:5"}},
        {"a line break parts them",
         "x <\n=",
         {"word [x] [X] 1:1", "operator [<] 1 1:3", "operator [=] 3 2:0"}},
        {"three in a row",
         "x <=>",
         {"word [x] [X] 1:1", "operator [<=] 4 1:3", "operator [>] 2 1:5"}},
        {"pairs that are none",
         "x ==&&++--::",
         {"word [x] [X] 1:1", "operator [=] 3 1:3", "operator [=] 3 1:4", "operator [&] 23 1:5",
          "operator [&] 23 1:6", "operator [+] 8 1:7", "operator [+] 8 1:8", "operator [-] 9 1:9",
          "operator [-] 9 1:10", "operator [:] 16 1:11", "operator [:] 16 1:12"}},
        {"at the end of the text", "x &", {"word [x] [X] 1:1", "operator [&] 23 1:3"}},
        {"an underscore before a word", "_a", {"operator [_] 19 1:1", "word [a] [A] 1:2"}},
        {"an underscore before a digit", "_1", {"operator [_] 19 1:1", "number [1] 1 1:2"}},
    };
}

std::vector<TokenCase> WordCases() {
    return {
        {"case stays in the source", "Age", {"word [Age] [AGE] 1:1"}},
        {"a trailing period belongs to it", "x.y.", {"word [x.y.] [X.Y.] 1:1"}},
        {"every kind of character", "a_1.#$@Z", {"word [a_1.#$@Z] [A_1.#$@Z] 1:1"}},
        {"begins with a number sign", "#tmp", {"word [#tmp] [#TMP] 1:1"}},
        {"begins with a dollar", "$sysmis", {"word [$sysmis] [$SYSMIS] 1:1"}},
        {"begins with an at sign", "@x", {"word [@x] [@X] 1:1"}},
        {"begins with an accent", "été", {"word [été] [ÉTÉ] 1:1"}},
        {"a hyphen ends it", "a-b", {"word [a] [A] 1:1", "operator [-] 9 1:2", "word [b] [B] 1:3"}},
        {"the value may change its length", "ⱥɐ x", {"word [ⱥɐ] [ȺⱯ] 1:1", "word [x] [X] 1:4"}},
        {"sharp s, dotless i and long s stay", "ßıſ", {"word [ßıſ] [ßıſ] 1:1"}},
        {"y with diaeresis", "ÿ", {"word [ÿ] [Ÿ] 1:1"}},
        {"a multibyte blank is part of a word",
         "a\xC2\xA0"
         "b",
         {"word [a\xC2\xA0"
          "b] [A\xC2\xA0"
          "B] 1:1"}},
        {"single bytes",
         "\xE9t\xE9 \xDF\xFF",
         {"word [\xE9t\xE9] [\xC9T\xC9] 1:1", "word [\xDF\xFF] [\xDF\x9F] 1:5"},
         &CodePage::Windows1252()},
        {"a single-byte blank above 127 is part of a word",
         "a\xA0"
         "b",
         {"word [a\xA0"
          "b] [A\xA0"
          "B] 1:1"},
         &CodePage::Windows1252()},
        {"the last byte value",
         "\xFF x",
         {"word [\xFF] [\x9F] 1:1", "word [x] [X] 1:3"},
         &CodePage::Windows1252()},
        {"trail bytes belong to their character",
         "a\x81 b\x9F=",
         {"word [a\x81 b\x9F=] [A\x81 B\x9F=] 1:1"},
         &DoubleByte()},
        {"LT", "x lt", {"word [x] [X] 1:1", "word [lt] [LT] =1 1:3"}},
        {"GT", "x Gt", {"word [x] [X] 1:1", "word [Gt] [GT] =2 1:3"}},
        {"EQ", "x eQ", {"word [x] [X] 1:1", "word [eQ] [EQ] =3 1:3"}},
        {"LE", "x LE", {"word [x] [X] 1:1", "word [LE] [LE] =4 1:3"}},
        {"GE", "x ge", {"word [x] [X] 1:1", "word [ge] [GE] =5 1:3"}},
        {"NE", "x ne", {"word [x] [X] 1:1", "word [ne] [NE] =6 1:3"}},
        {"NOT", "x not", {"word [x] [X] 1:1", "word [not] [NOT] =7 1:3"}},
        {"TO", "x to", {"word [x] [X] 1:1", "word [to] [TO] =30 1:3"}},
        {"WITH", "x with", {"word [x] [X] 1:1", "word [with] [WITH] =31 1:3"}},
        {"AND", "x and", {"word [x] [X] 1:1", "word [and] [AND] =32 1:3"}},
        {"OR", "x or", {"word [x] [X] 1:1", "word [or] [OR] =33 1:3"}},
        {"BY", "x by", {"word [x] [X] 1:1", "word [by] [BY] =34 1:3"}},
        {"ALL", "x all", {"word [x] [X] 1:1", "word [all] [ALL] =35 1:3"}},
        {"an operator word first", "all x", {"word [all] [ALL] =35 1:1", "word [x] [X] 1:5"}},
        {"no operator word with a period", "x by.", {"word [x] [X] 1:1", "word [by.] [BY.] 1:3"}},
        {"longer and shorter than operator words",
         "alls wit",
         {"word [alls] [ALLS] 1:1", "word [wit] [WIT] 1:6"}},
        {"no operator word hides after a dotless i",
         "x wıth",
         {"word [x] [X] 1:1", "word [wıth] [WıTH] 1:3"}},
    };
}

std::vector<ErrorCase> ErrorCases() {
    return {
        {"a literal open at the end of the text", "'abc", "kind 1 at 1:5"},
        {"a literal open at the end of a line", "'abc\nd'", "kind 1 at 1:5"},
        {"a literal open at a CR", "'abc\rd'", "kind 1 at 1:5"},
        {"a literal open at a CR LF", "'abc\r\nd'", "kind 1 at 1:5"},
        {"a double-quoted literal", "\"abc'\n", "kind 1 at 1:6"},
        {"after a word", "x 'abc", "kind 1 at 1:7"},
        {"on a later line", "x\n'abc", "kind 1 at 2:4"},
        {"indented on a later line", "x\n  'abc\n", "kind 1 at 2:6"},
        {"only a quote", "'", "kind 1 at 1:2"},
        {"an odd number of quotes", "'''", "kind 1 at 1:4"},
        {"a doubled quote at the end", "'it''", "kind 1 at 1:6"},
        {"characters are columns", "'éé", "kind 1 at 1:4"},
        {"single bytes are columns", "'\xC3\xA9", "kind 1 at 1:4", {}, &CodePage::Windows1252()},
        {"NUL inside a literal", "'a\0b'"s, "kind 1 at 1:3"},
        {"an invalid byte inside a literal",
         "'a\xFF"
         "b'",
         "kind 1 at 1:3"},
        {"a trail byte closes nothing", "'a\x81'", "kind 1 at 1:4", {}, &DoubleByte()},
        {"the second of two literals", "'a' 'b", "kind 1 at 1:7"},
        {"after a skipped line break", "'a'\n'b", "kind 1 at 1:7"},
        {"after a counted line break", "'a'\t\n'b", "kind 1 at 2:2"},
        {"a concatenated part is open", "'a'+'b", "kind 1 at 1:7"},
        {"a concatenated part is open on the next line", "'a'+\n'b\n", "kind 1 at 1:8"},
        {"a concatenated part after a blank is open", "'a' +'b", "kind 1 at 1:8"},
        {"the other quote does not close a part", "'a'+\"b'", "kind 1 at 1:8"},
        {"the odd concatenation at the end of the text", "'abc'+x", "kind 1 at 1:8"},
        {"the odd concatenation at the end of a line", "'abc'+x\ny'", "kind 1 at 1:8"},
        {"the odd concatenation with nothing", "'a'+", "kind 1 at 1:5"},
        {"the odd concatenation with a line break", "'a'+\n", "kind 1 at 1:6"},
        {"the odd concatenation with a tab", "'a'+\t", "kind 1 at 1:6"},
        {"the odd concatenation finds the next quote", "'a'++'b'", "kind 1 at 1:9"},
        {"an exponent without digits", "1e", "kind 2 at 1:3"},
        {"an exponent with a sign only", "1e+", "kind 2 at 1:4"},
        {"an exponent with a minus only", "1E-", "kind 2 at 1:4"},
        {"an exponent and two signs", "1e+-5", "kind 2 at 1:4"},
        {"an exponent before a letter", "1ex", "kind 2 at 1:3"},
        {"an exponent before a blank", "1e 5", "kind 2 at 1:3"},
        {"an exponent before a line break", "1e\n5", "kind 2 at 1:3"},
        {"an exponent before a period", "1e.5", "kind 2 at 1:3"},
        {"an exponent after a period", "5.e", "kind 2 at 1:4"},
        {"an exponent after a fraction", ".5e", "kind 2 at 1:4"},
        {"an exponent without digits after an operator", "x=1e", "kind 2 at 1:5"},
        {"an exponent without digits on a later line", "x\n 1e+", "kind 2 at 2:4"},
        {"an exponent after a two-byte character", "é 1e", "kind 2 at 1:5"},
        {"an exponent before an invalid byte", "1e\xFF", "kind 2 at 1:3"},
        {"an exponent before NUL", "1e\0005"s, "kind 2 at 1:3"},
        {"a hexadecimal number", "0x1F", "kind 3 at 1:1"},
        {"a hexadecimal number in capitals", "0XA", "kind 3 at 1:1"},
        {"a hexadecimal number after a word", "a 0x1F", "kind 3 at 1:3"},
        {"a hexadecimal number on a later line", "a\n 0x1F", "kind 3 at 2:1"},
        {"a control character", "\x01", "kind 4 at 1:1"},
        {"the last control character", "a \x1F", "kind 4 at 1:3"},
        {"a form feed",
         "a\x0C"
         "b",
         "kind 4 at 1:2"},
        {"a vertical tab", "a \x0B", "kind 4 at 1:3"},
        {"a control character on a later line", "a\n\x01", "kind 4 at 2:0"},
        {"a control character indented on a later line", "a\n \x01", "kind 4 at 2:1"},
        {"a control character after a skipped line break", "'a'\n\x01", "kind 4 at 1:5"},
        {"a control character after a comma", "a,\x01", "kind 4 at 1:3"},
        {"a control character after a comment", "/* c */\x01", "kind 4 at 1:8"},
        {"a backslash", "a \\ b", "kind 4 at 1:3", {kInvalidAssertion}},
        {"a circumflex", "a^b", "kind 4 at 1:2", {kInvalidAssertion}},
        {"a grave accent", "`a`", "kind 4 at 1:1", {kInvalidAssertion}},
        {"DEL", "a \x7F", "kind 4 at 1:3", {kInvalidAssertion}},
        {"a backslash after a two-byte character", "é\\", "kind 4 at 1:2", {kInvalidAssertion}},
        {"only the first error", "a \x01 'b", "kind 4 at 1:3"},
        {"an out-of-range number before the error",
         "1e999 \x01",
         "kind 4 at 1:7",
         {kRangeAssertion}},
    };
}

std::vector<StateCase> StateCases() {
    constexpr auto kOrdinary = SpecialCommandState::kOrdinary;
    constexpr auto kComment = SpecialCommandState::kComment;
    constexpr auto kDocument = SpecialCommandState::kDocument;
    constexpr auto kBeginData = SpecialCommandState::kBeginData;
    return {
        {"nothing", "", kOrdinary, 0},
        {"an ordinary command", "frequencies a b", kOrdinary, 3},
        {"a star", "* it's \x01 free text", kComment, 1},
        {"a star glued to a word", "*it's", kComment, 1},
        {"a star and a period", "*.", kComment, 1},
        {"two stars", "** it's", kComment, 1},
        {"three stars", "*** it's", kComment, 1},
        {"a star and >", "*> it's", kComment, 1},
        {"COMMENT", "COMMENT it's", kComment, 1},
        {"comment in lower case", "comment it's", kComment, 1},
        {"COM", "COM it's", kComment, 1},
        {"COMPUTE", "Compute x = 'a", kComment, 1},
        {"COM with a period", "com. x", kComment, 1},
        {"COMé", "comé 'x", kComment, 1},
        {"CO", "co x", kOrdinary, 2},
        {"CO and an accent", "coé x", kOrdinary, 2},
        {"DOCUMENT", "DOCUMENT it's", kDocument, 1},
        {"document in lower case", "document it's", kDocument, 1},
        {"DOC", "doc it's", kDocument, 1},
        {"DOCTOR", "doctor it's", kDocument, 1},
        {"DO", "do x", kOrdinary, 2},
        {"a star that is not first", "x * y", kOrdinary, 3},
        {"COMMENT that is not first", "x comment y", kOrdinary, 3},
        {"a slash first", "/ comment", kOrdinary, 2},
        {"a closed comment first leaves its slash first", "/* a */ comment x", kOrdinary, 3},
        {"an open comment first leaves nothing", "/* a\ncomment it's", kComment, 1},
        {"blanks and commas first", " \n, comment it's", kComment, 1},
        {"a sign first", "+comment x", kOrdinary, 3},
        {"an ampersand first", "&* x", kOrdinary, 2},
        {"BEGIN DATA", "BEGIN DATA\n1 'a \x01", kBeginData, 2},
        {"begin data with a period", "begin data.", kBeginData, 2},
        {"begin data with a blank and a period", "begin data .", kBeginData, 2},
        {"begin data over two lines", "begin\ndata", kBeginData, 2},
        {"begin data with a comma", "begin,data", kBeginData, 2},
        {"begin data with two periods", "begin data..", kOrdinary, 2},
        {"begin datax", "begin datax", kOrdinary, 2},
        {"begin dat", "begin dat", kOrdinary, 2},
        {"begin dat.", "begin dat.", kOrdinary, 2},
        {"begin datax.", "begin datax. y", kOrdinary, 3},
        {"begin", "begin", kOrdinary, 1},
        {"begin with a period", "begin. data", kOrdinary, 2},
        {"beginx data", "beginx data", kOrdinary, 2},
        {"begi data", "begi data", kOrdinary, 2},
        {"begin program", "begin program x", kOrdinary, 3},
        {"begin comment", "begin comment x", kOrdinary, 3},
        {"begin x data", "begin x data", kOrdinary, 3},
        {"a comment between", "begin /* a\ndata x", kBeginData, 2},
        {"a closed comment between leaves its slash", "begin /* a */ data x", kOrdinary, 4},
        {"begin with a dotless i", "begın data x", kOrdinary, 3},
        {"the contents of a literal are compared", "'COMMENT' \x01", kComment, 1},
        {"a literal's contents keep their case", "'comment' x", kOrdinary, 2},
        {"a star in a literal", "'*' \x01", kComment, 1},
        {"DOC in a literal", "\"DOC\" \x01", kDocument, 1},
        {"begin data in literals", "'BEGIN' 'DATA.' \x01", kBeginData, 2},
        {"begin data in lower-case literals", "'BEGIN' 'data' x", kOrdinary, 3},
        {"a macro word", "!com x", kOrdinary, 2},
        {"a macro star", "!* x", kOrdinary, 2},
        {"a number first", "5 * x", kOrdinary, 3},
        {"begin data in a single-byte page", "begin data. \x01", kBeginData, 2,
         &CodePage::Windows1252()},
        {"a comment in a single-byte page", "* \xE9'", kComment, 1, &CodePage::Windows1252()},
    };
}

std::vector<LimitCase> LimitCases() {
    constexpr auto kOrdinary = SpecialCommandState::kOrdinary;
    constexpr auto kComment = SpecialCommandState::kComment;
    constexpr auto kBeginData = SpecialCommandState::kBeginData;
    return {
        {"zero is no limit",
         "a b",
         false,
         0,
         {"word [a] [A] 1:1", "word [b] [B] 1:3"},
         kOrdinary,
         ""},
        {"below zero is no limit",
         "a b",
         false,
         -7,
         {"word [a] [A] 1:1", "word [b] [B] 1:3"},
         kOrdinary,
         ""},
        {"one", "a b c", false, 1, {"word [a] [A] 1:1"}, kOrdinary, ""},
        {"two", "a b c", false, 2, {"word [a] [A] 1:1", "word [b] [B] 1:3"}, kOrdinary, ""},
        {"more than there are", "a", false, 100, {"word [a] [A] 1:1"}, kOrdinary, ""},
        {"commas do not count",
         "a,,b,c",
         false,
         2,
         {"word [a] [A] 1:1", "word [b] [B] 1:4"},
         kOrdinary,
         ""},
        {"an error after the limit is not seen",
         "a b 'c",
         false,
         2,
         {"word [a] [A] 1:1", "word [b] [B] 1:3"},
         kOrdinary,
         ""},
        {"an error within the limit is", "a 'c", false, 2, {}, kOrdinary, "kind 1 at 1:5"},
        {"a literal's end looks no further than it must",
         "'a' 'b",
         false,
         1,
         {"literal ['a' ] [a] 1:1"},
         kOrdinary,
         ""},
        {"an open concatenation is part of the literal",
         "'a' +'b",
         false,
         1,
         {},
         kOrdinary,
         "kind 1 at 1:8"},
        {"a literal glued over the end of its line is open",
         "TITLE 'a'+\n",
         false,
         2,
         {},
         kOrdinary,
         "kind 1 at 1:12"},
        {"BEGIN DATA within two",
         "begin data. x",
         false,
         2,
         {"word [begin] [BEGIN] 1:1", "word [data.] [DATA.] 1:7"},
         kBeginData,
         ""},
        {"BEGIN DATA is not seen within one",
         "begin data",
         false,
         1,
         {"word [begin] [BEGIN] 1:1"},
         kOrdinary,
         ""},
        {"a comment within one",
         "comment it's",
         false,
         1,
         {"word [comment] [COMMENT] 1:1"},
         kComment,
         ""},
        {"a plus is stepped over",
         "+a b",
         true,
         0,
         {"word [a] [A] 1:2", "word [b] [B] 1:4"},
         kOrdinary,
         ""},
        {"a minus is stepped over", "-a", true, 0, {"word [a] [A] 1:2"}, kOrdinary, ""},
        {"only one sign",
         "+-a",
         true,
         0,
         {"operator [-] 9 1:2", "word [a] [A] 1:3"},
         kOrdinary,
         ""},
        {"only as the first character",
         " +a",
         true,
         0,
         {"operator [+] 8 1:2", "word [a] [A] 1:3"},
         kOrdinary,
         ""},
        {"not on a later line",
         "a\n+b",
         true,
         0,
         {"word [a] [A] 1:1", "operator [+] 8 2:0", "word [b] [B] 2:1"},
         kOrdinary,
         ""},
        {"another operator stays", "*a", true, 0, {"operator [*] 10 1:1"}, kComment, ""},
        {"nothing but a sign", "+", true, 0, {}, kOrdinary, ""},
        {"a comment after the sign",
         "+comment it's",
         true,
         0,
         {"word [comment] [COMMENT] 1:2"},
         kComment,
         ""},
        {"a line break after the sign", "-\na", true, 0, {"word [a] [A] 2:0"}, kOrdinary, ""},
        {"the sign does not count as a token",
         "-5 a b",
         true,
         2,
         {"number [5] 5 1:2", "word [a] [A] 1:4"},
         kOrdinary,
         ""},
        {"without the setting the sign is a token",
         "+a",
         false,
         0,
         {"operator [+] 8 1:1", "word [a] [A] 1:2"},
         kOrdinary,
         ""},
        {"errors after the sign keep their column",
         "+\x01",
         true,
         0,
         {},
         kOrdinary,
         "kind 4 at 1:2"},
    };
}

std::vector<std::string> AllTexts() {
    std::vector<std::string> texts;
    for (const auto& part : {SeparatorCases(), CommentCases(), LiteralCases(), MacroCases(),
                             NumberCases(), OperatorCases(), WordCases()}) {
        for (const TokenCase& c : part) texts.push_back(c.text);
    }
    for (const ErrorCase& c : ErrorCases()) texts.push_back(c.text);
    for (const StateCase& c : StateCases()) texts.push_back(c.text);
    for (const LimitCase& c : LimitCases()) texts.push_back(c.text);
    for (int byte = 0; byte < 256; ++byte) {
        const std::string character(1, static_cast<char>(byte));
        texts.push_back(character);
        texts.push_back("x " + character + " y");
        texts.push_back("x" + character + "y");
        texts.push_back("'x" + character + "y' z");
        texts.push_back("/*" + character + "*/ z");
        texts.push_back("5" + character + "5");
        texts.push_back("!" + character + "a");
    }
    texts.push_back(Repeat("a", 5000) + " b");
    texts.push_back("COMMENT" + Repeat("x", 5000));
    texts.push_back("'" + Repeat("é", 5000) + "' b");
    texts.push_back(Repeat("ɐ", 5000) + "com b");
    texts.push_back("BEGIN" + Repeat("x", 5000) + " data");
    texts.push_back(Repeat("é 1 'a' + ", 500));
    return texts;
}

std::string RandomText(std::mt19937& random) {
    static const std::vector<std::string> pieces = {
        "a",    "Ab1",    "é",     "ß",       "ı",    "ɐ",    "\xFF", "\xC3", "\x81",  "'",
        "'",    "'",      "\"",    "\"",      "''",   "+",    "+",    " + ",  "\n",    "\r",
        "\r\n", "\n\r",   "\t",    " ",       " ",    " ",    "/*",   "*/",   "/",     "*",
        "**",   "*>",     "&",     "&*",      "!",    "!*",   "!1",   "1",    "5.",    "1e",
        "1e+5", "0x1",    "1e999", ".",       ",",    "#",    "_",    "$",    "@",     "begin ",
        "data", "data. ", "com",   "comment", "doc ", "with", "\\",   "^",    "`",     "\x7F",
        "\x01", "~=",     "<>",    "<",       "=",    "(",    "]",    "'x'",  "\"y\"", "\0"s};
    std::string text;
    const std::size_t count = 1 + random() % 12;
    for (std::size_t i = 0; i < count; ++i) text += pieces[random() % pieces.size()];
    return text;
}

}  // namespace quillet::tokenizing
