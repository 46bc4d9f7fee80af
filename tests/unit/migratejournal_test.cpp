#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "migrate/journal.h"
#include "migrate/jsonreport.h"
#include "migratehelper.h"
#include "migratereports.h"

namespace quillet::migrate {
namespace {

std::string CommandsOf(const FileEntry& entry) {
    TextCollector output;
    EXPECT_TRUE(CopyArray(entry.commands, output));
    return output.text;
}

std::unique_ptr<Journal> OpenJournal(const TemporaryFolder& folder, EarlierResults& earlier) {
    std::error_code error;
    std::unique_ptr<Journal> journal =
        Journal::Open(folder.Open(), "journal", "report", earlier, error);
    EXPECT_TRUE(journal != nullptr) << error.message();
    return journal;
}

void AddTo(Journal& journal, const JournalRecord& record) {
    std::error_code error;
    EXPECT_TRUE(journal.Record(record, error)) << error.message();
}

TEST(MigrateJournalTest, AnInterruptedRunLeavesItsRecords) {
    const TemporaryFolder folder;
    {
        EarlierResults nothing;
        const std::unique_ptr<Journal> journal = OpenJournal(folder, nothing);
        ASSERT_TRUE(journal);
        ArraySpool commands;
        EXPECT_EQ(journal->Store(commands).place, StoredArray::Place::kNowhere);
        AddTo(*journal, RecordOf("none"));
        commands.Add(R"({"error":"x-y","source":"\n"})");
        commands.Add(R"({"error":"a-b"})");
        JournalRecord some = RecordOf("some\xFF");
        some.facts.failed = some.facts.listed = 2;
        some.commands = journal->Store(commands);
        AddTo(*journal, some);
        EXPECT_FALSE(journal->Error());
    }
    EarlierResults earlier;
    const std::unique_ptr<Journal> journal = OpenJournal(folder, earlier);
    ASSERT_TRUE(journal);
    EXPECT_THAT(earlier.Paths(), testing::ElementsAre("none", "some\xFF"));
    EXPECT_TRUE(earlier.RecordsOf("other").empty());
    ASSERT_EQ(earlier.RecordsOf("none").size(), 1U);
    const auto none = earlier.CommandsOf(earlier.RecordsOf("none")[0]);
    ASSERT_TRUE(none);
    EXPECT_EQ(CommandsOf({{}, *none, {}}), "[]");
    ASSERT_EQ(earlier.RecordsOf("some\xFF").size(), 1U);
    JournalRecord some = earlier.RecordsOf("some\xFF")[0];
    const auto commands = earlier.CommandsOf(some);
    ASSERT_TRUE(commands);
    EXPECT_EQ(CommandsOf({{}, *commands, {}}),
              R"([{"error":"x-y","source":"\n"},{"error":"a-b"}])");
    // They count only when they are what they were.
    some.commands.hash.low ^= 1;
    EXPECT_FALSE(earlier.CommandsOf(some));
    some.commands = earlier.RecordsOf("some\xFF")[0].commands;
    ++some.commands.offset;
    EXPECT_FALSE(earlier.CommandsOf(some));
    some.commands.offset = 1 << 20;
    EXPECT_FALSE(earlier.CommandsOf(some));
    some.commands = {};
    EXPECT_FALSE(earlier.CommandsOf(some));
    some.commands = earlier.RecordsOf("some\xFF")[0].commands;
    some.commands.place = StoredArray::Place::kReport;
    EXPECT_FALSE(earlier.CommandsOf(some));
}

TEST(MigrateJournalTest, ALineThatWasNotFinishedIsCutOff) {
    const TemporaryFolder folder;
    ArraySpool commands;
    commands.Add("{}");
    JournalRecord second = RecordOf("second");
    second.facts.listed = 1;
    {
        EarlierResults nothing;
        const std::unique_ptr<Journal> journal = OpenJournal(folder, nothing);
        AddTo(*journal, RecordOf("first"));
        second.commands = journal->Store(commands);
        AddTo(*journal, second);
    }
    const std::string whole = folder.Contents("journal");
    const std::size_t first = whole.find('\n') + 1;
    const std::size_t array = whole.find('\n', first) + 1;
    for (std::size_t size = first; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        folder.Create("journal", whole.substr(0, size));
        EarlierResults earlier;
        const std::unique_ptr<Journal> journal = OpenJournal(folder, earlier);
        EXPECT_THAT(earlier.Paths(), testing::ElementsAre("first"));
        EXPECT_EQ(folder.Contents("journal"), whole.substr(0, size < array ? first : array));
        JournalRecord again = second;
        again.commands = journal->Store(commands);
        AddTo(*journal, again);
        EXPECT_EQ(CommandsOf({{}, journal->PlaceOf(again.commands), {}}), "[{}]");
        journal->Note({});
        EXPECT_EQ(journal->FileCount(), 1U);
        EarlierResults later;
        ASSERT_TRUE(later.Read(folder.Store("copy", folder.Contents("journal")), nullptr));
        ASSERT_EQ(later.RecordsOf("second").size(), 1U);
        EXPECT_TRUE(later.CommandsOf(later.RecordsOf("second")[0]));
    }
}

TEST(MigrateJournalTest, FindingsCountWhenTheyAreWhatTheyWere) {
    const TemporaryFolder folder;
    EarlierResults earlier;
    const std::unique_ptr<Journal> journal = OpenJournal(folder, earlier);
    ArraySpool findings;
    findings.Add("{}");
    JournalRecord record = RecordOf("a");
    record.facts.overlooked = 1;
    record.findings = journal->Store(findings);
    ASSERT_TRUE(earlier.Read(folder.Store("copy", folder.Contents("journal")), nullptr));
    const auto place = earlier.FindingsOf(record);
    ASSERT_TRUE(place);
    EXPECT_EQ(CommandsOf({{}, *place, {}}), "[{}]");
    JournalRecord lost = record;
    lost.findings = {};
    EXPECT_FALSE(earlier.FindingsOf(lost));
    lost.facts.overlooked = 0;
    EXPECT_TRUE(earlier.FindingsOf(lost));
    // Nobody has looked for any.
    lost.hasFindings = false;
    EXPECT_FALSE(earlier.FindingsOf(lost));
}

TEST(MigrateJournalTest, TheLatestRecordComesLast) {
    EarlierResults earlier;
    earlier.Add(RecordOf("a", 1));
    earlier.Add(RecordOf("a", 2));
    earlier.Add(RecordOf("a", 1));
    ASSERT_EQ(earlier.RecordsOf("a").size(), 2U);
    EXPECT_EQ(earlier.RecordsOf("a")[0].identity.result.low, 2U);
    EXPECT_EQ(earlier.RecordsOf("a")[1].identity.result.low, 1U);
    // However many there are, the work on each is bounded.
    for (std::uint64_t result = 0; result < 1000; ++result) earlier.Add(RecordOf("b", result));
    EXPECT_LE(earlier.RecordsOf("b").size(), 64U);
    EXPECT_EQ(earlier.RecordsOf("b").back().identity.result.low, 999U);
}

TEST(MigrateJournalTest, OneRunAtATime) {
    const TemporaryFolder folder;
    EarlierResults earlier;
    std::unique_ptr<Journal> journal = OpenJournal(folder, earlier);
    std::error_code error;
    EXPECT_FALSE(Journal::Open(folder.Open(), "journal", "report", earlier, error));
    EXPECT_EQ(error, std::errc::resource_unavailable_try_again);
    error.clear();
    EXPECT_FALSE(
        Journal::OpenForReading(folder.Open(), "journal", "report", "scratch", earlier, error));
    EXPECT_EQ(error, std::errc::resource_unavailable_try_again);
    journal.reset();
    error.clear();
    EXPECT_TRUE(
        Journal::OpenForReading(folder.Open(), "journal", "report", "scratch", earlier, error));
    EXPECT_TRUE(OpenJournal(folder, earlier));
}

TEST(MigrateJournalTest, ReadingLeavesNoTrace) {
    const TemporaryFolder folder;
    const std::string text = FormatRecord(RecordOf("a")) + "half a line";
    folder.Create("journal", text);
    EarlierResults earlier;
    std::error_code error;
    const std::unique_ptr<Journal> journal =
        Journal::OpenForReading(folder.Open(), "journal", "report", "scratch", earlier, error);
    ASSERT_TRUE(journal) << error.message();
    EXPECT_EQ(earlier.RecordsOf("a").size(), 1U);
    AddTo(*journal, RecordOf("b"));
    ArraySpool commands;
    commands.Add("{}");
    EXPECT_EQ(CommandsOf({{}, journal->PlaceOf(journal->Store(commands)), {}}), "[{}]");
    EXPECT_EQ(folder.Contents("journal"), text);
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("scratch")));
}

TEST(MigrateJournalTest, ThreadsDoNotDisturbEachOther) {
    const TemporaryFolder folder;
    EarlierResults nothing;
    const std::unique_ptr<Journal> journal = OpenJournal(folder, nothing);
    constexpr int kThreads = 4;
    constexpr int kFiles = 200;
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&journal, thread] {
                ArraySpool commands;
                for (int file = 0; file < kFiles; ++file) {
                    const std::string name = std::to_string(thread) + "/" + std::to_string(file);
                    commands.Clear();
                    // One line in a while is longer than what is written at once.
                    const std::size_t size = file == 100 ? 3000000 : 20;
                    commands.Add("\"" + name + std::string(size, 'x') + "\"");
                    JournalRecord record = RecordOf(name);
                    record.commands = journal->Store(commands);
                    AddTo(*journal, record);
                    journal->Note(
                        {{record.facts, journal->PlaceOf(record.commands), {}}, {}, {}, {}});
                }
            });
        }
    }
    EXPECT_FALSE(journal->Error());
    const std::vector<FinishedFile> files = journal->TakeFiles();
    ASSERT_EQ(files.size(), static_cast<std::size_t>(kThreads * kFiles));
    for (const FinishedFile& file : files) {
        EXPECT_THAT(CommandsOf(file.entry).substr(0, 20),
                    testing::StartsWith("[\"" + file.entry.facts.path + "x"));
    }
    EarlierResults earlier;
    ASSERT_TRUE(earlier.Read(folder.Store("copy", folder.Contents("journal")), nullptr));
    EXPECT_EQ(earlier.Paths().size(), static_cast<std::size_t>(kThreads * kFiles));
    for (const std::string& path : earlier.Paths()) {
        EXPECT_TRUE(earlier.CommandsOf(earlier.RecordsOf(path)[0]));
    }
}

TEST(MigrateJournalTest, ACompactJournalHoldsWhatIsOfUse) {
    const TemporaryFolder folder;
    EarlierResults earlier;
    const std::unique_ptr<Journal> journal = OpenJournal(folder, earlier);
    ArraySpool commands;
    commands.Add("{}");
    JournalRecord other = RecordOf("other", 9);
    other.facts.listed = 1;
    other.commands = journal->Store(commands);
    for (const JournalRecord& record :
         {RecordOf("x/kept", 1), RecordOf("x/kept", 2), RecordOf("x/unsettled", 3),
          RecordOf("x/unsettled", 4), RecordOf("same"), RecordOf("y/gone"), RecordOf("other", 8),
          other}) {
        AddTo(*journal, record);
    }
    ASSERT_TRUE(earlier.Read(folder.Store("copy", folder.Contents("journal")), nullptr));
    const std::unique_ptr<StoredFile> report = folder.Store("report", "report [{},{}] more");
    std::vector<FileEntry> entries(3);
    std::vector<FinishedFile> files(3);
    entries[0] = {RecordOf("same").facts, {}, {}};
    files[0].identity = RecordOf("same").identity;
    entries[1] = {RecordOf("x/kept").facts, {report.get(), 7, 7}, {report.get(), 15, 4}};
    entries[1].facts.listed = 2;
    files[1].identity = RecordOf("x/kept", 2).identity;
    ContentHasher hasher;
    hasher.Add("[{},{}]");
    files[1].commandsHash = hasher.Value();
    entries[1].facts.told = 1;
    ContentHasher findingsHasher;
    findingsHasher.Add("more");
    files[1].findingsHash = findingsHasher.Value();
    entries[2] = {RecordOf("x/unsettled").facts, {}, {}};
    TextCollector output;
    std::set<std::string> folders;
    ASSERT_TRUE(WriteCompactJournal({entries, files, {{}, {7, 15}, {}}, earlier, {"y/gone"}},
                                    output, folders));
    EXPECT_THAT(folders, testing::ElementsAre("x"));

    EarlierResults later;
    ASSERT_TRUE(later.Read(folder.Store("compact", output.text),
                           folder.Store("report", "report [{},{}] more")));
    EXPECT_THAT(later.Paths(), testing::ElementsAre("other", "same", "x/kept", "x/unsettled"));
    ASSERT_EQ(later.RecordsOf("x/kept").size(), 1U);
    EXPECT_EQ(later.RecordsOf("x/kept")[0].identity, *files[1].identity);
    EXPECT_TRUE(later.CommandsOf(later.RecordsOf("x/kept")[0]));
    const auto findings = later.FindingsOf(later.RecordsOf("x/kept")[0]);
    ASSERT_TRUE(findings);
    EXPECT_EQ(CommandsOf({{}, *findings, {}}), "more");
    EXPECT_EQ(later.RecordsOf("x/unsettled").size(), 2U);
    ASSERT_EQ(later.RecordsOf("other").size(), 2U);
    const auto place = later.CommandsOf(later.RecordsOf("other")[1]);
    ASSERT_TRUE(place);
    EXPECT_EQ(CommandsOf({{}, *place, {}}), "[{}]");
    for (std::size_t limit = 0; limit < output.text.size(); limit += 100) {
        TextCollector full(limit);
        EXPECT_FALSE(WriteCompactJournal({entries, files, {{}, {7, 15}, {}}, earlier, {"y/gone"}},
                                         full, folders));
    }
}

TEST(MigrateArraySpoolTest, WhatIsLargeComesBackAsItWas) {
    ArraySpool commands;
    std::string expected;
    for (int number = 0; number < 300; ++number) {
        const std::string json =
            "\"" + std::string(50000, static_cast<char>('a' + number % 26)) + "\"";
        expected += (expected.empty() ? "" : ",") + json;
        commands.Add(json);
    }
    EXPECT_EQ(commands.Size(), expected.size());
    for (int time = 0; time < 2; ++time) {
        std::string copy;
        EXPECT_TRUE(commands.CopyTo([&copy](std::string_view piece) {
            copy += piece;
            return true;
        }));
        EXPECT_TRUE(copy == expected);
    }
    EXPECT_FALSE(commands.CopyTo([](std::string_view) { return false; }));
    commands.Clear();
    EXPECT_TRUE(commands.IsEmpty());
    EXPECT_TRUE(commands.CopyTo([](std::string_view) { return false; }));
}

}  // namespace
}  // namespace quillet::migrate
