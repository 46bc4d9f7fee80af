// The multiple-response groups of a command as sets.
#ifndef QUILLET_TRANSLATOR_MULTIPLERESPONSE_H
#define QUILLET_TRANSLATOR_MULTIPLERESPONSE_H

#include "parser/tbtrparsenode.h"
#include "platform/codepage.h"
#include "translator/outputsequence.h"

namespace quillet {

/// Writes the MRSETS command that defines the groups of `tree`, the root of a TABLES command, as
/// sets, without its final period, into `out`, which is empty. Nothing is written when there are
/// no groups. False after an assertion.
[[nodiscard]] bool WriteSetsCommand(const CodePage& codePage, const TbTrParseNode& tree,
                                    OutputSequence& out);

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_MULTIPLERESPONSE_H
