#include "platform/textfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace quillet {

namespace {

// The standard streams by name. They are shared instead of being opened anew, so that their
// position is kept and that they work when they are sockets.
FileDescriptor OpenStandardStream(const std::string& name) {
    constexpr const char* kNames[] = {"/dev/stdin", "/dev/stdout", "/dev/stderr"};
    for (int stream = 0; stream < 3; ++stream) {
        if (name == kNames[stream]) return FileDescriptor(fcntl(stream, F_DUPFD_CLOEXEC, 0));
    }
    return FileDescriptor();
}

// `access` is O_RDONLY or O_WRONLY.
bool AllowsAccess(const FileDescriptor& file, int access) {
    const int mode = fcntl(file.Get(), F_GETFL) & O_ACCMODE;
    return mode == access || mode == O_RDWR;
}

FileDescriptor OpenFile(const std::string& name, int flags) {
    FileDescriptor standardStream = OpenStandardStream(name);
    if (standardStream.IsOpen()) {
        return AllowsAccess(standardStream, flags & O_ACCMODE) ? std::move(standardStream)
                                                               : FileDescriptor();
    }
    constexpr mode_t kReadableAndWritable = 0666;
    int descriptor = -1;
    do {
        descriptor = open(name.c_str(), flags | O_CLOEXEC, kReadableAndWritable);
    } while (descriptor < 0 && errno == EINTR);
    return FileDescriptor(descriptor);
}

bool IsSameFile(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

}  // namespace

FileDescriptor::~FileDescriptor() { static_cast<void>(Close()); }

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

bool FileDescriptor::Close() {
    const int descriptor = std::exchange(m_descriptor, -1);
    return descriptor < 0 || close(descriptor) == 0;
}

// A temporary file without a name.
class FileInput::Spool {
public:
    [[nodiscard]] bool Append(const char* bytes, std::size_t count) {
        return m_file != nullptr && std::fwrite(bytes, 1, count, m_file.get()) == count;
    }
    [[nodiscard]] bool Rewind() {
        return m_file != nullptr && std::fflush(m_file.get()) == 0 &&
               std::fseek(m_file.get(), 0, SEEK_SET) == 0;
    }
    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) {
        return std::fread(buffer, 1, size, m_file.get());
    }
    [[nodiscard]] bool Failed() const { return std::ferror(m_file.get()) != 0; }

private:
    struct Closer {
        void operator()(std::FILE* pFile) const { static_cast<void>(std::fclose(pFile)); }
    };
    std::unique_ptr<std::FILE, Closer> m_file{std::tmpfile()};
};

FileInput::FileInput(FileDescriptor file, std::int64_t start)
    : m_file(std::move(file)), m_start(start) {}

FileInput::~FileInput() = default;

std::unique_ptr<FileInput> FileInput::Open(const std::string& name) {
    FileDescriptor file = OpenFile(name, O_RDONLY);
    struct stat status {};
    if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || S_ISDIR(status.st_mode)) {
        return nullptr;
    }
    const std::int64_t start = S_ISREG(status.st_mode) ? lseek(file.Get(), 0, SEEK_CUR) : -1;
    return std::unique_ptr<FileInput>(new FileInput(std::move(file), start));
}

std::size_t FileInput::ReadFile(char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = read(m_file.Get(), buffer, size);
    } while (count < 0 && errno == EINTR);
    m_failed = count < 0;
    m_sawEnd = count == 0 && size > 0;
    return m_failed ? 0 : static_cast<std::size_t>(count);
}

std::size_t FileInput::Read(char* buffer, std::size_t size) {
    if (m_failed) return 0;
    if (m_isReplaying) {
        const std::size_t count = m_spool->Read(buffer, size);
        m_failed = m_spool->Failed();
        // The first reading may have stopped early; what it left follows.
        return count > 0 || m_failed || m_sawEnd ? count : ReadFile(buffer, size);
    }
    const std::size_t count = ReadFile(buffer, size);
    if (m_start < 0 && count > 0) {
        if (m_spool == nullptr) m_spool = std::make_unique<Spool>();
        m_failed = !m_spool->Append(buffer, count);
    }
    return m_failed ? 0 : count;
}

bool FileInput::Rewind() {
    if (m_start >= 0) return lseek(m_file.Get(), m_start, SEEK_SET) == m_start;
    if (m_spool == nullptr) return true;
    m_isReplaying = true;
    return m_spool->Rewind();
}

std::unique_ptr<FileOutput> FileOutput::Open(const std::string& name, const FileInput& input) {
    // Not truncated before it is known what it is.
    FileDescriptor file = OpenFile(name, O_WRONLY | O_CREAT);
    struct stat outputStatus {};
    struct stat otherStatus {};
    if (!file.IsOpen() || fstat(file.Get(), &outputStatus) != 0) return nullptr;
    const bool isRegular = S_ISREG(outputStatus.st_mode);
    if (isRegular && fstat(input.Descriptor(), &otherStatus) == 0 &&
        IsSameFile(outputStatus, otherStatus)) {
        return nullptr;
    }
    const bool isStandardOutput =
        fstat(STDOUT_FILENO, &otherStatus) == 0 && IsSameFile(outputStatus, otherStatus);
    if (isStandardOutput) {
        // Its own position, so that the result lines do not overwrite what is written here.
        file = FileDescriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0));
    } else if (isRegular && ftruncate(file.Get(), 0) != 0) {
        return nullptr;
    }
    return std::unique_ptr<FileOutput>(new FileOutput(std::move(file), isStandardOutput));
}

bool FileOutput::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(m_file.Get(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool FileOutput::Close() { return m_file.Close(); }

}  // namespace quillet
