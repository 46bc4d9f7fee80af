#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "migrate/htmlreport.h"
#include "migrate/jsonreport.h"
#include "migrate/reportdigest.h"
#include "migratehelper.h"

namespace quillet::migrate {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

constexpr std::string_view kHostile =
    "</script><script>alert(1)</script><!-- \xE2\x80\xA8\xE2\x80\xA9";

Report HostileReport(const StoredFile& commands) {
    Report report;
    report.run.source = kHostile;
    FileFacts facts;
    facts.path = kHostile;
    facts.message = kHostile;
    facts.errors = {"tables-syntax"};
    facts.codes = {"macro-body"};
    facts.failed = facts.listed = 1;
    report.files.push_back({facts, {&commands, 0, commands.Size()}, {}});
    FileFacts plain;
    plain.path = "plain";
    plain.outcome = FileOutcome::kConverted;
    report.files.push_back({plain, {}, {}});
    facts.path = "x";
    report.files.push_back({facts, {&commands, 0, commands.Size()}, {}});
    return report;
}

std::string HostileCommands() {
    CommandReport command;
    command.type = CommandType::kTables;
    command.outcome = CommandOutcome::kFailed;
    command.source = command.message = kHostile;
    command.errorKind = ErrorKind::kTablesSyntax;
    command.warnings = {std::string(kHostile)};
    return "[" + CommandJson(command, TextEncoding::kUtf8) + "]";
}

// What stands in the script element with this id.
json ElementOf(const std::string& page, const std::string& id) {
    const std::string start = "<script type=\"application/json\" id=\"" + id + "\">";
    const std::size_t begin = page.find(start);
    if (begin == std::string::npos) return nullptr;
    const std::size_t end = page.find("</script>", begin);
    return json::parse(page.substr(begin + start.size(), end - begin - start.size()));
}

std::size_t CountOf(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(MigrateHtmlReportTest, NothingEndsAnElement) {
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands = folder.Store("commands", HostileCommands());
    const Report written = HostileReport(*commands);
    ReportDigest digest;
    ASSERT_TRUE(ReadDigest(written, digest, [](const FileFacts&, const ListedCommand&) {}));
    digest.files[0].codes["macro-body"] = 7;
    TextCollector output;
    ASSERT_TRUE(WriteHtmlReport(written, digest, "A<!-- data -->B", output));
    EXPECT_EQ(output.text.front(), 'A');
    EXPECT_EQ(output.text.back(), 'B');
    // The data's own three elements and no other tag.
    EXPECT_EQ(CountOf(output.text, "<script"), 3U);
    EXPECT_EQ(CountOf(output.text, "</script"), 3U);
    EXPECT_EQ(CountOf(output.text, "<"), 6U);
    EXPECT_THAT(output.text, Not(HasSubstr("\xE2\x80\xA8")));
    EXPECT_THAT(output.text, Not(HasSubstr("\xE2\x80\xA9")));
    // Read back, all is as it was.
    const json report = ElementOf(output.text, "report");
    EXPECT_EQ(report["source"], kHostile);
    EXPECT_EQ(report["files"][0]["path"], kHostile);
    EXPECT_EQ(report["files"][0]["errors"], json::parse(R"({"tables-syntax":1})"));
    EXPECT_EQ(report["files"][0]["codes"], json::parse(R"({"macro-body":7})"));
    EXPECT_EQ(report["files"][0]["chunk"], 0);
    EXPECT_FALSE(report["files"][0].contains("commands"));
    EXPECT_FALSE(report["files"][1].contains("chunk"));
    EXPECT_EQ(report["files"][1]["errors"], json::object());
    // The commands of the first and the last file are the same.
    EXPECT_EQ(report["groups"],
              json::parse(R"([{"error":"tables-syntax","places":[[0,0],[2,0]]}])"));
    EXPECT_EQ(report["files"][2]["chunk"], 1);
    EXPECT_EQ(ElementOf(output.text, "chunk-0")["commands"][0]["source"], kHostile);
    EXPECT_EQ(ElementOf(output.text, "chunk-0")["findings"], json::array());
    EXPECT_EQ(ElementOf(output.text, "chunk-1")["commands"][0]["warnings"][0], kHostile);
}

TEST(MigrateHtmlReportTest, EscapesAcrossPieces) {
    const std::string text =
        "a<\xE2\x80\xA8<\xE2\x80\xA9\xE2\x80\x94\xE2\x82\xAC\xE2<\xE2\xE2\x80\xA8\xE2\x80";
    const std::string expected =
        "a\\u003c\\u2028\\u003c\\u2029\xE2\x80\x94\xE2\x82\xAC\xE2\\u003c\xE2\\u2028\xE2\x80";
    for (std::size_t size = 1; size <= text.size(); ++size) {
        TextCollector output;
        ScriptEscaper escaper(output);
        for (std::size_t at = 0; at < text.size(); at += size) {
            EXPECT_TRUE(escaper.Write(std::string_view(text).substr(at, size)));
        }
        EXPECT_TRUE(escaper.Finish());
        EXPECT_EQ(output.text, expected) << size;
    }
}

TEST(MigrateHtmlReportTest, ThePageHasItsMark) {
    EXPECT_EQ(CountOf(std::string(ReportPage()), kDataMark), 1U);
    EXPECT_THAT(std::string(ReportPage()), testing::StartsWith("<!DOCTYPE html>"));
    TextCollector output;
    EXPECT_TRUE(WriteHtmlReport({}, {}, ReportPage(), output));
    EXPECT_EQ(ElementOf(output.text, "report")["format"], "quillet-report");
}

TEST(MigrateHtmlReportTest, ThePageKnowsEveryReason) {
    constexpr std::pair<std::string_view, std::string_view> kRows[] = {
#define QUILLET_REASON(kind, name, message, heading) {name, heading},
#include "quillet-messages.def"
    };
    const std::string page(ReportPage());
    for (const auto& [name, heading] : kRows) {
        const std::string row =
            std::string("    [\"").append(name).append("\", \"").append(heading).append("\"],\n");
        EXPECT_EQ(CountOf(page, row), 1U) << row;
    }
}

TEST(MigrateHtmlReportTest, FailuresAreNoticed) {
    TextCollector output;
    EXPECT_FALSE(WriteHtmlReport({}, {}, "no mark", output));
    TextCollector narrow(10);
    EXPECT_FALSE(WriteHtmlReport({}, {}, kDataMark, narrow));
}

}  // namespace
}  // namespace quillet::migrate
