#include "platform/numberconversion.h"

#include <cerrno>
#include <clocale>
#include <cstdlib>

namespace quillet {

namespace {

// Switching the process's locale forth and back would disturb other threads, so the "C" locale
// is given to the conversion itself. It lives until the program ends.
locale_t CLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

}  // namespace

ConvertedNumber ConvertNumber(const char* pText) {
    const int savedErrno = errno;
    errno = 0;
    char* pEnd = nullptr;
    const double value = strtod_l(pText, &pEnd, CLocale());
    const bool outOfRange = errno == ERANGE;
    errno = savedErrno;
    return {value, pEnd, outOfRange};
}

}  // namespace quillet
