// The parser's semantic values: what a grammar symbol carries on the parser's stack.
//
// The parser moves its stacks byte by byte when they grow, so a value can have neither a destructor
// nor a move constructor. It needs none: what it holds lies in the command's text and arena. The
// functions here see to it that each node is held by one value alone.
#ifndef QUILLET_BISON_OPAQUEVALUEMETHODS_H
#define QUILLET_BISON_OPAQUEVALUEMETHODS_H

#include <type_traits>

#include "parser/tbtrparsenode.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

/// Nothing, one token with its grammar code, or one parse node.
///
/// After a byte-wise copy one of the two must be forgotten, which is what the parser does with its
/// stacks. Everyone else uses `OpaqueValue_Move`.
struct OpaqueValue {
    TAVQToken token;                      ///< Set for a token alone.
    TbTrParseNode* pParseNode = nullptr;  ///< Borrowed from the arena; set for a parse node alone.
    NodeType tokenCode = kNoNodeType;     ///< The grammar code of a token; 0 otherwise.
    int kind = 0;                         ///< 0 empty, above 0 a parse node, below 0 a token.
};

static_assert(std::is_trivially_copyable_v<OpaqueValue>,
              "the parser copies its value stack byte by byte");
static_assert(std::is_trivially_destructible_v<OpaqueValue>,
              "the parser drops its value stack without destructors");

/// Makes `opVal` empty without looking at what it held.
void OpaqueValue_Init(OpaqueValue& opVal);

[[nodiscard]] bool OpaqueValue_IsEmpty(const OpaqueValue& opVal);
[[nodiscard]] bool OpaqueValue_IsParseNode(const OpaqueValue& opVal);
[[nodiscard]] bool OpaqueValue_IsTAVQToken(const OpaqueValue& opVal);

/// True when token, node and code agree with the kind.
[[nodiscard]] bool OpaqueValue_IsValid(const OpaqueValue& opVal);

/// Forgets what `opVal` holds; it is empty afterwards. An invalid value asserts.
void OpaqueValue_Clear(OpaqueValue& opVal);

/// Forgets what `target` holds and hands it what `source` holds; `source` is empty afterwards.
/// When either is invalid, that asserts and nothing moves. A value moved to itself stays.
void OpaqueValue_Move(OpaqueValue& target, OpaqueValue& source);

/// Makes `opVal` hold `pParseNode` in place of what it held; a null node asserts and leaves the
/// value empty.
void OpaqueValue_SetParseNode(OpaqueValue& opVal, NodeOwner pParseNode);

/// Makes `opVal` hold `token` with `tokenCode` in place of what it held; no token
/// asserts and leaves the value empty.
void OpaqueValue_SetTAVQToken(OpaqueValue& opVal, const TAVQToken& token, NodeType tokenCode);

/// Hands out the node; the value is empty afterwards. Null for an empty value; a token asserts,
/// gives null and stays where it is.
[[nodiscard]] NodeOwner OpaqueValue_ReleaseParseNode(OpaqueValue& opVal);

/// Hands out the token; the value is empty afterwards. Anything else asserts, gives none and
/// stays as it is.
[[nodiscard]] TAVQToken OpaqueValue_ReleaseTAVQToken(OpaqueValue& opVal);

/// The token, which the value keeps. Anything else asserts and gives null.
[[nodiscard]] const TAVQToken* OpaqueValue_PeekTAVQToken(const OpaqueValue& opVal);

/// The type of the held node; anything but a node asserts and gives 0.
[[nodiscard]] NodeType OpaqueValue_GetParseNodeType(const OpaqueValue& opVal);

/// The code of the held token, 0 for an empty value; a node asserts and gives 0.
[[nodiscard]] NodeType OpaqueValue_GetTbTokenType(const OpaqueValue& opVal);

/// True when the value is a node of one of the types. A `type1` of 0 accepts every node; 0 in
/// the others means no alternative.
[[nodiscard]] bool OpaqueValue_CheckParseNode(const OpaqueValue& opVal, unsigned type1,
                                              unsigned type2, unsigned type3);

/// The same for a token and its code; a node asserts and gives false.
[[nodiscard]] bool OpaqueValue_CheckTAVQToken(const OpaqueValue& opVal, unsigned code1,
                                              unsigned code2, unsigned code3);

}  // namespace quillet

#endif  // QUILLET_BISON_OPAQUEVALUEMETHODS_H
