#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "migrate/commandskeleton.h"

namespace quillet::migrate {
namespace {

struct SkeletonCase {
    const char* name;
    std::string_view left;
    std::string_view right;
    bool isSame;
};

class MigrateCommandSkeletonTest : public testing::TestWithParam<SkeletonCase> {};

TEST_P(MigrateCommandSkeletonTest, ComparesTexts) {
    const SkeletonCase& c = GetParam();
    EXPECT_EQ(SkeletonOf(c.left, {}) == SkeletonOf(c.right, {}), c.isSame)
        << SkeletonOf(c.left, {}) << "\n"
        << SkeletonOf(c.right, {});
}

INSTANTIATE_TEST_SUITE_P(
    Texts, MigrateCommandSkeletonTest,
    testing::Values(
        SkeletonCase{"Names", "TABLES /TABLE=sex BY age.", "TABLES /TABLE=v1 BY \xC3\xA4.b.", true},
        SkeletonCase{"Literals", "TABLES /TITLE='a'.", "TABLES /TITLE=\"it's \"\"b\"\"\".", true},
        SkeletonCase{"Numbers", "TABLES /X=1.5.", "TABLES /X=20.", true},
        SkeletonCase{"Blanks", "TABLES /TABLE=a BY b.", "tables\n  /table = a\tby b .", true},
        SkeletonCase{"Comments", "TABLES /TABLE=a /* no */ BY b.", "TABLES /TABLE=a BY b.", true},
        SkeletonCase{"ManyComments", "TABLES /**//***//* */ /X/**/.", "TABLES /X.", true},
        SkeletonCase{"HalfComments", "TABLES /*/ x\n/X.", "TABLES /X.", true},
        SkeletonCase{"OpenComments", "TABLES /* no\n/TABLE=a.", "TABLES /TABLE=a.", true},
        SkeletonCase{"OpenLiterals", "TABLES 'a\n/TABLE=a.", "TABLES 'b c\n/TABLE=a.", true},
        SkeletonCase{"Subcommands", "TABLES /TABLE=a.", "TABLES /TITLE=a.", false},
        SkeletonCase{"Words", "TABLES /TABLE=a BY b.", "TABLES /TABLE=a TO b.", false},
        SkeletonCase{"Signs", "TABLES /TABLE=a+b.", "TABLES /TABLE=a>b.", false},
        SkeletonCase{"MoreNames", "TABLES /TABLE=a b.", "TABLES /TABLE=a.", false},
        SkeletonCase{"KindsOfValues", "TABLES /TABLE=a.", "TABLES /TABLE='a'.", false},
        SkeletonCase{"Commands", "TABLES /X=a.", "IGRAPH /X=a.", false}),
    [](const auto& testCase) { return std::string(testCase.param.name); });

TEST(MigrateCommandSkeletonTest, ThePlaceOfTheErrorCounts) {
    constexpr std::string_view kText = "TABLES\n  /TABLE=abc BY b\n  /X.";
    EXPECT_EQ(SkeletonOf(kText, {2, 10}), "TABLES / TABLE = ^n BY n / X . ");
    EXPECT_EQ(SkeletonOf(kText, {2, 12}), SkeletonOf(kText, {2, 10}));
    EXPECT_EQ(SkeletonOf(kText, {3, 4}), "TABLES / TABLE = n BY n / ^X . ");
    EXPECT_EQ(SkeletonOf(kText, {}), "TABLES / TABLE = n BY n / X . ");
    EXPECT_EQ(SkeletonOf(kText, {9, 1}), SkeletonOf(kText, {}));
    // Columns are characters.
    EXPECT_EQ(SkeletonOf("T '\xC3\xA4\xC3\xB6' x", {1, 8}), "T '' ^n ");
}

TEST(MigrateCommandSkeletonTest, TakesAnyBytes) {
    EXPECT_EQ(SkeletonOf("", {1, 1}), "");
    EXPECT_EQ(SkeletonOf("\xFF\xFE '", {1, 3}), "\xFF\xFE ^'' ");
}

}  // namespace
}  // namespace quillet::migrate
