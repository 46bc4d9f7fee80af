// The chart that is being written: everything that its statements are made from.
#ifndef QUILLET_IGRAPH_GPL_CHART_H
#define QUILLET_IGRAPH_GPL_CHART_H

#include <span>
#include <string_view>
#include <vector>

#include "igraph/gpl/gplcolumns.h"
#include "igraph/gpl/gplstatement.h"
#include "igraph/gpl/layout.h"
#include "igraph/model/igraphcommand.h"
#include "igraph/model/variableroles.h"

namespace quillet::igraph {

/// The channels that legend variables are shown in.
enum class Aesthetic { kColor, kShape, kTexture, kSize };

/// The GPL function of an aesthetic, which is part of the name of its legend too.
[[nodiscard]] std::string_view AestheticFunction(Aesthetic aesthetic);

/// COLOR, STYLE or SIZE: the legend variable that an aesthetic shows.
[[nodiscard]] const LegendVariable& LegendOf(const IgraphCommand& command, Aesthetic aesthetic);

/// A chart under construction.
class Chart {
public:
    /// `command` is complete, has no obstacles and outlives this object, as does `budget`, which is
    /// charged for repeated names. `layout` and `roles` are those of `command`.
    Chart(const IgraphCommand& command, const Layout& layout, std::span<const VariableRole> roles,
          CommandBudget& budget);

    [[nodiscard]] const IgraphCommand& Command() const { return m_command; }
    [[nodiscard]] const Layout& Arrangement() const { return m_layout; }
    [[nodiscard]] Columns& Data() { return m_columns; }
    [[nodiscard]] Program& Statements() { return m_program; }

    /// The variable of an axis or a legend, as the level that it is shown in.
    [[nodiscard]] Expression Use(const Dimension& dimension) const;
    /// A variable as categories.
    [[nodiscard]] Expression UseAsCategories(const VariableReference& variable) const;

    /// What the chart measures: Y, or the quantity of a pie. Only when that is a variable or the
    /// case number.
    [[nodiscard]] Expression Measure() const;
    /// True when that is a variable.
    [[nodiscard]] bool MeasuresVariable() const;

    /// The crossing that spreads `measure` over all dimensions of the chart.
    [[nodiscard]] Expression Across(Expression measure) const;

    /// The same for cases that are only counted, as arguments: one, or none where nothing spreads
    /// them.
    [[nodiscard]] std::vector<Expression> Cases() const;

    /// True when boxes label their outliers with the case number, not with a variable.
    [[nodiscard]] bool LabelsCasesByNumber() const { return m_labelsCasesByNumber; }

    /// Notes that an element shows `aesthetic`.
    void MarkUsed(Aesthetic aesthetic);
    /// The aesthetics that elements show, in the order in which they first did.
    [[nodiscard]] const std::vector<Aesthetic>& UsedAesthetics() const { return m_aesthetics; }

private:
    [[nodiscard]] Expression X1() const;
    void AppendPanels(std::vector<Expression>& factors) const;

    const IgraphCommand& m_command;
    Layout m_layout;
    bool m_labelsCasesByNumber;
    Columns m_columns;
    Program m_program;
    std::vector<Aesthetic> m_aesthetics;
};

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_CHART_H
