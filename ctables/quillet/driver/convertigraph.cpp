#include "driver/convertigraph.h"

#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "driver/messagecatalogue.h"
#include "driver/outputwriter.h"
#include "igraph/convertgraph.h"

namespace quillet {

namespace {

// What a comment begins with. The reasons are written as comments.
constexpr std::string_view kCommentMark = "*";

// The command to write, or the reason why there is none.
struct Replacement {
    ErrorKind errorKind = ErrorKind::kNone;
    std::string text;
};

Replacement Replace(TAVQTokenSequence& sequence) {
    igraph::GraphConversion conversion = igraph::ConvertGraph(sequence);
    switch (conversion.failure) {
        case igraph::GraphFailure::kNone:
            break;
        case igraph::GraphFailure::kSyntaxNotValid:
            return {ErrorKind::kIgraphSyntax, std::string(kIgraphNotValid)};
        case igraph::GraphFailure::kNotExpressible:
            return {ErrorKind::kIgraphNotExpressible, std::move(conversion.reason)};
    }
    return {ErrorKind::kNone, std::move(conversion.ggraph)};
}

Replacement ReplaceWithinBudget(TAVQTokenSequence* pSequence) {
    if (pSequence != nullptr) {
        try {
            return Replace(*pSequence);
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
    if (!result.isConverted) {
        result.message = replacement.text;
        replacement.text.insert(0, kCommentMark);
    }
    listener.OnResultLine(result.isConverted ? kIgraphSucceeded : kIgraphFailed);
    WriteCommand(kBeginGgraph, out, 0);
    if (result.isConverted) result.generatedLine = out.LineCount() + 1;
    WriteCommand(replacement.text, out, 0);
    WriteCommand(kEndGgraph, out, 0);
    if (result.isConverted) result.generated = std::move(replacement.text);
    return result;
}

}  // namespace quillet
