// Every call here takes a descriptor and one name, and says that links are not to be followed.
// That is what makes a folder that is held safe from whoever moves its name or puts a link in its
// place: only what the name meant when it was looked up, by us and once, is ever used.
#include "platform/folder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace quillet {

namespace {

// A folder that may be searched but not read can still be gone through.
#if defined(O_PATH)
constexpr int kSearchOnly = O_PATH;
#elif defined(O_SEARCH)
constexpr int kSearchOnly = O_SEARCH;
#else
constexpr int kSearchOnly = O_RDONLY;
#endif

constexpr int kFolderFlags = kSearchOnly | O_DIRECTORY;
constexpr mode_t kPermissionBits = 0777;

std::error_code ErrorOf(int number) { return {number, std::generic_category()}; }

bool Succeeded(int result, std::error_code& error) {
    if (result != 0) error = ErrorOf(errno);
    return result == 0;
}

// The caller closes it; -1 with `error` set when that fails.
int OpenDescriptorAt(int folder, const char* pName, int flags, mode_t mode,
                     std::error_code& error) {
    int descriptor = -1;
    do {
        descriptor = openat(folder, pName, flags | O_CLOEXEC | O_NOCTTY, mode);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) error = ErrorOf(errno);
    return descriptor;
}

FileDescriptor OpenAt(int folder, const char* pName, int flags, std::error_code& error,
                      mode_t mode = 0) {
    return FileDescriptor(OpenDescriptorAt(folder, pName, flags, mode, error));
}

FileKind KindOf(mode_t mode) {
    if (S_ISREG(mode)) return FileKind::kFile;
    if (S_ISDIR(mode)) return FileKind::kFolder;
    return S_ISLNK(mode) ? FileKind::kLink : FileKind::kOther;
}

FileIdentity IdentityOf(const struct stat& status) { return {status.st_dev, status.st_ino}; }

FileStatus StatusOf(const struct stat& status) {
    FileStatus result;
    result.kind = KindOf(status.st_mode);
    result.identity = IdentityOf(status);
    result.names = status.st_nlink;
    result.size = static_cast<std::uint64_t>(status.st_size);
    result.modified = status.st_mtim.tv_sec;
    result.modifiedNanoseconds = status.st_mtim.tv_nsec;
    result.permissions = status.st_mode & kPermissionBits;
    return result;
}

bool IsName(std::string_view name, std::error_code& error) {
    const bool isName = !name.empty() && name != "." && name != ".." &&
                        name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
    if (!isName) error = ErrorOf(EINVAL);
    return isName;
}

// Opens the folder `name` of another one.
FileDescriptor EnterFolder(int folder, const std::string& name, std::error_code& error) {
    if (!IsName(name, error)) return FileDescriptor();
    FileDescriptor entered = OpenAt(folder, name.c_str(), kFolderFlags | O_NOFOLLOW, error);
    struct stat status {};
    // Some systems say of a link just that it is no folder.
    if (!entered.IsOpen() && error == std::errc::not_a_directory &&
        fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISLNK(status.st_mode)) {
        error = ErrorOf(ELOOP);
    }
    return entered;
}

// True when a file is mounted over a name of `folder`, so that it lies elsewhere. False also where
// the system does not tell.
bool IsMounted([[maybe_unused]] int folder, [[maybe_unused]] int file) {
#ifdef STATX_MNT_ID
    struct statx folderStatus {};
    struct statx fileStatus {};
    return statx(folder, "", AT_EMPTY_PATH, STATX_MNT_ID, &folderStatus) == 0 &&
           statx(file, "", AT_EMPTY_PATH, STATX_MNT_ID, &fileStatus) == 0 &&
           (folderStatus.stx_mask & fileStatus.stx_mask & STATX_MNT_ID) != 0 &&
           folderStatus.stx_mnt_id != fileStatus.stx_mnt_id;
#else
    return false;
#endif
}

struct FolderCloser {
    void operator()(DIR* pFolder) const { static_cast<void>(closedir(pFolder)); }
};

}  // namespace

bool ReadStatusOf(const FileDescriptor& file, FileStatus& status, std::error_code& error) {
    struct stat data {};
    if (!Succeeded(fstat(file.Get(), &data), error)) return false;
    status = StatusOf(data);
    return true;
}

bool SyncContent(const FileDescriptor& file, std::error_code& error) {
    int result = 0;
    do {
        result = fdatasync(file.Get());
    } while (result != 0 && errno == EINTR);
    const bool isUnknown = result != 0 && (errno == EINVAL || errno == ENOTSUP || errno == ENOSYS);
    return isUnknown || Succeeded(result, error);
}

void BeginSync([[maybe_unused]] const FileDescriptor& file) {
#ifdef SYNC_FILE_RANGE_WRITE
    static_cast<void>(sync_file_range(file.Get(), 0, 0, SYNC_FILE_RANGE_WRITE));
#endif
}

bool Folder::Sync(std::error_code& error) const {
    // What is held may be searched alone, which is not enough here.
    const FileDescriptor folder = OpenAt(m_folder.Get(), ".", O_RDONLY | O_DIRECTORY, error);
    if (folder.IsOpen()) return SyncContent(folder, error);
    // A folder that may not be read cannot be asked for, either.
    const bool isForbidden = error == std::errc::permission_denied;
    if (isForbidden) error.clear();
    return isForbidden;
}

std::shared_ptr<const Folder> Folder::Hold(FileDescriptor folder, std::error_code& error) {
    FileStatus status;
    if (!folder.IsOpen() || !ReadStatusOf(folder, status, error)) return nullptr;
    return std::shared_ptr<const Folder>(new Folder(std::move(folder), status.identity));
}

std::shared_ptr<const Folder> Folder::Open(const std::string& path, std::error_code& error) {
    return Hold(OpenAt(AT_FDCWD, path.c_str(), kFolderFlags, error), error);
}

std::shared_ptr<const Folder> Folder::OpenFolder(const std::string& name,
                                                 std::error_code& error) const {
    return Hold(EnterFolder(m_folder.Get(), name, error), error);
}

std::shared_ptr<const Folder> Folder::OpenParent(std::error_code& error) const {
    return Hold(OpenAt(m_folder.Get(), "..", kFolderFlags | O_NOFOLLOW, error), error);
}

std::shared_ptr<const Folder> Folder::OpenBelow(std::string_view relative, std::string& obstacle,
                                                std::error_code& error) const {
    if (relative.empty()) return shared_from_this();
    FileDescriptor held;
    int from = m_folder.Get();
    for (std::size_t begin = 0; begin < relative.size();) {
        const std::size_t end = std::min(relative.find('/', begin), relative.size());
        FileDescriptor next =
            EnterFolder(from, std::string(relative.substr(begin, end - begin)), error);
        if (!next.IsOpen()) {
            obstacle = relative.substr(0, end);
            return nullptr;
        }
        held = std::move(next);
        from = held.Get();
        begin = end + 1;
    }
    return Hold(std::move(held), error);
}

FileDescriptor Folder::OpenFile(const std::string& name, FileAccess access,
                                std::error_code& error) const {
    constexpr mode_t kOwnerOnly = 0600;
    constexpr mode_t kReadableAndWritable = 0666;
    if (!IsName(name, error)) return FileDescriptor();
    switch (access) {
        case FileAccess::kCreate:
            return OpenAt(m_folder.Get(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW,
                          error, kOwnerOnly);
        case FileAccess::kAppend: {
            FileDescriptor file = OpenAt(m_folder.Get(), name.c_str(),
                                         O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK,
                                         error, kReadableAndWritable);
            if (!file.IsOpen() || !IsMounted(m_folder.Get(), file.Get())) return file;
            error = ErrorOf(EBUSY);  // as when it were to be replaced
            return FileDescriptor();
        }
        case FileAccess::kRead:
            break;
    }
    return OpenAt(m_folder.Get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK, error);
}

bool Folder::ReadStatus(const std::string& name, FileStatus& status, std::error_code& error) const {
    struct stat data {};
    if (!IsName(name, error) ||
        !Succeeded(fstatat(m_folder.Get(), name.c_str(), &data, AT_SYMLINK_NOFOLLOW), error)) {
        return false;
    }
    status = StatusOf(data);
    return true;
}

bool Folder::ReadLink(const std::string& name, std::string& text, std::error_code& error) const {
    constexpr std::size_t kLongest = 64UL * 1024;  // far beyond what systems allow
    if (!IsName(name, error)) return false;
    text.resize(kLongest);
    const ssize_t size = readlinkat(m_folder.Get(), name.c_str(), text.data(), text.size());
    if (size < 0) error = ErrorOf(errno);
    text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return size >= 0;
}

bool Folder::List(std::vector<std::string>& names, std::error_code& error) const {
    names.clear();
    // Opened anew: the place that listing has reached belongs to the open folder.
    const int descriptor =
        OpenDescriptorAt(m_folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_NOFOLLOW, 0, error);
    if (descriptor < 0) return false;
    const std::unique_ptr<DIR, FolderCloser> stream(fdopendir(descriptor));  // which closes it
    if (stream == nullptr) {
        error = ErrorOf(errno);
        close(descriptor);
        return false;
    }
    for (;;) {
        errno = 0;
        // The stream is this thread's own.
        const dirent* pEntry = readdir(stream.get());  // NOLINT(concurrency-mt-unsafe)
        if (pEntry == nullptr) break;
        const std::string_view name = static_cast<const char*>(pEntry->d_name);
        if (name != "." && name != "..") names.emplace_back(name);
    }
    if (errno != 0) error = ErrorOf(errno);
    std::sort(names.begin(), names.end());
    return !error;
}

bool Folder::MakeFolder(const std::string& name, std::error_code& error) const {
    return IsName(name, error) &&
           Succeeded(mkdirat(m_folder.Get(), name.c_str(), kPermissionBits), error);
}

bool Folder::Rename(const std::string& from, const std::string& to, std::error_code& error) const {
    return IsName(from, error) && IsName(to, error) &&
           Succeeded(renameat(m_folder.Get(), from.c_str(), m_folder.Get(), to.c_str()), error);
}

bool Folder::Remove(const std::string& name, std::error_code& error) const {
    return IsName(name, error) && Succeeded(unlinkat(m_folder.Get(), name.c_str(), 0), error);
}

bool Folder::IsWithin(const std::set<FileIdentity>& folders, std::error_code& error) const {
    // Above that many there are none: a path has 4096 bytes, the one to a root that was named as
    // well as the one below it.
    constexpr int kMostLevels = 4096;
    // Several levels are looked up from one open folder, for most are not deeper than that.
    constexpr int kLevelsAtOnce = 16;
    if (folders.empty()) return false;
    if (folders.contains(m_identity)) return true;
    struct stat topmost {};
    if (!Succeeded(stat("/", &topmost), error)) return false;
    FileDescriptor held;
    int from = m_folder.Get();
    std::string up = "..";
    for (int level = 1; level <= kMostLevels; ++level) {
        struct stat status {};
        if (fstatat(from, up.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno != EACCES) error = ErrorOf(errno);
            return false;
        }
        if (folders.contains(IdentityOf(status))) return true;
        // A folder that is mounted into itself lies in itself, too, and is not the topmost.
        if (IdentityOf(status) == IdentityOf(topmost)) return false;
        if (level % kLevelsAtOnce != 0) {
            up += "/..";
            continue;
        }
        std::error_code openError;
        held = OpenAt(from, up.c_str(), kFolderFlags | O_NOFOLLOW, openError);
        if (!held.IsOpen()) {
            if (openError != std::errc::permission_denied) error = openError;
            return false;
        }
        from = held.Get();
        up = "..";
    }
    return false;
}

}  // namespace quillet
