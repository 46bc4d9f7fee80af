// The command line of quillet-migrate.
#ifndef QUILLET_MIGRATE_OPTIONS_H
#define QUILLET_MIGRATE_OPTIONS_H

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "migrate/layouts.h"
#include "migrate/macromodes.h"
#include "migrate/shard.h"

namespace quillet::migrate {

/// What the user wants.
struct Settings {
    std::string source;
    std::string target;
    std::vector<std::string> include;
    std::vector<std::string> exclude;
    bool copyOthers = false;
    Layout layout = Layout::kAuto;
    std::vector<std::string> batchInclude;  ///< Of files that are in batch layout.
    bool endAtBlankLines = false;
    MacroMode macros = MacroMode::kReport;
    bool dryRun = false;
    bool force = false;
    bool acceptEdited = false;
    bool isQuiet = false;
    unsigned jobs = 1;
    std::optional<Shard> shard;
    std::string encoding;  ///< Of files that are not UTF-8; empty for that of the user's locale.
    /// Of those whose names match a pattern; the last that matches counts.
    std::vector<std::pair<std::string, std::string>> encodings;
    bool toUtf8 = false;
    std::string junitPath;             ///< Empty for none.
    std::vector<std::string> reports;  ///< To be joined; when there are any, nothing is migrated.
};

struct CommandLine {
    std::optional<Settings> settings;  ///< What to do; when there is nothing, `text` tells why.
    std::string text;                  ///< For standard output, or about an error.
    bool isError = false;
};

/// Reads what stands after the program's name.
[[nodiscard]] CommandLine ParseCommandLine(std::vector<std::string> arguments);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_OPTIONS_H
