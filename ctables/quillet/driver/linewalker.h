// The places of a line where a person would see a command begin or end.
//
// A conversion cuts commands by its own rules. A person who reads the same text goes by its lines,
// periods and comments; where the two differ, commands are overlooked.
#ifndef QUILLET_DRIVER_LINEWALKER_H
#define QUILLET_DRIVER_LINEWALKER_H

#include <cstddef>
#include <string_view>

namespace quillet {

/// What a line is a part of.
enum class LineContext {
    kSyntax,
    kFreeText,   ///< A comment command: quotes may be apostrophes.
    kMacroBody,  ///< Commands may begin after macro words and parentheses, too.
};

/// A place in a line. Offsets are in bytes from the line's beginning.
struct LinePlace {
    enum class Kind {
        kBeginning,    ///< The line's first text, after blanks, a sign and closed comments.
        kAfterPeriod,  ///< Text after a period and blanks.
        kAfterMacro,   ///< Text after a macro word or a parenthesis; in macro bodies alone.
        kLastPeriod,   ///< A period that no text follows.
    };
    /// What follows a last period, or stands before the line's first text.
    enum class Comment { kNone, kClosed, kUnclosed, kStar };

    Kind kind = Kind::kBeginning;
    std::size_t offset = 0;  ///< Of the text or of the last period.
    Comment comment = Comment::kNone;
    char sign = '\0';  ///< Before a beginning: "+" or "-" in the first column.
};

/// Walks through one line, without its end, from place to place. Literals and comments are passed
/// over; a literal that the line leaves open hides the rest of it. The line is borrowed. Linear.
class LineWalker {
public:
    LineWalker(std::string_view line, LineContext context) : m_line(line), m_context(context) {}

    /// Goes to the next place; false when there is none. A line that holds text or closed comments
    /// has a beginning, which is its first place; it is at the line's end when no text follows.
    [[nodiscard]] bool Next(LinePlace& place);

private:
    [[nodiscard]] bool FindBeginning(LinePlace& place);
    [[nodiscard]] bool LookAfterPeriod(LinePlace& place);
    [[nodiscard]] bool LookAfterMacro(LinePlace& place);
    void SkipQuote();
    void SkipBlanks();
    [[nodiscard]] bool IsAt(std::string_view text) const {
        return m_line.substr(m_position, text.size()) == text;
    }
    [[nodiscard]] LinePlace::Comment SkipBlanksAndComments();
    [[nodiscard]] bool SkipMacroWord();

    std::string_view m_line;
    LineContext m_context;
    std::size_t m_position = 0;
    bool m_hasBegun = false;
};

}  // namespace quillet

#endif  // QUILLET_DRIVER_LINEWALKER_H
