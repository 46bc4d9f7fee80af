#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "driver/hinttexts.h"
#include "driver/reasons.h"
#include "quillet.h"

namespace quillet {
namespace {

// Asks for a hint for each command that was not converted.
class HintListener final : public ConversionListener, public TextOutput {
public:
    explicit HintListener(HintOptions options) : m_options(std::move(options)) {}

    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view /*line*/) override {}
    void OnEncoding(TextEncoding encoding) override { m_options.encoding = encoding; }
    void OnCommand(const CommandReport& report) override {
        const std::string hint = HintFor(report, m_options);
        if (!hint.empty()) hints.push_back(hint);
    }
    bool Write(std::string_view /*bytes*/) override { return true; }

    std::vector<std::string> hints;

private:
    HintOptions m_options;
};

// Reads a text that outlives it.
class HintInput final : public TextInput {
public:
    explicit HintInput(std::string_view text) : m_text(text) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = m_text.copy(buffer, size, m_position);
        m_position += count;
        return count;
    }
    bool Rewind() override {
        m_position = 0;
        return true;
    }
    [[nodiscard]] bool Failed() const override { return false; }

private:
    std::string_view m_text;
    std::size_t m_position = 0;
};

std::vector<std::string> HintsOn(const std::string& text, long commandsAfter = -1) {
    const Options options;
    HintOptions hints;
    hints.macroNames = FindMacroNames(text, options);
    hints.commandsAfter = commandsAfter;
    HintListener listener(hints);
    HintInput input(text);
    static_cast<void>(ConvertStream(input, listener, listener, options));
    return listener.hints;
}

struct HintCase {
    const char* name;
    std::string text;
    std::string hint;  // of its one command that is not converted
};

void PrintTo(const HintCase& hintCase, std::ostream* pStream) { *pStream << hintCase.name; }

class HintTest : public testing::TestWithParam<HintCase> {};

TEST_P(HintTest, SaysWhatToChange) {
    const std::vector<std::string> expected = {GetParam().hint};
    EXPECT_EQ(HintsOn(GetParam().text), expected);
    EXPECT_EQ(HintsOn(GetParam().text), expected);
}

std::string AdviceText(ErrorKind kind) { return std::string(AdviceOn(kind)); }

const HintCase kTotalsHints[] = {
    {"before a scale", "TABLES /PTOTAL=t2 /OBSERVATION=b1r /TABLE=t2 + b1r + b1.",
     "`t2` stands before the scale variable `b1r`; the next categorical one is `b1`: write "
     "`t2 + b1 + b1r` (the row of `t2` then stands before `b1`)"},
    {"after a scale", "TABLES /FTOTAL=t /OBSERVATION=x y /TABLE=r BY a + x + y + t.",
     "`t` stands after the scale variable `y`; the next categorical one is `a`: write "
     "`x + y + a + t` (the row of `t` then stands after `a`)"},
    {"a nesting has its outermost variable's totals",
     "TABLES /PTOTAL=t /OBSERVATION=x /TABLE=t + x + a > b.",
     "`t` stands before the scale variable `x`; the next categorical one is `a`: write "
     "`t + a > b + x` (the row of `t` then stands before `a`)"},
    {"no categorical one",
     "TABLES /FTOTAL=total /OBSERVATION=income /TABLE=region BY income + total.",
     "`total` stands after the scale variable `income`; there is no categorical variable that "
     "could "
     "carry `total`"},
    {"a categorical one on the other side only",
     "TABLES /PTOTAL=t /OBSERVATION=x /TABLE=a + t + x.",
     "`t` stands before the scale variable `x`; there is no categorical variable that could carry "
     "`t`"},
    {"parentheses between", "TABLES /PTOTAL=t /OBSERVATION=x /TABLE=t + x + (a + b) > c.",
     AdviceText(ErrorKind::kTotalBesideScale)},
    {"nested", "TABLES /FTOTAL=total /TABLE=region > total BY sex.",
     "`total` is nested: stack it with the variable that it totals, as in `region + total`"},
    {"follows nothing", "TABLES /FTOTAL=total /TABLE=total + region.",
     "`total` is declared on FTOTAL, but nothing stands before it: write it after the variable "
     "that "
     "it totals, or declare it on PTOTAL"},
    {"precedes nothing", "TABLES /PTOTAL=total /TABLE=region + total.",
     "`total` is declared on PTOTAL, but nothing stands after it: write it before the variable "
     "that "
     "it totals, or declare it on FTOTAL"},
    {"misplaced", "TABLES /OBSERVATION=income age /FTOTAL=total /TABLE=income > age + total.",
     "the total would go to `age`, which has no totals: put it beside the categorical variable "
     "that "
     "it totals"},
};

INSTANTIATE_TEST_SUITE_P(Totals, HintTest, testing::ValuesIn(kTotalsHints));

const HintCase kSubcommandsHints[] = {
    {"foreign words in FORMAT", "TABLES /FORMAT=ZERO CWIDTH(10,8) NBOX /TABLE=a.",
     "take CWIDTH, NBOX out of FORMAT; ZERO may stay"},
    {"settings of MISSING are none", "TABLES /FORMAT=BLANK MISSING('-') CWIDTH(8) /TABLE=a.",
     "take CWIDTH out of FORMAT; BLANK, MISSING may stay"},
    {"a set without its value", "TABLES /MDGROUP=m tv radio /TABLE=m.",
     "add the value that is counted, as in `(1)`, after the variables of `m`"},
    {"a set with a value that is none", "TABLES /MDGROUP=m tv (x) /TABLE=m.",
     "correct the MDGROUP subcommand in line 1: it is not understood at `x`"},
    {"a setting that there is not", "TABLES /AUTOLABEL=YES /TABLE=region.",
     "AUTOLABEL takes ON, OFF or DEFAULT, not `YES`"},
    {"an expression that breaks off", "TABLES /TABLE=a + b BY.",
     "correct the TABLE subcommand in line 1: something is missing at its end, after `BY`"},
    {"TO on OBSERVATION", "TABLES /OBSERVATION=income TO age /TABLE=income.",
     "list the variables from `income` to `age` one by one on OBSERVATION: the data alone tell "
     "which "
     "ones stand between the two"},
    {"an unknown function", "TABLES /TABLE=a /STATISTICS=AVERAGE(a).",
     "`AVERAGE` is no function; nearest to it: MEAN"},
    {"a misspelled function", "TABLES /TABLE=a /STATISTICS=CUONT(a).",
     "`CUONT` is no function; nearest to it: COUNT, CPCT and CSPCT"},
    {"an unknown function for sorting", "TABLES /TABLE=a /SORT=a (AVERAGE).",
     "`AVERAGE` is no function; nearest to it: MEAN"},
};

INSTANTIATE_TEST_SUITE_P(Subcommands, HintTest, testing::ValuesIn(kSubcommandsHints));

const HintCase kCommandsHints[] = {
    {"a blank line runs through it", "TABLES /TABLE=a BY b\n\nFREQUENCIES x.",
     "no period before line 3?"},
    {"a blank line after the mistake", "TABLES /TABLE=a b\n\n  /TITLE='x'.",
     "write `+`, `>` or `BY` between `a` and `b`"},
    {"two variables", "TABLES /TABLE=a b.", "write `+`, `>` or `BY` between `a` and `b`"},
    {"no table", "TABLES /FTOTAL=t.",
     "the command has no TABLE subcommand: add one, or take the command out"},
    {"a break of variables", "TABLES /BREAK=region /TABLE=sex BY agegroup.",
     "write the variables of BREAK, `region`, into the TABLE subcommands instead"},
    {"a global subcommand after a table", "TABLES /TABLE=sex /FTOTAL=t.",
     "FTOTAL is about the whole command: write it before the first TABLE subcommand"},
    {"a local subcommand before a table", "TABLES /STATISTICS=COUNT(a) /TABLE=a.",
     "STATISTICS is about one table: write it after a TABLE subcommand"},
    {"nothing on a subcommand", "TABLES /BOXCHARS /TABLE=a.",
     "nothing stands on BOXCHARS: take it out"},
    {"anything else", "TABLES /TABLE=a BY b BY c BY d.",
     "correct the command in line 1: it is not understood at `BY`"},
    {"a marker in two dimensions", "TABLES /TABLE=(STATISTICS) BY (STATISTICS).",
     "`(STATISTICS)` stands in two dimensions: leave one of them out"},
};

INSTANTIATE_TEST_SUITE_P(Commands, HintTest, testing::ValuesIn(kCommandsHints));

const HintCase kMacrosHints[] = {
    {"a word with an exclamation mark", "TABLES /TABLE=!x BY a.",
     "`!x` is filled in by a macro: see macros"},
    {"before the first subcommand", "TABLES !opts /TABLE=a.",
     "`!opts` is filled in by a macro: see macros"},
    {"among the settings", "TABLES /FORMAT=ZERO !fmt /TABLE=a.",
     "`!fmt` is filled in by a macro: see macros"},
    {"a name that the file defines",
     "DEFINE banner () sex + age !ENDDEFINE.\nTABLES /TABLE=banner b.",
     "`banner` is filled in by a macro: see macros"},
    {"the same name without a definition", "TABLES /TABLE=banner b.",
     "write `+`, `>` or `BY` between `banner` and `b`"},
    {"after the mistake", "TABLES /TABLE=a b /TITLE=!x.",
     "write `+`, `>` or `BY` between `a` and `b`"},
    {"in a graph", "IGRAPH /X1=VAR(!x) /FOO.", "`!x` is filled in by a macro: see macros"},
};

INSTANTIATE_TEST_SUITE_P(Macros, HintTest, testing::ValuesIn(kMacrosHints));

const HintCase kUnreadableHints[] = {
    {"a literal without an end", "EXECUTE.\nTABLES /TABLE=a BY b /TITLE='Income of region.\n",
     "the literal `'Income of region.` in line 2 is not closed: probably an apostrophe is missing "
     "after `'Income of region`"},
    {"before a subcommand", "TABLES /TITLE=\"Income /TABLE=a.\n",
     "the literal `\"Income /TABLE=a.` in line 1 is not closed: probably a quotation mark is "
     "missing "
     "after `\"Income`"},
    {"an apostrophe in a literal", "TABLES /TABLE=a BY b\n  /TITLE='it's here' /TABLE=c.\n",
     "line 2: an apostrophe inside a literal is written twice, as in `it''s`"},
    {"a number without its exponent", "TABLES /TABLE=a BY 1E b.\n",
     "write the digits of the exponent after `1E` in line 1; if it is a name, let it begin with a "
     "letter"},
    {"a character", "TABLES\n /TABLE=a BY b ` c\n",
     "take ``` out of line 2, or put it into quotes; often such a character has come from a word "
     "processor"},
};

INSTANTIATE_TEST_SUITE_P(Unreadable, HintTest, testing::ValuesIn(kUnreadableHints));

// Each of them has an obstacle of another kind.
const HintCase kChartsHints[] = {
    {"spikes", "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /SPIKE X1.",
     "take `SPIKE` out and the chart is drawn without spikes; of `FITLINE` and `REFLINE`, "
     "`SPIKE=ON`"},
    {"three axes", "IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /BOX.",
     "take `X2` and `COORDINATE=THREE` out and BOX is drawn on two axes"},
    {"drop lines", "IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /LINE DROPLINE=ON.",
     "take `DROPLINE=ON` out of `LINE` and the chart is drawn without drop lines"},
    {"an interpolation", "IGRAPH /X1=VAR(a) /Y=VAR(b) /LINE(MEAN) INTERPOLATE=SPLINE.",
     "take `INTERPOLATE=SPLINE` out and the points are joined by straight lines"},
    {"a name", "IGRAPH /X1=VAR(a) /Y=VAR(b) /PANEL p q r /BOX.",
     "take variables out of `PANEL` until two are left"},
    {"no understanding", "IGRAPH /X1=VAR(a) /BAR(MEAN) /FOO.",
     AdviceText(ErrorKind::kIgraphSyntax)},
    {"no period before a command", "IGRAPH /X1=VAR(a) /BAR(MEAN)\n\nFREQUENCIES a.",
     "no period before line 3?"},
    {"a blank line before anything else", "IGRAPH /X1=VAR(a)\n\n  /FOO.",
     AdviceText(ErrorKind::kIgraphSyntax)},
};

INSTANTIATE_TEST_SUITE_P(Charts, HintTest, testing::ValuesIn(kChartsHints));

TEST(HintForTest, CountsTheCommandsAfterAnOpenLiteral) {
    const std::string text = "TABLES /TITLE='x\n";
    const std::string hint =
        "the literal `'x` in line 1 is not closed: probably an apostrophe is missing after `'x`";
    using Hints = std::vector<std::string>;
    EXPECT_EQ(HintsOn(text, 0), Hints{hint + "; no legacy command comes after it"});
    EXPECT_EQ(HintsOn(text, 1),
              Hints{hint + "; one legacy command comes after it and was not read"});
    EXPECT_EQ(HintsOn(text, 7),
              Hints{hint + "; 7 legacy commands come after it and were not read"});
}

TEST(HintForTest, SaysNothingAboutConvertedCommands) {
    EXPECT_EQ(HintsOn("TABLES /TABLE=a.\nEXECUTE.\n"), std::vector<std::string>());
}

// Whatever a report says, there is an answer to it.
TEST(HintForTest, HasAdviceOnEveryReason) {
    for (const Reason& reason : kReasons) {
        SCOPED_TRACE(reason.name);
        CommandReport report;
        report.outcome = CommandOutcome::kFailed;
        report.errorKind = reason.kind;
        for (const CommandType type :
             {CommandType::kTables, CommandType::kIgraph, CommandType::kOrdinary}) {
            report.type = type;
            for (const std::string_view source :
                 {"", "TABLES", "/", "TABLES /", "//TABLE", "TABLES /TABLE", "'", "\xFF\n\n\xFF"}) {
                report.source = source;
                for (const long line : {0L, 1L, 3L, 1000L}) {
                    report.firstLine = 1;
                    report.errorLine = line;
                    for (const int column : {0, 1, 5, 1000}) {
                        report.errorColumn = column;
                        EXPECT_NE(HintFor(report, {}), "") << source << line << column;
                    }
                }
            }
        }
    }
}

TEST(FindMacroNamesTest, KnowsDefinitionsAlone) {
    const Options options;
    EXPECT_EQ(FindMacroNames("DEFINE !f (x=!TOKENS(1)) a !ENDDEFINE.\ndefine g () b !enddefine.\n",
                             options),
              (std::set<std::string>{"!F", "G"}));
    EXPECT_EQ(FindMacroNames("TABLES /TABLE=!f.\n", options), std::set<std::string>());
}

}  // namespace
}  // namespace quillet
