// The macros that a text defines, as far as it takes to say where their bodies are.
#ifndef QUILLET_DRIVER_MACRODEFINITIONS_H
#define QUILLET_DRIVER_MACRODEFINITIONS_H

#include <cstddef>
#include <string>
#include <vector>

#include "driver/sourcelines.h"
#include "driver/textcut.h"

namespace quillet {

/// One DEFINE ... !ENDDEFINE. Offsets count in the text's bytes.
struct MacroDefinition {
    std::string name;           ///< As it is written, with its exclamation mark if it has one.
    long line = 0;              ///< Of the word DEFINE, from 1.
    std::size_t bodyBegin = 0;  ///< After the list of arguments.
    std::size_t bodyEnd = 0;    ///< Of the word !ENDDEFINE.
    long calls = 0;             ///< How often the text names the macro after that.
    long firstCallLine = 0;     ///< From 1; 0 where it does not.
};

/// The definitions in `lines`, which `extents` cut, in order; they do not overlap. What stands in
/// DOCUMENT, in inline data that is ended, in literals and in comments is none, nor is one without
/// its end. Calls are not counted yet. Linear.
[[nodiscard]] std::vector<MacroDefinition> FindMacroDefinitions(
    const SourceLines& lines, const std::vector<CommandExtent>& extents);

/// Counts the calls of `definitions` in `extents`, which were cut in the layout that `batchMode`
/// tells. Names in comment commands are none. Linear.
void CountMacroCalls(const SourceLines& lines, const std::vector<CommandExtent>& extents,
                     bool batchMode, std::vector<MacroDefinition>& definitions);

/// True for extents whose text is searched at all: neither DOCUMENT nor inline data with an end.
[[nodiscard]] bool IsSearched(const CommandExtent& extent);

}  // namespace quillet

#endif  // QUILLET_DRIVER_MACRODEFINITIONS_H
