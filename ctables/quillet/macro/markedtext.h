// A text that remembers which of its parts were written in the body of a macro.
//
// Only names that are written in a body are calls of macros; what was put in, a value or a result,
// is not searched again. So each byte of a text that is made carries a mark.
#ifndef QUILLET_MACRO_MARKEDTEXT_H
#define QUILLET_MACRO_MARKEDTEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet::macro {

using Mark = char;

inline constexpr Mark kWritten = 0;  ///< Written where it stands: may be part of a macro's name.
inline constexpr Mark kPutIn = 1;
/// Added to the mark of a byte before which something else stood or was put in: no name goes on
/// over a seam.
inline constexpr Mark kSeam = 2;

/// Borrowed text. Without marks all of it is written where it stands.
struct MarkedView {
    std::string_view text;
    std::string_view marks;

    /// The bytes [begin, end).
    [[nodiscard]] MarkedView Part(std::size_t begin, std::size_t end) const;
    /// Whether the bytes [begin, end) were written as they stand, in one piece.
    [[nodiscard]] bool IsWritten(std::size_t begin, std::size_t end) const;
};

struct MarkedText {
    std::string text;
    std::string marks;  ///< As long as `text`.

    [[nodiscard]] MarkedView View() const { return {text, marks}; }
    void Append(const MarkedView& part);
    void Append(std::string_view part, Mark mark);
};

/// Puts the expansion of a macro together, line by line: drops lines that hold nothing but blanks.
class TextBuilder {
public:
    /// Adds a text, whose line breaks are LF.
    void Append(const MarkedView& part);
    void AppendWritten(std::string_view part) { Append({part, {}}); }
    void AppendPutIn(std::string_view part);

    /// What comes next was not next to what is there.
    void AddSeam() { m_seamIsNext = true; }

    /// A command has ended: breaks the line, and drops the blanks that are added next.
    void EndCommand();

    /// The bytes so far.
    [[nodiscard]] std::size_t Size() const { return m_result.text.size(); }

    /// The whole text, without white space around it. The builder is empty afterwards.
    [[nodiscard]] MarkedText Take();

private:
    void AppendInLine(const MarkedView& part);
    void BreakLine();

    MarkedText m_result;
    std::size_t m_lineBegin = 0;
    bool m_lineIsBlank = true;
    bool m_dropsBlanks = false;
    bool m_seamIsNext = false;
};

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_MARKEDTEXT_H
