// What is done about macros, as the user says.
#ifndef QUILLET_MIGRATE_MACROMODES_H
#define QUILLET_MIGRATE_MACROMODES_H

#include <optional>
#include <string_view>

namespace quillet::migrate {

enum class MacroMode {
    kReport,   ///< Results as without macros; the report tells what the calls would give.
    kExpand,   ///< Calls that become legacy commands are replaced by their conversion.
    kConvert,  ///< The bodies themselves are converted. Not offered yet.
};

/// The name that the command line and records use.
[[nodiscard]] std::string_view NameOf(MacroMode mode);
/// Nothing for a name that is none, and for what is not offered.
[[nodiscard]] std::optional<MacroMode> MacroModeOf(std::string_view name);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_MACROMODES_H
