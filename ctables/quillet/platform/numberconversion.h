// Text to number, whatever the user's locale.
#ifndef QUILLET_PLATFORM_NUMBERCONVERSION_H
#define QUILLET_PLATFORM_NUMBERCONVERSION_H

namespace quillet {

struct ConvertedNumber {
    double value = 0.0;          ///< Infinite or denormal when out of range.
    const char* pEnd = nullptr;  ///< The first byte that was not converted.
    bool outOfRange = false;
};

/// Converts the beginning of the NUL-terminated `pText` as `strtod` does in the "C" locale,
/// hexadecimal numbers included. Linear in the number's length.
[[nodiscard]] ConvertedNumber ConvertNumber(const char* pText);

}  // namespace quillet

#endif  // QUILLET_PLATFORM_NUMBERCONVERSION_H
