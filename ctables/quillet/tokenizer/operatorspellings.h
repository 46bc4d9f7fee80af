// How the operators of the language are spelled.
#ifndef QUILLET_TOKENIZER_OPERATORSPELLINGS_H
#define QUILLET_TOKENIZER_OPERATORSPELLINGS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tokenizer/mbcharpointer.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

struct OperatorSpelling {
    std::string_view spelling;
    int code;
};

/// The code of `spelling` in a table; `kNotOperator` when it is not there.
template <std::size_t kCount>
[[nodiscard]] constexpr int FindOperator(const OperatorSpelling (&table)[kCount],
                                         std::string_view spelling) {
    for (const OperatorSpelling& entry : table) {
        if (entry.spelling == spelling) return entry.code;
    }
    return TokenCodes::kNotOperator;
}

inline constexpr OperatorSpelling kOneCharacterOperators[] = {
    {"<", TokenCodes::kLessThan},       {">", TokenCodes::kGreaterThan},
    {"=", TokenCodes::kEquals},         {"~", TokenCodes::kNot},
    {"+", TokenCodes::kPlus},           {"-", TokenCodes::kMinus},
    {"*", TokenCodes::kAsterisk},       {"/", TokenCodes::kSlash},
    {"(", TokenCodes::kLeftParen},      {")", TokenCodes::kRightParen},
    {",", TokenCodes::kComma},          {":", TokenCodes::kColon},
    {";", TokenCodes::kSemicolon},      {".", TokenCodes::kPeriod},
    {"_", TokenCodes::kUnderscore},     {"?", TokenCodes::kQuestionMark},
    {"%", TokenCodes::kPercent},        {"|", TokenCodes::kVerticalBar},
    {"&", TokenCodes::kAmpersand},      {"{", TokenCodes::kLeftBrace},
    {"}", TokenCodes::kRightBrace},     {"[", TokenCodes::kLeftSqBracket},
    {"]", TokenCodes::kRightSqBracket},
};

inline constexpr OperatorSpelling kTwoCharacterOperators[] = {
    {"<=", TokenCodes::kLtOrEq},       {">=", TokenCodes::kGtOrEq},
    {"~=", TokenCodes::kNotEqualCode}, {"<>", TokenCodes::kNotEqualCode},
    {"**", TokenCodes::kPower},        {"&*", TokenCodes::kElemMult},
    {"&/", TokenCodes::kElemDiv},      {"*>", TokenCodes::kXtabNest},
};

/// What the two-character operators end in.
inline constexpr AsciiSet kSecondOperatorCharacter = [] {
    AsciiSet characters;
    for (const OperatorSpelling& entry : kTwoCharacterOperators) {
        characters = characters.With(entry.spelling.substr(1));
    }
    return characters;
}();

/// The one-character operators by their byte; every byte of ordinary text is looked up here.
inline constexpr auto kOperatorByByte = [] {
    std::array<int, 128> codes{};
    for (const OperatorSpelling& entry : kOneCharacterOperators) {
        codes[static_cast<unsigned char>(entry.spelling[0])] = entry.code;
    }
    return codes;
}();

/// The operator that the character `code` is by itself; `kNotOperator` for none.
[[nodiscard]] inline int OneCharacterOperator(std::int32_t code) {
    return code < 0 || code > 127 ? TokenCodes::kNotOperator
                                  : kOperatorByByte[static_cast<std::size_t>(code)];
}

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_OPERATORSPELLINGS_H
