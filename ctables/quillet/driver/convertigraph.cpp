#include "driver/convertigraph.h"

#include <utility>

#include "igraph/convertgraph.h"

namespace quillet {

StepResult ConvertIgraph(TAVQTokenSequence& tokens) {
    StepResult result;
    igraph::GraphConversion conversion = igraph::ConvertGraph(tokens);
    switch (conversion.failure) {
        case igraph::GraphFailure::kNone:
            result.text = std::move(conversion.ggraph);
            break;
        case igraph::GraphFailure::kSyntaxNotValid:
            result.failure = {ErrorKind::kIgraphSyntax, {}, {}};
            break;
        case igraph::GraphFailure::kNotExpressible:
            result.failure = {ErrorKind::kIgraphNotExpressible, std::move(conversion.reason), {}};
            break;
    }
    return result;
}

}  // namespace quillet
