#include "platform/openfile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/descriptor.h"

namespace quillet {

std::error_code LastError() { return {errno, std::generic_category()}; }

FileDescriptor OpenNamedFile(const std::string& path, std::error_code& error) {
    int descriptor = -1;
    do {
        descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) error = LastError();
    return FileDescriptor(descriptor);
}

bool WriteAll(const FileDescriptor& file, std::string_view bytes, std::error_code& error) {
    while (!bytes.empty()) {
        const std::ptrdiff_t count = WriteDescriptor(file.Get(), bytes.data(), bytes.size());
        if (count <= 0) {
            error = count < 0 ? LastError() : std::make_error_code(std::errc::io_error);
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::ptrdiff_t ReadAt(const FileDescriptor& file, std::uint64_t offset, char* buffer,
                      std::size_t size) {
    std::size_t total = 0;
    while (total < size) {
        const ssize_t count =
            pread(file.Get(), buffer + total, size - total, static_cast<off_t>(offset + total));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return -1;
        if (count == 0) break;
        total += static_cast<std::size_t>(count);
    }
    return static_cast<std::ptrdiff_t>(total);
}

bool SetPermissions(const FileDescriptor& file, unsigned permissions, std::error_code& error) {
    constexpr mode_t kPermissionBits = 0777;
    const bool isSet = fchmod(file.Get(), permissions & kPermissionBits) == 0;
    if (!isSet) error = LastError();
    return isSet;
}

bool SetSize(const FileDescriptor& file, std::uint64_t size) {
    return ftruncate(file.Get(), static_cast<off_t>(size)) == 0;
}

bool TryLock(const FileDescriptor& file) {
    return flock(file.Get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool IsUnlocked(const FileDescriptor& file) {
    if (flock(file.Get(), LOCK_SH | LOCK_NB) != 0) return errno != EWOULDBLOCK;
    static_cast<void>(flock(file.Get(), LOCK_UN));
    return true;
}

}  // namespace quillet
