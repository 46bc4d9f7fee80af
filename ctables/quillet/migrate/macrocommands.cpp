#include "migrate/macrocommands.h"

#include "quillet.h"

namespace quillet::migrate {

bool IsOverlooked(const FindingFacts& finding) {
    return finding.kind == NameOf(FindingKind::kOverlooked);
}

void MacroCommands::Take(const FindingFacts& finding) {
    if (IsOverlooked(finding) && finding.code == NameOf(FindingCode::kMacroBody)) {
        m_firstLines.insert(finding.firstLine);
    }
}

bool MacroCommands::Hold(const CommandFacts& command) const {
    return m_firstLines.contains(command.firstLine);
}

}  // namespace quillet::migrate
