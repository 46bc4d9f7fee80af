// Understands an IGRAPH command.
#ifndef QUILLET_IGRAPH_READ_IGRAPHPARSER_H
#define QUILLET_IGRAPH_READ_IGRAPHPARSER_H

#include <memory>

#include "igraph/model/foreigntypes.h"
#include "igraph/model/igraphspec.h"
#include "igraph/read/completion.h"
#include "igraph/read/syntaxreader.h"
#include "tokenizer/tokensequencebase.h"

namespace quillet::igraph {

/// The parser of one command. It owns the graph specification.
class parser {
public:
    /// Both pointers are null: measurement levels and labels are taken from the command alone.
    parser(ProcedureDataSource* pSource, FacSTDictionary* pDictionary);

    /// Reads the command; its first act is `sequence.Next()`. False when the text is no IGRAPH
    /// command. The specification does not refer to the sequence. Linear in the tokens.
    [[nodiscard]] bool Parse(TokenSequenceBase& sequence);

    /// Fills in what the command leaves out. False when the command makes no sense, or when
    /// `Parse` has not succeeded. Linear in the command.
    [[nodiscard]] bool CompleteAndValidateSyntax();

    /// The specification; of use once both have succeeded, until the next `Parse`.
    [[nodiscard]] iGraphSpec& GetSettings() { return *m_pSettings; }

    /// Why `Parse` has failed. Users are told no more than that it has; for tests, as the next.
    [[nodiscard]] SyntaxFault LastSyntaxFault() const { return m_syntaxFault; }
    /// Why `CompleteAndValidateSyntax` has failed.
    [[nodiscard]] ValidityFault LastValidityFault() const { return m_validityFault; }

private:
    std::unique_ptr<iGraphSpec> m_pSettings = std::make_unique<iGraphSpec>();  // never null
    SyntaxFault m_syntaxFault = SyntaxFault::kNotIgraph;
    ValidityFault m_validityFault = ValidityFault::kNone;
};

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_READ_IGRAPHPARSER_H
