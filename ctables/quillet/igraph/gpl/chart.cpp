#include "igraph/gpl/chart.h"

#include <algorithm>
#include <utility>

#include "igraph/gpl/gplvocabulary.h"

namespace quillet::igraph {

namespace {

bool NeedsCaseLabels(const IgraphCommand& command) {
    const bool hasOwnLabels = command.caseLabel.variable.IsGiven() && command.caseLabel.isShown;
    return !hasOwnLabels && HoldsElement(command, ChartElement::Kind::kBox);
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

const LegendVariable& LegendOf(const IgraphCommand& command, Aesthetic aesthetic) {
    switch (aesthetic) {
        case Aesthetic::kColor:
            return command.color;
        case Aesthetic::kShape:
        case Aesthetic::kTexture:
            return command.style;
        case Aesthetic::kSize:
            break;
    }
    return command.size;
}

Chart::Chart(const IgraphCommand& command, const Layout& layout,
             std::span<const VariableRole> roles, CommandBudget& budget)
    : m_command(command),
      m_layout(layout),
      m_labelsCasesByNumber(NeedsCaseLabels(command)),
      m_columns(command, roles, m_labelsCasesByNumber, budget) {}

Expression Chart::Use(const Dimension& dimension) const {
    return m_columns.Use(dimension.variable, dimension.level.value_or(MeasurementLevel::kScale));
}

Expression Chart::UseAsCategories(const VariableReference& variable) const {
    return m_columns.Use(variable, MeasurementLevel::kCategorical);
}

Expression Chart::Measure() const {
    if (m_layout.kind != Layout::Kind::kPolar) return Use(m_command.y);
    return m_columns.Use(PieQuantity(m_command), MeasurementLevel::kScale);
}

bool Chart::MeasuresVariable() const {
    if (m_layout.kind != Layout::Kind::kPolar) return m_command.y.variable.IsVariable();
    return PieQuantity(m_command).IsVariable();
}

Expression Chart::X1() const {
    return m_command.x1.variable.IsGiven() ? Use(m_command.x1) : Expression::Number(1);
}

void Chart::AppendPanels(std::vector<Expression>& factors) const {
    for (const VariableReference& panel : m_command.panels)
        factors.push_back(UseAsCategories(panel));
}

Expression Chart::Across(Expression measure) const {
    std::vector<Expression> factors;
    switch (m_layout.kind) {
        case Layout::Kind::kPolar:
            factors = {std::move(measure)};
            break;
        case Layout::Kind::kThree:
            factors = {Use(m_command.x2), X1(), std::move(measure)};
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
    // Without further dimensions after it the place of the measure stays empty.
    const bool isLast = m_command.panels.empty() && m_layout.kind != Layout::Kind::kCluster;
    if (!isLast) return {Across(Expression::Number(1))};
    switch (m_layout.kind) {
        case Layout::Kind::kPolar:
            return {};
        case Layout::Kind::kThree:
            return {Expression::Product({Use(m_command.x2), X1()})};
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
