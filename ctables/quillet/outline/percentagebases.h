// What makes 100 percent: whether the groups of cells that were asked for are those of the new
// table.
#ifndef QUILLET_OUTLINE_PERCENTAGEBASES_H
#define QUILLET_OUTLINE_PERCENTAGEBASES_H

#include <array>
#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "outline/accountbuilder.h"
#include "outline/tablepair.h"

namespace quillet::outline {

/// A cell for which the groups are not the same, in words: "each category of region and sex".
struct BaseMismatch {
    std::string asked;
    std::string written;
};

/// Compares the bases of the percentages of one table. A cell lies where three terms cross, one of
/// each dimension. Asked for are groups of equal categories of those base variables that these
/// terms hold. Written, ROWPCT makes groups of equal categories of all their variables but the
/// innermost one of the columns, COLPCT of all but the innermost one of the rows, LAYERPCT of those
/// of the layers, and TABLEPCT one group of everything. Scale variables have no categories, and
/// neither has a variable in the cells of its total.
class PercentageBases {
public:
    /// `axis` is the dimension that carries the statistics. All are borrowed.
    PercentageBases(const TablePair& tables, Axis axis, AccountBuilder& builder)
        : m_tables(tables), m_axis(axis), m_builder(builder) {}

    /// From here on the base variables are these: numbers of the pair of tables, sorted, each one
    /// once.
    void Choose(const std::vector<std::size_t>& baseVariables);

    /// True when in each cell of a written term one of `bases` makes the groups that are asked for.
    /// Otherwise `pMismatch` gets a cell in which none does, if it is not null; there must be a
    /// base. `totaled` are the variables whose totals the cells are those of, if they are.
    ///
    /// Terms are taken together that hold the same base variables in the same way, so that the cost
    /// is that of the combinations of base variables there are.
    [[nodiscard]] bool Fits(std::size_t writtenTerm, std::span<const std::size_t> totaled,
                            std::span<const PercentOf> bases, BaseMismatch* pMismatch);

private:
    // Which variables of a term make groups.
    enum class Grouping : unsigned char { kNone, kAllButInnermost, kAll };

    // What terms have in common as far as base variables go.
    struct TermClass {
        std::vector<std::size_t> bases;       // of all variables: those that are base variables
        std::vector<std::size_t> outerBases;  // the same of all but the innermost
        bool hasOthers = false;               // among all variables
        bool hasOuterOthers = false;

        [[nodiscard]] bool operator<(const TermClass& other) const;
    };
    struct ClassOfTerm {
        TermClass what;
        std::size_t term = kNowhere;  // one of these; `kNowhere`: there is no such dimension
    };
    using Classes = std::vector<ClassOfTerm>;
    using Cell = std::array<const ClassOfTerm*, kAxes>;

    [[nodiscard]] static Grouping GroupingOf(PercentOf base, Axis axis);
    [[nodiscard]] std::vector<std::size_t> VariablesOf(Axis axis, std::size_t term) const;
    [[nodiscard]] TermClass ClassOf(Axis axis, std::size_t term,
                                    std::span<const std::size_t> totaled) const;
    [[nodiscard]] Classes ClassesOf(Axis axis) const;
    [[nodiscard]] bool FitsCell(const Cell& cell, PercentOf base) const;
    void Describe(const Cell& cell, std::span<const std::size_t> totaled, PercentOf base,
                  BaseMismatch& mismatch) const;
    [[nodiscard]] std::string GroupsOf(const std::vector<std::size_t>& variables) const;

    const TablePair& m_tables;
    Axis m_axis;
    AccountBuilder& m_builder;
    std::vector<std::size_t> m_baseVariables;
    std::map<std::vector<std::size_t>, std::array<Classes, kAxes>> m_classes;
    const std::array<Classes, kAxes>* m_pClasses = nullptr;
};

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_PERCENTAGEBASES_H
