// Folders that are held open, so that nothing that is done in them can be led elsewhere.
//
// A path is looked up anew whenever it is used, and whoever may write to one of its folders can
// put a link there in between. What is held open stays what it was. There is no Windows side yet;
// it is to refuse reparse points where this one refuses links.
#ifndef QUILLET_PLATFORM_FOLDER_H
#define QUILLET_PLATFORM_FOLDER_H

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/textfile.h"

namespace quillet {

enum class FileKind { kFile, kFolder, kLink, kOther };

/// Two names that have it in common are names of one file or folder, however they are written
/// and wherever they are mounted.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
    friend bool operator<(const FileIdentity& left, const FileIdentity& right) {
        return left.device != right.device ? left.device < right.device : left.inode < right.inode;
    }
};

struct FileStatus {
    FileKind kind = FileKind::kOther;
    FileIdentity identity;
    std::uint64_t names = 1;  ///< How many names it has in all folders.
    std::uint64_t size = 0;
    std::int64_t modified = 0;     ///< Seconds since 1970,
    long modifiedNanoseconds = 0;  ///< and what is beyond them.
    unsigned permissions = 0;      ///< Those of owner, group and others.
};

/// False with `error` set when nothing is known about an open file.
[[nodiscard]] bool ReadStatusOf(const FileDescriptor& file, FileStatus& status,
                                std::error_code& error);

/// Waits until the content of `file` is on its medium. True also where the file system knows no
/// such thing.
[[nodiscard]] bool SyncContent(const FileDescriptor& file, std::error_code& error);

/// Has the system begin to bring what was written to the medium, where it can. To wait for one
/// file after the other takes much less time when all are on their way.
void BeginSync(const FileDescriptor& file);

enum class FileAccess {
    kRead,    ///< A pipe is not waited for.
    kCreate,  ///< A file that there was not, for its owner alone, to be written.
    /// Made where there is none; every write goes to its end. A file that is mounted there and
    /// lies elsewhere is refused with `std::errc::device_or_resource_busy`.
    kAppend,
};

/// A folder that is held open. Constant and safe for threads.
///
/// A `name` is one of those in the folder itself: without "/", and neither "." nor "..", for
/// which `error` becomes `std::errc::invalid_argument`. No call follows a link: where one is met
/// it fails, and `error` is `std::errc::too_many_symbolic_link_levels`.
class Folder final : public std::enable_shared_from_this<Folder> {
public:
    /// Opens the folder that someone has named, over links if need be. Null with `error` set when
    /// that fails.
    [[nodiscard]] static std::shared_ptr<const Folder> Open(const std::string& path,
                                                            std::error_code& error);

    [[nodiscard]] FileIdentity Identity() const { return m_identity; }

    /// A folder in this one. Null with `error` set when that fails.
    [[nodiscard]] std::shared_ptr<const Folder> OpenFolder(const std::string& name,
                                                           std::error_code& error) const;
    /// The folder that this one lies in; the topmost lies in itself.
    [[nodiscard]] std::shared_ptr<const Folder> OpenParent(std::error_code& error) const;
    /// A folder below this one, entered name by name. `relative` has names with "/" between them;
    /// for an empty one the result is this folder. When that fails, the result is
    /// null, `error` is set and `obstacle` is the beginning of `relative` that cannot be entered.
    [[nodiscard]] std::shared_ptr<const Folder> OpenBelow(std::string_view relative,
                                                          std::string& obstacle,
                                                          std::error_code& error) const;

    /// Opens a file in this folder; not open, with `error` set, when that fails. What it opens for
    /// reading or appending need not be a regular file.
    [[nodiscard]] FileDescriptor OpenFile(const std::string& name, FileAccess access,
                                          std::error_code& error) const;
    /// Of a link itself, not of what it leads to.
    [[nodiscard]] bool ReadStatus(const std::string& name, FileStatus& status,
                                  std::error_code& error) const;
    /// What a link in this folder says.
    [[nodiscard]] bool ReadLink(const std::string& name, std::string& text,
                                std::error_code& error) const;
    /// The names in it, sorted by their bytes.
    [[nodiscard]] bool List(std::vector<std::string>& names, std::error_code& error) const;

    /// False with `std::errc::file_exists` when the name is taken.
    [[nodiscard]] bool MakeFolder(const std::string& name, std::error_code& error) const;
    /// Gives a file of this folder another name in it, in place of what had that name.
    [[nodiscard]] bool Rename(const std::string& from, const std::string& to,
                              std::error_code& error) const;
    /// Waits until the names in it are on its medium. True also where that cannot be asked for.
    [[nodiscard]] bool Sync(std::error_code& error) const;
    /// Removes a file or a link, no folder.
    [[nodiscard]] bool Remove(const std::string& name, std::error_code& error) const;

    /// True when this is one of `folders`, or now lies, at any depth, in one of them. False with
    /// `error` set when that cannot be told. A folder above that may not be searched ends the
    /// look upward.
    [[nodiscard]] bool IsWithin(const std::set<FileIdentity>& folders,
                                std::error_code& error) const;

private:
    Folder(FileDescriptor folder, FileIdentity identity)
        : m_folder(std::move(folder)), m_identity(identity) {}

    [[nodiscard]] static std::shared_ptr<const Folder> Hold(FileDescriptor folder,
                                                            std::error_code& error);

    FileDescriptor m_folder;
    FileIdentity m_identity;
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_FOLDER_H
