// What a conversion leaves out, for the user to be told.
#ifndef QUILLET_PARSER_WARNING_H
#define QUILLET_PARSER_WARNING_H

#include <string>

namespace quillet {

/// What was left out. The driver has the words for each.
enum class WarningKind {
    kObsoleteSubcommand,  ///< A subcommand that has no modern counterpart.
    kUnknownSubcommand,   ///< A subcommand whose word is none.
    kObsoleteFormat,      ///< A FORMAT of an old form.
};

/// One warning of a command, as data: equal warnings are told by their values, not by their words.
struct Warning {
    WarningKind kind = WarningKind::kObsoleteSubcommand;
    std::string name;  ///< The subcommand, in the bytes of the input; empty where the kind says it.

    bool operator==(const Warning&) const = default;
};

}  // namespace quillet

#endif  // QUILLET_PARSER_WARNING_H
