// Legacy code pages that the user names.
#ifndef QUILLET_PLATFORM_NAMEDCODEPAGE_H
#define QUILLET_PLATFORM_NAMEDCODEPAGE_H

#include <memory>
#include <string>

#include "platform/codepage.h"

namespace quillet {

/// The code page that the system knows as `name`, such as "windows-1250" or "EUC-KR"; letter case
/// does not count. It belongs to the caller and is safe for threads.
///
/// Null for a name that the system does not know, and for an encoding in which syntax cannot be
/// read byte by byte: one whose ASCII characters are not the bytes of the same numbers (UTF-16,
/// EBCDIC), or depend on what came before (ISO-2022).
[[nodiscard]] std::unique_ptr<const CodePage> MakeNamedCodePage(const std::string& name);

}  // namespace quillet

#endif  // QUILLET_PLATFORM_NAMEDCODEPAGE_H
