// The assertions that a user's text can make fail. They are part of what the program does; any
// other that fails is a finding.
#ifndef QUILLET_FUZZ_REACHABLEASSERTIONS_H
#define QUILLET_FUZZ_REACHABLEASSERTIONS_H

#include <string_view>

namespace quillet::fuzz {

/// Whether any text can make this condition fail: those of the tokenizer.
[[nodiscard]] inline bool IsReachableByTokenizing(std::string_view condition) {
    return condition == "IsInvalidUnquoted( currChar.Code() )" ||
           // A number that is too large, or too close to zero.
           condition == "errno != ERANGE";
}

/// Whether a `TABLES` command can make this condition fail.
[[nodiscard]] inline bool IsReachableByTables(std::string_view condition) {
    return IsReachableByTokenizing(condition) ||
           // Markers in two dimensions.
           condition == "statsDisplayDim <= 3 && labelsDim <= 3";
}

}  // namespace quillet::fuzz

#endif  // QUILLET_FUZZ_REACHABLEASSERTIONS_H
