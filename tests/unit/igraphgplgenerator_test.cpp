// Whole commands and the programs that they become.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "igraph/gpl/gplgenerator.h"
#include "igraph/read/igraphparser.h"
#include "igraphtesting.h"
#include "platform/assertion.h"

namespace quillet::igraph {

namespace {

struct ExampleCase {
    const char* name;
    const char* command;
    const char* gpl;
    const char* usedNames;
    const char* viewName;
    std::vector<std::string> chartLooks;
};

const ExampleCase kExamples[] = {
    {"scatter with fit line",
     R"(IGRAPH /VIEWNAME='Growth' /X1=VAR(rain) TYPE=SCALE /Y=VAR(yield) TYPE=SCALE
  /COORDINATE=VERTICAL /TITLE='Yield by rainfall' /X1LENGTH=5 /YLENGTH=4
  /CHARTLOOK='NONE'
  /FITLINE METHOD=REGRESSION LINEAR INTERVAL(90)=MEAN LINE=TOTAL SPIKE=OFF
  /SCATTER COINCIDENT=NONE.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: rain=col(source(s), name("rain"))
  DATA: yield=col(source(s), name("yield"))
  GUIDE: axis(dim(1), label("rain"))
  GUIDE: axis(dim(2), label("yield"))
  GUIDE: text.title(label("Yield by rainfall"))
  ELEMENT: point(position(rain*yield))
  ELEMENT: line(position(smooth.linear(rain*yield)))
  ELEMENT: line(position(region.confi.smooth.linear(rain*yield, alpha(0.9))))
)",
     "rain yield",
     "Growth",
     {}},
    {"clustered bars of means",
     R"(IGRAPH /VIEWNAME='Bars' /X1=VAR(region) TYPE=CATEGORICAL /Y=VAR(score) TYPE=SCALE
  /COLOR=VAR(shift) TYPE=CATEGORICAL CLUSTER TITLE='Shift'
  /CATORDER VAR(region) (ASCENDING VALUES OMITEMPTY)
  /CATORDER VAR(shift) (DESCENDING VALUES OMITEMPTY)
  /BAR(MEAN) KEY=ON SHAPE=RECTANGLE BASELINE=AUTO.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: region=col(source(s), name("region"), unit.category())
  DATA: score=col(source(s), name("score"))
  DATA: shift=col(source(s), name("shift"), unit.category())
  COORD: rect(dim(1,2), cluster(3,0))
  GUIDE: axis(dim(3), label("region"))
  GUIDE: axis(dim(2), label("Mean score"))
  GUIDE: legend(aesthetic(aesthetic.color.interior), label("Shift"))
  SCALE: cat(dim(1), reverse())
  SCALE: linear(dim(2), include(0))
  SCALE: cat(aesthetic(aesthetic.color.interior), reverse())
  ELEMENT: interval(position(summary.mean(shift*score*region)), color.interior(shift), shape.interior(shape.square))
)",
     "region score shift",
     "Bars",
     {}},
    {"stacked bars of counts",
     R"(IGRAPH /X1=VAR(depot) TYPE=CATEGORICAL /Y=$count TITLE='Parcels'
  /COLOR=VAR(grade) TYPE=CATEGORICAL STACK
  /CATORDER VAR(depot) (COUNT DESCENDING)
  /SUBTITLE='Grades per depot' /BAR LABEL INSIDE N.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: depot=col(source(s), name("depot"), unit.category())
  DATA: grade=col(source(s), name("grade"), unit.category())
  GUIDE: axis(dim(1), label("depot"))
  GUIDE: axis(dim(2), label("Parcels"))
  GUIDE: legend(aesthetic(aesthetic.color.interior), label("grade"))
  GUIDE: text.subtitle(label("Grades per depot"))
  SCALE: cat(dim(1), sort.statistic(summary.count(depot)), reverse())
  SCALE: linear(dim(2), include(0))
  ELEMENT: interval.stack(position(summary.count(depot)), color.interior(grade), shape.interior(shape.square), label(summary.count(depot)))
)",
     "depot grade",
     "",
     {}},
    {"pie",
     R"(IGRAPH /VIEWNAME='Pie' /SUMMARYVAR=VAR(tons) /COLOR=VAR(cargo) TYPE=CATEGORICAL LEGEND=ON
  /CHARTLOOK='plain look'
  /PIE(SUM) START 90 CCW SLICE=OUTSIDE LABEL.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: tons=col(source(s), name("tons"))
  DATA: cargo=col(source(s), name("cargo"), unit.category())
  COORD: polar.theta(startAngle(90))
  GUIDE: axis(dim(1), null())
  GUIDE: legend(aesthetic(aesthetic.color.interior), label("cargo"))
  SCALE: linear(dim(1), dataMinimum(), dataMaximum(), reverse())
  ELEMENT: interval.stack(position(summary.sum(tons)), color.interior(cargo), label(cargo))
)",
     "tons cargo",
     "Pie",
     {"plain look"}},
    {"box plot with panels",
     R"(IGRAPH /X1=VAR(ward) TYPE=CATEGORICAL
  /Y=VAR(stay) TYPE=SCALE(MIN=0 MAX=60) TITLE='Days of stay'
  /PANEL VAR(year) VAR(site) /REFLINE stay 30 LABEL=ON
  /BOX OUTLIERS=ON EXTREME=ON MEDIAN=ON WHISKER=T CAPWIDTH(45).)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: ward=col(source(s), name("ward"), unit.category())
  DATA: stay=col(source(s), name("stay"))
  DATA: year=col(source(s), name("year"), unit.category())
  DATA: site=col(source(s), name("site"), unit.category())
  DATA: id=col(source(s), name("$CASENUM"), unit.category())
  GUIDE: axis(dim(1), label("ward"))
  GUIDE: axis(dim(2), label("Days of stay"))
  GUIDE: axis(dim(3), label("year"), opposite())
  GUIDE: axis(dim(4), label("site"), opposite())
  GUIDE: form.line(position(*, 30))
  SCALE: linear(dim(2), min(0), max(60))
  ELEMENT: schema(position(bin.quantile.letter(ward*stay*year*site)), label(id))
)",
     "ward stay year site",
     "",
     {}},
    {"lines by group",
     R"(IGRAPH /X1=VAR(month) TYPE=CATEGORICAL /Y=VAR(visits) TYPE=SCALE
  /STYLE=VAR(branch) LEGEND=OFF /COLOR=VAR(branch)
  /LINE(MEDIAN) STYLE=DOTLINE DROPLINE=OFF INTERPOLATE=STRAIGHT BREAK=MISSING.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: month=col(source(s), name("month"), unit.category())
  DATA: visits=col(source(s), name("visits"))
  DATA: branch=col(source(s), name("branch"), unit.category())
  GUIDE: axis(dim(1), label("month"))
  GUIDE: axis(dim(2), label("Median visits"))
  GUIDE: legend(aesthetic(aesthetic.color.interior), label("branch"))
  GUIDE: legend(aesthetic(aesthetic.shape.interior), null())
  ELEMENT: line(position(summary.median(month*visits)), color.interior(branch), shape.interior(branch), missing.gap())
  ELEMENT: point(position(summary.median(month*visits)), color.interior(branch), shape.interior(branch))
)",
     "month visits branch",
     "",
     {}},
    {"area over the cases",
     R"(IGRAPH /X1 = $case TYPE = SCALE /Y = VAR(level.mm) TYPE = SCALE
  /AREA POINTLABEL=VAL BREAK=NONE BASELINE=10.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: level_mm=col(source(s), name("level.mm"))
  DATA: casenum=col(source(s), name("$CASENUM"))
  GUIDE: axis(dim(1), label("Case"))
  GUIDE: axis(dim(2), label("level.mm"))
  SCALE: linear(dim(2), origin(10))
  ELEMENT: area(position(casenum*level_mm), label(level_mm), missing.interpolate())
)",
     "level.mm",
     "",
     {}},
    {"histogram with curve and panel",
     R"(IGRAPH /VIEWNAME='Weights' /X1 = VAR(weight) TYPE = SCALE /Y = $count
  /COORDINATE = VERTICAL /PANEL VAR(lane) /X1LENGTH=5.0 /YLENGTH=3.0 /X2LENGTH=6.5
  /CHARTLOOK='NONE' /CATORDER VAR(lane) (DESCENDING VALUES OMITEMPTY)
  /Histogram SHAPE = HISTOGRAM CURVE = ON X1INTERVAL WIDTH = 2.5 X1START = 0.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: weight=col(source(s), name("weight"))
  DATA: lane=col(source(s), name("lane"), unit.category())
  GUIDE: axis(dim(1), label("weight"))
  GUIDE: axis(dim(2), label("Count"))
  GUIDE: axis(dim(3), label("lane"), opposite())
  SCALE: linear(dim(2), include(0))
  SCALE: cat(dim(3), reverse())
  ELEMENT: interval(position(summary.count(bin.rect(weight*1*lane, binWidth(2.5)))), shape.interior(shape.square))
  ELEMENT: line(position(density.normal(weight*1*lane)))
)",
     "weight lane",
     "Weights",
     {}},
    {"bars with error bars",
     R"(IGRAPH /X1=VAR(dose) TYPE=CATEGORICAL /Y=VAR(resp) TYPE=SCALE
  /COLOR=VAR(arm) TYPE=CATEGORICAL
  /BAR(MEAN) /ERRORBAR CI(95.0) DIRECTION=BOTH CAPWIDTH(45) CAPSTYLE=T SYMBOL=OFF.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: dose=col(source(s), name("dose"), unit.category())
  DATA: resp=col(source(s), name("resp"))
  DATA: arm=col(source(s), name("arm"), unit.category())
  COORD: rect(dim(1,2), cluster(3,0))
  GUIDE: axis(dim(3), label("dose"))
  GUIDE: axis(dim(2), label("Mean resp"))
  GUIDE: legend(aesthetic(aesthetic.color.interior), label("arm"))
  SCALE: linear(dim(2), include(0))
  ELEMENT: interval(position(summary.mean(arm*resp*dose)), color.interior(arm), shape.interior(shape.square))
  ELEMENT: interval(position(region.confi.mean(arm*resp*dose, alpha(0.95))), color.interior(arm), shape.interior(shape.ibeam))
)",
     "dose resp arm",
     "",
     {}},
    {"three-dimensional scatter",
     R"(IGRAPH /X1=VAR(len) TYPE=SCALE /X2=VAR(wid) TYPE=SCALE /Y=VAR(mass) TYPE=SCALE
  /COORDINATE=THREE /COLOR=VAR(kind) TYPE=CATEGORICAL /SIZE=VAR(age) TYPE=SCALE
  /SCATTER COINCIDENT=JITTER.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: len=col(source(s), name("len"))
  DATA: wid=col(source(s), name("wid"))
  DATA: mass=col(source(s), name("mass"))
  DATA: kind=col(source(s), name("kind"), unit.category())
  DATA: age=col(source(s), name("age"))
  COORD: rect(dim(1,2,3))
  GUIDE: axis(dim(1), label("wid"))
  GUIDE: axis(dim(2), label("len"))
  GUIDE: axis(dim(3), label("mass"))
  GUIDE: legend(aesthetic(aesthetic.color.interior), label("kind"))
  GUIDE: legend(aesthetic(aesthetic.size), label("age"))
  ELEMENT: point.jitter(position(wid*len*mass), color.interior(kind), size(age))
)",
     "len wid mass kind age",
     "",
     {}},
    {"horizontal bars",
     R"(IGRAPH /X1=VAR(crop) TYPE=CATEGORICAL TITLE='Crop' /Y=$pct /COORDINATE=HORIZONTAL
  /EFFECT=THREE /CAPTION='Sample "B", 2nd draft' /BAR.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: crop=col(source(s), name("crop"), unit.category())
  COORD: rect(dim(1,2), transpose())
  GUIDE: axis(dim(1), label("Crop"))
  GUIDE: axis(dim(2), label("Percent"))
  GUIDE: text.footnote(label("Sample \"B\", 2nd draft"))
  SCALE: linear(dim(2), include(0))
  ELEMENT: interval(position(summary.percent.count(crop, base.all(acrossPanels()))), shape.interior(shape.square))
)",
     "crop",
     "",
     {}},
    {"several summaries in one chart",
     R"(IGRAPH /X1=VAR(week) TYPE=CATEGORICAL /Y=VAR(wait) TYPE=SCALE
  /SCALERANGE=VAR(wait) MIN=0 MAX=45
  /BAR(MEDIAN) LABEL OUTSIDE VAL /LINE(PTILE(90)) STYLE=LINE /LINE(MAXIMUM) STYLE=DOT.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: week=col(source(s), name("week"), unit.category())
  DATA: wait=col(source(s), name("wait"))
  GUIDE: axis(dim(1), label("week"))
  GUIDE: axis(dim(2), label("Median wait"))
  SCALE: linear(dim(2), min(0), max(45))
  ELEMENT: interval(position(summary.median(week*wait)), shape.interior(shape.square), label(summary.median(week*wait)))
  ELEMENT: line(position(summary.percentile(week*wait, alpha(0.9))))
  ELEMENT: point(position(summary.max(week*wait)))
)",
     "week wait",
     "",
     {}},
    {"scatter with several fits",
     R"(IGRAPH /X1=VAR(temp) TYPE=SCALE /Y=VAR(line) TYPE=SCALE /COLOR=VAR(kiln) TYPE=CATEGORICAL
  /SCATTER /FITLINE ORIGIN LINEAR LINE=TOTAL MEFFECT /FITLINE MEAN
  /FITLINE LLR EPANECHNIKOV /REFLINE temp 100.)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: temp=col(source(s), name("temp"))
  DATA: line=col(source(s), name("line"))
  DATA: kiln=col(source(s), name("kiln"), unit.category())
  GUIDE: axis(dim(1), label("temp"))
  GUIDE: axis(dim(2), label("line"))
  GUIDE: legend(aesthetic(aesthetic.color.interior), label("kiln"))
  GUIDE: form.line(position(100, *))
  ELEMENT: point(position(temp*line), color.interior(kiln))
  ELEMENT: line(position(smooth.linear(temp*line, noConstant())))
  ELEMENT: line(position(smooth.linear(temp*line, noConstant())), color.interior(kiln))
  ELEMENT: line(position(smooth.mean(temp*line, uniform())))
  ELEMENT: line(position(smooth.loess(temp*line, epanechnikov())))
)",
     "temp line kiln",
     "",
     {}},
    {"counting functions",
     R"(IGRAPH /X1=VAR(team) /Y=VAR(faults) /BAR(NIN(1,3)) /BAR(SUMSQ).)",
     R"(
  SOURCE: s=userSource(id("iGraphDataset"))
  DATA: team=col(source(s), name("team"), unit.category())
  DATA: faults=col(source(s), name("faults"))
  TRANS: faults_t1=eval(faults >= 1 & faults <= 3)
  TRANS: faults_t2=eval(faults*faults)
  GUIDE: axis(dim(1), label("team"))
  GUIDE: axis(dim(2), label("Number of faults from 1 to 3"))
  SCALE: linear(dim(2), include(0))
  ELEMENT: interval(position(summary.countTrue(team*faults_t1)), shape.interior(shape.square))
  ELEMENT: interval(position(summary.sum(team*faults_t2)), shape.interior(shape.square))
)",
     "team faults",
     "",
     {}},
};

TEST(IgraphGplGeneratorTest, ConvertsWholeCommands) {
    for (const ExampleCase& example : kExamples) {
        SCOPED_TRACE(example.name);
        const IgraphResult result = ConvertIgraphText(example.command);
        EXPECT_EQ(result.syntaxFault, SyntaxFault::kNone);
        EXPECT_EQ(result.validityFault, ValidityFault::kNone);
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(result.gpl, example.gpl);
        EXPECT_EQ(result.usedNames, example.usedNames);
        EXPECT_EQ(result.viewName, example.viewName);
        EXPECT_EQ(result.chartLooks, example.chartLooks);
    }
}

// The parser promises that nothing of one command is left for the next.
TEST(IgraphGplGeneratorTest, ConvertsTheSameCommandsAlikeASecondTime) {
    for (const ExampleCase& example : kExamples) {
        SCOPED_TRACE(example.name);
        EXPECT_EQ(ConvertIgraphText(example.command).gpl, ConvertIgraphText(example.command).gpl);
    }
}

TEST(IgraphGplGeneratorTest, NormalizedStacksAreSharesOfTheirPlace) {
    const IgraphResult result = ConvertIgraphText(
        "IGRAPH /X1=VAR(depot) TYPE=CATEGORICAL /Y=$count TITLE='Parcels' "
        "/COLOR=VAR(grade) TYPE=CATEGORICAL STACK /NORMALIZE /BAR.");
    EXPECT_THAT(
        result.Lines("ELEMENT"),
        testing::ElementsAre(
            "interval.stack(position(summary.percent.count(depot, base.coordinate(dim(1)))), "
            "color.interior(grade), shape.interior(shape.square))"));
    EXPECT_EQ(result.Lines("GUIDE")[1], "axis(dim(2), label(\"Parcels\"))");
}

TEST(IgraphGplGeneratorTest, RefusesASpecificationThatIsNotComplete) {
    std::vector<std::string> assertions;
    const ScopedAssertionHandler handler(
        [&assertions](const AssertionFailure& failure) { assertions.emplace_back(failure.text); });
    iGraphSpec spec;
    EXPECT_EQ(gplGenerator(spec, nullptr, nullptr).getGPL(), "");
    EXPECT_EQ(spec.errorMessage(), "the chart would be empty");
    EXPECT_THAT(assertions, testing::ElementsAre("m_spec.IsComplete()"));
}

}  // namespace

}  // namespace quillet::igraph
