#include "migrate/mergereports.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "migrate/exitstatus.h"
#include "migrate/lastrun.h"
#include "migrate/reportfiles.h"
#include "migrate/reportmembers.h"
#include "migrate/reportreader.h"
#include "migrate/signoffs.h"
#include "migrate/summary.h"
#include "migrate/systemfiles.h"
#include "migrate/targetfolder.h"
#include "platform/system.h"

namespace quillet::migrate {

namespace {

constexpr unsigned kThreads = 2;

void Tell(std::string_view text) {
    WriteToStream(stderr, "quillet-migrate: " + Printable(text) + "\n");
}

void TellAbout(const std::string& name, const std::string& problem) { Tell(name + ": " + problem); }

double EndOf(const RunFacts& run) { return static_cast<double>(run.started) + run.seconds; }

// Runs on several machines may know one folder by several names.
void AddName(const std::string& name, std::vector<std::string>& names) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

std::string Join(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text.append(text.empty() ? "" : ", ").append(name);
    return text;
}

RunFacts JoinRuns(const std::vector<Report>& reports) {
    RunFacts joined = reports.front().run;
    std::vector<std::string> sources;
    std::vector<std::string> targets;
    double end = EndOf(joined);
    for (const Report& report : reports) {
        const RunFacts& run = report.run;
        AddName(run.source, sources);
        AddName(run.target, targets);
        if (run.layout != joined.layout) joined.layout = "mixed";
        joined.dryRun = joined.dryRun || run.dryRun;
        joined.isInterrupted = joined.isInterrupted || run.isInterrupted;
        joined.started = std::min(joined.started, run.started);
        end = std::max(end, EndOf(run));
    }
    joined.source = Join(sources);
    joined.target = Join(targets);
    joined.shard.reset();
    joined.seconds = end - static_cast<double>(joined.started);
    return joined;
}

// The reports' own files, which hold the commands, are kept open beside them.
struct OpenReports {
    std::vector<std::unique_ptr<StoredFile>> files;
    std::vector<Report> reports;
};

bool ReadReports(const std::vector<std::string>& names, OpenReports& open) {
    for (const std::string& name : names) {
        std::error_code error;
        std::unique_ptr<StoredFile> file = StoredFile::Open(name, error);
        if (file == nullptr) {
            TellAbout(name, error.message());
            return false;
        }
        Report report;
        std::string problem;
        if (!ReadJsonReport(*file, report, problem)) {
            TellAbout(name, problem);
            return false;
        }
        open.files.push_back(std::move(file));
        open.reports.push_back(std::move(report));
    }
    return true;
}

// Null when there is no such folder and none can be made.
std::unique_ptr<TargetFolder> PrepareFolder(const std::string& name) {
    std::error_code error;
    std::string root = ResolvePath(name, error);
    std::shared_ptr<const Folder> folder;
    if (!error) folder = NamedFolder::Find(root, error).Make(error);
    if (folder != nullptr) {
        return std::make_unique<TargetFolder>(std::move(folder), std::move(root), std::nullopt,
                                              SourceFolders());
    }
    Tell("TARGET " + name + ": " + error.message());
    return nullptr;
}

}  // namespace

bool JoinReports(std::vector<Report> reports, const std::vector<std::string>& names, Report& joined,
                 std::string& error) {
    joined.run = JoinRuns(reports);
    if (joined.run.source.size() > kMostNameBytes || joined.run.target.size() > kMostNameBytes) {
        error = "the names of all sources or targets are longer than " +
                std::to_string(kMostNameBytes) + " bytes together";
        return false;
    }
    FileSums sums;
    std::unordered_map<std::string, std::size_t> owners;
    for (std::size_t index = 0; index < reports.size(); ++index) {
        for (FileEntry& file : reports[index].files) {
            const auto [owner, isNew] = owners.emplace(file.facts.path, index);
            if (!isNew) {
                error = names[owner->second] + " and " + names[index] +
                        " both tell about the file " + file.facts.path;
                return false;
            }
            if (const std::optional<std::string_view> member = sums.Add(file.facts)) {
                error = names[index] + ": the file " + file.facts.path +
                        " makes the sum of all \"" + std::string(*member) + "\" too large";
                return false;
            }
            joined.files.push_back(std::move(file));
        }
    }
    SortByPath(joined.files);
    return true;
}

std::string MissingSlices(const std::vector<Report>& reports) {
    std::map<std::uint32_t, std::set<std::uint32_t>> slices;
    for (const Report& report : reports) {
        if (report.run.shard) slices[report.run.shard->count].insert(report.run.shard->index);
    }
    constexpr std::size_t kMostShown = 10;
    std::string text;
    for (const auto& [count, indices] : slices) {
        std::size_t shown = 0;
        for (std::uint32_t index = 1; index <= count && shown < kMostShown; ++index) {
            if (indices.contains(index)) continue;
            ++shown;
            text += "No report of slice " + std::to_string(index) + " of " + std::to_string(count) +
                    " was given\n";
        }
    }
    return text;
}

int MergeReports(const Settings& settings) {
    OpenReports open;
    if (!ReadReports(settings.reports, open)) return kTroubleStatus;
    const std::string missing = MissingSlices(open.reports);
    Report report;
    std::string problem;
    if (!JoinReports(std::move(open.reports), settings.reports, report, problem)) {
        Tell(problem);
        return kTroubleStatus;
    }
    std::optional<JunitFile> junit;
    if (!settings.junitPath.empty() &&
        !OpenJunitFile(settings.junitPath, junit.emplace(), problem)) {
        Tell(problem);
        return kTroubleStatus;
    }
    const std::unique_ptr<TargetFolder> target = PrepareFolder(settings.target);
    if (target == nullptr) return kTroubleStatus;
    SignOffs signOffs;
    if (!ReadSignOffs(*target->RootFolder(), target->Root(), signOffs, problem)) {
        Tell(problem);
        return kTroubleStatus;
    }
    if (!AssignSignOffs(std::move(signOffs), report) || !CompareWithLastRun(*target, report)) {
        Tell("The commands of the reports cannot be read again");
        return kTroubleStatus;
    }
    std::vector<ArrayOffsets> ignored;
    if (!WriteReportFiles(report, *target, {junit, kThreads}, ignored, problem)) {
        Tell(problem);
        return kTroubleStatus;
    }
    WriteToStream(stderr, missing);
    if (!settings.isQuiet) WriteToStream(stderr, FormatSummary(report));
    return ExitStatusOf(TotalsOf(report.files));
}

}  // namespace quillet::migrate
