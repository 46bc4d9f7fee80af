// What can be done with a file that is held open, besides reading it from its beginning to its end.
// There is no Windows side yet.
#ifndef QUILLET_PLATFORM_OPENFILE_H
#define QUILLET_PLATFORM_OPENFILE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/textfile.h"

namespace quillet {

/// What the last call to the system, or function of platform/descriptor.h, that failed in this
/// thread failed of.
[[nodiscard]] std::error_code LastError();

/// Opens a file that someone has named for reading, over links if need be. A pipe is not waited
/// for, and what is opened need not be a regular file. Not open, with `error` set, when that fails.
[[nodiscard]] FileDescriptor OpenNamedFile(const std::string& path, std::error_code& error);

/// Writes `bytes` where the file stands. False with `error` set when they, or a part of them, could
/// not be written.
[[nodiscard]] bool WriteAll(const FileDescriptor& file, std::string_view bytes,
                            std::error_code& error);

/// Reads up to `size` bytes from `offset`, less only at the file's end. -1 on errors.
[[nodiscard]] std::ptrdiff_t ReadAt(const FileDescriptor& file, std::uint64_t offset, char* buffer,
                                    std::size_t size);

/// Gives a file of one's own the rights of owner, group and others, whatever the process's mask.
[[nodiscard]] bool SetPermissions(const FileDescriptor& file, unsigned permissions,
                                  std::error_code& error);

/// Cuts a file to `size` bytes, or fills it up with NULs. Where it stands is not changed.
[[nodiscard]] bool SetSize(const FileDescriptor& file, std::uint64_t size);

/// Has the file for itself until it is closed, as far as others ask. False when another open file
/// has it; true also where there are no such locks.
[[nodiscard]] bool TryLock(const FileDescriptor& file);

/// False while another open file has it through `TryLock`.
[[nodiscard]] bool IsUnlocked(const FileDescriptor& file);

}  // namespace quillet

#endif  // QUILLET_PLATFORM_OPENFILE_H
