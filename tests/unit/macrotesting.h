// What the tests of macros share: a row is definitions and a call.
#ifndef QUILLET_TESTS_UNIT_MACROTESTING_H
#define QUILLET_TESTS_UNIT_MACROTESTING_H

#include <string>
#include <string_view>

#include "macro/expandfile.h"

namespace quillet::macro {

/// What comes after `definitions` when `calls` stands on the line after them, all expanded.
[[nodiscard]] inline std::string ExpandAfter(const std::string& definitions,
                                             const std::string& calls,
                                             const ExpansionOptions& options = {}) {
    const std::string source = definitions + "\n" + calls;
    const std::string text =
        ExpandedText(source, ExpandFile(source, options, /*pResolver=*/nullptr));
    if (!text.starts_with(definitions + "\n")) return "(definitions changed) " + text;
    return text.substr(definitions.size() + 1);
}

/// The names of all that went wrong, in definitions and then in calls, with their lines:
/// "step-is-zero 1".
[[nodiscard]] inline std::string FaultsOf(const FileExpansion& expansion) {
    std::string names;
    const auto add = [&names](const Fault& fault) {
        if (!names.empty()) names += ", ";
        names.append(NameOf(fault.kind)).append(" ").append(std::to_string(fault.line));
    };
    for (const Fault& fault : expansion.faults) add(fault);
    for (const Call& call : expansion.calls) {
        if (call.fault) add(*call.fault);
    }
    return names;
}

[[nodiscard]] inline std::string FaultsOf(const std::string& source) {
    return FaultsOf(ExpandFile(source, {}, /*pResolver=*/nullptr));
}

}  // namespace quillet::macro

#endif  // QUILLET_TESTS_UNIT_MACROTESTING_H
