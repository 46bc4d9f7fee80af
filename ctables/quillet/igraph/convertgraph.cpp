// The order of the steps stands here alone: whoever converts a command need not know that there
// are a parser, a generator and a graph specification.
#include "igraph/convertgraph.h"

#include <algorithm>

#include "igraph/gpl/ggraphcommand.h"
#include "igraph/gpl/gplgenerator.h"
#include "igraph/gpl/postprocessing.h"
#include "igraph/model/igraphspec.h"
#include "igraph/read/igraphparser.h"
#include "igraph/read/keywordsets.h"
#include "tokenizer/words.h"

namespace quillet::igraph {

namespace {

// What the output lists a graph under that has no name of its own.
constexpr std::string_view kDefaultOutputLabel = "Interactive Graph";

}  // namespace

GraphConversion ConvertGraph(TokenSequenceBase& sequence) {
    GraphConversion conversion;
    parser commandParser(nullptr, nullptr);
    if (!commandParser.Parse(sequence) || !commandParser.CompleteAndValidateSyntax()) {
        conversion.failure = GraphFailure::kSyntaxNotValid;
        return conversion;
    }
    iGraphSpec& spec = commandParser.GetSettings();
    const std::string viewName = spec.getViewName();
    spec.getGGraphSpec().SetOutputLabel(viewName.empty() ? std::string(kDefaultOutputLabel)
                                                         : viewName);
    gplGenerator generator(spec, nullptr, nullptr);
    const std::string gpl = generator.getGPL();
    conversion.reason = spec.errorMessage();
    if (!conversion.reason.empty()) {
        conversion.failure = GraphFailure::kNotExpressible;
        return conversion;
    }
    doPostProcessing postProcessing(nullptr, nullptr, nullptr);
    postProcessing.process(spec);
    conversion.ggraph = GgraphCommand(spec, gpl, postProcessing.getImmediateTemplates());
    return conversion;
}

bool IsSubcommand(std::string_view word) {
    return std::any_of(
        keywords::kSubcommands.begin(), keywords::kSubcommands.end(),
        [word](Keyword subcommand) { return MeansKeyword(word, Spelling(subcommand)); });
}

}  // namespace quillet::igraph
