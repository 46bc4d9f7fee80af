#include "bison/opaquevaluemethods.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tablesparsing.h"

namespace quillet {
namespace {

using Texts = std::vector<std::string>;

// Counts the living objects, so that a test sees whether something was destroyed.
class CountedNode : public TbTrParseNode {
public:
    explicit CountedNode(int& count) : TbTrParseNode(TBI_STATFUNCTION), m_count(count) {
        ++m_count;
    }
    ~CountedNode() override { --m_count; }

private:
    int& m_count;
};

std::unique_ptr<TAVQToken> Word(const std::string& text) {
    return std::make_unique<TAVQStringToken>(text.data(), text.data() + text.size(), 1, 1, text,
                                             TokenCodes::kNotOperator);
}

// A value that destroys what it holds at the end of a test.
struct Held {
    Held() = default;
    ~Held() { OpaqueValue_Clear(value); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    OpaqueValue value;
};

struct TokenValue : Held {
    explicit TokenValue(NodeType code) { OpaqueValue_SetTAVQToken(value, Word("w"), code); }
};

struct NodeValue : Held {
    explicit NodeValue(NodeType type) { OpaqueValue_SetParseNode(value, MakeNode(type, nullptr)); }
};

TEST(OpaqueValueTest, InitForgetsWithoutLooking) {
    OpaqueValue value;
    value.kind = 7;
    value.tokenCode = SP_PLUS;
    OpaqueValue_Init(value);
    EXPECT_TRUE(OpaqueValue_IsEmpty(value));
    EXPECT_TRUE(OpaqueValue_IsValid(value));
    EXPECT_EQ(value.tokenCode, kNoNodeType);
}

TEST(OpaqueValueTest, KindsExcludeEachOther) {
    const Held empty;
    const TokenValue token(SP_VARNAME);
    const NodeValue node(TB_TABLE);
    EXPECT_TRUE(OpaqueValue_IsEmpty(empty.value));
    EXPECT_FALSE(OpaqueValue_IsParseNode(empty.value));
    EXPECT_FALSE(OpaqueValue_IsTAVQToken(empty.value));
    EXPECT_FALSE(OpaqueValue_IsEmpty(token.value));
    EXPECT_FALSE(OpaqueValue_IsParseNode(token.value));
    EXPECT_TRUE(OpaqueValue_IsTAVQToken(token.value));
    EXPECT_FALSE(OpaqueValue_IsEmpty(node.value));
    EXPECT_TRUE(OpaqueValue_IsParseNode(node.value));
    EXPECT_FALSE(OpaqueValue_IsTAVQToken(node.value));
}

TEST(OpaqueValueTest, ValidityFollowsTheKind) {
    const std::unique_ptr<TAVQToken> token = Word("w");
    const std::unique_ptr<TbTrParseNode> node = MakeNode(TB_TABLE, nullptr);
    struct Case {
        const char* name;
        OpaqueValue value;
        bool valid;
    };
    const Case cases[] = {
        {"empty", {nullptr, nullptr, kNoNodeType, 0}, true},
        {"empty with a token", {token.get(), nullptr, kNoNodeType, 0}, false},
        {"empty with a node", {nullptr, node.get(), kNoNodeType, 0}, false},
        {"empty with a code", {nullptr, nullptr, SP_PLUS, 0}, false},
        {"node", {nullptr, node.get(), kNoNodeType, 1}, true},
        {"node of any positive kind", {nullptr, node.get(), kNoNodeType, 9}, true},
        {"node with a code", {nullptr, node.get(), SP_PLUS, 1}, false},
        {"node without one", {nullptr, nullptr, kNoNodeType, 1}, false},
        {"node with a token as well", {token.get(), node.get(), kNoNodeType, 1}, false},
        {"token", {token.get(), nullptr, SP_PLUS, -1}, true},
        {"token of any negative kind", {token.get(), nullptr, SP_PLUS, -9}, true},
        {"token without a code", {token.get(), nullptr, kNoNodeType, -1}, true},
        {"token without one", {nullptr, nullptr, SP_PLUS, -1}, false},
        {"token with a node instead", {nullptr, node.get(), SP_PLUS, -1}, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(OpaqueValue_IsValid(c.value), c.valid);
    }
}

TEST(OpaqueValueTest, ClearDestroys) {
    int alive = 0;
    OpaqueValue value;
    OpaqueValue_SetParseNode(value, std::make_unique<CountedNode>(alive));
    EXPECT_EQ(alive, 1);
    OpaqueValue_Clear(value);
    EXPECT_EQ(alive, 0);
    EXPECT_TRUE(OpaqueValue_IsEmpty(value));
    OpaqueValue_Clear(value);
    EXPECT_TRUE(OpaqueValue_IsEmpty(value));
}

TEST(OpaqueValueTest, ClearOfAnInvalidValueAsserts) {
    AssertionRecorder assertions;
    OpaqueValue value;
    value.kind = 1;
    OpaqueValue_Clear(value);
    EXPECT_EQ(assertions.Texts(), Texts{"OpaqueValue_IsValid( opVal )"});
    EXPECT_TRUE(OpaqueValue_IsEmpty(value));
}

TEST(OpaqueValueTest, MoveDestroysTheTargetsContent) {
    int alive = 0;
    Held target;
    OpaqueValue_SetParseNode(target.value, std::make_unique<CountedNode>(alive));
    TokenValue source(SP_PLUS);
    OpaqueValue_Move(target.value, source.value);
    EXPECT_EQ(alive, 0);
    EXPECT_TRUE(OpaqueValue_CheckTAVQToken(target.value, SP_PLUS, 0, 0));
    EXPECT_TRUE(OpaqueValue_IsEmpty(source.value));

    OpaqueValue_Move(target.value, source.value);
    EXPECT_TRUE(OpaqueValue_IsEmpty(target.value));
    EXPECT_TRUE(OpaqueValue_IsEmpty(source.value));
}

TEST(OpaqueValueTest, MoveToItselfKeeps) {
    TokenValue value(SP_PLUS);
    OpaqueValue_Move(value.value, value.value);
    EXPECT_EQ(OpaqueValue_GetTbTokenType(value.value), SP_PLUS);
}

TEST(OpaqueValueTest, MoveOfInvalidValuesMovesNothing) {
    TokenValue sound(SP_PLUS);
    OpaqueValue broken;
    broken.kind = -1;
    {
        AssertionRecorder assertions;
        OpaqueValue_Move(broken, sound.value);
        EXPECT_EQ(assertions.Texts(), Texts{"OpaqueValue_IsValid( target )"});
    }
    {
        AssertionRecorder assertions;
        OpaqueValue_Move(sound.value, broken);
        EXPECT_EQ(assertions.Texts(), Texts{"OpaqueValue_IsValid( source )"});
    }
    EXPECT_EQ(OpaqueValue_GetTbTokenType(sound.value), SP_PLUS);
}

TEST(OpaqueValueTest, SettingReplaces) {
    int alive = 0;
    Held held;
    OpaqueValue_SetParseNode(held.value, std::make_unique<CountedNode>(alive));
    OpaqueValue_SetTAVQToken(held.value, Word("w"), SP_NUMBER);
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(held.value.kind, -1);
    EXPECT_EQ(held.value.tokenCode, SP_NUMBER);
    OpaqueValue_SetParseNode(held.value, std::make_unique<CountedNode>(alive));
    EXPECT_EQ(held.value.kind, 1);
    EXPECT_EQ(held.value.tokenCode, kNoNodeType);
}

TEST(OpaqueValueTest, SettingNothingAssertsAndEmpties) {
    AssertionRecorder assertions;
    TokenValue value(SP_PLUS);
    OpaqueValue_SetParseNode(value.value, nullptr);
    EXPECT_TRUE(OpaqueValue_IsEmpty(value.value));
    OpaqueValue_SetTAVQToken(value.value, nullptr, SP_PLUS);
    EXPECT_TRUE(OpaqueValue_IsEmpty(value.value));
    EXPECT_EQ(assertions.Texts(), (Texts{"pParseNode", "pTAVQToken"}));
}

TEST(OpaqueValueTest, ReleaseHandsOver) {
    NodeValue node(TB_TABLE);
    const std::unique_ptr<TbTrParseNode> releasedNode = OpaqueValue_ReleaseParseNode(node.value);
    ASSERT_NE(releasedNode, nullptr);
    EXPECT_EQ(releasedNode->GetNodeType(), TB_TABLE);
    EXPECT_TRUE(OpaqueValue_IsEmpty(node.value));

    TokenValue token(SP_PLUS);
    const TAVQToken* pPeeked = OpaqueValue_PeekTAVQToken(token.value);
    EXPECT_FALSE(OpaqueValue_IsEmpty(token.value));
    const std::unique_ptr<TAVQToken> releasedToken = OpaqueValue_ReleaseTAVQToken(token.value);
    EXPECT_EQ(releasedToken.get(), pPeeked);
    EXPECT_TRUE(OpaqueValue_IsEmpty(token.value));
    EXPECT_TRUE(OpaqueValue_IsValid(token.value));
}

TEST(OpaqueValueTest, MisuseGivesTheNeutralResult) {
    const std::string isToken = "OpaqueValue_IsTAVQToken( opVal )";
    const std::string isNode = "OpaqueValue_IsParseNode( opVal )";
    const std::string emptyOrToken =
        "OpaqueValue_IsEmpty( opVal ) || OpaqueValue_IsTAVQToken( opVal )";
    const std::string emptyOrNode =
        "OpaqueValue_IsEmpty( opVal ) || OpaqueValue_IsParseNode( opVal )";
    struct Case {
        const char* name;
        std::function<bool(OpaqueValue&)> isNeutral;
        Texts onEmpty;
        Texts onToken;
        Texts onNode;
    };
    const Case cases[] = {
        {"release node",
         [](OpaqueValue& v) { return !OpaqueValue_ReleaseParseNode(v); },
         {},
         {emptyOrNode},
         {}},
        {"release token",
         [](OpaqueValue& v) { return !OpaqueValue_ReleaseTAVQToken(v); },
         {isToken},
         {},
         {isToken}},
        {"peek token",
         [](OpaqueValue& v) { return !OpaqueValue_PeekTAVQToken(v); },
         {isToken},
         {},
         {isToken}},
        {"node type",
         [](OpaqueValue& v) { return OpaqueValue_GetParseNodeType(v) == 0; },
         {isNode},
         {isNode},
         {}},
        {"token type",
         [](OpaqueValue& v) { return OpaqueValue_GetTbTokenType(v) == 0; },
         {},
         {},
         {emptyOrToken}},
        {"check node",
         [](OpaqueValue& v) { return !OpaqueValue_CheckParseNode(v, 0, 0, 0); },
         {},
         {},
         {}},
        {"check token",
         [](OpaqueValue& v) { return !OpaqueValue_CheckTAVQToken(v, 0, 0, 0); },
         {},
         {},
         {emptyOrToken}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        {
            AssertionRecorder assertions;
            Held empty;
            EXPECT_TRUE(c.isNeutral(empty.value));
            EXPECT_EQ(assertions.Texts(), c.onEmpty);
        }
        const bool wantsToken = std::string(c.name).find("token") != std::string::npos;
        {
            AssertionRecorder assertions;
            TokenValue token(SP_PLUS);
            EXPECT_EQ(c.isNeutral(token.value), !wantsToken);
            EXPECT_EQ(assertions.Texts(), c.onToken);
        }
        {
            AssertionRecorder assertions;
            NodeValue node(TB_TABLE);
            EXPECT_EQ(c.isNeutral(node.value), wantsToken);
            EXPECT_EQ(assertions.Texts(), c.onNode);
        }
    }
}

TEST(OpaqueValueTest, AnInvalidValueIsNotReleased) {
    AssertionRecorder assertions;
    OpaqueValue value;
    value.kind = 1;
    EXPECT_EQ(OpaqueValue_ReleaseParseNode(value), nullptr);
    value.kind = -1;
    EXPECT_EQ(OpaqueValue_ReleaseTAVQToken(value), nullptr);
    EXPECT_EQ(OpaqueValue_PeekTAVQToken(value), nullptr);
    EXPECT_EQ(assertions.Texts(), Texts(3, "OpaqueValue_IsValid( opVal )"));
    value.kind = 1;
    EXPECT_EQ(OpaqueValue_GetParseNodeType(value), kNoNodeType);
}

TEST(OpaqueValueTest, ChecksTakeUpToThreeAlternatives) {
    struct Case {
        const char* name;
        unsigned code1, code2, code3;
        bool expected;
    };
    const Case forToken[] = {
        {"any", 0, 0, 0, true},
        {"the first", SP_NONVARNAME, 0, 0, true},
        {"the second", SP_VARNAME, SP_NONVARNAME, 0, true},
        {"the third", SP_VARNAME, SP_NUMBER, SP_NONVARNAME, true},
        {"the third, no second", SP_VARNAME, 0, SP_NONVARNAME, true},
        {"none", SP_VARNAME, SP_NUMBER, SP_SLITERAL, false},
        {"none and no alternatives", SP_VARNAME, 0, 0, false},
    };
    for (const Case& c : forToken) {
        SCOPED_TRACE(c.name);
        const TokenValue token(SP_NONVARNAME);
        EXPECT_EQ(OpaqueValue_CheckTAVQToken(token.value, c.code1, c.code2, c.code3), c.expected);
        EXPECT_FALSE(OpaqueValue_CheckParseNode(token.value, c.code1, c.code2, c.code3));
        const NodeValue node(SP_NONVARNAME);
        EXPECT_EQ(OpaqueValue_CheckParseNode(node.value, c.code1, c.code2, c.code3), c.expected);
    }
    // A code of 0 is no alternative, not even for a token without a code.
    const TokenValue withoutCode(kNoNodeType);
    EXPECT_FALSE(OpaqueValue_CheckTAVQToken(withoutCode.value, SP_VARNAME, 0, 0));
    EXPECT_TRUE(OpaqueValue_CheckTAVQToken(withoutCode.value, 0, 0, 0));
}

}  // namespace
}  // namespace quillet
