#include "tokenizer/tavqtokenvector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/assertion.h"
#include "platform/codepage.h"
#include "tokenizer/commandend.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tokensurvey.h"

namespace quillet {
namespace {

using namespace std::string_literals;

constexpr const char* kInvalidAssertion = "IsInvalidUnquoted( currChar.Code() )";
constexpr const char* kRangeAssertion = "errno != ERANGE";
constexpr const char* kIndexAssertion = "0 <= index && index < (int)m_TokVec.size()";
constexpr const char* kLinesAssertion = "lines";

// A double-byte page in which a byte from 0x81 to 0x9F leads a pair, whatever follows it, so
// that a trail byte may look like any ASCII character.
class DoubleBytePage : public CodePage {
public:
    DoubleBytePage() = default;

    [[nodiscard]] std::size_t NonAsciiLength(const char* bytes,
                                             std::size_t maxBytes) const override {
        const auto lead = static_cast<unsigned char>(*bytes);
        if (lead < 0x81 || lead > 0x9F) return 1;
        return maxBytes < 2 || bytes[1] == '\0' ? 0 : 2;
    }
    void AppendUpper(std::string_view character, std::string& result) const override {
        result += character;
    }
    void AppendAsUtf8(std::string_view /*character*/, std::string& result) const override {
        AppendCodePoint(kReplacementCharacter, result);
    }
};

const CodePage& DoubleByte() {
    static const DoubleBytePage page;
    return page;
}

std::string Repeat(std::string_view piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
}

class AssertionTexts {
public:
    AssertionTexts()
        : m_handler([this](const AssertionFailure& f) { m_texts.emplace_back(f.text); }) {}

    [[nodiscard]] const std::vector<std::string>& Texts() const { return m_texts; }

private:
    std::vector<std::string> m_texts;
    ScopedAssertionHandler m_handler;
};

// A token as one line: type, [source], what it stands for, line:column.
std::string Describe(const TAVQToken& token) {
    int line = 0;
    int column = 0;
    token.GetPosition(line, column);
    const std::string place = " " + std::to_string(line) + ":" + std::to_string(column);
    const std::string source = " [" + token.Text(true) + "]";
    switch (token.Type()) {
        case TokenCodes::kString:
            return "word" + source + " [" + token.Text(false) + "]" +
                   (token.Operator() != 0 ? " =" + std::to_string(token.Operator()) : "") + place;
        case TokenCodes::kNumber: {
            char number[40];
            std::snprintf(number, sizeof number, "%g", token.NumberValue());
            return "number" + source + " " + number + place;
        }
        case TokenCodes::kLiteral:
            return "literal" + source + " [" + token.Text(false) + "]" + place;
        case TokenCodes::kOperator:
            return "operator" + source + " " + std::to_string(token.Operator()) + place;
        default:
            return "unknown type";
    }
}

// All that can be seen of one run of the tokenizer.
struct Outcome {
    std::vector<std::string> tokens;  // empty when it threw
    std::string error;                // "kind K at L:C", or empty
    SpecialCommandState state = SpecialCommandState::kOrdinary;
    int count = 0;
    std::string firstValue;
    bool firstIsLiteral = false;
    std::vector<std::string> assertions;
};

std::string Describe(const ParseError& error) {
    return "kind " + std::to_string(static_cast<int>(error.Kind())) + " at " +
           std::to_string(error.Line()) + ":" + std::to_string(error.Column());
}

Outcome Tokenize(const CodePage& codePage, const std::string& text, bool skipLeadingSign,
                 int maxTokens) {
    Outcome outcome;
    const AssertionTexts assertions;
    try {
        const TAVQTokenVector tokens(codePage, text, skipLeadingSign, maxTokens);
        outcome.state = tokens.State();
        outcome.count = tokens.Count();
        for (int i = 0; i < tokens.Count(); ++i) {
            outcome.tokens.push_back(Describe(*tokens.At(i)));
        }
        if (tokens.Count() > 0) {
            outcome.firstValue = tokens.At(0)->Text(false);
            outcome.firstIsLiteral = tokens.At(0)->Type() == TokenCodes::kLiteral;
        }
    } catch (const ParseError& error) {
        outcome.error = Describe(error);
    }
    outcome.assertions = assertions.Texts();
    return outcome;
}

Outcome Survey(const CodePage& codePage, const std::string& text, bool skipLeadingSign,
               int maxTokens) {
    Outcome outcome;
    const AssertionTexts assertions;
    try {
        const TokenSurvey survey = SurveyTokens(codePage, text, skipLeadingSign, maxTokens);
        outcome.state = survey.state;
        outcome.count = survey.count;
        outcome.firstValue = survey.firstValue;
        outcome.firstIsLiteral = survey.firstIsLiteral;
    } catch (const ParseError& error) {
        outcome.error = Describe(error);
    }
    outcome.assertions = assertions.Texts();
    return outcome;
}

int Sign(int value) { return value < 0 ? -1 : (value > 0 ? 1 : 0); }

// The survey must answer as the kept tokens do.
void ExpectSurveyAgrees(const CodePage& codePage, const std::string& text, bool skipLeadingSign,
                        int maxTokens) {
    const Outcome kept = Tokenize(codePage, text, skipLeadingSign, maxTokens);
    const Outcome counted = Survey(codePage, text, skipLeadingSign, maxTokens);
    ASSERT_EQ(counted.error, kept.error);
    ASSERT_EQ(counted.assertions, kept.assertions);
    ASSERT_EQ(counted.state, kept.state);
    ASSERT_EQ(counted.count, kept.count);
    ASSERT_EQ(counted.firstIsLiteral, kept.firstIsLiteral);
    ASSERT_EQ(counted.firstValue, kept.firstValue.substr(0, counted.firstValue.size()));
    ASSERT_EQ(counted.firstValue.empty(), kept.firstValue.empty());
    for (const char* word : {"*", "COMMENT", "**", "*>", "DOCUMENT", "TABLES", "IGRAPH"}) {
        ASSERT_EQ(Sign(CompareTextPrefix(counted.firstValue, word, 3)),
                  Sign(CompareTextPrefix(kept.firstValue, word, 3)))
            << word;
    }
    for (const char* word : {"BEGIN", "DATA", "TABLES", "IGRAPH"}) {
        ASSERT_EQ(CompareTextPrefix(counted.firstValue, word, 0) == 0,
                  CompareTextPrefix(kept.firstValue, word, 0) == 0)
            << word;
    }
}

struct TokenCase {
    const char* name;
    std::string text;
    std::vector<std::string> tokens;
    const CodePage* pCodePage = &CodePage::Utf8();
};

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
        {"nothing behind the opening", "a /*", {"word [a] [A] 1:1"}},
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
        {"directly behind a word",
         "a/*b*/c",
         {"word [a] [A] 1:1", "operator [/] 11 1:6", "word [c] [C] 1:7"}},
        {"directly behind a number", "5/*b*/", {"number [5] 5 1:1", "operator [/] 11 1:6"}},
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
        {"directly behind a word",
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
        {"a line break behind a tab counts",
         "'a' \n\t\nx",
         {"literal ['a' \n] [a] 1:1", "word [x] [X] 2:0"}},
        {"a line break behind a comment counts",
         "'a'\n/* b\nx",
         {"literal ['a'\n] [a] 1:1", "word [x] [X] 2:0"}},
        {"concatenation without blanks", "'a'+'b'", {"literal ['a'+'b'] [ab] 1:1"}},
        {"a blank in front of the plus", "'a' +'b'", {"literal ['a' +'b'] [ab] 1:1"}},
        {"a blank behind the plus alone", "'a'+ 'b'", {"literal ['a'+ 'b'] [ab] 1:1"}},
        {"blanks on both sides are no concatenation",
         "'a' + 'b'",
         {"literal ['a' + ] [a] 1:1", "literal ['b'] [b] 1:7"}},
        {"a line break behind the plus",
         "'a'+\n'b' c",
         {"literal ['a'+\n'b' ] [ab] 1:1", "word [c] [C] 1:10"}},
        {"blanks and line breaks behind the plus",
         "'a'+ \r\n  'b'",
         {"literal ['a'+ \r\n  'b'] [ab] 1:1"}},
        {"a line break in front of the plus", "'a'\n+'b'", {"literal ['a'\n+'b'] [ab] 1:1"}},
        {"line breaks on both sides are no concatenation",
         "'a'\n+\n'b'",
         {"literal ['a'\n+\n] [a] 1:1", "literal ['b'] [b] 1:7"}},
        {"a line counted after a concatenation",
         "'a'+\n'b'\t\nc",
         {"literal ['a'+\n'b'] [ab] 1:1", "word [c] [C] 2:0"}},
        {"a tab behind the first quote stops the skipping",
         "'a'\t+'b'",
         {"literal ['a'] [a] 1:1", "operator [+] 8 1:5", "literal ['b'] [b] 1:6"}},
        {"quotes of two kinds", "'a'+\"b\"", {"literal ['a'+\"b\"] [ab] 1:1"}},
        {"quotes of two kinds behind a blank", "\"a\" +'b'", {"literal [\"a\" +'b'] [ab] 1:1"}},
        {"the last quote is the one that closes",
         "'a'+\"b''c\"\"d\"",
         {"literal ['a'+\"b''c\"\"d\"] [ab''c\"d] 1:1"}},
        {"three parts", "'a'+'b' +'c'", {"literal ['a'+'b' +'c'] [abc] 1:1"}},
        {"blanks behind a concatenation are source",
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
        {"the odd concatenation behind a doubled quote",
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
        {"letters behind digits", "!1a", {"word [!1] [!1] 1:1", "word [a] [A] 1:3"}},
        {"a fraction behind digits", "!5.5", {"word [!5] [!5] 1:1", "number [.5] 0.5 1:3"}},
        {"an exponent behind digits", "!1e5", {"word [!1] [!1] 1:1", "word [e5] [E5] 1:3"}},
        {"a name", "!abC", {"word [!abC] [!ABC] 1:1"}},
        {"a name with everything in it", "!a.b_1#$@é", {"word [!a.b_1#$@é] [!A.B_1#$@É] 1:1"}},
        {"begins with a period", "!.x", {"word [!.x] [!.X] 1:1"}},
        {"begins with an underscore", "!_x", {"word [!_x] [!_X] 1:1"}},
        {"a blank ends it", "! x", {"word [!] [!] 1:1", "word [x] [X] 1:3"}},
        {"two of them", "!a!b", {"word [!a] [!A] 1:1", "word [!b] [!B] 1:3"}},
        {"behind a word", "a!b", {"word [a] [A] 1:1", "word [!b] [!B] 1:2"}},
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
        {"a period behind digits belongs to it", "5.", {"number [5.] 5 1:1"}},
        {"a fraction", "5.25", {"number [5.25] 5.25 1:1"}},
        {"only a fraction", ".5", {"number [.5] 0.5 1:1"}},
        {"an exponent", "1e5", {"number [1e5] 100000 1:1"}},
        {"a capital exponent", "1E5", {"number [1E5] 100000 1:1"}},
        {"an exponent with a plus", "1e+5", {"number [1e+5] 100000 1:1"}},
        {"an exponent with a minus", "25e-1", {"number [25e-1] 2.5 1:1"}},
        {"an exponent behind a period", "1.e2", {"number [1.e2] 100 1:1"}},
        {"an exponent behind a fraction", ".5e1", {"number [.5e1] 5 1:1"}},
        {"a long exponent", "1e005", {"number [1e005] 100000 1:1"}},
        {"a second period", "5..", {"number [5.] 5 1:1", "operator [.] 18 1:3"}},
        {"a second fraction", "1.2.3", {"number [1.2] 1.2 1:1", "number [.3] 0.3 1:4"}},
        {"a fraction behind an exponent",
         "1e5.5",
         {"number [1e5] 100000 1:1", "number [.5] 0.5 1:4"}},
        {"an exponent behind an exponent",
         "1e5e5",
         {"number [1e5] 100000 1:1", "word [e5] [E5] 1:4"}},
        {"a lone period", ".", {"operator [.] 18 1:1"}},
        {"two periods and a digit", "..5", {"operator [.] 18 1:1", "number [.5] 0.5 1:2"}},
        {"a period and a letter", ".a", {"operator [.] 18 1:1", "word [a] [A] 1:2"}},
        {"a period and an exponent", ".e5", {"operator [.] 18 1:1", "word [e5] [E5] 1:2"}},
        {"a letter behind it", "5a", {"number [5] 5 1:1", "word [a] [A] 1:2"}},
        {"a letter behind a period", "5.a", {"number [5.] 5 1:1", "word [a] [A] 1:3"}},
        {"a sign is an operator", "-5", {"operator [-] 9 1:1", "number [5] 5 1:2"}},
        {"behind an operator",
         "x=5",
         {"word [x] [X] 1:1", "operator [=] 3 1:2", "number [5] 5 1:3"}},
        {"an x without hexadecimal digits", "0x", {"number [0] 0 1:1", "word [x] [X] 1:2"}},
        {"an x and a letter", "0xg", {"number [0] 0 1:1", "word [xg] [XG] 1:2"}},
        {"an x behind another digit", "10x1F", {"number [10] 10 1:1", "word [x1F] [X1F] 1:3"}},
        {"an x behind two zeros", "00x1F", {"number [00] 0 1:1", "word [x1F] [X1F] 1:3"}},
        {"an x behind a period", "0.x1", {"number [0.] 0 1:1", "word [x1] [X1] 1:3"}},
        {"words that strtod would take",
         "inf nan infinity",
         {"word [inf] [INF] 1:1", "word [nan] [NAN] 1:5", "word [infinity] [INFINITY] 1:9"}},
        {"a comma is no decimal mark", "1,5", {"number [1] 1 1:1", "number [5] 5 1:3"}},
        {"an accented letter behind it", "5é", {"number [5] 5 1:1", "word [é] [É] 1:2"}},
        {"NUL behind it", "5\0005"s, {"number [5] 5 1:1"}},
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
        {"no operator word hides behind a dotless i",
         "x wıth",
         {"word [x] [X] 1:1", "word [wıth] [WıTH] 1:3"}},
    };
}

std::vector<TokenCase> AllTokenCases() {
    std::vector<TokenCase> all;
    for (const auto& part : {SeparatorCases(), CommentCases(), LiteralCases(), MacroCases(),
                             NumberCases(), OperatorCases(), WordCases()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

void ExpectTokens(const std::vector<TokenCase>& cases) {
    for (int round = 0; round < 2; ++round) {
        for (const TokenCase& c : cases) {
            SCOPED_TRACE(c.name);
            const Outcome outcome = Tokenize(*c.pCodePage, c.text, false, 0);
            EXPECT_EQ(outcome.error, "");
            EXPECT_EQ(outcome.tokens, c.tokens);
            EXPECT_EQ(outcome.assertions, std::vector<std::string>{});
        }
    }
}

TEST(TAVQTokenVectorTest, SkipsSeparators) { ExpectTokens(SeparatorCases()); }
TEST(TAVQTokenVectorTest, SkipsComments) { ExpectTokens(CommentCases()); }
TEST(TAVQTokenVectorTest, ReadsLiterals) { ExpectTokens(LiteralCases()); }
TEST(TAVQTokenVectorTest, ReadsMacroWords) { ExpectTokens(MacroCases()); }
TEST(TAVQTokenVectorTest, ReadsNumbers) { ExpectTokens(NumberCases()); }
TEST(TAVQTokenVectorTest, ReadsOperators) { ExpectTokens(OperatorCases()); }
TEST(TAVQTokenVectorTest, ReadsWords) { ExpectTokens(WordCases()); }

TEST(TAVQTokenVectorTest, KnowsEveryOneCharacterOperator) {
    const struct {
        const char* spelling;
        int code;
    } cases[] = {{"<", 1},  {">", 2},  {"=", 3},  {"~", 7},  {"+", 8},  {"-", 9},
                 {"*", 10}, {"/", 11}, {"(", 13}, {")", 14}, {":", 16}, {";", 17},
                 {".", 18}, {"_", 19}, {"?", 20}, {"%", 21}, {"|", 22}, {"&", 23},
                 {"{", 24}, {"}", 25}, {"[", 36}, {"]", 37}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.spelling);
        const Outcome outcome = Tokenize(CodePage::Utf8(), "x "s + c.spelling + " y", false, 0);
        const std::vector<std::string> expected = {
            "word [x] [X] 1:1", "operator ["s + c.spelling + "] " + std::to_string(c.code) + " 1:3",
            "word [y] [Y] 1:5"};
        EXPECT_EQ(outcome.tokens, expected);
    }
}

TEST(TAVQTokenVectorTest, TakesEveryAsciiCharacterAsItsClassSays) {
    const std::string operators = "<>=~+-*/():;._?%|&{}[]";
    for (const CodePage* pPage : {&CodePage::Utf8(), &CodePage::Windows1252()}) {
        for (int byte = 1; byte < 128; ++byte) {
            SCOPED_TRACE(byte);
            const std::string text(1, static_cast<char>(byte));
            const Outcome outcome = Tokenize(*pPage, text, false, 0);
            std::vector<std::string> assertions;
            std::string error;
            std::string type;
            if (byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r' || byte == ',') {
                // a separator
            } else if (byte == '\'' || byte == '"') {
                error = "kind 1 at 1:2";
            } else if (byte < 32) {
                error = "kind 4 at 1:1";
            } else if (byte == '\\' || byte == '^' || byte == '`' || byte == 127) {
                error = "kind 4 at 1:1";
                assertions = {kInvalidAssertion};
            } else if (byte >= '0' && byte <= '9') {
                type = "number";
            } else if (operators.find(text) != std::string::npos) {
                type = "operator";
            } else {
                type = "word";
            }
            EXPECT_EQ(outcome.error, error);
            EXPECT_EQ(outcome.assertions, assertions);
            if (type.empty()) {
                EXPECT_TRUE(outcome.tokens.empty());
            } else {
                ASSERT_EQ(outcome.tokens.size(), 1U);
                EXPECT_EQ(outcome.tokens[0].substr(0, type.size()), type);
            }
        }
    }
}

TEST(TAVQTokenVectorTest, TakesEveryByteOfWindows1252AsALetter) {
    for (int byte = 128; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const std::string text(1, static_cast<char>(byte));
        const AssertionTexts assertions;
        const TAVQTokenVector tokens(CodePage::Windows1252(), text, false, 0);
        ASSERT_EQ(tokens.Count(), 1);
        EXPECT_EQ(tokens.At(0)->Type(), TokenCodes::kString);
        EXPECT_EQ(tokens.At(0)->Text(true), text);
        EXPECT_TRUE(assertions.Texts().empty());
    }
}

struct ErrorCase {
    const char* name;
    std::string text;
    std::string error;  // "kind K at line:column"
    std::vector<std::string> assertions = {};
    const CodePage* pCodePage = &CodePage::Utf8();
};

std::vector<ErrorCase> ErrorCases() {
    return {
        {"a literal open at the end of the text", "'abc", "kind 1 at 1:5"},
        {"a literal open at the end of a line", "'abc\nd'", "kind 1 at 1:5"},
        {"a literal open at a CR", "'abc\rd'", "kind 1 at 1:5"},
        {"a literal open at a CR LF", "'abc\r\nd'", "kind 1 at 1:5"},
        {"a double-quoted literal", "\"abc'\n", "kind 1 at 1:6"},
        {"behind a word", "x 'abc", "kind 1 at 1:7"},
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
        {"behind a skipped line break", "'a'\n'b", "kind 1 at 1:7"},
        {"behind a counted line break", "'a'\t\n'b", "kind 1 at 2:2"},
        {"a concatenated part is open", "'a'+'b", "kind 1 at 1:7"},
        {"a concatenated part is open on the next line", "'a'+\n'b\n", "kind 1 at 1:8"},
        {"a concatenated part behind a blank is open", "'a' +'b", "kind 1 at 1:8"},
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
        {"an exponent behind a period", "5.e", "kind 2 at 1:4"},
        {"an exponent behind a fraction", ".5e", "kind 2 at 1:4"},
        {"an exponent without digits behind an operator", "x=1e", "kind 2 at 1:5"},
        {"an exponent without digits on a later line", "x\n 1e+", "kind 2 at 2:4"},
        {"an exponent behind a two-byte character", "é 1e", "kind 2 at 1:5"},
        {"an exponent before an invalid byte", "1e\xFF", "kind 2 at 1:3"},
        {"an exponent before NUL", "1e\0005"s, "kind 2 at 1:3"},
        {"a hexadecimal number", "0x1F", "kind 3 at 1:1"},
        {"a hexadecimal number in capitals", "0XA", "kind 3 at 1:1"},
        {"a hexadecimal number behind a word", "a 0x1F", "kind 3 at 1:3"},
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
        {"a control character behind a skipped line break", "'a'\n\x01", "kind 4 at 1:5"},
        {"a control character behind a comma", "a,\x01", "kind 4 at 1:3"},
        {"a control character behind a comment", "/* c */\x01", "kind 4 at 1:8"},
        {"a backslash", "a \\ b", "kind 4 at 1:3", {kInvalidAssertion}},
        {"a circumflex", "a^b", "kind 4 at 1:2", {kInvalidAssertion}},
        {"a grave accent", "`a`", "kind 4 at 1:1", {kInvalidAssertion}},
        {"DEL", "a \x7F", "kind 4 at 1:3", {kInvalidAssertion}},
        {"a backslash behind a two-byte character", "é\\", "kind 4 at 1:2", {kInvalidAssertion}},
        {"only the first error", "a \x01 'b", "kind 4 at 1:3"},
        {"an out-of-range number before the error",
         "1e999 \x01",
         "kind 4 at 1:7",
         {kRangeAssertion}},
    };
}

TEST(TAVQTokenVectorTest, RefusesWhatCannotBeRead) {
    for (int round = 0; round < 2; ++round) {
        for (const ErrorCase& c : ErrorCases()) {
            SCOPED_TRACE(c.name);
            const Outcome outcome = Tokenize(*c.pCodePage, c.text, false, 0);
            EXPECT_EQ(outcome.error, c.error);
            EXPECT_EQ(outcome.assertions, c.assertions);
        }
    }
}

TEST(TAVQTokenVectorTest, ConvertsNumbersExactly) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"0", 0.0},
        {"0.1", 0.1},
        {".3", 0.3},
        {"2.2250738585072014e-308", 2.2250738585072014e-308},
        {"1.7976931348623157e308", 1.7976931348623157e308},
        {"123456789012345678901234567890", 123456789012345678901234567890.0},
        {"9007199254740993", 9007199254740992.0},
        {"9007199254740993.00000000000000000000000001", 9007199254740994.0},
        {"0.1000000000000000055511151231257827021181583404541015625", 0.1},
        {"1e23", 1e23},
        {"8.5e-17", 8.5e-17},
        {"0e999", 0.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const AssertionTexts assertions;
        const TAVQTokenVector tokens(CodePage::Utf8(), std::string(c.text), false, 0);
        ASSERT_EQ(tokens.Count(), 1);
        EXPECT_EQ(tokens.At(0)->NumberValue(), c.value);
        EXPECT_EQ(tokens.At(0)->Text(true), c.text);
        EXPECT_TRUE(assertions.Texts().empty());
    }
}

TEST(TAVQTokenVectorTest, NumbersDoNotFollowTheLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* locale : {"C", "de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "pl_PL.UTF-8"}) {
        if (std::setlocale(LC_NUMERIC, locale) == nullptr) continue;
        SCOPED_TRACE(locale);
        const Outcome outcome = Tokenize(CodePage::Utf8(), "x 2.5 2,5", false, 0);
        const std::vector<std::string> values = outcome.tokens;
        const std::string after = std::setlocale(LC_NUMERIC, nullptr);
        EXPECT_EQ(after, std::setlocale(LC_NUMERIC, locale));
        std::setlocale(LC_NUMERIC, "C");
        EXPECT_EQ(outcome.error, "");
        ASSERT_EQ(values.size(), 4U);
        const TAVQTokenVector tokens(CodePage::Utf8(), "x 2.5 2,5"s, false, 0);
        EXPECT_EQ(tokens.At(1)->NumberValue(), 2.5);
    }
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(TAVQTokenVectorTest, AnOutOfRangeNumberIsReportedAndKept) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* name;
        std::string number;
        double value;
    } cases[] = {
        {"an exponent too large", "1e999", infinity},
        {"just too large", "1.8e308", infinity},
        {"too many digits", Repeat("9", 400), infinity},
        {"too small", "1e-999", 0.0},
    };
    for (int round = 0; round < 2; ++round) {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.name);
            const AssertionTexts assertions;
            const TAVQTokenVector tokens(CodePage::Utf8(), "x = " + c.number + " y", false, 0);
            ASSERT_EQ(tokens.Count(), 4);
            EXPECT_EQ(tokens.At(2)->Type(), TokenCodes::kNumber);
            EXPECT_EQ(tokens.At(2)->NumberValue(), c.value);
            EXPECT_EQ(tokens.At(2)->Text(true), c.number);
            EXPECT_EQ(tokens.At(3)->Text(true), "y");
            EXPECT_EQ(assertions.Texts(), std::vector<std::string>{kRangeAssertion});
        }
    }
    // An earlier failure leaves nothing behind that a number in range could trip over.
    const AssertionTexts assertions;
    const TAVQTokenVector tokens(CodePage::Utf8(), "1e999 5 1e999 2.5"s, false, 0);
    EXPECT_EQ(tokens.Count(), 4);
    EXPECT_EQ(assertions.Texts().size(), 2U);
}

struct StateCase {
    const char* name;
    std::string text;
    SpecialCommandState state;
    int count;
    const CodePage* pCodePage = &CodePage::Utf8();
};

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

TEST(TAVQTokenVectorTest, RecognisesSpecialCommands) {
    for (int round = 0; round < 2; ++round) {
        for (const StateCase& c : StateCases()) {
            SCOPED_TRACE(c.name);
            const Outcome outcome = Tokenize(*c.pCodePage, c.text, false, 0);
            EXPECT_EQ(outcome.error, "");
            EXPECT_EQ(outcome.state, c.state);
            EXPECT_EQ(outcome.count, c.count);
            EXPECT_EQ(outcome.assertions, std::vector<std::string>{});
        }
    }
}

struct LimitCase {
    const char* name;
    std::string text;
    bool skipLeadingSign;
    int maxTokens;
    std::vector<std::string> tokens;
    SpecialCommandState state;
    std::string error;
};

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
        {"an error behind the limit is not seen",
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
        {"a comment behind the sign",
         "+comment it's",
         true,
         0,
         {"word [comment] [COMMENT] 1:2"},
         kComment,
         ""},
        {"a line break behind the sign", "-\na", true, 0, {"word [a] [A] 2:0"}, kOrdinary, ""},
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
        {"errors behind the sign keep their column",
         "+\x01",
         true,
         0,
         {},
         kOrdinary,
         "kind 4 at 1:2"},
    };
}

TEST(TAVQTokenVectorTest, ObeysLimitAndLeadingSign) {
    for (int round = 0; round < 2; ++round) {
        for (const LimitCase& c : LimitCases()) {
            SCOPED_TRACE(c.name);
            const Outcome outcome =
                Tokenize(CodePage::Utf8(), c.text, c.skipLeadingSign, c.maxTokens);
            EXPECT_EQ(outcome.error, c.error);
            EXPECT_EQ(outcome.tokens, c.tokens);
            EXPECT_EQ(outcome.state, c.state);
        }
    }
}

TEST(TAVQTokenVectorTest, ANullTextIsEmpty) {
    const AssertionTexts assertions;
    const TAVQTokenVector tokens(CodePage::Utf8(), std::string_view(), true, 2);
    EXPECT_EQ(tokens.Count(), 0);
    EXPECT_EQ(tokens.State(), SpecialCommandState::kOrdinary);
    const TokenSurvey survey = SurveyTokens(CodePage::Utf8(), std::string_view(), true, 2);
    EXPECT_EQ(survey.count, 0);
    EXPECT_EQ(survey.state, SpecialCommandState::kOrdinary);
    EXPECT_EQ(survey.firstValue, "");
    EXPECT_TRUE(assertions.Texts().empty());
}

TEST(TAVQTokenVectorTest, AnIndexOutsideIsReported) {
    const TAVQTokenVector tokens(CodePage::Utf8(), "a b"s, false, 0);
    const TAVQTokenVector none(CodePage::Utf8(), ""s, false, 0);
    const std::vector<std::string> reported = {kIndexAssertion};
    for (int round = 0; round < 2; ++round) {
        for (const int index :
             {-1, 2, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            SCOPED_TRACE(index);
            const AssertionTexts assertions;
            EXPECT_EQ(tokens.At(index), nullptr);
            EXPECT_EQ(assertions.Texts(), reported);
        }
        const AssertionTexts assertions;
        EXPECT_EQ(none.At(0), nullptr);
        EXPECT_EQ(assertions.Texts(), reported);
    }
    const AssertionTexts assertions;
    EXPECT_NE(tokens.At(0), nullptr);
    EXPECT_NE(tokens.At(1), nullptr);
    EXPECT_TRUE(assertions.Texts().empty());
}

std::vector<std::string> AllTexts() {
    std::vector<std::string> texts;
    for (const TokenCase& c : AllTokenCases()) texts.push_back(c.text);
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

TEST(SurveyTokensTest, AgreesWithTheKeptTokens) {
    for (const CodePage* pPage : {&CodePage::Utf8(), &CodePage::Windows1252(), &DoubleByte()}) {
        for (const std::string& text : AllTexts()) {
            for (const int maxTokens : {0, 1, 2, 3}) {
                for (const bool skipLeadingSign : {false, true}) {
                    SCOPED_TRACE(text);
                    ExpectSurveyAgrees(*pPage, text, skipLeadingSign, maxTokens);
                    if (testing::Test::HasFatalFailure()) return;
                }
            }
        }
    }
}

// Texts made of the pieces that the rules tell apart, in any order.
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

TEST(SurveyTokensTest, AgreesWithTheKeptTokensOnRandomTexts) {
    std::mt19937 random(20240611);
    const CodePage* const pages[] = {&CodePage::Utf8(), &CodePage::Windows1252(), &DoubleByte()};
    for (int run = 0; run < 20000; ++run) {
        const std::string text = RandomText(random);
        const CodePage& codePage = *pages[random() % 3];
        const bool skipLeadingSign = random() % 2 == 0;
        const int maxTokens = static_cast<int>(random() % 4);
        SCOPED_TRACE("run " + std::to_string(run) + ": " + text);
        ExpectSurveyAgrees(codePage, text, skipLeadingSign, maxTokens);
        if (testing::Test::HasFatalFailure()) return;
    }
}

// Who knows the first line alone need not look at the next ones when it has a first token that is
// no literal, or has a second one.
TEST(SurveyTokensTest, OnlyALiteralAloneOnItsLineGoesOn) {
    std::mt19937 random(8080);
    int wentOn = 0;
    for (int run = 0; run < 40000; ++run) {
        const std::string text = (random() % 4 == 0 ? "'*'" : "") + RandomText(random) + "\n" +
                                 (random() % 2 == 0 ? "+'x'" : "") + RandomText(random);
        SCOPED_TRACE("run " + std::to_string(run) + ": " + text);
        const Outcome line =
            Survey(CodePage::Utf8(), text.substr(0, text.find('\n') + 1), false, 2);
        const Outcome whole = Survey(CodePage::Utf8(), text, false, 1);
        if (!line.error.empty() || !whole.error.empty() || line.count == 0) continue;
        const bool goesOn = line.firstValue != whole.firstValue;
        wentOn += goesOn ? 1 : 0;
        ASSERT_TRUE(!goesOn || (line.count == 1 && line.firstIsLiteral));
    }
    EXPECT_GT(wentOn, 100);
}

TEST(TAVQTokenVectorTest, RandomTextsKeepTheRules) {
    std::mt19937 random(4711);
    const CodePage* const pages[] = {&CodePage::Utf8(), &CodePage::Windows1252(), &DoubleByte()};
    int complete = 0;
    for (int run = 0; run < 20000; ++run) {
        const std::string text = RandomText(random);
        SCOPED_TRACE("run " + std::to_string(run) + ": " + text);
        const CodePage& codePage = *pages[random() % 3];
        const Outcome whole = Tokenize(codePage, text, false, 0);
        const Outcome again = Tokenize(codePage, text, false, 0);
        ASSERT_EQ(again.tokens, whole.tokens);
        ASSERT_EQ(again.error, whole.error);
        for (const int maxTokens : {1, 2, 3}) {
            const Outcome limited = Tokenize(codePage, text, false, maxTokens);
            if (!whole.error.empty() && !limited.error.empty()) {
                ASSERT_EQ(limited.error, whole.error);
            }
            if (whole.error.empty()) {
                ASSERT_EQ(limited.error, "");
                const std::size_t count =
                    std::min(whole.tokens.size(), static_cast<std::size_t>(maxTokens));
                ASSERT_EQ(limited.tokens,
                          std::vector<std::string>(
                              whole.tokens.begin(),
                              whole.tokens.begin() + static_cast<std::ptrdiff_t>(count)));
            }
        }
        if (!whole.error.empty()) continue;
        ++complete;
        // The source texts stand in the text one behind the other.
        const AssertionTexts ignored;
        const TAVQTokenVector tokens(codePage, text, false, 0);
        std::size_t offset = 0;
        int lastLine = 1;
        for (int i = 0; i < tokens.Count(); ++i) {
            const std::string& source = tokens.At(i)->Text(true);
            ASSERT_FALSE(source.empty());
            offset = text.find(source, offset);
            ASSERT_NE(offset, std::string::npos);
            offset += source.size();
            int line = 0;
            int column = -1;
            tokens.At(i)->GetPosition(line, column);
            ASSERT_GE(line, lastLine);
            ASSERT_GE(column, line == 1 ? 1 : 0);
            lastLine = line;
        }
    }
    EXPECT_GT(complete, 2000);
}

struct EndDataCase {
    const char* name;
    std::string line;
    bool expected;
};

TEST(IsEndDataLineTest, WantsEightCharactersInFront) {
    const EndDataCase cases[] = {
        {"exactly", "END DATA", true},
        {"lower case", "end data", true},
        {"mixed case", "End Data", true},
        {"a period and a line break", "end data.\n", true},
        {"anything behind", "END DATAX", true},
        {"a word behind", "end data this is", true},
        {"an accent behind", "end dataé", true},
        {"an invalid byte behind", "end data\xFF", true},
        {"empty", "", false},
        {"too short", "END DAT", false},
        {"too short with a line break", "END DAT\n", false},
        {"a blank in front", " END DATA", false},
        {"two blanks", "END  DATA", false},
        {"a tab", "END\tDATA", false},
        {"no blank", "ENDDATA  ", false},
        {"a period inside", "END DAT.A", false},
        {"another word", "END FILE", false},
        {"data", "1 2 3 END DATA", false},
        {"in quotes", "'END DATA'", false},
        {"an accent instead of a letter", "ÉND DATA", false},
    };
    for (int round = 0; round < 2; ++round) {
        for (const EndDataCase& c : cases) {
            SCOPED_TRACE(c.name);
            EXPECT_EQ(IsEndDataLine(CodePage::Utf8(), c.line), c.expected);
            EXPECT_EQ(IsEndDataLine(CodePage::Windows1252(), c.line), c.expected);
        }
    }
}

struct EndCase {
    const char* name;
    std::string text;
    std::ptrdiff_t offset;
    const CodePage* pCodePage = &CodePage::Utf8();
};

TEST(FindCommandEndInTest, FindsTheEndOfFreeText) {
    const EndCase cases[] = {
        {"empty", "", -1},
        {"no period", "* a\n", -1},
        {"a period and a line break", "* a.\n", 3},
        {"a period and a CR LF", "* a.\r\n", 3},
        {"a period and a CR", "* a.\rb", 3},
        {"a period at the end of the text", "* a.", 3},
        {"only a period", ".", 0},
        {"blanks and tabs behind", "* a. \t \n", 3},
        {"blanks behind at the end of the text", "* a.  ", 3},
        {"a period inside", "* a.b.\n", 5},
        {"a sentence inside", "* a. b.\n", 6},
        {"only a sentence inside", "* a. b\n", -1},
        {"two periods", "* a..\n", 4},
        {"periods with blanks between", "* a . .\n", 6},
        {"the first line's end", "* a.\nb.\n", 3},
        {"a later line", "* a\nb.\n", 5},
        {"quotes mean nothing", "* it's.\n", 6},
        {"double quotes mean nothing", "* \"a.\n", 4},
        {"comments mean nothing", "* /* a.\n", 6},
        {"a comment behind the period is text", "* a. /* b\n", -1},
        {"the offset is in bytes", "* é.\n", 4},
        {"NUL ends the text behind a period", "* a.\0b"s, 3},
        {"NUL ends the text in front of a period", "* a\0.\n"s, -1},
        {"NUL ends the text behind blanks", "* a. \0b"s, 3},
        {"single bytes", "* \xE9.\n", 3, &CodePage::Windows1252()},
        {"a trail byte is no period", "* \x81.\n", -1, &DoubleByte()},
        {"a trail byte is no period, but one behind it is", "* \x81..\n", 4, &DoubleByte()},
        {"a control character is no blank", "* a.\x0B\n", -1},
    };
    for (int round = 0; round < 2; ++round) {
        for (const EndCase& c : cases) {
            SCOPED_TRACE(c.name);
            const AssertionTexts assertions;
            EXPECT_EQ(FindCommandEndIn(*c.pCodePage, c.text, true), c.offset);
            EXPECT_TRUE(assertions.Texts().empty());
        }
    }
}

std::vector<EndCase> SyntaxEndCases() {
    return {
        {"empty", "", -1},
        {"no period", "freq a\n", -1},
        {"a period and a line break", "freq a.\n", 6},
        {"a period and a CR LF", "freq a.\r\n", 6},
        {"a period and a LF CR", "freq a.\n\r", 6},
        {"a period and a CR", "freq a.\rb", 6},
        {"the very last byte ends nothing", "freq a.", -1},
        {"one blank behind it, and it does", "freq a. ", 6},
        {"one tab behind it", "freq a.\t", 6},
        {"only a period", ".", -1},
        {"a period and a blank", ". ", 0},
        {"a period and a line break alone", ".\n", 0},
        {"blanks and tabs before the line break", "freq a. \t \n", 6},
        {"a period inside a word", "freq a.b.\n", 8},
        {"a decimal", "x=1.5.\n", 5},
        {"a period before another word", "a. b.\n", 4},
        {"only a period before another word", "a. b\n", -1},
        {"two periods", "a..\n", 2},
        {"periods with blanks between", "a. . \n", 3},
        {"the first line's end", "a.\nb.\n", 1},
        {"a later line", "a\nb.\n", 3},
        {"blank lines behind", "a.\n\n\n", 1},
        {"an indented line behind", "a.\n b\n", 1},
        {"a period in a literal", "x 'a.' b.\n", 8},
        {"a period and a blank in a literal", "x 'a. '\n", -1},
        {"a period behind a literal", "x 'a'.\n", 5},
        {"double quotes", "x \"a.\" b.\n", 8},
        {"an apostrophe in double quotes", "x \"it's.\".\n", 9},
        {"a doubled quote", "x 'it''s.'.\n", 10},
        {"an empty literal", "x ''.\n", 4},
        {"a literal behind a period", "a.'b.'.\n", 6},
        {"a literal behind a period and a blank", "a. 'b.'.\n", 7},
        {"a comment to the end of its line", "a /* b.\n", -1},
        {"a comment to the end of its line, then the end", "a /* b.\nc.\n", 9},
        {"a quote in a comment", "a /* it's\nb.\n", 11},
        {"a closed comment", "a /* b. */ c.\n", 12},
        {"a quote in a closed comment", "a /* it's */ c.\n", 14},
        {"the opening does not close", "a /*/ b.\n", -1},
        {"the opening does not close, a later star does", "a /*/ b. */ c.\n", 13},
        {"the closing slash and a star open another one", "a /* b */* c. */ d.\n", 18},
        {"a slash is nothing special", "a / b.\n", 5},
        {"a slash before a literal", "a /'b.'.\n", 7},
        {"a slash before the period", "a /.\n", 3},
        {"a comment behind the period to the end of the line", "a./* b\n", 1},
        {"the same behind a blank", "a. /* b\n", 1},
        {"the same with a CR LF", "a. /* b\r\n", 1},
        {"a quote in that comment", "a. /* it's\n", 1},
        {"a closed comment behind the period", "a./* b */\n", -1},
        {"a closed comment behind the period and a blank", "a. /* b */ \n", -1},
        {"a closed comment behind the period, a later period", "a. /* b */ c.\n", 12},
        {"a closed comment and an open one behind the period", "a. /* b */* c\n", 1},
        {"a comment behind the period to the end of the text", "a. /* b", -1},
        {"a comment glued to the period to the end of the text", "a./* b", -1},
        {"a slash behind the period", "a. / b.\n", 6},
        {"the offset is in bytes", "é.\n", 2},
        {"an accent inside a literal", "'é.' x.\n", 7},
        {"single bytes", "\xE9.\n", 1, &CodePage::Windows1252()},
        {"a trail byte is no period", "\x81.\n", -1, &DoubleByte()},
        {"a trail byte is no quote", "\x81'.\n", 2, &DoubleByte()},
        {"a trail byte in a literal is no quote", "'\x81'.\x81'.'.\n", 8, &DoubleByte()},
        {"NUL directly behind a period", "a.\0\n"s, -1},
        {"NUL behind a period and a blank", "a. \0\n"s, 1},
        {"NUL in front of a period", "a\0.\n"s, -1},
        {"a control character is no blank", "a.\x0B\n", -1},
        {"what the tokenizer refuses is stepped over", "a \\ \x01 ^ 1e.\n", 10},
    };
}

TEST(FindCommandEndInTest, FindsTheEndOfSyntax) {
    for (int round = 0; round < 2; ++round) {
        for (const EndCase& c : SyntaxEndCases()) {
            SCOPED_TRACE(c.name);
            const AssertionTexts assertions;
            EXPECT_EQ(FindCommandEndIn(*c.pCodePage, c.text, false), c.offset);
            EXPECT_TRUE(assertions.Texts().empty());
        }
    }
}

TEST(FindCommandEndInTest, RefusesOpenLiteralsAtTheirOpeningQuote) {
    const ErrorCase cases[] = {
        {"at the end of the line", "'abc\n", "kind 1 at 1:1"},
        {"at the end of the text", "'abc", "kind 1 at 1:1"},
        {"at a CR", "'abc\r'", "kind 1 at 1:1"},
        {"behind a word", "x 'abc.\n", "kind 1 at 1:3"},
        {"behind a two-byte character", "é 'abc\n", "kind 1 at 1:3"},
        {"double quotes", "x \"it's\n", "kind 1 at 1:3"},
        {"behind a closed literal", "'a' 'b\n", "kind 1 at 1:5"},
        {"a doubled quote opens a new literal", "'it''s\n", "kind 1 at 1:5"},
        {"behind a closed comment", "/* ' */ 'a\n", "kind 1 at 1:9"},
        {"behind a period", "a. 'b\n", "kind 1 at 1:4"},
        {"on a later line", "a\n'b\n", "kind 1 at 2:0"},
        {"indented on a later line", "a\r\n  'b\n", "kind 1 at 2:2"},
        {"NUL inside", "x 'a\0'\n"s, "kind 1 at 1:3"},
        {"an invalid byte inside", "x 'a\xFF'\n", "kind 1 at 1:3"},
        {"a trail byte closes nothing", "x 'a\x81'\n", "kind 1 at 1:3", {}, &DoubleByte()},
    };
    for (int round = 0; round < 2; ++round) {
        for (const ErrorCase& c : cases) {
            SCOPED_TRACE(c.name);
            const AssertionTexts assertions;
            std::string error;
            try {
                const std::ptrdiff_t offset = FindCommandEndIn(*c.pCodePage, c.text, false);
                ADD_FAILURE() << "no error, but " << offset;
            } catch (const ParseError& thrown) {
                error = Describe(thrown);
            }
            EXPECT_EQ(error, c.error);
            EXPECT_TRUE(assertions.Texts().empty());
            EXPECT_NO_THROW((void)FindCommandEndIn(*c.pCodePage, c.text, true));
        }
    }
}

TEST(FindCommandEndInTest, ANullTextIsReported) {
    for (const bool isFreeText : {false, true}) {
        const AssertionTexts assertions;
        EXPECT_EQ(FindCommandEndIn(CodePage::Utf8(), std::string_view(), isFreeText), -1);
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>{kLinesAssertion});
    }
}

double BestSeconds(const std::function<void()>& work) {
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
        const std::clock_t begin = std::clock();
        work();
        best = std::min(best, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
    }
    return best;
}

struct CostCase {
    const char* name;
    std::string head;
    std::string unit;
    std::string tail;
};

// Each text is a head, `count` units and a tail: four times the units may not cost much more
// than four times the time.
void ExpectLinear(const std::vector<CostCase>& cases,
                  const std::function<void(const std::string&)>& work) {
    constexpr std::size_t kCount = 50000;
    for (const CostCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string text = c.head + Repeat(c.unit, kCount) + c.tail;
        const std::string longText = c.head + Repeat(c.unit, 4 * kCount) + c.tail;
        const double once = BestSeconds([&] { work(text); });
        const double fourTimes = BestSeconds([&] { work(longText); });
        EXPECT_LT(fourTimes, 10 * once + 0.02);
    }
}

std::vector<CostCase> CostCases() {
    return {
        {"a long literal", "x '", "a", "'"},
        {"a long literal of two-byte characters", "x '", "é", "'"},
        {"a long literal of the other quote", "x '", "\"", "'"},
        {"doubled quotes", "x '", "''", "'"},
        {"an open literal", "x '", "a", ""},
        {"many literals", "x ", "'a' ", ""},
        {"many glued parts", "x 'a'", "+'a'", ""},
        {"many glued parts on lines", "x 'a'", "+\n'a'", ""},
        {"many parts behind blanks", "x 'a'", " +'a'", ""},
        {"many blanks behind a literal", "x 'a'", " ", ""},
        {"many line breaks behind a literal", "x 'a'", "\n", ""},
        {"many dropped pluses", "x 'a' ", "+ ", ""},
        {"many blanks behind the plus of a part", "x 'a'+", " ", "'b'"},
        {"a long comment", "x /*", "a", "*/ y"},
        {"a long comment of stars", "x /*", "*", "*/ y"},
        {"an open comment", "x /*", "a", ""},
        {"an open comment of openings", "x /*", "/*", ""},
        {"many comments", "x", "/* a */", ""},
        {"many comments to the end of their lines", "x", "/* a\n", ""},
        {"many slashes", "x", "/ ", ""},
        {"many periods", "x ", ".", ""},
        {"many periods with blanks", "x ", ". ", ""},
        {"many periods with words", "x ", "a. ", ""},
        {"many periods with lines", "x ", "a.\n", ""},
        {"many periods with comments", "x ", "./*a*/", ""},
        {"a period and many blanks", "x.", " ", "y"},
        {"a long word", "x ", "a", ""},
        {"a long word with periods", "x", ".a", ""},
        {"a long word of two-byte characters", "x ", "é", ""},
        {"a long word that grows in upper case", "x ", "ɐ", ""},
        {"a long first word", "", "a", ""},
        {"a long macro word", "!", "a", ""},
        {"many words", "x ", "ab ", ""},
        {"many operator words", "x ", "by ", ""},
        {"many macro words", "x ", "!a ", ""},
        {"many numbers", "x ", "1 ", ""},
        {"many fractions", "x ", ".5", ""},
        {"a long number", "x ", "0", ""},
        {"a long fraction", "x 0.", "1", ""},
        {"a long exponent", "x 1e", "0", "1"},
        {"many operators", "x ", "=", ""},
        {"many stars", "x ", "*", ""},
        {"many commas", "x ", ",", ""},
        {"many blanks", "x ", " ", "y"},
        {"many tabs", "x ", "\t", "y"},
        {"many line breaks", "x ", "\n", "y"},
        {"many CR LF", "x ", "\r\n", "y"},
        {"a long comment command", "comment ", "it's. ", ""},
    };
}

TEST(TokenizerCostTest, KeptTokensAreLinear) {
    ExpectLinear(CostCases(), [](const std::string& text) {
        const Outcome outcome = Survey(CodePage::Utf8(), text, false, 1);
        EXPECT_LE(outcome.count, 1);
        try {
            const TAVQTokenVector tokens(CodePage::Utf8(), text, false, 0);
            EXPECT_GE(tokens.Count(), 1);
        } catch (const ParseError& error) {
            EXPECT_EQ(error.Kind(), ParseErrorKind::kUnclosedLiteral);
        }
    });
}

TEST(TokenizerCostTest, CountedTokensAreLinear) {
    ExpectLinear(CostCases(), [](const std::string& text) {
        try {
            const TokenSurvey survey = SurveyTokens(CodePage::Utf8(), text, false, 0);
            EXPECT_GE(survey.count, 1);
        } catch (const ParseError& error) {
            EXPECT_EQ(error.Kind(), ParseErrorKind::kUnclosedLiteral);
        }
    });
}

TEST(TokenizerCostTest, FindingTheEndIsLinear) {
    ExpectLinear(CostCases(), [](const std::string& text) {
        const auto size = static_cast<std::ptrdiff_t>(text.size());
        EXPECT_LT(FindCommandEndIn(CodePage::Utf8(), text, true), size);
        try {
            EXPECT_LT(FindCommandEndIn(CodePage::Utf8(), text, false), size);
        } catch (const ParseError& error) {
            EXPECT_EQ(error.Kind(), ParseErrorKind::kUnclosedLiteral);
        }
    });
}

TEST(TokenizerCostTest, TheEndDataTestIsLinear) {
    ExpectLinear({{"a long line", "", "1 ", ""},
                  {"a long line of two-byte characters", "", "é", ""},
                  {"a long line behind the words", "end data ", "x", ""}},
                 [](const std::string& line) {
                     EXPECT_EQ(IsEndDataLine(CodePage::Utf8(), line), line[0] == 'e');
                 });
}

}  // namespace
}  // namespace quillet
