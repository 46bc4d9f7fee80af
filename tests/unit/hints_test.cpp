#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "driver/hinttexts.h"
#include "driver/reasons.h"
#include "driver/stringstreams.h"
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
        if (report.outcome == CommandOutcome::kConverted) ++converted;
    }
    bool Write(std::string_view /*bytes*/) override { return true; }

    std::vector<std::string> hints;
    int converted = 0;

private:
    HintOptions m_options;
};

std::vector<std::string> HintsOn(const std::string& text, long commandsAfter = -1) {
    const Options options;
    HintOptions hints;
    hints.macroNames = FindMacroNames(text, options);
    hints.commandsAfter = commandsAfter;
    HintListener listener(hints);
    StringInput input(text);
    static_cast<void>(ConvertStream(input, listener, listener, options));
    return listener.hints;
}

// True when the one command of the text is converted.
bool IsConverted(const std::string& text) {
    HintListener listener((HintOptions()));
    StringInput input(text);
    static_cast<void>(ConvertStream(input, listener, listener, Options()));
    return listener.converted == 1 && listener.hints.empty();
}

struct HintCase {
    const char* name;
    std::string text;
    std::string hint;  // of its one command that is not converted
    /// The text when somebody has done what the hint says; empty where that is left to the reader.
    std::string mended = {};
};

void PrintTo(const HintCase& hintCase, std::ostream* pStream) { *pStream << hintCase.name; }

class HintTest : public testing::TestWithParam<HintCase> {};

TEST_P(HintTest, SaysWhatToChange) {
    const std::vector<std::string> expected = {GetParam().hint};
    EXPECT_EQ(HintsOn(GetParam().text), expected);
    EXPECT_EQ(HintsOn(GetParam().text), expected);
    if (!GetParam().mended.empty()) {
        EXPECT_TRUE(IsConverted(GetParam().mended));
    }
}

std::string AdviceText(ErrorKind kind) { return std::string(AdviceOn(kind)); }

const HintCase kTotalsHints[] = {
    {"before a scale", "TABLES /PTOTAL=t2 /OBSERVATION=b1r /TABLE=t2 + b1r + b1.",
     "`t2` stands before the scale variable `b1r`; the next categorical one is `b1`: write "
     "`t2 + b1 + b1r` (the row of `t2` then stands before `b1`)",
     "TABLES /PTOTAL=t2 /OBSERVATION=b1r /TABLE=t2 + b1 + b1r."},
    {"after a scale", "TABLES /FTOTAL=t /OBSERVATION=x y /TABLE=r BY a + x + y + t.",
     "`t` stands after the scale variable `y`; the next categorical one is `a`: write "
     "`x + y + a + t` (the row of `t` then stands after `a`)",
     "TABLES /FTOTAL=t /OBSERVATION=x y /TABLE=r BY x + y + a + t."},
    {"a nesting has its outermost variable's totals",
     "TABLES /PTOTAL=t /OBSERVATION=x /TABLE=t + x + a > b.",
     "`t` stands before the scale variable `x`; the next categorical one is `a`: write "
     "`t + a > b + x` (the row of `t` then stands before `a`)",
     "TABLES /PTOTAL=t /OBSERVATION=x /TABLE=t + a > b + x."},
    {"no categorical one",
     "TABLES /FTOTAL=total /OBSERVATION=income /TABLE=region BY income + total.",
     "`total` stands after the scale variable `income`; there is no categorical variable that "
     "could carry `total`"},
    {"a categorical one on the other side only",
     "TABLES /PTOTAL=t /OBSERVATION=x /TABLE=a + t + x.",
     "`t` stands before the scale variable `x`; there is no categorical variable that could carry "
     "`t`"},
    {"parentheses between", "TABLES /PTOTAL=t /OBSERVATION=x /TABLE=t + x + (a + b) > c.",
     AdviceText(ErrorKind::kTotalBesideScale)},
    {"nested", "TABLES /FTOTAL=total /TABLE=region > total BY sex.",
     "`total` is nested: stack it with the variable that it totals, as in `region + total`",
     "TABLES /FTOTAL=total /TABLE=region + total BY sex."},
    {"follows nothing", "TABLES /FTOTAL=total /TABLE=total + region.",
     "`total` is declared on FTOTAL, but nothing stands before it: write it after the variable "
     "that it totals, or declare it on PTOTAL",
     "TABLES /FTOTAL=total /TABLE=region + total."},
    {"precedes nothing", "TABLES /PTOTAL=total /TABLE=region + total.",
     "`total` is declared on PTOTAL, but nothing stands after it: write it before the variable "
     "that it totals, or declare it on FTOTAL",
     "TABLES /FTOTAL=total /TABLE=region + total."},
    {"misplaced", "TABLES /OBSERVATION=income age /FTOTAL=total /TABLE=income > age + total.",
     "the total would go to `age`, which has no totals: put it beside the categorical variable "
     "that it totals",
     "TABLES /OBSERVATION=income age /FTOTAL=total /TABLE=income > age + sex + total."},
    {"nested in parentheses", "TABLES /FTOTAL=t /TABLE=(a + b) > t.",
     "stack `t` with the variable that it totals, with `+`", "TABLES /FTOTAL=t /TABLE=a + b + t."},
};

INSTANTIATE_TEST_SUITE_P(Totals, HintTest, testing::ValuesIn(kTotalsHints));

TEST(HintForTest, NamesOnlySomeOfManyForeignWords) {
    std::string text = "TABLES /FORMAT=ZERO";
    for (int word = 0; word < 1000; ++word) text += " NBOX";
    const std::vector<std::string> hints = HintsOn(text + " /TABLE=a.");
    ASSERT_EQ(hints.size(), 1U);
    EXPECT_LT(hints.front().size(), 250U);
    EXPECT_TRUE(hints.front().starts_with("take NBOX, NBOX, "));
    EXPECT_TRUE(hints.front().ends_with(", ... out of FORMAT; ZERO may stay"));
}

const HintCase kSubcommandsHints[] = {
    {"foreign words in FORMAT", "TABLES /FORMAT=ZERO CWIDTH(10,8) NBOX /TABLE=a.",
     "take CWIDTH, NBOX out of FORMAT; ZERO may stay", "TABLES /FORMAT=ZERO /TABLE=a."},
    {"settings of MISSING are none", "TABLES /FORMAT=BLANK MISSING('-') CWIDTH(8) /TABLE=a.",
     "take CWIDTH out of FORMAT; BLANK, MISSING may stay",
     "TABLES /FORMAT=BLANK MISSING('-') /TABLE=a."},
    {"a set without its value", "TABLES /MDGROUP=m tv radio /TABLE=m.",
     "add the value that is counted, as in `(1)`, after the variables of `m`",
     "TABLES /MDGROUP=m tv radio (1) /TABLE=m."},
    {"a set with a value that is none", "TABLES /MDGROUP=m tv (x) /TABLE=m.",
     "correct the MDGROUP subcommand in line 1: it is not understood at `x`"},
    {"a setting that there is not", "TABLES /AUTOLABEL=YES /TABLE=region.",
     "AUTOLABEL takes ON, OFF or DEFAULT, not `YES`", "TABLES /AUTOLABEL=ON /TABLE=region."},
    {"a base that there is not", "TABLES /BASE=NONE /TABLE=a.",
     "BASE takes ANSWERING, QUALIFIED or ALL, not `NONE`", "TABLES /BASE=QUALIFIED /TABLE=a."},
    {"the base of groups", "TABLES /GBASE=ANSWERING /TABLE=a.",
     "GBASE takes CASES or RESPONSES, not `ANSWERING`", "TABLES /GBASE=CASES /TABLE=a."},
    {"the setting of MISSING", "TABLES /MISSING=LISTWISE /TABLE=a.",
     "MISSING takes INCLUDE or EXCLUDE, not `LISTWISE`", "TABLES /MISSING=EXCLUDE /TABLE=a."},
    {"an expression that breaks off", "TABLES /TABLE=a + b BY.",
     "correct the TABLE subcommand in line 1: something is missing at its end, after `BY`"},
    {"the last subcommand breaks off", "TABLES /TABLE=a /STATISTICS.",
     "correct the STATISTICS subcommand in line 1: something is missing at its end, after "
     "`STATISTICS`",
     "TABLES /TABLE=a /STATISTICS=COUNT."},
    {"the last subcommand breaks off after its sign", "TABLES /TABLE=a /SORT=.",
     "correct the SORT subcommand in line 1: something is missing at its end, after `=`"},
    {"the first of two of one name breaks off", "TABLES /TABLE=a BY /TABLE=b.",
     "correct the TABLE subcommand in line 1: something is missing at its end, after `BY`",
     "TABLES /TABLE=a BY c /TABLE=b."},
    {"the second of two of one name breaks off", "TABLES /TABLE=a /TABLE.",
     "correct the TABLE subcommand in line 1: something is missing at its end, after `TABLE`"},
    {"nothing between two slashes", "TABLES /TABLE=a / /FTOTAL=t.",
     "FTOTAL is about the whole command: write it before the first TABLE subcommand"},
    {"TO on OBSERVATION", "TABLES /OBSERVATION=income TO age /TABLE=income.",
     "list the variables from `income` to `age` one by one on OBSERVATION: the data alone tell "
     "which ones stand between the two"},
    {"a word that is too long",
     "TABLES /TABLE=region BY "
     "(a_word_that_is_longer_than_the_sixty_four_bytes_that_any_name_can_have).",
     "`a_word_that_is_longer_than_the_sixty_four_bytes_that_any_name_can_have` is no name, since "
     "it has more than 64 bytes: shorten it"},
    {"an unknown function", "TABLES /TABLE=a /STATISTICS=AVERAGE(a).",
     "`AVERAGE` is no function; nearest to it: MEAN", "TABLES /TABLE=a /STATISTICS=MEAN(a)."},
    {"a misspelled function", "TABLES /TABLE=a /STATISTICS=CUONT(a).",
     "`CUONT` is no function; nearest to it: COUNT, CPCT and CSPCT",
     "TABLES /TABLE=a /STATISTICS=COUNT(a)."},
    {"an unknown function for sorting", "TABLES /TABLE=a /SORT=a (AVERAGE).",
     "`AVERAGE` is no function; nearest to it: MEAN", "TABLES /TABLE=a /SORT=a (MEAN)."},
};

INSTANTIATE_TEST_SUITE_P(Subcommands, HintTest, testing::ValuesIn(kSubcommandsHints));

const HintCase kCommandsHints[] = {
    {"a blank line runs through it", "TABLES /TABLE=a BY b\n\nFREQUENCIES x.",
     "no period before line 3?"},
    {"a blank line after the mistake", "TABLES /TABLE=a b\n\n  /TITLE='x'.",
     "write `+`, `>` or `BY` between `a` and `b`"},
    {"two variables", "TABLES /TABLE=a b.", "write `+`, `>` or `BY` between `a` and `b`",
     "TABLES /TABLE=a > b."},
    {"no table", "TABLES /FTOTAL=t.",
     "the command has no TABLE subcommand: add one, or take the command out"},
    {"a break of variables", "TABLES /BREAK=region /TABLE=sex BY agegroup.",
     "write the variables of BREAK, `region`, into the TABLE subcommands instead"},
    {"a global subcommand after a table", "TABLES /TABLE=sex /FTOTAL=t.",
     "FTOTAL is about the whole command: write it before the first TABLE subcommand",
     "TABLES /FTOTAL=t /TABLE=sex + t."},
    {"a local subcommand before a table", "TABLES /STATISTICS=COUNT(a) /TABLE=a.",
     "STATISTICS is about one table: write it after a TABLE subcommand",
     "TABLES /TABLE=a /STATISTICS=COUNT(a)."},
    {"nothing on a subcommand", "TABLES /BOXCHARS /TABLE=a.",
     "nothing stands on BOXCHARS: take it out", "TABLES /TABLE=a."},
    {"anything else", "TABLES /TABLE=a BY b BY c BY d.",
     "correct the command in line 1: it is not understood at `BY`"},
    {"a marker in two dimensions", "TABLES /TABLE=(STATISTICS) BY (STATISTICS).",
     "`(STATISTICS)` stands in two dimensions: leave one of them out",
     "TABLES /TABLE=(STATISTICS) BY a."},
    {"the other marker", "TABLES /TABLE=(LABELS) BY a BY (LABELS).",
     "`(LABELS)` stands in two dimensions: leave one of them out", "TABLES /TABLE=(LABELS) BY a."},
    {"a table that is too large",
     "TABLES\n /TABLE=(a1+a2+a3+a4+a5+a6+a7+a8+a9+a10) > (b1+b2+b3+b4+b5+b6+b7+b8+b9+b10)\n"
     "> (c1+c2+c3+c4+c5+c6+c7+c8+c9+c10) > (d1+d2+d3+d4+d5+d6+d7+d8+d9+d10)\n"
     "> (e1+e2+e3+e4+e5+e6+e7+e8+e9+e10) > (f1+f2+f3+f4+f5+f6+f7+f8+f9+f10).",
     "split the table of line 4 into several TABLE subcommands, or the command into several "
     "commands"},
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
     "missing after `\"Income`"},
    {"an apostrophe in a literal", "TABLES /TABLE=a BY b\n  /TITLE='it's here' /TABLE=c.\n",
     "line 2: an apostrophe inside a literal is written twice, as in `it''s`"},
    {"a quotation mark in a literal", "TABLES /TABLE=a /TITLE=\"a 5\"x sheet\".\n",
     "line 1: a quotation mark inside a literal is written twice, as in `5\"\"x`",
     "TABLES /TABLE=a /TITLE=\"a 5\"\"x sheet\"."},
    {"a number that is none", "TABLES /TABLE=a BY 0x1F b.\n",
     "`0x1F` in line 1 is no number that can be read: correct it"},
    {"a number without its exponent", "TABLES /TABLE=a BY 1E b.\n",
     "write the digits of the exponent after `1E` in line 1; if it is a name, let it begin with a "
     "letter"},
    {"a character", "TABLES\n /TABLE=a BY b ` c\n",
     "take ``` out of line 2, or put it into quotes; often such a character has come from a word "
     "processor"},
    {"a character that nobody sees", "TABLES /TABLE=a\n  BY \x01 b.\n",
     "take the invisible character U+0001 out of line 2", "TABLES /TABLE=a\n  BY b."},
};

INSTANTIATE_TEST_SUITE_P(Unreadable, HintTest, testing::ValuesIn(kUnreadableHints));

// Each obstacle, and what is left when the hint was followed.
const HintCase kChartsHints[] = {
    {"spikes", "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /SPIKE X1.",
     "take `SPIKE` out and the chart is drawn without spikes; of `FITLINE` and `REFLINE`, "
     "`SPIKE=ON`",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER."},
    {"spikes of a line", "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE SPIKE=ON.",
     "take `SPIKE` out and the chart is drawn without spikes; of `FITLINE` and `REFLINE`, "
     "`SPIKE=ON`",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE."},
    {"three axes", "IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /COORDINATE=THREE /BOX.",
     "take `X2` and `COORDINATE=THREE` out and BOX is drawn on two axes",
     "IGRAPH /X1=VAR(a) /Y=VAR(c) /BOX."},
    {"a fitted surface", "IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /SCATTER /FITLINE.",
     "take `FITLINE` out and the chart is drawn without the fitted surface",
     "IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /SCATTER."},
    {"clusters on three axes", "IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /STYLE=VAR(d) CLUSTER /BAR.",
     "take the `COLOR`, `STYLE` or `CLUSTER` subcommand that makes the clusters out, and the bars "
     "are drawn without them",
     "IGRAPH /X1=VAR(a) /X2=VAR(b) /Y=VAR(c) /BAR."},
    {"an interval",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE REGRESSION LINEAR INTERVAL(95)=INDIVIDUAL.",
     "take `INDIVIDUAL` out of `FITLINE`, with its `INTERVAL` unless `MEAN` stands there, too, and "
     "the line is drawn without that interval",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE REGRESSION LINEAR."},
    {"one of two intervals",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE MEAN INTERVAL MEAN INDIVIDUAL.",
     "take `INDIVIDUAL` out of `FITLINE`, with its `INTERVAL` unless `MEAN` stands there, too, and "
     "the line is drawn without that interval",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE MEAN INTERVAL MEAN."},
    {"a multiplier", "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE LLR X2MULTIPLIER=2.",
     "take `X1MULTIPLIER` and `X2MULTIPLIER` out of `FITLINE` and the line is drawn with the usual "
     "bandwidth",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER /FITLINE LLR."},
    {"drop lines", "IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /LINE DROPLINE=ON.",
     "take `DROPLINE=ON` out of `LINE` and the chart is drawn without drop lines",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /LINE."},
    {"an interpolation", "IGRAPH /X1=VAR(a) /Y=VAR(b) /LINE(MEAN) INTERPOLATE=SPLINE.",
     "take `INTERPOLATE=SPLINE` out and the points are joined by straight lines",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /LINE(MEAN)."},
    {"parts of a box", "IGRAPH /X1=VAR(a) /Y=VAR(b) /BOX OUTLIERS=OFF.",
     "take `OUTLIERS=OFF`, `EXTREME=OFF` and `MEDIAN=OFF` out of `BOX` and whole boxes are drawn",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /BOX."},
    {"a start", "IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM X1START=50.",
     "take `X1START` out of `HISTOGRAM` and it begins where it usually does",
     "IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM."},
    {"a curve", "IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM CUM CURVE=ON.",
     "take `CURVE=ON` out of `HISTOGRAM` and it is drawn without the curve, or take `CUM` out",
     "IGRAPH /X1=VAR(a) /Y=$count /HISTOGRAM CUM."},
    {"a function", "IGRAPH /X1=VAR(a) /Y=VAR(b) /LINE(GMEDIAN).",
     "write another function in place of `GMEDIAN`, such as `MEDIAN`",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /LINE(MEDIAN)."},
    {"a scale", "IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) TYPE=SCALE /BAR.",
     "take `COLOR` or `SIZE` out, or give it `TYPE=CATEGORICAL`",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) TYPE=CATEGORICAL /BAR."},
    {"several pies", "IGRAPH /COLOR=VAR(a) /CLUSTER=VAR(b) /PIE.",
     "take `STACK` and `CLUSTER` out and one pie is drawn", "IGRAPH /COLOR=VAR(a) /PIE."},
    {"pies on an axis", "IGRAPH /X1=VAR(a) /COLOR=VAR(b) /PIE.",
     "take `X1` and `X2` out and one pie is drawn; `PANEL` gives one for each category",
     "IGRAPH /COLOR=VAR(b) /PANEL=VAR(a) /PIE."},
    {"a third legend",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /STYLE=VAR(d) /STACK=VAR(e) /BAR.",
     "take `STACK` out, or `COLOR` or `STYLE`: two legend variables are the most",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /STYLE=VAR(d) /STACK=VAR(e) /BAR."},
    {"panels", "IGRAPH /X1=VAR(a) /Y=VAR(b) /PANEL p q r /BOX.",
     "take variables out of `PANEL` until two are left",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /PANEL p q /BOX."},
    {"stacked boxes", "IGRAPH /X1=VAR(a) /Y=VAR(b) /STACK=VAR(c) /BOX.",
     "take what groups them out, `STACK`, `CLUSTER`, `COLOR` or `STYLE`, or the other elements, "
     "and the boxes or error bars are drawn",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /BOX."},
    {"boxes beside lines", "IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /BOX /LINE.",
     "take what groups them out, `STACK`, `CLUSTER`, `COLOR` or `STYLE`, or the other elements, "
     "and the boxes or error bars are drawn",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /COLOR=VAR(c) /BOX."},
    {"a reference line", "IGRAPH /X1=VAR(a) /Y=VAR(b) /REFLINE a 3 /BAR.",
     "take `REFLINE` out and the chart is drawn without the line",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR."},
    {"a normalized stack", "IGRAPH /X1=VAR(a) /Y=VAR(b) /STACK=VAR(c) /NORMALIZE /BAR(MEDIAN).",
     "take `NORMALIZE` out and MEDIAN is drawn as it is",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /STACK=VAR(c) /BAR(MEDIAN)."},
    {"an empty chart", "IGRAPH /X1=VAR(a) /Y=VAR(b) /LINE STYLE=NONE.",
     "write another `STYLE` than `NONE` on `LINE`, or take the command out",
     "IGRAPH /X1=VAR(a) /Y=VAR(b) /LINE STYLE=DOT."},
    {"a name that ends in a period", "IGRAPH /Y=VAR(b) /X1=VAR(a.) /BAR.",
     "rename the variable `a.`: a name at the end of the list must not end in a period",
     "IGRAPH /Y=VAR(b) /X1=VAR(a) /BAR."},
};

INSTANTIATE_TEST_SUITE_P(Charts, HintTest, testing::ValuesIn(kChartsHints));

const HintCase kOtherChartsHints[] = {
    {"no understanding", "IGRAPH /X1=VAR(a) /BAR(MEAN) /FOO.",
     AdviceText(ErrorKind::kIgraphSyntax)},
    {"no period before a command", "IGRAPH /X1=VAR(a) /BAR(MEAN)\n\nFREQUENCIES a.",
     "no period before line 3?"},
    {"a blank line before anything else", "IGRAPH /X1=VAR(a)\n\n  /FOO.",
     AdviceText(ErrorKind::kIgraphSyntax)},
};

INSTANTIATE_TEST_SUITE_P(OtherCharts, HintTest, testing::ValuesIn(kOtherChartsHints));

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

struct AdviceCase {
    ErrorKind kind;
    const char* advice;
};

void PrintTo(const AdviceCase& adviceCase, std::ostream* pStream) {
    *pStream << ReasonOf(adviceCase.kind).name;
}

const AdviceCase kAdviceCases[] = {
    {ErrorKind::kUnclosedLiteral,
     "put the missing apostrophe or quotation mark where the quoted text ends; one that is a part "
     "of the text is written twice"},
    {ErrorKind::kExponentWithoutDigits,
     "write the digits after the `E`; if it is a name, let it begin with a letter"},
    {ErrorKind::kInvalidNumber,
     "write a number that can be read: digits, at most one decimal point, an exponent of at most "
     "three digits"},
    {ErrorKind::kInvalidCharacter,
     "take the character out, or put it into quotes; often it has come from a word processor"},
    {ErrorKind::kSubcommandSyntax,
     "correct that subcommand; the position is the end of what could not be understood"},
    {ErrorKind::kObservationRange,
     "list the variables one by one: the data alone tell which ones stand between the two"},
    {ErrorKind::kParenthesizedWord, "shorten the word: a name has at most 64 bytes"},
    {ErrorKind::kTablesSyntax,
     "the mistake lies between subcommands: two variables without `+`, `>` or `BY`, a subcommand "
     "for the whole command after the first `TABLE`, no `TABLE` at all, a subcommand without "
     "anything after it, a `BREAK` of variables only, or a missing period"},
    {ErrorKind::kUnknownFunction, "correct the function's name; its first three letters decide"},
    {ErrorKind::kUnknownSortFunction,
     "correct the function's name; its first three letters decide"},
    {ErrorKind::kMisplacedTotal, "put the total beside the categorical variable that it totals"},
    {ErrorKind::kNothingToFollow, "write the total after a variable, or declare it on `PTOTAL`"},
    {ErrorKind::kNothingToPrecede, "write the total before a variable, or declare it on `FTOTAL`"},
    {ErrorKind::kTotalWithoutStacking,
     "stack the total with `+` instead of nesting it: `(region + total) > sex`, not `region > "
     "total`"},
    {ErrorKind::kTotalBesideScale,
     "a scale variable has no categories to total: put the total beside a categorical variable, or "
     "take it out"},
    {ErrorKind::kTableTooLarge,
     "split the table into several `TABLE` subcommands, or the command into several commands"},
    {ErrorKind::kIgraphSyntax,
     "compare the command with the manual: a misspelled or ambiguous keyword, a setting in another "
     "subcommand than its own, or elements that make no sense together, such as bars without Y"},
    {ErrorKind::kIgraphNotExpressible,
     "take the setting that the message names out of the command, and the chart is drawn without "
     "it"},
    {ErrorKind::kIgraphTooLarge,
     "split the chart: fewer elements, shorter texts and fewer variables in a command"},
    {ErrorKind::kOutOfMemory,
     "convert the file again where there is more memory, or split the command"},
    {ErrorKind::kUnknown,
     "look whether the table holds nothing but totals, `(STATISTICS)` and `(LABELS)`, whether one "
     "of these two stands in two dimensions, or whether parentheses are nested very deeply; "
     "otherwise the authors of quillet want to hear of it"},
};

class AdviceTest : public testing::TestWithParam<AdviceCase> {};

TEST_P(AdviceTest, StandsByItselfWhereNothingIsKnownOfTheCommand) {
    EXPECT_EQ(AdviceOn(GetParam().kind), GetParam().advice);
    CommandReport report;
    report.outcome = CommandOutcome::kFailed;
    report.errorKind = GetParam().kind;
    report.type = CommandType::kTables;
    report.firstLine = 7;
    report.errorLine = 8;
    // These two name a line whatever the command says.
    const bool hasLine = report.errorKind == ErrorKind::kOutOfMemory ||
                         report.errorKind == ErrorKind::kTableTooLarge;
    if (!hasLine) {
        EXPECT_EQ(HintFor(report, {}), GetParam().advice);
    }
}

INSTANTIATE_TEST_SUITE_P(Reasons, AdviceTest, testing::ValuesIn(kAdviceCases));

std::string HintOnMemory() {
    CommandReport report;
    report.outcome = CommandOutcome::kFailed;
    report.errorKind = ErrorKind::kOutOfMemory;
    report.firstLine = 7;
    return HintFor(report, {});
}

TEST(HintForTest, NamesTheLineOfACommandThatTakesTooMuchMemory) {
    EXPECT_EQ(HintOnMemory(),
              "convert the file again where there is more memory, or split the command of line 7");
}

// True when `hint` is `sentence` with something put in for what stands in braces.
bool IsFilledIn(std::string_view sentence, std::string_view hint) {
    bool isFirst = true;
    while (true) {
        const std::size_t open = sentence.find('{');
        const std::string_view piece = sentence.substr(0, open);
        if (open == std::string_view::npos) return hint.ends_with(piece);
        const std::size_t found = hint.find(piece);
        if (found == std::string_view::npos || (isFirst && found != 0)) return false;
        hint.remove_prefix(found + piece.size());
        sentence.remove_prefix(sentence.find('}', open) + 1);
        isFirst = false;
    }
}

TEST(HintForTest, HasARowHereForEverySentence) {
    std::vector<std::string> told = {HintOnMemory()};
    for (const std::span<const HintCase> table :
         {std::span<const HintCase>(kTotalsHints), std::span<const HintCase>(kSubcommandsHints),
          std::span<const HintCase>(kCommandsHints), std::span<const HintCase>(kMacrosHints),
          std::span<const HintCase>(kUnreadableHints), std::span<const HintCase>(kChartsHints)}) {
        for (const HintCase& row : table) told.push_back(row.hint);
    }
    for (const long count : {0L, 1L, 2L}) {
        const std::string hint = HintsOn("TABLES /TITLE='x\n", count).front();
        told.push_back(hint.substr(hint.find(';')));
    }
    for (const std::string_view sentence : {
#define QUILLET_HINT(wording, sentence) std::string_view(sentence),
#define QUILLET_CHART_HINT(obstacle, sentence) std::string_view(sentence),
#include "quillet-hints.def"
         }) {
        EXPECT_TRUE(std::any_of(told.begin(), told.end(), [sentence](std::string_view hint) {
            return IsFilledIn(sentence, hint);
        })) << sentence;
    }
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
