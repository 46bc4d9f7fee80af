// Writes the report as JSON, which docs/report-format.md describes.
#ifndef QUILLET_MIGRATE_JSONREPORT_H
#define QUILLET_MIGRATE_JSONREPORT_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/reportdata.h"
#include "quillet.h"

namespace quillet::migrate {

/// The JSON object of a command that was not just copied; `encoding` is that of its texts, and of
/// `hint`, which a command that was not converted has unless it is empty.
[[nodiscard]] std::string CommandJson(const CommandReport& command, TextEncoding encoding,
                                      const CodePage* pNamed = nullptr, std::string_view hint = {});

/// The JSON object of a finding; `encoding` is that of its texts.
[[nodiscard]] std::string FindingJson(const Finding& finding, TextEncoding encoding,
                                      const CodePage* pNamed = nullptr);

/// A call as the report shows it, below its macro.
struct MacroCallFacts {
    long firstLine = 0;  ///< Of the command that it stands in.
    long lastLine = 0;
    std::string_view outcome;
    std::string_view reason;     ///< Why it is left; empty for all others.
    bool sharesCommand = false;  ///< An earlier call shows what the command came to.
    std::string_view text;       ///< The expanded command; empty for none.
    std::string findings = {};   ///< Elements of JSON arrays, joined by commas.
    std::string commands = {};
};

/// The JSON object of a call of a macro.
[[nodiscard]] std::string MacroCallJson(const MacroCallFacts& call, TextEncoding encoding,
                                        const CodePage* pNamed = nullptr);

/// The JSON object of a macro as one file knows it; `calls` are such objects, joined by commas.
[[nodiscard]] std::string MacroJson(const DefinedMacro& macro, std::string_view calls,
                                    TextEncoding encoding, const CodePage* pNamed = nullptr);

/// The JSON object of a file without its commands and findings and without the brace at its end, so
/// that more members can follow, beginning with a comma.
[[nodiscard]] std::string OpenFileJson(const FileEntry& file);

/// The same without what is known about how the file was read and about its sign-offs.
[[nodiscard]] std::string OpenShortFileJson(const FileEntry& file);

/// The JSON array of all sign-offs of a report, each with its path, those about no command of the
/// report the last.
[[nodiscard]] std::string AllSignOffsJson(const Report& report);

/// The JSON object of a whole report up to its files, whose array has just been opened.
[[nodiscard]] std::string OpenReportJson(const Report& report);

/// The names of a file's arrays, each with a comma before it.
inline constexpr std::string_view kFindingsMember = ",\"findings\":";
inline constexpr std::string_view kMacrosMember = ",\"macros\":";  ///< Only where there are any.
inline constexpr std::string_view kCommandsMember = ",\"commands\":";

/// Writes the JSON array of a file's commands, findings or macros without line ends, "[]" where it
/// has none. False when it cannot be read or not be written.
[[nodiscard]] bool CopyArray(const ArrayPlace& place, TextOutput& output);

/// Writes the whole report, one file a line. False when `output` fails or commands or findings
/// cannot be read. `pOffsets`, unless it is null, gets those of each file.
[[nodiscard]] bool WriteJsonReport(const Report& report, TextOutput& output,
                                   std::vector<ArrayOffsets>* pOffsets = nullptr);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_JSONREPORT_H
