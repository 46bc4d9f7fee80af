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

/// What a node is. The codes up to 314 are at the same time the grammar's token codes, in the
/// order of its terminals; from 501 on they are structure that the parser or the translator
/// adds. 500 and 510 are unassigned.
enum NodeType : unsigned {
    kNoNodeType = 0,

    SP_SLITERAL = 257,
    SP_NUMBER = 258,
    SP_NONVARNAME = 259,
    SP_VARNAME = 260,
    SP_PLUS = 261,
    SP_GREATERTHAN = 262,
    SP_SLASH = 263,
    SP_COLON = 264,
    SP_LPAREN = 265,
    SP_RPAREN = 266,
    SP_BY = 267,
    SP_TO = 268,
    TB_BREAK = 269,
    TB_LABELS = 270,
    SP_OTHEROP = 271,
    TB_UNWEIGHTED = 272,
    TB_AUTOLABEL = 273,
    TB_BASE = 274,
    TB_GBASE = 275,
    TB_MISSING = 276,
    TB_MISSINGSUBCOM = 277,
    TB_DEFAULT = 278,
    TB_ON = 279,
    TB_OFF = 280,
    TB_ANSWERING = 281,
    TB_QUALIFIED = 282,
    SP_ALL = 283,
    TB_CASES = 284,
    TB_RESPONSES = 285,
    TB_INCLUDE = 286,
    TB_EXCLUDE = 287,
    TB_BLANK = 288,
    TB_ZERO = 289,
    TB_FORMAT = 290,
    TB_FTOTAL = 291,
    TB_PTOTAL = 292,
    TB_MRGROUP = 293,
    TB_MDGROUP = 294,
    TB_SORT = 295,
    TB_ASCENDING = 296,
    TB_DESCENDING = 297,
    TB_CAPTION = 298,
    TB_TITLE = 299,
    TB_CORNER = 300,
    TB_STATISTICS = 301,
    TB_TABLE = 302,
    TB_OBSERVATION = 303,
    TB_UNKNOWNSUBCOM = 304,
    TB_BOXCHARS = 305,
    TB_CONTINUED = 306,
    TB_FONTCHARS = 307,
    TB_FOOTNOTE = 308,
    TB_INDEX = 309,
    TB_PFOOTNOTE = 310,
    TB_PTITLE = 311,
    TB_TFOOTNOTE = 312,
    TB_WRITE = 313,
    TB_ANYSUBCOMTOKEN = 314,

    TBI_VARLIST = 501,           ///< Variable specifications: `SP_VARNAME` or `TBI_VARRANGE`.
    TBI_VARRANGE = 502,          ///< "a TO b": the two `SP_VARNAME` nodes.
    TBI_SORTFUNCTION = 503,      ///< Token: the function; optional child: its `SP_VARNAME`.
    TBI_SORTVAR = 504,           ///< One key of SORT.
    TBI_GENERICLIST = 505,       ///< An ordered list of anything.
    TBI_STATFUNCTION = 506,      ///< Token: the function; optional child: its `SP_NUMBER`.
    TBI_FULLSTATFUNCTION = 507,  ///< Slots: weight, function, arguments, base variables.
    TBI_STATFUNCARG = 508,       ///< Slots: variable, format, label.
    TBI_FMT = 509,               ///< Token: the print format.
    TBI_FTOTALVAR = 511,         ///< A total of FTOTAL; made by the translator.
    TBI_PTOTALVAR = 512,         ///< A total of PTOTAL; made by the translator.
};

/// A node: a type, an optional token and an ordered list of children, any of which may be an
/// empty slot. It owns its token and its children; the parent is only looked at. Trees of any
/// depth are destroyed, cloned and dumped without recursion.
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

    /// Writes the tree for debugging, each node behind `indent` tabs (none above 20) and its
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
