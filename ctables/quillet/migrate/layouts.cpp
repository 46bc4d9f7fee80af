#include "migrate/layouts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillet::migrate {

namespace {

constexpr std::array<std::pair<Layout, std::string_view>, 3> kNames = {{
    {Layout::kAuto, "auto"},
    {Layout::kInteractive, "interactive"},
    {Layout::kBatch, "batch"},
}};

}  // namespace

std::string_view NameOf(Layout layout) {
    return std::find_if(kNames.begin(), kNames.end(),
                        [layout](const auto& named) { return named.first == layout; })
        ->second;
}

std::optional<Layout> LayoutOf(std::string_view name) {
    for (const auto& [layout, itsName] : kNames) {
        if (itsName == name) return layout;
    }
    return std::nullopt;
}

bool LayoutRules::IsBatchByName(std::string_view path) const {
    return std::any_of(m_batchPatterns.begin(), m_batchPatterns.end(),
                       [path](const NamePattern& pattern) { return pattern.Matches(path); });
}

}  // namespace quillet::migrate
