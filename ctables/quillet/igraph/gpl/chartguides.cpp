#include "igraph/gpl/chartguides.h"

#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "igraph/gpl/chartfunctions.h"
#include "igraph/gpl/chartstatistics.h"
#include "igraph/gpl/gplvocabulary.h"

namespace quillet::igraph {

namespace {

using Arguments = std::vector<Expression>;

Expression Dim(int number) { return Expression::Indices(gpl::kDim, {number}); }

Expression AestheticArgument(Aesthetic aesthetic) {
    std::string name(gpl::kAesthetic);
    name += '.';
    name += AestheticFunction(aesthetic);
    return Expression::Call(gpl::kAesthetic, {Expression::Identifier(name)});
}

Expression LabelOf(std::string_view text) {
    return Expression::Call(gpl::kLabel, {Expression::Text(text)});
}

void AddGuide(Chart& chart, const Expression& guide) {
    chart.Statements().Add(StatementLabel::kGuide, guide);
}

// --- Coordinates.

// A whole turn back and forth is no turn.
double StartAngle(const IgraphCommand& command) {
    constexpr double kTurn = 360.0;
    double angle = std::fmod(command.elements.front().pieStart, kTurn);
    if (angle < 0.0) angle += kTurn;
    // Adding a turn to a tiny angle gives a whole turn; a zero may come with a sign.
    return angle == kTurn || angle == 0.0 ? 0.0 : angle;
}

// --- Axes.

std::string TitleOf(const Dimension& dimension) {
    if (dimension.title) return *dimension.title;
    return dimension.variable.IsCaseNumber() ? "Case" : dimension.variable.name;
}

void AddAxis(Chart& chart, int number, std::string_view title) {
    AddGuide(chart, Expression::Call(gpl::kAxis, {Dim(number), LabelOf(title)}));
}

void AddAxes(Chart& chart) {
    const IgraphCommand& command = chart.Command();
    const Layout& layout = chart.Arrangement();
    if (layout.kind == Layout::Kind::kPolar) {
        AddGuide(chart, Expression::Call(gpl::kAxis,
                                         {Dim(layout.yDimension), Expression::Call(gpl::kNull)}));
        return;
    }
    if (layout.kind == Layout::Kind::kThree) {
        AddAxis(chart, layout.x2Dimension, TitleOf(command.x2));
    }
    if (command.x1.variable.IsGiven()) AddAxis(chart, layout.x1Dimension, TitleOf(command.x1));
    AddAxis(chart, layout.yDimension, command.y.title.value_or(DefaultTitleOfY(command, layout)));
}

void AddPanelAxes(Chart& chart) {
    int number = chart.Arrangement().firstPanelDimension;
    for (const VariableReference& panel : chart.Command().panels) {
        AddGuide(chart, Expression::Call(gpl::kAxis, {Dim(number++), LabelOf(panel.name),
                                                      Expression::Call(gpl::kOpposite)}));
    }
}

// --- Legends and texts.

void AddLegends(Chart& chart) {
    for (const Aesthetic aesthetic : chart.UsedAesthetics()) {
        const LegendVariable& legend = LegendOf(chart.Command(), aesthetic);
        AddGuide(chart, Expression::Call(gpl::kLegend,
                                         {AestheticArgument(aesthetic),
                                          legend.showsLegend ? LabelOf(TitleOf(legend.dimension))
                                                             : Expression::Call(gpl::kNull)}));
    }
}

void AddText(Chart& chart, std::string_view function, std::string_view text) {
    if (!text.empty()) AddGuide(chart, Expression::Call(function, {LabelOf(text)}));
}

void AddReferenceLines(Chart& chart) {
    const IgraphCommand& command = chart.Command();
    for (const ReferenceLine& line : command.referenceLines) {
        Arguments place = {Expression::WholeRange(), Expression::Number(line.value)};
        if (line.variable.IsSameAs(command.x1.variable)) std::swap(place[0], place[1]);
        AddGuide(chart, Expression::Call(gpl::kFormLine,
                                         {Expression::Call(gpl::kPosition, std::move(place))}));
    }
}

// --- Scales.

void AddScale(Chart& chart, std::string_view function, Expression target, Arguments settings) {
    if (settings.empty()) return;
    settings.insert(settings.begin(), std::move(target));
    chart.Statements().Add(StatementLabel::kScale, Expression::Call(function, std::move(settings)));
}

Arguments EndSettings(const ScaleEnds& ends) {
    Arguments settings;
    if (ends.minimum) {
        settings.push_back(
            Expression::Call(gpl::kMinimum, {Expression::Number(ends.minimum->value)}));
    }
    if (ends.maximum) {
        settings.push_back(
            Expression::Call(gpl::kMaximum, {Expression::Number(ends.maximum->value)}));
    }
    return settings;
}

// A function that needs arguments or a computed variable cannot sort; the categories then keep
// the order of their values.
std::optional<Expression> SortingStatistic(const Chart& chart, const SummaryCall& call) {
    const ChartFunction& function = FindChartFunction(call.function);
    const bool canSort = function.form == StatisticForm::kPlain && chart.MeasuresVariable();
    if (!canSort) return std::nullopt;
    return Expression::Call(gpl::kSortStatistic,
                            {Expression::Call(function.statistic, {chart.Measure()})});
}

Arguments OrderSettings(const Chart& chart, const VariableReference& variable) {
    Arguments settings;
    const CategoryOrder* pOrder = FindCategoryOrder(chart.Command(), variable);
    if (pOrder == nullptr) return settings;
    if (pOrder->summary) {
        std::optional<Expression> statistic = SortingStatistic(chart, *pOrder->summary);
        if (statistic) settings.push_back(std::move(*statistic));
    } else if (pOrder->order == Keyword::kLabels) {
        settings.push_back(Expression::Call(gpl::kSortNatural));
    } else if (pOrder->order == Keyword::kOccurrence) {
        settings.push_back(Expression::Call(gpl::kSortData));
    } else if (pOrder->order == Keyword::kCount) {
        settings.push_back(Expression::Call(
            gpl::kSortStatistic,
            {Expression::Call(gpl::kSummaryCount, {chart.UseAsCategories(variable)})}));
    }
    if (pOrder->descending) settings.push_back(Expression::Call(gpl::kReverse));
    return settings;
}

void AddCategoryScale(Chart& chart, Expression target, const VariableReference& variable) {
    AddScale(chart, gpl::kCat, std::move(target), OrderSettings(chart, variable));
}

void AddScaleOf(Chart& chart, Expression target, const Dimension& dimension) {
    if (dimension.IsScale()) {
        AddScale(chart, gpl::kLinear, std::move(target), EndSettings(dimension.ends));
    } else if (dimension.IsCategorical()) {
        AddCategoryScale(chart, std::move(target), dimension.variable);
    }
}

// Where bars and areas begin: the first one that says so decides.
std::optional<double> Baseline(const IgraphCommand& command) {
    for (const ChartElement& element : command.elements) {
        if (element.hasBaseline) return element.baseline;
    }
    return std::nullopt;
}

void AddScaleOfY(Chart& chart) {
    const IgraphCommand& command = chart.Command();
    const int number = chart.Arrangement().yDimension;
    if (!command.y.IsScale()) {
        AddScaleOf(chart, Dim(number), command.y);
        return;
    }
    Arguments settings = EndSettings(command.y.ends);
    const double baseline = Baseline(command).value_or(0.0);
    const bool startsAtZero = HoldsElement(command, ChartElement::Kind::kBar) ||
                              HoldsElement(command, ChartElement::Kind::kArea) ||
                              HoldsElement(command, ChartElement::Kind::kHistogram);
    if (baseline != 0.0) {
        settings.push_back(Expression::Call(gpl::kOrigin, {Expression::Number(baseline)}));
    } else if (startsAtZero && !command.y.ends.minimum) {
        settings.push_back(Expression::Call(gpl::kInclude, {Expression::Number(0)}));
    }
    AddScale(chart, gpl::kLinear, Dim(number), std::move(settings));
}

void AddScaleOfPie(Chart& chart) {
    Arguments settings = {Expression::Call(gpl::kDataMinimum), Expression::Call(gpl::kDataMaximum)};
    if (chart.Command().elements.front().isCounterclockwise) {
        settings.push_back(Expression::Call(gpl::kReverse));
    }
    AddScale(chart, gpl::kLinear, Dim(chart.Arrangement().yDimension), std::move(settings));
}

void AddAxisScales(Chart& chart) {
    const IgraphCommand& command = chart.Command();
    const Layout& layout = chart.Arrangement();
    switch (layout.kind) {
        case Layout::Kind::kPolar:
            AddScaleOfPie(chart);
            break;
        case Layout::Kind::kThree:
            AddScaleOf(chart, Dim(layout.x2Dimension), command.x2);
            AddScaleOf(chart, Dim(layout.x1Dimension), command.x1);
            AddScaleOfY(chart);
            break;
        case Layout::Kind::kCluster:
            AddCategoryScale(chart, Dim(1), *layout.pCluster);
            AddScaleOfY(chart);
            AddScaleOf(chart, Dim(layout.x1Dimension), command.x1);
            break;
        case Layout::Kind::kPlain:
            AddScaleOf(chart, Dim(layout.x1Dimension), command.x1);
            AddScaleOfY(chart);
            break;
    }
}

}  // namespace

void AddCoordinates(Chart& chart) {
    const Layout& layout = chart.Arrangement();
    const bool isHorizontal = chart.Command().coordinates == Coordinates::kHorizontal;
    Expression coordinates = Expression::Call(gpl::kRect);
    switch (layout.kind) {
        case Layout::Kind::kPolar:
            coordinates = Expression::Call(
                gpl::kPolarTheta,
                {Expression::Call(gpl::kStartAngle,
                                  {Expression::Number(StartAngle(chart.Command()))})});
            break;
        case Layout::Kind::kThree:
            coordinates.AddArgument(Expression::Indices(gpl::kDim, {1, 2, 3}));
            break;
        case Layout::Kind::kCluster:
        case Layout::Kind::kPlain: {
            const bool isCluster = layout.kind == Layout::Kind::kCluster;
            if (!isCluster && !isHorizontal) return;
            coordinates.AddArgument(Expression::Indices(gpl::kDim, {1, 2}));
            if (isCluster) {
                coordinates.AddArgument(
                    Expression::Indices(gpl::kClusterFunction, {layout.x1Dimension, 0}));
            }
            if (isHorizontal) coordinates.AddArgument(Expression::Call(gpl::kTranspose));
            break;
        }
    }
    chart.Statements().Add(StatementLabel::kCoord, coordinates);
}

void AddGuides(Chart& chart) {
    AddAxes(chart);
    AddPanelAxes(chart);
    AddLegends(chart);
    AddText(chart, gpl::kTextTitle, chart.Command().title);
    AddText(chart, gpl::kTextSubtitle, chart.Command().subtitle);
    AddText(chart, gpl::kTextFootnote, chart.Command().caption);
    AddReferenceLines(chart);
}

void AddScales(Chart& chart) {
    AddAxisScales(chart);
    int number = chart.Arrangement().firstPanelDimension;
    for (const VariableReference& panel : chart.Command().panels) {
        AddCategoryScale(chart, Dim(number++), panel);
    }
    for (const Aesthetic aesthetic : chart.UsedAesthetics()) {
        AddScaleOf(chart, AestheticArgument(aesthetic),
                   LegendOf(chart.Command(), aesthetic).dimension);
    }
}

}  // namespace quillet::igraph
