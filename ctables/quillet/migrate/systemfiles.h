// Files as a migration needs them: with their times, rights and errors.
#ifndef QUILLET_MIGRATE_SYSTEMFILES_H
#define QUILLET_MIGRATE_SYSTEMFILES_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/folder.h"
#include "platform/textfile.h"
#include "quillet.h"

namespace quillet::migrate {

/// `error` in words; a link that was not followed is called just that.
[[nodiscard]] std::string DescribeError(const std::error_code& error);

/// `path` without links and dots, as far as it exists; empty with `error` set when it cannot be
/// told.
[[nodiscard]] std::string ResolvePath(const std::string& path, std::error_code& error);

/// True when `path` is `folder` or lies in it. Both are resolved.
[[nodiscard]] bool IsInside(std::string_view path, std::string_view folder);

/// "folder/name".
[[nodiscard]] std::string JoinPath(std::string_view folder, std::string_view name);
/// What stands before the last "/"; "." when there is none.
[[nodiscard]] std::string FolderOf(std::string_view path);
/// The same of a path below a root, where the root itself is empty.
[[nodiscard]] std::string_view FolderPartOf(std::string_view relative);
/// What stands after the last "/".
[[nodiscard]] std::string NamePartOf(std::string_view path);

/// An open file of the archive. What is no regular file is not opened, nor waited for.
class SourceFile final : public TextInput {
public:
    /// Opens the file at `relative` below `root`, over no link. Null with `error` set when that
    /// fails.
    [[nodiscard]] static std::unique_ptr<SourceFile> Open(const Folder& root,
                                                          std::string_view relative,
                                                          std::error_code& error);

    std::size_t Read(char* buffer, std::size_t size) override;
    bool Rewind() override;
    [[nodiscard]] bool Failed() const override { return static_cast<bool>(m_error); }

    /// What went wrong last.
    [[nodiscard]] const std::error_code& Error() const { return m_error; }
    /// As it was when the file was opened.
    [[nodiscard]] const FileStatus& Status() const { return m_status; }
    /// True when someone has written to the file since.
    [[nodiscard]] bool HasChanged() const override;

private:
    SourceFile(FileDescriptor file, const FileStatus& status)
        : m_file(std::move(file)), m_status(status) {}

    FileDescriptor m_file;
    FileStatus m_status;
    std::error_code m_error;
};

/// A file that appears under its name when it is whole, and not at all when it is not.
class NewFile final : public TextOutput {
public:
    /// Opens `temporaryName` in `folder`; a file or link that has that name is removed. Null with
    /// `error` set when that fails.
    [[nodiscard]] static std::unique_ptr<NewFile> Create(std::shared_ptr<const Folder> folder,
                                                         const std::string& temporaryName,
                                                         std::error_code& error);
    ~NewFile() override;
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool Write(std::string_view bytes) override;

    /// Forgets what was written.
    [[nodiscard]] bool Restart();
    /// Writes the rest and gives it its rights.
    [[nodiscard]] bool Complete(unsigned permissions);
    /// Waits until it is on its medium. After `Complete`.
    [[nodiscard]] bool Sync();
    /// Gives it its name in the folder, in place of what had that name. After `Sync`.
    [[nodiscard]] bool Publish(const std::string& name);
    /// All three, once.
    [[nodiscard]] bool Commit(const std::string& name, unsigned permissions) {
        return Complete(permissions) && Sync() && Publish(name);
    }

    /// The folder that it is in.
    [[nodiscard]] const std::shared_ptr<const Folder>& InFolder() const { return m_folder; }
    /// What went wrong in any of these or in `Write`.
    [[nodiscard]] const std::error_code& Error() const { return m_error; }

private:
    NewFile(FileDescriptor file, std::shared_ptr<const Folder> folder, std::string temporaryName);
    [[nodiscard]] bool Flush();

    FileDescriptor m_file;
    std::shared_ptr<const Folder> m_folder;
    std::string m_temporaryName;  // empty when there is nothing to remove
    std::string m_buffer;
    std::error_code m_error;
};

/// A file that is read at any place. Keeps its content when the name goes to another file.
class StoredFile {
public:
    /// Opens a file that the user has named, over links if need be. Null with `error` set when
    /// that fails.
    [[nodiscard]] static std::unique_ptr<StoredFile> Open(const std::string& path,
                                                          std::error_code& error);
    /// Opens a file of a folder, not over a link.
    [[nodiscard]] static std::unique_ptr<StoredFile> Open(const Folder& folder,
                                                          const std::string& name,
                                                          std::error_code& error);

    /// Reads up to `size` bytes from `offset`, less only at the file's end. -1 on errors.
    [[nodiscard]] std::ptrdiff_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) const;
    /// Its size in bytes now; nothing when the system does not tell.
    [[nodiscard]] std::optional<std::uint64_t> KnownSize() const;
    /// The same, and 0 when the system does not tell.
    [[nodiscard]] std::uint64_t Size() const { return KnownSize().value_or(0); }
    /// False while another process has it as an `AppendedFile`.
    [[nodiscard]] bool IsFree() const;

private:
    explicit StoredFile(FileDescriptor file) : m_file(std::move(file)) {}
    [[nodiscard]] static std::unique_ptr<StoredFile> Hold(FileDescriptor file,
                                                          std::error_code& error);

    FileDescriptor m_file;
};

/// A file that only grows, and that no other process has open this way at the same time.
class AppendedFile {
public:
    /// Opens or makes the file `name` in `folder`. Null with `error` set when that fails:
    /// `std::errc::resource_unavailable_try_again` when another process has it, and
    /// `std::errc::too_many_links` when it has other names as well, under which someone may know
    /// it as something else.
    [[nodiscard]] static std::unique_ptr<AppendedFile> Open(std::shared_ptr<const Folder> folder,
                                                            const std::string& name,
                                                            std::error_code& error);

    /// Appends `bytes`. After an error the file may end in a part of them.
    [[nodiscard]] bool Append(std::string_view bytes, std::error_code& error);
    /// Waits until it is on its medium.
    [[nodiscard]] bool Sync(std::error_code& error);
    /// Cuts it to `size` bytes.
    [[nodiscard]] bool Truncate(std::uint64_t size);
    /// Takes it out of its folder.
    void Remove();

private:
    AppendedFile(FileDescriptor file, std::shared_ptr<const Folder> folder, std::string name)
        : m_file(std::move(file)), m_folder(std::move(folder)), m_name(std::move(name)) {}

    FileDescriptor m_file;
    std::shared_ptr<const Folder> m_folder;
    std::string m_name;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_SYSTEMFILES_H
