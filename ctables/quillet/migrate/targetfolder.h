// The folder that a migration writes into: which names it uses there, and getting it ready.
#ifndef QUILLET_MIGRATE_TARGETFOLDER_H
#define QUILLET_MIGRATE_TARGETFOLDER_H

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "migrate/shard.h"

namespace quillet::migrate {

/// A folder of results that could not be made.
struct FolderProblem {
    std::string path;
    std::string message;
};

class TargetFolder {
public:
    /// `root` is resolved.
    TargetFolder(std::string root, const std::optional<Shard>& shard);

    [[nodiscard]] const std::string& Root() const { return m_root; }

    /// Where the result of a file goes.
    [[nodiscard]] std::string ResultPath(std::string_view path) const;
    /// The report's path with the given extension, ".json" for one.
    [[nodiscard]] std::string ReportPath(std::string_view extension) const;
    /// What a file is called until it is whole; `purpose` keeps those apart that exist at the same
    /// time.
    [[nodiscard]] std::string TemporaryName(std::string_view purpose) const;

    /// True when a result of this path could be taken for something that a migration itself
    /// writes.
    [[nodiscard]] static bool IsReserved(std::string_view path);

    /// Makes the folders for the results and removes what a run of the same slice that was ended
    /// by force left in them. Folders that lead, over a link, into `sourceRoot` are not used.
    [[nodiscard]] std::vector<FolderProblem> Prepare(const std::vector<std::string>& folders,
                                                     const std::string& sourceRoot);

    /// True when the result of `path` must not be written.
    [[nodiscard]] bool IsForbidden(std::string_view path) const;

private:
    [[nodiscard]] std::string PrepareFolder(const std::string& folder,
                                            const std::string& sourceRoot);
    void RemoveLeftOvers(const std::string& folder) const;

    std::string m_root;
    std::string m_reportName;
    std::string m_temporaryPrefix;
    std::unordered_set<std::string> m_forbidden;  // folders
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_TARGETFOLDER_H
