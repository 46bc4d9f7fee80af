// A term: one variable, or several nested ones, in the dimension that carries the statistics.
#ifndef QUILLET_TRANSLATOR_TERM_H
#define QUILLET_TRANSLATOR_TERM_H

#include <cstddef>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "parser/tbtrparsenode.h"
#include "translator/variabletypes.h"

namespace quillet {

/// Names of variables, in upper case.
using VariableNames = std::unordered_set<std::string_view>;

struct TermVariable {
    const TbTrParseNode* pNode = nullptr;
    VariableType type = kNoNodeType;
    std::string_view name;  ///< In upper case.
};

/// The variables of a term, outermost first. Borrows their nodes.
class Term {
public:
    /// `leaves` are variables.
    Term(const std::vector<const TbTrParseNode*>& leaves, const VariableTypes& types);

    [[nodiscard]] const std::vector<TermVariable>& Variables() const { return m_variables; }

    /// The names of the variables, each once, sorted.
    [[nodiscard]] const std::vector<std::string_view>& Names() const { return m_names; }

    [[nodiscard]] bool HasSet() const { return m_hasSet; }
    [[nodiscard]] bool HasScale() const { return m_hasScale; }

    /// Index of the magnet variable, the one that the statistics are written after: the
    /// innermost scale variable; without one the innermost multiple-response set; without one
    /// the innermost variable.
    [[nodiscard]] std::size_t MagnetIndex() const { return m_magnetIndex; }
    [[nodiscard]] const TermVariable& Magnet() const { return m_variables[m_magnetIndex]; }

    /// True when a variable of the term is one of `names`. Looks every name of the shorter list
    /// up in the other.
    [[nodiscard]] bool HasAnyOf(const VariableNames& names) const;

private:
    std::vector<TermVariable> m_variables;
    std::vector<std::string_view> m_names;
    bool m_hasSet = false;
    bool m_hasScale = false;
    std::size_t m_magnetIndex = 0;
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_TERM_H
