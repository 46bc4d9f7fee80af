// The options that a result depends on.
#ifndef QUILLET_MIGRATE_RESULTOPTIONS_H
#define QUILLET_MIGRATE_RESULTOPTIONS_H

#include <string>

#include "migrate/layouts.h"
#include "migrate/macromodes.h"

namespace quillet::migrate {

/// What, beside the bytes of its source and the version of the program, makes a result what it
/// is. The same options convert the same source to the same bytes.
struct ResultOptions {
    Layout layout = Layout::kAuto;
    std::string legacyEncoding = "windows-1252";  ///< Of sources that are not UTF-8.
    bool isUtf8 = false;                          ///< Whatever the source is in.
    bool endsAtBlankLines = false;                ///< Commands and comments that have no period.
    MacroMode macros = MacroMode::kReport;
};

/// One line by which later runs tell whether the options are still the same, for they compare it
/// byte by byte. An option that is added later has to leave the text as it is where it is not
/// used: otherwise every result would be made again.
[[nodiscard]] std::string TextOf(const ResultOptions& options);

/// The same for files that are only copied, whatever the options.
inline constexpr const char* kCopyOptionsText = "copy";

/// The code page that conversions of this process read legacy texts in.
[[nodiscard]] std::string LegacyEncodingName();

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_RESULTOPTIONS_H
