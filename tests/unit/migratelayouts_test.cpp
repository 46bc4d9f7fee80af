#include <gtest/gtest.h>

#include "migrate/layouts.h"

namespace quillet::migrate {
namespace {

TEST(MigrateLayoutsTest, HaveNames) {
    for (const Layout layout : {Layout::kAuto, Layout::kInteractive, Layout::kBatch}) {
        EXPECT_EQ(LayoutOf(NameOf(layout)), layout);
    }
    EXPECT_FALSE(LayoutOf("Batch"));
    EXPECT_FALSE(LayoutOf(""));
}

TEST(MigrateLayoutsTest, APatternCountsMore) {
    LayoutRules rules(Layout::kInteractive);
    rules.AddBatch("*.inc");
    rules.AddBatch("old/*");
    EXPECT_EQ(rules.ForPath("a/b.INC"), Layout::kBatch);
    EXPECT_EQ(rules.ForPath("old/a.sps"), Layout::kBatch);
    EXPECT_EQ(rules.ForPath("a.sps"), Layout::kInteractive);
    EXPECT_TRUE(rules.IsBatchByName("x.inc"));
    EXPECT_FALSE(rules.IsBatchByName("x.sps"));
    EXPECT_EQ(LayoutRules().ForPath("a"), Layout::kAuto);
    EXPECT_EQ(rules.ForAll(), Layout::kInteractive);
}

}  // namespace
}  // namespace quillet::migrate
