// Inputs and outputs of a conversion that live in memory and fail on demand.
#ifndef QUILLET_TESTS_UNIT_MEMORYTEXT_H
#define QUILLET_TESTS_UNIT_MEMORYTEXT_H

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "quillet.h"

namespace quillet {

inline constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

/// Delivers a text in pieces of at most `pieceSize` bytes.
class MemoryInput final : public TextInput {
public:
    explicit MemoryInput(std::string text, std::size_t pieceSize = kNever)
        : m_text(std::move(text)), m_pieceSize(pieceSize) {}

    /// From the reading pass `pass` on (from 0, each rewind begins a new one) the input fails
    /// in place of the byte at `position`.
    void FailAt(std::size_t position, int pass = 0) {
        m_failPosition = position;
        m_failPass = pass;
    }
    void RefuseToRewind() { m_canRewind = false; }
    /// The second reading pass finds no memory for the byte at `position`.
    void RunOutOfMemoryAt(std::size_t position) {
        FailAt(position, 1);
        m_throws = true;
    }
    /// After the first rewind the text is another one; nothing but its bytes tells.
    void BecomeAfterwards(std::string text) { m_laterText = std::move(text); }
    /// Claims to have changed.
    void ClaimToHaveChanged() { m_hasChanged = true; }

    std::size_t Read(char* buffer, std::size_t size) override {
        std::size_t end = m_text.size();
        if (m_pass >= m_failPass) {
            if (m_position >= m_failPosition) {
                if (m_throws) throw std::bad_alloc();
                m_failed = true;
                return 0;
            }
            end = std::min(end, m_failPosition);
        }
        const std::size_t length = std::min({size, m_pieceSize, end - m_position});
        m_text.copy(buffer, length, m_position);
        m_position += length;
        return length;
    }
    bool Rewind() override {
        if (!m_canRewind) return false;
        m_position = 0;
        ++m_pass;
        if (m_laterText) m_text = *m_laterText;
        return true;
    }
    [[nodiscard]] bool Failed() const override { return m_failed; }
    [[nodiscard]] bool HasChanged() const override { return m_hasChanged; }

private:
    std::optional<std::string> m_laterText;
    bool m_hasChanged = false;
    std::string m_text;
    std::size_t m_pieceSize;
    std::size_t m_position = 0;
    std::size_t m_failPosition = kNever;
    int m_pass = 0;
    int m_failPass = 0;
    bool m_canRewind = true;
    bool m_failed = false;
    bool m_throws = false;
};

/// Keeps what is written, until a write fails.
class MemoryOutput final : public TextOutput {
public:
    MemoryOutput() = default;
    /// The write number `failingWrite` (from 0) is the first that fails.
    explicit MemoryOutput(std::size_t failingWrite) : m_failingWrite(failingWrite) {}

    bool Write(std::string_view bytes) override {
        if (m_failed) ++m_writesAfterFailure;
        m_failed = m_failed || m_writes == m_failingWrite;
        ++m_writes;
        m_longestWrite = std::max(m_longestWrite, bytes.size());
        if (!m_failed) m_text += bytes;
        return !m_failed;
    }

    [[nodiscard]] const std::string& Text() const { return m_text; }
    [[nodiscard]] std::size_t Writes() const { return m_writes; }
    [[nodiscard]] std::size_t WritesAfterFailure() const { return m_writesAfterFailure; }
    [[nodiscard]] std::size_t LongestWrite() const { return m_longestWrite; }

private:
    std::string m_text;
    std::size_t m_failingWrite = kNever;
    std::size_t m_writes = 0;
    std::size_t m_writesAfterFailure = 0;
    std::size_t m_longestWrite = 0;
    bool m_failed = false;
};

}  // namespace quillet

#endif  // QUILLET_TESTS_UNIT_MEMORYTEXT_H
