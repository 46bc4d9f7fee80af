#include "driver/rereadinput.h"

#include <utility>

namespace quillet {

std::size_t RereadInput::Read(char* buffer, std::size_t size) {
    if (Failed()) return 0;
    const std::size_t count = m_input.Read(buffer, size);
    m_count += count;
    m_sawEnd = count == 0 && size > 0;
    m_isDifferent = m_isSecondTime && IsDifferent();
    return m_isDifferent ? 0 : count;
}

bool RereadInput::Rewind() {
    m_countBefore = std::exchange(m_count, 0);
    m_sawEndBefore = std::exchange(m_sawEnd, false);
    m_isSecondTime = true;
    return m_input.Rewind();
}

// The first reading may have stopped before the end.
bool RereadInput::IsDifferent() const {
    if (m_sawEnd && (m_count < m_countBefore || HasChanged())) return true;
    return m_sawEndBefore && m_count > m_countBefore;
}

}  // namespace quillet
