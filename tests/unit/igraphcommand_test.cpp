#include "igraph/model/igraphcommand.h"

#include <gtest/gtest.h>

#include <string>

#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

using Source = VariableReference::Source;

VariableReference Variable(const std::string& name, const std::string& key) {
    VariableReference reference;
    reference.source = Source::kVariable;
    reference.name = name;
    reference.key = key;
    return reference;
}

VariableReference Builtin(Source source) {
    VariableReference reference;
    reference.source = source;
    return reference;
}

TEST(IgraphCommandTest, ComparesReferences) {
    EXPECT_TRUE(Variable("a", "A").IsSameAs(Variable("A", "A")));
    EXPECT_FALSE(Variable("a", "A").IsSameAs(Variable("b", "B")));
    EXPECT_TRUE(Builtin(Source::kCount).IsSameAs(Builtin(Source::kCount)));
    EXPECT_FALSE(Builtin(Source::kCount).IsSameAs(Builtin(Source::kPercent)));
    EXPECT_FALSE(Builtin(Source::kAbsent).IsSameAs(Builtin(Source::kAbsent)));
    EXPECT_FALSE(Variable("a", "A").IsSameAs(Builtin(Source::kCaseNumber)));
    EXPECT_TRUE(Builtin(Source::kPercent).IsCounted());
    EXPECT_FALSE(Builtin(Source::kCaseNumber).IsCounted());
}

TEST(IgraphCommandTest, KnowsWhichElementsShowRawValues) {
    struct Case {
        const char* command;
        bool isRaw;
    };
    const Case cases[] = {
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE", true},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /AREA", true},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /BAR", true},
        {"/X1=$case /Y=VAR(y) /LINE", true},
        {"/X1=VAR(x) /Y=VAR(y) /LINE", false},
        {"/Y=VAR(y) /LINE", false},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /LINE(MEAN)", false},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) TYPE=CATEGORICAL /LINE", false},
        {"/X1=VAR(x) TYPE=SCALE /Y=$count /LINE", false},
        {"/X1=VAR(x) TYPE=SCALE /Y=VAR(y) /SCATTER", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        const IgraphCommand command = ConvertIgraphText("IGRAPH " + std::string(c.command)).command;
        EXPECT_EQ(ShowsRawValues(command, command.elements.front()), c.isRaw);
    }
}

TEST(IgraphCommandTest, NamesElements) {
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kScatter), Keyword::kScatter);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kBar), Keyword::kBar);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kArea), Keyword::kArea);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kLine), Keyword::kLine);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kPie), Keyword::kPie);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kBox), Keyword::kBox);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kErrorBar), Keyword::kErrorBar);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kHistogram), Keyword::kHistogram);
}

TEST(IgraphCommandTest, AFitLineWithoutAMethodIsNone) {
    IgraphCommand command;
    EXPECT_FALSE(HoldsFitLine(command));
    command.fitLines.emplace_back().method = Keyword::kNone;
    EXPECT_FALSE(HoldsFitLine(command));
    command.fitLines.emplace_back();
    EXPECT_TRUE(HoldsFitLine(command));
}

TEST(IgraphCommandTest, FindsTheQuantityOfAPie) {
    IgraphCommand command;
    EXPECT_EQ(PieQuantity(command).source, Source::kCount);
    command.y.variable = Variable("y", "Y");
    EXPECT_EQ(PieQuantity(command).name, "y");
    command.summaryVariable = Builtin(Source::kPercent);
    EXPECT_EQ(PieQuantity(command).source, Source::kPercent);
}

TEST(IgraphCommandTest, FindsTheLastOrderOfAVariable) {
    IgraphCommand command;
    EXPECT_EQ(FindCategoryOrder(command, Variable("a", "A")), nullptr);
    command.categoryOrders.emplace_back().variable = Variable("a", "A");
    command.categoryOrders.emplace_back().variable = Variable("b", "B");
    command.categoryOrders.emplace_back().variable = Variable("A", "A");
    command.categoryOrders.emplace_back().variable = Variable("c", "C");
    EXPECT_EQ(FindCategoryOrder(command, Variable("a", "A")), &command.categoryOrders[2]);
    EXPECT_EQ(FindCategoryOrder(command, Variable("d", "D")), nullptr);
}

}  // namespace

}  // namespace quillet::igraph
