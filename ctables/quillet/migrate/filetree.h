// Finds the files of an archive.
#ifndef QUILLET_MIGRATE_FILETREE_H
#define QUILLET_MIGRATE_FILETREE_H

#include <cstdint>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

#include "platform/folder.h"
#include "quillet.h"

namespace quillet::migrate {

/// Something that was met in an archive.
struct TreeEntry {
    enum class Kind {
        kFile,
        kSkipped,     ///< No regular file, or a link that is not followed; see `message`.
        kUnreadable,  ///< A folder whose names cannot be read, or a file without a status.
    };

    std::string path;  ///< Relative, bytes, "/" between folders.
    Kind kind = Kind::kFile;
    std::uint64_t size = 0;
    std::string message;  ///< Why it is no file to be read.
    /// Where below the root its content lies, when that is not `path`: it is a link.
    std::string place = {};
    bool isLinkNotFollowed = false;
};

struct FileTree {
    std::vector<TreeEntry> entries;     ///< In the order of the bytes of their paths.
    std::vector<std::string> folders;   ///< Relative, each after the one it lies in.
    std::set<FileIdentity> identities;  ///< Of the root and of all folders met in it.
};

/// Goes through the folder `root` and everything below it.
///
/// A link to a file inside `root` counts as that file. A link to a folder inside is skipped, for
/// the folder is met under its own name; so nothing is met twice and no loop is entered. Links
/// that lead out or nowhere are skipped. A folder that is mounted into itself is entered once.
/// What lies deeper than a path of 4096 bytes cannot be read, for all that grows with the depth.
/// Stops early, and returns what it has, when `stop` is requested.
[[nodiscard]] FileTree WalkTree(const Folder& root, const std::stop_token& stop);

/// What a look at the beginning of a file tells.
enum class Content {
    kText,
    kUtf16LittleEndian,  ///< It begins with a byte-order mark of UTF-16, FF FE,
    kUtf16BigEndian,     ///< or FE FF.
    kUtf32,              ///< It begins with one of UTF-32, FF FE 00 00 or 00 00 FE FF.
    kOther,              ///< There is a NUL in its first 64 KiB.
};

/// What `input` holds, which is rewound. Look at `input.Failed` afterwards.
[[nodiscard]] Content LookAtContent(TextInput& input);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_FILETREE_H
