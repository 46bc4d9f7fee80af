// The dictionary of summary functions.
#ifndef QUILLET_TRANSLATOR_SUMMARYFUNCTIONS_H
#define QUILLET_TRANSLATOR_SUMMARYFUNCTIONS_H

#include <array>
#include <cstddef>
#include <string_view>

#include "translator/globalsettings.h"

namespace quillet {

/// What a summary function summarizes.
enum class SummaryKind : char {
    kCases = 'C',
    kResponses = 'R',
    kVariable = 'S',  ///< The values of a variable.
};

/// A summary function of the new command.
struct SummaryFunction {
    std::string_view name;  ///< Without "U" and base; empty: the old name is unknown.
    SummaryKind kind = SummaryKind::kCases;
    bool percent = false;  ///< A percentage: `name` says of what.

    bool operator==(const SummaryFunction&) const = default;
};

/// The new function for `name`, a function of the old command in upper case, which may be
/// abbreviated as every keyword may (see `MeansKeyword`). For percentages of cases and responses
/// the BASE and GBASE settings choose what 100 percent are: `multipleResponse` tells whether the
/// function is for a term with a multiple-response set.
[[nodiscard]] SummaryFunction LookUpSummaryFunction(std::string_view name, bool multipleResponse,
                                                    const GlobalSettings& settings);

/// How many functions the old command has.
inline constexpr std::size_t kSummaryFunctionCount = 25;

/// Their names, in full.
[[nodiscard]] std::array<std::string_view, kSummaryFunctionCount> SummaryFunctionNames();

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_SUMMARYFUNCTIONS_H
