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

/// A moment, as the file system keeps it; comparable only with one of the same file system.
struct FileTime {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const FileTime&) const = default;
};

/// What the system tells of an open file at one moment.
struct DescriptorStatus {
    bool isRegularFile = false;  ///< It can be rewound and truncated: neither a pipe nor a device.
    bool isFolder = false;
    bool isIdentified = false;  ///< The next two tell it from all others, whatever its names.
    std::uint64_t device = 0;
    std::uint64_t file = 0;
    // Of a regular file:
    std::uint64_t size = 0;  ///< In bytes.
    FileTime modified;       ///< When it was last written to.
    FileTime changed;        ///< When it, its rights or its names last changed, if that is kept.
};

/// Sets `status`. False when the system cannot tell: then nothing is known about the file, not
/// even that it is no other.
[[nodiscard]] bool ReadStatus(int descriptor, DescriptorStatus& status);

/// The same for standard output. Where there is none, that is no error, and `status` is that of no
/// file.
[[nodiscard]] bool ReadStandardOutputStatus(DescriptorStatus& status);

/// A new file for reading and writing that goes away with the program, however that ends. The
/// caller closes it; null on errors.
[[nodiscard]] std::FILE* OpenTemporaryFile();

}  // namespace quillet

#endif  // QUILLET_PLATFORM_DESCRIPTOR_H
