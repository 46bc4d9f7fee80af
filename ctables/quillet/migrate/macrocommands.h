// Which commands of a file stand in the bodies of macros.
#ifndef QUILLET_MIGRATE_MACROCOMMANDS_H
#define QUILLET_MIGRATE_MACROCOMMANDS_H

#include <cstdint>
#include <set>

#include "migrate/reportdata.h"

namespace quillet::migrate {

/// True for a finding about a legacy command that the conversion has not seen.
[[nodiscard]] bool IsOverlooked(const FindingFacts& finding);

/// The commands that a conversion has met in the bodies of macros. The report lists them, but they
/// count as overlooked, for it has a finding about each as well. Nothing else that was overlooked
/// has met the conversion, though it may begin on the line of a command that has: so whoever counts
/// every legacy command once asks here, and not for lines of its own.
class MacroCommands {
public:
    /// To be called for all findings of a file, and first.
    void Take(const FindingFacts& finding);

    /// True for a command of the same file that is told of by one of these findings.
    [[nodiscard]] bool Hold(const CommandFacts& command) const;

private:
    std::set<std::int64_t> m_firstLines;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_MACROCOMMANDS_H
