// Reads the commands, findings and macros of a report, one at a time.
#ifndef QUILLET_MIGRATE_STOREDFACTS_H
#define QUILLET_MIGRATE_STOREDFACTS_H

#include <functional>

#include "migrate/reportdata.h"

namespace quillet::migrate {

/// Calls `take` for each of a file's commands, in order; one at a time is kept. False when they
/// cannot be read, or hold what they cannot have held when the report was read.
[[nodiscard]] bool ForEachCommand(const ArrayPlace& place,
                                  const std::function<void(const CommandFacts&)>& take);

/// The same for its findings.
[[nodiscard]] bool ForEachFinding(const ArrayPlace& place,
                                  const std::function<void(const FindingFacts&)>& take);

/// The same for its macros; of their calls only the outcomes are read.
[[nodiscard]] bool ForEachMacro(const ArrayPlace& place,
                                const std::function<void(const MacroFacts&)>& take);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_STOREDFACTS_H
