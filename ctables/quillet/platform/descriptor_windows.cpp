#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <limits>

#include "platform/descriptor.h"
#include "platform/widetext_windows.h"

namespace quillet {

namespace {

// Consoles and pipes refuse to take or give much more at once.
constexpr std::size_t kMostBytes = 32UL * 1024;

constexpr char kEndOfConsoleInput = '\x1A';  // Ctrl-Z

HANDLE HandleOf(int descriptor) {
    return descriptor < 0 ? INVALID_HANDLE_VALUE
                          : reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

bool IsConsole(int descriptor) {
    DWORD mode = 0;
    return GetConsoleMode(HandleOf(descriptor), &mode) != 0;
}

int Duplicate(int descriptor) {
    const int duplicate = HandleOf(descriptor) == INVALID_HANDLE_VALUE ? -1 : _dup(descriptor);
    if (duplicate >= 0) static_cast<void>(_setmode(duplicate, _O_BINARY));
    return duplicate;
}

std::uint64_t Join(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

FileTime TimeOf(const FILETIME& time) {
    constexpr std::int64_t kTicksPerSecond = 10'000'000;
    constexpr std::int64_t kNanosecondsPerTick = 100;
    const auto ticks = static_cast<std::int64_t>(Join(time.dwHighDateTime, time.dwLowDateTime));
    return {ticks / kTicksPerSecond, ticks % kTicksPerSecond * kNanosecondsPerTick};
}

}  // namespace

int OpenDescriptor(const std::string& name, OpenMode mode) {
    if (name == kStandardInputName) return Duplicate(_fileno(stdin));
    if (name == kStandardOutputName) return Duplicate(_fileno(stdout));
    if (name == kStandardErrorName) return Duplicate(_fileno(stderr));
    const std::wstring wideName = ToWideText(name);
    if (wideName.empty()) return -1;
    const int flags = mode == OpenMode::kRead ? _O_RDONLY : _O_WRONLY | _O_CREAT;
    return _wsopen(wideName.c_str(), flags | _O_BINARY | _O_NOINHERIT, _SH_DENYNO,
                   _S_IREAD | _S_IWRITE);
}

int DuplicateStandardOutput() { return Duplicate(_fileno(stdout)); }

bool CloseDescriptor(int descriptor) { return _close(descriptor) == 0; }

std::ptrdiff_t ReadDescriptor(int descriptor, char* buffer, std::size_t size) {
    const int count = _read(descriptor, buffer, static_cast<unsigned>(std::min(size, kMostBytes)));
    // Text mode would end at that character in files as well.
    const bool isEnd = count > 0 && *buffer == kEndOfConsoleInput && IsConsole(descriptor);
    return isEnd ? 0 : count;
}

std::ptrdiff_t WriteDescriptor(int descriptor, const char* bytes, std::size_t size) {
    return _write(descriptor, bytes, static_cast<unsigned>(std::min(size, kMostBytes)));
}

std::int64_t PositionOf(int descriptor) { return _lseeki64(descriptor, 0, SEEK_CUR); }

bool SetPosition(int descriptor, std::int64_t position) {
    return _lseeki64(descriptor, position, SEEK_SET) == position;
}

bool Truncate(int descriptor) { return SetEndOfFile(HandleOf(descriptor)) != 0; }

// Folders are not told: the C library opens none. Nor is the last change of rights and names,
// which the system looks after in its own way.
bool ReadStatus(int descriptor, DescriptorStatus& status) {
    const HANDLE handle = HandleOf(descriptor);
    if (handle == INVALID_HANDLE_VALUE) return false;
    status = {};
    if (IsConsole(descriptor)) {
        // There is one console; no volume has this number.
        status.isIdentified = true;
        status.device = std::numeric_limits<std::uint64_t>::max();
        return true;
    }
    SetLastError(NO_ERROR);
    const DWORD type = GetFileType(handle);
    if (type == FILE_TYPE_UNKNOWN && GetLastError() != NO_ERROR) return false;
    if (type != FILE_TYPE_DISK) return true;
    // Files have the same index under every name, but on their own volume alone.
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileInformationByHandle(handle, &information) == 0) return false;
    status.isRegularFile = true;
    status.isIdentified = true;
    status.device = information.dwVolumeSerialNumber;
    status.file = Join(information.nFileIndexHigh, information.nFileIndexLow);
    status.size = Join(information.nFileSizeHigh, information.nFileSizeLow);
    status.modified = TimeOf(information.ftLastWriteTime);
    return true;
}

bool ReadStandardOutputStatus(DescriptorStatus& status) {
    status = {};
    return HandleOf(_fileno(stdout)) == INVALID_HANDLE_VALUE || ReadStatus(_fileno(stdout), status);
}

// The C library's own temporary files lie where only administrators may write.
std::FILE* OpenTemporaryFile() {
    std::array<wchar_t, MAX_PATH + 1> folder{};
    std::array<wchar_t, MAX_PATH + 1> name{};
    const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    if (length == 0 || length >= folder.size() ||
        GetTempFileNameW(folder.data(), L"qui", 0, name.data()) == 0) {
        return nullptr;
    }
    const HANDLE handle =
        CreateFileW(name.data(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return nullptr;
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_RDWR | _O_BINARY);
    if (descriptor < 0) {
        CloseHandle(handle);
        return nullptr;
    }
    std::FILE* pFile = _fdopen(descriptor, "w+b");
    if (pFile == nullptr) _close(descriptor);
    return pFile;
}

}  // namespace quillet
