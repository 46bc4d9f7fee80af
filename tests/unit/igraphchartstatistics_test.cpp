#include <gtest/gtest.h>

#include <string>

#include "igraph/gpl/chartstatistics.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

TEST(IgraphChartStatisticsTest, CountsCases) {
    struct Case {
        const char* command;
        const char* count;
        const char* validCount;
        const char* percent;
    };
    const Case cases[] = {
        {"/X1=VAR(x) /Y=VAR(y) /BAR", "summary.count(x)", "summary.count(x*y)",
         "summary.percent.count(x, base.all(acrossPanels()))"},
        {"/X1=VAR(x) /Y=$count /PANEL p /BAR", "summary.count(x*1*p)", "summary.count(x*1*p)",
         "summary.percent.count(x*1*p, base.all(acrossPanels()))"},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /BAR", "summary.count(c*1*x)", "summary.count(c*y*x)",
         "summary.percent.count(c*1*x, base.all(acrossPanels()))"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        const IgraphResult result = ConvertIgraphText("IGRAPH " + std::string(c.command));
        CommandBudget budget;
        const Chart chart = ChartOf(result.command, budget);
        EXPECT_EQ(TextOf(CountOfCases(chart)), c.count);
        EXPECT_EQ(TextOf(CountOfValidCases(chart)), c.validCount);
        EXPECT_EQ(TextOf(PercentOfCases(chart)), c.percent);
    }
}

TEST(IgraphChartStatisticsTest, EachSummaryDeclaresItsComputedVariable) {
    const IgraphResult result =
        ConvertIgraphText("IGRAPH /X1=VAR(x) /Y=VAR(y) /BAR(SUMSQ) /LINE(SUMSQ)");
    CommandBudget budget;
    Chart chart = ChartOf(result.command, budget);
    EXPECT_EQ(TextOf(SummaryOf(chart, result.command.elements[0])), "summary.sum(x*y_t1)");
    EXPECT_EQ(TextOf(SummaryOf(chart, result.command.elements[1])), "summary.sum(x*y_t2)");
    EXPECT_EQ(chart.Statements().ToText(), "\n  TRANS: y_t1=eval(y*y)\n  TRANS: y_t2=eval(y*y)\n");
}

}  // namespace

}  // namespace quillet::igraph
