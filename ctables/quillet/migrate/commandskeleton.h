// What a command's text is but for the names and literals in it.
#ifndef QUILLET_MIGRATE_COMMANDSKELETON_H
#define QUILLET_MIGRATE_COMMANDSKELETON_H

#include <cstdint>
#include <string>
#include <string_view>

namespace quillet::migrate {

/// A place in a command's text; nothing is known of it when `line` is 0.
struct PlaceInCommand {
    std::int64_t line = 0;    ///< From 1, of the command's own lines.
    std::int64_t column = 0;  ///< From 1, in characters.
};

/// The words, signs and kinds of values of `source`, UTF-8, one blank between two, with a mark
/// before what `place` points at. Two commands have the same skeleton when they differ in nothing
/// but names, numbers, quoted texts, comments, blanks, line ends and the case of letters. It is
/// made to be compared, not to be shown. Any bytes are taken. Cost: linear in the text.
[[nodiscard]] std::string SkeletonOf(std::string_view source, PlaceInCommand place);

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_COMMANDSKELETON_H
