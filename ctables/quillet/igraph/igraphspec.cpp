#include "igraph/igraphspec.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace quillet::igraph {

namespace {

bool IsNone(std::string_view look) {
    static constexpr std::string_view kUpper = "NONE";
    static constexpr std::string_view kLower = "none";
    if (look.size() != kUpper.size()) return false;
    for (std::size_t i = 0; i < look.size(); ++i) {
        if (look[i] != kUpper[i] && look[i] != kLower[i]) return false;
    }
    return true;
}

}  // namespace

std::vector<std::string> iGraphSpec::getChartLooks() const {
    std::vector<std::string> looks;
    std::copy_if(m_command.chartLooks.begin(), m_command.chartLooks.end(),
                 std::back_inserter(looks),
                 [](const std::string& look) { return !look.empty() && !IsNone(look); });
    return looks;
}

void iGraphSpec::SetComplete() {
    m_usedNames = UsedNames(m_command);
    m_isComplete = true;
}

std::string UsedNames(const Specification& spec) {
    std::string names;
    std::unordered_set<std::string_view> seen;
    for (const VariableRole& role : VariableRoles(spec)) {
        if (!role.pReference->IsVariable() || !seen.insert(role.pReference->key).second) continue;
        if (!names.empty()) names += ' ';
        names += role.pReference->name;
    }
    return names;
}

}  // namespace quillet::igraph
