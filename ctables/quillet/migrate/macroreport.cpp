#include "migrate/macroreport.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "migrate/jsonreport.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kNoSyntaxReason = "its expansion is no syntax";
constexpr std::string_view kLeft = "left";

void AddElement(std::string_view element, std::string& elements) {
    if (!elements.empty()) elements += ',';
    elements += element;
}

}  // namespace

// One that the conversion has not seen is not converted either.
MacroCollector::CallOutcome MacroCollector::OutcomeOf(const ExpandedCommand& command) {
    if (!command.isConverted) return CallOutcome::kNoSyntax;
    const bool isAllConverted = std::all_of(
        command.found.commands.begin(), command.found.commands.end(),
        [](const LegacyCommand& found) { return found.outcome == LegacyOutcome::kConverted; });
    return isAllConverted ? CallOutcome::kConverted : CallOutcome::kFailed;
}

void MacroCollector::OnExpandedCommand(const ExpandedCommand& command) {
    const CallOutcome outcome = OutcomeOf(command);
    MacroCallFacts facts;
    facts.firstLine = command.firstLine;
    facts.lastLine = command.lastLine;
    facts.outcome = outcome == CallOutcome::kConverted ? "converted"
                    : outcome == CallOutcome::kFailed  ? "failed"
                                                       : kLeft;
    if (outcome == CallOutcome::kNoSyntax) facts.reason = kNoSyntaxReason;
    bool isFirst = true;
    for (std::size_t index = 0; index < command.callCount; ++index) {
        const std::size_t place = command.firstCall + index;
        if (m_expansion.calls[place].fault) continue;
        if (isFirst) {
            facts.text = command.text;
            for (const CommandReport& report : command.commands) {
                AddElement(
                    CommandJson(report, m_encoding.encoding, m_encoding.pNamed, m_hintFor(report)),
                    facts.commands);
            }
            for (const Finding& finding : command.found.findings) {
                AddElement(FindingJson(finding, m_encoding.encoding, m_encoding.pNamed),
                           facts.findings);
            }
        }
        facts.sharesCommand = !isFirst;
        m_calls[place] = {outcome, MacroCallJson(facts, m_encoding.encoding, m_encoding.pNamed)};
        facts.text = {};
        facts.commands.clear();
        facts.findings.clear();
        isFirst = false;
    }
}

// The macros that the report shows: those with legacy commands, and those that become some.
std::vector<bool> MacroCollector::FindShown() const {
    std::vector<bool> areShown(m_expansion.macros.size());
    for (std::size_t index = 0; index < areShown.size(); ++index) {
        const DefinedMacro& macro = m_expansion.macros[index];
        areShown[index] = !macro.commands.empty();
    }
    for (std::size_t index = 0; index < m_calls.size(); ++index) {
        const MacroCall& call = m_expansion.calls[index];
        const bool wouldGiveSome =
            call.fault &&
            std::any_of(call.expanded.begin(), call.expanded.end(), [this](std::size_t macro) {
                return !m_expansion.macros[macro].commands.empty();
            });
        if (wouldGiveSome || m_calls[index].outcome != CallOutcome::kNothing) {
            areShown[call.macro] = true;
        }
    }
    return areShown;
}

std::string MacroCollector::CallJson(std::size_t index) const {
    if (!m_calls[index].json.empty()) return m_calls[index].json;
    const MacroCall& call = m_expansion.calls[index];
    MacroCallFacts facts;
    facts.firstLine = facts.lastLine = call.line;
    facts.outcome = call.fault ? kLeft : "nothing";
    if (call.fault) facts.reason = call.fault->reason;
    return MacroCallJson(facts, m_encoding.encoding, m_encoding.pNamed);
}

void MacroCollector::Count(std::size_t index, FileFacts& facts) const {
    const CallOutcome outcome = m_calls[index].outcome;
    const bool isLeft = m_expansion.calls[index].fault || outcome == CallOutcome::kNoSyntax;
    if (isLeft) ++facts.macroCallsLeft;
    if (outcome == CallOutcome::kConverted) ++facts.macroCallsConverted;
    if (outcome == CallOutcome::kFailed) ++facts.macroCallsFailed;
    if (isLeft || outcome != CallOutcome::kNothing) ++facts.macroCalls;
}

void MacroCollector::Finish(FileFacts& facts, ArraySpool& spool) {
    const std::vector<bool> areShown = FindShown();
    std::vector<std::string> calls(areShown.size());
    for (std::size_t index = 0; index < m_calls.size(); ++index) {
        const std::size_t macro = m_expansion.calls[index].macro;
        if (!areShown[macro]) continue;
        Count(index, facts);
        AddElement(CallJson(index), calls[macro]);
        m_calls[index].json = {};
    }
    for (std::size_t index = 0; index < areShown.size(); ++index) {
        if (!areShown[index]) continue;
        ++facts.listedMacros;
        spool.Add(MacroJson(m_expansion.macros[index], calls[index], m_encoding.encoding,
                            m_encoding.pNamed));
    }
}

}  // namespace quillet::migrate
