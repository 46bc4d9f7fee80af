#include "igraph/gpl/gplstatement.h"

#include <charconv>
#include <utility>

namespace quillet::igraph {

namespace {

constexpr std::size_t kLongestLine = 250;
constexpr std::string_view kIndent = "  ";
constexpr std::string_view kContinuationIndent = "    ";
constexpr std::string_view kSeparator = ", ";

void AppendQuoted(std::string_view contents, std::string& text) {
    text += '"';
    for (const char c : contents) {
        if (c == '\n' || c == '\r') {
            text += ' ';
            continue;
        }
        if (c == '"' || c == '\\') text += '\\';
        text += c;
    }
    text += '"';
}

// `breaks` are the places in `line` where it may go on in the next line.
void AppendLine(std::string_view line, const std::vector<std::size_t>& breaks, std::string& text) {
    std::string_view indent = kIndent;
    std::size_t begin = 0;
    std::size_t next = 0;
    while (indent.size() + (line.size() - begin) > kLongestLine) {
        std::size_t end = begin;
        while (next < breaks.size() && indent.size() + (breaks[next] - begin) <= kLongestLine) {
            end = breaks[next++];
        }
        if (end == begin) break;
        text += indent;
        text += line.substr(begin, end - begin - 1);  // the blank of the separator stays away
        text += '\n';
        begin = end;
        indent = kContinuationIndent;
    }
    text += indent;
    text += line.substr(begin);
    text += '\n';
}

}  // namespace

std::string FormatNumber(double number) {
    constexpr int kDigits = 15;
    std::array<char, 64> buffer{};
    const std::to_chars_result result = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                                      number, std::chars_format::general, kDigits);
    return {buffer.data(), result.ptr};
}

Expression Expression::Identifier(std::string_view name) { return {Kind::kIdentifier, name}; }

Expression Expression::Text(std::string_view contents) { return {Kind::kText, contents}; }

Expression Expression::Number(double number) {
    Expression expression(Kind::kNumber, "");
    expression.m_number = number;
    return expression;
}

Expression Expression::Call(std::string_view function, std::vector<Expression> arguments) {
    Expression expression(Kind::kCall, function);
    expression.m_operands = std::move(arguments);
    return expression;
}

Expression Expression::Indices(std::string_view function, std::initializer_list<int> indices) {
    Expression expression(Kind::kIndices, function);
    for (const int index : indices) expression.m_operands.push_back(Number(index));
    return expression;
}

Expression Expression::Product(std::vector<Expression> factors) {
    Expression expression(Kind::kProduct, "");
    expression.m_operands = std::move(factors);
    return expression;
}

Expression Expression::Operation(Expression left, std::string_view operation, Expression right) {
    Expression expression(Kind::kOperation, operation);
    expression.m_operands.push_back(std::move(left));
    expression.m_operands.push_back(std::move(right));
    return expression;
}

Expression Expression::WholeRange() { return Identifier("*"); }

void Expression::AddArgument(Expression argument) { m_operands.push_back(std::move(argument)); }

void Expression::AppendCall(std::string& text, std::vector<std::size_t>& breaks) const {
    text += m_text;
    text += '(';
    for (std::size_t i = 0; i < m_operands.size(); ++i) {
        if (i > 0) {
            text += kSeparator;
            breaks.push_back(text.size());
        }
        m_operands[i].AppendTo(text);
    }
    text += ')';
}

void Expression::AppendOperands(std::string& text, std::string_view separator) const {
    for (std::size_t i = 0; i < m_operands.size(); ++i) {
        if (i > 0) text += separator;
        m_operands[i].AppendTo(text);
    }
}

void Expression::AppendTo(std::string& text) const {
    switch (m_kind) {
        case Kind::kIdentifier:
            text += m_text;
            break;
        case Kind::kText:
            AppendQuoted(m_text, text);
            break;
        case Kind::kNumber:
            text += FormatNumber(m_number);
            break;
        case Kind::kCall:
        case Kind::kIndices:
            text += m_text;
            text += '(';
            AppendOperands(text, m_kind == Kind::kCall ? kSeparator : ",");
            text += ')';
            break;
        case Kind::kProduct:
            AppendOperands(text, "*");
            break;
        case Kind::kOperation:
            AppendOperands(text, ' ' + m_text + ' ');
            break;
    }
}

std::string_view LabelText(StatementLabel label) {
    switch (label) {
        case StatementLabel::kSource:
            return "SOURCE";
        case StatementLabel::kData:
            return "DATA";
        case StatementLabel::kTrans:
            return "TRANS";
        case StatementLabel::kCoord:
            return "COORD";
        case StatementLabel::kGuide:
            return "GUIDE";
        case StatementLabel::kScale:
            return "SCALE";
        case StatementLabel::kElement:
            break;
    }
    return "ELEMENT";
}

void Program::Add(StatementLabel label, const Expression& call) { AddNamed(label, "", call); }

void Program::AddNamed(StatementLabel label, std::string_view name, const Expression& call) {
    std::string line(LabelText(label));
    line += ": ";
    if (!name.empty()) line.append(name).append("=");
    std::vector<std::size_t> breaks;
    call.AppendCall(line, breaks);
    AppendLine(line, breaks, m_lines[static_cast<std::size_t>(label)]);
}

std::string Program::ToText() const {
    std::size_t size = 1;
    for (const std::string& lines : m_lines) size += lines.size();
    std::string text;
    text.reserve(size);
    text += '\n';
    for (const StatementLabel label : kStatementLabels) {
        text += m_lines[static_cast<std::size_t>(label)];
    }
    return text;
}

}  // namespace quillet::igraph
