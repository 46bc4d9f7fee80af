// What a TABLES command asks for.
#ifndef QUILLET_OUTLINE_ASKEDCOMMAND_H
#define QUILLET_OUTLINE_ASKEDCOMMAND_H

#include <string>

#include "outline/tableoutline.h"
#include "platform/codepage.h"

namespace quillet::outline {

/// Reads a TABLES command as whoever wrote it meant it: every subcommand, also those that a
/// conversion drops, and those that a FORMAT which broke off takes along with it.
///
/// `text` is the command as it was converted, without the period that ends it. In interactive
/// layout a period before nothing but a comment on its line ends it here too, and what stands after
/// that is one remark. In batch layout (`isBatch`) a "+" or "-" that is its first character is
/// stepped over. Lines count from 1 within `text`.
///
/// - Global subcommands hold for all tables of the command, wherever they stand. Of a setting that
///   is given several times the last counts; of several declarations of one name, the first.
/// - Other subcommands belong to the table before them; STATISTICS and SORT before the first table
///   to that one.
/// - What stands on BREAK is read at the end of each table after it, and of the one right before.
///
/// Never fails: what does not fit is a remark, and reading goes on after it. A text that asks for
/// far more than it has bytes is read in part, with a remark. Linear, apart from what BREAK
/// repeats, which has a limit.
[[nodiscard]] CommandOutline ReadAskedCommand(const CodePage& codePage, const std::string& text,
                                              bool isBatch);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ASKEDCOMMAND_H
