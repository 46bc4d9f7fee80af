// Collects failed assertions.
#ifndef QUILLET_TESTS_SUPPORT_ASSERTIONRECORDER_H
#define QUILLET_TESTS_SUPPORT_ASSERTIONRECORDER_H

#include <string>
#include <utility>
#include <vector>

#include "platform/assertion.h"

namespace quillet {

/// Collects the texts of the assertions that fail while it lives.
class AssertionRecorder {
public:
    AssertionRecorder()
        : m_handler(
              [this](const AssertionFailure& failure) { m_texts.emplace_back(failure.text); }) {}

    [[nodiscard]] const std::vector<std::string>& Texts() const { return m_texts; }

    /// The texts since the last call.
    [[nodiscard]] std::vector<std::string> Take() { return std::exchange(m_texts, {}); }

private:
    std::vector<std::string> m_texts;
    ScopedAssertionHandler m_handler;
};

}  // namespace quillet

#endif  // QUILLET_TESTS_SUPPORT_ASSERTIONRECORDER_H
