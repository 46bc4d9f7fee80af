// The specification of a graph as its users hold it: an `IgraphCommand`, which is what the command
// says and no more, together with what has been worked out from it.
#ifndef QUILLET_IGRAPH_MODEL_IGRAPHSPEC_H
#define QUILLET_IGRAPH_MODEL_IGRAPHSPEC_H

#include <string>
#include <utility>
#include <vector>

#include "igraph/model/igraphcommand.h"
#include "igraph/model/variableroles.h"
#include "platform/commandbudget.h"

namespace quillet::igraph {

/// What is known of the graph that comes out, not of the command that asks for it.
class GraphSpec {
public:
    /// Sets the name under which the output lists the graph.
    void SetOutputLabel(const std::string& label) { m_outputLabel = label; }
    /// That name. A converter lists no graphs, so nothing but tests reads it.
    [[nodiscard]] const std::string& OutputLabel() const { return m_outputLabel; }

private:
    std::string m_outputLabel;
};

/// An IGRAPH command that has been understood: what it says, and what follows from that.
///
/// What follows is worked out once and borrows what the command says, so that this object can be
/// neither copied nor moved.
class iGraphSpec {
public:
    iGraphSpec() = default;
    iGraphSpec(const iGraphSpec&) = delete;
    iGraphSpec& operator=(const iGraphSpec&) = delete;
    ~iGraphSpec() = default;

    /// What the command may still ask for beyond its own size.
    [[nodiscard]] CommandBudget& Budget() { return m_budget; }

    [[nodiscard]] GraphSpec& getGGraphSpec() { return m_graphSpec; }

    /// The name given to the graph; empty when there is none.
    [[nodiscard]] std::string getViewName() const { return m_command.viewName; }

    /// Why the graph cannot be written in GPL, one line without its final period; empty when it
    /// can. Set by the generator.
    [[nodiscard]] std::string errorMessage() const { return m_errorMessage; }

    /// The variables of the graph, see `UsedNames`; empty before the command is complete.
    [[nodiscard]] std::string getUsedVarName() const { return m_usedNames; }

    /// The chart looks in command order, without the empty ones and NONE.
    [[nodiscard]] std::vector<std::string> getChartLooks() const;

    /// What the command says.
    [[nodiscard]] const IgraphCommand& Command() const { return m_command; }
    [[nodiscard]] IgraphCommand& Command() { return m_command; }

    /// True once defaults are filled in and the command has been found valid.
    [[nodiscard]] bool IsComplete() const { return m_isComplete; }

    /// Where the complete command says what data the graph needs.
    [[nodiscard]] const std::vector<VariableRole>& Roles() const { return m_roles; }

    /// Marks the command as complete. `roles` are the `VariableRoles` of `Command`, which does not
    /// change any more.
    void SetComplete(std::vector<VariableRole> roles);
    void SetErrorMessage(std::string message) { m_errorMessage = std::move(message); }

private:
    CommandBudget m_budget;
    IgraphCommand m_command;
    GraphSpec m_graphSpec;
    std::vector<VariableRole> m_roles;
    std::string m_usedNames;
    std::string m_errorMessage;
    bool m_isComplete = false;
};

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_MODEL_IGRAPHSPEC_H
