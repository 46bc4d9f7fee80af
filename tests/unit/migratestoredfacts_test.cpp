#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "migrate/storedfacts.h"
#include "migratereports.h"

namespace quillet::migrate {
namespace {

using testing::ElementsAre;

using MigrateStoredFactsTest = ReportTest;

TEST_F(MigrateStoredFactsTest, GoesThroughCommands) {
    const std::unique_ptr<StoredFile> file =
        m_folder.Store("commands", "xx" + CommandsText() + "yy");
    std::vector<std::string> sources;
    const ArrayPlace place = {file.get(), 2, file->Size() - 4};
    EXPECT_TRUE(ForEachCommand(
        place, [&](const CommandFacts& command) { sources.push_back(command.source); }));
    EXPECT_THAT(sources, ElementsAre("IGRAPH \xC3\xA9.", "TABLES \"x\"\n /y\t</script>."));
    EXPECT_FALSE(ForEachCommand({file.get(), 0, 20}, [](const CommandFacts&) {}));
    EXPECT_FALSE(ForEachCommand({file.get(), 2, file->Size() + 5}, [](const CommandFacts&) {}));
    EXPECT_TRUE(ForEachCommand({}, [](const CommandFacts&) { ADD_FAILURE(); }));
}

TEST_F(MigrateStoredFactsTest, GoesThroughFindings) {
    std::vector<std::string> told;
    const ArrayPlace place = {m_findings.get(), 0, m_findings->Size()};
    ASSERT_TRUE(ForEachFinding(place, [&](const FindingFacts& finding) {
        told.push_back(finding.code + "|" + finding.kind + "|" + finding.command + "|" +
                       std::to_string(finding.firstLine) + "|" + std::to_string(finding.lastLine) +
                       "|" + std::to_string(finding.causeLine) + "|" + finding.sentence + "|" +
                       finding.text);
    }));
    EXPECT_THAT(told, ElementsAre("encoding-doubtful|changed||1|1|1|Looks like \xC3\xA9|",
                                  "macro-body|overlooked|TABLES|20|22|18|In a macro|TABLES\n /x\n"
                                  "</script>."));
    const std::unique_ptr<StoredFile> changed = m_folder.Store("changed", R"([{"kind":"eaten"}])");
    EXPECT_FALSE(ForEachFinding({changed.get(), 0, changed->Size()}, [](const FindingFacts&) {
        ADD_FAILURE() << "should not have been handed over";
    }));
}

// A report may change after it was read.
TEST_F(MigrateStoredFactsTest, CommandsThatHaveChangedAreRefused) {
    for (const char* number : {"-1", "1e300", "0.5", "2147483648", "18446744073709551615",
                               "99999999999999999999999", "1e999", "\"1\"", "null", "[]", "true"}) {
        const std::unique_ptr<StoredFile> file =
            m_folder.Store("commands", R"([{"errorColumn":)" + std::string(number) + "}]");
        EXPECT_FALSE(ForEachCommand({file.get(), 0, file->Size()}, [](const CommandFacts&) {
            ADD_FAILURE() << "should not have been handed over";
        })) << number;
    }
}

TEST_F(MigrateStoredFactsTest, ACommandHasAllThatItsObjectTells) {
    const std::unique_ptr<StoredFile> file = m_folder.Store(
        "commands",
        R"([{"type":"TABLES","outcome":"converted","firstLine":3,"lastLine":5,"source":"a",)"
        R"("generated":"b","generatedLine":7,"warnings":["c","d"],"later":{"source":["no"]}},)"
        R"({"type":"IGRAPH","outcome":"failed","error":"e","errorLine":9,"errorColumn":2,)"
        R"("message":"f","hint":"g","warnings":[]}])");
    std::vector<CommandFacts> commands;
    ASSERT_TRUE(ForEachCommand({file.get(), 0, file->Size()},
                               [&](const CommandFacts& command) { commands.push_back(command); }));
    ASSERT_EQ(commands.size(), 2U);
    const CommandFacts& converted = commands[0];
    EXPECT_EQ(converted.type + converted.outcome, "TABLESconverted");
    EXPECT_EQ(converted.source + converted.generated, "ab");
    EXPECT_THAT(converted.warnings, ElementsAre("c", "d"));
    EXPECT_EQ(converted.firstLine, 3);
    EXPECT_EQ(converted.lastLine, 5);
    EXPECT_EQ(converted.generatedLine, 7);
    EXPECT_EQ(converted.error + converted.message + converted.hint, "");
    const CommandFacts& failed = commands[1];
    EXPECT_EQ(failed.type + failed.outcome, "IGRAPHfailed");
    EXPECT_EQ(failed.error + failed.message + failed.hint, "efg");
    EXPECT_EQ(failed.errorLine, 9);
    EXPECT_EQ(failed.errorColumn, 2);
    EXPECT_EQ(failed.source + failed.generated, "");
    EXPECT_THAT(failed.warnings, ElementsAre());
}

TEST_F(MigrateStoredFactsTest, WhatIsNoArrayOfObjectsIsRefused) {
    for (const char* text :
         {"", "{}", "1", "[1]", "[[]]", "[null]", "[{}", "[{}]]", "[{},]", R"([{"warnings":[1]}])",
          R"([{"warnings":"a"}])", R"([{"warnings":[["a"]]}])", R"([{"type":["TABLES"]}])"}) {
        const std::unique_ptr<StoredFile> file = m_folder.Store("commands", text);
        EXPECT_FALSE(
            ForEachCommand({file.get(), 0, file->Size()}, [](const CommandFacts& /*command*/) {}))
            << text;
    }
}

}  // namespace
}  // namespace quillet::migrate
