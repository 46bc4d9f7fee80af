// The report as JSON, which docs/migrating.md describes: writing it and reading it again.
#ifndef QUILLET_MIGRATE_JSONREPORT_H
#define QUILLET_MIGRATE_JSONREPORT_H

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/reportdata.h"
#include "migrate/storedtext.h"
#include "migrate/systemfiles.h"
#include "quillet.h"

namespace quillet::migrate {

/// The JSON object of a command that was not just copied; `encoding` is that of its texts.
[[nodiscard]] std::string CommandJson(const CommandReport& command, TextEncoding encoding);

/// The JSON object of a file without what concerns its commands and without the brace at its
/// end, so that more members can follow, beginning with a comma.
[[nodiscard]] std::string OpenFileJson(const FileFacts& facts);

/// The JSON object of a whole report up to its files, whose array has just been opened.
[[nodiscard]] std::string OpenReportJson(const Report& report);

/// The name that `OpenFileJson` gives to the array of commands, with a comma before it.
inline constexpr std::string_view kCommandsMember = ",\"commands\":";

/// Writes the JSON array of a file's commands without line ends, "[]" where it has none. False
/// when it cannot be read or not be written.
[[nodiscard]] bool CopyCommands(const CommandsPlace& place, TextOutput& output);

/// Writes the whole report, one file a line. False when `output` fails or commands cannot be
/// read. `pOffsets`, unless it is null, gets a number for each file: where its array of commands
/// begins, in bytes.
[[nodiscard]] bool WriteJsonReport(const Report& report, TextOutput& output,
                                   std::vector<std::uint64_t>* pOffsets = nullptr);

/// A text, or a gap between two, that is longer than this is refused before it fills the memory.
inline constexpr std::uint64_t kLongestText = 256UL * 1024 * 1024;

/// Reads a report, whatever its layout, but for its commands: the files' entries tell where in
/// `file` these stand. False with `error` set when it is no such report: every member that is
/// known is looked at, those of commands too, and the first that holds what it cannot hold is
/// named. Keeps no more than the result and a single string of the text.
[[nodiscard]] bool ReadJsonReport(const StoredFile& file, Report& report, std::string& error,
                                  std::uint64_t longestText = kLongestText);

/// Calls `take` for each of a file's commands, in order; one at a time is kept. False when they
/// cannot be read, or hold what they cannot have held when the report was read.
[[nodiscard]] bool ForEachCommand(const CommandsPlace& place,
                                  const std::function<void(const CommandFacts&)>& take);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_JSONREPORT_H
