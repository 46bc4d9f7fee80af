// A part of a file as a sequence of characters, for parsers that take iterators.
#ifndef QUILLET_MIGRATE_STOREDTEXT_H
#define QUILLET_MIGRATE_STOREDTEXT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>

#include "migrate/systemfiles.h"

namespace quillet::migrate {

inline constexpr std::size_t kStoredBlockSize = 64UL * 1024;

/// Reads bytes [begin, end) of a file, a block at a time. A file that fails or is shorter ends
/// early, which `Failed` tells, and so does one whose reader, which keeps what it reads, comes
/// more than `longestStep` bytes beyond its last `Mark`.
class StoredText {
public:
    StoredText(const StoredFile& file, std::uint64_t begin, std::uint64_t end,
               std::uint64_t longestStep = std::numeric_limits<std::uint64_t>::max())
        : m_file(file), m_longestStep(longestStep), m_next(begin), m_end(end), m_mark(begin) {
        Fill();
    }

    [[nodiscard]] bool IsAtEnd() const { return m_index == m_block.size(); }
    /// Not at the end.
    [[nodiscard]] char Current() const { return m_block[m_index]; }
    void Advance() {
        if (++m_index == m_block.size()) Fill();
    }

    /// Goes on to the bracket that ends the array or object in whose beginning the current
    /// character stands, or to the end of the text. Far faster than a parser, since of all that
    /// stands between, it looks for quotation marks and brackets alone.
    void SkipToEndOfPart() {
        BracketFinder finder;
        while (!m_block.empty()) {
            m_index = finder.FindEnd(m_block, m_index);
            if (m_index < m_block.size()) return;
            m_mark = m_next;
            Fill();
        }
    }

    [[nodiscard]] const StoredFile& File() const { return m_file; }
    /// Where in the file the current character stands.
    [[nodiscard]] std::uint64_t Position() const { return m_next - (m_block.size() - m_index); }
    [[nodiscard]] bool Failed() const { return m_failed; }

    /// The reader has dealt with everything before the current character.
    void Mark() { m_mark = Position(); }
    [[nodiscard]] bool IsTooLong() const { return m_isTooLong; }
    [[nodiscard]] std::uint64_t LongestStep() const { return m_longestStep; }

private:
    // Looks for the end of a part, block after block.
    class BracketFinder {
    public:
        // The index of its bracket; the size of `block` when it is not there.
        std::size_t FindEnd(const std::string& block, std::size_t index) {
            for (; index < block.size(); ++index) {
                const char c = block[index];
                if (m_isInString) {
                    m_isInString = m_isEscaped || c != '"';
                    m_isEscaped = !m_isEscaped && c == '\\';
                } else if (c == '"') {
                    m_isInString = true;
                } else if (c == '[' || c == '{') {
                    ++m_depth;
                } else if ((c == ']' || c == '}') && m_depth-- == 0) {
                    return index;
                }
            }
            return index;
        }

    private:
        std::uint64_t m_depth = 0;
        bool m_isInString = false;
        bool m_isEscaped = false;
    };

    void Fill() {
        m_index = 0;
        if (m_next < m_end && m_next - m_mark > m_longestStep) {
            m_isTooLong = m_failed = true;
            m_end = m_next;
        }
        m_block.resize(static_cast<std::size_t>(
            std::min<std::uint64_t>(kStoredBlockSize, m_end - std::min(m_next, m_end))));
        if (m_block.empty()) return;
        const std::ptrdiff_t count = m_file.ReadAt(m_next, m_block.data(), m_block.size());
        m_failed = count < static_cast<std::ptrdiff_t>(m_block.size());
        m_block.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        m_next += m_block.size();
        if (m_failed) m_end = m_next;
    }

    const StoredFile& m_file;
    std::uint64_t m_longestStep;
    std::string m_block;
    std::size_t m_index = 0;
    std::uint64_t m_next;  // where the next block begins
    std::uint64_t m_end;
    std::uint64_t m_mark;
    bool m_failed = false;
    bool m_isTooLong = false;
};

/// Goes through a `StoredText`, which it borrows; all copies move together.
class StoredTextIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = char;

    /// The end of every text.
    StoredTextIterator() = default;
    explicit StoredTextIterator(StoredText* pText) : m_pText(pText) {}

    char operator*() const { return m_pText->Current(); }
    StoredTextIterator& operator++() {
        m_pText->Advance();
        return *this;
    }
    void operator++(int) { m_pText->Advance(); }
    [[nodiscard]] bool IsAtEnd() const { return m_pText == nullptr || m_pText->IsAtEnd(); }
    friend bool operator==(const StoredTextIterator& left, const StoredTextIterator& right) {
        return left.IsAtEnd() == right.IsAtEnd();
    }

private:
    StoredText* m_pText = nullptr;
};

/// Hands bytes [offset, offset + length) of `file` to `take`, a block at a time as a string that
/// may be changed, until that returns false. True when all were taken.
template <class Take>
[[nodiscard]] bool CopyStoredText(const StoredFile& file, std::uint64_t offset,
                                  std::uint64_t length, Take take) {
    std::string block;
    while (length > 0) {
        block.resize(static_cast<std::size_t>(std::min<std::uint64_t>(kStoredBlockSize, length)));
        const std::ptrdiff_t count = file.ReadAt(offset, block.data(), block.size());
        if (count != static_cast<std::ptrdiff_t>(block.size())) return false;
        offset += block.size();
        length -= block.size();
        if (!take(block)) return false;
    }
    return true;
}

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_STOREDTEXT_H
