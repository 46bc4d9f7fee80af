// The list of all legacy commands for spreadsheets.
#ifndef QUILLET_MIGRATE_CSVREPORT_H
#define QUILLET_MIGRATE_CSVREPORT_H

#include <string>
#include <string_view>

#include "migrate/reportdata.h"
#include "migrate/reportdigest.h"
#include "quillet.h"

namespace quillet::migrate {

/// `text`, UTF-8, as a quoted cell. One that a spreadsheet would take for a formula, and so might
/// run, gets an apostrophe before it; a NUL, at which some stop to read, becomes U+FFFD. Whoever
/// takes other signs than commas for the ends of cells may find formulas all the same.
[[nodiscard]] std::string CsvText(std::string_view text);

/// Writes the names of the columns and a row for each legacy command that was found, lines ending
/// in CR LF, with a byte-order mark, by which spreadsheets know UTF-8. All commands are read for
/// it, so `digest` is filled on the way. False when `output` fails or commands cannot be read.
[[nodiscard]] bool WriteCsvReport(const Report& report, TextOutput& output, ReportDigest& digest);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_CSVREPORT_H
