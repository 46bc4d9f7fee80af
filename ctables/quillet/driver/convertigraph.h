// The conversion of one IGRAPH command.
#ifndef QUILLET_DRIVER_CONVERTIGRAPH_H
#define QUILLET_DRIVER_CONVERTIGRAPH_H

#include "driver/commandresult.h"
#include "driver/outputfile.h"
#include "platform/codepage.h"
#include "quillet.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet {

/// Writes the GGRAPH frame with the converted command, or with the reason why there is none,
/// and tells `listener` the result, of which it gives the details back. The source, commented
/// out, has been written before.
///
/// `pSequence` is rewound to its first token and borrowed; null when the command was too large
/// to keep its tokens. A command that needs too much memory, of its budget or of the system's, is
/// reported as too large. The code page and `lineOffset`, the number of file lines before the
/// command, are not used: no message here has a position.
CommandResult ConvertIgraph(const CodePage& codePage, TAVQTokenSequence* pSequence, OutputFile& out,
                            long lineOffset, ConversionListener& listener);

}  // namespace quillet

#endif  // QUILLET_DRIVER_CONVERTIGRAPH_H
