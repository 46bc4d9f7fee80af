#include "parser/tbtrparsenode.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tbtrparsenode";

// A listing deeper than this starts again at the margin: it is a runaway, not a table.
constexpr unsigned kMaxNodeIndent = 20;

// What stands in a tree as a keyword alone: the settings, and STATISTICS, which is a subcommand,
// but marks a place in a table expression as well.
constexpr NodeType kSettings[] = {
    TB_STATISTICS,
#define QUILLET_SETTING(word, code) code,
#include "parser/tbtrcodes.def"
};

bool IsSettingKeyword(NodeType type) {
    return std::find(std::begin(kSettings), std::end(kSettings), type) != std::end(kSettings);
}

}  // namespace

void TbTrParseNode::AddChild(NodeOwner node) {
    if (!node) return;
    // The tree has it from here on; the arena had it all along.
    TbTrParseNode* pNode = node.release();
    if (m_pLastChild) {
        pNode->m_pNext = std::exchange(m_pLastChild->m_pNext, pNode);
    } else {
        pNode->m_pNext = pNode;
    }
    m_pLastChild = pNode;
}

void TbTrParseNode::AddFirstChild(NodeOwner node) {
    if (!node) return;
    TbTrParseNode* pLast = m_pLastChild;
    AddChild(std::move(node));
    // The new last child of a ring is its first one, seen from the one before.
    if (pLast) m_pLastChild = pLast;
}

void TbTrParseNode::TakeChildren(TbTrParseNode& from) {
    TbTrParseNode* pLast = std::exchange(from.m_pLastChild, nullptr);
    if (!pLast) return;
    if (m_pLastChild) std::swap(m_pLastChild->m_pNext, pLast->m_pNext);
    m_pLastChild = pLast;
}

void TbTrParseNode::TakeChildrenFirst(TbTrParseNode& from) {
    TbTrParseNode* pLast = m_pLastChild;
    TakeChildren(from);
    if (pLast) m_pLastChild = pLast;
}

NodeOwner TbTrParseNode::RemoveChild(std::size_t index) {
    TbTrParseNode* pPrevious = index > 0 ? GetChild(index - 1) : m_pLastChild;
    if (!pPrevious || (index > 0 && pPrevious == m_pLastChild)) return nullptr;
    TbTrParseNode* pChild = pPrevious->m_pNext;
    pPrevious->m_pNext = pChild->m_pNext;
    if (pChild == m_pLastChild) m_pLastChild = pChild == pPrevious ? nullptr : pPrevious;
    pChild->m_pNext = nullptr;
    return NodeOwner(pChild);
}

NodeOwner TbTrParseNode::ReplaceChild(std::size_t index, NodeOwner node) {
    TbTrParseNode* pOld = GetChild(index);
    if (!pOld || !QUILLET_ASSERT(node, "node")) return nullptr;
    TbTrParseNode* pPrevious = index > 0 ? GetChild(index - 1) : m_pLastChild;
    TbTrParseNode* pNode = node.release();
    pNode->m_pNext = pOld->m_pNext;
    pPrevious->m_pNext = pNode;
    // An only child was its own neighbor.
    if (pPrevious == pOld) pNode->m_pNext = pNode;
    if (m_pLastChild == pOld) m_pLastChild = pNode;
    pOld->m_pNext = nullptr;
    return NodeOwner(pOld);
}

void TbTrParseNode::DissolveChild(TbTrParseNode* pPrevious, TbTrParseNode& child) {
    TbTrParseNode* pLast = std::exchange(child.m_pLastChild, nullptr);
    if (!QUILLET_ASSERT(pLast, "child.HasChildren()")) return;
    TbTrParseNode* pFirst = std::exchange(pLast->m_pNext, child.m_pNext);
    (pPrevious ? pPrevious : m_pLastChild)->m_pNext = pFirst;
    if (&child != m_pLastChild) return;
    // The last child's next one is the first; it is the child itself if there was no other.
    if (pLast->m_pNext == &child) pLast->m_pNext = pFirst;
    m_pLastChild = pLast;
}

TbTrParseNode* TbTrParseNode::FindChild(NodeType type) const {
    for (TbTrParseNode* pChild = FirstChild(); pChild; pChild = ChildAfter(*pChild)) {
        if (pChild->GetNodeType() == type) return pChild;
    }
    return nullptr;
}

TbTrParseNode* TbTrParseNode::GetChild(std::size_t index) const {
    TbTrParseNode* pChild = FirstChild();
    for (; pChild && index > 0; --index) pChild = ChildAfter(*pChild);
    return pChild;
}

std::size_t TbTrParseNode::GetChildCount() const {
    std::size_t count = 0;
    for (const TbTrParseNode* pChild = FirstChild(); pChild; pChild = ChildAfter(*pChild)) ++count;
    return count;
}

void TbTrParseNode::Dump(std::ostream& stream, unsigned indent) const {
    // The nodes from the top down to the one in work, and how far each is indented.
    struct Open {
        const TbTrParseNode* pNode;
        const TbTrParseNode* pNextChild;
        unsigned indent;
    };
    std::vector<Open> open;
    const auto write = [&](const TbTrParseNode& node, unsigned wanted) {
        const unsigned nodeIndent = wanted <= kMaxNodeIndent ? wanted : 0;
        stream << std::string(nodeIndent, '\t') << "--Node type:\t"
               << static_cast<unsigned>(node.GetNodeType()) << '\n';
        if (node.GetToken()) node.GetToken()->Dump(stream, nodeIndent);
        open.push_back({&node, node.FirstChild(), nodeIndent});
    };
    write(*this, indent);
    while (!open.empty()) {
        Open& last = open.back();
        const TbTrParseNode* pChild = last.pNextChild;
        if (!pChild) {
            open.pop_back();
            continue;
        }
        last.pNextChild = last.pNode->ChildAfter(*pChild);
        write(*pChild, last.indent + 1);
    }
}

NodeOwner MakeNode(Arena& arena, NodeType type, const TAVQToken& token) {
    return NodeOwner(arena.New<TbTrParseNode>(type, token));
}

NodeOwner MakeKeywordNode(Arena& arena, NodeType type) {
    return IsSettingKeyword(type) ? MakeNode(arena, type) : nullptr;
}

NodeOwner MakeLiteralNode(Arena& arena, const TAVQToken& token) {
    if (token.Type() != TokenCodes::kLiteral) return nullptr;
    return MakeNode(arena, SP_SLITERAL, token);
}

NodeOwner MakeVarNameNode(Arena& arena, const TAVQToken& token) {
    if (token.Type() != TokenCodes::kString) return nullptr;
    return MakeNode(arena, SP_VARNAME, token);
}

NodeOwner MakeVarRangeNode(Arena& arena, const TAVQToken& fromToken, const TAVQToken& toToken) {
    NodeOwner from = MakeVarNameNode(arena, fromToken);
    NodeOwner to = MakeVarNameNode(arena, toToken);
    if (!from || !to) return nullptr;
    NodeOwner range = MakeNode(arena, TBI_VARRANGE);
    range->AddChild(std::move(from));
    range->AddChild(std::move(to));
    return range;
}

}  // namespace quillet
