// Checks that work takes time in proportion to the size of its input.
#ifndef QUILLET_TESTS_UNIT_LINEARTIME_H
#define QUILLET_TESTS_UNIT_LINEARTIME_H

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

namespace quillet {

/// Processor time that `work` takes, in seconds: the best of three runs, since other programs
/// can only make it slower.
template <typename Work>
[[nodiscard]] double BestTime(const Work& work) {
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
        const std::clock_t start = std::clock();
        work();
        best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return best;
}

/// Expects that four times the input takes about four times as long; quadratic work would take
/// sixteen times as long. `work` is called with the size, which should take some hundredths of a
/// second.
template <typename Size, typename Work>
void ExpectLinearTime(Size size, const Work& work) {
    const double once = BestTime([&] { work(size); });
    const double fourTimes = BestTime([&] { work(4 * size); });
    EXPECT_LT(fourTimes, 9 * once + 0.05) << once << " s for a quarter of the input";
}

}  // namespace quillet

#endif  // QUILLET_TESTS_UNIT_LINEARTIME_H
