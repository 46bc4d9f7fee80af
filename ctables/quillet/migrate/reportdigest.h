// What the commands and findings of a report come to, found in one reading of them all.
#ifndef QUILLET_MIGRATE_REPORTDIGEST_H
#define QUILLET_MIGRATE_REPORTDIGEST_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "migrate/reportdata.h"

namespace quillet::migrate {

/// How often each name occurs.
using NameCounts = std::map<std::string, std::int64_t>;

/// Of one file.
struct FileDigest {
    /// Of the commands that were not converted, but for those in macros, which count as overlooked.
    NameCounts reasons;
    NameCounts codes;  ///< Of the findings.
    std::vector<MacroFacts> macros;
};

/// A command of a report.
struct CommandPlace {
    std::size_t file = 0;     ///< From 0, among all files of the report.
    std::size_t command = 0;  ///< From 0, among those that the report lists for the file.
};

/// Commands that failed for one reason at one place of the same text, up to names and literals, so
/// that a correction of one shows how to correct all.
struct FailureGroup {
    std::string reason;
    std::vector<CommandPlace> places;  ///< In the order of the report; at least one.
};

struct ReportDigest {
    std::vector<FileDigest> files;     ///< One for each file of the report.
    std::vector<FailureGroup> groups;  ///< In the order in which they are met first.
};

/// A legacy command, wherever it stands. Texts are UTF-8.
struct ListedCommand {
    std::string type;     ///< One of `kLegacyTypes`.
    std::string outcome;  ///< "converted", "failed", "unreadable" or "overlooked".
    std::int64_t firstLine = 0;
    std::int64_t lastLine = 0;
    std::string reason;  ///< For a failure, or the code of the finding; empty when converted.
    std::string message;
    std::string hint;              ///< What to change; empty for none.
    std::int64_t errorLine = 0;    ///< Or that of the cause; 0 for none.
    std::int64_t errorColumn = 0;  ///< 0 for none.
    std::int64_t generatedLine = 0;
    std::size_t warnings = 0;  ///< Their number.
    std::size_t group = 0;     ///< The number of its group, from 1; 0 for none.
};

/// Takes a legacy command of a file.
using TakeListedCommand = std::function<void(const FileFacts&, const ListedCommand&)>;

/// Fills `digest` and hands each legacy command that was found to `take`, once, those of a file by
/// their lines. False when commands or findings cannot be read. Keeps, beside `digest`, a hash for
/// each group and what one file has overlooked.
[[nodiscard]] bool ReadDigest(const Report& report, ReportDigest& digest,
                              const TakeListedCommand& take);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_REPORTDIGEST_H
