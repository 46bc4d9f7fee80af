// What all who walk through the text of a command share: the classes of its characters, and the
// steps over a line break, a comment and the inside of a literal.
//
// The steps stand in the header because most of a syntax file's bytes pass through them.
#ifndef QUILLET_TOKENIZER_SCANNING_H
#define QUILLET_TOKENIZER_SCANNING_H

#include <cstdint>

#include "tokenizer/mbcharpointer.h"

namespace quillet {

inline constexpr AsciiSet kDigits = AsciiSet().WithRange('0', '9');
inline constexpr AsciiSet kAsciiLetters = AsciiSet().WithRange('A', 'Z').WithRange('a', 'z');
inline constexpr AsciiSet kNameStart = kAsciiLetters.With("#$@");
inline constexpr AsciiSet kNameContinuation = kNameStart.WithRange('0', '9').With("._");
inline constexpr AsciiSet kBlanks = AsciiSet().With(" \t");
inline constexpr AsciiSet kQuotes = AsciiSet().With("'\"");
inline constexpr AsciiSet kLineBreaks = AsciiSet().With("\n\r");
inline constexpr AsciiSet kAnyAscii = AsciiSet().WithRange('\x01', '\x7F');
/// What is stepped over at once inside a comment and inside a literal.
inline constexpr AsciiSet kCommentBody = kAnyAscii.Without("*\n\r");
inline constexpr AsciiSet kLiteralBody = kAnyAscii.Without("'\"\n\r");

/// True for a multibyte character and for a byte above 127: all of these are letters.
[[nodiscard]] inline bool IsNonAscii(std::int32_t code) { return code < 0 || code > 127; }

[[nodiscard]] inline bool IsNameStart(std::int32_t code) {
    return IsNonAscii(code) || kNameStart.HasCode(code);
}

/// True at the end of a line or of the text.
[[nodiscard]] inline bool IsAtLineEnd(const MbCharPointer& cursor) {
    return cursor.Code() == 0 || kLineBreaks.HasCode(cursor.Code());
}

/// True when the cursor stands on "/" and "*" follows.
[[nodiscard]] inline bool IsAtComment(const MbCharPointer& cursor) {
    return cursor.Code() == '/' && cursor.Position()[1] == '*';
}

/// Steps over LF, CR, CR LF or LF CR. The first character of the new line has column 0.
inline void SkipLineBreak(MbCharPointer& cursor) {
    const std::int32_t first = cursor.Code();
    const std::int32_t second = cursor.Advance();
    if (second != first && (second == '\n' || second == '\r')) cursor.Advance();
    cursor.SetColumn(0);
}

/// Steps from the "/" that opens a comment to the "/" that closes it, which is left in place:
/// readers of the text have always seen it as an operator. Without one, to the end of the line.
inline void SkipComment(MbCharPointer& cursor) {
    cursor.Advance();
    cursor.Advance();
    while (true) {
        cursor.SkipRun(kCommentBody);
        if (IsAtLineEnd(cursor)) return;
        const bool closes = cursor.Code() == '*' && cursor.Position()[1] == '/';
        cursor.Advance();
        if (closes) return;
    }
}

/// Steps over the inside of a literal to `quote`, which closes it. False, and the cursor stands on
/// the end of the line, when the line leaves the literal open.
[[nodiscard]] inline bool SkipLiteralBody(MbCharPointer& cursor, std::int32_t quote) {
    cursor.SkipRun(kLiteralBody);
    while (cursor.Code() != quote) {
        if (IsAtLineEnd(cursor)) return false;
        cursor.Advance();
        cursor.SkipRun(kLiteralBody);
    }
    return true;
}

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_SCANNING_H
