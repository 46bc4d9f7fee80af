#include "platform/numbertext.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace quillet {
namespace {

// What the C library makes of it, where that is sure to fit.
std::string Printed(double value, int decimals) {
    std::array<char, 400> text{};
    const int length = std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    EXPECT_TRUE(length > 0 && static_cast<std::size_t>(length) < text.size());
    return text.data();
}

TEST(NumberTextTest, FixedTextIsThatOfTheCLibrary) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    for (const double value :
         {0.0,  -0.0, 0.04,  0.05,   0.25,     0.35,      0.95,           1.0,  1.5,
          2.5,  9.95, 9.96,  12.345, 99.9999,  1e6,       123456789.0625, 1e15, 1e22,
          1e63, 1e64, 1e300, 5e-324, kLargest, -kLargest, -1.25}) {
        for (const int decimals : {0, 1, 3, 9}) {
            EXPECT_EQ(FixedText(value, decimals), Printed(value, decimals)) << value;
        }
    }
}

TEST(NumberTextTest, FixedTextOfWhatIsNoNumber) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(FixedText(infinity, 1), "inf");
    EXPECT_EQ(FixedText(-infinity, 9), "-inf");
    EXPECT_EQ(FixedText(std::nan(""), 3), "nan");
}

TEST(NumberTextTest, PaddedTextHasAtLeastItsWidth) {
    EXPECT_EQ(PaddedText(0, 0), "0");
    EXPECT_EQ(PaddedText(0, 2), "00");
    EXPECT_EQ(PaddedText(7, 2), "07");
    EXPECT_EQ(PaddedText(2026, 4), "2026");
    EXPECT_EQ(PaddedText(12345, 4), "12345");
    EXPECT_EQ(PaddedText(std::numeric_limits<std::uint64_t>::max(), 20), "18446744073709551615");
}

}  // namespace
}  // namespace quillet
