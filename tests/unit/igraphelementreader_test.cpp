#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "igraph/read/elementreader.h"
#include "igraph/read/syntaxitems.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {

namespace {

using ElementKind = ChartElement::Kind;

// The settings of an element.
ChartElement ReadSettings(ElementKind kind, const std::string& text) {
    TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
    SyntaxReader reader(sequence);
    ChartElement element;
    element.kind = kind;
    EXPECT_TRUE(ReadElement(reader, element)) << text;
    EXPECT_TRUE(reader.IsAt(SyntaxItem::Kind::kEnd)) << text;
    return element;
}

FitLine ReadFit(const std::string& text) {
    TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
    SyntaxReader reader(sequence);
    FitLine fitLine;
    EXPECT_TRUE(ReadFitLine(reader, fitLine)) << text;
    EXPECT_TRUE(reader.IsAt(SyntaxItem::Kind::kEnd)) << text;
    return fitLine;
}

TEST(IgraphElementReaderTest, ReadsScatter) {
    EXPECT_FALSE(ReadSettings(ElementKind::kScatter, "").isJittered);
    EXPECT_TRUE(ReadSettings(ElementKind::kScatter, "COINCIDENT=JITTER(3)").isJittered);
    EXPECT_FALSE(
        ReadSettings(ElementKind::kScatter, "COINCIDENT=JITTER COINCIDENT=NONE").isJittered);
}

TEST(IgraphElementReaderTest, ReadsBaselines) {
    EXPECT_FALSE(ReadSettings(ElementKind::kBar, "").hasBaseline);
    const ChartElement automatic = ReadSettings(ElementKind::kBar, "BASELINE=AUTO");
    EXPECT_TRUE(automatic.hasBaseline);
    EXPECT_FALSE(automatic.baseline);
    EXPECT_EQ(ReadSettings(ElementKind::kArea, "BASELINE=-2").baseline, -2.0);
    EXPECT_FALSE(ReadSettings(ElementKind::kArea, "BASELINE=3 BASELINE=AUTO").baseline);
}

TEST(IgraphElementReaderTest, ReadsLinesAndAreas) {
    using LineStyle = ChartElement::LineStyle;
    using Break = ChartElement::Break;
    const ChartElement plain = ReadSettings(ElementKind::kLine, "");
    EXPECT_EQ(plain.lineStyle, LineStyle::kLine);
    EXPECT_EQ(plain.breakMode, Break::kUnspecified);
    EXPECT_EQ(plain.interpolation, Keyword::kStraight);
    EXPECT_EQ(ReadSettings(ElementKind::kLine, "STYLE=DOT").lineStyle, LineStyle::kDot);
    EXPECT_EQ(ReadSettings(ElementKind::kLine, "STYLE=DOTLINE").lineStyle, LineStyle::kDotLine);
    EXPECT_EQ(ReadSettings(ElementKind::kLine, "STYLE=NONE").lineStyle, LineStyle::kNone);
    EXPECT_EQ(ReadSettings(ElementKind::kLine, "STYLE=DOT STYLE=LINE").lineStyle, LineStyle::kLine);
    EXPECT_TRUE(ReadSettings(ElementKind::kLine, "DROPLINE=ON").hasDropLines);
    EXPECT_EQ(ReadSettings(ElementKind::kLine, "BREAK=NONE").breakMode, Break::kNone);
    EXPECT_EQ(ReadSettings(ElementKind::kArea, "BREAK=MISSING").breakMode, Break::kMissing);
    EXPECT_EQ(ReadSettings(ElementKind::kArea, "INTERPOLATE=CJUMP").interpolation,
              Keyword::kCenterJump);
    EXPECT_EQ(ReadSettings(ElementKind::kArea, "AREALABEL=PCT POINTLABEL=N").label, Keyword::kN);
    EXPECT_EQ(ReadSettings(ElementKind::kLine, "LINELABEL PCT LABEL N").label, Keyword::kN);
}

TEST(IgraphElementReaderTest, ReadsPies) {
    const ChartElement pie =
        ReadSettings(ElementKind::kPie, "(SUMAV) START=-30 CCW SLICE=OUTSIDE PCT");
    EXPECT_EQ(pie.summary->function, Keyword::kSumAbsolute);
    EXPECT_EQ(pie.pieStart, -30.0);
    EXPECT_TRUE(pie.isCounterclockwise);
    EXPECT_EQ(pie.label, Keyword::kPercent);
    EXPECT_FALSE(ReadSettings(ElementKind::kPie, "CCW CW").isCounterclockwise);
}

TEST(IgraphElementReaderTest, ReadsBoxes) {
    EXPECT_TRUE(ReadSettings(ElementKind::kBox, "OUTLIERS=ON EXTREME=ON MEDIAN=ON").showsAllOfBox);
    EXPECT_FALSE(
        ReadSettings(ElementKind::kBox, "OUTLIERS=ON EXTREME=OFF MEDIAN=ON").showsAllOfBox);
    EXPECT_TRUE(ReadSettings(ElementKind::kBox, "KEY=OFF LABEL=N BOXBASE=CIRCLE").showsAllOfBox);
}

TEST(IgraphElementReaderTest, ReadsErrorBars) {
    const ChartElement bar =
        ReadSettings(ElementKind::kErrorBar, "SE 1.5 CAPSTYLE=NONE SYMBOL=OFF");
    EXPECT_EQ(bar.extent, Keyword::kSe);
    EXPECT_EQ(bar.extentValue, 1.5);
    EXPECT_FALSE(bar.hasCaps);
    EXPECT_FALSE(bar.hasSymbol);
    const ChartElement usual = ReadSettings(ElementKind::kErrorBar, "CI=(90) CAPSTYLE=FANCY");
    EXPECT_EQ(usual.extent, Keyword::kCi);
    EXPECT_TRUE(usual.hasCaps);
    EXPECT_TRUE(usual.hasSymbol);
}

TEST(IgraphElementReaderTest, ReadsHistograms) {
    const ChartElement histogram =
        ReadSettings(ElementKind::kHistogram,
                     "CUM CURVE=ON X1INTERVAL NUM=7 X2INTERVAL WIDTH=3 X1START=5 X2START=6");
    EXPECT_TRUE(histogram.isCumulative);
    EXPECT_TRUE(histogram.hasCurve);
    EXPECT_EQ(histogram.binning, Keyword::kNum);
    EXPECT_EQ(histogram.binningValue, 7.0);
    EXPECT_EQ(histogram.binStart, 5.0);
    EXPECT_EQ(ReadSettings(ElementKind::kHistogram, "X1INTERVAL NUM=7 X1INTERVAL AUTO").binning,
              Keyword::kAuto);
}

TEST(IgraphElementReaderTest, ReadsFitLines) {
    const FitLine usual = ReadFit("");
    EXPECT_EQ(usual.method, Keyword::kRegression);
    EXPECT_FALSE(usual.forTotal || usual.forCategories || usual.hasMeanInterval);
    const FitLine llr = ReadFit("METHOD=LLR UNIFORM BANDWIDTH=CONSTRAINED X1MULTIPLIER=2");
    EXPECT_EQ(llr.method, Keyword::kLocalLinear);
    EXPECT_EQ(llr.kernel, Keyword::kUniform);
    EXPECT_TRUE(llr.hasMultiplier);
    EXPECT_EQ(ReadFit("LLR").kernel, Keyword::kNormal);
    EXPECT_FALSE(ReadFit("LLR X1MULTIPLIER=1 X2MULTIPLIER=1").hasMultiplier);
    EXPECT_TRUE(ReadFit("SPIKE=ON").hasSpikes);
    EXPECT_FALSE(ReadFit("NONE").IsDrawn());
    // The word after INTERVAL is no method.
    const FitLine interval = ReadFit("ORIGIN LINEAR INTERVAL(80)=MEAN LINE=MEFFECT TOTAL");
    EXPECT_EQ(interval.method, Keyword::kOrigin);
    EXPECT_EQ(interval.confidence, 80.0);
    EXPECT_TRUE(interval.hasMeanInterval);
    EXPECT_TRUE(interval.forTotal && interval.forCategories);
}

// Settings that are no settings of the element. Each is the last thing that is read, so that nobody
// after it could notice what the reader itself has not.
struct ElementFaultCase {
    const char* name;
    ElementKind kind;
    const char* settings;
    SyntaxFault fault;
};

void PrintTo(const ElementFaultCase& c, std::ostream* pStream) { *pStream << c.settings; }

class IgraphElementReaderFaultTest : public testing::TestWithParam<ElementFaultCase> {};

TEST_P(IgraphElementReaderFaultTest, StopsAtIt) {
    TAVQTokenSequence sequence(CodePage::Utf8(), GetParam().settings, false, 0);
    SyntaxReader reader(sequence);
    ChartElement element;
    element.kind = GetParam().kind;
    EXPECT_FALSE(ReadElement(reader, element));
    EXPECT_EQ(reader.Fault(), GetParam().fault);
}

const ElementFaultCase kElementFaults[] = {
    {"NoFunction", ElementKind::kBar, "()", SyntaxFault::kEmptyList},
    {"UnknownFunction", ElementKind::kBar, "(NOSUCH)", SyntaxFault::kFunction},
    {"TwoFunctions", ElementKind::kBar, "(MEAN SUM)", SyntaxFault::kParenthesis},
    {"OpenFunctionOfABar", ElementKind::kBar, "(MEAN", SyntaxFault::kParenthesis},
    {"OpenFunctionOfAnArea", ElementKind::kArea, "(MEAN", SyntaxFault::kParenthesis},
    {"OpenFunctionOfALine", ElementKind::kLine, "(MEAN", SyntaxFault::kParenthesis},
    {"OpenFunctionOfAPie", ElementKind::kPie, "(MEAN", SyntaxFault::kParenthesis},
    {"NoCoincident", ElementKind::kScatter, "COINCIDENT", SyntaxFault::kValue},
    {"UnknownCoincident", ElementKind::kScatter, "COINCIDENT=SUM", SyntaxFault::kSetting},
    {"NoJitter", ElementKind::kScatter, "COINCIDENT=JITTER()", SyntaxFault::kValue},
    {"OpenJitter", ElementKind::kScatter, "COINCIDENT=JITTER(3", SyntaxFault::kParenthesis},
    {"NoBaseline", ElementKind::kBar, "BASELINE", SyntaxFault::kValue},
    {"UnknownBaseline", ElementKind::kArea, "BASELINE=NONE", SyntaxFault::kSetting},
    {"NoBarLabel", ElementKind::kBar, "LABEL=NOSUCH", SyntaxFault::kSetting},
    {"NoShape", ElementKind::kBar, "SHAPE", SyntaxFault::kValue},
    {"NoBarBase", ElementKind::kBar, "BARBASE", SyntaxFault::kValue},
    {"NoBreak", ElementKind::kArea, "BREAK", SyntaxFault::kValue},
    {"NoBreakOfALine", ElementKind::kLine, "BREAK", SyntaxFault::kValue},
    {"NoPointLabel", ElementKind::kArea, "POINTLABEL=NOSUCH", SyntaxFault::kSetting},
    {"NoAreaLabel", ElementKind::kArea, "AREALABEL=NOSUCH", SyntaxFault::kSetting},
    {"NoInterpolation", ElementKind::kArea, "INTERPOLATE", SyntaxFault::kValue},
    {"NoInterpolationOfALine", ElementKind::kLine, "INTERPOLATE", SyntaxFault::kValue},
    {"NoStyle", ElementKind::kLine, "STYLE", SyntaxFault::kValue},
    {"NoDropLine", ElementKind::kLine, "DROPLINE", SyntaxFault::kValue},
    {"NoLineLabel", ElementKind::kLine, "LINELABEL=NOSUCH", SyntaxFault::kSetting},
    {"NoStart", ElementKind::kPie, "START", SyntaxFault::kValue},
    {"NoSlice", ElementKind::kPie, "SLICE=NOSUCH", SyntaxFault::kSetting},
    {"NoStackOfSlices", ElementKind::kPie, "STACK=NOSUCH", SyntaxFault::kSetting},
    {"NoMedian", ElementKind::kBox, "MEDIAN", SyntaxFault::kValue},
    {"NoBoxLabel", ElementKind::kBox, "LABEL", SyntaxFault::kValue},
    {"NoBoxBase", ElementKind::kBox, "BOXBASE", SyntaxFault::kValue},
    {"NoWhisker", ElementKind::kBox, "WHISKER", SyntaxFault::kValue},
    {"NoCapWidth", ElementKind::kBox, "CAPWIDTH", SyntaxFault::kValue},
    {"OpenCapWidth", ElementKind::kBox, "CAPWIDTH(45", SyntaxFault::kParenthesis},
    {"NoExtent", ElementKind::kErrorBar, "CI", SyntaxFault::kValue},
    {"OpenExtent", ElementKind::kErrorBar, "CI(95", SyntaxFault::kParenthesis},
    {"TwoExtents", ElementKind::kErrorBar, "CI(95) SE(2)", SyntaxFault::kTwoExtents},
    {"NoDirection", ElementKind::kErrorBar, "DIRECTION", SyntaxFault::kValue},
    {"NoCapStyle", ElementKind::kErrorBar, "CAPSTYLE", SyntaxFault::kValue},
    {"NoSymbol", ElementKind::kErrorBar, "SYMBOL", SyntaxFault::kValue},
    {"NoErrorBarBaseline", ElementKind::kErrorBar, "BASELINE", SyntaxFault::kValue},
    {"NoErrorBarCapWidth", ElementKind::kErrorBar, "CAPWIDTH", SyntaxFault::kValue},
    {"NoErrorBarLabel", ElementKind::kErrorBar, "LABEL=NOSUCH", SyntaxFault::kSetting},
    {"NoHistogramShape", ElementKind::kHistogram, "SHAPE", SyntaxFault::kValue},
    {"NoCurve", ElementKind::kHistogram, "CURVE", SyntaxFault::kValue},
    {"NoX1Start", ElementKind::kHistogram, "X1START", SyntaxFault::kValue},
    {"NoX2Start", ElementKind::kHistogram, "X2START", SyntaxFault::kValue},
    {"NoBins", ElementKind::kHistogram, "X1INTERVAL", SyntaxFault::kValue},
    {"NoBinWidth", ElementKind::kHistogram, "X1INTERVAL=WIDTH", SyntaxFault::kValue},
    {"NoBinNumber", ElementKind::kHistogram, "X2INTERVAL=NUM", SyntaxFault::kValue},
    {"NoKeyOfAHistogram", ElementKind::kHistogram, "KEY", SyntaxFault::kValue},
};

INSTANTIATE_TEST_SUITE_P(Elements, IgraphElementReaderFaultTest, testing::ValuesIn(kElementFaults),
                         [](const testing::TestParamInfo<ElementFaultCase>& tested) {
                             return std::string(tested.param.name);
                         });

struct FitFaultCase {
    const char* name;
    const char* settings;
    SyntaxFault fault;
};

void PrintTo(const FitFaultCase& c, std::ostream* pStream) { *pStream << c.settings; }

class IgraphElementReaderFitFaultTest : public testing::TestWithParam<FitFaultCase> {};

TEST_P(IgraphElementReaderFitFaultTest, StopsAtIt) {
    TAVQTokenSequence sequence(CodePage::Utf8(), GetParam().settings, false, 0);
    SyntaxReader reader(sequence);
    FitLine fitLine;
    EXPECT_FALSE(ReadFitLine(reader, fitLine));
    EXPECT_EQ(reader.Fault(), GetParam().fault);
}

const FitFaultCase kFitFaults[] = {
    {"NoMethod", "METHOD", SyntaxFault::kValue},
    {"UnknownMethod", "METHOD=CUBIC", SyntaxFault::kSetting},
    {"NotLinear", "REGRESSION LIN", SyntaxFault::kSetting},
    {"UnknownKernel", "LLR NOSUCH", SyntaxFault::kSetting},
    {"NoConfidence", "INTERVAL()=MEAN", SyntaxFault::kValue},
    {"OpenConfidence", "INTERVAL(95 MEAN", SyntaxFault::kParenthesis},
    {"NoInterval", "INTERVAL", SyntaxFault::kValue},
    {"UnknownSecondInterval", "INTERVAL=MEAN NOSUCH", SyntaxFault::kSetting},
    {"NoScope", "LINE", SyntaxFault::kValue},
    {"UnknownSecondScope", "LINE=TOTAL NOSUCH", SyntaxFault::kSetting},
    {"NoSpike", "SPIKE", SyntaxFault::kValue},
    {"NoBandwidth", "BANDWIDTH", SyntaxFault::kValue},
    {"NoMultiplier", "X1MULTIPLIER", SyntaxFault::kValue},
    {"NoSecondMultiplier", "X2MULTIPLIER", SyntaxFault::kValue},
};

INSTANTIATE_TEST_SUITE_P(FitLines, IgraphElementReaderFitFaultTest, testing::ValuesIn(kFitFaults),
                         [](const testing::TestParamInfo<FitFaultCase>& tested) {
                             return std::string(tested.param.name);
                         });

}  // namespace

}  // namespace quillet::igraph
