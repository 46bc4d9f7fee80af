// Facts, records and reports for the tests of those who write and read them.
#ifndef QUILLET_TESTS_MIGRATEREPORTS_H
#define QUILLET_TESTS_MIGRATEREPORTS_H

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "migrate/journalrecord.h"
#include "migrate/jsonreport.h"
#include "migrate/reportdata.h"
#include "migratehelper.h"
#include "quillet.h"

namespace quillet::migrate {

/// Those of a file that was converted, with little else to tell.
inline FileFacts FactsOf(std::string path, FileOutcome outcome = FileOutcome::kConverted) {
    FileFacts facts;
    facts.path = std::move(path);
    facts.outcome = outcome;
    facts.bytes = 10;
    return facts;
}

/// The record of its result, which has the hash `result`.
inline JournalRecord RecordOf(std::string path, std::uint64_t result = 2) {
    JournalRecord record;
    record.facts = FactsOf(std::move(path));
    record.identity = {{0, 1}, {0, result}, "1.2.3", "layout=batch;encoding=x", false};
    return record;
}

/// A command of UTF-8 text that could not be converted.
inline CommandReport FailedCommand() {
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

/// One of text in Windows-1252 that was converted, with a warning.
inline CommandReport ConvertedCommand() {
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

/// Those of a file with an edited result, with a value in nearly every member.
inline FileFacts SomeFacts(std::string path) {
    FileFacts facts;
    facts.path = std::move(path);
    facts.outcome = FileOutcome::kPartly;
    facts.result = ResultState::kEdited;
    facts.hasSourceChanged = true;
    facts.bytes = 5000000000;
    facts.modified = 1700000000;
    facts.encoding = "windows-1252";
    facts.encodingReason = "default";
    facts.layout = "batch";
    facts.layoutReason = "pattern";
    facts.blankLines = "mean-nothing";
    facts.blankLinesReason = "layout";
    facts.lines = 40;
    facts.copied = 7;
    facts.found = 3;
    facts.converted = 1;
    facts.failed = 1;
    facts.unreadable = 0;
    facts.overlooked = 1;
    facts.listed = 2;
    facts.warnings = 1;
    facts.changed = 1;
    facts.message = "a \"word\"";
    facts.errors = {"tables-syntax"};
    facts.codes = {"encoding-doubtful", "macro-body"};
    return facts;
}

/// Says which members differ.
inline void ExpectSameFacts(const FileFacts& left, const FileFacts& right) {
    EXPECT_EQ(left.path, right.path);
    EXPECT_EQ(left.outcome, right.outcome);
    EXPECT_EQ(left.result, right.result);
    EXPECT_EQ(left.hasSourceChanged, right.hasSourceChanged);
    EXPECT_EQ(left.isLinkNotFollowed, right.isLinkNotFollowed);
    EXPECT_EQ(left.bytes, right.bytes);
    EXPECT_EQ(left.modified, right.modified);
    for (const FileText& text : kReadingTexts) {
        EXPECT_EQ(left.*text.pMember, right.*text.pMember) << text.pName;
    }
    for (const FileNumber& number : kFileNumbers) {
        EXPECT_EQ(left.*number.pMember, right.*number.pMember) << number.pName;
    }
    EXPECT_EQ(left.message, right.message);
    EXPECT_EQ(left.errors, right.errors);
    EXPECT_EQ(left.codes, right.codes);
    EXPECT_TRUE(left == right) << "a member that is not compared above";
}

/// A report of files that have `SomeFacts` and all the same commands and findings, which it
/// borrows.
inline Report ReportOf(const std::vector<std::string>& paths, const StoredFile& commands,
                       const StoredFile& findings) {
    Report report;
    report.run = {"/old", "/new", "batch", true, true, Shard{2, 3}, 1795230000, 12.345};
    for (const std::string& path : paths) {
        report.files.push_back(
            {SomeFacts(path), {&commands, 0, commands.Size()}, {&findings, 0, findings.Size()}});
    }
    return report;
}

/// One about a legacy command in UTF-8 text.
inline Finding OverlookedFinding() {
    Finding finding;
    finding.code = FindingCode::kMacroBody;
    finding.command = CommandType::kTables;
    finding.firstLine = 20;
    finding.lastLine = 22;
    finding.causeLine = 18;
    finding.macro = "!f";
    finding.sentence = "In a macro";
    finding.text = "TABLES\n /x\n</script>.";
    return finding;
}

/// One about a whole text in Windows-1252.
inline Finding ChangedFinding() {
    Finding finding;
    finding.code = FindingCode::kEncodingDoubtful;
    finding.firstLine = finding.lastLine = finding.causeLine = 1;
    finding.sentence = "Looks like \xE9";
    return finding;
}

/// The two, as a report has them.
inline std::string FindingsText() {
    return "[" + FindingJson(ChangedFinding(), TextEncoding::kWindows1252) + "," +
           FindingJson(OverlookedFinding(), TextEncoding::kUtf8) + "]";
}

/// The two commands above, as a report has them.
inline std::string CommandsText() {
    return "[" + CommandJson(ConvertedCommand(), TextEncoding::kWindows1252) + "," +
           CommandJson(FailedCommand(), TextEncoding::kUtf8) + "]";
}

/// Gives each test the commands of a report in a file, and reports that have them.
class ReportTest : public testing::Test {
protected:
    /// The JSON of a report of these files.
    [[nodiscard]] std::string TextOfFiles(const std::vector<std::string>& paths) const {
        TextCollector output;
        EXPECT_TRUE(WriteJsonReport(ReportOf(paths, *m_commands, *m_findings), output));
        return output.text;
    }

    const TemporaryFolder m_folder;
    const std::unique_ptr<StoredFile> m_commands = m_folder.Store("commands", CommandsText());
    const std::unique_ptr<StoredFile> m_findings = m_folder.Store("findings", FindingsText());
};

}  // namespace quillet::migrate

#endif  // QUILLET_TESTS_MIGRATEREPORTS_H
