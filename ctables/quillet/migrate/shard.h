// Slices of an archive, for runs on several machines.
#ifndef QUILLET_MIGRATE_SHARD_H
#define QUILLET_MIGRATE_SHARD_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillet::migrate {

/// One of `count` slices; the first has the index 1.
struct Shard {
    std::uint32_t index = 1;
    std::uint32_t count = 1;
};

/// The FNV-1a hash of 64 bits. The same in all versions and on all machines: which slice a file
/// belongs to must not depend on where the slice is worked on.
[[nodiscard]] std::uint64_t StableHash(std::string_view bytes);

/// True when the file with this path, relative to the archive's folder, belongs to the slice.
[[nodiscard]] bool IsInShard(std::string_view path, const Shard& shard);

/// Reads "I/N" with 1 <= I <= N; nothing for any other text.
[[nodiscard]] std::optional<Shard> ParseShard(std::string_view text);

/// "I-of-N", as it stands in file names.
[[nodiscard]] std::string LabelOf(const Shard& shard);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_SHARD_H
