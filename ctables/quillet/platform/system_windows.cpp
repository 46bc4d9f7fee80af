#include <fcntl.h>
#include <io.h>
#include <windows.h>
// The shell's header needs the names of the one above.
#include <shellapi.h>

#include <memory>

#include "platform/system.h"
#include "platform/widetext_windows.h"

namespace quillet {

namespace {

struct LocalMemoryDeleter {
    void operator()(wchar_t** pMemory) const { LocalFree(pMemory); }
};

// The handle behind a standard stream when that is a console, otherwise null.
HANDLE ConsoleOf(std::FILE* pStream) {
    const int descriptor = _fileno(pStream);
    if (descriptor < 0) return nullptr;
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0 ? handle : nullptr;
}

}  // namespace

ModuleHandle GetModuleHandleA(const char* pName) {
    return pName == nullptr ? static_cast<ModuleHandle>(::GetModuleHandleA(nullptr)) : nullptr;
}

// What `main` is given has been through the ANSI code page, in which most names cannot be
// written, and wildcards in it have been replaced by the names of files.
std::vector<std::string> ProgramArguments(int /*argc*/, char* /*argv*/[]) {
    int count = 0;
    const std::unique_ptr<wchar_t*[], LocalMemoryDeleter> words(
        CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::string> arguments;
    if (words == nullptr) return arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(FromWideText(words[static_cast<std::size_t>(i)]));
    }
    return arguments;
}

// The ANSI code page holds for every process; there is no locale to be chosen. Lines that are
// shown end as they do elsewhere, so that they can be compared and piped on.
bool EnableLocale() {
    for (std::FILE* pStream : {stdout, stderr}) {
        if (_fileno(pStream) >= 0) static_cast<void>(_setmode(_fileno(pStream), _O_BINARY));
    }
    return true;
}

std::string UserLocaleName() { return {}; }

void OpenClosedStandardStreams() {
    constexpr int kStandardStreams = 3;
    for (int stream = 0; stream < kStandardStreams; ++stream) {
        if (_get_osfhandle(stream) >= 0) continue;
        // The lowest free number is given out, which is this one.
        static_cast<void>(_open("NUL", stream == 0 ? _O_WRONLY : _O_RDONLY));
    }
}

// There are no signals for them here.
void IgnoreWriteSignals() {}

bool WriteToStream(std::FILE* pStream, std::string_view text) {
    const HANDLE console = ConsoleOf(pStream);
    const std::wstring wide = console != nullptr ? ToWideText(text) : std::wstring();
    if (wide.empty()) return std::fwrite(text.data(), 1, text.size(), pStream) == text.size();
    static_cast<void>(std::fflush(pStream));
    DWORD written = 0;
    return WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()), &written,
                         nullptr) != 0;
}

}  // namespace quillet
