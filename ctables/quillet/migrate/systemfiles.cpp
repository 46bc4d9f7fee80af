#include "migrate/systemfiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <tuple>
#include <utility>

#include "platform/descriptor.h"

namespace quillet::migrate {

namespace {

constexpr std::size_t kBufferSize = 128UL * 1024;
constexpr mode_t kPermissionBits = 0777;

std::error_code ErrorOf(int number) { return {number, std::generic_category()}; }

FileKind KindOf(mode_t mode) {
    if (S_ISREG(mode)) return FileKind::kFile;
    if (S_ISDIR(mode)) return FileKind::kFolder;
    return S_ISLNK(mode) ? FileKind::kLink : FileKind::kOther;
}

FileStatus StatusOf(const struct stat& status) {
    FileStatus result;
    result.kind = KindOf(status.st_mode);
    result.device = status.st_dev;
    result.inode = status.st_ino;
    result.size = static_cast<std::uint64_t>(status.st_size);
    result.modified = status.st_mtim.tv_sec;
    result.modifiedNanoseconds = status.st_mtim.tv_nsec;
    result.permissions = status.st_mode & kPermissionBits;
    return result;
}

FileDescriptor OpenFile(const std::string& path, int flags, std::error_code& error,
                        mode_t mode = 0) {
    int descriptor = -1;
    do {
        descriptor = open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) error = ErrorOf(errno);
    return FileDescriptor(descriptor);
}

bool ReadStatusOf(const FileDescriptor& file, FileStatus& status, std::error_code& error) {
    struct stat data {};
    if (fstat(file.Get(), &data) != 0) {
        error = ErrorOf(errno);
        return false;
    }
    status = StatusOf(data);
    return true;
}

bool WriteAll(int descriptor, std::string_view bytes, std::error_code& error) {
    while (!bytes.empty()) {
        const std::ptrdiff_t count = WriteDescriptor(descriptor, bytes.data(), bytes.size());
        if (count <= 0) {
            error = ErrorOf(count < 0 ? errno : EIO);
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

auto TimeOf(const FileStatus& status) {
    return std::tuple(status.modified, status.modifiedNanoseconds);
}

}  // namespace

bool IsOlder(const FileStatus& left, const FileStatus& right) {
    return TimeOf(left) < TimeOf(right);
}

bool ReadStatus(const std::string& path, Links links, FileStatus& status, std::error_code& error) {
    struct stat data {};
    const int result =
        links == Links::kFollow ? stat(path.c_str(), &data) : lstat(path.c_str(), &data);
    if (result != 0) {
        error = ErrorOf(errno);
        return false;
    }
    status = StatusOf(data);
    return true;
}

bool ListFolder(const std::string& path, std::vector<std::string>& names, std::error_code& error) {
    names.clear();
    std::filesystem::directory_iterator entry(path, error);
    while (!error && entry != std::filesystem::directory_iterator()) {
        names.push_back(entry->path().filename().native());
        entry.increment(error);
    }
    std::sort(names.begin(), names.end());
    return !error;
}

std::string ResolvePath(const std::string& path, std::error_code& error) {
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error) return {};
    std::string resolved = std::filesystem::weakly_canonical(absolute, error).native();
    if (error) return {};
    // What does not exist yet keeps the slash behind it.
    if (resolved.size() > 1 && resolved.ends_with('/')) resolved.pop_back();
    return resolved;
}

bool IsInside(std::string_view path, std::string_view folder) {
    if (folder == "/") return true;
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::string JoinPath(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.ends_with('/')) path += '/';
    return path.append(name);
}

std::string FolderOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return ".";
    return std::string(path.substr(0, std::max<std::size_t>(slash, 1)));
}

std::unique_ptr<SourceFile> SourceFile::Open(const std::string& path, std::error_code& error) {
    // A pipe that took the file's place would otherwise be waited for.
    FileDescriptor file = OpenFile(path, O_RDONLY | O_NONBLOCK, error);
    FileStatus status;
    if (!file.IsOpen() || !ReadStatusOf(file, status, error)) return nullptr;
    if (status.kind != FileKind::kFile) {
        error = ErrorOf(status.kind == FileKind::kFolder ? EISDIR : EINVAL);
        return nullptr;
    }
    return std::unique_ptr<SourceFile>(new SourceFile(std::move(file), status));
}

std::size_t SourceFile::Read(char* buffer, std::size_t size) {
    if (m_error) return 0;
    const std::ptrdiff_t count = ReadDescriptor(m_file.Get(), buffer, size);
    if (count < 0) m_error = ErrorOf(errno);
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

bool SourceFile::Rewind() {
    if (m_error) return false;
    if (!SetPosition(m_file.Get(), 0)) m_error = ErrorOf(errno);
    return !m_error;
}

bool SourceFile::HasChanged() const {
    FileStatus status;
    std::error_code error;
    return !ReadStatusOf(m_file, status, error) || status.size != m_status.size ||
           TimeOf(status) != TimeOf(m_status);
}

NewFile::NewFile(FileDescriptor file, std::string temporaryPath)
    : m_file(std::move(file)), m_temporaryPath(std::move(temporaryPath)) {
    m_buffer.reserve(kBufferSize);
}

std::unique_ptr<NewFile> NewFile::Create(const std::string& folder,
                                         const std::string& temporaryName, std::error_code& error) {
    constexpr mode_t kOwnerOnly = 0600;
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW;
    std::string path = JoinPath(folder, temporaryName);
    FileDescriptor file = OpenFile(path, kFlags, error, kOwnerOnly);
    if (!file.IsOpen() && error == std::errc::file_exists && unlink(path.c_str()) == 0) {
        error.clear();
        file = OpenFile(path, kFlags, error, kOwnerOnly);
    }
    if (!file.IsOpen()) return nullptr;
    return std::unique_ptr<NewFile>(new NewFile(std::move(file), std::move(path)));
}

NewFile::~NewFile() {
    if (!m_temporaryPath.empty()) static_cast<void>(unlink(m_temporaryPath.c_str()));
}

bool NewFile::Fail(int error) {
    m_error = ErrorOf(error);
    return false;
}

bool NewFile::Flush() {
    if (m_error) return false;
    const bool isWritten = WriteAll(m_file.Get(), m_buffer, m_error);
    m_buffer.clear();
    return isWritten;
}

bool NewFile::Write(std::string_view bytes) {
    if (m_buffer.size() + bytes.size() > kBufferSize && !Flush()) return false;
    if (bytes.size() > kBufferSize) return WriteAll(m_file.Get(), bytes, m_error);
    m_buffer.append(bytes);
    return !m_error;
}

bool NewFile::Commit(const std::string& path, unsigned permissions) {
    if (!Flush()) return false;
    if (fchmod(m_file.Get(), permissions & kPermissionBits) != 0) return Fail(errno);
    if (!m_file.Close()) return Fail(errno);
    if (rename(m_temporaryPath.c_str(), path.c_str()) != 0) return Fail(errno);
    m_temporaryPath.clear();
    return true;
}

unsigned DefaultPermissions() {
    constexpr mode_t kReadableAndWritable = 0666;
    const mode_t mask = umask(0);
    umask(mask);
    return kReadableAndWritable & ~mask;
}

std::unique_ptr<StoredFile> StoredFile::Open(const std::string& path, std::error_code& error) {
    FileDescriptor file = OpenFile(path, O_RDONLY | O_NONBLOCK, error);
    FileStatus status;
    if (!file.IsOpen() || !ReadStatusOf(file, status, error)) return nullptr;
    if (status.kind != FileKind::kFile) {
        error = ErrorOf(EINVAL);
        return nullptr;
    }
    return std::unique_ptr<StoredFile>(new StoredFile(std::move(file)));
}

std::ptrdiff_t StoredFile::ReadAt(std::uint64_t offset, char* buffer, std::size_t size) const {
    std::size_t total = 0;
    while (total < size) {
        const ssize_t count =
            pread(m_file.Get(), buffer + total, size - total, static_cast<off_t>(offset + total));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return -1;
        if (count == 0) break;
        total += static_cast<std::size_t>(count);
    }
    return static_cast<std::ptrdiff_t>(total);
}

std::uint64_t StoredFile::Size() const {
    FileStatus status;
    std::error_code error;
    return ReadStatusOf(m_file, status, error) ? status.size : 0;
}

std::unique_ptr<AppendedFile> AppendedFile::Open(const std::string& path, std::error_code& error) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK;
    for (;;) {
        FileDescriptor file = OpenFile(path, kFlags, error, static_cast<mode_t>(0666));
        if (!file.IsOpen()) return nullptr;
        if (flock(file.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            error = std::make_error_code(std::errc::resource_unavailable_try_again);
            return nullptr;
        }
        // Where there are no locks two runs at a time are the user's to avoid. But a run that
        // just ended may have removed the file between the opening and the locking.
        FileStatus opened;
        FileStatus named;
        std::error_code nameError;
        if (!ReadStatusOf(file, opened, error)) return nullptr;
        if (!ReadStatus(path, Links::kShow, named, nameError) || named.inode != opened.inode) {
            continue;
        }
        return std::unique_ptr<AppendedFile>(new AppendedFile(std::move(file), path));
    }
}

bool AppendedFile::Append(std::string_view bytes, std::error_code& error) {
    return WriteAll(m_file.Get(), bytes, error);
}

bool AppendedFile::Truncate(std::uint64_t size) {
    return ftruncate(m_file.Get(), static_cast<off_t>(size)) == 0;
}

void AppendedFile::Remove() { static_cast<void>(unlink(m_path.c_str())); }

bool IsErrorTerminal() { return isatty(STDERR_FILENO) == 1; }

std::size_t ErrorTerminalWidth() {
    constexpr std::size_t kUsualWidth = 80;
    struct winsize size {};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : kUsualWidth;
}

long ProcessNumber() { return getpid(); }

}  // namespace quillet::migrate
