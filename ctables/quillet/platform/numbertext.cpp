// `std::to_chars` knows no locale and says where its text ends, or that there is no room for it. A
// length that is taken for granted would show memory beyond the buffer.
#include "platform/numbertext.h"

#include <array>
#include <charconv>
#include <limits>
#include <system_error>

#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr const char* kModule = "numbertext";
constexpr int kMostDecimals = 9;

}  // namespace

std::string FixedText(double value, int decimals) {
    if (!QUILLET_ASSERT(decimals >= 0 && decimals <= kMostDecimals, "decimals <= kMostDecimals")) {
        decimals = kMostDecimals;
    }
    // A sign, the digits before the point, which are one more than the exponent, and the point.
    constexpr std::size_t kBeforeDecimals = std::numeric_limits<double>::max_exponent10 + 3;
    std::array<char, kBeforeDecimals + kMostDecimals> text{};
    const auto [pEnd, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                             std::chars_format::fixed, decimals);
    if (!QUILLET_ASSERT(error == std::errc(), "error == std::errc()")) return {};
    return {text.data(), pEnd};
}

std::string PaddedText(std::uint64_t value, int width) {
    std::array<char, std::numeric_limits<std::uint64_t>::digits10 + 1> text{};
    const auto [pEnd, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    if (!QUILLET_ASSERT(error == std::errc(), "error == std::errc()")) return {};
    const auto length = static_cast<int>(pEnd - text.data());
    std::string padded(width > length ? static_cast<std::size_t>(width - length) : 0, '0');
    return padded.append(text.data(), pEnd);
}

}  // namespace quillet
