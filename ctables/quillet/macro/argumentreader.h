// Reads the arguments of a call.
#ifndef QUILLET_MACRO_ARGUMENTREADER_H
#define QUILLET_MACRO_ARGUMENTREADER_H

#include <cstddef>
#include <string>
#include <vector>

#include "macro/argumentlist.h"
#include "macro/fault.h"
#include "macro/markedtext.h"
#include "platform/codepage.h"

namespace quillet::macro {

/// An argument that a call gives.
struct GivenArgument {
    std::size_t index = 0;  ///< In the macro's list.
    MarkedText value;       ///< As it stands in the call, on one line; no call in it is expanded.
};

/// What a call gives, in its order; of an argument that is given twice the later counts. The
/// positional arguments come first and are the first of the list.
struct GivenArguments {
    std::vector<GivenArgument> arguments;
    std::size_t positionalCount = 0;
};

/// Reads the arguments that stand after the macro's name, from `position` on, in `command`, which
/// ends where the command does, without its period. Sets `position` after the last byte that
/// belongs to the call. False and a fault without line when they cannot be read. Linear in what is
/// read.
[[nodiscard]] bool ReadArguments(const CodePage& codePage, const ArgumentList& list,
                                 const MarkedView& command, std::size_t& position,
                                 GivenArguments& given, Fault& fault);

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_ARGUMENTREADER_H
