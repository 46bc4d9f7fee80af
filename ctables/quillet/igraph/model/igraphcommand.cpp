#include "igraph/model/igraphcommand.h"

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

bool HoldsElement(const IgraphCommand& command, ChartElement::Kind kind) {
    return std::any_of(command.elements.begin(), command.elements.end(),
                       [kind](const ChartElement& element) { return element.kind == kind; });
}

bool HoldsFitLine(const IgraphCommand& command) {
    return std::any_of(command.fitLines.begin(), command.fitLines.end(),
                       [](const FitLine& fitLine) { return fitLine.IsDrawn(); });
}

bool IsSummaryElement(const ChartElement& element) {
    return element.kind == ChartElement::Kind::kBar || element.kind == ChartElement::Kind::kArea ||
           element.kind == ChartElement::Kind::kLine;
}

bool ShowsRawValues(const IgraphCommand& command, const ChartElement& element) {
    return IsSummaryElement(element) && !element.summary && command.y.variable.IsVariable() &&
           command.y.IsScale() && (command.x1.variable.IsCaseNumber() || command.x1.IsScale());
}

VariableReference PieQuantity(const IgraphCommand& command) {
    if (command.summaryVariable.IsGiven()) return command.summaryVariable;
    if (command.y.variable.IsGiven()) return command.y.variable;
    VariableReference count;
    count.source = VariableReference::Source::kCount;
    return count;
}

const CategoryOrder* FindCategoryOrder(const IgraphCommand& command,
                                       const VariableReference& variable) {
    const auto found = std::find_if(
        command.categoryOrders.rbegin(), command.categoryOrders.rend(),
        [&variable](const CategoryOrder& order) { return order.variable.IsSameAs(variable); });
    return found == command.categoryOrders.rend() ? nullptr : &*found;
}

}  // namespace quillet::igraph
