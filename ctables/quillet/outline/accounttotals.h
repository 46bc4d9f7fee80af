// What became of the totals of a table.
#ifndef QUILLET_OUTLINE_ACCOUNTTOTALS_H
#define QUILLET_OUTLINE_ACCOUNTTOTALS_H

#include <cstddef>
#include <vector>

#include "outline/accountbuilder.h"
#include "outline/tablepair.h"

namespace quillet::outline {

/// A variable, at its place in the table that was asked for, with a total.
struct TotaledVariable {
    std::size_t total = kNowhere;  ///< An index into `TableOutline::totals`.
    Axis axis = Axis::kNone;
    std::size_t node = kNowhere;
    std::size_t variable = kNowhere;  ///< A number of the pair of tables.
    bool isKept = false;              ///< The variable has this total in the new table.
};

/// Enters all totals, and gives what each of them totals, total by total. One for which there is
/// nothing is not among these, and neither is one that is an ordinary category in the new table.
///
/// A written total goes by the name of its variable, so that it is at each place of that variable,
/// and a variable has one.
[[nodiscard]] std::vector<TotaledVariable> AccountForTotals(const TablePair& tables,
                                                            AccountBuilder& builder);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ACCOUNTTOTALS_H
