#include "parser/tbtrparsenode.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <ostream>
#include <string>
#include <utility>

#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tbtrparsenode";

// A listing deeper than this starts again at the margin: it is a runaway, not a table.
constexpr unsigned kMaxNodeIndent = 20;

constexpr std::size_t kVariableNameSlots = 2;

// Room for so many slots takes no more memory than for one, and most nodes need no more.
constexpr std::size_t kFirstRoom = 3;

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

std::unique_ptr<TbTrParseNode> CloneWithoutChildren(const TbTrParseNode& node) {
    const TAVQToken* pToken = node.GetToken();
    return MakeNode(node.GetNodeType(), pToken ? pToken->Clone() : nullptr);
}

}  // namespace

TbTrParseNode::TbTrParseNode(NodeType type, std::unique_ptr<TAVQToken> token)
    : m_nodeType(type), m_token(std::move(token)) {}

// Climbs down to the last leaf and back up by the parents, so that only nodes without children
// are ever destroyed: a tree may be deeper than the machine's stack, and giving memory back must
// not need memory.
TbTrParseNode::~TbTrParseNode() {
    TbTrParseNode* pNode = this;
    for (;;) {
        Slots& children = pNode->m_children;
        if (children.empty()) {
            if (pNode == this) return;
            pNode = pNode->m_pParent;
            continue;
        }
        TbTrParseNode* pLast = children.back().get();
        if (pLast && !pLast->m_children.empty()) {
            pLast->m_pParent = pNode;
            pNode = pLast;
        } else {
            children.pop_back();
        }
    }
}

NodeType TbTrParseNode::GetNodeType() const { return m_nodeType; }

void TbTrParseNode::SetNodeType(NodeType type) { m_nodeType = type; }

const TAVQToken* TbTrParseNode::GetToken() const { return m_token.get(); }

std::unique_ptr<TAVQToken> TbTrParseNode::SetToken(std::unique_ptr<TAVQToken> token) {
    return std::exchange(m_token, std::move(token));
}

TbTrParseNode* TbTrParseNode::SetParent(TbTrParseNode* pParent) {
    return std::exchange(m_pParent, pParent);
}

TbTrParseNode* TbTrParseNode::GetParent() const { return m_pParent; }

std::unique_ptr<TbTrParseNode> TbTrParseNode::ReplaceChild(std::size_t index,
                                                           std::unique_ptr<TbTrParseNode> node) {
    if (index >= GetChildCount()) return nullptr;
    if (node) node->SetParent(this);
    std::unique_ptr<TbTrParseNode> old =
        std::exchange(m_children[m_spareFront + index], std::move(node));
    if (old) old->SetParent(nullptr);
    return old;
}

std::unique_ptr<TbTrParseNode> TbTrParseNode::RemoveChild(std::size_t index) {
    if (index >= GetChildCount()) return nullptr;
    std::unique_ptr<TbTrParseNode> old = ReplaceChild(index, nullptr);
    if (index == 0) {
        ++m_spareFront;
    } else {
        m_children.erase(m_children.begin() +
                         static_cast<Slots::difference_type>(m_spareFront + index));
    }
    return old;
}

void TbTrParseNode::AddChild(std::unique_ptr<TbTrParseNode> node) {
    if (m_children.capacity() == 0) m_children.reserve(kFirstRoom);
    m_children.push_back(std::move(node));
    if (m_children.back()) m_children.back()->SetParent(this);
}

std::size_t TbTrParseNode::InsertNullChildren(std::size_t index, std::size_t count) {
    const std::size_t oldCount = GetChildCount();
    if (index > oldCount) return 0;
    if (index == 0 && oldCount > 0) {
        if (m_spareFront < count) GrowFront(count);
        m_spareFront -= count;
        return count;
    }
    if (m_children.capacity() == 0) m_children.reserve(std::max(count, kFirstRoom));
    m_children.resize(m_children.size() + count);
    const auto position = static_cast<Slots::difference_type>(m_spareFront + index);
    std::move_backward(m_children.begin() + position,
                       m_children.end() - static_cast<Slots::difference_type>(count),
                       m_children.end());
    return count;
}

void TbTrParseNode::GrowFront(std::size_t count) {
    const std::size_t oldCount = GetChildCount();
    // As much room as there are children: the moves then stay in proportion to the insertions.
    const std::size_t spare = std::max(count, oldCount);
    Slots children;
    children.reserve(spare + oldCount);
    children.resize(spare);
    std::move(m_children.begin() + static_cast<Slots::difference_type>(m_spareFront),
              m_children.end(), std::back_inserter(children));
    m_children = std::move(children);
    m_spareFront = spare;
}

TbTrParseNode* TbTrParseNode::GetChild(std::size_t index) const {
    return index < GetChildCount() ? m_children[m_spareFront + index].get() : nullptr;
}

std::uint32_t TbTrParseNode::IndexOfChild(const TbTrParseNode* pNode) const {
    const auto begin = m_children.begin() + static_cast<Slots::difference_type>(m_spareFront);
    const auto found = std::find_if(begin, m_children.end(),
                                    [pNode](const auto& child) { return child.get() == pNode; });
    return found == m_children.end() ? kNotFound : static_cast<std::uint32_t>(found - begin);
}

std::size_t TbTrParseNode::GetChildCount() const { return m_children.size() - m_spareFront; }

void TbTrParseNode::Dump(std::ostream& stream, unsigned indent) const {
    struct Pending {
        const TbTrParseNode* pNode;
        unsigned indent;
    };
    std::vector<Pending> pending{{this, indent}};
    while (!pending.empty()) {
        const TbTrParseNode& node = *pending.back().pNode;
        const unsigned nodeIndent =
            pending.back().indent <= kMaxNodeIndent ? pending.back().indent : 0;
        pending.pop_back();
        stream << std::string(nodeIndent, '\t') << "--Node type:\t"
               << static_cast<unsigned>(node.GetNodeType()) << '\n';
        if (node.GetToken()) node.GetToken()->Dump(stream, nodeIndent);
        // The last child goes in first, so that the first comes out first.
        for (std::size_t index = node.GetChildCount(); index > 0; --index) {
            const TbTrParseNode* pChild = node.GetChild(index - 1);
            if (pChild) pending.push_back({pChild, nodeIndent + 1});
        }
    }
}

std::unique_ptr<TbTrParseNode> MakeNode(NodeType type, std::unique_ptr<TAVQToken> token) {
    return std::make_unique<TbTrParseNode>(type, std::move(token));
}

std::unique_ptr<TbTrParseNode> MakeKeywordNode(NodeType type, std::unique_ptr<TAVQToken>& token) {
    if (!IsSettingKeyword(type)) return nullptr;
    token.reset();
    try {
        return MakeNode(type, nullptr);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::unique_ptr<TbTrParseNode> MakeLiteralNode(std::unique_ptr<TAVQToken>& token) {
    if (!token || token->Type() != TokenCodes::kLiteral) return nullptr;
    return MakeNode(SP_SLITERAL, std::move(token));
}

std::unique_ptr<TbTrParseNode> MakeVarNameNode(std::unique_ptr<TAVQToken>& token) {
    if (!token || token->Type() != TokenCodes::kString) return nullptr;
    std::unique_ptr<TbTrParseNode> node = MakeNode(SP_VARNAME, std::move(token));
    [[maybe_unused]] const std::size_t nullChildren =
        node->InsertNullChildren(0, kVariableNameSlots);
    QUILLET_ASSERT(nullChildren == kVariableNameSlots, "nullChildren == 2");
    return node;
}

std::unique_ptr<TbTrParseNode> MakeVarRangeNode(std::unique_ptr<TAVQToken>& fromToken,
                                                std::unique_ptr<TAVQToken>& toToken) {
    std::unique_ptr<TbTrParseNode> from = MakeVarNameNode(fromToken);
    std::unique_ptr<TbTrParseNode> to = MakeVarNameNode(toToken);
    if (!from && !to) return nullptr;
    std::unique_ptr<TbTrParseNode> range = MakeNode(TBI_VARRANGE, nullptr);
    range->AddChild(std::move(from));
    range->AddChild(std::move(to));
    return range;
}

std::unique_ptr<TbTrParseNode> CloneNode(const TbTrParseNode& node) {
    struct Pending {
        const TbTrParseNode* pSource;
        TbTrParseNode* pCopy;
    };
    std::unique_ptr<TbTrParseNode> root = CloneWithoutChildren(node);
    std::vector<Pending> pending{{&node, root.get()}};
    while (!pending.empty()) {
        const Pending current = pending.back();
        pending.pop_back();
        for (std::size_t index = 0; index < current.pSource->GetChildCount(); ++index) {
            const TbTrParseNode* pChild = current.pSource->GetChild(index);
            current.pCopy->AddChild(pChild ? CloneWithoutChildren(*pChild) : nullptr);
            if (pChild && pChild->GetChildCount() > 0) {
                pending.push_back({pChild, current.pCopy->GetChild(index)});
            }
        }
    }
    return root;
}

}  // namespace quillet
