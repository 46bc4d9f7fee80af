// Three things can be told apart only with the journal: a result that a run has made, one that
// someone has edited since, and one that never came from here. So a record is on the disk before
// the result that it tells about gets its name, and the records that the result before had stay
// until a whole run has found everything in order. At whatever moment a run ends, then, a result
// that nobody has touched has one of the recorded hashes.
#include "migrate/journal.h"

#include <algorithm>
#include <utility>

#include "migrate/storedtext.h"

namespace quillet::migrate {

namespace {

// Beyond this commands are written in pieces.
constexpr std::size_t kMostAtOnce = 1024UL * 1024;

std::shared_ptr<const StoredFile> OpenStored(const Folder& folder, const std::string& name) {
    std::error_code ignored;
    return StoredFile::Open(folder, name, ignored);
}

}  // namespace

std::optional<std::uint64_t> EarlierResults::Read(std::shared_ptr<const StoredFile> journal,
                                                  std::shared_ptr<const StoredFile> report) {
    m_journal = std::move(journal);
    m_report = std::move(report);
    JournalReader reader([this](JournalRecord record) { Add(std::move(record)); });
    // A journal that seems empty would be written anew without what it holds.
    const std::optional<std::uint64_t> size = m_journal->KnownSize();
    if (!size) return std::nullopt;
    const bool isRead = CopyStoredText(*m_journal, 0, *size, [&reader](const std::string& piece) {
        reader.Add(piece);
        return true;
    });
    return isRead ? std::optional(reader.EndOfLines()) : std::nullopt;
}

void EarlierResults::Add(JournalRecord record) {
    std::vector<JournalRecord>& records = m_records[record.facts.path];
    // A result has a few records where runs were ended by force. More is not of this program.
    constexpr std::size_t kMostRecords = 64;
    if (records.size() == kMostRecords) records.erase(records.begin());
    // The same result again replaces what was said about it.
    std::erase_if(records, [&record](const JournalRecord& earlier) {
        return earlier.identity.result == record.identity.result &&
               earlier.identity.isAccepted == record.identity.isAccepted;
    });
    records.push_back(std::move(record));
}

const std::vector<JournalRecord>& EarlierResults::RecordsOf(const std::string& path) const {
    static const std::vector<JournalRecord> kNone;
    const auto found = m_records.find(path);
    return found == m_records.end() ? kNone : found->second;
}

std::vector<std::string> EarlierResults::Paths() const {
    std::vector<std::string> paths;
    paths.reserve(m_records.size());
    for (const auto& [path, records] : m_records) paths.push_back(path);
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::optional<ArrayPlace> EarlierResults::CommandsOf(const JournalRecord& record) const {
    return PlaceOf(record.commands, !HasCommands(record.facts));
}

std::optional<ArrayPlace> EarlierResults::FindingsOf(const JournalRecord& record) const {
    if (!record.hasFindings) return std::nullopt;
    return PlaceOf(record.findings, !HasFindings(record.facts));
}

std::optional<ArrayPlace> EarlierResults::MacrosOf(const JournalRecord& record) const {
    return PlaceOf(record.macros, !HasMacros(record.facts));
}

std::optional<ArrayPlace> EarlierResults::PlaceOf(const StoredArray& array, bool isEmpty) const {
    if (array.place == StoredArray::Place::kNowhere) {
        return isEmpty ? std::optional(ArrayPlace{}) : std::nullopt;
    }
    const bool isInReport = array.place == StoredArray::Place::kReport;
    const StoredFile* pFile = isInReport ? m_report.get() : m_journal.get();
    if (pFile == nullptr) return std::nullopt;
    ContentHasher hasher;
    const bool isRead =
        CopyStoredText(*pFile, array.offset, array.length, [&hasher](const std::string& piece) {
            hasher.Add(piece);
            return true;
        });
    if (!isRead || hasher.Value() != array.hash) return std::nullopt;
    return ArrayPlace{pFile, array.offset, array.length};
}

std::unique_ptr<Journal> Journal::OpenFile(const std::shared_ptr<const Folder>& folder,
                                           const std::string& name, std::error_code& error) {
    std::unique_ptr<AppendedFile> file = AppendedFile::Open(folder, name, error);
    if (file == nullptr) return nullptr;
    std::shared_ptr<const StoredFile> content = StoredFile::Open(*folder, name, error);
    if (content == nullptr) return nullptr;
    return std::unique_ptr<Journal>(new Journal(std::move(file), std::move(content)));
}

std::unique_ptr<Journal> Journal::Open(const std::shared_ptr<const Folder>& folder,
                                       const std::string& name, const std::string& reportName,
                                       EarlierResults& earlier, std::error_code& error) {
    std::unique_ptr<Journal> journal = OpenFile(folder, name, error);
    if (journal == nullptr) return nullptr;
    journal->m_size = journal->m_content->Size();
    const std::optional<std::uint64_t> size =
        earlier.Read(journal->m_content, OpenStored(*folder, reportName));
    if (!size) {
        error = std::make_error_code(std::errc::io_error);
        return nullptr;
    }
    if (*size != journal->m_size) journal->CutTo(*size);
    return journal;
}

std::unique_ptr<Journal> Journal::OpenForReading(const std::shared_ptr<const Folder>& folder,
                                                 const std::string& name,
                                                 const std::string& reportName,
                                                 const std::string& scratchName,
                                                 EarlierResults& earlier, std::error_code& error) {
    const std::shared_ptr<const StoredFile> known = StoredFile::Open(*folder, name, error);
    if (known == nullptr && error != std::errc::no_such_file_or_directory) return nullptr;
    error.clear();
    if (known != nullptr && !known->IsFree()) {
        error = std::make_error_code(std::errc::resource_unavailable_try_again);
        return nullptr;
    }
    if (known != nullptr && !earlier.Read(known, OpenStored(*folder, reportName))) {
        error = std::make_error_code(std::errc::io_error);
        return nullptr;
    }
    std::unique_ptr<Journal> journal = OpenFile(folder, scratchName, error);
    if (journal == nullptr) return nullptr;
    journal->m_file->Remove();
    journal->m_isScratch = true;
    return journal;
}

void Journal::NoteError(const std::error_code& error) {
    if (!m_error) m_error = error;
}

void Journal::CutTo(std::uint64_t size) {
    m_hasLooseEnd = !m_file->Truncate(size);
    m_size = size;
}

// The next line must not become the rest of one that was written in part.
bool Journal::FindEnd(std::error_code& error) {
    if (!m_hasLooseEnd) return true;
    if (!m_file->Append("\n", error)) return false;
    const std::uint64_t size = m_content->Size();
    if (size <= m_size) {
        error = std::make_error_code(std::errc::io_error);
        return false;
    }
    m_size = size;
    m_hasLooseEnd = false;
    return true;
}

bool Journal::AppendLine(std::string_view line, std::error_code& error) {
    if (!m_file->Append(line, error)) return false;
    m_size += line.size();
    return true;
}

bool Journal::AppendArray(ArraySpool& array, ContentHash& hash, std::error_code& error) {
    ContentHasher hasher;
    std::string text = "[";
    const bool isWritten = array.CopyTo([&](std::string_view piece) {
        text += piece;
        if (text.size() < kMostAtOnce) return true;
        hasher.Add(text);
        return AppendLine(std::exchange(text, {}), error);
    });
    if (!isWritten) {
        if (!error) error = std::make_error_code(std::errc::io_error);
        return false;
    }
    text += ']';
    hasher.Add(text);
    hash = hasher.Value();
    return AppendLine(text.append("\n"), error);
}

StoredArray Journal::Store(ArraySpool& array) {
    StoredArray stored;
    if (array.IsEmpty()) return stored;
    const std::lock_guard lock(m_mutex);
    std::error_code error;
    if (!FindEnd(error)) {
        NoteError(error);
        return {};
    }
    const std::uint64_t size = m_size;
    if (!AppendArray(array, stored.hash, error)) {
        NoteError(error);
        CutTo(size);
        return {};
    }
    stored.place = StoredArray::Place::kJournal;
    stored.offset = size;
    stored.length = array.Size() + 2;  // the brackets
    return stored;
}

ArrayPlace Journal::PlaceOf(const StoredArray& array) const {
    if (array.place == StoredArray::Place::kNowhere) return {};
    return {m_content.get(), array.offset, array.length};
}

bool Journal::Record(const JournalRecord& record, std::error_code& error) {
    const std::string line = FormatRecord(record);
    const std::lock_guard lock(m_mutex);
    if (m_isScratch) return true;
    if (!FindEnd(error)) {
        NoteError(error);
        return false;
    }
    const std::uint64_t size = m_size;
    if (AppendLine(line, error)) return true;
    NoteError(error);
    CutTo(size);
    return false;
}

bool Journal::Sync(std::error_code& error) {
    // Not under the lock: others can write meanwhile.
    if (m_file->Sync(error)) return true;
    const std::lock_guard lock(m_mutex);
    NoteError(error);
    return false;
}

void Journal::Note(FinishedFile file) {
    const std::lock_guard lock(m_mutex);
    m_files.push_back(std::move(file));
}

namespace {

class CompactWriter {
public:
    CompactWriter(const CompactJournal& journal, TextOutput& output,
                  std::set<std::string>& changedFolders)
        : m_journal(journal), m_output(output), m_changedFolders(changedFolders) {
        for (std::size_t index = 0; index < journal.files.size(); ++index) {
            m_indices.emplace(journal.entries[index].facts.path, index);
        }
    }

    [[nodiscard]] bool Write() {
        for (const std::string& path : m_journal.earlier.Paths()) {
            if (!m_journal.gone.contains(path) && !WriteEarlier(path)) return false;
        }
        // Later lines count for more.
        for (std::size_t index = 0; index < m_journal.files.size(); ++index) {
            if (!WriteOwn(index)) return false;
        }
        return true;
    }

private:
    [[nodiscard]] const FinishedFile* FindFinished(const std::string& path) const {
        const auto found = m_indices.find(path);
        return found == m_indices.end() ? nullptr : &m_journal.files[found->second];
    }

    [[nodiscard]] bool WriteLine(std::string_view line) {
        m_size += line.size();
        return m_output.Write(line);
    }

    [[nodiscard]] bool WriteEarlier(const std::string& path) {
        const FinishedFile* pFinished = FindFinished(path);
        const std::vector<JournalRecord>& records = m_journal.earlier.RecordsOf(path);
        for (const JournalRecord& record : records) {
            if (pFinished != nullptr && pFinished->identity == record.identity) continue;
            if (pFinished != nullptr && pFinished->identity) {
                m_changedFolders.emplace(FolderPartOf(path));
                continue;
            }
            JournalRecord copy = record;
            copy.commands = {};
            copy.findings = {};
            copy.macros = {};
            // Of an older state nobody will ask.
            const bool isLatest = &record == &records.back();
            const EarlierResults& earlier = m_journal.earlier;
            if (isLatest &&
                (!CopyArray(earlier.CommandsOf(record), record.commands.hash, copy.commands) ||
                 !CopyArray(earlier.FindingsOf(record), record.findings.hash, copy.findings) ||
                 !CopyArray(earlier.MacrosOf(record), record.macros.hash, copy.macros))) {
                return false;
            }
            if (!WriteLine(FormatRecord(copy))) return false;
        }
        return true;
    }

    [[nodiscard]] bool CopyArray(const std::optional<ArrayPlace>& place, const ContentHash& hash,
                                 StoredArray& array) {
        if (!place || place->pFile == nullptr) return true;
        array = {StoredArray::Place::kJournal, m_size, place->length, hash};
        const bool isCopied =
            CopyStoredText(*place->pFile, place->offset, place->length,
                           [this](const std::string& piece) { return WriteLine(piece); });
        return isCopied && WriteLine("\n");
    }

    [[nodiscard]] static StoredArray InReport(const ArrayPlace& place, std::uint64_t offset,
                                              const ContentHash& hash) {
        if (place.pFile == nullptr) return {};
        return {StoredArray::Place::kReport, offset, place.length, hash};
    }

    [[nodiscard]] bool WriteOwn(std::size_t index) {
        const FinishedFile& file = m_journal.files[index];
        if (!file.identity) return true;
        const FileEntry& entry = m_journal.entries[index];
        JournalRecord record{entry.facts, *file.identity, {}, {}};
        record.includes = file.includes;
        const ArrayOffsets& offsets = m_journal.offsets[index];
        record.commands = InReport(entry.commands, offsets.commands, file.commandsHash);
        record.findings = InReport(entry.findings, offsets.findings, file.findingsHash);
        record.macros = InReport(entry.macros, offsets.macros, file.macrosHash);
        return WriteLine(FormatRecord(record));
    }

    const CompactJournal& m_journal;
    TextOutput& m_output;
    std::set<std::string>& m_changedFolders;
    std::unordered_map<std::string_view, std::size_t> m_indices;
    std::uint64_t m_size = 0;
};

}  // namespace

bool WriteCompactJournal(const CompactJournal& journal, TextOutput& output,
                         std::set<std::string>& changedFolders) {
    return CompactWriter(journal, output, changedFolders).Write();
}

}  // namespace quillet::migrate
