// What the totals in a table's expression are totals of.
#ifndef QUILLET_OUTLINE_ASKEDTOTALS_H
#define QUILLET_OUTLINE_ASKEDTOTALS_H

#include <vector>

#include "outline/askednames.h"
#include "outline/tableoutline.h"
#include "platform/commandbudget.h"

namespace quillet::outline {

/// Adds a total to the table for each node with the role `kTotal`, in the order of dimensions and
/// nodes. The nodes have their roles. `names` and `declared` tell how the totals are declared; a
/// label that stands in several totals is charged to the budget. Linear.
///
/// A total that follows totals what stands before it, one that precedes what stands after it; other
/// totals and the marker of the statistics between them do not count.
void FindTotals(TableOutline& table, const AskedNames& names,
                const std::vector<DeclaredTotal>& declared, CommandBudget& budget);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ASKEDTOTALS_H
