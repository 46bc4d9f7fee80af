#include "igraph/read/completion.h"

#include <algorithm>
#include <array>

#include "igraph/model/summaryfunction.h"

namespace quillet::igraph {

namespace {

using ElementKind = ChartElement::Kind;

// What a command holds, looked up once.
struct Contents {
    explicit Contents(const IgraphCommand& command)
        : hasFitLine(HoldsFitLine(command)),
          hasScatter(HoldsElement(command, ElementKind::kScatter)),
          hasBar(HoldsElement(command, ElementKind::kBar)),
          hasArea(HoldsElement(command, ElementKind::kArea)),
          hasPie(HoldsElement(command, ElementKind::kPie)),
          hasBox(HoldsElement(command, ElementKind::kBox)),
          hasErrorBar(HoldsElement(command, ElementKind::kErrorBar)),
          hasHistogram(HoldsElement(command, ElementKind::kHistogram)),
          hasSummary(std::any_of(command.elements.begin(), command.elements.end(),
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
void CompleteShorthand(ArrangementVariable& shorthand, IgraphCommand& command) {
    LegendVariable* pLegend = nullptr;
    if (!command.color.dimension.variable.IsGiven()) {
        pLegend = &command.color;
    } else if (!command.style.dimension.variable.IsGiven()) {
        pLegend = &command.style;
    }
    shorthand.isLeftOut = pLegend == nullptr;
    if (shorthand.isLeftOut) return;
    *pLegend = LegendVariable{};
    pLegend->dimension.variable = shorthand.variable;
    pLegend->arrangement = shorthand.arrangement;
}

void CompleteShorthands(IgraphCommand& command) {
    const bool clusterFirst = command.stack && command.cluster &&
                              command.cluster->variable.position < command.stack->variable.position;
    if (clusterFirst) CompleteShorthand(*command.cluster, command);
    if (command.stack) CompleteShorthand(*command.stack, command);
    if (command.cluster && !clusterFirst) CompleteShorthand(*command.cluster, command);
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

void FillIn(const Contents& contents, IgraphCommand& command) {
    if (!contents.hasPie) CompleteShorthands(command);
    const bool drawsPairs = contents.hasScatter || contents.hasHistogram || contents.hasFitLine;
    const MeasurementLevel levelOfX =
        drawsPairs ? MeasurementLevel::kScale : MeasurementLevel::kCategorical;
    CompleteLevel(command.y, MeasurementLevel::kScale);
    CompleteLevel(command.x1, levelOfX);
    CompleteLevel(command.x2, levelOfX);
    CompleteLevel(command.color.dimension, MeasurementLevel::kCategorical);
    CompleteLevel(command.style.dimension, MeasurementLevel::kCategorical);
    CompleteLevel(command.size.dimension, MeasurementLevel::kCategorical);
    if (!command.coordinates) {
        command.coordinates =
            command.x2.variable.IsGiven() ? Coordinates::kThree : Coordinates::kVertical;
    }
    CompleteArrangement(contents, command.color);
    CompleteArrangement(contents, command.style);
    for (Dimension* pDimension : {&command.y, &command.x1, &command.x2, &command.color.dimension,
                                  &command.style.dimension, &command.size.dimension}) {
        CompleteEnds(command.scaleRanges, *pDimension);
    }
}

// --- Validity. Each function answers for one fault.

bool HasNothingToDraw(const IgraphCommand& command, const Contents& contents) {
    return command.elements.empty() && !contents.hasFitLine && !command.hasSpikes;
}

bool HasNoVariable(const IgraphCommand& /*command*/, const Contents& contents) {
    return !contents.hasVariable;
}

bool HasNoY(const IgraphCommand& command, const Contents& contents) {
    return !command.y.variable.IsGiven() && !contents.hasPie;
}

bool HasNoX1(const IgraphCommand& command, const Contents& contents) {
    const bool isNeeded = contents.hasScatter || contents.hasHistogram || contents.hasFitLine;
    return isNeeded && !command.x1.variable.IsGiven();
}

bool IsNoVariable(const VariableReference& reference) {
    return reference.IsCounted() || reference.IsCaseNumber();
}

bool HasBuiltinInLegend(const IgraphCommand& command) {
    return IsNoVariable(command.color.dimension.variable) ||
           IsNoVariable(command.style.dimension.variable) ||
           IsNoVariable(command.size.dimension.variable) ||
           (command.stack && IsNoVariable(command.stack->variable)) ||
           (command.cluster && IsNoVariable(command.cluster->variable));
}

// Counts have a scale and perhaps a line across it, but no categories; cases have neither.
bool RefersToCases(const IgraphCommand& command) {
    const auto refers = [](const auto& setting) { return setting.variable.IsCaseNumber(); };
    return std::any_of(command.categoryOrders.begin(), command.categoryOrders.end(), refers) ||
           std::any_of(command.scaleRanges.begin(), command.scaleRanges.end(), refers) ||
           std::any_of(command.referenceLines.begin(), command.referenceLines.end(), refers);
}

bool HasWrongBuiltin(const IgraphCommand& command, const Contents& /*contents*/) {
    const bool onAxis = command.x1.variable.IsCounted() || command.x2.variable.IsCounted();
    const bool inLabel =
        IsNoVariable(command.pointLabel.variable) || IsNoVariable(command.caseLabel.variable);
    const bool inPanel = std::any_of(command.panels.begin(), command.panels.end(), IsNoVariable);
    return onAxis || inLabel || inPanel || command.summaryVariable.IsCaseNumber() ||
           HasBuiltinInLegend(command) || RefersToCases(command);
}

bool HasCountedY(const IgraphCommand& command, const Contents& contents) {
    const bool needsVariable =
        contents.hasScatter || contents.hasBox || contents.hasErrorBar || contents.hasFitLine;
    return needsVariable && command.y.variable.IsCounted();
}

bool HasWrongHistogramAxes(const IgraphCommand& command, const Contents& contents) {
    const bool isWrong = !command.y.variable.IsCounted() || !command.x1.IsScale() ||
                         command.x1.variable.IsCaseNumber();
    return contents.hasHistogram && isWrong;
}

bool HasFunctionWithoutVariable(const IgraphCommand& command, const Contents& contents) {
    return contents.hasSummary && !command.y.variable.IsVariable();
}

bool HasWrongCategoricalY(const IgraphCommand& command, const Contents& contents) {
    if (!command.y.IsCategorical()) return false;
    if (contents.hasBox || contents.hasErrorBar || contents.hasFitLine) return true;
    return std::any_of(command.elements.begin(), command.elements.end(),
                       [](const ChartElement& element) {
                           return IsSummaryElement(element) && element.summary &&
                                  element.summary->function != Keyword::kMode;
                       });
}

bool HasWrongLegendLevel(const IgraphCommand& command, const Contents& /*contents*/) {
    const bool isArrangedScale = command.color.dimension.IsScale() && command.color.arrangement;
    return command.style.dimension.IsScale() || command.size.arrangement || isArrangedScale;
}

bool HasWrongCoordinates(const IgraphCommand& command, const Contents& contents) {
    const bool isThree = command.coordinates == Coordinates::kThree;
    if (isThree) return !command.x2.variable.IsGiven() && !contents.hasPie;
    return command.x2.variable.IsGiven();
}

bool HasNumberOutOfRange(const IgraphCommand& command, const Contents& /*contents*/) {
    return command.hasNumberOutOfRange;
}

bool HasNoExtent(const IgraphCommand& command, const Contents& /*contents*/) {
    return std::any_of(command.elements.begin(), command.elements.end(),
                       [](const ChartElement& element) {
                           return element.kind == ElementKind::kErrorBar && !element.extent;
                       });
}

bool HasWrongPie(const IgraphCommand& command, const Contents& contents) {
    if (!contents.hasPie) return false;
    if (command.elements.size() > 1 || contents.hasFitLine) return true;
    if (!command.color.dimension.IsCategorical() && !command.style.dimension.IsCategorical()) {
        return true;
    }
    const std::optional<SummaryCall>& summary = command.elements.front().summary;
    if (!summary) return false;
    return !PieQuantity(command).IsVariable() ||
           !FindSummaryFunction(summary->function).allowedInPie;
}

bool HasWrongReferenceLine(const IgraphCommand& command, const Contents& /*contents*/) {
    return std::any_of(command.referenceLines.begin(), command.referenceLines.end(),
                       [&command](const ReferenceLine& line) {
                           return !line.variable.IsSameAs(command.x1.variable) &&
                                  !line.variable.IsSameAs(command.x2.variable) &&
                                  !line.variable.IsSameAs(command.y.variable);
                       });
}

bool HasWrongFitLineLevel(const IgraphCommand& command, const Contents& contents) {
    return contents.hasFitLine && (!command.x1.IsScale() || !command.y.IsScale());
}

bool HasWrongScaleEnds(const IgraphCommand& command, const Contents& /*contents*/) {
    const std::array dimensions = {&command.y, &command.x1, &command.x2, &command.color.dimension,
                                   &command.size.dimension};
    return std::any_of(dimensions.begin(), dimensions.end(), [](const Dimension* pDimension) {
        const ScaleEnds& ends = pDimension->ends;
        return pDimension->IsScale() && ends.minimum && ends.maximum &&
               ends.minimum->value >= ends.maximum->value;
    });
}

bool HasWrongCaseNumberY(const IgraphCommand& command, const Contents& contents) {
    if (!command.y.variable.IsCaseNumber()) return false;
    return contents.hasFitLine || std::any_of(command.elements.begin(), command.elements.end(),
                                              [](const ChartElement& element) {
                                                  return element.kind != ElementKind::kScatter;
                                              });
}

bool HasSpikesWithoutAxes(const IgraphCommand& command, const Contents& contents) {
    const bool isAlone = command.elements.empty() && !contents.hasFitLine;
    return isAlone && !(command.x1.variable.IsGiven() && command.y.variable.IsGiven());
}

struct ValidityRule {
    ValidityFault fault;
    bool (*isBroken)(const IgraphCommand&, const Contents&);
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

ValidityFault CompleteCommand(IgraphCommand& command, std::vector<VariableRole>& roles) {
    Contents contents(command);
    FillIn(contents, command);
    roles = VariableRoles(command);
    contents.hasVariable = std::any_of(roles.begin(), roles.end(), [](const VariableRole& role) {
        return role.pReference->IsVariable();
    });
    for (const ValidityRule& rule : kRules) {
        if (rule.isBroken(command, contents)) return rule.fault;
    }
    return ValidityFault::kNone;
}

}  // namespace quillet::igraph
