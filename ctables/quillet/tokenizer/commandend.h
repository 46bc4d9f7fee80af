// Where a command ends, and where inline data does.
#ifndef QUILLET_TOKENIZER_COMMANDEND_H
#define QUILLET_TOKENIZER_COMMANDEND_H

#include <cstddef>
#include <string_view>

#include "platform/codepage.h"

namespace quillet {

/// Where the period stands that ends the command in `lines`: a byte offset from the start, or
/// -1 when there is none yet. `isFreeText` is set for comment and DOCUMENT commands, whose
/// quotes and comments mean nothing. Throws `ParseError` for a literal that its line leaves
/// open. A null `lines` asserts and gives -1. Linear in the text.
[[nodiscard]] std::ptrdiff_t FindCommandEndIn(const CodePage& codePage, std::string_view lines,
                                              bool isFreeText);

/// True when `line`, in upper case, begins with "END DATA".
[[nodiscard]] bool IsEndDataLine(const CodePage& codePage, std::string_view line);

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_COMMANDEND_H
