// A line of the journal: what is known about one result, and how it is written and read.
#ifndef QUILLET_MIGRATE_JOURNALRECORD_H
#define QUILLET_MIGRATE_JOURNALRECORD_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/contenthash.h"
#include "migrate/includelookup.h"
#include "migrate/reportdata.h"

namespace quillet::migrate {

/// What a result was made of, and what came out.
struct ResultIdentity {
    ContentHash source;
    ContentHash result;
    std::string version;      ///< Of the program.
    std::string options;      ///< See `ResultOptions`.
    bool isAccepted = false;  ///< Someone else made what it holds, and it was accepted as it is.

    friend bool operator==(const ResultIdentity&, const ResultIdentity&) = default;
};

/// Where the commands of a file, or its findings, were put, as the text of a JSON array on one
/// line.
struct StoredArray {
    enum class Place {
        kNowhere,  ///< There are none, or they could not be stored.
        kJournal,
        kReport,  ///< In the JSON report that belongs to the journal.
    };

    Place place = Place::kNowhere;
    std::uint64_t offset = 0;  ///< In bytes.
    std::uint64_t length = 0;
    ContentHash hash;  ///< Whoever reads them has to compare it: files change.
};

struct JournalRecord {
    FileFacts facts;  ///< Those of the conversion; what became of the result is not among them.
    ResultIdentity identity;
    StoredArray commands;
    StoredArray findings;
    /// False for those of version 0.1, whose facts tell nothing about findings.
    bool hasFindings = true;
    StoredArray macros = {};
    /// What the result, and what is told of it, depend on beside the source.
    std::vector<IncludeLookup> includes = {};
};

/// The record as a line with its line feed.
[[nodiscard]] std::string FormatRecord(const JournalRecord& record);

/// A line (without its line feed) of this many bytes or more is no record.
inline constexpr std::size_t kLongestRecord = 1024UL * 1024;

/// Reads a line, without its line feed. Nothing when it is damaged or of a form that is not known;
/// what a record says about a file is therefore whole, but it may be about a file of long ago.
[[nodiscard]] std::optional<JournalRecord> ParseRecord(std::string_view line);

/// Reads a journal that is handed over in pieces of any size. Lines that are no records, such as
/// those that hold commands, are passed over, and so is one without its line feed. Keeps no more
/// than one record.
class JournalReader {
public:
    /// `take` gets one record after the other.
    explicit JournalReader(std::function<void(JournalRecord)> take) : m_take(std::move(take)) {}

    void Add(std::string_view piece);
    /// The number of bytes up to the last line feed, that included.
    [[nodiscard]] std::uint64_t EndOfLines() const { return m_endOfLines; }

private:
    std::function<void(JournalRecord)> m_take;
    std::string m_line;  // the beginning of a line that is not whole yet
    std::uint64_t m_position = 0;
    std::uint64_t m_endOfLines = 0;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_JOURNALRECORD_H
