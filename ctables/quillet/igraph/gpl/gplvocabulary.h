// The spellings of GPL that graphs are written with.
//
// All of them stand here, so that a spelling is put right in one place. The first group has been
// seen in working programs or is documented; the second follows the naming of the first and
// waits for somebody to confirm it.
#ifndef QUILLET_IGRAPH_GPL_GPLVOCABULARY_H
#define QUILLET_IGRAPH_GPL_GPLVOCABULARY_H

#include <string_view>

namespace quillet::igraph::gpl {

/// The data set's name, the same in the program and in the GGRAPH command around it.
inline constexpr std::string_view kDataSetName = "iGraphDataset";
/// The identifier of the one source.
inline constexpr std::string_view kSourceName = "s";
/// The column that numbers the cases; every data set has it.
inline constexpr std::string_view kCaseNumberColumn = "$CASENUM";

// Sure.
inline constexpr std::string_view kUserSource = "userSource";
inline constexpr std::string_view kId = "id";
inline constexpr std::string_view kCol = "col";
inline constexpr std::string_view kSourceFunction = "source";
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kUnitCategory = "unit.category";
inline constexpr std::string_view kEval = "eval";
inline constexpr std::string_view kDim = "dim";
inline constexpr std::string_view kRect = "rect";
inline constexpr std::string_view kClusterFunction = "cluster";
inline constexpr std::string_view kTranspose = "transpose";
inline constexpr std::string_view kPolarTheta = "polar.theta";
inline constexpr std::string_view kStartAngle = "startAngle";
inline constexpr std::string_view kLinear = "linear";
inline constexpr std::string_view kCat = "cat";
inline constexpr std::string_view kMinimum = "min";
inline constexpr std::string_view kMaximum = "max";
inline constexpr std::string_view kInclude = "include";
inline constexpr std::string_view kDataMinimum = "dataMinimum";
inline constexpr std::string_view kDataMaximum = "dataMaximum";
inline constexpr std::string_view kReverse = "reverse";  // on a scale of categories
inline constexpr std::string_view kSortStatistic = "sort.statistic";
inline constexpr std::string_view kAesthetic = "aesthetic";
inline constexpr std::string_view kAxis = "axis";
inline constexpr std::string_view kLegend = "legend";
inline constexpr std::string_view kLabel = "label";
inline constexpr std::string_view kNull = "null";
inline constexpr std::string_view kOpposite = "opposite";
inline constexpr std::string_view kTextTitle = "text.title";
inline constexpr std::string_view kTextSubtitle = "text.subtitle";
inline constexpr std::string_view kTextFootnote = "text.footnote";
inline constexpr std::string_view kFormLine = "form.line";
inline constexpr std::string_view kPosition = "position";
inline constexpr std::string_view kPoint = "point";
inline constexpr std::string_view kPointJitter = "point.jitter";
inline constexpr std::string_view kLine = "line";
inline constexpr std::string_view kInterval = "interval";
inline constexpr std::string_view kIntervalStack = "interval.stack";
inline constexpr std::string_view kIntervalDodge = "interval.dodge";
inline constexpr std::string_view kArea = "area";
inline constexpr std::string_view kSchema = "schema";
inline constexpr std::string_view kColorInterior = "color.interior";
inline constexpr std::string_view kShapeInterior = "shape.interior";
inline constexpr std::string_view kTextureInterior = "texture.pattern.interior";
inline constexpr std::string_view kSize = "size";
inline constexpr std::string_view kShapeSquare = "shape.square";
inline constexpr std::string_view kShapeIbeam = "shape.ibeam";
inline constexpr std::string_view kSummaryCount = "summary.count";
inline constexpr std::string_view kSummaryMean = "summary.mean";
inline constexpr std::string_view kSummaryPercentile = "summary.percentile";
inline constexpr std::string_view kSummaryPercentCount = "summary.percent.count";
inline constexpr std::string_view kBaseAll = "base.all";
inline constexpr std::string_view kAcrossPanels = "acrossPanels";
inline constexpr std::string_view kBaseCoordinate = "base.coordinate";
inline constexpr std::string_view kAlpha = "alpha";
inline constexpr std::string_view kMultiple = "multiple";
inline constexpr std::string_view kBinRect = "bin.rect";
inline constexpr std::string_view kBinQuantileLetter = "bin.quantile.letter";
inline constexpr std::string_view kDensityNormal = "density.normal";
inline constexpr std::string_view kSmoothLinear = "smooth.linear";
inline constexpr std::string_view kSmoothLoess = "smooth.loess";
inline constexpr std::string_view kSmoothStepLeft = "smooth.step.left";
inline constexpr std::string_view kSmoothStepCenter = "smooth.step.center";
inline constexpr std::string_view kSmoothStepRight = "smooth.step.right";
inline constexpr std::string_view kJump = "jump";
inline constexpr std::string_view kRegionSpreadSe = "region.spread.se";
inline constexpr std::string_view kOrigin = "origin";

// Not confirmed.
inline constexpr std::string_view kSummaryMedian = "summary.median";
inline constexpr std::string_view kSummaryMode = "summary.mode";
inline constexpr std::string_view kSummarySum = "summary.sum";
inline constexpr std::string_view kSummarySd = "summary.sd";
inline constexpr std::string_view kSummaryVariance = "summary.variance";
inline constexpr std::string_view kSummaryMin = "summary.min";
inline constexpr std::string_view kSummaryMax = "summary.max";
inline constexpr std::string_view kSummaryRange = "summary.range";
inline constexpr std::string_view kSummaryFirst = "summary.first";
inline constexpr std::string_view kSummaryLast = "summary.last";
inline constexpr std::string_view kSummarySe = "summary.se";
inline constexpr std::string_view kSummaryKurtosis = "summary.kurtosis";
inline constexpr std::string_view kSummarySkewness = "summary.skewness";
inline constexpr std::string_view kSummarySeKurtosis = "summary.se.kurtosis";
inline constexpr std::string_view kSummarySeSkewness = "summary.se.skewness";
inline constexpr std::string_view kSummaryPercentSum = "summary.percent.sum";
inline constexpr std::string_view kSummaryCountCumulative = "summary.count.cumulative";
inline constexpr std::string_view kSummaryPercentCountCumulative =
    "summary.percent.count.cumulative";
inline constexpr std::string_view kSummaryCountTrue = "summary.countTrue";
inline constexpr std::string_view kSummaryPercentTrue = "summary.percentTrue";
inline constexpr std::string_view kAbs = "abs";
inline constexpr std::string_view kAnd = "&";
inline constexpr std::string_view kGreater = ">";
inline constexpr std::string_view kLess = "<";
inline constexpr std::string_view kGreaterEqual = ">=";
inline constexpr std::string_view kLessEqual = "<=";
inline constexpr std::string_view kEqual = "==";
inline constexpr std::string_view kSortData = "sort.data";
inline constexpr std::string_view kSortNatural = "sort.natural";
inline constexpr std::string_view kBinCount = "binCount";
inline constexpr std::string_view kBinWidth = "binWidth";
inline constexpr std::string_view kAreaStack = "area.stack";
inline constexpr std::string_view kShapeLine = "shape.line";
inline constexpr std::string_view kMissingGap = "missing.gap";
inline constexpr std::string_view kMissingInterpolate = "missing.interpolate";
inline constexpr std::string_view kSmoothSpline = "smooth.spline";
inline constexpr std::string_view kSmoothMean = "smooth.mean";
inline constexpr std::string_view kNoConstant = "noConstant";
inline constexpr std::string_view kKernelNormal = "normal";
inline constexpr std::string_view kKernelUniform = "uniform";
inline constexpr std::string_view kKernelEpanechnikov = "epanechnikov";
inline constexpr std::string_view kRegionConfiMean = "region.confi.mean";
inline constexpr std::string_view kRegionConfiSmoothLinear = "region.confi.smooth.linear";
inline constexpr std::string_view kRegionConfiSmoothMean = "region.confi.smooth.mean";
inline constexpr std::string_view kRegionSpreadSd = "region.spread.sd";

}  // namespace quillet::igraph::gpl

#endif  // QUILLET_IGRAPH_GPL_GPLVOCABULARY_H
