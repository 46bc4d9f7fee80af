#include "igraph/completion.h"

#include <algorithm>
#include <array>

#include "igraph/chartfunctions.h"

namespace quillet::igraph {

namespace {

using ElementKind = ChartElement::Kind;

// What a command holds, looked up once.
struct Contents {
    explicit Contents(const Specification& spec)
        : hasFitLine(HoldsFitLine(spec)),
          hasScatter(HoldsElement(spec, ElementKind::kScatter)),
          hasBar(HoldsElement(spec, ElementKind::kBar)),
          hasArea(HoldsElement(spec, ElementKind::kArea)),
          hasPie(HoldsElement(spec, ElementKind::kPie)),
          hasBox(HoldsElement(spec, ElementKind::kBox)),
          hasErrorBar(HoldsElement(spec, ElementKind::kErrorBar)),
          hasHistogram(HoldsElement(spec, ElementKind::kHistogram)),
          hasSummary(std::any_of(spec.elements.begin(), spec.elements.end(),
                                 [](const ChartElement& element) {
                                     return IsSummaryElement(element) && element.summary;
                                 })) {}

    bool hasFitLine;
    bool hasScatter;
    bool hasBar;
    bool hasArea;
    bool hasPie;
    bool hasBox;
    bool hasErrorBar;
    bool hasHistogram;
    bool hasSummary;           ///< A BAR, AREA or LINE with a function.
    bool hasVariable = false;  ///< Known once the command is complete.
};

// --- Defaults. Only what the command leaves open is set.

void CompleteLevel(Dimension& dimension, MeasurementLevel usual) {
    if (!dimension.variable.IsGiven()) return;
    // Counts are always numbers, whatever is written beside them.
    if (dimension.variable.IsCounted()) dimension.level = MeasurementLevel::kScale;
    if (dimension.level) return;
    dimension.level = dimension.variable.IsCaseNumber() ? MeasurementLevel::kCategorical : usual;
}

// STACK and CLUSTER without a pie are a short way to write a legend variable.
void CompleteShorthand(ArrangementVariable& shorthand, Specification& spec) {
    LegendVariable* pLegend = nullptr;
    if (!spec.color.dimension.variable.IsGiven()) {
        pLegend = &spec.color;
    } else if (!spec.style.dimension.variable.IsGiven()) {
        pLegend = &spec.style;
    }
    shorthand.isLeftOut = pLegend == nullptr;
    if (shorthand.isLeftOut) return;
    *pLegend = LegendVariable{};
    pLegend->dimension.variable = shorthand.variable;
    pLegend->arrangement = shorthand.arrangement;
}

void CompleteShorthands(Specification& spec) {
    const bool clusterFirst = spec.stack && spec.cluster &&
                              spec.cluster->variable.position < spec.stack->variable.position;
    if (clusterFirst) CompleteShorthand(*spec.cluster, spec);
    if (spec.stack) CompleteShorthand(*spec.stack, spec);
    if (spec.cluster && !clusterFirst) CompleteShorthand(*spec.cluster, spec);
}

void CompleteArrangement(const Contents& contents, LegendVariable& legend) {
    if (!legend.dimension.IsCategorical() || legend.arrangement) return;
    if (contents.hasBar || contents.hasBox || contents.hasErrorBar) {
        legend.arrangement = Arrangement::kCluster;
    } else if (contents.hasArea || contents.hasHistogram) {
        legend.arrangement = Arrangement::kStack;
    } else {
        legend.arrangement = Arrangement::kOverlay;
    }
}

void TakeLater(const std::optional<PlacedNumber>& candidate, std::optional<PlacedNumber>& end) {
    if (candidate && (!end || end->position < candidate->position)) end = candidate;
}

void CompleteEnds(const std::vector<ScaleRange>& ranges, Dimension& dimension) {
    for (const ScaleRange& range : ranges) {
        if (!range.variable.IsSameAs(dimension.variable)) continue;
        TakeLater(range.ends.minimum, dimension.ends.minimum);
        TakeLater(range.ends.maximum, dimension.ends.maximum);
    }
}

void FillIn(const Contents& contents, Specification& spec) {
    if (!contents.hasPie) CompleteShorthands(spec);
    const bool drawsPairs = contents.hasScatter || contents.hasHistogram || contents.hasFitLine;
    const MeasurementLevel levelOfX =
        drawsPairs ? MeasurementLevel::kScale : MeasurementLevel::kCategorical;
    CompleteLevel(spec.y, MeasurementLevel::kScale);
    CompleteLevel(spec.x1, levelOfX);
    CompleteLevel(spec.x2, levelOfX);
    CompleteLevel(spec.color.dimension, MeasurementLevel::kCategorical);
    CompleteLevel(spec.style.dimension, MeasurementLevel::kCategorical);
    CompleteLevel(spec.size.dimension, MeasurementLevel::kCategorical);
    if (!spec.coordinates) {
        spec.coordinates =
            spec.x2.variable.IsGiven() ? Coordinates::kThree : Coordinates::kVertical;
    }
    CompleteArrangement(contents, spec.color);
    CompleteArrangement(contents, spec.style);
    for (Dimension* pDimension : {&spec.y, &spec.x1, &spec.x2, &spec.color.dimension,
                                  &spec.style.dimension, &spec.size.dimension}) {
        CompleteEnds(spec.scaleRanges, *pDimension);
    }
}

// --- Validity. Each function answers for one fault.

bool HasNothingToDraw(const Specification& spec, const Contents& contents) {
    return spec.elements.empty() && !contents.hasFitLine && !spec.hasSpikes;
}

bool HasNoVariable(const Specification& /*spec*/, const Contents& contents) {
    return !contents.hasVariable;
}

bool HasNoY(const Specification& spec, const Contents& contents) {
    return !spec.y.variable.IsGiven() && !contents.hasPie;
}

bool HasNoX1(const Specification& spec, const Contents& contents) {
    const bool isNeeded = contents.hasScatter || contents.hasHistogram || contents.hasFitLine;
    return isNeeded && !spec.x1.variable.IsGiven();
}

bool IsNoVariable(const VariableReference& reference) {
    return reference.IsCounted() || reference.IsCaseNumber();
}

bool HasBuiltinInLegend(const Specification& spec) {
    return IsNoVariable(spec.color.dimension.variable) ||
           IsNoVariable(spec.style.dimension.variable) ||
           IsNoVariable(spec.size.dimension.variable) ||
           (spec.stack && IsNoVariable(spec.stack->variable)) ||
           (spec.cluster && IsNoVariable(spec.cluster->variable));
}

// Counts have a scale and perhaps a line across it, but no categories; cases have neither.
bool RefersToCases(const Specification& spec) {
    const auto refers = [](const auto& setting) { return setting.variable.IsCaseNumber(); };
    return std::any_of(spec.categoryOrders.begin(), spec.categoryOrders.end(), refers) ||
           std::any_of(spec.scaleRanges.begin(), spec.scaleRanges.end(), refers) ||
           std::any_of(spec.referenceLines.begin(), spec.referenceLines.end(), refers);
}

bool HasWrongBuiltin(const Specification& spec, const Contents& /*contents*/) {
    const bool onAxis = spec.x1.variable.IsCounted() || spec.x2.variable.IsCounted();
    const bool inLabel =
        IsNoVariable(spec.pointLabel.variable) || IsNoVariable(spec.caseLabel.variable);
    const bool inPanel = std::any_of(spec.panels.begin(), spec.panels.end(), IsNoVariable);
    return onAxis || inLabel || inPanel || spec.summaryVariable.IsCaseNumber() ||
           HasBuiltinInLegend(spec) || RefersToCases(spec);
}

bool HasCountedY(const Specification& spec, const Contents& contents) {
    const bool needsVariable =
        contents.hasScatter || contents.hasBox || contents.hasErrorBar || contents.hasFitLine;
    return needsVariable && spec.y.variable.IsCounted();
}

bool HasWrongHistogramAxes(const Specification& spec, const Contents& contents) {
    const bool isWrong =
        !spec.y.variable.IsCounted() || !spec.x1.IsScale() || spec.x1.variable.IsCaseNumber();
    return contents.hasHistogram && isWrong;
}

bool HasFunctionWithoutVariable(const Specification& spec, const Contents& contents) {
    return contents.hasSummary && !spec.y.variable.IsVariable();
}

bool HasWrongCategoricalY(const Specification& spec, const Contents& contents) {
    if (!spec.y.IsCategorical()) return false;
    if (contents.hasBox || contents.hasErrorBar || contents.hasFitLine) return true;
    return std::any_of(spec.elements.begin(), spec.elements.end(), [](const ChartElement& element) {
        return IsSummaryElement(element) && element.summary &&
               element.summary->function != Keyword::kMode;
    });
}

bool HasWrongLegendLevel(const Specification& spec, const Contents& /*contents*/) {
    const bool isArrangedScale = spec.color.dimension.IsScale() && spec.color.arrangement;
    return spec.style.dimension.IsScale() || spec.size.arrangement || isArrangedScale;
}

bool HasWrongCoordinates(const Specification& spec, const Contents& contents) {
    const bool isThree = spec.coordinates == Coordinates::kThree;
    if (isThree) return !spec.x2.variable.IsGiven() && !contents.hasPie;
    return spec.x2.variable.IsGiven();
}

bool HasNumberOutOfRange(const Specification& spec, const Contents& /*contents*/) {
    return spec.hasNumberOutOfRange;
}

bool HasNoExtent(const Specification& spec, const Contents& /*contents*/) {
    return std::any_of(spec.elements.begin(), spec.elements.end(), [](const ChartElement& element) {
        return element.kind == ElementKind::kErrorBar && !element.extent;
    });
}

bool HasWrongPie(const Specification& spec, const Contents& contents) {
    if (!contents.hasPie) return false;
    if (spec.elements.size() > 1 || contents.hasFitLine) return true;
    if (!spec.color.dimension.IsCategorical() && !spec.style.dimension.IsCategorical()) {
        return true;
    }
    const std::optional<SummaryCall>& summary = spec.elements.front().summary;
    if (!summary) return false;
    return !PieQuantity(spec).IsVariable() || !FindSummaryFunction(summary->function).allowedInPie;
}

bool HasWrongReferenceLine(const Specification& spec, const Contents& /*contents*/) {
    return std::any_of(spec.referenceLines.begin(), spec.referenceLines.end(),
                       [&spec](const ReferenceLine& line) {
                           return !line.variable.IsSameAs(spec.x1.variable) &&
                                  !line.variable.IsSameAs(spec.x2.variable) &&
                                  !line.variable.IsSameAs(spec.y.variable);
                       });
}

bool HasWrongFitLineLevel(const Specification& spec, const Contents& contents) {
    return contents.hasFitLine && (!spec.x1.IsScale() || !spec.y.IsScale());
}

bool HasWrongScaleEnds(const Specification& spec, const Contents& /*contents*/) {
    const std::array dimensions = {&spec.y, &spec.x1, &spec.x2, &spec.color.dimension,
                                   &spec.size.dimension};
    return std::any_of(dimensions.begin(), dimensions.end(), [](const Dimension* pDimension) {
        const ScaleEnds& ends = pDimension->ends;
        return pDimension->IsScale() && ends.minimum && ends.maximum &&
               ends.minimum->value >= ends.maximum->value;
    });
}

bool HasWrongCaseNumberY(const Specification& spec, const Contents& contents) {
    if (!spec.y.variable.IsCaseNumber()) return false;
    return contents.hasFitLine ||
           std::any_of(spec.elements.begin(), spec.elements.end(), [](const ChartElement& element) {
               return element.kind != ElementKind::kScatter;
           });
}

bool HasSpikesWithoutAxes(const Specification& spec, const Contents& contents) {
    const bool isAlone = spec.elements.empty() && !contents.hasFitLine;
    return isAlone && !(spec.x1.variable.IsGiven() && spec.y.variable.IsGiven());
}

struct ValidityRule {
    ValidityFault fault;
    bool (*isBroken)(const Specification&, const Contents&);
};

constexpr std::array kRules = {
    ValidityRule{ValidityFault::kNothingToDraw, HasNothingToDraw},
    ValidityRule{ValidityFault::kNoVariable, HasNoVariable},
    ValidityRule{ValidityFault::kNoY, HasNoY},
    ValidityRule{ValidityFault::kNoX1, HasNoX1},
    ValidityRule{ValidityFault::kWrongBuiltin, HasWrongBuiltin},
    ValidityRule{ValidityFault::kCountedY, HasCountedY},
    ValidityRule{ValidityFault::kHistogramAxes, HasWrongHistogramAxes},
    ValidityRule{ValidityFault::kFunctionWithoutVariable, HasFunctionWithoutVariable},
    ValidityRule{ValidityFault::kCategoricalY, HasWrongCategoricalY},
    ValidityRule{ValidityFault::kLegendLevel, HasWrongLegendLevel},
    ValidityRule{ValidityFault::kCoordinates, HasWrongCoordinates},
    ValidityRule{ValidityFault::kNumberOutOfRange, HasNumberOutOfRange},
    ValidityRule{ValidityFault::kNoExtent, HasNoExtent},
    ValidityRule{ValidityFault::kPie, HasWrongPie},
    ValidityRule{ValidityFault::kReferenceLine, HasWrongReferenceLine},
    ValidityRule{ValidityFault::kFitLineLevel, HasWrongFitLineLevel},
    ValidityRule{ValidityFault::kScaleEnds, HasWrongScaleEnds},
    ValidityRule{ValidityFault::kCaseNumberY, HasWrongCaseNumberY},
    ValidityRule{ValidityFault::kSpikesWithoutAxes, HasSpikesWithoutAxes},
};

}  // namespace

ValidityFault CompleteCommand(Specification& spec, std::vector<VariableRole>& roles) {
    Contents contents(spec);
    FillIn(contents, spec);
    roles = VariableRoles(spec);
    contents.hasVariable = std::any_of(roles.begin(), roles.end(), [](const VariableRole& role) {
        return role.pReference->IsVariable();
    });
    for (const ValidityRule& rule : kRules) {
        if (rule.isBroken(spec, contents)) return rule.fault;
    }
    return ValidityFault::kNone;
}

}  // namespace quillet::igraph
