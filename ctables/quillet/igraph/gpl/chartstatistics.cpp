#include "igraph/gpl/chartstatistics.h"

#include <utility>

#include "igraph/gpl/chartfunctions.h"
#include "igraph/gpl/gplvocabulary.h"

namespace quillet::igraph {

namespace {

using Source = VariableReference::Source;

constexpr std::string_view kCountTitle = "Count";
constexpr std::string_view kPercentTitle = "Percent";
constexpr std::string_view kCaseTitle = "Case";

// A percentage of the cases at the same place of X1: the stacks are all of one height.
Expression PercentOfStack(const Chart& chart, std::string_view function,
                          std::vector<Expression> arguments) {
    arguments.push_back(Expression::Call(
        gpl::kBaseCoordinate, {Expression::Indices(gpl::kDim, {chart.Arrangement().x1Dimension})}));
    return Expression::Call(function, std::move(arguments));
}

bool IsNormalized(const IgraphCommand& command, const Layout& layout) {
    return command.isNormalized && layout.isStacked;
}

Expression Comparison(const Chart& chart, std::string_view operation, double number) {
    return Expression::Operation(chart.Measure(), operation, Expression::Number(number));
}

Expression DeclareComputed(Chart& chart, const VariableReference& variable, Expression value) {
    const std::string name = chart.Data().TakeComputedName(variable);
    chart.Statements().AddNamed(StatementLabel::kTrans, name,
                                Expression::Call(gpl::kEval, {std::move(value)}));
    return Expression::Identifier(name);
}

Expression ComputedValue(const Chart& chart, const ChartFunction& function,
                         const SummaryCall& call) {
    switch (function.form) {
        case StatisticForm::kTransformed:
            if (function.operation.empty()) {
                return Expression::Product({chart.Measure(), chart.Measure()});
            }
            return Expression::Call(function.operation, {chart.Measure()});
        case StatisticForm::kBetween:
            return Expression::Operation(Comparison(chart, gpl::kGreaterEqual, call.arguments[0]),
                                         gpl::kAnd,
                                         Comparison(chart, gpl::kLessEqual, call.arguments[1]));
        default:
            return Comparison(chart, function.operation, call.arguments[0]);
    }
}

Expression StatisticOf(Chart& chart, const VariableReference& variable, const SummaryCall& call) {
    constexpr double kPercent = 100.0;
    const ChartFunction& function = FindChartFunction(call.function);
    switch (function.form) {
        case StatisticForm::kTransformed:
        case StatisticForm::kComparison:
        case StatisticForm::kBetween:
            return Expression::Call(function.statistic,
                                    {chart.Across(DeclareComputed(
                                        chart, variable, ComputedValue(chart, function, call)))});
        case StatisticForm::kPercent:
            return PercentOfAll(function.statistic, {chart.Across(chart.Measure())});
        case StatisticForm::kPercentile:
            return Expression::Call(
                function.statistic,
                {chart.Across(chart.Measure()),
                 Expression::Call(gpl::kAlpha,
                                  {Expression::Number(call.arguments[0] / kPercent)})});
        case StatisticForm::kPlain:
        case StatisticForm::kNone:
            break;
    }
    return Expression::Call(function.statistic, {chart.Across(chart.Measure())});
}

// The function that holds where none is written.
SummaryCall CallOf(const IgraphCommand& command, const ChartElement& element) {
    if (element.summary) return *element.summary;
    SummaryCall call;
    call.function = command.y.IsCategorical() ? Keyword::kMode : Keyword::kMean;
    return call;
}

bool HasTitle(const ChartElement& element) {
    return element.kind != ChartElement::Kind::kLine ||
           element.lineStyle != ChartElement::LineStyle::kNone;
}

std::string TitleOf(const IgraphCommand& command, const Layout& layout,
                    const ChartElement& element) {
    const VariableReference& y = command.y.variable;
    if (y.source == Source::kCount) {
        return std::string(IsNormalized(command, layout) && IsSummaryElement(element)
                               ? kPercentTitle
                               : kCountTitle);
    }
    if (y.source == Source::kPercent) return std::string(kPercentTitle);
    if (y.IsCaseNumber()) return std::string(kCaseTitle);
    if (element.kind == ChartElement::Kind::kErrorBar) return SummaryTitle({}, y.name);
    if (!IsSummaryElement(element) || ShowsRawValues(command, element)) return y.name;
    if (IsNormalized(command, layout)) return std::string(kPercentTitle);
    return SummaryTitle(CallOf(command, element), y.name);
}

}  // namespace

Expression PercentOfAll(std::string_view function, std::vector<Expression> arguments) {
    arguments.push_back(Expression::Call(gpl::kBaseAll, {Expression::Call(gpl::kAcrossPanels)}));
    return Expression::Call(function, std::move(arguments));
}

Expression CountOfCases(const Chart& chart) {
    return Expression::Call(gpl::kSummaryCount, chart.Cases());
}

Expression PercentOfCases(const Chart& chart) {
    return PercentOfAll(gpl::kSummaryPercentCount, chart.Cases());
}

Expression CountOfValidCases(const Chart& chart) {
    if (!chart.Command().y.variable.IsVariable()) return CountOfCases(chart);
    return Expression::Call(gpl::kSummaryCount, {chart.Across(chart.Measure())});
}

Expression SummaryOf(Chart& chart, const ChartElement& element) {
    const IgraphCommand& command = chart.Command();
    const bool isNormalized = IsNormalized(command, chart.Arrangement());
    if (command.y.variable.IsCounted()) {
        if (isNormalized) return PercentOfStack(chart, gpl::kSummaryPercentCount, chart.Cases());
        return command.y.variable.source == Source::kCount ? CountOfCases(chart)
                                                           : PercentOfCases(chart);
    }
    if (ShowsRawValues(command, element)) return chart.Across(chart.Measure());
    if (isNormalized) {
        return PercentOfStack(chart, gpl::kSummaryPercentSum, {chart.Across(chart.Measure())});
    }
    return StatisticOf(chart, command.y.variable, CallOf(command, element));
}

Expression PieStatistic(Chart& chart, const ChartElement& element) {
    const VariableReference quantity = PieQuantity(chart.Command());
    if (quantity.source == Source::kCount) return CountOfCases(chart);
    if (quantity.source == Source::kPercent) {
        return Expression::Call(gpl::kSummaryPercentCount, chart.Cases());
    }
    SummaryCall call;
    call.function = Keyword::kSum;
    return StatisticOf(chart, quantity, element.summary.value_or(call));
}

std::string DefaultTitleOfY(const IgraphCommand& command, const Layout& layout) {
    for (const ChartElement& element : command.elements) {
        if (HasTitle(element)) return TitleOf(command, layout, element);
    }
    return command.y.variable.name;
}

}  // namespace quillet::igraph
