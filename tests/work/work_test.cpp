// The count itself: it sees the library's steps and the bytes it moves, and tells what is linear
// from what is not.
#include "support/work.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "support/repetition.h"
#include "tokenizer/tokensurvey.h"

namespace quillet {
namespace {

int CountWords(int count) {
    return SurveyTokens(CodePage::Utf8(), Repeat("ab ", count), false, 0).count;
}

TEST(WorkTest, CountsTheStepsOfTheLibrary) {
    EXPECT_EQ(WorkOf([] {}), 0U);
    const std::uint64_t steps = WorkOf([] { EXPECT_EQ(CountWords(1000), 1000); });
    EXPECT_GT(steps, 1000U);
    EXPECT_EQ(WorkOf([] { EXPECT_EQ(CountWords(1000), 1000); }), steps);
}

TEST(WorkTest, CountsTheBytesThatAreMoved) {
    constexpr std::size_t kSize = 16'000;
    std::vector<char> bytes(kSize + 1, 'a');
    EXPECT_GE(WorkOf([&bytes] { std::memmove(bytes.data(), bytes.data() + 1, kSize); }), 1000U);
    EXPECT_EQ(bytes.front(), 'a');
}

TEST(WorkTest, TellsLinearWorkFromOther) {
    ExpectLinearWork(500, [](int size) { EXPECT_EQ(CountWords(size), size); });
    EXPECT_NONFATAL_FAILURE(ExpectLinearWork(100,
                                             [](int size) {
                                                 for (int i = 0; i < size; ++i) {
                                                     EXPECT_EQ(CountWords(size), size);
                                                 }
                                             }),
                            "steps for a quarter of the input");
}

}  // namespace
}  // namespace quillet
