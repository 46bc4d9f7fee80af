// The commands of a macro's body, as far as the body itself tells where they begin and end.
#ifndef QUILLET_DRIVER_BODYREGIONS_H
#define QUILLET_DRIVER_BODYREGIONS_H

#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "driver/bodytree.h"
#include "macro/lexer.h"
#include "platform/codepage.h"

namespace quillet {

/// A part of a command: a whole node, or the bytes [begin, end) of a text.
struct BodyElement {
    const BodyNode* pNode = nullptr;  ///< Borrowed from the tree.
    std::size_t begin = 0;
    std::size_t end = 0;
    bool endsCommand = false;
};

/// What stands between the ends of two commands: one command, with the conditions and loops in it.
struct BodyRegion {
    std::size_t begin = 0;  ///< Of its first word; the bytes [begin, end) of the body.
    std::size_t end = 0;    ///< After its period, or its last byte that is no white space.
    std::vector<BodyElement> elements;
};

/// Cuts one body. What it finds out about a node is kept, so that all calls together are linear in
/// the body.
class BodyCutter {
public:
    /// Borrows the body and the code page. The nodes that are handed in outlive this.
    BodyCutter(std::string_view body, const CodePage& codePage, bool batchMode)
        : m_lexer(codePage, body), m_batchMode(batchMode), m_firstText(m_lexer.SkipSpace(0)) {}

    /// The elements of a part of the tree, such as a branch of a condition, cut where commands end.
    [[nodiscard]] std::vector<BodyElement> Cut(const std::vector<BodyNode>& nodes);

    /// Adds the legacy commands of a part of the tree, in their order. They are found wherever
    /// whole commands stand: also in the branches of conditions and in loops.
    void FindLegacy(const std::vector<BodyNode>& nodes, std::vector<BodyRegion>& regions);

private:
    void CutText(const BodyNode& node, bool isBeforeStatement,
                 std::vector<BodyElement>& elements) const;
    [[nodiscard]] bool IsEnd(std::size_t position, std::size_t end, bool isBeforeStatement) const;
    [[nodiscard]] bool IsLast(std::size_t position, std::size_t end, bool isBeforeStatement) const;
    [[nodiscard]] bool IsBlank(const BodyElement& element) const;
    [[nodiscard]] bool IsNoCommand(const BodyElement& element) const;
    [[nodiscard]] bool IsClosed(const std::vector<BodyNode>& nodes);
    [[nodiscard]] bool IsWhole(const BodyNode& node);
    [[nodiscard]] bool EndsCommand(const BodyNode& node);
    [[nodiscard]] bool HasCommand(const std::vector<BodyNode>& nodes) const;
    void AddRegion(const std::vector<BodyElement>& elements, std::size_t first, std::size_t last,
                   std::vector<BodyRegion>& regions);
    [[nodiscard]] bool IsLegacy(const std::vector<BodyElement>& elements);
    [[nodiscard]] std::optional<bool> IsLegacyAt(const BodyElement& element);

    macro::Lexer m_lexer;
    bool m_batchMode;
    std::size_t m_firstText;  // a period there is no part of a command
    std::unordered_map<const BodyNode*, bool> m_isWhole;
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_BODYREGIONS_H
