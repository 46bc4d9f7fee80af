// Bytes in, IGRAPH command, GPL program out, which is then read back. The first byte chooses how
// the rest is read: as the text of a command, or, structure-aware, each byte as one piece of the
// language.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "../tests/unit/gplchecker.h"
#include "igraph/gpl/gplgenerator.h"
#include "igraph/gpl/postprocessing.h"
#include "igraph/read/igraphparser.h"
#include "platform/assertion.h"
#include "platform/codepage.h"
#include "reachableassertions.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tavqtokensequence.h"

namespace {

namespace igraph = quillet::igraph;

// Most pieces are whole settings, so that a few bytes make a command that is drawn.
constexpr std::string_view kPieces[] = {
    "/X1=VAR(x)",
    "/X1=VAR(x) TYPE=SCALE",
    "/X1=$case",
    "/X1=VAR(s.x) TYPE=CATEGORICAL TITLE='a \"b\" \\'",
    "/X2=VAR(z)",
    "/Y=VAR(y)",
    "/Y=VAR(y) TYPE=CATEGORICAL",
    "/Y=VAR(X)",
    "/Y=$count",
    "/Y=$pct",
    "/Y=$case",
    "/COLOR=VAR(c)",
    "/COLOR=VAR(c) STACK LEGEND=OFF",
    "/COLOR=VAR(x) CLUSTER",
    "/COLOR=VAR(d) TYPE=SCALE(MIN=1 MAX=5)",
    "/STYLE=VAR(t)",
    "/STYLE=VAR(c) STACK",
    "/SIZE=VAR(u)",
    "/SIZE=VAR(u) TYPE=SCALE MIN=-3",
    "/STACK=VAR(k)",
    "/CLUSTER=VAR(k)",
    "/SUMMARYVAR=VAR(v)",
    "/SUMMARYVAR=$pct",
    "/PANEL p",
    "/PANEL VAR(q)",
    "/POINTLABEL VAR(id)",
    "/CASELABEL VAR(and) NONE",
    "/COORDINATE=HORIZONTAL",
    "/COORDINATE=THREE",
    "/EFFECT=THREE",
    "/NORMALIZE",
    "/TITLE='t'",
    "/SUBTITLE='it''s'",
    "/CAPTION=\"100% \\\"",
    "/VIEWNAME='v'",
    "/CHARTLOOK='NONE'",
    "/CATORDER VAR(x) (COUNT DESCENDING)",
    "/CATORDER VAR(c) (SUM)",
    "/CATORDER VAR(p) (OCCURRENCE OMITEMPTY)",
    "/SCALERANGE=VAR(y) MIN=0 MAX=9",
    "/SCALERANGE=$count MAX=1e300",
    "/REFLINE y 3",
    "/REFLINE x -2.5 LABEL=ON",
    "/SPIKE FLOOR",
    "/KEY=ON",
    "/FORMAT ( SPIKE",
    "/X1LENGTH=5",
    "/SCATTER",
    "/SCATTER COINCIDENT=JITTER(3)",
    "/BAR",
    "/BAR(SUM) BASELINE=10",
    "/BAR(NIN(1,3)) LABEL VAL",
    "/BAR(PTILE 90) LABEL INSIDE PCT",
    "/AREA",
    "/AREA(SUMSQ) BREAK=MISSING POINTLABEL=N",
    "/AREA INTERPOLATE=CJUMP",
    "/LINE",
    "/LINE(MEDIAN) STYLE=DOTLINE LABEL VAL",
    "/LINE STYLE=NONE",
    "/LINE INTERPOLATE=SPLINE BREAK=NONE",
    "/PIE",
    "/PIE(SUMAV) START=-30 CCW SLICE=LABEL",
    "/PIE SLICE=PCT",
    "/BOX",
    "/BOX OUTLIERS=OFF",
    "/ERRORBAR CI(95)",
    "/ERRORBAR SE 2 SYMBOL=OFF CAPSTYLE=NONE",
    "/HISTOGRAM",
    "/HISTOGRAM CURVE=ON X1INTERVAL NUM=7",
    "/HISTOGRAM CUM X1INTERVAL WIDTH=.1",
    "/FITLINE",
    "/FITLINE ORIGIN INTERVAL(90)=MEAN LINE=MEFFECT TOTAL",
    "/FITLINE LLR UNIFORM LINE=MEFFECT",
    "/FITLINE NONE",
    "/",
    "/LINE(GMEDIAN)",
    "VAR(a.)",
    "x",
    "#w",
    "\xC3\xA4",
    "$count",
    "$sum",
    "!macro",
    "TYPE=SCALE",
    "MIN",
    "TITLE",
    "ALL",
    "BY",
    "LABEL",
    "VAL",
    "(",
    ")",
    "=",
    "-",
    "7",
    "1e-5",
    "'a'+\n'b'",
    "'a'+\nb'",
    "/* x */",
    ".",
    ",",
    "&",
};

std::string CommandText(const std::uint8_t* data, std::size_t size) {
    if (data[0] < 2) {
        return "IGRAPH " + std::string(reinterpret_cast<const char*>(data) + 1, size - 1);
    }
    std::string text = "IGRAPH";
    for (std::size_t index = 1; index < size; ++index) {
        text += ' ';
        text += kPieces[data[index] % std::size(kPieces)];
    }
    return text;
}

void Require(bool condition) {
    if (!condition) std::abort();
}

// No text that a user can write may fail an assertion of the graph library.
void OnAssertion(const quillet::AssertionFailure& failure) {
    Require(quillet::fuzz::IsReachableByTokenizing(failure.text));
}

void CheckProgram(const std::string& gpl, const std::string& usedNames) {
    const std::vector<std::string> faults = igraph::CheckGpl(gpl, usedNames);
    for (const std::string& fault : faults) std::fprintf(stderr, "%s\n", fault.c_str());
    if (!faults.empty()) std::fprintf(stderr, "%s", gpl.c_str());
    Require(faults.empty());
}

// What a command came to, in a form that two of them can be compared in.
std::string Outcome(const std::string& text, const quillet::CodePage& codePage) {
    quillet::TAVQTokenSequence sequence(codePage, text, /*skipLeadingSign=*/false,
                                        /*maxTokens=*/0);
    sequence.SetNextIndex(0);
    igraph::parser igraphParser(nullptr, nullptr);
    if (!igraphParser.Parse(sequence)) {
        Require(!igraphParser.CompleteAndValidateSyntax());
        return "syntax " + std::to_string(static_cast<int>(igraphParser.LastSyntaxFault()));
    }
    if (!igraphParser.CompleteAndValidateSyntax()) {
        return "validity " + std::to_string(static_cast<int>(igraphParser.LastValidityFault()));
    }
    igraph::iGraphSpec& spec = igraphParser.GetSettings();
    spec.getGGraphSpec().SetOutputLabel(spec.getViewName());
    const std::string usedNames = spec.getUsedVarName();
    const std::string gpl = igraph::gplGenerator(spec, nullptr, nullptr).getGPL();
    const std::string error = spec.errorMessage();
    igraph::doPostProcessing processing(nullptr, nullptr, nullptr);
    processing.process(spec);
    Require(spec.getUsedVarName() == usedNames && !usedNames.empty());
    Require(gpl.empty() != error.empty());
    // Both stand on lines of their own in the output.
    Require(error.find_first_of("\r\n") == std::string::npos);
    Require(spec.getViewName().find_first_of("\r\n") == std::string::npos);
    if (!gpl.empty()) {
        CheckProgram(gpl, usedNames);
        Require(!usedNames.ends_with('.'));
    }
    return usedNames + gpl + error;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const quillet::ScopedAssertionHandler handler(OnAssertion);
    const std::string text = CommandText(data, size);
    const quillet::CodePage& codePage =
        data[0] % 2 == 0 ? quillet::CodePage::Utf8() : quillet::CodePage::Windows1252();
    try {
        const std::string first = Outcome(text, codePage);
        Require(Outcome(text, codePage) == first);
    } catch (const quillet::ParseError&) {
        // A text that is no syntax never reaches the graph library.
    }
    return 0;
}
