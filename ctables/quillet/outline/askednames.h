// What the names of a command are declared as.
#ifndef QUILLET_OUTLINE_ASKEDNAMES_H
#define QUILLET_OUTLINE_ASKEDNAMES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "outline/tableoutline.h"

namespace quillet::outline {

/// The names that a command declares, by their keys. Of several declarations of one name the first
/// counts.
class AskedNames {
public:
    /// Declares a variable of OBSERVATION; both ends of a range, and what is numbered between them
    /// where the ends differ in their numbers alone, as in q1 TO q5.
    void AddScale(const VariableRange& variables);
    void AddSet(const Name& name) { Add(name, Role::kSet, kNowhere); }
    /// `index` is that of its declaration.
    void AddTotal(const Name& name, std::size_t index) { Add(name, Role::kTotal, index); }

    /// Call this once after the last declaration, before anything is looked up.
    void Finish();

    /// `kCategory` for a name that is not declared.
    [[nodiscard]] Role RoleOf(const std::string& key) const;
    /// The index of a total's declaration; `kNowhere` for any other name.
    [[nodiscard]] std::size_t TotalAt(const std::string& key) const;

private:
    struct Declaration {
        Role role;
        std::size_t index;
    };
    using Numbers = std::pair<std::uint64_t, std::uint64_t>;  // the first and the last

    void Add(const Name& name, Role role, std::size_t index) {
        m_declarations.try_emplace(name.key, Declaration{role, index});
    }

    std::unordered_map<std::string, Declaration> m_declarations;
    std::unordered_map<std::string, std::vector<Numbers>> m_numbered;  // by what precedes these
};

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ASKEDNAMES_H
