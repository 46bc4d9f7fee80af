// Assertions that stay active in every build and never end the run.
#ifndef QUILLET_PLATFORM_ASSERTION_H
#define QUILLET_PLATFORM_ASSERTION_H

#include <functional>
#include <string>
#include <string_view>

namespace quillet {

/// One failed assertion, as it is reported. The views live as long as the program.
struct AssertionFailure {
    std::string_view text;    ///< The failed condition, in its source form.
    std::string_view module;  ///< The source module that holds it, such as "commandstream".
    int line = 0;             ///< The line in that module, from 1.
};

/// The line that reports `failure`: "Assertion failed: <text>, <module>:<line>", no line end.
[[nodiscard]] std::string AssertionLine(const AssertionFailure& failure);

using AssertionHandler = std::function<void(const AssertionFailure&)>;

/// Receives the failed assertions of the current thread for as long as the object lives.
///
/// Handlers nest: the innermost one alone is called. Without any, the line goes to standard
/// error. The handler is per thread so that two conversions may run side by side.
class ScopedAssertionHandler {
public:
    explicit ScopedAssertionHandler(AssertionHandler handler);
    ~ScopedAssertionHandler();
    ScopedAssertionHandler(const ScopedAssertionHandler&) = delete;
    ScopedAssertionHandler& operator=(const ScopedAssertionHandler&) = delete;

    void Report(const AssertionFailure& failure) const;

private:
    AssertionHandler m_handler;
    const ScopedAssertionHandler* m_pOuter;
};

/// A handler for whoever reads a text once more: the first reading has told.
inline void TellNobody(const AssertionFailure& /*failure*/) {}

/// Reports a failed assertion to the innermost handler. Never throws on its own account.
void ReportAssertion(const AssertionFailure& failure);

}  // namespace quillet

/// Checks `condition` and yields it, so that the caller can go on with its neutral result:
/// `if (!QUILLET_ASSERT(pNode, "pNode")) return nullptr;`. The text is given apart because it is
/// part of what users may report and must survive reformatting. Each module that asserts
/// defines `kModule`, its name, in an unnamed namespace.
#define QUILLET_ASSERT(condition, text) \
    ((condition) ? true : (::quillet::ReportAssertion({text, kModule, __LINE__}), false))

#endif  // QUILLET_PLATFORM_ASSERTION_H
