#include "translator/term.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "conversionhelper.h"
#include "translator/treeediting.h"

namespace quillet {
namespace {

// A nesting of variables, with s1 and s2 scale variables, m1 and m2 sets, all others ordinary.
class TermOf {
public:
    explicit TermOf(const std::string& nesting)
        : m_parsed("TABLES /OBSERVATION s1 s2 /MRGROUP m1 x y /MDGROUP m2 x y (1) /TABLE " +
                   nesting),
          m_term(LeavesOf(*m_parsed.Table().GetChild(0)),
                 VariableTypes(CodePage::Utf8(), m_parsed.Globals())) {}

    [[nodiscard]] const Term& operator*() const { return m_term; }
    [[nodiscard]] const Term* operator->() const { return &m_term; }

private:
    ParsedCommand m_parsed;
    Term m_term;
};

TEST(TermTest, FindsTheMagnetVariable) {
    struct Case {
        const char* nesting;
        const char* magnet;
        std::size_t index;
    };
    const Case cases[] = {
        {"a", "A", 0},        {"s1", "S1", 0},          {"m1", "M1", 0},
        {"a > b", "B", 1},    {"a > b > c", "C", 2},    {"s1 > a", "S1", 0},
        {"a > s1", "S1", 1},  {"s1 > a > b", "S1", 0},  {"s1 > s2 > a", "S2", 1},
        {"m1 > a", "M1", 0},  {"a > m2", "M2", 1},      {"m1 > m2 > a", "M2", 1},
        {"m1 > s1", "S1", 1}, {"s1 > m1 > a", "S1", 0}, {"m2 > a > s2 > b > m1", "S2", 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.nesting);
        const TermOf term(c.nesting);
        EXPECT_EQ(term->Magnet().name, c.magnet);
        EXPECT_EQ(term->MagnetIndex(), c.index);
    }
}

TEST(TermTest, KnowsWhatItHas) {
    struct Case {
        const char* nesting;
        bool hasSet;
        bool hasScale;
    };
    const Case cases[] = {
        {"a", false, false}, {"m1", true, false},         {"m2 > a", true, false},
        {"s1", false, true}, {"a > s1 > b", false, true}, {"s1 > m1", true, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.nesting);
        const TermOf term(c.nesting);
        EXPECT_EQ(term->HasSet(), c.hasSet);
        EXPECT_EQ(term->HasScale(), c.hasScale);
    }
}

TEST(TermTest, HasItsVariablesOutermostFirst) {
    const TermOf term("a > m1 > s1 > A");
    ASSERT_EQ(term->Variables().size(), 4u);
    EXPECT_EQ(term->Variables()[0].name, "A");
    EXPECT_EQ(term->Variables()[0].type, kNoNodeType);
    EXPECT_EQ(term->Variables()[1].type, TB_MRGROUP);
    EXPECT_EQ(term->Variables()[2].type, TB_OBSERVATION);
    EXPECT_EQ(term->Names(), std::vector<std::string_view>({"A", "M1", "S1"}));
}

TEST(TermTest, FindsNamesInTheShorterOfTwoLists) {
    const TermOf term("a > b > c");
    EXPECT_TRUE(term->HasAnyOf({"C"}));
    EXPECT_TRUE(term->HasAnyOf({"V", "W", "X", "Y", "B"}));
    EXPECT_FALSE(term->HasAnyOf({"X"}));
    EXPECT_FALSE(term->HasAnyOf({"V", "W", "X", "Y", "Z"}));
    EXPECT_FALSE(term->HasAnyOf({}));
}

}  // namespace
}  // namespace quillet
