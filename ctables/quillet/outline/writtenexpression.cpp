#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "outline/dimensionbuilder.h"
#include "outline/tableoutline.h"
#include "outline/writtencursor.h"
#include "outline/writtenfunctions.h"
#include "outline/writtentable.h"

namespace quillet::outline {

// The expression of a table with the lists of statistics that stand in it.

namespace {

// Reads one dimension.
class WrittenDimensionReader {
public:
    WrittenDimensionReader(WrittenCursor& cursor, TableOutline& table, Axis axis)
        : m_cursor(cursor), m_table(table), m_axis(axis) {}

    [[nodiscard]] bool Read() {
        const std::size_t firstAssignment = m_table.assignments.size();
        // A dimension of nothing but markers and totals leaves its place empty.
        if (!m_cursor.Current().IsWord("BY") && !ReadOperands()) return false;
        std::vector<std::size_t> places;
        m_table.dimensions[static_cast<std::size_t>(m_axis)] = m_builder.Finish(places);
        for (std::size_t i = firstAssignment; i < m_table.assignments.size(); ++i) {
            std::size_t& node = m_table.assignments[i].place.node;
            node = places[node];
        }
        return true;
    }

private:
    [[nodiscard]] bool ReadOperands() {
        do {
            while (m_cursor.Take('(')) m_builder.OpenParenthesis();
            if (!ReadVariable()) return false;
            while (m_builder.HasOpenParenthesis() && m_cursor.Take(')')) {
                m_builder.CloseParenthesis();
            }
        } while (TakeOperator());
        return !m_builder.HasOpenParenthesis() || m_cursor.Fail("a closing parenthesis is missing");
    }

    [[nodiscard]] bool TakeOperator() {
        const long line = m_cursor.Current().line;
        if (m_cursor.Take('+')) {
            m_builder.AddPlus(line);
        } else if (m_cursor.Take('>')) {
            m_builder.AddGreaterThan(line);
        } else {
            return false;
        }
        return true;
    }

    // Sets have no measurement mark.
    [[nodiscard]] bool ReadVariable() {
        if (!m_cursor.Current().Is(WrittenTokenKind::kWord)) {
            return m_cursor.Fail("a variable is expected");
        }
        Node variable;
        variable.line = m_cursor.Current().line;
        variable.role = Role::kSet;
        if (!m_cursor.ReadName(variable.name)) return false;
        bool hasList = m_cursor.Take('[');
        if (hasList && ReadMark(variable.role)) hasList = m_cursor.Take('[');
        if (variable.role == Role::kSet && !variable.name.text.starts_with('$')) {
            return m_cursor.Fail("the measurement mark of a variable is missing");
        }
        Assignment assignment;
        assignment.on = variable.name;
        assignment.place = {m_axis, m_builder.AddVariable(std::move(variable))};
        return !hasList || ReadList(assignment);
    }

    // After the opening bracket. False, and nothing is read, when it is a list that begins there.
    [[nodiscard]] bool ReadMark(Role& role) {
        if (!m_cursor.Following().IsSign(']')) return false;
        if (m_cursor.Take("C")) {
            role = Role::kCategory;
        } else if (m_cursor.Take("S")) {
            role = Role::kScale;
        } else {
            return false;
        }
        m_cursor.Advance();
        return true;
    }

    // After the opening bracket. A total's list stands last.
    [[nodiscard]] bool ReadList(Assignment& common) {
        bool goesOn = true;
        while (goesOn) {
            if (!common.isOfTotal && IsAtTotals()) {
                m_cursor.Advance();
                m_cursor.Advance();
                common.isOfTotal = true;
            }
            if (!ReadStatistic(common, goesOn)) return false;
        }
        constexpr std::string_view kMessage = "the end of the list of statistics is expected";
        return m_cursor.Expect(']', kMessage) &&
               (!common.isOfTotal || m_cursor.Expect(']', kMessage));
    }

    [[nodiscard]] bool IsAtTotals() const {
        return m_cursor.Current().IsWord("TOTALS") && m_cursor.Following().IsSign('[');
    }

    [[nodiscard]] std::optional<WrittenFunction> CurrentFunction() const {
        if (!m_cursor.Current().Is(WrittenTokenKind::kWord)) return std::nullopt;
        return FindWrittenFunction(m_cursor.Current().text);
    }

    // `goesOn` becomes true when another statistic follows, to which the cursor has gone.
    [[nodiscard]] bool ReadStatistic(const Assignment& common, bool& goesOn) {
        const std::optional<WrittenFunction> function = CurrentFunction();
        if (!function) return m_cursor.Fail("a function is expected");
        Assignment assignment = common;
        assignment.line = m_cursor.Current().line;
        assignment.function = {std::string(m_cursor.Current().text), std::string(function->key)};
        assignment.isUnweighted = function->isUnweighted;
        assignment.percentOf = function->percentOf;
        assignment.counted = function->counted;
        assignment.against = function->against;
        m_cursor.Advance();
        if (m_cursor.Current().Is(WrittenTokenKind::kNumber)) {
            assignment.argument = m_cursor.Current().text;
            m_cursor.Advance();
        }
        if (!ReadDisplay(assignment, goesOn)) return false;
        m_table.assignments.push_back(std::move(assignment));
        return true;
    }

    // A label and a format, each after a comma. A comma is also what the next statistic stands
    // after.
    [[nodiscard]] bool ReadDisplay(Assignment& assignment, bool& goesOn) {
        goesOn = m_cursor.Take(',');
        if (goesOn && m_cursor.Current().Is(WrittenTokenKind::kLiteral)) {
            if (!m_cursor.ReadLiteral(assignment.label)) return false;
            goesOn = m_cursor.Take(',');
        }
        if (goesOn && m_cursor.Current().Is(WrittenTokenKind::kWord) && !CurrentFunction() &&
            !IsAtTotals()) {
            if (!m_cursor.ReadFormat(assignment.format)) return false;
            goesOn = m_cursor.Take(',');
        }
        return true;
    }

    WrittenCursor& m_cursor;
    TableOutline& m_table;
    Axis m_axis;
    DimensionBuilder m_builder;
};

}  // namespace

bool ReadTableExpression(WrittenCursor& cursor, TableOutline& table) {
    for (const Axis axis : {Axis::kRows, Axis::kColumns, Axis::kLayers}) {
        if (!WrittenDimensionReader(cursor, table, axis).Read()) return false;
        if (axis == Axis::kLayers || !cursor.Take("BY")) break;
    }
    return true;
}

}  // namespace quillet::outline
