// Totals: variables of their own in the old command, a property of other variables in the new.
#ifndef QUILLET_TRANSLATOR_TOTALS_H
#define QUILLET_TRANSLATOR_TOTALS_H

#include <cstddef>
#include <map>
#include <string>

#include "parser/tbtrparsenode.h"
#include "translator/outputsequence.h"
#include "translator/translationcontext.h"

namespace quillet {

/// The totals of one table: which total each variable gets, by the variable's name in the new
/// command, in upper case. The total is the node that declares it in FTOTAL or PTOTAL. Totals
/// are written in the order of the names.
using TotalRecords = std::map<std::string, const TbTrParseNode*>;

/// Takes the totals out of a dimension and gives each to the variables that it totals: in
/// `records`, and as a node of type `TBI_FTOTALVAR` or `TBI_PTOTALVAR` with the total's name that
/// hangs on their own (`VariableView`). Its label stays with the declaration alone.
///
/// A following total (FTOTAL) belongs to what it is stacked after, a preceding one (PTOTAL) to
/// what it is stacked in front of. A variable keeps one total: a following one rather than a
/// preceding one. In `records`, a following total replaces what is there; a preceding one is
/// entered only for a name that has none. A dimension of totals alone becomes an empty slot.
///
/// `table` is the `TB_TABLE` node; an empty slot at `dimension` has no totals. Returns false
/// after a report (kinds 7 to 11) or an assertion; the tree is then of no further use. Throws
/// `CommandTooLarge` when the names of the totals take too many copies. Linear in the dimension.
[[nodiscard]] bool CollectTotals(TbTrParseNode& table, std::size_t dimension,
                                 const TranslationContext& context, TotalRecords& records);

/// Appends a categories subcommand for each total, each on a new line, to `out`. Variables with the
/// same total share a line. A total that was written before, for another table, is charged to the
/// budget; throws `CommandTooLarge`. False after an assertion.
[[nodiscard]] bool WriteTotalCategories(const TotalRecords& records,
                                        const TranslationContext& context, OutputSequence& out);

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_TOTALS_H
