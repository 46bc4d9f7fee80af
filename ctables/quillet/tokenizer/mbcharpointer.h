// A cursor that walks a text one character at a time.
#ifndef QUILLET_TOKENIZER_MBCHARPOINTER_H
#define QUILLET_TOKENIZER_MBCHARPOINTER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/codepage.h"

namespace quillet {

/// A set of ASCII characters, for stepping over whole runs at once. Never holds NUL.
class AsciiSet {
public:
    constexpr AsciiSet() = default;

    [[nodiscard]] constexpr AsciiSet With(std::string_view characters) const {
        AsciiSet set = *this;
        for (const char c : characters) set.m_has[static_cast<unsigned char>(c)] = true;
        return set;
    }
    [[nodiscard]] constexpr AsciiSet Without(std::string_view characters) const {
        AsciiSet set = *this;
        for (const char c : characters) set.m_has[static_cast<unsigned char>(c)] = false;
        return set;
    }
    /// Adds the characters from `first` to `last`, both included.
    [[nodiscard]] constexpr AsciiSet WithRange(char first, char last) const {
        AsciiSet set = *this;
        for (int code = static_cast<unsigned char>(first); code <= last; ++code) {
            set.m_has[static_cast<std::size_t>(code)] = true;
        }
        return set;
    }
    /// True for a byte of a character in the set; false for every byte above 127.
    [[nodiscard]] constexpr bool Has(char byte) const {
        return m_has[static_cast<unsigned char>(byte)];
    }
    /// The first byte from `bytes` on that is not of a character in the set; the NUL at the end
    /// of a text is none.
    [[nodiscard]] constexpr const char* FindEnd(const char* bytes) const {
        // Four at a time: most of a syntax file's bytes pass through here.
        while (true) {
            if (!Has(bytes[0])) return bytes;
            if (!Has(bytes[1])) return bytes + 1;
            if (!Has(bytes[2])) return bytes + 2;
            if (!Has(bytes[3])) return bytes + 3;
            bytes += 4;
        }
    }
    /// The same for a character code as `MbCharPointer` delivers it.
    [[nodiscard]] constexpr bool HasCode(std::int32_t code) const {
        return code > 0 && code < 128 && m_has[static_cast<std::size_t>(code)];
    }

private:
    std::array<bool, 256> m_has{};
};

/// Walks a NUL-terminated text in a code page, one character at a time, and counts columns.
///
/// Every decision of the tokenizer is taken on `Code()`, a single integer per character, so
/// that no multibyte character is ever split. A small value: copy it to remember a place,
/// assign the copy back to return to it. The text and the code page are borrowed.
class MbCharPointer {
public:
    /// The code of every multibyte character, whatever its bytes.
    static constexpr std::int32_t kMultibyteCode = 4096;

    /// Starts on the first character of `text`, whose bytes must be followed by a NUL (as those
    /// of a `std::string` are).
    MbCharPointer(const CodePage& codePage, std::string_view text)
        : m_position(text.data()), m_charCount(text.size() + 1), m_pCodePage(&codePage) {
        Decode();
    }

    /// The current character: its byte, sign-extended, for a one-byte character (so 128 to 255
    /// are negative), `kMultibyteCode` for a longer one, 0 at the end of the text. A NUL byte
    /// and a byte sequence that is no character end the text.
    [[nodiscard]] std::int32_t Code() const { return m_code; }

    /// Steps to the next character and returns its code; at the end stays and returns 0.
    std::int32_t Advance() {
        if (m_code == 0) return 0;
        if (m_charCount <= m_charLen) return AdvanceBeyondText();
        m_position += m_charLen;
        m_charCount -= m_charLen;
        Decode();
        return m_code;
    }

    /// Steps over the current character and those after it for as long as they are in `set`.
    /// The same as calling `Advance` for each, only faster.
    void SkipRun(const AsciiSet& set) {
        const char* pEnd = set.FindEnd(m_position);
        const auto length = static_cast<std::size_t>(pEnd - m_position);
        if (length == 0 || m_code == 0) return;
        m_position = pEnd;
        m_charCount -= length;
        m_column += static_cast<std::uint32_t>(length) - 1;
        Decode();
    }

    /// The first byte of the current character.
    [[nodiscard]] const char* Position() const { return m_position; }

    /// The number of characters landed on since the start or since `SetColumn`, in characters.
    [[nodiscard]] std::int32_t Column() const { return static_cast<std::int32_t>(m_column); }
    void SetColumn(std::int32_t column) { m_column = static_cast<std::uint32_t>(column); }

private:
    void Decode() {
        ++m_column;
        const auto byte = static_cast<unsigned char>(*m_position);
        if (byte - 1U < 127U) {
            m_charLen = 1;
            m_code = byte;
        } else {
            DecodeNonAscii();
        }
    }
    void DecodeNonAscii();
    std::int32_t AdvanceBeyondText();

    const char* m_position;
    std::size_t m_charCount;  // bytes from m_position to the end, the final NUL included
    std::size_t m_charLen = 1;
    std::int32_t m_code = 0;
    std::uint32_t m_column = 0;  // unsigned, so that a line of 2^31 characters wraps harmlessly
    const CodePage* m_pCodePage;
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_MBCHARPOINTER_H
