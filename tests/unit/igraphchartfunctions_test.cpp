#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "igraph/gpl/chartfunctions.h"
#include "igraph/model/summaryfunction.h"
#include "igraphtesting.h"
#include "platform/assertion.h"

namespace quillet::igraph {

namespace {

struct FunctionCase {
    const char* call;       // in the command
    const char* trans;      // the computed variable; empty for none
    const char* statistic;  // in a chart of y over x
    const char* title;
    const char* order;  // how it sorts categories; empty where it cannot
};

const FunctionCase kChartFunctions[] = {
    {"MEAN", "", "summary.mean(x*y)", "Mean y", "summary.mean(y)"},
    {"MEDIAN", "", "summary.median(x*y)", "Median y", "summary.median(y)"},
    {"MODE", "", "summary.mode(x*y)", "Mode y", "summary.mode(y)"},
    {"SUM", "", "summary.sum(x*y)", "Sum y", "summary.sum(y)"},
    {"STDDEV", "", "summary.sd(x*y)", "Std. Deviation y", "summary.sd(y)"},
    {"VARIANCE", "", "summary.variance(x*y)", "Variance y", "summary.variance(y)"},
    {"MINIMUM", "", "summary.min(x*y)", "Minimum y", "summary.min(y)"},
    {"MAXIMUM", "", "summary.max(x*y)", "Maximum y", "summary.max(y)"},
    {"RANGE", "", "summary.range(x*y)", "Range y", "summary.range(y)"},
    {"FIRST", "", "summary.first(x*y)", "First y", "summary.first(y)"},
    {"LAST", "", "summary.last(x*y)", "Last y", "summary.last(y)"},
    {"SEMEAN", "", "summary.se(x*y)", "Std. Error of Mean y", "summary.se(y)"},
    {"KURTOSIS", "", "summary.kurtosis(x*y)", "Kurtosis y", "summary.kurtosis(y)"},
    {"SEKURT", "", "summary.se.kurtosis(x*y)", "Std. Error of Kurtosis y",
     "summary.se.kurtosis(y)"},
    {"SKEWNESS", "", "summary.skewness(x*y)", "Skewness y", "summary.skewness(y)"},
    {"SESKEW", "", "summary.se.skewness(x*y)", "Std. Error of Skewness y",
     "summary.se.skewness(y)"},
    {"SUMSQ", "y_t1=eval(y*y)", "summary.sum(x*y_t1)", "Sum of Squares y", ""},
    {"SUMAV", "y_t1=eval(abs(y))", "summary.sum(x*y_t1)", "Sum of Absolute Values y", ""},
    {"COUNT", "", "summary.count(x*y)", "Count y", "summary.count(x)"},
    {"PCT", "", "summary.percent.count(x*y, base.all(acrossPanels()))", "Percent y", ""},
    {"PTILE(90)", "", "summary.percentile(x*y, alpha(0.9))", "Percentile 90 y", ""},
    {"PTILE 2.5", "", "summary.percentile(x*y, alpha(0.025))", "Percentile 2.5 y", ""},
    {"NGT(1)", "y_t1=eval(y > 1)", "summary.countTrue(x*y_t1)", "Number of y > 1", ""},
    {"NLT(-1)", "y_t1=eval(y < -1)", "summary.countTrue(x*y_t1)", "Number of y < -1", ""},
    {"NGE(1.5)", "y_t1=eval(y >= 1.5)", "summary.countTrue(x*y_t1)", "Number of y >= 1.5", ""},
    {"NLE 1", "y_t1=eval(y <= 1)", "summary.countTrue(x*y_t1)", "Number of y <= 1", ""},
    {"NEQ(0)", "y_t1=eval(y == 0)", "summary.countTrue(x*y_t1)", "Number of y = 0", ""},
    {"PGT(1)", "y_t1=eval(y > 1)", "summary.percentTrue(x*y_t1)", "Percent of y > 1", ""},
    {"PLT(1)", "y_t1=eval(y < 1)", "summary.percentTrue(x*y_t1)", "Percent of y < 1", ""},
    {"PGE(1)", "y_t1=eval(y >= 1)", "summary.percentTrue(x*y_t1)", "Percent of y >= 1", ""},
    {"PLE(1)", "y_t1=eval(y <= 1)", "summary.percentTrue(x*y_t1)", "Percent of y <= 1", ""},
    {"PEQ(1)", "y_t1=eval(y == 1)", "summary.percentTrue(x*y_t1)", "Percent of y = 1", ""},
    {"NIN(1,3)", "y_t1=eval(y >= 1 & y <= 3)", "summary.countTrue(x*y_t1)",
     "Number of y from 1 to 3", ""},
    {"PIN(-1 3)", "y_t1=eval(y >= -1 & y <= 3)", "summary.percentTrue(x*y_t1)",
     "Percent of y from -1 to 3", ""},
};

std::vector<std::string> Lines(const char* line) {
    return *line == '\0' ? std::vector<std::string>{} : std::vector<std::string>{line};
}

TEST(IgraphChartFunctionsTest, EveryFunctionInEveryElement) {
    const std::vector<std::pair<std::string, std::string>> elements = {
        {
            "BAR",
            "interval(position(",
        },
        {"AREA", "area(position("},
        {"LINE", "line(position("},
    };
    for (const FunctionCase& c : kChartFunctions) {
        for (const auto& [element, beginning] : elements) {
            const std::string command =
                "IGRAPH /X1=VAR(x) TYPE=CATEGORICAL /Y=VAR(y) /" + element + "(" + c.call + ").";
            SCOPED_TRACE(command);
            const IgraphResult result = ConvertIgraphText(command);
            EXPECT_EQ(result.error, "");
            EXPECT_EQ(result.Lines("TRANS"), Lines(c.trans));
            const std::string end = element == "BAR" ? "), shape.interior(shape.square))" : "))";
            EXPECT_THAT(result.Lines("ELEMENT"),
                        testing::ElementsAre(beginning + c.statistic + end));
            EXPECT_THAT(
                result.Lines("GUIDE"),
                testing::ElementsAre("axis(dim(1), label(\"x\"))",
                                     "axis(dim(2), label(\"" + std::string(c.title) + "\"))"));
        }
    }
}

TEST(IgraphChartFunctionsTest, FunctionsSortCategories) {
    for (const FunctionCase& c : kChartFunctions) {
        SCOPED_TRACE(c.call);
        const IgraphResult result = ConvertIgraphText(
            "IGRAPH /X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) (" + std::string(c.call) + ") /LINE.");
        const std::string order = c.order;
        EXPECT_EQ(result.Lines("SCALE"),
                  order.empty()
                      ? std::vector<std::string>{}
                      : std::vector<std::string>{"cat(dim(1), sort.statistic(" + order + "))"});
        const IgraphResult descending =
            ConvertIgraphText("IGRAPH /X1=VAR(x) /Y=VAR(y) /CATORDER VAR(x) (DESCENDING " +
                              std::string(c.call) + ") /LINE.");
        EXPECT_THAT(descending.Lines("SCALE"),
                    testing::ElementsAre(order.empty() ? "cat(dim(1), reverse())"
                                                       : "cat(dim(1), sort.statistic(" + order +
                                                             "), reverse())"));
        // Without a variable there is nothing to sort by.
        const IgraphResult count = ConvertIgraphText(
            "IGRAPH /X1=VAR(x) /Y=$count /CATORDER VAR(x) (" + std::string(c.call) + ") /LINE.");
        EXPECT_EQ(count.Lines("SCALE").size(), std::string(c.call) == "COUNT" ? 1U : 0U);
    }
}

TEST(IgraphChartFunctionsTest, FunctionsOfPies) {
    struct Case {
        const char* call;
        const char* trans;
        const char* statistic;
    };
    const Case cases[] = {
        {"", "", "summary.sum(y)"},
        {"(SUM)", "", "summary.sum(y)"},
        {"(SUMAV)", "y_t1=eval(abs(y))", "summary.sum(y_t1)"},
        {"(SUMSQ)", "y_t1=eval(y*y)", "summary.sum(y_t1)"},
        {"(NGT(1))", "y_t1=eval(y > 1)", "summary.countTrue(y_t1)"},
        {"(NLE(1))", "y_t1=eval(y <= 1)", "summary.countTrue(y_t1)"},
        {"(NEQ(1))", "y_t1=eval(y == 1)", "summary.countTrue(y_t1)"},
        {"(NGE(1))", "y_t1=eval(y >= 1)", "summary.countTrue(y_t1)"},
        {"(NLT(1))", "y_t1=eval(y < 1)", "summary.countTrue(y_t1)"},
        {"(NIN(1,2))", "y_t1=eval(y >= 1 & y <= 2)", "summary.countTrue(y_t1)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.call);
        const IgraphResult result = ConvertIgraphText(
            "IGRAPH /SUMMARYVAR=VAR(y) /COLOR=VAR(c) /PIE" + std::string(c.call) + ".");
        EXPECT_EQ(result.Lines("TRANS"), Lines(c.trans));
        EXPECT_THAT(result.Lines("ELEMENT"),
                    testing::ElementsAre("interval.stack(position(" + std::string(c.statistic) +
                                         "), color.interior(c))"));
    }
    for (const SummaryFunction& function : kSummaryFunctionTable) {
        const std::string arguments = function.argumentCount == 0   ? ""
                                      : function.argumentCount == 1 ? " 1"
                                                                    : " 1 2";
        const IgraphResult result =
            ConvertIgraphText("IGRAPH /SUMMARYVAR=VAR(y) /COLOR=VAR(c) /PIE(" +
                              std::string(Spelling(function.keyword)) + arguments + ").");
        EXPECT_EQ(result.validityFault,
                  function.allowedInPie ? ValidityFault::kNone : ValidityFault::kPie)
            << Spelling(function.keyword);
    }
}

TEST(IgraphChartFunctionsTest, AKeywordThatIsNoFunctionAsserts) {
    std::vector<std::string> assertions;
    const ScopedAssertionHandler handler(
        [&assertions](const AssertionFailure& failure) { assertions.emplace_back(failure.text); });
    EXPECT_EQ(FindChartFunction(Keyword::kBar).keyword, Keyword::kMean);
    EXPECT_THAT(assertions, testing::ElementsAre("pFound != nullptr"));
}

}  // namespace

}  // namespace quillet::igraph
