// How the work on calls of macros grows with the text.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "quillet.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"

namespace quillet {
namespace {

class NobodyListens final : public ConversionListener, public ExpansionListener, public TextOutput {
public:
    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view /*line*/) override {}
    void OnExpandedCommand(const ExpandedCommand& /*command*/) override { ++m_expansions; }
    bool Write(std::string_view /*bytes*/) override { return true; }
    [[nodiscard]] long Expansions() const { return m_expansions; }

private:
    long m_expansions = 0;
};

// A text that grows by its repeated part.
struct MacroGrowth {
    const char* name;
    std::string before;
    std::string part;
    std::string after;
    bool hasExpansions;
};

class ExpandedConversionWorkTest : public testing::TestWithParam<MacroGrowth> {
protected:
    [[nodiscard]] static std::string TextOf(int count) {
        const MacroGrowth& c = GetParam();
        return c.before + Repeat(c.part, count) + c.after;
    }
};

TEST_P(ExpandedConversionWorkTest, IsLinear) {
    ExpectLinearWork(200, [](int count) {
        const std::string text = TextOf(count);
        const MacroExpansion expansion = ExpandMacros(text, {});
        NobodyListens nobody;
        LegacyFindings found;
        static_cast<void>(ConvertExpanded(text, {nobody, nobody, nobody}, expansion, {}, found));
        EXPECT_EQ(nobody.Expansions() > 0, GetParam().hasExpansions);
    });
}

TEST_P(ExpandedConversionWorkTest, IsLinearForAReport) {
    ExpectLinearWork(200, [](int count) {
        const std::string text = TextOf(count);
        NobodyListens nobody;
        ConvertExpansions(text, ExpandMacros(text, {}), {}, nobody);
    });
}

const std::string kTab = "DEFINE !tab (x=!TOKENS(1))\nTABLES /TABLE=!x.\nLIST !x.\n!ENDDEFINE.\n";

const MacroGrowth kMacroGrowths[] = {
    {"calls", kTab, "!tab x=a.\n", "", true},
    {"calls between commands", kTab, "!tab x=a.\nTABLES /TABLE=a.\nLIST.\n", "", true},
    {"calls that fail", kTab, "!tab x=(.\n", "", true},
    {"calls that are left", "DEFINE !t (x=!ENCLOSE('(',')'))\nTABLES /TABLE=!x.\n!ENDDEFINE.\n",
     "!t x=a.\n", "!t x=(a).\n", true},
    {"calls that become no syntax",
     "DEFINE !t (x=!TOKENS(1))\nTABLES /TITLE=!UNQUOTE(!x).\n"
     "!ENDDEFINE.\n",
     "!t x='''a'.\n", "", true},
    {"calls in one command", "DEFINE @a () a !ENDDEFINE.\nTABLES /TABLE=a", " + @a", ".\n", true},
    {"calls without legacy commands", "DEFINE !t () LIST. !ENDDEFINE.\n", "!t.\n", "", false},
    {"calls after a stop", kTab + "LIST 'a.\n", "!tab x=a.\n", "", false},
    {"definitions", "", kTab, "!tab x=a.\n", true},
    {"definitions on one line", "", "DEFINE !t () TABLES /TABLE=a. !ENDDEFINE. ", "!t.\n", true},
    {"definitions with calls", "", kTab + "!tab x=a.\n", "", true},
    {"commands of one body", "DEFINE !t ()\n", "TABLES /TABLE=a.\n", "!ENDDEFINE.\n!t.\n", true},
    {"comments before a call", kTab, "/* a */ ", "!tab x=a.\n", true},
    {"comments after a call", kTab + "!tab x=a.", " /* a */", "\n", true},
    {"macros in macros", kTab + "DEFINE !o ()\n", "!tab x=a.\n", "!ENDDEFINE.\n!o.\n", true},
};

INSTANTIATE_TEST_SUITE_P(Rows, ExpandedConversionWorkTest, testing::ValuesIn(kMacroGrowths),
                         NameOfRow<MacroGrowth>);

}  // namespace
}  // namespace quillet
