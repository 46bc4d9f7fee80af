#include <gtest/gtest.h>

#include <string>

#include "igraph/read/elementreader.h"
#include "igraph/read/syntaxitems.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {

namespace {

using Kind = ChartElement::Kind;

// The settings of an element.
ChartElement ReadSettings(Kind kind, const std::string& text) {
    TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
    SyntaxReader reader(ReadSyntaxItems(sequence));
    ChartElement element;
    element.kind = kind;
    EXPECT_TRUE(ReadElement(reader, element)) << text;
    EXPECT_TRUE(reader.IsAt(SyntaxItem::Kind::kEnd)) << text;
    return element;
}

FitLine ReadFit(const std::string& text) {
    TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
    SyntaxReader reader(ReadSyntaxItems(sequence));
    FitLine fitLine;
    EXPECT_TRUE(ReadFitLine(reader, fitLine)) << text;
    EXPECT_TRUE(reader.IsAt(SyntaxItem::Kind::kEnd)) << text;
    return fitLine;
}

TEST(IgraphElementReaderTest, ReadsScatter) {
    EXPECT_FALSE(ReadSettings(Kind::kScatter, "").isJittered);
    EXPECT_TRUE(ReadSettings(Kind::kScatter, "COINCIDENT=JITTER(3)").isJittered);
    EXPECT_FALSE(ReadSettings(Kind::kScatter, "COINCIDENT=JITTER COINCIDENT=NONE").isJittered);
}

TEST(IgraphElementReaderTest, ReadsBaselines) {
    EXPECT_FALSE(ReadSettings(Kind::kBar, "").hasBaseline);
    const ChartElement automatic = ReadSettings(Kind::kBar, "BASELINE=AUTO");
    EXPECT_TRUE(automatic.hasBaseline);
    EXPECT_FALSE(automatic.baseline);
    EXPECT_EQ(ReadSettings(Kind::kArea, "BASELINE=-2").baseline, -2.0);
    EXPECT_FALSE(ReadSettings(Kind::kArea, "BASELINE=3 BASELINE=AUTO").baseline);
}

TEST(IgraphElementReaderTest, ReadsLinesAndAreas) {
    using LineStyle = ChartElement::LineStyle;
    using Break = ChartElement::Break;
    const ChartElement plain = ReadSettings(Kind::kLine, "");
    EXPECT_EQ(plain.lineStyle, LineStyle::kLine);
    EXPECT_EQ(plain.breakMode, Break::kUnspecified);
    EXPECT_EQ(plain.interpolation, Keyword::kStraight);
    EXPECT_EQ(ReadSettings(Kind::kLine, "STYLE=DOT").lineStyle, LineStyle::kDot);
    EXPECT_EQ(ReadSettings(Kind::kLine, "STYLE=DOTLINE").lineStyle, LineStyle::kDotLine);
    EXPECT_EQ(ReadSettings(Kind::kLine, "STYLE=NONE").lineStyle, LineStyle::kNone);
    EXPECT_EQ(ReadSettings(Kind::kLine, "STYLE=DOT STYLE=LINE").lineStyle, LineStyle::kLine);
    EXPECT_TRUE(ReadSettings(Kind::kLine, "DROPLINE=ON").hasDropLines);
    EXPECT_EQ(ReadSettings(Kind::kLine, "BREAK=NONE").breakMode, Break::kNone);
    EXPECT_EQ(ReadSettings(Kind::kArea, "BREAK=MISSING").breakMode, Break::kMissing);
    EXPECT_EQ(ReadSettings(Kind::kArea, "INTERPOLATE=CJUMP").interpolation, Keyword::kCenterJump);
    EXPECT_EQ(ReadSettings(Kind::kArea, "AREALABEL=PCT POINTLABEL=N").label, Keyword::kN);
    EXPECT_EQ(ReadSettings(Kind::kLine, "LINELABEL PCT LABEL N").label, Keyword::kN);
}

TEST(IgraphElementReaderTest, ReadsPies) {
    const ChartElement pie = ReadSettings(Kind::kPie, "(SUMAV) START=-30 CCW SLICE=OUTSIDE PCT");
    EXPECT_EQ(pie.summary->function, Keyword::kSumAbsolute);
    EXPECT_EQ(pie.pieStart, -30.0);
    EXPECT_TRUE(pie.isCounterclockwise);
    EXPECT_EQ(pie.label, Keyword::kPercent);
    EXPECT_FALSE(ReadSettings(Kind::kPie, "CCW CW").isCounterclockwise);
}

TEST(IgraphElementReaderTest, ReadsBoxes) {
    EXPECT_TRUE(ReadSettings(Kind::kBox, "OUTLIERS=ON EXTREME=ON MEDIAN=ON").showsAllOfBox);
    EXPECT_FALSE(ReadSettings(Kind::kBox, "OUTLIERS=ON EXTREME=OFF MEDIAN=ON").showsAllOfBox);
    EXPECT_TRUE(ReadSettings(Kind::kBox, "KEY=OFF LABEL=N BOXBASE=CIRCLE").showsAllOfBox);
}

TEST(IgraphElementReaderTest, ReadsErrorBars) {
    const ChartElement bar = ReadSettings(Kind::kErrorBar, "SE 1.5 CAPSTYLE=NONE SYMBOL=OFF");
    EXPECT_EQ(bar.extent, Keyword::kSe);
    EXPECT_EQ(bar.extentValue, 1.5);
    EXPECT_FALSE(bar.hasCaps);
    EXPECT_FALSE(bar.hasSymbol);
    const ChartElement usual = ReadSettings(Kind::kErrorBar, "CI=(90) CAPSTYLE=FANCY");
    EXPECT_EQ(usual.extent, Keyword::kCi);
    EXPECT_TRUE(usual.hasCaps);
    EXPECT_TRUE(usual.hasSymbol);
}

TEST(IgraphElementReaderTest, ReadsHistograms) {
    const ChartElement histogram = ReadSettings(
        Kind::kHistogram, "CUM CURVE=ON X1INTERVAL NUM=7 X2INTERVAL WIDTH=3 X1START=5 X2START=6");
    EXPECT_TRUE(histogram.isCumulative);
    EXPECT_TRUE(histogram.hasCurve);
    EXPECT_EQ(histogram.binning, Keyword::kNum);
    EXPECT_EQ(histogram.binningValue, 7.0);
    EXPECT_EQ(histogram.binStart, 5.0);
    EXPECT_EQ(ReadSettings(Kind::kHistogram, "X1INTERVAL NUM=7 X1INTERVAL AUTO").binning,
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
    // The word behind INTERVAL is no method.
    const FitLine interval = ReadFit("ORIGIN LINEAR INTERVAL(80)=MEAN LINE=MEFFECT TOTAL");
    EXPECT_EQ(interval.method, Keyword::kOrigin);
    EXPECT_EQ(interval.confidence, 80.0);
    EXPECT_TRUE(interval.hasMeanInterval);
    EXPECT_TRUE(interval.forTotal && interval.forCategories);
}

}  // namespace

}  // namespace quillet::igraph
