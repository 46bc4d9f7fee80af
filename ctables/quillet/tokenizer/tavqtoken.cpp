#include "tokenizer/tavqtoken.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <utility>

namespace quillet {

namespace {

// Indentations deeper than this are dropped, not cut: a listing that deep is a runaway.
constexpr unsigned kMaxTokenIndent = 20;

struct CodeName {
    int code;
    std::string_view name;
};

constexpr CodeName kTypeNames[] = {
    {TokenCodes::kAtEnd, "kAtEnd"},       {TokenCodes::kString, "kString"},
    {TokenCodes::kNumber, "kNumber"},     {TokenCodes::kLiteral, "kLiteral"},
    {TokenCodes::kOperator, "kOperator"},
};

// The first name serves every code that has none.
constexpr CodeName kOperatorNames[] = {
    {TokenCodes::kNotOperator, "kNotOperator"},
    {TokenCodes::kLessThan, "kLessThan"},
    {TokenCodes::kGreaterThan, "kGreaterThan"},
    {TokenCodes::kEquals, "kEquals"},
    {TokenCodes::kLtOrEq, "kLtOrEq"},
    {TokenCodes::kGtOrEq, "kGtOrEq"},
    {TokenCodes::kNot, "kNot"},
    {TokenCodes::kPlus, "kPlus"},
    {TokenCodes::kMinus, "kMinus"},
    {TokenCodes::kAsterisk, "kAsterisk"},
    {TokenCodes::kSlash, "kSlash"},
    {TokenCodes::kPower, "kPower"},
    {TokenCodes::kLeftParen, "kLeftParen"},
    {TokenCodes::kRightParen, "kRightParen"},
    {TokenCodes::kComma, "kComma"},
    {TokenCodes::kColon, "kColon"},
    {TokenCodes::kSemicolon, "kSemicolon"},
    {TokenCodes::kPeriod, "kPeriod"},
    {TokenCodes::kUnderscore, "kUnderscore"},
    {TokenCodes::kQuestionMark, "kQuestionMark"},
    {TokenCodes::kPercent, "kPercent"},
    {TokenCodes::kVerticalBar, "kVerticalBar"},
    {TokenCodes::kAmpersand, "kAmpersand"},
    {TokenCodes::kLeftBrace, "kLeftBrace"},
    {TokenCodes::kRightBrace, "kRightBrace"},
    {TokenCodes::kElemMult, "kElemMult"},
    {TokenCodes::kElemDiv, "kElemDiv"},
    {TokenCodes::kElemPower, "kElemPower"},
    {TokenCodes::kXtabNest, "kXtabNest"},
    {TokenCodes::kTo, "kTo"},
    {TokenCodes::kWith, "kWith"},
    {TokenCodes::kAnd, "kAnd"},
    {TokenCodes::kOr, "kOr"},
    {TokenCodes::kBy, "kBy"},
    {TokenCodes::kAll, "kAll"},
    {TokenCodes::kLeftSqBracket, "kLeftSqBracket"},
    {TokenCodes::kRightSqBracket, "kRightSqBracket"},
};

template <std::size_t kCount>
std::string_view FindName(const CodeName (&names)[kCount], int code) {
    const auto* pFound = std::find_if(std::begin(names), std::end(names),
                                      [code](const CodeName& entry) { return entry.code == code; });
    return pFound == std::end(names) ? names[0].name : pFound->name;
}

std::string Indentation(unsigned indent) {
    std::string tabs;
    tabs.append(indent <= kMaxTokenIndent ? indent : 0, '\t');
    return tabs;
}

}  // namespace

std::string_view TokenTypeName(int type) { return FindName(kTypeNames, type); }

std::string_view OperatorName(int operatorCode) { return FindName(kOperatorNames, operatorCode); }

int CompareTextPrefix(std::string_view left, std::string_view right, std::size_t count) {
    if (count > 0) {
        left = left.substr(0, count);
        right = right.substr(0, count);
    }
    return left.compare(right);
}

TAVQToken::TAVQToken(const char* pBegin, const char* pEnd, int line, int column)
    : m_text(pBegin, pEnd), m_line(line), m_column(column) {}

const std::string& TAVQToken::Text(bool /*raw*/) const { return m_text; }

double TAVQToken::NumberValue() const { return 0.0; }

int TAVQToken::Operator() const { return kNotOperator; }

void TAVQToken::GetPosition(int& line, int& column) const {
    line = m_line;
    column = m_column;
}

int TAVQToken::CompareText(std::string_view text, std::size_t count, bool raw) const {
    return CompareTextPrefix(Text(raw), text, count);
}

void TAVQToken::DumpHead(std::ostream& stream, unsigned indent) const {
    stream << Indentation(indent) << TokenTypeName(Type()) << '\t' << m_line << ':' << m_column;
}

TAVQStringToken::TAVQStringToken(const char* pBegin, const char* pEnd, int line, int column,
                                 std::string value, int operatorCode)
    : TAVQToken(pBegin, pEnd, line, column),
      m_value(std::move(value)),
      m_operatorCode(operatorCode) {}

std::unique_ptr<TAVQToken> TAVQStringToken::Clone() const {
    return std::make_unique<TAVQStringToken>(*this);
}

void TAVQStringToken::Dump(std::ostream& stream, unsigned indent) const {
    DumpHead(stream, indent);
    stream << '\t' << OperatorName(m_operatorCode) << '\t' << Text(true) << '\n';
}

const std::string& TAVQStringToken::Text(bool raw) const {
    return raw ? TAVQToken::Text(raw) : m_value;
}

TAVQNumberToken::TAVQNumberToken(const char* pBegin, const char* pEnd, int line, int column,
                                 double value)
    : TAVQToken(pBegin, pEnd, line, column), m_value(value) {}

std::unique_ptr<TAVQToken> TAVQNumberToken::Clone() const {
    return std::make_unique<TAVQNumberToken>(*this);
}

void TAVQNumberToken::Dump(std::ostream& stream, unsigned indent) const {
    DumpHead(stream, indent);
    stream << '\t' << m_value << '\t' << Text(true) << '\n';
}

TAVQLiteralToken::TAVQLiteralToken(const char* pBegin, const char* pEnd, int line, int column,
                                   std::string value)
    : TAVQToken(pBegin, pEnd, line, column), m_value(std::move(value)) {}

std::unique_ptr<TAVQToken> TAVQLiteralToken::Clone() const {
    return std::make_unique<TAVQLiteralToken>(*this);
}

void TAVQLiteralToken::Dump(std::ostream& stream, unsigned indent) const {
    DumpHead(stream, indent);
    stream << '\n' << Indentation(indent) << '`' << m_value << "`\n";
}

const std::string& TAVQLiteralToken::Text(bool raw) const {
    return raw ? TAVQToken::Text(raw) : m_value;
}

TAVQOperatorToken::TAVQOperatorToken(const char* pBegin, const char* pEnd, int line, int column,
                                     int operatorCode)
    : TAVQToken(pBegin, pEnd, line, column), m_operatorCode(operatorCode) {}

std::unique_ptr<TAVQToken> TAVQOperatorToken::Clone() const {
    return std::make_unique<TAVQOperatorToken>(*this);
}

void TAVQOperatorToken::Dump(std::ostream& stream, unsigned indent) const {
    DumpHead(stream, indent);
    stream << '\t' << OperatorName(m_operatorCode) << '\t' << Text(true) << '\n';
}

}  // namespace quillet
