// What is known about the files, kept on disk as a run goes on.
#ifndef QUILLET_MIGRATE_JOURNAL_H
#define QUILLET_MIGRATE_JOURNAL_H

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <vector>

#include "migrate/commandspool.h"
#include "migrate/reportdata.h"
#include "migrate/systemfiles.h"

namespace quillet::migrate {

/// What earlier runs found out, for files whose results are left alone.
class EarlierFacts {
public:
    /// Takes over what the report `name` in `folder` says; nothing when there is none or it is
    /// damaged.
    void AddReport(const Folder& folder, const std::string& name);
    /// Takes over one file's facts, in place of what was known about it. The file that holds its
    /// commands must outlive this object.
    void Add(FileEntry entry);

    /// What is known about this state of a file whose result stands; null for nothing.
    [[nodiscard]] const FileEntry* Find(const std::string& path, std::uint64_t bytes,
                                        std::int64_t modified) const;

private:
    std::unique_ptr<StoredFile> m_report;
    std::unordered_map<std::string, FileEntry> m_entries;
};

/// A file of one line per finished file, so that a run that was ended by force need not begin
/// anew, and so that memory holds no more about a file than where its line stands.
class Journal {
public:
    /// Opens the journal `name` in `folder` or begins a new one. What an earlier run left in it
    /// goes to `earlier`; a line that it did not finish is cut off. Null with `error` set when that
    /// fails, as it does
    /// (`std::errc::resource_unavailable_try_again`) while another run uses it.
    [[nodiscard]] static std::unique_ptr<Journal> Open(const std::shared_ptr<const Folder>& folder,
                                                       const std::string& name,
                                                       EarlierFacts& earlier,
                                                       std::error_code& error);

    /// Writes a file's line. From any thread.
    void Add(FileFacts facts, CommandSpool& commands);
    /// Notes a file whose line already stands somewhere. From any thread.
    void AddKept(FileEntry entry);

    /// The first error that kept a line from being written; its file is among the entries
    /// nevertheless, without its commands.
    [[nodiscard]] const std::error_code& Error() const { return m_error; }

    /// All files of this run. Once, when no thread adds any more.
    [[nodiscard]] std::vector<FileEntry> TakeEntries() { return std::move(m_entries); }

    /// Removes the file. The entries' commands can still be read.
    void Remove() { m_file->Remove(); }

private:
    Journal(std::unique_ptr<AppendedFile> file, std::unique_ptr<StoredFile> content)
        : m_file(std::move(file)), m_content(std::move(content)) {}

    [[nodiscard]] bool TakeOver(EarlierFacts& earlier);
    [[nodiscard]] bool AppendLine(std::string_view beginning, CommandSpool& commands,
                                  std::error_code& error);

    std::unique_ptr<AppendedFile> m_file;
    std::unique_ptr<StoredFile> m_content;
    std::mutex m_mutex;  // for everything below
    std::uint64_t m_size = 0;
    std::vector<FileEntry> m_entries;
    std::error_code m_error;
    bool m_isBroken = false;  // its end is not where it should be
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_JOURNAL_H
