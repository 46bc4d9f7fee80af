// A GPL program as a list of statements, and its text.
//
// Quoting, separators, order and indentation are decided here alone: whoever builds a program
// says what it holds, never how it is written.
#ifndef QUILLET_IGRAPH_GPL_GPLSTATEMENT_H
#define QUILLET_IGRAPH_GPL_GPLSTATEMENT_H

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::igraph {

/// `number` with up to 15 significant digits and a decimal point, whatever the locale.
[[nodiscard]] std::string FormatNumber(double number);

/// An expression of GPL: a function call and what its arguments are made of.
///
/// A plain value. How deep expressions nest is up to the code that builds them, never to the
/// command that is converted.
class Expression {
public:
    /// The name of a variable or of a constant such as shape.square.
    [[nodiscard]] static Expression Identifier(std::string_view name);
    /// A string; `contents` is anything, without quotes.
    [[nodiscard]] static Expression Text(std::string_view contents);
    [[nodiscard]] static Expression Number(double number);
    /// A function with its arguments, which may be none.
    [[nodiscard]] static Expression Call(std::string_view function,
                                         std::vector<Expression> arguments = {});
    /// A function of whole numbers that are written closely, such as dim(1,2).
    [[nodiscard]] static Expression Indices(std::string_view function,
                                            std::initializer_list<int> indices);
    /// The crossing of at least one factor.
    [[nodiscard]] static Expression Product(std::vector<Expression> factors);
    /// Two operands around an operator, such as y >= 1.
    [[nodiscard]] static Expression Operation(Expression left, std::string_view operation,
                                              Expression right);
    /// The whole range of a dimension, in the position of a reference line.
    [[nodiscard]] static Expression WholeRange();

    /// Appends an argument to a call.
    void AddArgument(Expression argument);

    /// Appends the text.
    void AppendTo(std::string& text) const;

    /// Appends the text of a call, and to `breaks` the places in `text` after the separators of
    /// the call's own arguments.
    void AppendCall(std::string& text, std::vector<std::size_t>& breaks) const;

private:
    enum class Kind { kIdentifier, kText, kNumber, kCall, kIndices, kProduct, kOperation };

    Expression(Kind kind, std::string_view text) : m_kind(kind), m_text(text) {}
    void AppendOperands(std::string& text, std::string_view separator) const;

    Kind m_kind;
    std::string m_text;  // name, contents, function or operator
    double m_number = 0.0;
    std::vector<Expression> m_operands;
};

/// The kinds of statements, in the order in which a program holds them.
enum class StatementLabel { kSource, kData, kTrans, kCoord, kGuide, kScale, kElement };

inline constexpr std::array kStatementLabels = {StatementLabel::kSource, StatementLabel::kData,
                                                StatementLabel::kTrans,  StatementLabel::kCoord,
                                                StatementLabel::kGuide,  StatementLabel::kScale,
                                                StatementLabel::kElement};

/// The label as it is written, without the colon.
[[nodiscard]] std::string_view LabelText(StatementLabel label);

/// The statements of a program.
class Program {
public:
    /// Appends a statement to those of its label. `call` is a function call. Kept as text: a chart
    /// may have a statement for every few bytes of a command.
    void Add(StatementLabel label, const Expression& call);

    /// The same for a statement that gives its result a name.
    void AddNamed(StatementLabel label, std::string_view name, const Expression& call);

    /// The program's text: it begins with a line end, and each statement is a line after two
    /// blanks. A line of more than 250 bytes goes on after four blanks, where arguments of the
    /// statement's function allow. Line breaks within strings become blanks, so that no string
    /// can end a command. Linear in the text.
    [[nodiscard]] std::string ToText() const;

private:
    std::array<std::string, kStatementLabels.size()> m_lines;  // of the statements of each label
};

}  // namespace quillet::igraph

#endif  // QUILLET_IGRAPH_GPL_GPLSTATEMENT_H
