// Parentheses may be nested as deep as the command is long, so that nothing here calls itself: the
// expression is read with a stack of its own, as operators of two strengths ask for, and written
// down as a flat tree with another one.
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "outline/askedreading.h"
#include "platform/assertion.h"

namespace quillet::outline {

namespace {

constexpr std::string_view kModule = "askedexpression";

// A tree while it is put together. Operands hang together in a list, so that two lists are joined
// in one step.
struct Tree {
    Role role = Role::kCategory;
    const CommandToken* pToken = nullptr;
    std::size_t firstOperand = kNowhere;
    std::size_t lastOperand = kNowhere;
    std::size_t next = kNowhere;  // the following operand of the same operator
};

// What waits for its right operand, or for its closing parenthesis.
struct Pending {
    bool isParenthesis = false;
    Role role = Role::kStacking;
    const CommandToken* pToken = nullptr;
};

class DimensionReader {
public:
    explicit DimensionReader(AskedReading& reading) : m_reading(reading) {}

    // Reads up to BY outside of parentheses, or to the end.
    void Read(TokenCursor& cursor, Dimension& dimension) {
        while (!cursor.AtEnd() && !(cursor.Peek().Is(TokenCodes::kBy) && m_depth == 0)) {
            if (!TakePart(cursor)) SkipUnreadable(cursor);
        }
        Finish();
        if (!m_operands.empty()) Write(m_operands.front(), dimension);
    }

private:
    // Takes the token here, if one like it may stand here.
    bool TakePart(TokenCursor& cursor) {
        const CommandToken& token = cursor.Peek();
        if (!MayTake(token)) return false;
        cursor.Take();
        if (token.IsWord()) {
            AddLeaf(token);
        } else if (token.Is(TokenCodes::kLeftParen)) {
            m_pending.push_back({true, Role::kStacking, &token});
            ++m_depth;
        } else if (token.Is(TokenCodes::kRightParen)) {
            CloseParenthesis();
        } else {
            const Role role = token.Is(TokenCodes::kPlus) ? Role::kStacking : Role::kNesting;
            ReduceStronger(role);
            m_pending.push_back({false, role, &token});
            m_hasOperand = false;
        }
        return true;
    }

    [[nodiscard]] bool MayTake(const CommandToken& token) const {
        if (token.IsWord() || token.Is(TokenCodes::kLeftParen)) return !m_hasOperand;
        if (token.Is(TokenCodes::kRightParen)) return m_hasOperand && m_depth > 0;
        return m_hasOperand && (token.Is(TokenCodes::kPlus) || token.Is(TokenCodes::kGreaterThan));
    }

    void SkipUnreadable(TokenCursor& cursor) {
        m_reading.SkipTo(cursor, [this](const CommandToken& token) {
            return MayTake(token) || (token.Is(TokenCodes::kBy) && m_depth == 0);
        });
    }

    void AddLeaf(const CommandToken& token) {
        m_operands.push_back(m_trees.size());
        m_trees.push_back({Role::kCategory, &token});
        m_hasOperand = true;
    }

    // An operator binds its operands before another one that is no stronger.
    void ReduceStronger(Role role) {
        while (!m_pending.empty() && !m_pending.back().isParenthesis &&
               (m_pending.back().role == Role::kNesting || role == Role::kStacking)) {
            Reduce();
        }
    }

    void CloseParenthesis() {
        while (!m_pending.back().isParenthesis) Reduce();
        m_pending.pop_back();
        --m_depth;
        Tree& tree = m_trees[m_operands.back()];
        if (tree.role != Role::kCategory) return;
        if (tree.pToken->Means("STATISTICS")) tree.role = Role::kStatistics;
        if (tree.pToken->Means("LABELS")) tree.role = Role::kLabels;
    }

    // Makes one operand of the last two.
    void Reduce() {
        const Pending pending = m_pending.back();
        m_pending.pop_back();
        if (!QUILLET_ASSERT(m_operands.size() >= 2, "m_operands.size() >= 2")) return;
        const std::size_t right = m_operands.back();
        m_operands.pop_back();
        std::size_t& left = m_operands.back();
        if (m_trees[left].role != pending.role) {
            m_trees.push_back({pending.role, pending.pToken, left, left});
            left = m_trees.size() - 1;
        }
        Tree& tree = m_trees[left];
        const bool isSame = m_trees[right].role == pending.role;
        m_trees[tree.lastOperand].next = isSame ? m_trees[right].firstOperand : right;
        tree.lastOperand = isSame ? m_trees[right].lastOperand : right;
    }

    // What is left open is closed, and an operator without a right operand taken away.
    void Finish() {
        while (!m_pending.empty()) {
            if (!m_hasOperand || m_pending.back().isParenthesis) {
                const CommandToken* pToken = m_pending.back().pToken;
                m_reading.Unreadable({&pToken, 1});
                // Before an operator stands its left operand; before a parenthesis another
                // operator.
                if (!m_pending.back().isParenthesis) m_hasOperand = true;
                m_pending.pop_back();
            } else {
                Reduce();
            }
        }
    }

    [[nodiscard]] static Node NodeOf(const Tree& tree) {
        Node node;
        node.role = tree.role;
        node.line = tree.pToken->line;
        if (!IsOperator(tree.role)) node.name = NameOf(*tree.pToken);
        return node;
    }

    // Root first, each operator before its operands.
    void Write(std::size_t root, Dimension& dimension) const {
        std::vector<std::pair<std::size_t, std::size_t>> open;  // trees, and where they stand
        std::size_t at = root;
        while (true) {
            const Tree& tree = m_trees[at];
            dimension.push_back(NodeOf(tree));
            if (IsOperator(tree.role)) {
                open.emplace_back(at, dimension.size() - 1);
                at = tree.firstOperand;
                continue;
            }
            dimension.back().end = dimension.size();
            while (m_trees[at].next == kNowhere && !open.empty()) {
                at = open.back().first;
                dimension[open.back().second].end = dimension.size();
                open.pop_back();
            }
            if (m_trees[at].next == kNowhere) return;
            at = m_trees[at].next;
        }
    }

    AskedReading& m_reading;
    std::vector<Tree> m_trees;
    std::vector<std::size_t> m_operands;  // into m_trees
    std::vector<Pending> m_pending;
    std::size_t m_depth = 0;    // of parentheses
    bool m_hasOperand = false;  // an operator may follow, and no operand
};

}  // namespace

void ReadExpression(AskedReading& reading, TokenPointers tokens, TableOutline& table) {
    TokenCursor cursor(tokens);
    for (Dimension& dimension : table.dimensions) {
        DimensionReader(reading).Read(cursor, dimension);
        if (cursor.AtEnd()) return;
        // There is no dimension after the layers.
        if (&dimension == &table.dimensions[kAxes - 1]) {
            reading.SkipRest(cursor);
            return;
        }
        const std::size_t by = cursor.Position();
        cursor.Take();
        if (dimension.empty() || cursor.AtEnd()) reading.Unreadable(cursor.Since(by));
    }
}

}  // namespace quillet::outline
