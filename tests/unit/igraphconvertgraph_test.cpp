#include <gtest/gtest.h>

#include <string>

#include "igraph/convertgraph.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {

namespace {

GraphConversion Convert(const std::string& text) {
    TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
    return ConvertGraph(sequence);
}

TEST(IgraphConvertGraphTest, GivesTheWholeCommand) {
    const GraphConversion conversion =
        Convert("IGRAPH /VIEWNAME='Bars' /CHARTLOOK='old.clo' /X1=VAR(a) /Y=VAR(b) /BAR.");
    EXPECT_EQ(conversion.failure, GraphFailure::kNone);
    EXPECT_EQ(conversion.ggraph,
              "GGRAPH\n"
              "  /GRAPHDATASET NAME=\"iGraphDataset\" VARIABLES=a b\n"
              "    MISSING=LISTWISE REPORTMISSING=NO\n"
              "  /GRAPHSPEC SOURCE=INLINE EDITABLE=YES LABEL='Bars'\n"
              "      TEMPLATE=[\"old.clo\"].\n"
              "BEGIN GPL\n"
              "  SOURCE: s=userSource(id(\"iGraphDataset\"))\n"
              "  DATA: a=col(source(s), name(\"a\"), unit.category())\n"
              "  DATA: b=col(source(s), name(\"b\"))\n"
              "  GUIDE: axis(dim(1), label(\"a\"))\n"
              "  GUIDE: axis(dim(2), label(\"Mean b\"))\n"
              "  SCALE: linear(dim(2), include(0))\n"
              "  ELEMENT: interval(position(summary.mean(a*b)), shape.interior(shape.square))\n"
              "END GPL.");
    EXPECT_EQ(conversion.reason, "");
}

TEST(IgraphConvertGraphTest, TellsWhyThereIsNone) {
    struct Case {
        const char* name;
        const char* command;
        GraphFailure failure;
        const char* reason;
    };
    const Case cases[] = {
        {"no such subcommand", "IGRAPH /LINES.", GraphFailure::kSyntaxNotValid, ""},
        {"another command", "LIST.", GraphFailure::kSyntaxNotValid, ""},
        {"nothing to draw", "IGRAPH /X1=VAR(a) /Y=VAR(b).", GraphFailure::kSyntaxNotValid, ""},
        {"no tokens", "", GraphFailure::kSyntaxNotValid, ""},
        {"not in GPL", "IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR /SPIKE.", GraphFailure::kNotExpressible,
         "spikes have no GPL equivalent"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const GraphConversion conversion = Convert(c.command);
        EXPECT_EQ(conversion.failure, c.failure);
        EXPECT_EQ(conversion.reason, c.reason);
        EXPECT_EQ(conversion.ggraph, "");
    }
}

TEST(IgraphConvertGraphTest, TheSameTokensGiveTheSameResult) {
    TAVQTokenSequence sequence(CodePage::Utf8(), "IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR(SUM) /LINE.",
                               false, 0);
    const GraphConversion first = ConvertGraph(sequence);
    EXPECT_NE(first.ggraph, "");
    sequence.SetNextIndex(0);
    EXPECT_EQ(ConvertGraph(sequence).ggraph, first.ggraph);
}

TEST(IgraphConvertGraphTest, KnowsTheWordsOfItsSubcommands) {
    for (const char* pWord : {"Y", "X1", "SCATTER", "SCA", "VIEWNAMES", "FITLINE"}) {
        EXPECT_TRUE(IsSubcommand(pWord)) << pWord;
    }
    for (const char* pWord : {"X3", "SC", "MIN", "y", "", "TYPE"}) {
        EXPECT_FALSE(IsSubcommand(pWord)) << pWord;
    }
}

TEST(IgraphConvertGraphTest, ChargesTheBudgetOfTheSequence) {
    TAVQTokenSequence sequence(CodePage::Utf8(), "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /SCATTER.",
                               false, 0);
    sequence.Budget().ChargeCopies(CommandBudget::kMaxCopies);
    EXPECT_THROW(static_cast<void>(ConvertGraph(sequence)), CommandTooLarge);
}

}  // namespace

}  // namespace quillet::igraph
