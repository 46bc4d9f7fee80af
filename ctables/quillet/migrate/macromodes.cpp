#include "migrate/macromodes.h"

#include <algorithm>
#include <array>

namespace quillet::migrate {

namespace {

struct NamedMode {
    MacroMode mode = MacroMode::kReport;
    std::string_view name;
    bool isOffered = true;
};

constexpr std::array<NamedMode, 3> kModes = {{
    {MacroMode::kReport, "report"},
    {MacroMode::kExpand, "expand"},
    {MacroMode::kConvert, "convert", false},
}};

}  // namespace

std::string_view NameOf(MacroMode mode) {
    return std::find_if(kModes.begin(), kModes.end(),
                        [mode](const NamedMode& named) { return named.mode == mode; })
        ->name;
}

std::optional<MacroMode> MacroModeOf(std::string_view name) {
    for (const NamedMode& named : kModes) {
        if (named.isOffered && named.name == name) return named.mode;
    }
    return std::nullopt;
}

}  // namespace quillet::migrate
