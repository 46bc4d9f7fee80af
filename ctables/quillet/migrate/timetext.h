// Times as reports write them.
#ifndef QUILLET_MIGRATE_TIMETEXT_H
#define QUILLET_MIGRATE_TIMETEXT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillet::migrate {

// The times that can be written: those of the years 0 to 9999, in seconds since 1970.
inline constexpr std::int64_t kFirstTime = -62167219200;
inline constexpr std::int64_t kLastTime = 253402300799;

/// A time, in seconds since 1970, as "2026-11-21T03:00:00Z"; one that cannot be written becomes
/// the nearest that can.
[[nodiscard]] std::string FormatTime(std::int64_t secondsSince1970);

/// And back; nothing for any other text.
[[nodiscard]] std::optional<std::int64_t> ParseTime(std::string_view text);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_TIMETEXT_H
