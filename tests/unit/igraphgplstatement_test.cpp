#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "igraph/gpl/gplstatement.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

TEST(IgraphGplStatementTest, FormatsNumbers) {
    struct Case {
        double number;
        const char* text;
    };
    const Case cases[] = {
        {5.0, "5"},
        {0.9, "0.9"},
        {-2.5, "-2.5"},
        {0.0, "0"},
        {0.95, "0.95"},
        {1e15, "1e+15"},
        {1e14, "100000000000000"},
        {1e-5, "1e-05"},
        {0.0001, "0.0001"},
        {1.0 / 3.0, "0.333333333333333"},
        {29.0 / 100, "0.29"},
        {1e300, "1e+300"},
        {123456789.125, "123456789.125"},
    };
    for (const Case& c : cases) EXPECT_EQ(FormatNumber(c.number), c.text);
}

TEST(IgraphGplStatementTest, NumbersHaveADecimalPointInEveryLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) {
        std::setlocale(LC_NUMERIC, locale);
        EXPECT_EQ(FormatNumber(0.5), "0.5") << locale;
    }
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(IgraphGplStatementTest, WritesExpressions) {
    struct Case {
        const char* name;
        Expression expression;
        const char* text;
    };
    const Case cases[] = {
        {"identifier", Expression::Identifier("a_2"), "a_2"},
        {"text", Expression::Text("it's"), "\"it's\""},
        {"quotes and backslashes", Expression::Text("a\"b\\c\"\""), "\"a\\\"b\\\\c\\\"\\\"\""},
        {"line breaks cannot leave a string", Expression::Text("a\r\nb\n"), "\"a  b \""},
        {"bytes are passed on", Expression::Text("\xc3\xa4\t,("), "\"\xc3\xa4\t,(\""},
        {"number", Expression::Number(2.50), "2.5"},
        {"call", Expression::Call("f", {Expression::Number(1), Expression::Text("x")}),
         "f(1, \"x\")"},
        {"call without arguments", Expression::Call("reverse"), "reverse()"},
        {"indices", Expression::Indices("dim", {1, 2, 3}), "dim(1,2,3)"},
        {"product",
         Expression::Product(
             {Expression::Identifier("a"), Expression::Number(1), Expression::Identifier("b")}),
         "a*1*b"},
        {"product of one", Expression::Product({Expression::Identifier("a")}), "a"},
        {"operation",
         Expression::Operation(
             Expression::Operation(Expression::Identifier("y"), ">=", Expression::Number(-1)), "&",
             Expression::Identifier("z")),
         "y >= -1 & z"},
        {"whole range", Expression::Call("position", {Expression::WholeRange()}), "position(*)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(TextOf(c.expression), c.text);
    }
}

TEST(IgraphGplStatementTest, OrdersStatementsByLabel) {
    Program program;
    program.Add(StatementLabel::kElement, Expression::Call("point"));
    program.Add(StatementLabel::kScale, Expression::Call("linear"));
    program.Add(StatementLabel::kGuide, Expression::Call("axis"));
    program.Add(StatementLabel::kCoord, Expression::Call("rect"));
    program.AddNamed(StatementLabel::kTrans, "t", Expression::Call("eval"));
    program.AddNamed(StatementLabel::kData, "a", Expression::Call("col"));
    program.AddNamed(StatementLabel::kSource, "s", Expression::Call("userSource"));
    program.Add(StatementLabel::kElement, Expression::Call("line"));
    EXPECT_EQ(program.ToText(),
              "\n"
              "  SOURCE: s=userSource()\n"
              "  DATA: a=col()\n"
              "  TRANS: t=eval()\n"
              "  COORD: rect()\n"
              "  GUIDE: axis()\n"
              "  SCALE: linear()\n"
              "  ELEMENT: point()\n"
              "  ELEMENT: line()\n");
}

// The text of a statement whose function has the arguments.
std::string LayoutText(std::initializer_list<std::string> arguments) {
    Expression call = Expression::Call("f");
    for (const std::string& argument : arguments) {
        call.AddArgument(Expression::Identifier(argument));
    }
    Program program;
    program.Add(StatementLabel::kGuide, call);
    return program.ToText();
}

TEST(IgraphGplStatementTest, BreaksLongLinesAfterArguments) {
    const auto word = [](char c, std::size_t length) { return std::string(length, c); };
    const std::string head = "\n  GUIDE: f(";  // 11 bytes after the line end
    struct Case {
        const char* name;
        std::string text;
        std::string expected;
    };
    const Case cases[] = {
        {"250 bytes stay", LayoutText({word('a', 100), word('b', 136)}),
         head + word('a', 100) + ", " + word('b', 136) + ")\n"},
        {"251 bytes do not", LayoutText({word('a', 100), word('b', 137)}),
         head + word('a', 100) + ",\n    " + word('b', 137) + ")\n"},
        {"the last place before the limit is taken",
         LayoutText({word('a', 100), word('b', 100), word('c', 100)}),
         head + word('a', 100) + ", " + word('b', 100) + ",\n    " + word('c', 100) + ")\n"},
        {"a separator up to the limit counts", LayoutText({word('a', 237), word('b', 1)}),
         head + word('a', 237) + ",\n    b)\n"},
        {"one beyond it does not", LayoutText({word('a', 238), word('b', 1)}),
         head + word('a', 238) + ", b)\n"},
        {"several breaks", LayoutText({word('a', 200), word('b', 200), word('c', 200)}),
         head + word('a', 200) + ",\n    " + word('b', 200) + ",\n    " + word('c', 200) + ")\n"},
        {"one long argument stays whole", LayoutText({word('a', 400)}),
         head + word('a', 400) + ")\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.text, c.expected);
    }
}

TEST(IgraphGplStatementTest, BreaksNeitherStringsNorInnerCalls) {
    Program program;
    program.Add(
        StatementLabel::kGuide,
        Expression::Call(
            "axis", {Expression::Indices("dim", {1}),
                     Expression::Call("label", {Expression::Text(std::string(150, 'x') + ", (" +
                                                                 std::string(150, 'y'))})}));
    EXPECT_EQ(program.ToText(), "\n  GUIDE: axis(dim(1),\n    label(\"" + std::string(150, 'x') +
                                    ", (" + std::string(150, 'y') + "\"))\n");
}

}  // namespace

}  // namespace quillet::igraph
