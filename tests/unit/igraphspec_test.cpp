#include "igraph/model/igraphspec.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "igraph/gpl/gplgenerator.h"
#include "igraph/gpl/postprocessing.h"
#include "igraph/read/igraphparser.h"
#include "igraphtesting.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {

namespace {

TEST(IgraphSpecTest, ChartLooksLeaveOutEmptyOnesAndNone) {
    struct Case {
        const char* command;
        std::vector<std::string> looks;
    };
    const Case cases[] = {
        {"", {}},
        {"/CHARTLOOK='NONE'", {}},
        {"/CHARTLOOK='none' /CHARTLOOK='NoNe'", {}},
        {"/CHARTLOOK=''", {}},
        {"/CHARTLOOK='b' /CHARTLOOK='NONE' /CHARTLOOK='a' /CHARTLOOK='b'", {"b", "a", "b"}},
        {"/CHARTLOOK='NONE '", {"NONE "}},
        {"/CHARTLOOK='nine'", {"nine"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        EXPECT_EQ(ConvertIgraphText("IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR " + std::string(c.command))
                      .chartLooks,
                  c.looks);
    }
}

TEST(IgraphSpecTest, TheViewNameIsTheLiteral) {
    EXPECT_EQ(
        ConvertIgraphText("IGRAPH /VIEWNAME='it''s \"x\"' /X1=VAR(a) /Y=VAR(b) /BAR").viewName,
        "it's \"x\"");
    EXPECT_EQ(ConvertIgraphText("IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR").viewName, "");
}

// The whole sequence of calls that converts a command.
TEST(IgraphSpecTest, OperationsWorkInTheirOrder) {
    TAVQTokenSequence sequence(CodePage::Utf8(), "IGRAPH /VIEWNAME='v' /X1=VAR(a) /Y=VAR(b) /BAR.",
                               false, 0);
    sequence.SetNextIndex(0);
    parser igraphParser(nullptr, nullptr);
    ASSERT_TRUE(igraphParser.Parse(sequence));
    ASSERT_TRUE(igraphParser.CompleteAndValidateSyntax());
    iGraphSpec& spec = igraphParser.GetSettings();
    spec.getGGraphSpec().SetOutputLabel(spec.getViewName());
    EXPECT_EQ(spec.getGGraphSpec().OutputLabel(), "v");
    gplGenerator generator(spec, nullptr, nullptr);
    const std::string gpl = generator.getGPL();
    EXPECT_NE(gpl, "");
    EXPECT_EQ(generator.getGPL(), gpl);
    EXPECT_EQ(spec.errorMessage(), "");
    doPostProcessing processing(nullptr, nullptr, nullptr);
    processing.process(spec);
    EXPECT_EQ(spec.getUsedVarName(), "a b");
    EXPECT_THAT(spec.getChartLooks(), testing::IsEmpty());
    EXPECT_THAT(processing.getImmediateTemplates(), testing::IsEmpty());
}

}  // namespace

}  // namespace quillet::igraph
