#include "igraph/read/keywordsets.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "igraph/model/summaryfunction.h"

namespace quillet::igraph {

namespace {

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
constexpr std::array kSummaryFunctionsWords = [] {
    std::array<Keyword, kSummaryFunctionTable.size()> words{};
    std::transform(kSummaryFunctionTable.begin(), kSummaryFunctionTable.end(), words.begin(),
                   [](const SummaryFunction& function) { return function.keyword; });
    return words;
}();
constexpr std::array kPlainOrderWords = {
    Keyword::kCount,     Keyword::kOccurrence, Keyword::kLabels,    Keyword::kValues,
    Keyword::kAscending, Keyword::kDescending, Keyword::kShowEmpty, Keyword::kOmitEmpty};
// COUNT is the order by the number of cases here, not the function.
constexpr std::array kCategoryOrderWords = [] {
    std::array<Keyword, kPlainOrderWords.size() + kSummaryFunctionsWords.size() - 1> words{};
    std::copy(kPlainOrderWords.begin(), kPlainOrderWords.end(), words.begin());
    std::copy_if(kSummaryFunctionsWords.begin(), kSummaryFunctionsWords.end(),
                 words.begin() + kPlainOrderWords.size(),
                 [](Keyword function) { return function != Keyword::kCount; });
    return words;
}();

}  // namespace

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
