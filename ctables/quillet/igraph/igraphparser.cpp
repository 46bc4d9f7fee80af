#include "igraph/igraphparser.h"

#include "igraph/commandreader.h"

namespace quillet::igraph {

parser::parser(ProcedureDataSource* /*pSource*/, FacSTDictionary* /*pDictionary*/) {}

bool parser::Parse(TokenSequenceBase& sequence) {
    m_settings = iGraphSpec{};
    m_settings.Budget() = sequence.Budget();
    m_validityFault = ValidityFault::kNone;
    m_syntaxFault = ReadCommand(sequence, m_settings.Command());
    return m_syntaxFault == SyntaxFault::kNone;
}

bool parser::CompleteAndValidateSyntax() {
    if (m_syntaxFault != SyntaxFault::kNone) return false;
    m_validityFault = CompleteCommand(m_settings.Command());
    if (m_validityFault != ValidityFault::kNone) return false;
    m_settings.SetComplete();
    return true;
}

}  // namespace quillet::igraph
