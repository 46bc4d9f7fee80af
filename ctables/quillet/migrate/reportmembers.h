// What each member of a JSON report may hold. Whoever reads a report asks here, for a report may
// have been written by anybody.
#ifndef QUILLET_MIGRATE_REPORTMEMBERS_H
#define QUILLET_MIGRATE_REPORTMEMBERS_H

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "migrate/reportdata.h"

namespace quillet::migrate {

// What a report calls itself.
inline constexpr std::string_view kFormat = "quillet-report";
inline constexpr std::int64_t kFormatVersion = 2;

/// The objects and arrays of a report.
enum class ReportPart {
    kReport,
    kTotals,
    kShard,
    kFiles,  ///< An array of files.
    kFile,
    kFindings,  ///< An array of findings.
    kFinding,
    kMacros,    ///< An array of macros, which are looked at no further.
    kCommands,  ///< An array of commands.
    kCommand,
    kWarnings,  ///< An array of texts.
    kSignOffs,  ///< An array of sign-offs.
    kSignOff,   ///< Of a report, or of a file that holds nothing else.
    kSinceLastRun,
    kChanges,
    kLines,   ///< An array of numbers of lines.
    kUnknown  ///< What a later version may have added, and all that is inside of it.
};

enum class MemberKind {
    kAnything,
    kTruth,
    kText,
    kTextOrNull,
    kName,  ///< A text that is kept in memory. The next ones are such texts, too:
    kFormatName,
    kPath,     ///< Of a file below a folder: no part of it is empty, "." or "..".
    kRawPath,  ///< The same, of the form that `PercentEncode` makes.
    kFileOutcome,
    kResultState,
    kCommandOutcome,
    kFindingKind,
    kSignOffState,
    kTextHash,  ///< Of a command's text.
    kDate,      ///< A text such as `FormatTime` makes.
    kVersion,   ///< Of the format.
    kCount,     ///< How many of something, or the number of a line.
    kBytes,     ///< A file's size.
    kByteSum,   ///< That of many files.
    kTime,      ///< Seconds since 1970, before or after.
    kColumn,    ///< The number of a column.
    kSeconds,   ///< How long something took.
    kSlice,     ///< The number of a slice, or how many there are.
    kObject,
    kObjectOrNull,
    kArray
};

struct Member {
    std::string_view name;
    MemberKind kind = MemberKind::kAnything;
    ReportPart inner = ReportPart::kUnknown;  ///< What it is, for objects and arrays.
};

/// The members that are known of `part`, an object; none for anything else.
[[nodiscard]] std::span<const Member> MembersOf(ReportPart part);

/// The one of them that has this name; null when none is known.
[[nodiscard]] const Member* FindMember(ReportPart part, std::string_view name);

/// What the elements of `part`, an array, are.
[[nodiscard]] Member ElementOf(ReportPart part);

// Numbers of a report are sums of these, and sums of sums, and go through programs that hold
// numbers as floating point. 2 to the 53rd is more of anything than an archive can hold.
inline constexpr std::int64_t kMostCount = (std::int64_t{1} << 53) - 1;

/// The longest text of the kind `kName`, and the longest path, in bytes. A path may be written with
/// three bytes for one, which has to be a name still.
inline constexpr std::size_t kMostNameBytes = 1024UL * 1024;
inline constexpr std::size_t kMostPathBytes = kMostNameBytes / 4;

/// What is wrong with `value` as that of a member of this kind, to be read after the member's name:
/// "is not true or false". Empty when nothing is. Objects and arrays are not looked into.
[[nodiscard]] std::string ProblemOf(MemberKind kind, const nlohmann::json& value);

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
