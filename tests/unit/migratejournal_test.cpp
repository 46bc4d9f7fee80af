#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "migrate/journal.h"
#include "migrate/jsonreport.h"
#include "migratehelper.h"

namespace quillet::migrate {
namespace {

FileFacts FactsOf(std::string path, FileOutcome outcome = FileOutcome::kConverted) {
    FileFacts facts;
    facts.path = std::move(path);
    facts.outcome = outcome;
    facts.bytes = 10;
    facts.modified = 1000;
    return facts;
}

std::string CommandsOf(const FileEntry& entry) {
    TextCollector output;
    EXPECT_TRUE(CopyCommands(entry.commands, output));
    return output.text;
}

std::unique_ptr<Journal> OpenJournal(const TemporaryFolder& folder, EarlierFacts& earlier) {
    std::error_code error;
    std::unique_ptr<Journal> journal = Journal::Open(folder.Open(), "journal", earlier, error);
    EXPECT_TRUE(journal != nullptr) << error.message();
    return journal;
}

TEST(MigrateJournalTest, AnInterruptedRunLeavesItsFacts) {
    const TemporaryFolder folder;
    {
        EarlierFacts nothing;
        const std::unique_ptr<Journal> journal = OpenJournal(folder, nothing);
        ASSERT_TRUE(journal);
        CommandSpool commands;
        journal->Add(FactsOf("none"), commands);
        commands.Add(R"({"error":"x-y","source":"\n"})");
        commands.Add(R"({"error":"a-b"})");
        commands.Add(R"({"error":"x-y"})");
        journal->Add(FactsOf("some\xFF"), commands);
    }
    EarlierFacts earlier;
    const std::unique_ptr<Journal> journal = OpenJournal(folder, earlier);
    ASSERT_TRUE(journal);
    const FileEntry* pNone = earlier.Find("none", 10, 1000);
    ASSERT_TRUE(pNone);
    EXPECT_EQ(CommandsOf(*pNone), "[]");
    const FileEntry* pSome = earlier.Find("some\xFF", 10, 1000);
    ASSERT_TRUE(pSome);
    EXPECT_THAT(pSome->facts.errors, testing::ElementsAre("a-b", "x-y"));
    EXPECT_EQ(CommandsOf(*pSome),
              R"([{"error":"x-y","source":"\n"},{"error":"a-b"},{"error":"x-y"}])");
}

TEST(MigrateJournalTest, FactsCountForOneStateOfAFileWithAResult) {
    EarlierFacts earlier;
    earlier.Add({FactsOf("a"), {}});
    EXPECT_TRUE(earlier.Find("a", 10, 1000));
    EXPECT_FALSE(earlier.Find("a", 11, 1000));
    EXPECT_FALSE(earlier.Find("a", 10, 1001));
    EXPECT_FALSE(earlier.Find("b", 10, 1000));
    for (const FileOutcome outcome :
         {FileOutcome::kPartly, FileOutcome::kStopped, FileOutcome::kCopied}) {
        earlier.Add({FactsOf("a", outcome), {}});
        ASSERT_TRUE(earlier.Find("a", 10, 1000));
        EXPECT_EQ(earlier.Find("a", 10, 1000)->facts.outcome, outcome);
    }
    earlier.Add({FactsOf("a", FileOutcome::kFailed), {}});
    EXPECT_FALSE(earlier.Find("a", 10, 1000));
    earlier.Add({FactsOf("a", FileOutcome::kSkipped), {}});
    EXPECT_FALSE(earlier.Find("a", 10, 1000));
}

TEST(MigrateJournalTest, ALineThatWasNotFinishedIsCutOff) {
    const TemporaryFolder folder;
    CommandSpool commands;
    commands.Add("{}");
    {
        EarlierFacts nothing;
        const std::unique_ptr<Journal> journal = OpenJournal(folder, nothing);
        journal->Add(FactsOf("first"), commands);
        journal->Add(FactsOf("second"), commands);
    }
    const std::string whole = folder.Contents("journal");
    const std::size_t first = whole.find('\n') + 1;
    for (std::size_t size = first; size < whole.size(); ++size) {
        folder.Create("journal", whole.substr(0, size));
        EarlierFacts earlier;
        const std::unique_ptr<Journal> journal = OpenJournal(folder, earlier);
        EXPECT_TRUE(earlier.Find("first", 10, 1000));
        EXPECT_FALSE(earlier.Find("second", 10, 1000)) << size;
        EXPECT_EQ(folder.Contents("journal"), whole.substr(0, first));
        journal->Add(FactsOf("second"), commands);
        const std::vector<FileEntry> entries = journal->TakeEntries();
        ASSERT_EQ(entries.size(), 1U);
        EXPECT_EQ(CommandsOf(entries[0]), "[{}]");
        EXPECT_EQ(folder.Contents("journal"), whole);
    }
}

TEST(MigrateJournalTest, ALaterLineReplacesAnEarlierOne) {
    const TemporaryFolder folder;
    CommandSpool commands;
    for (const FileOutcome outcome : {FileOutcome::kPartly, FileOutcome::kConverted}) {
        EarlierFacts ignored;
        OpenJournal(folder, ignored)->Add(FactsOf("a", outcome), commands);
    }
    EarlierFacts earlier;
    const std::unique_ptr<Journal> journal = OpenJournal(folder, earlier);
    ASSERT_TRUE(earlier.Find("a", 10, 1000));
    EXPECT_EQ(earlier.Find("a", 10, 1000)->facts.outcome, FileOutcome::kConverted);
}

TEST(MigrateJournalTest, OneRunAtATime) {
    const TemporaryFolder folder;
    EarlierFacts earlier;
    std::unique_ptr<Journal> journal = OpenJournal(folder, earlier);
    std::error_code error;
    EXPECT_FALSE(Journal::Open(folder.Open(), "journal", earlier, error));
    EXPECT_EQ(error, std::errc::resource_unavailable_try_again);
    journal.reset();
    error.clear();
    EXPECT_TRUE(Journal::Open(folder.Open(), "journal", earlier, error)) << error.message();
}

TEST(MigrateJournalTest, ThreadsDoNotDisturbEachOther) {
    const TemporaryFolder folder;
    EarlierFacts nothing;
    const std::unique_ptr<Journal> journal = OpenJournal(folder, nothing);
    constexpr int kThreads = 4;
    constexpr int kFiles = 200;
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&journal, thread] {
                CommandSpool commands;
                for (int file = 0; file < kFiles; ++file) {
                    const std::string name = std::to_string(thread) + "/" + std::to_string(file);
                    commands.Clear();
                    // One line in a while is longer than what is written at once.
                    const std::size_t size = file == 100 ? 3000000 : 20;
                    commands.Add("\"" + name + std::string(size, 'x') + "\"");
                    journal->Add(FactsOf(name), commands);
                }
            });
        }
    }
    EXPECT_FALSE(journal->Error());
    const std::vector<FileEntry> entries = journal->TakeEntries();
    ASSERT_EQ(entries.size(), static_cast<std::size_t>(kThreads * kFiles));
    for (const FileEntry& entry : entries) {
        EXPECT_THAT(CommandsOf(entry).substr(0, 20),
                    testing::StartsWith("[\"" + entry.facts.path + "x"));
    }
}

TEST(MigrateCommandSpoolTest, WhatIsLargeComesBackAsItWas) {
    CommandSpool commands;
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
