#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "migrate/timetext.h"

namespace quillet::migrate {
namespace {

TEST(MigrateTimeTextTest, WritesTimes) {
    EXPECT_EQ(FormatTime(0), "1970-01-01T00:00:00Z");
    EXPECT_EQ(FormatTime(1795230000), "2026-11-21T03:00:00Z");
    EXPECT_EQ(ParseTime("2026-11-21T03:00:00Z"), 1795230000);
    EXPECT_EQ(ParseTime("2024-02-29T23:59:59Z"), 1709251199);
    EXPECT_EQ(FormatTime(-1), "1969-12-31T23:59:59Z");
    EXPECT_EQ(FormatTime(kFirstTime), "0000-01-01T00:00:00Z");
    EXPECT_EQ(FormatTime(kLastTime), "9999-12-31T23:59:59Z");
    EXPECT_EQ(FormatTime(kFirstTime - 1), FormatTime(kFirstTime));
    EXPECT_EQ(FormatTime(kLastTime + 1), FormatTime(kLastTime));
    EXPECT_EQ(FormatTime(std::numeric_limits<std::int64_t>::min()), FormatTime(kFirstTime));
    EXPECT_EQ(FormatTime(std::numeric_limits<std::int64_t>::max()), FormatTime(kLastTime));
    EXPECT_EQ(ParseTime(FormatTime(kFirstTime)), kFirstTime);
    EXPECT_EQ(ParseTime(FormatTime(kLastTime)), kLastTime);
    for (const char* text :
         {"", "yesterday", "2026-11-21", "2026-11-21T03:00:00", "2026-11-21T03:00:00Z ",
          "2026-13-21T03:00:00Z", "2026-00-21T03:00:00Z", "2026-02-29T03:00:00Z",
          "2026-11-00T03:00:00Z", "2026-11-21T24:00:00Z", "2026-11-21T03:60:00Z",
          "2026-11-21T03:00:60Z", "12026-11-21T03:00:00Z", "-026-11-21T03:00:00Z",
          "2026-11-21 03:00:00Z", "2026-11-21T+3:00:00Z"}) {
        EXPECT_FALSE(ParseTime(text)) << text;
    }
}

}  // namespace
}  // namespace quillet::migrate
