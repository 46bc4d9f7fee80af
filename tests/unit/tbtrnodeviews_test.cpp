#include "parser/tbtrnodeviews.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "conversionhelper.h"
#include "tablesparsing.h"

namespace quillet {
namespace {

using tablesparsing::TreeText;
using Texts = std::vector<std::string>;

NodeOwner Variable(const char* name) { return MakeVariable(name); }

TEST(NodeViewsTest, ChildrenComeInOrder) {
    const NodeOwner list = MakeListNode(TestArena(), TBI_GENERICLIST);
    list->AddChild(Variable("a"));
    list->AddChild(Variable("c"));
    list->AddChild(Variable("b"));
    std::vector<const TbTrParseNode*> seen;
    for (const TbTrParseNode* pChild : ChildrenOf(*list)) seen.push_back(pChild);
    EXPECT_EQ(seen, (std::vector<const TbTrParseNode*>{list->GetChild(0), list->GetChild(1),
                                                       list->GetChild(2)}));
    EXPECT_EQ(NodeChildren::After(*list, *list->GetChild(0)).Count(), 2U);
    EXPECT_TRUE(NodeChildren::After(*list, *list->GetChild(2)).IsEmpty());
    EXPECT_EQ(ChildrenOf(*list).Count(), 3U);
    EXPECT_EQ(NodeChildren(list.get(), 2).Count(), 1U);
    EXPECT_TRUE(NodeChildren(list.get(), 3).IsEmpty());
    EXPECT_TRUE(NodeChildren(list.get(), 4).IsEmpty());
    EXPECT_TRUE(NodeChildren(nullptr).IsEmpty());
}

// What the views make is what the grammar's trees have been made of: a tree that is put together
// by hand reads like that of the command.
TEST(NodeViewsTest, MakeWhatTheyRead) {
    ParsedCommand parsed(
        "TABLES /FTOTAL t 'l' /TABLE a + t BY b /STATISTICS U PTILE 5 (a (F5) 'm' :b)");
    ASSERT_TRUE(parsed.Parsed());
    const CommandView command(parsed.Root());
    ASSERT_TRUE(command.HasShape());
    ASSERT_TRUE(command.HasShapeForSets());
    ASSERT_EQ(command.TableGroups().Count(), 1U);
    const auto group = TableGroupView::Of(*command.TableGroups().begin());
    ASSERT_TRUE(group.has_value());
    EXPECT_TRUE(TableView(*group->Table()).HasShape());
    EXPECT_EQ(TreeText(TableView(*group->Table()).Dimension(1)), "PLUS(a t)");
    EXPECT_EQ(TreeText(TableView(*group->Table()).Dimension(2)), "b");
    EXPECT_EQ(TableView(*group->Table()).Dimension(3), nullptr);
    const auto function = StatFunctionView::Of(*ChildrenOf(*group->First(TB_STATISTICS)).begin());
    ASSERT_TRUE(function.has_value());
    EXPECT_EQ(function->Name().Text(false), "PTILE");
    EXPECT_EQ(function->Number()->Text(true), "5");
    EXPECT_TRUE(function->IsUnweighted());
    ASSERT_TRUE(function->HasBaseNames());
    EXPECT_EQ(TreeText(*function->BaseNames().begin()), "b");
    ASSERT_EQ(function->Arguments().Count(), 1U);
    const auto argument = StatArgumentView::Of(*function->Arguments().begin());
    ASSERT_TRUE(argument.has_value());
    EXPECT_EQ(TreeText(argument->Variable()), "a");
    EXPECT_EQ(argument->Format()->Text(true), "F5");
    EXPECT_EQ(argument->Label()->Text(false), "m");
    const auto total =
        TotalView::Of(**ChildrenOf(**NodeChildren(command.Globals()).begin()).begin(), TB_FTOTAL);
    ASSERT_TRUE(total.has_value());
    EXPECT_EQ(total->Label()->Text(false), "l");
    EXPECT_EQ(total->Type(), TB_FTOTAL);
}

TEST(NodeViewsTest, JoinOperandsInOneChain) {
    const auto chain = [](const char* left, const char* right) {
        return OperatorView::Join(TestArena(), SP_PLUS, Variable(left), Variable(right));
    };
    EXPECT_EQ(TreeText(chain("a", "b").get()), "PLUS(a b)");
    EXPECT_EQ(
        TreeText(OperatorView::Join(TestArena(), SP_PLUS, chain("a", "b"), Variable("c")).get()),
        "PLUS(a b c)");
    EXPECT_EQ(
        TreeText(OperatorView::Join(TestArena(), SP_PLUS, Variable("c"), chain("a", "b")).get()),
        "PLUS(c a b)");
    EXPECT_EQ(
        TreeText(OperatorView::Join(TestArena(), SP_PLUS, chain("a", "b"), chain("c", "d")).get()),
        "PLUS(a b c d)");
    EXPECT_EQ(
        TreeText(
            OperatorView::Join(TestArena(), SP_GREATERTHAN, chain("a", "b"), Variable("c")).get()),
        "GREATERTHAN(PLUS(a b) c)");
    EXPECT_EQ(TreeText(OperatorView::Join(TestArena(), SP_PLUS, nullptr, Variable("c")).get()),
              "PLUS(c)");
}

TEST(NodeViewsTest, FindTheFirstAndTheLastSubcommand) {
    ParsedCommand parsed("TABLES /TABLE a /TITLE 'x'/CORNER 'y'/TITLE 'z'");
    const TbTrParseNode& node = parsed.Group();
    const TableGroupView group(node);
    EXPECT_EQ(group.First(TB_TITLE), node.GetChild(1));
    EXPECT_EQ(group.Last(TB_TITLE), node.GetChild(3));
    EXPECT_EQ(group.First(TB_CORNER), node.GetChild(2));
    EXPECT_EQ(group.Last(TB_CORNER), node.GetChild(2));
    EXPECT_EQ(group.First(TB_SORT), nullptr);
    EXPECT_EQ(group.Last(TB_SORT), nullptr);
    EXPECT_EQ(group.First(TB_TABLE), nullptr);
    EXPECT_EQ(group.Last(TB_TABLE), nullptr);
}

TEST(NodeViewsTest, FillAPlaceOnce) {
    const AssertionRecorder assertions;
    const NodeOwner sort = MakeListNode(TestArena(), TB_SORT);
    SortView::SetDirection(*sort, MakeNode(TestArena(), TB_ASCENDING));
    EXPECT_TRUE(SortView(*sort).IsAscending());
    SortView::SetDirection(*sort, MakeNode(TestArena(), TB_DESCENDING));
    EXPECT_FALSE(SortView(*sort).IsAscending());
    const NodeOwner function = StatFunctionView::Make(TestArena(), nullptr, nullptr);
    StatFunctionView::SetUnweighted(*function, MakeNode(TestArena(), TB_UNWEIGHTED));
    StatFunctionView::SetUnweighted(*function, MakeNode(TestArena(), TB_UNWEIGHTED));
    const NodeOwner argument =
        StatArgumentView::Make(TestArena(), nullptr, MakeNode(TestArena(), SP_SLITERAL));
    StatArgumentView::SetVariable(*argument, Variable("a"));
    StatArgumentView::SetVariable(*argument, Variable("b"));
    EXPECT_EQ(TreeText(argument.get()), "STATFUNCARG(b )");
    EXPECT_EQ(assertions.Texts(),
              (Texts{"pExistingChild == 0", "pOldChild == 0", "pOldChild == 0"}));
}

TEST(NodeViewsTest, ChecksTheShapeOfATable) {
    struct Case {
        const char* name;
        void (*damage)(TbTrParseNode& table);
        std::vector<std::string> assertions;
    };
    const Case cases[] = {
        {"good", [](TbTrParseNode&) {}, {}},
        {"an empty dimension",
         [](TbTrParseNode& table) { TableView::EmptyDimension(table, 0); },
         {}},
        {"no table",
         [](TbTrParseNode& table) { table.SetNodeType(TB_TITLE); },
         {"tableSubcommand.GetNodeType() == TB_TABLE"}},
        {"no dimensions",
         [](TbTrParseNode& table) {
             while (table.GetChildCount() > 0) table.RemoveChild(0);
         },
         {"0 < nDim && nDim <= 3"}},
        {"four dimensions",
         [](TbTrParseNode& table) { table.AddChild(Variable("d")); },
         {"0 < nDim && nDim <= 3"}},
        {"a bad second dimension",
         [](TbTrParseNode& table) {
             table.GetChild(1)->SetNodeType(SP_PLUS);
             table.GetChild(1)->RemoveChild(0);
             table.GetChild(1)->RemoveChild(0);
         },
         {"pChild->GetChildCount() > 0"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const AssertionRecorder assertions;
        ParsedCommand parsed("TABLES /TABLE a BY b BY c");
        c.damage(parsed.Table());
        EXPECT_EQ(TableView(parsed.Table()).HasShape(), c.assertions.empty());
        EXPECT_EQ(assertions.Texts(), c.assertions);
    }
}

}  // namespace
}  // namespace quillet
