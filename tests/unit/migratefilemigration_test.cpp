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

constexpr const char* kSource = "LIST x.\n";
constexpr const char* kOtherSource = "LIST y.\n";
// What the source becomes.
constexpr const char* kMade = "LIST x.\n";
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
        m_folder.Create("s/a", kSource);
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
        const EncodingRules rules;
        const MigrationContext context = {*source,          target,   m_earlier,    *journal,
                                          publisher,        progress, encodings,    rules,
                                          ResultOptions{},  false,    how.isDryRun, how.replacesAll,
                                          how.acceptsEdited};
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
    EXPECT_EQ(migration.Facts().copied, c.areRecordedFacts ? 100 : 1);
    EXPECT_EQ(migration.Facts().outcome, FileOutcome::kConverted);
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

INSTANTIATE_TEST_SUITE_P(Cases, MigrateFileMigrationTest, testing::ValuesIn(Cases()), NameOfCase);

}  // namespace
}  // namespace quillet::migrate
