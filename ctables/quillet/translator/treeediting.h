// Edits and walks of the dimensions of a table.
//
// A dimension is a tree of stackings (`SP_PLUS`) and nestings (`SP_GREATERTHAN`) over leaves.
// Trees are as deep as a command nests and as wide as it lists, so nothing here recurses and
// nothing starts again after a change: everything takes time linear in the tree, or in what it
// yields.
#ifndef QUILLET_TRANSLATOR_TREEEDITING_H
#define QUILLET_TRANSLATOR_TREEEDITING_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "parser/tbtrparsenode.h"

namespace quillet {

/// The leaves of `subtree`, from left to right.
[[nodiscard]] std::vector<const TbTrParseNode*> LeavesOf(const TbTrParseNode& subtree);

/// Walks the same leaves without listing them. The tree must stay as it is meanwhile.
class LeafWalk {
public:
    explicit LeafWalk(const TbTrParseNode& subtree) : m_pNext(&subtree) {}

    /// The next leaf; null at the end.
    [[nodiscard]] const TbTrParseNode* Next();

private:
    const TbTrParseNode* m_pNext;
    std::vector<const TbTrParseNode*> m_open;  // the operators around it, outermost first
};

/// Where a leaf stands at the moment when it is decided upon: the leaves to the left of it that
/// had to go are gone already, those to the right are all there.
struct LeafPlace {
    /// The type of the node that the leaf is a child of. `TB_TABLE` when it is the dimension.
    NodeType parentType = kNoNodeType;
    TbTrParseNode* pPrevious = nullptr;  ///< Its sibling to the left; null for the first.
    TbTrParseNode* pNext = nullptr;      ///< Its sibling to the right; null for the last.
};

enum class LeafDecision {
    kKeep,
    kRemove,
    kFail,  ///< Stop here; the tree is of no use any more.
};

using LeafDecider = std::function<LeafDecision(TbTrParseNode& leaf, const LeafPlace& place)>;

/// Asks `decide` about each leaf of a dimension, from left to right, and removes the leaves that
/// it does not want. An operator that is left with one child gives its place to that child; a
/// dimension that is left with nothing becomes empty.
///
/// `table` is the `TB_TABLE` node, `dimension` the index of a dimension that is there. The result
/// may need `Flatten`: a child may have taken a place below an operator of its own type. Returns
/// false when `decide` failed.
[[nodiscard]] bool RemoveLeaves(TbTrParseNode& table, std::size_t dimension,
                                const LeafDecider& decide);

/// Dissolves each operator of `subtree` that stands below an operator of the same type: its
/// children take its place, in order.
void Flatten(TbTrParseNode& subtree);

/// How many leaves `dimension` has when its nestings are multiplied out over its stackings (see
/// `MultipliedTerms`); any number above `limit` when that is exceeded.
[[nodiscard]] std::uint64_t MultipliedLeafCount(const TbTrParseNode& dimension,
                                                std::uint64_t limit);

/// The terms that a dimension is a stacking of when its nestings are multiplied out over its
/// stackings: a nested over the stacking of b and c gives "a over b" and "a over c". They come
/// in the order in which distributing one stacking after the other puts them: what is further
/// out, or further left, changes more slowly. No tree is built; memory is that of one term.
class MultipliedTerms {
public:
    explicit MultipliedTerms(const TbTrParseNode& dimension) : m_dimension(dimension) {}

    /// Goes to the first term, later to the next one. False when there is none left.
    [[nodiscard]] bool Next();

    /// The leaves of the current term, outermost first.
    [[nodiscard]] const std::vector<const TbTrParseNode*>& Leaves() const { return m_leaves; }

private:
    static constexpr std::size_t kNothing = static_cast<std::size_t>(-1);

    // What is still to come to the right: the children of a nesting from `pChild` on, then
    // the rest at index `after`. Choices share rests, so a rest is never changed.
    struct Rest {
        const TbTrParseNode* pNesting;
        const TbTrParseNode* pChild;
        std::size_t after;
    };

    // A stacking on the way, the child that the term goes through, and what to go back to for
    // the next child.
    struct Choice {
        const TbTrParseNode* pStacking;
        const TbTrParseNode* pChild;
        std::size_t rest;
        std::size_t restCount;
        std::size_t leafCount;
    };

    void Expand(const TbTrParseNode* pNode, std::size_t rest);
    [[nodiscard]] const TbTrParseNode* TakeFrom(std::size_t& rest);

    const TbTrParseNode& m_dimension;
    bool m_started = false;
    std::vector<const TbTrParseNode*> m_leaves;
    std::vector<Rest> m_rests;
    std::vector<Choice> m_choices;
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_TREEEDITING_H
