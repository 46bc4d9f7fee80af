// What an INCLUDE has found, for a record.
#ifndef QUILLET_MIGRATE_INCLUDELOOKUP_H
#define QUILLET_MIGRATE_INCLUDELOOKUP_H

#include <optional>
#include <string>
#include <vector>

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

/// A lookup that stands for the calls that other files make of macros of the file: it names no
/// file.
[[nodiscard]] inline IncludeLookup CallsLookup(const ContentHash& hash) {
    return {{}, {}, {}, hash};
}

[[nodiscard]] inline bool IsCallsLookup(const IncludeLookup& lookup) {
    return lookup.includingFile.empty();
}

/// The hash of the one that stands for calls; nothing when there is none.
[[nodiscard]] inline std::optional<ContentHash> CallsHashIn(
    const std::vector<IncludeLookup>& lookups) {
    for (const IncludeLookup& lookup : lookups) {
        if (IsCallsLookup(lookup)) return lookup.hash;
    }
    return std::nullopt;
}

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_INCLUDELOOKUP_H
