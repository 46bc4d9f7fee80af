// The proof that two conversions say the same.
//
// A macro's body is rewritten by rules of thumb. What keeps that sound is this comparison alone, so
// it shares nothing with what rewrites, and forgives nothing but what it says here.
#ifndef QUILLET_DRIVER_BODYPROOF_H
#define QUILLET_DRIVER_BODYPROOF_H

#include <optional>
#include <string>

#include "driver/convertedcommands.h"
#include "platform/codepage.h"

namespace quillet {

/// Where two texts part: what each of them says from there on, a few words of it.
struct TextDifference {
    std::string expected;  ///< Empty where the text is over.
    std::string found;
};

/// The first difference of two results; none when they say the same. Blanks, line ends, comments,
/// the letter case of names (of ASCII) and the order of CATEGORIES subcommands that follow one
/// another and are about different variables do not count. Literals, numbers, inline data and
/// DOCUMENT text are compared byte by byte. Linear in both, but for the sorting of CATEGORIES.
[[nodiscard]] std::optional<TextDifference> FindDifference(const ConvertedCommands& expected,
                                                           const ConvertedCommands& found,
                                                           const CodePage& codePage);

}  // namespace quillet

#endif  // QUILLET_DRIVER_BODYPROOF_H
