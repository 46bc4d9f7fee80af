#include "igraph/variableroles.h"

#include <algorithm>

namespace quillet::igraph {

std::vector<VariableRole> VariableRoles(const Specification& spec) {
    std::vector<VariableRole> roles;
    const auto add = [&roles](const VariableReference& reference, MeasurementLevel level) {
        if (reference.IsVariable() || reference.IsCaseNumber())
            roles.push_back({&reference, level});
    };
    const auto addDimension = [&add](const Dimension& dimension) {
        add(dimension.variable, dimension.level.value_or(MeasurementLevel::kScale));
    };
    // A pie sums its quantity up, whatever the level of the axis that it never draws.
    if (HoldsElement(spec, ChartElement::Kind::kPie) && !spec.summaryVariable.IsGiven()) {
        add(spec.y.variable, MeasurementLevel::kScale);
    } else {
        addDimension(spec.y);
    }
    addDimension(spec.x1);
    addDimension(spec.x2);
    addDimension(spec.color.dimension);
    addDimension(spec.style.dimension);
    addDimension(spec.size.dimension);
    if (spec.stack) add(spec.stack->variable, MeasurementLevel::kCategorical);
    if (spec.cluster) add(spec.cluster->variable, MeasurementLevel::kCategorical);
    add(spec.summaryVariable, MeasurementLevel::kScale);
    for (const VariableReference& panel : spec.panels) add(panel, MeasurementLevel::kCategorical);
    add(spec.pointLabel.variable, MeasurementLevel::kCategorical);
    add(spec.caseLabel.variable, MeasurementLevel::kCategorical);
    std::stable_sort(roles.begin(), roles.end(),
                     [](const VariableRole& left, const VariableRole& right) {
                         return left.pReference->position < right.pReference->position;
                     });
    return roles;
}

}  // namespace quillet::igraph
