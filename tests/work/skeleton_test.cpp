// How the work of finding out what failed commands have in common grows.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "migrate/commandskeleton.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"

namespace quillet {
namespace {

// A command that grows by its repeated part.
struct SkeletonGrowth {
    const char* name;
    const char* pPart;
};

class SkeletonWorkTest : public testing::TestWithParam<SkeletonGrowth> {};

TEST_P(SkeletonWorkTest, IsLinear) {
    constexpr int kCount = 2000;
    constexpr std::int64_t kSomeColumn = 10;
    const std::string text = "TABLES " + Repeat(GetParam().pPart, kCount);
    const std::string longText = "TABLES " + Repeat(GetParam().pPart, 4 * kCount);
    ExpectLinearWork(std::size_t{1}, [&](std::size_t size) {
        EXPECT_NE(migrate::SkeletonOf(size == 1 ? text : longText, {1, kSomeColumn}), "");
    });
}

const SkeletonGrowth kSkeletonGrowths[] = {
    {"comments", "/**/"},
    {"comments with text", "/* x */"},
    {"comments never closed", "/*"},
    {"lines of them", "/*\n"},
    {"quotation marks", "'"},
    {"literals", "'x' "},
    {"names", "x.y "},
    {"periods", "x."},
    {"signs", "/ "},
    {"empty lines", "\n"},
};

INSTANTIATE_TEST_SUITE_P(Texts, SkeletonWorkTest, testing::ValuesIn(kSkeletonGrowths),
                         NameOfRow<SkeletonGrowth>);

}  // namespace
}  // namespace quillet
