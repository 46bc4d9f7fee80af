#include "migrate/arrayspool.h"

#include <algorithm>

#include "platform/descriptor.h"

namespace quillet::migrate {

namespace {

constexpr std::size_t kMostInMemory = 4UL * 1024 * 1024;
constexpr std::size_t kBlockSize = 64UL * 1024;

}  // namespace

void ArraySpool::Clear() {
    m_file.reset();
    m_storedSize = 0;
    m_hasNoRoom = false;
    m_text.clear();
}

void ArraySpool::Add(std::string_view json) {
    if (!IsEmpty()) m_text += ',';
    m_text += json;
    if (m_text.size() > kMostInMemory && !m_hasNoRoom) Store();
}

void ArraySpool::Store() {
    if (m_file == nullptr) m_file.reset(OpenTemporaryFile());
    // What was written in part is written over or never read.
    m_hasNoRoom = m_file == nullptr ||
                  std::fseek(m_file.get(), static_cast<long>(m_storedSize), SEEK_SET) != 0 ||
                  std::fwrite(m_text.data(), 1, m_text.size(), m_file.get()) != m_text.size() ||
                  std::fflush(m_file.get()) != 0;
    if (m_hasNoRoom) return;
    m_storedSize += m_text.size();
    m_text.clear();
}

bool ArraySpool::CopyTo(const std::function<bool(std::string_view)>& take) {
    if (m_storedSize > 0 && std::fseek(m_file.get(), 0, SEEK_SET) != 0) return false;
    std::string block(kBlockSize, '\0');
    for (std::uint64_t rest = m_storedSize; rest > 0;) {
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(rest, kBlockSize));
        if (std::fread(block.data(), 1, size, m_file.get()) != size) return false;
        if (!take({block.data(), size})) return false;
        rest -= size;
    }
    return m_text.empty() || take(m_text);
}

}  // namespace quillet::migrate
