#include "driver/bodyproof.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "macro/lexer.h"

namespace quillet {

namespace {

using macro::Lexer;
using macro::Token;
using macro::TokenKind;

// What is compared. Two tokens are the same when these are.
struct ProofToken {
    std::string text;  // names in capitals
    // No blank stands before it where one could make a difference: "a1" and "a 1", "<=" and "< =".
    bool isGlued = false;
    TokenKind kind = TokenKind::kOther;

    bool operator==(const ProofToken& other) const = default;
};

using ProofTokens = std::vector<ProofToken>;

bool IsWordToken(TokenKind kind) { return kind != TokenKind::kOther && kind != TokenKind::kEnd; }

bool IsSignToken(const ProofToken& token) {
    constexpr std::string_view kSigns = "<>=~*&|^+-";
    return token.kind == TokenKind::kOther && token.text.size() == 1 &&
           kSigns.find(token.text.front()) != std::string_view::npos;
}

bool IsPeriodToken(const ProofToken& token) {
    return token.kind == TokenKind::kOther && token.text == ".";
}

void AddTokens(std::string_view text, const CodePage& codePage, ProofTokens& tokens) {
    const Lexer lexer(codePage, text);
    std::size_t end = 0;
    const std::size_t first = tokens.size();
    while (true) {
        const Token token = lexer.NextToken(end);
        if (token.kind == TokenKind::kEnd) break;
        ProofToken next;
        next.kind = token.kind;
        const bool isName =
            token.kind == TokenKind::kIdentifier || token.kind == TokenKind::kMacroWord;
        const std::string_view bytes = lexer.TextOf(token);
        next.text = isName ? macro::Capitals(codePage, bytes) : std::string(bytes);
        if (tokens.size() > first && token.begin == end) {
            const ProofToken& last = tokens.back();
            next.isGlued = (IsWordToken(last.kind) && IsWordToken(next.kind)) ||
                           (IsSignToken(last) && IsSignToken(next));
        }
        tokens.push_back(std::move(next));
        end = token.end;
    }
    // A command is over where its piece is.
    if (tokens.size() > first && !IsPeriodToken(tokens.back())) tokens.push_back({".", false});
}

// A CATEGORIES subcommand, the tokens [begin, end).
struct Categories {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::vector<std::string> variables;
};

class CategoriesSorter {
public:
    explicit CategoriesSorter(ProofTokens& tokens) : m_tokens(tokens) {}

    // Puts each run of CATEGORIES subcommands into one order, the same for all runs that differ in
    // nothing but an order that does not count.
    void Run() {
        std::vector<Categories> run;
        std::size_t position = 0;
        while (position < m_tokens.size()) {
            Categories categories;
            if (Read(position, categories)) {
                position = categories.end;
                run.push_back(std::move(categories));
            } else {
                Sort(run);
                run.clear();
                ++position;
            }
        }
        Sort(run);
    }

private:
    [[nodiscard]] bool IsText(std::size_t position, std::string_view text) const {
        return position < m_tokens.size() && m_tokens[position].text == text;
    }

    // Those of ALL variables, and of a range of them, have to stay where they are.
    [[nodiscard]] bool Read(std::size_t position, Categories& categories) const {
        if (!IsText(position, "/") || !IsText(position + 1, "CATEGORIES")) return false;
        if (!IsText(position + 2, "VAR") && !IsText(position + 2, "VARIABLES")) return false;
        if (!IsText(position + 3, "=")) return false;
        categories.begin = position;
        position += 4;
        for (; position < m_tokens.size(); ++position) {
            if (m_tokens[position].kind != TokenKind::kIdentifier || IsText(position + 1, "=")) {
                break;
            }
            const std::string& name = m_tokens[position].text;
            if (name == "ALL" || name == "TO") return false;
            categories.variables.push_back(name);
        }
        while (position < m_tokens.size() && !IsText(position, "/") &&
               !IsPeriodToken(m_tokens[position])) {
            ++position;
        }
        categories.end = position;
        return !categories.variables.empty();
    }

    [[nodiscard]] std::string TextOf(const Categories& categories) const {
        std::string text;
        for (std::size_t i = categories.begin; i < categories.end; ++i) {
            text.append(m_tokens[i].text).append(1, '\n');
        }
        return text;
    }

    // Of those that may come next the one with the smallest text does. Two that share a variable
    // keep their order.
    void Sort(const std::vector<Categories>& run) {
        if (run.size() < 2) return;
        std::vector<std::vector<std::size_t>> followers(run.size());
        std::vector<std::size_t> waits(run.size());
        std::unordered_map<std::string, std::size_t> lastOf;
        for (std::size_t i = 0; i < run.size(); ++i) {
            for (const std::string& variable : run[i].variables) {
                const auto [place, isNew] = lastOf.try_emplace(variable, i);
                if (isNew || place->second == i) continue;
                followers[place->second].push_back(i);
                ++waits[i];
                place->second = i;
            }
        }
        using Entry = std::pair<std::string, std::size_t>;
        std::priority_queue<Entry, std::vector<Entry>, std::greater<>> ready;
        for (std::size_t i = 0; i < run.size(); ++i) {
            if (waits[i] == 0) ready.emplace(TextOf(run[i]), i);
        }
        ProofTokens sorted;
        while (!ready.empty()) {
            const std::size_t next = ready.top().second;
            ready.pop();
            for (std::size_t i = run[next].begin; i < run[next].end; ++i) {
                sorted.push_back(m_tokens[i]);
            }
            for (const std::size_t follower : followers[next]) {
                if (--waits[follower] == 0) ready.emplace(TextOf(run[follower]), follower);
            }
        }
        std::move(sorted.begin(), sorted.end(),
                  m_tokens.begin() + static_cast<std::ptrdiff_t>(run.front().begin));
    }

    ProofTokens& m_tokens;
};

ProofTokens TokensOf(const ConvertedCommands& commands, const CodePage& codePage) {
    ProofTokens tokens;
    for (const ConvertedPiece& piece : commands.pieces) {
        const bool isPlain =
            piece.type == CommandType::kDocument || piece.type == CommandType::kInlineData;
        if (isPlain) {
            tokens.push_back({piece.text, false, TokenKind::kLiteral});
        } else {
            AddTokens(piece.text, codePage, tokens);
        }
    }
    CategoriesSorter(tokens).Run();
    return tokens;
}

// A few tokens, enough to find the place.
std::string Excerpt(const ProofTokens& tokens, std::size_t position) {
    constexpr std::size_t kMostShown = 8;
    constexpr std::size_t kMostBytes = 120;
    std::string text;
    const std::size_t end = std::min(tokens.size(), position + kMostShown);
    for (std::size_t i = position; i < end && text.size() < kMostBytes; ++i) {
        if (i != position && !tokens[i].isGlued) text += ' ';
        text += tokens[i].text;
    }
    return text;
}

}  // namespace

std::optional<TextDifference> FindDifference(const ConvertedCommands& expected,
                                             const ConvertedCommands& found,
                                             const CodePage& codePage) {
    const ProofTokens first = TokensOf(expected, codePage);
    const ProofTokens second = TokensOf(found, codePage);
    const auto [inFirst, inSecond] =
        std::mismatch(first.begin(), first.end(), second.begin(), second.end());
    if (inFirst == first.end() && inSecond == second.end()) return std::nullopt;
    const auto position = static_cast<std::size_t>(inFirst - first.begin());
    return TextDifference{Excerpt(first, position), Excerpt(second, position)};
}

}  // namespace quillet
