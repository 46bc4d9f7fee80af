// How much is read and written at a time, and the room for it.
#ifndef QUILLET_PLATFORM_BYTEBLOCK_H
#define QUILLET_PLATFORM_BYTEBLOCK_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace quillet {

/// The size, in bytes, of the blocks in which files go through memory: large enough that calls to
/// the system cost nothing beside the work, small enough to stay in the processor's cache.
inline constexpr std::size_t kBlockSize = 128UL * 1024;

/// Room for bytes that are yet to be read. Nothing is written there before, since most files fill
/// only a small part of a block.
class ByteBlock {
public:
    explicit ByteBlock(std::size_t size = kBlockSize)
        : m_bytes(std::make_unique_for_overwrite<char[]>(size)), m_size(size) {}

    [[nodiscard]] char* data() { return m_bytes.get(); }
    [[nodiscard]] const char* data() const { return m_bytes.get(); }
    [[nodiscard]] std::size_t size() const { return m_size; }

    /// Makes room for twice as many bytes. The first `kept` stay what they are.
    void Double(std::size_t kept) {
        ByteBlock larger(2 * m_size);
        std::copy_n(data(), kept, larger.data());
        *this = std::move(larger);
    }

private:
    std::unique_ptr<char[]> m_bytes;
    std::size_t m_size;
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_BYTEBLOCK_H
