// String operations that never split a multibyte character.
#ifndef QUILLET_PLATFORM_MULTIBYTE_H
#define QUILLET_PLATFORM_MULTIBYTE_H

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/codepage.h"

namespace quillet {

/// Byte length of the character at `bytes`, looking at no more than `maxBytes` bytes. 0 for a
/// NUL byte, for bytes that begin no valid character, and when `maxBytes` is 0.
[[nodiscard]] inline std::size_t TAVQMBmblen_A(const CodePage& codePage, const char* bytes,
                                               std::size_t maxBytes) {
    if (maxBytes == 0 || *bytes == '\0') return 0;
    if (static_cast<unsigned char>(*bytes) < 0x80) return 1;
    return codePage.NonAsciiLength(bytes, maxBytes);
}

/// `c`, in upper case if it is a letter of ASCII.
[[nodiscard]] constexpr char UpperAscii(char c) {
    return 'a' <= c && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// `c`, in lower case if it is a letter of ASCII.
[[nodiscard]] constexpr char LowerAscii(char c) {
    return 'A' <= c && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// `text` with the letters of ASCII in upper case, all else as it is.
[[nodiscard]] inline std::string InUpperAscii(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) c = UpperAscii(c);
    return upper;
}

/// `text` in upper case, letter by letter; the byte length may change. Bytes that form no
/// character are kept.
[[nodiscard]] std::string TAVQMBstrupr_A(const CodePage& codePage, std::string_view text);

/// The longest beginning of `text` that has at most `maxBytes` bytes and splits no character.
/// A byte that forms no character counts as one.
[[nodiscard]] std::string_view TAVQMBStringTruncate_A(const CodePage& codePage,
                                                      std::string_view text, std::size_t maxBytes);

/// Byte offset of the last character of `text` that is the ASCII character `wanted`;
/// `std::string_view::npos` when there is none. A trail byte of that value does not count.
[[nodiscard]] std::size_t TAVQMBstrrchr_A(const CodePage& codePage, std::string_view text,
                                          char wanted);

/// Compares `left` and `right` without regard to letter case: below, equal to or above zero.
[[nodiscard]] int TAVQMBqstricmp_A(const CodePage& codePage, std::string_view left,
                                   std::string_view right);

}  // namespace quillet

#endif  // QUILLET_PLATFORM_MULTIBYTE_H
