#include "platform/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace quillet {

namespace {

// `access` is O_RDONLY or O_WRONLY.
bool AllowsAccess(int descriptor, int access) {
    const int mode = fcntl(descriptor, F_GETFL) & O_ACCMODE;
    return mode == access || mode == O_RDWR;
}

}  // namespace

int OpenDescriptor(const std::string& name, OpenMode mode) {
    const int access = mode == OpenMode::kRead ? O_RDONLY : O_WRONLY;
    constexpr const char* kNames[] = {kStandardInputName, kStandardOutputName, kStandardErrorName};
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (name != kNames[stream]) continue;
        const int duplicate = fcntl(stream, F_DUPFD_CLOEXEC, 0);
        if (duplicate < 0) break;
        if (AllowsAccess(duplicate, access)) return duplicate;
        close(duplicate);
        return -1;
    }
    constexpr mode_t kReadableAndWritable = 0666;
    const int flags = access | (mode == OpenMode::kWrite ? O_CREAT : 0);
    int descriptor = -1;
    do {
        descriptor = open(name.c_str(), flags | O_CLOEXEC, kReadableAndWritable);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

int DuplicateStandardOutput() { return fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0); }

bool CloseDescriptor(int descriptor) { return close(descriptor) == 0; }

std::ptrdiff_t ReadDescriptor(int descriptor, char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = read(descriptor, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

std::ptrdiff_t WriteDescriptor(int descriptor, const char* bytes, std::size_t size) {
    ssize_t count = 0;
    do {
        count = write(descriptor, bytes, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

std::int64_t PositionOf(int descriptor) { return lseek(descriptor, 0, SEEK_CUR); }

bool SetPosition(int descriptor, std::int64_t position) {
    return lseek(descriptor, position, SEEK_SET) == position;
}

bool Truncate(int descriptor) { return ftruncate(descriptor, 0) == 0; }

bool ReadStatus(int descriptor, DescriptorStatus& status) {
    struct stat data {};
    if (fstat(descriptor, &data) != 0) return false;
    status.isRegularFile = S_ISREG(data.st_mode);
    status.isFolder = S_ISDIR(data.st_mode);
    status.isIdentified = true;
    status.device = data.st_dev;
    status.file = data.st_ino;
    status.size = static_cast<std::uint64_t>(data.st_size);
    status.modified = {data.st_mtim.tv_sec, data.st_mtim.tv_nsec};
    status.changed = {data.st_ctim.tv_sec, data.st_ctim.tv_nsec};
    return true;
}

bool ReadStandardOutputStatus(DescriptorStatus& status) {
    status = {};
    return ReadStatus(STDOUT_FILENO, status) || errno == EBADF;
}

std::FILE* OpenTemporaryFile() { return std::tmpfile(); }

}  // namespace quillet
