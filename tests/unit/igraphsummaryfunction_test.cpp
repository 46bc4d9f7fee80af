#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "igraph/model/summaryfunction.h"
#include "platform/assertion.h"

namespace quillet::igraph {

namespace {

TEST(IgraphSummaryFunctionTest, FindsEveryFunction) {
    for (const SummaryFunction& function : kSummaryFunctionTable) {
        EXPECT_EQ(&FindSummaryFunction(function.keyword), &function) << Spelling(function.keyword);
    }
}

TEST(IgraphSummaryFunctionTest, AKeywordThatIsNoFunctionAsserts) {
    std::vector<std::string> assertions;
    const ScopedAssertionHandler handler(
        [&assertions](const AssertionFailure& failure) { assertions.emplace_back(failure.text); });
    EXPECT_EQ(FindSummaryFunction(Keyword::kBar).keyword, Keyword::kMean);
    EXPECT_THAT(assertions, testing::ElementsAre("pFound != nullptr"));
}

}  // namespace

}  // namespace quillet::igraph
