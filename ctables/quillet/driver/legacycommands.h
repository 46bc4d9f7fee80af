// The search for legacy commands in a piece of a text that is converted piece by piece.
#ifndef QUILLET_DRIVER_LEGACYCOMMANDS_H
#define QUILLET_DRIVER_LEGACYCOMMANDS_H

#include <string_view>
#include <vector>

#include "driver/driver.h"
#include "platform/codepage.h"
#include "quillet.h"

namespace quillet {

/// As `FindLegacyCommands`, but for what there is to tell of a text as a whole. `commands` has the
/// lines of the piece, what comes back those of the text that `place` tells of.
[[nodiscard]] LegacyFindings FindLegacyCommandsIn(std::string_view piece,
                                                  const FindOptions& options,
                                                  const std::vector<CommandOutline>& commands,
                                                  const CodePage& codePage,
                                                  const InputPlace& place);

/// The rest: what there is to tell of `text` as a whole, but for its layout.
[[nodiscard]] LegacyFindings FindingsOfWhole(std::string_view text, const FindOptions& options,
                                             const CodePage& codePage);

}  // namespace quillet

#endif  // QUILLET_DRIVER_LEGACYCOMMANDS_H
