#include "igraph/read/igraphparser.h"

#include <utility>
#include <vector>

#include "igraph/read/commandreader.h"

namespace quillet::igraph {

parser::parser(ProcedureDataSource* /*pSource*/, FacSTDictionary* /*pDictionary*/) {}

bool parser::Parse(TokenSequenceBase& sequence) {
    m_pSettings = std::make_unique<iGraphSpec>();
    m_pSettings->Budget() = sequence.Budget();
    m_validityFault = ValidityFault::kNone;
    m_syntaxFault = ReadCommand(sequence, m_pSettings->Command());
    return m_syntaxFault == SyntaxFault::kNone;
}

bool parser::CompleteAndValidateSyntax() {
    if (m_syntaxFault != SyntaxFault::kNone) return false;
    std::vector<VariableRole> roles;
    m_validityFault = CompleteCommand(m_pSettings->Command(), roles);
    if (m_validityFault != ValidityFault::kNone) return false;
    m_pSettings->SetComplete(std::move(roles));
    return true;
}

}  // namespace quillet::igraph
