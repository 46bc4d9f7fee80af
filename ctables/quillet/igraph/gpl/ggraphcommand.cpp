#include "igraph/gpl/ggraphcommand.h"

#include "igraph/gpl/gplvocabulary.h"

namespace quillet::igraph {

namespace {

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

}  // namespace

std::string GgraphCommand(const iGraphSpec& spec, std::string_view program,
                          const std::vector<std::string>& immediateTemplates) {
    std::string text = "GGRAPH\n  /GRAPHDATASET NAME=\"";
    text += gpl::kDataSetName;
    text += "\" VARIABLES=";
    text += spec.getUsedVarName();
    text += "\n    MISSING=LISTWISE REPORTMISSING=NO\n";
    text += "  /GRAPHSPEC SOURCE=INLINE EDITABLE=YES";
    const std::string viewName = spec.getViewName();
    if (!viewName.empty()) text += " LABEL='" + viewName + "'";
    text += TemplateClause(spec.getChartLooks());
    text += InlineTemplateClause(immediateTemplates);
    text += ".\nBEGIN GPL";
    text.reserve(text.size() + program.size() + std::string_view("END GPL.").size());
    text += program;
    text += "END GPL.";
    return text;
}

}  // namespace quillet::igraph
