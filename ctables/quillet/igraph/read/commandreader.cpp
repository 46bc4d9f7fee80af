#include "igraph/read/commandreader.h"

#include <optional>
#include <utility>

#include "igraph/read/elementreader.h"
#include "igraph/read/keywordsets.h"

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

bool ReadScaleRange(SyntaxReader& reader, IgraphCommand& command) {
    ScaleRange range;
    if (!reader.ReadReference(keywords::kScaleEnds, range.variable)) return false;
    const auto readEnd = [&reader, &range](Keyword end) { return reader.ReadEnd(end, range.ends); };
    if (!reader.ReadSettings(keywords::kScaleEnds, readEnd)) return false;
    command.scaleRanges.push_back(std::move(range));
    return true;
}

bool ReadCategoryOrder(SyntaxReader& reader, IgraphCommand& command) {
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
    command.categoryOrders.push_back(std::move(order));
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

bool ReadPanel(SyntaxReader& reader, IgraphCommand& command) {
    if (!reader.IsAtReference({})) return reader.Fail(SyntaxFault::kEmptyList);
    while (reader.IsAtReference({})) {
        if (!reader.ReadReference({}, command.panels.emplace_back())) return false;
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

bool ReadCoordinates(SyntaxReader& reader, IgraphCommand& command) {
    Keyword coordinates{};
    if (!reader.ReadKeyword(keywords::kCoordinates, coordinates)) return false;
    if (coordinates == Keyword::kThree) {
        command.coordinates = Coordinates::kThree;
    } else if (coordinates == Keyword::kHorizontal) {
        command.coordinates = Coordinates::kHorizontal;
    } else {
        command.coordinates = Coordinates::kVertical;
    }
    return true;
}

bool ReadReferenceLine(SyntaxReader& reader, IgraphCommand& command) {
    ReferenceLine line;
    if (!reader.ReadReference(keywords::kRefLineSettings, line.variable)) return false;
    if (!reader.ReadNumber(line.value)) return false;
    const auto readSetting = [&reader, &line](Keyword setting) {
        return setting == Keyword::kSpike ? reader.ReadOnOff(line.hasSpikes) : reader.SkipOnOff();
    };
    if (!reader.ReadSettings(keywords::kRefLineSettings, readSetting)) return false;
    command.referenceLines.push_back(std::move(line));
    return true;
}

bool ReadSpike(SyntaxReader& reader, IgraphCommand& command) {
    command.hasSpikes = true;
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

bool AddElement(SyntaxReader& reader, ChartElement::Kind kind, IgraphCommand& command) {
    ChartElement& element = command.elements.emplace_back();
    element.kind = kind;
    return ReadElement(reader, element);
}

bool ReadSubcommand(SyntaxReader& reader, IgraphCommand& command) {
    if (!reader.IsAt(Kind::kWord)) return reader.Fail(SyntaxFault::kSubcommand);
    const KeywordMatch match = MatchKeyword(reader.Current().value, keywords::kSubcommands);
    if (match.outcome != KeywordMatch::Outcome::kMatch)
        return reader.Fail(SyntaxFault::kSubcommand);
    reader.Advance();
    switch (match.keyword) {
        case Keyword::kY:
            return ReadAxis(reader, command.y);
        case Keyword::kX1:
            return ReadAxis(reader, command.x1);
        case Keyword::kX2:
            return ReadAxis(reader, command.x2);
        case Keyword::kColor:
            return ReadLegendVariable(reader, command.color);
        case Keyword::kStyle:
            return ReadLegendVariable(reader, command.style);
        case Keyword::kSize:
            return ReadLegendVariable(reader, command.size);
        case Keyword::kYLength:
        case Keyword::kX1Length:
        case Keyword::kX2Length:
            return ReadAxisLength(reader);
        case Keyword::kScaleRange:
            return ReadScaleRange(reader, command);
        case Keyword::kCatOrder:
            return ReadCategoryOrder(reader, command);
        case Keyword::kNormalize:
            command.isNormalized = true;
            return true;
        case Keyword::kStack:
            return ReadArrangement(reader, Arrangement::kStack, command.stack);
        case Keyword::kCluster:
            return ReadArrangement(reader, Arrangement::kCluster, command.cluster);
        case Keyword::kSummaryVar:
            return reader.ReadReference({}, command.summaryVariable);
        case Keyword::kPanel:
            return ReadPanel(reader, command);
        case Keyword::kPointLabel:
            return ReadPointLabel(reader, command.pointLabel);
        case Keyword::kCaseLabel:
            return ReadPointLabel(reader, command.caseLabel);
        case Keyword::kCoordinate:
            return ReadCoordinates(reader, command);
        case Keyword::kEffect:
            return reader.SkipKeyword(keywords::kEffects);
        case Keyword::kTitle:
            return reader.ReadLiteral(command.title);
        case Keyword::kSubtitle:
            return reader.ReadLiteral(command.subtitle);
        case Keyword::kCaption:
            return reader.ReadLiteral(command.caption);
        case Keyword::kViewName:
            return reader.ReadLiteral(command.viewName);
        case Keyword::kChartLook:
            return reader.ReadLiteral(command.chartLooks.emplace_back());
        case Keyword::kRefLine:
            return ReadReferenceLine(reader, command);
        case Keyword::kSpike:
            return ReadSpike(reader, command);
        case Keyword::kFormat:
            return SkipFormat(reader);
        case Keyword::kKey:
            return reader.SkipOnOff();
        case Keyword::kScatter:
            return AddElement(reader, ChartElement::Kind::kScatter, command);
        case Keyword::kBar:
            return AddElement(reader, ChartElement::Kind::kBar, command);
        case Keyword::kArea:
            return AddElement(reader, ChartElement::Kind::kArea, command);
        case Keyword::kLine:
            return AddElement(reader, ChartElement::Kind::kLine, command);
        case Keyword::kPie:
            return AddElement(reader, ChartElement::Kind::kPie, command);
        case Keyword::kBox:
            return AddElement(reader, ChartElement::Kind::kBox, command);
        case Keyword::kErrorBar:
            return AddElement(reader, ChartElement::Kind::kErrorBar, command);
        case Keyword::kHistogram:
            return AddElement(reader, ChartElement::Kind::kHistogram, command);
        case Keyword::kFitLine:
            return ReadFitLine(reader, command.fitLines.emplace_back());
        default:
            return reader.Fail(SyntaxFault::kSubcommand);
    }
}

bool ReadSubcommands(SyntaxReader& reader, IgraphCommand& command) {
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
        if (!ReadSubcommand(reader, command)) return false;
    }
    return true;
}

}  // namespace

SyntaxFault ReadCommand(TokenSequenceBase& sequence, IgraphCommand& command) {
    SyntaxReader reader(sequence);
    if (!ReadSubcommands(reader, command)) return reader.Fault();
    command.hasNumberOutOfRange = reader.HasNumberOutOfRange();
    return SyntaxFault::kNone;
}

}  // namespace quillet::igraph
