#include "igraph/gpl/layout.h"

#include <algorithm>

namespace quillet::igraph {

namespace {

// A legend variable that stands on the axis too colors what the axis has already told apart.
bool MakesClusters(const IgraphCommand& command, const LegendVariable& legend) {
    return legend.dimension.IsCategorical() && legend.arrangement == Arrangement::kCluster &&
           !legend.dimension.variable.IsSameAs(command.x1.variable);
}

bool MakesStacks(const LegendVariable& legend) {
    return legend.dimension.IsCategorical() && legend.arrangement == Arrangement::kStack;
}

// Null when there is none or more than one.
const VariableReference* OnlyClusterVariable(const IgraphCommand& command) {
    const bool byColor = MakesClusters(command, command.color);
    const bool byStyle = MakesClusters(command, command.style);
    const VariableReference& color = command.color.dimension.variable;
    const VariableReference& style = command.style.dimension.variable;
    if (byColor && byStyle) return color.IsSameAs(style) ? &color : nullptr;
    if (byColor) return &color;
    return byStyle ? &style : nullptr;
}

bool MayStandInClusters(const ChartElement& element) {
    return element.kind == ChartElement::Kind::kBar || element.kind == ChartElement::Kind::kBox ||
           element.kind == ChartElement::Kind::kErrorBar;
}

}  // namespace

Layout LayoutOf(const IgraphCommand& command) {
    Layout layout;
    layout.hasClusters =
        MakesClusters(command, command.color) || MakesClusters(command, command.style);
    layout.isStacked = MakesStacks(command.color) || MakesStacks(command.style);
    if (HoldsElement(command, ChartElement::Kind::kPie)) {
        layout.kind = Layout::Kind::kPolar;
        layout.x1Dimension = 0;
        layout.yDimension = 1;
        layout.firstPanelDimension = 2;
        return layout;
    }
    if (command.coordinates == Coordinates::kThree) {
        layout.kind = Layout::Kind::kThree;
        layout.x2Dimension = 1;
        layout.x1Dimension = 2;
        layout.yDimension = 3;
        layout.firstPanelDimension = 4;
        return layout;
    }
    const VariableReference* pCluster = OnlyClusterVariable(command);
    const bool hasRoom =
        command.x1.variable.IsGiven() && !HoldsFitLine(command) &&
        std::all_of(command.elements.begin(), command.elements.end(), MayStandInClusters);
    if (pCluster != nullptr && hasRoom) {
        layout.kind = Layout::Kind::kCluster;
        layout.pCluster = pCluster;
        layout.x1Dimension = 3;
        layout.firstPanelDimension = 4;
    }
    return layout;
}

}  // namespace quillet::igraph
