// What a conversion leaves out, for the user to be told.
#ifndef QUILLET_PARSER_WARNING_H
#define QUILLET_PARSER_WARNING_H

#include <string>

namespace quillet {

/// What was left out.
enum class WarningKind {
#define QUILLET_WARNING(kind, message) kind,
#include "quillet-messages.def"
};

/// One warning of a command, as data: equal warnings are told by their values, not by their words.
struct Warning {
    WarningKind kind = WarningKind::kObsoleteSubcommand;
    std::string name;  ///< The subcommand, in the bytes of the input; empty where the kind says it.

    bool operator==(const Warning&) const = default;
};

}  // namespace quillet

#endif  // QUILLET_PARSER_WARNING_H
