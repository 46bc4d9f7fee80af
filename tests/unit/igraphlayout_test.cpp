#include <gtest/gtest.h>

#include <string>

#include "igraph/gpl/layout.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

struct LayoutCase {
    const char* command;
    Layout::Kind kind;
    const char* cluster;
    bool hasClusters;
    bool isStacked;
};

TEST(IgraphLayoutTest, FindsTheLayout) {
    using Kind = Layout::Kind;
    const LayoutCase cases[] = {
        {"/X1=VAR(x) /Y=VAR(y) /SCATTER", Kind::kPlain, "", false, false},
        {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /SCATTER", Kind::kThree, "", false, false},
        {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /COLOR=VAR(c) STACK /BAR", Kind::kThree, "", false, true},
        {"/COLOR=VAR(c) /PIE", Kind::kPolar, "", false, false},
        {"/COLOR=VAR(c) /COORDINATE=THREE /PIE", Kind::kPolar, "", false, false},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /BAR", Kind::kCluster, "c", true, false},
        {"/X1=VAR(x) /Y=VAR(y) /STYLE=VAR(c) /BAR /BOX /ERRORBAR SD(1)", Kind::kCluster, "c", true,
         false},
        {"/X1=$case /Y=VAR(y) /COLOR=VAR(c) /BAR", Kind::kCluster, "c", true, false},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(C) /BAR", Kind::kCluster, "c", true, false},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(x) /STYLE=VAR(c) /BAR", Kind::kCluster, "c", true, false},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) STACK /STYLE=VAR(d) /BAR(SUM)", Kind::kCluster, "d",
         true, true},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /STYLE=VAR(d) /BAR", Kind::kPlain, "", true, false},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /BAR /LINE", Kind::kPlain, "", true, false},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /COLOR=VAR(c) /BAR /FITLINE", Kind::kPlain, "", true,
         false},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /BAR /FITLINE NONE", Kind::kCluster, "c", true, false},
        {"/Y=VAR(y) /COLOR=VAR(c) /BAR", Kind::kPlain, "", true, false},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(x) /BAR", Kind::kPlain, "", false, false},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(x) STACK /BAR(SUM)", Kind::kPlain, "", false, true},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /LINE", Kind::kPlain, "", false, false},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /AREA", Kind::kPlain, "", false, true},
        {"/X1=VAR(x) /Y=VAR(y) /SIZE=VAR(c) /BAR", Kind::kPlain, "", false, false},
    };
    for (const LayoutCase& c : cases) {
        SCOPED_TRACE(c.command);
        const IgraphResult result = ConvertIgraphText("IGRAPH " + std::string(c.command));
        ASSERT_EQ(result.validityFault, ValidityFault::kNone);
        const Layout layout = LayoutOf(result.command);
        EXPECT_EQ(layout.kind, c.kind);
        EXPECT_EQ(layout.pCluster == nullptr ? "" : layout.pCluster->name, c.cluster);
        EXPECT_EQ(layout.hasClusters, c.hasClusters);
        EXPECT_EQ(layout.isStacked, c.isStacked);
    }
}

TEST(IgraphLayoutTest, NumbersTheDimensions) {
    struct Case {
        const char* command;
        int x1;
        int x2;
        int y;
        int firstPanel;
    };
    const Case cases[] = {
        {"/X1=VAR(x) /Y=VAR(y) /SCATTER", 1, 0, 2, 3},
        {"/X1=VAR(x) /X2=VAR(z) /Y=VAR(y) /SCATTER", 2, 1, 3, 4},
        {"/X1=VAR(x) /Y=VAR(y) /COLOR=VAR(c) /BAR", 3, 0, 2, 4},
        {"/COLOR=VAR(c) /PIE", 0, 0, 1, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        const Layout layout =
            LayoutOf(ConvertIgraphText("IGRAPH " + std::string(c.command)).command);
        EXPECT_EQ(layout.x1Dimension, c.x1);
        EXPECT_EQ(layout.x2Dimension, c.x2);
        EXPECT_EQ(layout.yDimension, c.y);
        EXPECT_EQ(layout.firstPanelDimension, c.firstPanel);
    }
}

}  // namespace

}  // namespace quillet::igraph
