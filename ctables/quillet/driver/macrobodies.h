// The conversion of macros' bodies, with a look at what is proposed.
#ifndef QUILLET_DRIVER_MACROBODIES_H
#define QUILLET_DRIVER_MACROBODIES_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "quillet.h"

namespace quillet {

/// Changes a new body before it is proven. So it can be tried what the proof notices.
using ChangeBody = std::function<void(std::string& body)>;

/// As the public function of this name. `changeBody` may be empty.
[[nodiscard]] MacroBodies ConvertMacroBodies(std::string_view text, const MacroOptions& options,
                                             const std::vector<OutsideCalls>& outsideCalls,
                                             const ChangeBody& changeBody);

}  // namespace quillet

#endif  // QUILLET_DRIVER_MACROBODIES_H
