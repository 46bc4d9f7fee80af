// Memory for many small objects that end together.
#ifndef QUILLET_PLATFORM_ARENA_H
#define QUILLET_PLATFORM_ARENA_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace quillet {

/// Hands out memory that lies in a few pieces and is given back with the arena, all at once.
///
/// This is where it is said who owns what of a command: the arena of its token sequence owns the
/// nodes of its parse tree and the texts that stand nowhere in the command itself, and everyone
/// else borrows them. Nothing in an arena is ever destroyed, so nothing in it may need to be; a
/// tree of any depth ends with the pieces that it lies in.
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
        static_assert(std::is_trivially_destructible_v<T>);
        static_assert(alignof(T) <= kAlignment);
        return std::construct_at(static_cast<T*>(Allocate(sizeof(T))),
                                 std::forward<Arguments>(arguments)...);
    }

    /// A copy of `text`, followed by a NUL.
    [[nodiscard]] std::string_view Keep(std::string_view text) {
        char* pCopy = static_cast<char*>(Allocate(text.size() + 1));
        *std::copy(text.begin(), text.end(), pCopy) = '\0';
        return {pCopy, text.size()};
    }

    /// Gives all memory back. Nothing that lay in it may be used any more.
    void Clear() {
        m_pieces.clear();
        m_pNext = nullptr;
        m_left = 0;
    }

private:
    static constexpr std::size_t kAlignment = alignof(std::max_align_t);
    // What allocators serve quickest; for an ordinary command a few of them are enough.
    static constexpr std::size_t kSmallPiece = 1000;
    static constexpr std::size_t kSmallPieceCount = 8;
    static constexpr std::size_t kLargePiece = std::size_t{16} * 1024;

    void* Allocate(std::size_t size) {
        size = (size + kAlignment - 1) / kAlignment * kAlignment;
        if (size > m_left) {
            // What would leave a piece all but empty lies in one of its own.
            if (size > kLargePiece / 8) return NewPiece(size);
            AddPiece(size);
        }
        void* pBegin = m_pNext;
        m_pNext += size;
        m_left -= size;
        return pBegin;
    }

    std::byte* NewPiece(std::size_t size) {
        m_pieces.push_back(std::make_unique_for_overwrite<std::byte[]>(size));
        return m_pieces.back().get();
    }

    void AddPiece(std::size_t size) {
        const bool isSmall = m_pieces.size() < kSmallPieceCount && size <= kSmallPiece;
        m_left = isSmall ? kSmallPiece : kLargePiece;
        m_pNext = NewPiece(m_left);
    }

    std::vector<std::unique_ptr<std::byte[]>> m_pieces;
    std::byte* m_pNext = nullptr;
    std::size_t m_left = 0;
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_ARENA_H
