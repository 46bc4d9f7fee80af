// What is known about the results in TARGET, kept there from run to run.
#ifndef QUILLET_MIGRATE_JOURNAL_H
#define QUILLET_MIGRATE_JOURNAL_H

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "migrate/arrayspool.h"
#include "migrate/journalrecord.h"
#include "migrate/reportdata.h"
#include "migrate/systemfiles.h"

namespace quillet::migrate {

/// What earlier runs have recorded. Constant, and so safe for threads, once it is filled.
class EarlierResults {
public:
    EarlierResults() = default;

    /// Reads the journal and keeps the two files open, which hold commands; `report` may be null.
    /// The number of bytes up to the end of the last line that is whole. Nothing when the journal
    /// cannot be read.
    [[nodiscard]] std::optional<std::uint64_t> Read(std::shared_ptr<const StoredFile> journal,
                                                    std::shared_ptr<const StoredFile> report);
    /// Takes over one record, the latest of its file.
    void Add(JournalRecord record);

    /// What was recorded about a result, the latest last; empty for nothing.
    [[nodiscard]] const std::vector<JournalRecord>& RecordsOf(const std::string& path) const;
    /// All files that something is known about, sorted.
    [[nodiscard]] std::vector<std::string> Paths() const;

    /// Finds a record's commands and looks whether they are still what they were; nothing when
    /// they are not. Cost: reads all of them.
    [[nodiscard]] std::optional<ArrayPlace> CommandsOf(const JournalRecord& record) const;
    /// The same of its findings; nothing, too, where nobody has looked for any.
    [[nodiscard]] std::optional<ArrayPlace> FindingsOf(const JournalRecord& record) const;
    /// The same of its macros.
    [[nodiscard]] std::optional<ArrayPlace> MacrosOf(const JournalRecord& record) const;

private:
    [[nodiscard]] std::optional<ArrayPlace> PlaceOf(const StoredArray& array, bool isEmpty) const;

    std::shared_ptr<const StoredFile> m_journal;
    std::shared_ptr<const StoredFile> m_report;
    std::unordered_map<std::string, std::vector<JournalRecord>> m_records;
};

/// A file that a run has dealt with.
struct FinishedFile {
    FileEntry entry;
    /// Of the result that is known to stand now, so that earlier records are of no use any more;
    /// nothing when they have to stay.
    std::optional<ResultIdentity> identity;
    ContentHash commandsHash;  ///< Of the entry's commands.
    ContentHash findingsHash;
    ContentHash macrosHash = {};
    std::vector<IncludeLookup> includes = {};  ///< See `JournalRecord`.
};

/// The journal of a run, which it has for itself. From any thread, but for what says otherwise.
///
/// A result is recorded before it gets its name, and only then: what stands in TARGET was either
/// recorded or not made here. Whatever ends a run, the next one can tell.
class Journal {
public:
    /// Opens the journal `name` in `folder` or begins a new one. What it holds goes to `earlier`;
    /// a line that was not finished is cut off. `reportName` is that of the JSON report that
    /// belongs to it. Null with `error` set when that fails, as it does
    /// (`std::errc::resource_unavailable_try_again`) while another run uses it.
    [[nodiscard]] static std::unique_ptr<Journal> Open(const std::shared_ptr<const Folder>& folder,
                                                       const std::string& name,
                                                       const std::string& reportName,
                                                       EarlierResults& earlier,
                                                       std::error_code& error);
    /// For runs that are not to leave a trace: reads what the journal holds, but writes to a file
    /// `scratchName`, which has gone from the folder when this returns.
    [[nodiscard]] static std::unique_ptr<Journal> OpenForReading(
        const std::shared_ptr<const Folder>& folder, const std::string& name,
        const std::string& reportName, const std::string& scratchName, EarlierResults& earlier,
        std::error_code& error);

    /// Stores a file's commands, or its findings, until the journal is replaced. Where that fails,
    /// `Error` tells, and the result says that they stand nowhere.
    [[nodiscard]] StoredArray Store(ArraySpool& array);
    /// Where what `Store` has stored can be read as long as the journal lives.
    [[nodiscard]] ArrayPlace PlaceOf(const StoredArray& array) const;
    /// Writes a record. False with `error` set when the next run would not find it.
    [[nodiscard]] bool Record(const JournalRecord& record, std::error_code& error);
    /// Waits until all records are on the disk.
    [[nodiscard]] bool Sync(std::error_code& error);

    /// Notes a file that was dealt with.
    void Note(FinishedFile file);
    /// How many were noted.
    [[nodiscard]] std::size_t FileCount() const { return m_files.size(); }
    /// All files of this run. Once, when no thread adds any more.
    [[nodiscard]] std::vector<FinishedFile> TakeFiles() { return std::move(m_files); }

    /// The first error that kept something from being written.
    [[nodiscard]] const std::error_code& Error() const { return m_error; }

private:
    Journal(std::unique_ptr<AppendedFile> file, std::shared_ptr<const StoredFile> content)
        : m_file(std::move(file)), m_content(std::move(content)) {}

    [[nodiscard]] static std::unique_ptr<Journal> OpenFile(
        const std::shared_ptr<const Folder>& folder, const std::string& name,
        std::error_code& error);
    [[nodiscard]] bool AppendLine(std::string_view line, std::error_code& error);
    [[nodiscard]] bool AppendArray(ArraySpool& array, ContentHash& hash, std::error_code& error);
    void NoteError(const std::error_code& error);
    [[nodiscard]] bool FindEnd(std::error_code& error);
    void CutTo(std::uint64_t size);

    std::unique_ptr<AppendedFile> m_file;
    std::shared_ptr<const StoredFile> m_content;
    std::mutex m_mutex;  // for everything below
    std::uint64_t m_size = 0;
    std::vector<FinishedFile> m_files;
    std::error_code m_error;
    bool m_isScratch = false;
    bool m_hasLooseEnd = false;  // what was written in part could not be cut off
};

/// What a whole run leaves of the journal.
struct CompactJournal {
    /// In the order of the report.
    const std::vector<FileEntry>& entries;
    /// The same files, without their entries.
    const std::vector<FinishedFile>& files;
    /// Where the arrays of each of them begin in the JSON report.
    const std::vector<ArrayOffsets>& offsets;
    const EarlierResults& earlier;
    /// Results that do not stand any more, nor do their sources.
    const std::unordered_set<std::string>& gone;
};

/// Writes a journal that holds what is still of use: one record for each result that was looked
/// at, which refers to the report, and what was known about the others. False when `output`
/// fails. `changedFolders` gets the folders ("" for TARGET) of results that the earlier records
/// told something else about: what they hold has to be on the disk before the journal is.
[[nodiscard]] bool WriteCompactJournal(const CompactJournal& journal, TextOutput& output,
                                       std::set<std::string>& changedFolders);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_JOURNAL_H
