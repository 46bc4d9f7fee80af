#include "platform/system.h"

#include <fcntl.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>

namespace quillet {

ModuleHandle GetModuleHandleA(const char* pName) {
    // POSIX has no such handles; the address of something in the program serves as its own.
    static constexpr char kThisProgram = 0;
    return pName == nullptr ? &kThisProgram : nullptr;
}

std::vector<std::string> ProgramArguments(int argc, char* argv[]) {
    return argc < 1 ? std::vector<std::string>() : std::vector<std::string>(argv + 1, argv + argc);
}

bool EnableLocale() { return std::setlocale(LC_CTYPE, "") != nullptr; }

// The first that is set and not empty counts.
std::string UserLocaleName() {
    for (const char* pVariable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        // Nothing here changes the environment.
        const char* pValue = std::getenv(pVariable);  // NOLINT(concurrency-mt-unsafe)
        if (pValue != nullptr && *pValue != '\0') return pValue;
    }
    return {};
}

void OpenClosedStandardStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (fcntl(stream, F_GETFD) >= 0) continue;
        // The lowest free number is given out, which is this one.
        static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
    }
}

void IgnoreWriteSignals() {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

bool WriteToStream(std::FILE* pStream, std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), pStream) == text.size();
}

}  // namespace quillet
