#include "platform/assertion.h"

#include <cstdio>
#include <utility>

namespace quillet {

namespace {

// The innermost handler of this thread. Assertions are raised deep inside operations whose
// signatures are fixed, so the handler cannot travel as a parameter.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
thread_local const ScopedAssertionHandler* g_pInnermostHandler = nullptr;

}  // namespace

std::string AssertionLine(const AssertionFailure& failure) {
    std::string line = "Assertion failed: ";
    line.append(failure.text).append(", ").append(failure.module).append(":");
    line.append(std::to_string(failure.line));
    return line;
}

ScopedAssertionHandler::ScopedAssertionHandler(AssertionHandler handler)
    : m_handler(std::move(handler)), m_pOuter(g_pInnermostHandler) {
    g_pInnermostHandler = this;
}

ScopedAssertionHandler::~ScopedAssertionHandler() { g_pInnermostHandler = m_pOuter; }

void ScopedAssertionHandler::Report(const AssertionFailure& failure) const { m_handler(failure); }

void ReportAssertion(const AssertionFailure& failure) {
    if (g_pInnermostHandler != nullptr) {
        g_pInnermostHandler->Report(failure);
        return;
    }
    const std::string line = AssertionLine(failure) + "\n";
    // Where standard error itself fails there is nobody left to tell.
    static_cast<void>(std::fputs(line.c_str(), stderr));
}

}  // namespace quillet
