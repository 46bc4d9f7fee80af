#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "igraph/gpl/chartelements.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

struct ElementCase {
    const char* command;
    std::vector<std::string> elements;
};

void ExpectElements(const std::vector<ElementCase>& cases) {
    for (const ElementCase& c : cases) {
        SCOPED_TRACE(c.command);
        const IgraphResult result = ConvertIgraphText("IGRAPH " + std::string(c.command));
        EXPECT_EQ(result.syntaxFault, SyntaxFault::kNone);
        EXPECT_EQ(result.validityFault, ValidityFault::kNone);
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(result.Lines("ELEMENT"), c.elements);
    }
}

TEST(IgraphChartElementsTest, Scatter) {
    ExpectElements({
        {"/X1=VAR(x) /Y=VAR(y) /SCATTER", {"point(position(x*y))"}},
        {"/X1=VAR(x) /Y=VAR(y) /SCATTER COINCIDENT=NONE", {"point(position(x*y))"}},
        {"/X1=VAR(x) /Y=VAR(y) /SCATTER COINCIDENT=JITTER", {"point.jitter(position(x*y))"}},
        {"/X1=VAR(x) /Y=VAR(y) /SCATTER COINCIDENT=JITTER(5)", {"point.jitter(position(x*y))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(t) /SIZE=VAR(z) /POINTLABEL VAR(p) "
         "/SCATTER",
         {"point(position(x*y), color.interior(c), shape.interior(t), size(z), label(p))"}},
        {"/X1=VAR(x) /Y=VAR(y) /POINTLABEL VAR(p) ALL /SCATTER",
         {"point(position(x*y), label(p))"}},
        {"/X1=VAR(x) /Y=VAR(y) /POINTLABEL VAR(p) NONE /SCATTER", {"point(position(x*y))"}},
        {"/X1=VAR(x) /Y=VAR(y) /POINTLABEL VAR(x) /SCATTER", {"point(position(x*y), label(x_2))"}},
        {"/X1=$case /Y=VAR(y) TYPE=CATEGORICAL /SCATTER", {"point(position(casenum*y))"}},
        {"/X1=VAR(x) /Y=$case /SCATTER", {"point(position(x*casenum))"}},
        {"/X1=VAR(x) /Y=VAR(y) /PANEL p /SCATTER", {"point(position(x*y*p))"}},
        {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /PANEL p q /SCATTER", {"point(position(z*x*y*p*q))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) CLUSTER /SCATTER",
         {"point(position(x*y), color.interior(c))"}},
    });
}

TEST(IgraphChartElementsTest, Bar) {
    ExpectElements({
        {"/X1=VAR(x) /Y=VAR(y) /BAR",
         {"interval(position(summary.mean(x*y)), shape.interior(shape.square))"}},
        {"/Y=VAR(y) /BAR(SUM)",
         {"interval(position(summary.sum(1*y)), shape.interior(shape.square))"}},
        {"/Y=$count /PANEL p /BAR",
         {"interval(position(summary.count(1*1*p)), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=$count /BAR",
         {"interval(position(summary.count(x)), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=$count /PANEL p q /BAR",
         {"interval(position(summary.count(x*1*p*q)), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=$pct /BAR",
         {"interval(position(summary.percent.count(x, base.all(acrossPanels()))), "
          "shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=VAR(y) TYPE=CATEGORICAL /BAR",
         {"interval(position(summary.mode(x*y)), shape.interior(shape.square))"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /BAR",
         {"interval(position(x*y), shape.interior(shape.square))"}},
        {"/X1=$case /Y=VAR(y) /BAR LABEL VAL",
         {"interval(position(casenum*y), shape.interior(shape.square), label(y))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(x) /BAR",
         {"interval(position(summary.mean(x*y)), color.interior(x), "
          "shape.interior(shape.square))"}},
        // Clusters.
        {"/X1=VAR(x) /Y=$count /COLOR=VAR(c) /BAR",
         {"interval(position(summary.count(c*1*x)), color.interior(c), "
          "shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=VAR(y) /STYLE=VAR(c) /PANEL p q /BAR",
         {"interval(position(summary.mean(c*y*x*p*q)), texture.pattern.interior(c), "
          "shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(C) /BAR",
         {"interval(position(summary.mean(c*y*x)), color.interior(c), "
          "texture.pattern.interior(c), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) CLUSTER /STYLE=VAR(t) STACK /BAR(SUM)",
         {"interval.stack(position(summary.sum(c*y*x)), color.interior(c), "
          "texture.pattern.interior(t), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(t) /BAR",
         {"interval.dodge(position(summary.mean(x*y)), color.interior(c), "
          "texture.pattern.interior(t), shape.interior(shape.square))"}},
        {"/Y=VAR(y) /COLOR=VAR(c) /BAR",
         {"interval.dodge(position(summary.mean(1*y)), color.interior(c), "
          "shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /BAR /LINE",
         {"interval.dodge(position(summary.mean(x*y)), color.interior(c), "
          "shape.interior(shape.square))",
          "line(position(summary.mean(x*y)), color.interior(c))"}},
        // Stacks.
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) STACK /BAR(SUM)",
         {"interval.stack(position(summary.sum(x*y)), color.interior(c), "
          "shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=VAR(y) /STACK=VAR(c) /NORMALIZE /BAR(SUM)",
         {"interval.stack(position(summary.percent.sum(x*y, base.coordinate(dim(1)))), "
          "color.interior(c), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=$pct /STACK=VAR(c) /NORMALIZE /BAR",
         {"interval.stack(position(summary.percent.count(x, base.coordinate(dim(1)))), "
          "color.interior(c), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=$count /COLOR=VAR(c) CLUSTER /STYLE=VAR(t) STACK /NORMALIZE /BAR",
         {"interval.stack(position(summary.percent.count(c*1*x, base.coordinate(dim(3)))), "
          "color.interior(c), texture.pattern.interior(t), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /Y=$count /NORMALIZE /BAR",
         {"interval(position(summary.count(x)), shape.interior(shape.square))"}},
        // Three axes.
        {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /BAR(SUM)",
         {"interval(position(summary.sum(z*x*y)), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /X2=VAR(z) /Y=$count /BAR",
         {"interval(position(summary.count(z*x)), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /X2=VAR(z) /Y=$count /PANEL p /BAR",
         {"interval(position(summary.count(z*x*1*p)), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /X2=VAR(z) /Y=$count /COLOR=VAR(c) STACK /NORMALIZE /BAR",
         {"interval.stack(position(summary.percent.count(z*x, base.coordinate(dim(2)))), "
          "color.interior(c), shape.interior(shape.square))"}},
        {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /COLOR=VAR(z) /BAR",
         {"interval(position(summary.mean(z*x*y)), color.interior(z), "
          "shape.interior(shape.square))"}},
        // Labels and settings without effect.
        {"/X1=VAR(x) /Y=VAR(y) /BAR LABEL VAL",
         {"interval(position(summary.mean(x*y)), shape.interior(shape.square), "
          "label(summary.mean(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /BAR LABEL INSIDE N VAL",
         {"interval(position(summary.mean(x*y)), shape.interior(shape.square), "
          "label(summary.count(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /BAR LABEL OUTSIDE PCT",
         {"interval(position(summary.mean(x*y)), shape.interior(shape.square), "
          "label(summary.percent.count(x, base.all(acrossPanels()))))"}},
        {"/X1=VAR(x) /Y=$count /BAR LABEL N",
         {"interval(position(summary.count(x)), shape.interior(shape.square), "
          "label(summary.count(x)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /BAR(SUMSQ) LABEL VAL",
         {"interval(position(summary.sum(x*y_t1)), shape.interior(shape.square), "
          "label(summary.sum(x*y_t1)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /SIZE=VAR(z) /BAR KEY=OFF SHAPE=OBELISK BARBASE=CIRCLE LABEL NONE",
         {"interval(position(summary.mean(x*y)), shape.interior(shape.square))"}},
    });
}

TEST(IgraphChartElementsTest, Area) {
    ExpectElements({
        {"/X1=VAR(x) /Y=VAR(y) /AREA", {"area(position(summary.mean(x*y)))"}},
        {"/X1=VAR(x) /Y=$count /AREA", {"area(position(summary.count(x)))"}},
        {"/X1=VAR(x) /Y=$pct /AREA POINTLABEL=PCT AREALABEL=CAT",
         {"area(position(summary.percent.count(x, base.all(acrossPanels()))), "
          "label(summary.percent.count(x, base.all(acrossPanels()))))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(t) /AREA(SUM)",
         {"area.stack(position(summary.sum(x*y)), color.interior(c), "
          "texture.pattern.interior(t))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) CLUSTER /AREA(SUM)",
         {"area(position(summary.sum(x*y)), color.interior(c))"}},
        {"/X1=VAR(x) /Y=VAR(y) /AREA BREAK=MISSING POINTLABEL=VAL",
         {"area(position(summary.mean(x*y)), label(summary.mean(x*y)), missing.gap())"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /AREA POINTLABEL=N BREAK=NONE",
         {"area(position(x*y), label(summary.count(x*y)), missing.interpolate())"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /AREA INTERPOLATE=LSTEP POINTLABEL=VAL",
         {"area(position(smooth.step.left(x*y)), label(y))"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /AREA INTERPOLATE=CJUMP BREAK=MISSING",
         {"area(position(smooth.step.center(x*y)), missing.gap(), jump())"}},
        {"/X1=VAR(x) /Y=VAR(y) TYPE=CATEGORICAL /AREA(MODE)",
         {"area(position(summary.mode(x*y)))"}},
    });
}

TEST(IgraphChartElementsTest, Line) {
    ExpectElements({
        {"/X1=VAR(x) /Y=VAR(y) /LINE", {"line(position(summary.mean(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(t) /SIZE=VAR(z) /LINE STYLE=LINE",
         {"line(position(summary.mean(x*y)), color.interior(c), shape.interior(t), size(z))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /LINE STYLE=DOT LABEL VAL BREAK=MISSING",
         {"point(position(summary.mean(x*y)), color.interior(c), label(summary.mean(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /LINE(SUMAV) STYLE=DOTLINE LABEL N BREAK=NONE LINELABEL CAT",
         {"line(position(summary.sum(x*y_t1)), missing.interpolate())",
          "point(position(summary.sum(x*y_t1)), label(summary.count(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /LINE LABEL PCT DROPLINE=OFF KEY=ON",
         {"line(position(summary.mean(x*y)), "
          "label(summary.percent.count(x, base.all(acrossPanels()))))"}},
        {"/X1=VAR(x) /Y=VAR(y) /LINE STYLE=NONE /LINE(SUM)", {"line(position(summary.sum(x*y)))"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE", {"line(position(x*y))"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE(MEAN)", {"line(position(summary.mean(x*y)))"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE INTERPOLATE=STRAIGHT", {"line(position(x*y))"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE INTERPOLATE=LSTEP",
         {"line(position(smooth.step.left(x*y)))"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE INTERPOLATE=CSTEP",
         {"line(position(smooth.step.center(x*y)))"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE INTERPOLATE=RSTEP",
         {"line(position(smooth.step.right(x*y)))"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE INTERPOLATE=LJUMP",
         {"line(position(smooth.step.left(x*y)), jump())"}},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE INTERPOLATE=RJUMP BREAK=NONE",
         {"line(position(smooth.step.right(x*y)), missing.interpolate(), jump())"}},
        {"/X1=$case /Y=VAR(y) /PANEL p /LINE INTERPOLATE=SPLINE STYLE=DOTLINE LABEL VAL",
         {"line(position(smooth.spline(casenum*y*p)))", "point(position(casenum*y*p), label(y))"}},
        {"/X1=VAR(x) /Y=$count /PANEL p /LINE LABEL N",
         {"line(position(summary.count(x*1*p)), label(summary.count(x*1*p)))"}},
    });
}

TEST(IgraphChartElementsTest, Pie) {
    ExpectElements({
        {"/COLOR=VAR(c) /PIE", {"interval.stack(position(summary.count()), color.interior(c))"}},
        {"/STYLE=VAR(t) /PIE",
         {"interval.stack(position(summary.count()), texture.pattern.interior(t))"}},
        {"/SUMMARYVAR=$count /COLOR=VAR(c) /STYLE=VAR(t) /PIE SLICE=LABEL",
         {"interval.stack(position(summary.count()), color.interior(c), "
          "texture.pattern.interior(t), label(c))"}},
        {"/SUMMARYVAR=$pct /COLOR=VAR(c) /PIE SLICE=INSIDE PCT",
         {"interval.stack(position(summary.percent.count()), color.interior(c), "
          "label(summary.percent.count()))"}},
        {"/SUMMARYVAR=$pct /COLOR=VAR(c) /PANEL p q /PIE SLICE=PCT LABEL",
         {"interval.stack(position(summary.percent.count(1*p*q)), color.interior(c), "
          "label(summary.percent.count(1*p*q)))"}},
        {"/COLOR=VAR(c) /PANEL p /PIE SLICE=N",
         {"interval.stack(position(summary.count(1*p)), color.interior(c), "
          "label(summary.count(1*p)))"}},
        {"/SUMMARYVAR=VAR(v) /COLOR=VAR(c) /PANEL p /PIE(SUMSQ) SLICE=VAL",
         {"interval.stack(position(summary.sum(v_t1*p)), color.interior(c), "
          "label(summary.sum(v_t1*p)))"}},
        {"/SUMMARYVAR=VAR(v) /STYLE=VAR(t) /PIE SLICE=LABEL",
         {"interval.stack(position(summary.sum(v)), texture.pattern.interior(t), label(t))"}},
        {"/Y=VAR(v) /COLOR=VAR(c) /PIE SLICE=TEXTIN NUMIN STACK=PCT CLUSTER=N",
         {"interval.stack(position(summary.sum(v)), color.interior(c))"}},
        {"/Y=VAR(w) /SUMMARYVAR=VAR(v) /COLOR=VAR(c) STACK /NORMALIZE /PIE",
         {"interval.stack(position(summary.sum(v)), color.interior(c))"}},
        {"/Y=$pct /COLOR=VAR(c) /PIE",
         {"interval.stack(position(summary.percent.count()), color.interior(c))"}},
    });
}

TEST(IgraphChartElementsTest, Box) {
    ExpectElements({
        {"/X1=VAR(x) /Y=VAR(y) /BOX", {"schema(position(bin.quantile.letter(x*y)), label(id))"}},
        {"/Y=VAR(b) /BOX", {"schema(position(bin.quantile.letter(1*b)), label(id))"}},
        {"/X1=VAR(x) /Y=VAR(y) /CASELABEL VAR(k) /BOX",
         {"schema(position(bin.quantile.letter(x*y)), label(k))"}},
        {"/X1=VAR(x) /Y=VAR(y) /CASELABEL VAR(k) NONE /BOX",
         {"schema(position(bin.quantile.letter(x*y)), label(id))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /PANEL p /BOX WHISKER=FANCY CAPWIDTH(30) LABEL=N",
         {"schema(position(bin.quantile.letter(c*y*x*p)), color.interior(c), label(id))"}},
        {"/X1=VAR(x) /Y=VAR(y) /STYLE=VAR(x) /SIZE=VAR(z) /BOX",
         {"schema(position(bin.quantile.letter(x*y)), texture.pattern.interior(x), label(id))"}},
    });
}

TEST(IgraphChartElementsTest, ErrorBar) {
    ExpectElements({
        {"/X1=VAR(x) /Y=VAR(y) /ERRORBAR CI(95)",
         {"interval(position(region.confi.mean(x*y, alpha(0.95))), shape.interior(shape.ibeam))",
          "point(position(summary.mean(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /ERRORBAR SD(2) SYMBOL=OFF",
         {"interval(position(region.spread.sd(x*y, multiple(2))), shape.interior(shape.ibeam))"}},
        {"/X1=VAR(x) /Y=VAR(y) /ERRORBAR SE 1.5 SYMBOL=OFF CAPSTYLE=NONE",
         {"interval(position(region.spread.se(x*y, multiple(1.5))), shape.interior(shape.line))"}},
        {"/X1=VAR(x) /Y=VAR(y) /ERRORBAR SE(1) SYMBOL=OFF CAPSTYLE=FANCY DIRECTION=UP BASELINE=3",
         {"interval(position(region.spread.se(x*y, multiple(1))), shape.interior(shape.ibeam))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /ERRORBAR SD(1)",
         {"interval(position(region.spread.sd(c*y*x, multiple(1))), color.interior(c), "
          "shape.interior(shape.ibeam))",
          "point(position(summary.mean(c*y*x)), color.interior(c))"}},
        {"/X1=VAR(x) /Y=VAR(y) /STYLE=VAR(t) /ERRORBAR SD(1) LABEL VAL",
         {"interval(position(region.spread.sd(t*y*x, multiple(1))), texture.pattern.interior(t), "
          "shape.interior(shape.ibeam))",
          "point(position(summary.mean(t*y*x)))"}},
        {"/Y=VAR(y) /COLOR=VAR(c) /ERRORBAR SD(1) SYMBOL=OFF",
         {"interval(position(region.spread.sd(1*y, multiple(1))), color.interior(c), "
          "shape.interior(shape.ibeam))"}},
    });
}

TEST(IgraphChartElementsTest, Histogram) {
    const std::string square = ", shape.interior(shape.square))";
    ExpectElements({
        {"/X1=VAR(x) /Y=$count /HISTOGRAM",
         {"interval(position(summary.count(bin.rect(x)))" + square}},
        {"/X1=VAR(x) /Y=$count /HISTOGRAM SHAPE=HISTOGRAM X1INTERVAL AUTO X1START=0 CURVE=OFF",
         {"interval(position(summary.count(bin.rect(x)))" + square}},
        {"/X1=VAR(x) /Y=$count /HISTOGRAM X1INTERVAL NUM=12 X2INTERVAL WIDTH=3",
         {"interval(position(summary.count(bin.rect(x, binCount(12))))" + square}},
        {"/X1=VAR(x) /Y=$pct /HISTOGRAM X1INTERVAL WIDTH=.5",
         {"interval(position(summary.percent.count(bin.rect(x, binWidth(0.5)), "
          "base.all(acrossPanels())))" +
          square}},
        {"/X1=VAR(x) /Y=$count /HISTOGRAM CUM",
         {"interval(position(summary.count.cumulative(bin.rect(x)))" + square}},
        {"/X1=VAR(x) /Y=$pct /PANEL p /HISTOGRAM CUM",
         {"interval(position(summary.percent.count.cumulative(bin.rect(x*1*p), "
          "base.all(acrossPanels())))" +
          square}},
        {"/X1=VAR(x) /Y=$count /HISTOGRAM CURVE=ON",
         {"interval(position(summary.count(bin.rect(x)))" + square,
          "line(position(density.normal(x)))"}},
        {"/X1=VAR(x) /Y=$count /COLOR=VAR(c) /STYLE=VAR(t) /HISTOGRAM CURVE=ON",
         {"interval.stack(position(summary.count(bin.rect(x))), color.interior(c), "
          "texture.pattern.interior(t)" +
              square,
          "line(position(density.normal(x)))"}},
        {"/X1=VAR(x) /Y=$count /COLOR=VAR(c) CLUSTER /HISTOGRAM",
         {"interval.stack(position(summary.count(bin.rect(x))), color.interior(c)" + square}},
    });
}

TEST(IgraphChartElementsTest, FitLine) {
    ExpectElements({
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE", {"line(position(smooth.linear(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE REGRESSION", {"line(position(smooth.linear(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE METHOD=ORIGIN LINEAR LINE=TOTAL",
         {"line(position(smooth.linear(x*y, noConstant())))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE MEAN", {"line(position(smooth.mean(x*y, uniform())))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE LLR BANDWIDTH=FAST",
         {"line(position(smooth.loess(x*y, normal())))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE LLR NORMAL",
         {"line(position(smooth.loess(x*y, normal())))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE LLR EPANECHNIKOV",
         {"line(position(smooth.loess(x*y, epanechnikov())))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE LLR UNIFORM",
         {"line(position(smooth.loess(x*y, uniform())))"}},
        {"/X1=VAR(x) /Y=VAR(y) /SCATTER /FITLINE NONE", {"point(position(x*y))"}},
        // Intervals.
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE INTERVAL=MEAN",
         {"line(position(smooth.linear(x*y)))",
          "line(position(region.confi.smooth.linear(x*y, alpha(0.95))))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE ORIGIN INTERVAL(90)=MEAN",
         {"line(position(smooth.linear(x*y, noConstant())))",
          "line(position(region.confi.smooth.linear(x*y, noConstant(), alpha(0.9))))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE MEAN INTERVAL(50)=MEAN",
         {"line(position(smooth.mean(x*y, uniform())))",
          "line(position(region.confi.smooth.mean(x*y, uniform(), alpha(0.5))))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE LLR INTERVAL(90)=MEAN",
         {"line(position(smooth.loess(x*y, normal())))"}},
        // For each category.
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /FITLINE", {"line(position(smooth.linear(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(t) /SIZE=VAR(z) /FITLINE LINE=MEFFECT",
         {"line(position(smooth.linear(x*y)), color.interior(c), shape.interior(t))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /PANEL p /FITLINE INTERVAL=MEAN LINE=MEFFECT TOTAL",
         {"line(position(smooth.linear(x*y*p)))",
          "line(position(region.confi.smooth.linear(x*y*p, alpha(0.95))))",
          "line(position(smooth.linear(x*y*p)), color.interior(c))",
          "line(position(region.confi.smooth.linear(x*y*p, alpha(0.95))), color.interior(c))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE LINE=TOTAL MEFFECT",
         {"line(position(smooth.linear(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE LINE=MEFFECT", {"line(position(smooth.linear(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) TYPE=SCALE /FITLINE LINE=MEFFECT",
         {"line(position(smooth.linear(x*y)))"}},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) TYPE=SCALE /STYLE=VAR(t) /FITLINE LINE=MEFFECT",
         {"line(position(smooth.linear(x*y)), shape.interior(t))"}},
        // Fit lines stand after the elements.
        {"/X1=VAR(x) /Y=VAR(y) /FITLINE MEAN /SCATTER /FITLINE",
         {"point(position(x*y))", "line(position(smooth.mean(x*y, uniform())))",
          "line(position(smooth.linear(x*y)))"}},
    });
}

}  // namespace

}  // namespace quillet::igraph
