// Number to text, whatever the user's locale. The one place that formats numbers with a precision
// or a width; plain whole numbers are what `std::to_string` is for.
#ifndef QUILLET_PLATFORM_NUMBERTEXT_H
#define QUILLET_PLATFORM_NUMBERTEXT_H

#include <cstdint>
#include <string>

namespace quillet {

/// `value` with `decimals` digits (0 to 9) after the point and no exponent: "3.2", "-0.050". Any
/// number is taken, also the largest, whose text has 309 digits before the point; "inf" and "nan",
/// signed where they are, for what is none.
[[nodiscard]] std::string FixedText(double value, int decimals);

/// `value` in decimal, with zeros before it where it has fewer than `width` digits (0 to 20).
[[nodiscard]] std::string PaddedText(std::uint64_t value, int width);

}  // namespace quillet

#endif  // QUILLET_PLATFORM_NUMBERTEXT_H
