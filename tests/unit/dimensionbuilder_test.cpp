#include "outline/dimensionbuilder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "support/rownames.h"

namespace quillet::outline {
namespace {

// Gives the builder an expression of letters, signs and parentheses.
Dimension Build(std::string_view expression, std::vector<std::size_t>& places) {
    DimensionBuilder builder;
    for (const char c : expression) {
        if (c == '+') {
            builder.AddPlus(1);
        } else if (c == '>') {
            builder.AddGreaterThan(1);
        } else if (c == '(') {
            builder.OpenParenthesis();
        } else if (c == ')') {
            EXPECT_TRUE(builder.HasOpenParenthesis());
            builder.CloseParenthesis();
        } else {
            Node variable;
            variable.name.text = c;
            static_cast<void>(builder.AddVariable(variable));
        }
    }
    EXPECT_FALSE(builder.HasOpenParenthesis());
    return builder.Finish(places);
}

// The nodes in their order, each with its end; parentheses after those that stood in some.
std::string NodesOf(const Dimension& dimension) {
    std::string nodes;
    for (const Node& node : dimension) {
        if (!nodes.empty()) nodes += " ";
        nodes +=
            IsOperator(node.role) ? (node.role == Role::kStacking ? "+" : ">") : node.name.text;
        nodes += std::to_string(node.end);
        if (node.isInParentheses) nodes += "()";
    }
    return nodes;
}

struct TreeCase {
    const char* name;
    const char* expression;
    const char* nodes;
};

void PrintTo(const TreeCase& treeCase, std::ostream* pStream) { *pStream << treeCase.name; }

class DimensionBuilderTest : public testing::TestWithParam<TreeCase> {};

TEST_P(DimensionBuilderTest, PutsNodesInOrder) {
    std::vector<std::size_t> places;
    const Dimension dimension = Build(GetParam().expression, places);
    EXPECT_EQ(NodesOf(dimension), GetParam().nodes);
    std::string variables;
    for (const std::size_t place : places) variables += dimension.at(place).name.text;
    std::string expected;
    for (const char c : std::string_view(GetParam().expression)) {
        if ('a' <= c && c <= 'z') expected += c;
    }
    EXPECT_EQ(variables, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Trees, DimensionBuilderTest,
    testing::Values(TreeCase{"nothing", "", ""}, TreeCase{"a variable", "a", "a1"},
                    TreeCase{"a stacking", "a+b+c", "+4 a2 b3 c4"},
                    TreeCase{"a nesting", "a>b>c", ">4 a2 b3 c4"},
                    TreeCase{"nesting binds tighter", "a+b>c+d", "+6 a2 >5 b4 c5 d6"},
                    TreeCase{"a nesting first", "a>b+c", "+5 >4 a3 b4 c5"},
                    TreeCase{"parentheses", "a>(b+c)", ">5 a2 +5() b4 c5"},
                    TreeCase{"parentheses first", "(a+b)>c", ">5 +4() a3 b4 c5"},
                    TreeCase{"parentheses without need", "a+(b>c)", "+5 a2 >5() b4 c5"},
                    TreeCase{"parentheses around all", "(a+b)", "+3() a2 b3"},
                    TreeCase{"parentheses around a variable", "a+(b)", "+3 a2 b3()"},
                    TreeCase{"a stacking in a stacking", "a+(b+c)+d", "+5 a2 b3 c4 d5"},
                    TreeCase{"a stacking first in a stacking", "(a+b)+c", "+4 a2 b3 c4"},
                    TreeCase{"a nesting in a nesting", "a>(b>c)>d", ">5 a2 b3 c4 d5"},
                    TreeCase{"both in turn", "a>(b+(c>(d+e)))", ">9 a2 +9() b4 >9() c6 +9() d8 e9"},
                    TreeCase{"two in parentheses", "(a>b)+(c>d)", "+7 >4() a3 b4 >7() c6 d7"},
                    TreeCase{"twice in parentheses", "((a+b))>c", ">5 +4() a3 b4 c5"}),
    NameOfRow<TreeCase>);

TEST(DimensionBuilderTest, TakesAnyDepth) {
    constexpr std::size_t kDepth = 100000;
    std::string expression;
    for (std::size_t i = 0; i < kDepth; ++i) expression += i % 2 == 0 ? "a+(" : "a>(";
    expression += "a";
    expression.append(kDepth, ')');
    std::vector<std::size_t> places;
    const Dimension dimension = Build(expression, places);
    EXPECT_EQ(dimension.size(), 2 * kDepth + 1);
    for (std::size_t i = 0; i < dimension.size(); ++i) {
        ASSERT_EQ(dimension[i].end, IsOperator(dimension[i].role) ? dimension.size() : i + 1);
    }
}

}  // namespace
}  // namespace quillet::outline
