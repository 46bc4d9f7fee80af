// Long texts for tests.
#ifndef QUILLET_TESTS_SUPPORT_REPETITION_H
#define QUILLET_TESTS_SUPPORT_REPETITION_H

#include <concepts>
#include <string>
#include <string_view>

namespace quillet {

/// `count` times `piece`.
[[nodiscard]] std::string Repeat(std::string_view piece, std::integral auto count) {
    std::string text;
    for (; count > 0; --count) text += piece;
    return text;
}

}  // namespace quillet

#endif  // QUILLET_TESTS_SUPPORT_REPETITION_H
