#include "driver/convertigraph.h"

#include <string>
#include <string_view>
#include <vector>

#include "driver/messagecatalogue.h"
#include "driver/outputwriter.h"
#include "igraph/gplgenerator.h"
#include "igraph/igraphparser.h"
#include "igraph/igraphspec.h"
#include "igraph/postprocessing.h"

namespace quillet {

namespace {

// What the output lists a graph under that has no name of its own.
constexpr std::string_view kDefaultOutputLabel = "Interactive Graph";

// One quoted item, even for several looks.
std::string TemplateClause(const std::vector<std::string>& looks) {
    if (looks.empty()) return {};
    std::string clause = "\n      TEMPLATE=[\"";
    for (const std::string& look : looks) clause += look;
    return clause + "\"]";
}

std::string InlineTemplateClause(const std::vector<std::string>& templates) {
    if (templates.empty()) return {};
    std::string clause = "\n      INLINETEMPLATE=[";
    for (const std::string& text : templates) {
        if (&text != &templates.front()) clause += ' ';
        clause.append("\"").append(text).append("\"");
    }
    return clause + "]";
}

std::string AssembleGgraph(const igraph::iGraphSpec& spec, const std::string& gpl,
                           const std::vector<std::string>& immediateTemplates) {
    std::string text = "GGRAPH\n  /GRAPHDATASET NAME=\"iGraphDataset\" VARIABLES=";
    text += spec.getUsedVarName();
    text += "\n    MISSING=LISTWISE REPORTMISSING=NO\n";
    text += "  /GRAPHSPEC SOURCE=INLINE EDITABLE=YES";
    if (!spec.getViewName().empty()) text += " LABEL='" + spec.getViewName() + "'";
    text += TemplateClause(spec.getChartLooks());
    text += InlineTemplateClause(immediateTemplates);
    text += ".\nBEGIN GPL";
    text += gpl;
    text += "END GPL.";
    return text;
}

// The command to write when `converted`, else the reason why there is none.
struct Replacement {
    bool converted = false;
    std::string text;
};

Replacement Replace(TAVQTokenSequence& sequence) {
    igraph::parser parser(nullptr, nullptr);
    if (!parser.Parse(sequence) || !parser.CompleteAndValidateSyntax()) {
        return {false, std::string(kIgraphNotValid)};
    }
    igraph::iGraphSpec& spec = parser.GetSettings();
    const std::string viewName = spec.getViewName();
    spec.getGGraphSpec().SetOutputLabel(viewName.empty() ? std::string(kDefaultOutputLabel)
                                                         : viewName);
    igraph::gplGenerator generator(spec, nullptr, nullptr);
    const std::string gpl = generator.getGPL();
    if (!spec.errorMessage().empty()) return {false, spec.errorMessage()};
    igraph::doPostProcessing postProcessing(nullptr, nullptr, nullptr);
    postProcessing.process(spec);
    return {true, AssembleGgraph(spec, gpl, postProcessing.getImmediateTemplates())};
}

}  // namespace

void ConvertIgraph(const CodePage& /*codePage*/, TAVQTokenSequence* pSequence, OutputFile& out,
                   long /*lineOffset*/, ConversionListener& listener) {
    const Replacement replacement = pSequence != nullptr
                                        ? Replace(*pSequence)
                                        : Replacement{false, std::string(kIgraphNotValid)};
    WriteCommand(kBeginGgraph, out, 0);
    WriteCommand(replacement.text, out, 0);
    WriteCommand(kEndGgraph, out, 0);
    listener.OnResultLine(replacement.converted ? kIgraphSucceeded : kIgraphFailed);
}

}  // namespace quillet
