#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "migrate/filemigration.h"
#include "migratehelper.h"

namespace quillet::migrate {
namespace {

constexpr const char* kSource = "LIST x.\n* Old\nTABLES /TABLE=a.\n";
constexpr const char* kOtherSource = "LIST y.\n";
// What the source becomes: its legacy command is overlooked.
constexpr const char* kMade = kSource;
constexpr const char* kEdited = "edited";

ContentHash HashOf(std::string_view text) {
    ContentHasher hasher;
    hasher.Add(text);
    return hasher.Value();
}

// A record of the file "a", as a run with the usual options leaves it but for what is changed.
JournalRecord RecordOfTexts(std::string_view source, std::string_view result) {
    JournalRecord record;
    record.facts.path = "a";
    record.facts.outcome = FileOutcome::kConverted;
    // Not the true number: it tells where facts come from.
    record.facts.copied = 100;
    record.identity = {HashOf(source), HashOf(result), QUILLET_VERSION, TextOf(ResultOptions{}),
                       false};
    return record;
}

JournalRecord WithVersion(std::string version, JournalRecord record) {
    record.identity.version = std::move(version);
    return record;
}

JournalRecord WithOptions(std::string options, JournalRecord record) {
    record.identity.options = std::move(options);
    return record;
}

JournalRecord Accepted(JournalRecord record) {
    record.identity.isAccepted = true;
    return record;
}

struct How {
    const char* pSource = kSource;
    bool copiesUnconverted = false;
    Layout layout = Layout::kAuto;
    const char* pBatchPattern = nullptr;
    bool endsAtBlankLines = false;
    bool isDryRun = false;
    bool replacesAll = false;
    bool acceptsEdited = false;
};

// A source and a target folder, and one run over the file "a".
class Migration {
public:
    Migration(const char* pResult, const std::vector<JournalRecord>& records, How how) {
        std::filesystem::create_directory(m_folder.PathOf("s"));
        std::filesystem::create_directory(m_folder.PathOf("t"));
        m_folder.Create("s/a", how.pSource);
        if (pResult != nullptr) m_folder.Create("t/a", pResult);
        for (const JournalRecord& record : records) m_earlier.Add(record);
        Run(how);
    }

    [[nodiscard]] const FileFacts& Facts() const { return m_finished.entry.facts; }
    [[nodiscard]] const std::optional<ResultIdentity>& Identity() const {
        return m_finished.identity;
    }
    [[nodiscard]] bool HasResult() const { return std::filesystem::exists(m_folder.PathOf("t/a")); }
    [[nodiscard]] std::string Result() const { return m_folder.Contents("t/a"); }
    // What the next run will read.
    [[nodiscard]] std::vector<JournalRecord> Recorded() const {
        std::vector<JournalRecord> records;
        JournalReader reader(
            [&records](JournalRecord record) { records.push_back(std::move(record)); });
        reader.Add(m_folder.Contents("t/journal"));
        return records;
    }

private:
    void Run(How how) {
        std::error_code error;
        const auto source = Folder::Open(m_folder.PathOf("s"), error);
        const auto folder = Folder::Open(m_folder.PathOf("t"), error);
        const TargetFolder target(folder, m_folder.PathOf("t"), std::nullopt, {});
        EarlierResults none;
        const auto journal = Journal::Open(folder, "journal", "report", none, error);
        ASSERT_TRUE(journal) << error.message();
        ProgressCounters progress;
        ResultPublisher publisher(*journal, target, progress);
        Encodings encodings;
        const EncodingRules encodingRules;
        LayoutRules layoutRules(how.layout);
        if (how.pBatchPattern != nullptr) layoutRules.AddBatch(how.pBatchPattern);
        ResultOptions options;
        options.endsAtBlankLines = how.endsAtBlankLines;
        IncludedTexts includes(
            {*source, encodings, encodingRules, layoutRules, false},
            [](std::string_view /*path*/, const std::string& /*from*/) { return std::nullopt; });
        const MacroCalls macroCalls;
        const MigrationContext context = {*source,      target,          m_earlier,
                                          *journal,     publisher,       progress,
                                          encodings,    encodingRules,   options,
                                          layoutRules,  includes,        macroCalls,
                                          {},           false,           how.copiesUnconverted,
                                          how.isDryRun, how.replacesAll, how.acceptsEdited};
        FileTask task;
        task.entry.path = "a";
        FileMigration(context, 0).Run(task);
        publisher.Flush();
        std::vector<FinishedFile> files = journal->TakeFiles();
        ASSERT_EQ(files.size(), 1U);
        m_finished = std::move(files[0]);
    }

    TemporaryFolder m_folder;
    EarlierResults m_earlier;
    FinishedFile m_finished;
};

struct JudgmentCase {
    const char* name;
    const char* pResult;  // what stands; null for nothing
    std::vector<JournalRecord> records;
    ResultState state;
    bool hasSourceChanged = false;
    bool areRecordedFacts = false;
    How how = {};
};

void PrintTo(const JudgmentCase& c, std::ostream* pStream) { *pStream << c.name; }

const std::vector<JudgmentCase>& Cases() {
    static const std::vector<JudgmentCase> kCases = {
        {"nothing stands", nullptr, {}, ResultState::kNew},
        {"nothing stands any more", nullptr, {RecordOfTexts(kSource, kMade)}, ResultState::kNew},
        {"the result of this",
         kMade,
         {RecordOfTexts(kSource, kMade)},
         ResultState::kKept,
         false,
         true},
        {"of another source", "old", {RecordOfTexts(kOtherSource, "old")}, ResultState::kNew},
        {"of another version",
         "old",
         {WithVersion("0.0.1", RecordOfTexts(kSource, "old"))},
         ResultState::kNew},
        {"of other options",
         "old",
         {WithOptions("layout=batch", RecordOfTexts(kSource, "old"))},
         ResultState::kNew},
        {"of another version, to the same bytes",
         kMade,
         {WithVersion("0.0.1", RecordOfTexts(kSource, kMade))},
         ResultState::kNew},
        {"of a run before the last one, which did not get to it",
         "old",
         {RecordOfTexts(kOtherSource, "old"), RecordOfTexts(kSource, kMade)},
         ResultState::kNew},
        {"edited", kEdited, {RecordOfTexts(kSource, kMade)}, ResultState::kEdited},
        {"emptied", "", {RecordOfTexts(kSource, kMade)}, ResultState::kEdited},
        {"edited, and another source",
         kEdited,
         {RecordOfTexts(kOtherSource, "old")},
         ResultState::kEdited,
         true},
        {"edited, and another version",
         kEdited,
         {WithVersion("0.0.1", RecordOfTexts(kSource, "old"))},
         ResultState::kEdited},
        {"edited, and other options",
         kEdited,
         {WithOptions("layout=batch", RecordOfTexts(kSource, "old"))},
         ResultState::kEdited},
        {"edited to what would be made",
         kMade,
         {RecordOfTexts(kOtherSource, "old")},
         ResultState::kKept},
        {"edited, and the source before was recorded, too",
         kEdited,
         {RecordOfTexts(kOtherSource, "old"), RecordOfTexts(kSource, kMade)},
         ResultState::kEdited,
         true},
        {"not recorded, and the same", kMade, {}, ResultState::kKept},
        {"not recorded, and different", kEdited, {}, ResultState::kEdited},
        {"accepted",
         kEdited,
         {Accepted(RecordOfTexts(kSource, kEdited))},
         ResultState::kKept,
         false,
         true},
        {"accepted, and edited again",
         kEdited,
         {Accepted(RecordOfTexts(kSource, "better"))},
         ResultState::kEdited},
        {"accepted for another source",
         kEdited,
         {Accepted(RecordOfTexts(kOtherSource, kEdited))},
         ResultState::kEdited,
         true},
        {"accepted for another version",
         kEdited,
         {WithVersion("0.0.1", Accepted(RecordOfTexts(kSource, kEdited)))},
         ResultState::kEdited},
        {"accepting",
         kEdited,
         {RecordOfTexts(kSource, kMade)},
         ResultState::kKept,
         false,
         false,
         {.acceptsEdited = true}},
        {"accepting what is as it was",
         kMade,
         {RecordOfTexts(kSource, kMade)},
         ResultState::kKept,
         false,
         true,
         {.acceptsEdited = true}},
        {"forced",
         kEdited,
         {RecordOfTexts(kSource, kMade)},
         ResultState::kNew,
         false,
         false,
         {.replacesAll = true}},
        {"a dry run with nothing",
         nullptr,
         {},
         ResultState::kNew,
         false,
         false,
         {.isDryRun = true}},
        {"a dry run with another source",
         "old",
         {RecordOfTexts(kOtherSource, "old")},
         ResultState::kNew,
         false,
         false,
         {.isDryRun = true}},
    };
    return kCases;
}

class MigrateFileMigrationTest : public testing::TestWithParam<JudgmentCase> {};

TEST_P(MigrateFileMigrationTest, JudgesWhatStands) {
    const JudgmentCase& c = GetParam();
    const Migration migration(c.pResult, c.records, c.how);
    EXPECT_EQ(NameOf(migration.Facts().result), NameOf(c.state));
    EXPECT_EQ(migration.Facts().hasSourceChanged, c.hasSourceChanged);
    EXPECT_EQ(migration.Facts().copied, c.areRecordedFacts ? 100 : 2);
    EXPECT_EQ(migration.Facts().outcome,
              c.areRecordedFacts ? FileOutcome::kConverted : FileOutcome::kOverlooked);
    EXPECT_EQ(migration.Facts().bytes, std::string(kSource).size());
    if (c.how.isDryRun) {
        EXPECT_EQ(migration.HasResult(), c.pResult != nullptr);
    } else {
        EXPECT_EQ(migration.Result(), c.state == ResultState::kNew ? kMade : c.pResult);
    }
    EXPECT_EQ(migration.Identity().has_value(), c.state != ResultState::kEdited);
    if (!migration.Identity()) return;
    const std::string stands = c.state == ResultState::kNew ? kMade : c.pResult;
    EXPECT_EQ(migration.Identity()->source, HashOf(kSource));
    EXPECT_EQ(migration.Identity()->result, HashOf(stands));
    EXPECT_EQ(migration.Identity()->isAccepted, stands == kEdited);
    // What was not recorded before is recorded now.
    EXPECT_EQ(migration.Recorded().size(), c.areRecordedFacts ? 0U : 1U);
}

std::string NameOfCase(const testing::TestParamInfo<JudgmentCase>& info) {
    std::string name = info.param.name;
    std::replace_if(
        name.begin(), name.end(), [](char byte) { return byte == ' ' || byte == ','; }, '_');
    return name;
}

// What a record of version 0.1 lacks is found out; the result is left as it is.
TEST(MigrateFileMigrationFindingsTest, AreFoundForOldRecords) {
    JournalRecord record = RecordOfTexts(kSource, kMade);
    record.hasFindings = false;
    const Migration migration(kMade, {record}, {});
    EXPECT_EQ(migration.Facts().result, ResultState::kKept);
    EXPECT_EQ(migration.Facts().found, 1);
    EXPECT_EQ(migration.Facts().overlooked, 1);
    EXPECT_EQ(migration.Facts().codes, std::vector<std::string>{"open-comment"});
    ASSERT_EQ(migration.Recorded().size(), 1U);
    EXPECT_TRUE(migration.Recorded()[0].hasFindings);
}

struct OutcomeCase {
    const char* name;
    How how;
    FileOutcome outcome;
    std::string result;  // "-" for none
    std::string layout = "interactive default";
    std::string blankLines = "mean-nothing default";
};

void PrintTo(const OutcomeCase& c, std::ostream* pStream) { *pStream << c.name; }

class MigrateFileOutcomeTest : public testing::TestWithParam<OutcomeCase> {};

TEST_P(MigrateFileOutcomeTest, IsTheWorstThatHolds) {
    const OutcomeCase& c = GetParam();
    const Migration migration(nullptr, {}, c.how);
    const FileFacts& facts = migration.Facts();
    EXPECT_EQ(NameOf(facts.outcome), NameOf(c.outcome));
    EXPECT_TRUE(IsAccountedFor(facts));
    if (c.result == "-") {
        EXPECT_FALSE(migration.HasResult());
        EXPECT_EQ(facts.result, ResultState::kNone);
        EXPECT_FALSE(migration.Identity());
    } else {
        EXPECT_EQ(migration.Result().substr(0, c.result.size()), c.result);
        EXPECT_EQ(facts.result, ResultState::kNew);
        EXPECT_TRUE(migration.Identity());
    }
    if (c.outcome == FileOutcome::kNothing) {
        EXPECT_EQ(facts.layout + facts.layoutReason + facts.blankLines + facts.encoding, "");
        EXPECT_EQ(facts.copied + facts.listed + facts.found + facts.changed, 0);
    } else {
        EXPECT_EQ(facts.layout + " " + facts.layoutReason, c.layout);
        EXPECT_EQ(facts.blankLines + " " + facts.blankLinesReason, c.blankLines);
        EXPECT_EQ(facts.encoding + " " + facts.encodingReason, "utf-8 valid-utf-8");
    }
}

constexpr const char* kBatchText = "GET FILE=X\nTABLES TABLE=A\n  /STATISTICS=COUNT\nFINISH\n";
constexpr const char* kUnended = "GET FILE=X\n\nTABLES TABLE=A.\n";

const OutcomeCase kOutcomeCases[] = {
    {"converted", {.pSource = "LIST.\nTABLES /TABLE=a.\n"}, FileOutcome::kConverted, "LIST.\n"},
    {"changed", {.pSource = "TABLES /TABLE=a.\nLIST. /* y\n"}, FileOutcome::kChanged, "COMMENT"},
    {"partly",
     {.pSource = "TABLES /TABLE=a.\nIGRAPH /NO.\n* y.\n"},
     FileOutcome::kPartly,
     "COMMENT"},
    {"unconverted", {.pSource = "IGRAPH /NO.\n"}, FileOutcome::kUnconverted, "COMMENT"},
    {"overlooked",
     {.pSource = "IGRAPH /NO.\nLIST. TABLES /TABLE=a.\n"},
     FileOutcome::kOverlooked,
     "COMMENT"},
    {"stopped",
     {.pSource = "TABLES /TABLE=a.\nLIST 'x.\nTABLES /TABLE=a.\n"},
     FileOutcome::kStopped,
     "COMMENT"},
    {"nothing", {.pSource = "LIST 'x\n\n"}, FileOutcome::kNothing, "-"},
    {"nothing_copied",
     {.pSource = "LIST 'x\n\n", .copiesUnconverted = true},
     FileOutcome::kNothing,
     "LIST 'x\n\n"},
    {"nothing_but_the_word", {.pSource = "FREQUENCIES tables\n\n"}, FileOutcome::kNothing, "-"},
    {"nothing_but_the_word_copied",
     {.pSource = "FREQUENCIES tables\n\n", .copiesUnconverted = true},
     FileOutcome::kNothing,
     "FREQUENCIES tables\n\n"},
    {"batch_by_itself",
     {.pSource = kBatchText},
     FileOutcome::kConverted,
     "GET FILE=X",
     "batch reads-well"},
    {"batch_read_as_interactive",
     {.pSource = kBatchText, .layout = Layout::kInteractive},
     FileOutcome::kOverlooked,
     "GET FILE=X",
     "interactive option"},
    {"batch_by_its_name",
     {.pSource = "TABLES TABLE=A\n", .layout = Layout::kInteractive, .pBatchPattern = "A"},
     FileOutcome::kConverted,
     "COMMENT",
     "batch pattern"},
    {"batch_by_option",
     {.pSource = kBatchText, .layout = Layout::kBatch, .endsAtBlankLines = true},
     FileOutcome::kConverted,
     "GET FILE=X",
     "batch option",
     "mean-nothing layout"},
    {"a_blank_line", {.pSource = kUnended}, FileOutcome::kOverlooked, "GET FILE=X\nTABLES"},
    {"a_blank_line_that_ends",
     {.pSource = kUnended, .endsAtBlankLines = true},
     FileOutcome::kConverted,
     "GET FILE=X.\nCOMMENT",
     "interactive default",
     "end-commands option"},
};

INSTANTIATE_TEST_SUITE_P(Cases, MigrateFileOutcomeTest, testing::ValuesIn(kOutcomeCases),
                         [](const auto& row) { return std::string(row.param.name); });

// It was converted before it had nothing to convert.
TEST(MigrateFileMigrationFindingsTest, WhatStandsIsLeftAloneWhereNothingIsMade) {
    for (const How how :
         {How{.pSource = kOtherSource}, How{.pSource = kOtherSource, .isDryRun = true}}) {
        const Migration own("old", {RecordOfTexts(kSource, "old")}, how);
        EXPECT_EQ(NameOf(own.Facts().outcome), "nothing-to-convert");
        EXPECT_EQ(own.Facts().result, ResultState::kNone);
        EXPECT_EQ(own.Facts().message, "TARGET has a file of this name, which is left alone");
        EXPECT_EQ(own.Result(), "old");
        const Migration unknown("old", {}, how);
        EXPECT_EQ(NameOf(unknown.Facts().outcome), "nothing-to-convert");
        EXPECT_EQ(unknown.Facts().message, "TARGET has a file of this name, which is left alone");
        EXPECT_EQ(unknown.Result(), "old");
        const Migration copy(kOtherSource, {}, how);
        EXPECT_EQ(copy.Facts().message, "");
        EXPECT_EQ(copy.Result(), kOtherSource);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, MigrateFileMigrationTest, testing::ValuesIn(Cases()), NameOfCase);

}  // namespace
}  // namespace quillet::migrate
