// An input that has to be the same when it is read again.
#ifndef QUILLET_DRIVER_REREADINPUT_H
#define QUILLET_DRIVER_REREADINPUT_H

#include <cstddef>
#include <cstdint>

#include "quillet.h"

namespace quillet {

/// An input that is read twice. The code page holds only for the text that was looked at, and a
/// text that is cut or grows in between would be converted in part. So both readings have to see
/// the same number of bytes, and the last line is not given out before the input has been asked
/// whether it is still the same. One that is not has failed.
class RereadInput final : public TextInput {
public:
    /// `input` is borrowed.
    explicit RereadInput(TextInput& input) : m_input(input) {}

    std::size_t Read(char* buffer, std::size_t size) override;
    bool Rewind() override;
    [[nodiscard]] bool Failed() const override { return m_isDifferent || m_input.Failed(); }
    [[nodiscard]] bool HasChanged() const override { return m_input.HasChanged(); }

private:
    [[nodiscard]] bool IsDifferent() const;

    TextInput& m_input;
    std::uint64_t m_count = 0;  // bytes of this reading
    std::uint64_t m_countBefore = 0;
    bool m_sawEnd = false;
    bool m_sawEndBefore = false;
    bool m_isSecondTime = false;
    bool m_isDifferent = false;
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_REREADINPUT_H
