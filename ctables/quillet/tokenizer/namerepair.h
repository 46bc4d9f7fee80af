// Operations that make a valid variable name of any text.
//
// They belong to the given interface of the tokenizer, for whoever has to make names. No conversion
// step uses them: the names of a new command are those of the old one.
#ifndef QUILLET_TOKENIZER_NAMEREPAIR_H
#define QUILLET_TOKENIZER_NAMEREPAIR_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/codepage.h"
#include "tokenizer/variablenames.h"

namespace quillet {

/// As `ClassifyName`, but an ordinary name that ends with "." or "_" has a class of its own.
[[nodiscard]] NameClass ClassifyNameExtended(const CodePage& codePage, std::string_view name);

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

#endif  // QUILLET_TOKENIZER_NAMEREPAIR_H
