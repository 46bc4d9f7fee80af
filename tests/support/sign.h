// What matters of a comparison's result.
#ifndef QUILLET_TESTS_SUPPORT_SIGN_H
#define QUILLET_TESTS_SUPPORT_SIGN_H

namespace quillet {

/// -1, 0 or 1.
[[nodiscard]] constexpr int SignOf(int value) { return value < 0 ? -1 : (value > 0 ? 1 : 0); }

}  // namespace quillet

#endif  // QUILLET_TESTS_SUPPORT_SIGN_H
