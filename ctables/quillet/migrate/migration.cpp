#include "migrate/migration.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "migrate/filemigration.h"
#include "migrate/filetree.h"
#include "migrate/interruption.h"
#include "migrate/journal.h"
#include "migrate/pattern.h"
#include "migrate/progress.h"
#include "migrate/reportdata.h"
#include "migrate/reportfiles.h"
#include "migrate/summary.h"
#include "migrate/systemfiles.h"
#include "migrate/targetfolder.h"
#include "platform/system.h"

namespace quillet::migrate {

namespace {

constexpr int kTrouble = 2;
constexpr std::string_view kJournalExtension = ".journal";

// Files as large as this are begun first: one of them alone at the end would leave all other
// threads without work.
constexpr std::uint64_t kLargeFile = 8UL * 1024 * 1024;

void Say(std::string_view text) { WriteToStream(stderr, std::string(text).append("\n")); }

int Refuse(std::string_view text) {
    Say("quillet-migrate: " + Printable(text));
    return kTrouble;
}

class MigrationRun {
public:
    explicit MigrationRun(const Settings& settings)
        : m_settings(settings),
          m_interruption(m_stop),
          m_started(std::time(nullptr)),
          m_start(std::chrono::steady_clock::now()) {}

    int Run() {
        std::string problem;
        if (!ResolveSource(problem) || !ResolveTarget(problem) || !CheckJunitPath(problem)) {
            return Refuse(problem);
        }
        FindTasks();
        if (m_stop.stop_requested()) return kInterruptedStatus;
        if (!OpenJournal(problem)) return Refuse(problem);
        PrepareTarget();
        WorkOnTasks();
        return Finish();
    }

private:
    [[nodiscard]] bool ResolveSource(std::string& problem) {
        std::error_code error;
        m_sourceRoot = std::filesystem::canonical(m_settings.source, error).native();
        FileStatus status;
        if (error || !ReadStatus(m_sourceRoot, Links::kFollow, status, error)) {
            problem = "SOURCE " + m_settings.source + ": " + error.message();
            return false;
        }
        if (status.kind == FileKind::kFile) {
            m_singleFile = m_sourceRoot.substr(m_sourceRoot.rfind('/') + 1);
            m_singleFileSize = status.size;
            m_sourceRoot = FolderOf(m_sourceRoot);
        } else if (status.kind != FileKind::kFolder) {
            problem = "SOURCE " + m_settings.source + " is neither a file nor a folder";
            return false;
        }
        return true;
    }

    [[nodiscard]] bool ResolveTarget(std::string& problem) {
        std::error_code error;
        const std::string root = ResolvePath(m_settings.target, error);
        if (error) {
            problem = "TARGET " + m_settings.target + ": " + error.message();
            return false;
        }
        problem = OverlapProblem(root);
        if (!problem.empty()) return false;
        std::filesystem::create_directories(root, error);
        FileStatus status;
        std::error_code statusError;
        if (!ReadStatus(root, Links::kFollow, status, statusError) ||
            status.kind != FileKind::kFolder) {
            if (!error) error = std::make_error_code(std::errc::not_a_directory);
            problem = "TARGET " + m_settings.target + ": " + error.message();
            return false;
        }
        m_target = std::make_unique<TargetFolder>(root, m_settings.shard);
        return true;
    }

    // Nothing may be written into the source.
    [[nodiscard]] std::string OverlapProblem(const std::string& target) const {
        if (target == m_sourceRoot) return "TARGET is the folder of SOURCE";
        const bool isFolder = m_singleFile.empty();
        if (isFolder && IsInside(target, m_sourceRoot)) return "TARGET lies in SOURCE";
        if (!IsInside(m_sourceRoot, target)) return {};
        // What lies at this path in the source would be written into the source.
        const std::string between = m_sourceRoot.substr(target == "/" ? 1 : target.size() + 1);
        FileStatus status;
        std::error_code error;
        const std::string overlap = JoinPath(m_sourceRoot, between);
        if (isFolder && ReadStatus(overlap, Links::kShow, status, error)) {
            return "The results of " + overlap + " would lie in SOURCE";
        }
        return {};
    }

    [[nodiscard]] bool CheckJunitPath(std::string& problem) {
        if (m_settings.junitPath.empty()) return true;
        std::error_code error;
        m_junitPath = ResolvePath(m_settings.junitPath, error);
        FileStatus folder;
        FileStatus file;
        std::error_code ignored;
        if (error || !ReadStatus(FolderOf(m_junitPath), Links::kFollow, folder, error)) {
            problem = "--junit " + m_settings.junitPath + ": " + error.message();
        } else if (ReadStatus(m_junitPath, Links::kFollow, file, ignored) &&
                   file.kind != FileKind::kFile) {
            problem = "--junit " + m_settings.junitPath + " is not a regular file";
        } else if (m_singleFile.empty() ? IsInside(m_junitPath, m_sourceRoot)
                                        : m_junitPath == JoinPath(m_sourceRoot, m_singleFile)) {
            problem = "--junit " + m_settings.junitPath + " lies in SOURCE";
        }
        return problem.empty();
    }

    void FindTasks() {
        FileTree tree =
            m_singleFile.empty() ? WalkTree(m_sourceRoot, m_stop.get_token()) : TreeOfSingleFile();
        const NameFilter filter(m_settings.include, m_settings.exclude);
        for (TreeEntry& entry : tree.entries) {
            if (m_settings.shard && !IsInShard(entry.path, *m_settings.shard)) continue;
            // A folder that cannot be read may hold anything.
            const bool isWanted =
                entry.kind == TreeEntry::Kind::kUnreadable || filter.Accepts(entry.path);
            if (!isWanted && !m_settings.copyOthers) continue;
            if (entry.kind == TreeEntry::Kind::kFile && TargetFolder::IsReserved(entry.path)) {
                entry.kind = TreeEntry::Kind::kSkipped;
                entry.message = "its name is one that quillet-migrate uses itself";
            }
            m_tasks.push_back({std::move(entry), isWanted});
        }
        m_folders = std::move(tree.folders);
    }

    [[nodiscard]] FileTree TreeOfSingleFile() const {
        FileTree tree;
        tree.entries.push_back({m_singleFile, TreeEntry::Kind::kFile, m_singleFileSize, {}});
        return tree;
    }

    [[nodiscard]] bool OpenJournal(std::string& problem) {
        m_earlier.AddReport(m_target->ReportPath(".json"));
        std::error_code error;
        m_journal = Journal::Open(m_target->ReportPath(kJournalExtension), m_earlier, error);
        if (m_journal != nullptr) return true;
        problem = error == std::errc::resource_unavailable_try_again
                      ? "Another run is writing to TARGET " + m_settings.target
                      : m_target->ReportPath(kJournalExtension) + ": " + error.message();
        return false;
    }

    void PrepareTarget() {
        if (m_settings.dryRun) return;
        for (FolderProblem& problem : m_target->Prepare(m_folders, m_sourceRoot)) {
            if (m_settings.shard && !IsInShard(problem.path, *m_settings.shard)) continue;
            m_tasks.push_back({{std::move(problem.path), TreeEntry::Kind::kUnreadable, 0,
                                std::move(problem.message)},
                               true});
        }
    }

    void WorkOnTasks() {
        std::stable_partition(m_tasks.begin(), m_tasks.end(),
                              [](const FileTask& task) { return task.entry.size >= kLargeFile; });
        m_progress.allFiles = m_tasks.size();
        for (const FileTask& task : m_tasks) m_progress.allBytes += task.entry.size;
        const MigrationContext context = {
            m_sourceRoot,         *m_target,         m_earlier,
            *m_journal,           m_progress,        m_settings.copyOthers,
            m_settings.batchMode, m_settings.dryRun, m_settings.force};
        const ProgressDisplay display(m_progress, m_settings.isQuiet);
        const auto count = static_cast<unsigned>(
            std::min<std::size_t>(m_settings.jobs, std::max<std::size_t>(m_tasks.size(), 1)));
        std::atomic<std::size_t> next = 0;
        const auto work = [this, &context, &next](unsigned worker) {
            FileMigration migration(context, worker);
            while (!m_stop.stop_requested()) {
                const std::size_t task = next.fetch_add(1);
                if (task >= m_tasks.size()) break;
                migration.Run(m_tasks[task]);
            }
        };
        std::vector<std::jthread> workers;
        try {
            // This thread is one of them.
            for (unsigned worker = 1; worker < count; ++worker) workers.emplace_back(work, worker);
        } catch (const std::system_error&) {
            // The system allows for no more; those that there are will do.
        }
        work(0);
    }

    int Finish() {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
        Report report;
        report.files = m_journal->TakeEntries();
        SortByPath(report.files);
        report.run = {m_singleFile.empty() ? m_sourceRoot : JoinPath(m_sourceRoot, m_singleFile),
                      m_target->Root(),
                      m_settings.batchMode,
                      m_settings.dryRun,
                      report.files.size() < m_tasks.size(),
                      m_settings.shard,
                      m_started,
                      elapsed.count()};
        int status = ExitStatusOf(TotalsOf(report.files));
        WriteToStream(stderr, FormatFailures(report));
        if (!m_settings.isQuiet) WriteToStream(stderr, FormatSummary(report));
        if (!WriteReports(report)) status = kTrouble;
        return report.run.isInterrupted ? kInterruptedStatus : status;
    }

    // The journal stays when the report is not all that it could be: it holds what was done.
    [[nodiscard]] bool WriteReports(const Report& report) {
        std::string problem;
        if (!WriteReportFiles(report, *m_target, m_junitPath, m_settings.jobs, problem)) {
            static_cast<void>(Refuse(problem));
            return false;
        }
        m_journal->Remove();
        if (m_journal->Error()) {
            static_cast<void>(
                Refuse("The report lacks commands that could not be noted while they were dealt "
                       "with: " +
                       m_journal->Error().message()));
            return false;
        }
        if (!m_settings.isQuiet) Say("Report: " + Printable(m_target->ReportPath(".html")));
        return true;
    }

    const Settings& m_settings;
    std::stop_source m_stop;
    Interruption m_interruption;
    std::int64_t m_started;
    std::chrono::steady_clock::time_point m_start;
    std::string m_sourceRoot;  // resolved; the folder of a single file
    std::string m_singleFile;  // its name; empty for a folder
    std::uint64_t m_singleFileSize = 0;
    std::unique_ptr<TargetFolder> m_target;
    std::string m_junitPath;
    std::vector<FileTask> m_tasks;
    std::vector<std::string> m_folders;
    EarlierFacts m_earlier;
    std::unique_ptr<Journal> m_journal;
    ProgressCounters m_progress;
};

}  // namespace

int RunMigration(const Settings& settings) { return MigrationRun(settings).Run(); }

}  // namespace quillet::migrate
