#include "migrate/migration.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <stop_token>
#include <system_error>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

#include "migrate/encodings.h"
#include "migrate/exitstatus.h"
#include "migrate/filemigration.h"
#include "migrate/filetree.h"
#include "migrate/includedtexts.h"
#include "migrate/journal.h"
#include "migrate/lastrun.h"
#include "migrate/layouts.h"
#include "migrate/macrocalls.h"
#include "migrate/pattern.h"
#include "migrate/progress.h"
#include "migrate/reportdata.h"
#include "migrate/reportfiles.h"
#include "migrate/resultoptions.h"
#include "migrate/resultpublisher.h"
#include "migrate/signoffs.h"
#include "migrate/summary.h"
#include "migrate/systemfiles.h"
#include "migrate/targetfolder.h"
#include "platform/includepaths.h"
#include "platform/interruption.h"
#include "platform/process.h"
#include "platform/system.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kJournalExtension = ".journal";

// Files as large as this are begun first: one of them alone at the end would leave all other
// threads without work.
constexpr std::uint64_t kLargeFile = 8UL * 1024 * 1024;

void Say(std::string_view text) { WriteToStream(stderr, std::string(text).append("\n")); }

int Refuse(std::string_view text) {
    Say("quillet-migrate: " + Printable(text));
    return kTroubleStatus;
}

class MigrationRun {
public:
    explicit MigrationRun(const Settings& settings)
        : m_settings(settings),
          m_interruption(m_stop, kInterruptedStatus),
          m_started(std::time(nullptr)),
          m_start(std::chrono::steady_clock::now()),
          m_layoutRules(settings.layout) {
        for (const std::string& pattern : settings.batchInclude) m_layoutRules.AddBatch(pattern);
    }

    int Run() {
        std::string problem;
        if (!FindEncodings(problem) || !OpenSource(problem) || !FindTarget(problem) ||
            !OpenJunit(problem)) {
            return Refuse(problem);
        }
        FileTree tree =
            m_singleFile.empty() ? WalkTree(*m_source, m_stop.get_token()) : TreeOfSingleFile();
        if (m_stop.stop_requested()) return kInterruptedStatus;
        if (!CheckIncludes(tree, problem)) return Refuse(problem);
        FindTasks(std::move(tree));
        // Only now all folders of the source are known.
        if (!CheckAgainstSource(problem) || !MakeTarget(problem) ||
            !ReadSignOffs(*m_target->RootFolder(), m_target->Root(), m_signOffs, problem) ||
            !OpenJournal(problem)) {
            return Refuse(problem);
        }
        PrepareTarget();
        WorkOnTasks();
        return Finish();
    }

private:
    [[nodiscard]] bool FindEncodings(std::string& problem) {
        const auto find = [this, &problem](const std::string& option, const std::string& name) {
            const Encoding* pEncoding = m_encodings.Find(name);
            if (pEncoding == nullptr) {
                problem = option + ": syntax cannot be read in the encoding \"" + name +
                          "\", or the system does not know it";
            }
            return pEncoding;
        };
        if (!m_settings.encoding.empty()) {
            const Encoding* pEncoding = find("--encoding", m_settings.encoding);
            if (pEncoding == nullptr) return false;
            m_encodingRules.SetForAll(*pEncoding);
        }
        return std::all_of(m_settings.encodings.begin(), m_settings.encodings.end(),
                           [&](const auto& rule) {
                               const Encoding* pEncoding = find("--encoding-include", rule.second);
                               if (pEncoding == nullptr) return false;
                               m_encodingRules.Add(rule.first, *pEncoding);
                               return true;
                           });
    }

    // What the user names may be reached over links, which are resolved here and once. From then
    // on only the folders count that are held.
    [[nodiscard]] bool OpenSource(std::string& problem) {
        std::error_code error;
        m_sourcePath = std::filesystem::canonical(m_settings.source, error).native();
        if (!error) m_source = Folder::Open(m_sourcePath, error);
        if (error == std::errc::not_a_directory) {
            error.clear();
            m_singleFile = NamePartOf(m_sourcePath);
            m_sourcePath = FolderOf(m_sourcePath);
            m_source = Folder::Open(m_sourcePath, error);
            if (m_source != nullptr &&
                m_source->ReadStatus(m_singleFile, m_singleFileStatus, error) &&
                m_singleFileStatus.kind != FileKind::kFile) {
                problem = "SOURCE " + m_settings.source + " is neither a file nor a folder";
                return false;
            }
        }
        if (error) {
            problem = "SOURCE " + m_settings.source + ": " + error.message();
            return false;
        }
        m_sourceFolders = {{m_source->Identity()}, m_singleFile.empty()};
        return true;
    }

    // Nothing is made yet.
    [[nodiscard]] bool FindTarget(std::string& problem) {
        std::error_code error;
        m_targetPath = ResolvePath(m_settings.target, error);
        if (!error) m_namedTarget = NamedFolder::Find(m_targetPath, error);
        if (error) {
            problem = "TARGET " + m_settings.target + ": " + error.message();
            return false;
        }
        return CheckTarget(problem);
    }

    // Nothing may be written into the source.
    [[nodiscard]] bool CheckTarget(std::string& problem) const {
        std::error_code error;
        const Folder& existing = *m_namedTarget.Existing();
        if (m_namedTarget.Exists() && existing.Identity() == m_source->Identity()) {
            problem = "TARGET is the folder of SOURCE";
        } else if (m_singleFile.empty() && BelongsToSource(existing, m_sourceFolders, error)) {
            problem = "TARGET lies in SOURCE";
        } else if (error) {
            problem = "TARGET " + m_settings.target + ": " + error.message();
        } else {
            problem = OverlapProblem();
        }
        return problem.empty();
    }

    // Of a source inside the target, what lies in it under the path that leads from the target to
    // it would be written into it.
    [[nodiscard]] std::string OverlapProblem() const {
        if (!m_singleFile.empty() || !IsInside(m_sourcePath, m_targetPath)) return {};
        const std::string between =
            m_sourcePath.substr(m_targetPath == "/" ? 1 : m_targetPath.size() + 1);
        std::string obstacle;
        FileStatus status;
        std::error_code error;
        const std::shared_ptr<const Folder> folder =
            m_source->OpenBelow(FolderPartOf(between), obstacle, error);
        if (folder == nullptr || !folder->ReadStatus(NamePartOf(between), status, error)) return {};
        return "The results of " + JoinPath(m_sourcePath, between) + " would lie in SOURCE";
    }

    [[nodiscard]] bool OpenJunit(std::string& problem) {
        if (m_settings.junitPath.empty()) return true;
        return OpenJunitFile(m_settings.junitPath, m_junit.emplace(), problem) &&
               CheckJunit(problem);
    }

    [[nodiscard]] bool CheckJunit(std::string& problem) const {
        if (!m_junit) return true;
        std::error_code error;
        FileStatus status;
        std::error_code ignored;
        const bool isInSource = m_singleFile.empty()
                                    ? BelongsToSource(*m_junit->folder, m_sourceFolders, error)
                                    : m_junit->folder->ReadStatus(m_junit->name, status, ignored) &&
                                          status.identity == m_singleFileStatus.identity;
        if (isInSource) problem = "--junit " + m_settings.junitPath + " lies in SOURCE";
        if (error) problem = "--junit " + m_settings.junitPath + ": " + error.message();
        return problem.empty();
    }

    [[nodiscard]] bool CheckAgainstSource(std::string& problem) const {
        return CheckTarget(problem) && CheckJunit(problem);
    }

    [[nodiscard]] bool MakeTarget(std::string& problem) {
        std::error_code error;
        std::shared_ptr<const Folder> folder = m_namedTarget.Make(error);
        if (folder == nullptr) {
            problem = "TARGET " + m_settings.target + ": " + DescribeError(error);
            return false;
        }
        m_target = std::make_unique<TargetFolder>(std::move(folder), m_targetPath, m_settings.shard,
                                                  std::move(m_sourceFolders));
        FolderProblem folderProblem;
        if (m_target->OpenFolder({}, folderProblem) != nullptr) return true;
        problem = folderProblem.message;
        return false;
    }

    // A pattern that matches nothing is a slip, and an archive that is left out is not noticed.
    [[nodiscard]] bool CheckIncludes(const FileTree& tree, std::string& problem) const {
        const NameFilter filter(m_settings.include, {});
        std::vector<bool> areMatched(m_settings.include.size());
        for (const TreeEntry& entry : tree.entries) {
            // What cannot be read may hold anything, and will be told.
            if (entry.kind == TreeEntry::Kind::kUnreadable) return true;
            if (entry.kind == TreeEntry::Kind::kFile) filter.NoteIncluded(entry.path, areMatched);
        }
        for (std::size_t index = 0; index < areMatched.size(); ++index) {
            if (areMatched[index]) continue;
            problem += problem.empty() ? "No file of SOURCE matches " : ", ";
            problem += "--include " + m_settings.include[index];
        }
        return problem.empty();
    }

    void FindTasks(FileTree tree) {
        const NameFilter filter(m_settings.include, m_settings.exclude);
        for (TreeEntry& entry : tree.entries) {
            NoteSource(entry);
            // Only where calls are expanded it matters who calls what.
            if (m_settings.macros != MacroMode::kReport && m_singleFile.empty() &&
                entry.kind == TreeEntry::Kind::kFile && filter.Accepts(entry.path)) {
                m_macroFiles.push_back(entry.path);
            }
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
        m_sourceFolders.identities.merge(tree.identities);
    }

    // Of a single file nobody knows what lies beside it.
    [[nodiscard]] std::function<bool(std::string_view, std::string_view)> IncludeFinder() {
        if (!m_singleFile.empty()) return {};
        return [this](std::string_view path, std::string_view includingFile) {
            return FindInclude(path, includingFile).has_value();
        };
    }

    // The path below SOURCE. Beside a single file only what its INCLUDE names is looked at.
    [[nodiscard]] std::optional<std::string> FindInclude(std::string_view path,
                                                         std::string_view includingFile) {
        if (!m_singleFile.empty()) return PathBesideFile(path);
        std::call_once(m_includesFlag, [this] {
            m_includeNames.assign(m_sources.begin(), m_sources.end());
            m_includes.emplace(m_includeNames);
        });
        const std::optional<std::size_t> index = m_includes->Find(path, includingFile);
        if (!index) return std::nullopt;
        return m_includeNames[*index];
    }

    [[nodiscard]] static std::optional<std::string> PathBesideFile(std::string_view path) {
        std::string name(path);
        std::replace(name.begin(), name.end(), '\\', '/');
        const std::filesystem::path normal = std::filesystem::path(name).lexically_normal();
        name = normal.generic_string();
        if (name.empty() || normal.has_root_path() || name.starts_with("..")) return std::nullopt;
        return name;
    }

    void NoteSource(const TreeEntry& entry) {
        m_sources.insert(entry.path);
        if (entry.kind != TreeEntry::Kind::kFile) m_unknownParts.insert(entry.path);
    }

    // What lies below something that was not entered may still be there.
    [[nodiscard]] bool IsSourceGone(const std::string& path) const {
        if (!m_singleFile.empty() || m_sources.contains(path) || m_unknownParts.contains(".")) {
            return false;
        }
        for (std::size_t slash = path.find('/'); slash != std::string::npos;
             slash = path.find('/', slash + 1)) {
            if (m_unknownParts.contains(path.substr(0, slash))) return false;
        }
        return true;
    }

    [[nodiscard]] FileTree TreeOfSingleFile() const {
        FileTree tree;
        tree.entries.push_back({m_singleFile, TreeEntry::Kind::kFile, m_singleFileStatus.size, {}});
        return tree;
    }

    [[nodiscard]] bool OpenJournal(std::string& problem) {
        const std::shared_ptr<const Folder>& folder = m_target->RootFolder();
        const std::string name = m_target->ReportName(kJournalExtension);
        const std::string reportName = m_target->ReportName(".json");
        std::error_code error;
        m_journal = m_settings.dryRun ? Journal::OpenForReading(folder, name, reportName,
                                                                m_target->TemporaryName("journal"),
                                                                m_earlier, error)
                                      : Journal::Open(folder, name, reportName, m_earlier, error);
        if (m_journal != nullptr) return true;
        problem = error == std::errc::resource_unavailable_try_again
                      ? "Another run is writing to TARGET " + m_settings.target
                      : m_target->ReportPath(kJournalExtension) + ": " + DescribeError(error);
        return false;
    }

    void PrepareTarget() {
        if (m_settings.dryRun) return;
        for (FolderProblem& problem : m_target->Prepare(m_folders)) {
            if (m_settings.shard && !IsInShard(problem.path, *m_settings.shard)) continue;
            // One that could not be read is among the tasks already, and no path stands in a
            // report twice.
            if (m_sources.contains(problem.path)) continue;
            TreeEntry entry{std::move(problem.path), TreeEntry::Kind::kUnreadable, 0,
                            std::move(problem.message)};
            if (problem.kind == FolderProblem::Kind::kLink) {
                entry.kind = TreeEntry::Kind::kSkipped;
                entry.isLinkNotFollowed = true;
            }
            m_tasks.push_back({std::move(entry), true});
        }
    }

    void WorkOnTasks() {
        std::stable_partition(m_tasks.begin(), m_tasks.end(),
                              [](const FileTask& task) { return task.entry.size >= kLargeFile; });
        m_progress.allFiles = m_tasks.size();
        for (const FileTask& task : m_tasks) m_progress.allBytes += task.entry.size;
        ResultPublisher publisher(*m_journal, *m_target, m_progress);
        IncludedTexts includes(
            {*m_source, m_encodings, m_encodingRules, m_layoutRules, m_settings.endAtBlankLines},
            [this](std::string_view path, const std::string& includingFile) {
                return FindInclude(path, includingFile);
            });
        MacroCalls macroCalls;
        ForEachInParallel(m_macroFiles.size(), [&](unsigned /*worker*/, std::size_t index) {
            macroCalls.AddFile(m_macroFiles[index], includes);
        });
        const MigrationContext context = {
            *m_source,
            *m_target,
            m_earlier,
            *m_journal,
            publisher,
            m_progress,
            m_encodings,
            m_encodingRules,
            {m_settings.layout, LegacyEncodingName(), m_settings.toUtf8, m_settings.endAtBlankLines,
             m_settings.macros},
            m_layoutRules,
            includes,
            macroCalls,
            IncludeFinder(),
            m_settings.copyOthers,
            m_settings.copyOthers || !m_settings.include.empty(),
            m_settings.dryRun,
            m_settings.force,
            m_settings.acceptEdited};
        const ProgressDisplay display(m_progress, m_settings.isQuiet);
        std::vector<std::unique_ptr<FileMigration>> migrations;
        for (unsigned worker = 0; worker < WorkersFor(m_tasks.size()); ++worker) {
            migrations.push_back(std::make_unique<FileMigration>(context, worker));
        }
        ForEachInParallel(m_tasks.size(), [&](unsigned worker, std::size_t index) {
            migrations[worker]->Run(m_tasks[index]);
        });
        publisher.Flush();
        m_changedFolders = publisher.Folders();
    }

    [[nodiscard]] unsigned WorkersFor(std::size_t count) const {
        return static_cast<unsigned>(
            std::min<std::size_t>(m_settings.jobs, std::max<std::size_t>(count, 1)));
    }

    // Calls `work` with the number of a thread, from 0, and each index below `count`, until the
    // run is stopped.
    void ForEachInParallel(std::size_t count,
                           const std::function<void(unsigned, std::size_t)>& work) {
        std::atomic<std::size_t> next = 0;
        const auto workOnAll = [this, count, &work, &next](unsigned worker) {
            while (!m_stop.stop_requested()) {
                const std::size_t index = next.fetch_add(1);
                if (index >= count) break;
                work(worker, index);
            }
        };
        std::vector<std::jthread> workers;
        try {
            // This thread is one of them.
            for (unsigned worker = 1; worker < WorkersFor(count); ++worker) {
                workers.emplace_back(workOnAll, worker);
            }
        } catch (const std::system_error&) {
            // The system allows for no more; those that there are will do.
        }
        workOnAll(0);
    }

    void NoteOrphans() {
        for (const std::string& path : m_earlier.Paths()) {
            if (!IsSourceGone(path)) continue;
            if (!ResultStands(path)) continue;
            FinishedFile file;
            file.entry.facts.path = path;
            file.entry.facts.outcome = FileOutcome::kSkipped;
            file.entry.facts.result = ResultState::kOrphaned;
            file.entry.facts.message = "its result stands, but the source is gone";
            m_journal->Note(std::move(file));
        }
    }

    // Notes a result that is not there any more.
    [[nodiscard]] bool ResultStands(const std::string& path) {
        FolderProblem problem;
        FileStatus status;
        std::error_code error;
        const std::shared_ptr<const Folder> folder =
            m_target->OpenFolder(FolderPartOf(path), problem);
        if (folder == nullptr) {
            error = problem.error;
        } else if (folder->ReadStatus(NamePartOf(path), status, error)) {
            return true;
        }
        if (error == std::errc::no_such_file_or_directory) m_gone.insert(path);
        return false;
    }

    int Finish() {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
        // Nothing adds to the journal any more, but not everything may have been done.
        const bool isInterrupted = m_journal->FileCount() < m_tasks.size();
        if (!isInterrupted) NoteOrphans();
        std::vector<FinishedFile> files = m_journal->TakeFiles();
        std::sort(files.begin(), files.end(),
                  [](const FinishedFile& left, const FinishedFile& right) {
                      return left.entry.facts.path < right.entry.facts.path;
                  });
        Report report;
        for (FinishedFile& file : files) report.files.push_back(std::move(file.entry));
        report.run = {m_singleFile.empty() ? m_sourcePath : JoinPath(m_sourcePath, m_singleFile),
                      m_target->Root(),
                      std::string(NameOf(m_settings.layout)),
                      m_settings.dryRun,
                      isInterrupted,
                      m_settings.shard,
                      m_started,
                      elapsed.count()};
        if (!AssignSignOffs(std::move(m_signOffs), report) ||
            !CompareWithLastRun(*m_target, report)) {
            return Refuse(
                "What was found in the commands cannot be read again; no report was written");
        }
        int status = ExitStatusOf(TotalsOf(report.files));
        WriteToStream(stderr, FormatFailures(report));
        if (!m_settings.isQuiet) WriteToStream(stderr, FormatSummary(report));
        if (!WriteReports(report, files)) status = kTroubleStatus;
        return isInterrupted ? kInterruptedStatus : status;
    }

    [[nodiscard]] bool WriteReports(const Report& report, const std::vector<FinishedFile>& files) {
        // What a build server has of an earlier run stays until there is a whole one.
        const std::optional<JunitFile> none;
        const ReportWriting writing{report.run.isInterrupted ? none : m_junit, m_settings.jobs};
        std::vector<ArrayOffsets> offsets;
        std::string problem;
        if (!WriteReportFiles(report, *m_target, writing, offsets, problem)) {
            static_cast<void>(Refuse(problem));
            return false;
        }
        const bool isComplete = !report.run.isInterrupted && !m_settings.dryRun;
        if (isComplete) RemoveInterruptedReport(*m_target);
        bool isWhole = !isComplete || ReplaceJournal(report, files, offsets);
        if (m_journal->Error()) {
            static_cast<void>(
                Refuse("Not everything could be recorded: " + m_journal->Error().message() +
                       ". The report may lack commands; what was not recorded is "
                       "looked at again by the next run."));
            isWhole = false;
        }
        if (isWhole && !m_settings.isQuiet) {
            Say("Report: " +
                Printable(m_target->ReportPath(ReportSuffixOf(report.run).append(".html"))));
        }
        return isWhole;
    }

    // The journal as it has grown holds all that the new one does, so nothing is lost when this
    // fails.
    [[nodiscard]] bool ReplaceJournal(const Report& report, const std::vector<FinishedFile>& files,
                                      const std::vector<ArrayOffsets>& offsets) {
        std::error_code error;
        const std::unique_ptr<NewFile> file =
            NewFile::Create(m_target->RootFolder(), m_target->TemporaryName("journal"), error);
        if (file != nullptr) {
            const CompactJournal journal = {report.files, files, offsets, m_earlier, m_gone};
            if (WriteCompactJournal(journal, *file, m_changedFolders) && SyncFolders(error) &&
                file->Commit(m_target->ReportName(kJournalExtension), DefaultPermissions())) {
                return true;
            }
            if (!error) error = file->Error();
        }
        if (!error) error = std::make_error_code(std::errc::io_error);
        static_cast<void>(Refuse("The journal " + m_target->ReportPath(kJournalExtension) +
                                 " cannot be written: " + DescribeError(error)));
        return false;
    }

    // What the new journal does not know any more must not come back after a crash.
    [[nodiscard]] bool SyncFolders(std::error_code& error) const {
        for (const std::string& name : m_changedFolders) {
            FolderProblem problem;
            const std::shared_ptr<const Folder> folder = m_target->OpenFolder(name, problem);
            // What was moved away meanwhile holds no results any more.
            if (folder != nullptr && !folder->Sync(error)) return false;
        }
        return true;
    }

    const Settings& m_settings;
    std::stop_source m_stop;
    Interruption m_interruption;
    std::int64_t m_started;
    std::chrono::steady_clock::time_point m_start;
    std::string m_sourcePath;  // resolved; the folder of a single file
    std::shared_ptr<const Folder> m_source;
    std::string m_singleFile;  // its name; empty for a folder
    FileStatus m_singleFileStatus;
    SourceFolders m_sourceFolders;  // until the target has them
    std::string m_targetPath;       // resolved
    NamedFolder m_namedTarget;
    std::unique_ptr<TargetFolder> m_target;
    std::optional<JunitFile> m_junit;
    std::vector<FileTask> m_tasks;
    std::vector<std::string> m_macroFiles;  // those of all slices that may call macros of others
    std::vector<std::string> m_folders;
    std::unordered_set<std::string> m_sources;       // everything that the walk has met
    std::unordered_set<std::string> m_unknownParts;  // what of it was not entered
    SignOffs m_signOffs;
    EarlierResults m_earlier;
    std::unique_ptr<Journal> m_journal;
    ProgressCounters m_progress;
    Encodings m_encodings;
    EncodingRules m_encodingRules;
    LayoutRules m_layoutRules;
    std::once_flag m_includesFlag;
    std::vector<std::string> m_includeNames;
    std::optional<IncludePaths> m_includes;  // made when it is asked for
    std::set<std::string> m_changedFolders;  // below TARGET, those in which results were renamed
    std::unordered_set<std::string> m_gone;  // results that are recorded, but are no more
};

}  // namespace

int RunMigration(const Settings& settings) { return MigrationRun(settings).Run(); }

}  // namespace quillet::migrate
