// File names and console texts in the form that Windows wants them.
#ifndef QUILLET_PLATFORM_WIDETEXT_WINDOWS_H
#define QUILLET_PLATFORM_WIDETEXT_WINDOWS_H

#include <string>
#include <string_view>

namespace quillet {

/// `text`, which is UTF-8, in UTF-16. Empty when it is empty, not UTF-8 or 2 GiB long.
[[nodiscard]] std::wstring ToWideText(std::string_view text);

/// `text`, which is UTF-16, in UTF-8; half a surrogate pair becomes U+FFFD.
[[nodiscard]] std::string FromWideText(std::wstring_view text);

}  // namespace quillet

#endif  // QUILLET_PLATFORM_WIDETEXT_WINDOWS_H
