// The exception of the tokenizer.
#ifndef QUILLET_TOKENIZER_PARSEERROR_H
#define QUILLET_TOKENIZER_PARSEERROR_H

#include <exception>

namespace quillet {

/// Why a text cannot be cut into tokens.
enum class ParseErrorKind : int {
    kNone = 0,
#define QUILLET_TOKENIZING_REASON(kind, name, message, heading) kind,
#include "quillet-messages.def"
};

/// Thrown by the tokenizer; ends the run. Positions count from the text that was tokenized, until
/// somebody who knows where in the file that text stands makes them count from there.
class ParseError : public std::exception {
public:
    /// `line` counts from 1. `column` counts characters: from 1 on the text's first line, from
    /// 0 on the later ones.
    ParseError(long line, int column, ParseErrorKind kind)
        : m_line(line), m_column(column), m_kind(kind) {}

    [[nodiscard]] long Line() const { return m_line; }
    /// `textLine` is the line of the file, from 1, on which the text begins.
    void CountFromFile(long textLine) {
        m_line += textLine - 1;
        m_countsFromFile = true;
    }
    [[nodiscard]] bool CountsFromFile() const { return m_countsFromFile; }
    [[nodiscard]] int Column() const { return m_column; }
    [[nodiscard]] ParseErrorKind Kind() const { return m_kind; }
    [[nodiscard]] const char* what() const noexcept override { return "syntax tokenizing error"; }

private:
    long m_line;
    int m_column;
    ParseErrorKind m_kind;
    bool m_countsFromFile = false;
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_PARSEERROR_H
