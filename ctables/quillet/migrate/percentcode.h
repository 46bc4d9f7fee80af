// Paths as texts that every reader takes, whatever bytes they hold.
#ifndef QUILLET_MIGRATE_PERCENTCODE_H
#define QUILLET_MIGRATE_PERCENTCODE_H

#include <optional>
#include <string>
#include <string_view>

namespace quillet::migrate {

/// Bytes of a path in ASCII: all but letters, digits and "-._~/" become "%" and two hexadecimal
/// digits.
[[nodiscard]] std::string PercentEncode(std::string_view bytes);

/// And back; nothing when `text` is no such form. Bytes that need not have been encoded may stand
/// in it either way.
[[nodiscard]] std::optional<std::string> PercentDecode(std::string_view text);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_PERCENTCODE_H
