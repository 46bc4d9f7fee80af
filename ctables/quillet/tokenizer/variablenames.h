// Variable names: which words are valid ones, and how any text is made into one.
#ifndef QUILLET_TOKENIZER_VARIABLENAMES_H
#define QUILLET_TOKENIZER_VARIABLENAMES_H

#include <cstddef>
#include <functional>
#include <string>
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

/// As `ClassifyName`, but an ordinary name that ends with "." or "_" has a class of its own.
[[nodiscard]] NameClass ClassifyNameExtended(const CodePage& codePage, std::string_view name);

/// The current token of `sequence` as a variable name: 1 ordinary, 2 scratch, 3 system name; 0
/// when it is no valid name, no word, or missing.
[[nodiscard]] int VariableNameClass(const CodePage& codePage, const TokenSequenceBase& sequence);

/// For a text of 1 to 7 digits (trailing blanks do not count) sets `dest` to "@" and the digits
/// and returns true; otherwise leaves `dest` alone and returns false.
[[nodiscard]] bool NumberToName(std::string& dest, std::string_view text);

/// The letters that count `n`, from 0: A to Z, AA, AB and so on.
[[nodiscard]] std::string LetterSuffix(unsigned long n);

/// Sets `dest` to as much of `base` as fits, "_" and the letters of `n`, within `maxLen` bytes
/// that include a terminating NUL. Returns 0, or 1 (and leaves `dest` alone) when fewer than
/// two bytes of `base` would fit or nothing of it is left.
[[nodiscard]] int AppendNameSuffix(const CodePage& codePage, std::string& dest,
                                   std::string_view base, unsigned long n, std::size_t maxLen);

/// Turns `name` into a valid name that `isTaken` does not report as used. What cannot be
/// repaired becomes "V" and the decimal `n`. `isTaken` may be empty; the caller's context is
/// what it captures.
void MakeValidName(const CodePage& codePage, std::string& name, long n,
                   const std::function<bool(const std::string&)>& isTaken);

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_VARIABLENAMES_H
