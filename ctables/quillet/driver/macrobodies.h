// The conversion of macros' bodies, with a look at what is proposed.
#ifndef QUILLET_DRIVER_MACROBODIES_H
#define QUILLET_DRIVER_MACROBODIES_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "macro/limits.h"
#include "quillet.h"

namespace quillet {

/// Changes a new body before it is proven. So it can be tried what the proof notices.
using ChangeBody = std::function<void(std::string& body)>;

/// As the public function of this name. `changeBody` may be empty. What the expansions may ask for
/// is limited; all of them are made a few times.
[[nodiscard]] MacroBodies ConvertMacroBodies(std::string_view text, const MacroOptions& options,
                                             const std::vector<OutsideCalls>& outsideCalls,
                                             const ChangeBody& changeBody,
                                             const macro::Limits& limits = {});

}  // namespace quillet

#endif  // QUILLET_DRIVER_MACROBODIES_H
