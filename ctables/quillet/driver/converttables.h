// The conversion of one TABLES command.
#ifndef QUILLET_DRIVER_CONVERTTABLES_H
#define QUILLET_DRIVER_CONVERTTABLES_H

#include "driver/commandresult.h"
#include "driver/outputfile.h"
#include "parser/tbtrtablescommand.h"
#include "platform/codepage.h"
#include "quillet.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet {

/// Writes the CTABLES frame with the converted command, or with the reason why there is none,
/// and tells `listener` the result, of which it gives the details back. The source, commented
/// out, has been written before.
///
/// `pSequence` is rewound to its first token and borrowed; null when the command was too large
/// to keep its tokens. A command that needs too much memory, of its budget or of the system's, is
/// reported as too large. `lineOffset` is the number of file lines before the command.
CommandResult ConvertTables(const CodePage& codePage, TAVQTokenSequence* pSequence, OutputFile& out,
                            long lineOffset, ConversionListener& listener);

/// Writes `entry` as two starred lines: where, then why. Nothing for an entry without a kind;
/// for a kind that there is not, the first line alone, behind an assertion.
void ReportTablesFailure(const ReportEntry& entry, OutputFile& out, long lineOffset);

}  // namespace quillet

#endif  // QUILLET_DRIVER_CONVERTTABLES_H
