// The report as JSON, which docs/migrating.md describes: writing it and reading it again.
#ifndef QUILLET_MIGRATE_JSONREPORT_H
#define QUILLET_MIGRATE_JSONREPORT_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

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
/// read.
[[nodiscard]] bool WriteJsonReport(const Report& report, TextOutput& output);

/// Reads a report, whatever its layout, but for its commands: the files' entries tell where in
/// `file` these stand. False with `error` set when it is no such report. Keeps no more than the
/// result and a single string of the text.
[[nodiscard]] bool ReadJsonReport(const StoredFile& file, Report& report, std::string& error);

/// Reads the JSON object of a file that `text` stands at, and the line feed behind it. Nothing
/// when there is no such thing; `text` is then of no use any more.
[[nodiscard]] std::optional<FileEntry> ReadFileLine(StoredText& text);

/// Calls `take` for each of a file's commands, in order; one at a time is kept. False when they
/// cannot be read.
[[nodiscard]] bool ForEachCommand(const CommandsPlace& place,
                                  const std::function<void(const CommandFacts&)>& take);

/// Bytes of a path in a form that every JSON reader takes: all but letters, digits and "-._~/"
/// as "%" and two hexadecimal digits. And back; nothing when `text` is no such form.
[[nodiscard]] std::string PercentEncode(std::string_view bytes);
[[nodiscard]] std::optional<std::string> PercentDecode(std::string_view text);

/// A time as "2026-11-21T03:00:00Z". And back; 0 for any other text.
[[nodiscard]] std::string FormatTime(std::int64_t secondsSince1970);
[[nodiscard]] std::int64_t ParseTime(const std::string& text);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_JSONREPORT_H
