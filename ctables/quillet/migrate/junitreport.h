// The report in the XML that build servers read.
#ifndef QUILLET_MIGRATE_JUNITREPORT_H
#define QUILLET_MIGRATE_JUNITREPORT_H

#include <string>
#include <string_view>

#include "migrate/reportdata.h"
#include "quillet.h"

namespace quillet::migrate {

/// `text`, UTF-8, as it may stand in an attribute or between tags. Characters that XML does not
/// know become U+FFFD, line ends and tabs are written by number so that attributes keep them.
[[nodiscard]] std::string EscapeXml(std::string_view text);

/// Writes a test suite for each file and in it a test case for each command that was not just
/// copied; for a file that failed or was skipped a single one that says so. False when `output`
/// fails or commands cannot be read.
[[nodiscard]] bool WriteJunitReport(const Report& report, TextOutput& output);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_JUNITREPORT_H
