// What functions and relations make of texts.
#ifndef QUILLET_MACRO_FUNCTIONS_H
#define QUILLET_MACRO_FUNCTIONS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "macro/program.h"
#include "platform/codepage.h"

namespace quillet::macro {

/// The value of `text`, if it is a number and nothing else but a sign before it and blanks around
/// it.
[[nodiscard]] std::optional<double> NumberOf(std::string_view text);

/// The same for a whole number that is not too large to be counted with.
[[nodiscard]] std::optional<std::int64_t> WholeNumberOf(std::string_view text);

/// Whether an operand that stands alone holds: a number other than 0, a text other than blanks.
[[nodiscard]] bool IsTrue(std::string_view text);

/// Compares as numbers where both are, else as texts without the blanks at their ends.
[[nodiscard]] bool Holds(std::string_view left, Relation relation, std::string_view right);

/// The number of characters.
[[nodiscard]] std::size_t LengthOf(const CodePage& codePage, std::string_view text);

/// The part of `text` from character `from` (from 1) on, with at most `length` characters.
[[nodiscard]] std::string_view Substring(const CodePage& codePage, std::string_view text,
                                         std::size_t from, std::size_t length);

/// The character (from 1) at which `part` begins in `text`; 0 for an empty part or when there is
/// none. Linear in both.
[[nodiscard]] std::size_t IndexOf(const CodePage& codePage, std::string_view text,
                                  std::string_view part);

/// The first token, and what is after it and the white space there.
[[nodiscard]] std::string_view HeadOf(const CodePage& codePage, std::string_view text);
[[nodiscard]] std::string_view TailOf(const CodePage& codePage, std::string_view text);

/// In apostrophes, with those inside doubled; and the other way round, for a text that is one
/// literal.
[[nodiscard]] std::string Quoted(std::string_view text);
[[nodiscard]] std::string Unquoted(const CodePage& codePage, std::string_view text);

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_FUNCTIONS_H
