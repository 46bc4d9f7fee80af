#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "migrate/options.h"

namespace quillet::migrate {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(MigrateOptionsTest, ReadsEverything) {
    const CommandLine line =
        ParseCommandLine({"--include", "*.syn", "SOURCE", "--include=*.sps", "--exclude", "old/*",
                          "--copy-others", "--batch", "--jobs", "3", "--dry-run", "--force",
                          "--quiet", "--shard", "2/5", "--junit", "j.xml", "TARGET"});
    ASSERT_TRUE(line.settings) << line.text;
    const Settings& settings = *line.settings;
    EXPECT_EQ(settings.source, "SOURCE");
    EXPECT_EQ(settings.target, "TARGET");
    EXPECT_THAT(settings.include, ElementsAre("*.syn", "*.sps"));
    EXPECT_THAT(settings.exclude, ElementsAre("old/*"));
    EXPECT_TRUE(settings.copyOthers && settings.dryRun && settings.force && settings.isQuiet);
    EXPECT_EQ(settings.layout, Layout::kBatch);
    EXPECT_EQ(settings.jobs, 3U);
    ASSERT_TRUE(settings.shard);
    EXPECT_EQ(settings.shard->index, 2U);
    EXPECT_EQ(settings.shard->count, 5U);
    EXPECT_EQ(settings.junitPath, "j.xml");
    EXPECT_TRUE(settings.reports.empty());
}

TEST(MigrateOptionsTest, LittleIsNeeded) {
    const CommandLine line = ParseCommandLine({"a", "b"});
    ASSERT_TRUE(line.settings) << line.text;
    const Settings& settings = *line.settings;
    EXPECT_FALSE(settings.copyOthers || settings.endAtBlankLines || settings.dryRun ||
                 settings.force || settings.acceptEdited || settings.isQuiet);
    EXPECT_TRUE(ParseCommandLine({"--accept-edited", "a", "b"}).settings->acceptEdited);
    EXPECT_EQ(settings.layout, Layout::kAuto);
    EXPECT_TRUE(settings.batchInclude.empty());
    EXPECT_GE(settings.jobs, 1U);
    EXPECT_FALSE(settings.shard);
    EXPECT_EQ(settings.junitPath, "");
}

TEST(MigrateOptionsTest, ReadsHowFilesAreLaidOut) {
    EXPECT_EQ(ParseCommandLine({"--layout", "interactive", "a", "b"}).settings->layout,
              Layout::kInteractive);
    EXPECT_EQ(ParseCommandLine({"--layout=auto", "a", "b"}).settings->layout, Layout::kAuto);
    EXPECT_EQ(ParseCommandLine({"--layout=batch", "--batch", "a", "b"}).settings->layout,
              Layout::kBatch);
    const CommandLine line = ParseCommandLine(
        {"--batch-include", "*.inc", "--batch-include=old/*", "--end-at-blank-lines", "a", "b"});
    ASSERT_TRUE(line.settings) << line.text;
    EXPECT_THAT(line.settings->batchInclude, ElementsAre("*.inc", "old/*"));
    EXPECT_TRUE(line.settings->endAtBlankLines);
}

TEST(MigrateOptionsTest, NamesAreTakenAsTheyAre) {
    const CommandLine line = ParseCommandLine({"--include", "[a,b]", "--", "[2019,2020]", "-x"});
    ASSERT_TRUE(line.settings) << line.text;
    EXPECT_THAT(line.settings->include, ElementsAre("[a,b]"));
    EXPECT_EQ(line.settings->source, "[2019,2020]");
    EXPECT_EQ(line.settings->target, "-x");
    const CommandLine dashes = ParseCommandLine({"--", "--", "{}"});
    ASSERT_TRUE(dashes.settings) << dashes.text;
    EXPECT_EQ(dashes.settings->source, "--");
    EXPECT_EQ(dashes.settings->target, "{}");
}

TEST(MigrateOptionsTest, MergesReports) {
    const CommandLine line = ParseCommandLine({"--merge-reports", "1.json", "2.json", "TARGET"});
    ASSERT_TRUE(line.settings) << line.text;
    EXPECT_THAT(line.settings->reports, ElementsAre("1.json", "2.json"));
    EXPECT_EQ(line.settings->target, "TARGET");
    EXPECT_TRUE(
        ParseCommandLine({"1.json", "T", "--merge-reports", "--quiet", "--junit", "x"}).settings);
}

TEST(MigrateOptionsTest, TellsAboutItself) {
    const CommandLine help = ParseCommandLine({"--help"});
    EXPECT_FALSE(help.settings);
    EXPECT_FALSE(help.isError);
    for (const char* text :
         {"SOURCE TARGET", "--include", "--exclude", "--copy-others", "--batch", "--layout",
          "--batch-include", "--end-at-blank-lines", "--jobs", "--dry-run", "--force",
          "--accept-edited", "--quiet", "--version", "--help", "--junit", "--shard",
          "--merge-reports FILE... TARGET", "Exit status"}) {
        EXPECT_THAT(help.text, HasSubstr(text));
    }
    const CommandLine version = ParseCommandLine({"--version"});
    EXPECT_FALSE(version.settings);
    EXPECT_FALSE(version.isError);
    EXPECT_THAT(version.text, testing::MatchesRegex("quillet-migrate [0-9.]+\n"));
}

struct UsageCase {
    std::vector<std::string> arguments;
    const char* message;
};

TEST(MigrateOptionsTest, RefusesWrongUsage) {
    const UsageCase cases[] = {
        {{}, "SOURCE and TARGET are missing"},
        {{"a"}, "TARGET is missing"},
        {{"a", "b", "c"}, "\"c\" is too much"},
        {{"", "b"}, "without a name"},
        {{"a", ""}, "without a name"},
        {{"--nonsense", "a", "b"}, "--nonsense is not an option"},
        {{"-x", "a", "b"}, "-x is not an option"},
        {{"a", "b", "--force=maybe"}, "maybe"},
        {{"a", "b", "--jobs"}, "--jobs"},
        {{"--jobs", "0", "a", "b"}, "--jobs: a number from 1 to 1024"},
        {{"--jobs", "-1", "a", "b"}, "--jobs: a number from 1 to 1024"},
        {{"--jobs", "1025", "a", "b"}, "--jobs: a number from 1 to 1024"},
        {{"--jobs", "two", "a", "b"}, "instead of \"two\""},
        {{"--jobs", "2x", "a", "b"}, "instead of \"2x\""},
        {{"--jobs", "1", "--jobs", "2", "a", "b"}, "--jobs"},
        {{"--shard", "0/4", "a", "b"}, "--shard: I/N"},
        {{"--shard", "5/4", "a", "b"}, "--shard: I/N"},
        {{"--shard", "half", "a", "b"}, "instead of \"half\""},
        {{"a", "b", "--shard"}, "--shard"},
        {{"a", "b", "--include"}, "--include"},
        {{"--include", "", "a", "b"}, "--include: the pattern is empty"},
        {{"--exclude", "", "a", "b"}, "--exclude: the pattern is empty"},
        {{"a", "b", "--junit"}, "--junit"},
        {{"--junit", "", "a", "b"}, "--junit: the name is empty"},
        {{"--force", "--accept-edited", "a", "b"}, "--accept-edited does not go with --force"},
        {{"--merge-reports", "--accept-edited", "a", "b"}, "--accept-edited does not go with"},
        {{"--merge-reports"}, "needs FILE... and TARGET"},
        {{"--merge-reports", "a"}, "needs FILE... and TARGET"},
        {{"--merge-reports", "--batch", "a", "b"}, "--batch does not go with"},
        {{"--layout", "landscape", "a", "b"}, "instead of \"landscape\""},
        {{"--layout", "", "a", "b"}, "--layout: auto, interactive or batch"},
        {{"--layout=auto", "--batch", "a", "b"}, "--batch does not go with --layout=auto"},
        {{"--batch-include", "", "a", "b"}, "--batch-include: the pattern is empty"},
        {{"--merge-reports", "--layout=batch", "a", "b"}, "--layout does not go with"},
        {{"--merge-reports", "--batch-include=x", "a", "b"}, "--batch-include does not go with"},
        {{"--merge-reports", "--end-at-blank-lines", "a", "b"},
         "--end-at-blank-lines does not go with"},
        {{"--merge-reports", "--dry-run", "a", "b"}, "--dry-run does not go with"},
        {{"--merge-reports", "--force", "a", "b"}, "--force does not go with"},
        {{"--merge-reports", "--copy-others", "a", "b"}, "--copy-others does not go with"},
        {{"--merge-reports", "--include", "x", "a", "b"}, "--include does not go with"},
        {{"--merge-reports", "--exclude", "x", "a", "b"}, "--exclude does not go with"},
        {{"--merge-reports", "--jobs", "1", "a", "b"}, "--jobs does not go with"},
        {{"--merge-reports", "--shard", "1/2", "a", "b"}, "--shard does not go with"},
    };
    for (const UsageCase& c : cases) {
        const CommandLine line = ParseCommandLine(c.arguments);
        EXPECT_FALSE(line.settings) << c.message;
        EXPECT_TRUE(line.isError) << c.message;
        EXPECT_THAT(line.text, HasSubstr(c.message));
    }
}

}  // namespace
}  // namespace quillet::migrate
