#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "migrate/jsonreport.h"
#include "migrate/reportreader.h"
#include "migrate/storedfacts.h"
#include "migrate/timetext.h"
#include "migratereports.h"

namespace quillet::migrate {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

using MigrateReportReaderTest = ReportTest;

TEST_F(MigrateReportReaderTest, ComesBackAsItWasWritten) {
    const std::vector<std::string> paths = {"a \"b\"\n.syn", "b\xFC\xC3\xBC/%41.syn",
                                            "c/\xE2\x80\xA8", "d"};
    Report report = ReportOf(paths, *m_commands, *m_findings);
    report.files.back() = {FileFacts{}, {}, {}};
    report.files.back().facts.path = "z";
    report.files.back().facts.isLinkNotFollowed = true;
    TextCollector output;
    ASSERT_TRUE(WriteJsonReport(report, output));

    const std::unique_ptr<StoredFile> file = m_folder.Store("report", output.text);
    Report read;
    std::string error;
    ASSERT_TRUE(ReadJsonReport(*file, read, error)) << error;
    EXPECT_EQ(read.run.source, "/old");
    EXPECT_EQ(read.run.target, "/new");
    EXPECT_EQ(read.run.layout, "batch");
    EXPECT_TRUE(read.run.dryRun && read.run.isInterrupted);
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

TEST_F(MigrateReportReaderTest, AnEmptyReportIsOne) {
    Report report;
    TextCollector output;
    ASSERT_TRUE(WriteJsonReport(report, output));
    EXPECT_TRUE(json::parse(output.text)["files"].empty());
    EXPECT_TRUE(json::parse(output.text)["shard"].is_null());
    const std::unique_ptr<StoredFile> file = m_folder.Store("report", output.text);
    std::string error;
    EXPECT_TRUE(ReadJsonReport(*file, report, error)) << error;
    EXPECT_FALSE(report.run.shard);
}

TEST_F(MigrateReportReaderTest, TheLayoutDoesNotMatter) {
    const std::string written = TextOfFiles({"a", "b"});
    // Members in alphabetical order, many lines, and members that nobody knows.
    json changed = json::parse(written);
    changed["new"] = {{"files", {{{"path", "no"}}}}, {"index", 9}};
    changed["files"][0]["new"] = {{"path", "no"}, {"commands", {1, 2}}};
    const std::unique_ptr<StoredFile> file = m_folder.Store("report", changed.dump(3));
    Report read;
    std::string error;
    ASSERT_TRUE(ReadJsonReport(*file, read, error)) << error;
    ASSERT_EQ(read.files.size(), 2U);
    ExpectSameFacts(read.files[0].facts, SomeFacts("a"));
    TextCollector again;
    ASSERT_TRUE(WriteJsonReport(read, again));
    EXPECT_EQ(json::parse(again.text), json::parse(written));
    EXPECT_EQ(std::count(again.text.begin(), again.text.end(), '\n'), 5);
}

TEST_F(MigrateReportReaderTest, FilesAreReadWithoutTheirCommands) {
    json changed = json::parse(TextOfFiles({"a", "b"}));
    changed["files"][0]["commands"][0]["source"] = "]}\\\"]}\\";
    changed["files"][0]["findings"] = json::array({{{"text", "[{\""}, {"new", {1, {{"x", 2}}}}}});
    for (const int indent : {-1, 1000}) {
        const std::unique_ptr<StoredFile> file = m_folder.Store("report", changed.dump(indent));
        Report whole;
        std::string error;
        ASSERT_TRUE(ReadJsonReport(*file, whole, error)) << error;
        Report read;
        ASSERT_TRUE(ReadFilesOfReport(*file, read));
        ASSERT_EQ(read.files.size(), 2U);
        for (std::size_t index = 0; index < 2; ++index) {
            const FileEntry& one = read.files[index];
            const FileEntry& other = whole.files[index];
            EXPECT_EQ(one.facts.path, other.facts.path);
            EXPECT_EQ(one.facts.failed, other.facts.failed);
            EXPECT_EQ(one.commands.offset, other.commands.offset);
            EXPECT_EQ(one.commands.length, other.commands.length);
            EXPECT_EQ(one.findings.offset, other.findings.offset);
            EXPECT_EQ(one.findings.length, other.findings.length);
            EXPECT_TRUE(one.facts.errors.empty());
        }
        EXPECT_FALSE(whole.files[0].facts.errors.empty());
    }
}

TEST_F(MigrateReportReaderTest, NoFilesAreReadFromWhatIsCutOff) {
    const std::string written = TextOfFiles({"a"});
    for (std::size_t size = 0; size < written.size() - 2; ++size) {
        const std::unique_ptr<StoredFile> file = m_folder.Store("report", written.substr(0, size));
        Report read;
        EXPECT_FALSE(ReadFilesOfReport(*file, read)) << size;
    }
    for (const char* pWrong : {R"("commands":[})", R"("commands":[]])", R"("commands":["x)"}) {
        std::string text = written;
        text.replace(text.find(R"("commands":[)"), 12, pWrong);
        const std::unique_ptr<StoredFile> file = m_folder.Store("report", text);
        Report read;
        EXPECT_FALSE(ReadFilesOfReport(*file, read)) << pWrong;
    }
}

TEST_F(MigrateReportReaderTest, RefusesWhatIsNoReport) {
    const std::string written = TextOfFiles({"a"});
    const std::string known = "\"formatVersion\":2";
    std::string newer = written;
    newer.replace(newer.find(known), known.size(), "\"formatVersion\":3");
    std::string nameless = written;
    nameless.replace(nameless.find("\"path\""), 6, "\"Path\"");
    std::string strange = written;
    strange.replace(strange.find("partly"), 6, "eaten!");
    for (const std::string& text :
         {std::string(), std::string("{}"), std::string("[]"), std::string("nonsense"),
          written.substr(0, written.size() / 2), written + "}", newer, nameless, strange}) {
        const std::unique_ptr<StoredFile> file = m_folder.Store("report", text);
        Report read;
        std::string error;
        EXPECT_FALSE(ReadJsonReport(*file, read, error)) << text;
        EXPECT_THAT(error, HasSubstr("no report"));
    }
}

// A report in which one thing is replaced by another.
struct HostileCase {
    const char* name;
    std::string from;
    std::string to;
    std::string problem;  // what the error ends in
};

const std::string kCount = "is not a whole number from 0 to 9007199254740991";
const std::string kBytes = "is not a whole number from 0 to 9223372036854775807";
const std::string kTime = "is not a whole number from -9223372036854775808 to 9223372036854775807";
const std::string kColumn = "is not a whole number from 0 to 2147483647";
const std::string kSlice = "is not a whole number from 1 to 4294967295";
const std::string kSeconds = "is not a number from 0 to 315569519999";
const std::string kDate = "is not a time such as \"2026-11-21T09:30:00Z\"";

const HostileCase kHostileCases[] = {
    {"CountBelowZero", R"("copied":7)", R"("copied":-1)", "files[0].copied " + kCount},
    {"CountOfInt64Min", R"("failed":1)", R"("failed":-9223372036854775808)",
     "files[0].failed " + kCount},
    {"CountWithFraction", R"("converted":1)", R"("converted":1.5)", "files[0].converted " + kCount},
    {"CountWithExponent", R"("unreadable":0)", R"("unreadable":1e300)",
     "files[0].unreadable " + kCount},
    {"CountJustTooLarge", R"("warnings":1)", R"("warnings":9007199254740992)",
     "files[0].warnings " + kCount},
    {"CountBeyondInt64", R"("lines":40)", R"("lines":9223372036854775808)",
     "files[0].lines " + kCount},
    {"CountBeyondUint64", R"("lines":40)", R"("lines":18446744073709551616)",
     "files[0].lines " + kCount},
    {"CountAsText", R"("lines":40)", R"("lines":"40")", "files[0].lines " + kCount},
    {"CountAsTruth", R"("lines":40)", R"("lines":true)", "files[0].lines " + kCount},
    {"CountAsNull", R"("lines":40)", R"("lines":null)", "files[0].lines " + kCount},
    {"CountAsObject", R"("lines":40)", R"("lines":{})", "files[0].lines " + kCount},
    {"CountAsArray", R"("lines":40)", R"("lines":[40])", "files[0].lines " + kCount},
    {"BytesBelowZero", R"("bytes":5000000000,"m)", R"("bytes":-1,"m)", "files[0].bytes " + kBytes},
    {"BytesBeyondInt64", R"("bytes":5000000000,"m)", R"("bytes":9223372036854775808,"m)",
     "files[0].bytes " + kBytes},
    {"ModifiedBeyondInt64", R"("modified":1700000000)", R"("modified":9223372036854775808)",
     "files[0].modified " + kTime},
    {"ModifiedBelowInt64", R"("modified":1700000000)", R"("modified":-9223372036854775809)",
     "files[0].modified " + kTime},
    {"KeptAsNumber", R"("kept":true)", R"("kept":1)", "files[0].kept is not true or false"},
    {"PathAsNumber", R"("path":"a")", R"("path":1)", "files[0].path is not a text"},
    {"PathTooLong", R"("path":"a")", R"("path":")" + std::string(262145, 'x') + '"',
     "files[0].path is longer than 262144 bytes"},
    {"PathEmpty", R"("path":"a")", R"("path":"")",
     "files[0].path is no path of a file below a folder"},
    {"PathOfRoot", R"("path":"a")", R"("path":"/x")",
     "files[0].path is no path of a file below a folder"},
    {"PathOfHost", R"("path":"a")", R"("path":"//host/share/x")",
     "files[0].path is no path of a file below a folder"},
    {"PathOfFolder", R"("path":"a")", R"("path":"a/")",
     "files[0].path is no path of a file below a folder"},
    {"PathWithEmptyPart", R"("path":"a")", R"("path":"a//b")",
     "files[0].path is no path of a file below a folder"},
    {"PathWithDot", R"("path":"a")", R"("path":"a/./b")",
     "files[0].path is no path of a file below a folder"},
    {"PathThatLeadsOut", R"("path":"a")", R"("path":"a/../../x")",
     "files[0].path is no path of a file below a folder"},
    {"RawPathThatLeadsOut", R"("path":"a")", R"("path":"a","rawPath":"../%FF")",
     "files[0].rawPath is no path of a file below a folder"},
    {"RawPathBroken", R"("path":"a")", R"("path":"a","rawPath":"%G")",
     "files[0].rawPath is not what it should be"},
    {"MessageTooLong", R"("message":"a )", R"("message":")" + std::string(1048577, 'x'),
     "files[0].message is longer than 1048576 bytes"},
    {"OutcomeOfFile", R"("partly")", R"("eaten")", "files[0].outcome is no outcome of a file"},
    {"MemberTwice", R"("copied":7)", R"("copied":7,"copied":7)",
     "files[0].copied stands there twice"},
    {"CommandsAsObject", R"("commands":[)", R"("commands":{},"x":[)",
     "files[0].commands is not an array"},
    {"CommandAsText", R"("commands":[)", R"("commands":["x",)",
     "files[0].commands[0] is not an object"},
    {"CommandsTwice", R"("commands":[)", R"("commands":[],"commands":[)",
     "files[0].commands stands there twice"},
    {"FirstLineBelowZero", R"("firstLine":3)", R"("firstLine":-3)",
     "files[0].commands[0].firstLine " + kCount},
    {"LastLineWithExponent", R"("lastLine":3)", R"("lastLine":1e300)",
     "files[0].commands[0].lastLine " + kCount},
    {"GeneratedLineBeyondInt64", R"("generatedLine":7)", R"("generatedLine":9223372036854775808)",
     "files[0].commands[0].generatedLine " + kCount},
    {"ErrorLineBeyondUint64", R"("errorLine":13)", R"("errorLine":99999999999999999999)",
     "files[0].commands[1].errorLine " + kCount},
    {"ErrorColumnBeyondInt", R"("errorColumn":4)", R"("errorColumn":2147483648)",
     "files[0].commands[1].errorColumn " + kColumn},
    {"ErrorColumnBelowZero", R"("errorColumn":4)", R"("errorColumn":-1)",
     "files[0].commands[1].errorColumn " + kColumn},
    {"SourceAsNumber", R"("source":"TABLES)", R"("source":5,"x":"TABLES)",
     "files[0].commands[1].source is not a text"},
    {"OutcomeOfCommand", R"("outcome":"failed")", R"("outcome":"copied")",
     "files[0].commands[1].outcome is no outcome of a command"},
    {"WarningsAsText", R"("warnings":["left)", R"("warnings":"left","x":["left)",
     "files[0].commands[0].warnings is not an array"},
    {"WarningAsNumber", R"("warnings":["left)", R"("warnings":["left",7,"left)",
     "files[0].commands[0].warnings[1] is not a text"},
    {"FileTwice", R"("path":"b")", R"("path":"a")",
     "files[1] is the same file as the one before it"},
    {"FilesOutOfOrder", R"("path":"a")", R"("path":"c")",
     "files[1] is not in the order of the paths"},
    {"SumOfCopied", R"("copied":7)", R"("copied":9007199254740985)",
     "files[1] makes the sum of all \"copied\" too large"},
    {"SumOfCommands", R"("copied":7)", R"("copied":9007199254740983)",
     "files[1] makes the sum of all \"commands\" too large"},
    {"FilesAsObject", R"("files":[)", R"("files":{},"x":[)", "files is not an array"},
    {"FileAsNumber", R"("files":[)", R"("files":[3,)", "files[0] is not an object"},
    {"FilesTwice", R"("files":[)", R"("files":[],"files":[)", "files stands there twice"},
    {"FileWithoutPath", R"("path":"a")", R"("Path":"a")", "files[0] lacks its path or outcome"},
    {"SecondsOf1e300", R"("seconds":12.345)", R"("seconds":1e300)", "seconds " + kSeconds},
    {"SecondsBeyondDouble", R"("seconds":12.345)", R"("seconds":1e999)",
     "seconds is a number out of range"},
    {"SecondsBelowZero", R"("seconds":12.345)", R"("seconds":-0.5)", "seconds " + kSeconds},
    {"SecondsBelowZeroAndWhole", R"("seconds":12.345)", R"("seconds":-5)", "seconds " + kSeconds},
    {"SecondsBeyondTheCalendar", R"("seconds":12.345)", R"("seconds":315569520000)",
     "seconds " + kSeconds},
    {"SecondsAsText", R"("seconds":12.345)", R"("seconds":"12")", "seconds " + kSeconds},
    {"EndBeyondTheCalendar", R"("seconds":12.345)", R"("seconds":300000000000.0)",
     "by started and seconds the run ended after the year 9999"},
    {"StartedInYear10000", R"("started":"2026)", R"("started":"12026)", "started " + kDate},
    {"StartedBeforeYearZero", R"("started":"2026)", R"("started":"-026)", "started " + kDate},
    {"StartedInMonth13", R"("started":"2026-11)", R"("started":"2026-13)", "started " + kDate},
    {"StartedOnFebruary30", R"("started":"2026-11-21)", R"("started":"2026-02-30)",
     "started " + kDate},
    {"StartedAtAnyTime", R"("started":"2026-11-21T03)", R"("started":"2026-11-21T24)",
     "started " + kDate},
    {"StartedAsNumber", R"("started":")", R"("started":5,"x":")", "started " + kDate},
    {"ShardIndexOfZero", R"("index":2)", R"("index":0)", "shard.index " + kSlice},
    {"ShardIndexBelowZero", R"("index":2)", R"("index":-1)", "shard.index " + kSlice},
    {"ShardIndexBeyondCount", R"("index":2)", R"("index":4)",
     "shard has an index beyond its count"},
    {"ShardCountBeyondUint32", R"("count":3)", R"("count":4294967296)", "shard.count " + kSlice},
    {"ShardCountWithFraction", R"("count":3)", R"("count":3.0)", "shard.count " + kSlice},
    {"ShardWithoutCount", R"("count":3)", R"("Count":3)", "shard lacks its index or count"},
    {"ShardAsText", R"("shard":{)", R"("shard":"2/3","x":{)", "shard is not an object or null"},
    {"TotalBelowZero", R"("filesConverted":0)", R"("filesConverted":-1)",
     "totals.filesConverted " + kCount},
    {"TotalBytesBeyondUint64", R"("bytes":10000000000)", R"("bytes":18446744073709551616)",
     "totals.bytes is not a whole number from 0 to 18446744073709551615"},
    {"TotalsAsArray", R"("totals":{)", R"("totals":[],"x":{)", "totals is not an object"},
    {"DryRunAsText", R"("dryRun":true)", R"("dryRun":"true")", "dryRun is not true or false"},
    {"LayoutAsTruth", R"("layout":"batch","dry)", R"("layout":true,"dry)", "layout is not a text"},
    {"LayoutOfFileAsNumber", R"("layout":"batch","layoutReason")", R"("layout":1,"layoutReason")",
     "files[0].layout is not a text"},
    {"FoundMoreThanAccountedFor", R"("found":3)", R"("found":4)",
     "files[0] has found another number of commands than it accounts for"},
    {"OverlookedBelowZero", R"("overlooked":1)", R"("overlooked":-1)",
     "files[0].overlooked " + kCount},
    {"SumOfFound", R"("found":3,"converted":1)",
     R"("found":9007199254740991,"converted":9007199254740989)",
     "files[1] makes the sum of all \"found\" too large"},
    {"FindingsAsObject", R"("findings":[)", R"("findings":{},"x":[)",
     "files[0].findings is not an array"},
    {"FindingAsText", R"("findings":[)", R"("findings":["x",)",
     "files[0].findings[0] is not an object"},
    {"FindingsTwice", R"("findings":[)", R"("findings":[],"findings":[)",
     "files[0].findings stands there twice"},
    {"KindOfFinding", R"("kind":"changed")", R"("kind":"eaten")",
     "files[0].findings[0].kind is no kind of finding"},
    {"CommandOfFindingAsNumber", R"("command":null)", R"("command":0)",
     "files[0].findings[0].command is not a text or null"},
    {"MacroOfFindingAsArray", R"("macro":"!f")", R"("macro":["!f"])",
     "files[0].findings[1].macro is not a text or null"},
    {"CauseLineBelowZero", R"("causeLine":18)", R"("causeLine":-18)",
     "files[0].findings[1].causeLine " + kCount},
    {"SentenceAsNull", R"("sentence":"In a macro")", R"("sentence":null)",
     "files[0].findings[1].sentence is not a text"},
    {"CodeAsNumber", R"("code":"macro-body")", R"("code":5)",
     "files[0].findings[1].code is not a text"},
    {"SinceLastRunAsText", R"("sinceLastRun":null)", R"("sinceLastRun":"yesterday")",
     "sinceLastRun is not an object or null"},
    {"MendedBelowZero", R"("sinceLastRun":null)", R"("sinceLastRun":{"mended":-1})",
     "sinceLastRun.mended " + kCount},
    {"LineOfChangeBelowZero", R"("copied":7)", R"("changes":{"new":[3,-1]},"copied":7)",
     "files[0].changes.new[1] " + kCount},
    {"SignOffsAsObject", R"("copied":7)", R"("signOffs":{},"copied":7)",
     "files[0].signOffs is not an array"},
    {"HashOfSignOff", R"("otherSignOffs":[])", R"("otherSignOffs":[{"hash":"x"}])",
     "otherSignOffs[0].hash is no hash of a text"},
    {"StateOfSignOff", R"("otherSignOffs":[])", R"("otherSignOffs":[{"state":"done"}])",
     "otherSignOffs[0].state is no state of a sign-off"},
    {"SourceTooLong", R"("source":"/old)", R"("source":")" + std::string(1048577, 'x'),
     "source is longer than 1048576 bytes"},
    {"NestedTooDeep", R"("files":[)", R"("x":)" + std::string(100000, '[') + R"("files":[)",
     "(another member)" +
         [] {
             std::string brackets;
             for (int level = 1; level < 63; ++level) brackets += "[0]";
             return brackets;
         }() +
         "[0] is nested deeper than 64 levels"},
    {"FormatVersionOfNextYear", R"("formatVersion":2)", R"("formatVersion":3)",
     "formatVersion is none that is known"},
    {"FormatVersionBeyondInt64", R"("formatVersion":2)", R"("formatVersion":18446744073709551617)",
     "formatVersion " + kCount},
    {"FormatOfSomethingElse", "quillet-report", "quillet-repose", "format is not that of a report"},
    {"FormatMissing", R"("format":)", R"("Format":)", "it lacks its format or formatVersion"},
};

class MigrateHostileReportTest : public MigrateReportReaderTest,
                                 public testing::WithParamInterface<HostileCase> {};

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return place == std::string::npos ? text : text.replace(place, from.size(), to);
}

TEST_P(MigrateHostileReportTest, IsRefusedByName) {
    const HostileCase& hostile = GetParam();
    const std::string written = TextOfFiles({"a", "b"});
    const std::unique_ptr<StoredFile> file =
        m_folder.Store("report", Replaced(written, hostile.from, hostile.to));
    // Twice, so that it shows when anything stays behind.
    for (int run = 0; run < 2; ++run) {
        Report read;
        std::string error;
        EXPECT_FALSE(ReadJsonReport(*file, read, error));
        EXPECT_EQ(error, "this is no report, or it is damaged: " + hostile.problem);
    }
}

INSTANTIATE_TEST_SUITE_P(Reports, MigrateHostileReportTest, testing::ValuesIn(kHostileCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MigrateReportReaderTest, TheSumOfBytesIsInRange) {
    Report report = ReportOf({"a", "b", "c"}, *m_commands, *m_findings);
    for (FileEntry& entry : report.files) entry.facts.bytes = 9223372036854775807;
    report.files[2].facts.bytes = 1;
    for (const bool isTooLarge : {false, true}) {
        if (isTooLarge) report.files[2].facts.bytes = 2;
        TextCollector output;
        ASSERT_TRUE(WriteJsonReport(report, output));
        const std::unique_ptr<StoredFile> file = m_folder.Store("report", output.text);
        Report read;
        std::string error;
        EXPECT_EQ(ReadJsonReport(*file, read, error), !isTooLarge);
        EXPECT_EQ(error, isTooLarge ? "this is no report, or it is damaged: files[2] makes the sum "
                                      "of all \"bytes\" too large"
                                    : "");
    }
}

TEST_F(MigrateReportReaderTest, TakesNumbersAtTheEdgesOfTheirRanges) {
    const std::string written = TextOfFiles({"a"});
    std::string text = written;
    const std::pair<std::string, std::string> edges[] = {
        {R"("bytes":5000000000,"m)", R"("bytes":9223372036854775807,"m)"},
        {R"("modified":1700000000)", R"("modified":-9223372036854775808)"},
        {R"("lines":40)", R"("lines":9007199254740991)"},
        {R"("copied":7)", R"("copied":-0)"},
        {R"("errorColumn":4)", R"("errorColumn":2147483647)"},
        {R"("errorLine":13)", R"("errorLine":9007199254740991)"},
        {R"("index":2,"count":3)", R"("index":4294967295,"count":4294967295)"},
        {R"("started":"2026-11-21T03:00:00Z")", R"("started":"0000-01-01T00:00:00Z")"},
        {R"("seconds":12.345)", R"("seconds":315569519999)"},
    };
    for (const auto& [from, to] : edges) text = Replaced(text, from, to);
    const std::unique_ptr<StoredFile> file = m_folder.Store("report", text);
    Report read;
    std::string error;
    ASSERT_TRUE(ReadJsonReport(*file, read, error)) << error;
    EXPECT_EQ(read.files[0].facts.bytes, 9223372036854775807U);
    EXPECT_EQ(read.files[0].facts.modified, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(read.files[0].facts.lines, 9007199254740991);
    EXPECT_EQ(read.files[0].facts.copied, 0);
    ASSERT_TRUE(read.run.shard);
    EXPECT_EQ(LabelOf(*read.run.shard), "4294967295-of-4294967295");
    EXPECT_EQ(read.run.started, kFirstTime);
    EXPECT_EQ(read.run.seconds, 315569519999);
    std::vector<std::int64_t> numbers;
    ASSERT_TRUE(ForEachCommand(read.files[0].commands, [&](const CommandFacts& command) {
        numbers.push_back(command.errorLine);
        numbers.push_back(command.errorColumn);
    }));
    EXPECT_THAT(numbers, ElementsAre(0, 0, 9007199254740991, 2147483647));
}

TEST_F(MigrateReportReaderTest, ADamagedReportNamesItsPlace) {
    const std::string written = TextOfFiles({"a", "b"});
    for (const char* number : {"NaN", "Infinity", "-Infinity", "0x10", "01", "1.", "+1"}) {
        const std::unique_ptr<StoredFile> file =
            m_folder.Store("report", Replaced(written, "12.345", number));
        Report read;
        std::string error;
        EXPECT_FALSE(ReadJsonReport(*file, read, error)) << number;
        EXPECT_THAT(error, HasSubstr("damaged near byte "));
        EXPECT_THAT(error, HasSubstr(" (seconds)"));
    }
}

TEST_F(MigrateReportReaderTest, ATextThatIsTooLongIsNotKept) {
    const std::string written = TextOfFiles({"a"});
    constexpr std::uint64_t kLimit = 200000;
    const std::string source = R"("source":"IGRAPH)";
    // In steps of the blocks that are read at once.
    for (const std::size_t length : {kLimit, 2 * kLimit}) {
        const std::string text =
            Replaced(written, source, R"("source":")" + std::string(length - 10000, 'x'));
        const std::unique_ptr<StoredFile> file = m_folder.Store("report", text);
        Report read;
        std::string error;
        EXPECT_EQ(ReadJsonReport(*file, read, error, kLimit), length == kLimit);
        EXPECT_EQ(error, length == kLimit ? ""
                                          : "this is no report, or it is damaged: files[0]"
                                            ".commands[0].source is longer than 200000 bytes");
    }
    // And no gap is either.
    const std::unique_ptr<StoredFile> file =
        m_folder.Store("report", Replaced(written, ",\n", "," + std::string(2 * kLimit, ' ')));
    Report read;
    std::string error;
    EXPECT_FALSE(ReadJsonReport(*file, read, error, kLimit));
    EXPECT_THAT(error, HasSubstr("otherSignOffs is longer than 200000 bytes"));
}

TEST_F(MigrateReportReaderTest, AFileHasOnlySoManyReasons) {
    const std::string part = R"({"outcome":"failed","error":")";
    for (const int count : {256, 257}) {
        std::string commands;
        for (int number = 0; number < count; ++number) {
            commands += (number > 0 ? "," : "") + part + std::to_string(number) + "\"}";
        }
        const std::unique_ptr<StoredFile> file =
            m_folder.Store("report", R"({"format":"quillet-report","formatVersion":2,"files":[)"
                                     R"({"path":"a","outcome":"partly","commands":[)" +
                                         commands + "]}]}");
        Report read;
        std::string error;
        EXPECT_EQ(ReadJsonReport(*file, read, error), count == 256) << error;
        if (count > 256) {
            EXPECT_THAT(error, HasSubstr("files[0].commands[256].error is one reason more"));
        }
    }
}

TEST_F(MigrateReportReaderTest, AFileHasOnlySoManyCodes) {
    for (const int count : {256, 257}) {
        std::string findings;
        for (int number = 0; number < count; ++number) {
            findings += (number > 0 ? "," : "") + std::string(R"({"code":")") +
                        std::to_string(number) + "\"}";
        }
        const std::unique_ptr<StoredFile> file =
            m_folder.Store("report", R"({"format":"quillet-report","formatVersion":2,"files":[)"
                                     R"({"path":"a","outcome":"changed","findings":[)" +
                                         findings + "]}]}");
        Report read;
        std::string error;
        EXPECT_EQ(ReadJsonReport(*file, read, error), count == 256) << error;
        if (count > 256) {
            EXPECT_THAT(error, HasSubstr("files[0].findings[256].code is one code more"));
        }
    }
}

TEST_F(MigrateReportReaderTest, DeepNestingIsNoDanger) {
    const std::string deep = "{\"x\":" + std::string(1000000, '[');
    const std::unique_ptr<StoredFile> file = m_folder.Store("report", deep);
    Report read;
    std::string error;
    EXPECT_FALSE(ReadJsonReport(*file, read, error));
}

}  // namespace
}  // namespace quillet::migrate
