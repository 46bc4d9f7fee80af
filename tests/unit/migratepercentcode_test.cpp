#include <gtest/gtest.h>

#include <string>

#include "migrate/percentcode.h"

namespace quillet::migrate {
namespace {

TEST(MigratePercentCodeTest, EncodesBytes) {
    const std::string bytes = "aZ09-._~/ %\xFF\n\"";
    EXPECT_EQ(PercentEncode(bytes), "aZ09-._~/%20%25%FF%0A%22");
    EXPECT_EQ(PercentDecode(PercentEncode(bytes)), bytes);
    for (const char* text : {"%", "%4", "%4G", "a%"}) EXPECT_FALSE(PercentDecode(text)) << text;
}

}  // namespace
}  // namespace quillet::migrate
