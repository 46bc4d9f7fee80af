// What the report tells of the macros of a file.
#ifndef QUILLET_MIGRATE_MACROREPORT_H
#define QUILLET_MIGRATE_MACROREPORT_H

#include <functional>
#include <string>
#include <vector>

#include "migrate/arrayspool.h"
#include "migrate/legacysearch.h"
#include "migrate/reportdata.h"
#include "quillet.h"

namespace quillet::migrate {

/// Gathers what the calls of a file came to, or would come to.
class MacroCollector final : public ExpansionListener {
public:
    using HintFinder = std::function<std::string(const CommandReport& report)>;

    /// `expansion` is borrowed; `hintFor` gives the hint for a command that was not converted.
    MacroCollector(const MacroExpansion& expansion, FindingEncoding encoding, HintFinder hintFor)
        : m_expansion(expansion),
          m_encoding(encoding),
          m_hintFor(std::move(hintFor)),
          m_calls(expansion.calls.size()) {}

    void OnExpandedCommand(const ExpandedCommand& command) override;

    /// Adds the macros that hold legacy commands, and those whose calls give some, to `spool`, and
    /// their numbers to `facts`. To be called once, at the end.
    void Finish(FileFacts& facts, ArraySpool& spool);

private:
    enum class CallOutcome : int { kNothing, kConverted, kFailed, kNoSyntax };

    struct KnownCall {
        CallOutcome outcome = CallOutcome::kNothing;
        std::string json;
    };

    [[nodiscard]] static CallOutcome OutcomeOf(const ExpandedCommand& command);
    [[nodiscard]] std::vector<bool> FindShown() const;
    [[nodiscard]] std::string CallJson(std::size_t index) const;
    void Count(std::size_t index, FileFacts& facts) const;

    const MacroExpansion& m_expansion;
    FindingEncoding m_encoding;
    HintFinder m_hintFor;
    std::vector<KnownCall> m_calls;  // as in the list of calls
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_MACROREPORT_H
