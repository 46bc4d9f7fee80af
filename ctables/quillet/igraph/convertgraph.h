// The conversion of an IGRAPH command: from its tokens to the GGRAPH command.
#ifndef QUILLET_IGRAPH_CONVERTGRAPH_H
#define QUILLET_IGRAPH_CONVERTGRAPH_H

#include <string>
#include <string_view>

#include "tokenizer/tokensequencebase.h"

namespace quillet::igraph {

/// Why a command has no graph.
enum class GraphFailure {
    kNone,
    kSyntaxNotValid,  ///< It is no IGRAPH command, or one that makes no sense.
    kNotExpressible,  ///< GPL has nothing that looks like what it asks for.
};

/// What an IGRAPH command came to. Owns its texts.
struct GraphConversion {
    GraphFailure failure = GraphFailure::kNone;
    /// Without a failure the GGRAPH command with its GPL program, lines that end in LF, up to and
    /// with the period at its end; otherwise empty.
    std::string ggraph;
    /// With `kNotExpressible` what is in the way, one line without a period at its end; otherwise
    /// empty.
    std::string reason;
};

/// Converts the command that begins with the token that the first `Next` of `sequence` makes
/// current. What comes out depends on the tokens alone and does not refer to them.
///
/// Throws `CommandTooLarge` when names repeated in element after element exceed the budget of
/// `sequence`, and `std::bad_alloc`. Linear in the tokens and the text.
[[nodiscard]] GraphConversion ConvertGraph(TokenSequenceBase& sequence);

/// True when `word`, in upper case, may name a subcommand of IGRAPH: as everywhere else, three of
/// its bytes decide.
[[nodiscard]] bool IsSubcommand(std::string_view word);

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_CONVERTGRAPH_H
