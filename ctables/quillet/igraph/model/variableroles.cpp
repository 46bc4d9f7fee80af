#include "igraph/model/variableroles.h"

#include <algorithm>

namespace quillet::igraph {

std::vector<VariableRole> VariableRoles(const IgraphCommand& command) {
    std::vector<VariableRole> roles;
    const auto add = [&roles](const VariableReference& reference, MeasurementLevel level) {
        if (reference.IsVariable() || reference.IsCaseNumber())
            roles.push_back({&reference, level});
    };
    const auto addDimension = [&add](const Dimension& dimension) {
        add(dimension.variable, dimension.level.value_or(MeasurementLevel::kScale));
    };
    // A pie sums its quantity up, whatever the level of the axis that it never draws.
    if (HoldsElement(command, ChartElement::Kind::kPie) && !command.summaryVariable.IsGiven()) {
        add(command.y.variable, MeasurementLevel::kScale);
    } else {
        addDimension(command.y);
    }
    addDimension(command.x1);
    addDimension(command.x2);
    addDimension(command.color.dimension);
    addDimension(command.style.dimension);
    addDimension(command.size.dimension);
    if (command.stack) add(command.stack->variable, MeasurementLevel::kCategorical);
    if (command.cluster) add(command.cluster->variable, MeasurementLevel::kCategorical);
    add(command.summaryVariable, MeasurementLevel::kScale);
    for (const VariableReference& panel : command.panels)
        add(panel, MeasurementLevel::kCategorical);
    add(command.pointLabel.variable, MeasurementLevel::kCategorical);
    add(command.caseLabel.variable, MeasurementLevel::kCategorical);
    std::stable_sort(roles.begin(), roles.end(),
                     [](const VariableRole& left, const VariableRole& right) {
                         return left.pReference->position < right.pReference->position;
                     });
    return roles;
}

}  // namespace quillet::igraph
