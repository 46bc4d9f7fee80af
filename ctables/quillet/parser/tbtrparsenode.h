// The nodes of the parse tree of a TABLES command.
#ifndef QUILLET_PARSER_TBTRPARSENODE_H
#define QUILLET_PARSER_TBTRPARSENODE_H

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <vector>

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

/// A node: a type, an optional token and an ordered list of children, any of which may be an
/// empty slot. It owns its token and its children; the parent is only looked at. Trees of any
/// depth are destroyed, cloned and dumped without recursion.
///
/// The operations are virtual, and in this order, because that is the given interface of a node; no
/// other kind of node exists.
class TbTrParseNode {
public:
    /// "No such child", from `IndexOfChild`.
    static constexpr std::uint32_t kNotFound = 0xFFFFFFFF;

    explicit TbTrParseNode(NodeType type, std::unique_ptr<TAVQToken> token = nullptr);
    virtual ~TbTrParseNode();
    TbTrParseNode(const TbTrParseNode&) = delete;
    TbTrParseNode& operator=(const TbTrParseNode&) = delete;

    [[nodiscard]] virtual NodeType GetNodeType() const;
    virtual void SetNodeType(NodeType type);

    /// The token; may be null. The node keeps it.
    [[nodiscard]] virtual const TAVQToken* GetToken() const;
    /// Installs `token` and gives the old one back.
    virtual std::unique_ptr<TAVQToken> SetToken(std::unique_ptr<TAVQToken> token);

    /// Installs a parent and returns the previous one. The operations below do it by themselves.
    virtual TbTrParseNode* SetParent(TbTrParseNode* pParent);
    /// Null at the root and for a detached node.
    [[nodiscard]] virtual TbTrParseNode* GetParent() const;

    /// Puts `node` (null: an empty slot) in the slot at `index`, from 0, and gives back what was
    /// there. Null, and nothing changes (`node` is destroyed), when there is no such slot.
    virtual std::unique_ptr<TbTrParseNode> ReplaceChild(std::size_t index,
                                                        std::unique_ptr<TbTrParseNode> node);
    /// Takes the slot at `index` out of the list and gives back what was in it. Null when there
    /// is no such slot. Constant time at either end.
    virtual std::unique_ptr<TbTrParseNode> RemoveChild(std::size_t index);
    /// Appends `node`; null appends an empty slot.
    virtual void AddChild(std::unique_ptr<TbTrParseNode> node);
    /// Inserts `count` empty slots before `index`; the child count as index appends. Returns
    /// `count`, or 0 when `index` is beyond that and nothing was inserted. At either end the
    /// cost is that of the new slots alone.
    virtual std::size_t InsertNullChildren(std::size_t index, std::size_t count);

    /// The child at `index`; null for an empty slot and beyond the end.
    [[nodiscard]] virtual TbTrParseNode* GetChild(std::size_t index) const;
    /// The first slot that holds `pNode`; `kNotFound` when none does.
    [[nodiscard]] virtual std::uint32_t IndexOfChild(const TbTrParseNode* pNode) const;
    /// The number of slots, empty ones included.
    [[nodiscard]] virtual std::size_t GetChildCount() const;

    /// Writes the tree for debugging, each node after `indent` tabs (none above 20) and its
    /// children one deeper.
    virtual void Dump(std::ostream& stream, unsigned indent) const;

private:
    using Slots = std::vector<std::unique_ptr<TbTrParseNode>>;

    /// Makes room for `count` slots in front of the first child.
    void GrowFront(std::size_t count);

    NodeType m_nodeType;
    std::unique_ptr<TAVQToken> m_token;
    TbTrParseNode* m_pParent = nullptr;
    Slots m_children;
    /// How many null slots in front of the first child are spare room. Operands join a long
    /// stacking from the left as well as from the right, and neither may cost a move of all.
    std::size_t m_spareFront = 0;
};

/// A node without children that owns `token`, which may be null.
[[nodiscard]] std::unique_ptr<TbTrParseNode> MakeNode(NodeType type,
                                                      std::unique_ptr<TAVQToken> token);

/// A node without token and children for a setting keyword; `token` is destroyed. For a type
/// that is no setting keyword null, and `token` is left with the caller. Null, and `token` is
/// destroyed, when memory runs out.
[[nodiscard]] std::unique_ptr<TbTrParseNode> MakeKeywordNode(NodeType type,
                                                             std::unique_ptr<TAVQToken>& token);

/// An `SP_SLITERAL` node; null, and `token` is left with the caller, unless it is a literal.
[[nodiscard]] std::unique_ptr<TbTrParseNode> MakeLiteralNode(std::unique_ptr<TAVQToken>& token);

/// An `SP_VARNAME` node with two empty slots; null, and `token` is left with the caller, unless
/// it is a word.
[[nodiscard]] std::unique_ptr<TbTrParseNode> MakeVarNameNode(std::unique_ptr<TAVQToken>& token);

/// A `TBI_VARRANGE` node over the `MakeVarNameNode` of both tokens, either of which may come
/// out as an empty slot; null when both do.
[[nodiscard]] std::unique_ptr<TbTrParseNode> MakeVarRangeNode(std::unique_ptr<TAVQToken>& fromToken,
                                                              std::unique_ptr<TAVQToken>& toToken);

/// A deep copy, tokens and empty slots included, without a parent.
[[nodiscard]] std::unique_ptr<TbTrParseNode> CloneNode(const TbTrParseNode& node);

}  // namespace quillet

#endif  // QUILLET_PARSER_TBTRPARSENODE_H
