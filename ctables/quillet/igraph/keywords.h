// The keywords of the IGRAPH command: which ones may stand where, and how words match them.
#ifndef QUILLET_IGRAPH_KEYWORDS_H
#define QUILLET_IGRAPH_KEYWORDS_H

#include <span>
#include <string_view>

namespace quillet::igraph {

/// Every word that means something in an IGRAPH command, whatever place it stands at.
enum class Keyword {
    kAllCases,  // ALL
    kArea,
    kAreaLabel,
    kAscending,
    kAuto,
    kBandwidth,
    kBar,
    kBarBase,
    kBaseline,
    kBoth,
    kBox,
    kBoxBase,
    kBreak,
    kCapStyle,
    kCaption,
    kCapWidth,
    kCaseLabel,
    kCat,
    kCategorical,
    kCatOrder,
    kCcw,
    kCenterJump,
    kCenterStep,
    kCentroid,
    kChartLook,
    kCi,
    kCircle,
    kCluster,
    kCoincident,
    kColor,
    kConstrained,
    kCoordinate,
    kCorner,
    kCount,
    kCum,
    kCurve,
    kCw,
    kDescending,
    kDirection,
    kDot,
    kDotLine,
    kDown,
    kDropLine,
    kEffect,
    kEpanechnikov,
    kErrorBar,
    kExtreme,
    kFancy,
    kFast,
    kFirst,
    kFitLine,
    kFloor,
    kFormat,
    kGroupedMedian,
    kHistogram,
    kHorizontal,
    kIndividual,
    kInside,
    kInterpolate,
    kInterval,
    kJitter,
    kKey,
    kKurtosis,
    kLabel,
    kLabels,
    kLagrange3,
    kLagrange5,
    kLast,
    kLeftJump,
    kLeftStep,
    kLegend,
    kLine,
    kLinear,
    kLineLabel,
    kLocalLinear,
    kLowerLeft,
    kLowerRight,
    kMax,
    kMaximum,
    kMean,
    kMedian,
    kMeffect,
    kMethod,
    kMin,
    kMinimum,
    kMissing,
    kMode,
    kN,
    kNone,
    kNormal,
    kNormalize,
    kNum,
    kNumberEqual,
    kNumberGreater,
    kNumberGreaterEqual,
    kNumberIn,
    kNumberLess,
    kNumberLessEqual,
    kNumIn,
    kObelisk,
    kOccurrence,
    kOff,
    kOmitEmpty,
    kOn,
    kOrigin,
    kOutliers,
    kOutside,
    kPanel,
    kPercent,  // PCT
    kPercentEqual,
    kPercentGreater,
    kPercentGreaterEqual,
    kPercentile,
    kPercentIn,
    kPercentLess,
    kPercentLessEqual,
    kPie,
    kPointLabel,
    kPyramid,
    kRange,
    kRectangle,
    kRefLine,
    kRegression,
    kRightJump,
    kRightStep,
    kScale,
    kScaleRange,
    kScatter,
    kSd,
    kSe,
    kSeKurtosis,
    kSeMean,
    kSeSkewness,
    kShape,
    kShowEmpty,
    kSign,
    kSize,
    kSkewness,
    kSlice,
    kSpike,
    kSpline,
    kSquare,
    kStack,
    kStart,
    kStdDev,
    kStraight,
    kStyle,
    kSubtitle,
    kSum,
    kSumAbsolute,
    kSummaryVar,
    kSumSquares,
    kSymbol,
    kT,
    kTextIn,
    kThree,
    kTitle,
    kTotal,
    kType,
    kUniform,
    kUp,
    kUpperLeft,
    kUpperRight,
    kVal,
    kValues,
    kVariance,
    kVertical,
    kViewName,
    kWhisker,
    kWidth,
    kX1,
    kX1Interval,
    kX1Length,
    kX1Multiplier,
    kX1Start,
    kX2,
    kX2Interval,
    kX2Length,
    kX2Multiplier,
    kX2Start,
    kY,
    kYLength,
};

/// The full spelling, in upper case.
[[nodiscard]] std::string_view Spelling(Keyword keyword);

/// The keywords allowed at one place of the command.
using KeywordSet = std::span<const Keyword>;

/// How a word compares with the keywords of a place.
struct KeywordMatch {
    enum class Outcome { kNoMatch, kAmbiguous, kMatch };

    Outcome outcome = Outcome::kNoMatch;
    Keyword keyword{};        ///< Only with `kMatch`.
    bool inFirstSet = false;  ///< Only with `kMatch`: which of the two sets holds it.
};

/// Compares `word`, in upper case, with the keywords of `first` and `second`.
///
/// A word is a keyword when it is equal to it, or when it has at least three characters and is
/// the beginning of one keyword alone. Both sets count as one for this, so that an optional word
/// is never mistaken for the setting behind it; a keyword in both counts as of the first.
[[nodiscard]] KeywordMatch MatchKeyword(std::string_view word, KeywordSet first,
                                        KeywordSet second = {});

/// True when `word`, in upper case, is one of the keywords in full.
[[nodiscard]] bool IsExactKeyword(std::string_view word, KeywordSet set);

/// The sets, by the place where they may stand. Spans over constants.
namespace keywords {

extern const KeywordSet kSubcommands;
extern const KeywordSet kOnOff;

extern const KeywordSet kAxisSettings;
extern const KeywordSet kLegendSettings;  ///< The axis settings among them.
extern const KeywordSet kMeasures;
extern const KeywordSet kScaleEnds;
extern const KeywordSet kCategoryOrder;  ///< The summary functions among them.
extern const KeywordSet kPointLabelSettings;
extern const KeywordSet kCoordinates;
extern const KeywordSet kEffects;
extern const KeywordSet kRefLineSettings;
extern const KeywordSet kSpikeSettings;
extern const KeywordSet kTotal;

extern const KeywordSet kScatterSettings;
extern const KeywordSet kCoincident;
extern const KeywordSet kBarSettings;
extern const KeywordSet kBarLabels;
extern const KeywordSet kBarShapes;
extern const KeywordSet kBases;
extern const KeywordSet kAuto;
extern const KeywordSet kAreaSettings;
extern const KeywordSet kPointLabels;
extern const KeywordSet kCategoryLabels;
extern const KeywordSet kBreaks;
extern const KeywordSet kInterpolations;
extern const KeywordSet kLineSettings;
extern const KeywordSet kLineStyles;
extern const KeywordSet kPieSettings;
extern const KeywordSet kSliceLabels;
extern const KeywordSet kBoxSettings;
extern const KeywordSet kBoxLabels;
extern const KeywordSet kWhiskers;
extern const KeywordSet kErrorBarSettings;
extern const KeywordSet kErrorBarLabels;
extern const KeywordSet kDirections;
extern const KeywordSet kCapStyles;
extern const KeywordSet kHistogramSettings;
extern const KeywordSet kHistogramShapes;
extern const KeywordSet kIntervals;
extern const KeywordSet kFitSettings;
extern const KeywordSet kFitMethods;
extern const KeywordSet kLinear;
extern const KeywordSet kKernels;
extern const KeywordSet kFitIntervals;
extern const KeywordSet kFitScopes;
extern const KeywordSet kBandwidths;

extern const KeywordSet kSummaryFunctions;

}  // namespace keywords

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_KEYWORDS_H
