#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "igraph/gpl/postprocessing.h"

namespace quillet::igraph {

namespace {

TEST(IgraphPostprocessingTest, LeavesTheGraphAsItIs) {
    iGraphSpec spec;
    spec.Command().viewName = "v";
    spec.Command().chartLooks = {"look"};
    doPostProcessing processing(nullptr, nullptr, nullptr);
    EXPECT_THAT(processing.getImmediateTemplates(), testing::IsEmpty());
    processing.process(spec);
    EXPECT_THAT(processing.getImmediateTemplates(), testing::IsEmpty());
    EXPECT_EQ(spec.getViewName(), "v");
    EXPECT_THAT(spec.getChartLooks(), testing::ElementsAre("look"));
    EXPECT_EQ(spec.errorMessage(), "");
}

}  // namespace

}  // namespace quillet::igraph
