#include "migrate/targetfolder.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include "migrate/signoffs.h"
#include "migrate/systemfiles.h"
#include "platform/process.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kReportName = "quillet-report";
constexpr std::string_view kTemporaryPrefix = ".quillet-tmp-";
constexpr std::array<std::string_view, 4> kReportExtensions = {".json", ".html", ".csv",
                                                               ".journal"};

FolderProblem ProblemOf(std::string_view relative, const std::string& obstacle,
                        const std::error_code& error) {
    FolderProblem problem{std::string(relative), FolderProblem::Kind::kTrouble, error.message(),
                          error};
    if (error == std::errc::too_many_symbolic_link_levels) {
        problem.kind = FolderProblem::Kind::kLink;
        problem.message = "the folder " + obstacle + " of TARGET is a link, which is not followed";
    }
    return problem;
}

}  // namespace

bool BelongsToSource(const Folder& folder, const SourceFolders& source, std::error_code& error) {
    return source.withAllBelow ? folder.IsWithin(source.identities, error)
                               : source.identities.contains(folder.Identity());
}

NamedFolder NamedFolder::Find(const std::string& path, std::error_code& error) {
    NamedFolder result;
    std::string existing = path;
    for (;;) {
        error.clear();
        result.m_existing = Folder::Open(existing, error);
        if (error != std::errc::no_such_file_or_directory || existing == "/") return result;
        result.m_missing.push_back(NamePartOf(existing));
        existing = FolderOf(existing);
    }
}

std::shared_ptr<const Folder> NamedFolder::Make(std::error_code& error) const {
    std::shared_ptr<const Folder> folder = m_existing;
    for (auto name = m_missing.rbegin(); folder != nullptr && name != m_missing.rend(); ++name) {
        // Another run may make them at the same time.
        std::error_code makeError;
        const bool isMade = folder->MakeFolder(*name, makeError);
        if (!isMade && makeError != std::errc::file_exists) {
            error = makeError;
            return nullptr;
        }
        folder = folder->OpenFolder(*name, error);
    }
    return folder;
}

TargetFolder::TargetFolder(std::shared_ptr<const Folder> folder, std::string root,
                           const std::optional<Shard>& shard, SourceFolders source)
    : m_folder(std::move(folder)),
      m_root(std::move(root)),
      m_source(std::move(source)),
      m_reportName(kReportName),
      m_temporaryPrefix(kTemporaryPrefix) {
    if (shard) m_reportName += "-" + LabelOf(*shard);
    // Other slices may be at work in the same folder.
    m_temporaryPrefix += (shard ? LabelOf(*shard) : "all") + "-";
}

std::string TargetFolder::ReportName(std::string_view extension) const {
    return m_reportName + std::string(extension);
}

std::string TargetFolder::ReportPath(std::string_view extension) const {
    return JoinPath(m_root, ReportName(extension));
}

std::string TargetFolder::TemporaryName(std::string_view purpose) const {
    return m_temporaryPrefix + std::to_string(ProcessNumber()) + "-" + std::string(purpose);
}

bool TargetFolder::IsReserved(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    if (name.starts_with(kTemporaryPrefix) || path == kSignOffName) return true;
    return path.starts_with(kReportName) && name.size() == path.size() &&
           std::any_of(kReportExtensions.begin(), kReportExtensions.end(),
                       [name](std::string_view extension) { return name.ends_with(extension); });
}

std::shared_ptr<const Folder> TargetFolder::OpenFolder(std::string_view relative,
                                                       FolderProblem& problem) const {
    std::string obstacle;
    std::error_code error;
    std::shared_ptr<const Folder> folder = m_folder->OpenBelow(relative, obstacle, error);
    if (folder == nullptr) {
        problem = ProblemOf(relative, obstacle, error);
        return nullptr;
    }
    if (BelongsToSource(*folder, m_source, error)) {
        problem = {std::string(relative), FolderProblem::Kind::kSource,
                   relative.empty() ? "TARGET lies in SOURCE"
                                    : "the folder " + std::string(relative) +
                                          " of TARGET is a folder of SOURCE"};
        return nullptr;
    }
    if (error) {
        problem = ProblemOf(relative, obstacle, error);
        return nullptr;
    }
    return folder;
}

std::vector<FolderProblem> TargetFolder::Prepare(const std::vector<std::string>& folders) const {
    std::vector<FolderProblem> problems;
    std::unordered_set<std::string> unusable;
    FolderProblem problem;
    if (const auto root = OpenFolder({}, problem)) RemoveLeftOvers(*root);
    for (const std::string& folder : folders) {
        if (unusable.contains(std::string(FolderPartOf(folder)))) {
            unusable.insert(folder);
        } else if (!PrepareFolder(folder, problem)) {
            unusable.insert(folder);
            problem.path = folder;
            problems.push_back(std::move(problem));
        }
    }
    return problems;
}

bool TargetFolder::PrepareFolder(const std::string& relative, FolderProblem& problem) const {
    const std::shared_ptr<const Folder> parent = OpenFolder(FolderPartOf(relative), problem);
    std::error_code error;
    if (parent == nullptr) {
        if (problem.kind == FolderProblem::Kind::kTrouble) {
            problem.message = "the folder cannot be made: " + problem.message;
        }
        return false;
    }
    if (parent->MakeFolder(NamePartOf(relative), error)) return true;
    if (error == std::errc::file_exists) {
        const std::shared_ptr<const Folder> folder = OpenFolder(relative, problem);
        if (folder != nullptr) {
            RemoveLeftOvers(*folder);
            return true;
        }
        if (problem.kind != FolderProblem::Kind::kTrouble) return false;
        // A file has its name.
        if (problem.error != std::errc::not_a_directory) error = problem.error;
    }
    problem = {relative, FolderProblem::Kind::kTrouble,
               "the folder cannot be made: " + error.message(), error};
    return false;
}

void TargetFolder::RemoveLeftOvers(const Folder& folder) const {
    std::vector<std::string> names;
    std::error_code error;
    static_cast<void>(folder.List(names, error));
    for (const std::string& name : names) {
        FileStatus status;
        if (name.starts_with(m_temporaryPrefix) && folder.ReadStatus(name, status, error) &&
            status.kind == FileKind::kFile) {
            static_cast<void>(folder.Remove(name, error));
        }
    }
}

}  // namespace quillet::migrate
