#include "igraph/read/igraphparser.h"

#include <gtest/gtest.h>

#include "platform/codepage.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {

namespace {

TEST(IgraphParserTest, AParserForgetsTheCommandBefore) {
    parser igraphParser(nullptr, nullptr);
    EXPECT_FALSE(igraphParser.CompleteAndValidateSyntax());  // nothing has been parsed
    TAVQTokenSequence first(CodePage::Utf8(), "IGRAPH /TITLE='t' /X1=VAR(a) /Y=VAR(b) /BAR.", false,
                            0);
    ASSERT_TRUE(igraphParser.Parse(first));
    ASSERT_TRUE(igraphParser.CompleteAndValidateSyntax());
    TAVQTokenSequence second(CodePage::Utf8(), "IGRAPH /X1=VAR(c) /Y=VAR(d) /LINE.", false, 0);
    ASSERT_TRUE(igraphParser.Parse(second));
    ASSERT_TRUE(igraphParser.CompleteAndValidateSyntax());
    EXPECT_EQ(igraphParser.GetSettings().getUsedVarName(), "c d");
    EXPECT_EQ(igraphParser.GetSettings().Command().title, "");
    TAVQTokenSequence bad(CodePage::Utf8(), "IGRAPH /LINES.", false, 0);
    EXPECT_FALSE(igraphParser.Parse(bad));
    EXPECT_FALSE(igraphParser.CompleteAndValidateSyntax());
}

TEST(IgraphParserTest, ReadsFromWhereTheSequenceIsSet) {
    TAVQTokenSequence sequence(CodePage::Utf8(), "IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR.", false, 0);
    while (sequence.Next()) {
    }
    parser igraphParser(nullptr, nullptr);
    EXPECT_FALSE(igraphParser.Parse(sequence));
    EXPECT_EQ(igraphParser.LastSyntaxFault(), SyntaxFault::kNotIgraph);
    sequence.SetNextIndex(0);
    EXPECT_TRUE(igraphParser.Parse(sequence));
}

TEST(IgraphParserTest, KeepsNothingOfTheSequence) {
    parser igraphParser(nullptr, nullptr);
    {
        TAVQTokenSequence sequence(CodePage::Utf8(),
                                   "IGRAPH /TITLE='title' /X1=VAR(first) /Y=VAR(second) /BAR.",
                                   false, 0);
        ASSERT_TRUE(igraphParser.Parse(sequence));
    }
    ASSERT_TRUE(igraphParser.CompleteAndValidateSyntax());
    EXPECT_EQ(igraphParser.GetSettings().getUsedVarName(), "first second");
    EXPECT_EQ(igraphParser.GetSettings().Command().title, "title");
}

TEST(IgraphParserTest, ReadsOtherCodePages) {
    TAVQTokenSequence sequence(CodePage::Windows1252(),
                               "IGRAPH /X1=VAR(gr\xf6sse) /Y=VAR(GR\xd6SSE) /BAR.", false, 0);
    parser igraphParser(nullptr, nullptr);
    ASSERT_TRUE(igraphParser.Parse(sequence));
    ASSERT_TRUE(igraphParser.CompleteAndValidateSyntax());
    EXPECT_EQ(igraphParser.GetSettings().getUsedVarName(), "gr\xf6sse");
}

}  // namespace

}  // namespace quillet::igraph
