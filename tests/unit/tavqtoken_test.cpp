#include "tokenizer/tavqtoken.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/sign.h"

namespace quillet {
namespace {

using namespace std::string_literals;

std::unique_ptr<TAVQToken> WordToken(const std::string& text, const std::string& value, int op = 0,
                                     int line = 1, int column = 1) {
    return std::make_unique<TAVQStringToken>(text.data(), text.data() + text.size(), line, column,
                                             value, op);
}
std::unique_ptr<TAVQToken> Number(const std::string& text, double value, int line = 1,
                                  int column = 1) {
    return std::make_unique<TAVQNumberToken>(text.data(), text.data() + text.size(), line, column,
                                             value);
}
std::unique_ptr<TAVQToken> Literal(const std::string& text, const std::string& value, int line = 1,
                                   int column = 1) {
    return std::make_unique<TAVQLiteralToken>(text.data(), text.data() + text.size(), line, column,
                                              value);
}
std::unique_ptr<TAVQToken> Operator(const std::string& text, int op, int line = 1, int column = 1) {
    return std::make_unique<TAVQOperatorToken>(text.data(), text.data() + text.size(), line, column,
                                               op);
}

std::string Listing(const TAVQToken& token, unsigned indent) {
    std::ostringstream stream;
    token.Dump(stream, indent);
    return stream.str();
}

struct FieldCase {
    const char* name;
    std::shared_ptr<TAVQToken> pToken;
    int type;
    std::string rawText;
    std::string valueText;
    double number;
    int op;
    int line;
    int column;
};

std::vector<FieldCase> FieldCases() {
    std::vector<FieldCase> cases;
    cases.push_back({"an ordinary word has two texts", WordToken("Age", "AGE", 0, 3, 7), 2, "Age",
                     "AGE", 0.0, 0, 3, 7});
    cases.push_back({"a word may carry an operator code", WordToken("with", "WITH", 31, 2, 0), 2,
                     "with", "WITH", 0.0, 31, 2, 0});
    cases.push_back({"a number has only its source text", Number("5.", 5.0, 1, 4), 3, "5.", "5.",
                     5.0, 0, 1, 4});
    cases.push_back({"a literal keeps its quotes in the source text",
                     Literal("'it''s'", "it's", 9, 12), 4, "'it''s'", "it's", 0.0, 0, 9, 12});
    cases.push_back({"a literal that looks like a number has no value", Literal("'5'", "5"), 4,
                     "'5'", "5", 0.0, 0, 1, 1});
    cases.push_back({"an operator has only its source text", Operator("<=", 4, 3, 7), 5,
                     "<=", "<=", 0.0, 4, 3, 7});
    cases.push_back({"not equal has code 6", Operator("~=", 6), 5, "~=", "~=", 0.0, 6, 1, 1});
    cases.push_back(
        {"an empty range gives an empty text", WordToken("", "V"), 2, "", "V", 0.0, 0, 1, 1});
    cases.push_back({"a NUL byte in the range is kept", Literal("'a\0b'"s, "a\0b"s), 4, "'a\0b'"s,
                     "a\0b"s, 0.0, 0, 1, 1});
    cases.push_back({"positions are taken as they are", Operator("+", 8, -1, 2147483647), 5, "+",
                     "+", 0.0, 8, -1, 2147483647});
    return cases;
}

void ExpectFields(const TAVQToken& token, const FieldCase& c) {
    EXPECT_EQ(token.Type(), c.type);
    EXPECT_EQ(token.Text(true), c.rawText);
    EXPECT_EQ(token.Text(false), c.valueText);
    EXPECT_EQ(token.NumberValue(), c.number);
    EXPECT_EQ(token.Operator(), c.op);
    int line = -5;
    int column = -5;
    token.GetPosition(line, column);
    EXPECT_EQ(line, c.line);
    EXPECT_EQ(column, c.column);
}

TEST(TAVQTokenTest, KeepsItsFields) {
    for (const FieldCase& c : FieldCases()) {
        SCOPED_TRACE(c.name);
        ExpectFields(*c.pToken, c);
    }
}

TEST(TAVQTokenTest, ACloneHasAllFieldsAndALifeOfItsOwn) {
    for (FieldCase& c : FieldCases()) {
        SCOPED_TRACE(c.name);
        const std::string listing = Listing(*c.pToken, 1);
        const std::unique_ptr<TAVQToken> pClone = c.pToken->Clone();
        ASSERT_NE(pClone, nullptr);
        EXPECT_NE(pClone.get(), c.pToken.get());
        c.pToken.reset();
        ExpectFields(*pClone, c);
        EXPECT_EQ(Listing(*pClone, 1), listing);
    }
}

TEST(TAVQTokenTest, DoesNotBorrowTheSource) {
    std::string source = "'abc'";
    const TAVQLiteralToken token(source.data(), source.data() + source.size(), 1, 1, "abc");
    source.assign("xxxxx");
    EXPECT_EQ(token.Text(true), "'abc'");
}

struct DumpCase {
    const char* name;
    std::shared_ptr<TAVQToken> pToken;
    unsigned indent;
    std::string expected;
};

TEST(TAVQTokenTest, ListsItself) {
    const std::string tabs20(20, '\t');
    std::vector<DumpCase> cases;
    cases.push_back({"an operator", Operator("<=", 4, 3, 7), 1, "\tkOperator\t3:7\tkLtOrEq\t<=\n"});
    cases.push_back({"an operator without indentation", Operator("[", 36, 1, 1), 0,
                     "kOperator\t1:1\tkLeftSqBracket\t[\n"});
    cases.push_back(
        {"~= has no name", Operator("~=", 6, 1, 2), 0, "kOperator\t1:2\tkNotOperator\t~=\n"});
    cases.push_back(
        {"<> has no name", Operator("<>", 6, 1, 2), 0, "kOperator\t1:2\tkNotOperator\t<>\n"});
    cases.push_back({"a word shows its source text", WordToken("Age", "AGE", 0, 2, 0), 2,
                     "\t\tkString\t2:0\tkNotOperator\tAge\n"});
    cases.push_back({"a word with an operator code", WordToken("by", "BY", 34, 2, 5), 0,
                     "kString\t2:5\tkBy\tby\n"});
    cases.push_back({"the word NE has no operator name", WordToken("ne", "NE", 6, 1, 1), 0,
                     "kString\t1:1\tkNotOperator\tne\n"});
    cases.push_back({"a number shows value and source", Number("0.50", 0.5, 1, 1), 0,
                     "kNumber\t1:1\t0.5\t0.50\n"});
    cases.push_back({"a large number in the stream's default form",
                     Number("1234567", 1234567.0, 1, 1), 0,
                     "kNumber\t1:1\t1.23457e+06\t1234567\n"});
    cases.push_back(
        {"a whole number has no fraction", Number("5.", 5.0, 1, 1), 1, "\tkNumber\t1:1\t5\t5.\n"});
    cases.push_back({"a literal has a second line", Literal("'it''s'", "it's", 4, 2), 1,
                     "\tkLiteral\t4:2\n\t`it's`\n"});
    cases.push_back({"an empty literal", Literal("''", "", 4, 2), 0, "kLiteral\t4:2\n``\n"});
    cases.push_back({"an indentation of 20 is written", Operator("+", 8, 1, 1), 20,
                     tabs20 + "kOperator\t1:1\tkPlus\t+\n"});
    cases.push_back({"an indentation of 20 on both lines", Literal("'a'", "a", 1, 1), 20,
                     tabs20 + "kLiteral\t1:1\n" + tabs20 + "`a`\n"});
    cases.push_back({"an indentation of 21 is dropped", Operator("+", 8, 1, 1), 21,
                     "kOperator\t1:1\tkPlus\t+\n"});
    cases.push_back({"a deep indentation is dropped on both lines", Literal("'a'", "a", 1, 1),
                     4000000000U, "kLiteral\t1:1\n`a`\n"});
    for (const DumpCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Listing(*c.pToken, c.indent), c.expected);
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
        const std::unique_ptr<TAVQToken> pToken = WordToken(c.tokenText, c.tokenValue);
        EXPECT_EQ(SignOf(pToken->CompareText(c.other, c.count, c.raw)), c.sign);
        EXPECT_EQ(SignOf(CompareTextPrefix(c.raw ? c.tokenText : c.tokenValue, c.other, c.count)),
                  c.sign);
    }
    EXPECT_EQ(Literal("'a'", "a")->CompareText("a", 0, false), 0);
    EXPECT_EQ(Literal("'a'", "a")->CompareText("'a'", 0, true), 0);
    EXPECT_EQ(Number("5.", 5.0)->CompareText("5.", 0, false), 0);
    EXPECT_EQ(Operator("**", 12)->CompareText("**", 0, false), 0);
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
