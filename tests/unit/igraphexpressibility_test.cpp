#include <gtest/gtest.h>

#include <string>

#include "igraph/gpl/expressibility.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

struct ObstacleCase {
    const char* command;
    const char* reason;  // empty: the graph can be written
};

const ObstacleCase kObstacles[] = {
    // Spikes.
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) TYPE=SCALE /SPIKE CENTROID", "spikes have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /SPIKE X1", "spikes have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /SPIKE", "spikes have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE SPIKE=ON", "spikes have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE NONE SPIKE=ON", ""},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /REFLINE a 3 SPIKE=ON", "spikes have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /REFLINE a 3 SPIKE=OFF", ""},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FORMAT SPIKE COLOR=ON", ""},
    // Three axes.
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /BOX", "a three-dimensional BOX has no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /LINE", "a three-dimensional LINE has no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /AREA", "a three-dimensional AREA has no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /ERRORBAR CI(9)",
     "a three-dimensional ERRORBAR has no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(b) /Y=$count /HISTOGRAM",
     "a three-dimensional HISTOGRAM has no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /SCATTER /AREA /BOX",
     "a three-dimensional AREA has no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /SCATTER /BAR", ""},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /SCATTER /FITLINE", "a fitted surface has no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /SCATTER /FITLINE NONE", ""},
    // Fit lines.
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE REGRESSION LINEAR INTERVAL(95)=INDIVIDUAL",
     "prediction intervals for individual cases have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE MEAN INTERVAL MEAN INDIVIDUAL",
     "prediction intervals for individual cases have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE LLR INTERVAL(95)=INDIVIDUAL", ""},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE NONE INTERVAL(95)=INDIVIDUAL", ""},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE LLR X1MULTIPLIER=2",
     "a bandwidth multiplier has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE LLR X2MULTIPLIER=.5",
     "a bandwidth multiplier has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE LLR X1MULTIPLIER=1", ""},
    {"/X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE MEAN X1MULTIPLIER=2", ""},
    // Lines and areas.
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /LINE DROPLINE=ON", "drop lines have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /LINE(MEAN) INTERPOLATE=SPLINE",
     "the interpolation SPLINE has no GPL equivalent here"},
    {"/X1=VAR(a) /Y=VAR(b) /AREA INTERPOLATE=LST",
     "the interpolation LSTEP has no GPL equivalent here"},
    {"/X1=VAR(a) /Y=$count /LINE INTERPOLATE=RJUMP",
     "the interpolation RJUMP has no GPL equivalent here"},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /LINE(MEAN) INTERPOLATE=CSTEP",
     "the interpolation CSTEP has no GPL equivalent here"},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /LINE INTERPOLATE=LAGRANGE3",
     "the interpolation LAGRANGE3 has no GPL equivalent here"},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /AREA INTERPOLATE=LAGRANGE5",
     "the interpolation LAGRANGE5 has no GPL equivalent here"},
    {"/X1=VAR(a) /Y=VAR(b) /LINE(MEAN) INTERPOLATE=STRAIGHT", ""},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /LINE INTERPOLATE=SPLINE", ""},
    {"/X1=$case /Y=VAR(b) /LINE INTERPOLATE=SPLINE", ""},
    // Boxes.
    {"/X1=VAR(a) /Y=VAR(b) /BOX OUTLIERS=OFF", "parts of a box cannot be hidden in GPL"},
    {"/X1=VAR(a) /Y=VAR(b) /BOX EXTREME=OFF", "parts of a box cannot be hidden in GPL"},
    {"/X1=VAR(a) /Y=VAR(b) /BOX MEDIAN=OFF OUTLIERS=ON", "parts of a box cannot be hidden in GPL"},
    {"/X1=VAR(a) /Y=VAR(b) /BOX MEDIAN=ON KEY=OFF", ""},
    // Histograms.
    {"/X1=VAR(a) /Y=$count /HISTOGRAM X1START=50",
     "a histogram start in percent of an interval has no GPL equivalent"},
    {"/X1=VAR(a) /Y=$count /HISTOGRAM X1START=0 X2START=50", ""},
    {"/X1=VAR(a) /Y=$count /HISTOGRAM CUM CURVE=ON",
     "a normal curve over a cumulative histogram has no GPL equivalent"},
    {"/X1=VAR(a) /Y=$count /HISTOGRAM CUM CURVE=OFF", ""},
    // Functions.
    {"/X1=VAR(a) /Y=VAR(b) /LINE(GMEDIAN)", "the summary function GMEDIAN has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /CATORDER VAR(a) (GMEDIAN) /BAR", ""},
    // Scales as legend variables.
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE /BAR",
     "a scale legend variable cannot be combined with summaries"},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE /BAR",
     "a scale legend variable cannot be combined with summaries"},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE /SCATTER /BOX",
     "a scale legend variable cannot be combined with summaries"},
    {"/COLOR=VAR(c) TYPE=SCALE /STYLE=VAR(d) /PIE",
     "a scale legend variable cannot be combined with summaries"},
    {"/X1=VAR(a) /Y=VAR(b) /SIZE=VAR(c) TYPE=SCALE /LINE",
     "a scale legend variable cannot be combined with summaries"},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE /SIZE=VAR(d) TYPE=SCALE /LINE", ""},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE /AREA", ""},
    {"/X1=VAR(a) /Y=VAR(b) /SIZE=VAR(c) TYPE=SCALE /BAR", ""},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE /SCATTER /FITLINE LINE=MEFFECT", ""},
    // Pies.
    {"/COLOR=VAR(a) /STACK=VAR(b) /PIE", "clustered pies have no GPL equivalent"},
    {"/COLOR=VAR(a) /CLUSTER=VAR(b) /PIE", "clustered pies have no GPL equivalent"},
    {"/COLOR=VAR(a) CLUSTER /PIE STACK=PCT", ""},
    {"/X1=VAR(a) /COLOR=VAR(b) /PIE", "pies cannot be placed on axes"},
    {"/X2=VAR(a) /COLOR=VAR(b) /PIE", "pies cannot be placed on axes"},
    // Panels.
    {"/X1=VAR(a) /Y=VAR(b) /PANEL p q r /BOX",
     "more than two panel variables have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /PANEL p /PANEL q /PANEL r /BAR",
     "more than two panel variables have no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /PANEL p q /BOX", ""},
    // A third legend variable.
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /STYLE=VAR(d) /STACK=VAR(e) /BAR",
     "STACK beside COLOR and STYLE has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /STYLE=VAR(d) /CLUSTER=VAR(e) /BAR",
     "CLUSTER beside COLOR and STYLE has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /STACK=VAR(d) /CLUSTER=VAR(e) /BAR",
     "CLUSTER beside COLOR and STYLE has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /STACK=VAR(d) /CLUSTER=VAR(e) /BAR(SUM)", ""},
    {"/X1=VAR(a) /Y=VAR(b) /STYLE=VAR(d) /STACK=VAR(e) /BAR", ""},
    // Boxes and error bars in groups.
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) STACK /ERRORBAR CI(95)",
     "boxes and error bars cannot be arranged this way in GPL"},
    {"/X1=VAR(a) /Y=VAR(b) /STACK=VAR(c) /BOX",
     "boxes and error bars cannot be arranged this way in GPL"},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /STYLE=VAR(d) /BOX",
     "boxes and error bars cannot be arranged this way in GPL"},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /BOX /LINE",
     "boxes and error bars cannot be arranged this way in GPL"},
    {"/Y=VAR(b) /COLOR=VAR(c) /BOX", "boxes and error bars cannot be arranged this way in GPL"},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /STYLE=VAR(d) /BAR /ERRORBAR SD(1)",
     "boxes and error bars cannot be arranged this way in GPL"},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /STYLE=VAR(d) /ERRORBAR SD(1)", ""},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /BOX /BAR /ERRORBAR SD(1)", ""},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(a) /BOX /LINE", ""},
    // Reference lines.
    {"/X1=VAR(a) /Y=VAR(b) /REFLINE a 3 /BAR", "this reference line has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) TYPE=CATEGORICAL /REFLINE b 3 /SCATTER",
     "this reference line has no GPL equivalent"},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /COLOR=VAR(c) /REFLINE a 3 /BAR",
     "this reference line has no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(c) /Y=VAR(b) /REFLINE b 3 /SCATTER",
     "this reference line has no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(c) /Y=VAR(b) /REFLINE c 3 /SCATTER",
     "this reference line has no GPL equivalent"},
    {"/Y=VAR(b) /COLOR=VAR(c) /REFLINE b 3 /PIE", "this reference line has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(A) /REFLINE a 3 /BAR", "this reference line has no GPL equivalent"},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /COLOR=VAR(c) /REFLINE b 3 /BAR", ""},
    {"/X1=VAR(a) /Y=$pct /REFLINE $pct 3 /BAR", ""},
    // Normalized stacks.
    {"/X1=VAR(a) /Y=VAR(b) /STACK=VAR(c) /NORMALIZE /BAR",
     "a normalized MEAN has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /STACK=VAR(c) /NORMALIZE /BAR(SUM) /BAR(MEDIAN)",
     "a normalized MEDIAN has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /NORMALIZE /AREA(PTILE(5))",
     "a normalized PTILE has no GPL equivalent"},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /COLOR=VAR(c) /NORMALIZE /AREA",
     "a normalized MEAN has no GPL equivalent"},
    {"/X1=VAR(a) /Y=$count /COLOR=VAR(c) /NORMALIZE /HISTOGRAM",
     "a normalized HISTOGRAM has no GPL equivalent"},
    {"/X1=VAR(a) /Y=VAR(b) /STACK=VAR(c) /NORMALIZE /BAR(SUM)", ""},
    {"/X1=VAR(a) /Y=$count /STACK=VAR(c) /NORMALIZE /BAR", ""},
    {"/X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /NORMALIZE /BAR", ""},
    {"/X1=VAR(a) /Y=$count /NORMALIZE /HISTOGRAM", ""},
    // Nothing left to draw.
    {"/X1=VAR(a) /Y=VAR(b) /LINE STYLE=NONE", "the chart would be empty"},
    {"/X1=VAR(a) /Y=VAR(b) /LINE STYLE=NONE /LINE(SUM) STYLE=NONE", "the chart would be empty"},
    {"/X1=VAR(a) /Y=VAR(b) /LINE STYLE=NONE /BAR", ""},
    {"/X1=VAR(a) TYPE=SCALE /Y=VAR(b) /LINE STYLE=NONE /FITLINE", ""},
    // Clusters on three axes.
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /COLOR=VAR(d) /BAR",
     "clustered bars on three axes have no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /STYLE=VAR(d) CLUSTER /SCATTER /BAR",
     "clustered bars on three axes have no GPL equivalent"},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /COLOR=VAR(a) /STYLE=VAR(b) /BAR", ""},
    {"/X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /COLOR=VAR(d) STACK /BAR", ""},
    // A list of variables that would end the command.
    {"/Y=VAR(b) /X1=VAR(a.) /BAR", "the variable name \"a.\" ends in a period"},
    {"/X1=VAR(a.) /Y=VAR(b) /BAR", ""},
    // Of several the first in the order above.
    {"/X1=VAR(a) /Y=VAR(b) /BOX OUTLIERS=OFF /PANEL p q r",
     "parts of a box cannot be hidden in GPL"},
};

TEST(IgraphExpressibilityTest, FindsWhatGplCannotExpress) {
    for (const ObstacleCase& c : kObstacles) {
        SCOPED_TRACE(c.command);
        const IgraphResult result = ConvertIgraphText("IGRAPH " + std::string(c.command));
        ASSERT_EQ(result.syntaxFault, SyntaxFault::kNone);
        ASSERT_EQ(result.validityFault, ValidityFault::kNone);
        const std::string reason = c.reason;
        EXPECT_EQ(result.error, reason);
        EXPECT_EQ(result.gpl.empty(), !reason.empty());
        EXPECT_NE(result.usedNames, "");
    }
}

// The driver writes the message as a comment: the asterisk and the period are its own.
TEST(IgraphExpressibilityTest, MessagesAreOneLineWithoutWhatMakesThemComments) {
    for (const ObstacleCase& c : kObstacles) {
        const std::string error = ConvertIgraphText("IGRAPH " + std::string(c.command)).error;
        if (error.empty()) continue;
        EXPECT_FALSE(error.starts_with('*')) << error;
        EXPECT_FALSE(error.ends_with('.')) << error;
        EXPECT_EQ(error.find_first_of("\r\n"), std::string::npos) << error;
    }
}

}  // namespace

}  // namespace quillet::igraph
