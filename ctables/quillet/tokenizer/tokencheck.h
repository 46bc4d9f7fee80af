// The check of commands that are only copied: no tokens, only their errors.
#ifndef QUILLET_TOKENIZER_TOKENCHECK_H
#define QUILLET_TOKENIZER_TOKENCHECK_H

#include <string_view>

#include "platform/codepage.h"

namespace quillet {

/// Throws the `ParseError` and reports the assertions that a `TAVQTokenVector` of `text` would,
/// many times faster: what can hold no error is stepped over without being cut into tokens.
void CheckTokens(const CodePage& codePage, std::string_view text, bool skipLeadingSign);

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TOKENCHECK_H
