#include "platform/widetext_windows.h"

#include <windows.h>

#include <limits>

namespace quillet {

namespace {

// The system measures texts with an int.
template <typename Text>
bool IsTooLong(const Text& text) {
    return text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max());
}

}  // namespace

std::wstring ToWideText(std::string_view text) {
    if (text.empty() || IsTooLong(text)) return {};
    const int length = static_cast<int>(text.size());
    const int wideLength =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(wideLength), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), length, wide.data(),
                        wideLength);
    return wide;
}

std::string FromWideText(std::wstring_view text) {
    if (text.empty() || IsTooLong(text)) return {};
    const int wideLength = static_cast<int>(text.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), wideLength, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), wideLength, narrow.data(), length, nullptr,
                        nullptr);
    return narrow;
}

}  // namespace quillet
