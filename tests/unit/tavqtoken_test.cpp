#include "tokenizer/tavqtoken.h"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "nodemaking.h"
#include "support/sign.h"

namespace quillet {
namespace {

using namespace std::string_literals;

// A token and where it stands.
struct Placed {
    TAVQToken token;
    int line;
    int column;
};

Placed WordToken(const std::string& text, const std::string& value, int line = 1, int column = 1) {
    return {MakeToken(TokenCodes::kString, text, value), line, column};
}
Placed Number(const std::string& text, int line = 1, int column = 1) {
    return {MakeToken(TokenCodes::kNumber, text, text), line, column};
}
Placed Literal(const std::string& text, const std::string& value, int line = 1, int column = 1) {
    return {MakeToken(TokenCodes::kLiteral, text, value), line, column};
}
Placed Operator(const std::string& text, int line = 1, int column = 1) {
    return {MakeToken(TokenCodes::kOperator, text, text), line, column};
}

std::string Listing(const Placed& placed, unsigned indent) {
    std::ostringstream stream;
    placed.token.Dump(stream, indent, placed.line, placed.column);
    return stream.str();
}

struct FieldCase {
    const char* name;
    Placed placed;
    int type;
    std::string rawText;
    std::string valueText;
    double number;
    int op;
};

std::vector<FieldCase> FieldCases() {
    std::vector<FieldCase> cases;
    cases.push_back(
        {"an ordinary word has two texts", WordToken("Age", "AGE", 3, 7), 2, "Age", "AGE", 0.0, 0});
    cases.push_back({"a word may carry an operator code", WordToken("with", "WITH", 2, 0), 2,
                     "with", "WITH", 0.0, 31});
    cases.push_back(
        {"a number has only its source text", Number("5.", 1, 4), 3, "5.", "5.", 5.0, 0});
    cases.push_back({"a literal keeps its quotes in the source text",
                     Literal("'it''s'", "it's", 9, 12), 4, "'it''s'", "it's", 0.0, 0});
    cases.push_back({"a literal that looks like a number has no value", Literal("'5'", "5"), 4,
                     "'5'", "5", 0.0, 0});
    cases.push_back(
        {"an operator has only its source text", Operator("<=", 3, 7), 5, "<=", "<=", 0.0, 4});
    cases.push_back({"not equal has code 6", Operator("~="), 5, "~=", "~=", 0.0, 6});
    cases.push_back({"an empty range gives an empty text", WordToken("", "V"), 2, "", "V", 0.0, 0});
    cases.push_back({"a NUL byte in the range is kept", Literal("'a\0b'"s, "a\0b"s), 4, "'a\0b'"s,
                     "a\0b"s, 0.0, 0});
    cases.push_back(
        {"positions are taken as they are", Operator("+", -1, 2147483647), 5, "+", "+", 0.0, 8});
    return cases;
}

void ExpectFields(const TAVQToken& token, const FieldCase& c) {
    EXPECT_EQ(token.Type(), c.type);
    EXPECT_EQ(token.Text(true), c.rawText);
    EXPECT_EQ(token.Text(false), c.valueText);
    EXPECT_EQ(token.NumberValue(), c.number);
    EXPECT_EQ(token.Operator(), c.op);
}

TEST(TAVQTokenTest, KeepsItsFields) {
    for (const FieldCase& c : FieldCases()) {
        SCOPED_TRACE(c.name);
        ExpectFields(c.placed.token, c);
        const TAVQToken copy = c.placed.token;
        ExpectFields(copy, c);
    }
}

TEST(TAVQTokenTest, NoTokenHasNoTexts) {
    const TAVQToken none{};
    EXPECT_EQ(none.Type(), TokenCodes::kAtEnd);
    EXPECT_EQ(none.Text(true), "");
    EXPECT_EQ(none.Text(false), "");
    EXPECT_EQ(none.Operator(), TokenCodes::kNotOperator);
    EXPECT_EQ(none.NumberValue(), 0.0);
}

TEST(TAVQTokenTest, ATagIsStoredWithTheToken) {
    TAVQToken token = Literal("'a'", "a").token;
    EXPECT_EQ(token.Tag(), 0U);
    token.SetTag(TAVQToken::kMaxTag);
    EXPECT_EQ(token.Tag(), TAVQToken::kMaxTag);
    token.SetTag(512);
    EXPECT_EQ(token.Tag(), 512U);
    EXPECT_EQ(token.Type(), TokenCodes::kLiteral);
    EXPECT_EQ(token.Text(true), "'a'");
}

// What a token needs no place of its own for.
TEST(TAVQTokenTest, FindsValuesNextToTheirSources) {
    const std::string text = "age 'ab' 12 + AGE";
    const std::string_view all = text;
    const std::string_view word = all.substr(0, 3);
    const std::string_view literal = all.substr(4, 5);
    struct Case {
        const char* name;
        TokenCodes::TokenType type;
        TokenTexts texts;
        bool isFound;
    };
    const std::string longText(std::size_t{1} << 18U, 'x');
    const Case cases[] = {
        {"a word and its capitals", TokenCodes::kString, {word, all.substr(14, 3)}, true},
        {"a word that is its own value", TokenCodes::kString, {word, word}, true},
        {"a shorter value", TokenCodes::kString, {word, all.substr(14, 2)}, false},
        {"a value in front", TokenCodes::kString, {all.substr(14, 3), word}, false},
        {"a literal", TokenCodes::kLiteral, {literal, all.substr(5, 2)}, true},
        {"an empty literal", TokenCodes::kLiteral, {literal, all.substr(5, 0)}, true},
        {"a literal with a value elsewhere", TokenCodes::kLiteral, {literal, word}, false},
        {"a number", TokenCodes::kNumber, {all.substr(9, 2), all.substr(9, 2)}, true},
        {"an operator", TokenCodes::kOperator, {all.substr(12, 1), all.substr(12, 1)}, true},
        {"a long word", TokenCodes::kString, {longText, longText}, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::optional<TAVQToken> token = TAVQToken::Of(c.type, c.texts);
        ASSERT_EQ(token.has_value(), c.isFound);
        if (!token) continue;
        EXPECT_EQ(token->Type(), c.type);
        EXPECT_EQ(token->Text(true).data(), c.texts.source.data());
        EXPECT_EQ(token->Text(true), c.texts.source);
        EXPECT_EQ(token->Text(false).data(), c.texts.value.data());
        EXPECT_EQ(token->Text(false), c.texts.value);
    }
}

struct DumpCase {
    const char* name;
    Placed placed;
    unsigned indent;
    std::string expected;
};

TEST(TAVQTokenTest, ListsItself) {
    const std::string tabs20(20, '\t');
    std::vector<DumpCase> cases;
    cases.push_back({"an operator", Operator("<=", 3, 7), 1, "\tkOperator\t3:7\tkLtOrEq\t<=\n"});
    cases.push_back({"an operator without indentation", Operator("[", 1, 1), 0,
                     "kOperator\t1:1\tkLeftSqBracket\t[\n"});
    cases.push_back(
        {"~= has no name", Operator("~=", 1, 2), 0, "kOperator\t1:2\tkNotOperator\t~=\n"});
    cases.push_back(
        {"<> has no name", Operator("<>", 1, 2), 0, "kOperator\t1:2\tkNotOperator\t<>\n"});
    cases.push_back({"a word shows its source text", WordToken("Age", "AGE", 2, 0), 2,
                     "\t\tkString\t2:0\tkNotOperator\tAge\n"});
    cases.push_back({"a word with an operator code", WordToken("by", "BY", 2, 5), 0,
                     "kString\t2:5\tkBy\tby\n"});
    cases.push_back({"the word NE has no operator name", WordToken("ne", "NE", 1, 1), 0,
                     "kString\t1:1\tkNotOperator\tne\n"});
    cases.push_back(
        {"a number shows value and source", Number("0.50", 1, 1), 0, "kNumber\t1:1\t0.5\t0.50\n"});
    cases.push_back({"a large number in the stream's default form", Number("1234567", 1, 1), 0,
                     "kNumber\t1:1\t1.23457e+06\t1234567\n"});
    cases.push_back(
        {"a whole number has no fraction", Number("5.", 1, 1), 1, "\tkNumber\t1:1\t5\t5.\n"});
    cases.push_back({"a literal has a second line", Literal("'it''s'", "it's", 4, 2), 1,
                     "\tkLiteral\t4:2\n\t`it's`\n"});
    cases.push_back({"an empty literal", Literal("''", "", 4, 2), 0, "kLiteral\t4:2\n``\n"});
    cases.push_back({"an indentation of 20 is written", Operator("+", 1, 1), 20,
                     tabs20 + "kOperator\t1:1\tkPlus\t+\n"});
    cases.push_back({"an indentation of 20 on both lines", Literal("'a'", "a", 1, 1), 20,
                     tabs20 + "kLiteral\t1:1\n" + tabs20 + "`a`\n"});
    cases.push_back(
        {"an indentation of 21 is dropped", Operator("+", 1, 1), 21, "kOperator\t1:1\tkPlus\t+\n"});
    cases.push_back({"a deep indentation is dropped on both lines", Literal("'a'", "a", 1, 1),
                     4000000000U, "kLiteral\t1:1\n`a`\n"});
    cases.push_back({"positions are taken as they are", Operator("+", -1, 2147483647), 0,
                     "kOperator\t-1:2147483647\tkPlus\t+\n"});
    for (const DumpCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Listing(c.placed, c.indent), c.expected);
    }
}

struct TokenCompareCase {
    const char* name;
    std::string tokenText;
    std::string tokenValue;
    std::string other;
    std::size_t count;
    bool raw;
    int sign;
};

TEST(TAVQTokenTest, ComparesTexts) {
    const TokenCompareCase cases[] = {
        {"a shorter text is less", "WI", "WI", "WITH", 0, true, -1},
        {"only two bytes", "WI", "WI", "WITH", 2, true, 0},
        {"three bytes reach past the shorter text", "WI", "WI", "WITH", 3, true, -1},
        {"a longer text is greater", "WITHIN", "WITHIN", "WITH", 0, true, 1},
        {"the first bytes of a longer text", "WITHIN", "WITHIN", "WITH", 4, true, 0},
        {"equal", "WITH", "WITH", "WITH", 0, true, 0},
        {"a count above both lengths", "WITH", "WITH", "WITH", 100, true, 0},
        {"a count above both lengths keeps the difference", "WI", "WI", "WITH", 100, true, -1},
        {"the source text is as written", "with", "WITH", "WITH", 0, true, 1},
        {"the value text is in upper case", "with", "WITH", "WITH", 0, false, 0},
        {"bytes are unsigned", "\xE9", "\xE9", "z", 0, true, 1},
        {"bytes are unsigned with a count", "a\xE9", "a\xE9", "az", 2, true, 1},
        {"a difference after the count does not matter", "abcX", "abcX", "abcY", 3, true, 0},
        {"a difference in front of the count does", "abX", "abX", "abY", 3, true, -1},
        {"an empty text is less", "", "", "a", 0, true, -1},
        {"empty texts are equal", "", "", "", 3, true, 0},
        {"a NUL byte counts like any other", "a\0b"s, "a\0b"s, "a\0c"s, 0, true, -1},
        {"a text that goes on after a NUL byte is longer", "a\0"s, "a\0"s, "a", 0, true, 1},
    };
    for (const TokenCompareCase& c : cases) {
        SCOPED_TRACE(c.name);
        const TAVQToken token = WordToken(c.tokenText, c.tokenValue).token;
        EXPECT_EQ(SignOf(token.CompareText(c.other, c.count, c.raw)), c.sign);
        EXPECT_EQ(SignOf(CompareTextPrefix(c.raw ? c.tokenText : c.tokenValue, c.other, c.count)),
                  c.sign);
    }
    EXPECT_EQ(Literal("'a'", "a").token.CompareText("a", 0, false), 0);
    EXPECT_EQ(Literal("'a'", "a").token.CompareText("'a'", 0, true), 0);
    EXPECT_EQ(Number("5.").token.CompareText("5.", 0, false), 0);
    EXPECT_EQ(Operator("**").token.CompareText("**", 0, false), 0);
}

TEST(TAVQTokenTest, NamesTypes) {
    const struct {
        int type;
        const char* name;
    } cases[] = {{1, "kAtEnd"},   {2, "kString"},   {3, "kNumber"},
                 {4, "kLiteral"}, {5, "kOperator"}, {0, "kAtEnd"},
                 {6, "kAtEnd"},   {-1, "kAtEnd"},   {1000000, "kAtEnd"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        EXPECT_EQ(TokenTypeName(c.type), c.name);
    }
}

TEST(TAVQTokenTest, NamesOperators) {
    const char* const names[] = {
        "kNotOperator",  "kLessThan",      "kGreaterThan",   "kEquals",    "kLtOrEq",
        "kGtOrEq",       "kNotOperator",   "kNot",           "kPlus",      "kMinus",
        "kAsterisk",     "kSlash",         "kPower",         "kLeftParen", "kRightParen",
        "kComma",        "kColon",         "kSemicolon",     "kPeriod",    "kUnderscore",
        "kQuestionMark", "kPercent",       "kVerticalBar",   "kAmpersand", "kLeftBrace",
        "kRightBrace",   "kElemMult",      "kElemDiv",       "kElemPower", "kXtabNest",
        "kTo",           "kWith",          "kAnd",           "kOr",        "kBy",
        "kAll",          "kLeftSqBracket", "kRightSqBracket"};
    int code = 0;
    for (const char* name : names) {
        SCOPED_TRACE(code);
        EXPECT_EQ(OperatorName(code), name);
        ++code;
    }
    ASSERT_EQ(code, 38);
    for (const int outside : {-1, 38, 39, 1000000, -1000000}) {
        SCOPED_TRACE(outside);
        EXPECT_EQ(OperatorName(outside), "kNotOperator");
    }
}

TEST(TAVQTokenTest, CodesHaveTheirValues) {
    EXPECT_EQ(TokenCodes::kAtEnd, 1);
    EXPECT_EQ(TokenCodes::kString, 2);
    EXPECT_EQ(TokenCodes::kNumber, 3);
    EXPECT_EQ(TokenCodes::kLiteral, 4);
    EXPECT_EQ(TokenCodes::kOperator, 5);
    EXPECT_EQ(TokenCodes::kNotEqualCode, 6);
    EXPECT_EQ(TokenCodes::kSlash, 11);
    EXPECT_EQ(TokenCodes::kXtabNest, 29);
    EXPECT_EQ(TokenCodes::kRightSqBracket, 37);
}

}  // namespace
}  // namespace quillet
