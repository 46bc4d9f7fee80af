// Formats of numbers.
#ifndef QUILLET_OUTLINE_NUMBERFORMAT_H
#define QUILLET_OUTLINE_NUMBERFORMAT_H

#include <string_view>

#include "outline/tableoutline.h"
#include "platform/codepage.h"

namespace quillet::outline {

/// The format that `word` spells: letters, a width and decimals, as in DOLLAR12.2. What stands
/// after these is in the text alone. Numbers of more than nine digits are all the same.
[[nodiscard]] Format MakeFormat(const CodePage& codePage, std::string_view word);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_NUMBERFORMAT_H
