// The variables of a GPL program: their identifiers and the statements that declare them.
#ifndef QUILLET_IGRAPH_GPL_GPLCOLUMNS_H
#define QUILLET_IGRAPH_GPL_GPLCOLUMNS_H

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "igraph/gpl/gplstatement.h"
#include "igraph/model/igraphcommand.h"
#include "igraph/model/variableroles.h"
#include "platform/commandbudget.h"

namespace quillet::igraph {

/// Hands out identifiers that are valid in GPL, no two of them equal but for letter case.
class IdentifierPool {
public:
    IdentifierPool();

    struct Identifier {
        std::string text;
        std::string key;  ///< In upper case.
    };

    /// An identifier that looks like `name`, whose upper case is `upperName`. Every name gets
    /// one, the same name another one each time. Constant time but for the length of the name,
    /// on average.
    [[nodiscard]] Identifier Take(std::string_view name, std::string_view upperName);

private:
    std::unordered_set<std::string> m_taken;                    // keys
    std::unordered_map<std::string, std::size_t> m_nextSuffix;  // by the key without suffix
};

/// The columns that a graph needs of its data set.
class Columns {
public:
    /// Gives identifiers to all variables of `command`, which is complete, in their `roles`. With
    /// `needsCaseLabels` there is a column that labels cases by their number. Borrows `budget`;
    /// the members below throw `CommandTooLarge` when it is used up.
    Columns(const IgraphCommand& command, std::span<const VariableRole> roles, bool needsCaseLabels,
            CommandBudget& budget);

    /// Appends the source and its columns to `program`.
    void Declare(Program& program) const;

    /// A variable or the case number as it stands at a place that needs it as `level`. From the
    /// second time on that is charged.
    [[nodiscard]] Expression Use(const VariableReference& reference, MeasurementLevel level) const;

    /// The column that labels cases by their number.
    [[nodiscard]] Expression CaseLabel() const;

    /// A name for the next variable computed from `reference`, a scale.
    [[nodiscard]] std::string TakeComputedName(const VariableReference& reference);

private:
    struct Column {
        IdentifierPool::Identifier identifier;
        std::string name;  // in the data set
        MeasurementLevel level;
        mutable bool isUsed = false;
    };
    using ColumnKey = std::pair<std::string, MeasurementLevel>;  // an empty string for $case

    void Add(const ColumnKey& key, std::string_view name, std::string_view identifier,
             std::string_view upperIdentifier);
    [[nodiscard]] const Column* Find(const VariableReference& reference,
                                     MeasurementLevel level) const;

    CommandBudget& m_budget;
    IdentifierPool m_pool;
    std::vector<Column> m_columns;            // in the order of their declaration
    std::map<ColumnKey, std::size_t> m_find;  // places in m_columns
    std::string m_caseLabel;                  // empty for none
    int m_computedCount = 0;
};

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_GPLCOLUMNS_H
