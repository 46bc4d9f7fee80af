// A table has as many cells as its dimensions have terms, multiplied, so that cells are not looked
// at one by one. Whether a base fits depends on nothing but which base variables a term holds, and
// whether it holds others as well.
#include "outline/percentagebases.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

namespace quillet::outline {

namespace {

[[nodiscard]] bool Contains(std::span<const std::size_t> sorted, std::size_t value) {
    return std::binary_search(sorted.begin(), sorted.end(), value);
}

void AddAll(std::vector<std::size_t>& values, const std::vector<std::size_t>& more) {
    values.insert(values.end(), more.begin(), more.end());
}

}  // namespace

bool PercentageBases::TermClass::operator<(const TermClass& other) const {
    return std::tie(hasOthers, hasOuterOthers, bases, outerBases) <
           std::tie(other.hasOthers, other.hasOuterOthers, other.bases, other.outerBases);
}

PercentageBases::Grouping PercentageBases::GroupingOf(PercentOf base, Axis axis) {
    switch (base) {
        case PercentOf::kRow:
            return axis == Axis::kColumns ? Grouping::kAllButInnermost : Grouping::kAll;
        case PercentOf::kColumn:
            return axis == Axis::kRows ? Grouping::kAllButInnermost : Grouping::kAll;
        case PercentOf::kSubtable:
            return axis == Axis::kLayers ? Grouping::kAll : Grouping::kAllButInnermost;
        case PercentOf::kLayer:
            return axis == Axis::kLayers ? Grouping::kAll : Grouping::kNone;
        case PercentOf::kLayerRow:
            return axis == Axis::kColumns ? Grouping::kNone : Grouping::kAll;
        case PercentOf::kLayerColumn:
            return axis == Axis::kRows ? Grouping::kNone : Grouping::kAll;
        case PercentOf::kTable:
        case PercentOf::kNothing:
        case PercentOf::kBaseVariables:
            break;
    }
    return Grouping::kNone;
}

std::vector<std::size_t> PercentageBases::VariablesOf(Axis axis, std::size_t term) const {
    std::vector<std::size_t> variables;
    if (term == kNowhere) return variables;
    const DimensionPair& pair = m_tables.At(axis);
    for (const std::size_t node : pair.written[term]) {
        const std::size_t variable = pair.writtenVariables[node];
        if (m_tables.RoleOf(variable) != Role::kScale) variables.push_back(variable);
    }
    return variables;
}

PercentageBases::TermClass PercentageBases::ClassOf(Axis axis, std::size_t term,
                                                    std::span<const std::size_t> totaled) const {
    TermClass result;
    const std::vector<std::size_t> variables = VariablesOf(axis, term);
    m_builder.Charge(1 + variables.size());
    for (std::size_t index = 0; index < variables.size(); ++index) {
        const std::size_t variable = variables[index];
        if (Contains(totaled, variable)) continue;
        const bool isBase = Contains(m_baseVariables, variable);
        const bool isOuter = index + 1 < variables.size();
        if (isBase) {
            result.bases.push_back(variable);
            if (isOuter) result.outerBases.push_back(variable);
        } else {
            result.hasOthers = true;
            if (isOuter) result.hasOuterOthers = true;
        }
    }
    SortOut(result.bases);
    SortOut(result.outerBases);
    return result;
}

PercentageBases::Classes PercentageBases::ClassesOf(Axis axis) const {
    Classes classes;
    std::set<TermClass> known;
    for (std::size_t term = 0; term < m_tables.At(axis).written.Count(); ++term) {
        TermClass one = ClassOf(axis, term, {});
        if (known.insert(one).second) classes.push_back({std::move(one), term});
    }
    if (classes.empty()) classes.emplace_back();
    return classes;
}

void PercentageBases::Choose(const std::vector<std::size_t>& baseVariables) {
    if (m_pClasses != nullptr && baseVariables == m_baseVariables) return;
    m_builder.Charge(baseVariables.size());
    m_baseVariables = baseVariables;
    const auto [place, isNew] = m_classes.try_emplace(baseVariables);
    m_pClasses = &place->second;
    if (!isNew) return;
    for (const Axis axis : kAllAxes) {
        if (axis != m_axis) place->second[static_cast<std::size_t>(axis)] = ClassesOf(axis);
    }
}

bool PercentageBases::FitsCell(const Cell& cell, PercentOf base) const {
    std::vector<std::size_t> wanted;
    std::vector<std::size_t> grouped;
    for (const Axis axis : kAllAxes) {
        const TermClass& what = cell[static_cast<std::size_t>(axis)]->what;
        m_builder.Charge(1 + what.bases.size());
        const Grouping grouping = GroupingOf(base, axis);
        if (grouping == Grouping::kAll && what.hasOthers) return false;
        if (grouping == Grouping::kAllButInnermost && what.hasOuterOthers) return false;
        AddAll(wanted, what.bases);
        if (grouping == Grouping::kAll) AddAll(grouped, what.bases);
        if (grouping == Grouping::kAllButInnermost) AddAll(grouped, what.outerBases);
    }
    SortOut(grouped);
    return std::all_of(wanted.begin(), wanted.end(),
                       [&grouped](std::size_t variable) { return Contains(grouped, variable); });
}

bool PercentageBases::Fits(std::size_t writtenTerm, std::span<const std::size_t> totaled,
                           std::span<const PercentOf> bases, BaseMismatch* pMismatch) {
    const ClassOfTerm own = {ClassOf(m_axis, writtenTerm, totaled), writtenTerm};
    // The dimensions besides that of the statistics.
    std::array<Axis, kAxes - 1> others = {Axis::kColumns, Axis::kLayers};
    if (m_axis == Axis::kColumns) others = {Axis::kRows, Axis::kLayers};
    if (m_axis == Axis::kLayers) others = {Axis::kRows, Axis::kColumns};
    Cell cell{};
    cell[static_cast<std::size_t>(m_axis)] = &own;
    for (const ClassOfTerm& first : (*m_pClasses)[static_cast<std::size_t>(others[0])]) {
        cell[static_cast<std::size_t>(others[0])] = &first;
        for (const ClassOfTerm& second : (*m_pClasses)[static_cast<std::size_t>(others[1])]) {
            cell[static_cast<std::size_t>(others[1])] = &second;
            const bool fits = std::any_of(bases.begin(), bases.end(),
                                          [&](PercentOf base) { return FitsCell(cell, base); });
            if (fits) continue;
            if (pMismatch != nullptr) Describe(cell, totaled, bases.front(), *pMismatch);
            return false;
        }
    }
    return true;
}

void PercentageBases::Describe(const Cell& cell, std::span<const std::size_t> totaled,
                               PercentOf base, BaseMismatch& mismatch) const {
    std::vector<std::size_t> asked;
    std::vector<std::size_t> written;
    for (const Axis axis : kAllAxes) {
        const ClassOfTerm& one = *cell[static_cast<std::size_t>(axis)];
        std::vector<std::size_t> variables = VariablesOf(axis, one.term);
        const Grouping grouping = GroupingOf(base, axis);
        for (std::size_t index = 0; index < variables.size(); ++index) {
            const std::size_t variable = variables[index];
            if (axis == m_axis && Contains(totaled, variable)) continue;
            const bool isOuter = index + 1 < variables.size();
            if (Contains(m_baseVariables, variable)) asked.push_back(variable);
            if (grouping == Grouping::kAll || (grouping == Grouping::kAllButInnermost && isOuter)) {
                written.push_back(variable);
            }
        }
    }
    mismatch.asked = GroupsOf(asked);
    mismatch.written = GroupsOf(written);
}

// In the order of the table, each variable once.
std::string PercentageBases::GroupsOf(const std::vector<std::size_t>& variables) const {
    std::set<std::size_t> known;
    std::vector<std::string_view> names;
    for (const std::size_t variable : variables) {
        if (known.insert(variable).second) names.push_back(m_tables.NameOfVariable(variable));
    }
    if (names.empty()) return "the whole table";
    return (names.size() == 1 ? "each category of " : "each combination of ") + ListOfNames(names);
}

}  // namespace quillet::outline
