// The words that commands begin with.
//
// The conversion needs none of them: whatever is not to be converted is copied. They tell where a
// person would see a command begin, and how well a text reads in a layout.
#ifndef QUILLET_DRIVER_COMMANDWORDS_H
#define QUILLET_DRIVER_COMMANDWORDS_H

#include <cstddef>
#include <string_view>

namespace quillet {

/// What may stand between two words of a command.
inline constexpr std::string_view kWhiteSpace = " \t\r\n";

/// The command that `text` begins with, as "SORT CASES": its name in upper case and in full. Empty
/// when it begins with none. Letter case does not count, four letters of a word are enough, and
/// what "=" follows is no command. Looks at two words at most.
[[nodiscard]] std::string_view CommandAt(std::string_view text);

/// Longer, in bytes, than every pair of words that a command begins with and any blanks between
/// them that somebody would write: so much of a text is enough for `CommandAt`.
inline constexpr std::size_t kLongestCommandName = 100;

/// True when `text` begins with `word`, in upper case, in any letter case and in full, and the word
/// ends there. A period at the word's end is not a part of it, unless a name goes on after it.
[[nodiscard]] bool BeginsWithWord(std::string_view text, std::string_view word);

/// The length in bytes of the word of letters, digits and "_$#@." that `text` begins with, without
/// periods at its end; 0 when there is none. Characters outside ASCII are letters.
[[nodiscard]] std::size_t WordLength(std::string_view text);

}  // namespace quillet

#endif  // QUILLET_DRIVER_COMMANDWORDS_H
