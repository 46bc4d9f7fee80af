// Upper case of single letters, the same on every machine.
#ifndef QUILLET_PLATFORM_UNICODEUPPERCASE_H
#define QUILLET_PLATFORM_UNICODEUPPERCASE_H

namespace quillet {

/// The single capital letter of `letter`, a code point of 128 or more. The letter itself when it
/// has none, or when its capital is an ASCII letter.
[[nodiscard]] char32_t SimpleUppercase(char32_t letter);

}  // namespace quillet

#endif  // QUILLET_PLATFORM_UNICODEUPPERCASE_H
