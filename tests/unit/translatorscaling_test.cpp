// Commands that grow in depth: nothing may recurse, and a table that multiplies out fails in time.
#include <gtest/gtest.h>

#include <string>

#include "conversionhelper.h"
#include "support/repetition.h"

namespace quillet {
namespace {

struct DeepCase {
    const char* name;
    std::string (*source)(int size);
    bool growsWhenMultiplied = true;
};

// Nearly as deep as a command can be.
TEST(TranslatorScalingTest, DeepTablesAreTranslated) {
    const DeepCase cases[] = {
        {"to the right",
         [](int n) { return "/TABLE " + Repeat("(a>(b+", n) + "c" + Repeat("))", n); }},
        {"to the left",
         [](int n) { return "/TABLE " + Repeat("((", n) + "c" + Repeat("+b)>a)", n); }},
        {"with totals",
         [](int n) {
             return "/FTOTAL t /TABLE " + Repeat("((", n) + "c" + Repeat("+t+b+t)>a+t)", n);
         }},
        {"with markers everywhere",
         [](int n) { return "/TABLE " + Repeat("(a>((LABELS)+", n) + "c" + Repeat("))", n); },
         false},
        {"with base variables",
         [](int n) {
             return "/TABLE " + Repeat("(a>(b+", n) + "c" + Repeat("))", n) +
                    " BY d /STATISTICS CPCT(d:c)";
         }},
    };
    for (const DeepCase& c : cases) {
        SCOPED_TRACE(c.name);
        // Multiplied out, such a table grows with the square of its depth.
        const TablesConversion deep = ConvertTablesCommand("TABLES " + c.source(600));
        EXPECT_TRUE(deep.translated);
        EXPECT_TRUE(deep.assertions.empty());
        const TablesConversion deeper = ConvertTablesCommand("TABLES " + c.source(1600));
        EXPECT_TRUE(deeper.parsed);
        EXPECT_EQ(deeper.translated, !c.growsWhenMultiplied);
        EXPECT_EQ(deeper.report.kind == TablesErrorKind::kTableTooLarge, c.growsWhenMultiplied);
    }
}

}  // namespace
}  // namespace quillet
