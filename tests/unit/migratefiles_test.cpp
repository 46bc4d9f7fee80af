// The walk, the target's names, results and what a run says about itself.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "migrate/filemigration.h"
#include "migrate/filetree.h"
#include "migrate/jsonreport.h"
#include "migrate/mergereports.h"
#include "migrate/progress.h"
#include "migrate/summary.h"
#include "migrate/systemfiles.h"
#include "migrate/targetfolder.h"
#include "migrate/timetext.h"
#include "migratehelper.h"

namespace quillet::migrate {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> PathsOf(const FileTree& tree) {
    std::vector<std::string> paths;
    for (const TreeEntry& entry : tree.entries) paths.push_back(entry.path);
    return paths;
}

TEST(MigrateFilesTest, WalksInTheOrderOfBytes) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.PathOf("a/empty"));
    for (const char* name : {"a/b", "a-b", "B", "\xC3\xA4", "\xFF", "a.b"})
        folder.Create(name, "x");
    const FileTree tree = WalkTree(*folder.Open(), {});
    EXPECT_THAT(PathsOf(tree), ElementsAre("B", "a-b", "a.b", "a/b", "\xC3\xA4", "\xFF"));
    EXPECT_THAT(tree.folders, ElementsAre("a", "a/empty"));
}

TEST(MigrateFilesTest, LinksAreFollowedInsideOnly) {
    const TemporaryFolder outside;
    outside.Create("secret", "x");
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.PathOf("f"));
    folder.Create("f/file", "xyz");
    const auto link = [&](const std::string& to, const char* name) {
        std::filesystem::create_symlink(to, folder.PathOf(name));
    };
    link("f/file", "1 inside");
    link(outside.PathOf("secret"), "2 out");
    link("f", "3 folder");
    link("..", "f/4 loop");
    link("5 itself", "5 itself");
    link("nothing", "6 nowhere");
    link(outside.Path(), "7 folder out");
    // Ways that lead out and in again, and absolute ones.
    std::filesystem::create_directory(folder.PathOf("g"));
    const std::string name = std::filesystem::path(folder.Path()).filename().native();
    link("../../" + name + "/f/./file", "g/1 back");
    link("1 back", "g/2 chain");
    link(folder.PathOf("3 folder/file"), "g/3 absolute");
    link("../f/file/", "g/4 no folder");
    link("../f/nothing/../file", "g/5 nowhere");
    link("../../" + name + "/g/../f", "g/6 folder");
    link("../../" + name, "g/7 root");
    const FileTree tree = WalkTree(*folder.Open(), {});
    std::vector<std::string> met;
    for (const TreeEntry& entry : tree.entries) {
        const bool isFile = entry.kind == TreeEntry::Kind::kFile;
        met.push_back(entry.path +
                      (isFile ? " = " + entry.place : ": " + entry.message.substr(0, 24)));
        EXPECT_EQ(entry.isLinkNotFollowed, !isFile);
        EXPECT_EQ(entry.size, isFile ? 3U : 0U);
    }
    EXPECT_THAT(
        met, ElementsAre(
                 "1 inside = f/file", "2 out: a link that leads out of",
                 "3 folder: a link to a folder of th", "5 itself: a link that leads nowher",
                 "6 nowhere: a link that leads nowher", "7 folder out: a link that leads out of",
                 "f/4 loop: a link to a folder of th", "f/file = ", "g/1 back = f/file",
                 "g/2 chain = f/file", "g/3 absolute = f/file",
                 "g/4 no folder: a link that leads nowher", "g/5 nowhere: a link that leads nowher",
                 "g/6 folder: a link to a folder of th", "g/7 root: a link to a folder of th"));
    EXPECT_EQ(tree.identities.size(), 3U);
}

class TextSource final : public TextInput {
public:
    explicit TextSource(std::string text) : m_text(std::move(text)) {}
    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count =
            m_text.copy(buffer, std::min<std::size_t>(size, 1000), m_position);
        m_position += count;
        return count;
    }
    bool Rewind() override {
        m_position = 0;
        return true;
    }
    [[nodiscard]] bool Failed() const override { return false; }
    [[nodiscard]] bool IsRewound() const { return m_position == 0; }

private:
    std::string m_text;
    std::size_t m_position = 0;
};

TEST(MigrateFilesTest, TheBeginningTellsWhatAFileHolds) {
    const auto contentOf = [](std::string text) {
        TextSource source(std::move(text));
        const Content result = LookAtContent(source);
        EXPECT_TRUE(source.IsRewound());
        return result;
    };
    const std::string nul(1, '\0');
    EXPECT_EQ(contentOf(""), Content::kText);
    EXPECT_EQ(contentOf("\xFF\x01"), Content::kText);
    EXPECT_EQ(contentOf("\xFF"), Content::kText);
    EXPECT_EQ(contentOf(nul), Content::kOther);
    EXPECT_EQ(contentOf(std::string(65535, 'x') + nul), Content::kOther);
    EXPECT_EQ(contentOf(std::string(65536, 'x') + nul), Content::kText);
    EXPECT_EQ(contentOf("\xFF\xFE"), Content::kUtf16LittleEndian);
    EXPECT_EQ(contentOf("\xFE\xFF" + nul + "L"), Content::kUtf16BigEndian);
    EXPECT_EQ(contentOf("\xFF\xFE" + nul + nul), Content::kUtf32);
    EXPECT_EQ(contentOf(nul + nul + "\xFE\xFF"), Content::kUtf32);
    EXPECT_EQ(contentOf("x\xFF\xFE"), Content::kText);
}

TEST(MigrateFilesTest, PathsInsideEachOther) {
    EXPECT_TRUE(IsInside("/a/b", "/a"));
    EXPECT_TRUE(IsInside("/a", "/a"));
    EXPECT_TRUE(IsInside("/a", "/"));
    EXPECT_FALSE(IsInside("/ab", "/a"));
    EXPECT_FALSE(IsInside("/a", "/a/b"));
    EXPECT_EQ(FolderOf("a/b"), "a");
    EXPECT_EQ(FolderOf("/b"), "/");
    EXPECT_EQ(FolderOf("b"), ".");
}

TEST(MigrateFilesTest, ANewFileIsWholeOrNotThere) {
    const TemporaryFolder folder;
    folder.Create("result", "old");
    std::error_code error;
    {
        const std::unique_ptr<NewFile> file = NewFile::Create(folder.Open(), ".tmp", error);
        ASSERT_TRUE(file);
        EXPECT_TRUE(file->Write(std::string(1000000, 'x')));
        EXPECT_TRUE(std::filesystem::exists(folder.PathOf(".tmp")));
    }
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf(".tmp")));
    EXPECT_EQ(folder.Contents("result"), "old");
    folder.Create(".tmp", "what a run that was ended by force left");
    const std::unique_ptr<NewFile> file = NewFile::Create(folder.Open(), ".tmp", error);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->Write("new"));
    EXPECT_EQ(folder.Contents("result"), "old");
    EXPECT_TRUE(file->Commit("result", 0640));
    EXPECT_EQ(folder.Contents("result"), "new");
    FileStatus status;
    ASSERT_TRUE(folder.Open()->ReadStatus("result", status, error));
    EXPECT_EQ(status.permissions, 0640U);
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf(".tmp")));
}

TargetFolder TargetIn(const TemporaryFolder& folder, std::optional<Shard> shard = std::nullopt,
                      SourceFolders source = {}) {
    return {folder.Open(), "/t", shard, std::move(source)};
}

TEST(MigrateFilesTest, NamesOfTheTarget) {
    const TemporaryFolder folder;
    const TargetFolder whole = TargetIn(folder);
    EXPECT_EQ(whole.ReportName(".json"), "quillet-report.json");
    EXPECT_EQ(whole.ReportPath(".json"), "/t/quillet-report.json");
    const TargetFolder slice = TargetIn(folder, Shard{2, 4});
    EXPECT_EQ(slice.ReportPath(".html"), "/t/quillet-report-2-of-4.html");
    EXPECT_TRUE(TargetFolder::IsReserved("quillet-report.json"));
    EXPECT_TRUE(TargetFolder::IsReserved("quillet-report-dry-run.csv"));
    EXPECT_TRUE(TargetFolder::IsReserved("quillet-report-1-of-2.journal"));
    EXPECT_TRUE(TargetFolder::IsReserved("a/" + slice.TemporaryName("0")));
    EXPECT_FALSE(TargetFolder::IsReserved("a/quillet-report.json"));
    EXPECT_FALSE(TargetFolder::IsReserved("quillet-report.syn"));
}

TEST(MigrateFilesTest, LeftOversOfTheSameSliceGo) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.PathOf("f"));
    const TargetFolder whole = TargetIn(folder);
    const std::string own = whole.TemporaryName("0");
    const std::string other = TargetIn(folder, Shard{1, 2}).TemporaryName("0");
    for (const std::string& name : {own, other, "f/" + own, std::string("f/.quillet")}) {
        folder.Create(name, "x");
    }
    EXPECT_TRUE(whole.Prepare({"f", "g", "g/h"}).empty());
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf(own)));
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("f/" + own)));
    EXPECT_TRUE(std::filesystem::exists(folder.PathOf(other)));
    EXPECT_TRUE(std::filesystem::exists(folder.PathOf("f/.quillet")));
    EXPECT_TRUE(std::filesystem::is_directory(folder.PathOf("g/h")));
}

TEST(MigrateFilesTest, NothingIsDoneOverALinkInTheTarget) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    const TargetFolder target = TargetIn(folder);
    const std::string leftOver = target.TemporaryName("0");
    elsewhere.Create(leftOver, "x");
    std::filesystem::create_directory(folder.PathOf("e"));
    std::filesystem::create_symlink(elsewhere.Path(), folder.PathOf("e/f"));
    const std::vector<FolderProblem> problems = target.Prepare({"e", "e/f", "e/f/g", "h"});
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].path, "e/f");
    EXPECT_EQ(problems[0].kind, FolderProblem::Kind::kLink);
    EXPECT_EQ(problems[0].message, "the folder e/f of TARGET is a link, which is not followed");
    FolderProblem problem;
    EXPECT_FALSE(target.OpenFolder("e/f/g", problem));
    EXPECT_EQ(problem.message, problems[0].message);
    EXPECT_TRUE(target.OpenFolder("h", problem));
    EXPECT_TRUE(std::filesystem::exists(elsewhere.PathOf(leftOver)));
    EXPECT_FALSE(std::filesystem::exists(elsewhere.PathOf("g")));
}

TEST(MigrateFilesTest, NothingIsWrittenIntoFoldersOfTheSource) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.PathOf("s/f"));
    std::error_code error;
    const auto source = folder.Open()->OpenFolder("s", error);
    const TargetFolder target = TargetIn(folder, std::nullopt, {{source->Identity()}});
    const std::vector<FolderProblem> problems = target.Prepare({"f", "s", "s/f", "s/new"});
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].path, "s");
    EXPECT_EQ(problems[0].kind, FolderProblem::Kind::kSource);
    EXPECT_EQ(problems[0].message, "the folder s of TARGET is a folder of SOURCE");
    FolderProblem problem;
    // Not known itself, it lies in one that is.
    EXPECT_FALSE(target.OpenFolder("s/f", problem));
    EXPECT_EQ(problem.kind, FolderProblem::Kind::kSource);
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("s/new")));
    // Where the source is a single file its folder alone is not to be written into.
    const TargetFolder beside = TargetIn(folder, std::nullopt, {{source->Identity()}, false});
    EXPECT_TRUE(beside.OpenFolder("s/f", problem));
    EXPECT_FALSE(beside.OpenFolder("s", problem));
}

TEST(MigrateFilesTest, MakesAFolderThatWasNamed) {
    const TemporaryFolder folder;
    std::error_code error;
    const NamedFolder named = NamedFolder::Find(folder.PathOf("a/b"), error);
    ASSERT_FALSE(error) << error.message();
    EXPECT_FALSE(named.Exists());
    EXPECT_EQ(named.Existing()->Identity(), folder.Open()->Identity());
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("a")));
    ASSERT_TRUE(named.Make(error)) << error.message();
    EXPECT_TRUE(std::filesystem::is_directory(folder.PathOf("a/b")));
    EXPECT_TRUE(NamedFolder::Find(folder.PathOf("a/b"), error).Exists());
    // Someone puts a link there between the two.
    std::filesystem::create_symlink(folder.PathOf("a"), folder.PathOf("c"));
    const NamedFolder raced = NamedFolder::Find(folder.PathOf("d"), error);
    std::filesystem::create_symlink(folder.PathOf("a"), folder.PathOf("d"));
    EXPECT_FALSE(raced.Make(error));
    EXPECT_EQ(error, std::errc::too_many_symbolic_link_levels);
    folder.Create("file", "x");
    error.clear();
    static_cast<void>(NamedFolder::Find(folder.PathOf("file/x"), error));
    EXPECT_EQ(error, std::errc::not_a_directory);
}

TEST(MigrateFilesTest, AJournalIsAFileOfItsOwn) {
    const TemporaryFolder folder;
    const std::shared_ptr<const Folder> held = folder.Open();
    folder.Create("precious", "x");
    std::filesystem::create_hard_link(folder.PathOf("precious"), folder.PathOf("hard"));
    std::filesystem::create_symlink("precious", folder.PathOf("soft"));
    std::filesystem::create_directory(folder.PathOf("folder"));
    ASSERT_EQ(mkfifo(folder.PathOf("pipe").c_str(), 0600), 0);
    std::error_code error;
    EXPECT_FALSE(AppendedFile::Open(held, "hard", error));
    EXPECT_EQ(error, std::errc::too_many_links);
    EXPECT_FALSE(AppendedFile::Open(held, "soft", error));
    EXPECT_EQ(error, std::errc::too_many_symbolic_link_levels);
    EXPECT_FALSE(AppendedFile::Open(held, "folder", error));
    EXPECT_FALSE(AppendedFile::Open(held, "pipe", error));
    EXPECT_TRUE(AppendedFile::Open(held, "new", error));
}

TEST(MigrateFilesTest, ShowsProgress) {
    ProgressCounters counters;
    counters.allFiles = 40;
    counters.allBytes = 10000000;
    counters.files = 12;
    counters.bytes = 2500000;
    counters.commands = 600;
    counters.failures = 7;
    counters.overlooked = 2;
    EXPECT_EQ(FormatProgress(counters, 5),
              "12/40 files (25%), 600 commands, 7 failures, 2 overlooked, 0.5 MB/s, 15 s left");
    EXPECT_EQ(FormatDuration(0), "0 s");
    EXPECT_EQ(FormatDuration(59.1), "1 min 0 s");
    EXPECT_EQ(FormatDuration(200), "3 min 20 s");
    EXPECT_EQ(FormatDuration(7500), "2 h 5 min");
    for (const double endless : {1e12, 1e300, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(FormatDuration(endless), "277777777 h 46 min");
    }
    for (const double none : {-1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(FormatDuration(none), "0 s");
    }
    counters.allBytes = std::numeric_limits<std::uint64_t>::max();
    counters.bytes = 1;
    EXPECT_EQ(FormatProgress(counters, 1e6),
              "12/40 files (0%), 600 commands, 7 failures, 2 overlooked, 0.0 MB/s, 277777777 h 46 "
              "min left");
}

Report RunOf(std::vector<std::string> paths, std::int64_t started, double seconds) {
    Report report;
    report.run.source = "s";
    report.run.target = "t";
    report.run.started = started;
    report.run.seconds = seconds;
    for (std::string& path : paths) {
        FileFacts facts;
        facts.path = std::move(path);
        facts.outcome = FileOutcome::kConverted;
        report.files.push_back({std::move(facts), {}, {}});
    }
    return report;
}

TEST(MigrateFilesTest, JoinsReports) {
    Report first = RunOf({"a", "c"}, 100, 10);
    first.run.shard = Shard{1, 3};
    Report second = RunOf({"b"}, 90, 5.5);
    second.run.shard = Shard{3, 3};
    second.run.source = "elsewhere";
    EXPECT_EQ(MissingSlices({first, second}), "No report of slice 2 of 3 was given\n");
    EXPECT_EQ(MissingSlices({RunOf({}, 0, 0)}), "");
    Report joined;
    std::string error;
    ASSERT_TRUE(JoinReports({first, second}, {"1", "2"}, joined, error));
    EXPECT_EQ(joined.run.source, "s, elsewhere");
    EXPECT_EQ(joined.run.target, "t");
    EXPECT_EQ(joined.run.started, 90);
    EXPECT_DOUBLE_EQ(joined.run.seconds, 20);
    EXPECT_FALSE(joined.run.shard);
    ASSERT_EQ(joined.files.size(), 3U);
    EXPECT_EQ(joined.files[1].facts.path, "b");
    EXPECT_FALSE(JoinReports({first, first}, {"1.json", "2.json"}, joined, error));
    EXPECT_EQ(error, "1.json and 2.json both tell about the file a");
}

TEST(MigrateFilesTest, JoinsNoReportsWhoseSumsAreOutOfRange) {
    Report first = RunOf({"a"}, 0, 0);
    Report second = RunOf({"b", "c"}, 0, 0);
    first.files[0].facts.listed = 9007199254740990;
    second.files[1].facts.listed = 1;
    Report joined;
    std::string error;
    EXPECT_TRUE(JoinReports({first, second}, {"1.json", "2.json"}, joined, error));
    EXPECT_EQ(TotalsOf(joined.files).commands, 9007199254740991);
    second.files[0].facts.copied = 1;
    joined = {};
    EXPECT_FALSE(JoinReports({first, second}, {"1.json", "2.json"}, joined, error));
    EXPECT_EQ(error, "2.json: the file c makes the sum of all \"commands\" too large");
    second.files[0].facts = second.files[1].facts;
    second.files[0].facts.path = "b";
    joined = {};
    EXPECT_FALSE(JoinReports({first, second}, {"1.json", "2.json"}, joined, error));
    EXPECT_EQ(error, "2.json: the file c makes the sum of all \"listed\" too large");
}

TEST(MigrateFilesTest, JoinsReportsFromBothEndsOfTheCalendar) {
    const Report first = RunOf({}, kFirstTime, 0);
    const Report second = RunOf({}, kLastTime - 1, 1);
    Report joined;
    std::string error;
    ASSERT_TRUE(JoinReports({second, first}, {"1", "2"}, joined, error));
    EXPECT_EQ(joined.run.started, kFirstTime);
    EXPECT_EQ(joined.run.seconds, static_cast<double>(kLastTime - kFirstTime));
    EXPECT_EQ(FormatSummary(joined),
              "0 files in 315569519999.0 s: 0 converted\n"
              "0 legacy commands: 0 converted; 0 warnings; 0 other commands copied\n");
    Report longName = RunOf({}, 0, 0);
    longName.run.source = std::string(std::size_t{1024} * 1024, 'x');
    EXPECT_FALSE(JoinReports({first, longName}, {"1", "2"}, joined, error));
    EXPECT_EQ(error, "the names of all sources or targets are longer than 1048576 bytes together");
}

TEST(MigrateFilesTest, SumsUp) {
    Report report = RunOf({"a", "b"}, 0, 1.23);
    report.files[0].facts.copied = 3;
    report.files[0].facts.result = ResultState::kKept;
    report.files[1].facts.outcome = FileOutcome::kPartly;
    report.files[1].facts.found = report.files[1].facts.failed = 2;
    report.files[1].facts.warnings = 1;
    EXPECT_EQ(FormatSummary(report),
              "2 files in 1.2 s: 1 converted, 1 partly, 1 of them kept from an earlier run\n"
              "2 legacy commands: 0 converted, 2 failed; 1 warning; 3 other commands copied\n");
    EXPECT_EQ(ExitStatusOf(TotalsOf(report.files)), 1);
    EXPECT_EQ(FormatFailures(report), "");
    report.files[0].facts.outcome = FileOutcome::kFailed;
    report.files[0].facts.path = "x\x1B[31m\n";
    report.files[0].facts.message = "why";
    EXPECT_EQ(FormatFailures(report), "x?[31m?: why\n");
    EXPECT_EQ(ExitStatusOf(TotalsOf(report.files)), 2);
    report.files.resize(1);
    report.files[0].facts.outcome = FileOutcome::kStopped;
    EXPECT_EQ(ExitStatusOf(TotalsOf(report.files)), 1);
    report.files[0].facts.outcome = FileOutcome::kSkipped;
    EXPECT_EQ(ExitStatusOf(TotalsOf(report.files)), 0);
    report.files[0].facts.isLinkNotFollowed = true;
    EXPECT_EQ(TotalsOf(report.files).linksNotFollowed, 1);
    EXPECT_EQ(ExitStatusOf(TotalsOf(report.files)), 1);
}

TEST(MigrateFilesTest, SumsUpWhatWasFound) {
    Report report = RunOf({"a", "b", "c", "d"}, 0, 0);
    FileFacts& first = report.files[0].facts;
    first.outcome = FileOutcome::kOverlooked;
    first.found = 6;
    first.converted = 3;
    first.failed = first.unreadable = first.overlooked = 1;
    report.files[1].facts.outcome = FileOutcome::kChanged;
    report.files[1].facts.changed = 2;
    report.files[2].facts.outcome = FileOutcome::kUnconverted;
    report.files[3].facts.outcome = FileOutcome::kNothing;
    EXPECT_EQ(
        FormatSummary(report),
        "4 files in 0.0 s: 0 converted, 1 changed, 1 unconverted, 1 with overlooked commands, "
        "1 with nothing to convert\n"
        "6 legacy commands: 3 converted, 1 failed, 1 unreadable, 1 overlooked; 0 warnings; "
        "0 other commands copied\n"
        "2 places where other text is lost or joined\n");
}

struct StatusCase {
    FileOutcome outcome;
    int status;
};

TEST(MigrateFilesTest, EachOutcomeHasItsExitStatus) {
    const StatusCase cases[] = {
        {FileOutcome::kConverted, 0},   {FileOutcome::kChanged, 0},    {FileOutcome::kPartly, 1},
        {FileOutcome::kUnconverted, 1}, {FileOutcome::kOverlooked, 1}, {FileOutcome::kStopped, 1},
        {FileOutcome::kNothing, 0},     {FileOutcome::kCopied, 0},     {FileOutcome::kSkipped, 0},
        {FileOutcome::kFailed, 2},
    };
    for (const StatusCase& c : cases) {
        SCOPED_TRACE(NameOf(c.outcome));
        Report report = RunOf({"a"}, 0, 0);
        report.files[0].facts.outcome = c.outcome;
        EXPECT_EQ(ExitStatusOf(TotalsOf(report.files)), c.status);
        EXPECT_EQ(FileOutcomeOf(NameOf(c.outcome)), c.outcome);
    }
}

TEST(MigrateFilesTest, TellsAboutResultsThatAreLeftAlone) {
    Report report = RunOf({"a", "b", "c"}, 0, 0);
    report.files[0].facts.result = ResultState::kEdited;
    EXPECT_THAT(FormatSummary(report),
                testing::HasSubstr("3 converted, 1 of them kept from an earlier run\n"
                                   "Left alone: 1 edited result\n"));
    EXPECT_EQ(ExitStatusOf(TotalsOf(report.files)), 0);
    report.files[2].facts.outcome = FileOutcome::kSkipped;
    report.files[2].facts.result = ResultState::kOrphaned;
    EXPECT_THAT(FormatSummary(report),
                testing::HasSubstr("Left alone: 1 edited result, 1 result without a source\n"));
    EXPECT_EQ(ExitStatusOf(TotalsOf(report.files)), 0);
    report.files[1].facts.result = ResultState::kEdited;
    report.files[1].facts.hasSourceChanged = true;
    EXPECT_THAT(FormatSummary(report),
                testing::HasSubstr("Left alone: 2 edited results, 1 of them with a source that has "
                                   "changed since, 1 result without a source\n"));
    EXPECT_EQ(ExitStatusOf(TotalsOf(report.files)), 1);
}

}  // namespace
}  // namespace quillet::migrate
