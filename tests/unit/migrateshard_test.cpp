#include <gtest/gtest.h>

#include <array>
#include <string>

#include "migrate/shard.h"

namespace quillet::migrate {
namespace {

// Slices that were given out must not change from version to version.
TEST(MigrateShardTest, HashesAreThePublishedOnes) {
    EXPECT_EQ(StableHash(""), 0xcbf29ce484222325ULL);
    EXPECT_EQ(StableHash("a"), 0xaf63dc4c8601ec8cULL);
    EXPECT_EQ(StableHash("foobar"), 0x85944171f73967e8ULL);
    EXPECT_EQ(StableHash("\xFF"), 0xaf64724c8602eb6eULL);
}

TEST(MigrateShardTest, EveryPathIsInOneSlice) {
    constexpr std::uint32_t kCount = 4;
    std::array<int, kCount> sizes{};
    for (int number = 0; number < 1000; ++number) {
        const std::string path = "folder/file " + std::to_string(number) + ".syn";
        int slices = 0;
        for (std::uint32_t index = 1; index <= kCount; ++index) {
            if (!IsInShard(path, {index, kCount})) continue;
            ++slices;
            ++sizes[index - 1];
        }
        EXPECT_EQ(slices, 1) << path;
    }
    for (const int size : sizes) EXPECT_NEAR(size, 250, 60);
}

TEST(MigrateShardTest, KnownSlices) {
    EXPECT_TRUE(IsInShard("foobar", {1, 4}));  // ...e8
    EXPECT_TRUE(IsInShard("a", {1, 4}));       // ...8c
    EXPECT_TRUE(IsInShard("", {2, 4}));        // ...25
    EXPECT_TRUE(IsInShard("anything", {1, 1}));
}

TEST(MigrateShardTest, ReadsSlices) {
    const std::optional<Shard> shard = ParseShard("3/16");
    ASSERT_TRUE(shard);
    EXPECT_EQ(shard->index, 3U);
    EXPECT_EQ(shard->count, 16U);
    EXPECT_EQ(LabelOf(*shard), "3-of-16");
    EXPECT_TRUE(ParseShard("1/1"));
}

TEST(MigrateShardTest, RefusesWhatIsNoSlice) {
    for (const char* text : {"", "/", "1", "1/", "/2", "0/4", "5/4", "-1/4", "+1/4", "1/4/2",
                             "1 /4", "1/4 ", "a/b", "1.0/4", "1/99999999999"}) {
        EXPECT_FALSE(ParseShard(text)) << text;
    }
}

}  // namespace
}  // namespace quillet::migrate
