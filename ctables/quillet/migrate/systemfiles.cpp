#include "migrate/systemfiles.h"

#include <algorithm>
#include <filesystem>
#include <tuple>
#include <utility>

#include "platform/byteblock.h"
#include "platform/descriptor.h"
#include "platform/openfile.h"

namespace quillet::migrate {

namespace {

auto TimeOf(const FileStatus& status) {
    return std::tuple(status.modified, status.modifiedNanoseconds);
}

}  // namespace

std::string DescribeError(const std::error_code& error) {
    return error == std::errc::too_many_symbolic_link_levels
               ? "there is a link in its path, which is not followed"
               : error.message();
}

std::string ResolvePath(const std::string& path, std::error_code& error) {
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error) return {};
    std::string resolved = std::filesystem::weakly_canonical(absolute, error).native();
    if (error) return {};
    // What does not exist yet keeps the slash after it.
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

std::string_view FolderPartOf(std::string_view relative) {
    const std::size_t slash = relative.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : relative.substr(0, slash);
}

std::string NamePartOf(std::string_view path) {
    return std::string(path.substr(path.rfind('/') + 1));
}

std::unique_ptr<SourceFile> SourceFile::Open(const Folder& root, std::string_view relative,
                                             std::error_code& error) {
    std::string obstacle;
    const std::shared_ptr<const Folder> folder =
        root.OpenBelow(FolderPartOf(relative), obstacle, error);
    if (folder == nullptr) return nullptr;
    FileDescriptor file = folder->OpenFile(NamePartOf(relative), FileAccess::kRead, error);
    FileStatus status;
    if (!file.IsOpen() || !ReadStatusOf(file, status, error)) return nullptr;
    if (status.kind != FileKind::kFile) {
        error =
            std::make_error_code(status.kind == FileKind::kFolder ? std::errc::is_a_directory
                                                                  : std::errc::invalid_argument);
        return nullptr;
    }
    return std::unique_ptr<SourceFile>(new SourceFile(std::move(file), status));
}

std::size_t SourceFile::Read(char* buffer, std::size_t size) {
    if (m_error) return 0;
    const std::ptrdiff_t count = ReadDescriptor(m_file.Get(), buffer, size);
    if (count < 0) m_error = LastError();
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

bool SourceFile::Rewind() {
    if (m_error) return false;
    if (!SetPosition(m_file.Get(), 0)) m_error = LastError();
    return !m_error;
}

bool SourceFile::HasChanged() const {
    FileStatus status;
    std::error_code error;
    return !ReadStatusOf(m_file, status, error) || status.size != m_status.size ||
           TimeOf(status) != TimeOf(m_status);
}

NewFile::NewFile(FileDescriptor file, std::shared_ptr<const Folder> folder,
                 std::string temporaryName)
    : m_file(std::move(file)),
      m_folder(std::move(folder)),
      m_temporaryName(std::move(temporaryName)) {
    m_buffer.reserve(kBlockSize);
}

std::unique_ptr<NewFile> NewFile::Create(std::shared_ptr<const Folder> folder,
                                         const std::string& temporaryName, std::error_code& error) {
    FileDescriptor file = folder->OpenFile(temporaryName, FileAccess::kCreate, error);
    std::error_code removeError;
    if (!file.IsOpen() && error == std::errc::file_exists &&
        folder->Remove(temporaryName, removeError)) {
        error.clear();
        file = folder->OpenFile(temporaryName, FileAccess::kCreate, error);
    }
    if (!file.IsOpen()) return nullptr;
    return std::unique_ptr<NewFile>(new NewFile(std::move(file), std::move(folder), temporaryName));
}

NewFile::~NewFile() {
    std::error_code ignored;
    if (!m_temporaryName.empty()) static_cast<void>(m_folder->Remove(m_temporaryName, ignored));
}

bool NewFile::Flush() {
    if (m_error) return false;
    const bool isWritten = WriteAll(m_file, m_buffer, m_error);
    m_buffer.clear();
    return isWritten;
}

bool NewFile::Write(std::string_view bytes) {
    if (m_buffer.size() + bytes.size() > kBlockSize && !Flush()) return false;
    if (bytes.size() > kBlockSize) return WriteAll(m_file, bytes, m_error);
    m_buffer.append(bytes);
    return !m_error;
}

bool NewFile::Restart() {
    m_buffer.clear();
    if (!m_error && (!SetSize(m_file, 0) || !SetPosition(m_file.Get(), 0))) m_error = LastError();
    return !m_error;
}

bool NewFile::Complete(unsigned permissions) {
    if (!Flush() || !SetPermissions(m_file, permissions, m_error)) return false;
    BeginSync(m_file);
    return true;
}

// A name must not be on the disk before the content is, or a power failure leaves it empty.
bool NewFile::Sync() {
    if (m_error || !SyncContent(m_file, m_error)) return false;
    if (!m_file.Close()) m_error = LastError();
    // Many files may wait for their names.
    m_buffer.clear();
    m_buffer.shrink_to_fit();
    return !m_error;
}

bool NewFile::Publish(const std::string& name) {
    if (!m_folder->Rename(m_temporaryName, name, m_error)) return false;
    m_temporaryName.clear();
    return true;
}

std::unique_ptr<StoredFile> StoredFile::Hold(FileDescriptor file, std::error_code& error) {
    FileStatus status;
    if (!file.IsOpen() || !ReadStatusOf(file, status, error)) return nullptr;
    if (status.kind != FileKind::kFile) {
        error = std::make_error_code(std::errc::invalid_argument);
        return nullptr;
    }
    return std::unique_ptr<StoredFile>(new StoredFile(std::move(file)));
}

std::unique_ptr<StoredFile> StoredFile::Open(const std::string& path, std::error_code& error) {
    return Hold(OpenNamedFile(path, error), error);
}

std::unique_ptr<StoredFile> StoredFile::Open(const Folder& folder, const std::string& name,
                                             std::error_code& error) {
    return Hold(folder.OpenFile(name, FileAccess::kRead, error), error);
}

std::ptrdiff_t StoredFile::ReadAt(std::uint64_t offset, char* buffer, std::size_t size) const {
    return quillet::ReadAt(m_file, offset, buffer, size);
}

std::optional<std::uint64_t> StoredFile::KnownSize() const {
    FileStatus status;
    std::error_code error;
    if (!ReadStatusOf(m_file, status, error)) return std::nullopt;
    return status.size;
}

bool StoredFile::IsFree() const { return IsUnlocked(m_file); }

std::unique_ptr<AppendedFile> AppendedFile::Open(std::shared_ptr<const Folder> folder,
                                                 const std::string& name, std::error_code& error) {
    // A run that just ended may have removed the file between the opening and the locking, which
    // is no reason to try for ever.
    constexpr int kMostTries = 100;
    for (int tries = 0; tries < kMostTries; ++tries) {
        FileDescriptor file = folder->OpenFile(name, FileAccess::kAppend, error);
        FileStatus opened;
        if (!file.IsOpen() || !ReadStatusOf(file, opened, error)) return nullptr;
        if (opened.kind != FileKind::kFile) {
            error = std::make_error_code(std::errc::invalid_argument);
            return nullptr;
        }
        // Where there are no locks two runs at a time are the user's to avoid.
        if (!TryLock(file)) break;
        FileStatus named;
        std::error_code nameError;
        const bool hasStatus = folder->ReadStatus(name, named, nameError);
        if (!hasStatus && nameError != std::errc::no_such_file_or_directory) {
            error = nameError;
            return nullptr;
        }
        if (!hasStatus || named.identity != opened.identity) continue;
        if (named.names > 1) {
            error = std::make_error_code(std::errc::too_many_links);
            return nullptr;
        }
        return std::unique_ptr<AppendedFile>(
            new AppendedFile(std::move(file), std::move(folder), name));
    }
    error = std::make_error_code(std::errc::resource_unavailable_try_again);
    return nullptr;
}

bool AppendedFile::Append(std::string_view bytes, std::error_code& error) {
    return WriteAll(m_file, bytes, error);
}

bool AppendedFile::Sync(std::error_code& error) { return SyncContent(m_file, error); }

bool AppendedFile::Truncate(std::uint64_t size) { return SetSize(m_file, size); }

void AppendedFile::Remove() {
    std::error_code ignored;
    static_cast<void>(m_folder->Remove(m_name, ignored));
}

}  // namespace quillet::migrate
