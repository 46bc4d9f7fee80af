// What can go wrong with macros, as data, and its words.
#ifndef QUILLET_MACRO_FAULT_H
#define QUILLET_MACRO_FAULT_H

#include <string>
#include <string_view>

namespace quillet::macro {

enum class FaultKind : int {
#define QUILLET_MACRO_FAULT(kind, name, message) kind,
#include "macro/faults.def"
};

/// One thing that went wrong. Plain data.
struct Fault {
    FaultKind kind = FaultKind::kUnclosedDefinition;
    /// The macro, argument, statement, function or path in question; empty where there is none.
    std::string name;
    /// Where: a line from 1, of `file`. For what a call does wrong, the line in the definition that
    /// it went wrong in; where the call itself is wrong, its own.
    long line = 0;
    /// The name by which `line`'s file was included; empty for the file that was expanded.
    std::string file;
};

/// The short name of a kind: lower-case words and hyphens.
[[nodiscard]] std::string_view NameOf(FaultKind kind);

/// The whole reason, with the line: "a loop makes too many passes (line 12)".
[[nodiscard]] std::string ReasonText(const Fault& fault);

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_FAULT_H
