// What a list becomes is found out by looking: the command is converted with one element and with
// two, and what is there once more belongs to the second.
#include "driver/bodytemplate.h"

#include <algorithm>

#include "platform/multibyte.h"

namespace quillet {

namespace {

constexpr std::size_t kMostTemplateTokens = 3000;
constexpr std::size_t kMostRepeatedTokens = 300;

std::string Lower(std::string_view text) {
    std::string result(text);
    for (char& character : result) character = LowerAscii(character);
    return result;
}

// `text`, in lower case, with the names of the first pass exchanged by those of the second.
std::string InSecondPass(std::string text, const PassNames& names) {
    for (const auto& [first, second] : names) {
        std::size_t position = text.find(first);
        while (position != std::string::npos) {
            text.replace(position, first.size(), second);
            position = text.find(first, position + second.size());
        }
    }
    return text;
}

class RepeatedPartFinder {
public:
    RepeatedPartFinder(const std::vector<TemplateToken>& once,
                       const std::vector<TemplateToken>& twice, const PassNames& names) {
        for (const TemplateToken& token : once) {
            m_once.push_back(Lower(token.text));
            m_next.push_back(InSecondPass(m_once.back(), names));
        }
        for (const TemplateToken& token : twice) m_twice.push_back(Lower(token.text));
    }

    std::optional<std::vector<RepeatedPart>> Run() {
        std::size_t inOnce = 0;
        std::size_t inTwice = 0;
        while (inOnce < m_once.size() || inTwice < m_twice.size()) {
            if (inOnce < m_once.size() && inTwice < m_twice.size() &&
                m_once[inOnce] == m_twice[inTwice]) {
                ++inOnce;
                ++inTwice;
                continue;
            }
            const std::size_t length = FindInsertion(inOnce, inTwice);
            if (length == 0) return std::nullopt;
            inTwice += length;
        }
        return std::move(m_parts);
    }

private:
    // The length of what `m_twice` has in addition at a place; 0 when it is no repetition.
    std::size_t FindInsertion(std::size_t inOnce, std::size_t inTwice) {
        const std::size_t restOnce = m_once.size() - inOnce;
        const std::size_t restTwice = m_twice.size() - inTwice;
        if (restTwice <= restOnce) return 0;
        const std::size_t most = std::min(restTwice - restOnce, kMostRepeatedTokens);
        for (std::size_t length = 1; length <= most; ++length) {
            if (GoesOn(inOnce, inTwice + length) && AddPart(inOnce, inTwice, length)) return length;
        }
        return 0;
    }

    [[nodiscard]] bool GoesOn(std::size_t inOnce, std::size_t inTwice) const {
        constexpr std::size_t kLookahead = 4;
        const std::size_t count = std::min(m_once.size() - inOnce, kLookahead);
        for (std::size_t i = 0; i < count; ++i) {
            if (m_once[inOnce + i] != m_twice[inTwice + i]) return false;
        }
        return true;
    }

    // What is in addition may as well begin some tokens before, where the same ones follow it.
    bool AddPart(std::size_t inOnce, std::size_t inTwice, std::size_t length) {
        const std::size_t lastEnd = m_parts.empty() ? 0 : m_parts.back().end;
        for (std::size_t shift = 0; shift <= length && shift + lastEnd <= inOnce; ++shift) {
            if (shift > 0 && m_once[inOnce - shift] != m_twice[inTwice + length - shift]) {
                return false;
            }
            for (const std::size_t separators : {std::size_t{0}, std::size_t{1}}) {
                if (separators >= length) continue;
                const std::size_t size = length - separators;
                if (inOnce < shift + size + lastEnd) continue;
                const std::size_t begin = inOnce - shift - size;
                const std::size_t added = inTwice - shift;
                if (!IsRepeated(begin, added + separators, size)) continue;
                RepeatedPart part{begin, begin + size, {}};
                if (separators > 0) part.separator = m_twice[added];
                m_parts.push_back(std::move(part));
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] bool IsRepeated(std::size_t begin, std::size_t inTwice, std::size_t size) const {
        bool hasName = false;
        for (std::size_t i = 0; i < size; ++i) {
            if (m_next[begin + i] != m_twice[inTwice + i]) return false;
            if (m_next[begin + i] != m_once[begin + i]) hasName = true;
        }
        return hasName;
    }

    std::vector<std::string> m_once;
    std::vector<std::string> m_next;  // the same in the second pass
    std::vector<std::string> m_twice;
    std::vector<RepeatedPart> m_parts;
};

}  // namespace

std::vector<TemplateToken> TokensOfTemplate(std::string_view text, const CodePage& codePage) {
    const macro::Lexer lexer(codePage, text);
    std::vector<TemplateToken> tokens;
    std::size_t end = 0;
    while (true) {
        const macro::Token token = lexer.NextToken(end);
        if (token.kind == macro::TokenKind::kEnd) return tokens;
        TemplateToken next;
        next.space = text.substr(end, token.begin - end);
        next.text = lexer.TextOf(token);
        next.kind = token.kind;
        tokens.push_back(std::move(next));
        end = token.end;
    }
}

std::optional<std::vector<RepeatedPart>> FindRepeatedParts(const std::vector<TemplateToken>& once,
                                                           const std::vector<TemplateToken>& twice,
                                                           const PassNames& names) {
    if (twice.size() > kMostTemplateTokens) return std::nullopt;
    return RepeatedPartFinder(once, twice, names).Run();
}

}  // namespace quillet
