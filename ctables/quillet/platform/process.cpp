#include "platform/process.h"

#include <langinfo.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillet {

long ProcessNumber() { return getpid(); }

unsigned DefaultPermissions() {
    constexpr mode_t kReadableAndWritable = 0666;
    // It can only be asked for by setting another.
    const mode_t mask = umask(0);
    umask(mask);
    return kReadableAndWritable & ~mask;
}

std::string LocaleEncodingName() { return nl_langinfo(CODESET); }

bool IsErrorTerminal() { return isatty(STDERR_FILENO) == 1; }

std::size_t ErrorTerminalWidth() {
    constexpr std::size_t kUsualWidth = 80;
    struct winsize size {};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : kUsualWidth;
}

}  // namespace quillet
