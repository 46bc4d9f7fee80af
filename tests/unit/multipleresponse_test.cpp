#include "translator/multipleresponse.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "conversionhelper.h"
#include "nodemaking.h"

namespace quillet {
namespace {

std::string SetsCommand(const std::string& globals, std::size_t width = 80) {
    ParsedCommand parsed("TABLES " + globals + " /TABLE a");
    if (!parsed.Parsed()) return "<not parsed>";
    OutputSequence out;
    if (!WriteSetsCommand(CodePage::Utf8(), parsed.Root(), out)) return "<failed>";
    return out.Format(width, 2);
}

TEST(MultipleResponseTest, DefinesGroupsAsSets) {
    struct Case {
        const char* name;
        const char* globals;
        const char* expected;
    };
    const Case cases[] = {
        {"no groups", "/BASE ALL /OBSERVATION x", ""},
        {"a category group", "/MRGROUP q1 a b c TO f",
         "MRSETS\n  /MCGROUP NAME=$q1 VARIABLES=a b c TO f"},
        {"with a label", "/MRGROUP q1 'It''s' a b",
         "MRSETS\n  /MCGROUP NAME=$q1 LABEL='It''s'  VARIABLES=a b"},
        {"with a label in double quotes", "/MRGROUP q1 \"Q\"a",
         "MRSETS\n  /MCGROUP NAME=$q1 LABEL=\"Q\" VARIABLES=a"},
        {"a dichotomy group", "/MDGROUP q2 a b (1)",
         "MRSETS\n  /MDGROUP NAME=$q2 VARIABLES=a b VALUE=1"},
        {"a counted text", "/MDGROUP q2 a ('yes')",
         "MRSETS\n  /MDGROUP NAME=$q2 VARIABLES=a VALUE='yes'"},
        {"a counted number with a sign", "/MDGROUP q2 'L'a b(-1.50)",
         "MRSETS\n  /MDGROUP NAME=$q2 LABEL='L' VARIABLES=a b VALUE=-1.50"},
        {"a name that is a set name already", "/MRGROUP $BrandsBought a b",
         "MRSETS\n  /MCGROUP NAME=$BrandsBought VARIABLES=a b"},
        {"a name too long for a set", "/MRGROUP BrandsBought a b",
         "MRSETS\n  /MCGROUP NAME=$BrandsB VARIABLES=a b"},
        {"spelling is kept", "/MRGROUP mIxEd Ab TO cD Ef",
         "MRSETS\n  /MCGROUP NAME=$mIxEd VARIABLES=Ab TO cD Ef"},
        {"in the order of the command", "/MDGROUP z a (1) /BASE ALL /MRGROUP b c /MDGROUP a d (2)",
         "MRSETS\n  /MDGROUP NAME=$z VARIABLES=a VALUE=1\n  /MCGROUP NAME=$b VARIABLES=c\n"
         "  /MDGROUP NAME=$a VARIABLES=d VALUE=2"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(SetsCommand(c.globals), c.expected);
    }
}

TEST(MultipleResponseTest, BreaksLinesBetweenItems) {
    EXPECT_EQ(SetsCommand("/MDGROUP q1 'Label'a b TO c d(1)", 3),
              "MRSETS\n  /MDGROUP\n  NAME=\n  $q1\n  LABEL=\n  'Label'\n  VARIABLES=\n  a\n"
              "  b TO c\n  d\n  VALUE=\n  1");
}

TEST(MultipleResponseTest, WithoutGlobalsThereIsNothingToWrite) {
    const NodeOwner root = MakeNode(TestArena(), TBI_GENERICLIST);
    root->AddChild(MakeNode(TestArena(), TBI_GENERICLIST));
    OutputSequence out;
    EXPECT_TRUE(WriteSetsCommand(CodePage::Utf8(), *root, out));
    EXPECT_TRUE(out.IsEmpty());
}

TEST(MultipleResponseTest, OtherSubcommandsAreSkipped) {
    ParsedCommand parsed("TABLES /BASE /MRGROUP g a /GBASE /TABLE x");
    OutputSequence out;
    EXPECT_TRUE(WriteSetsCommand(CodePage::Utf8(), parsed.Root(), out));
    EXPECT_EQ(out.Format(80, 2), "MRSETS\n  /MCGROUP NAME=$g VARIABLES=a");
}

// Breaks one thing in the tree of a good command at a time.
TEST(MultipleResponseTest, AssertsTheShapeOfTheTree) {
    struct Case {
        const char* globals;
        void (*damage)(TbTrParseNode& root);
        const char* assertion;
    };
    const Case cases[] = {
        {"", [](TbTrParseNode& root) { root.SetNodeType(TBI_VARLIST); },
         "pTree->GetNodeType() == TBI_GENERICLIST"},
        {"",
         [](TbTrParseNode& root) {
             while (root.GetChildCount() > 0) root.RemoveChild(0);
         },
         "pTree->GetChildCount() > 0"},
        {"", [](TbTrParseNode& root) { root.GetChild(0)->SetNodeType(TBI_VARLIST); },
         "pGlobalSubcommandList->GetNodeType() == TBI_GENERICLIST"},
        {"/MRGROUP q a", [](TbTrParseNode& root) { root.GetChild(0)->GetChild(0)->RemoveChild(1); },
         "pMRGroup->GetChildCount() == 2"},
        {"/MRGROUP q a",
         [](TbTrParseNode& root) { root.GetChild(0)->GetChild(0)->AddChild(MakeVariable("x")); },
         "pMRGroup->GetChildCount() == 2"},
        {"/MDGROUP q a (1)",
         [](TbTrParseNode& root) { root.GetChild(0)->GetChild(0)->AddChild(MakeVariable("x")); },
         "pMDGroup->GetChildCount() == 3"},
        {"/MDGROUP q a (1)",
         [](TbTrParseNode& root) {
             root.GetChild(0)->GetChild(0)->GetChild(2)->SetNodeType(SP_VARNAME);
         },
         "pLastChild != 0 && (pLastChild->GetNodeType() == SP_SLITERAL || "
         "pLastChild->GetNodeType() == SP_NUMBER)"},
        {"/MRGROUP q a",
         [](TbTrParseNode& root) {
             root.GetChild(0)->GetChild(0)->GetChild(0)->SetNodeType(SP_NUMBER);
         },
         "pMGroup->GetChild(0)->GetNodeType() == SP_VARNAME"},
        {"/MRGROUP q a",
         [](TbTrParseNode& root) {
             root.GetChild(0)->GetChild(0)->GetChild(1)->SetNodeType(TBI_GENERICLIST);
         },
         "pVarlistNode->GetNodeType() == TBI_VARLIST"},
        {"/MRGROUP q 'l' a",
         [](TbTrParseNode& root) {
             root.GetChild(0)->GetChild(0)->GetChild(0)->GetChild(0)->SetNodeType(SP_NUMBER);
         },
         "pLabel->GetNodeType() == SP_SLITERAL"},
        {"/MRGROUP q a",
         [](TbTrParseNode& root) {
             root.GetChild(0)->GetChild(0)->GetChild(1)->GetChild(0)->SetNodeType(SP_NUMBER);
         },
         "pChild->GetNodeType() == SP_VARNAME || pChild->GetNodeType() == TBI_VARRANGE"},
        {"/MRGROUP q a TO b",
         [](TbTrParseNode& root) {
             root.GetChild(0)->GetChild(0)->GetChild(1)->GetChild(0)->RemoveChild(0);
         },
         "pChild->GetChildCount() > 1"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.assertion);
        const AssertionRecorder assertions;
        ParsedCommand parsed(std::string("TABLES ") + c.globals + " /TABLE a");
        ASSERT_TRUE(parsed.Parsed());
        c.damage(parsed.Root());
        OutputSequence out;
        EXPECT_FALSE(WriteSetsCommand(CodePage::Utf8(), parsed.Root(), out));
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>({c.assertion}));
    }
}

}  // namespace
}  // namespace quillet
