#include "translator/percentagebases.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "conversionhelper.h"
#include "translator/treeediting.h"

namespace quillet {
namespace {

constexpr HoldsBase kYes = HoldsBase::kYes;
constexpr HoldsBase kNo = HoldsBase::kNo;
constexpr HoldsBase kDisagree = HoldsBase::kDisagree;

TEST(PercentageBasesTest, ADimensionHoldsOrDoesNotOrDisagrees) {
    struct Case {
        const char* dimension;
        VariableNames names;
        HoldsBase holds;
    };
    const Case cases[] = {
        {"a", {"A"}, kYes},
        {"a", {"B"}, kNo},
        {"a", {}, kNo},
        {"a", {"X", "A"}, kYes},
        {"ab", {"A"}, kNo},
        {"a > b", {"B"}, kYes},
        {"a > b", {"A", "B"}, kYes},
        {"a > b", {"C"}, kNo},
        {"a + b", {"A"}, kDisagree},
        {"a + b", {"B"}, kDisagree},
        {"a + b", {"A", "B"}, kYes},
        {"a + b", {"C"}, kNo},
        {"a + a", {"A"}, kYes},
        {"a + a + b + a", {"A"}, kDisagree},
        {"a + a + b + a", {"A", "B"}, kYes},
        {"a + (a > c) + a + b", {"A"}, kDisagree},
        {"a + (a > c) + a + b", {"C"}, kDisagree},
        {"a + (a > c) + a + b", {"A", "C"}, kDisagree},
        {"a + (a > c) + a + b", {"A", "B"}, kYes},
        {"(a > c > a) + (c > a)", {"A"}, kYes},
        {"a + b + c", {"A", "C"}, kDisagree},
        {"a + b + c", {"A", "B", "C"}, kYes},
        {"a > b + c", {"A"}, kDisagree},
        {"a > b + c > a", {"A"}, kYes},
        {"a > b + c > d", {"A", "D"}, kYes},
        {"a > (b + c)", {"A"}, kYes},
        {"a > (b + c)", {"B"}, kDisagree},
        {"a > (b + c)", {"B", "C"}, kYes},
        {"(a + b) > (c + d)", {"A", "C"}, kDisagree},
        {"(a + b) > (c + d)", {"A", "B"}, kYes},
        {"(a + b) > (c + d)", {"C", "D"}, kYes},
        {"(a + b > (c + d)) > e", {"A", "C"}, kDisagree},
        {"(a + b > (c + d)) > e", {"A", "C", "D"}, kYes},
        {"(a + b > (c + d)) > e", {"E"}, kYes},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dimension);
        ParsedCommand parsed(std::string("TABLES /TABLE ") + c.dimension);
        ASSERT_TRUE(parsed.Parsed());
        CommandBudget budget;
        DimensionBaseTest test(*parsed.Table().GetChild(0), budget);
        EXPECT_EQ(test.Test(c.names), c.holds);
        EXPECT_EQ(test.Test({"NOWHERE"}), kNo);
        EXPECT_EQ(test.Test(c.names), c.holds) << "an earlier test must leave no trace";
    }
}

// Sets that share a name would make the test look at its places again for every set.
TEST(PercentageBasesTest, TheSamePlacesAreChargedFromTheSecondTimeOn) {
    constexpr int kPlaces = 4097;
    std::string dimension;
    for (int i = 0; i < kPlaces; ++i) dimension += "+x>a" + std::to_string(i);
    ParsedCommand parsed("TABLES /TABLE b BY " + dimension.substr(1));
    ASSERT_TRUE(parsed.Parsed());
    CommandBudget budget;
    DimensionBaseTest test(*parsed.Table().GetChild(1), budget);
    for (std::size_t left = CommandBudget::kMaxCopies; left > 0; left -= kPlaces - 1) {
        ASSERT_EQ(test.Test({"X"}), kYes) << left;
    }
    EXPECT_EQ(test.Test({"X"}), kYes) << "the first time was free";
    EXPECT_EQ(test.Test({"A1"}), kDisagree);
    EXPECT_THROW(static_cast<void>(test.Test({"X"})), CommandTooLarge);
}

TEST(PercentageBasesTest, TheDimensionsMakeTheBases) {
    struct Case {
        HoldsBase rows;
        HoldsBase columns;
        HoldsBase layers;
        unsigned bases;
    };
    const unsigned row = TBTR_ROWPCT;
    const unsigned column = TBTR_COLPCT;
    const unsigned layer = TBTR_LAYERPCT;
    const unsigned table = TBTR_TABPCT;
    const Case cases[] = {
        {kYes, kNo, kYes, row},
        {kYes, kYes, kYes, table},
        {kYes, kYes, kNo, table},
        {kYes, kNo, kNo, table},
        {kNo, kYes, kYes, column},
        {kNo, kYes, kNo, table},
        {kNo, kNo, kYes, layer},
        {kNo, kNo, kNo, table},
        {kDisagree, kNo, kYes, row | layer},
        {kDisagree, kYes, kYes, column | table},
        {kDisagree, kNo, kNo, table},
        {kYes, kDisagree, kYes, row | table},
        {kNo, kDisagree, kYes, column | layer},
        {kYes, kNo, kDisagree, row | table},
        {kNo, kYes, kDisagree, column | table},
        {kNo, kNo, kDisagree, layer | table},
        {kDisagree, kDisagree, kYes, row | column | layer | table},
        {kDisagree, kNo, kDisagree, row | layer | table},
        {kDisagree, kDisagree, kDisagree, row | column | layer | table},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(c.rows) << static_cast<int>(c.columns)
                                        << static_cast<int>(c.layers));
        EXPECT_EQ(BasesFor(c.rows, c.columns, c.layers), c.bases);
    }
}

TEST(PercentageBasesTest, NamesTheBases) {
    EXPECT_EQ(BaseWord(TBTR_ROWPCT), "ROWPCT.");
    EXPECT_EQ(BaseWord(TBTR_COLPCT), "COLPCT.");
    EXPECT_EQ(BaseWord(TBTR_LAYERPCT), "LAYERPCT.");
    EXPECT_EQ(BaseWord(TBTR_TABPCT), "TABLEPCT.");

    const AssertionRecorder assertions;
    EXPECT_EQ(BaseWord(static_cast<PercentageBase>(16)), "TABLEPCT.");
    EXPECT_EQ(assertions.Texts(), std::vector<std::string>({"pctBases & TBTR_TABPCT"}));
}

// The bases of a percentage of the first variable of the dimension that carries the statistics.
unsigned BasesIn(const std::string& dimensions, std::size_t statsCompDim,
                 const VariableNames* pNames) {
    ParsedCommand parsed("TABLES /TABLE " + dimensions);
    const VariableTypes types(CodePage::Utf8(), parsed.Globals());
    const Term term({LeavesOf(*parsed.Table().GetChild(statsCompDim - 1)).front()}, types);
    CommandBudget budget;
    PercentageBases bases(parsed.Table(), statsCompDim, budget);
    const unsigned first = bases.BasesOf(pNames, term);
    EXPECT_EQ(bases.BasesOf(pNames, term), first);
    return first;
}

TEST(PercentageBasesTest, TheTermAnswersForItsDimension) {
    struct Case {
        const char* dimensions;
        std::size_t statsCompDim;
        VariableNames names;
        unsigned bases;
    };
    const unsigned row = TBTR_ROWPCT;
    const unsigned column = TBTR_COLPCT;
    const unsigned layer = TBTR_LAYERPCT;
    const unsigned table = TBTR_TABPCT;
    const Case cases[] = {
        // A dimension that is not there holds everything.
        {"a", 1, {"A"}, table},
        {"a", 1, {"X"}, column},
        {"a BY b", 1, {"A"}, row},
        {"a BY b", 1, {"B"}, column},
        {"a BY b", 1, {"A", "B"}, table},
        {"a BY b", 1, {"X"}, layer},
        {"a BY b", 2, {"A"}, row},
        {"a BY b", 2, {"B"}, column},
        {"a BY b BY c", 1, {"A"}, table},
        {"a BY b BY c", 1, {"A", "C"}, row},
        {"a BY b BY c", 2, {"B", "C"}, column},
        {"a BY b BY c", 3, {"C"}, layer},
        {"a BY b BY c", 3, {"X"}, table},
        {"a BY b + c", 1, {"B"}, column | layer},
        {"a BY b + c", 1, {"A", "B"}, row | table},
        // The term alone counts, however its dimension goes on.
        {"a + b BY c", 1, {"B"}, layer},
        {"a + b BY c", 1, {"A"}, row},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dimensions);
        EXPECT_EQ(BasesIn(c.dimensions, c.statsCompDim, &c.names), c.bases);
    }
}

TEST(PercentageBasesTest, ThereAreThreeDimensions) {
    ParsedCommand parsed("TABLES /TABLE a BY b");
    const VariableTypes types(CodePage::Utf8(), parsed.Globals());
    const Term term({parsed.Table().GetChild(0)}, types);
    const VariableNames names = {"A"};
    for (const std::size_t statsCompDim : {std::size_t{0}, std::size_t{4}}) {
        const AssertionRecorder assertions;
        CommandBudget budget;
        PercentageBases bases(parsed.Table(), statsCompDim, budget);
        EXPECT_EQ(bases.BasesOf(&names, term), static_cast<unsigned>(TBTR_TABPCT));
        EXPECT_EQ(assertions.Texts(),
                  std::vector<std::string>({"0 < statsCompDim && statsCompDim <= 3"}));
    }
}

TEST(PercentageBasesTest, WithoutBaseVariablesTheTableIsTheBase) {
    EXPECT_EQ(BasesIn("a BY b", 1, nullptr), static_cast<unsigned>(TBTR_TABPCT));
}

}  // namespace
}  // namespace quillet
