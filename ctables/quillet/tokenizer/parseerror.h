// The exception of the tokenizer.
#ifndef QUILLET_TOKENIZER_PARSEERROR_H
#define QUILLET_TOKENIZER_PARSEERROR_H

#include <exception>

namespace quillet {

/// Why a text cannot be cut into tokens. The values choose the message that the user sees.
enum class ParseErrorKind : int {
    kNone = 0,
    kUnclosedLiteral = 1,
    kExponentWithoutDigits = 2,
    kInvalidNumber = 3,
    kInvalidCharacter = 4,
};

/// Thrown by the tokenizer; ends the run. Positions count from the text that was tokenized.
class ParseError : public std::exception {
public:
    /// `line` counts from 1. `column` counts characters: from 1 on the text's first line, from
    /// 0 on the later ones.
    ParseError(long line, int column, ParseErrorKind kind)
        : m_line(line), m_column(column), m_kind(kind) {}

    [[nodiscard]] long Line() const { return m_line; }
    void SetLine(long line) { m_line = line; }
    [[nodiscard]] int Column() const { return m_column; }
    [[nodiscard]] ParseErrorKind Kind() const { return m_kind; }
    [[nodiscard]] const char* what() const noexcept override { return "syntax tokenizing error"; }

private:
    long m_line;
    int m_column;
    ParseErrorKind m_kind;
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_PARSEERROR_H
