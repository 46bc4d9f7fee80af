#include "igraph/gpl/expressibility.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quillet::igraph {

namespace {

using ElementKind = ChartElement::Kind;
using Elements = std::vector<ChartElement>;

struct Context {
    const IgraphCommand& command;
    const Layout& layout;
    std::string_view usedNames;
};

template <typename Condition>
const ChartElement* FindElement(const IgraphCommand& command, Condition condition) {
    const auto found = std::find_if(command.elements.begin(), command.elements.end(), condition);
    return found == command.elements.end() ? nullptr : &*found;
}

template <typename Condition>
bool AnyElement(const IgraphCommand& command, Condition condition) {
    return FindElement(command, condition) != nullptr;
}

template <typename Condition>
bool AnyFitLine(const IgraphCommand& command, Condition condition) {
    return std::any_of(
        command.fitLines.begin(), command.fitLines.end(),
        [&condition](const FitLine& fitLine) { return fitLine.IsDrawn() && condition(fitLine); });
}

std::string With(std::string_view before, Keyword keyword, std::string_view after) {
    std::string text(before);
    text += Spelling(keyword);
    text += after;
    return text;
}

// Each function below answers for one kind of obstacle: its reason, or an empty text.

std::string SpikeObstacle(const Context& context) {
    const IgraphCommand& command = context.command;
    const bool hasSpikes =
        command.hasSpikes ||
        AnyFitLine(command, [](const FitLine& fitLine) { return fitLine.hasSpikes; }) ||
        std::any_of(command.referenceLines.begin(), command.referenceLines.end(),
                    [](const ReferenceLine& line) { return line.hasSpikes; });
    return hasSpikes ? "spikes have no GPL equivalent" : "";
}

std::string ThreeAxesElementObstacle(const Context& context) {
    if (context.layout.kind != Layout::Kind::kThree) return "";
    const ChartElement* pElement = FindElement(context.command, [](const ChartElement& element) {
        return element.kind != ElementKind::kScatter && element.kind != ElementKind::kBar;
    });
    if (pElement == nullptr) return "";
    return With("a three-dimensional ", ElementKeyword(pElement->kind), " has no GPL equivalent");
}

std::string FittedSurfaceObstacle(const Context& context) {
    const bool isSurface =
        context.layout.kind == Layout::Kind::kThree && HoldsFitLine(context.command);
    return isSurface ? "a fitted surface has no GPL equivalent" : "";
}

std::string PredictionIntervalObstacle(const Context& context) {
    const bool hasInterval = AnyFitLine(context.command, [](const FitLine& fitLine) {
        return fitLine.hasIndividualInterval && fitLine.method != Keyword::kLocalLinear;
    });
    return hasInterval ? "prediction intervals for individual cases have no GPL equivalent" : "";
}

std::string MultiplierObstacle(const Context& context) {
    const bool hasMultiplier = AnyFitLine(context.command, [](const FitLine& fitLine) {
        return fitLine.hasMultiplier && fitLine.method == Keyword::kLocalLinear;
    });
    return hasMultiplier ? "a bandwidth multiplier has no GPL equivalent" : "";
}

std::string DropLineObstacle(const Context& context) {
    const bool hasDropLines = AnyElement(
        context.command, [](const ChartElement& element) { return element.hasDropLines; });
    return hasDropLines ? "drop lines have no GPL equivalent" : "";
}

std::string InterpolationObstacle(const Context& context) {
    const ChartElement* pElement =
        FindElement(context.command, [&context](const ChartElement& element) {
            switch (element.interpolation) {
                case Keyword::kStraight:
                    return false;
                case Keyword::kLagrange3:
                case Keyword::kLagrange5:
                    return true;
                default:
                    return !ShowsRawValues(context.command, element);
            }
        });
    if (pElement == nullptr) return "";
    return With("the interpolation ", pElement->interpolation, " has no GPL equivalent here");
}

std::string BoxPartObstacle(const Context& context) {
    const bool hidesPart = AnyElement(
        context.command, [](const ChartElement& element) { return !element.showsAllOfBox; });
    return hidesPart ? "parts of a box cannot be hidden in GPL" : "";
}

std::string BinStartObstacle(const Context& context) {
    const bool hasStart = AnyElement(
        context.command, [](const ChartElement& element) { return element.binStart != 0.0; });
    return hasStart ? "a histogram start in percent of an interval has no GPL equivalent" : "";
}

std::string GroupedMedianObstacle(const Context& context) {
    const bool hasIt = AnyElement(context.command, [](const ChartElement& element) {
        return element.summary && element.summary->function == Keyword::kGroupedMedian;
    });
    return hasIt ? With("the summary function ", Keyword::kGroupedMedian, " has no GPL equivalent")
                 : "";
}

// A scale cannot split a summary into groups, so only elements that show single cases take it.
std::string ScaleLegendObstacle(const Context& context) {
    const IgraphCommand& command = context.command;
    const bool byColor = command.color.dimension.IsScale();
    const bool bySize = command.size.dimension.IsScale();
    const bool isSplit = AnyElement(command, [&](const ChartElement& element) {
        if (element.kind == ElementKind::kScatter) return false;
        const bool isLine = element.kind == ElementKind::kLine;
        const bool isCurve = isLine || element.kind == ElementKind::kArea;
        if (isCurve && ShowsRawValues(command, element)) return false;
        return byColor || (bySize && isLine);
    });
    return isSplit ? "a scale legend variable cannot be combined with summaries" : "";
}

std::string PieClusterObstacle(const Context& context) {
    const bool hasCluster = context.layout.kind == Layout::Kind::kPolar &&
                            (context.command.stack || context.command.cluster);
    return hasCluster ? "clustered pies have no GPL equivalent" : "";
}

std::string PanelObstacle(const Context& context) {
    return context.command.panels.size() > 2
               ? "more than two panel variables have no GPL equivalent"
               : "";
}

std::string BoxArrangementObstacle(const Context& context) {
    const IgraphCommand& command = context.command;
    const Layout& layout = context.layout;
    const bool hasBox = HoldsElement(command, ElementKind::kBox);
    const bool hasErrorBar = HoldsElement(command, ElementKind::kErrorBar);
    const bool isStacked = layout.isStacked && (hasBox || hasErrorBar);
    const bool isDodged = layout.kind == Layout::Kind::kPlain && layout.hasClusters;
    const bool isLost =
        isDodged && (hasBox || (hasErrorBar && HoldsElement(command, ElementKind::kBar)));
    return isStacked || isLost ? "boxes and error bars cannot be arranged this way in GPL" : "";
}

std::string PieAxisObstacle(const Context& context) {
    const bool hasAxis =
        context.layout.kind == Layout::Kind::kPolar &&
        (context.command.x1.variable.IsGiven() || context.command.x2.variable.IsGiven());
    return hasAxis ? "pies cannot be placed on axes" : "";
}

// Where two axes show one variable, the line belongs to the first of them.
bool CanStandOnAxis(const Context& context, const ReferenceLine& line) {
    const IgraphCommand& command = context.command;
    switch (context.layout.kind) {
        case Layout::Kind::kPolar:
        case Layout::Kind::kThree:
            return false;
        case Layout::Kind::kCluster:
            return !line.variable.IsSameAs(command.x1.variable) && command.y.IsScale();
        case Layout::Kind::kPlain:
            break;
    }
    return line.variable.IsSameAs(command.x1.variable) ? command.x1.IsScale() : command.y.IsScale();
}

std::string ReferenceLineObstacle(const Context& context) {
    const bool isLost = std::any_of(
        context.command.referenceLines.begin(), context.command.referenceLines.end(),
        [&context](const ReferenceLine& line) { return !CanStandOnAxis(context, line); });
    return isLost ? "this reference line has no GPL equivalent" : "";
}

std::string NormalizationObstacle(const Context& context) {
    const IgraphCommand& command = context.command;
    if (!command.isNormalized || !context.layout.isStacked) return "";
    const ChartElement* pElement = FindElement(command, [&command](const ChartElement& element) {
        if (element.kind == ElementKind::kHistogram) return true;
        if (!IsSummaryElement(element) || command.y.variable.IsCounted()) return false;
        return !element.summary || element.summary->function != Keyword::kSum;
    });
    if (pElement == nullptr) return "";
    Keyword name = ElementKeyword(pElement->kind);
    if (IsSummaryElement(*pElement)) {
        name = pElement->summary ? pElement->summary->function : Keyword::kMean;
    }
    return With("a normalized ", name, " has no GPL equivalent");
}

std::string EmptyChartObstacle(const Context& context) {
    const bool drawsSomething = HoldsFitLine(context.command) ||
                                AnyElement(context.command, [](const ChartElement& element) {
                                    return element.lineStyle != ChartElement::LineStyle::kNone;
                                });
    return drawsSomething ? "" : "the chart would be empty";
}

std::string CumulativeCurveObstacle(const Context& context) {
    const bool hasBoth = AnyElement(context.command, [](const ChartElement& element) {
        return element.isCumulative && element.hasCurve;
    });
    return hasBoth ? "a normal curve over a cumulative histogram has no GPL equivalent" : "";
}

std::string ThreeAxesClusterObstacle(const Context& context) {
    const IgraphCommand& command = context.command;
    if (context.layout.kind != Layout::Kind::kThree || !HoldsElement(command, ElementKind::kBar)) {
        return "";
    }
    const auto clusters = [&command](const LegendVariable& legend) {
        const VariableReference& variable = legend.dimension.variable;
        return legend.dimension.IsCategorical() && legend.arrangement == Arrangement::kCluster &&
               !variable.IsSameAs(command.x1.variable) && !variable.IsSameAs(command.x2.variable);
    };
    const bool hasClusters = clusters(command.color) || clusters(command.style);
    return hasClusters ? "clustered bars on three axes have no GPL equivalent" : "";
}

std::string LeftOutVariableObstacle(const Context& context) {
    const auto isLeftOut = [](const std::optional<ArrangementVariable>& variable) {
        return variable && variable->isLeftOut;
    };
    const IgraphCommand& command = context.command;
    if (!isLeftOut(command.stack) && !isLeftOut(command.cluster)) return "";
    const Keyword subcommand = isLeftOut(command.stack) ? Keyword::kStack : Keyword::kCluster;
    return With("", subcommand, " beside COLOR and STYLE has no GPL equivalent");
}

// The list of variables stands at the end of a line of the GGRAPH command, and a period there
// ends the command.
std::string NameObstacle(const Context& context) {
    const std::string_view names = context.usedNames;
    if (!names.ends_with('.')) return "";
    const std::string name(names.substr(names.rfind(' ') + 1));
    return "the variable name \"" + name + "\" ends in a period";
}

constexpr std::array kObstacles = {
    SpikeObstacle,           ThreeAxesElementObstacle,
    FittedSurfaceObstacle,   PredictionIntervalObstacle,
    MultiplierObstacle,      DropLineObstacle,
    InterpolationObstacle,   BoxPartObstacle,
    BinStartObstacle,        GroupedMedianObstacle,
    ScaleLegendObstacle,     PieClusterObstacle,
    PanelObstacle,           BoxArrangementObstacle,
    PieAxisObstacle,         ReferenceLineObstacle,
    NormalizationObstacle,   EmptyChartObstacle,
    CumulativeCurveObstacle, ThreeAxesClusterObstacle,
    LeftOutVariableObstacle, NameObstacle,
};

}  // namespace

std::string FindObstacle(const IgraphCommand& command, const Layout& layout,
                         std::string_view usedNames) {
    const Context context{command, layout, usedNames};
    for (const auto& findObstacle : kObstacles) {
        std::string reason = findObstacle(context);
        if (!reason.empty()) return reason;
    }
    return "";
}

}  // namespace quillet::igraph
