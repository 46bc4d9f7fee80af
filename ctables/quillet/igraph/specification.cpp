#include "igraph/specification.h"

#include <algorithm>

namespace quillet::igraph {

Keyword ElementKeyword(ChartElement::Kind kind) {
    switch (kind) {
        case ChartElement::Kind::kScatter:
            return Keyword::kScatter;
        case ChartElement::Kind::kBar:
            return Keyword::kBar;
        case ChartElement::Kind::kArea:
            return Keyword::kArea;
        case ChartElement::Kind::kLine:
            return Keyword::kLine;
        case ChartElement::Kind::kPie:
            return Keyword::kPie;
        case ChartElement::Kind::kBox:
            return Keyword::kBox;
        case ChartElement::Kind::kErrorBar:
            return Keyword::kErrorBar;
        case ChartElement::Kind::kHistogram:
            break;
    }
    return Keyword::kHistogram;
}

bool HoldsElement(const Specification& spec, ChartElement::Kind kind) {
    return std::any_of(spec.elements.begin(), spec.elements.end(),
                       [kind](const ChartElement& element) { return element.kind == kind; });
}

bool HoldsFitLine(const Specification& spec) {
    return std::any_of(spec.fitLines.begin(), spec.fitLines.end(),
                       [](const FitLine& fitLine) { return fitLine.IsDrawn(); });
}

bool IsSummaryElement(const ChartElement& element) {
    return element.kind == ChartElement::Kind::kBar || element.kind == ChartElement::Kind::kArea ||
           element.kind == ChartElement::Kind::kLine;
}

bool ShowsRawValues(const Specification& spec, const ChartElement& element) {
    return IsSummaryElement(element) && !element.summary && spec.y.variable.IsVariable() &&
           spec.y.IsScale() && (spec.x1.variable.IsCaseNumber() || spec.x1.IsScale());
}

VariableReference PieQuantity(const Specification& spec) {
    if (spec.summaryVariable.IsGiven()) return spec.summaryVariable;
    if (spec.y.variable.IsGiven()) return spec.y.variable;
    VariableReference count;
    count.source = VariableReference::Source::kCount;
    return count;
}

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

const CategoryOrder* FindCategoryOrder(const Specification& spec,
                                       const VariableReference& variable) {
    const auto found = std::find_if(
        spec.categoryOrders.rbegin(), spec.categoryOrders.rend(),
        [&variable](const CategoryOrder& order) { return order.variable.IsSameAs(variable); });
    return found == spec.categoryOrders.rend() ? nullptr : &*found;
}

}  // namespace quillet::igraph
