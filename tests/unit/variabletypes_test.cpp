#include "translator/variabletypes.h"

#include <gtest/gtest.h>

#include <string>

#include "conversionhelper.h"
#include "nodemaking.h"

namespace quillet {
namespace {

TEST(VariableTypesTest, MakesSetNames) {
    struct Case {
        const char* name;
        const char* setName;
    };
    const Case cases[] = {
        {"a", "$a"},
        {"q1", "$q1"},
        {"Brands1", "$Brands1"},
        {"Brands12", "$Brands1"},
        {"Brands123", "$Brands1"},
        {"$q1", "$q1"},
        {"$Brands12", "$Brands12"},
        {"$a_very_long_name_indeed", "$a_very_long_name_indeed"},
        // Cut to 8 bytes, but never inside a character.
        {"größen1", "$größe"},
        {"größen", "$größe"},
        {"größe", "$größe"},
        {"abcdefü", "$abcdef"},
        {"abcdeü", "$abcdeü"},
        {"브랜드", "$브랜"},
        {"브랜", "$브랜"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(MakeSetName(CodePage::Utf8(), c.name), c.setName);
    }
}

TEST(VariableTypesTest, CutsSetNamesInTheirCodePage) {
    EXPECT_EQ(MakeSetName(CodePage::Windows1252(), "abcdef\xC3\xBC"), "$abcdef\xC3");
    EXPECT_EQ(MakeSetName(CodePage::Utf8(), "abcdef\xC3\xBC"), "$abcdef");
}

class Types {
public:
    explicit Types(const std::string& globals)
        : m_parsed("TABLES " + globals + " /TABLE dummy"),
          m_types(CodePage::Utf8(), m_parsed.Globals()) {}

    [[nodiscard]] static NodeOwner Variable(const std::string& name) {
        ParsedCommand parsed("TABLES /TABLE " + name);
        // The command's own node ends with the command.
        const TAVQToken& token = *parsed.Table().GetChild(0)->GetToken();
        return MakeVarNameNode(TestArena(),
                               MakeToken(TokenCodes::kString, token.Text(true), token.Text(false)));
    }

    [[nodiscard]] VariableType Of(const std::string& name) const {
        return m_types.TypeOf(*Variable(name));
    }
    [[nodiscard]] const VariableTypes& Get() const { return m_types; }
    [[nodiscard]] const TbTrParseNode* Globals() const { return m_parsed.Globals(); }

private:
    ParsedCommand m_parsed;
    VariableTypes m_types;
};

TEST(VariableTypesTest, FindsTheDeclaringSubcommand) {
    const Types types(
        "/OBSERVATION Income age /MRGROUP q1 'label' m1 m2 /MDGROUP q2 d1 d2 (1) /FTOTAL t1 'x' t2 "
        "/PTOTAL p1 /FORMAT ZERO /BASE ALL");
    EXPECT_EQ(types.Of("income"), TB_OBSERVATION);
    EXPECT_EQ(types.Of("AGE"), TB_OBSERVATION);
    EXPECT_EQ(types.Of("q1"), TB_MRGROUP);
    EXPECT_EQ(types.Of("Q2"), TB_MDGROUP);
    EXPECT_EQ(types.Of("t1"), TB_FTOTAL);
    EXPECT_EQ(types.Of("t2"), TB_FTOTAL);
    EXPECT_EQ(types.Of("p1"), TB_PTOTAL);
    for (const char* ordinary : {"m1", "d2", "other", "incom", "incomes"}) {
        SCOPED_TRACE(ordinary);
        EXPECT_EQ(types.Of(ordinary), kNoNodeType);
    }
}

TEST(VariableTypesTest, TheFirstDeclarationDecides) {
    const Types types("/FTOTAL x y /OBSERVATION x z /MRGROUP z m1 m2 /PTOTAL y q /MDGROUP q d (1)");
    EXPECT_EQ(types.Of("x"), TB_FTOTAL);
    EXPECT_EQ(types.Of("y"), TB_FTOTAL);
    EXPECT_EQ(types.Of("z"), TB_OBSERVATION);
    EXPECT_EQ(types.Of("q"), TB_PTOTAL);
}

TEST(VariableTypesTest, FindsTheDeclaringNode) {
    const Types types("/BASE ALL /FTOTAL t1 'x' t2");
    const VariableTypes::Declaration* pDeclaration = types.Get().Find(*Types::Variable("T2"));
    ASSERT_NE(pDeclaration, nullptr);
    EXPECT_EQ(pDeclaration->pVariable, types.Globals()->GetChild(1)->GetChild(1));
    EXPECT_EQ(types.Get().Find(*Types::Variable("t3")), nullptr);
}

TEST(VariableTypesTest, NamesSetsAsSets) {
    const Types types("/MRGROUP BrandList m1 m2 /MDGROUP $own d1 (1) /OBSERVATION Longer_Than_8");
    struct Case {
        const char* name;
        const char* outputName;
        const char* outputKey;
    };
    const Case cases[] = {
        {"BrandList", "$BrandLi", "$BRANDLI"},
        {"brandlist", "$brandli", "$BRANDLI"},
        {"$own", "$own", "$OWN"},
        {"longer_than_8", "longer_than_8", "LONGER_THAN_8"},
        {"Ordinary_Name", "Ordinary_Name", "ORDINARY_NAME"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(types.Get().OutputName(*Types::Variable(c.name)), c.outputName);
        EXPECT_EQ(types.Get().OutputKey(*Types::Variable(c.name)), c.outputKey);
    }
}

TEST(VariableTypesTest, EmptySubcommandsAreSkipped) {
    ParsedCommand parsed("TABLES /OBSERVATION a b /MRGROUP g m /TABLE x");
    TbTrParseNode& globals = *parsed.Root().GetChild(0);
    globals.GetChild(0)->GetChild(0)->AddFirstChild(MakeNode(TestArena(), TBI_VARRANGE));
    while (globals.GetChild(1)->HasChildren()) globals.GetChild(1)->RemoveChild(0);
    globals.AddFirstChild(MakeNode(TestArena(), TB_OBSERVATION));
    const VariableTypes types(CodePage::Utf8(), &globals);
    EXPECT_EQ(types.TypeOf(*Types::Variable("b")), TB_OBSERVATION);
    EXPECT_EQ(types.TypeOf(*Types::Variable("g")), kNoNodeType);
}

TEST(VariableTypesTest, WithoutGlobalsAllVariablesAreOrdinary) {
    const VariableTypes types(CodePage::Utf8(), nullptr);
    EXPECT_EQ(types.TypeOf(*Types::Variable("a")), kNoNodeType);
}

TEST(VariableTypesTest, SortsTypesIntoSetsAndTotals) {
    for (const VariableType type : {TB_MRGROUP, TB_MDGROUP}) {
        EXPECT_TRUE(IsSet(type));
        EXPECT_FALSE(IsTotal(type));
    }
    for (const VariableType type : {TB_FTOTAL, TB_PTOTAL}) {
        EXPECT_FALSE(IsSet(type));
        EXPECT_TRUE(IsTotal(type));
    }
    for (const VariableType type : {TB_OBSERVATION, kNoNodeType}) {
        EXPECT_FALSE(IsSet(type));
        EXPECT_FALSE(IsTotal(type));
    }
}

}  // namespace
}  // namespace quillet
