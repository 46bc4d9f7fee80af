#include "igraph/model/usednames.h"

#include <string_view>
#include <unordered_set>

namespace quillet::igraph {

std::string UsedNames(std::span<const VariableRole> roles) {
    std::string names;
    std::unordered_set<std::string_view> seen;
    for (const VariableRole& role : roles) {
        if (!role.pReference->IsVariable() || !seen.insert(role.pReference->key).second) continue;
        if (!names.empty()) names += ' ';
        names += role.pReference->name;
    }
    return names;
}

}  // namespace quillet::igraph
