// Files, pipes and devices as inputs and outputs of a conversion.
#ifndef QUILLET_PLATFORM_TEXTFILE_H
#define QUILLET_PLATFORM_TEXTFILE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/descriptor.h"
#include "quillet.h"

namespace quillet {

/// An open file descriptor, closed with the object.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    ~FileDescriptor();
    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int Get() const { return m_descriptor; }
    /// Closes it now. False when the system reports an error that came up late.
    [[nodiscard]] bool Close();

private:
    int m_descriptor;
};

/// Reads a file, pipe or device. What cannot be rewound is kept in a temporary file while it is
/// read for the first time.
class FileInput final : public TextInput {
public:
    /// Opens `name`; null when that fails, when it is a folder or when the system does not tell
    /// what it is. Nothing is read yet.
    [[nodiscard]] static std::unique_ptr<FileInput> Open(const std::string& name);
    ~FileInput() override;
    FileInput(const FileInput&) = delete;
    FileInput& operator=(const FileInput&) = delete;

    std::size_t Read(char* buffer, std::size_t size) override;
    bool Rewind() override;
    [[nodiscard]] bool Failed() const override { return m_failed; }
    /// Of a regular file: its size and its times are no longer those of its opening. New rights
    /// or another name count, too, since a time of writing can be set back.
    [[nodiscard]] bool HasChanged() const override;

    /// As it was when it was opened.
    [[nodiscard]] const DescriptorStatus& Status() const { return m_status; }

private:
    class Spool;

    FileInput(FileDescriptor file, const DescriptorStatus& status, std::int64_t start);
    std::size_t ReadFile(char* buffer, std::size_t size);

    FileDescriptor m_file;
    DescriptorStatus m_status;
    std::int64_t m_start;  // where the text begins in the file; -1 when it cannot be rewound
    std::unique_ptr<Spool> m_spool;
    bool m_isReplaying = false;  // the spool is being read, not written
    bool m_sawEnd = false;       // a terminal's end, for one, can be read only once
    bool m_failed = false;
};

/// Writes a file, pipe or device.
class FileOutput final : public TextOutput {
public:
    /// Opens `name` and discards what it held. Null when that fails, and also, with nothing
    /// touched, when it is the very file that `input` reads, under whatever name, or when the
    /// system does not tell whether it is.
    [[nodiscard]] static std::unique_ptr<FileOutput> Open(const std::string& name,
                                                          const FileInput& input);

    bool Write(std::string_view bytes) override;

    /// Closes the file. False when it did not take all that was written.
    [[nodiscard]] bool Close();

    /// True when this is the program's standard output, under whatever name.
    [[nodiscard]] bool IsStandardOutput() const { return m_isStandardOutput; }

private:
    FileOutput(FileDescriptor file, bool isStandardOutput)
        : m_file(std::move(file)), m_isStandardOutput(isStandardOutput) {}

    FileDescriptor m_file;
    bool m_isStandardOutput;
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_TEXTFILE_H
