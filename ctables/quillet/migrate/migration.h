// A whole run, from the walk to the report.
#ifndef QUILLET_MIGRATE_MIGRATION_H
#define QUILLET_MIGRATE_MIGRATION_H

#include "migrate/options.h"

namespace quillet::migrate {

/// Migrates what `settings` say and returns the program's exit status. What it has to say goes
/// to standard error.
[[nodiscard]] int RunMigration(const Settings& settings);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_MIGRATION_H
