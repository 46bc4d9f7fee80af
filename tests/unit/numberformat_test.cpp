#include "outline/numberformat.h"

#include <gtest/gtest.h>

namespace quillet::outline {
namespace {

TEST(NumberFormatTest, TakesAFormatApart) {
    struct Case {
        const char* text;
        const char* letters;
        int width;
        int decimals;
    };
    const Case cases[] = {
        {"F8.2", "F", 8, 2},  {"pct5.1", "PCT", 5, 1},  {"DOLLAR12", "DOLLAR", 12, -1},
        {"F8.", "F", 8, -1},  {"F", "F", -1, -1},       {"x.", "X", -1, -1},
        {"é5", "É", 5, -1},   {"!fmt", "!FMT", -1, -1}, {"F00012345678901.2", "F", 214748363, 2},
        {"F8.2X", "F", 8, 2}, {"", "", -1, -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const Format format = MakeFormat(CodePage::Utf8(), c.text);
        EXPECT_EQ(format.text, c.text);
        EXPECT_EQ(format.letters, c.letters);
        EXPECT_EQ(format.width, c.width);
        EXPECT_EQ(format.decimals, c.decimals);
    }
}

}  // namespace
}  // namespace quillet::outline
