#include "outline/printwritten.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quillet::outline {

namespace {

class Printer {
public:
    [[nodiscard]] std::string Print(const CommandOutline& outline) {
        PrintSets(outline);
        Add("CTABLES");
        StartSubcommand("/MRSETS COUNTDUPLICATES=");
        Add(outline.settings.countsDuplicates ? "YES" : "NO");
        StartSubcommand("/FORMAT EMPTY=");
        Add(outline.settings.emptyCells == EmptyCells::kZero ? "ZERO" : "BLANK");
        AddLiteral(" MISSING=", outline.settings.missingText);
        for (const TableOutline& table : outline.tables) PrintTable(table);
        Add(".\n");
        return std::move(m_text);
    }

private:
    void Add(std::string_view text) { m_text.append(text); }

    void StartSubcommand(std::string_view text) {
        Add("\n  ");
        Add(text);
    }

    void AddLiteral(std::string_view before, const Literal& literal) {
        if (literal.IsEmpty()) return;
        Add(before);
        Add(literal.source);
    }

    void PrintSets(const CommandOutline& outline) {
        if (outline.sets.empty()) return;
        Add("MRSETS");
        for (const ResponseSet& set : outline.sets) {
            StartSubcommand(set.countsOneValue ? "/MDGROUP NAME=" : "/MCGROUP NAME=");
            Add(set.name.text);
            AddLiteral(" LABEL=", set.label);
            Add(" VARIABLES=");
            for (const VariableRange& range : set.variables) {
                if (&range != &set.variables.front()) Add(" ");
                Add(range.first.text);
                if (range.last.IsEmpty()) continue;
                Add(" TO ");
                Add(range.last.text);
            }
            AddLiteral(" VALUE=", set.value);
        }
        Add(".\n");
    }

    void PrintTable(const TableOutline& table) {
        StartSubcommand("/TABLE ");
        PrintDimensions(table);
        StartSubcommand("/CATEGORIES VAR=ALL EMPTY=");
        Add(table.hidesEmptyCategories ? "EXCLUDE" : "INCLUDE");
        Add(table.missing == Missing::kExclude ? " MISSING=EXCLUDE" : " MISSING=INCLUDE");
        for (const Total& total : table.totals) PrintTotal(total);
        PrintLabelPositions(table);
        for (const Sort& sort : table.sorts) PrintSort(sort);
        PrintHeadings(table);
    }

    void PrintDimensions(const TableOutline& table) {
        std::size_t count = kAxes;
        while (count > 0 && table.dimensions[count - 1].empty()) --count;
        m_pAssignment = table.assignments.data();
        m_pAssignmentsEnd = m_pAssignment + table.assignments.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (i > 0) Add(" BY ");
            PrintDimension(table.dimensions[i], static_cast<Axis>(i));
        }
    }

    // Before each operand after the first stands the operator, after the last one what closes it.
    void PrintDimension(const Dimension& dimension, Axis axis) {
        std::vector<const Node*> open;
        for (std::size_t i = 0; i < dimension.size(); ++i) {
            const Node& node = dimension[i];
            const bool isFirst = i == 0 || IsOperator(dimension[i - 1].role);
            if (!isFirst) {
                while (open.back()->end <= i) Close(open);
                Add(open.back()->role == Role::kStacking ? "+" : ">");
            }
            if (node.isInParentheses) Add("(");
            if (IsOperator(node.role)) {
                open.push_back(&node);
                continue;
            }
            PrintVariable(node);
            PrintStatistics(axis, i);
            if (node.isInParentheses) Add(")");
        }
        while (!open.empty()) Close(open);
    }

    void Close(std::vector<const Node*>& open) {
        if (open.back()->isInParentheses) Add(")");
        open.pop_back();
    }

    void PrintVariable(const Node& variable) {
        Add(variable.name.text);
        if (variable.role == Role::kCategory) Add("[C]");
        if (variable.role == Role::kScale) Add("[S]");
    }

    void PrintStatistics(Axis axis, std::size_t node) {
        const auto isHere = [&] {
            return m_pAssignment != m_pAssignmentsEnd && m_pAssignment->place.axis == axis &&
                   m_pAssignment->place.node == node;
        };
        if (!isHere()) return;
        bool isInTotals = false;
        Add("[");
        for (bool isFirst = true; isHere(); ++m_pAssignment, isFirst = false) {
            if (!isFirst) Add(",");
            if (m_pAssignment->isOfTotal && !isInTotals) {
                Add("TOTALS[");
                isInTotals = true;
            }
            PrintStatistic(*m_pAssignment);
        }
        Add(isInTotals ? "]]" : "]");
    }

    void PrintStatistic(const Assignment& assignment) {
        Add(assignment.function.text);
        if (!assignment.argument.empty()) {
            Add(" ");
            Add(assignment.argument);
        }
        AddLiteral(",", assignment.label);
        if (assignment.format.text.empty()) return;
        Add(",");
        Add(assignment.format.text);
    }

    void PrintTotal(const Total& total) {
        StartSubcommand("/CATEGORIES VAR=");
        for (const Name& variable : total.variables) {
            if (&variable != &total.variables.front()) Add(" ");
            Add(variable.text);
        }
        Add(" TOTAL=YES POSITION=");
        Add(total.position == Position::kAfter ? "AFTER" : "BEFORE");
        AddLiteral(" LABEL=", total.label);
    }

    void PrintLabelPositions(const TableOutline& table) {
        if (table.categoryLabels.axis != Axis::kNone) {
            StartSubcommand("/CLABELS ");
            Add(table.categoryLabels.axis == Axis::kRows ? "COL=OPPOSITE" : "ROW=OPPOSITE");
        }
        const LabelPosition& labels = table.statisticsLabels;
        if (labels.line == 0) return;
        StartSubcommand("/SLABELS");
        if (labels.axis == Axis::kRows) Add(" POSITION=ROW");
        if (labels.axis == Axis::kColumns) Add(" POSITION=COLUMN");
        if (labels.axis == Axis::kLayers) Add(" POSITION=LAYER");
        if (!labels.isVisible) Add(" VISIBLE=NO");
    }

    void PrintSort(const Sort& sort) {
        StartSubcommand("/CATEGORIES VAR=");
        Add(sort.variable.text);
        Add(sort.direction == Direction::kAscending ? " ORDER=A" : " ORDER=D");
        if (sort.key.IsEmpty()) return;
        Add(" KEY=");
        Add(sort.key.text);
        if (sort.of.IsEmpty()) return;
        Add("(");
        Add(sort.of.text);
        Add(")");
    }

    void PrintHeadings(const TableOutline& table) {
        if (table.headings.empty()) return;
        StartSubcommand("/");
        Add(table.headings.front().subcommand.text);
        for (const Heading& heading : table.headings) {
            Add(SettingOf(heading.kind));
            for (const Literal& text : heading.texts) {
                if (&text != &heading.texts.front()) Add(" ");
                Add(text.source);
            }
        }
    }

    [[nodiscard]] static std::string_view SettingOf(HeadingKind kind) {
        if (kind == HeadingKind::kCaption) return " CAPTION=";
        return kind == HeadingKind::kCorner ? " CORNER=" : " TITLE=";
    }

    std::string m_text;
    // What is left of the table's assignments, which stand in the order of their places.
    const Assignment* m_pAssignment = nullptr;
    const Assignment* m_pAssignmentsEnd = nullptr;
};

}  // namespace

std::string PrintWritten(const CommandOutline& outline) { return Printer().Print(outline); }

}  // namespace quillet::outline
