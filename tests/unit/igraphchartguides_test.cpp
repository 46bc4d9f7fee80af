#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "igraph/gpl/chartguides.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

struct LinesCase {
    const char* command;
    std::vector<std::string> lines;
};

void ExpectLines(const char* label, const std::vector<LinesCase>& cases) {
    for (const LinesCase& c : cases) {
        SCOPED_TRACE(c.command);
        const IgraphResult result = ConvertIgraphText("IGRAPH " + std::string(c.command));
        EXPECT_EQ(result.syntaxFault, SyntaxFault::kNone);
        EXPECT_EQ(result.validityFault, ValidityFault::kNone);
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(result.Lines(label), c.lines);
    }
}

TEST(IgraphChartGuidesTest, Coordinates) {
    ExpectLines(
        "COORD",
        {
            {"/X1=VAR(x) /Y=VAR(y) /BAR", {}},
            {"/X1=VAR(x) /Y=VAR(y) /COORDINATE=VERTICAL /EFFECT=THREE /BAR", {}},
            {"/X1=VAR(x) /Y=VAR(y) /COORDINATE=HORIZONTAL /BAR", {"rect(dim(1,2), transpose())"}},
            {"/Y=VAR(y) /COORDINATE=HORIZONTAL /BOX", {"rect(dim(1,2), transpose())"}},
            {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /BAR", {"rect(dim(1,2), cluster(3,0))"}},
            {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /COORDINATE=HORIZONTAL /BOX",
             {"rect(dim(1,2), cluster(3,0), transpose())"}},
            {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /SCATTER", {"rect(dim(1,2,3))"}},
            {"/COLOR=VAR(c) /PIE", {"polar.theta(startAngle(0))"}},
            {"/COLOR=VAR(c) /COORDINATE=HORIZONTAL /PIE", {"polar.theta(startAngle(0))"}},
            {"/COLOR=VAR(c) /PIE START 45", {"polar.theta(startAngle(45))"}},
            {"/COLOR=VAR(c) /PIE START=360", {"polar.theta(startAngle(0))"}},
            {"/COLOR=VAR(c) /PIE START=-90", {"polar.theta(startAngle(270))"}},
            {"/COLOR=VAR(c) /PIE START=-360", {"polar.theta(startAngle(0))"}},
            {"/COLOR=VAR(c) /PIE START=-1e-30", {"polar.theta(startAngle(0))"}},
            {"/COLOR=VAR(c) /PIE START=725", {"polar.theta(startAngle(5))"}},
        });
}

TEST(IgraphChartGuidesTest, Axes) {
    ExpectLines(
        "GUIDE",
        {
            {"/Y=VAR(y) /BOX", {"axis(dim(2), label(\"y\"))"}},
            {"/X1=VAR(X) TITLE='Ex' /Y=VAR(Y) TITLE='Why' /BAR",
             {"axis(dim(1), label(\"Ex\"))", "axis(dim(2), label(\"Why\"))"}},
            {"/X1=VAR(x) TITLE='' /Y=VAR(y) TITLE='' /BAR",
             {"axis(dim(1), label(\"\"))", "axis(dim(2), label(\"\"))"}},
            {"/X1=VAR(x) TITLE='a \"b\" \\ c' /Y=VAR(y) TITLE='it''s' /SCATTER",
             {"axis(dim(1), label(\"a \\\"b\\\" \\\\ c\"))", "axis(dim(2), label(\"it's\"))"}},
            {"/X1=$case /Y=VAR(y) /LINE",
             {"axis(dim(1), label(\"Case\"))", "axis(dim(2), label(\"y\"))"}},
            {"/X1=VAR(x) /Y=$case /SCATTER",
             {"axis(dim(1), label(\"x\"))", "axis(dim(2), label(\"Case\"))"}},
            {"/X1=VAR(x) /X2=VAR(z) TITLE='deep' /Y=VAR(y) /SCATTER",
             {"axis(dim(1), label(\"deep\"))", "axis(dim(2), label(\"x\"))",
              "axis(dim(3), label(\"y\"))"}},
            {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /BOX",
             {"axis(dim(3), label(\"x\"))", "axis(dim(2), label(\"y\"))",
              "legend(aesthetic(aesthetic.color.interior), label(\"c\"))"}},
            // The names stand as they are written at their places.
            {"/X1=VAR(a) /Y=VAR(A) /BAR",
             {"axis(dim(1), label(\"a\"))", "axis(dim(2), label(\"Mean A\"))"}},
        });
}

TEST(IgraphChartGuidesTest, TitlesOfY) {
    struct Case {
        const char* command;
        const char* title;
    };
    const Case cases[] = {
        {"/Y=VAR(y) /BAR", "Mean y"},
        {"/Y=VAR(y) /AREA", "Mean y"},
        {"/Y=VAR(y) /LINE", "Mean y"},
        {"/Y=VAR(y) /ERRORBAR SD(1)", "Mean y"},
        {"/Y=VAR(y) /BOX", "y"},
        {"/Y=VAR(y) /SCATTER", "y"},
        {"/Y=VAR(y) /FITLINE", "y"},
        {"/Y=VAR(y) /SCATTER /LINE(SUM)", "y"},
        {"/Y=VAR(y) /LINE(SUM) /SCATTER", "Sum y"},
        {"/Y=VAR(y) /FITLINE /LINE(SUM)", "Sum y"},
        {"/Y=VAR(y) /LINE(SUM) STYLE=NONE /BAR(MEDIAN)", "Median y"},
        {"/Y=VAR(y) /LINE(SUM) STYLE=NONE /FITLINE", "y"},
        {"/Y=VAR(y) TYPE=CATEGORICAL /BAR", "Mode y"},
        {"/Y=$count /BAR", "Count"},
        {"/Y=$pct /LINE", "Percent"},
        {"/Y=$count /HISTOGRAM", "Count"},
        {"/Y=$pct /HISTOGRAM CUM", "Percent"},
        {"/Y=$count /STACK=VAR(c) /NORMALIZE /BAR", "Percent"},
        {"/Y=VAR(y) /STACK=VAR(c) /NORMALIZE /BAR(SUM)", "Percent"},
        {"/Y=VAR(y) /STACK=VAR(c) /NORMALIZE /SCATTER /BAR(SUM)", "y"},
        {"/Y=$count /NORMALIZE /BAR", "Count"},
        {"/Y=VAR(y) TITLE='own' /BAR(SUM)", "own"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        const IgraphResult result =
            ConvertIgraphText("IGRAPH /X1=VAR(x) " + std::string(c.command));
        ASSERT_GE(result.Lines("GUIDE").size(), 2U);
        EXPECT_EQ(result.Lines("GUIDE")[1],
                  "axis(dim(2), label(\"" + std::string(c.title) + "\"))");
    }
}

TEST(IgraphChartGuidesTest, PanelsLegendsAndTexts) {
    const std::string x = "axis(dim(1), label(\"x\"))";
    const std::string y = "axis(dim(2), label(\"y\"))";
    ExpectLines("GUIDE",
                {
                    {"/X1=VAR(x) /Y=VAR(y) /PANEL p Q /SCATTER",
                     {x, y, "axis(dim(3), label(\"p\"), opposite())",
                      "axis(dim(4), label(\"Q\"), opposite())"}},
                    {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /PANEL p /SCATTER",
                     {"axis(dim(1), label(\"z\"))", "axis(dim(2), label(\"x\"))",
                      "axis(dim(3), label(\"y\"))", "axis(dim(4), label(\"p\"), opposite())"}},
                    {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /PANEL p q /BOX",
                     {"axis(dim(3), label(\"x\"))", y, "axis(dim(4), label(\"p\"), opposite())",
                      "axis(dim(5), label(\"q\"), opposite())",
                      "legend(aesthetic(aesthetic.color.interior), label(\"c\"))"}},
                    {"/COLOR=VAR(c) /PANEL p q /PIE",
                     {"axis(dim(1), null())", "axis(dim(2), label(\"p\"), opposite())",
                      "axis(dim(3), label(\"q\"), opposite())",
                      "legend(aesthetic(aesthetic.color.interior), label(\"c\"))"}},
                    // Legends in the order in which elements show them.
                    {"/X1=VAR(x) /Y=VAR(y) /SIZE=VAR(z) LEGEND=OFF /STYLE=VAR(s) TITLE='Style' "
                     "/COLOR=VAR(c) TITLE='' LEGEND=ON /SCATTER",
                     {x, y, "legend(aesthetic(aesthetic.color.interior), label(\"\"))",
                      "legend(aesthetic(aesthetic.shape.interior), label(\"Style\"))",
                      "legend(aesthetic(aesthetic.size), null())"}},
                    {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /STYLE=VAR(s) CLUSTER /AREA /LINE",
                     {x, y, "legend(aesthetic(aesthetic.texture.pattern.interior), label(\"s\"))",
                      "legend(aesthetic(aesthetic.shape.interior), label(\"s\"))"}},
                    {"/X1=VAR(x) /Y=VAR(y) /SIZE=VAR(z) /COLOR=VAR(x) /BOX",
                     {x, y, "legend(aesthetic(aesthetic.color.interior), label(\"x\"))"}},
                    {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(s) /FITLINE", {x, y}},
                    {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /FITLINE LINE=MEFFECT",
                     {x, y, "legend(aesthetic(aesthetic.color.interior), label(\"c\"))"}},
                    // Texts.
                    {"/CAPTION='c' /SUBTITLE='s' /TITLE='t' /X1=VAR(x) /Y=VAR(y) /SCATTER",
                     {x, y, "text.title(label(\"t\"))", "text.subtitle(label(\"s\"))",
                      "text.footnote(label(\"c\"))"}},
                    {"/CAPTION='' /SUBTITLE='' /TITLE='' /X1=VAR(x) /Y=VAR(y) /SCATTER", {x, y}},
                });
}

TEST(IgraphChartGuidesTest, ReferenceLines) {
    ExpectLines("GUIDE",
                {
                    {"/X1=VAR(x) /Y=VAR(y) /REFLINE y 3 LABEL=ON COLOR=ON STYLE=ON /REFLINE X -1.5 "
                     "/REFLINE VAR(y) 4 /CAPTION='c' /SCATTER",
                     {"axis(dim(1), label(\"x\"))", "axis(dim(2), label(\"y\"))",
                      "text.footnote(label(\"c\"))", "form.line(position(*, 3))",
                      "form.line(position(-1.5, *))", "form.line(position(*, 4))"}},
                    {"/X1=VAR(x) /Y=$count /REFLINE $count 10 /COORDINATE=HORIZONTAL /BAR",
                     {"axis(dim(1), label(\"x\"))", "axis(dim(2), label(\"Count\"))",
                      "form.line(position(*, 10))"}},
                    {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /REFLINE y 10 /BAR",
                     {"axis(dim(3), label(\"x\"))", "axis(dim(2), label(\"Mean y\"))",
                      "legend(aesthetic(aesthetic.color.interior), label(\"c\"))",
                      "form.line(position(*, 10))"}},
                    {"/X1=VAR(y) /Y=VAR(y) /REFLINE y 10 /SCATTER",
                     {"axis(dim(1), label(\"y\"))", "axis(dim(2), label(\"y\"))",
                      "form.line(position(10, *))"}},
                });
}

TEST(IgraphChartGuidesTest, ScalesOfAxes) {
    ExpectLines(
        "SCALE",
        {
            {"/X1=VAR(x) /Y=VAR(y) /SCATTER", {}},
            {"/X1=VAR(x) TYPE=SCALE(MIN=1 MAX=9) /Y=VAR(y) MAX=5 /SCATTER",
             {"linear(dim(1), min(1), max(9))", "linear(dim(2), max(5))"}},
            {"/X1=VAR(x) MAX=9 /SCALERANGE x MIN=-1.5 /Y=VAR(y) /SCATTER",
             {"linear(dim(1), min(-1.5), max(9))"}},
            {"/X1=VAR(x) TYPE=CATEGORICAL MIN=1 /Y=VAR(y) /SCATTER", {}},
            {"/X1=$case TYPE=SCALE(MIN=5) /Y=VAR(y) /LINE", {"linear(dim(1), min(5))"}},
            {"/X1=VAR(x) MIN=1 /X2=VAR(z) MIN=2 /Y=VAR(y) MIN=3 /SCATTER",
             {"linear(dim(1), min(2))", "linear(dim(2), min(1))", "linear(dim(3), min(3))"}},
            // Where bars begin.
            {"/X1=VAR(x) /Y=VAR(y) /BAR", {"linear(dim(2), include(0))"}},
            {"/X1=VAR(x) /Y=VAR(y) /AREA", {"linear(dim(2), include(0))"}},
            {"/X1=VAR(x) /Y=$count /HISTOGRAM", {"linear(dim(2), include(0))"}},
            {"/X1=VAR(x) /Y=VAR(y) /LINE", {}},
            {"/X1=VAR(x) /Y=VAR(y) /LINE /BAR BASELINE=AUTO", {"linear(dim(2), include(0))"}},
            {"/X1=VAR(x) /Y=VAR(y) MAX=9 /BAR BASELINE=0", {"linear(dim(2), max(9), include(0))"}},
            {"/X1=VAR(x) /Y=VAR(y) MIN=1 /BAR", {"linear(dim(2), min(1))"}},
            {"/X1=VAR(x) /Y=VAR(y) MIN=1 MAX=4 /BAR BASELINE=2",
             {"linear(dim(2), min(1), max(4), origin(2))"}},
            {"/X1=VAR(x) /Y=VAR(y) /BAR /AREA BASELINE=-2 /BAR BASELINE=3",
             {"linear(dim(2), origin(-2))"}},
            {"/X1=VAR(x) /Y=VAR(y) /BAR BASELINE=AUTO /AREA BASELINE=2",
             {"linear(dim(2), include(0))"}},
            {"/X1=VAR(x) /Y=VAR(y) TYPE=CATEGORICAL /BAR BASELINE=2", {}},
            {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /BAR", {"linear(dim(3), include(0))"}},
            {"/X1=VAR(x) TYPE=SCALE MIN=7 /Y=VAR(y) /COLOR=VAR(c) /BAR",
             {"linear(dim(2), include(0))", "linear(dim(3), min(7))"}},
            // Pies.
            {"/COLOR=VAR(c) /PIE CCW CW", {"linear(dim(1), dataMinimum(), dataMaximum())"}},
            {"/COLOR=VAR(c) /PIE CCW", {"linear(dim(1), dataMinimum(), dataMaximum(), reverse())"}},
        });
}

TEST(IgraphChartGuidesTest, OrdersOfCategories) {
    ExpectLines(
        "SCALE",
        {
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) () /LINE", {}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) (VALUES ASCENDING OMITEMPTY) /LINE", {}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) (DESCENDING) /LINE",
             {"cat(dim(1), reverse())"}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) (LABEL) /LINE",
             {"cat(dim(1), sort.natural())"}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) (OCCURRENCE DESCENDING SHOWEMPTY) /LINE",
             {"cat(dim(1), sort.data(), reverse())"}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(X) (ASCENDING COUNT) /LINE",
             {"cat(dim(1), sort.statistic(summary.count(x)))"}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) (SUM LABELS) /LINE",
             {"cat(dim(1), sort.natural())"}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) (LABELS SUM) /LINE",
             {"cat(dim(1), sort.statistic(summary.sum(y)))"}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) (LABELS) /CATORDER VAR(x) (DESCENDING) /LINE",
             {"cat(dim(1), reverse())"}},
            {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /CATORDER VAR(x) (DESCENDING) /LINE", {}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(q) (DESCENDING) /LINE", {}},
            {"/X1=VAR(x) /Y=VAR(y) /CATORDER VAR(y) (DESCENDING) /LINE", {}},
            {"/X1=VAR(x) /Y=VAR(y) TYPE=CATEGORICAL /CATORDER VAR(y) (LABELS) /LINE",
             {"cat(dim(2), sort.natural())"}},
            {"/X1=VAR(x) /X2=VAR(z) TYPE=CATEGORICAL /Y=VAR(y) /CATORDER VAR(z) (LABELS) /SCATTER",
             {"cat(dim(1), sort.natural())"}},
            // Panels and legends.
            {"/X1=VAR(x) /Y=VAR(y) /PANEL p q /CATORDER VAR(q) (LABELS) "
             "/CATORDER VAR(p) (DESCENDING) /LINE",
             {"cat(dim(3), reverse())", "cat(dim(4), sort.natural())"}},
            {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(s) /SIZE=VAR(z) "
             "/CATORDER VAR(z) (OCCURRENCE) /CATORDER VAR(s) (LABELS) /CATORDER VAR(c) (COUNT) "
             "/LINE",
             {"cat(aesthetic(aesthetic.color.interior), sort.statistic(summary.count(c)))",
              "cat(aesthetic(aesthetic.shape.interior), sort.natural())",
              "cat(aesthetic(aesthetic.size), sort.data())"}},
            {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /PANEL p /CATORDER VAR(c) (DESCENDING) "
             "/CATORDER VAR(x) (LABELS) /CATORDER VAR(p) (OCCURRENCE) /BAR",
             {"cat(dim(1), reverse())", "linear(dim(2), include(0))", "cat(dim(3), sort.natural())",
              "cat(dim(4), sort.data())", "cat(aesthetic(aesthetic.color.interior), reverse())"}},
            // A scale in a legend.
            {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) TYPE=SCALE(MIN=1 MAX=2) "
             "/SIZE=VAR(z) TYPE=SCALE /SCALERANGE z MAX=8 /SCATTER",
             {"linear(aesthetic(aesthetic.color.interior), min(1), max(2))",
              "linear(aesthetic(aesthetic.size), max(8))"}},
            {"/X1=VAR(x) /Y=VAR(y) /SIZE=VAR(z) TYPE=SCALE MIN=1 /BOX", {}},
            {"/X1=VAR(x) /Y=VAR(y) /SIZE=VAR(z) /CATORDER VAR(z) (LABELS) /BOX", {}},
            // Pies.
            {"/SUMMARYVAR=VAR(v) /COLOR=VAR(c) /PANEL p /CATORDER VAR(c) (SUM) "
             "/CATORDER VAR(p) (LABELS) /PIE",
             {"linear(dim(1), dataMinimum(), dataMaximum())", "cat(dim(2), sort.natural())",
              "cat(aesthetic(aesthetic.color.interior), sort.statistic(summary.sum(v)))"}},
            {"/Y=VAR(w) /SUMMARYVAR=$count /COLOR=VAR(c) /CATORDER VAR(c) (SUM) /PIE",
             {"linear(dim(1), dataMinimum(), dataMaximum())"}},
        });
}

}  // namespace

}  // namespace quillet::igraph
