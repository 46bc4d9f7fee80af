// What each member of a JSON report may hold. Whoever reads a report asks here, for a report may
// have been written by anybody.
#ifndef QUILLET_MIGRATE_REPORTMEMBERS_H
#define QUILLET_MIGRATE_REPORTMEMBERS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "migrate/reportdata.h"

namespace quillet::migrate {

// What a report calls itself.
inline constexpr std::string_view kFormat = "quillet-report";
inline constexpr std::int64_t kFormatVersion = 1;

/// The objects and arrays of a report.
enum class ReportPart {
    kReport,
    kTotals,
    kShard,
    kFiles,     ///< An array of files.
    kFile,      ///< The object that stands alone on a line of a journal, too.
    kCommands,  ///< An array of commands.
    kCommand,
    kWarnings,  ///< An array of texts.
    kUnknown    ///< What a later version may have added, and all that is inside of it.
};

enum class MemberKind {
    kAnything,
    kTruth,
    kName,     ///< A text that is kept in memory, or one of a few that are known.
    kText,     ///< Any other text.
    kDate,     ///< A text such as `FormatTime` makes.
    kCount,    ///< How many of something, or the number of a line.
    kBytes,    ///< A file's size.
    kByteSum,  ///< That of many files.
    kTime,     ///< Seconds since 1970, before or after.
    kColumn,   ///< The number of a column.
    kSeconds,  ///< How long something took.
    kSlice,    ///< The number of a slice, or how many there are.
    kObject,
    kObjectOrNull,
    kArray
};

struct Member {
    std::string_view name;
    MemberKind kind = MemberKind::kAnything;
    ReportPart inner = ReportPart::kUnknown;  ///< What it is, for objects and arrays.
};

/// The member of `part`, an object, that has this name; null when none is known. Its place in the
/// list of all of them, below 32, goes to `index`.
[[nodiscard]] const Member* FindMember(ReportPart part, std::string_view name, std::size_t& index);

/// What the elements of `part`, an array, are.
[[nodiscard]] Member ElementOf(ReportPart part);

// Numbers of a report are sums of these, and sums of sums, and go through programs that hold
// numbers as floating point. 2 to the 53rd is more of anything than an archive can hold.
inline constexpr std::int64_t kMostCount = (std::int64_t{1} << 53) - 1;

/// The longest text of the kind `kName`, and the longest path, in bytes. A path may be written with
/// three bytes for one, which has to be a name still.
inline constexpr std::size_t kMostNameBytes = 1024UL * 1024;
inline constexpr std::size_t kMostPathBytes = kMostNameBytes / 4;

/// True when a member of this kind may have this value.
[[nodiscard]] bool MayHold(MemberKind kind, std::int64_t value);
[[nodiscard]] bool MayHold(MemberKind kind, std::uint64_t value);
[[nodiscard]] bool MayHold(MemberKind kind, double value);

/// How such a member is to look: "a whole number from 0 to 9007199254740991".
[[nodiscard]] std::string Describe(MemberKind kind);

/// The sums over all files that reports show, as long as they are in range.
class FileSums {
public:
    /// Adds a file's numbers, which are in range each for itself. The name of the member whose sum
    /// goes out of range; nothing when all is well.
    [[nodiscard]] std::optional<std::string_view> Add(const FileFacts& facts);

private:
    FileFacts m_sums;
    std::int64_t m_commands = 0;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_REPORTMEMBERS_H
