#include "igraph/keywords.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quillet::igraph {

namespace {

struct KeywordEntry {
    Keyword keyword;
    std::string_view spelling;
};

constexpr std::array kTable = {
    KeywordEntry{Keyword::kAllCases, "ALL"},
    KeywordEntry{Keyword::kArea, "AREA"},
    KeywordEntry{Keyword::kAreaLabel, "AREALABEL"},
    KeywordEntry{Keyword::kAscending, "ASCENDING"},
    KeywordEntry{Keyword::kAuto, "AUTO"},
    KeywordEntry{Keyword::kBandwidth, "BANDWIDTH"},
    KeywordEntry{Keyword::kBar, "BAR"},
    KeywordEntry{Keyword::kBarBase, "BARBASE"},
    KeywordEntry{Keyword::kBaseline, "BASELINE"},
    KeywordEntry{Keyword::kBoth, "BOTH"},
    KeywordEntry{Keyword::kBox, "BOX"},
    KeywordEntry{Keyword::kBoxBase, "BOXBASE"},
    KeywordEntry{Keyword::kBreak, "BREAK"},
    KeywordEntry{Keyword::kCapStyle, "CAPSTYLE"},
    KeywordEntry{Keyword::kCaption, "CAPTION"},
    KeywordEntry{Keyword::kCapWidth, "CAPWIDTH"},
    KeywordEntry{Keyword::kCaseLabel, "CASELABEL"},
    KeywordEntry{Keyword::kCat, "CAT"},
    KeywordEntry{Keyword::kCategorical, "CATEGORICAL"},
    KeywordEntry{Keyword::kCatOrder, "CATORDER"},
    KeywordEntry{Keyword::kCcw, "CCW"},
    KeywordEntry{Keyword::kCenterJump, "CJUMP"},
    KeywordEntry{Keyword::kCenterStep, "CSTEP"},
    KeywordEntry{Keyword::kCentroid, "CENTROID"},
    KeywordEntry{Keyword::kChartLook, "CHARTLOOK"},
    KeywordEntry{Keyword::kCi, "CI"},
    KeywordEntry{Keyword::kCircle, "CIRCLE"},
    KeywordEntry{Keyword::kCluster, "CLUSTER"},
    KeywordEntry{Keyword::kCoincident, "COINCIDENT"},
    KeywordEntry{Keyword::kColor, "COLOR"},
    KeywordEntry{Keyword::kConstrained, "CONSTRAINED"},
    KeywordEntry{Keyword::kCoordinate, "COORDINATE"},
    KeywordEntry{Keyword::kCorner, "CORNER"},
    KeywordEntry{Keyword::kCount, "COUNT"},
    KeywordEntry{Keyword::kCum, "CUM"},
    KeywordEntry{Keyword::kCurve, "CURVE"},
    KeywordEntry{Keyword::kCw, "CW"},
    KeywordEntry{Keyword::kDescending, "DESCENDING"},
    KeywordEntry{Keyword::kDirection, "DIRECTION"},
    KeywordEntry{Keyword::kDot, "DOT"},
    KeywordEntry{Keyword::kDotLine, "DOTLINE"},
    KeywordEntry{Keyword::kDown, "DOWN"},
    KeywordEntry{Keyword::kDropLine, "DROPLINE"},
    KeywordEntry{Keyword::kEffect, "EFFECT"},
    KeywordEntry{Keyword::kEpanechnikov, "EPANECHNIKOV"},
    KeywordEntry{Keyword::kErrorBar, "ERRORBAR"},
    KeywordEntry{Keyword::kExtreme, "EXTREME"},
    KeywordEntry{Keyword::kFancy, "FANCY"},
    KeywordEntry{Keyword::kFast, "FAST"},
    KeywordEntry{Keyword::kFirst, "FIRST"},
    KeywordEntry{Keyword::kFitLine, "FITLINE"},
    KeywordEntry{Keyword::kFloor, "FLOOR"},
    KeywordEntry{Keyword::kFormat, "FORMAT"},
    KeywordEntry{Keyword::kGroupedMedian, "GMEDIAN"},
    KeywordEntry{Keyword::kHistogram, "HISTOGRAM"},
    KeywordEntry{Keyword::kHorizontal, "HORIZONTAL"},
    KeywordEntry{Keyword::kIndividual, "INDIVIDUAL"},
    KeywordEntry{Keyword::kInside, "INSIDE"},
    KeywordEntry{Keyword::kInterpolate, "INTERPOLATE"},
    KeywordEntry{Keyword::kInterval, "INTERVAL"},
    KeywordEntry{Keyword::kJitter, "JITTER"},
    KeywordEntry{Keyword::kKey, "KEY"},
    KeywordEntry{Keyword::kKurtosis, "KURTOSIS"},
    KeywordEntry{Keyword::kLabel, "LABEL"},
    KeywordEntry{Keyword::kLabels, "LABELS"},
    KeywordEntry{Keyword::kLagrange3, "LAGRANGE3"},
    KeywordEntry{Keyword::kLagrange5, "LAGRANGE5"},
    KeywordEntry{Keyword::kLast, "LAST"},
    KeywordEntry{Keyword::kLeftJump, "LJUMP"},
    KeywordEntry{Keyword::kLeftStep, "LSTEP"},
    KeywordEntry{Keyword::kLegend, "LEGEND"},
    KeywordEntry{Keyword::kLine, "LINE"},
    KeywordEntry{Keyword::kLinear, "LINEAR"},
    KeywordEntry{Keyword::kLineLabel, "LINELABEL"},
    KeywordEntry{Keyword::kLocalLinear, "LLR"},
    KeywordEntry{Keyword::kLowerLeft, "LLEFT"},
    KeywordEntry{Keyword::kLowerRight, "LRIGHT"},
    KeywordEntry{Keyword::kMax, "MAX"},
    KeywordEntry{Keyword::kMaximum, "MAXIMUM"},
    KeywordEntry{Keyword::kMean, "MEAN"},
    KeywordEntry{Keyword::kMedian, "MEDIAN"},
    KeywordEntry{Keyword::kMeffect, "MEFFECT"},
    KeywordEntry{Keyword::kMethod, "METHOD"},
    KeywordEntry{Keyword::kMin, "MIN"},
    KeywordEntry{Keyword::kMinimum, "MINIMUM"},
    KeywordEntry{Keyword::kMissing, "MISSING"},
    KeywordEntry{Keyword::kMode, "MODE"},
    KeywordEntry{Keyword::kN, "N"},
    KeywordEntry{Keyword::kNone, "NONE"},
    KeywordEntry{Keyword::kNormal, "NORMAL"},
    KeywordEntry{Keyword::kNormalize, "NORMALIZE"},
    KeywordEntry{Keyword::kNum, "NUM"},
    KeywordEntry{Keyword::kNumberEqual, "NEQ"},
    KeywordEntry{Keyword::kNumberGreater, "NGT"},
    KeywordEntry{Keyword::kNumberGreaterEqual, "NGE"},
    KeywordEntry{Keyword::kNumberIn, "NIN"},
    KeywordEntry{Keyword::kNumberLess, "NLT"},
    KeywordEntry{Keyword::kNumberLessEqual, "NLE"},
    KeywordEntry{Keyword::kNumIn, "NUMIN"},
    KeywordEntry{Keyword::kObelisk, "OBELISK"},
    KeywordEntry{Keyword::kOccurrence, "OCCURRENCE"},
    KeywordEntry{Keyword::kOff, "OFF"},
    KeywordEntry{Keyword::kOmitEmpty, "OMITEMPTY"},
    KeywordEntry{Keyword::kOn, "ON"},
    KeywordEntry{Keyword::kOrigin, "ORIGIN"},
    KeywordEntry{Keyword::kOutliers, "OUTLIERS"},
    KeywordEntry{Keyword::kOutside, "OUTSIDE"},
    KeywordEntry{Keyword::kPanel, "PANEL"},
    KeywordEntry{Keyword::kPercent, "PCT"},
    KeywordEntry{Keyword::kPercentEqual, "PEQ"},
    KeywordEntry{Keyword::kPercentGreater, "PGT"},
    KeywordEntry{Keyword::kPercentGreaterEqual, "PGE"},
    KeywordEntry{Keyword::kPercentile, "PTILE"},
    KeywordEntry{Keyword::kPercentIn, "PIN"},
    KeywordEntry{Keyword::kPercentLess, "PLT"},
    KeywordEntry{Keyword::kPercentLessEqual, "PLE"},
    KeywordEntry{Keyword::kPie, "PIE"},
    KeywordEntry{Keyword::kPointLabel, "POINTLABEL"},
    KeywordEntry{Keyword::kPyramid, "PYRAMID"},
    KeywordEntry{Keyword::kRange, "RANGE"},
    KeywordEntry{Keyword::kRectangle, "RECTANGLE"},
    KeywordEntry{Keyword::kRefLine, "REFLINE"},
    KeywordEntry{Keyword::kRegression, "REGRESSION"},
    KeywordEntry{Keyword::kRightJump, "RJUMP"},
    KeywordEntry{Keyword::kRightStep, "RSTEP"},
    KeywordEntry{Keyword::kScale, "SCALE"},
    KeywordEntry{Keyword::kScaleRange, "SCALERANGE"},
    KeywordEntry{Keyword::kScatter, "SCATTER"},
    KeywordEntry{Keyword::kSd, "SD"},
    KeywordEntry{Keyword::kSe, "SE"},
    KeywordEntry{Keyword::kSeKurtosis, "SEKURT"},
    KeywordEntry{Keyword::kSeMean, "SEMEAN"},
    KeywordEntry{Keyword::kSeSkewness, "SESKEW"},
    KeywordEntry{Keyword::kShape, "SHAPE"},
    KeywordEntry{Keyword::kShowEmpty, "SHOWEMPTY"},
    KeywordEntry{Keyword::kSign, "SIGN"},
    KeywordEntry{Keyword::kSize, "SIZE"},
    KeywordEntry{Keyword::kSkewness, "SKEWNESS"},
    KeywordEntry{Keyword::kSlice, "SLICE"},
    KeywordEntry{Keyword::kSpike, "SPIKE"},
    KeywordEntry{Keyword::kSpline, "SPLINE"},
    KeywordEntry{Keyword::kSquare, "SQUARE"},
    KeywordEntry{Keyword::kStack, "STACK"},
    KeywordEntry{Keyword::kStart, "START"},
    KeywordEntry{Keyword::kStdDev, "STDDEV"},
    KeywordEntry{Keyword::kStraight, "STRAIGHT"},
    KeywordEntry{Keyword::kStyle, "STYLE"},
    KeywordEntry{Keyword::kSubtitle, "SUBTITLE"},
    KeywordEntry{Keyword::kSum, "SUM"},
    KeywordEntry{Keyword::kSumAbsolute, "SUMAV"},
    KeywordEntry{Keyword::kSummaryVar, "SUMMARYVAR"},
    KeywordEntry{Keyword::kSumSquares, "SUMSQ"},
    KeywordEntry{Keyword::kSymbol, "SYMBOL"},
    KeywordEntry{Keyword::kT, "T"},
    KeywordEntry{Keyword::kTextIn, "TEXTIN"},
    KeywordEntry{Keyword::kThree, "THREE"},
    KeywordEntry{Keyword::kTitle, "TITLE"},
    KeywordEntry{Keyword::kTotal, "TOTAL"},
    KeywordEntry{Keyword::kType, "TYPE"},
    KeywordEntry{Keyword::kUniform, "UNIFORM"},
    KeywordEntry{Keyword::kUp, "UP"},
    KeywordEntry{Keyword::kUpperLeft, "ULEFT"},
    KeywordEntry{Keyword::kUpperRight, "URIGHT"},
    KeywordEntry{Keyword::kVal, "VAL"},
    KeywordEntry{Keyword::kValues, "VALUES"},
    KeywordEntry{Keyword::kVariance, "VARIANCE"},
    KeywordEntry{Keyword::kVertical, "VERTICAL"},
    KeywordEntry{Keyword::kViewName, "VIEWNAME"},
    KeywordEntry{Keyword::kWhisker, "WHISKER"},
    KeywordEntry{Keyword::kWidth, "WIDTH"},
    KeywordEntry{Keyword::kX1, "X1"},
    KeywordEntry{Keyword::kX1Interval, "X1INTERVAL"},
    KeywordEntry{Keyword::kX1Length, "X1LENGTH"},
    KeywordEntry{Keyword::kX1Multiplier, "X1MULTIPLIER"},
    KeywordEntry{Keyword::kX1Start, "X1START"},
    KeywordEntry{Keyword::kX2, "X2"},
    KeywordEntry{Keyword::kX2Interval, "X2INTERVAL"},
    KeywordEntry{Keyword::kX2Length, "X2LENGTH"},
    KeywordEntry{Keyword::kX2Multiplier, "X2MULTIPLIER"},
    KeywordEntry{Keyword::kX2Start, "X2START"},
    KeywordEntry{Keyword::kY, "Y"},
    KeywordEntry{Keyword::kYLength, "YLENGTH"},
};

constexpr bool IsInEnumOrder() {
    for (std::size_t i = 0; i < kTable.size(); ++i) {
        if (static_cast<std::size_t>(kTable[i].keyword) != i) return false;
    }
    return true;
}
static_assert(IsInEnumOrder(), "the spelling of a keyword is found by its number");

// Shorter beginnings would turn slips of the pen into keywords.
constexpr std::size_t kShortestAbbreviation = 3;

// VAR( begins a variable reference everywhere else in the command, so three letters are too few
// to ask for the variance.
bool IsReservedBeginning(std::string_view word) { return word == "VAR"; }

constexpr std::array kSubcommandsWords = {
    Keyword::kY,          Keyword::kX1,         Keyword::kX2,         Keyword::kColor,
    Keyword::kStyle,      Keyword::kSize,       Keyword::kYLength,    Keyword::kX1Length,
    Keyword::kX2Length,   Keyword::kScaleRange, Keyword::kCatOrder,   Keyword::kNormalize,
    Keyword::kStack,      Keyword::kCluster,    Keyword::kSummaryVar, Keyword::kPanel,
    Keyword::kPointLabel, Keyword::kCaseLabel,  Keyword::kCoordinate, Keyword::kEffect,
    Keyword::kTitle,      Keyword::kSubtitle,   Keyword::kCaption,    Keyword::kViewName,
    Keyword::kChartLook,  Keyword::kRefLine,    Keyword::kSpike,      Keyword::kFormat,
    Keyword::kKey,        Keyword::kScatter,    Keyword::kBar,        Keyword::kArea,
    Keyword::kLine,       Keyword::kPie,        Keyword::kBox,        Keyword::kErrorBar,
    Keyword::kHistogram,  Keyword::kFitLine};
constexpr std::array kOnOffWords = {Keyword::kOn, Keyword::kOff};
constexpr std::array kAxisSettingsWords = {Keyword::kType, Keyword::kMin, Keyword::kMax,
                                           Keyword::kTitle};
constexpr std::array kLegendSettingsWords = {Keyword::kType,  Keyword::kMin,    Keyword::kMax,
                                             Keyword::kTitle, Keyword::kLegend, Keyword::kCluster,
                                             Keyword::kStack};
constexpr std::array kMeasuresWords = {Keyword::kScale, Keyword::kCategorical};
constexpr std::array kScaleEndsWords = {Keyword::kMin, Keyword::kMax};
constexpr std::array kCategoryOrderWords = {Keyword::kCount,
                                            Keyword::kOccurrence,
                                            Keyword::kLabels,
                                            Keyword::kValues,
                                            Keyword::kAscending,
                                            Keyword::kDescending,
                                            Keyword::kShowEmpty,
                                            Keyword::kOmitEmpty,
                                            Keyword::kMean,
                                            Keyword::kMedian,
                                            Keyword::kMode,
                                            Keyword::kSum,
                                            Keyword::kStdDev,
                                            Keyword::kVariance,
                                            Keyword::kMinimum,
                                            Keyword::kMaximum,
                                            Keyword::kRange,
                                            Keyword::kFirst,
                                            Keyword::kLast,
                                            Keyword::kSeMean,
                                            Keyword::kKurtosis,
                                            Keyword::kSeKurtosis,
                                            Keyword::kSkewness,
                                            Keyword::kSeSkewness,
                                            Keyword::kSumSquares,
                                            Keyword::kSumAbsolute,
                                            Keyword::kPercent,
                                            Keyword::kGroupedMedian,
                                            Keyword::kPercentile,
                                            Keyword::kNumberGreater,
                                            Keyword::kNumberLess,
                                            Keyword::kNumberGreaterEqual,
                                            Keyword::kNumberLessEqual,
                                            Keyword::kNumberEqual,
                                            Keyword::kPercentGreater,
                                            Keyword::kPercentLess,
                                            Keyword::kPercentGreaterEqual,
                                            Keyword::kPercentLessEqual,
                                            Keyword::kPercentEqual,
                                            Keyword::kNumberIn,
                                            Keyword::kPercentIn};
constexpr std::array kPointLabelSettingsWords = {Keyword::kAllCases, Keyword::kNone};
constexpr std::array kCoordinatesWords = {Keyword::kVertical, Keyword::kHorizontal,
                                          Keyword::kThree};
constexpr std::array kEffectsWords = {Keyword::kNone, Keyword::kThree};
constexpr std::array kRefLineSettingsWords = {Keyword::kLabel, Keyword::kSpike, Keyword::kColor,
                                              Keyword::kStyle};
constexpr std::array kSpikeSettingsWords = {Keyword::kX1,      Keyword::kX2,     Keyword::kY,
                                            Keyword::kCorner,  Keyword::kOrigin, Keyword::kFloor,
                                            Keyword::kCentroid};
constexpr std::array kTotalWords = {Keyword::kTotal};
constexpr std::array kScatterSettingsWords = {Keyword::kCoincident};
constexpr std::array kCoincidentWords = {Keyword::kNone, Keyword::kJitter};
constexpr std::array kBarSettingsWords = {Keyword::kKey, Keyword::kLabel, Keyword::kShape,
                                          Keyword::kBarBase, Keyword::kBaseline};
constexpr std::array kBarLabelsWords = {Keyword::kInside, Keyword::kOutside, Keyword::kVal,
                                        Keyword::kN,      Keyword::kPercent, Keyword::kNone};
constexpr std::array kBarShapesWords = {Keyword::kRectangle, Keyword::kPyramid, Keyword::kObelisk};
constexpr std::array kBasesWords = {Keyword::kSquare, Keyword::kCircle};
constexpr std::array kAutoWords = {Keyword::kAuto};
constexpr std::array kAreaSettingsWords = {Keyword::kKey,       Keyword::kPointLabel,
                                           Keyword::kAreaLabel, Keyword::kBreak,
                                           Keyword::kBaseline,  Keyword::kInterpolate};
constexpr std::array kPointLabelsWords = {Keyword::kVal, Keyword::kPercent, Keyword::kN,
                                          Keyword::kNone};
constexpr std::array kCategoryLabelsWords = {Keyword::kCat, Keyword::kPercent, Keyword::kN,
                                             Keyword::kNone};
constexpr std::array kBreaksWords = {Keyword::kMissing, Keyword::kNone};
constexpr std::array kInterpolationsWords = {
    Keyword::kStraight,  Keyword::kLeftStep,   Keyword::kCenterStep, Keyword::kRightStep,
    Keyword::kLeftJump,  Keyword::kCenterJump, Keyword::kRightJump,  Keyword::kSpline,
    Keyword::kLagrange3, Keyword::kLagrange5};
constexpr std::array kLineSettingsWords = {
    Keyword::kKey,       Keyword::kStyle, Keyword::kDropLine,   Keyword::kLabel,
    Keyword::kLineLabel, Keyword::kBreak, Keyword::kInterpolate};
constexpr std::array kLineStylesWords = {Keyword::kDotLine, Keyword::kLine, Keyword::kDot,
                                         Keyword::kNone};
constexpr std::array kPieSettingsWords = {Keyword::kKey,    Keyword::kStart, Keyword::kCw,
                                          Keyword::kCcw,    Keyword::kSlice, Keyword::kStack,
                                          Keyword::kCluster};
constexpr std::array kSliceLabelsWords = {
    Keyword::kInside,   Keyword::kOutside,    Keyword::kLabel,      Keyword::kPercent,
    Keyword::kN,        Keyword::kVal,        Keyword::kNone,       Keyword::kTextIn,
    Keyword::kNumIn,    Keyword::kUpperRight, Keyword::kLowerRight, Keyword::kUpperLeft,
    Keyword::kLowerLeft};
constexpr std::array kBoxSettingsWords = {Keyword::kKey,     Keyword::kOutliers, Keyword::kExtreme,
                                          Keyword::kMedian,  Keyword::kLabel,    Keyword::kBoxBase,
                                          Keyword::kWhisker, Keyword::kCapWidth};
constexpr std::array kBoxLabelsWords = {Keyword::kN};
constexpr std::array kWhiskersWords = {Keyword::kT, Keyword::kLine, Keyword::kFancy};
constexpr std::array kErrorBarSettingsWords = {
    Keyword::kKey,      Keyword::kCi,        Keyword::kSd,       Keyword::kSe,
    Keyword::kLabel,    Keyword::kDirection, Keyword::kCapStyle, Keyword::kSymbol,
    Keyword::kBaseline, Keyword::kCapWidth};
constexpr std::array kErrorBarLabelsWords = {Keyword::kVal, Keyword::kN, Keyword::kInside,
                                             Keyword::kOutside};
constexpr std::array kDirectionsWords = {Keyword::kBoth, Keyword::kUp, Keyword::kDown,
                                         Keyword::kSign};
constexpr std::array kCapStylesWords = {Keyword::kT, Keyword::kNone, Keyword::kFancy};
constexpr std::array kHistogramSettingsWords = {
    Keyword::kKey,     Keyword::kCum,     Keyword::kShape,      Keyword::kCurve,
    Keyword::kX1Start, Keyword::kX2Start, Keyword::kX1Interval, Keyword::kX2Interval};
constexpr std::array kHistogramShapesWords = {Keyword::kHistogram};
constexpr std::array kIntervalsWords = {Keyword::kAuto, Keyword::kNum, Keyword::kWidth};
constexpr std::array kFitSettingsWords = {
    Keyword::kMethod, Keyword::kNone,        Keyword::kRegression,   Keyword::kOrigin,
    Keyword::kMean,   Keyword::kLocalLinear, Keyword::kInterval,     Keyword::kLine,
    Keyword::kSpike,  Keyword::kBandwidth,   Keyword::kX1Multiplier, Keyword::kX2Multiplier};
constexpr std::array kFitMethodsWords = {Keyword::kNone, Keyword::kRegression, Keyword::kOrigin,
                                         Keyword::kMean, Keyword::kLocalLinear};
constexpr std::array kLinearWords = {Keyword::kLinear};
constexpr std::array kKernelsWords = {Keyword::kNormal, Keyword::kEpanechnikov, Keyword::kUniform};
constexpr std::array kFitIntervalsWords = {Keyword::kMean, Keyword::kIndividual};
constexpr std::array kFitScopesWords = {Keyword::kTotal, Keyword::kMeffect};
constexpr std::array kBandwidthsWords = {Keyword::kFast, Keyword::kConstrained};
constexpr std::array kSummaryFunctionsWords = {Keyword::kMean,
                                               Keyword::kMedian,
                                               Keyword::kMode,
                                               Keyword::kSum,
                                               Keyword::kStdDev,
                                               Keyword::kVariance,
                                               Keyword::kMinimum,
                                               Keyword::kMaximum,
                                               Keyword::kRange,
                                               Keyword::kFirst,
                                               Keyword::kLast,
                                               Keyword::kSeMean,
                                               Keyword::kKurtosis,
                                               Keyword::kSeKurtosis,
                                               Keyword::kSkewness,
                                               Keyword::kSeSkewness,
                                               Keyword::kSumSquares,
                                               Keyword::kSumAbsolute,
                                               Keyword::kCount,
                                               Keyword::kPercent,
                                               Keyword::kGroupedMedian,
                                               Keyword::kPercentile,
                                               Keyword::kNumberGreater,
                                               Keyword::kNumberLess,
                                               Keyword::kNumberGreaterEqual,
                                               Keyword::kNumberLessEqual,
                                               Keyword::kNumberEqual,
                                               Keyword::kPercentGreater,
                                               Keyword::kPercentLess,
                                               Keyword::kPercentGreaterEqual,
                                               Keyword::kPercentLessEqual,
                                               Keyword::kPercentEqual,
                                               Keyword::kNumberIn,
                                               Keyword::kPercentIn};

}  // namespace

std::string_view Spelling(Keyword keyword) {
    return kTable[static_cast<std::size_t>(keyword)].spelling;
}

bool IsExactKeyword(std::string_view word, KeywordSet set) {
    return std::any_of(set.begin(), set.end(),
                       [word](Keyword keyword) { return Spelling(keyword) == word; });
}

KeywordMatch MatchKeyword(std::string_view word, KeywordSet first, KeywordSet second) {
    using Outcome = KeywordMatch::Outcome;
    const bool mayAbbreviate = word.size() >= kShortestAbbreviation && !IsReservedBeginning(word);
    KeywordMatch found;
    for (const KeywordSet& set : {first, second}) {
        for (const Keyword keyword : set) {
            const KeywordMatch candidate{Outcome::kMatch, keyword, set.data() == first.data()};
            const std::string_view spelling = Spelling(keyword);
            if (spelling == word) return candidate;
            if (!mayAbbreviate || !spelling.starts_with(word)) continue;
            if (found.outcome == Outcome::kNoMatch) {
                found = candidate;
            } else if (found.keyword != keyword) {
                found.outcome = Outcome::kAmbiguous;
            }
        }
    }
    return found;
}

namespace keywords {

constinit const KeywordSet kSubcommands = kSubcommandsWords;
constinit const KeywordSet kOnOff = kOnOffWords;
constinit const KeywordSet kAxisSettings = kAxisSettingsWords;
constinit const KeywordSet kLegendSettings = kLegendSettingsWords;
constinit const KeywordSet kMeasures = kMeasuresWords;
constinit const KeywordSet kScaleEnds = kScaleEndsWords;
constinit const KeywordSet kCategoryOrder = kCategoryOrderWords;
constinit const KeywordSet kPointLabelSettings = kPointLabelSettingsWords;
constinit const KeywordSet kCoordinates = kCoordinatesWords;
constinit const KeywordSet kEffects = kEffectsWords;
constinit const KeywordSet kRefLineSettings = kRefLineSettingsWords;
constinit const KeywordSet kSpikeSettings = kSpikeSettingsWords;
constinit const KeywordSet kTotal = kTotalWords;
constinit const KeywordSet kScatterSettings = kScatterSettingsWords;
constinit const KeywordSet kCoincident = kCoincidentWords;
constinit const KeywordSet kBarSettings = kBarSettingsWords;
constinit const KeywordSet kBarLabels = kBarLabelsWords;
constinit const KeywordSet kBarShapes = kBarShapesWords;
constinit const KeywordSet kBases = kBasesWords;
constinit const KeywordSet kAuto = kAutoWords;
constinit const KeywordSet kAreaSettings = kAreaSettingsWords;
constinit const KeywordSet kPointLabels = kPointLabelsWords;
constinit const KeywordSet kCategoryLabels = kCategoryLabelsWords;
constinit const KeywordSet kBreaks = kBreaksWords;
constinit const KeywordSet kInterpolations = kInterpolationsWords;
constinit const KeywordSet kLineSettings = kLineSettingsWords;
constinit const KeywordSet kLineStyles = kLineStylesWords;
constinit const KeywordSet kPieSettings = kPieSettingsWords;
constinit const KeywordSet kSliceLabels = kSliceLabelsWords;
constinit const KeywordSet kBoxSettings = kBoxSettingsWords;
constinit const KeywordSet kBoxLabels = kBoxLabelsWords;
constinit const KeywordSet kWhiskers = kWhiskersWords;
constinit const KeywordSet kErrorBarSettings = kErrorBarSettingsWords;
constinit const KeywordSet kErrorBarLabels = kErrorBarLabelsWords;
constinit const KeywordSet kDirections = kDirectionsWords;
constinit const KeywordSet kCapStyles = kCapStylesWords;
constinit const KeywordSet kHistogramSettings = kHistogramSettingsWords;
constinit const KeywordSet kHistogramShapes = kHistogramShapesWords;
constinit const KeywordSet kIntervals = kIntervalsWords;
constinit const KeywordSet kFitSettings = kFitSettingsWords;
constinit const KeywordSet kFitMethods = kFitMethodsWords;
constinit const KeywordSet kLinear = kLinearWords;
constinit const KeywordSet kKernels = kKernelsWords;
constinit const KeywordSet kFitIntervals = kFitIntervalsWords;
constinit const KeywordSet kFitScopes = kFitScopesWords;
constinit const KeywordSet kBandwidths = kBandwidthsWords;
constinit const KeywordSet kSummaryFunctions = kSummaryFunctionsWords;

}  // namespace keywords

}  // namespace quillet::igraph
