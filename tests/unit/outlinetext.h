// Outlines of tables as lines that people can read and tests can compare.
#ifndef QUILLET_TESTS_OUTLINETEXT_H
#define QUILLET_TESTS_OUTLINETEXT_H

#include <string>

#include "outline/tableoutline.h"

namespace quillet::outline {

/// Everything that an outline says beyond its defaults, its parts separated by " | ". A variable
/// that is no category is followed by its role: income:scale. "@3" after a part is its line, where
/// that is not 1.
[[nodiscard]] std::string TextOfOutline(const CommandOutline& outline);

/// A dimension as an expression, with parentheses around each inner operator; "?" where the tree is
/// broken.
[[nodiscard]] std::string TextOfDimension(const Dimension& dimension);

}  // namespace quillet::outline

#endif  // QUILLET_TESTS_OUTLINETEXT_H
