#include <gtest/gtest.h>

#include <string>

#include "igraph/read/completion.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

struct CompletionFaultCase {
    const char* command;
    ValidityFault fault;
};

const CompletionFaultCase kCompletionFaults[] = {
    // Nothing to draw.
    {"IGRAPH.", ValidityFault::kNothingToDraw},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b).", ValidityFault::kNothingToDraw},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /FITLINE NONE.", ValidityFault::kNothingToDraw},
    {"IGRAPH /X1=VAR(a) TYPE=SCALE /Y=VAR(b) /FITLINE.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /SPIKE.", ValidityFault::kNone},
    // No variable.
    {"IGRAPH /SUMMARYVAR=$count /PIE.", ValidityFault::kNoVariable},
    {"IGRAPH /X1=$case /Y=$count /BAR.", ValidityFault::kNoVariable},
    {"IGRAPH /REFLINE a 3 /BAR.", ValidityFault::kNoVariable},
    {"IGRAPH /Y=$count /PANEL a /BAR.", ValidityFault::kNone},
    // No Y.
    {"IGRAPH /X1=VAR(a) /BAR.", ValidityFault::kNoY},
    {"IGRAPH /X1=VAR(a) /Y TITLE='t' /BAR.", ValidityFault::kNoY},
    {"IGRAPH /COLOR=VAR(a) /PIE.", ValidityFault::kNone},
    // No X1.
    {"IGRAPH /Y=VAR(a) /SCATTER.", ValidityFault::kNoX1},
    {"IGRAPH /Y=$count /COLOR=VAR(a) /HISTOGRAM.", ValidityFault::kNoX1},
    {"IGRAPH /Y=VAR(a) /FITLINE.", ValidityFault::kNoX1},
    {"IGRAPH /Y=VAR(a) /BOX.", ValidityFault::kNone},
    {"IGRAPH /Y=VAR(a) /BAR /FITLINE NONE.", ValidityFault::kNone},
    // Built-in names where only variables can stand.
    {"IGRAPH /X1=$count /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /X2=$pct /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /COLOR=$count /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /COLOR=$case /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /STYLE=$pct /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /SIZE=$case /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /PANEL a $count /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /PANEL $case /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /STACK $count /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /CLUSTER $case /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /POINTLABEL $pct /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /CASELABEL $case /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /SUMMARYVAR=$case /COLOR=VAR(a) /PIE.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /CATORDER $case (DESCENDING) /Y=VAR(a) /BAR.",
     ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=VAR(b) /SCALERANGE $case MIN=1 /Y=VAR(a) /BAR.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=$case TYPE=SCALE /REFLINE $case 5 /Y=VAR(a) /LINE.", ValidityFault::kWrongBuiltin},
    {"IGRAPH /X1=$case /Y=VAR(a) /BAR.", ValidityFault::kNone},
    {"IGRAPH /SUMMARYVAR=$pct /COLOR=VAR(a) /PIE.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(b) /SCALERANGE $count MIN=1 /Y=$count /BAR.", ValidityFault::kNone},
    // Counts on Y.
    {"IGRAPH /X1=VAR(a) /Y=$count /SCATTER.", ValidityFault::kCountedY},
    {"IGRAPH /X1=VAR(a) /Y=$pct /BOX.", ValidityFault::kCountedY},
    {"IGRAPH /X1=VAR(a) /Y=$count /ERRORBAR CI(95).", ValidityFault::kCountedY},
    {"IGRAPH /X1=VAR(a) /Y=$count /FITLINE.", ValidityFault::kCountedY},
    {"IGRAPH /X1=VAR(a) /Y=$count /BAR /FITLINE NONE.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=$count /BAR /AREA /LINE.", ValidityFault::kNone},
    // Histograms.
    {"IGRAPH /X1=VAR(a) TYPE=SCALE /Y=VAR(b) /HISTOGRAM.", ValidityFault::kHistogramAxes},
    {"IGRAPH /X1=VAR(a) TYPE=CATEGORICAL /Y=$count /HISTOGRAM.", ValidityFault::kHistogramAxes},
    {"IGRAPH /X1=VAR(a) /Y=$case /HISTOGRAM.", ValidityFault::kHistogramAxes},
    {"IGRAPH /X1=$case TYPE=SCALE /Y=$count /COLOR=VAR(a) /HISTOGRAM.",
     ValidityFault::kHistogramAxes},
    {"IGRAPH /X1=VAR(a) /Y=$pct /HISTOGRAM.", ValidityFault::kNone},
    // Functions of what is no variable.
    {"IGRAPH /X1=VAR(a) /Y=$count /BAR(MEAN).", ValidityFault::kFunctionWithoutVariable},
    {"IGRAPH /X1=VAR(a) /Y=$pct /AREA(SUM).", ValidityFault::kFunctionWithoutVariable},
    {"IGRAPH /X1=VAR(a) /Y=$case /LINE(MODE).", ValidityFault::kFunctionWithoutVariable},
    // Categories on Y.
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) TYPE=CATEGORICAL /LINE(SUM).", ValidityFault::kCategoricalY},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) TYPE=CATEGORICAL /LINE(MODE) /BAR(COUNT).",
     ValidityFault::kCategoricalY},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) TYPE=CATEGORICAL /BOX.", ValidityFault::kCategoricalY},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) TYPE=CATEGORICAL /ERRORBAR SE(2).", ValidityFault::kCategoricalY},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) TYPE=CATEGORICAL /FITLINE.", ValidityFault::kCategoricalY},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) TYPE=CATEGORICAL /LINE(MODE) /BAR /SCATTER.",
     ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=$count TYPE=CATEGORICAL /BAR.", ValidityFault::kNone},
    // Levels of legend variables.
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /STYLE=VAR(c) TYPE=SCALE /SCATTER.", ValidityFault::kLegendLevel},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /SIZE=VAR(c) CLUSTER /SCATTER.", ValidityFault::kLegendLevel},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /SIZE=VAR(c) STACK /SCATTER.", ValidityFault::kLegendLevel},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE CLUSTER /SCATTER.",
     ValidityFault::kLegendLevel},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) STACK TYPE=SCALE /SCATTER.",
     ValidityFault::kLegendLevel},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE /SCATTER.", ValidityFault::kNone},
    // Coordinates.
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /COORDINATE=THREE /SCATTER.", ValidityFault::kCoordinates},
    {"IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /COORDINATE=VERTICAL /BAR(SUM).",
     ValidityFault::kCoordinates},
    {"IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /COORDINATE=HORIZONTAL /BAR(SUM).",
     ValidityFault::kCoordinates},
    {"IGRAPH /COLOR=VAR(a) /COORDINATE=THREE /PIE.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /COORDINATE=THREE /BAR(SUM).", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /BAR(SUM).", ValidityFault::kNone},
    // Numbers out of range.
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR CI(101).", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR CI(-1).", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR CI(100).", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR SD(7).", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR SD(6).", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR SE(-.5).", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR SE(0).", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR SE(1) CAPWIDTH(101).",
     ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /BOX CAPWIDTH(-1).", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /BOX CAPWIDTH(100).", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X1INTERVAL NUM=0.", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X1INTERVAL NUM=251.",
     ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X1INTERVAL NUM=2.5.",
     ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X1INTERVAL NUM=250.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X1INTERVAL NUM=1.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X2INTERVAL NUM=300.",
     ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X1INTERVAL WIDTH=0.",
     ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X1START=-1.", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X2START=99.5.", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X2START=99.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /FITLINE INTERVAL(49)=MEAN.", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /FITLINE INTERVAL(101)=MEAN.", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /FITLINE INTERVAL(50)=MEAN.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /X1LENGTH=0 /BAR.", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /YLENGTH=-2 /BAR.", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /X2LENGTH=.1 /BAR.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR(PTILE(101)).", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR(PTILE(100)).", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR(PTILE(0)).", ValidityFault::kNumberOutOfRange},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR(PTILE(.1)).", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER COINCIDENT=JITTER(-1).", ValidityFault::kNone},
    {"IGRAPH /COLOR=VAR(a) /PIE START 400.", ValidityFault::kNone},
    // Error bars without an extent.
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR.", ValidityFault::kNoExtent},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /ERRORBAR CI(95) /ERRORBAR.", ValidityFault::kNoExtent},
    // Pies.
    {"IGRAPH /COLOR=VAR(a) /Y=VAR(b) /PIE /BAR.", ValidityFault::kPie},
    {"IGRAPH /COLOR=VAR(a) /PIE /PIE.", ValidityFault::kPie},
    {"IGRAPH /X1=VAR(a) TYPE=SCALE /Y=VAR(b) /COLOR=VAR(c) /PIE /FITLINE.", ValidityFault::kPie},
    {"IGRAPH /COLOR=VAR(a) /PIE /FITLINE NONE.", ValidityFault::kNone},
    {"IGRAPH /SUMMARYVAR=VAR(a) /PIE.", ValidityFault::kPie},
    {"IGRAPH /SUMMARYVAR=VAR(a) /COLOR=VAR(b) TYPE=SCALE /PIE.", ValidityFault::kPie},
    {"IGRAPH /SUMMARYVAR=VAR(a) /SIZE=VAR(b) /PIE.", ValidityFault::kPie},
    {"IGRAPH /SUMMARYVAR=VAR(a) /STACK=VAR(b) /PIE.", ValidityFault::kPie},
    {"IGRAPH /SUMMARYVAR=$count /STYLE=VAR(k) /PIE(SUM).", ValidityFault::kPie},
    {"IGRAPH /COLOR=VAR(k) /PIE(SUM).", ValidityFault::kPie},
    {"IGRAPH /SUMMARYVAR=VAR(a) /COLOR=VAR(k) /PIE(MEAN).", ValidityFault::kPie},
    {"IGRAPH /SUMMARYVAR=VAR(a) /COLOR=VAR(k) /PIE(PGT(3)).", ValidityFault::kPie},
    {"IGRAPH /SUMMARYVAR=VAR(a) /STYLE=VAR(k) /PIE(NLT(3)).", ValidityFault::kNone},
    // Reference lines.
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /REFLINE d 3 /SCATTER.", ValidityFault::kReferenceLine},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(d) /REFLINE d 3 /SCATTER.",
     ValidityFault::kReferenceLine},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /REFLINE $count 3 /SCATTER.", ValidityFault::kReferenceLine},
    {"IGRAPH /X1=VAR(a) /Y=$count /REFLINE $pct 3 /BAR.", ValidityFault::kReferenceLine},
    {"IGRAPH /SUMMARYVAR=VAR(a) /COLOR=VAR(b) /REFLINE a 3 /PIE.", ValidityFault::kReferenceLine},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /REFLINE A 3 /REFLINE VAR(b) 3 /SCATTER.", ValidityFault::kNone},
    // Fit lines over categories.
    {"IGRAPH /X1=VAR(a) TYPE=CATEGORICAL /Y=VAR(b) /FITLINE.", ValidityFault::kFitLineLevel},
    {"IGRAPH /X1=$case /Y=VAR(b) /FITLINE.", ValidityFault::kFitLineLevel},
    {"IGRAPH /X1=VAR(a) TYPE=CATEGORICAL /Y=VAR(b) /BAR /FITLINE NONE.", ValidityFault::kNone},
    // Ends of scales.
    {"IGRAPH /X1=VAR(a) TYPE=SCALE(MIN=2 MAX=1) /Y=VAR(b) /SCATTER.", ValidityFault::kScaleEnds},
    {"IGRAPH /X1=VAR(a) TYPE=SCALE(MIN=2 MAX=2) /Y=VAR(b) /SCATTER.", ValidityFault::kScaleEnds},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) MIN=2 /SCALERANGE b MAX=1 /SCATTER.", ValidityFault::kScaleEnds},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) MIN=2 /SCALERANGE b MAX=1 MIN=0 /SCATTER.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /SIZE=VAR(c) TYPE=SCALE MIN=2 MAX=1 /SCATTER.",
     ValidityFault::kScaleEnds},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE(MIN=2 MAX=1) /SCATTER.",
     ValidityFault::kScaleEnds},
    {"IGRAPH /X1=VAR(a) /X2=VAR(c) MIN=2 MAX=1 /Y=VAR(b) /SCATTER.", ValidityFault::kScaleEnds},
    {"IGRAPH /X1=VAR(a) TYPE=CATEGORICAL MIN=2 MAX=1 /Y=VAR(b) /BAR.", ValidityFault::kNone},
    {"IGRAPH /X1=VAR(a) /Y=VAR(b) /SCALERANGE c MIN=2 MAX=1 /BAR.", ValidityFault::kNone},
    // The case number on Y.
    {"IGRAPH /X1=VAR(a) /Y=$case /BAR.", ValidityFault::kCaseNumberY},
    {"IGRAPH /X1=VAR(a) /Y=$case TYPE=SCALE /SCATTER /FITLINE.", ValidityFault::kCaseNumberY},
    {"IGRAPH /X1=VAR(a) /Y=$case /SCATTER.", ValidityFault::kNone},
    // Spikes alone.
    {"IGRAPH /X1=VAR(a) /Y=$count /SPIKE.", ValidityFault::kNone},
    {"IGRAPH /Y=VAR(a) /SPIKE.", ValidityFault::kSpikesWithoutAxes},
    {"IGRAPH /Y=VAR(a) /SPIKE /BAR.", ValidityFault::kNone},
};

TEST(IgraphCompletionTest, FindsFaults) {
    for (const CompletionFaultCase& c : kCompletionFaults) {
        SCOPED_TRACE(c.command);
        for (int run = 0; run < 2; ++run) {
            const IgraphResult result = ConvertIgraphText(c.command);
            EXPECT_EQ(result.syntaxFault, SyntaxFault::kNone);
            EXPECT_EQ(result.validityFault, c.fault);
        }
    }
}

struct LevelCase {
    const char* command;
    MeasurementLevel x1;
    MeasurementLevel y;
};

TEST(IgraphCompletionTest, FillsInLevels) {
    constexpr MeasurementLevel kScale = MeasurementLevel::kScale;
    constexpr MeasurementLevel kCategorical = MeasurementLevel::kCategorical;
    const LevelCase cases[] = {
        {"IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR.", kCategorical, kScale},
        {"IGRAPH /X1=VAR(a) /Y=VAR(b) /BOX.", kCategorical, kScale},
        {"IGRAPH /X1=VAR(a) /Y=VAR(b) /LINE /FITLINE NONE.", kCategorical, kScale},
        {"IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER.", kScale, kScale},
        {"IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR /SCATTER.", kScale, kScale},
        {"IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM.", kScale, kScale},
        {"IGRAPH /X1=VAR(a) /Y=VAR(b) /FITLINE.", kScale, kScale},
        {"IGRAPH /X1=VAR(a) TYPE=CATEGORICAL /Y=VAR(b) TYPE=CATEGORICAL /SCATTER.", kCategorical,
         kCategorical},
        {"IGRAPH /X1=VAR(a) TYPE=SCALE /Y=VAR(b) /BAR.", kScale, kScale},
        {"IGRAPH /X1=VAR(a) TYPE=SCALE TYPE=CATEGORICAL /Y=VAR(b) /BAR.", kCategorical, kScale},
        {"IGRAPH /X1=$case /Y=VAR(b) /SCATTER.", kCategorical, kScale},
        {"IGRAPH /X1=$case TYPE=SCALE /Y=VAR(b) /SCATTER.", kScale, kScale},
        {"IGRAPH /X1=VAR(a) /Y=$case /SCATTER.", kScale, kCategorical},
        {"IGRAPH /X1=VAR(a) /Y=$count TYPE=CATEGORICAL /BAR.", kCategorical, kScale},
    };
    for (const LevelCase& c : cases) {
        SCOPED_TRACE(c.command);
        const IgraphResult result = ConvertIgraphText(c.command);
        EXPECT_EQ(result.validityFault, ValidityFault::kNone);
        EXPECT_EQ(result.command.x1.level, c.x1);
        EXPECT_EQ(result.command.y.level, c.y);
    }
}

struct ArrangementCase {
    const char* elements;
    Arrangement arrangement;
};

TEST(IgraphCompletionTest, ArrangesLegendVariablesByElements) {
    const ArrangementCase cases[] = {
        {"/COLOR=VAR(c) /BAR", Arrangement::kCluster},
        {"/COLOR=VAR(c) /BOX", Arrangement::kCluster},
        {"/COLOR=VAR(c) /ERRORBAR CI(9)", Arrangement::kCluster},
        {"/COLOR=VAR(c) /BAR /AREA", Arrangement::kCluster},
        {"/COLOR=VAR(c) /AREA", Arrangement::kStack},
        {"/COLOR=VAR(c) /AREA /LINE", Arrangement::kStack},
        {"/COLOR=VAR(c) /LINE", Arrangement::kOverlay},
        {"/COLOR=VAR(c) /SCATTER", Arrangement::kOverlay},
        {"/COLOR=VAR(c) STACK /BAR", Arrangement::kStack},
        {"/COLOR=VAR(c) CLUSTER /AREA", Arrangement::kCluster},
        {"/COLOR=VAR(c) STACK CLUSTER /LINE", Arrangement::kCluster},
        {"/STACK=VAR(c) /LINE", Arrangement::kStack},
        {"/CLUSTER=VAR(c) /LINE", Arrangement::kCluster},
    };
    for (const ArrangementCase& c : cases) {
        SCOPED_TRACE(c.elements);
        const IgraphResult result =
            ConvertIgraphText("IGRAPH /X1=VAR(a) /Y=VAR(b) " + std::string(c.elements));
        EXPECT_EQ(result.command.color.dimension.variable.name, "c");
        EXPECT_EQ(result.command.color.arrangement, c.arrangement);
    }
    EXPECT_EQ(ConvertIgraphText("IGRAPH /X1=VAR(a) /Y=$count /STYLE=VAR(c) /HISTOGRAM")
                  .command.style.arrangement,
              Arrangement::kStack);
    EXPECT_EQ(ConvertIgraphText("IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE /SCATTER")
                  .command.color.arrangement,
              std::nullopt);
}

TEST(IgraphCompletionTest, StackAndClusterAreShortForLegendVariables) {
    struct Case {
        const char* settings;
        const char* color;
        const char* style;
    };
    const Case cases[] = {
        {"/STACK=VAR(c)", "c", ""},
        {"/COLOR=VAR(k) /STACK=VAR(c)", "k", "c"},
        {"/STYLE=VAR(k) /CLUSTER=VAR(c)", "c", "k"},
        {"/COLOR=VAR(k) /STYLE=VAR(l) /STACK=VAR(c)", "k", "l"},
        {"/STACK=VAR(c) /CLUSTER=VAR(d)", "c", "d"},
        {"/CLUSTER=VAR(d) /STACK=VAR(c)", "d", "c"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.settings);
        const IgraphResult result =
            ConvertIgraphText("IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR(SUM) " + std::string(c.settings));
        EXPECT_EQ(result.validityFault, ValidityFault::kNone);
        EXPECT_EQ(result.command.color.dimension.variable.name, c.color);
        EXPECT_EQ(result.command.style.dimension.variable.name, c.style);
    }
}

TEST(IgraphCompletionTest, TheLastEndOfAScaleHolds) {
    struct Case {
        const char* settings;
        double minimum;
    };
    const Case cases[] = {
        {"/Y=VAR(b) MIN=1", 1},
        {"/Y=VAR(b) MIN=1 MIN=2", 2},
        {"/Y=VAR(b) TYPE=SCALE(MIN=1) MIN=2", 2},
        {"/Y=VAR(b) MIN=1 /SCALERANGE=VAR(B) MIN=2", 2},
        {"/SCALERANGE=VAR(b) MIN=2 /Y=VAR(b) MIN=1", 1},
        {"/SCALERANGE=VAR(b) MIN=2 /Y=VAR(b)", 2},
        {"/SCALERANGE=b MIN=2 /Y=VAR(b) /SCALERANGE=b MIN=3", 3},
        {"/Y=VAR(b) MIN=1 /SCALERANGE=VAR(c) MIN=2", 1},
        {"/Y=$count MIN=1 /SCALERANGE=$count MIN=2", 2},
        {"/Y=$count MIN=1 /SCALERANGE=$pct MIN=2", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.settings);
        const IgraphResult result =
            ConvertIgraphText("IGRAPH /X1=VAR(a) /BAR " + std::string(c.settings));
        ASSERT_TRUE(result.command.y.ends.minimum);
        EXPECT_EQ(result.command.y.ends.minimum->value, c.minimum);
    }
}

}  // namespace

}  // namespace quillet::igraph
