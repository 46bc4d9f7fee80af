// A total is stacked beside what it totals. Beside a group it belongs to one variable of it: to the
// outermost one of a nesting, to the nearest one of a stacking. A variable that is summarized has
// nothing to be totaled, so that beside a nesting in such a variable the total is that of what is
// nested there.
#include "outline/askedtotals.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace quillet::outline {

namespace {

// Where one gets from a node by going down to the variable nearest to a total.
struct Way {
    std::size_t leaf = kNowhere;
    std::size_t nesting = kNowhere;  // the last one on the way
};

// True for what stands between a total and what it totals.
bool IsPassedOver(Role role) { return role == Role::kTotal || role == Role::kStatistics; }

class TotalFinder {
public:
    explicit TotalFinder(const Dimension& dimension)
        : m_dimension(dimension), m_totaled(dimension.size(), kNowhere) {}

    // The node that each total totals, by the total's own node; `kNowhere` for none.
    std::vector<std::size_t> Find(const std::vector<Position>& positions) {
        for (std::vector<Way>& ways : m_ways) ways.resize(m_dimension.size());
        // Operands stand after their operators.
        for (std::size_t node = m_dimension.size(); node-- > 0;) FindWays(node);
        for (std::size_t node = 0; node < m_dimension.size(); ++node) {
            if (m_dimension[node].role == Role::kStacking) VisitStacking(node, positions);
        }
        return std::move(m_totaled);
    }

private:
    [[nodiscard]] std::vector<Way>& WaysFor(Position position) {
        return m_ways[position == Position::kBefore ? 0 : 1];
    }

    void FindWays(std::size_t node) {
        for (const Position position : {Position::kBefore, Position::kAfter}) {
            WaysFor(position)[node] = WayFrom(node, position);
        }
    }

    [[nodiscard]] Way WayFrom(std::size_t node, Position position) {
        const Role role = m_dimension[node].role;
        if (!IsOperator(role)) return {node, kNowhere};
        std::size_t operand = node + 1;
        if (role == Role::kStacking) operand = NearestOperand(node, position);
        Way way = WaysFor(position)[operand];
        if (role == Role::kNesting && way.nesting == kNowhere) way.nesting = node;
        return way;
    }

    // The operand of a stacking that stands nearest to a total before or after it.
    [[nodiscard]] std::size_t NearestOperand(std::size_t node, Position position) const {
        std::size_t nearest = kNowhere;
        for (std::size_t operand = node + 1; operand < m_dimension[node].end;
             operand = m_dimension[operand].end) {
            if (IsPassedOver(m_dimension[operand].role)) continue;
            if (position == Position::kAfter || nearest == kNowhere) nearest = operand;
        }
        return nearest == kNowhere ? node + 1 : nearest;
    }

    void VisitStacking(std::size_t node, const std::vector<Position>& positions) {
        std::size_t previous = kNowhere;
        std::vector<std::size_t> waiting;  // totals for what follows them
        for (std::size_t operand = node + 1; operand < m_dimension[node].end;
             operand = m_dimension[operand].end) {
            const Role role = m_dimension[operand].role;
            if (role == Role::kTotal) {
                if (positions[operand] == Position::kBefore) {
                    waiting.push_back(operand);
                } else if (previous != kNowhere) {
                    m_totaled[operand] = Totaled(WaysFor(Position::kAfter)[previous]);
                }
            } else if (!IsPassedOver(role)) {
                const std::size_t totaled = Totaled(WaysFor(Position::kBefore)[operand]);
                for (const std::size_t total : waiting) m_totaled[total] = totaled;
                waiting.clear();
                previous = operand;
            }
        }
    }

    [[nodiscard]] std::size_t Totaled(const Way& way) {
        switch (m_dimension[way.leaf].role) {
            case Role::kCategory:
            case Role::kSet:
            case Role::kLabels:
                return way.leaf;
            case Role::kScale:
                return way.nesting == kNowhere ? kNowhere : InsideOf(way.nesting);
            default:
                return kNowhere;
        }
    }

    // What is totaled of a nesting in a variable that is summarized: its second operand.
    [[nodiscard]] std::size_t InsideOf(std::size_t nesting) const {
        std::size_t node = m_dimension[nesting + 1].end;
        while (m_dimension[node].role == Role::kNesting) ++node;
        const Role role = m_dimension[node].role;
        return role == Role::kScale || IsPassedOver(role) ? kNowhere : node;
    }

    const Dimension& m_dimension;
    std::array<std::vector<Way>, 2> m_ways;
    std::vector<std::size_t> m_totaled;
};

}  // namespace

void FindTotals(TableOutline& table, const AskedNames& names,
                const std::vector<DeclaredTotal>& declared, CommandBudget& budget) {
    for (const Axis axis : {Axis::kRows, Axis::kColumns, Axis::kLayers}) {
        const Dimension& dimension = table.dimensions[static_cast<std::size_t>(axis)];
        std::vector<Total> totals;
        std::vector<Position> positions(dimension.size());
        for (std::size_t node = 0; node < dimension.size(); ++node) {
            const std::size_t index = names.TotalAt(dimension[node].name.key);
            if (dimension[node].role != Role::kTotal || index == kNowhere) continue;
            const DeclaredTotal& declaration = declared[index];
            budget.ChargeText(declaration.label.value.size() + declaration.label.source.size());
            positions[node] = declaration.position;
            totals.push_back({dimension[node].name,
                              declaration.label,
                              declaration.position,
                              {axis, node},
                              kNowhere,
                              {},
                              dimension[node].line});
        }
        if (totals.empty()) continue;
        const std::vector<std::size_t> totaled = TotalFinder(dimension).Find(positions);
        for (Total& total : totals) {
            total.totaled = totaled[total.place.node];
            table.totals.push_back(std::move(total));
        }
    }
}

}  // namespace quillet::outline
