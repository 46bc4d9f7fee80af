#include "bison/opaquevaluemethods.h"

#include <string_view>
#include <utility>

#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "bison/opaquevaluemethods";

constexpr int kEmptyKind = 0;
constexpr int kParseNodeKind = 1;
constexpr int kTokenKind = -1;

bool HoldsToken(const OpaqueValue& opVal) { return opVal.token.Type() != TokenCodes::kAtEnd; }

bool IsOneOf(unsigned code, unsigned code1, unsigned code2, unsigned code3) {
    if (code1 == 0 || code == code1) return true;
    return (code2 != 0 && code == code2) || (code3 != 0 && code == code3);
}

}  // namespace

void OpaqueValue_Init(OpaqueValue& opVal) { opVal = OpaqueValue{}; }

bool OpaqueValue_IsEmpty(const OpaqueValue& opVal) { return opVal.kind == kEmptyKind; }

bool OpaqueValue_IsParseNode(const OpaqueValue& opVal) { return opVal.kind > kEmptyKind; }

bool OpaqueValue_IsTAVQToken(const OpaqueValue& opVal) { return opVal.kind < kEmptyKind; }

bool OpaqueValue_IsValid(const OpaqueValue& opVal) {
    if (OpaqueValue_IsTAVQToken(opVal)) return HoldsToken(opVal) && opVal.pParseNode == nullptr;
    if (opVal.tokenCode != kNoNodeType || HoldsToken(opVal)) return false;
    return OpaqueValue_IsParseNode(opVal) == (opVal.pParseNode != nullptr);
}

void OpaqueValue_Clear(OpaqueValue& opVal) {
    // Most values are cleared after what they held was taken out of them.
    if (OpaqueValue_IsEmpty(opVal) && OpaqueValue_IsValid(opVal)) return;
    QUILLET_ASSERT(OpaqueValue_IsValid(opVal), "OpaqueValue_IsValid( opVal )");
    OpaqueValue_Init(opVal);
}

void OpaqueValue_Move(OpaqueValue& target, OpaqueValue& source) {
    if (!QUILLET_ASSERT(OpaqueValue_IsValid(target), "OpaqueValue_IsValid( target )")) return;
    if (!QUILLET_ASSERT(OpaqueValue_IsValid(source), "OpaqueValue_IsValid( source )")) return;
    if (&target == &source) return;
    OpaqueValue_Clear(target);
    target = std::exchange(source, OpaqueValue{});
}

void OpaqueValue_SetParseNode(OpaqueValue& opVal, NodeOwner pParseNode) {
    const bool present = QUILLET_ASSERT(pParseNode, "pParseNode");
    OpaqueValue_Clear(opVal);
    if (!present) return;
    // The value on the parser's stack is now the one place where the node is.
    opVal.pParseNode = pParseNode.release();
    opVal.kind = kParseNodeKind;
}

void OpaqueValue_SetTAVQToken(OpaqueValue& opVal, const TAVQToken& token, NodeType tokenCode) {
    const bool present = QUILLET_ASSERT(token.Type() != TokenCodes::kAtEnd, "pTAVQToken");
    OpaqueValue_Clear(opVal);
    if (!present) return;
    opVal.token = token;
    opVal.tokenCode = tokenCode;
    opVal.kind = kTokenKind;
}

NodeOwner OpaqueValue_ReleaseParseNode(OpaqueValue& opVal) {
    if (!QUILLET_ASSERT(OpaqueValue_IsValid(opVal), "OpaqueValue_IsValid( opVal )")) return nullptr;
    if (!QUILLET_ASSERT(OpaqueValue_IsEmpty(opVal) || OpaqueValue_IsParseNode(opVal),
                        "OpaqueValue_IsEmpty( opVal ) || OpaqueValue_IsParseNode( opVal )")) {
        return nullptr;
    }
    return NodeOwner(std::exchange(opVal, OpaqueValue{}).pParseNode);
}

TAVQToken OpaqueValue_ReleaseTAVQToken(OpaqueValue& opVal) {
    if (!OpaqueValue_PeekTAVQToken(opVal)) return {};
    return std::exchange(opVal, OpaqueValue{}).token;
}

const TAVQToken* OpaqueValue_PeekTAVQToken(const OpaqueValue& opVal) {
    if (!QUILLET_ASSERT(OpaqueValue_IsValid(opVal), "OpaqueValue_IsValid( opVal )")) return nullptr;
    if (!QUILLET_ASSERT(OpaqueValue_IsTAVQToken(opVal), "OpaqueValue_IsTAVQToken( opVal )")) {
        return nullptr;
    }
    return &opVal.token;
}

NodeType OpaqueValue_GetParseNodeType(const OpaqueValue& opVal) {
    if (!QUILLET_ASSERT(OpaqueValue_IsParseNode(opVal), "OpaqueValue_IsParseNode( opVal )")) {
        return kNoNodeType;
    }
    return opVal.pParseNode ? opVal.pParseNode->GetNodeType() : kNoNodeType;
}

NodeType OpaqueValue_GetTbTokenType(const OpaqueValue& opVal) {
    if (!QUILLET_ASSERT(OpaqueValue_IsEmpty(opVal) || OpaqueValue_IsTAVQToken(opVal),
                        "OpaqueValue_IsEmpty( opVal ) || OpaqueValue_IsTAVQToken( opVal )")) {
        return kNoNodeType;
    }
    return OpaqueValue_IsTAVQToken(opVal) ? opVal.tokenCode : kNoNodeType;
}

bool OpaqueValue_CheckParseNode(const OpaqueValue& opVal, unsigned type1, unsigned type2,
                                unsigned type3) {
    if (!OpaqueValue_IsParseNode(opVal)) return false;
    return IsOneOf(OpaqueValue_GetParseNodeType(opVal), type1, type2, type3);
}

bool OpaqueValue_CheckTAVQToken(const OpaqueValue& opVal, unsigned code1, unsigned code2,
                                unsigned code3) {
    if (!QUILLET_ASSERT(OpaqueValue_IsEmpty(opVal) || OpaqueValue_IsTAVQToken(opVal),
                        "OpaqueValue_IsEmpty( opVal ) || OpaqueValue_IsTAVQToken( opVal )")) {
        return false;
    }
    if (!OpaqueValue_IsTAVQToken(opVal)) return false;
    return IsOneOf(opVal.tokenCode, code1, code2, code3);
}

}  // namespace quillet
