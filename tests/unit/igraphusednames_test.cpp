#include <gtest/gtest.h>

#include <string>

#include "igraph/model/usednames.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

TEST(IgraphUsedNamesTest, AreInOrderOfTheirFirstAppearance) {
    struct Case {
        const char* command;
        const char* names;
    };
    const Case cases[] = {
        {"/Y=VAR(b) /X1=VAR(a) /BAR", "b a"},
        {"/X1=VAR(Abc) /Y=VAR(b) /COLOR=VAR(ABC) /BAR", "Abc b"},
        {"/SIZE=VAR(z) /X2=VAR(d) /X1=VAR(a) /Y=VAR(b) /PANEL q p /STYLE=VAR(t) /SCATTER",
         "z d a b q p t"},
        {"/STACK=VAR(c) /X1=VAR(a) /Y=VAR(b) /BAR(SUM)", "c a b"},
        {"/CASELABEL k /POINTLABEL p /X1=a /Y=b /BAR", "k p a b"},
        {"/COLOR=c /SUMMARYVAR=v /PIE", "c v"},
        {"/Y=$count /X1=a /BAR", "a"},
        {"/X1=$case /Y=b /LINE", "b"},
        {"/X1=gr\xc3\xb6sse /Y=GR\xc3\x96SSE /BAR", "gr\xc3\xb6sse"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        EXPECT_EQ(ConvertIgraphText("IGRAPH " + std::string(c.command)).usedNames, c.names);
    }
}

TEST(IgraphUsedNamesTest, AreEmptyWithoutRoles) { EXPECT_EQ(UsedNames({}), ""); }

}  // namespace

}  // namespace quillet::igraph
