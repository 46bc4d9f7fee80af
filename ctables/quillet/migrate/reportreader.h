// Reads the report that was written as JSON.
#ifndef QUILLET_MIGRATE_REPORTREADER_H
#define QUILLET_MIGRATE_REPORTREADER_H

#include <cstdint>
#include <string>

#include "migrate/reportdata.h"
#include "migrate/systemfiles.h"

namespace quillet::migrate {

/// A text, or a gap between two, that is longer than this is refused before it fills the memory.
inline constexpr std::uint64_t kLongestText = 256UL * 1024 * 1024;

/// Reads a report, whatever its layout, but for its commands and findings: the files' entries tell
/// where in `file` these stand. False with `error` set when it is no such report: every member that
/// is known is looked at, those of commands too, and the first that holds what it cannot hold is
/// named. Keeps no more than the result and a single string of the text.
[[nodiscard]] bool ReadJsonReport(const StoredFile& file, Report& report, std::string& error,
                                  std::uint64_t longestText = kLongestText);

/// The same without a look at commands and findings, most of the text: neither are they looked
/// at, nor do the files' entries tell which errors and codes they have.
[[nodiscard]] bool ReadFilesOfReport(const StoredFile& file, Report& report);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_REPORTREADER_H
