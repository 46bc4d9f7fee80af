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

/// The files of a folder with all that lies below, or those of neighbors that lie in one folder, or
/// what a folder has of its own where the folders in it are parts: on a page of their own.
struct PagePart {
    std::string folder;              ///< Bytes; empty for the source itself.
    std::string lastFolder;          ///< Of several neighbors; otherwise the same.
    std::vector<std::size_t> files;  ///< Their places in the report, in its order; at least one.
};

struct PageParts {
    std::vector<PagePart> parts;          ///< In the order in which their first files come.
    std::vector<std::size_t> partOfFile;  ///< For each file of the report.
};

/// Spreads the files of `report`, which are sorted by their paths, over parts of at most `most`
/// bytes each, as far as its folders allow for. `bytes` says how many each file takes. What a
/// folder has of its own is one part however large. Cost: that of the report's paths.
[[nodiscard]] PageParts PartsOf(const Report& report, const std::vector<std::uint64_t>& bytes,
                                std::uint64_t most);

/// What people are told about the folders of a part, as bytes.
[[nodiscard]] std::string FolderTextOf(const PagePart& part);

/// What stands between the name of a report and ".html" in that of the part for `folder`. It
/// follows from the part's first folder alone: letters, digits and "-" in ASCII, at most 80.
[[nodiscard]] std::string PartNameOf(std::string_view folder);

/// With what such a part of a name begins.
inline constexpr std::string_view kPartNameStart = "-part-";

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_PAGEPARTS_H
