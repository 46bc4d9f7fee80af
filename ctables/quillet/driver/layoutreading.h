// How well a text reads in each of the two layouts.
#ifndef QUILLET_DRIVER_LAYOUTREADING_H
#define QUILLET_DRIVER_LAYOUTREADING_H

#include <optional>
#include <vector>

#include "driver/macrodefinitions.h"
#include "driver/sourcelines.h"
#include "driver/textcut.h"
#include "platform/codepage.h"
#include "quillet.h"

namespace quillet {

/// The layouts of a text side by side, each of them cut and read when it is first asked for.
class LayoutComparison {
public:
    /// Borrows all; `definitions` are the macros of the text, whose bodies do not count. They may
    /// be filled in after a cut, from which they come.
    LayoutComparison(const SourceLines& lines, const CodePage& codePage,
                     const std::vector<MacroDefinition>& definitions)
        : m_lines(lines), m_codePage(codePage), m_definitions(definitions) {}

    [[nodiscard]] const LayoutReading& Reading(bool batchMode);

    /// What the text is cut into in the layout that `batchMode` tells.
    [[nodiscard]] const TextCut& Cut(bool batchMode);

    /// True when `Reading` was asked for, by whomever.
    [[nodiscard]] bool IsRead(bool batchMode) { return Of(batchMode).reading.has_value(); }

    /// True when in the layout that `batchMode` tells at least nine in ten commands begin with a
    /// command word and there is no tokenizing error.
    [[nodiscard]] bool ReadsWell(bool batchMode);

    /// True when the text, read in the layout that `batchMode` tells, looks as if it was written
    /// for the other one: it reads well there, twice as many commands begin with a command word,
    /// and the periods are those of that layout.
    [[nodiscard]] bool IsForTheOther(bool batchMode);

private:
    struct Layout {
        std::optional<TextCut> cut;
        std::optional<LayoutReading> reading;
    };

    [[nodiscard]] Layout& Of(bool batchMode) { return batchMode ? m_batch : m_interactive; }

    const SourceLines& m_lines;
    const CodePage& m_codePage;
    const std::vector<MacroDefinition>& m_definitions;
    Layout m_interactive;
    Layout m_batch;
    std::optional<long> m_mostBatchCommands;  // asked for at each command that is overlooked
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_LAYOUTREADING_H
