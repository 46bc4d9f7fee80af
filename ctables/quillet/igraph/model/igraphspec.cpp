#include "igraph/model/igraphspec.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "igraph/model/usednames.h"

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

void iGraphSpec::SetComplete(std::vector<VariableRole> roles) {
    m_roles = std::move(roles);
    m_usedNames = UsedNames(m_roles);
    m_isComplete = true;
}

}  // namespace quillet::igraph
