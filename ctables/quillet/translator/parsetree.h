// The entry of the translator: a TABLES command's parse tree becomes the commands that replace
// it.
#ifndef QUILLET_TRANSLATOR_PARSETREE_H
#define QUILLET_TRANSLATOR_PARSETREE_H

#include <memory>
#include <string>

#include "parser/tbtrparsenode.h"
#include "parser/tbtrtablescommand.h"
#include "platform/codepage.h"

namespace quillet {

/// Translates the tree that parsing `command` gave; the tree is used up.
///
/// On success `text` is the replacement: an MRSETS command with its period and line end, if the
/// command defines multiple-response groups, then the CTABLES command without a period. A null
/// tree succeeds with an empty text. On failure `text` is empty and the reason is the first
/// report of `command`: a kind from 5 on. There is no report when the table is empty or an
/// internal assertion has failed.
///
/// Nothing is read off `command` but the locations of its TABLE subcommands. Time is linear in
/// the tree and the text, and memory stays within a small multiple of them. A table that multiplied
/// out would have more than a million variables fails before anything is built, and one that asks
/// for more than the command's budget when it is reached. Throws `std::bad_alloc` alone.
[[nodiscard]] bool TranslateTablesCommand(NodeOwner root, TablesCommand& command,
                                          const CodePage& codePage, std::string& text);

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_PARSETREE_H
