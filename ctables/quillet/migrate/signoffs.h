// What people have said about single commands after they had looked at them, which stands in a file
// beside the results.
#ifndef QUILLET_MIGRATE_SIGNOFFS_H
#define QUILLET_MIGRATE_SIGNOFFS_H

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "migrate/reportdata.h"
#include "platform/folder.h"

namespace quillet::migrate {

/// The file, in the folder of the results. Nothing here ever writes it: the page of a report hands
/// it to whoever reads that, and they put it there.
inline constexpr std::string_view kSignOffName = "quillet-signoff.json";

/// A file of more bytes than this is refused.
inline constexpr std::uint64_t kMostSignOffBytes = 64UL * 1024 * 1024;

/// The sign-offs of all files, by their paths (bytes) and the keys of commands.
using SignOffs = std::map<std::string, std::map<CommandKey, SignOff>>;

/// Reads the text of such a file. False with `problem` set, the rest of a sentence about the file,
/// when it is none or any sign-off in it is damaged: whoever went on without would lose it. So
/// would who took the last of two members of one name.
[[nodiscard]] bool ParseSignOffs(std::string_view text, SignOffs& signOffs, std::string& problem);

/// Reads the file in `folder`, which is called `folderPath`; there need not be one. False with
/// `problem` set, a whole sentence, when there is one that cannot be read or is damaged.
[[nodiscard]] bool ReadSignOffs(const Folder& folder, const std::string& folderPath,
                                SignOffs& signOffs, std::string& problem);

/// Puts each sign-off to the file whose command it is about, and all others to the report itself.
/// Only of files that have any the commands are read. False when that fails.
[[nodiscard]] bool AssignSignOffs(SignOffs signOffs, Report& report);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_SIGNOFFS_H
