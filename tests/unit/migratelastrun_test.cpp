#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/lastrun.h"
#include "support/rownames.h"

namespace quillet::migrate {
namespace {

// Each letter is a command with a text of its own, capitals are those that were converted; a digit
// is an IGRAPH command that was not. The first lines are 10, 20, ...
std::vector<KeyedCommand> KeyedCommandsOf(std::string_view letters) {
    std::vector<KeyedCommand> commands;
    std::int64_t line = 0;
    for (const char letter : letters) {
        line += 10;
        const bool isGraph = letter >= '0' && letter <= '9';
        const bool isConverted = letter >= 'A' && letter <= 'Z';
        const std::string text(1, isConverted ? static_cast<char>(letter - 'A' + 'a') : letter);
        commands.push_back({{text, 1}, isGraph ? "IGRAPH" : "TABLES", isConverted, line});
    }
    return commands;
}

struct RunChangeCase {
    const char* name;
    const char* before;
    const char* now;
    std::vector<std::int64_t> mended;
    std::vector<std::int64_t> failing;
    std::vector<std::int64_t> gone;
    std::int64_t stillFailing;
};

class CompareCommandsTest : public testing::TestWithParam<RunChangeCase> {};

TEST_P(CompareCommandsTest, TellsWhatHasChanged) {
    const RunChangeCase& c = GetParam();
    FileChanges changes;
    ChangeSums sums;
    CompareCommands(KeyedCommandsOf(c.before), KeyedCommandsOf(c.now), changes, sums);
    EXPECT_EQ(changes.mended, c.mended);
    EXPECT_EQ(changes.failing, c.failing);
    EXPECT_EQ(changes.gone, c.gone);
    EXPECT_EQ(sums.stillFailing, c.stillFailing);
    EXPECT_EQ(sums.mended, static_cast<std::int64_t>(c.mended.size()));
    EXPECT_EQ(sums.failing, static_cast<std::int64_t>(c.failing.size()));
    EXPECT_EQ(sums.gone, static_cast<std::int64_t>(c.gone.size()));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CompareCommandsTest,
    testing::Values(
        RunChangeCase{"nothing", "", "", {}, {}, {}, 0},
        RunChangeCase{"all is as it was", "AbC", "AbC", {}, {}, {}, 1},
        RunChangeCase{"the same text is converted now", "AbC", "ABC", {20}, {}, {}, 0},
        RunChangeCase{"the same text fails now", "ABC", "AbC", {}, {20}, {}, 0},
        RunChangeCase{"another text in its place", "AbC", "AXC", {20}, {}, {}, 0},
        RunChangeCase{"another text that fails as well", "AbC", "AxC", {}, {}, {}, 1},
        RunChangeCase{"another text that fails alone", "ABC", "AxC", {}, {20}, {}, 0},
        RunChangeCase{"one at the end was mended", "Ab", "AX", {20}, {}, {}, 0},
        RunChangeCase{"one at the beginning", "bA", "XA", {10}, {}, {}, 0},
        RunChangeCase{"one was taken out", "AbC", "AC", {}, {}, {20}, 0},
        RunChangeCase{"one was put in", "AC", "AbC", {}, {20}, {}, 0},
        RunChangeCase{"one in another place is no correction", "AbCD", "ACXD", {}, {}, {20}, 0},
        RunChangeCase{"nor is one of another type", "A1C", "AXC", {}, {}, {20}, 0},
        RunChangeCase{"types are told apart in one place", "A1bC", "AxYC", {}, {}, {20}, 1},
        RunChangeCase{"the first of equal ones was mended", "bbb", "Xbb", {10}, {}, {}, 2},
        RunChangeCase{"one of equal ones in the middle", "bbb", "bXb", {20}, {}, {}, 2},
        RunChangeCase{"the last of equal ones", "bbb", "bbX", {30}, {}, {}, 2},
        RunChangeCase{"one was moved", "aBCd", "BCda", {}, {}, {}, 2},
        RunChangeCase{"all were turned around", "abc", "cba", {}, {}, {}, 3},
        RunChangeCase{"all are new", "", "aB", {}, {10}, {}, 0},
        RunChangeCase{"all are gone", "aB", "", {}, {}, {10}, 0}),
    NameOfRow<RunChangeCase>);

TEST(MigrateLastRunTest, WhatIsNoLegacyCommandIsPassedOver) {
    std::vector<KeyedCommand> other = KeyedCommandsOf("a");
    other[0].type = "command";
    FileChanges changes;
    ChangeSums sums;
    CompareCommands(other, {}, changes, sums);
    CompareCommands({}, other, changes, sums);
    EXPECT_EQ(sums.gone + sums.failing + sums.stillFailing, 0);
}

}  // namespace
}  // namespace quillet::migrate
