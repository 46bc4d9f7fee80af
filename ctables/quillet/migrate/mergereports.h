// Joins the reports of several runs.
#ifndef QUILLET_MIGRATE_MERGEREPORTS_H
#define QUILLET_MIGRATE_MERGEREPORTS_H

#include <string>
#include <vector>

#include "migrate/options.h"
#include "migrate/reportdata.h"

namespace quillet::migrate {

/// One report of all files. It begins with the first run and lasts to the end of the last one.
/// False with `error` set when two tell about the same file, or a sum over all files goes out of
/// range. `names` name the reports in errors.
[[nodiscard]] bool JoinReports(std::vector<Report> reports, const std::vector<std::string>& names,
                               Report& joined, std::string& error);

/// The slices that are missing among the reports, a line each; empty when there are none.
[[nodiscard]] std::string MissingSlices(const std::vector<Report>& reports);

/// Reads the reports that `settings` name, writes the joined one and returns the program's exit
/// status, which is that of one run over everything.
[[nodiscard]] int MergeReports(const Settings& settings);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_MERGEREPORTS_H
