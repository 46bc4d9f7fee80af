#include "parser/tbtrparsenode.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tablesparsing.h"

namespace quillet {
namespace {

std::unique_ptr<TAVQToken> NodeToken(const std::string& text) {
    return std::make_unique<TAVQStringToken>(text.data(), text.data() + text.size(), 1, 7, text,
                                             TokenCodes::kNotOperator);
}

std::unique_ptr<TAVQToken> Literal(const std::string& value) {
    const std::string text = "'" + value + "'";
    return std::make_unique<TAVQLiteralToken>(text.data(), text.data() + text.size(), 1, 7, value);
}

std::unique_ptr<TbTrParseNode> Variable(const std::string& name) {
    std::unique_ptr<TAVQToken> token = NodeToken(name);
    return MakeVarNameNode(token);
}

std::string Children(const TbTrParseNode& node) {
    std::string text;
    for (std::size_t index = 0; index < node.GetChildCount(); ++index) {
        const TbTrParseNode* pChild = node.GetChild(index);
        if (pChild && pChild->GetParent() != &node) text += "!";
        text += pChild ? pChild->GetToken()->Text(true) : "-";
    }
    return text;
}

std::unique_ptr<TbTrParseNode> ListOf(std::string_view names) {
    std::unique_ptr<TbTrParseNode> list = MakeNode(TBI_GENERICLIST, nullptr);
    for (const char name : names) {
        list->AddChild(name == '-' ? nullptr : Variable(std::string(1, name)));
    }
    return list;
}

// The grammar checks the numbers of its own codes.
TEST(TbTrParseNodeTest, EveryCodeHasANumberOfItsOwn) {
    unsigned next = SP_SLITERAL;
#define QUILLET_TOKEN(code, number) EXPECT_EQ(next++, static_cast<unsigned>(code)) << #code;
#include "parser/tbtrcodes.def"
    EXPECT_LE(next, 500U);

    std::set<unsigned> numbers = {500, 510};
#define QUILLET_NODE(code, number)  \
    EXPECT_GE(code, 500U) << #code; \
    EXPECT_TRUE(numbers.insert(code).second) << #code;
#include "parser/tbtrcodes.def"
    EXPECT_EQ(TBI_VARLIST, 501U);
    EXPECT_EQ(TBI_PTOTALVAR, 512U);
}

TEST(TbTrParseNodeTest, InstallingGivesThePreviousBack) {
    TbTrParseNode parent(TBI_GENERICLIST);
    TbTrParseNode node(SP_VARNAME, NodeToken("a"));
    EXPECT_EQ(node.GetNodeType(), SP_VARNAME);
    node.SetNodeType(TBI_FTOTALVAR);
    EXPECT_EQ(node.GetNodeType(), TBI_FTOTALVAR);

    const std::unique_ptr<TAVQToken> old = node.SetToken(NodeToken("b"));
    ASSERT_NE(old, nullptr);
    EXPECT_EQ(old->Text(true), "a");
    EXPECT_EQ(node.GetToken()->Text(true), "b");
    EXPECT_EQ(node.SetToken(nullptr)->Text(true), "b");
    EXPECT_EQ(node.GetToken(), nullptr);

    EXPECT_EQ(node.GetParent(), nullptr);
    EXPECT_EQ(node.SetParent(&parent), nullptr);
    EXPECT_EQ(node.GetParent(), &parent);
    EXPECT_EQ(node.SetParent(nullptr), &parent);
}

TEST(TbTrParseNodeTest, ReplaceChildDetachesTheOldAndAttachesTheNew) {
    const std::unique_ptr<TbTrParseNode> list = ListOf("abc");
    const std::unique_ptr<TbTrParseNode> old = list->ReplaceChild(1, Variable("x"));
    ASSERT_NE(old, nullptr);
    EXPECT_EQ(old->GetToken()->Text(true), "b");
    EXPECT_EQ(old->GetParent(), nullptr);
    EXPECT_EQ(Children(*list), "axc");

    EXPECT_NE(list->ReplaceChild(0, nullptr), nullptr);
    EXPECT_EQ(Children(*list), "-xc");
    EXPECT_EQ(list->ReplaceChild(0, Variable("y")), nullptr);
    EXPECT_EQ(Children(*list), "yxc");
}

TEST(TbTrParseNodeTest, ThereIsNothingToReplaceBeyondTheEnd) {
    const std::unique_ptr<TbTrParseNode> list = ListOf("ab");
    EXPECT_EQ(list->ReplaceChild(2, Variable("x")), nullptr);
    EXPECT_EQ(list->RemoveChild(2), nullptr);
    EXPECT_EQ(list->GetChild(2), nullptr);
    EXPECT_EQ(Children(*list), "ab");
}

TEST(TbTrParseNodeTest, RemoveChildClosesTheGap) {
    struct Case {
        const char* name;
        std::size_t index;
        const char* removed;
        const char* left;
    };
    const Case cases[] = {
        {"first", 0, "a", "b-d"},
        {"in the middle", 1, "b", "a-d"},
        {"an empty slot", 2, nullptr, "abd"},
        {"last", 3, "d", "ab-"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::unique_ptr<TbTrParseNode> list = ListOf("ab-d");
        const std::unique_ptr<TbTrParseNode> removed = list->RemoveChild(c.index);
        EXPECT_EQ(removed == nullptr, c.removed == nullptr);
        if (removed) {
            EXPECT_EQ(removed->GetToken()->Text(true), c.removed);
            EXPECT_EQ(removed->GetParent(), nullptr);
        }
        EXPECT_EQ(Children(*list), c.left);
    }
}

TEST(TbTrParseNodeTest, InsertNullChildren) {
    struct Case {
        const char* name;
        std::size_t index;
        std::size_t count;
        std::size_t inserted;
        const char* expected;
    };
    const Case cases[] = {
        {"in front", 0, 2, 2, "--abc"},    {"in the middle", 2, 3, 3, "ab---c"},
        {"at the end", 3, 3, 3, "abc---"}, {"after the end", 4, 3, 0, "abc"},
        {"none", 1, 0, 0, "abc"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::unique_ptr<TbTrParseNode> list = ListOf("abc");
        EXPECT_EQ(list->InsertNullChildren(c.index, c.count), c.inserted);
        EXPECT_EQ(Children(*list), c.expected);
    }
}

// The slots in front are kept in spare room; every operation has to count from after it.
TEST(TbTrParseNodeTest, SpareRoomInFrontIsInvisible) {
    const std::unique_ptr<TbTrParseNode> list = ListOf("abc");
    list->InsertNullChildren(0, 1);
    list->ReplaceChild(0, Variable("x"));
    EXPECT_EQ(Children(*list), "xabc");
    EXPECT_EQ(list->GetChildCount(), 4U);
    EXPECT_EQ(list->IndexOfChild(list->GetChild(2)), 2U);
    EXPECT_EQ(list->IndexOfChild(nullptr), TbTrParseNode::kNotFound);

    list->InsertNullChildren(2, 1);
    EXPECT_EQ(Children(*list), "xa-bc");
    list->RemoveChild(0);
    list->RemoveChild(0);
    list->RemoveChild(1);
    EXPECT_EQ(Children(*list), "-c");
    list->InsertNullChildren(0, 5);
    list->AddChild(Variable("d"));
    EXPECT_EQ(Children(*list), "------cd");
    list->InsertNullChildren(8, 1);
    EXPECT_EQ(Children(*list), "------cd-");

    const std::unique_ptr<TbTrParseNode> copy = CloneNode(*list);
    EXPECT_EQ(Children(*copy), "------cd-");
    while (list->GetChildCount() > 0) list->RemoveChild(0);
    EXPECT_EQ(list->GetChild(0), nullptr);
    list->AddChild(Variable("e"));
    EXPECT_EQ(Children(*list), "e");
}

TEST(TbTrParseNodeTest, GrowingInFrontIsCheap) {
    const std::unique_ptr<TbTrParseNode> list = MakeNode(TBI_GENERICLIST, nullptr);
    constexpr std::size_t kCount = 300'000;
    // Moving everything each time would take tens of thousands of million steps.
    for (std::size_t index = 0; index < kCount; ++index) {
        list->InsertNullChildren(0, 1);
        list->ReplaceChild(0, MakeNode(TBI_FMT, nullptr));
    }
    EXPECT_EQ(list->GetChildCount(), kCount);
    for (std::size_t index = 0; index < kCount; ++index) list->RemoveChild(0);
    EXPECT_EQ(list->GetChildCount(), 0U);
}

TEST(TbTrParseNodeTest, IndexOfChild) {
    const std::unique_ptr<TbTrParseNode> list = ListOf("ab-");
    EXPECT_EQ(list->IndexOfChild(list->GetChild(1)), 1U);
    EXPECT_EQ(list->IndexOfChild(nullptr), 2U);
    EXPECT_EQ(list->IndexOfChild(list.get()), 0xFFFFFFFFU);
    EXPECT_EQ(MakeNode(TBI_VARLIST, nullptr)->IndexOfChild(list.get()), 0xFFFFFFFFU);
    // An empty slot twice: the first position.
    EXPECT_EQ(ListOf("a--")->IndexOfChild(nullptr), 1U);
}

TEST(TbTrParseNodeTest, MakeKeywordNodeKnowsTheSettings) {
    const std::set<NodeType> settings = {
        TB_DEFAULT,   TB_ON,         TB_OFF,        TB_ANSWERING,  TB_QUALIFIED, SP_ALL,
        TB_CASES,     TB_RESPONSES,  TB_EXCLUDE,    TB_INCLUDE,    TB_BLANK,     TB_ZERO,
        TB_ASCENDING, TB_DESCENDING, TB_UNWEIGHTED, TB_STATISTICS, TB_LABELS};
    ASSERT_EQ(settings.size(), 17U);
    for (unsigned code = SP_SLITERAL; code <= TBI_PTOTALVAR; ++code) {
        SCOPED_TRACE(code);
        const auto type = static_cast<NodeType>(code);
        std::unique_ptr<TAVQToken> token = NodeToken("w");
        const std::unique_ptr<TbTrParseNode> node = MakeKeywordNode(type, token);
        if (settings.count(type) > 0) {
            ASSERT_NE(node, nullptr);
            EXPECT_EQ(node->GetNodeType(), type);
            EXPECT_EQ(node->GetToken(), nullptr);
            EXPECT_EQ(node->GetChildCount(), 0U);
            EXPECT_EQ(token, nullptr);
        } else {
            EXPECT_EQ(node, nullptr);
            EXPECT_NE(token, nullptr);
        }
    }
}

TEST(TbTrParseNodeTest, MakeLiteralNodeTakesLiteralsAlone) {
    std::unique_ptr<TAVQToken> literal = Literal("x");
    const std::unique_ptr<TbTrParseNode> node = MakeLiteralNode(literal);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->GetNodeType(), SP_SLITERAL);
    EXPECT_EQ(node->GetToken()->Text(false), "x");
    EXPECT_EQ(node->GetChildCount(), 0U);
    EXPECT_EQ(literal, nullptr);

    std::unique_ptr<TAVQToken> word = NodeToken("x");
    EXPECT_EQ(MakeLiteralNode(word), nullptr);
    EXPECT_NE(word, nullptr);
    std::unique_ptr<TAVQToken> none;
    EXPECT_EQ(MakeLiteralNode(none), nullptr);
}

TEST(TbTrParseNodeTest, AVariableHasTwoEmptySlots) {
    AssertionRecorder assertions;
    std::unique_ptr<TAVQToken> word = NodeToken("x");
    const std::unique_ptr<TbTrParseNode> node = MakeVarNameNode(word);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->GetNodeType(), SP_VARNAME);
    EXPECT_EQ(node->GetChildCount(), 2U);
    EXPECT_EQ(node->GetChild(0), nullptr);
    EXPECT_EQ(node->GetChild(1), nullptr);
    EXPECT_TRUE(assertions.Texts().empty());

    std::unique_ptr<TAVQToken> literal = Literal("x");
    EXPECT_EQ(MakeVarNameNode(literal), nullptr);
    EXPECT_NE(literal, nullptr);
    std::unique_ptr<TAVQToken> none;
    EXPECT_EQ(MakeVarNameNode(none), nullptr);
}

TEST(TbTrParseNodeTest, ARangeKeepsTheEndsItCanUse) {
    struct Case {
        const char* name;
        bool fromIsWord;
        bool toIsWord;
    };
    const Case cases[] = {{"both", true, true},
                          {"first", true, false},
                          {"second", false, true},
                          {"neither", false, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::unique_ptr<TAVQToken> from = c.fromIsWord ? NodeToken("a") : Literal("a");
        std::unique_ptr<TAVQToken> to = c.toIsWord ? NodeToken("b") : Literal("b");
        const std::unique_ptr<TbTrParseNode> range = MakeVarRangeNode(from, to);
        EXPECT_EQ(range != nullptr, c.fromIsWord || c.toIsWord);
        if (!range) continue;
        EXPECT_EQ(range->GetNodeType(), TBI_VARRANGE);
        EXPECT_EQ(Children(*range),
                  std::string(c.fromIsWord ? "a" : "-") + (c.toIsWord ? "b" : "-"));
    }
}

TEST(TbTrParseNodeTest, CloneCopiesTokensAndEmptySlots) {
    std::unique_ptr<TbTrParseNode> root = ListOf("a-b");
    root->GetChild(0)->ReplaceChild(1, Variable("c"));
    root->AddChild(ListOf("-"));
    const std::unique_ptr<TbTrParseNode> outer = MakeNode(TBI_GENERICLIST, nullptr);
    TbTrParseNode* pRoot = root.get();
    outer->AddChild(std::move(root));

    const std::unique_ptr<TbTrParseNode> copy = CloneNode(*pRoot);
    EXPECT_EQ(copy->GetParent(), nullptr);
    EXPECT_EQ(tablesparsing::TreeText(copy.get()), "LIST(a[- c] - b LIST(-))");
    EXPECT_NE(copy->GetChild(0)->GetToken(), pRoot->GetChild(0)->GetToken());
}

TEST(TbTrParseNodeTest, DumpIndentsAndStartsAgainWhenTooDeep) {
    const std::unique_ptr<TbTrParseNode> list = ListOf("a-");
    struct Case {
        unsigned indent;
        const char* expected;
    };
    const Case cases[] = {
        {0, "--Node type:\t505\n\t--Node type:\t260\n\tkString\t1:7\tkNotOperator\ta\n"},
        {1, "\t--Node type:\t505\n\t\t--Node type:\t260\n\t\tkString\t1:7\tkNotOperator\ta\n"},
        {25, "--Node type:\t505\n\t--Node type:\t260\n\tkString\t1:7\tkNotOperator\ta\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.indent);
        std::ostringstream stream;
        list->Dump(stream, c.indent);
        EXPECT_EQ(stream.str(), c.expected);
    }
    std::ostringstream atTheLimit;
    list->Dump(atTheLimit, 20);
    EXPECT_EQ(atTheLimit.str(), std::string(20, '\t') +
                                    "--Node type:\t505\n--Node type:\t260\n"
                                    "kString\t1:7\tkNotOperator\ta\n");
}

TEST(TbTrParseNodeTest, DumpWritesChildrenInOrder) {
    std::ostringstream stream;
    const std::unique_ptr<TbTrParseNode> list = MakeNode(TBI_GENERICLIST, nullptr);
    list->AddChild(MakeNode(TB_TABLE, nullptr));
    list->AddChild(nullptr);
    list->AddChild(MakeNode(TB_SORT, nullptr));
    list->GetChild(0)->AddChild(MakeNode(TBI_FMT, nullptr));
    list->Dump(stream, 0);
    EXPECT_EQ(stream.str(),
              "--Node type:\t505\n\t--Node type:\t302\n\t\t--Node type:\t509\n"
              "\t--Node type:\t295\n");
}

// Whoever sets parents by hand must not lead the destruction astray.
TEST(TbTrParseNodeTest, DestructionDoesNotTrustTheParents) {
    std::unique_ptr<TbTrParseNode> root = ListOf("a");
    std::unique_ptr<TbTrParseNode> inner = ListOf("bc");
    TbTrParseNode* pInner = inner.get();
    root->AddChild(std::move(inner));
    pInner->SetParent(nullptr);
    EXPECT_EQ(root->GetChild(1), pInner);
    root.reset();
    EXPECT_EQ(root, nullptr);
}

// Far deeper than any stack that the tests run on.
TEST(TbTrParseNodeTest, DeepTreesNeedNoStack) {
    constexpr std::size_t kDepth = 200'000;
    std::unique_ptr<TbTrParseNode> root = MakeNode(TBI_GENERICLIST, nullptr);
    for (std::size_t level = 1; level < kDepth; ++level) {
        std::unique_ptr<TbTrParseNode> outer = MakeNode(TBI_GENERICLIST, nullptr);
        outer->AddChild(nullptr);
        outer->AddChild(std::move(root));
        outer->AddChild(MakeNode(TBI_FMT, nullptr));
        root = std::move(outer);
    }
    std::unique_ptr<TbTrParseNode> copy = CloneNode(*root);
    root.reset();

    std::size_t depth = 1;
    for (const TbTrParseNode* pNode = copy.get(); pNode->GetChild(1); pNode = pNode->GetChild(1)) {
        ++depth;
    }
    EXPECT_EQ(depth, kDepth);
    std::ostringstream stream;
    copy->Dump(stream, 0);
    const std::string listing = stream.str();
    EXPECT_EQ(std::count(listing.begin(), listing.end(), '\n'),
              static_cast<std::ptrdiff_t>(2 * kDepth - 1));
}

}  // namespace
}  // namespace quillet
