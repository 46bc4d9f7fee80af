// How the bytes of an input are to be read.
#ifndef QUILLET_DRIVER_TEXTENCODING_H
#define QUILLET_DRIVER_TEXTENCODING_H

#include "platform/codepage.h"
#include "quillet.h"

namespace quillet {

/// Reads `input` to its end, or as far as it takes, and goes back to its first byte. Content
/// decides: what is valid UTF-8 as a whole is UTF-8, anything else is in the legacy code page of
/// `options`, which keep it alive. Null when the input cannot be read, not be read again, or is
/// UTF-16, whose conversion as anything else would be of no use.
[[nodiscard]] const CodePage* ChooseCodePage(TextInput& input, const Options& options);

/// The public name of `codePage`, which was chosen by these options.
[[nodiscard]] TextEncoding EncodingOf(const CodePage& codePage, const Options& options);

/// The code page of a text that is in `encoding`. `pNamed` is what `kNamed` means; without it,
/// Windows-1252.
[[nodiscard]] const CodePage& CodePageFor(TextEncoding encoding, const CodePage* pNamed);

}  // namespace quillet

#endif  // QUILLET_DRIVER_TEXTENCODING_H
