// How the work on an IGRAPH command grows with what it has many of.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "igraph/gpl/expressibility.h"
#include "igraph/gpl/gplcolumns.h"
#include "igraph/gpl/gplgenerator.h"
#include "igraph/gpl/layout.h"
#include "igraph/model/keyword.h"
#include "igraph/model/variableroles.h"
#include "igraph/read/commandreader.h"
#include "igraph/read/completion.h"
#include "igraph/read/igraphparser.h"
#include "platform/codepage.h"
#include "support/repetition.h"
#include "support/work.h"
#include "tokenizer/tavqtokensequence.h"

namespace quillet::igraph {
namespace {

TEST(IgraphWorkTest, ReadingIsLinear) {
    for (const char* piece :
         {" /BAR(SUMSQ)", " /LINE STYLE=NONE", " /PANEL p", " /CATORDER VAR(a) (SUM DESCENDING)",
          " /SCALERANGE b MAX=3", " /CHARTLOOK='x'", " /", " /BOX", " /TITLE='a'", " /FORMAT ( ( (",
          " /POINTLABEL v ALL", " /REFLINE b 3", " /FITLINE", " /SCATTER"}) {
        SCOPED_TRACE(piece);
        ExpectLinearWork(2000, [&](int count) {
            const std::string text = "IGRAPH /X1=VAR(a) /Y=VAR(b)" + Repeat(piece, count);
            TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
            IgraphCommand command;
            EXPECT_EQ(ReadCommand(sequence, command), SyntaxFault::kNone);
        });
    }
}

TEST(IgraphWorkTest, CompletionIsLinear) {
    ExpectLinearWork(5000, [](int count) {
        IgraphCommand command;
        command.y.variable.source = VariableReference::Source::kVariable;
        command.y.variable.key = command.y.variable.name = "Y";
        for (int i = 0; i < count; ++i) {
            command.panels.push_back(command.y.variable);
            command.panels.back().key = command.panels.back().name = "P" + std::to_string(i);
            command.scaleRanges.emplace_back().variable = command.y.variable;
            command.categoryOrders.emplace_back().variable = command.y.variable;
            command.referenceLines.emplace_back().variable = command.y.variable;
            command.elements.emplace_back().kind =
                i % 2 == 0 ? ChartElement::Kind::kBar : ChartElement::Kind::kBox;
            command.fitLines.emplace_back().method = Keyword::kNone;
        }
        std::vector<VariableRole> roles;
        EXPECT_EQ(CompleteCommand(command, roles), ValidityFault::kNone);
    });
}

TEST(IgraphWorkTest, TheSearchForObstaclesIsLinear) {
    ExpectLinearWork(20000, [](int count) {
        IgraphCommand command;
        command.coordinates = Coordinates::kVertical;
        command.y.variable.source = VariableReference::Source::kVariable;
        command.y.variable.key = command.y.variable.name = "Y";
        command.y.level = MeasurementLevel::kScale;
        for (int i = 0; i < count; ++i) {
            command.referenceLines.emplace_back().variable = command.y.variable;
            command.elements.emplace_back().kind =
                i < count / 2 ? ChartElement::Kind::kBar : ChartElement::Kind::kBox;
            command.fitLines.emplace_back().method = Keyword::kNone;
        }
        EXPECT_EQ(FindObstacle(command, LayoutOf(command), "Y"), "");
    });
}

TEST(IgraphWorkTest, NamingColumnsIsLinear) {
    ExpectLinearWork(20000, [](int count) {
        IdentifierPool pool;
        for (int i = 0; i < count; ++i) {
            // Half of the names take what the suffixes of the others would be.
            (void)pool.Take("a_" + std::to_string(i), "A_" + std::to_string(i));
            (void)pool.Take("a", "A");
        }
    });
}

TEST(IgraphWorkTest, WritingTheProgramIsLinear) {
    const std::string text =
        "IGRAPH /X1=VAR(a) /Y=VAR(b) /PANEL p q /BAR(NGT 1) LABEL VAL /BOX "
        "/LINE STYLE=NONE /LINE(SUM) /REFLINE b 3";
    TAVQTokenSequence sequence(CodePage::Utf8(), text, false, 0);
    parser igraphParser(nullptr, nullptr);
    ASSERT_TRUE(igraphParser.Parse(sequence));
    ASSERT_TRUE(igraphParser.CompleteAndValidateSyntax());
    const IgraphCommand command = igraphParser.GetSettings().Command();
    ExpectLinearWork(500, [&command](int count) {
        iGraphSpec spec;
        spec.Command() = command;
        for (const ChartElement& element : command.elements) {
            spec.Command().elements.insert(spec.Command().elements.end(),
                                           static_cast<std::size_t>(count), element);
        }
        for (int i = 0; i < count; ++i) {
            spec.Command().referenceLines.push_back(command.referenceLines.front());
        }
        spec.Command().title.assign(static_cast<std::size_t>(count) * 100, '"');
        spec.SetComplete(VariableRoles(spec.Command()));
        EXPECT_NE(gplGenerator(spec, nullptr, nullptr).getGPL(), "");
    });
}

}  // namespace
}  // namespace quillet::igraph
