// The commands that a person would see in a text, where the conversion has made others of it.
#ifndef QUILLET_DRIVER_MEANTCOMMANDS_H
#define QUILLET_DRIVER_MEANTCOMMANDS_H

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "driver/macrodefinitions.h"
#include "driver/sourcelines.h"
#include "driver/textcut.h"
#include "quillet.h"

namespace quillet {

/// A command that was not cut as such: it stands in another one's text.
struct MeantCommand {
    enum class Sort {
        kLegacy,     ///< A TABLES or IGRAPH command.
        kLost,       ///< Another command, in the text of a converted or failed legacy command.
        kSwallowed,  ///< Another command, which a blank line separates from that before it.
    };

    Sort sort = Sort::kLegacy;
    CommandType type = CommandType::kOrdinary;  ///< Of a legacy command.
    std::string_view name;                      ///< Of another command; a constant.
    std::size_t offset = 0;                     ///< Of its first byte in the text.
    std::size_t end = 0;                        ///< After its last byte, a period mostly.
    long line = 0;                              ///< Of its first byte, from 1.

    // What stands before it.
    bool isAfterPeriod = false;  ///< On the same line, after a period.
    bool isFirst = false;        ///< Nothing but comments in the command that was cut.
    char sign = '\0';            ///< In the first column of its line.
    long closedCommentLine = 0;  ///< If it is first: the last one before it; else 0.
    long commentAfterPeriodLine =
        0;                          ///< Where a period was kept from ending the command before it.
    long openCommandLine = 0;       ///< Where that command begins, as a person sees it.
    bool isAfterBlankLine = false;  ///< One stands between the two.
};

/// What to look for in an extent.
struct MeantCommandSearch {
    /// The place of a legacy command that was cut as such; none where there is none.
    std::optional<std::size_t> ownPlace;
    bool isLegacy = false;   ///< It was converted or failed.
    bool isInResult = true;  ///< Its text, or what was made of it, goes into the result.
};

/// Adds what is found in `extent` to `found`. `definitions` are those of the whole text. Linear in
/// the extent, apart from the search for its first definition.
void FindMeantCommands(const SourceLines& lines, const CommandExtent& extent, bool batchMode,
                       const std::vector<MacroDefinition>& definitions,
                       const MeantCommandSearch& search, std::vector<MeantCommand>& found);

/// The definition in whose body the byte at `offset` stands; null for none.
[[nodiscard]] const MacroDefinition* DefinitionAround(
    const std::vector<MacroDefinition>& definitions, std::size_t offset);

}  // namespace quillet

#endif  // QUILLET_DRIVER_MEANTCOMMANDS_H
