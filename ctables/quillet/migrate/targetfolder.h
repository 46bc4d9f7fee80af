// The folder that a migration writes into: which names it uses there, and getting it ready.
#ifndef QUILLET_MIGRATE_TARGETFOLDER_H
#define QUILLET_MIGRATE_TARGETFOLDER_H

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "migrate/shard.h"
#include "platform/folder.h"

namespace quillet::migrate {

/// The folders of the source, which nothing is written into.
struct SourceFolders {
    std::set<FileIdentity> identities;
    bool withAllBelow = true;  ///< Whatever lies below them belongs to the source, too.
};

/// True when `folder` is of the source, under whatever name and however mounted, also when it
/// came there after the source was walked. False with `error` set when that cannot be told.
[[nodiscard]] bool BelongsToSource(const Folder& folder, const SourceFolders& source,
                                   std::error_code& error);

/// A folder that the user has named and that need not exist yet.
class NamedFolder {
public:
    /// Opens it or, where there is none, the nearest one that it will lie in. `path` is resolved.
    /// When `error` is set neither can be opened.
    [[nodiscard]] static NamedFolder Find(const std::string& path, std::error_code& error);

    /// The one that exists; null after an error.
    [[nodiscard]] const Folder* Existing() const { return m_existing.get(); }
    /// True when nothing is to be made.
    [[nodiscard]] bool Exists() const { return m_existing != nullptr && m_missing.empty(); }

    /// Makes what is missing in what exists. Null with `error` set when that fails.
    [[nodiscard]] std::shared_ptr<const Folder> Make(std::error_code& error) const;

private:
    std::shared_ptr<const Folder> m_existing;
    std::vector<std::string> m_missing;  // one in the other, the innermost first
};

/// Why a folder of results cannot be used.
struct FolderProblem {
    enum class Kind {
        kLink,     ///< There is a link in its path.
        kSource,   ///< It is a folder of the source.
        kTrouble,  ///< See `error`.
    };

    std::string path;  ///< Relative.
    Kind kind = Kind::kTrouble;
    std::string message;
    std::error_code error = {};
};

/// Safe for threads once it is prepared.
class TargetFolder {
public:
    /// `root` is what `folder` is called. Nothing of what `source` holds is written into.
    TargetFolder(std::shared_ptr<const Folder> folder, std::string root,
                 const std::optional<Shard>& shard, SourceFolders source);

    [[nodiscard]] const std::string& Root() const { return m_root; }
    [[nodiscard]] const std::shared_ptr<const Folder>& RootFolder() const { return m_folder; }
    [[nodiscard]] const SourceFolders& Source() const { return m_source; }

    /// The report's name in the root with the given extension, ".json" for one, and its path as
    /// people are told.
    [[nodiscard]] std::string ReportName(std::string_view extension) const;
    [[nodiscard]] std::string ReportPath(std::string_view extension) const;
    /// What a file is called until it is whole; `purpose` keeps those apart that exist at the same
    /// time.
    [[nodiscard]] std::string TemporaryName(std::string_view purpose) const;

    /// True when a result of this path could be taken for something that a migration itself
    /// writes.
    [[nodiscard]] static bool IsReserved(std::string_view path);

    /// The folder at `relative` below the root, if it may be written into at this moment. It is
    /// looked up anew each time, over no link. Null with `problem` set when there is none.
    [[nodiscard]] std::shared_ptr<const Folder> OpenFolder(std::string_view relative,
                                                           FolderProblem& problem) const;

    /// Makes the folders for the results, which stand each after the one it lies in, and removes
    /// what a run of the same slice that was ended by force left in them. Of folders that cannot
    /// be used the topmost are told.
    [[nodiscard]] std::vector<FolderProblem> Prepare(const std::vector<std::string>& folders) const;

private:
    [[nodiscard]] bool PrepareFolder(const std::string& relative, FolderProblem& problem) const;
    void RemoveLeftOvers(const Folder& folder) const;

    std::shared_ptr<const Folder> m_folder;
    std::string m_root;
    SourceFolders m_source;
    std::string m_reportName;
    std::string m_temporaryPrefix;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_TARGETFOLDER_H
