#include "migrate/targetfolder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

#include "migrate/systemfiles.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kReportName = "quillet-report";
constexpr std::string_view kTemporaryPrefix = ".quillet-tmp-";
constexpr std::array<std::string_view, 3> kReportExtensions = {".json", ".html", ".journal"};

std::string FolderPart(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return std::string(slash == std::string_view::npos ? "" : path.substr(0, slash));
}

}  // namespace

TargetFolder::TargetFolder(std::string root, const std::optional<Shard>& shard)
    : m_root(std::move(root)), m_reportName(kReportName), m_temporaryPrefix(kTemporaryPrefix) {
    if (shard) m_reportName += "-" + LabelOf(*shard);
    // Other slices may be at work in the same folder.
    m_temporaryPrefix += (shard ? LabelOf(*shard) : "all") + "-";
}

std::string TargetFolder::ResultPath(std::string_view path) const { return JoinPath(m_root, path); }

std::string TargetFolder::ReportPath(std::string_view extension) const {
    return JoinPath(m_root, m_reportName).append(extension);
}

std::string TargetFolder::TemporaryName(std::string_view purpose) const {
    return m_temporaryPrefix + std::to_string(ProcessNumber()) + "-" + std::string(purpose);
}

bool TargetFolder::IsReserved(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    if (name.starts_with(kTemporaryPrefix)) return true;
    return path.starts_with(kReportName) && name.size() == path.size() &&
           std::any_of(kReportExtensions.begin(), kReportExtensions.end(),
                       [name](std::string_view extension) { return name.ends_with(extension); });
}

std::vector<FolderProblem> TargetFolder::Prepare(const std::vector<std::string>& folders,
                                                 const std::string& sourceRoot) {
    std::vector<FolderProblem> problems;
    RemoveLeftOvers(m_root);
    for (const std::string& folder : folders) {
        std::string message = PrepareFolder(folder, sourceRoot);
        if (!message.empty()) problems.push_back({folder, std::move(message)});
    }
    return problems;
}

std::string TargetFolder::PrepareFolder(const std::string& folder, const std::string& sourceRoot) {
    // Nothing is made below what leads into the source.
    if (m_forbidden.contains(FolderPart(folder))) {
        m_forbidden.insert(folder);
        return "the folder would lie in the source";
    }
    const std::string path = ResultPath(folder);
    std::error_code error;
    const bool isNew = std::filesystem::create_directory(path, error);
    if (error) return "the folder cannot be made: " + error.message();
    if (isNew) return {};
    if (IsInside(std::filesystem::canonical(path, error).native(), sourceRoot)) {
        m_forbidden.insert(folder);
        return "the folder leads into the source";
    }
    RemoveLeftOvers(path);
    return {};
}

void TargetFolder::RemoveLeftOvers(const std::string& folder) const {
    std::vector<std::string> names;
    std::error_code error;
    if (!ListFolder(folder, names, error)) return;
    for (const std::string& name : names) {
        if (!name.starts_with(m_temporaryPrefix)) continue;
        std::filesystem::remove(JoinPath(folder, name), error);
    }
}

bool TargetFolder::IsForbidden(std::string_view path) const {
    return m_forbidden.contains(FolderPart(path));
}

}  // namespace quillet::migrate
