#include "tokenizer/mbcharpointer.h"

#include "platform/assertion.h"
#include "platform/multibyte.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "mbcharpointer";

}  // namespace

void MbCharPointer::DecodeNonAscii() {
    const std::size_t length = TAVQMBmblen_A(*m_pCodePage, m_position, m_charCount);
    if (length == 0) {
        m_charLen = 1;
        m_charCount = 1;
        m_code = 0;
        return;
    }
    m_charLen = length;
    m_code = length == 1 ? static_cast<signed char>(*m_position) : kMultibyteCode;
}

std::int32_t MbCharPointer::AdvanceBeyondText() {
    QUILLET_ASSERT(m_charCount == m_charLen && m_code == 0,
                   "m_charCount == m_charLen && m_code == 0");
    m_code = 0;
    return 0;
}

}  // namespace quillet
