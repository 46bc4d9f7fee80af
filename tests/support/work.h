// Counts what the library does, so that a test can say how its cost grows without a clock: a busy
// machine changes nothing.
//
// The program work_tests is linked with a copy of the library that is compiled to call back at
// each of its basic blocks (-fsanitize-coverage=trace-pc).
#ifndef QUILLET_TESTS_SUPPORT_WORK_H
#define QUILLET_TESTS_SUPPORT_WORK_H

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

namespace quillet {

/// The work that `action` has the library do: a step for each basic block, and one for every 16
/// bytes that are copied, moved, compared or searched.
[[nodiscard]] std::uint64_t WorkOf(const std::function<void()>& action);

/// Expects that four times the input takes about four times the work; quadratic work would take
/// sixteen times as much. `work` is called with the size.
template <typename Size, typename Work>
void ExpectLinearWork(Size size, const Work& work) {
    const std::uint64_t once = WorkOf([&] { work(size); });
    const std::uint64_t fourTimes = WorkOf([&] { work(4 * size); });
    EXPECT_GT(once, 0U);
    // Sorting takes a little more than its share.
    EXPECT_LT(fourTimes, 5 * once) << once << " steps for a quarter of the input";
}

}  // namespace quillet

#endif  // QUILLET_TESTS_SUPPORT_WORK_H
