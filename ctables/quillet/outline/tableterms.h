// The terms of a dimension: what is left of it when its nestings are multiplied out.
#ifndef QUILLET_OUTLINE_TABLETERMS_H
#define QUILLET_OUTLINE_TABLETERMS_H

#include <cstddef>
#include <span>
#include <vector>

#include "outline/accountbuilder.h"
#include "outline/tableoutline.h"

namespace quillet::outline {

/// The terms of a dimension, each with the indexes of its nodes, the outermost first.
class Terms {
public:
    [[nodiscard]] std::size_t Count() const { return m_ends.size(); }
    [[nodiscard]] std::span<const std::size_t> operator[](std::size_t term) const {
        const std::size_t begin = term == 0 ? 0 : m_ends[term - 1];
        return std::span(m_nodes).subspan(begin, m_ends[term] - begin);
    }
    /// The nodes of all terms together.
    [[nodiscard]] std::size_t NodeCount() const { return m_nodes.size(); }

    /// Begins a term that goes on with `Extend`.
    void AddTerm() { m_ends.push_back(m_nodes.size()); }
    void Extend(std::span<const std::size_t> nodes) {
        m_nodes.insert(m_nodes.end(), nodes.begin(), nodes.end());
        m_ends.back() = m_nodes.size();
    }

private:
    std::vector<std::size_t> m_nodes;
    std::vector<std::size_t> m_ends;
};

/// Multiplies out a dimension. Nodes for which `isLeft` is false are left out, and so are operators
/// that have nothing left. Charges for every node that is copied.
[[nodiscard]] Terms MultiplyOut(const Dimension& dimension, const std::vector<bool>& isLeft,
                                AccountBuilder& builder);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_TABLETERMS_H
