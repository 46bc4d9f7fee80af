#include "outline/accounttotals.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quillet::outline {

namespace {

[[nodiscard]] bool HasLabel(const Total& written, const Total& asked) {
    if (written.position != asked.position) return false;
    if (asked.label.IsEmpty()) return written.label.value == asked.name.key;
    return Normalized(written.label) == Normalized(asked.label);
}

// The dimension whose labels stand where a marker for labels is.
[[nodiscard]] Axis Opposite(Axis axis) {
    return axis == Axis::kRows ? Axis::kColumns : Axis::kRows;
}

class TotalsAccount {
public:
    TotalsAccount(const TablePair& tables, AccountBuilder& builder)
        : m_tables(tables), m_builder(builder) {}

    std::vector<TotaledVariable> Run() {
        for (std::size_t total = 0; total < m_tables.Asked().totals.size(); ++total) {
            if (!m_tables.IsDegraded(m_tables.Asked().totals[total].name)) FindTotaled(total);
        }
        MatchWritten();
        for (TotaledVariable& one : m_totaled) {
            const Total& total = m_tables.Asked().totals[one.total];
            one.isKept = m_kept.contains({one.variable, total.name.key});
        }
        EnterAsked();
        return std::move(m_totaled);
    }

private:
    using Key = std::pair<std::size_t, std::string_view>;  // a variable, and the key of a total

    void Add(std::size_t total, Axis axis, std::size_t node) {
        const std::size_t variable = m_tables.At(axis).askedVariables[node];
        if (variable != kNowhere) m_totaled.push_back({total, axis, node, variable});
    }

    void FindTotaled(std::size_t index) {
        const Total& total = m_tables.Asked().totals[index];
        if (total.totaled == kNowhere) return;
        const Axis axis = total.place.axis;
        const Dimension& dimension = m_tables.AskedDimension(axis);
        if (dimension[total.totaled].role == Role::kLabels) {
            const std::size_t count = m_tables.AskedDimension(Opposite(axis)).size();
            m_builder.Charge(count);
            for (std::size_t node = 0; node < count; ++node) Add(index, Opposite(axis), node);
            return;
        }
        // The outermost variable of a nesting, and each of a stacking.
        std::vector<std::size_t> open = {total.totaled};
        while (!open.empty()) {
            const std::size_t node = open.back();
            open.pop_back();
            m_builder.Charge(1);
            if (dimension[node].role == Role::kNesting) {
                open.push_back(node + 1);
            } else if (dimension[node].role == Role::kStacking) {
                for (std::size_t operand = node + 1; operand < dimension[node].end;
                     operand = dimension[operand].end) {
                    open.push_back(operand);
                }
            } else {
                Add(index, axis, node);
            }
        }
    }

    // Each written total of a variable is that of one name.
    void MatchWritten() {
        std::unordered_map<std::size_t, std::vector<std::size_t>> askedOf;  // by variable
        for (const TotaledVariable& one : m_totaled) askedOf[one.variable].push_back(one.total);
        const std::vector<Total>& written = m_tables.Written().totals;
        for (std::size_t index = 0; index < written.size(); ++index) {
            for (const Name& name : written[index].variables) {
                const std::size_t variable = m_tables.WrittenVariableOf(name.key);
                const std::size_t total = FindAsked(written[index], variable, askedOf[variable]);
                if (total == kNowhere) {
                    NoteUnasked(index, name);
                    continue;
                }
                const std::string_view key = m_tables.Asked().totals[total].name.key;
                m_kept.emplace(Key{variable, key}, index);
                m_keptOf[variable].push_back(total);
            }
        }
        if (!m_keptOf.empty()) FindExtra();
    }

    // The last one counts, as it does for the conversion.
    [[nodiscard]] std::size_t FindAsked(const Total& written, std::size_t variable,
                                        const std::vector<std::size_t>& asked) {
        for (std::size_t index = asked.size(); index-- > 0;) {
            const Total& total = m_tables.Asked().totals[asked[index]];
            m_builder.Charge(1);
            if (HasLabel(written, total) && !m_kept.contains({variable, total.name.key})) {
                return asked[index];
            }
        }
        return kNowhere;
    }

    void NoteUnasked(std::size_t written, const Name& variable) {
        const Total& total = m_tables.Written().totals[written];
        m_builder.Note(NoteWording::kTotalUnasked,
                       {.name = total.label.source, .other = variable.text}, 0);
        m_builder.Enter(Subject::kTotal, Fate::kExtra, kNowhere, {written}).writtenLine =
            total.line;
    }

    // Places of a variable for which its total was not asked.
    void FindExtra() {
        std::map<std::pair<Axis, std::size_t>, std::vector<std::string_view>> namesAt;
        for (const TotaledVariable& one : m_totaled) {
            namesAt[{one.axis, one.node}].push_back(m_tables.Asked().totals[one.total].name.key);
        }
        std::set<Key> told;
        for (const Axis axis : kAllAxes) {
            const std::vector<std::size_t>& variables = m_tables.At(axis).askedVariables;
            for (std::size_t node = 0; node < variables.size(); ++node) {
                const auto kept = m_keptOf.find(variables[node]);
                if (variables[node] == kNowhere || kept == m_keptOf.end()) continue;
                const std::vector<std::string_view>& names = namesAt[{axis, node}];
                for (const std::size_t total : kept->second) {
                    const Name& name = m_tables.Asked().totals[total].name;
                    m_builder.Charge(1 + names.size());
                    if (std::find(names.begin(), names.end(), name.key) != names.end()) continue;
                    AddExtra(total, {axis, node}, told.insert({variables[node], name.key}).second);
                }
            }
        }
    }

    void AddExtra(std::size_t total, Place place, bool isNew) {
        const Total& asked = m_tables.Asked().totals[total];
        const std::size_t variable = m_tables.At(place.axis).askedVariables[place.node];
        const std::size_t written = m_kept.at({variable, asked.name.key});
        AccountEntry& entry = m_builder.Enter(Subject::kTotal, Fate::kExtra, kNowhere, {written});
        entry.writtenLine = m_tables.Written().totals[written].line;
        if (!isNew) return;
        m_builder.Note(NoteWording::kTotalExtra,
                       {.name = asked.name.text, .other = m_tables.NameOfVariable(variable)},
                       asked.line);
    }

    void EnterAsked() {
        std::size_t next = 0;
        for (std::size_t index = 0; index < m_tables.Asked().totals.size(); ++index) {
            const Total& total = m_tables.Asked().totals[index];
            if (m_tables.IsDegraded(total.name)) continue;
            std::size_t kept = 0;
            std::size_t lost = kNowhere;
            const bool isOfLabels =
                total.totaled != kNowhere &&
                m_tables.AskedDimension(total.place.axis)[total.totaled].role == Role::kLabels;
            const std::size_t first = next;
            for (; next < m_totaled.size() && m_totaled[next].total == index; ++next) {
                if (m_totaled[next].isKept) ++kept;
                if (!m_totaled[next].isKept && lost == kNowhere) lost = next;
                if (!isOfLabels) Enter(m_totaled[next]);
            }
            if (next == first || isOfLabels) EnterWhole(index, kept > 0);
            if (kept == 0) {
                m_builder.Note(NoteWording::kTotalLost, {.name = total.name.text}, total.line);
            } else if (lost != kNowhere && !isOfLabels) {
                m_builder.Note(NoteWording::kTotalLostOfVariable,
                               {.name = total.name.text,
                                .other = m_tables.NameOfVariable(m_totaled[lost].variable)},
                               total.line);
            }
        }
    }

    void EnterWhole(std::size_t index, bool isKept) {
        m_builder.Enter(Subject::kTotal, isKept ? Fate::kKept : Fate::kLost, index).line =
            m_tables.Asked().totals[index].line;
    }

    void Enter(const TotaledVariable& one) {
        const Total& total = m_tables.Asked().totals[one.total];
        std::vector<std::size_t> written;
        if (one.isKept) written.push_back(m_kept.at({one.variable, total.name.key}));
        AccountEntry& entry = m_builder.Enter(
            Subject::kTotal, one.isKept ? Fate::kKept : Fate::kLost, one.total, written);
        entry.line = total.line;
        if (one.isKept) entry.writtenLine = m_tables.Written().totals[written.front()].line;
    }

    const TablePair& m_tables;
    AccountBuilder& m_builder;
    std::vector<TotaledVariable> m_totaled;
    std::map<Key, std::size_t> m_kept;                                   // the written total
    std::unordered_map<std::size_t, std::vector<std::size_t>> m_keptOf;  // totals, by variable
};

}  // namespace

std::vector<TotaledVariable> AccountForTotals(const TablePair& tables, AccountBuilder& builder) {
    return TotalsAccount(tables, builder).Run();
}

}  // namespace quillet::outline
