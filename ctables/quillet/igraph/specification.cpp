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

const CategoryOrder* FindCategoryOrder(const Specification& spec,
                                       const VariableReference& variable) {
    const auto found = std::find_if(
        spec.categoryOrders.rbegin(), spec.categoryOrders.rend(),
        [&variable](const CategoryOrder& order) { return order.variable.IsSameAs(variable); });
    return found == spec.categoryOrders.rend() ? nullptr : &*found;
}

}  // namespace quillet::igraph
