#include "parser/tbtrparsenode.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "nodemaking.h"
#include "tablesparsing.h"

namespace quillet {
namespace {

std::string Children(const TbTrParseNode& node) {
    std::string text;
    for (std::size_t index = 0; index < node.GetChildCount(); ++index) {
        text += node.GetChild(index)->GetToken()->Text(true);
    }
    // The links say the same as the numbers.
    std::string linked;
    for (const TbTrParseNode* pChild = node.FirstChild(); pChild;
         pChild = node.ChildAfter(*pChild)) {
        linked += pChild->GetToken()->Text(true);
    }
    EXPECT_EQ(linked, text);
    EXPECT_EQ(node.HasChildren(), !text.empty());
    const std::string last = text.empty() ? "" : text.substr(text.size() - 1);
    EXPECT_EQ(node.LastChild() ? node.LastChild()->GetToken()->Text(true) : "", last);
    return text;
}

NodeOwner ListOf(std::string_view names) {
    NodeOwner list = MakeNode(TestArena(), TBI_GENERICLIST);
    for (const char name : names) {
        list->AddChild(MakeVariable(std::string(1, name)));
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

TEST(TbTrParseNodeTest, KeepsTypeAndToken) {
    TbTrParseNode node(SP_VARNAME, MakeWord("a"));
    EXPECT_EQ(node.GetNodeType(), SP_VARNAME);
    EXPECT_EQ(node.GetToken()->Text(true), "a");
    node.SetNodeType(TBI_FTOTALVAR);
    EXPECT_EQ(node.GetNodeType(), TBI_FTOTALVAR);
    EXPECT_EQ(node.GetToken()->Text(true), "a");
    node.SetToken(MakeWord("b"));
    EXPECT_EQ(node.GetToken()->Text(true), "b");
    EXPECT_EQ(node.GetNodeType(), TBI_FTOTALVAR);
    node.SetToken({});
    EXPECT_EQ(node.GetToken(), nullptr);
    EXPECT_EQ(node.GetNodeType(), TBI_FTOTALVAR);
}

TEST(TbTrParseNodeTest, ChildrenComeAtEitherEnd) {
    const NodeOwner list = ListOf("");
    EXPECT_EQ(Children(*list), "");
    EXPECT_EQ(list->FirstChild(), nullptr);
    EXPECT_EQ(list->LastChild(), nullptr);
    EXPECT_EQ(list->GetChild(0), nullptr);
    list->AddFirstChild(MakeVariable("b"));
    EXPECT_EQ(Children(*list), "b");
    list->AddFirstChild(MakeVariable("a"));
    list->AddChild(MakeVariable("c"));
    EXPECT_EQ(Children(*list), "abc");
    list->AddChild(nullptr);
    list->AddFirstChild(nullptr);
    EXPECT_EQ(Children(*list), "abc");
}

TEST(TbTrParseNodeTest, ChildrenMoveAllAtOnce) {
    struct Case {
        const char* left;
        const char* right;
    };
    for (const Case& c : {Case{"", ""}, {"a", ""}, {"", "b"}, {"a", "b"}, {"abc", "de"}}) {
        SCOPED_TRACE(std::string(c.left) + "|" + c.right);
        for (const bool isFirst : {false, true}) {
            const NodeOwner to = ListOf(isFirst ? c.right : c.left);
            const NodeOwner from = ListOf(isFirst ? c.left : c.right);
            if (isFirst) {
                to->TakeChildrenFirst(*from);
            } else {
                to->TakeChildren(*from);
            }
            EXPECT_EQ(Children(*to), std::string(c.left) + c.right);
            EXPECT_EQ(Children(*from), "");
        }
    }
}

TEST(TbTrParseNodeTest, ReplaceChildGivesTheOldOneBack) {
    struct Case {
        const char* name;
        const char* list;
        std::size_t index;
        const char* expected;
    };
    const Case cases[] = {{"the first", "abc", 0, "xbc"},
                          {"in the middle", "abc", 1, "axc"},
                          {"the last", "abc", 2, "abx"},
                          {"the first of two", "ab", 0, "xb"},
                          {"the only one", "a", 0, "x"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const NodeOwner list = ListOf(c.list);
        const NodeOwner old = list->ReplaceChild(c.index, MakeVariable("x"));
        ASSERT_NE(old, nullptr);
        EXPECT_EQ(old->GetToken()->Text(true), std::string(1, c.list[c.index]));
        EXPECT_EQ(Children(*list), c.expected);
        // What was taken out may come in again.
        list->AddChild(NodeOwner(old.get()));
        EXPECT_EQ(Children(*list), std::string(c.expected) + c.list[c.index]);
    }
}

TEST(TbTrParseNodeTest, ThereIsNothingToReplaceBeyondTheEnd) {
    const NodeOwner list = ListOf("ab");
    EXPECT_EQ(list->ReplaceChild(2, MakeVariable("x")), nullptr);
    EXPECT_EQ(list->RemoveChild(2), nullptr);
    EXPECT_EQ(list->GetChild(2), nullptr);
    EXPECT_EQ(Children(*list), "ab");
    EXPECT_EQ(ListOf("")->RemoveChild(0), nullptr);
    EXPECT_EQ(ListOf("")->RemoveChild(1), nullptr);
}

TEST(TbTrParseNodeTest, NothingIsNoReplacement) {
    const AssertionRecorder assertions;
    const NodeOwner list = ListOf("ab");
    EXPECT_EQ(list->ReplaceChild(0, nullptr), nullptr);
    EXPECT_EQ(Children(*list), "ab");
    EXPECT_EQ(assertions.Texts(), std::vector<std::string>{"node"});
}

TEST(TbTrParseNodeTest, RemoveChildClosesTheGap) {
    struct Case {
        const char* name;
        std::size_t index;
        const char* removed;
        const char* left;
    };
    const Case cases[] = {
        {"first", 0, "a", "bcd"},
        {"in the middle", 1, "b", "acd"},
        {"last", 3, "d", "abc"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const NodeOwner list = ListOf("abcd");
        const NodeOwner removed = list->RemoveChild(c.index);
        ASSERT_NE(removed, nullptr);
        EXPECT_EQ(removed->GetToken()->Text(true), c.removed);
        EXPECT_EQ(Children(*list), c.left);
    }
    const NodeOwner list = ListOf("ab");
    list->RemoveChild(1);
    list->RemoveChild(0);
    EXPECT_EQ(Children(*list), "");
    list->AddChild(MakeVariable("c"));
    EXPECT_EQ(Children(*list), "c");
}

TEST(TbTrParseNodeTest, ADissolvedChildGivesItsPlaceToItsChildren) {
    struct Case {
        const char* list;
        std::size_t index;
        const char* inner;
        const char* expected;
    };
    const Case cases[] = {{"abc", 0, "xy", "xybc"}, {"abc", 1, "xy", "axyc"},
                          {"abc", 2, "xy", "abxy"}, {"ab", 0, "x", "xb"},
                          {"ab", 1, "x", "ax"},     {"a", 0, "xyz", "xyz"},
                          {"a", 0, "x", "x"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.list) + c.inner);
        const NodeOwner list = ListOf(c.list);
        TbTrParseNode& child = *list->GetChild(c.index);
        for (const char name : std::string_view(c.inner)) {
            child.AddChild(MakeVariable(std::string(1, name)));
        }
        list->DissolveChild(c.index > 0 ? list->GetChild(c.index - 1) : nullptr, child);
        EXPECT_EQ(Children(*list), c.expected);
    }
    const AssertionRecorder assertions;
    const NodeOwner list = ListOf("ab");
    list->DissolveChild(nullptr, *list->GetChild(0));
    EXPECT_EQ(Children(*list), "ab");
    EXPECT_EQ(assertions.Texts(), std::vector<std::string>{"child.HasChildren()"});
}

TEST(TbTrParseNodeTest, FindChildGivesTheFirstOfItsType) {
    const NodeOwner list = MakeNode(TestArena(), TBI_GENERICLIST);
    EXPECT_EQ(list->FindChild(SP_VARNAME), nullptr);
    list->AddChild(MakeNode(TestArena(), TBI_FMT));
    list->AddChild(MakeVariable("a"));
    list->AddChild(MakeVariable("b"));
    EXPECT_EQ(list->FindChild(SP_VARNAME), list->GetChild(1));
    EXPECT_EQ(list->FindChild(TBI_FMT), list->GetChild(0));
    EXPECT_EQ(list->FindChild(TB_SORT), nullptr);
}

TEST(TbTrParseNodeTest, GrowingInFrontIsCheap) {
    Arena arena;
    const NodeOwner list = MakeNode(arena, TBI_GENERICLIST);
    constexpr std::size_t kCount = 300'000;
    // Moving everything each time would take tens of thousands of million steps.
    for (std::size_t index = 0; index < kCount; ++index) {
        list->AddFirstChild(MakeNode(arena, TBI_FMT));
    }
    EXPECT_EQ(list->GetChildCount(), kCount);
    for (std::size_t index = 0; index < kCount; ++index) list->RemoveChild(0);
    EXPECT_EQ(list->GetChildCount(), 0U);
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
        const NodeOwner node = MakeKeywordNode(TestArena(), type);
        if (settings.count(type) > 0) {
            ASSERT_NE(node, nullptr);
            EXPECT_EQ(node->GetNodeType(), type);
            EXPECT_EQ(node->GetToken(), nullptr);
            EXPECT_EQ(node->GetChildCount(), 0U);
        } else {
            EXPECT_EQ(node, nullptr);
        }
    }
}

TEST(TbTrParseNodeTest, MakeLiteralNodeTakesLiteralsAlone) {
    const NodeOwner node = MakeLiteralNode(TestArena(), MakeLiteral("x"));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->GetNodeType(), SP_SLITERAL);
    EXPECT_EQ(node->GetToken()->Text(false), "x");
    EXPECT_EQ(node->GetChildCount(), 0U);
    EXPECT_EQ(MakeLiteralNode(TestArena(), MakeWord("x")), nullptr);
    EXPECT_EQ(MakeLiteralNode(TestArena(), {}), nullptr);
}

TEST(TbTrParseNodeTest, MakeVarNameNodeTakesWordsAlone) {
    const AssertionRecorder assertions;
    const NodeOwner node = MakeVarNameNode(TestArena(), MakeWord("x"));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->GetNodeType(), SP_VARNAME);
    EXPECT_EQ(node->GetToken()->Text(false), "x");
    EXPECT_EQ(node->GetChildCount(), 0U);
    EXPECT_TRUE(assertions.Texts().empty());
    EXPECT_EQ(MakeVarNameNode(TestArena(), MakeLiteral("x")), nullptr);
    EXPECT_EQ(MakeVarNameNode(TestArena(), {}), nullptr);
}

TEST(TbTrParseNodeTest, ARangeNeedsBothEnds) {
    for (const bool fromIsWord : {true, false}) {
        for (const bool toIsWord : {true, false}) {
            SCOPED_TRACE(fromIsWord);
            SCOPED_TRACE(toIsWord);
            const NodeOwner range =
                MakeVarRangeNode(TestArena(), fromIsWord ? MakeWord("a") : MakeLiteral("a"),
                                 toIsWord ? MakeWord("b") : MakeLiteral("b"));
            EXPECT_EQ(range != nullptr, fromIsWord && toIsWord);
            if (!range) continue;
            EXPECT_EQ(range->GetNodeType(), TBI_VARRANGE);
            EXPECT_EQ(Children(*range), "ab");
        }
    }
}

TEST(TbTrParseNodeTest, DumpIndentsAndStartsAgainWhenTooDeep) {
    const NodeOwner list = ListOf("a");
    struct Case {
        unsigned indent;
        const char* expected;
    };
    const Case cases[] = {
        {0, "--Node type:\t505\n\t--Node type:\t260\n\tkString\tkNotOperator\ta\n"},
        {1, "\t--Node type:\t505\n\t\t--Node type:\t260\n\t\tkString\tkNotOperator\ta\n"},
        {25, "--Node type:\t505\n\t--Node type:\t260\n\tkString\tkNotOperator\ta\n"},
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
                                    "kString\tkNotOperator\ta\n");
}

TEST(TbTrParseNodeTest, DumpWritesChildrenInOrder) {
    std::ostringstream stream;
    const NodeOwner list = MakeNode(TestArena(), TBI_GENERICLIST);
    list->AddChild(MakeNode(TestArena(), TB_TABLE));
    list->AddChild(MakeNode(TestArena(), TB_SORT));
    list->GetChild(0)->AddChild(MakeNode(TestArena(), TBI_FMT));
    list->Dump(stream, 0);
    EXPECT_EQ(stream.str(),
              "--Node type:\t505\n\t--Node type:\t302\n\t\t--Node type:\t509\n"
              "\t--Node type:\t295\n");
}

// Far deeper than any stack that the tests run on.
TEST(TbTrParseNodeTest, DeepTreesNeedNoStack) {
    constexpr std::size_t kDepth = 200'000;
    auto arena = std::make_unique<Arena>();
    NodeOwner root = MakeNode(*arena, TBI_GENERICLIST);
    for (std::size_t level = 1; level < kDepth; ++level) {
        NodeOwner outer = MakeNode(*arena, TBI_GENERICLIST);
        outer->AddChild(std::move(root));
        outer->AddChild(MakeNode(*arena, TBI_FMT));
        root = std::move(outer);
    }
    std::size_t depth = 1;
    for (const TbTrParseNode* pNode = root.get(); pNode->HasChildren();
         pNode = pNode->FirstChild()) {
        ++depth;
    }
    EXPECT_EQ(depth, kDepth);
    std::ostringstream stream;
    root->Dump(stream, 0);
    const std::string listing = stream.str();
    EXPECT_EQ(std::count(listing.begin(), listing.end(), '\n'),
              static_cast<std::ptrdiff_t>(2 * kDepth - 1));
    root.reset();
    arena.reset();
}

}  // namespace
}  // namespace quillet
