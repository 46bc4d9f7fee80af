// Tokens and nodes that no command's text gives, for the tests of those who read them.
#ifndef QUILLET_TESTS_UNIT_NODEMAKING_H
#define QUILLET_TESTS_UNIT_NODEMAKING_H

#include <string>
#include <string_view>

#include "parser/tbtrparsenode.h"
#include "platform/arena.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

/// Where they lie, until the program ends.
inline Arena& TestArena() {
    static Arena arena;
    return arena;
}

inline TAVQToken MakeToken(TokenCodes::TokenType type, std::string_view source,
                           std::string_view value) {
    return {type, *TestArena().New<TokenTexts>(
                      TokenTexts{TestArena().Keep(source), TestArena().Keep(value)})};
}

inline TAVQToken MakeWord(std::string_view text) {
    return MakeToken(TokenCodes::kString, text, text);
}

inline TAVQToken MakeLiteral(std::string_view value) {
    const std::string source = "'" + std::string(value) + "'";
    return MakeToken(TokenCodes::kLiteral, source, value);
}

inline NodeOwner MakeVariable(std::string_view name) {
    return MakeVarNameNode(TestArena(), MakeWord(name));
}

}  // namespace quillet

#endif  // QUILLET_TESTS_UNIT_NODEMAKING_H
