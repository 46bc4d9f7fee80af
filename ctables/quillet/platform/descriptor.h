// Open files as each operating system knows them.
#ifndef QUILLET_PLATFORM_DESCRIPTOR_H
#define QUILLET_PLATFORM_DESCRIPTOR_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace quillet {

/// The standard streams go by these names on every system. They are shared instead of being
/// opened anew, so that their position is kept and that they work when they are sockets.
inline constexpr const char* kStandardInputName = "/dev/stdin";
inline constexpr const char* kStandardOutputName = "/dev/stdout";
inline constexpr const char* kStandardErrorName = "/dev/stderr";

enum class OpenMode {
    kRead,
    kWrite,  ///< Makes the file where there is none; what it holds is kept.
};

/// Opens a file, to be read and written byte by byte. `name` is UTF-8 on Windows, bytes
/// elsewhere. Returns a descriptor that the caller closes, or -1.
[[nodiscard]] int OpenDescriptor(const std::string& name, OpenMode mode);

/// A further descriptor of standard output that the caller closes, or -1.
[[nodiscard]] int DuplicateStandardOutput();

/// False when the system reports an error that came up late.
[[nodiscard]] bool CloseDescriptor(int descriptor);

/// Reads up to `size` bytes, at least one unless the end was reached: then 0. -1 on errors.
[[nodiscard]] std::ptrdiff_t ReadDescriptor(int descriptor, char* buffer, std::size_t size);

/// Writes up to `size` bytes, returns how many. 0 or less on errors.
[[nodiscard]] std::ptrdiff_t WriteDescriptor(int descriptor, const char* bytes, std::size_t size);

/// Where a regular file stands, in bytes; -1 on errors.
[[nodiscard]] std::int64_t PositionOf(int descriptor);
[[nodiscard]] bool SetPosition(int descriptor, std::int64_t position);

/// Discards what a regular file holds that was opened for writing and stands at its beginning.
[[nodiscard]] bool Truncate(int descriptor);

/// True for what can be rewound and truncated: neither pipes nor devices.
[[nodiscard]] bool IsRegularFile(int descriptor);
[[nodiscard]] bool IsFolder(int descriptor);

/// True when both are known to be one file, device or pipe, whatever their names.
[[nodiscard]] bool AreSameFile(int left, int right);
[[nodiscard]] bool IsStandardOutput(int descriptor);

/// A new file for reading and writing that goes away with the program, however that ends. The
/// caller closes it; null on errors.
[[nodiscard]] std::FILE* OpenTemporaryFile();

}  // namespace quillet

#endif  // QUILLET_PLATFORM_DESCRIPTOR_H
