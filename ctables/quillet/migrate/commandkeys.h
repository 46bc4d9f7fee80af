// By what the commands of a file are known from one run to the next.
#ifndef QUILLET_MIGRATE_COMMANDKEYS_H
#define QUILLET_MIGRATE_COMMANDKEYS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "migrate/reportdata.h"

namespace quillet::migrate {

/// The hash of a command's text as reports have it: FNV-1a in 64 bits over its bytes in UTF-8, as
/// 16 hexadecimal digits. The page of a report computes it, too, so it never changes. No protection
/// against someone who makes two texts of one hash on purpose.
[[nodiscard]] std::string TextHashOf(std::string_view text);

/// True for what `TextHashOf` makes.
[[nodiscard]] bool IsTextHash(std::string_view text);

/// A command of a report with its key.
struct KeyedCommand {
    CommandKey key;
    std::string type;  ///< `kOtherType` for any other that was unreadable.
    bool isConverted = false;
    std::int64_t firstLine = 0;
};

/// Fills `commands` with those that the report lists for a file and those that were overlooked in
/// it, by their first lines, each once: one in the body of a macro counts as overlooked whatever
/// was made of it. Their hashes are those of their texts without blanks and line ends at both ends,
/// and without a sign at the beginning. False when they cannot be read.
[[nodiscard]] bool ReadKeyedCommands(const FileEntry& file, std::vector<KeyedCommand>& commands);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_COMMANDKEYS_H
