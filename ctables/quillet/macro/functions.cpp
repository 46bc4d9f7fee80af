#include "macro/functions.h"

#include <cmath>
#include <vector>

#include "macro/lexer.h"
#include "platform/numberconversion.h"

namespace quillet::macro {

namespace {

std::string_view WithoutBlanksAtEnd(std::string_view text) {
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view WithoutBlanksAround(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    return WithoutBlanksAtEnd(text);
}

// Where a text begins in another one, byte by byte, in linear time: after a mismatch the search
// goes on with the longest beginning of the text that what was read ends with.
class Searcher {
public:
    explicit Searcher(std::string_view wanted) : m_wanted(wanted), m_border(wanted.size(), 0) {
        for (std::size_t i = 1; i < wanted.size(); ++i) {
            m_border[i] = Extend(m_border[i - 1], wanted[i]);
        }
    }

    /// Takes the next byte; whether the text ends with it.
    [[nodiscard]] bool Add(char byte) {
        if (m_matched == m_wanted.size()) m_matched = m_border.back();
        m_matched = Extend(m_matched, byte);
        return m_matched == m_wanted.size();
    }

private:
    [[nodiscard]] std::size_t Extend(std::size_t matched, char byte) const {
        while (matched > 0 && m_wanted[matched] != byte) matched = m_border[matched - 1];
        return m_wanted[matched] == byte ? matched + 1 : 0;
    }

    std::string_view m_wanted;
    std::vector<std::size_t> m_border;
    std::size_t m_matched = 0;
};

bool HoldsFor(int order, Relation relation) {
    switch (relation) {
        case Relation::kEqual:
            return order == 0;
        case Relation::kNotEqual:
            return order != 0;
        case Relation::kLess:
            return order < 0;
        case Relation::kLessOrEqual:
            return order <= 0;
        case Relation::kGreater:
            return order > 0;
        case Relation::kGreaterOrEqual:
            return order >= 0;
    }
    return false;
}

}  // namespace

std::optional<double> NumberOf(std::string_view text) {
    text = WithoutBlanksAround(text);
    const bool hasSign = text.starts_with('+') || text.starts_with('-');
    const std::string_view number = text.substr(hasSign ? 1 : 0);
    const Lexer lexer(CodePage::Utf8(), number);
    if (number.empty() || lexer.NumberLength(0) != number.size()) return std::nullopt;
    const double value = ConvertNumber(std::string(number).c_str()).value;
    return text.front() == '-' ? -value : value;
}

std::optional<std::int64_t> WholeNumberOf(std::string_view text) {
    constexpr double kLargest = 1e15;
    const std::optional<double> number = NumberOf(text);
    if (!number || !(std::abs(*number) <= kLargest)) return std::nullopt;
    const auto whole = static_cast<std::int64_t>(*number);
    if (static_cast<double>(whole) != *number) return std::nullopt;
    return whole;
}

bool IsTrue(std::string_view text) {
    const std::optional<double> number = NumberOf(text);
    return number ? *number != 0 : !WithoutBlanksAtEnd(text).empty();
}

bool Holds(std::string_view left, Relation relation, std::string_view right) {
    const std::optional<double> leftNumber = NumberOf(left);
    const std::optional<double> rightNumber = leftNumber ? NumberOf(right) : std::nullopt;
    if (leftNumber && rightNumber) {
        const int order = *leftNumber < *rightNumber ? -1 : *leftNumber > *rightNumber ? 1 : 0;
        return HoldsFor(order, relation);
    }
    return HoldsFor(WithoutBlanksAtEnd(left).compare(WithoutBlanksAtEnd(right)), relation);
}

std::size_t LengthOf(const CodePage& codePage, std::string_view text) {
    const Lexer lexer(codePage, text);
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size(); i = lexer.CharacterEnd(i)) ++length;
    return length;
}

std::string_view Substring(const CodePage& codePage, std::string_view text, std::size_t from,
                           std::size_t length) {
    const Lexer lexer(codePage, text);
    std::size_t begin = 0;
    while (begin < text.size() && from > 1) {
        begin = lexer.CharacterEnd(begin);
        --from;
    }
    std::size_t end = begin;
    while (end < text.size() && length > 0) {
        end = lexer.CharacterEnd(end);
        --length;
    }
    return text.substr(begin, end - begin);
}

std::size_t IndexOf(const CodePage& codePage, std::string_view text, std::string_view part) {
    if (part.empty()) return 0;
    const Lexer lexer(codePage, text);
    Searcher searcher(part);
    std::size_t character = 0;  // the one that begins at or before the match
    std::size_t number = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!searcher.Add(text[i])) continue;
        const std::size_t begin = i + 1 - part.size();
        while (character < begin) {
            character = lexer.CharacterEnd(character);
            ++number;
        }
        // Bytes inside of a character are no match.
        if (character == begin) return number;
    }
    return 0;
}

std::string_view HeadOf(const CodePage& codePage, std::string_view text) {
    const Lexer lexer(codePage, text);
    return lexer.TextOf(lexer.NextToken(0));
}

std::string_view TailOf(const CodePage& codePage, std::string_view text) {
    const Lexer lexer(codePage, text);
    std::size_t begin = lexer.NextToken(0).end;
    while (begin < text.size() && IsSpace(text[begin])) ++begin;
    return text.substr(begin);
}

std::string Quoted(std::string_view text) {
    std::string quoted = "'";
    for (const char byte : text) {
        if (byte == '\'') quoted += byte;
        quoted += byte;
    }
    return quoted + '\'';
}

std::string Unquoted(const CodePage& codePage, std::string_view text) {
    if (text.empty() || !IsQuote(text.front())) return std::string(text);
    bool isClosed = false;
    const std::size_t end = Lexer(codePage, text).LiteralEnd(0, isClosed);
    if (!isClosed || end != text.size()) return std::string(text);
    return LiteralContents(text);
}

}  // namespace quillet::macro
