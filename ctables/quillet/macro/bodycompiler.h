// From the body of a macro to its program.
#ifndef QUILLET_MACRO_BODYCOMPILER_H
#define QUILLET_MACRO_BODYCOMPILER_H

#include <string_view>

#include "macro/argumentlist.h"
#include "macro/program.h"
#include "platform/codepage.h"

namespace quillet::macro {

/// The program of `body`, whose line breaks are LF. Where its statements do not fit their forms, or
/// more than `maxNesting` of them stand inside one another, the program has a fault, whose line
/// counts from 1 at the body's first line. Linear in the body, whatever its nesting.
[[nodiscard]] Program CompileBody(const CodePage& codePage, const ArgumentList& list,
                                  std::string_view body, int maxNesting);

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_BODYCOMPILER_H
