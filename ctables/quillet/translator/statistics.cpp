#include "translator/statistics.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "translator/termpieces.h"

namespace quillet {

namespace {

using Node = TbTrParseNode;

constexpr PercentageBase kBasesInOrder[] = {TBTR_ROWPCT, TBTR_COLPCT, TBTR_LAYERPCT, TBTR_TABPCT};

std::optional<StatArgumentView> ArgumentOf(const Statistic& statistic) {
    if (!statistic.pArgument) return std::nullopt;
    return StatArgumentView::Of(statistic.pArgument);
}

// The node of the variable that a statistic is of; null for none.
const Node* VariableOf(const Statistic& statistic) {
    const std::optional<StatArgumentView> argument = ArgumentOf(statistic);
    return argument ? argument->Variable() : nullptr;
}

// One statistic with one base ("" for what is no percentage): the name, for a percentile its
// number, then label and format.
void WriteGroup(const Statistic& statistic, std::string_view base, std::string_view function,
                OutputSequence& out) {
    const OutputSequence::Place begin = out.Here();
    std::string name = statistic.function.IsUnweighted() ? "U" : "";
    name.append(base).append(function);
    out.Add(name, false);
    if (const TAVQToken* pNumber = statistic.function.Number()) {
        out.Add(pNumber->Text(/*raw=*/true), true);
    }
    if (const auto argument = ArgumentOf(statistic)) {
        for (const TAVQToken* pDisplay : {argument->Label(), argument->Format()}) {
            if (!pDisplay) continue;
            out.Add(",", false);
            out.Add(pDisplay->Text(/*raw=*/true), false);
        }
    }
    KeepTogetherIfShort(out, begin);
}

// The name of the total that hangs on `variable`; empty for none.
std::string_view TotalNameOf(const Node& variable) {
    const TAVQToken* pName = VariableView(variable).TotalName();
    if (pName == nullptr) return {};
    return pName->Text(/*raw=*/false);
}

}  // namespace

// The statistics of one list, with commas between them.
class TableStatistics::GroupList {
public:
    explicit GroupList(OutputSequence& out) : m_out(out), m_begin(out.Here()) {}

    [[nodiscard]] bool IsEmpty() const { return m_out.Here().piece == m_begin.piece; }

    // The sequence, after a comma unless nothing is in the list yet.
    [[nodiscard]] OutputSequence& Next() {
        if (!IsEmpty()) m_out.Add(",", false);
        return m_out;
    }

    [[nodiscard]] std::size_t Size() const { return m_out.Here().byte - m_begin.byte; }

private:
    OutputSequence& m_out;
    OutputSequence::Place m_begin;
};

bool TableStatistics::Read(const TbTrParseNode& group) {
    for (const Node* pSubcommand : TableGroupView(group).Subcommands()) {
        if (!pSubcommand || pSubcommand->GetNodeType() != TB_STATISTICS) continue;
        for (const Node* pFunction : ChildrenOf(*pSubcommand)) {
            const std::optional<StatFunctionView> function = StatFunctionView::Of(pFunction);
            if (!function || !ReadFunction(*function)) return false;
        }
    }
    return true;
}

// A function with several argument variables is a statistic for each of them; one without is a
// statistic as well.
bool TableStatistics::ReadFunction(const StatFunctionView& function) {
    Statistic statistic{function};
    if (function.HasBaseNames()) {
        std::vector<std::string_view> names;
        for (const Node* pName : function.BaseNames()) names.push_back(UpperCaseName(*pName));
        statistic.pBaseNames = &SharedNames(std::move(names));
    }
    if (function.Arguments().IsEmpty()) AddStatistic(statistic, nullptr);
    // NOLINTNEXTLINE(readability-use-anyofallof): it also adds what it looks at.
    for (const Node* pArgument : function.Arguments()) {
        const std::optional<StatArgumentView> argument = StatArgumentView::Of(pArgument);
        if (!argument) return false;
        statistic.pArgument = pArgument;
        AddStatistic(statistic, argument->Variable());
    }
    return true;
}

const VariableNames& TableStatistics::SharedNames(std::vector<std::string_view> names) {
    std::sort(names.begin(), names.end());
    std::string key;
    for (const std::string_view name : names) key.append(name).append("\n");
    const auto [found, isNew] = m_baseNames.try_emplace(std::move(key));
    if (isNew) found->second.insert(names.begin(), names.end());
    return found->second;
}

void TableStatistics::AddStatistic(const Statistic& statistic, const TbTrParseNode* pVariable) {
    if (pVariable && !UpperCaseName(*pVariable).empty()) {
        m_byArgument[UpperCaseName(*pVariable)].push_back(
            static_cast<std::uint32_t>(m_statistics.size()));
    }
    m_statistics.push_back(statistic);
}

bool TableStatistics::LookUpFunctions(const TranslationContext& context) {
    std::uint32_t index = 0;
    for (Statistic& statistic : m_statistics) {
        const TAVQToken& function = statistic.function.Name();
        const auto lookUp = [&](bool multipleResponse) {
            return LookUpSummaryFunction(function.Text(/*raw=*/false), multipleResponse,
                                         context.Settings());
        };
        const NewFunction found{lookUp(true), lookUp(false)};
        if (found.forOthers.name.empty()) {
            context.Report(TablesErrorKind::kUnknownFunction, function);
            return false;
        }
        statistic.newFunction = AddNewFunction(found);
        const std::uint32_t place = index++;
        if (VariableOf(statistic)) continue;
        switch (found.forOthers.kind) {
            case SummaryKind::kCases:
                m_ofCases.push_back(place);
                break;
            case SummaryKind::kResponses:
                m_ofResponses.push_back(place);
                break;
            case SummaryKind::kVariable:
                m_ofVariables.push_back(place);
                break;
        }
    }
    return true;
}

// There are a few dozen at most.
std::uint32_t TableStatistics::AddNewFunction(const NewFunction& function) {
    const auto isSame = [&function](const NewFunction& other) {
        return other.forSets == function.forSets && other.forOthers == function.forOthers;
    };
    const auto found = std::find_if(m_newFunctions.begin(), m_newFunctions.end(), isSame);
    const auto index = static_cast<std::uint32_t>(found - m_newFunctions.begin());
    if (found == m_newFunctions.end()) m_newFunctions.push_back(function);
    return index;
}

// The total of a term is that of its first variable that has one. It gets statistics of its own
// only where a function names it; otherwise the new command gives it those of its variable.
std::string_view TableStatistics::CountingTotalOf(const Term& term) const {
    for (const TermVariable& variable : term.Variables()) {
        const std::string_view total = TotalNameOf(*variable.pNode);
        if (!total.empty()) return IsArgument(total) ? total : std::string_view();
    }
    return {};
}

// A function with an argument variable goes where that variable is. Of the others, those that
// count cases go everywhere, those that count responses where there is a set, and those that
// summarize values where there is a scale variable.
std::vector<TableStatistics::Placed> TableStatistics::PlaceOn(const Term& term,
                                                              std::string_view total) const {
    std::vector<Placed> placed;
    const auto add = [&placed](const std::vector<std::uint32_t>& indices, bool inTotalsOnly) {
        placed.reserve(placed.size() + indices.size());
        for (const std::uint32_t index : indices) placed.push_back({index, inTotalsOnly});
    };
    const auto addArgument = [&](std::string_view name, bool inTotalsOnly) {
        const auto found = m_byArgument.find(name);
        if (found != m_byArgument.end()) add(found->second, inTotalsOnly);
    };
    add(m_ofCases, false);
    if (term.HasSet()) add(m_ofResponses, false);
    if (term.HasScale()) add(m_ofVariables, false);
    for (const std::string_view name : term.Names()) addArgument(name, false);
    if (!total.empty()) addArgument(total, true);
    std::sort(placed.begin(), placed.end(),
              [](const Placed& left, const Placed& right) { return left.index < right.index; });
    return placed;
}

// A percentage is written once for each of its bases.
void TableStatistics::WriteGroups(const Placed& placed, const Term& term, PercentageBases& bases,
                                  CommandBudget& budget, GroupList& list) {
    Statistic& statistic = m_statistics[placed.index];
    const NewFunction& newFunction = m_newFunctions[statistic.newFunction];
    const SummaryFunction& function = term.HasSet() ? newFunction.forSets : newFunction.forOthers;
    const auto write = [&](std::string_view base) {
        const std::size_t sizeBefore = list.Size();
        WriteGroup(statistic, base, function.name, list.Next());
        if (statistic.isWritten) budget.ChargeText(list.Size() - sizeBefore);
        statistic.isWritten = true;
    };
    if (!function.percent) {
        write("");
        return;
    }
    const unsigned pctBases = bases.BasesOf(statistic.pBaseNames, term);
    for (const PercentageBase base : kBasesInOrder) {
        if ((pctBases & base) != 0) write(BaseWord(base));
    }
}

void TableStatistics::WriteList(const Term& term, PercentageBases& bases, CommandBudget& budget,
                                OutputSequence& out) {
    const std::string_view total = CountingTotalOf(term);
    const std::vector<Placed> placed = PlaceOn(term, total);
    if (placed.empty() && !IsSet(term.Magnet().type)) return;
    const OutputSequence::Place begin = out.Here();
    out.Add("[", false);
    GroupList list(out);
    for (const Placed& statistic : placed) {
        if (!statistic.inTotalsOnly) WriteGroups(statistic, term, bases, budget, list);
    }
    const bool needsDefault = list.IsEmpty() && IsSet(term.Magnet().type);
    if (needsDefault) list.Next().Add("RESPONSES", false);
    const bool countsTotal = !total.empty() && (needsDefault || !placed.empty());
    if (countsTotal) {
        OutputSequence& totals = list.Next();
        totals.Add("TOTALS", false);
        totals.Add("[", false);
        GroupList totalList(totals);
        for (const Placed& statistic : placed) {
            WriteGroups(statistic, term, bases, budget, totalList);
        }
        if (needsDefault) totalList.Next().Add("RESPONSES", false);
        totals.Add("]", false);
    }
    out.Add("]", false);
    KeepTogetherIfShort(out, begin);
}

}  // namespace quillet
