#include "translator/term.h"

#include <algorithm>

namespace quillet {

namespace {

// Which of two variables the statistics go to: the one that ranks higher.
int MagnetRank(VariableType type) {
    if (type == TB_OBSERVATION) return 2;
    return IsSet(type) ? 1 : 0;
}

}  // namespace

Term::Term(const std::vector<const TbTrParseNode*>& leaves, const VariableTypes& types) {
    m_variables.reserve(leaves.size());
    int magnetRank = 0;
    for (const TbTrParseNode* pLeaf : leaves) {
        const TermVariable variable{pLeaf, types.TypeOf(*pLeaf), UpperCaseName(*pLeaf)};
        const int rank = MagnetRank(variable.type);
        if (rank >= magnetRank) {
            magnetRank = rank;
            m_magnetIndex = m_variables.size();
        }
        m_hasScale = m_hasScale || rank == 2;
        m_hasSet = m_hasSet || rank == 1;
        m_variables.push_back(variable);
        m_names.push_back(variable.name);
    }
    std::sort(m_names.begin(), m_names.end());
    m_names.erase(std::unique(m_names.begin(), m_names.end()), m_names.end());
}

bool Term::HasAnyOf(const VariableNames& names) const {
    if (names.size() < m_names.size()) {
        return std::any_of(names.begin(), names.end(), [this](std::string_view name) {
            return std::binary_search(m_names.begin(), m_names.end(), name);
        });
    }
    return std::any_of(m_names.begin(), m_names.end(),
                       [&names](std::string_view name) { return names.contains(name); });
}

}  // namespace quillet
