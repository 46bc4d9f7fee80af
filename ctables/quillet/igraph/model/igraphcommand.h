// What an IGRAPH command says, as plain values.
#ifndef QUILLET_IGRAPH_MODEL_IGRAPHCOMMAND_H
#define QUILLET_IGRAPH_MODEL_IGRAPHCOMMAND_H

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "igraph/model/keyword.h"

namespace quillet::igraph {

/// A variable, or one of the quantities that every data set has, at one place of the command.
struct VariableReference {
    enum class Source {
        kAbsent,
        kVariable,
        kCount,       ///< $count, the number of cases.
        kPercent,     ///< $pct, the percentage of cases.
        kCaseNumber,  ///< $case, a category for each case.
    };

    Source source = Source::kAbsent;
    std::string name;  ///< As written; only with `kVariable`.
    std::string key;   ///< The name in upper case: equal keys are the same variable.
    int position = 0;  ///< Grows with the place in the command.

    [[nodiscard]] bool IsGiven() const { return source != Source::kAbsent; }
    [[nodiscard]] bool IsVariable() const { return source == Source::kVariable; }
    [[nodiscard]] bool IsCaseNumber() const { return source == Source::kCaseNumber; }
    /// True for $count and $pct.
    [[nodiscard]] bool IsCounted() const {
        return source == Source::kCount || source == Source::kPercent;
    }
    /// True when both are given and mean the same.
    [[nodiscard]] bool IsSameAs(const VariableReference& other) const {
        return IsGiven() && source == other.source && key == other.key;
    }
};

enum class MeasurementLevel { kScale, kCategorical };

/// How the categories of a legend variable are arranged.
enum class Arrangement { kOverlay, kCluster, kStack };

/// A setting with its place in the command: of two that say different things the later holds.
struct PlacedNumber {
    double value = 0.0;
    int position = 0;
};

/// The ends of a scale, as far as they are given.
struct ScaleEnds {
    std::optional<PlacedNumber> minimum;
    std::optional<PlacedNumber> maximum;
};

/// What an axis or a legend shows.
struct Dimension {
    VariableReference variable;
    std::optional<MeasurementLevel> level;  ///< Always set once the command is complete.
    ScaleEnds ends;
    std::optional<std::string> title;

    [[nodiscard]] bool IsScale() const {
        return variable.IsGiven() && level == MeasurementLevel::kScale;
    }
    [[nodiscard]] bool IsCategorical() const {
        return variable.IsGiven() && level == MeasurementLevel::kCategorical;
    }
};

/// COLOR, STYLE or SIZE.
struct LegendVariable {
    Dimension dimension;
    bool showsLegend = true;
    std::optional<Arrangement> arrangement;  ///< Of a categorical COLOR or STYLE set when complete.
};

/// A STACK or CLUSTER subcommand.
struct ArrangementVariable {
    VariableReference variable;
    Arrangement arrangement = Arrangement::kStack;
    bool isLeftOut = false;  ///< COLOR and STYLE show other variables. Set when complete.
};

/// A summary function with its arguments.
struct SummaryCall {
    Keyword function = Keyword::kMean;
    std::array<double, 2> arguments{};  ///< As many as the function takes; the others are 0.
};

/// CATORDER.
struct CategoryOrder {
    VariableReference variable;
    Keyword order = Keyword::kValues;    ///< COUNT, OCCURRENCE, LABELS or VALUES.
    std::optional<SummaryCall> summary;  ///< The order by a summary instead.
    bool descending = false;
};

/// SCALERANGE.
struct ScaleRange {
    VariableReference variable;
    ScaleEnds ends;
};

/// REFLINE.
struct ReferenceLine {
    VariableReference variable;
    double value = 0.0;
    bool hasSpikes = false;
};

/// POINTLABEL or CASELABEL.
struct PointLabel {
    VariableReference variable;
    bool isShown = true;  ///< False with NONE.
};

enum class Coordinates { kVertical, kHorizontal, kThree };

/// A chart element other than a fit line. Members that a kind has no setting for keep their
/// defaults. The initial values are what IGRAPH does when a setting is not written; those of
/// the line style, the interpolation, the symbol and the start of a pie are not documented
/// anywhere and hold for want of better knowledge, as does the method of a fit line.
struct ChartElement {
    enum class Kind { kScatter, kBar, kArea, kLine, kPie, kBox, kErrorBar, kHistogram };
    enum class LineStyle { kLine, kDot, kDotLine, kNone };
    enum class Break { kUnspecified, kMissing, kNone };

    Kind kind = Kind::kScatter;

    std::optional<SummaryCall> summary;  ///< BAR, AREA, LINE, PIE.
    /// BAR, AREA, LINE: VAL, N or PCT; PIE: LABEL too. The first one written counts.
    std::optional<Keyword> label;
    bool hasBaseline = false;                    ///< BAR, AREA: BASELINE is written.
    std::optional<double> baseline;              ///< BAR, AREA: its number; none for AUTO.
    Break breakMode = Break::kUnspecified;       ///< AREA, LINE.
    Keyword interpolation = Keyword::kStraight;  ///< AREA, LINE.
    LineStyle lineStyle = LineStyle::kLine;      ///< LINE.
    bool hasDropLines = false;                   ///< LINE.
    bool isJittered = false;                     ///< SCATTER.
    double pieStart = 0.0;                       ///< PIE: degrees from twelve o'clock.
    bool isCounterclockwise = false;             ///< PIE.
    bool showsAllOfBox = true;                   ///< BOX: nothing is switched off.
    std::optional<Keyword> extent;               ///< ERRORBAR: CI, SD or SE.
    double extentValue = 0.0;                    ///< ERRORBAR: its number.
    bool hasCaps = true;                         ///< ERRORBAR.
    bool hasSymbol = true;                       ///< ERRORBAR.
    bool isCumulative = false;                   ///< HISTOGRAM.
    bool hasCurve = false;                       ///< HISTOGRAM.
    Keyword binning = Keyword::kAuto;            ///< HISTOGRAM: AUTO, NUM or WIDTH.
    double binningValue = 0.0;                   ///< HISTOGRAM: number or width of the bins.
    double binStart = 0.0;                       ///< HISTOGRAM: X1START.
};

/// FITLINE.
struct FitLine {
    Keyword method = Keyword::kRegression;  ///< NONE, REGRESSION, ORIGIN, MEAN or LLR.
    Keyword kernel = Keyword::kNormal;      ///< LLR: NORMAL, EPANECHNIKOV or UNIFORM.
    bool hasMeanInterval = false;
    bool hasIndividualInterval = false;
    double confidence = 95.0;    ///< Of the intervals, in percent.
    bool forTotal = false;       ///< LINE TOTAL; the default when `forCategories` is false too.
    bool forCategories = false;  ///< LINE MEFFECT.
    bool hasSpikes = false;
    bool hasMultiplier = false;  ///< A bandwidth multiplier other than 1.

    [[nodiscard]] bool IsDrawn() const { return method != Keyword::kNone; }
};

/// The whole command.
///
/// Of a subcommand given twice the last one is kept, but those held in a vector add up, in
/// command order. Nothing here knows the data: levels and titles are what the command says.
struct IgraphCommand {
    Dimension y;
    Dimension x1;
    Dimension x2;
    LegendVariable color;
    LegendVariable style;
    LegendVariable size;
    std::optional<ArrangementVariable> stack;
    std::optional<ArrangementVariable> cluster;
    VariableReference summaryVariable;
    std::vector<VariableReference> panels;
    PointLabel pointLabel;
    PointLabel caseLabel;
    std::vector<CategoryOrder> categoryOrders;
    std::vector<ScaleRange> scaleRanges;
    std::vector<ReferenceLine> referenceLines;
    std::optional<Coordinates> coordinates;  ///< Always set once the command is complete.
    bool isNormalized = false;
    bool hasSpikes = false;
    std::string title;
    std::string subtitle;
    std::string caption;
    std::string viewName;
    std::vector<std::string> chartLooks;  ///< All of them, NONE and empty ones too.
    std::vector<ChartElement> elements;
    std::vector<FitLine> fitLines;
    bool hasNumberOutOfRange = false;  ///< Some setting's number is outside its documented range.
};

/// The full keyword of an element: BAR, LINE and so on.
[[nodiscard]] Keyword ElementKeyword(ChartElement::Kind kind);

/// True when some element is of that kind. Linear in the elements.
[[nodiscard]] bool HoldsElement(const IgraphCommand& command, ChartElement::Kind kind);

/// True when some fit line is drawn. Linear in the fit lines.
[[nodiscard]] bool HoldsFitLine(const IgraphCommand& command);

/// True for BAR, AREA and LINE: the elements whose statistic depends on a summary function.
[[nodiscard]] bool IsSummaryElement(const ChartElement& element);

/// True when a BAR, AREA or LINE of a complete command shows the data as they are.
[[nodiscard]] bool ShowsRawValues(const IgraphCommand& command, const ChartElement& element);

/// What the slices of a PIE summarize.
[[nodiscard]] VariableReference PieQuantity(const IgraphCommand& command);

/// The last CATORDER of a variable; null when there is none. Linear in the CATORDERs.
[[nodiscard]] const CategoryOrder* FindCategoryOrder(const IgraphCommand& command,
                                                     const VariableReference& variable);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_MODEL_IGRAPHCOMMAND_H
