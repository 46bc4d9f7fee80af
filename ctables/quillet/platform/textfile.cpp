#include "platform/textfile.h"

#include <cstdio>
#include <utility>

namespace quillet {

namespace {

bool AreSameFile(const DescriptorStatus& left, const DescriptorStatus& right) {
    return left.isIdentified && right.isIdentified && left.device == right.device &&
           left.file == right.file;
}

bool AreSameText(const DescriptorStatus& left, const DescriptorStatus& right) {
    return left.size == right.size && left.modified == right.modified &&
           left.changed == right.changed;
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
    return descriptor < 0 || CloseDescriptor(descriptor);
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
    std::unique_ptr<std::FILE, Closer> m_file{OpenTemporaryFile()};
};

FileInput::FileInput(FileDescriptor file, const DescriptorStatus& status, std::int64_t start)
    : m_file(std::move(file)), m_status(status), m_start(start) {}

FileInput::~FileInput() = default;

std::unique_ptr<FileInput> FileInput::Open(const std::string& name) {
    FileDescriptor file(OpenDescriptor(name, OpenMode::kRead));
    DescriptorStatus status;
    if (!file.IsOpen() || !ReadStatus(file.Get(), status) || status.isFolder) return nullptr;
    const std::int64_t start = status.isRegularFile ? PositionOf(file.Get()) : -1;
    return std::unique_ptr<FileInput>(new FileInput(std::move(file), status, start));
}

std::size_t FileInput::ReadFile(char* buffer, std::size_t size) {
    const std::ptrdiff_t count = ReadDescriptor(m_file.Get(), buffer, size);
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
    if (m_start >= 0) return SetPosition(m_file.Get(), m_start);
    if (m_spool == nullptr) return true;
    m_isReplaying = true;
    return m_spool->Rewind();
}

bool FileInput::HasChanged() const {
    // What a pipe or a device gave first is what is read again.
    if (!m_status.isRegularFile) return false;
    DescriptorStatus now;
    return !ReadStatus(m_file.Get(), now) || !AreSameText(m_status, now);
}

std::unique_ptr<FileOutput> FileOutput::Open(const std::string& name, const FileInput& input) {
    // Not truncated before it is known what it is.
    FileDescriptor file(OpenDescriptor(name, OpenMode::kWrite));
    if (!file.IsOpen()) return nullptr;
    DescriptorStatus status;
    DescriptorStatus standardOutput;
    if (!ReadStatus(file.Get(), status) || !ReadStandardOutputStatus(standardOutput)) {
        return nullptr;
    }
    if (status.isRegularFile && AreSameFile(status, input.Status())) return nullptr;
    const bool isStandardOutput =
        name == kStandardOutputName || AreSameFile(status, standardOutput);
    if (isStandardOutput) {
        // Its own position, so that the result lines do not overwrite what is written here.
        file = FileDescriptor(DuplicateStandardOutput());
        if (!file.IsOpen()) return nullptr;
    }
    std::unique_ptr<FileOutput> output(new FileOutput(std::move(file), isStandardOutput));
    // Last of all that can fail.
    const bool isKept = !status.isRegularFile || isStandardOutput;
    return isKept || Truncate(output->m_file.Get()) ? std::move(output) : nullptr;
}

bool FileOutput::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::ptrdiff_t count = WriteDescriptor(m_file.Get(), bytes.data(), bytes.size());
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool FileOutput::Close() { return m_file.Close(); }

}  // namespace quillet
