// A sink for tokens of which nobody wants more than their number and the kind of the command.
#ifndef QUILLET_TOKENIZER_TOKENCOUNTER_H
#define QUILLET_TOKENIZER_TOKENCOUNTER_H

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/codepage.h"
#include "platform/multibyte.h"
#include "tokenizer/commandkind.h"
#include "tokenizer/tavqtoken.h"
#include "tokenizer/tokenscanner.h"

namespace quillet {

/// A decimal number of at most this many bytes and without an exponent can neither be out of range
/// nor end early.
inline constexpr std::size_t kShortNumber = 15;

/// Counts the tokens. Of those that decide the command's kind it remembers where they are, and
/// makes a value of them only when it is asked for.
class TokenCounter {
public:
    /// `codePage` is borrowed.
    explicit TokenCounter(const CodePage& codePage) : m_codePage(codePage) {}

    [[nodiscard]] int Count() const { return m_count; }
    [[nodiscard]] std::string LastValue() const { return ValueOf(m_last, m_literal); }
    [[nodiscard]] char LastFirstByte() const { return m_last.text.front(); }

    /// The beginning of the first token's value text; empty without a token.
    [[nodiscard]] std::string FirstValue() const { return ValueOf(m_first, m_firstLiteral); }
    [[nodiscard]] bool FirstIsLiteral() const { return m_first.type == TokenCodes::kLiteral; }

    void AddWord(const SourceRange& source) { Add(source, TokenCodes::kString); }
    void AddMacroWord(const SourceRange& source) { Add(source, TokenCodes::kString); }
    void AddNumber(const SourceRange& source, double /*value*/) {
        Add(source, TokenCodes::kNumber);
    }
    void AddOperator(const SourceRange& source, int /*code*/) {
        Add(source, TokenCodes::kOperator);
    }

    void BeginLiteral() { m_literal.clear(); }
    void AppendToLiteral(std::string_view part, std::size_t /*repeated*/) {
        if (m_count >= kTokensForKind || m_literal.size() >= kValueBytes) return;
        m_literal.append(part.substr(0, kValueBytes));
    }
    void EndLiteral(const SourceRange& source) {
        if (m_count == 0) m_firstLiteral = m_literal;
        Add(source, TokenCodes::kLiteral);
    }

    static constexpr bool kReadsAgain = false;
    [[nodiscard]] static bool MayLeaveUnconverted(std::string_view number) {
        return number.size() <= kShortNumber &&
               number.find_first_of("eE") == std::string_view::npos;
    }

private:
    // Longer than every text that a value is compared with, whatever the comparison's length.
    static constexpr std::size_t kValueBytes = 8;

    struct SeenToken {
        std::string_view text;
        TokenCodes::TokenType type = TokenCodes::kAtEnd;
    };

    void Add(const SourceRange& source, TokenCodes::TokenType type) {
        if (m_count < kTokensForKind) {
            m_last = {source.Text(), type};
            if (m_count == 0) m_first = m_last;
        }
        ++m_count;
    }

    // The beginning of the token's value; `literal` is what it is for a literal.
    [[nodiscard]] std::string ValueOf(const SeenToken& token, const std::string& literal) const {
        if (token.type == TokenCodes::kLiteral) return literal;
        const std::string_view text = TAVQMBStringTruncate_A(m_codePage, token.text, kValueBytes);
        return token.type == TokenCodes::kString ? TAVQMBstrupr_A(m_codePage, text)
                                                 : std::string(text);
    }

    const CodePage& m_codePage;
    int m_count = 0;
    SeenToken m_first;
    SeenToken m_last;
    std::string m_firstLiteral;
    std::string m_literal;
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TOKENCOUNTER_H
