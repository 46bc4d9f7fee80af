#include "igraph/gpl/chartelements.h"

#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

#include "igraph/gpl/chartstatistics.h"
#include "igraph/gpl/gplvocabulary.h"

namespace quillet::igraph {

namespace {

constexpr double kPercent = 100.0;

// An ELEMENT statement in the making. Its arguments come in the order of the calls.
class Element {
public:
    Element(std::string_view type, Expression position)
        : m_call(
              Expression::Call(type, {Expression::Call(gpl::kPosition, {std::move(position)})})) {}

    // The aesthetics among `aesthetics` whose variables are given.
    Element& Showing(Chart& chart, std::initializer_list<Aesthetic> aesthetics) {
        for (const Aesthetic aesthetic : aesthetics) {
            const Dimension& dimension = LegendOf(chart.Command(), aesthetic).dimension;
            if (!dimension.variable.IsGiven()) continue;
            chart.MarkUsed(aesthetic);
            m_call.AddArgument(
                Expression::Call(AestheticFunction(aesthetic), {chart.Use(dimension)}));
        }
        return *this;
    }

    Element& Shaped(std::string_view shape) {
        return With(Expression::Call(gpl::kShapeInterior, {Expression::Identifier(shape)}));
    }

    Element& With(Expression argument) {
        m_call.AddArgument(std::move(argument));
        return *this;
    }

    Element& With(std::optional<Expression> argument) {
        if (argument) m_call.AddArgument(std::move(*argument));
        return *this;
    }

    void AddTo(Chart& chart) const { chart.Statements().Add(StatementLabel::kElement, m_call); }

private:
    Expression m_call;
};

constexpr std::initializer_list<Aesthetic> kOfMarks = {Aesthetic::kColor, Aesthetic::kShape,
                                                       Aesthetic::kSize};
constexpr std::initializer_list<Aesthetic> kOfAreas = {Aesthetic::kColor, Aesthetic::kTexture};

Expression LabelWith(Expression content) {
    return Expression::Call(gpl::kLabel, {std::move(content)});
}

// The label of a BAR, AREA or LINE that shows `statistic`.
std::optional<Expression> LabelOf(const Chart& chart, const ChartElement& element,
                                  const Expression& statistic) {
    if (!element.label) return std::nullopt;
    switch (*element.label) {
        case Keyword::kVal:
            return LabelWith(ShowsRawValues(chart.Command(), element) ? chart.Measure()
                                                                      : statistic);
        case Keyword::kN:
            return LabelWith(CountOfValidCases(chart));
        default:
            return LabelWith(PercentOfCases(chart));
    }
}

std::optional<Expression> BreakOf(const ChartElement& element) {
    switch (element.breakMode) {
        case ChartElement::Break::kMissing:
            return Expression::Call(gpl::kMissingGap);
        case ChartElement::Break::kNone:
            return Expression::Call(gpl::kMissingInterpolate);
        case ChartElement::Break::kUnspecified:
            break;
    }
    return std::nullopt;
}

// Empty for straight connections.
std::string_view Smoother(Keyword interpolation) {
    switch (interpolation) {
        case Keyword::kLeftStep:
        case Keyword::kLeftJump:
            return gpl::kSmoothStepLeft;
        case Keyword::kCenterStep:
        case Keyword::kCenterJump:
            return gpl::kSmoothStepCenter;
        case Keyword::kRightStep:
        case Keyword::kRightJump:
            return gpl::kSmoothStepRight;
        case Keyword::kSpline:
            return gpl::kSmoothSpline;
        default:
            return "";
    }
}

std::optional<Expression> JumpOf(const ChartElement& element) {
    switch (element.interpolation) {
        case Keyword::kLeftJump:
        case Keyword::kCenterJump:
        case Keyword::kRightJump:
            return Expression::Call(gpl::kJump);
        default:
            return std::nullopt;
    }
}

Expression Interpolated(const ChartElement& element, const Expression& statistic) {
    const std::string_view smoother = Smoother(element.interpolation);
    return smoother.empty() ? statistic : Expression::Call(smoother, {statistic});
}

void AddScatter(Chart& chart, const ChartElement& element) {
    const PointLabel& label = chart.Command().pointLabel;
    Element points(element.isJittered ? gpl::kPointJitter : gpl::kPoint,
                   chart.Across(chart.Measure()));
    points.Showing(chart, kOfMarks);
    if (label.variable.IsGiven() && label.isShown) {
        points.With(LabelWith(chart.UseAsCategories(label.variable)));
    }
    points.AddTo(chart);
}

void AddBar(Chart& chart, const ChartElement& element) {
    const Layout& layout = chart.Arrangement();
    std::string_view type = gpl::kInterval;
    if (layout.isStacked) {
        type = gpl::kIntervalStack;
    } else if (layout.hasClusters && layout.kind == Layout::Kind::kPlain) {
        type = gpl::kIntervalDodge;
    }
    const Expression statistic = SummaryOf(chart, element);
    Element(type, statistic)
        .Showing(chart, kOfAreas)
        .Shaped(gpl::kShapeSquare)
        .With(LabelOf(chart, element, statistic))
        .AddTo(chart);
}

void AddArea(Chart& chart, const ChartElement& element) {
    const Expression statistic = SummaryOf(chart, element);
    Element(chart.Arrangement().isStacked ? gpl::kAreaStack : gpl::kArea,
            Interpolated(element, statistic))
        .Showing(chart, kOfAreas)
        .With(LabelOf(chart, element, statistic))
        .With(BreakOf(element))
        .With(JumpOf(element))
        .AddTo(chart);
}

void AddLine(Chart& chart, const ChartElement& element) {
    using LineStyle = ChartElement::LineStyle;
    if (element.lineStyle == LineStyle::kNone) return;
    const Expression statistic = SummaryOf(chart, element);
    const std::optional<Expression> label = LabelOf(chart, element, statistic);
    if (element.lineStyle != LineStyle::kDot) {
        Element line(gpl::kLine, Interpolated(element, statistic));
        line.Showing(chart, kOfMarks);
        if (element.lineStyle == LineStyle::kLine) line.With(label);
        line.With(BreakOf(element)).With(JumpOf(element)).AddTo(chart);
    }
    if (element.lineStyle != LineStyle::kLine) {
        Element(gpl::kPoint, statistic).Showing(chart, kOfMarks).With(label).AddTo(chart);
    }
}

void AddPie(Chart& chart, const ChartElement& element) {
    const IgraphCommand& command = chart.Command();
    const Expression statistic = PieStatistic(chart, element);
    Element slices(gpl::kIntervalStack, statistic);
    slices.Showing(chart, kOfAreas);
    if (element.label == Keyword::kLabel) {
        const LegendVariable& slice =
            command.color.dimension.IsCategorical() ? command.color : command.style;
        slices.With(LabelWith(chart.Use(slice.dimension)));
    } else if (element.label == Keyword::kPercent) {
        slices.With(LabelWith(Expression::Call(gpl::kSummaryPercentCount, chart.Cases())));
    } else if (element.label == Keyword::kN) {
        slices.With(LabelWith(CountOfCases(chart)));
    } else if (element.label == Keyword::kVal) {
        slices.With(LabelWith(statistic));
    }
    slices.AddTo(chart);
}

void AddBox(Chart& chart) {
    const IgraphCommand& command = chart.Command();
    Element(gpl::kSchema,
            Expression::Call(gpl::kBinQuantileLetter, {chart.Across(chart.Measure())}))
        .Showing(chart, kOfAreas)
        .With(LabelWith(chart.LabelsCasesByNumber()
                            ? chart.Data().CaseLabel()
                            : chart.UseAsCategories(command.caseLabel.variable)))
        .AddTo(chart);
}

Expression ExtentOf(const Chart& chart, const ChartElement& element) {
    const Expression data = chart.Across(chart.Measure());
    if (element.extent == Keyword::kCi) {
        return Expression::Call(
            gpl::kRegionConfiMean,
            {data,
             Expression::Call(gpl::kAlpha, {Expression::Number(element.extentValue / kPercent)})});
    }
    return Expression::Call(
        element.extent == Keyword::kSd ? gpl::kRegionSpreadSd : gpl::kRegionSpreadSe,
        {data, Expression::Call(gpl::kMultiple, {Expression::Number(element.extentValue)})});
}

void AddErrorBar(Chart& chart, const ChartElement& element) {
    Element(gpl::kInterval, ExtentOf(chart, element))
        .Showing(chart, kOfAreas)
        .Shaped(element.hasCaps ? gpl::kShapeIbeam : gpl::kShapeLine)
        .AddTo(chart);
    if (!element.hasSymbol) return;
    Element(gpl::kPoint, Expression::Call(gpl::kSummaryMean, {chart.Across(chart.Measure())}))
        .Showing(chart, {Aesthetic::kColor})
        .AddTo(chart);
}

Expression Bins(const Chart& chart, const ChartElement& element) {
    std::vector<Expression> arguments = chart.Cases();
    if (element.binning != Keyword::kAuto) {
        arguments.push_back(
            Expression::Call(element.binning == Keyword::kNum ? gpl::kBinCount : gpl::kBinWidth,
                             {Expression::Number(element.binningValue)}));
    }
    return Expression::Call(gpl::kBinRect, std::move(arguments));
}

Expression HistogramStatistic(const Chart& chart, const ChartElement& element) {
    if (chart.Command().y.variable.source == VariableReference::Source::kCount) {
        return Expression::Call(
            element.isCumulative ? gpl::kSummaryCountCumulative : gpl::kSummaryCount,
            {Bins(chart, element)});
    }
    return PercentOfAll(
        element.isCumulative ? gpl::kSummaryPercentCountCumulative : gpl::kSummaryPercentCount,
        {Bins(chart, element)});
}

void AddHistogram(Chart& chart, const ChartElement& element) {
    const IgraphCommand& command = chart.Command();
    // Groups that stand behind each other would hide each other.
    const bool hasGroups =
        command.color.dimension.IsCategorical() || command.style.dimension.IsCategorical();
    Element(hasGroups ? gpl::kIntervalStack : gpl::kInterval, HistogramStatistic(chart, element))
        .Showing(chart, kOfAreas)
        .Shaped(gpl::kShapeSquare)
        .AddTo(chart);
    if (!element.hasCurve) return;
    Element(gpl::kLine, Expression::Call(gpl::kDensityNormal, chart.Cases())).AddTo(chart);
}

void AddElement(Chart& chart, const ChartElement& element) {
    switch (element.kind) {
        case ChartElement::Kind::kScatter:
            return AddScatter(chart, element);
        case ChartElement::Kind::kBar:
            return AddBar(chart, element);
        case ChartElement::Kind::kArea:
            return AddArea(chart, element);
        case ChartElement::Kind::kLine:
            return AddLine(chart, element);
        case ChartElement::Kind::kPie:
            return AddPie(chart, element);
        case ChartElement::Kind::kBox:
            return AddBox(chart);
        case ChartElement::Kind::kErrorBar:
            return AddErrorBar(chart, element);
        case ChartElement::Kind::kHistogram:
            return AddHistogram(chart, element);
    }
}

// A fit and the limits of its confidence take the same arguments.
struct Fit {
    std::string_view statistic;
    std::string_view limits;  // empty where there are none
    std::optional<std::string_view> option;
};

Fit FitOf(const FitLine& fitLine) {
    switch (fitLine.method) {
        case Keyword::kOrigin:
            return {gpl::kSmoothLinear, gpl::kRegionConfiSmoothLinear, gpl::kNoConstant};
        case Keyword::kMean:
            return {gpl::kSmoothMean, gpl::kRegionConfiSmoothMean, gpl::kKernelUniform};
        case Keyword::kLocalLinear:
            switch (fitLine.kernel) {
                case Keyword::kEpanechnikov:
                    return {gpl::kSmoothLoess, "", gpl::kKernelEpanechnikov};
                case Keyword::kUniform:
                    return {gpl::kSmoothLoess, "", gpl::kKernelUniform};
                default:
                    return {gpl::kSmoothLoess, "", gpl::kKernelNormal};
            }
        default:
            return {gpl::kSmoothLinear, gpl::kRegionConfiSmoothLinear, std::nullopt};
    }
}

// The line of one fit with its limits; `byCategory` draws them for each legend category.
void AddFit(Chart& chart, const FitLine& fitLine, bool byCategory) {
    const Fit fit = FitOf(fitLine);
    const auto addLine = [&chart, byCategory](Expression statistic) {
        Element line(gpl::kLine, std::move(statistic));
        if (byCategory) {
            // A scale has no categories to draw lines for.
            if (chart.Command().color.dimension.IsCategorical()) {
                line.Showing(chart, {Aesthetic::kColor});
            }
            line.Showing(chart, {Aesthetic::kShape});
        }
        line.AddTo(chart);
    };
    std::vector<Expression> arguments = {chart.Across(chart.Measure())};
    if (fit.option) arguments.push_back(Expression::Call(*fit.option));
    addLine(Expression::Call(fit.statistic, arguments));
    if (!fitLine.hasMeanInterval || fit.limits.empty()) return;
    arguments.push_back(
        Expression::Call(gpl::kAlpha, {Expression::Number(fitLine.confidence / kPercent)}));
    addLine(Expression::Call(fit.limits, std::move(arguments)));
}

void AddFitLine(Chart& chart, const FitLine& fitLine) {
    if (!fitLine.IsDrawn()) return;
    const IgraphCommand& command = chart.Command();
    const bool hasCategories =
        command.color.dimension.IsCategorical() || command.style.dimension.IsCategorical();
    const bool byCategory = fitLine.forCategories && hasCategories;
    if (fitLine.forTotal || !byCategory) AddFit(chart, fitLine, false);
    if (byCategory) AddFit(chart, fitLine, true);
}

}  // namespace

void AddElements(Chart& chart) {
    for (const ChartElement& element : chart.Command().elements) AddElement(chart, element);
    for (const FitLine& fitLine : chart.Command().fitLines) AddFitLine(chart, fitLine);
}

}  // namespace quillet::igraph
