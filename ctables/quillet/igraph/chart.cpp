#include "igraph/chart.h"

#include <algorithm>
#include <utility>

#include "igraph/gplvocabulary.h"

namespace quillet::igraph {

namespace {

bool NeedsCaseLabels(const Specification& spec) {
    const bool hasOwnLabels = spec.caseLabel.variable.IsGiven() && spec.caseLabel.isShown;
    return !hasOwnLabels && HoldsElement(spec, ChartElement::Kind::kBox);
}

}  // namespace

std::string_view AestheticFunction(Aesthetic aesthetic) {
    switch (aesthetic) {
        case Aesthetic::kColor:
            return gpl::kColorInterior;
        case Aesthetic::kShape:
            return gpl::kShapeInterior;
        case Aesthetic::kTexture:
            return gpl::kTextureInterior;
        case Aesthetic::kSize:
            break;
    }
    return gpl::kSize;
}

const LegendVariable& LegendOf(const Specification& spec, Aesthetic aesthetic) {
    switch (aesthetic) {
        case Aesthetic::kColor:
            return spec.color;
        case Aesthetic::kShape:
        case Aesthetic::kTexture:
            return spec.style;
        case Aesthetic::kSize:
            break;
    }
    return spec.size;
}

Chart::Chart(const Specification& spec, const Layout& layout, std::span<const VariableRole> roles,
             CommandBudget& budget)
    : m_spec(spec),
      m_layout(layout),
      m_labelsCasesByNumber(NeedsCaseLabels(spec)),
      m_columns(spec, roles, m_labelsCasesByNumber, budget) {}

Expression Chart::Use(const Dimension& dimension) const {
    return m_columns.Use(dimension.variable, dimension.level.value_or(MeasurementLevel::kScale));
}

Expression Chart::UseAsCategories(const VariableReference& variable) const {
    return m_columns.Use(variable, MeasurementLevel::kCategorical);
}

Expression Chart::Measure() const {
    if (m_layout.kind != Layout::Kind::kPolar) return Use(m_spec.y);
    return m_columns.Use(PieQuantity(m_spec), MeasurementLevel::kScale);
}

bool Chart::MeasuresVariable() const {
    if (m_layout.kind != Layout::Kind::kPolar) return m_spec.y.variable.IsVariable();
    return PieQuantity(m_spec).IsVariable();
}

Expression Chart::X1() const {
    return m_spec.x1.variable.IsGiven() ? Use(m_spec.x1) : Expression::Number(1);
}

void Chart::AppendPanels(std::vector<Expression>& factors) const {
    for (const VariableReference& panel : m_spec.panels) factors.push_back(UseAsCategories(panel));
}

Expression Chart::Across(Expression measure) const {
    std::vector<Expression> factors;
    switch (m_layout.kind) {
        case Layout::Kind::kPolar:
            factors = {std::move(measure)};
            break;
        case Layout::Kind::kThree:
            factors = {Use(m_spec.x2), X1(), std::move(measure)};
            break;
        case Layout::Kind::kCluster:
            factors = {UseAsCategories(*m_layout.pCluster), std::move(measure), X1()};
            break;
        case Layout::Kind::kPlain:
            factors = {X1(), std::move(measure)};
            break;
    }
    AppendPanels(factors);
    return Expression::Product(std::move(factors));
}

std::vector<Expression> Chart::Cases() const {
    // Without further dimensions behind it the place of the measure stays empty.
    const bool isLast = m_spec.panels.empty() && m_layout.kind != Layout::Kind::kCluster;
    if (!isLast) return {Across(Expression::Number(1))};
    switch (m_layout.kind) {
        case Layout::Kind::kPolar:
            return {};
        case Layout::Kind::kThree:
            return {Expression::Product({Use(m_spec.x2), X1()})};
        case Layout::Kind::kCluster:
        case Layout::Kind::kPlain:
            break;
    }
    return {X1()};
}

void Chart::MarkUsed(Aesthetic aesthetic) {
    if (std::find(m_aesthetics.begin(), m_aesthetics.end(), aesthetic) == m_aesthetics.end()) {
        m_aesthetics.push_back(aesthetic);
    }
}

}  // namespace quillet::igraph
