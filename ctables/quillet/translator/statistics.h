// The statistics of a table: which functions there are, which variable gets which of them, and
// how they are written after it.
#ifndef QUILLET_TRANSLATOR_STATISTICS_H
#define QUILLET_TRANSLATOR_STATISTICS_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "parser/tbtrnodeviews.h"
#include "parser/tbtrparsenode.h"
#include "translator/outputsequence.h"
#include "translator/percentagebases.h"
#include "translator/summaryfunctions.h"
#include "translator/term.h"
#include "translator/translationcontext.h"

namespace quillet {

/// A function of STATISTICS together with at most one of its arguments. Borrows from the parse
/// tree, where all else is looked up: there may be a statistic for every few bytes of a command.
struct Statistic {
    StatFunctionView function;
    const TbTrParseNode* pArgument = nullptr;   ///< Null for none.
    const VariableNames* pBaseNames = nullptr;  ///< The names after the colon; null for none.
    std::uint32_t newFunction = 0;              ///< Which of the functions that were looked up.
    bool isWritten = false;                     ///< It has been, once at least.
};

/// All STATISTICS subcommands of one table, as if they were one.
class TableStatistics {
public:
    /// Reads the table group `group`. False after an assertion.
    [[nodiscard]] bool Read(const TbTrParseNode& group);

    /// True when `name`, in upper case, is an argument variable of a function.
    [[nodiscard]] bool IsArgument(std::string_view name) const {
        return m_byArgument.contains(name);
    }

    /// Looks the functions up in the dictionary. False after the report of an unknown one.
    [[nodiscard]] bool LookUpFunctions(const TranslationContext& context);

    /// Appends the statistics of `term`, the whole list in the brackets that stand after its
    /// magnet variable, to `out`. Nothing is written when there are none. The functions must have
    /// been looked up. Takes time for what is written and for the term, not for the functions
    /// that the term does not get. Throws `CommandTooLarge`: whatever is written of a function
    /// beyond the first time is charged to `budget`.
    void WriteList(const Term& term, PercentageBases& bases, CommandBudget& budget,
                   OutputSequence& out);

private:
    class GroupList;

    // A statistic of a term, by its place among all of them.
    struct Placed {
        std::uint32_t index;
        bool inTotalsOnly;
    };

    [[nodiscard]] bool ReadFunction(const StatFunctionView& function);
    [[nodiscard]] const VariableNames& SharedNames(std::vector<std::string_view> names);
    void AddStatistic(const Statistic& statistic, const TbTrParseNode* pVariable);

    [[nodiscard]] std::vector<Placed> PlaceOn(const Term& term, std::string_view total) const;
    [[nodiscard]] std::string_view CountingTotalOf(const Term& term) const;
    void WriteGroups(const Placed& placed, const Term& term, PercentageBases& bases,
                     CommandBudget& budget, GroupList& list);

    // What becomes of a function.
    struct NewFunction {
        SummaryFunction forSets;    // in a term with a multiple-response set
        SummaryFunction forOthers;  // in any other term
    };

    [[nodiscard]] std::uint32_t AddNewFunction(const NewFunction& function);

    // In pieces: a list that doubles would for a while be there one and a half times more.
    std::deque<Statistic> m_statistics;
    std::vector<NewFunction> m_newFunctions;  // each once
    // The sets of base variables by their names in order, a line each. Functions with the same
    // base variables share one, and so what is found out about it.
    std::map<std::string, VariableNames> m_baseNames;
    std::unordered_map<std::string_view, std::vector<std::uint32_t>> m_byArgument;
    // Those without an argument variable; filled by the look-up, which tells their kinds.
    std::vector<std::uint32_t> m_ofCases;
    std::vector<std::uint32_t> m_ofResponses;
    std::vector<std::uint32_t> m_ofVariables;
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_STATISTICS_H
