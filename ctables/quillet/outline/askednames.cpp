#include "outline/askednames.h"

#include <algorithm>

namespace quillet::outline {

namespace {

struct NumberedName {
    std::string_view stem;
    std::uint64_t number = 0;
    bool hasNumber = false;
};

NumberedName Split(std::string_view key) {
    constexpr std::size_t kMostDigits = 18;
    NumberedName name;
    const std::size_t stem = key.find_last_not_of("0123456789") + 1;
    name.stem = key.substr(0, stem);
    const std::string_view digits = key.substr(stem);
    name.hasNumber = !digits.empty() && digits.size() <= kMostDigits;
    if (!name.hasNumber) return name;
    for (const char digit : digits) {
        name.number = name.number * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    return name;
}

}  // namespace

void AskedNames::AddScale(const VariableRange& variables) {
    Add(variables.first, Role::kScale, kNowhere);
    if (variables.last.IsEmpty()) return;
    Add(variables.last, Role::kScale, kNowhere);
    const NumberedName first = Split(variables.first.key);
    const NumberedName last = Split(variables.last.key);
    if (first.hasNumber && last.hasNumber && first.stem == last.stem) {
        m_numbered[std::string(first.stem)].emplace_back(first.number, last.number);
    }
}

// Overlapping ranges become one, so that each lookup takes the logarithm of their number.
void AskedNames::Finish() {
    for (auto& [stem, ranges] : m_numbered) {
        std::sort(ranges.begin(), ranges.end());
        std::vector<Numbers> joined;
        for (const Numbers& range : ranges) {
            if (!joined.empty() && range.first <= joined.back().second) {
                joined.back().second = std::max(joined.back().second, range.second);
            } else {
                joined.push_back(range);
            }
        }
        ranges = std::move(joined);
    }
}

Role AskedNames::RoleOf(const std::string& key) const {
    const auto declared = m_declarations.find(key);
    if (declared != m_declarations.end()) return declared->second.role;
    const NumberedName name = Split(key);
    if (m_numbered.empty() || !name.hasNumber) return Role::kCategory;
    const auto ranges = m_numbered.find(std::string(name.stem));
    if (ranges == m_numbered.end()) return Role::kCategory;
    const auto after = std::upper_bound(
        ranges->second.begin(), ranges->second.end(), name.number,
        [](std::uint64_t number, const Numbers& range) { return number < range.first; });
    if (after == ranges->second.begin()) return Role::kCategory;
    return name.number <= std::prev(after)->second ? Role::kScale : Role::kCategory;
}

std::size_t AskedNames::TotalAt(const std::string& key) const {
    const auto declared = m_declarations.find(key);
    return declared == m_declarations.end() ? kNowhere : declared->second.index;
}

}  // namespace quillet::outline
