// Writes a report in all its forms.
#ifndef QUILLET_MIGRATE_REPORTFILES_H
#define QUILLET_MIGRATE_REPORTFILES_H

#include <string>

#include "migrate/reportdata.h"
#include "migrate/targetfolder.h"

namespace quillet::migrate {

/// Writes the JSON file and the page into the folder and, unless `junitPath` is empty, the JUnit
/// file. None takes its name before those of the folder are whole. False with `error` set, a
/// whole sentence, when that fails. `threads` may be at work, of which more than two are of no
/// use.
[[nodiscard]] bool WriteReportFiles(const Report& report, const TargetFolder& target,
                                    const std::string& junitPath, unsigned threads,
                                    std::string& error);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_REPORTFILES_H
