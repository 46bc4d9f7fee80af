// Terms are compared, not trees: the conversion multiplies out one dimension and leaves the others
// as they are, and parentheses and the places of markers and totals make no difference to a table.
#include "outline/tablepair.h"

#include <algorithm>
#include <utility>

namespace quillet::outline {

namespace {

using TermKey = std::vector<std::size_t>;

struct TermKeyHash {
    std::size_t operator()(const TermKey& key) const {
        std::size_t hash = key.size();
        for (const std::size_t part : key) hash = hash * 1000003U + part;
        return hash;
    }
};

[[nodiscard]] TermKey KeyOf(std::span<const std::size_t> nodes,
                            const std::vector<std::size_t>& variables) {
    TermKey key;
    key.reserve(nodes.size());
    for (const std::size_t node : nodes) key.push_back(variables[node]);
    return key;
}

[[nodiscard]] bool IsVariable(Role role) {
    return role == Role::kCategory || role == Role::kScale || role == Role::kSet;
}

}  // namespace

std::string_view NameOf(Axis axis) {
    switch (axis) {
        case Axis::kRows:
            return "rows";
        case Axis::kColumns:
            return "columns";
        case Axis::kLayers:
        case Axis::kNone:
            break;
    }
    return "layers";
}

TablePair::TablePair(const CommandOutline& asked, const TableOutline& askedTable,
                     const TableOutline& writtenTable, AccountBuilder& builder)
    : m_askedCommand(asked),
      m_seenSettings(asked.settings),
      m_asked(askedTable),
      m_written(writtenTable) {
    for (const TakenByFormat& taken : asked.takenByFormat) {
        if (taken.subcommand.key == "BASE") m_seenSettings.base = CaseBase::kAnswering;
        if (taken.subcommand.key == "GBASE") m_seenSettings.groupBase = GroupBase::kCases;
    }
    for (const Axis axis : kAllAxes) NumberWritten(axis);
    for (const Axis axis : kAllAxes) NumberAsked(axis, builder.Page());
    for (const Axis axis : kAllAxes) Align(axis, builder);
}

std::size_t TablePair::NumberFor(const std::string& writtenKey, std::string_view name, Role role) {
    const auto [place, isNew] = m_writtenNumbers.try_emplace(writtenKey, m_names.size());
    if (isNew) {
        m_names.push_back(name);
        m_keys.push_back(writtenKey);
        m_roles.push_back(role);
    }
    return place->second;
}

void TablePair::NumberWritten(Axis axis) {
    DimensionPair& pair = m_dimensions[static_cast<std::size_t>(axis)];
    for (const Node& node : WrittenDimension(axis)) {
        pair.writtenVariables.push_back(kNowhere);
        if (IsOperator(node.role)) continue;
        const std::size_t number = NumberFor(node.name.key, node.name.text, node.role);
        if (m_roles[number] != node.role) pair.hasOtherRoles = true;
        pair.writtenVariables.back() = number;
    }
}

void TablePair::NumberAsked(Axis axis, const CodePage& codePage) {
    DimensionPair& pair = m_dimensions[static_cast<std::size_t>(axis)];
    std::vector<std::size_t>& variables = pair.askedVariables;
    for (const Node& node : AskedDimension(axis)) {
        variables.push_back(kNowhere);
        if (!IsVariable(node.role) && node.role != Role::kTotal) continue;
        const std::size_t same = WrittenVariableOf(node.name.key);
        const bool isOrdinary = same != kNowhere && m_roles[same] == Role::kCategory;
        const bool isDegraded = isOrdinary && node.role != Role::kCategory;
        if (isDegraded) {
            if (m_degradedKeys.insert(node.name.key).second) m_degraded.push_back(&node);
        } else if (node.role == Role::kTotal) {
            continue;
        }
        const bool isSet = node.role == Role::kSet && !isOrdinary;
        const std::string key = isSet ? WrittenSetName(codePage, node.name.key) : node.name.key;
        const std::size_t number = NumberFor(key, node.name.text, node.role);
        m_names[number] = node.name.text;
        if (m_roles[number] != node.role && !isDegraded) pair.hasOtherRoles = true;
        m_askedNumbers.try_emplace(node.name.key, number);
        variables.back() = number;
    }
}

void TablePair::Align(Axis axis, AccountBuilder& builder) {
    DimensionPair& pair = m_dimensions[static_cast<std::size_t>(axis)];
    std::vector<bool> isLeft(pair.askedVariables.size());
    for (std::size_t node = 0; node < isLeft.size(); ++node) {
        isLeft[node] = pair.askedVariables[node] != kNowhere;
    }
    pair.asked = MultiplyOut(AskedDimension(axis), isLeft, builder);
    isLeft.assign(pair.writtenVariables.size(), true);
    pair.written = MultiplyOut(WrittenDimension(axis), isLeft, builder);
    builder.Charge(pair.asked.NodeCount() + pair.written.NodeCount());

    pair.writtenOf.assign(pair.asked.Count(), kNowhere);
    pair.isSame = pair.asked.Count() == pair.written.Count();
    std::vector<TermKey> askedKeys;
    for (std::size_t term = 0; term < pair.asked.Count(); ++term) {
        askedKeys.push_back(KeyOf(pair.asked[term], pair.askedVariables));
        pair.writtenOf[term] = term;
        pair.isSame =
            pair.isSame && askedKeys.back() == KeyOf(pair.written[term], pair.writtenVariables);
    }
    if (pair.isSame) return;
    // From the last to the first, so that the first one is taken first.
    std::unordered_map<TermKey, std::vector<std::size_t>, TermKeyHash> places;
    for (std::size_t term = pair.written.Count(); term-- > 0;) {
        places[KeyOf(pair.written[term], pair.writtenVariables)].push_back(term);
    }
    for (std::size_t term = 0; term < pair.asked.Count(); ++term) {
        const auto place = places.find(askedKeys[term]);
        pair.writtenOf[term] = kNowhere;
        if (place == places.end() || place->second.empty()) continue;
        pair.writtenOf[term] = place->second.back();
        place->second.pop_back();
    }
}

std::size_t TablePair::VariableOf(const std::string& askedKey) const {
    const auto place = m_askedNumbers.find(askedKey);
    return place == m_askedNumbers.end() ? kNowhere : place->second;
}

std::size_t TablePair::WrittenVariableOf(const std::string& writtenKey) const {
    const auto place = m_writtenNumbers.find(writtenKey);
    return place == m_writtenNumbers.end() ? kNowhere : place->second;
}

bool TablePair::IsDegraded(const Name& name) const { return m_degradedKeys.contains(name.key); }

}  // namespace quillet::outline
