// What the system tells about the running program and its user. There is no Windows side yet.
#ifndef QUILLET_PLATFORM_PROCESS_H
#define QUILLET_PLATFORM_PROCESS_H

#include <cstddef>
#include <string>

namespace quillet {

/// The number of this process, which no other has as long as it runs.
[[nodiscard]] long ProcessNumber();

/// The rights that the user wants new files to have, those of owner, group and others. Not while
/// another thread asks for them or makes files.
[[nodiscard]] unsigned DefaultPermissions();

/// The name that the system has for the character set of the user's locale. After `EnableLocale`.
[[nodiscard]] std::string LocaleEncodingName();

/// Whether standard error is a terminal, and how many columns it has (80 when it does not tell).
[[nodiscard]] bool IsErrorTerminal();
[[nodiscard]] std::size_t ErrorTerminalWidth();

}  // namespace quillet

#endif  // QUILLET_PLATFORM_PROCESS_H
