// What an INCLUDE has found, for a record.
#ifndef QUILLET_MIGRATE_INCLUDELOOKUP_H
#define QUILLET_MIGRATE_INCLUDELOOKUP_H

#include <string>

#include "migrate/contenthash.h"

namespace quillet::migrate {

/// What a result depends on beside its source: what an INCLUDE has found.
struct IncludeLookup {
    std::string path;           ///< As it is written, in UTF-8.
    std::string includingFile;  ///< Below SOURCE; bytes, as is the next.
    std::string file;           ///< What was found; empty for nothing.
    ContentHash hash;           ///< Of its content.

    friend bool operator==(const IncludeLookup&, const IncludeLookup&) = default;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_INCLUDELOOKUP_H
