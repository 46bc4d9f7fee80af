#include "translator/treeediting.h"

#include <algorithm>
#include <deque>
#include <string_view>
#include <utility>

#include "parser/tbtrnodeviews.h"
#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "treeediting";

using Node = TbTrParseNode;

constexpr std::size_t kFirst = 0;

// An operator while leaves are taken out of it. Its children have been taken apart: those that
// stay are its children again, the others wait in `rest`.
struct Sweep {
    explicit Sweep(Node& node)
        : pOperator(&node),
          rest(node.GetNodeType()),
          hasSeveral(node.FirstChild() != node.LastChild()) {
        rest.TakeChildren(node);
    }

    // The next one to be decided upon; null at the end.
    [[nodiscard]] Node* Current() const { return rest.FirstChild(); }
    // Everything to the left was removed and nothing is to the right: the operator is useless.
    [[nodiscard]] bool IsAtOnlyChildLeft() const {
        return !pOperator->HasChildren() && !isAtFirst && rest.FirstChild() == rest.LastChild();
    }
    NodeOwner TakeCurrent() {
        isAtFirst = false;
        return rest.RemoveChild(kFirst);
    }

    Node* pOperator;
    Node rest;
    bool hasSeveral;
    bool isAtFirst = true;
};

class LeafRemoval {
public:
    LeafRemoval(Node& table, std::size_t dimension, const LeafDecider& decide)
        : m_table(table), m_dimension(dimension), m_decide(decide) {}

    [[nodiscard]] bool Run() {
        Node* pRoot = m_table.GetChild(m_dimension);
        if (!IsOperator(pRoot->GetNodeType())) return RunOnSingleLeaf(*pRoot);
        m_sweeps.emplace_back(*pRoot);
        while (!m_sweeps.empty()) {
            Node* pChild = m_sweeps.back().Current();
            if (!pChild) {
                FinishOperator();
            } else if (IsOperator(pChild->GetNodeType())) {
                m_sweeps.emplace_back(*pChild);
            } else if (!DecideOnLeaf(*pChild)) {
                return false;
            }
        }
        return true;
    }

private:
    [[nodiscard]] bool RunOnSingleLeaf(Node& leaf) {
        const LeafDecision decision = m_decide(leaf, {m_table.GetNodeType()});
        if (decision == LeafDecision::kRemove) TableView::EmptyDimension(m_table, m_dimension);
        return decision != LeafDecision::kFail;
    }

    [[nodiscard]] bool DecideOnLeaf(Node& leaf) {
        Sweep& sweep = m_sweeps.back();
        switch (m_decide(leaf, PlaceOf())) {
            case LeafDecision::kKeep:
                sweep.pOperator->AddChild(sweep.TakeCurrent());
                return true;
            case LeafDecision::kRemove:
                if (!QUILLET_ASSERT(sweep.hasSeveral, "pParent->GetChildCount() > 1")) return false;
                sweep.TakeCurrent();
                return true;
            case LeafDecision::kFail:
                break;
        }
        return false;
    }

    // An operator of which only the current child is left has given its place to that child,
    // even if the tree still says otherwise.
    [[nodiscard]] LeafPlace PlaceOf() const {
        const auto pParent =
            std::find_if(m_sweeps.rbegin(), m_sweeps.rend(),
                         [](const Sweep& sweep) { return !sweep.IsAtOnlyChildLeft(); });
        if (pParent == m_sweeps.rend()) return {m_table.GetNodeType()};
        LeafPlace place;
        place.parentType = pParent->pOperator->GetNodeType();
        place.pPrevious = pParent->pOperator->LastChild();
        place.pNext = pParent->rest.ChildAfter(*pParent->Current());
        return place;
    }

    // Puts what is left of the innermost operator in its place.
    void FinishOperator() {
        Node& finished = *m_sweeps.back().pOperator;
        m_sweeps.pop_back();
        const bool isOnlyChild =
            finished.HasChildren() && finished.FirstChild() == finished.LastChild();
        NodeOwner child = isOnlyChild ? finished.RemoveChild(kFirst) : nullptr;
        if (!m_sweeps.empty()) {
            NodeOwner whole = m_sweeps.back().TakeCurrent();
            if (child) whole = std::move(child);
            if (isOnlyChild || finished.HasChildren()) {
                m_sweeps.back().pOperator->AddChild(std::move(whole));
            }
        } else if (child) {
            TableView::ReplaceDimension(m_table, m_dimension, std::move(child));
        } else if (!finished.HasChildren()) {
            TableView::EmptyDimension(m_table, m_dimension);
        }
    }

    Node& m_table;
    std::size_t m_dimension;
    const LeafDecider& m_decide;
    std::deque<Sweep> m_sweeps;  // outermost first
};

// Makes the operators of its own type that begin right below `node` one with it. Those below them
// are looked at when they are children of it.
void DissolveOwnType(Node& node) {
    Node* pPrevious = nullptr;
    for (Node* pChild = node.FirstChild(); pChild;) {
        if (pChild->GetNodeType() == node.GetNodeType()) {
            Node* pFirst = pChild->FirstChild();
            node.DissolveChild(pPrevious, *pChild);
            pChild = pFirst;
        } else {
            pPrevious = pChild;
            pChild = node.ChildAfter(*pChild);
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
    std::vector<const Node*> leaves;
    LeafWalk walk(subtree);
    while (const Node* pLeaf = walk.Next()) leaves.push_back(pLeaf);
    return leaves;
}

const TbTrParseNode* LeafWalk::Next() {
    while (m_pNext || !m_open.empty()) {
        if (!m_pNext) {
            // The end of an operator: on with what comes after it.
            const Node* pOperator = m_open.back();
            m_open.pop_back();
            if (!m_open.empty()) m_pNext = m_open.back()->ChildAfter(*pOperator);
            continue;
        }
        const Node* pNode = m_pNext;
        if (IsOperator(pNode->GetNodeType())) {
            m_open.push_back(pNode);
            m_pNext = pNode->FirstChild();
            continue;
        }
        m_pNext = m_open.empty() ? nullptr : m_open.back()->ChildAfter(*pNode);
        return pNode;
    }
    return nullptr;
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
        DissolveOwnType(*pNode);
        for (Node* pOperand : ChildrenOf(*pNode)) {
            if (IsOperator(pOperand->GetNodeType())) pending.push_back(pOperand);
        }
    }
}

std::uint64_t MultipliedLeafCount(const TbTrParseNode& dimension, std::uint64_t limit) {
    struct Count {
        const Node* pOperator;
        const Node* pNext;
        MultipliedSize size;
    };
    MultipliedSize last = kOneLeaf;  // of the node that was counted last
    std::vector<Count> counts;
    const auto enter = [&](const Node* pNode) {
        if (!IsOperator(pNode->GetNodeType())) return false;
        counts.push_back({pNode, pNode->FirstChild(), SizeOfNone(pNode->GetNodeType())});
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
        if (const Node* pChild = count.pNext) {
            count.pNext = count.pOperator->ChildAfter(*pChild);
            if (enter(pChild)) continue;
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
        choice.pChild = choice.pStacking->ChildAfter(*choice.pChild);
        if (choice.pChild) {
            m_rests.resize(choice.restCount);
            m_leaves.resize(choice.leafCount);
            Expand(choice.pChild, choice.rest);
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
                m_choices.push_back(
                    {pNode, pNode->FirstChild(), rest, m_rests.size(), m_leaves.size()});
                pNode = pNode->FirstChild();
                break;
            case SP_GREATERTHAN:
                m_rests.push_back({pNode, pNode->FirstChild(), rest});
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
    if (const Node* pNextChild = taken.pNesting->ChildAfter(*taken.pChild)) {
        m_rests.push_back({taken.pNesting, pNextChild, taken.after});
        rest = m_rests.size() - 1;
    } else {
        rest = taken.after;
    }
    return taken.pChild;
}

}  // namespace quillet
