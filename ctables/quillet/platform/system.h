// The few things the program asks of the operating system besides files.
#ifndef QUILLET_PLATFORM_SYSTEM_H
#define QUILLET_PLATFORM_SYSTEM_H

namespace quillet {

/// Identifies a module of the running program; nothing can be done with it but pass it on.
using ModuleHandle = const void*;

/// The handle of the running program. `pName` must be null: other modules are not known here.
[[nodiscard]] ModuleHandle GetModuleHandleA(const char* pName);

/// Makes the user's character set the process's; numbers stay in the "C" locale. Once, at the
/// program's start.
void EnableLocale();

/// Occupies the numbers of those of the three standard streams that are closed. Otherwise the
/// next file that is opened would get such a number, and a message would end up in it. The
/// streams stay of no use: each is opened for the opposite of what it serves.
void OpenClosedStandardStreams();

/// A closed pipe becomes an error of the write that meets it, instead of ending the program.
void IgnoreBrokenPipes();

}  // namespace quillet

#endif  // QUILLET_PLATFORM_SYSTEM_H
