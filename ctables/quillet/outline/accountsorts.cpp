// The orders in which categories stand.
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "outline/accountfunctions.h"
#include "outline/accountsettings.h"
#include "outline/accountstatistics.h"
#include "platform/multibyte.h"

namespace quillet::outline {

namespace {

class SortsAccount {
public:
    SortsAccount(const TablePair& tables, AccountBuilder& builder)
        : m_tables(tables), m_builder(builder), m_axis(StatisticsAxis(tables)) {}

    void Run() {
        const std::vector<Sort>& written = m_tables.Written().sorts;
        const std::vector<Sort>& asked = m_tables.Asked().sorts;
        if (written.empty() && asked.empty()) return;
        FindFirstMagnet();
        for (std::size_t index = 0; index < written.size(); ++index) {
            const Sort& sort = written[index];
            m_places[sort.variable.key].push_back(index);
            m_same[TextOfKey(sort.variable.key, sort.direction, sort.key.key, sort.of.key)]
                .push_back(index);
        }
        std::vector<bool> isAsked(written.size());
        for (std::size_t index = 0; index < asked.size(); ++index) Account(index, isAsked);
        for (std::size_t index = 0; index < written.size(); ++index) {
            if (isAsked[index]) continue;
            m_builder.Enter(Subject::kSort, Fate::kExtra, kNowhere, {index}).writtenLine =
                written[index].line;
            m_builder.Note(NoteWording::kSortExtra, {.name = written[index].variable.text}, 0);
        }
    }

private:
    void FindFirstMagnet() {
        const DimensionPair& pair = m_tables.At(m_axis);
        for (const std::size_t variable : pair.writtenVariables) {
            if (variable != kNowhere) m_isInAxis.insert(variable);
        }
        if (pair.written.Count() == 0) return;
        for (const Role role : {Role::kCategory, Role::kSet, Role::kScale}) {
            for (const std::size_t node : pair.written[0]) {
                const std::size_t variable = pair.writtenVariables[node];
                if (m_tables.RoleOf(variable) == role) m_magnet = variable;
            }
        }
    }

    [[nodiscard]] std::string WrittenKeyOf(const Name& name) const {
        const std::size_t variable = m_tables.VariableOf(name.key);
        std::string set = WrittenSetName(m_builder.Page(), name.key);
        if (variable != kNowhere) {
            return m_tables.RoleOf(variable) == Role::kSet ? set : name.key;
        }
        return m_places.contains(set) ? set : name.key;
    }

    void Account(std::size_t index, std::vector<bool>& isAsked) {
        const Sort& asked = m_tables.Asked().sorts[index];
        const std::vector<Sort>& written = m_tables.Written().sorts;
        const std::size_t found = Find(asked, isAsked);
        const bool isSame = found != kNowhere && AreSame(asked, written[found]);
        const std::vector<std::size_t> matched =
            found == kNowhere ? std::vector<std::size_t>() : std::vector<std::size_t>{found};
        AccountEntry& entry =
            m_builder.Enter(Subject::kSort, isSame ? Fate::kKept : Fate::kDropped, index, matched);
        entry.line = asked.line;
        if (found != kNowhere) {
            isAsked[found] = true;
            entry.writtenLine = written[found].line;
        }
        if (isSame) return;
        const bool isSorted = found != kNowhere;
        m_builder.Note(isSorted ? NoteWording::kSortOtherwise : NoteWording::kSortChanged,
                       {.name = asked.variable.text,
                        .asked = TextOf(asked),
                        .written = isSorted ? TextOf(written[found]) : std::string()},
                       asked.line);
    }

    // One that is the same, rather one that nothing asked for yet; of the first SORT of a table,
    // which is the one that was written, at least something for the same variable.
    [[nodiscard]] std::size_t Find(const Sort& asked, const std::vector<bool>& isAsked) {
        const KeyOfSort key = KeyFor(asked);
        const std::string variable = WrittenKeyOf(asked.variable);
        const auto same = m_same.find(TextOfKey(variable, asked.direction, key.function, key.of));
        if (same != m_same.end()) {
            DropAsked(same->second, isAsked);
            return same->second.front();
        }
        const auto places = m_places.find(variable);
        if (asked.subcommand > 0 || places == m_places.end()) return kNowhere;
        DropAsked(places->second, isAsked);
        return isAsked[places->second.front()] ? kNowhere : places->second.front();
    }

    // From the front, but for the last one.
    static void DropAsked(std::deque<std::size_t>& places, const std::vector<bool>& isAsked) {
        while (places.size() > 1 && isAsked[places.front()]) places.pop_front();
    }

    [[nodiscard]] static std::string TextOfKey(const std::string& variable, Direction direction,
                                               const std::string& function, const std::string& of) {
        return variable + (direction == Direction::kAscending ? "\nA" : "\nD") + function + '\n' +
               of;
    }

    [[nodiscard]] bool AreSame(const Sort& asked, const Sort& written) const {
        const KeyOfSort key = KeyFor(asked);
        return asked.direction == written.direction && key.function == written.key.key &&
               key.of == written.of.key;
    }

    struct KeyOfSort {
        std::string function;
        std::string of;
    };

    // Of categories in another dimension than that of the statistics, cases are counted where the
    // statistics begin.
    [[nodiscard]] KeyOfSort KeyFor(const Sort& asked) const {
        Assignment function;
        function.function = asked.key;
        KeyOfSort key;
        key.function = asked.key.IsEmpty()
                           ? "COUNT"
                           : WrittenFunctionKey(function, false, m_tables.AskedSettings());
        // There is no order by a percentage.
        if (asked.key.key.ends_with("PCT")) key.function += '%';
        if (!asked.of.IsEmpty()) key.of = WrittenKeyOf(asked.of);
        const std::size_t variable = m_tables.WrittenVariableOf(WrittenKeyOf(asked.variable));
        const bool isHere = variable != kNowhere && m_isInAxis.contains(variable);
        if (key.function == "COUNT" && asked.of.IsEmpty() && !isHere && m_magnet != kNowhere) {
            key.of = m_tables.KeyOfVariable(m_magnet);
        }
        return key;
    }

    [[nodiscard]] static std::string TextOf(const Sort& sort) {
        std::string text(sort.direction == Direction::kAscending ? "ascending " : "descending ");
        text += sort.key.IsEmpty() ? "COUNT" : sort.key.key;
        if (!sort.of.IsEmpty()) text += '(' + sort.of.text + ')';
        return text;
    }

    const TablePair& m_tables;
    AccountBuilder& m_builder;
    Axis m_axis;
    std::size_t m_magnet = kNowhere;
    std::unordered_set<std::size_t> m_isInAxis;
    std::unordered_map<std::string, std::deque<std::size_t>> m_places;  // by variable
    std::unordered_map<std::string, std::deque<std::size_t>> m_same;    // by all of it
};

}  // namespace

void AccountForSorts(const TablePair& tables, AccountBuilder& builder) {
    SortsAccount(tables, builder).Run();
}

}  // namespace quillet::outline
