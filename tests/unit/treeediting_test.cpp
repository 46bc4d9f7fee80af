#include "translator/treeediting.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "conversionhelper.h"
#include "nodemaking.h"
#include "parser/tbtrnodeviews.h"
#include "translator/variabletypes.h"

namespace quillet {
namespace {

using Node = TbTrParseNode;
using Names = std::vector<std::string>;

std::string LeafText(const Node& leaf) {
    switch (leaf.GetNodeType()) {
        case TB_STATISTICS:
            return "STATISTICS";
        case TB_LABELS:
            return "LABELS";
        default:
            return std::string(SpellingOf(leaf));
    }
}

// "+(a,>(b,c))" for a + (b > c); "-" for nothing.
std::string ShapeText(const Node* pNode) {
    if (!pNode) return "-";
    if (!IsOperator(pNode->GetNodeType())) return LeafText(*pNode);
    std::string text = pNode->GetNodeType() == SP_PLUS ? "+(" : ">(";
    for (std::size_t i = 0; i < pNode->GetChildCount(); ++i) {
        if (i > 0) text += ",";
        text += ShapeText(pNode->GetChild(i));
    }
    return text + ")";
}

// Reads what `TreeText` writes, trees that no parser makes included.
NodeOwner ReadTree(const std::string& text, std::size_t& at) {
    if (text[at] != '+' && text[at] != '>') {
        const std::size_t end = text.find_first_of(",()", at);
        const std::string name = text.substr(at, end == std::string::npos ? end : end - at);
        at += name.size();
        if (name == "STATISTICS") return MakeNode(TestArena(), TB_STATISTICS);
        if (name == "LABELS") return MakeNode(TestArena(), TB_LABELS);
        return MakeVariable(name);
    }
    NodeOwner node = MakeNode(TestArena(), text[at] == '+' ? SP_PLUS : SP_GREATERTHAN);
    ++at;
    while (text[at] != ')') {
        ++at;  // "(" or ","
        if (text[at] == ')') break;
        node->AddChild(ReadTree(text, at));
    }
    ++at;
    return node;
}

NodeOwner ReadTree(const std::string& text) {
    std::size_t at = 0;
    return ReadTree(text, at);
}

// A TABLE subcommand with rows and one more dimension, so that an index is not always 0.
NodeOwner MakeTable(const std::string& rows, const std::string& columns) {
    NodeOwner table = MakeNode(TestArena(), TB_TABLE);
    table->AddChild(ReadTree(rows));
    table->AddChild(ReadTree(columns));
    return table;
}

TEST(TreeEditingTest, ChecksTheShapeOfADimension) {
    struct Case {
        const char* tree;
        Names assertions;
    };
    const Case cases[] = {
        {"a", {}},
        {"+(a,>(b,LABELS),STATISTICS)", {}},
        {"+()", {"pChild->GetChildCount() > 0"}},
        {"+(a,>())", {"pChild->GetChildCount() > 0"}},
        {"+(>(),a)", {"pChild->GetChildCount() > 0"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.tree);
        const AssertionRecorder assertions;
        EXPECT_EQ(HasDimensionShape(*ReadTree(c.tree)), c.assertions.empty());
        EXPECT_EQ(assertions.Texts(), c.assertions);
    }
}

TEST(TreeEditingTest, LeavesAreVariablesOrMarkers) {
    const AssertionRecorder assertions;
    EXPECT_FALSE(HasDimensionShape(*MakeNode(TestArena(), SP_NUMBER)));
    EXPECT_FALSE(HasDimensionShape(*MakeNode(TestArena(), SP_VARNAME)));
    EXPECT_EQ(assertions.Texts(),
              Names({"nodeType==TB_STATISTICS || nodeType==TB_LABELS", "pVarToken"}));
}

TEST(TreeEditingTest, FindsLeavesFromLeftToRight) {
    struct Case {
        const char* tree;
        Names leaves;
    };
    const Case cases[] = {
        {"a", {"a"}},
        {"+(a,b,c)", {"a", "b", "c"}},
        {"+(a,>(b,+(c,d),LABELS),e)", {"a", "b", "c", "d", "LABELS", "e"}},
        {">(>(>(a,b),c),d)", {"a", "b", "c", "d"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.tree);
        const NodeOwner tree = ReadTree(c.tree);
        Names leaves;
        for (const Node* pLeaf : LeavesOf(*tree)) leaves.push_back(LeafText(*pLeaf));
        EXPECT_EQ(leaves, c.leaves);
    }
}

TEST(TreeEditingTest, RemovesLeaves) {
    struct Case {
        const char* name;
        const char* tree;  // leaves that begin with "x" go
        const char* expected;
    };
    const Case cases[] = {
        {"nothing to remove", "+(a,>(b,c))", "+(a,>(b,c))"},
        {"the whole dimension", "x", "-"},
        {"one of two operands", "+(a,x)", "a"},
        {"the other of two operands", "+(x,a)", "a"},
        {"the middle one of three", "+(a,x,b)", "+(a,b)"},
        {"the first of three", "+(x,a,b)", "+(a,b)"},
        {"all but one", "+(x1,x2,a,x3)", "a"},
        {"all operands", "+(x1,x2,x3)", "-"},
        {"an operand of a nesting", ">(a,x,b)", ">(a,b)"},
        {"a useless nesting gives its stacking to the outer one", "+(a,>(x,+(b,c)),d)",
         "+(a,b,c,d)"},
        {"a useless stacking gives its nesting to the outer one", ">(a,+(>(b,c),x),d)",
         ">(a,b,c,d)"},
        {"a useless stacking gives its variable", ">(a,+(b,x))", ">(a,b)"},
        {"an operator of useless operators", "+(>(x1,x2),>(x3,x4),a)", "a"},
        {"everything, deep down", "+(>(x1,+(x2,x3)),x4)", "-"},
        {"several levels at once", ">(a,+(>(b,+(>(c,d),x1)),x2))", ">(a,b,c,d)"},
        {"an operator in front of it", "+(>(a,b),x)", ">(a,b)"},
        {"an operator after it", "+(x,>(a,b))", ">(a,b)"},
        {"operators and leaves in turns", "+(x1,>(a,x2,b),x3,>(c,d),x4)", "+(>(a,b),>(c,d))"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const NodeOwner table = MakeTable("other", c.tree);
        const auto decide = [](const Node& leaf, const LeafPlace&) {
            return LeafText(leaf)[0] == 'x' ? LeafDecision::kRemove : LeafDecision::kKeep;
        };
        ASSERT_TRUE(RemoveLeaves(*table, 1, decide));
        if (Node* pDimension = TableView(*table).Dimension(2)) Flatten(*pDimension);
        EXPECT_EQ(ShapeText(TableView(*table).Dimension(2)), c.expected);
        EXPECT_EQ(ShapeText(TableView(*table).Dimension(1)), "other");
        EXPECT_EQ(table->GetChildCount(), 2u);
    }
}

// What the decider sees of each leaf: parent, siblings.
TEST(TreeEditingTest, ShowsWhereALeafStands) {
    struct Case {
        const char* name;
        const char* tree;
        Names places;
    };
    const Case cases[] = {
        {"the dimension itself", "a", {"a: table - -"}},
        {"a stacking", "+(a,b,c)", {"a: + - b", "b: + a c", "c: + b -"}},
        {"a nesting", ">(a,b)", {"a: > - b", "b: > a -"}},
        {"operators as siblings",
         "+(a,>(b,c),d)",
         {"a: + - >(b,c)", "b: > - c", "c: > b -", "d: + >(b,c) -"}},
        {"removed siblings to the left are gone",
         "+(a,x1,x2,b)",
         {"a: + - x1", "x1: + a x2", "x2: + a b", "b: + a -"}},
        {"siblings to the right are there, whatever becomes of them",
         "+(x1,x2,a)",
         {"x1: + - x2", "x2: + - a", "a: table - -"}},
        {"the last one of a dimension is the dimension",
         "+(x1,x2)",
         {"x1: + - x2", "x2: table - -"}},
        {"the last one of a stacking takes its place",
         ">(a,+(x1,x2),b)",
         {"a: > - +(x1,x2)", "x1: + - x2", "x2: > a b", "b: > a -"}},
        {"a single survivor below", "+(>(a,x1),x2)", {"a: > - x1", "x1: > a -", "x2: + a -"}},
        {"through two levels",
         "+(x1,>(x2,+(x3,a)))",
         {"x1: + - >(x2,+(x3,a))", "x2: > - +(x3,a)", "x3: + - a", "a: table - -"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const NodeOwner table = MakeTable("other", c.tree);
        Names places;
        const auto decide = [&places](const Node& leaf, const LeafPlace& place) {
            std::string text = LeafText(leaf) + ": ";
            text += place.parentType == TB_TABLE  ? "table"
                    : place.parentType == SP_PLUS ? "+"
                                                  : ">";
            text += " " + ShapeText(place.pPrevious) + " " + ShapeText(place.pNext);
            places.push_back(text);
            return LeafText(leaf)[0] == 'x' ? LeafDecision::kRemove : LeafDecision::kKeep;
        };
        ASSERT_TRUE(RemoveLeaves(*table, 1, decide));
        EXPECT_EQ(places, c.places);
    }
}

TEST(TreeEditingTest, StopsWhereTheDeciderFails) {
    for (const char* tree : {"f", "+(a,f,b)", "+(a,>(f,x),b)"}) {
        SCOPED_TRACE(tree);
        const NodeOwner table = MakeTable("other", tree);
        bool stopped = false;
        const auto decide = [&stopped](const Node& leaf, const LeafPlace&) {
            EXPECT_FALSE(stopped);
            stopped = LeafText(leaf) == "f";
            return stopped ? LeafDecision::kFail : LeafDecision::kKeep;
        };
        EXPECT_FALSE(RemoveLeaves(*table, 1, decide));
        EXPECT_TRUE(stopped);
    }
}

TEST(TreeEditingTest, AnOperatorWithOneOperandCannotLoseIt) {
    const AssertionRecorder assertions;
    const NodeOwner table = MakeTable("other", "+(x)");
    const auto decide = [](const Node&, const LeafPlace&) { return LeafDecision::kRemove; };
    EXPECT_FALSE(RemoveLeaves(*table, 1, decide));
    EXPECT_EQ(assertions.Texts(), Names({"pParent->GetChildCount() > 1"}));
}

TEST(TreeEditingTest, Flattens) {
    struct Case {
        const char* tree;
        const char* expected;
    };
    const Case cases[] = {
        {"a", "a"},
        {"+(a,b)", "+(a,b)"},
        {"+(a,+(b,c))", "+(a,b,c)"},
        {"+(+(a,b),c)", "+(a,b,c)"},
        {"+(+(a,+(b,c)),+(d,e))", "+(a,b,c,d,e)"},
        {">(>(a,b),>(c,>(d,e)))", ">(a,b,c,d,e)"},
        {"+(a,>(b,c))", "+(a,>(b,c))"},
        {"+(a,>(b,>(c,d)),+(e,>(f,>(g,h))))", "+(a,>(b,c,d),e,>(f,g,h))"},
        {">(a,+(b,+(c,>(d,>(e,f)))))", ">(a,+(b,c,>(d,e,f)))"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.tree);
        const NodeOwner tree = ReadTree(c.tree);
        Flatten(*tree);
        EXPECT_EQ(ShapeText(tree.get()), c.expected);
    }
}

TEST(TreeEditingTest, MultipliesNestingsOutOverStackings) {
    struct Case {
        const char* tree;
        Names terms;
    };
    const Case cases[] = {
        {"a", {"a"}},
        {"+(a,b)", {"a", "b"}},
        {">(a,b)", {"a>b"}},
        {">(+(a,b),c)", {"a>c", "b>c"}},
        {">(c,+(a,b))", {"c>a", "c>b"}},
        {">(a,+(b,c),d)", {"a>b>d", "a>c>d"}},
        {">(+(a,b),+(c,d))", {"a>c", "a>d", "b>c", "b>d"}},
        {">(a,+(b,>(c,+(d,e))))", {"a>b", "a>c>d", "a>c>e"}},
        {">(+(>(a,+(b,c)),d),e)", {"a>b>e", "a>c>e", "d>e"}},
        {"+(a,>(+(b,c),d),e)", {"a", "b>d", "c>d", "e"}},
        {">(+(a,b),+(c,d),+(e,f))",
         {"a>c>e", "a>c>f", "a>d>e", "a>d>f", "b>c>e", "b>c>f", "b>d>e", "b>d>f"}},
        {"+(>(a,+(b,c)),>(d,+(e,f)))", {"a>b", "a>c", "d>e", "d>f"}},
        {"+(+(a,b),c)", {"a", "b", "c"}},
        {"+(a)", {"a"}},
        {">(a,>(b))", {"a>b"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.tree);
        const NodeOwner tree = ReadTree(c.tree);
        Names terms;
        std::size_t leafCount = 0;
        MultipliedTerms multiplied(*tree);
        while (multiplied.Next()) {
            std::string term;
            for (const Node* pLeaf : multiplied.Leaves()) {
                term += (term.empty() ? "" : ">") + LeafText(*pLeaf);
            }
            terms.push_back(term);
            leafCount += multiplied.Leaves().size();
        }
        EXPECT_FALSE(multiplied.Next());
        EXPECT_EQ(terms, c.terms);
        EXPECT_EQ(MultipliedLeafCount(*tree, 1000), leafCount);
        EXPECT_EQ(MultipliedLeafCount(*tree, leafCount), leafCount);
        EXPECT_GT(MultipliedLeafCount(*tree, leafCount - 1), leafCount - 1);
    }
}

TEST(TreeEditingTest, CountsWhatCouldNeverBeBuilt) {
    std::string tree = ">(";
    for (int i = 0; i < 200; ++i) tree += std::string(i > 0 ? "," : "") + "+(a,b,c,d,e,f,g,h,i,j)";
    tree += ")";
    EXPECT_GT(MultipliedLeafCount(*ReadTree(tree), 1000000), 1000000u);
}

}  // namespace
}  // namespace quillet
