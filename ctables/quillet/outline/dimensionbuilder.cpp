#include "outline/dimensionbuilder.h"

#include <utility>

namespace quillet::outline {

// What a sign means is known only when the term is over, so the parts are linked first and put in
// their order at the end.

std::size_t DimensionBuilder::AddVariable(Node variable) {
    m_variables.push_back(m_parts.size());
    m_parts.push_back({std::move(variable), {}, kNowhere});
    Append(m_open.back().operands, m_parts.size() - 1, m_parts.size() - 1);
    return m_variables.size() - 1;
}

void DimensionBuilder::AddPlus(long line) {
    EndTerm(m_open.back());
    Chain& terms = m_open.back().terms;
    if (terms.line == 0) terms.line = line;
}

void DimensionBuilder::AddGreaterThan(long line) {
    Chain& operands = m_open.back().operands;
    if (operands.line == 0) operands.line = line;
}

void DimensionBuilder::OpenParenthesis() { m_open.emplace_back(); }

void DimensionBuilder::CloseParenthesis() {
    const std::size_t part = EndExpression();
    m_open.pop_back();
    m_parts[part].node.isInParentheses = true;
    Append(m_open.back().operands, part, part);
}

Dimension DimensionBuilder::Finish(std::vector<std::size_t>& places) {
    Dimension dimension;
    places.assign(m_variables.size(), kNowhere);
    if (m_variables.empty()) return dimension;
    dimension.reserve(m_parts.size());
    struct Begun {
        std::size_t place;        // in the dimension
        std::size_t nextOperand;  // in m_parts
    };
    std::vector<Begun> begun;
    std::size_t variableCount = 0;
    const auto begin = [&](std::size_t part) {
        Part& current = m_parts[part];
        if (!IsOperator(current.node.role)) places[variableCount++] = dimension.size();
        begun.push_back({dimension.size(), current.operands.first});
        dimension.push_back(std::move(current.node));
    };
    begin(EndExpression());
    while (!begun.empty()) {
        Begun& last = begun.back();
        if (last.nextOperand == kNowhere) {
            dimension[last.place].end = dimension.size();
            begun.pop_back();
            continue;
        }
        const std::size_t part = last.nextOperand;
        last.nextOperand = m_parts[part].next;
        begin(part);
    }
    return dimension;
}

void DimensionBuilder::Append(Chain& chain, std::size_t first, std::size_t last) {
    if (chain.first == kNowhere) {
        chain.first = first;
    } else {
        m_parts[chain.last].next = first;
    }
    chain.last = last;
    m_parts[last].next = kNowhere;
}

std::size_t DimensionBuilder::Join(Role role, const Chain& chain) {
    if (chain.first == chain.last) return chain.first;
    Part joined;
    joined.node.role = role;
    joined.node.line = chain.line;
    for (std::size_t part = chain.first; part != kNowhere;) {
        const std::size_t next = m_parts[part].next;
        // A part that is the same operator gives its operands.
        const Chain& operands = m_parts[part].operands;
        if (m_parts[part].node.role == role) {
            Append(joined.operands, operands.first, operands.last);
        } else {
            Append(joined.operands, part, part);
        }
        part = next;
    }
    m_parts.push_back(std::move(joined));
    return m_parts.size() - 1;
}

void DimensionBuilder::EndTerm(Expression& expression) {
    const std::size_t term = Join(Role::kNesting, expression.operands);
    expression.operands = {};
    Append(expression.terms, term, term);
}

std::size_t DimensionBuilder::EndExpression() {
    EndTerm(m_open.back());
    return Join(Role::kStacking, m_open.back().terms);
}

}  // namespace quillet::outline
