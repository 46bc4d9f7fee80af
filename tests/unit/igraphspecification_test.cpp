#include <gtest/gtest.h>

#include <string>

#include "igraph/specification.h"
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

TEST(IgraphSpecificationTest, ComparesReferences) {
    EXPECT_TRUE(Variable("a", "A").IsSameAs(Variable("A", "A")));
    EXPECT_FALSE(Variable("a", "A").IsSameAs(Variable("b", "B")));
    EXPECT_TRUE(Builtin(Source::kCount).IsSameAs(Builtin(Source::kCount)));
    EXPECT_FALSE(Builtin(Source::kCount).IsSameAs(Builtin(Source::kPercent)));
    EXPECT_FALSE(Builtin(Source::kAbsent).IsSameAs(Builtin(Source::kAbsent)));
    EXPECT_FALSE(Variable("a", "A").IsSameAs(Builtin(Source::kCaseNumber)));
    EXPECT_TRUE(Builtin(Source::kPercent).IsCounted());
    EXPECT_FALSE(Builtin(Source::kCaseNumber).IsCounted());
}

TEST(IgraphSpecificationTest, KnowsWhichElementsShowRawValues) {
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
        const Specification spec = ConvertIgraphText("IGRAPH " + std::string(c.command)).command;
        EXPECT_EQ(ShowsRawValues(spec, spec.elements.front()), c.isRaw);
    }
}

TEST(IgraphSpecificationTest, NamesElements) {
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kScatter), Keyword::kScatter);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kBar), Keyword::kBar);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kArea), Keyword::kArea);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kLine), Keyword::kLine);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kPie), Keyword::kPie);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kBox), Keyword::kBox);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kErrorBar), Keyword::kErrorBar);
    EXPECT_EQ(ElementKeyword(ChartElement::Kind::kHistogram), Keyword::kHistogram);
}

TEST(IgraphSpecificationTest, AFitLineWithoutAMethodIsNone) {
    Specification spec;
    EXPECT_FALSE(HoldsFitLine(spec));
    spec.fitLines.emplace_back().method = Keyword::kNone;
    EXPECT_FALSE(HoldsFitLine(spec));
    spec.fitLines.emplace_back();
    EXPECT_TRUE(HoldsFitLine(spec));
}

TEST(IgraphSpecificationTest, FindsTheQuantityOfAPie) {
    Specification spec;
    EXPECT_EQ(PieQuantity(spec).source, Source::kCount);
    spec.y.variable = Variable("y", "Y");
    EXPECT_EQ(PieQuantity(spec).name, "y");
    spec.summaryVariable = Builtin(Source::kPercent);
    EXPECT_EQ(PieQuantity(spec).source, Source::kPercent);
}

TEST(IgraphSpecificationTest, FindsTheLastOrderOfAVariable) {
    Specification spec;
    EXPECT_EQ(FindCategoryOrder(spec, Variable("a", "A")), nullptr);
    spec.categoryOrders.emplace_back().variable = Variable("a", "A");
    spec.categoryOrders.emplace_back().variable = Variable("b", "B");
    spec.categoryOrders.emplace_back().variable = Variable("A", "A");
    spec.categoryOrders.emplace_back().variable = Variable("c", "C");
    EXPECT_EQ(FindCategoryOrder(spec, Variable("a", "A")), &spec.categoryOrders[2]);
    EXPECT_EQ(FindCategoryOrder(spec, Variable("d", "D")), nullptr);
}

}  // namespace

}  // namespace quillet::igraph
