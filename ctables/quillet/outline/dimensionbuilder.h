// Makes the tree of a dimension from its operands, signs and parentheses.
#ifndef QUILLET_OUTLINE_DIMENSIONBUILDER_H
#define QUILLET_OUTLINE_DIMENSIONBUILDER_H

#include <cstddef>
#include <vector>

#include "outline/tableoutline.h"

namespace quillet::outline {

/// Takes the parts of a table expression in the order of the text: an operand, then a sign and an
/// operand, again and again; an operand may be an expression in parentheses. That they come in this
/// order is up to the caller. Nesting binds tighter than stacking. Linear in the parts; no depth of
/// parentheses is too much.
class DimensionBuilder {
public:
    /// Adds a variable. Returns its number, from 0 in the order of the calls.
    std::size_t AddVariable(Node variable);

    /// The sign "+", on `line`.
    void AddPlus(long line);

    /// The sign ">".
    void AddGreaterThan(long line);

    void OpenParenthesis();

    /// There must be an open one.
    void CloseParenthesis();

    [[nodiscard]] bool HasOpenParenthesis() const { return m_open.size() > 1; }

    /// The tree of all that was added. `places` becomes where each variable stands in it, by the
    /// number of the variable. To be called once, when all parentheses are closed; without any
    /// variable the dimension is empty.
    [[nodiscard]] Dimension Finish(std::vector<std::size_t>& places);

private:
    // Parts one after the other, linked by `Part::next`.
    struct Chain {
        std::size_t first = kNowhere;
        std::size_t last = kNowhere;
        long line = 0;  // of the first sign
    };
    struct Part {
        Node node;
        Chain operands;
        std::size_t next = kNowhere;
    };
    // What has been read of an expression: terms, and the operands of the last one.
    struct Expression {
        Chain terms;
        Chain operands;
    };

    void Append(Chain& chain, std::size_t first, std::size_t last);
    [[nodiscard]] std::size_t Join(Role role, const Chain& chain);
    void EndTerm(Expression& expression);
    [[nodiscard]] std::size_t EndExpression();

    std::vector<Part> m_parts;
    std::vector<std::size_t> m_variables;             // in m_parts
    std::vector<Expression> m_open = {Expression{}};  // the outermost first
};

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_DIMENSIONBUILDER_H
