// Memory for many small objects that end together.
#ifndef QUILLET_PLATFORM_ARENA_H
#define QUILLET_PLATFORM_ARENA_H

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace quillet {

/// Hands out memory that lies in a few pieces and is given back with the arena, all at once. It
/// destroys nothing: whoever makes an object destroys it, before the arena ends.
///
/// Not the standard library's resource of that kind: that one asks for aligned memory in pieces
/// that double, and the system's allocator is slow with both where every command makes an arena of
/// its own.
class Arena {
public:
    Arena() = default;
    ~Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    /// A `T` made of `arguments`. Throws `std::bad_alloc`, and what the constructor throws.
    template <typename T, typename... Arguments>
    [[nodiscard]] T* New(Arguments&&... arguments) {
        static_assert(alignof(T) <= kAlignment);
        static_assert(sizeof(T) <= kSmallPiece);
        return std::construct_at(static_cast<T*>(Allocate(sizeof(T))),
                                 std::forward<Arguments>(arguments)...);
    }

private:
    static constexpr std::size_t kAlignment = alignof(std::max_align_t);
    // What allocators serve quickest; for an ordinary command a few of them are enough.
    static constexpr std::size_t kSmallPiece = 1000;
    static constexpr std::size_t kSmallPieceCount = 8;
    static constexpr std::size_t kLargePiece = std::size_t{16} * 1024;

    void* Allocate(std::size_t size) {
        size = (size + kAlignment - 1) / kAlignment * kAlignment;
        if (size > m_left) AddPiece();
        void* pBegin = m_pNext;
        m_pNext += size;
        m_left -= size;
        return pBegin;
    }

    void AddPiece() {
        const std::size_t size = m_pieces.size() < kSmallPieceCount ? kSmallPiece : kLargePiece;
        m_pieces.push_back(std::make_unique_for_overwrite<std::byte[]>(size));
        m_pNext = m_pieces.back().get();
        m_left = size;
    }

    std::vector<std::unique_ptr<std::byte[]>> m_pieces;
    std::byte* m_pNext = nullptr;
    std::size_t m_left = 0;
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_ARENA_H
