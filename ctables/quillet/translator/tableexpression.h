// The dimensions of a table: where the statistics are computed and shown, and how rows, columns
// and layers are written.
#ifndef QUILLET_TRANSLATOR_TABLEEXPRESSION_H
#define QUILLET_TRANSLATOR_TABLEEXPRESSION_H

#include <cstddef>
#include <cstdint>

#include "parser/tbtrparsenode.h"
#include "translator/outputsequence.h"
#include "translator/statistics.h"
#include "translator/totals.h"
#include "translator/translationcontext.h"

namespace quillet {

// Dimensions are numbered as the old command writes them: 1 rows, 2 columns, 3 layers; 0 stands
// for none of them. The functions below rely on the shape of the table (`TableView::HasShape`).

/// What `RemoveMarkers` returns when there are markers in two dimensions.
inline constexpr std::size_t kTwoDimensions = 4;

/// A dimension may have this many variables when it is multiplied out, no more.
inline constexpr std::uint64_t kMaxMultipliedLeaves = 1000000;

/// Takes all markers of the type `marker` (`TB_STATISTICS` or `TB_LABELS`) out of the table. A
/// dimension of markers alone becomes an empty slot. Returns the number of the dimension that
/// they were in; 0 when there are none, `kTwoDimensions` after an assertion as well.
[[nodiscard]] std::size_t RemoveMarkers(TbTrParseNode& table, NodeType marker);

/// The number of the dimension in which the statistics are computed: the one with the first
/// variable, in the order of the command, that is a scale variable, or an argument of a
/// function, or has a total that is one. Without any the columns, without columns the first
/// dimension that is there; 0 when no dimension is, and after an assertion.
[[nodiscard]] std::size_t FindStatsCompDim(const TbTrParseNode& table, const TotalRecords& records,
                                           const TableStatistics& statistics,
                                           const VariableTypes& types);

/// True when a dimension would have more than `kMaxMultipliedLeaves` variables when it is
/// multiplied out.
[[nodiscard]] bool IsTooLarge(const TbTrParseNode& table);

/// Appends a dimension that carries no statistics to `out`.
void WriteDimension(const TbTrParseNode& dimension, const VariableTypes& types,
                    OutputSequence& out);

/// Appends the dimension that carries the statistics to `out`:
/// multiplied out, and with the statistics of each term after its magnet variable. Returns the
/// first term's magnet variable. Throws `CommandTooLarge` when multiplying out makes more text than
/// the budget allows.
const TbTrParseNode* WriteStatisticsDimension(const TbTrParseNode& table, std::size_t statsCompDim,
                                              TableStatistics& statistics,
                                              const TranslationContext& context,
                                              OutputSequence& out);

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_TABLEEXPRESSION_H
