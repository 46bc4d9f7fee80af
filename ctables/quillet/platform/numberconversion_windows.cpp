#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/numberconversion.h"

namespace quillet {

namespace {

// Gives the current thread a decimal point for as long as the object lives. There is no
// conversion that takes its locale as an argument and knows hexadecimal numbers.
class ScopedDecimalPoint {
public:
    ScopedDecimalPoint() {
        if (std::strcmp(std::localeconv()->decimal_point, ".") == 0) return;
        m_previousMode = _configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
        m_previousLocale = std::setlocale(LC_NUMERIC, nullptr);
        std::setlocale(LC_NUMERIC, "C");
    }
    ~ScopedDecimalPoint() {
        if (m_previousLocale.empty()) return;
        std::setlocale(LC_NUMERIC, m_previousLocale.c_str());
        _configthreadlocale(m_previousMode);
    }
    ScopedDecimalPoint(const ScopedDecimalPoint&) = delete;
    ScopedDecimalPoint& operator=(const ScopedDecimalPoint&) = delete;

private:
    int m_previousMode = 0;
    std::string m_previousLocale;  // empty where nothing had to be changed
};

}  // namespace

ConvertedNumber ConvertNumber(const char* pText) {
    const ScopedDecimalPoint scope;
    const int savedErrno = errno;
    errno = 0;
    char* pEnd = nullptr;
    const double value = std::strtod(pText, &pEnd);
    const bool outOfRange = errno == ERANGE;
    errno = savedErrno;
    return {value, pEnd, outOfRange};
}

}  // namespace quillet
