#include "igraph/layout.h"

#include <algorithm>

namespace quillet::igraph {

namespace {

// A legend variable that stands on the axis too colours what the axis has already told apart.
bool MakesClusters(const Specification& spec, const LegendVariable& legend) {
    return legend.dimension.IsCategorical() && legend.arrangement == Arrangement::kCluster &&
           !legend.dimension.variable.IsSameAs(spec.x1.variable);
}

bool MakesStacks(const LegendVariable& legend) {
    return legend.dimension.IsCategorical() && legend.arrangement == Arrangement::kStack;
}

// Null when there is none or more than one.
const VariableReference* OnlyClusterVariable(const Specification& spec) {
    const bool byColor = MakesClusters(spec, spec.color);
    const bool byStyle = MakesClusters(spec, spec.style);
    const VariableReference& color = spec.color.dimension.variable;
    const VariableReference& style = spec.style.dimension.variable;
    if (byColor && byStyle) return color.IsSameAs(style) ? &color : nullptr;
    if (byColor) return &color;
    return byStyle ? &style : nullptr;
}

bool MayStandInClusters(const ChartElement& element) {
    return element.kind == ChartElement::Kind::kBar || element.kind == ChartElement::Kind::kBox ||
           element.kind == ChartElement::Kind::kErrorBar;
}

}  // namespace

Layout LayoutOf(const Specification& spec) {
    Layout layout;
    layout.hasClusters = MakesClusters(spec, spec.color) || MakesClusters(spec, spec.style);
    layout.isStacked = MakesStacks(spec.color) || MakesStacks(spec.style);
    if (HoldsElement(spec, ChartElement::Kind::kPie)) {
        layout.kind = Layout::Kind::kPolar;
        layout.x1Dimension = 0;
        layout.yDimension = 1;
        layout.firstPanelDimension = 2;
        return layout;
    }
    if (spec.coordinates == Coordinates::kThree) {
        layout.kind = Layout::Kind::kThree;
        layout.x2Dimension = 1;
        layout.x1Dimension = 2;
        layout.yDimension = 3;
        layout.firstPanelDimension = 4;
        return layout;
    }
    const VariableReference* pCluster = OnlyClusterVariable(spec);
    const bool hasRoom =
        spec.x1.variable.IsGiven() && !HoldsFitLine(spec) &&
        std::all_of(spec.elements.begin(), spec.elements.end(), MayStandInClusters);
    if (pCluster != nullptr && hasRoom) {
        layout.kind = Layout::Kind::kCluster;
        layout.pCluster = pCluster;
        layout.x1Dimension = 3;
        layout.firstPanelDimension = 4;
    }
    return layout;
}

}  // namespace quillet::igraph
