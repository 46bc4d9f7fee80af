// How the work of comparing names with patterns grows.
#include "migrate/pattern.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "support/repetition.h"
#include "support/work.h"

namespace quillet {
namespace {

using migrate::NamePattern;

TEST(PatternWorkTest, ManyStarsStayLinear) {
    const std::string stars = Repeat("*a", 100);
    ExpectLinearWork(std::size_t{5'000}, [&stars](std::size_t size) {
        const std::string name(size, 'a');
        EXPECT_FALSE(NamePattern(stars + "b").Matches(name));
        EXPECT_TRUE(NamePattern(stars).Matches(name));
    });
}

}  // namespace
}  // namespace quillet
