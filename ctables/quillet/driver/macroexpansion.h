// The calls of a text, by the commands that they stand in.
#ifndef QUILLET_DRIVER_MACROEXPANSION_H
#define QUILLET_DRIVER_MACROEXPANSION_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "quillet.h"

namespace quillet {

/// A command with calls: the bytes [begin, end) of the text, with its period.
struct CommandWithCalls {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t firstCall = 0;  ///< Its place in the list of all calls.
    std::size_t callCount = 0;
};

/// The commands of a text that hold calls, in its order.
[[nodiscard]] std::vector<CommandWithCalls> CommandsWithCalls(const MacroExpansion& expansion);

/// The command with every call replaced that could be expanded. In batch layout each command of
/// it that ends in a period is followed by one that begins in the first column: the lines of a
/// body are indented, but its commands are commands of their own.
[[nodiscard]] std::string ExpandedTextOf(std::string_view text, const MacroExpansion& expansion,
                                         const CommandWithCalls& command, const CodePage& codePage,
                                         bool batchMode);

/// False when `text` can hold no legacy command.
[[nodiscard]] bool MayHoldLegacyCommand(std::string_view text);

/// What there is to tell of the legacy commands in the body of a macro. The findings are
/// `kMacroBody` and count no calls. `bodyLine` is the line on which the body begins.
[[nodiscard]] LegacyFindings FindInBody(std::string_view name, std::string_view body, long bodyLine,
                                        const Options& options, const CodePage& codePage);

}  // namespace quillet

#endif  // QUILLET_DRIVER_MACROEXPANSION_H
