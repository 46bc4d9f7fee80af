#include "bison/opaquevaluemethods.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "nodemaking.h"
#include "tablesparsing.h"

namespace quillet {
namespace {

using Texts = std::vector<std::string>;

// A value that forgets what it holds at the end of a test.
struct Held {
    Held() = default;
    ~Held() { OpaqueValue_Clear(value); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    OpaqueValue value;
};

struct TokenValue : Held {
    explicit TokenValue(NodeType code) { OpaqueValue_SetTAVQToken(value, MakeWord("w"), code); }
};

struct NodeValue : Held {
    explicit NodeValue(NodeType type) {
        OpaqueValue_SetParseNode(value, MakeNode(TestArena(), type));
    }
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
    const Held empty{};
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
    const TAVQToken token = MakeWord("w");
    const NodeOwner node = MakeNode(TestArena(), TB_TABLE);
    struct Case {
        const char* name;
        OpaqueValue value;
        bool valid;
    };
    const Case cases[] = {
        {"empty", {{}, nullptr, kNoNodeType, 0}, true},
        {"empty with a token", {token, nullptr, kNoNodeType, 0}, false},
        {"empty with a node", {{}, node.get(), kNoNodeType, 0}, false},
        {"empty with a code", {{}, nullptr, SP_PLUS, 0}, false},
        {"node", {{}, node.get(), kNoNodeType, 1}, true},
        {"node of any positive kind", {{}, node.get(), kNoNodeType, 9}, true},
        {"node with a code", {{}, node.get(), SP_PLUS, 1}, false},
        {"node without one", {{}, nullptr, kNoNodeType, 1}, false},
        {"node with a token as well", {token, node.get(), kNoNodeType, 1}, false},
        {"token", {token, nullptr, SP_PLUS, -1}, true},
        {"token of any negative kind", {token, nullptr, SP_PLUS, -9}, true},
        {"token without a code", {token, nullptr, kNoNodeType, -1}, true},
        {"token without one", {{}, nullptr, SP_PLUS, -1}, false},
        {"token with a node instead", {{}, node.get(), SP_PLUS, -1}, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(OpaqueValue_IsValid(c.value), c.valid);
    }
}

TEST(OpaqueValueTest, ClearForgets) {
    OpaqueValue value;
    OpaqueValue_SetParseNode(value, MakeNode(TestArena(), TB_TABLE));
    OpaqueValue_Clear(value);
    EXPECT_TRUE(OpaqueValue_IsEmpty(value));
    EXPECT_TRUE(OpaqueValue_IsValid(value));
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

TEST(OpaqueValueTest, MoveForgetsTheTargetsContent) {
    Held target;
    OpaqueValue_SetParseNode(target.value, MakeNode(TestArena(), TB_TABLE));
    TokenValue source(SP_PLUS);
    OpaqueValue_Move(target.value, source.value);
    EXPECT_TRUE(OpaqueValue_IsValid(target.value));
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
    Held held;
    OpaqueValue_SetParseNode(held.value, MakeNode(TestArena(), TB_TABLE));
    OpaqueValue_SetTAVQToken(held.value, MakeWord("w"), SP_NUMBER);
    EXPECT_TRUE(OpaqueValue_IsValid(held.value));
    EXPECT_EQ(held.value.kind, -1);
    EXPECT_EQ(held.value.tokenCode, SP_NUMBER);
    OpaqueValue_SetParseNode(held.value, MakeNode(TestArena(), TB_SORT));
    EXPECT_TRUE(OpaqueValue_IsValid(held.value));
    EXPECT_EQ(OpaqueValue_GetParseNodeType(held.value), TB_SORT);
    EXPECT_EQ(held.value.kind, 1);
    EXPECT_EQ(held.value.tokenCode, kNoNodeType);
}

TEST(OpaqueValueTest, SettingNothingAssertsAndEmpties) {
    AssertionRecorder assertions;
    TokenValue value(SP_PLUS);
    OpaqueValue_SetParseNode(value.value, nullptr);
    EXPECT_TRUE(OpaqueValue_IsEmpty(value.value));
    OpaqueValue_SetTAVQToken(value.value, {}, SP_PLUS);
    EXPECT_TRUE(OpaqueValue_IsEmpty(value.value));
    EXPECT_EQ(assertions.Texts(), (Texts{"pParseNode", "pTAVQToken"}));
}

TEST(OpaqueValueTest, ReleaseHandsOver) {
    NodeValue node(TB_TABLE);
    const NodeOwner releasedNode = OpaqueValue_ReleaseParseNode(node.value);
    ASSERT_NE(releasedNode, nullptr);
    EXPECT_EQ(releasedNode->GetNodeType(), TB_TABLE);
    EXPECT_TRUE(OpaqueValue_IsEmpty(node.value));

    TokenValue token(SP_PLUS);
    ASSERT_NE(OpaqueValue_PeekTAVQToken(token.value), nullptr);
    EXPECT_EQ(OpaqueValue_PeekTAVQToken(token.value)->Text(true), "w");
    EXPECT_FALSE(OpaqueValue_IsEmpty(token.value));
    const TAVQToken releasedToken = OpaqueValue_ReleaseTAVQToken(token.value);
    EXPECT_EQ(releasedToken.Type(), TokenCodes::kString);
    EXPECT_EQ(releasedToken.Text(true), "w");
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
         [](OpaqueValue& v) {
             return OpaqueValue_ReleaseTAVQToken(v).Type() == TokenCodes::kAtEnd;
         },
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
    EXPECT_EQ(OpaqueValue_ReleaseTAVQToken(value).Type(), TokenCodes::kAtEnd);
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
