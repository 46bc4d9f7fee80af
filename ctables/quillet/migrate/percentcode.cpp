#include "migrate/percentcode.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

int DigitOf(char character) {
    const std::size_t digit = kHexDigits.find(character);
    return digit == std::string_view::npos ? -1 : static_cast<int>(digit);
}

bool StaysInPercentEncoding(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9') ||
           std::string_view("-._~/").find(byte) != std::string_view::npos;
}

}  // namespace

std::string PercentEncode(std::string_view bytes) {
    constexpr unsigned kDigitBits = 4;
    constexpr unsigned kDigitMask = 15;
    std::string text;
    for (const char byte : bytes) {
        if (StaysInPercentEncoding(byte)) {
            text += byte;
            continue;
        }
        const unsigned value = static_cast<unsigned char>(byte);
        text += '%';
        text += kHexDigits[value >> kDigitBits];
        text += kHexDigits[value & kDigitMask];
    }
    return text;
}

std::optional<std::string> PercentDecode(std::string_view text) {
    constexpr int kBase = 16;
    std::string bytes;
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (text[position] != '%') {
            bytes += text[position];
            continue;
        }
        if (text.size() - position < 3) return std::nullopt;
        const int high = DigitOf(text[position + 1]);
        const int low = DigitOf(text[position + 2]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes += static_cast<char>(high * kBase + low);
        position += 2;
    }
    return bytes;
}

}  // namespace quillet::migrate
