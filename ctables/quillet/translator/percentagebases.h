// What the whole is of which a percentage is taken: a row, a column, a layer or the table.
#ifndef QUILLET_TRANSLATOR_PERCENTAGEBASES_H
#define QUILLET_TRANSLATOR_PERCENTAGEBASES_H

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "parser/tbtrparsenode.h"
#include "platform/commandbudget.h"
#include "translator/term.h"

namespace quillet {

/// The bases as a set of bits.
enum PercentageBase : unsigned {
    TBTR_ROWPCT = 1,
    TBTR_COLPCT = 2,
    TBTR_LAYERPCT = 4,
    TBTR_TABPCT = 8,
};

/// Whether a dimension holds one of the base variables of a percentage.
enum class HoldsBase {
    kYes,
    kNo,
    kDisagree,  ///< Some of the terms that it is a stacking of do, some do not.
};

/// Answers `HoldsBase` for one dimension. The terms that count are those of the dimension
/// multiplied out; they are not built.
class DimensionBaseTest {
public:
    /// Borrows `dimension`, which must stay as it is, and `budget`.
    DimensionBaseTest(const TbTrParseNode& dimension, CommandBudget& budget);

    /// Takes time for the places where one of `names` stands, not for the whole dimension. The
    /// places of a name that was asked for before are charged as copies, a byte each: different
    /// sets of names can make the test look at the same places again and again. Throws
    /// `CommandTooLarge`.
    [[nodiscard]] HoldsBase Test(const VariableNames& names);

private:
    static constexpr std::size_t kNoParent = static_cast<std::size_t>(-1);

    // A node can avoid the names when it has a term without any of them: a variable when it is
    // none of them, a stacking when one of its children can, a nesting when all of them can.
    struct Node {
        std::size_t parent = 0;
        bool isStacking = false;
        std::size_t childCount = 0;
        std::size_t childrenInTheWay = 0;  // that cannot avoid the names; 0 between two tests
    };

    // A node with variables of one name among its children.
    struct Parent {
        std::size_t node;
        std::size_t childCount;  // how many of the children they are
    };
    struct Places {
        std::vector<Parent> parents;
        bool wereVisited = false;
    };

    [[nodiscard]] bool CountChildrenInTheWay(std::size_t node, std::size_t count);

    CommandBudget& m_budget;
    std::vector<Node> m_nodes;  // the root is the first
    std::unordered_map<std::string_view, Places> m_placesOfName;
    std::vector<std::size_t> m_touched;
};

/// The bases that follow from where the base variables are: `rows`, `columns` and `layers` tell
/// it for the dimensions. Where a dimension disagrees, both answers count.
[[nodiscard]] unsigned BasesFor(HoldsBase rows, HoldsBase columns, HoldsBase layers);

/// The word for a base, in front of the function's name. What is no base asserts and counts as the
/// table.
[[nodiscard]] std::string_view BaseWord(PercentageBase base);

/// The bases for the percentages of one table.
class PercentageBases {
public:
    /// `table` is the `TB_TABLE` node, which must stay as it is; `statsCompDim`, 1 to 3, is the
    /// dimension that carries the statistics. Borrows `budget`.
    PercentageBases(const TbTrParseNode& table, std::size_t statsCompDim, CommandBudget& budget);

    /// The bases of a percentage that stands on `term` and has the base variables `*pNames`;
    /// null for a percentage without them, which is of the whole table. `*pNames` must live as
    /// long as this object: its answer for the other dimensions is kept. Throws
    /// `CommandTooLarge` when too many names have to be looked up. A dimension that there is not
    /// asserts, and the base is the whole table.
    [[nodiscard]] unsigned BasesOf(const VariableNames* pNames, const Term& term);

private:
    using Answers = std::array<HoldsBase, 3>;

    [[nodiscard]] const Answers& OtherDimensions(const VariableNames& names);

    CommandBudget& m_budget;
    std::size_t m_statsCompIndex;
    // But for the one that carries the statistics; null where there is none.
    std::array<const TbTrParseNode*, 3> m_dimensions{};
    // Few tables have a percentage that asks them, so they are made for the first that does.
    std::array<std::optional<DimensionBaseTest>, 3> m_tests;
    std::unordered_map<const VariableNames*, Answers> m_answers;
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_PERCENTAGEBASES_H
