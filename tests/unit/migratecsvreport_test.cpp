#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/csvreport.h"
#include "migrate/jsonreport.h"
#include "migratehelper.h"

namespace quillet::migrate {
namespace {

TEST(MigrateCsvReportTest, NoCellBecomesAFormula) {
    for (const std::string_view start : {"=", "+", "-", "@", "\t", "\r", "\n", "\xEF\xBC\x9D",
                                         "\xEF\xBC\x8B", "\xEF\xBC\x8D", "\xEF\xBC\xA0"}) {
        const std::string text = std::string(start) + "1+1";
        EXPECT_EQ(CsvText(text), "\"'" + text + "\"");
    }
    EXPECT_EQ(CsvText("a=b"), "\"a=b\"");
    EXPECT_EQ(CsvText("=\"a\""), "\"'=\"\"a\"\"\"");
}

TEST(MigrateCsvReportTest, CellsHoldAnyText) {
    EXPECT_EQ(CsvText(""), "\"\"");
    EXPECT_EQ(CsvText("a,\"b\";\r\nc"), "\"a,\"\"b\"\";\r\nc\"");
    EXPECT_EQ(CsvText(std::string("a\0b", 3)),
              "\"a\xEF\xBF\xBD"
              "b\"");
}

CommandReport MakeCommand(std::int64_t line, CommandOutcome outcome) {
    CommandReport command;
    command.type = CommandType::kTables;
    command.outcome = outcome;
    command.firstLine = line;
    command.lastLine = line + 1;
    command.source = line < 20 ? "TABLES\n /TABLE=a." : "TABLES\n /TABLE=region.";
    if (outcome == CommandOutcome::kConverted) {
        command.generatedLine = 4;
        command.warnings = {"w"};
    } else {
        command.errorKind = ErrorKind::kTablesSyntax;
        command.errorLine = line + 1;
        command.errorColumn = 9;
        command.message = "m";
    }
    return command;
}

std::string ArrayOf(const std::vector<CommandReport>& commands) {
    std::string array;
    for (const CommandReport& command : commands) {
        const bool hasHint = command.outcome == CommandOutcome::kFailed;
        array += (array.empty() ? "[" : ",") +
                 CommandJson(command, TextEncoding::kUtf8, nullptr, hasHint ? "-h" : "");
    }
    return array + "]";
}

std::string FindingText(std::string_view code, std::string_view kind, int line) {
    return R"({"code":")" + std::string(code) + R"(","kind":")" + std::string(kind) +
           R"(","command":"TABLES","firstLine":)" + std::to_string(line) +
           R"(,"lastLine":9,"causeLine":1,"macro":null,"sentence":"s","text":""})";
}

TEST(MigrateCsvReportTest, EveryLegacyCommandHasARow) {
    // The one in line 7 stands in a macro, where it was converted; the last is no legacy command.
    CommandReport other = MakeCommand(30, CommandOutcome::kUnreadable);
    other.type = CommandType::kOrdinary;
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands =
        folder.Store("commands", ArrayOf({MakeCommand(3, CommandOutcome::kConverted),
                                          MakeCommand(7, CommandOutcome::kConverted),
                                          MakeCommand(10, CommandOutcome::kFailed),
                                          MakeCommand(20, CommandOutcome::kFailed), other}));
    const std::unique_ptr<StoredFile> findings =
        folder.Store("findings", "[" + FindingText("macro-body", "overlooked", 7) + "," +
                                     FindingText("swallowed", "changed", 8) + "," +
                                     FindingText("same-line", "overlooked", 10) + "]");
    Report report;
    FileFacts facts;
    facts.path = "-x.syn";
    report.files.push_back(
        {facts, {commands.get(), 0, commands->Size()}, {findings.get(), 0, findings->Size()}});
    TextCollector output;
    ReportDigest digest;
    ASSERT_TRUE(WriteCsvReport(report, output, digest));
    EXPECT_EQ(
        output.text,
        "\xEF\xBB\xBFpath,command,outcome,firstLine,lastLine,reason,message,hint,errorLine,"
        "errorColumn,generatedLine,warnings,group\r\n"
        "\"'-x.syn\",\"TABLES\",\"converted\",3,4,\"\",\"\",\"\",,,4,1,\r\n"
        "\"'-x.syn\",\"TABLES\",\"overlooked\",7,9,\"macro-body\",\"s\",\"\",1,,,0,\r\n"
        "\"'-x.syn\",\"TABLES\",\"failed\",10,11,\"tables-syntax\",\"m\",\"'-h\",11,9,,0,1\r\n"
        "\"'-x.syn\",\"TABLES\",\"overlooked\",10,9,\"same-line\",\"s\",\"\",1,,,0,\r\n"
        "\"'-x.syn\",\"TABLES\",\"failed\",20,21,\"tables-syntax\",\"m\",\"'-h\",21,9,,0,1\r\n");
    ASSERT_EQ(digest.files.size(), 1U);
    EXPECT_EQ(digest.files[0].reasons, (NameCounts{{"tables-syntax", 3}}));
    EXPECT_EQ(digest.files[0].codes,
              (NameCounts{{"macro-body", 1}, {"same-line", 1}, {"swallowed", 1}}));
    ASSERT_EQ(digest.groups.size(), 1U);
    EXPECT_EQ(digest.groups[0].reason, "tables-syntax");
    ASSERT_EQ(digest.groups[0].places.size(), 3U);
    EXPECT_EQ(digest.groups[0].places[1].command, 3U);
}

TEST(MigrateCsvReportTest, AFailureInAMacroCountsAsOverlookedAlone) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands =
        folder.Store("commands", ArrayOf({MakeCommand(7, CommandOutcome::kFailed),
                                          MakeCommand(10, CommandOutcome::kFailed)}));
    const std::unique_ptr<StoredFile> findings =
        folder.Store("findings", "[" + FindingText("macro-body", "overlooked", 7) + "]");
    Report report;
    report.files.push_back(
        {{}, {commands.get(), 0, commands->Size()}, {findings.get(), 0, findings->Size()}});
    TextCollector output;
    ReportDigest digest;
    ASSERT_TRUE(WriteCsvReport(report, output, digest));
    EXPECT_EQ(digest.files[0].reasons, (NameCounts{{"tables-syntax", 1}}));
    EXPECT_EQ(digest.files[0].codes, (NameCounts{{"macro-body", 1}}));
    ASSERT_EQ(digest.groups.size(), 1U);
    ASSERT_EQ(digest.groups[0].places.size(), 1U);
    // It keeps its number among those that the report lists.
    EXPECT_EQ(digest.groups[0].places[0].command, 1U);
}

struct PlacedFailure {
    const char* pSource;
    ErrorKind kind;
    std::int64_t line;  // from 1
    int column;
};

// The number of groups that failures make up.
std::size_t GroupCountOf(const std::vector<PlacedFailure>& failures) {
    std::vector<CommandReport> commands;
    for (const PlacedFailure& failure : failures) {
        CommandReport command = MakeCommand(10, CommandOutcome::kFailed);
        command.source = failure.pSource;
        command.errorKind = failure.kind;
        command.errorLine = command.firstLine + failure.line - 1;
        command.errorColumn = failure.column;
        commands.push_back(command);
    }
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> stored = folder.Store("commands", ArrayOf(commands));
    Report report;
    report.files.push_back({{}, {stored.get(), 0, stored->Size()}, {}});
    ReportDigest digest;
    EXPECT_TRUE(ReadDigest(report, digest, [](const FileFacts&, const ListedCommand&) {}));
    return digest.groups.size();
}

// The columns are those that conversions tell for these texts.
TEST(MigrateCsvReportTest, EqualFailuresMayBreakTheirLinesElsewhere) {
    constexpr ErrorKind kSyntax = ErrorKind::kTablesSyntax;
    EXPECT_EQ(GroupCountOf({{"TABLES /TABLE=a b.", kSyntax, 1, 18},
                            {"TABLES\n /TABLE=a b.", kSyntax, 2, 11},
                            {"  TABLES\t/TABLE=\xC3\xA4x bcd.", kSyntax, 1, 23},
                            {"TABLES /TABLE=a\n b.", kSyntax, 2, 2}}),
              1U);
    EXPECT_EQ(GroupCountOf({{"TABLES /TABLE=a b.", kSyntax, 1, 18},
                            {"TABLES /TABLE=a b.", kSyntax, 1, 16},
                            {"TABLES\n /TABLE=a b.", kSyntax, 2, 12}}),
              3U);
    constexpr ErrorKind kLiteral = ErrorKind::kUnclosedLiteral;
    EXPECT_EQ(GroupCountOf({{"TABLES /TITLE=\"abc\n.", kLiteral, 1, 15},
                            {"TABLES\n /TITLE=\"abc\n.", kLiteral, 2, 9}}),
              1U);
}

TEST(MigrateCsvReportTest, FailuresAreNoticed) {
    ReportDigest digest;
    TextCollector narrow(10);
    EXPECT_FALSE(WriteCsvReport({}, narrow, digest));
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> damaged = folder.Store("damaged", "[{");
    Report report;
    report.files.push_back({{}, {damaged.get(), 0, damaged->Size()}, {}});
    TextCollector output;
    EXPECT_FALSE(WriteCsvReport(report, output, digest));
}

}  // namespace
}  // namespace quillet::migrate
