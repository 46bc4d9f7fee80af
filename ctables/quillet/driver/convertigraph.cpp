#include "driver/convertigraph.h"

#include <new>
#include <string>
#include <string_view>
#include <utility>
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
    ErrorKind errorKind = ErrorKind::kNone;
    std::string text;
};

// The reasons are written as comments, which begin with an asterisk.
std::string WithoutCommentMark(std::string_view reason) {
    if (reason.starts_with('*')) reason.remove_prefix(1);
    return std::string(reason);
}

Replacement Replace(TAVQTokenSequence& sequence) {
    igraph::parser parser(nullptr, nullptr);
    if (!parser.Parse(sequence) || !parser.CompleteAndValidateSyntax()) {
        return {ErrorKind::kIgraphSyntax, std::string(kIgraphNotValid)};
    }
    igraph::iGraphSpec& spec = parser.GetSettings();
    const std::string viewName = spec.getViewName();
    spec.getGGraphSpec().SetOutputLabel(viewName.empty() ? std::string(kDefaultOutputLabel)
                                                         : viewName);
    igraph::gplGenerator generator(spec, nullptr, nullptr);
    const std::string gpl = generator.getGPL();
    if (!spec.errorMessage().empty()) {
        return {ErrorKind::kIgraphNotExpressible, spec.errorMessage()};
    }
    igraph::doPostProcessing postProcessing(nullptr, nullptr, nullptr);
    postProcessing.process(spec);
    return {ErrorKind::kNone, AssembleGgraph(spec, gpl, postProcessing.getImmediateTemplates())};
}

Replacement ReplaceWithinBudget(TAVQTokenSequence* pSequence) {
    if (pSequence != nullptr) {
        try {
            Replacement replacement = Replace(*pSequence);
            if (replacement.errorKind == ErrorKind::kNone) EndWithPeriod(replacement.text);
            return replacement;
        } catch (const CommandTooLarge&) {
            // Told below.
        } catch (const std::bad_alloc&) {
            return {ErrorKind::kOutOfMemory, std::string(kIgraphTooLargeText)};
        }
    }
    return {ErrorKind::kIgraphTooLarge, std::string(kIgraphTooLargeText)};
}

}  // namespace

CommandResult ConvertIgraph(const CodePage& /*codePage*/, TAVQTokenSequence* pSequence,
                            OutputFile& out, long /*lineOffset*/, ConversionListener& listener) {
    Replacement replacement = ReplaceWithinBudget(pSequence);
    CommandResult result;
    result.isConverted = replacement.errorKind == ErrorKind::kNone;
    result.errorKind = replacement.errorKind;
    if (!result.isConverted) result.message = WithoutCommentMark(replacement.text);
    listener.OnResultLine(result.isConverted ? kIgraphSucceeded : kIgraphFailed);
    WriteCommand(kBeginGgraph, out, 0);
    if (result.isConverted) result.generatedLine = out.LineCount() + 1;
    WriteCommand(replacement.text, out, 0);
    WriteCommand(kEndGgraph, out, 0);
    if (result.isConverted) result.generated = std::move(replacement.text);
    return result;
}

}  // namespace quillet
