#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "igraph/gpl/chart.h"
#include "igraph/gpl/chartstatistics.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

std::string FirstOf(const std::vector<Expression>& arguments) {
    return arguments.empty() ? "" : TextOf(arguments.front());
}

TEST(IgraphChartTest, CrossesTheDimensions) {
    struct Case {
        const char* command;
        const char* across;  // of m
        const char* cases;
    };
    const Case cases[] = {
        {"/X1=VAR(x) /Y=VAR(y) /BAR", "x*m", "x"},
        {"/X1=VAR(x) /Y=VAR(y) /PANEL p /BAR", "x*m*p", "x*1*p"},
        {"/X1=VAR(x) /Y=VAR(y) /PANEL p q /BAR", "x*m*p*q", "x*1*p*q"},
        {"/Y=VAR(y) /BAR", "1*m", "1"},
        {"/Y=VAR(y) /PANEL p /BAR", "1*m*p", "1*1*p"},
        {"/X1=$case /Y=VAR(y) /BAR", "casenum*m", "casenum"},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /BAR", "c*m*x", "c*1*x"},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /PANEL p /BAR", "c*m*x*p", "c*1*x*p"},
        {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /SCATTER", "z*x*m", "z*x"},
        {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /PANEL p q /SCATTER", "z*x*m*p*q", "z*x*1*p*q"},
        {"/X2=VAR(z) /Y=VAR(y) /BAR", "z*1*m", "z*1"},
        {"/Y=VAR(y) /COLOR=VAR(c) /PIE", "m", ""},
        {"/Y=VAR(y) /COLOR=VAR(c) /PANEL p q /PIE", "m*p*q", "1*p*q"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        const IgraphResult result = ConvertIgraphText("IGRAPH " + std::string(c.command));
        CommandBudget budget;
        const Chart chart = ChartOf(result.command, budget);
        EXPECT_EQ(TextOf(chart.Across(Expression::Identifier("m"))), c.across);
        EXPECT_EQ(FirstOf(chart.Cases()), c.cases);
        EXPECT_EQ(TextOf(CountOfCases(chart)), "summary.count(" + std::string(c.cases) + ")");
    }
}

TEST(IgraphChartTest, RemembersAestheticsInTheirOrder) {
    const IgraphResult result = ConvertIgraphText("IGRAPH /X1=VAR(x) /Y=VAR(y) /BAR");
    CommandBudget budget;
    Chart chart = ChartOf(result.command, budget);
    EXPECT_THAT(chart.UsedAesthetics(), testing::IsEmpty());
    chart.MarkUsed(Aesthetic::kSize);
    chart.MarkUsed(Aesthetic::kColor);
    chart.MarkUsed(Aesthetic::kSize);
    EXPECT_THAT(chart.UsedAesthetics(), testing::ElementsAre(Aesthetic::kSize, Aesthetic::kColor));
}

TEST(IgraphChartTest, KnowsItsMeasure) {
    const auto measures = [](const std::string& command) {
        const IgraphResult result = ConvertIgraphText("IGRAPH " + command);
        CommandBudget budget;
        const Chart chart = ChartOf(result.command, budget);
        return chart.MeasuresVariable() ? TextOf(chart.Measure()) : "";
    };
    EXPECT_EQ(measures("/X1=VAR(x) /Y=VAR(y) /BAR"), "y");
    EXPECT_EQ(measures("/X1=VAR(x) /Y=$count /BAR"), "");
    EXPECT_EQ(measures("/X1=VAR(y) /Y=VAR(y) /BAR"), "y_2");
    EXPECT_EQ(measures("/Y=VAR(y) /SUMMARYVAR=VAR(v) /COLOR=VAR(c) /PIE"), "v");
    EXPECT_EQ(measures("/Y=VAR(y) /SUMMARYVAR=$pct /COLOR=VAR(c) /PIE"), "");
}

TEST(IgraphChartTest, LabelsCasesByNumberWhereBoxesHaveNoLabels) {
    const auto labels = [](const std::string& command) {
        const IgraphResult result = ConvertIgraphText("IGRAPH /X1=VAR(x) /Y=VAR(y) " + command);
        CommandBudget budget;
        return ChartOf(result.command, budget).LabelsCasesByNumber();
    };
    EXPECT_TRUE(labels("/BOX"));
    EXPECT_FALSE(labels("/BAR"));
    EXPECT_FALSE(labels("/BOX /CASELABEL VAR(k)"));
    EXPECT_TRUE(labels("/BOX /CASELABEL VAR(k) NONE"));
}

}  // namespace

}  // namespace quillet::igraph
