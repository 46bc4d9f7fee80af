// The nodes of the parse tree of a TABLES command.
#ifndef QUILLET_PARSER_TBTRPARSENODE_H
#define QUILLET_PARSER_TBTRPARSENODE_H

#include <cstddef>
#include <iosfwd>
#include <memory>

#include "platform/arena.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

/// What a node is. The types up to 314 are at the same time the grammar's token codes, in the order
/// of its terminals; from 501 on they are structure that the parser or the translator adds. The
/// list tells what each of them is.
enum NodeType : unsigned {
    kNoNodeType = 0,
// NOLINTBEGIN(bugprone-macro-parentheses): names of enumerators cannot have any
#define QUILLET_TOKEN(code, number) code = number,
#define QUILLET_NODE(code, number) code = number,
// NOLINTEND(bugprone-macro-parentheses)
#include "parser/tbtrcodes.def"
};

class TbTrParseNode;

/// What `NodeOwner` does with a node that nobody wants: the arena gives its memory back.
struct LeaveToArena {
    void operator()(TbTrParseNode* /*pNode*/) const noexcept {}
};

/// The one place where a node is that hangs nowhere in a tree. Its memory is the arena's; as a node
/// can be handed on but not be copied, none gets into two places.
using NodeOwner = std::unique_ptr<TbTrParseNode, LeaveToArena>;

/// A node: a type, an optional token and an ordered list of children.
///
/// Nodes lie in an arena, which outlives them, and trees of any depth end with it. A node knows its
/// next sibling and its last child, which knows the first one: a child for each byte or two is what
/// a tree may have, so there is room for no more. Children are found in the time that it takes to
/// step over those before them, but for the first and the last.
class TbTrParseNode {
public:
    explicit TbTrParseNode(NodeType type, const TAVQToken& token = {}) : m_token(token) {
        SetNodeType(type);
    }
    ~TbTrParseNode() = default;
    TbTrParseNode(const TbTrParseNode&) = delete;
    TbTrParseNode& operator=(const TbTrParseNode&) = delete;

    [[nodiscard]] NodeType GetNodeType() const { return static_cast<NodeType>(m_token.Tag()); }
    void SetNodeType(NodeType type) { m_token.SetTag(type); }

    /// The token; may be null. The node keeps it.
    [[nodiscard]] const TAVQToken* GetToken() const {
        return m_token.Type() == TokenCodes::kAtEnd ? nullptr : &m_token;
    }
    /// Installs `token`, which may be none.
    void SetToken(const TAVQToken& token) {
        const NodeType type = GetNodeType();
        m_token = token;
        SetNodeType(type);
    }

    /// Appends `node`; null appends nothing.
    void AddChild(NodeOwner node);
    /// Makes `node` the first child; null does nothing.
    void AddFirstChild(NodeOwner node);
    /// Puts the children of `from`, in order, after those of this node.
    void TakeChildren(TbTrParseNode& from);
    /// The same in front of those of this node.
    void TakeChildrenFirst(TbTrParseNode& from);
    /// Takes the child at `index`, from 0, out and gives it to the caller; null when there is none.
    NodeOwner RemoveChild(std::size_t index);
    /// Puts `node`, which must not be null, in place of the child at `index`, from 0, and gives
    /// back what was there. Null, and nothing changes, when there is no such child.
    NodeOwner ReplaceChild(std::size_t index, NodeOwner node);
    /// Puts the children of `child`, which is one of this node and has some, in its place.
    /// `pPrevious` is the child before it; null for the first.
    void DissolveChild(TbTrParseNode* pPrevious, TbTrParseNode& child);

    [[nodiscard]] bool HasChildren() const { return m_pLastChild != nullptr; }
    /// Null for a node without children.
    [[nodiscard]] TbTrParseNode* FirstChild() const {
        return m_pLastChild ? m_pLastChild->m_pNext : nullptr;
    }
    [[nodiscard]] TbTrParseNode* LastChild() const { return m_pLastChild; }
    /// The child after `child`, which is one of this node; null for the last.
    [[nodiscard]] TbTrParseNode* ChildAfter(const TbTrParseNode& child) const {
        return &child == m_pLastChild ? nullptr : child.m_pNext;
    }
    /// The first child of one of the types; null for none.
    [[nodiscard]] TbTrParseNode* FindChild(NodeType type) const;
    /// The child at `index`, from 0; null beyond the end.
    [[nodiscard]] TbTrParseNode* GetChild(std::size_t index) const;
    /// Linear in the children.
    [[nodiscard]] std::size_t GetChildCount() const;

    /// Writes the tree for debugging, each node after `indent` tabs (none above 20) and its
    /// children one deeper.
    void Dump(std::ostream& stream, unsigned indent) const;

private:
    TAVQToken m_token;  // tagged with the type
    TbTrParseNode* m_pNext = nullptr;
    TbTrParseNode* m_pLastChild = nullptr;
};

static_assert(TBI_PTOTALVAR <= TAVQToken::kMaxTag);
static_assert(sizeof(void*) > 8 || sizeof(TbTrParseNode) <= 32, "docs/performance.md counts on it");

/// A node without children. `token` may be none.
[[nodiscard]] NodeOwner MakeNode(Arena& arena, NodeType type, const TAVQToken& token = {});

/// A node without token and children for a setting keyword; null for a type that is none.
[[nodiscard]] NodeOwner MakeKeywordNode(Arena& arena, NodeType type);

/// An `SP_SLITERAL` node; null unless `token` is a literal.
[[nodiscard]] NodeOwner MakeLiteralNode(Arena& arena, const TAVQToken& token);

/// An `SP_VARNAME` node; null unless `token` is a word.
[[nodiscard]] NodeOwner MakeVarNameNode(Arena& arena, const TAVQToken& token);

/// A `TBI_VARRANGE` node over the `MakeVarNameNode` of both tokens; null unless both are words.
[[nodiscard]] NodeOwner MakeVarRangeNode(Arena& arena, const TAVQToken& fromToken,
                                         const TAVQToken& toToken);

}  // namespace quillet

#endif  // QUILLET_PARSER_TBTRPARSENODE_H
