#include "translator/treeediting.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "treeediting";

using Node = TbTrParseNode;

// An operator whose children are being walked.
struct Walk {
    const Node* pOperator;
    std::size_t next = 0;
};

// An operator while leaves are taken out of it: the children before `kept` stay, those from
// `next` on are still to be looked at, the slots between are empty.
struct Sweep {
    Node* pOperator;
    std::size_t next = 0;
    std::size_t kept = 0;

    [[nodiscard]] std::size_t Count() const { return pOperator->GetChildCount(); }
    // Everything to the left was removed and nothing is to the right: the operator is useless.
    [[nodiscard]] bool IsAtOnlyChildLeft() const {
        return kept == 0 && next > 0 && next + 1 == Count();
    }
};

class LeafRemoval {
public:
    LeafRemoval(Node& table, std::size_t dimension, const LeafDecider& decide)
        : m_table(table), m_dimension(dimension), m_decide(decide) {}

    [[nodiscard]] bool Run() {
        Node* pRoot = m_table.GetChild(m_dimension);
        if (!IsOperator(pRoot->GetNodeType())) return RunOnSingleLeaf(*pRoot);
        m_sweeps.push_back({pRoot});
        while (!m_sweeps.empty()) {
            Sweep& sweep = m_sweeps.back();
            if (sweep.next == sweep.Count()) {
                FinishOperator();
                continue;
            }
            Node* pChild = sweep.pOperator->GetChild(sweep.next);
            if (IsOperator(pChild->GetNodeType())) {
                m_sweeps.push_back({pChild});
            } else if (!DecideOnLeaf(*pChild)) {
                return false;
            }
        }
        return true;
    }

private:
    [[nodiscard]] bool RunOnSingleLeaf(Node& leaf) {
        const LeafDecision decision = m_decide(leaf, {m_table.GetNodeType()});
        if (decision == LeafDecision::kRemove) m_table.ReplaceChild(m_dimension, nullptr);
        return decision != LeafDecision::kFail;
    }

    [[nodiscard]] bool DecideOnLeaf(Node& leaf) {
        Sweep& sweep = m_sweeps.back();
        switch (m_decide(leaf, PlaceOf())) {
            case LeafDecision::kKeep:
                KeepLeaf();
                return true;
            case LeafDecision::kRemove:
                if (!QUILLET_ASSERT(sweep.Count() > 1, "pParent->GetChildCount() > 1")) {
                    return false;
                }
                sweep.pOperator->ReplaceChild(sweep.next, nullptr);
                ++sweep.next;
                return true;
            case LeafDecision::kFail:
                break;
        }
        return false;
    }

    // An operator of which only the current child is left has given its place to that child,
    // even if the slots still say otherwise.
    [[nodiscard]] LeafPlace PlaceOf() const {
        const auto pParent =
            std::find_if(m_sweeps.rbegin(), m_sweeps.rend(),
                         [](const Sweep& sweep) { return !sweep.IsAtOnlyChildLeft(); });
        if (pParent == m_sweeps.rend()) return {m_table.GetNodeType()};
        LeafPlace place;
        place.parentType = pParent->pOperator->GetNodeType();
        if (pParent->kept > 0) place.pPrevious = pParent->pOperator->GetChild(pParent->kept - 1);
        place.pNext = pParent->pOperator->GetChild(pParent->next + 1);
        return place;
    }

    // As long as nothing was removed to the left, a leaf that stays is in its place.
    void KeepLeaf() {
        Sweep& sweep = m_sweeps.back();
        if (sweep.kept < sweep.next) {
            KeepCurrent(sweep.pOperator->ReplaceChild(sweep.next, nullptr));
            return;
        }
        ++sweep.kept;
        ++sweep.next;
    }

    void KeepCurrent(NodeOwner node) {
        Sweep& sweep = m_sweeps.back();
        sweep.pOperator->ReplaceChild(sweep.kept, std::move(node));
        ++sweep.kept;
        ++sweep.next;
    }

    // Puts what is left of the innermost operator in its place.
    void FinishOperator() {
        const Sweep finished = m_sweeps.back();
        m_sweeps.pop_back();
        while (finished.Count() > finished.kept) {
            finished.pOperator->RemoveChild(finished.Count() - 1);
        }
        NodeOwner whole = TakeFinished();
        if (finished.kept == 1) whole = TakeOnlyOperand(*finished.pOperator);
        if (finished.kept == 0) whole = nullptr;
        if (m_sweeps.empty()) {
            m_table.ReplaceChild(m_dimension, std::move(whole));
        } else if (whole) {
            KeepCurrent(std::move(whole));
        } else {
            ++m_sweeps.back().next;
        }
    }

    [[nodiscard]] NodeOwner TakeFinished() {
        if (m_sweeps.empty()) return m_table.ReplaceChild(m_dimension, nullptr);
        return m_sweeps.back().pOperator->ReplaceChild(m_sweeps.back().next, nullptr);
    }

    Node& m_table;
    std::size_t m_dimension;
    const LeafDecider& m_decide;
    std::vector<Sweep> m_sweeps;  // outermost first
};

std::vector<NodeOwner> TakeChildren(Node& node) {
    std::vector<NodeOwner> children;
    while (node.GetChildCount() > 0) {
        children.push_back(node.RemoveChild(node.GetChildCount() - 1));
    }
    std::reverse(children.begin(), children.end());
    return children;
}

bool HasChildOfOwnType(const Node& node) {
    const NodeChildren operands = ChildrenOf(node);
    return std::any_of(operands.begin(), operands.end(), [&node](const Node* pOperand) {
        return pOperand->GetNodeType() == node.GetNodeType();
    });
}

// Makes the operators of its own type that begin right below `node` one with it.
void DissolveOwnType(Node& node) {
    std::vector<NodeOwner> pending = TakeChildren(node);
    std::reverse(pending.begin(), pending.end());
    while (!pending.empty()) {
        NodeOwner child = std::move(pending.back());
        pending.pop_back();
        if (child->GetNodeType() != node.GetNodeType()) {
            node.AddChild(std::move(child));
            continue;
        }
        while (child->GetChildCount() > 0) {
            pending.push_back(child->RemoveChild(child->GetChildCount() - 1));
        }
    }
}

// A dimension multiplied out: how many terms, and how many leaves in all of them.
struct MultipliedSize {
    std::uint64_t terms;
    std::uint64_t leaves;
};

// Numbers above the limit stay just above it, so that no product of two overflows.
MultipliedSize Cap(MultipliedSize size, std::uint64_t limit) {
    return {std::min(size.terms, limit + 1), std::min(size.leaves, limit + 1)};
}

MultipliedSize Stacked(MultipliedSize left, MultipliedSize right) {
    return {left.terms + right.terms, left.leaves + right.leaves};
}

// Each term of one side goes with each of the other.
MultipliedSize Nested(MultipliedSize left, MultipliedSize right) {
    return {left.terms * right.terms, left.leaves * right.terms + right.leaves * left.terms};
}

constexpr MultipliedSize kOneLeaf = {1, 1};

// What an operator begins with: a stacking of nothing has no terms, a nesting of nothing one.
MultipliedSize SizeOfNone(NodeType type) {
    return {type == SP_GREATERTHAN ? std::uint64_t{1} : std::uint64_t{0}, 0};
}

}  // namespace

std::vector<const TbTrParseNode*> LeavesOf(const TbTrParseNode& subtree) {
    if (!IsOperator(subtree.GetNodeType())) return {&subtree};
    std::vector<const Node*> leaves;
    std::vector<Walk> walks = {{&subtree}};
    while (!walks.empty()) {
        Walk& walk = walks.back();
        if (walk.next == walk.pOperator->GetChildCount()) {
            walks.pop_back();
            continue;
        }
        const Node* pChild = walk.pOperator->GetChild(walk.next++);
        if (IsOperator(pChild->GetNodeType())) {
            walks.push_back({pChild});
        } else {
            leaves.push_back(pChild);
        }
    }
    return leaves;
}

bool RemoveLeaves(TbTrParseNode& table, std::size_t dimension, const LeafDecider& decide) {
    return LeafRemoval(table, dimension, decide).Run();
}

void Flatten(TbTrParseNode& subtree) {
    std::vector<Node*> pending = {&subtree};
    while (!pending.empty()) {
        Node* pNode = pending.back();
        pending.pop_back();
        if (!IsOperator(pNode->GetNodeType())) continue;
        if (HasChildOfOwnType(*pNode)) DissolveOwnType(*pNode);
        for (Node* pOperand : ChildrenOf(*pNode)) pending.push_back(pOperand);
    }
}

std::uint64_t MultipliedLeafCount(const TbTrParseNode& dimension, std::uint64_t limit) {
    struct Count {
        const Node* pOperator;
        std::size_t next;
        MultipliedSize size;
    };
    MultipliedSize last = kOneLeaf;  // of the node that was counted last
    std::vector<Count> counts;
    const auto enter = [&](const Node* pNode) {
        if (!IsOperator(pNode->GetNodeType())) return false;
        counts.push_back({pNode, 0, SizeOfNone(pNode->GetNodeType())});
        return true;
    };
    const auto addLast = [&] {
        Count& count = counts.back();
        const bool stacked = count.pOperator->GetNodeType() == SP_PLUS;
        count.size = Cap(stacked ? Stacked(count.size, last) : Nested(count.size, last), limit);
    };
    enter(&dimension);
    while (!counts.empty()) {
        Count& count = counts.back();
        if (count.next < count.pOperator->GetChildCount()) {
            if (enter(count.pOperator->GetChild(count.next++))) continue;
            last = kOneLeaf;
        } else {
            last = count.size;
            counts.pop_back();
        }
        if (!counts.empty()) addLast();
    }
    return last.leaves;
}

bool MultipliedTerms::Next() {
    if (!m_started) {
        m_started = true;
        Expand(&m_dimension, kNothing);
        return true;
    }
    while (!m_choices.empty()) {
        Choice& choice = m_choices.back();
        if (++choice.child < choice.pStacking->GetChildCount()) {
            m_rests.resize(choice.restCount);
            m_leaves.resize(choice.leafCount);
            Expand(choice.pStacking->GetChild(choice.child), choice.rest);
            return true;
        }
        m_choices.pop_back();
    }
    return false;
}

// Appends the leaves of `pNode`, going through the first child of each stacking, and those of
// the rest.
void MultipliedTerms::Expand(const TbTrParseNode* pNode, std::size_t rest) {
    while (pNode) {
        switch (pNode->GetNodeType()) {
            case SP_PLUS:
                m_choices.push_back({pNode, 0, rest, m_rests.size(), m_leaves.size()});
                pNode = OperatorView(*pNode).First();
                break;
            case SP_GREATERTHAN:
                m_rests.push_back({pNode, 0, rest});
                rest = m_rests.size() - 1;
                pNode = TakeFrom(rest);
                break;
            default:
                m_leaves.push_back(pNode);
                pNode = TakeFrom(rest);
                break;
        }
    }
}

// The next node of `rest`, which becomes what is to come after that node; null at the end.
const TbTrParseNode* MultipliedTerms::TakeFrom(std::size_t& rest) {
    if (rest == kNothing) return nullptr;
    const Rest taken = m_rests[rest];
    if (taken.nextChild + 1 < taken.pNesting->GetChildCount()) {
        m_rests.push_back({taken.pNesting, taken.nextChild + 1, taken.after});
        rest = m_rests.size() - 1;
    } else {
        rest = taken.after;
    }
    return taken.pNesting->GetChild(taken.nextChild);
}

}  // namespace quillet
