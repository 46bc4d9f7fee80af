#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "migrate/jsonreport.h"
#include "migratehelper.h"

namespace quillet::migrate {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

CommandReport FailedCommand() {
    CommandReport report;
    report.type = CommandType::kTables;
    report.outcome = CommandOutcome::kFailed;
    report.firstLine = 12;
    report.lastLine = 15;
    report.source = "TABLES \"x\"\n /y\t</script>.";
    report.errorKind = ErrorKind::kTablesSyntax;
    report.errorLine = 13;
    report.errorColumn = 4;
    report.message = "Invalid";
    return report;
}

CommandReport ConvertedCommand() {
    CommandReport report;
    report.type = CommandType::kIgraph;
    report.outcome = CommandOutcome::kConverted;
    report.firstLine = report.lastLine = 3;
    report.source = "IGRAPH \xE9.";
    report.generated = "GGRAPH \xE9.\nMORE.";
    report.generatedLine = 7;
    report.warnings = {"left out \x80"};
    return report;
}

FileFacts SomeFacts(std::string path) {
    FileFacts facts;
    facts.path = std::move(path);
    facts.outcome = FileOutcome::kPartly;
    facts.isKept = true;
    facts.bytes = 5000000000;
    facts.modified = 1700000000;
    facts.encoding = "windows-1252";
    facts.lines = 40;
    facts.copied = 7;
    facts.converted = 1;
    facts.failed = 1;
    facts.unreadable = 0;
    facts.warnings = 1;
    facts.message = "a \"word\"";
    facts.errors = {"tables-syntax"};
    return facts;
}

void ExpectSameFacts(const FileFacts& left, const FileFacts& right) {
    EXPECT_EQ(left.path, right.path);
    EXPECT_EQ(left.outcome, right.outcome);
    EXPECT_EQ(left.isKept, right.isKept);
    EXPECT_EQ(left.isLinkNotFollowed, right.isLinkNotFollowed);
    EXPECT_EQ(left.bytes, right.bytes);
    EXPECT_EQ(left.modified, right.modified);
    EXPECT_EQ(left.encoding, right.encoding);
    EXPECT_EQ(left.lines, right.lines);
    EXPECT_EQ(left.copied, right.copied);
    EXPECT_EQ(left.converted, right.converted);
    EXPECT_EQ(left.failed, right.failed);
    EXPECT_EQ(left.unreadable, right.unreadable);
    EXPECT_EQ(left.warnings, right.warnings);
    EXPECT_EQ(left.message, right.message);
    EXPECT_EQ(left.errors, right.errors);
}

// A report of the given files, each with the two commands above.
Report ReportOf(const std::vector<std::string>& paths, const StoredFile& commands) {
    Report report;
    report.run = {"/old", "/new", true, true, true, Shard{2, 3}, 1795230000, 12.345};
    for (const std::string& path : paths) {
        report.files.push_back({SomeFacts(path), {&commands, 0, commands.Size()}});
    }
    return report;
}

std::string CommandsText() {
    return "[" + CommandJson(ConvertedCommand(), TextEncoding::kWindows1252) + "," +
           CommandJson(FailedCommand(), TextEncoding::kUtf8) + "]";
}

TEST(MigrateJsonReportTest, DescribesCommands) {
    EXPECT_EQ(json::parse(CommandJson(ConvertedCommand(), TextEncoding::kWindows1252)),
              json({{"type", "IGRAPH"},
                    {"outcome", "converted"},
                    {"firstLine", 3},
                    {"lastLine", 3},
                    {"source", "IGRAPH \xC3\xA9."},
                    {"generated", "GGRAPH \xC3\xA9.\nMORE."},
                    {"generatedLine", 7},
                    {"warnings", {"left out \xE2\x82\xAC"}}}));
    EXPECT_EQ(json::parse(CommandJson(FailedCommand(), TextEncoding::kUtf8)),
              json({{"type", "TABLES"},
                    {"outcome", "failed"},
                    {"firstLine", 12},
                    {"lastLine", 15},
                    {"source", "TABLES \"x\"\n /y\t</script>."},
                    {"error", "tables-syntax"},
                    {"errorLine", 13},
                    {"errorColumn", 4},
                    {"message", "Invalid"},
                    {"warnings", json::array()}}));
    CommandReport unreadable = FailedCommand();
    unreadable.type = CommandType::kOrdinary;
    unreadable.outcome = CommandOutcome::kUnreadable;
    const json described = json::parse(CommandJson(unreadable, TextEncoding::kUtf8));
    EXPECT_EQ(described["type"], "command");
    EXPECT_EQ(described["outcome"], "unreadable");
}

TEST(MigrateJsonReportTest, ComesBackAsItWasWritten) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands = folder.Store("commands", CommandsText());
    const std::vector<std::string> paths = {"a \"b\"\n.syn", "b\xFC\xC3\xBC/%41.syn",
                                            "c/\xE2\x80\xA8", "d"};
    Report report = ReportOf(paths, *commands);
    report.files.back() = {FileFacts{}, {}};
    report.files.back().facts.path = "z";
    report.files.back().facts.isLinkNotFollowed = true;
    TextCollector output;
    ASSERT_TRUE(WriteJsonReport(report, output));

    const std::unique_ptr<StoredFile> file = folder.Store("report", output.text);
    Report read;
    std::string error;
    ASSERT_TRUE(ReadJsonReport(*file, read, error)) << error;
    EXPECT_EQ(read.run.source, "/old");
    EXPECT_EQ(read.run.target, "/new");
    EXPECT_TRUE(read.run.batchMode && read.run.dryRun && read.run.isInterrupted);
    ASSERT_TRUE(read.run.shard);
    EXPECT_EQ(LabelOf(*read.run.shard), "2-of-3");
    EXPECT_EQ(read.run.started, 1795230000);
    EXPECT_DOUBLE_EQ(read.run.seconds, 12.345);
    ASSERT_EQ(read.files.size(), report.files.size());
    for (std::size_t index = 0; index < read.files.size(); ++index) {
        ExpectSameFacts(read.files[index].facts, report.files[index].facts);
    }
    // And so does what is written from that.
    TextCollector again;
    ASSERT_TRUE(WriteJsonReport(read, again));
    EXPECT_EQ(again.text, output.text);
}

TEST(MigrateJsonReportTest, IsOneFileALineAndTrueJson) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands = folder.Store("commands", CommandsText());
    TextCollector output;
    ASSERT_TRUE(WriteJsonReport(ReportOf({"a\nb", "\xFF"}, *commands), output));
    EXPECT_EQ(std::count(output.text.begin(), output.text.end(), '\n'), 5);
    const json report = json::parse(output.text);
    EXPECT_EQ(report["format"], "quillet-report");
    EXPECT_EQ(report["formatVersion"], 1);
    EXPECT_EQ(report["totals"]["files"], 2);
    EXPECT_EQ(report["totals"]["commands"], 18);
    EXPECT_EQ(report["files"][0]["path"], "a\nb");
    EXPECT_FALSE(report["files"][0].contains("rawPath"));
    EXPECT_EQ(report["files"][1]["path"], "\xEF\xBF\xBD");
    EXPECT_EQ(report["files"][1]["rawPath"], "%FF");
    EXPECT_EQ(report["files"][1]["commands"].size(), 2U);
}

TEST(MigrateJsonReportTest, AnEmptyReportIsOne) {
    const TemporaryFolder folder;
    Report report;
    TextCollector output;
    ASSERT_TRUE(WriteJsonReport(report, output));
    EXPECT_TRUE(json::parse(output.text)["files"].empty());
    EXPECT_TRUE(json::parse(output.text)["shard"].is_null());
    const std::unique_ptr<StoredFile> file = folder.Store("report", output.text);
    std::string error;
    EXPECT_TRUE(ReadJsonReport(*file, report, error)) << error;
    EXPECT_FALSE(report.run.shard);
}

TEST(MigrateJsonReportTest, TheLayoutDoesNotMatter) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands = folder.Store("commands", CommandsText());
    TextCollector output;
    ASSERT_TRUE(WriteJsonReport(ReportOf({"a", "b"}, *commands), output));
    // Members in alphabetical order, many lines, and members that nobody knows.
    json changed = json::parse(output.text);
    changed["new"] = {{"files", {{{"path", "no"}}}}, {"index", 9}};
    changed["files"][0]["new"] = {{"path", "no"}, {"commands", {1, 2}}};
    const std::unique_ptr<StoredFile> file = folder.Store("report", changed.dump(3));
    Report read;
    std::string error;
    ASSERT_TRUE(ReadJsonReport(*file, read, error)) << error;
    ASSERT_EQ(read.files.size(), 2U);
    ExpectSameFacts(read.files[0].facts, SomeFacts("a"));
    TextCollector again;
    ASSERT_TRUE(WriteJsonReport(read, again));
    EXPECT_EQ(json::parse(again.text), json::parse(output.text));
    EXPECT_EQ(std::count(again.text.begin(), again.text.end(), '\n'), 5);
}

TEST(MigrateJsonReportTest, RefusesWhatIsNoReport) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands = folder.Store("commands", CommandsText());
    TextCollector output;
    ASSERT_TRUE(WriteJsonReport(ReportOf({"a"}, *commands), output));
    const std::string known = "\"formatVersion\":1";
    std::string newer = output.text;
    newer.replace(newer.find(known), known.size(), "\"formatVersion\":2");
    std::string nameless = output.text;
    nameless.replace(nameless.find("\"path\""), 6, "\"Path\"");
    std::string strange = output.text;
    strange.replace(strange.find("partly"), 6, "eaten!");
    for (const std::string& text :
         {std::string(), std::string("{}"), std::string("[]"), std::string("nonsense"),
          output.text.substr(0, output.text.size() / 2), output.text + "}", newer, nameless,
          strange}) {
        const std::unique_ptr<StoredFile> file = folder.Store("report", text);
        Report read;
        std::string error;
        EXPECT_FALSE(ReadJsonReport(*file, read, error)) << text;
        EXPECT_THAT(error, HasSubstr("no report"));
    }
}

TEST(MigrateJsonReportTest, DeepNestingIsNoDanger) {
    const TemporaryFolder folder;
    const std::string deep = "{\"x\":" + std::string(1000000, '[');
    const std::unique_ptr<StoredFile> file = folder.Store("report", deep);
    Report read;
    std::string error;
    EXPECT_FALSE(ReadJsonReport(*file, read, error));
}

TEST(MigrateJsonReportTest, GoesThroughCommands) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> file = folder.Store("commands", "xx" + CommandsText() + "yy");
    std::vector<std::string> sources;
    const CommandsPlace place = {file.get(), 2, file->Size() - 4};
    EXPECT_TRUE(ForEachCommand(
        place, [&](const CommandFacts& command) { sources.push_back(command.source); }));
    EXPECT_THAT(sources, ElementsAre("IGRAPH \xC3\xA9.", "TABLES \"x\"\n /y\t</script>."));
    EXPECT_FALSE(ForEachCommand({file.get(), 0, 20}, [](const CommandFacts&) {}));
    EXPECT_FALSE(ForEachCommand({file.get(), 2, file->Size() + 5}, [](const CommandFacts&) {}));
    EXPECT_TRUE(ForEachCommand({}, [](const CommandFacts&) { ADD_FAILURE(); }));
}

TEST(MigrateJsonReportTest, AFailingOutputIsNoticed) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands = folder.Store("commands", CommandsText());
    const Report report = ReportOf({"a"}, *commands);
    TextCollector whole;
    ASSERT_TRUE(WriteJsonReport(report, whole));
    for (std::size_t limit = 0; limit < whole.text.size(); limit += 50) {
        TextCollector output(limit);
        EXPECT_FALSE(WriteJsonReport(report, output)) << limit;
    }
}

TEST(MigrateJsonReportTest, EncodesBytes) {
    const std::string bytes = "aZ09-._~/ %\xFF\n\"";
    EXPECT_EQ(PercentEncode(bytes), "aZ09-._~/%20%25%FF%0A%22");
    EXPECT_EQ(PercentDecode(PercentEncode(bytes)), bytes);
    for (const char* text : {"%", "%4", "%4G", "a%"}) EXPECT_FALSE(PercentDecode(text)) << text;
}

TEST(MigrateJsonReportTest, WritesTimes) {
    EXPECT_EQ(FormatTime(0), "1970-01-01T00:00:00Z");
    EXPECT_EQ(FormatTime(1795230000), "2026-11-21T03:00:00Z");
    EXPECT_EQ(ParseTime("2026-11-21T03:00:00Z"), 1795230000);
    EXPECT_EQ(ParseTime("yesterday"), 0);
}

}  // namespace
}  // namespace quillet::migrate
