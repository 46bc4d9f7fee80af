#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "migrate/jsonreport.h"
#include "migrate/junitreport.h"
#include "migratereports.h"

namespace quillet::migrate {
namespace {

using testing::HasSubstr;

TEST(MigrateJunitReportTest, EscapesWhatXmlDoesNotTake) {
    EXPECT_EQ(EscapeXml("a & <b> \"c\" 'd'"), "a &amp; &lt;b&gt; &quot;c&quot; 'd'");
    EXPECT_EQ(EscapeXml("]]>"), "]]&gt;");
    EXPECT_EQ(EscapeXml("\t\n\r"), "&#9;&#10;&#13;");
    EXPECT_EQ(EscapeXml(std::string("\0\x01\x1F\x0B", 4)),
              "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(EscapeXml("\xEF\xBF\xBE|\xEF\xBF\xBF|\xEF\xBF\xBD"),
              "\xEF\xBF\xBD|\xEF\xBF\xBD|\xEF\xBF\xBD");
    EXPECT_EQ(EscapeXml("\x7F\xC2\x85\xF0\x9F\x98\x80"), "\x7F\xC2\x85\xF0\x9F\x98\x80");
}

TEST(MigrateJunitReportTest, WritesSuitesAndCases) {
    CommandReport converted;
    converted.type = CommandType::kTables;
    converted.outcome = CommandOutcome::kConverted;
    converted.firstLine = 3;
    converted.lastLine = 9;
    converted.warnings = {"w1", "w2"};
    CommandReport failed;
    failed.type = CommandType::kIgraph;
    failed.outcome = CommandOutcome::kFailed;
    failed.firstLine = failed.lastLine = 12;
    failed.source = "IGRAPH <x>.";
    failed.errorKind = ErrorKind::kIgraphSyntax;
    failed.errorLine = 12;
    failed.errorColumn = 4;
    failed.message = "a \"b\"";
    CommandReport unreadable;
    unreadable.outcome = CommandOutcome::kUnreadable;
    unreadable.firstLine = 20;
    unreadable.lastLine = 21;
    unreadable.source = "x\x01";
    unreadable.errorKind = ErrorKind::kUnclosedLiteral;
    unreadable.message = "m";
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands =
        folder.Store("commands", "[" + CommandJson(converted, TextEncoding::kUtf8) + "," +
                                     CommandJson(failed, TextEncoding::kUtf8) + "," +
                                     CommandJson(unreadable, TextEncoding::kUtf8) + "]");
    Report report;
    report.run.seconds = 1.5;
    FileFacts facts;
    facts.path = "a&b/\xFF";
    facts.outcome = FileOutcome::kStopped;
    facts.converted = facts.failed = 1;
    facts.listed = 3;
    report.files.push_back({facts, {commands.get(), 0, commands->Size()}, {}});
    FileFacts gone;
    gone.path = "gone";
    gone.message = "it <went>";
    report.files.push_back({gone, {}, {}});
    FileFacts skipped;
    skipped.path = "skipped";
    skipped.outcome = FileOutcome::kSkipped;
    skipped.message = "no text";
    report.files.push_back({skipped, {}, {}});
    FileFacts empty;
    empty.path = "empty";
    empty.outcome = FileOutcome::kConverted;
    report.files.push_back({empty, {}, {}});
    TextCollector output;
    ASSERT_TRUE(WriteJunitReport(report, output));
    const std::string name = "a&amp;b/\xEF\xBF\xBD";
    EXPECT_EQ(
        output.text,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<testsuites name=\"quillet-migrate\" tests=\"5\" failures=\"1\" errors=\"2\" skipped=\"1\""
        " time=\"1.500\">\n"
        "  <testsuite name=\"" +
            name +
            "\" tests=\"3\" failures=\"1\" errors=\"1\" skipped=\"0\">\n"
            "    <testcase classname=\"" +
            name +
            "\" name=\"TABLES, line 3 to 9\">\n"
            "      <system-out>w1&#10;w2&#10;</system-out>\n"
            "    </testcase>\n"
            "    <testcase classname=\"" +
            name +
            "\" name=\"IGRAPH, line 12\">\n"
            "      <failure type=\"igraph-syntax\" message=\"a &quot;b&quot;\">"
            "Line 12, column 4&#10;IGRAPH &lt;x&gt;.</failure>\n"
            "    </testcase>\n"
            "    <testcase classname=\"" +
            name +
            "\" name=\"command, line 20 to 21\">\n"
            "      <error type=\"unclosed-literal\" message=\"m\">x\xEF\xBF\xBD</error>\n"
            "    </testcase>\n"
            "  </testsuite>\n"
            "  <testsuite name=\"gone\" tests=\"1\" failures=\"0\" errors=\"1\" skipped=\"0\">\n"
            "    <testcase classname=\"gone\" name=\"file\"><error message=\"it &lt;went&gt;\"/>"
            "</testcase>\n"
            "  </testsuite>\n"
            "  <testsuite name=\"skipped\" tests=\"1\" failures=\"0\" errors=\"0\" skipped=\"1\">\n"
            "    <testcase classname=\"skipped\" name=\"file\"><skipped message=\"no text\"/>"
            "</testcase>\n"
            "  </testsuite>\n"
            "  <testsuite name=\"empty\" tests=\"0\" failures=\"0\" errors=\"0\" skipped=\"0\">\n"
            "  </testsuite>\n"
            "</testsuites>\n");
}

TEST(MigrateJunitReportTest, OverlookedCommandsAreFailures) {
    // Of the two commands one stands in the macro, where it was converted.
    CommandReport inMacro;
    inMacro.type = CommandType::kTables;
    inMacro.outcome = CommandOutcome::kConverted;
    inMacro.firstLine = inMacro.lastLine = 20;
    CommandReport other = inMacro;
    other.firstLine = other.lastLine = 30;
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands =
        folder.Store("commands", "[" + CommandJson(inMacro, TextEncoding::kUtf8) + "," +
                                     CommandJson(other, TextEncoding::kUtf8) + "]");
    const std::unique_ptr<StoredFile> findings = folder.Store("findings", FindingsText());
    Report report;
    FileFacts facts;
    facts.path = "a";
    facts.outcome = FileOutcome::kOverlooked;
    facts.found = facts.listed = 2;
    facts.converted = facts.overlooked = facts.changed = 1;
    report.files.push_back(
        {facts, {commands.get(), 0, commands->Size()}, {findings.get(), 0, findings->Size()}});
    FileFacts nothing;
    nothing.path = "b";
    nothing.outcome = FileOutcome::kNothing;
    report.files.push_back({nothing, {}, {}});
    TextCollector output;
    ASSERT_TRUE(WriteJunitReport(report, output));
    EXPECT_EQ(
        output.text,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<testsuites name=\"quillet-migrate\" tests=\"3\" failures=\"1\" errors=\"0\" skipped=\"1\""
        " time=\"0.000\">\n"
        "  <testsuite name=\"a\" tests=\"2\" failures=\"1\" errors=\"0\" skipped=\"0\">\n"
        "    <testcase classname=\"a\" name=\"TABLES, line 20 to 22\">\n"
        "      <failure type=\"macro-body\" message=\"In a macro\">"
        "TABLES&#10; /x&#10;&lt;/script&gt;.</failure>\n"
        "    </testcase>\n"
        "    <testcase classname=\"a\" name=\"TABLES, line 30\">\n"
        "    </testcase>\n"
        "    <system-out>Looks like \xC3\xA9&#10;</system-out>\n"
        "  </testsuite>\n"
        "  <testsuite name=\"b\" tests=\"1\" failures=\"0\" errors=\"0\" skipped=\"1\">\n"
        "    <testcase classname=\"b\" name=\"file\"><skipped message=\"nothing to convert\"/>"
        "</testcase>\n"
        "  </testsuite>\n"
        "</testsuites>\n");
}

TEST(MigrateJunitReportTest, ACommandMayBeginWhereAnotherWasOverlooked) {
    CommandReport failed;
    failed.type = CommandType::kTables;
    failed.outcome = CommandOutcome::kFailed;
    failed.firstLine = failed.lastLine = 20;
    failed.errorKind = ErrorKind::kTablesSyntax;
    failed.message = "Invalid";
    Finding sameLine = OverlookedFinding();
    sameLine.code = FindingCode::kSameLine;
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> commands =
        folder.Store("commands", "[" + CommandJson(failed, TextEncoding::kUtf8) + "]");
    const std::unique_ptr<StoredFile> findings =
        folder.Store("findings", "[" + FindingJson(sameLine, TextEncoding::kUtf8) + "]");
    Report report;
    FileFacts facts = FactsOf("a", FileOutcome::kOverlooked);
    facts.found = 2;
    facts.failed = facts.overlooked = facts.listed = 1;
    report.files.push_back(
        {facts, {commands.get(), 0, commands->Size()}, {findings.get(), 0, findings->Size()}});
    TextCollector output;
    ASSERT_TRUE(WriteJunitReport(report, output));
    EXPECT_THAT(output.text, HasSubstr("tests=\"2\" failures=\"2\""));
    EXPECT_THAT(output.text, HasSubstr("<failure type=\"same-line\""));
    EXPECT_THAT(output.text, HasSubstr("<failure type=\"tables-syntax\" message=\"Invalid\">"));
}

TEST(MigrateJunitReportTest, FailuresAreNoticed) {
    TextCollector narrow(60);
    EXPECT_FALSE(WriteJunitReport({}, narrow));
    const TemporaryFolder folder;
    const std::unique_ptr<StoredFile> nonsense = folder.Store("commands", "nonsense");
    Report report;
    report.files.push_back({FileFacts{}, {nonsense.get(), 0, nonsense->Size()}, {}});
    report.files.back().facts.outcome = FileOutcome::kConverted;
    TextCollector output;
    EXPECT_FALSE(WriteJunitReport(report, output));
}

}  // namespace
}  // namespace quillet::migrate
