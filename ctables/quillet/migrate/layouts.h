// How the commands of files are laid out, as the user says.
#ifndef QUILLET_MIGRATE_LAYOUTS_H
#define QUILLET_MIGRATE_LAYOUTS_H

#include <optional>
#include <string_view>
#include <vector>

#include "migrate/pattern.h"

namespace quillet::migrate {

enum class Layout {
    kAuto,  ///< Each file as it reads well.
    kInteractive,
    kBatch,
};

/// The name that the command line and reports use.
[[nodiscard]] std::string_view NameOf(Layout layout);
[[nodiscard]] std::optional<Layout> LayoutOf(std::string_view name);

/// Which files the user wants to be read in which layout. Constant once it is filled.
class LayoutRules {
public:
    explicit LayoutRules(Layout forAll = Layout::kAuto) : m_forAll(forAll) {}

    void AddBatch(std::string_view pattern) { m_batchPatterns.emplace_back(pattern); }

    [[nodiscard]] Layout ForAll() const { return m_forAll; }
    /// True when a pattern says that the file with this path below the root is in batch layout.
    [[nodiscard]] bool IsBatchByName(std::string_view path) const;
    /// For the file with this path: what a pattern says, else that for all.
    [[nodiscard]] Layout ForPath(std::string_view path) const {
        return IsBatchByName(path) ? Layout::kBatch : m_forAll;
    }

private:
    Layout m_forAll;
    std::vector<NamePattern> m_batchPatterns;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_LAYOUTS_H
