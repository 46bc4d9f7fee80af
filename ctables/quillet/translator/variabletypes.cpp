#include "translator/variabletypes.h"

#include <cstddef>

#include "platform/multibyte.h"

namespace quillet {

namespace {

constexpr std::size_t kMaxSetNameLength = 8;

}  // namespace

std::string_view UpperCaseName(const TbTrParseNode& variable) {
    return variable.GetToken()->Text(/*raw=*/false);
}

std::string_view SpellingOf(const TbTrParseNode& variable) {
    return variable.GetToken()->Text(/*raw=*/true);
}

std::string MakeSetName(const CodePage& codePage, std::string_view name) {
    if (name.substr(0, 1) == "$") return std::string(name);
    std::string setName = "$";
    setName += name;
    if (name.size() >= kMaxSetNameLength) {
        setName.resize(TAVQMBStringTruncate_A(codePage, setName, kMaxSetNameLength).size());
    }
    return setName;
}

VariableTypes::VariableTypes(const CodePage& codePage, const TbTrParseNode* pGlobals)
    : m_codePage(codePage) {
    for (const TbTrParseNode* pSubcommand : NodeChildren(pGlobals)) {
        if (!pSubcommand) continue;
        const NodeType type = pSubcommand->GetNodeType();
        if (type == TB_OBSERVATION) {
            DeclareAll(type, ObservationView(*pSubcommand).Variables());
        } else if (IsTotal(type)) {
            DeclareAll(type, ChildrenOf(*pSubcommand));
        } else if (IsSet(type)) {
            Declare(type, SetView::NameIn(*pSubcommand));
        }
    }
}

void VariableTypes::Declare(VariableType type, const TbTrParseNode* pVariable) {
    if (!pVariable || pVariable->GetNodeType() != SP_VARNAME || !pVariable->GetToken()) return;
    m_declarations.try_emplace(UpperCaseName(*pVariable), Declaration{type, pVariable});
}

void VariableTypes::DeclareAll(VariableType type, NodeChildren variables) {
    for (const TbTrParseNode* pVariable : variables) Declare(type, pVariable);
}

const VariableTypes::Declaration* VariableTypes::Find(const TbTrParseNode& variable) const {
    if (!variable.GetToken()) return nullptr;
    const auto found = m_declarations.find(UpperCaseName(variable));
    return found == m_declarations.end() ? nullptr : &found->second;
}

VariableType VariableTypes::TypeOf(const TbTrParseNode& variable) const {
    const Declaration* pDeclaration = Find(variable);
    return pDeclaration ? pDeclaration->type : kNoNodeType;
}

std::string VariableTypes::OutputName(const TbTrParseNode& variable) const {
    if (IsSet(TypeOf(variable))) return MakeSetName(m_codePage, SpellingOf(variable));
    return std::string(SpellingOf(variable));
}

std::string VariableTypes::OutputKey(const TbTrParseNode& variable) const {
    if (IsSet(TypeOf(variable))) return MakeSetName(m_codePage, UpperCaseName(variable));
    return std::string(UpperCaseName(variable));
}

}  // namespace quillet
