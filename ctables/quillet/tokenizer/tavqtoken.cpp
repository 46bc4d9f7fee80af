#include "tokenizer/tavqtoken.h"

#include <algorithm>
#include <array>
#include <limits>
#include <ostream>
#include <string>

#include "platform/numberconversion.h"
#include "tokenizer/operatorspellings.h"
#include "tokenizer/words.h"

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

std::optional<TAVQToken> TAVQToken::Of(TokenType type, const TokenTexts& texts) {
    constexpr std::size_t kMaxLength = (std::size_t{1} << kLengthBits) - 1;
    const std::size_t length = texts.source.size();
    if (length > kMaxLength) return std::nullopt;
    TAVQToken token;
    token.m_type = static_cast<unsigned>(type) & 7U;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): see the class
    token.m_pSource = texts.source.data();
    token.m_length = static_cast<std::uint32_t>(length) & kMaxLength;
    if (type == kLiteral) {
        const bool isBetweenQuotes = length > 1 && texts.value.data() == texts.source.data() + 1 &&
                                     texts.value.size() < length;
        if (!isBetweenQuotes) return std::nullopt;
        token.m_value = static_cast<std::uint32_t>(texts.value.size());
    } else if (type == kString) {
        // The capitals of a command lie in the same piece of memory as its text, after it.
        const std::ptrdiff_t distance = texts.value.data() - texts.source.data();
        if (texts.value.size() != length || distance < 0 ||
            distance > std::numeric_limits<std::uint32_t>::max()) {
            return std::nullopt;
        }
        token.m_value = static_cast<std::uint32_t>(distance);
    }
    return token;
}

// The sign that a number may have is no part of what is converted.
double TAVQToken::NumberValue() const {
    if (m_type != kNumber) return 0.0;
    const std::string text(Text(/*raw=*/true));
    const bool hasSign = text.starts_with('-') || text.starts_with('+');
    const double value = ConvertNumber(text.c_str() + (hasSign ? 1 : 0)).value;
    return text.starts_with('-') ? -value : value;
}

int TAVQToken::Operator() const {
    const std::string_view text = Text(/*raw=*/false);
    if (m_type == kString) return ReservedWordOperator(text);
    if (m_type != kOperator || text.empty()) return kNotOperator;
    if (text.size() == 1) return OneCharacterOperator(text.front());
    return text.size() == 2 ? FindOperator(kTwoCharacterOperators, text) : kElemPower;
}

int TAVQToken::CompareText(std::string_view text, std::size_t count, bool raw) const {
    return CompareTextPrefix(Text(raw), text, count);
}

void TAVQToken::Dump(std::ostream& stream, unsigned indent) const {
    stream << Indentation(indent) << TokenTypeName(Type());
    DumpTexts(stream, indent);
}

void TAVQToken::Dump(std::ostream& stream, unsigned indent, int line, int column) const {
    stream << Indentation(indent) << TokenTypeName(Type()) << '\t' << line << ':' << column;
    DumpTexts(stream, indent);
}

void TAVQToken::DumpTexts(std::ostream& stream, unsigned indent) const {
    switch (m_type) {
        case kNumber:
            stream << '\t' << NumberValue() << '\t' << Text(true);
            break;
        case kLiteral:
            stream << '\n' << Indentation(indent) << '`' << Text(false) << '`';
            break;
        default:
            stream << '\t' << OperatorName(Operator()) << '\t' << Text(true);
            break;
    }
    stream << '\n';
}

}  // namespace quillet
