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

/// The layouts of a text side by side, each of them read when it is first asked for.
class LayoutComparison {
public:
    /// Borrows all; `definitions` are the macros of the text, whose bodies do not count.
    LayoutComparison(const SourceLines& lines, const CodePage& codePage,
                     const std::vector<MacroDefinition>& definitions)
        : m_lines(lines), m_codePage(codePage), m_definitions(definitions) {}

    [[nodiscard]] const LayoutReading& Reading(bool batchMode) { return Read(batchMode).reading; }

    /// What the text is cut into in the layout that `batchMode` tells.
    [[nodiscard]] const TextCut& Cut(bool batchMode) { return Read(batchMode).cut; }

    /// True when in the layout that `batchMode` tells at least nine in ten commands begin with a
    /// command word and there is no tokenizing error.
    [[nodiscard]] bool ReadsWell(bool batchMode);

    /// True when the text, read in the layout that `batchMode` tells, looks as if it was written
    /// for the other one: it reads well there, twice as many commands begin with a command word,
    /// and the periods are those of that layout.
    [[nodiscard]] bool IsForTheOther(bool batchMode);

private:
    struct Layout {
        TextCut cut;
        LayoutReading reading;
    };

    [[nodiscard]] const Layout& Read(bool batchMode);

    const SourceLines& m_lines;
    const CodePage& m_codePage;
    const std::vector<MacroDefinition>& m_definitions;
    std::optional<Layout> m_interactive;
    std::optional<Layout> m_batch;
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_LAYOUTREADING_H
