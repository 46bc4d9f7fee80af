// A conversion keeps tokens that know neither where they stand in the text nor what stands between
// them. Whoever tells people what they asked for needs both.
#include "outline/commandtokens.h"

#include <algorithm>
#include <utility>

#include "platform/commandbudget.h"
#include "platform/multibyte.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tokenscanner.h"
#include "tokenizer/variablenames.h"
#include "tokenizer/words.h"

namespace quillet::outline {

namespace {

constexpr std::size_t kMostRemarkBytes = 200;
constexpr std::string_view kUnseen(" \t\r\n\0", 5);

const char* EndOf(std::string_view text) { return text.data() + text.size(); }

std::string_view Between(const char* pBegin, const char* pEnd) {
    return {pBegin, static_cast<std::size_t>(pEnd - pBegin)};
}

bool IsLineBreak(char character) { return character == '\n' || character == '\r'; }

// CR LF and LF CR are one line break each.
long LineBreaksIn(std::string_view text) {
    long count = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!IsLineBreak(text[at])) continue;
        ++count;
        const bool isPair =
            at + 1 < text.size() && IsLineBreak(text[at + 1]) && text[at] != text[at + 1];
        if (isPair) ++at;
    }
    return count;
}

// A sink that keeps the tokens and where they stand.
class TokenKeeper {
public:
    // What is wrong with a number is told by the conversion.
    static constexpr bool kReadsAgain = true;

    TokenKeeper(const CodePage& codePage, const std::string& text,
                std::vector<CommandToken>& tokens)
        : m_codePage(codePage), m_tokens(tokens), m_pLineEnd(text.data()) {}

    [[nodiscard]] int Count() const { return m_count; }
    [[nodiscard]] std::string_view LastValue() const {
        return m_tokens.empty() ? std::string_view() : m_tokens.back().value;
    }
    [[nodiscard]] char LastFirstByte() const {
        return m_tokens.empty() ? '\0' : m_tokens.back().source.front();
    }

    void AddWord(const SourceRange& source) {
        Add(TokenCodes::kString, source, TAVQMBstrupr_A(m_codePage, source.Text()));
        m_tokens.back().operatorCode = ReservedWordOperator(m_tokens.back().value);
    }
    void AddMacroWord(const SourceRange& source) {
        Add(TokenCodes::kString, source, TAVQMBstrupr_A(m_codePage, source.Text()));
    }
    void AddNumber(const SourceRange& source, double /*value*/) {
        if (!m_tokens.empty() && IsSign(m_tokens.back())) {
            CommandToken& token = m_tokens.back();
            token.type = TokenCodes::kNumber;
            token.operatorCode = TokenCodes::kNotOperator;
            token.value.append(source.Text());
            token.source = Between(token.source.data(), source.pEnd);
            ++m_count;
            return;
        }
        Add(TokenCodes::kNumber, source, std::string(source.Text()));
    }
    void AddOperator(const SourceRange& source, int code) {
        if (code == TokenCodes::kSlash && ClosesComment(source.pBegin)) {
            ++m_count;
            return;
        }
        Add(TokenCodes::kOperator, source, std::string(source.Text()));
        m_tokens.back().operatorCode = code;
    }

    void BeginLiteral() { m_literal.clear(); }
    void AppendToLiteral(std::string_view part, std::size_t repeated) {
        m_budget.ChargeText(repeated);
        m_literal.append(part);
    }
    // What follows the last quote is white space, or a "+" without effect.
    void EndLiteral(const SourceRange& source) {
        Add(TokenCodes::kLiteral, source, m_literal);
        std::string_view& kept = m_tokens.back().source;
        kept = kept.substr(0, kept.find_last_of("'\"") + 1);
    }

    // The value is not asked for; that it is out of range has been told by whoever converted it.
    [[nodiscard]] static bool MayLeaveUnconverted(std::string_view /*number*/) { return true; }

    // The line of a place after all that were asked for before.
    [[nodiscard]] long LineAt(const char* pPlace) {
        m_line += LineBreaksIn(Between(m_pLineEnd, pPlace));
        m_pLineEnd = pPlace;
        return m_line;
    }

private:
    [[nodiscard]] static bool IsSign(const CommandToken& token) {
        return token.type == TokenCodes::kOperator &&
               (token.Is(TokenCodes::kPlus) || token.Is(TokenCodes::kMinus));
    }

    // The "*" of a comment's end belongs to no token.
    [[nodiscard]] bool ClosesComment(const char* pSlash) const {
        if (m_tokens.empty()) return false;
        const char* pLastEnd = EndOf(m_tokens.back().source);
        return pSlash != pLastEnd && pSlash[-1] == '*';
    }

    void Add(int type, const SourceRange& source, std::string value) {
        ++m_count;
        CommandToken& token = m_tokens.emplace_back();
        token.type = type;
        token.source = source.Text();
        token.value = std::move(value);
        token.line = LineAt(source.pBegin);
    }

    const CodePage& m_codePage;
    std::vector<CommandToken>& m_tokens;
    CommandBudget m_budget;
    std::string m_literal;
    int m_count = 0;
    const char* m_pLineEnd;  // up to where lines were counted
    long m_line = 1;
};

// The length of the comment with which a text begins: it ends where it is closed, or with the line.
std::size_t LengthOfComment(std::string_view text) {
    constexpr std::size_t kMark = 2;  // the length of what opens one, and of what closes it
    std::size_t at = kMark;
    while (at < text.size() && !IsLineBreak(text[at])) {
        if (text.substr(at, kMark) == "*/") return at + kMark;
        ++at;
    }
    return at;
}

// True when a comment and the end of the line come next: whoever reads the text takes a period
// before them for the end of the command.
bool HasOnlyComments(std::string_view after) {
    bool hasComment = false;
    while (true) {
        after.remove_prefix(std::min(after.find_first_not_of(" \t"), after.size()));
        if (after.empty() || IsLineBreak(after.front())) return hasComment;
        if (!after.starts_with("/*")) return false;
        hasComment = true;
        after.remove_prefix(LengthOfComment(after));
    }
}

// Takes away the period that ends the command for people, and what stands after it.
void EndAtPeriod(std::string_view text, CommandTokens& command) {
    std::vector<CommandToken>& tokens = command.tokens;
    for (std::size_t index = 0; index < tokens.size(); ++index) {
        CommandToken& token = tokens[index];
        if (token.IsLiteral() || !token.source.ends_with('.')) continue;
        if (!HasOnlyComments(Between(EndOf(token.source), EndOf(text)))) continue;
        if (index + 1 < tokens.size()) {
            command.rest = Between(tokens[index + 1].source.data(), EndOf(text));
            command.restLine = tokens[index + 1].line;
        }
        token.source.remove_suffix(1);
        token.value.pop_back();
        tokens.resize(index + (token.source.empty() ? 0 : 1));
        return;
    }
}

// Puts text together, one blank for any white space, up to the bytes that a remark may have.
class RemarkText {
public:
    [[nodiscard]] bool IsFull() const { return m_text.size() > kMostRemarkBytes; }

    void Append(std::string_view text) {
        for (const char character : text) {
            if (IsFull()) return;
            if (kUnseen.find(character) != std::string_view::npos) {
                AppendBlank();
            } else {
                m_text += character;
            }
        }
    }

    void AppendBlank() {
        if (!m_text.empty() && !m_text.ends_with(' ')) m_text += ' ';
    }

    [[nodiscard]] std::string Finish(const CodePage& codePage) {
        m_text.resize(TAVQMBStringTruncate_A(codePage, m_text, kMostRemarkBytes).size());
        while (m_text.ends_with(' ')) m_text.pop_back();
        return std::move(m_text);
    }

private:
    std::string m_text;
};

// What a remark shows between two tokens: commas, which are none, and blanks.
std::string_view GapAfter(const char* pLastEnd, const char* pNext) {
    if (pLastEnd == nullptr || pLastEnd > pNext) return " ";
    const std::string_view gap = Between(pLastEnd, pNext).substr(0, kMostRemarkBytes);
    return gap.find_first_not_of(", \t\r\n") == std::string_view::npos ? gap : " ";
}

}  // namespace

bool CommandToken::Means(std::string_view keyword) const {
    return IsWord() && MeansKeyword(value, keyword);
}

CommandTokens ReadCommandTokens(const CodePage& codePage, const std::string& text, bool isBatch) {
    CommandTokens command;
    TokenKeeper keeper(codePage, text, command.tokens);
    TokenScanner<TokenKeeper> scanner(codePage, text, keeper);
    bool hasStopped = false;
    try {
        static_cast<void>(scanner.Run(isBatch, 0));
    } catch (const ParseError&) {
        hasStopped = true;
    } catch (const CommandTooLarge&) {
        hasStopped = true;
    }
    // It ends as well, without a word, before NUL and before bytes that are no character.
    const char* pRest = scanner.Cursor().Position();
    if (hasStopped) {
        pRest = command.tokens.empty() ? text.data() : EndOf(command.tokens.back().source);
    }
    command.rest = Between(pRest, text.data() + text.size());
    command.rest.remove_prefix(
        std::min(command.rest.find_first_not_of(kUnseen), command.rest.size()));
    command.restLine = keeper.LineAt(command.rest.data());
    // In batch layout no period is needed, and the next command tells where this one ends.
    if (!isBatch) EndAtPeriod(text, command);
    return command;
}

std::string TextOf(const CodePage& codePage, TokenPointers tokens) {
    RemarkText text;
    const char* pEnd = nullptr;
    for (const CommandToken* pToken : tokens) {
        if (text.IsFull()) break;
        text.Append(GapAfter(pEnd, pToken->source.data()));
        text.Append(pToken->source);
        pEnd = EndOf(pToken->source);
    }
    return text.Finish(codePage);
}

std::string TextOf(const CodePage& codePage, std::string_view text) {
    RemarkText result;
    result.Append(text);
    return result.Finish(codePage);
}

Name NameOf(const CommandToken& word) { return {std::string(word.source), word.value}; }

Name KeywordName(const CodePage& codePage, const CommandToken& word, std::string_view whole) {
    return {std::string(TAVQMBStringTruncate_A(codePage, word.source, kMaxNameLength)),
            std::string(whole)};
}

Literal LiteralOf(const CommandToken& token) {
    return {token.value, token.IsNumber() ? token.value : std::string(token.source)};
}

}  // namespace quillet::outline
