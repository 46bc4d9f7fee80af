// What became of the functions of a table.
#ifndef QUILLET_OUTLINE_ACCOUNTSTATISTICS_H
#define QUILLET_OUTLINE_ACCOUNTSTATISTICS_H

#include <vector>

#include "outline/accountbuilder.h"
#include "outline/accounttotals.h"
#include "outline/tablepair.h"

namespace quillet::outline {

/// Enters all functions of a pair of tables, and counts them in `tally`. `totaled` is what
/// `AccountForTotals` gave.
void AccountForStatistics(const TablePair& tables, const std::vector<TotaledVariable>& totaled,
                          AccountBuilder& builder, Tally& tally);

/// The same for a table that has not been written, all of whose functions are lost, ...
void AccountForLostStatistics(const TableOutline& asked, AccountBuilder& builder, Tally& tally);

/// ... and for one that was not asked for.
void AccountForExtraStatistics(const TableOutline& written, AccountBuilder& builder, Tally& tally);

/// The dimension that carries the statistics of the new table; where it has none, the one that
/// would.
[[nodiscard]] Axis StatisticsAxis(const TablePair& tables);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ACCOUNTSTATISTICS_H
