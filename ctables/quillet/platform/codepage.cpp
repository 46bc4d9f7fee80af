#include "platform/codepage.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include "platform/unicodeuppercase.h"

namespace quillet {

namespace {

unsigned ByteAt(const char* bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

// A character of more than one byte, decoded from UTF-8; length 0 when the bytes begin none.
struct Utf8Character {
    std::size_t length = 0;
    char32_t codePoint = 0;
};

// How many bytes the lead byte announces, 0 when it is no lead byte of a longer character.
std::size_t Utf8LengthFromLead(unsigned lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

// The second byte is what excludes overlong forms, surrogates and values beyond U+10FFFF.
bool IsUtf8SecondByte(unsigned lead, unsigned second) {
    switch (lead) {
        case 0xE0:
            return second >= 0xA0 && second <= 0xBF;
        case 0xED:
            return second >= 0x80 && second <= 0x9F;
        case 0xF0:
            return second >= 0x90 && second <= 0xBF;
        case 0xF4:
            return second >= 0x80 && second <= 0x8F;
        default:
            return second >= 0x80 && second <= 0xBF;
    }
}

Utf8Character DecodeUtf8(const char* bytes, std::size_t maxBytes) {
    const unsigned lead = ByteAt(bytes, 0);
    const std::size_t length = Utf8LengthFromLead(lead);
    if (length == 0 || length > maxBytes || !IsUtf8SecondByte(lead, ByteAt(bytes, 1))) return {};
    char32_t codePoint = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned byte = ByteAt(bytes, i);
        if ((byte & 0xC0U) != 0x80U) return {};
        codePoint = (codePoint << 6U) | (byte & 0x3FU);
    }
    return {length, codePoint};
}

char ToByte(char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); }

class Utf8CodePage final : public CodePage {
public:
    [[nodiscard]] std::size_t NonAsciiLength(const char* bytes,
                                             std::size_t maxBytes) const override {
        return DecodeUtf8(bytes, maxBytes).length;
    }

    void AppendUpper(std::string_view character, std::string& result) const override {
        const Utf8Character decoded = DecodeUtf8(character.data(), character.size());
        const char32_t capital = SimpleUppercase(decoded.codePoint);
        if (decoded.length == 0 || capital == decoded.codePoint) {
            result.append(character);
        } else {
            AppendCodePoint(capital, result);
        }
    }

    void AppendAsUtf8(std::string_view character, std::string& result) const override {
        result.append(character);
    }
};

class Windows1252CodePage final : public CodePage {
public:
    [[nodiscard]] std::size_t NonAsciiLength(const char* /*bytes*/,
                                             std::size_t /*maxBytes*/) const override {
        return 1;
    }

    void AppendUpper(std::string_view character, std::string& result) const override {
        const unsigned letter = ByteAt(character.data(), 0);
        result += ToByte(Capital(letter));
    }

    void AppendAsUtf8(std::string_view character, std::string& result) const override {
        const unsigned byte = ByteAt(character.data(), 0);
        const bool isSpecial = byte - kFirstSpecial < kSpecialCharacters.size();
        AppendCodePoint(isSpecial ? kSpecialCharacters[byte - kFirstSpecial] : byte, result);
    }

private:
    static constexpr unsigned kFirstSpecial = 0x80;
    // The characters of the bytes 0x80 to 0x9F; all others are those of Latin-1. The five bytes
    // that have none are control characters, so that every byte is a character.
    static constexpr std::array<char16_t, 32> kSpecialCharacters = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

    static constexpr unsigned Capital(unsigned letter) {
        constexpr unsigned kDivisionSign = 0xF7;
        switch (letter) {
            case 0x9A:  // s, o-e ligature and z with their marks
            case 0x9C:
            case 0x9E:
                return letter - 0x10;
            case 0xFF:  // y with diaeresis
                return 0x9F;
            default:
                return letter >= 0xE0 && letter != kDivisionSign ? letter - 0x20 : letter;
        }
    }
};

// True when none of the eight bytes is above 127.
bool AreAscii(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return (word & 0x8080808080808080U) == 0;
}

// Length of the ASCII bytes that `text` begins with.
std::size_t AsciiPrefixLength(std::string_view text) {
    std::size_t length = 0;
    while (text.size() - length >= 32 && AreAscii(&text[length]) && AreAscii(&text[length + 8]) &&
           AreAscii(&text[length + 16]) && AreAscii(&text[length + 24])) {
        length += 32;
    }
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) ++length;
    return length;
}

// True when `text` is shorter than a character and could grow into one.
bool MayGrowIntoCharacter(std::string_view text) {
    const unsigned lead = ByteAt(text.data(), 0);
    if (text.size() >= Utf8LengthFromLead(lead)) return false;
    if (text.size() >= 2 && !IsUtf8SecondByte(lead, ByteAt(text.data(), 1))) return false;
    return text.size() < 3 || (ByteAt(text.data(), 2) & 0xC0U) == 0x80U;
}

}  // namespace

void AppendCodePoint(char32_t codePoint, std::string& result) {
    if (codePoint < 0x80) {
        result += ToByte(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        result += ToByte(0xC0 | (codePoint >> 6U));
    } else {
        if (codePoint < 0x10000) {
            result += ToByte(0xE0 | (codePoint >> 12U));
        } else {
            result += ToByte(0xF0 | (codePoint >> 18U));
            result += ToByte(0x80 | ((codePoint >> 12U) & 0x3FU));
        }
        result += ToByte(0x80 | ((codePoint >> 6U) & 0x3FU));
    }
    result += ToByte(0x80 | (codePoint & 0x3FU));
}

std::string TextAsUtf8(const CodePage& codePage, std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t asciiLength = AsciiPrefixLength(text);
        result.append(text.substr(0, asciiLength));
        text.remove_prefix(asciiLength);
        if (text.empty()) break;
        const std::size_t length = codePage.NonAsciiLength(text.data(), text.size());
        if (length == 0) {
            AppendCodePoint(kReplacementCharacter, result);
        } else {
            codePage.AppendAsUtf8(text.substr(0, length), result);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

const CodePage& CodePage::Utf8() {
    static const Utf8CodePage codePage;
    return codePage;
}

const CodePage& CodePage::Windows1252() {
    static const Windows1252CodePage codePage;
    return codePage;
}

bool Utf8Validator::Add(std::string_view piece) {
    // A character that the last piece ended in is completed byte by byte.
    while (m_valid && !m_pending.empty() && !piece.empty()) {
        m_pending += piece.front();
        piece.remove_prefix(1);
        if (DecodeUtf8(m_pending.data(), m_pending.size()).length != 0) {
            m_pending.clear();
        } else {
            m_valid = MayGrowIntoCharacter(m_pending);
        }
    }
    while (m_valid && !piece.empty()) {
        piece.remove_prefix(AsciiPrefixLength(piece));
        if (piece.empty()) break;
        const std::size_t length = DecodeUtf8(piece.data(), piece.size()).length;
        if (length != 0) {
            piece.remove_prefix(length);
        } else {
            m_valid = MayGrowIntoCharacter(piece);
            if (m_valid) m_pending = std::exchange(piece, {});
        }
    }
    return m_valid;
}

}  // namespace quillet
