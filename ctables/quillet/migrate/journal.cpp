#include "migrate/journal.h"

#include <optional>
#include <utility>

#include "migrate/jsonreport.h"
#include "migrate/storedtext.h"

namespace quillet::migrate {

namespace {

// Beyond this a line is written in pieces.
constexpr std::uint64_t kMostAtOnce = 1024UL * 1024;

constexpr std::string_view kLineEnd = "]}\n";

bool HasResult(FileOutcome outcome) {
    return outcome != FileOutcome::kSkipped && outcome != FileOutcome::kFailed;
}

}  // namespace

void EarlierFacts::AddReport(const Folder& folder, const std::string& name) {
    std::error_code error;
    m_report = StoredFile::Open(folder, name, error);
    Report report;
    std::string message;
    if (m_report == nullptr || !ReadJsonReport(*m_report, report, message)) return;
    for (FileEntry& entry : report.files) Add(std::move(entry));
}

void EarlierFacts::Add(FileEntry entry) {
    std::string path = entry.facts.path;
    m_entries.insert_or_assign(std::move(path), std::move(entry));
}

const FileEntry* EarlierFacts::Find(const std::string& path, std::uint64_t bytes,
                                    std::int64_t modified) const {
    const auto found = m_entries.find(path);
    if (found == m_entries.end()) return nullptr;
    const FileFacts& facts = found->second.facts;
    const bool isSameState = facts.bytes == bytes && facts.modified == modified;
    return isSameState && HasResult(facts.outcome) ? &found->second : nullptr;
}

std::unique_ptr<Journal> Journal::Open(const std::shared_ptr<const Folder>& folder,
                                       const std::string& name, EarlierFacts& earlier,
                                       std::error_code& error) {
    std::unique_ptr<AppendedFile> file = AppendedFile::Open(folder, name, error);
    if (file == nullptr) return nullptr;
    std::unique_ptr<StoredFile> content = StoredFile::Open(*folder, name, error);
    if (content == nullptr) return nullptr;
    std::unique_ptr<Journal> journal(new Journal(std::move(file), std::move(content)));
    if (!journal->TakeOver(earlier)) {
        error = std::make_error_code(std::errc::io_error);
        return nullptr;
    }
    return journal;
}

bool Journal::TakeOver(EarlierFacts& earlier) {
    StoredText text(*m_content, 0, m_content->Size());
    while (std::optional<FileEntry> entry = ReadFileLine(text)) {
        m_size = text.Position();
        earlier.Add(std::move(*entry));
    }
    return m_size == m_content->Size() || m_file->Truncate(m_size);
}

bool Journal::AppendLine(std::string_view beginning, CommandSpool& commands,
                         std::error_code& error) {
    std::string line(beginning);
    const bool isWritten = commands.CopyTo([&](std::string_view piece) {
        line += piece;
        if (line.size() < kMostAtOnce) return true;
        return m_file->Append(std::exchange(line, {}), error);
    });
    if (!isWritten && !error) error = std::make_error_code(std::errc::io_error);
    return isWritten && m_file->Append(line.append(kLineEnd), error);
}

void Journal::Add(FileFacts facts, CommandSpool& commands) {
    std::string beginning = OpenFileJson(facts);
    beginning.append(kCommandsMember).append("[");
    const std::uint64_t arraySize = commands.Size() + 2;
    // The array's first bracket ends the beginning.
    const std::uint64_t offsetInLine = beginning.size() - 1;

    const std::lock_guard lock(m_mutex);
    FileEntry entry;
    entry.facts = std::move(facts);
    std::error_code error;
    if (!m_isBroken && AppendLine(beginning, commands, error)) {
        if (!commands.IsEmpty()) {
            entry.commands = {m_content.get(), m_size + offsetInLine, arraySize};
        }
        m_size += offsetInLine + arraySize + kLineEnd.size() - 1;
    } else {
        if (!m_error) m_error = error;
        // Half a line would make the next one unreadable, too.
        m_isBroken = m_isBroken || !m_file->Truncate(m_size);
    }
    m_entries.push_back(std::move(entry));
}

void Journal::AddKept(FileEntry entry) {
    const std::lock_guard lock(m_mutex);
    m_entries.push_back(std::move(entry));
}

}  // namespace quillet::migrate
