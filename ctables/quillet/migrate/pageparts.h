// How a report that is too large for one page is spread over several.
#ifndef QUILLET_MIGRATE_PAGEPARTS_H
#define QUILLET_MIGRATE_PAGEPARTS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/reportdata.h"

namespace quillet::migrate {

/// Browsers take their time over a page of more bytes than this.
inline constexpr std::uint64_t kMostPageBytes = 20'000'000;

/// The files of a folder, or those of them that lie in no part of a folder below, on a page of
/// their own.
struct PagePart {
    std::string folder;              ///< Bytes; empty for the source itself.
    std::vector<std::size_t> files;  ///< Their places in the report, in its order; at least one.
};

struct PageParts {
    std::vector<PagePart> parts;          ///< In the order in which their first files come.
    std::vector<std::size_t> partOfFile;  ///< For each file of the report.
};

/// Spreads the files of `report` over parts of at most `most` bytes each, as far as its folders
/// allow for: a part has a folder with all that lies below, and where that is too much, its folders
/// are parts of their own, and its own files are one. Cost: that of the report's paths.
[[nodiscard]] PageParts PartsOf(const Report& report, std::uint64_t most = kMostPageBytes);

/// The bytes that the texts of all files take on a page, at the least.
[[nodiscard]] std::uint64_t TextBytesOf(const Report& report);

/// What stands between the name of a report and ".html" in that of the part for `folder`. It
/// follows from the folder alone: letters, digits and "-" in ASCII, at most 80 of them.
[[nodiscard]] std::string PartNameOf(std::string_view folder);

/// With what such a part of a name begins.
inline constexpr std::string_view kPartNameStart = "-part-";

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_PAGEPARTS_H
