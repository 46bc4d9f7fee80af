#include "igraph/commandreader.h"

#include <optional>
#include <utility>

#include "igraph/elementreader.h"
#include "igraph/keywords.h"

namespace quillet::igraph {

namespace {

using Kind = SyntaxItem::Kind;

bool ReadLevel(SyntaxReader& reader, Dimension& dimension) {
    Keyword level{};
    if (!reader.ReadKeyword(keywords::kMeasures, level)) return false;
    dimension.level =
        level == Keyword::kScale ? MeasurementLevel::kScale : MeasurementLevel::kCategorical;
    if (level != Keyword::kScale || !reader.IsAt(Kind::kLeftParen)) return true;
    reader.Advance();
    const auto readEnd = [&reader, &dimension](Keyword end) {
        return reader.ReadEnd(end, dimension.ends);
    };
    return reader.ReadSettings(keywords::kScaleEnds, readEnd) && reader.Expect(Kind::kRightParen);
}

bool ReadAxisSetting(SyntaxReader& reader, Keyword setting, Dimension& dimension) {
    switch (setting) {
        case Keyword::kType:
            return ReadLevel(reader, dimension);
        case Keyword::kTitle:
            return reader.ReadLiteral(dimension.title.emplace());
        default:
            return reader.ReadEnd(setting, dimension.ends);
    }
}

bool ReadAxis(SyntaxReader& reader, Dimension& dimension) {
    dimension = Dimension{};
    if (reader.IsAtReference(keywords::kAxisSettings) &&
        !reader.ReadReference(keywords::kAxisSettings, dimension.variable)) {
        return false;
    }
    return reader.ReadSettings(keywords::kAxisSettings, [&reader, &dimension](Keyword setting) {
        return ReadAxisSetting(reader, setting, dimension);
    });
}

bool ReadLegendVariable(SyntaxReader& reader, LegendVariable& legend) {
    legend = LegendVariable{};
    if (!reader.ReadReference(keywords::kLegendSettings, legend.dimension.variable)) return false;
    return reader.ReadSettings(keywords::kLegendSettings, [&reader, &legend](Keyword setting) {
        switch (setting) {
            case Keyword::kLegend:
                return reader.ReadOnOff(legend.showsLegend);
            case Keyword::kCluster:
                legend.arrangement = Arrangement::kCluster;
                return true;
            case Keyword::kStack:
                legend.arrangement = Arrangement::kStack;
                return true;
            default:
                return ReadAxisSetting(reader, setting, legend.dimension);
        }
    });
}

bool ReadAxisLength(SyntaxReader& reader) {
    double ignored = 0.0;
    return reader.ReadLength(ignored);
}

bool ReadScaleRange(SyntaxReader& reader, Specification& spec) {
    ScaleRange range;
    if (!reader.ReadReference(keywords::kScaleEnds, range.variable)) return false;
    const auto readEnd = [&reader, &range](Keyword end) { return reader.ReadEnd(end, range.ends); };
    if (!reader.ReadSettings(keywords::kScaleEnds, readEnd)) return false;
    spec.scaleRanges.push_back(std::move(range));
    return true;
}

bool ReadCategoryOrder(SyntaxReader& reader, Specification& spec) {
    CategoryOrder order;
    if (!reader.ReadReference({}, order.variable) || !reader.Expect(Kind::kLeftParen)) return false;
    const auto readWord = [&reader, &order](Keyword word) {
        switch (word) {
            case Keyword::kAscending:
                order.descending = false;
                return true;
            case Keyword::kDescending:
                order.descending = true;
                return true;
            case Keyword::kShowEmpty:  // needs the variable's full list of categories
            case Keyword::kOmitEmpty:
                return true;
            case Keyword::kCount:
            case Keyword::kOccurrence:
            case Keyword::kLabels:
            case Keyword::kValues:
                order.order = word;
                order.summary.reset();
                return true;
            default:
                order.summary = SummaryCall{};
                order.summary->function = word;
                return reader.ReadSummaryArguments(*order.summary);
        }
    };
    if (!reader.ReadSettings(keywords::kCategoryOrder, readWord) ||
        !reader.Expect(Kind::kRightParen)) {
        return false;
    }
    spec.categoryOrders.push_back(std::move(order));
    return true;
}

bool ReadArrangement(SyntaxReader& reader, Arrangement arrangement,
                     std::optional<ArrangementVariable>& variable) {
    ArrangementVariable read;
    read.arrangement = arrangement;
    if (!reader.ReadReference({}, read.variable)) return false;
    variable = std::move(read);
    return true;
}

bool ReadPanel(SyntaxReader& reader, Specification& spec) {
    if (!reader.IsAtReference({})) return reader.Fail(SyntaxFault::kEmptyList);
    while (reader.IsAtReference({})) {
        if (!reader.ReadReference({}, spec.panels.emplace_back())) return false;
    }
    return true;
}

bool ReadPointLabel(SyntaxReader& reader, PointLabel& label) {
    label = PointLabel{};
    if (!reader.ReadReference(keywords::kPointLabelSettings, label.variable)) return false;
    // ALL counts as a reserved word wherever it stands, so the table cannot find it.
    if (reader.IsAt(Kind::kReservedWord) &&
        reader.Current().value == Spelling(Keyword::kAllCases)) {
        reader.Advance();
        return true;
    }
    if (!reader.IsAt(Kind::kWord)) return true;
    Keyword shown{};
    if (!reader.ReadKeyword(keywords::kPointLabelSettings, shown)) return false;
    label.isShown = shown != Keyword::kNone;
    return true;
}

bool ReadCoordinates(SyntaxReader& reader, Specification& spec) {
    Keyword coordinates{};
    if (!reader.ReadKeyword(keywords::kCoordinates, coordinates)) return false;
    if (coordinates == Keyword::kThree) {
        spec.coordinates = Coordinates::kThree;
    } else if (coordinates == Keyword::kHorizontal) {
        spec.coordinates = Coordinates::kHorizontal;
    } else {
        spec.coordinates = Coordinates::kVertical;
    }
    return true;
}

bool ReadReferenceLine(SyntaxReader& reader, Specification& spec) {
    ReferenceLine line;
    if (!reader.ReadReference(keywords::kRefLineSettings, line.variable)) return false;
    if (!reader.ReadNumber(line.value)) return false;
    const auto readSetting = [&reader, &line](Keyword setting) {
        return setting == Keyword::kSpike ? reader.ReadOnOff(line.hasSpikes) : reader.SkipOnOff();
    };
    if (!reader.ReadSettings(keywords::kRefLineSettings, readSetting)) return false;
    spec.referenceLines.push_back(std::move(line));
    return true;
}

bool ReadSpike(SyntaxReader& reader, Specification& spec) {
    spec.hasSpikes = true;
    return reader.ReadSettings(keywords::kSpikeSettings, [&reader](Keyword place) {
        if (place != Keyword::kCentroid) return true;
        bool isRead = false;
        Keyword ignored{};
        return reader.ReadOptionalKeyword(keywords::kTotal, keywords::kSpikeSettings, isRead,
                                          ignored);
    });
}

bool SkipFormat(SyntaxReader& reader) {
    while (!reader.IsAt(Kind::kSlash) && !reader.IsAt(Kind::kEnd)) reader.Advance();
    return true;
}

bool AddElement(SyntaxReader& reader, ChartElement::Kind kind, Specification& spec) {
    ChartElement& element = spec.elements.emplace_back();
    element.kind = kind;
    return ReadElement(reader, element);
}

bool ReadSubcommand(SyntaxReader& reader, Specification& spec) {
    if (!reader.IsAt(Kind::kWord)) return reader.Fail(SyntaxFault::kSubcommand);
    const KeywordMatch match = MatchKeyword(reader.Current().value, keywords::kSubcommands);
    if (match.outcome != KeywordMatch::Outcome::kMatch)
        return reader.Fail(SyntaxFault::kSubcommand);
    reader.Advance();
    switch (match.keyword) {
        case Keyword::kY:
            return ReadAxis(reader, spec.y);
        case Keyword::kX1:
            return ReadAxis(reader, spec.x1);
        case Keyword::kX2:
            return ReadAxis(reader, spec.x2);
        case Keyword::kColor:
            return ReadLegendVariable(reader, spec.color);
        case Keyword::kStyle:
            return ReadLegendVariable(reader, spec.style);
        case Keyword::kSize:
            return ReadLegendVariable(reader, spec.size);
        case Keyword::kYLength:
        case Keyword::kX1Length:
        case Keyword::kX2Length:
            return ReadAxisLength(reader);
        case Keyword::kScaleRange:
            return ReadScaleRange(reader, spec);
        case Keyword::kCatOrder:
            return ReadCategoryOrder(reader, spec);
        case Keyword::kNormalize:
            spec.isNormalized = true;
            return true;
        case Keyword::kStack:
            return ReadArrangement(reader, Arrangement::kStack, spec.stack);
        case Keyword::kCluster:
            return ReadArrangement(reader, Arrangement::kCluster, spec.cluster);
        case Keyword::kSummaryVar:
            return reader.ReadReference({}, spec.summaryVariable);
        case Keyword::kPanel:
            return ReadPanel(reader, spec);
        case Keyword::kPointLabel:
            return ReadPointLabel(reader, spec.pointLabel);
        case Keyword::kCaseLabel:
            return ReadPointLabel(reader, spec.caseLabel);
        case Keyword::kCoordinate:
            return ReadCoordinates(reader, spec);
        case Keyword::kEffect:
            return reader.SkipKeyword(keywords::kEffects);
        case Keyword::kTitle:
            return reader.ReadLiteral(spec.title);
        case Keyword::kSubtitle:
            return reader.ReadLiteral(spec.subtitle);
        case Keyword::kCaption:
            return reader.ReadLiteral(spec.caption);
        case Keyword::kViewName:
            return reader.ReadLiteral(spec.viewName);
        case Keyword::kChartLook:
            return reader.ReadLiteral(spec.chartLooks.emplace_back());
        case Keyword::kRefLine:
            return ReadReferenceLine(reader, spec);
        case Keyword::kSpike:
            return ReadSpike(reader, spec);
        case Keyword::kFormat:
            return SkipFormat(reader);
        case Keyword::kKey:
            return reader.SkipOnOff();
        case Keyword::kScatter:
            return AddElement(reader, ChartElement::Kind::kScatter, spec);
        case Keyword::kBar:
            return AddElement(reader, ChartElement::Kind::kBar, spec);
        case Keyword::kArea:
            return AddElement(reader, ChartElement::Kind::kArea, spec);
        case Keyword::kLine:
            return AddElement(reader, ChartElement::Kind::kLine, spec);
        case Keyword::kPie:
            return AddElement(reader, ChartElement::Kind::kPie, spec);
        case Keyword::kBox:
            return AddElement(reader, ChartElement::Kind::kBox, spec);
        case Keyword::kErrorBar:
            return AddElement(reader, ChartElement::Kind::kErrorBar, spec);
        case Keyword::kHistogram:
            return AddElement(reader, ChartElement::Kind::kHistogram, spec);
        case Keyword::kFitLine:
            return ReadFitLine(reader, spec.fitLines.emplace_back());
        default:
            return reader.Fail(SyntaxFault::kSubcommand);
    }
}

bool ReadSubcommands(SyntaxReader& reader, Specification& spec) {
    if (!reader.IsAt(Kind::kWord) || !reader.Current().value.starts_with("IGR")) {
        return reader.Fail(SyntaxFault::kNotIgraph);
    }
    reader.Advance();
    bool isFirst = true;
    while (!reader.IsAt(Kind::kEnd)) {
        if (reader.IsAt(Kind::kSlash)) {
            reader.Advance();
        } else if (!isFirst) {
            return reader.Fail(SyntaxFault::kStrayToken);
        }
        isFirst = false;
        // A comment leaves a slash of its own behind.
        if (reader.IsAt(Kind::kSlash) || reader.IsAt(Kind::kEnd)) continue;
        if (!ReadSubcommand(reader, spec)) return false;
    }
    return true;
}

}  // namespace

SyntaxFault ReadCommand(TokenSequenceBase& sequence, Specification& spec) {
    SyntaxReader reader(ReadSyntaxItems(sequence));
    if (!ReadSubcommands(reader, spec)) return reader.Fault();
    spec.hasNumberOutOfRange = reader.HasNumberOutOfRange();
    return SyntaxFault::kNone;
}

}  // namespace quillet::igraph
