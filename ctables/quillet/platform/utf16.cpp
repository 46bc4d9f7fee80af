#include "platform/utf16.h"

#include <algorithm>
#include <cstddef>

#include "platform/codepage.h"

namespace quillet {

namespace {

constexpr char32_t kFirstLead = 0xD800;
constexpr char32_t kFirstTrail = 0xDC00;
constexpr char32_t kAfterTrails = 0xE000;
constexpr char32_t kFirstOfPairs = 0x10000;
constexpr unsigned kTrailBits = 10;
constexpr char32_t kTrailMask = (1U << kTrailBits) - 1;

// The code point of one whole character of UTF-8.
char32_t CodePointOf(std::string_view character) {
    const auto byteAt = [&character](std::size_t index) -> char32_t {
        return static_cast<unsigned char>(character[index]);
    };
    char32_t codePoint =
        character.size() == 1 ? byteAt(0) : byteAt(0) & (0xFFU >> (character.size() + 1));
    for (std::size_t index = 1; index < character.size(); ++index) {
        codePoint = codePoint << 6U | (byteAt(index) & 0x3FU);
    }
    return codePoint;
}

// Of the character that begins with this byte; 1 where none does.
std::size_t LengthFromLead(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    if (byte >= 0xF0 && byte <= 0xF4) return 4;
    if (byte >= 0xE0 && byte < 0xF0) return 3;
    return byte >= 0xC2 && byte < 0xE0 ? 2 : 1;
}

// Length of the character at the beginning of `text`, which is not empty; 0 when it is none.
std::size_t CharacterLength(std::string_view text) {
    constexpr unsigned char kFirstNonAscii = 0x80;
    if (static_cast<unsigned char>(text.front()) < kFirstNonAscii) return 1;
    return CodePage::Utf8().NonAsciiLength(text.data(), text.size());
}

}  // namespace

bool Utf16Decoder::Add(std::string_view bytes, std::string& text) {
    constexpr unsigned kBitsOfByte = 8;
    for (const char character : bytes) {
        if (!m_isValid) break;
        const unsigned byte = static_cast<unsigned char>(character);
        if (!m_hasByte) {
            m_byte = byte;
        } else if (m_order == ByteOrder::kLittleEndian) {
            AddUnit(byte << kBitsOfByte | m_byte, text);
        } else {
            AddUnit(m_byte << kBitsOfByte | byte, text);
        }
        m_hasByte = !m_hasByte;
    }
    return m_isValid;
}

void Utf16Decoder::AddUnit(char32_t unit, std::string& text) {
    const bool isTrail = unit >= kFirstTrail && unit < kAfterTrails;
    if (isTrail != (m_lead != 0)) {
        m_isValid = false;
    } else if (isTrail) {
        AppendCodePoint(kFirstOfPairs + ((m_lead & kTrailMask) << kTrailBits) + (unit & kTrailMask),
                        text);
        m_lead = 0;
    } else if (unit >= kFirstLead && unit < kFirstTrail) {
        m_lead = unit;
    } else {
        AppendCodePoint(unit, text);
    }
}

void Utf16Encoder::Add(std::string_view text, std::string& bytes) {
    // What is pending is a beginning that fits; it grows by a byte at a time.
    while (!m_pending.empty() && !text.empty()) {
        m_pending += text.front();
        text.remove_prefix(1);
        const std::size_t length = CharacterLength(m_pending);
        if (length != 0) {
            AppendCharacter(CodePointOf(m_pending), bytes);
            m_pending.clear();
        } else if (m_pending.size() >= LengthFromLead(m_pending.front())) {
            // No character after all. The first byte is none; the others may begin one.
            const std::string rest = m_pending.substr(1);
            m_pending.clear();
            AppendCharacter(kReplacementCharacter, bytes);
            Add(rest, bytes);
        }
    }
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 0 && text.size() < LengthFromLead(text.front())) {
            m_pending = text;
            return;
        }
        AppendCharacter(length == 0 ? kReplacementCharacter : CodePointOf(text.substr(0, length)),
                        bytes);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

void Utf16Encoder::AppendCharacter(char32_t codePoint, std::string& bytes) const {
    if (codePoint < kFirstOfPairs) {
        AppendUnit(codePoint, bytes);
        return;
    }
    AppendUnit(kFirstLead + ((codePoint - kFirstOfPairs) >> kTrailBits), bytes);
    AppendUnit(kFirstTrail + (codePoint & kTrailMask), bytes);
}

void Utf16Encoder::AppendUnit(char32_t unit, std::string& bytes) const {
    constexpr unsigned kBitsOfByte = 8;
    constexpr char32_t kByteMask = 0xFF;
    const char low = static_cast<char>(static_cast<unsigned char>(unit & kByteMask));
    const char high = static_cast<char>(static_cast<unsigned char>(unit >> kBitsOfByte));
    bytes += m_order == ByteOrder::kLittleEndian ? low : high;
    bytes += m_order == ByteOrder::kLittleEndian ? high : low;
}

}  // namespace quillet
