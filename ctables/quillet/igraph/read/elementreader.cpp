#include "igraph/read/elementreader.h"

#include <cmath>

#include "igraph/read/keywordsets.h"

namespace quillet::igraph {

namespace {

using Kind = SyntaxItem::Kind;

constexpr NumberRange kPercentages = {0.0, 100.0};
constexpr NumberRange kDeviations = {0.0, 6.0};
constexpr NumberRange kConfidences = {50.0, 100.0};
constexpr NumberRange kBinNumbers = {1.0, 250.0};
constexpr NumberRange kBinStarts = {0.0, 99.0};

bool ReadFunction(SyntaxReader& reader, ChartElement& element) {
    if (!reader.IsAt(Kind::kLeftParen)) return true;
    reader.Advance();
    if (reader.IsAt(Kind::kRightParen)) return reader.Fail(SyntaxFault::kEmptyList);
    SummaryCall call;
    if (!reader.ReadSummary(call)) return false;
    element.summary = call;
    return reader.Expect(Kind::kRightParen);
}

bool ReadLabel(SyntaxReader& reader, KeywordSet set, KeywordSet outer, ChartElement& element) {
    return reader.ReadWords(set, outer, [&element](Keyword word) {
        const bool isContent = word == Keyword::kVal || word == Keyword::kN ||
                               word == Keyword::kPercent || word == Keyword::kLabel;
        if (isContent && !element.label) element.label = word;
    });
}

bool ReadScatter(SyntaxReader& reader, ChartElement& element) {
    return reader.ReadSettings(keywords::kScatterSettings, [&reader, &element](Keyword) {
        Keyword coincident{};
        if (!reader.ReadKeyword(keywords::kCoincident, coincident)) return false;
        element.isJittered = coincident == Keyword::kJitter;
        if (!element.isJittered || !reader.IsAt(Kind::kLeftParen)) return true;
        reader.Advance();
        double ignored = 0.0;
        return reader.ReadNumber(ignored) && reader.Expect(Kind::kRightParen);
    });
}

bool ReadBaseline(SyntaxReader& reader, ChartElement& element) {
    element.hasBaseline = true;
    if (reader.IsAt(Kind::kNumber)) return reader.ReadNumber(element.baseline.emplace());
    element.baseline.reset();
    return reader.SkipKeyword(keywords::kAuto);
}

bool ReadBreak(SyntaxReader& reader, ChartElement& element) {
    Keyword mode{};
    if (!reader.ReadKeyword(keywords::kBreaks, mode)) return false;
    element.breakMode =
        mode == Keyword::kMissing ? ChartElement::Break::kMissing : ChartElement::Break::kNone;
    return true;
}

bool ReadBar(SyntaxReader& reader, ChartElement& element) {
    if (!ReadFunction(reader, element)) return false;
    return reader.ReadSettings(keywords::kBarSettings, [&reader, &element](Keyword setting) {
        switch (setting) {
            case Keyword::kKey:
                return reader.SkipOnOff();
            case Keyword::kLabel:
                return ReadLabel(reader, keywords::kBarLabels, keywords::kBarSettings, element);
            case Keyword::kShape:
                return reader.SkipKeyword(keywords::kBarShapes);
            case Keyword::kBarBase:
                return reader.SkipKeyword(keywords::kBases);
            default:
                return ReadBaseline(reader, element);
        }
    });
}

bool ReadArea(SyntaxReader& reader, ChartElement& element) {
    if (!ReadFunction(reader, element)) return false;
    return reader.ReadSettings(keywords::kAreaSettings, [&reader, &element](Keyword setting) {
        switch (setting) {
            case Keyword::kKey:
                return reader.SkipOnOff();
            case Keyword::kPointLabel:
                return ReadLabel(reader, keywords::kPointLabels, keywords::kAreaSettings, element);
            case Keyword::kAreaLabel:
                return reader.SkipWords(keywords::kCategoryLabels, keywords::kAreaSettings);
            case Keyword::kBreak:
                return ReadBreak(reader, element);
            case Keyword::kBaseline:
                return ReadBaseline(reader, element);
            default:
                return reader.ReadKeyword(keywords::kInterpolations, element.interpolation);
        }
    });
}

bool ReadLine(SyntaxReader& reader, ChartElement& element) {
    if (!ReadFunction(reader, element)) return false;
    const auto readStyle = [&reader, &element] {
        Keyword style{};
        if (!reader.ReadKeyword(keywords::kLineStyles, style)) return false;
        if (style == Keyword::kDotLine) {
            element.lineStyle = ChartElement::LineStyle::kDotLine;
        } else if (style == Keyword::kDot) {
            element.lineStyle = ChartElement::LineStyle::kDot;
        } else if (style == Keyword::kNone) {
            element.lineStyle = ChartElement::LineStyle::kNone;
        } else {
            element.lineStyle = ChartElement::LineStyle::kLine;
        }
        return true;
    };
    return reader.ReadSettings(keywords::kLineSettings, [&reader, &element,
                                                         &readStyle](Keyword setting) {
        switch (setting) {
            case Keyword::kKey:
                return reader.SkipOnOff();
            case Keyword::kStyle:
                return readStyle();
            case Keyword::kDropLine:
                return reader.ReadOnOff(element.hasDropLines);
            case Keyword::kLabel:
                return ReadLabel(reader, keywords::kPointLabels, keywords::kLineSettings, element);
            case Keyword::kLineLabel:
                return reader.SkipWords(keywords::kCategoryLabels, keywords::kLineSettings);
            case Keyword::kBreak:
                return ReadBreak(reader, element);
            default:
                return reader.ReadKeyword(keywords::kInterpolations, element.interpolation);
        }
    });
}

bool ReadPie(SyntaxReader& reader, ChartElement& element) {
    if (!ReadFunction(reader, element)) return false;
    return reader.ReadSettings(keywords::kPieSettings, [&reader, &element](Keyword setting) {
        switch (setting) {
            case Keyword::kKey:
                return reader.SkipOnOff();
            case Keyword::kStart:
                return reader.ReadNumber(element.pieStart);
            case Keyword::kCw:
                element.isCounterclockwise = false;
                return true;
            case Keyword::kCcw:
                element.isCounterclockwise = true;
                return true;
            case Keyword::kSlice:
                return ReadLabel(reader, keywords::kSliceLabels, keywords::kPieSettings, element);
            default:
                return reader.SkipWords(keywords::kSliceLabels, keywords::kPieSettings);
        }
    });
}

bool ReadBox(SyntaxReader& reader, ChartElement& element) {
    return reader.ReadSettings(keywords::kBoxSettings, [&reader, &element](Keyword setting) {
        bool isShown = true;
        double ignored = 0.0;
        switch (setting) {
            case Keyword::kKey:
                return reader.SkipOnOff();
            case Keyword::kLabel:
                return reader.SkipKeyword(keywords::kBoxLabels);
            case Keyword::kBoxBase:
                return reader.SkipKeyword(keywords::kBases);
            case Keyword::kWhisker:
                return reader.SkipKeyword(keywords::kWhiskers);
            case Keyword::kCapWidth:
                return reader.ReadParenthesizedNumber(kPercentages, ignored);
            default:
                if (!reader.ReadOnOff(isShown)) return false;
                element.showsAllOfBox = element.showsAllOfBox && isShown;
                return true;
        }
    });
}

bool ReadErrorBar(SyntaxReader& reader, ChartElement& element) {
    return reader.ReadSettings(keywords::kErrorBarSettings, [&reader, &element](Keyword setting) {
        double ignored = 0.0;
        Keyword capStyle{};
        switch (setting) {
            case Keyword::kKey:
                return reader.SkipOnOff();
            case Keyword::kLabel:
                return reader.SkipWords(keywords::kErrorBarLabels, keywords::kErrorBarSettings);
            case Keyword::kDirection:
                return reader.SkipKeyword(keywords::kDirections);
            case Keyword::kCapStyle:
                if (!reader.ReadKeyword(keywords::kCapStyles, capStyle)) return false;
                element.hasCaps = capStyle != Keyword::kNone;
                return true;
            case Keyword::kSymbol:
                return reader.ReadOnOff(element.hasSymbol);
            case Keyword::kBaseline:
                return reader.ReadNumber(ignored);
            case Keyword::kCapWidth:
                return reader.ReadParenthesizedNumber(kPercentages, ignored);
            default:
                if (element.extent) return reader.Fail(SyntaxFault::kTwoExtents);
                element.extent = setting;
                return reader.ReadParenthesizedNumber(
                    setting == Keyword::kCi ? kPercentages : kDeviations, element.extentValue);
        }
    });
}

bool ReadBinning(SyntaxReader& reader, bool isOfX1, ChartElement& element) {
    Keyword binning{};
    if (!reader.ReadKeyword(keywords::kIntervals, binning)) return false;
    double value = 0.0;
    if (binning == Keyword::kWidth) {
        if (!reader.ReadLength(value)) return false;
    } else if (binning == Keyword::kNum) {
        if (!reader.ReadNumberIn(kBinNumbers, value)) return false;
        if (value != std::floor(value)) reader.MarkOutOfRange();
    }
    if (!isOfX1) return true;
    element.binning = binning;
    element.binningValue = value;
    return true;
}

bool ReadHistogram(SyntaxReader& reader, ChartElement& element) {
    return reader.ReadSettings(keywords::kHistogramSettings, [&reader, &element](Keyword setting) {
        double ignored = 0.0;
        switch (setting) {
            case Keyword::kKey:
                return reader.SkipOnOff();
            case Keyword::kCum:
                element.isCumulative = true;
                return true;
            case Keyword::kShape:
                return reader.SkipKeyword(keywords::kHistogramShapes);
            case Keyword::kCurve:
                return reader.ReadOnOff(element.hasCurve);
            case Keyword::kX1Start:
                return reader.ReadNumberIn(kBinStarts, element.binStart);
            case Keyword::kX2Start:
                return reader.ReadNumberIn(kBinStarts, ignored);
            default:
                return ReadBinning(reader, setting == Keyword::kX1Interval, element);
        }
    });
}

bool ReadMethod(SyntaxReader& reader, Keyword method, FitLine& fitLine) {
    fitLine.method = method;
    bool isRead = false;
    Keyword detail{};
    switch (method) {
        case Keyword::kRegression:
        case Keyword::kOrigin:
            return reader.ReadOptionalKeyword(keywords::kLinear, keywords::kFitSettings, isRead,
                                              detail);
        case Keyword::kLocalLinear:
            if (!reader.ReadOptionalKeyword(keywords::kKernels, keywords::kFitSettings, isRead,
                                            detail)) {
                return false;
            }
            fitLine.kernel = isRead ? detail : Keyword::kNormal;
            return true;
        default:
            return true;
    }
}

bool ReadFitInterval(SyntaxReader& reader, FitLine& fitLine) {
    if (reader.IsAt(Kind::kLeftParen)) {
        if (!reader.ReadParenthesizedNumber(kConfidences, fitLine.confidence)) return false;
    }
    const auto take = [&fitLine](Keyword kind) {
        (kind == Keyword::kMean ? fitLine.hasMeanInterval : fitLine.hasIndividualInterval) = true;
    };
    Keyword kind{};
    if (!reader.ReadKeyword(keywords::kFitIntervals, kind)) return false;
    take(kind);
    bool isRead = false;
    if (!reader.ReadOptionalKeyword(keywords::kFitIntervals, keywords::kFitSettings, isRead,
                                    kind)) {
        return false;
    }
    if (isRead) take(kind);
    return true;
}

bool ReadFitScope(SyntaxReader& reader, FitLine& fitLine) {
    const auto take = [&fitLine](Keyword scope) {
        (scope == Keyword::kTotal ? fitLine.forTotal : fitLine.forCategories) = true;
    };
    Keyword scope{};
    if (!reader.ReadKeyword(keywords::kFitScopes, scope)) return false;
    take(scope);
    bool isRead = false;
    if (!reader.ReadOptionalKeyword(keywords::kFitScopes, keywords::kFitSettings, isRead, scope)) {
        return false;
    }
    if (isRead) take(scope);
    return true;
}

}  // namespace

bool ReadElement(SyntaxReader& reader, ChartElement& element) {
    switch (element.kind) {
        case ChartElement::Kind::kScatter:
            return ReadScatter(reader, element);
        case ChartElement::Kind::kBar:
            return ReadBar(reader, element);
        case ChartElement::Kind::kArea:
            return ReadArea(reader, element);
        case ChartElement::Kind::kLine:
            return ReadLine(reader, element);
        case ChartElement::Kind::kPie:
            return ReadPie(reader, element);
        case ChartElement::Kind::kBox:
            return ReadBox(reader, element);
        case ChartElement::Kind::kErrorBar:
            return ReadErrorBar(reader, element);
        case ChartElement::Kind::kHistogram:
            break;
    }
    return ReadHistogram(reader, element);
}

bool ReadFitLine(SyntaxReader& reader, FitLine& fitLine) {
    return reader.ReadSettings(keywords::kFitSettings, [&reader, &fitLine](Keyword setting) {
        Keyword method{};
        double multiplier = 1.0;
        switch (setting) {
            case Keyword::kMethod:
                return reader.ReadKeyword(keywords::kFitMethods, method) &&
                       ReadMethod(reader, method, fitLine);
            case Keyword::kInterval:
                return ReadFitInterval(reader, fitLine);
            case Keyword::kLine:
                return ReadFitScope(reader, fitLine);
            case Keyword::kSpike:
                return reader.ReadOnOff(fitLine.hasSpikes);
            case Keyword::kBandwidth:
                return reader.SkipKeyword(keywords::kBandwidths);
            case Keyword::kX1Multiplier:
            case Keyword::kX2Multiplier:
                if (!reader.ReadNumber(multiplier)) return false;
                fitLine.hasMultiplier = fitLine.hasMultiplier || multiplier != 1.0;
                return true;
            default:
                return ReadMethod(reader, setting, fitLine);
        }
    });
}

}  // namespace quillet::igraph
