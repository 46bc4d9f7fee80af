// The text of a generated command, as pieces that are laid out into lines.
#ifndef QUILLET_DRIVER_OUTPUTSEQUENCE_H
#define QUILLET_DRIVER_OUTPUTSEQUENCE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillet {

/// Collects pieces of text (keywords, names, punctuation) and breaks lines only between them.
/// Lengths and widths are in bytes.
class OutputSequence {
public:
    /// Appends a piece. A leading space is part of the piece: it counts towards the width and
    /// is dropped where the piece starts a line.
    void Add(std::string_view text, bool leadingSpace);

    /// Appends the pieces and forced breaks of `other`.
    void Append(const OutputSequence& other);

    /// Appends a forced line break.
    void NewLine();

    /// Removes all pieces.
    void Clear();

    [[nodiscard]] bool IsEmpty() const { return m_Sequence.empty(); }

    /// Length of all pieces behind the last forced break.
    [[nodiscard]] std::size_t CurrentLineLength() const;

    /// Makes one piece of all pieces behind the last forced break, so that none of them are
    /// separated.
    void JoinCurrentLine();

    /// The pieces laid out in lines of at most `width`, every line but the first indented by
    /// `indent` blanks. A piece longer than the width stays whole; a lone comma that does
    /// not fit takes the piece before it along, even if their line is then too long. An `indent` of
    /// `width` or more is reported as an assertion and becomes 1. Linear in the text.
    [[nodiscard]] std::string Format(std::size_t width, std::size_t indent) const;

private:
    [[nodiscard]] std::size_t CurrentLineBegin() const {
        return static_cast<std::size_t>(m_lastBreak + 1);
    }

    std::vector<std::pair<std::string, bool>> m_Sequence;  // text; true for a forced break
    std::ptrdiff_t m_lastBreak = -1;  // index of the last forced break; -1 when there is none
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_OUTPUTSEQUENCE_H
