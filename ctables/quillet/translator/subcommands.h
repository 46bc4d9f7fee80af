// The subcommands beside the table expression: format, titles and sort order.
#ifndef QUILLET_TRANSLATOR_SUBCOMMANDS_H
#define QUILLET_TRANSLATOR_SUBCOMMANDS_H

#include "parser/tbtrparsenode.h"
#include "translator/outputsequence.h"
#include "translator/translationcontext.h"

namespace quillet {

/// Appends how empty and missing cells are shown to `out`, on a new line. False after an
/// assertion.
[[nodiscard]] bool WriteGlobalFormat(const GlobalSettings& settings, OutputSequence& out);

/// Appends title, caption and corner of the table of `group` to `out`, on a new line; nothing when
/// it has none.
void WriteTitles(const TbTrParseNode& group, const GlobalSettings& settings, OutputSequence& out);

/// Appends the sort order of the table of `group` to `out`: a categories subcommand for each sorted
/// variable, each on a new line.
///
/// `statsDimension` is the dimension that carries the statistics, `pFirstMagnet` the first
/// variable with statistics in it: a variable of another dimension is sorted by the counts of
/// that one; null asserts where it is needed, and the sort is by counts. Returns false after a
/// report (kind 6) or an assertion.
[[nodiscard]] bool WriteSort(const TbTrParseNode& group, const TbTrParseNode& statsDimension,
                             const TbTrParseNode* pFirstMagnet, const TranslationContext& context,
                             OutputSequence& out);

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_SUBCOMMANDS_H
