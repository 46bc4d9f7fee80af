// The few things the program asks of the operating system besides files.
#ifndef QUILLET_PLATFORM_SYSTEM_H
#define QUILLET_PLATFORM_SYSTEM_H

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

/// Identifies a module of the running program; nothing can be done with it but pass it on.
using ModuleHandle = const void*;

/// The handle of the running program. `pName` must be null: other modules are not known here.
[[nodiscard]] ModuleHandle GetModuleHandleA(const char* pName);

/// What the user wrote after the program's name, given what `main` was given. UTF-8 on Windows,
/// bytes elsewhere.
[[nodiscard]] std::vector<std::string> ProgramArguments(int argc, char* argv[]);

/// Makes the user's character set the process's; numbers stay in the "C" locale. Lines that are
/// shown end in LF on every system. Once, at the program's start. False when the system does not
/// have the locale that the user has named; that is "C" then.
[[nodiscard]] bool EnableLocale();

/// The name of the locale that the user's environment asks for; empty for none.
[[nodiscard]] std::string UserLocaleName();

/// Occupies the numbers of those of the three standard streams that are closed. Otherwise the
/// next file that is opened would get such a number, and a message would end up in it. The
/// streams stay of no use: each is opened for the opposite of what it serves.
void OpenClosedStandardStreams();

/// A closed pipe, and a file that may not grow any further, become errors of the write that meets
/// them, instead of ending the program.
void IgnoreWriteSignals();

/// Writes `text`, whose names come from `ProgramArguments`, to a standard stream. False when it is
/// known not to have arrived; that it has is known only when the stream is closed. Nobody asks
/// about standard error, since there is nowhere left to tell it.
bool WriteToStream(std::FILE* pStream, std::string_view text);

}  // namespace quillet

#endif  // QUILLET_PLATFORM_SYSTEM_H
