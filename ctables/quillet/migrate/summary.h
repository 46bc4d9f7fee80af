// What a run says about itself at its end.
#ifndef QUILLET_MIGRATE_SUMMARY_H
#define QUILLET_MIGRATE_SUMMARY_H

#include <string>
#include <string_view>

#include "migrate/reportdata.h"

namespace quillet::migrate {

/// `text` with every control character as "?": a file's name must not steer a terminal.
[[nodiscard]] std::string Printable(std::string_view text);

/// The lines about files that failed, some of them when there are many.
[[nodiscard]] std::string FormatFailures(const Report& report);

/// The lines that count files and commands.
[[nodiscard]] std::string FormatSummary(const Report& report);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_SUMMARY_H
