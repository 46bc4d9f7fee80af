// The text of a generated command, as pieces that are laid out into lines.
#ifndef QUILLET_TRANSLATOR_OUTPUTSEQUENCE_H
#define QUILLET_TRANSLATOR_OUTPUTSEQUENCE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

/// Collects pieces of text (keywords, names, punctuation) and breaks lines only between them.
/// Lengths and widths are in bytes.
///
/// Holds one text and where its pieces end, so that a piece takes hardly more memory than its
/// bytes.
class OutputSequence {
public:
    /// A place between two pieces.
    struct Place {
        std::size_t piece = 0;  ///< How many pieces stand before it,
        std::size_t byte = 0;   ///< and how many bytes.
    };

    /// Appends a piece. A leading space is part of the piece: it counts toward the width and
    /// is dropped where the piece starts a line.
    void Add(std::string_view text, bool leadingSpace);

    /// Appends the pieces and forced breaks of `other`.
    void Append(const OutputSequence& other);

    /// Appends a forced line break.
    void NewLine();

    /// Removes all pieces.
    void Clear();

    [[nodiscard]] bool IsEmpty() const { return m_ends.empty(); }

    /// The place after the last piece.
    [[nodiscard]] Place Here() const { return {m_ends.size(), m_text.size()}; }

    /// Length of all pieces after the last forced break. Constant time.
    [[nodiscard]] std::size_t CurrentLineLength() const {
        return m_text.size() - CurrentLine().byte;
    }

    /// Makes one piece of all pieces after the last forced break, so that none of them are
    /// separated. Constant time, on average over all pieces.
    void JoinCurrentLine() { JoinSince(CurrentLine()); }

    /// The same for all pieces after `begin`, which no forced break may follow.
    void JoinSince(Place begin);

    /// The pieces laid out in lines of at most `width`, every line but the first indented by
    /// `indent` blanks. A piece longer than the width stays whole; a lone comma that does
    /// not fit takes the piece before it along, even if their line is then too long. An `indent` of
    /// `width` or more is reported as an assertion and becomes 1. Linear in the text.
    [[nodiscard]] std::string Format(std::size_t width, std::size_t indent) const;

private:
    [[nodiscard]] Place CurrentLine() const;

    std::string m_text;
    std::vector<std::size_t> m_ends;    // where the pieces end in m_text
    std::vector<std::size_t> m_breaks;  // which pieces are forced breaks, in order
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_OUTPUTSEQUENCE_H
