// UTF-16 to UTF-8 and back, in pieces.
#ifndef QUILLET_PLATFORM_UTF16_H
#define QUILLET_PLATFORM_UTF16_H

#include <string>
#include <string_view>

namespace quillet {

enum class ByteOrder { kLittleEndian, kBigEndian };

/// Makes UTF-8 of UTF-16 that arrives in pieces, which may end anywhere. A byte-order mark is a
/// character like any other.
class Utf16Decoder {
public:
    explicit Utf16Decoder(ByteOrder order) : m_order(order) {}

    /// Appends what `bytes` mean to `text`. False, for good, when they are no UTF-16: then half of
    /// a character stands without its other half.
    [[nodiscard]] bool Add(std::string_view bytes, std::string& text);

    /// True when all pieces together end with a character.
    [[nodiscard]] bool IsWhole() const { return m_isValid && !m_hasByte && m_lead == 0; }

private:
    void AddUnit(char32_t unit, std::string& text);

    ByteOrder m_order;
    bool m_isValid = true;
    bool m_hasByte = false;
    unsigned m_byte = 0;  // the first of a unit
    char32_t m_lead = 0;  // the first unit of a pair
};

/// Makes UTF-16 of UTF-8 that arrives in pieces, which may end anywhere.
class Utf16Encoder {
public:
    explicit Utf16Encoder(ByteOrder order) : m_order(order) {}

    /// Appends what `text` is to `bytes`. A byte that is no character becomes U+FFFD; what a piece
    /// ends in waits for the next.
    void Add(std::string_view text, std::string& bytes);

private:
    void AppendUnit(char32_t unit, std::string& bytes) const;
    void AppendCharacter(char32_t codePoint, std::string& bytes) const;

    ByteOrder m_order;
    std::string m_pending;  // the beginning of a character
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_UTF16_H
