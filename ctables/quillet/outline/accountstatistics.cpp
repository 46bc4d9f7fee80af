// A function goes to each term that holds its variable, and is written in the list of one variable
// of the term, beside all others that go there. Which of several equal ones is which does not show
// in a list; what makes 100 percent decides it where it can.
#include "outline/accountstatistics.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "outline/accountfunctions.h"
#include "outline/percentagebases.h"

namespace quillet::outline {

namespace {

using Indexes = std::vector<std::size_t>;

[[nodiscard]] bool IsPercentage(const Assignment& assignment) {
    return assignment.percentOf != PercentOf::kNothing;
}

// What one function has been told about already, and how it fared.
struct Told {
    bool isTwice = false;
    bool isMoved = false;
    bool isOfAnother = false;
    bool isImpossible = false;
    bool isBaseChecked = false;  // for variables that are elsewhere
    bool isBaseDifferent = false;
    std::size_t placed = 0;
    std::size_t lost = 0;
    std::size_t lostTerm = kNowhere;  // the first one of the dimension of the statistics
    bool isLostTotal = false;
};

// The functions for one list: that of the variable, or that of its total.
struct TermList {
    std::size_t term = 0;  // that was asked for
    std::size_t writtenTerm = kNowhere;
    bool isOfTotal = false;
    bool hasSet = false;
    std::size_t magnet = kNowhere;  // the node that should carry the list
    Indexes totaled;                // numbers of variables
    Indexes asked;
    Indexes written;
    Indexes borrowed;  // of `asked`: functions of the variable, which nothing asked its total for
};

class StatisticsAccount {
public:
    StatisticsAccount(const TablePair& tables, const std::vector<TotaledVariable>& totaled,
                      AccountBuilder& builder, Tally& tally)
        : m_tables(tables),
          m_asked(tables.Asked().assignments),
          m_written(tables.Written().assignments),
          m_builder(builder),
          m_tally(tally),
          m_axis(StatisticsAxis(tables)),
          m_bases(tables, m_axis, builder),
          m_told(m_asked.size()),
          m_isUsed(m_written.size()) {
        NumberLooks();
        m_tally.written += m_written.size();
        IndexFunctions();
        IndexTotals(totaled);
        IndexAxes(totaled);
        IndexWritten();
    }

    void Run() {
        const DimensionPair& pair = m_tables.At(m_axis);
        for (std::size_t term = 0; term < pair.asked.Count(); ++term) AccountForTerm(term);
        for (std::size_t index = 0; index < m_asked.size(); ++index) Conclude(index);
        for (std::size_t index = 0; index < m_written.size(); ++index) {
            if (!m_isUsed[index]) EnterExtra(index);
        }
        NoteExtra();
    }

private:
    [[nodiscard]] std::size_t NumberOf(std::string text) {
        return m_numbers.try_emplace(std::move(text), m_numbers.size()).first->second;
    }

    void NumberLooks() {
        for (std::size_t index = 0; index < m_asked.size(); ++index) {
            m_askedLooks.push_back(NumberOf(LooksOf(m_asked[index])));
            m_askedKeys[0].push_back(NumberOf(AskedKey(index, /*hasSet=*/false)));
            m_askedKeys[1].push_back(NumberOf(AskedKey(index, /*hasSet=*/true)));
        }
        for (std::size_t index = 0; index < m_written.size(); ++index) {
            m_writtenLooks.push_back(NumberOf(LooksOf(m_written[index])));
            m_writtenKeys.push_back(NumberOf(WrittenKey(index)));
        }
        for (const Total& total : m_tables.Asked().totals) m_totalNames.insert(total.name.key);
    }

    void IndexFunctions() {
        for (std::size_t index = 0; index < m_asked.size(); ++index) {
            const Name& on = m_asked[index].on;
            (on.IsEmpty() ? m_everywhere : m_functionsOn[on.key]).push_back(index);
        }
    }

    void IndexTotals(const std::vector<TotaledVariable>& totaled) {
        for (const TotaledVariable& one : totaled) {
            if (one.axis != m_axis) continue;
            m_totalsAt[one.node].push_back(one);
            const long line = m_tables.Asked().totals[one.total].line;
            if (one.isKept) m_totalLines.try_emplace(one.variable, line);
        }
    }

    [[nodiscard]] static unsigned BitOf(Axis axis) { return 1U << static_cast<unsigned>(axis); }

    // In how many dimensions each variable and each total stands.
    void IndexAxes(const std::vector<TotaledVariable>& totaled) {
        for (const Axis axis : kAllAxes) {
            const Dimension& dimension = m_tables.AskedDimension(axis);
            for (std::size_t node = 0; node < dimension.size(); ++node) {
                if (m_tables.At(axis).askedVariables[node] == kNowhere) continue;
                m_axesOf[dimension[node].name.key] |= BitOf(axis);
            }
        }
        for (const TotaledVariable& one : totaled) {
            const Total& total = m_tables.Asked().totals[one.total];
            m_axesOfTotal[total.name.key] |= BitOf(total.place.axis);
        }
    }

    void IndexWritten() {
        for (std::size_t index = 0; index < m_written.size(); ++index) {
            const Place& place = m_written[index].place;
            if (place.axis == m_axis) m_listAt[place.node].push_back(index);
        }
    }

    // The variable of a term that carries its functions: the innermost one that is summarized, or
    // the innermost set, or the innermost of all.
    [[nodiscard]] std::size_t MagnetOf(std::size_t writtenTerm) const {
        const DimensionPair& pair = m_tables.At(m_axis);
        const std::span<const std::size_t> nodes = pair.written[writtenTerm];
        for (const Role role : {Role::kScale, Role::kSet}) {
            for (std::size_t at = nodes.size(); at-- > 0;) {
                if (m_tables.RoleOf(pair.writtenVariables[nodes[at]]) == role) return nodes[at];
            }
        }
        return nodes.back();
    }

    [[nodiscard]] bool Fits(std::size_t function, const Indexes& variables) const {
        const FunctionKind kind = KindOfFunction(m_asked[function].function.key);
        return std::any_of(variables.begin(), variables.end(), [&](std::size_t variable) {
            switch (m_tables.RoleOf(variable)) {
                case Role::kScale:
                    return kind != FunctionKind::kResponses;
                case Role::kSet:
                    return kind != FunctionKind::kValues;
                default:
                    return kind == FunctionKind::kCases;
            }
        });
    }

    void AccountForTerm(std::size_t term) {
        const DimensionPair& pair = m_tables.At(m_axis);
        TermList list;
        list.term = term;
        list.writtenTerm = pair.writtenOf[term];
        TermList totals = list;
        totals.isOfTotal = true;
        Indexes variables;
        for (const std::size_t node : pair.asked[term]) {
            const std::size_t variable = pair.askedVariables[node];
            variables.push_back(variable);
            if (m_tables.RoleOf(variable) == Role::kSet) list.hasSet = true;
            AddFunctions(m_tables.AskedDimension(m_axis)[node].name.key, list);
            AddTotals(node, list, totals);
        }
        m_builder.Charge(m_everywhere.size() + variables.size());
        for (const std::size_t function : m_everywhere) {
            if (Fits(function, variables)) list.asked.push_back(function);
        }
        SortOut(list.asked);
        SortOut(totals.asked);
        SortOut(totals.totaled);
        totals.hasSet = list.hasSet;
        Borrow(list, totals);
        if (list.writtenTerm != kNowhere) TakeWritten(list, totals);
        Match(list);
        Match(totals);
    }

    // In the list of a total the functions of its variable stand as well. They are looked for
    // there, so that those of the total are not mistaken for them.
    void Borrow(const TermList& list, TermList& totals) {
        if (totals.asked.empty()) return;
        m_builder.Charge(list.asked.size() + totals.asked.size());
        std::set_difference(list.asked.begin(), list.asked.end(), totals.asked.begin(),
                            totals.asked.end(), std::back_inserter(totals.borrowed));
        totals.asked.insert(totals.asked.end(), totals.borrowed.begin(), totals.borrowed.end());
        SortOut(totals.asked);
    }

    [[nodiscard]] static bool IsBorrowed(const TermList& list, std::size_t function) {
        return std::binary_search(list.borrowed.begin(), list.borrowed.end(), function);
    }

    void AddFunctions(std::string_view key, TermList& list) {
        const auto functions = m_functionsOn.find(key);
        if (functions == m_functionsOn.end()) return;
        m_builder.Charge(functions->second.size());
        list.asked.insert(list.asked.end(), functions->second.begin(), functions->second.end());
    }

    // The functions of the totals that stand at a variable.
    void AddTotals(std::size_t node, TermList& list, TermList& totals) {
        const auto place = m_totalsAt.find(node);
        if (place == m_totalsAt.end()) return;
        for (const TotaledVariable& one : place->second) {
            const Total& total = m_tables.Asked().totals[one.total];
            TermList own;
            m_builder.Charge(1);
            AddFunctions(total.name.key, one.isKept ? totals : own);
            if (one.isKept && m_functionsOn.contains(total.name.key)) {
                totals.totaled.push_back(one.variable);
            }
            for (const std::size_t function : own.asked) {
                EnterLost(function, list.term, /*isOfTotal=*/true);
            }
        }
    }

    void TakeWritten(TermList& list, TermList& totals) {
        list.magnet = MagnetOf(list.writtenTerm);
        totals.magnet = list.magnet;
        for (const std::size_t node : m_tables.At(m_axis).written[list.writtenTerm]) {
            const auto place = m_listAt.find(node);
            if (place == m_listAt.end()) continue;
            m_builder.Charge(place->second.size());
            for (const std::size_t index : place->second) {
                if (m_isUsed[index]) continue;
                m_isUsed[index] = true;
                (m_written[index].isOfTotal ? totals : list).written.push_back(index);
            }
        }
    }

    [[nodiscard]] std::string AskedKey(std::size_t function, bool hasSet) const {
        const Assignment& asked = m_asked[function];
        std::string key(IsPercentage(asked) ? "%" : "");
        key += WrittenFunctionKey(asked, hasSet, m_tables.SeenSettings());
        return key;
    }

    [[nodiscard]] std::string WrittenKey(std::size_t index) const {
        const Assignment& written = m_written[index];
        return (IsPercentage(written) ? "%" : "") + written.function.key;
    }

    struct Alike {
        Indexes asked;
        Indexes written;
    };

    // Those that look alike are matched in their order; then percentages that only count something
    // else.
    void Match(const TermList& list) {
        if (list.asked.empty() && list.written.empty()) return;
        std::map<std::pair<std::size_t, std::size_t>, Alike> groups;
        for (const std::size_t function : list.asked) {
            groups[{m_askedLooks[function], m_askedKeys[list.hasSet ? 1 : 0][function]}]
                .asked.push_back(function);
        }
        for (const std::size_t index : list.written) {
            groups[{m_writtenLooks[index], m_writtenKeys[index]}].written.push_back(index);
        }
        std::map<std::size_t, Alike> rest;
        for (auto& [key, group] : groups) {
            const bool isPercentage = !group.asked.empty() && IsPercentage(m_asked[group.asked[0]]);
            Alike left = isPercentage ? MatchPercentages(list, group) : MatchFunctions(list, group);
            Alike& all = rest[key.first];
            all.asked.insert(all.asked.end(), left.asked.begin(), left.asked.end());
            all.written.insert(all.written.end(), left.written.begin(), left.written.end());
        }
        for (auto& [looks, group] : rest) MatchOtherwise(list, group);
        CompareOrder(list);
    }

    // Once for each table.
    void CompareOrder(const TermList& list) {
        std::sort(m_matched.begin(), m_matched.end());
        const bool isSame = std::is_sorted(
            m_matched.begin(), m_matched.end(),
            [](const auto& one, const auto& other) { return one.second < other.second; });
        m_matched.clear();
        if (isSame || std::exchange(m_isOrderTold, true)) return;
        m_builder.Note(NoteWording::kOrderDiffers, {.other = NameAt(list.magnet)},
                       m_tables.Asked().line);
    }

    [[nodiscard]] Alike MatchFunctions(const TermList& list, Alike& group) {
        const std::size_t count = std::min(group.asked.size(), group.written.size());
        for (std::size_t index = 0; index < count; ++index) {
            EnterKept(list, group.asked[index], {group.written[index]});
        }
        group.asked.erase(group.asked.begin(),
                          group.asked.begin() + static_cast<std::ptrdiff_t>(count));
        group.written.erase(group.written.begin(),
                            group.written.begin() + static_cast<std::ptrdiff_t>(count));
        return std::move(group);
    }

    // A percentage has its bases side by side and in their order, so that the next one begins at
    // the latest where these do not go on.
    [[nodiscard]] Alike MatchPercentages(const TermList& list, const Alike& group) {
        std::size_t runs = group.written.empty() ? 0 : 1;
        for (std::size_t at = 1; at < group.written.size(); ++at) {
            if (!GoesOn(group.written, at)) ++runs;
        }
        std::size_t cuts = group.asked.size() > runs ? group.asked.size() - runs : 0;
        Alike left;
        std::size_t at = 0;
        for (const std::size_t function : group.asked) {
            if (at == group.written.size()) {
                left.asked.push_back(function);
                continue;
            }
            Indexes own = {group.written[at++]};
            while (at < group.written.size() && GoesOn(group.written, at)) {
                const std::size_t remaining = group.written.size() - at;
                if (cuts > 0 && (remaining <= cuts || FitOf(list, function, own).fits)) {
                    --cuts;
                    break;
                }
                own.push_back(group.written[at++]);
            }
            EnterKept(list, function, own);
        }
        left.written.assign(group.written.begin() + static_cast<std::ptrdiff_t>(at),
                            group.written.end());
        return left;
    }

    [[nodiscard]] bool GoesOn(const Indexes& written, std::size_t at) const {
        return written[at] == written[at - 1] + 1 &&
               m_written[written[at]].percentOf > m_written[written[at - 1]].percentOf;
    }

    void MatchOtherwise(const TermList& list, const Alike& group) {
        Alike percentages;
        for (const std::size_t function : group.asked) {
            if (IsPercentage(m_asked[function])) {
                percentages.asked.push_back(function);
            } else {
                EnterMissing(list, function);
            }
        }
        for (const std::size_t index : group.written) {
            if (IsPercentage(m_written[index])) {
                percentages.written.push_back(index);
            } else {
                EnterUnasked(list, index);
            }
        }
        const bool areOther = !percentages.asked.empty() && !percentages.written.empty();
        if (areOther) NoteCountingOtherwise(list, percentages);
        const Alike left = areOther ? MatchPercentages(list, percentages) : percentages;
        for (const std::size_t function : left.asked) {
            EnterMissing(list, function);
        }
        for (const std::size_t index : left.written) EnterUnasked(list, index);
    }

    void NoteCountingOtherwise(const TermList& list, const Alike& group) {
        const std::size_t count = std::min(group.asked.size(), group.written.size());
        for (std::size_t at = 0; at < count; ++at) {
            if (IsBorrowed(list, group.asked[at])) continue;
            NoteCountingOtherwise(list, group.asked[at], group.written[at]);
        }
    }

    void NoteCountingOtherwise(const TermList& list, std::size_t function, std::size_t written) {
        if (std::exchange(m_told[function].isBaseDifferent, true)) return;
        m_builder.Note(
            NoteWording::kCountedDiffers,
            {.function = TextOfFunction(m_asked[function]),
             .asked = WrittenFunctionKey(m_asked[function], list.hasSet, m_tables.AskedSettings()),
             .written = m_written[written].function.text},
            m_asked[function].line);
    }

    // Functions in one pair of parentheses share their base variables, and mostly come one after
    // the other.
    void ChooseBases(std::size_t function) {
        const Range& range = m_asked[function].baseVariables;
        if (range.first == m_chosen.first && range.count == m_chosen.count) return;
        m_chosen = range;
        m_fit.reset();
        m_firstElsewhere = kNowhere;
        Indexes variables;
        m_builder.Charge(range.count);
        for (std::size_t index = range.first; index < range.first + range.count; ++index) {
            const Name& name = m_tables.Asked().baseVariables[index];
            const std::size_t variable = m_tables.VariableOf(name.key);
            if (variable != kNowhere) {
                variables.push_back(variable);
            } else if (!m_totalNames.contains(name.key) && m_firstElsewhere == kNowhere) {
                m_firstElsewhere = index;
            }
        }
        SortOut(variables);
        m_bases.Choose(variables);
    }

    // Whether bases fit in a list, and where they do not.
    struct Fit {
        std::size_t writtenTerm = kNowhere;
        bool isOfTotal = false;
        std::vector<PercentOf> bases;
        bool fits = false;
        BaseMismatch mismatch;
    };

    [[nodiscard]] const Fit& FitOf(const TermList& list, std::size_t function,
                                   const Indexes& written) {
        std::vector<PercentOf> bases;
        for (const std::size_t index : written) bases.push_back(m_written[index].percentOf);
        ChooseBases(function);
        if (m_fit && m_fit->writtenTerm == list.writtenTerm && m_fit->isOfTotal == list.isOfTotal &&
            m_fit->bases == bases) {
            return *m_fit;
        }
        m_fit = Fit{list.writtenTerm, list.isOfTotal, std::move(bases), false, {}};
        m_fit->fits = m_bases.Fits(list.writtenTerm, list.totaled, m_fit->bases, &m_fit->mismatch);
        return *m_fit;
    }

    void EnterKept(const TermList& list, std::size_t function, const Indexes& written) {
        m_matched.emplace_back(function, written.front());
        if (IsBorrowed(list, function)) {
            for (const std::size_t index : written) EnterExtra(index);
            return;
        }
        const Assignment& asked = m_asked[function];
        const bool isMoved = IsMoved(list, function, written.front());
        Fate fate = Fate::kKept;
        if (isMoved) {
            fate = Fate::kMoved;
            ++m_tally.moved;
            m_tally.writtenMoved += written.size();
        } else if (written.size() > 1) {
            fate = Fate::kTwice;
            ++m_tally.twice;
            m_tally.writtenTwice += written.size();
        } else {
            ++m_tally.kept;
        }
        ++m_tally.asked;
        ++m_told[function].placed;
        SetPlace(m_builder.Enter(Subject::kStatistic, fate, function, written), written, list);
        if (written.size() > 1 && !std::exchange(m_told[function].isTwice, true)) {
            std::vector<std::string_view> names;
            for (const std::size_t index : written) {
                names.push_back(m_written[index].function.text);
            }
            m_builder.Note(NoteWording::kStatisticTwice,
                           {.function = TextOfFunction(asked), .written = ListOfNames(names)},
                           asked.line);
        }
        CheckPossible(list, function, written.front());
        if (IsPercentage(asked)) CheckBases(list, function, written);
    }

    void SetPlace(AccountEntry& entry, const Indexes& written, const TermList& list) {
        entry.isOfTotal = list.isOfTotal;
        entry.place = m_written[written.front()].place;
        entry.writtenLine = m_written[written.front()].line;
        if (entry.asked != kNowhere) entry.line = m_asked[entry.asked].line;
    }

    [[nodiscard]] std::string_view NameAt(std::size_t node) const {
        return m_tables.NameOfVariable(m_tables.At(m_axis).writtenVariables[node]);
    }

    [[nodiscard]] bool IsMoved(const TermList& list, std::size_t function, std::size_t written) {
        const Assignment& asked = m_asked[function];
        const std::size_t node = m_written[written].place.node;
        if (node != list.magnet || IsOfOtherValues(list, function, written)) {
            if (!std::exchange(m_told[function].isOfAnother, true)) {
                m_builder.Note(NoteWording::kStatisticOfAnother,
                               {.function = TextOfFunction(asked), .other = NameAt(node)},
                               asked.line);
            }
            return true;
        }
        if (asked.on.IsEmpty()) return false;
        const unsigned axes = (list.isOfTotal ? m_axesOfTotal : m_axesOf)[asked.on.key];
        if ((axes & (axes - 1)) == 0) return false;
        if (!std::exchange(m_told[function].isMoved, true)) {
            m_builder.Note(NoteWording::kStatisticMoved,
                           {.function = TextOfFunction(asked),
                            .name = asked.on.text,
                            .written = NameOf(m_axis)},
                           asked.line);
        }
        return true;
    }

    // True for a function of the values of one variable that is written on another one.
    [[nodiscard]] bool IsOfOtherValues(const TermList& list, std::size_t function,
                                       std::size_t written) const {
        const Assignment& asked = m_asked[function];
        if (list.isOfTotal || asked.on.IsEmpty()) return false;
        if (KindOfFunction(asked.function.key) != FunctionKind::kValues) return false;
        const std::size_t variable =
            m_tables.At(m_axis).writtenVariables[m_written[written].place.node];
        return m_tables.RoleOf(variable) == Role::kScale &&
               variable != m_tables.VariableOf(asked.on.key);
    }

    void CheckPossible(const TermList& list, std::size_t function, std::size_t written) {
        const Assignment& one = m_written[written];
        const Role role = m_tables.RoleOf(m_tables.At(m_axis).writtenVariables[one.place.node]);
        const bool lacksValues =
            !list.isOfTotal && role != Role::kScale && NeedsValues(one.function.key);
        const bool lacksSet = role != Role::kSet && NeedsSet(one.function.key);
        if (!lacksValues && !lacksSet) return;
        if (std::exchange(m_told[function].isImpossible, true)) return;
        m_builder.Note(
            lacksSet ? NoteWording::kResponsesImpossible : NoteWording::kStatisticImpossible,
            {.function = TextOfFunction(m_asked[function]), .other = NameAt(one.place.node)},
            m_asked[function].line);
    }

    void CheckBases(const TermList& list, std::size_t function, const Indexes& written) {
        Told& told = m_told[function];
        if (!std::exchange(told.isBaseChecked, true)) NoteBasesElsewhere(function);
        const std::string_view counted =
            WrittenFunctionKey(m_asked[function], list.hasSet, m_tables.AskedSettings());
        if (counted != m_written[written.front()].function.key) {
            NoteCountingOtherwise(list, function, written.front());
        }
        if (told.isBaseDifferent) return;
        const Fit& fit = FitOf(list, function, written);
        if (fit.fits) return;
        told.isBaseDifferent = true;
        m_builder.Note(NoteWording::kBaseDiffers,
                       {.function = TextOfFunction(m_asked[function]),
                        .asked = fit.mismatch.asked,
                        .written = fit.mismatch.written},
                       m_asked[function].line);
    }

    void NoteBasesElsewhere(std::size_t function) {
        ChooseBases(function);
        if (m_firstElsewhere == kNowhere) return;
        m_builder.Note(NoteWording::kBaseElsewhere,
                       {.function = TextOfFunction(m_asked[function]),
                        .name = m_tables.Asked().baseVariables[m_firstElsewhere].text},
                       m_asked[function].line);
    }

    void EnterMissing(const TermList& list, std::size_t function) {
        if (!IsBorrowed(list, function)) EnterLost(function, list.term, list.isOfTotal);
    }

    void EnterLost(std::size_t function, std::size_t term, bool isOfTotal) {
        Told& told = m_told[function];
        ++m_tally.asked;
        ++m_tally.lost;
        ++told.lost;
        if (told.lostTerm == kNowhere) told.lostTerm = term;
        told.isLostTotal = isOfTotal;
        AccountEntry& entry = m_builder.Enter(Subject::kStatistic, Fate::kLost, function);
        entry.isOfTotal = isOfTotal;
        entry.line = m_asked[function].line;
    }

    // What a function that is not, or not everywhere, in the new table is told with.
    void Conclude(std::size_t function) {
        const Told& told = m_told[function];
        const Assignment& asked = m_asked[function];
        if (told.placed == 0 && told.lost == 0) EnterLost(function, kNowhere, false);
        if (told.lost == 0) return;
        const std::string text = TextOfFunction(asked);
        if (told.placed > 0 && told.lostTerm != kNowhere) {
            m_builder.Note(NoteWording::kStatisticLostInPart,
                           {.function = text, .other = TextOfAskedTerm(told.lostTerm)}, asked.line);
            return;
        }
        NoteWording wording = NoteWording::kStatisticLost;
        if (told.isLostTotal || m_totalNames.contains(asked.on.key)) {
            wording = NoteWording::kStatisticLostWithTotal;
        } else if (!asked.on.IsEmpty() && m_tables.VariableOf(asked.on.key) == kNowhere) {
            wording = NoteWording::kStatisticLostWithVariable;
        }
        m_builder.Note(wording, {.function = text, .name = asked.on.text}, asked.line);
    }

    [[nodiscard]] std::string TextOfAskedTerm(std::size_t term) const {
        const DimensionPair& pair = m_tables.At(m_axis);
        constexpr std::size_t kMostInTerm = 8;
        std::string text;
        std::size_t count = 0;
        for (const std::size_t node : pair.asked[term]) {
            if (!text.empty()) text += " > ";
            if (++count > kMostInTerm) return text + "...";
            text += m_tables.NameOfVariable(pair.askedVariables[node]);
        }
        return text;
    }

    void EnterUnasked(const TermList& list, std::size_t written) {
        const Assignment& one = m_written[written];
        const bool isDefault = !list.isOfTotal && list.asked.empty() && list.written.size() == 1 &&
                               list.hasSet && one.function.key == "RESPONSES" &&
                               !IsPercentage(one) && LooksOf(one) == LooksOf(Assignment());
        if (isDefault) {
            ++m_tally.asked;
            ++m_tally.kept;
            SetPlace(m_builder.Enter(Subject::kStatistic, Fate::kKept, kNowhere, {written}),
                     {written}, list);
            return;
        }
        EnterExtra(written);
    }

    void EnterExtra(std::size_t written) {
        const Assignment& one = m_written[written];
        ++m_tally.extra;
        AccountEntry& entry =
            m_builder.Enter(Subject::kStatistic, Fate::kExtra, kNowhere, {written});
        entry.isOfTotal = one.isOfTotal;
        entry.place = one.place;
        entry.writtenLine = one.line;
        const std::size_t variable = m_tables.At(one.place.axis).writtenVariables[one.place.node];
        std::vector<std::size_t>& extra = m_extra[{variable, one.isOfTotal}];
        extra.push_back(written);
    }

    // Of each variable, or its total, once.
    void NoteExtra() {
        for (const auto& [key, extra] : m_extra) {
            // More than a sentence shows need no text.
            constexpr std::size_t kMostTexts = 9;
            std::vector<std::string> texts;
            for (const std::size_t index : extra) {
                texts.push_back(texts.size() < kMostTexts ? TextOfWritten(m_written[index]) : "");
            }
            const std::vector<std::string_view> names(texts.begin(), texts.end());
            m_builder.Note(
                key.second ? NoteWording::kTotalShowsMore : NoteWording::kStatisticExtra,
                {.other = m_tables.NameOfVariable(key.first), .written = ListOfNames(names)},
                LineOf(key.first, key.second));
        }
    }

    // Of the total of a variable; 0 for nothing that was asked for.
    [[nodiscard]] long LineOf(std::size_t variable, bool isOfTotal) const {
        const auto line = m_totalLines.find(variable);
        return isOfTotal && line != m_totalLines.end() ? line->second : 0;
    }

    const TablePair& m_tables;
    const std::vector<Assignment>& m_asked;
    const std::vector<Assignment>& m_written;
    AccountBuilder& m_builder;
    Tally& m_tally;
    Axis m_axis;
    PercentageBases m_bases;
    Range m_chosen = {kNowhere, 0};           // the base variables of `m_bases`
    std::size_t m_firstElsewhere = kNowhere;  // the first of these that is not in the table
    std::optional<Fit> m_fit;                 // of the last list, with these base variables
    std::vector<Told> m_told;
    std::vector<bool> m_isUsed;
    std::unordered_map<std::string, std::size_t> m_numbers;
    Indexes m_askedLooks;
    Indexes m_writtenLooks;
    std::array<Indexes, 2> m_askedKeys;  // in terms without a set, and in those with one
    Indexes m_writtenKeys;
    std::unordered_set<std::string_view> m_totalNames;
    Indexes m_everywhere;
    std::unordered_map<std::string_view, Indexes> m_functionsOn;
    std::unordered_map<std::size_t, std::vector<TotaledVariable>> m_totalsAt;  // by node
    std::unordered_map<std::size_t, long> m_totalLines;                        // by variable
    std::unordered_map<std::string_view, unsigned> m_axesOf;                   // sets of bits
    std::unordered_map<std::string_view, unsigned> m_axesOfTotal;
    std::unordered_map<std::size_t, Indexes> m_listAt;           // by written node
    std::vector<std::pair<std::size_t, std::size_t>> m_matched;  // in one list
    bool m_isOrderTold = false;
    std::map<std::pair<std::size_t, bool>, Indexes>
        m_extra;  // by variable, and whether of its total
};

}  // namespace

void AccountForStatistics(const TablePair& tables, const std::vector<TotaledVariable>& totaled,
                          AccountBuilder& builder, Tally& tally) {
    StatisticsAccount(tables, totaled, builder, tally).Run();
}

void AccountForLostStatistics(const TableOutline& asked, AccountBuilder& builder, Tally& tally) {
    for (std::size_t index = 0; index < asked.assignments.size(); ++index) {
        ++tally.asked;
        ++tally.lost;
        builder.Enter(Subject::kStatistic, Fate::kLost, index).line = asked.assignments[index].line;
    }
}

void AccountForExtraStatistics(const TableOutline& written, AccountBuilder& builder, Tally& tally) {
    for (std::size_t index = 0; index < written.assignments.size(); ++index) {
        ++tally.written;
        ++tally.extra;
        AccountEntry& entry = builder.Enter(Subject::kStatistic, Fate::kExtra, kNowhere, {index});
        entry.place = written.assignments[index].place;
        entry.writtenLine = written.assignments[index].line;
    }
}

Axis StatisticsAxis(const TablePair& tables) {
    if (!tables.Written().assignments.empty()) {
        return tables.Written().assignments.front().place.axis;
    }
    std::unordered_set<std::string_view> named;
    for (const Assignment& one : tables.Asked().assignments) named.insert(one.on.key);
    for (const Axis axis : kAllAxes) {
        for (const Node& node : tables.AskedDimension(axis)) {
            if (IsOperator(node.role)) continue;
            if (node.role == Role::kScale || named.contains(node.name.key)) return axis;
        }
    }
    if (!tables.AskedDimension(Axis::kColumns).empty()) return Axis::kColumns;
    return tables.AskedDimension(Axis::kRows).empty() ? Axis::kLayers : Axis::kRows;
}

}  // namespace quillet::outline
