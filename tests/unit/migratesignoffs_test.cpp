#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "migrate/commandkeys.h"
#include "migrate/jsonreport.h"
#include "migrate/signoffs.h"
#include "migratehelper.h"

namespace quillet::migrate {
namespace {

TEST(MigrateCommandKeysTest, HashesNeverChange) {
    EXPECT_EQ(TextHashOf(""), "cbf29ce484222325");
    EXPECT_EQ(TextHashOf("a"), "af63dc4c8601ec8c");
    EXPECT_EQ(TextHashOf("foobar"), "85944171f73967e8");
    EXPECT_NE(TextHashOf("\xC3\xA9"), TextHashOf("\xE9"));
    EXPECT_TRUE(IsTextHash("85944171f73967e8"));
    EXPECT_FALSE(IsTextHash("85944171F73967e8"));
    EXPECT_FALSE(IsTextHash("85944171f73967e"));
    EXPECT_FALSE(IsTextHash(""));
}

std::string SignedCommandText(std::int64_t line, std::string_view source, CommandOutcome outcome) {
    CommandReport command;
    command.type = CommandType::kTables;
    command.outcome = outcome;
    command.firstLine = command.lastLine = line;
    command.source = source;
    return CommandJson(command, TextEncoding::kUtf8);
}

std::string SignedFindingText(std::string_view code, std::string_view kind, int line,
                              std::string_view text) {
    return R"({"code":")" + std::string(code) + R"(","kind":")" + std::string(kind) +
           R"(","command":"IGRAPH","firstLine":)" + std::to_string(line) +
           R"(,"lastLine":9,"causeLine":1,"macro":null,"sentence":"s","text":")" +
           std::string(text) + R"("})";
}

// A file with three copies of one text, of which the second was overlooked, and a command that was
// taken out of a macro.
class SignOffTest : public testing::Test {
protected:
    [[nodiscard]] FileEntry Entry(std::string path) const {
        FileFacts facts;
        facts.path = std::move(path);
        return {facts,
                {m_commands.get(), 0, m_commands->Size()},
                {m_findings.get(), 0, m_findings->Size()}};
    }

    const TemporaryFolder m_folder;
    const std::unique_ptr<StoredFile> m_commands = m_folder.Store(
        "commands", "[" + SignedCommandText(3, "same", CommandOutcome::kConverted) + "," +
                        SignedCommandText(7, "macro", CommandOutcome::kConverted) + "," +
                        SignedCommandText(20, "same", CommandOutcome::kFailed) + "]");
    const std::unique_ptr<StoredFile> m_findings = m_folder.Store(
        "findings", "[" + SignedFindingText("swallowed", "changed", 2, "same") + "," +
                        SignedFindingText("same-line", "overlooked", 10, "same") + "," +
                        SignedFindingText("macro-body", "overlooked", 7, "macro") + "]");
};

TEST_F(SignOffTest, EachCommandHasOneKey) {
    std::vector<KeyedCommand> commands;
    ASSERT_TRUE(ReadKeyedCommands(Entry("a"), commands));
    ASSERT_EQ(commands.size(), 4U);
    const std::string same = TextHashOf("same");
    EXPECT_EQ(commands[0].key, (CommandKey{same, 1, 3}));
    EXPECT_TRUE(commands[0].isConverted);
    EXPECT_EQ(commands[1].key, (CommandKey{TextHashOf("macro"), 1, 1}));
    EXPECT_EQ(commands[1].type, "IGRAPH");
    EXPECT_FALSE(commands[1].isConverted);
    EXPECT_EQ(commands[2].key, (CommandKey{same, 2, 3}));
    EXPECT_EQ(commands[2].firstLine, 10);
    EXPECT_EQ(commands[3].key, (CommandKey{same, 3, 3}));
    EXPECT_EQ(commands[3].type, "TABLES");
    EXPECT_FALSE(commands[3].isConverted);
}

// What was overlooked is listed from its word on, what was met with what is before and after it.
TEST_F(SignOffTest, WhatIsAroundATextIsNoPartOfIt) {
    const std::unique_ptr<StoredFile> commands = m_folder.Store(
        "indented",
        "[" + SignedCommandText(1, " \t\v\f\r\nTABLES\n  /TABLE=a. \n", CommandOutcome::kFailed) +
            "," + SignedCommandText(7, "- TABLES /TABLE=a.", CommandOutcome::kFailed) + "," +
            SignedCommandText(9, " +\n", CommandOutcome::kFailed) + "]");
    const std::unique_ptr<StoredFile> findings = m_folder.Store(
        "cut-out", "[" + SignedFindingText("layout", "overlooked", 5, R"(TABLES\n  /TABLE=a.)") +
                       "," + SignedFindingText("layout", "overlooked", 6, R"(TABLES\n /TABLE=a.)") +
                       "]");
    std::vector<KeyedCommand> keyed;
    ASSERT_TRUE(ReadKeyedCommands(
        {{}, {commands.get(), 0, commands->Size()}, {findings.get(), 0, findings->Size()}}, keyed));
    ASSERT_EQ(keyed.size(), 5U);
    const std::string hash = TextHashOf("TABLES\n  /TABLE=a.");
    EXPECT_EQ(keyed[0].key, (CommandKey{hash, 1, 2}));
    EXPECT_EQ(keyed[1].key, (CommandKey{hash, 2, 2}));
    EXPECT_NE(keyed[2].key.hash, hash);
    EXPECT_EQ(keyed[3].key.hash, TextHashOf("TABLES /TABLE=a."));
    EXPECT_EQ(keyed[4].key.hash, TextHashOf(""));
}

TEST_F(SignOffTest, EachGoesWhereItBelongs) {
    const std::string same = TextHashOf("same");
    const std::string text = R"({"format":"quillet-signoff","formatVersion":1,"signOffs":[)"
                             R"({"path":"b","hash":")" +
                             same +
                             R"(","number":1,"state":"checked"},)"
                             R"({"path":"a","hash":")" +
                             same +
                             R"(","number":3,"state":"mended","remark":"r",)"
                             R"("firstLine":5,"later":{"x":[1]}},)"
                             R"({"path":"a","hash":")" +
                             same +
                             R"(","number":4,"state":"checked","firstLine":6},)"
                             R"({"path":"x","rawPath":"%FF","hash":")" +
                             same + R"(","number":2,"copies":3,"state":"checked"}]})";
    SignOffs signOffs;
    std::string problem;
    ASSERT_TRUE(ParseSignOffs(text, signOffs, problem)) << problem;
    Report report;
    report.files = {Entry("a"), Entry("\xFF")};
    ASSERT_TRUE(AssignSignOffs(signOffs, report));
    ASSERT_EQ(report.files[0].signOffs.size(), 1U);
    const SignOff& mended = report.files[0].signOffs[0];
    EXPECT_EQ(mended.key, (CommandKey{same, 3, 3}));
    EXPECT_EQ(mended.state, SignOffState::kMended);
    EXPECT_EQ(mended.remark, "r");
    EXPECT_EQ(mended.firstLine, 20);
    ASSERT_EQ(report.files[1].signOffs.size(), 1U);
    EXPECT_EQ(report.files[1].signOffs[0].firstLine, 10);
    ASSERT_EQ(report.otherSignOffs.size(), 2U);
    EXPECT_EQ(report.otherSignOffs[0].path, "a");
    EXPECT_EQ(report.otherSignOffs[0].signOff.firstLine, 6);
    EXPECT_EQ(report.otherSignOffs[1].path, "b");
    const Totals totals = TotalsOf(report.files);
    EXPECT_EQ(totals.commandsChecked, 1);
    EXPECT_EQ(totals.commandsMendedByHand, 1);
}

// Of three copies one was mended in the source, or a fourth was added: nobody knows which was
// meant.
TEST_F(SignOffTest, WithMoreOrFewerCopiesNoneIsMeant) {
    SignOffs signOffs;
    for (const std::int64_t copies : {1, 2, 4}) {
        const CommandKey key{TextHashOf("same"), 1, copies};
        signOffs["a"][key] = {key, SignOffState::kMended, "", 3};
    }
    Report report;
    report.files = {Entry("a")};
    ASSERT_TRUE(AssignSignOffs(signOffs, report));
    EXPECT_TRUE(report.files[0].signOffs.empty());
    ASSERT_EQ(report.otherSignOffs.size(), 3U);
    EXPECT_EQ(report.otherSignOffs[2].signOff.key.copies, 4);
    EXPECT_EQ(report.otherSignOffs[2].signOff.firstLine, 3);
    EXPECT_NE(OpenReportJson(report).find(R"("number":1,"copies":4,"state":"mended")"),
              std::string::npos);
}

TEST_F(SignOffTest, CommandsThatCannotBeReadAreNoticed) {
    const std::unique_ptr<StoredFile> damaged = m_folder.Store("damaged", "[{");
    Report report;
    report.files.push_back({Entry("a").facts, {damaged.get(), 0, damaged->Size()}, {}});
    EXPECT_TRUE(AssignSignOffs({}, report));
    EXPECT_FALSE(AssignSignOffs({{"a", {{CommandKey{TextHashOf("x"), 1}, SignOff()}}}}, report));
}

TEST_F(SignOffTest, DamageIsNamed) {
    const auto with = [](const std::string& signOffs) {
        return R"({"format":"quillet-signoff","formatVersion":1,"signOffs":[)" + signOffs + "]}";
    };
    const std::string good =
        R"({"path":"a","hash":"85944171f73967e8","number":1,"state":"checked")";
    const auto changed = [&](const char* pName, const nlohmann::json& value) {
        nlohmann::json signOff = nlohmann::json::parse(good + "}");
        signOff[pName] = value;
        return with(signOff.dump());
    };
    const std::pair<std::string, const char*> cases[] = {
        {"", "it is no JSON object, or it is damaged"},
        {with(good + "}").substr(0, 60), "it is no JSON object, or it is damaged"},
        {"[]", "it is no JSON object, or it is damaged"},
        {"{}", "its format is another one"},
        {R"({"format":"quillet-report"})", "its format is another one"},
        {R"({"format":"quillet-signoff","formatVersion":2,"signOffs":[]})",
         "its formatVersion is none that is known"},
        {R"({"format":"quillet-signoff","formatVersion":1})", "its signOffs are no array"},
        {with("1"), "signOffs[0] is not an object"},
        {with("{}"), "signOffs[0] lacks its path"},
        {with(good + "}," + good + "}"), "signOffs[1] is about the same command as one before it"},
        {with(good + R"(,"remark":7})"), "signOffs[0].remark is not a text"},
        {with(good + R"(,"rawPath":"%e9"})"), "signOffs[0].rawPath is not what it should be"},
        {changed("state", "done"), "signOffs[0].state is no state of a sign-off"},
        {with(good + "},1," + good + R"(,"remark":"a","remark":"b"})"),
         "signOffs[2].remark stands there twice"},
        {with(good + "}").substr(0, with(good + "}").size() - 1) + R"(,"signOffs":[]})",
         "its signOffs stands there twice"},
        {R"({"format":"quillet-signoff","format":"quillet-signoff","formatVersion":1,"signOffs":[]})",
         "its format stands there twice"},
        {changed("hash", "x"), "signOffs[0].hash is no hash of a text"},
        {changed("number", 0), "signOffs[0].number is not a number from 1"},
        {with(good + R"(,"copies":0})"), "signOffs[0].copies is less than its number"},
        {with(good + R"(,"copies":"x"})"),
         "signOffs[0].copies is not a whole number from 0 to 9007199254740991"},
        {changed("number", 1.5),
         "signOffs[0].number is not a whole number from 0 to 9007199254740991"},
    };
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(text);
        SignOffs signOffs;
        std::string problem;
        EXPECT_FALSE(ParseSignOffs(text, signOffs, problem));
        EXPECT_EQ(problem, expected);
    }
}

TEST_F(SignOffTest, WhatIsNotKnownMayStandThereTwice) {
    SignOffs signOffs;
    std::string problem;
    EXPECT_TRUE(ParseSignOffs(
        R"({"later":[{"path":1,"path":2}],"later":{},"format":"quillet-signoff","formatVersion":1,)"
        R"("signOffs":[{"path":"a","hash":"85944171f73967e8","number":1,"state":"checked","x":1,)"
        R"("x":{"path":1,"path":2}},)"
        R"({"path":"b","hash":"85944171f73967e8","number":1,"state":"checked"}]})",
        signOffs, problem))
        << problem;
    EXPECT_EQ(signOffs.size(), 2U);
}

TEST_F(SignOffTest, AFileNeedNotBeThere) {
    const std::shared_ptr<const Folder> folder = m_folder.Open();
    SignOffs signOffs;
    std::string problem;
    EXPECT_TRUE(ReadSignOffs(*folder, "T", signOffs, problem));
    EXPECT_TRUE(signOffs.empty());
    m_folder.Create(kSignOffName, "{");
    EXPECT_FALSE(ReadSignOffs(*folder, "T", signOffs, problem));
    EXPECT_EQ(
        problem,
        "The sign-offs in T/quillet-signoff.json cannot be read, so nothing was done: it is no "
        "JSON object, or it is damaged. Correct the file, or move it away");
}

}  // namespace
}  // namespace quillet::migrate
