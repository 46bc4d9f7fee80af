// What has become of the legacy commands of an archive since it was last looked at.
#ifndef QUILLET_MIGRATE_LASTRUN_H
#define QUILLET_MIGRATE_LASTRUN_H

#include <cstdint>
#include <vector>

#include "migrate/commandkeys.h"
#include "migrate/reportdata.h"
#include "migrate/targetfolder.h"

namespace quillet::migrate {

/// Compares the legacy commands of a file, `now`, with those that it had `before`, both by their
/// lines, and adds what is told to `changes` and `sums`. Equal texts are one command; one whose
/// text has changed is the one that stands in its place between such, if that is of the same type.
/// Cost: that of sorting.
void CompareCommands(const std::vector<KeyedCommand>& before, const std::vector<KeyedCommand>& now,
                     FileChanges& changes, ChangeSums& sums);

/// Compares `report` with the whole report that stands in its folder, and puts what it finds into
/// it. Where there is none, or one that is damaged, `report` tells nothing about an earlier run.
/// False when the commands of `report` cannot be read. Cost: reads all of the earlier report, but
/// parses commands only of files that have changed.
[[nodiscard]] bool CompareWithLastRun(const TargetFolder& target, Report& report);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_LASTRUN_H
