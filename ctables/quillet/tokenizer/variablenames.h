// Variable names: which words are valid ones.
#ifndef QUILLET_TOKENIZER_VARIABLENAMES_H
#define QUILLET_TOKENIZER_VARIABLENAMES_H

#include <cstddef>
#include <string_view>

#include "platform/codepage.h"
#include "tokenizer/tokensequencebase.h"

namespace quillet {

/// The longest variable name, in bytes.
inline constexpr std::size_t kMaxNameLength = 64;

enum class NameClass : int {
    kOrdinary = 0,
    kScratch = 1,               ///< Begins with "#".
    kSystem = 2,                ///< Begins with "$".
    kBadLength = 3,             ///< Empty, or longer than 64 bytes.
    kBadCharacter = 4,          ///< Holds a character that no name may hold.
    kReservedWord = 5,          ///< ALL, AND, BY, EQ, GE, GT, LE, LT, NE, NOT, OR, TO or WITH.
    kBadStart = 6,              ///< Begins with ".", a digit or "_".
    kEndsWithPeriod = 7,        ///< From `ClassifyNameExtended` alone.
    kEndsWithUnderscore = 100,  ///< From `ClassifyNameExtended` alone.
};

/// True when the character at the start of `text` may stand in a name: an ASCII letter or
/// digit, one of "@#$_.", a byte 128 to 255, or any multibyte character. False for an empty
/// text.
[[nodiscard]] bool IsNameCharacter(const CodePage& codePage, std::string_view text);

/// Classifies `name`, whose trailing blanks do not count; never one of the two extended classes.
[[nodiscard]] NameClass ClassifyName(const CodePage& codePage, std::string_view name);

/// `text` without the blanks at its end, which no name has.
[[nodiscard]] std::string_view WithoutTrailingBlanks(std::string_view text);

/// The current token of `sequence` as a variable name: 1 ordinary, 2 scratch, 3 system name; 0
/// when it is no valid name, no word, or missing.
[[nodiscard]] int VariableNameClass(const CodePage& codePage, const TokenSequenceBase& sequence);

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_VARIABLENAMES_H
