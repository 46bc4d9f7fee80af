// A body is cut into commands before anybody knows what its conditions and loops will make of it.
// Where each branch of a statement holds whole commands, these are cut for themselves; where it
// does not, the statement is a part of the command around it.
#include "driver/bodyregions.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "macro/lexer.h"
#include "platform/multibyte.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

bool IsStatement(const BodyNode& node) {
    return node.kind != BodyNode::Kind::kText && node.kind != BodyNode::Kind::kSite &&
           node.kind != BodyNode::Kind::kName;
}

bool IsBlock(const BodyNode& node) {
    return node.kind == BodyNode::Kind::kCondition || node.kind == BodyNode::Kind::kLoop;
}

}  // namespace

std::vector<BodyElement> BodyCutter::Cut(const std::vector<BodyNode>& nodes) {
    std::vector<BodyElement> elements;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const BodyNode& node = nodes[i];
        if (node.kind == BodyNode::Kind::kText) {
            const bool isBeforeStatement = i + 1 == nodes.size() || IsStatement(nodes[i + 1]);
            CutText(node, isBeforeStatement, elements);
        } else {
            elements.push_back({&node, node.begin, node.end, EndsCommand(node)});
        }
    }
    return elements;
}

void BodyCutter::FindLegacy(const std::vector<BodyNode>& nodes, std::vector<BodyRegion>& regions) {
    const std::vector<BodyElement> elements = Cut(nodes);
    std::size_t first = 0;
    while (first < elements.size()) {
        const BodyElement& element = elements[first];
        if (IsNoCommand(element)) {
            ++first;
        } else if (IsBlock(*element.pNode) && IsWhole(*element.pNode)) {
            FindLegacy(element.pNode->children, regions);
            FindLegacy(element.pNode->otherwise, regions);
            ++first;
        } else {
            std::size_t last = first;
            while (last + 1 < elements.size() && !elements[last].endsCommand) ++last;
            AddRegion(elements, first, last + 1, regions);
            first = last + 1;
        }
    }
}

// A piece of a text ends after the period of a command.
void BodyCutter::CutText(const BodyNode& node, bool isBeforeStatement,
                         std::vector<BodyElement>& elements) const {
    std::size_t begin = node.begin;
    std::size_t position = node.begin;
    const auto cut = [&](std::size_t end, bool endsCommand) {
        if (begin < end) elements.push_back({&node, begin, end, endsCommand});
        begin = end;
    };
    while (position < node.end) {
        const char byte = m_lexer.At(position);
        if (macro::IsQuote(byte)) {
            position = m_lexer.LiteralEnd(position);
        } else if (m_lexer.IsAtComment(position)) {
            position = m_lexer.CommentEnd(position);
        } else if (IsEnd(position, node.end, isBeforeStatement)) {
            cut(++position, true);
        } else {
            position = m_lexer.CharacterEnd(position);
        }
    }
    cut(node.end, false);
}

// The byte there is the last of a command.
bool BodyCutter::IsEnd(std::size_t position, std::size_t end, bool isBeforeStatement) const {
    const char byte = m_lexer.At(position);
    if (byte == '.') {
        return position == m_firstText || IsLast(position + 1, end, isBeforeStatement);
    }
    return m_batchMode && byte == '\n' && position + 1 < end &&
           !macro::IsSpace(m_lexer.At(position + 1));
}

// Nothing stands in the rest of the line that starts here, or a statement does.
bool BodyCutter::IsLast(std::size_t position, std::size_t end, bool isBeforeStatement) const {
    while (position < end) {
        if (macro::IsBlank(m_lexer.At(position))) {
            ++position;
        } else if (m_lexer.IsAtComment(position)) {
            position = m_lexer.CommentEnd(position);
        } else {
            return macro::IsLineBreak(m_lexer.At(position));
        }
    }
    return isBeforeStatement;
}

bool BodyCutter::IsBlank(const BodyElement& element) const {
    return element.pNode->kind == BodyNode::Kind::kText &&
           m_lexer.SkipSpace(element.begin) >= element.end;
}

// Stands between commands: white space, a variable that is set.
bool BodyCutter::IsNoCommand(const BodyElement& element) const {
    return IsBlank(element) || (IsStatement(*element.pNode) && !IsBlock(*element.pNode));
}

// All that stands there are whole commands.
bool BodyCutter::IsClosed(const std::vector<BodyNode>& nodes) {
    const std::vector<BodyElement> elements = Cut(nodes);
    for (std::size_t i = elements.size(); i-- > 0;) {
        if (!IsNoCommand(elements[i])) {
            return elements[i].endsCommand ||
                   (IsBlock(*elements[i].pNode) && IsWhole(*elements[i].pNode));
        }
    }
    return true;
}

bool BodyCutter::IsWhole(const BodyNode& node) {
    const auto known = m_isWhole.find(&node);
    if (known != m_isWhole.end()) return known->second;
    const bool isWhole = IsClosed(node.children) && IsClosed(node.otherwise);
    m_isWhole[&node] = isWhole;
    return isWhole;
}

bool BodyCutter::HasCommand(const std::vector<BodyNode>& nodes) const {
    return std::any_of(nodes.begin(), nodes.end(), [this](const BodyNode& node) {
        return !IsNoCommand({&node, node.begin, node.end, false});
    });
}

// Whatever the condition says, a command is over after it.
bool BodyCutter::EndsCommand(const BodyNode& node) {
    return node.kind == BodyNode::Kind::kCondition && HasCommand(node.children) &&
           HasCommand(node.otherwise) && IsWhole(node);
}

void BodyCutter::AddRegion(const std::vector<BodyElement>& elements, std::size_t first,
                           std::size_t last, std::vector<BodyRegion>& regions) {
    const auto begin = elements.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = elements.begin() + static_cast<std::ptrdiff_t>(last);
    BodyRegion region;
    region.elements.assign(begin, end);
    BodyElement& front = region.elements.front();
    if (front.pNode->kind == BodyNode::Kind::kText) {
        front.begin = m_lexer.SkipSpace(front.begin);
    }
    if (!IsLegacy(region.elements)) return;
    BodyElement& back = region.elements.back();
    if (back.pNode->kind == BodyNode::Kind::kText) {
        while (back.end > back.begin && macro::IsSpace(m_lexer.At(back.end - 1))) --back.end;
    }
    region.begin = front.begin;
    region.end = back.end;
    regions.push_back(std::move(region));
}

bool BodyCutter::IsLegacy(const std::vector<BodyElement>& elements) {
    for (const BodyElement& element : elements) {
        const std::optional<bool> isLegacy = IsLegacyAt(element);
        if (isLegacy) return *isLegacy;
    }
    return false;
}

// None where no word stands.
std::optional<bool> BodyCutter::IsLegacyAt(const BodyElement& element) {
    if (IsNoCommand(element)) return std::nullopt;
    const BodyNode& node = *element.pNode;
    if (IsBlock(node)) {
        const std::vector<BodyElement> children = Cut(node.children);
        const std::vector<BodyElement> otherwise = Cut(node.otherwise);
        return IsLegacy(children) || IsLegacy(otherwise);
    }
    if (node.kind != BodyNode::Kind::kText) return false;
    const macro::Token token = m_lexer.NextToken(element.begin);
    if (token.kind != macro::TokenKind::kIdentifier || token.end > element.end) return false;
    const std::string word = InUpperAscii(m_lexer.TextOf(token));
    return MeansKeyword(word, "TABLES") || MeansKeyword(word, "IGRAPH");
}

}  // namespace quillet
