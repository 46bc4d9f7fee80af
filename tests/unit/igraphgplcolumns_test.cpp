#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "igraph/gpl/gplcolumns.h"
#include "igraphtesting.h"

namespace quillet::igraph {

namespace {

TEST(IgraphGplColumnsTest, MakesIdentifiers) {
    struct Case {
        const char* name;
        const char* upperName;
        const char* identifier;
    };
    // One pool: earlier names are taken for the later ones.
    const Case cases[] = {
        {"score", "SCORE", "score"},
        {"Score", "SCORE", "Score_2"},
        {"SCORE", "SCORE", "SCORE_3"},
        {"score_4", "SCORE_4", "score_4"},
        {"sCore", "SCORE", "sCore_5"},
        {"level.mm", "LEVEL.MM", "level_mm"},
        {"level#mm", "LEVEL#MM", "level_mm_2"},
        {"a$b@c", "A$B@C", "a_b_c"},
        {"#scratch", "#SCRATCH", "v_scratch"},
        {"@1", "@1", "v_1"},
        {"1st", "1ST", "v_1st"},
        {"gr\xc3\xb6\xc3\x9f"
         "e",
         "GR\xc3\x96\xc3\x9f"
         "E",
         "gr\xc3\xb6\xc3\x9f"
         "e"},
        {"GR\xc3\x96\xc3\x9f"
         "E",
         "GR\xc3\x96\xc3\x9f"
         "E",
         "GR\xc3\x96\xc3\x9f"
         "E_2"},
        {"s", "S", "s_2"},
        {"S", "S", "S_3"},
        {"and", "AND", "and_2"},
        {"or", "OR", "or_2"},
        {"not", "NOT", "not_2"},
        {"True", "TRUE", "True_2"},
        {"false", "FALSE", "false_2"},
        {"", "", "v"},
    };
    IdentifierPool pool;
    for (const Case& c : cases) EXPECT_EQ(pool.Take(c.name, c.upperName).text, c.identifier);
}

TEST(IgraphGplColumnsTest, DeclaresEachUseOfAVariable) {
    struct Case {
        const char* name;
        const char* command;
        const char* usedNames;
        std::vector<std::string> data;
    };
    const Case cases[] = {
        {"a variable in two roles of one kind",
         "IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(A) /BAR.",
         "a b",
         {"a=col(source(s), name(\"a\"), unit.category())", "b=col(source(s), name(\"b\"))"}},
        {"a variable as category and as scale",
         "IGRAPH /X1=VAR(a) /Y=VAR(A) TYPE=SCALE /BAR.",
         "a",
         {"a=col(source(s), name(\"a\"), unit.category())", "a_2=col(source(s), name(\"a\"))"}},
        {"both columns stand together",
         "IGRAPH /X1=VAR(a) /PANEL VAR(p) /Y=VAR(a) /BAR.",
         "a p",
         {"a=col(source(s), name(\"a\"), unit.category())", "a_2=col(source(s), name(\"a\"))",
          "p=col(source(s), name(\"p\"), unit.category())"}},
        {"the suffix avoids other variables",
         "IGRAPH /X1=VAR(a) /Y=VAR(a) /COLOR=VAR(a_2) /BAR.",
         "a a_2",
         {"a=col(source(s), name(\"a\"), unit.category())", "a_2=col(source(s), name(\"a\"))",
          "a_2_2=col(source(s), name(\"a_2\"), unit.category())"}},
        {"the case number as categories",
         "IGRAPH /X1=$case /Y=VAR(casenum) /LINE.",
         "casenum",
         {"casenum=col(source(s), name(\"casenum\"))",
          "casenum_2=col(source(s), name(\"$CASENUM\"), unit.category())"}},
        {"the case number as a scale and as categories",
         "IGRAPH /X1=$case TYPE=SCALE /Y=$case /COLOR=VAR(c) /SCATTER.",
         "c",
         {"c=col(source(s), name(\"c\"), unit.category())",
          "casenum=col(source(s), name(\"$CASENUM\"))",
          "casenum_2=col(source(s), name(\"$CASENUM\"), unit.category())"}},
        {"the labels of boxes",
         "IGRAPH /X1=$case /Y=VAR(id) /BOX /BOX.",
         "id",
         {"id=col(source(s), name(\"id\"))",
          "casenum=col(source(s), name(\"$CASENUM\"), unit.category())",
          "id_2=col(source(s), name(\"$CASENUM\"), unit.category())"}},
        {"boxes with labels of their own",
         "IGRAPH /X1=VAR(x) /Y=VAR(y) /CASELABEL VAR(k) /BOX.",
         "x y k",
         {"x=col(source(s), name(\"x\"), unit.category())", "y=col(source(s), name(\"y\"))",
          "k=col(source(s), name(\"k\"), unit.category())"}},
        {"boxes whose labels are switched off",
         "IGRAPH /X1=VAR(x) /Y=VAR(y) /CASELABEL VAR(k) NONE /BOX.",
         "x y k",
         {"x=col(source(s), name(\"x\"), unit.category())", "y=col(source(s), name(\"y\"))",
          "k=col(source(s), name(\"k\"), unit.category())",
          "id=col(source(s), name(\"$CASENUM\"), unit.category())"}},
        {"labels without effect are listed",
         "IGRAPH /POINTLABEL VAR(p) /CASELABEL VAR(k) /X1=VAR(x) /Y=$count /BAR.",
         "p k x",
         {"p=col(source(s), name(\"p\"), unit.category())",
          "k=col(source(s), name(\"k\"), unit.category())",
          "x=col(source(s), name(\"x\"), unit.category())"}},
        {"names that are only referred to are not",
         "IGRAPH /CATORDER VAR(k) (DESCENDING) /SCALERANGE=VAR(r) MIN=1 /X1=VAR(x) /Y=$pct /BAR.",
         "x",
         {"x=col(source(s), name(\"x\"), unit.category())"}},
        {"of a subcommand given twice the last counts",
         "IGRAPH /X1=VAR(a) /Y=VAR(y) /X1=VAR(b) /BAR.",
         "y b",
         {"y=col(source(s), name(\"y\"))", "b=col(source(s), name(\"b\"), unit.category())"}},
        {"an odd name",
         "IGRAPH /X1=VAR(a.b) /Y=VAR(a@b) /BAR.",
         "a.b a@b",
         {"a_b=col(source(s), name(\"a.b\"), unit.category())",
          "a_b_2=col(source(s), name(\"a@b\"))"}},
        {"a pie's Y is a scale",
         "IGRAPH /Y=VAR(y) TYPE=CATEGORICAL /COLOR=VAR(c) /PIE.",
         "y c",
         {"y=col(source(s), name(\"y\"))", "c=col(source(s), name(\"c\"), unit.category())"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const IgraphResult result = ConvertIgraphText(c.command);
        EXPECT_EQ(result.usedNames, c.usedNames);
        EXPECT_EQ(result.Lines("DATA"), c.data);
    }
}

TEST(IgraphGplColumnsTest, ComputedVariablesGetNamesOfTheirOwn) {
    const IgraphResult result = ConvertIgraphText(
        "IGRAPH /X1=VAR(y_t1) /Y=VAR(y) /BAR(SUMSQ) /BAR(SUMAV) /BAR(MEAN) /BAR(NGT 3).");
    EXPECT_EQ(
        result.Lines("TRANS"),
        (std::vector<std::string>{"y_t1_2=eval(y*y)", "y_t2=eval(abs(y))", "y_t3=eval(y > 3)"}));
}

}  // namespace

}  // namespace quillet::igraph
