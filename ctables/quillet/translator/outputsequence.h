// The text of a generated command, as pieces that are laid out into lines.
#ifndef QUILLET_TRANSLATOR_OUTPUTSEQUENCE_H
#define QUILLET_TRANSLATOR_OUTPUTSEQUENCE_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

/// Lays pieces out in lines, one after the other. Keeps the place of the last emitted string, which
/// a comma may still take along to the next line.
class LineFiller {
public:
    /// Lines of at most `width` bytes are appended to `text`, which is borrowed, every line but
    /// the first indented by `indent` blanks.
    LineFiller(std::string& text, std::size_t width, std::size_t indent)
        : m_text(text), m_lastEmitted(text.size()), m_width(width), m_indentation(indent, ' ') {}

    void AddBreak();
    void AddPiece(std::string_view piece);

private:
    void Emit(std::string_view text);
    void StartLine(std::string_view piece);
    void BreakLine();
    void AddCommaBeyondMargin();

    std::string& m_text;
    std::size_t m_lastEmitted;  // where the last emitted string begins
    std::size_t m_width;
    std::string m_indentation;
    std::size_t m_lineLength = 0;
    bool m_isFirstPiece = true;  // the very first piece is not indented
};

/// Collects pieces of text (keywords, names, punctuation) and breaks lines only between them.
/// Lengths and widths are in bytes.
///
/// Holds one text and where its pieces end, so that a piece takes hardly more memory than its
/// bytes. A sequence that is laid out while it grows holds no more than the last few thousand
/// bytes: pieces are only joined with others near by.
class OutputSequence {
public:
    /// A place between two pieces, counted from the first piece of all.
    struct Place {
        std::size_t piece = 0;  ///< How many pieces stand before it,
        std::size_t byte = 0;   ///< and how many bytes.
    };

    /// Pieces of so many bytes together, and more, must not be joined.
    static constexpr std::size_t kLongestJoin = 256;

    /// A sequence that is laid out by `Format`.
    OutputSequence() = default;

    /// A sequence that is laid out while it grows: appended to `text`, which is borrowed, in the
    /// way of `Format(width, indent)`. `Finish` must be called after the last piece.
    OutputSequence(std::string& text, std::size_t width, std::size_t indent);

    /// Appends a piece. A leading space is part of the piece: it counts toward the width and
    /// is dropped where the piece starts a line.
    void Add(std::string_view text, bool leadingSpace);

    /// Appends a forced line break.
    void NewLine();

    [[nodiscard]] bool IsEmpty() const { return Here().piece == 0; }

    /// The place after the last piece.
    [[nodiscard]] Place Here() const {
        return {m_first.piece + m_ends.size(), m_first.byte + m_text.size()};
    }

    /// Length of all pieces after the last forced break. Constant time.
    [[nodiscard]] std::size_t CurrentLineLength() const { return Here().byte - m_line.byte; }

    /// Makes one piece of all pieces after the last forced break, so that none of them are
    /// separated. Constant time, on average over all pieces.
    void JoinCurrentLine() { JoinSince(m_line); }

    /// The same for all pieces after `begin`, which no forced break may follow, and fewer than
    /// `kLongestJoin` bytes.
    void JoinSince(Place begin);

    /// The pieces laid out in lines of at most `width`, every line but the first indented by
    /// `indent` blanks. A piece longer than the width stays whole; a lone comma that does
    /// not fit takes the piece before it along, even if their line is then too long. An `indent` of
    /// `width` or more is reported as an assertion and becomes 1. Linear in the text.
    [[nodiscard]] std::string Format(std::size_t width, std::size_t indent) const;

    /// Lays out what is left.
    void Finish();

private:
    std::size_t LayOut(std::size_t count, LineFiller& filler) const;
    void LayOutBefore(std::size_t end);

    Place m_first;  // before the first piece that is here
    Place m_line;   // after the last forced break
    std::string m_text;
    std::vector<std::size_t> m_ends;    // where the pieces end in m_text
    std::vector<std::size_t> m_breaks;  // which of them are forced breaks, in order
    std::optional<LineFiller> m_filler;
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_OUTPUTSEQUENCE_H
