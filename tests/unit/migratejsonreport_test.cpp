#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "migrate/jsonreport.h"
#include "migratereports.h"

namespace quillet::migrate {
namespace {

using nlohmann::json;

using MigrateJsonReportTest = ReportTest;

TEST_F(MigrateJsonReportTest, DescribesCommands) {
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
    EXPECT_FALSE(described.contains("hint"));
}

TEST_F(MigrateJsonReportTest, GivesHintsOnWhatWasNotConverted) {
    const json failed = json::parse(
        CommandJson(FailedCommand(), TextEncoding::kWindows1252, nullptr, "take `\xE9` out"));
    EXPECT_EQ(failed["hint"], "take `\xC3\xA9` out");
    const json converted =
        json::parse(CommandJson(ConvertedCommand(), TextEncoding::kUtf8, nullptr, "nothing"));
    EXPECT_FALSE(converted.contains("hint"));
}

TEST_F(MigrateJsonReportTest, DescribesFindings) {
    EXPECT_EQ(json::parse(FindingJson(OverlookedFinding(), TextEncoding::kUtf8)),
              json({{"code", "macro-body"},
                    {"kind", "overlooked"},
                    {"command", "TABLES"},
                    {"firstLine", 20},
                    {"lastLine", 22},
                    {"causeLine", 18},
                    {"macro", "!f"},
                    {"sentence", "In a macro"},
                    {"text", "TABLES\n /x\n</script>."}}));
    EXPECT_EQ(json::parse(FindingJson(ChangedFinding(), TextEncoding::kWindows1252)),
              json({{"code", "encoding-doubtful"},
                    {"kind", "changed"},
                    {"command", nullptr},
                    {"firstLine", 1},
                    {"lastLine", 1},
                    {"causeLine", 1},
                    {"macro", nullptr},
                    {"sentence", "Looks like \xC3\xA9"},
                    {"text", ""}}));
}

TEST_F(MigrateJsonReportTest, SaysWhereArraysBegin) {
    TextCollector output;
    std::vector<ArrayOffsets> offsets;
    ASSERT_TRUE(WriteJsonReport(ReportOf({"a", "b"}, *m_commands, *m_findings), output, &offsets));
    ASSERT_EQ(offsets.size(), 2U);
    for (const ArrayOffsets& place : offsets) {
        EXPECT_EQ(output.text.substr(place.commands, CommandsText().size()), CommandsText());
        EXPECT_EQ(output.text.substr(place.findings, FindingsText().size()), FindingsText());
    }
}

TEST_F(MigrateJsonReportTest, IsOneFileALineAndTrueJson) {
    const std::string written = TextOfFiles({"a\nb", "\xFF"});
    EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 5);
    const json report = json::parse(written);
    EXPECT_EQ(report["format"], "quillet-report");
    EXPECT_EQ(report["formatVersion"], 2);
    EXPECT_EQ(report["totals"]["files"], 2);
    EXPECT_EQ(report["totals"]["commands"], 18);
    EXPECT_EQ(report["files"][0]["path"], "a\nb");
    EXPECT_FALSE(report["files"][0].contains("rawPath"));
    EXPECT_EQ(report["files"][1]["path"], "\xEF\xBF\xBD");
    EXPECT_EQ(report["files"][1]["rawPath"], "%FF");
    EXPECT_EQ(report["files"][1]["commands"].size(), 2U);
    EXPECT_EQ(report["files"][1]["findings"], json::parse(FindingsText()));
    EXPECT_EQ(report["files"][1]["layoutReason"], "pattern");
    EXPECT_EQ(report["totals"]["commandsFound"], 6);
    EXPECT_EQ(report["totals"]["commandsOverlooked"], 2);
    EXPECT_EQ(report["totals"]["findingsChanged"], 2);
}

TEST_F(MigrateJsonReportTest, AFailingOutputIsNoticed) {
    const Report report = ReportOf({"a"}, *m_commands, *m_findings);
    TextCollector whole;
    ASSERT_TRUE(WriteJsonReport(report, whole));
    for (std::size_t limit = 0; limit < whole.text.size(); limit += 50) {
        TextCollector output(limit);
        EXPECT_FALSE(WriteJsonReport(report, output)) << limit;
    }
}

}  // namespace
}  // namespace quillet::migrate
