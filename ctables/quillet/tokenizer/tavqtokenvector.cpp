#include "tokenizer/tavqtokenvector.h"

#include <utility>

#include "platform/assertion.h"
#include "platform/multibyte.h"
#include "tokenizer/tokenscanner.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tavqtokenvector";

}  // namespace

// A sink that builds every token.
class TAVQTokenVector::Keeper {
public:
    Keeper(const CodePage& codePage, Arena& arena, Tokens& tokens, CommandBudget& budget)
        : m_codePage(codePage), m_arena(arena), m_tokens(tokens), m_budget(budget) {}

    [[nodiscard]] int Count() const { return static_cast<int>(m_tokens.size()); }
    [[nodiscard]] std::string_view LastValue() const { return m_tokens.back()->Text(false); }
    [[nodiscard]] char LastFirstByte() const { return m_tokens.back()->Text(true).front(); }

    void AddWord(const SourceRange& source) {
        std::string value = TAVQMBstrupr_A(m_codePage, source.Text());
        const int operatorCode = ReservedWordOperator(value);
        Add<TAVQStringToken>(source, std::move(value), operatorCode);
    }
    void AddMacroWord(const SourceRange& source) {
        Add<TAVQStringToken>(source, TAVQMBstrupr_A(m_codePage, source.Text()),
                             static_cast<int>(TokenCodes::kNotOperator));
    }
    void AddNumber(const SourceRange& source, double value) { Add<TAVQNumberToken>(source, value); }
    void AddOperator(const SourceRange& source, int code) { Add<TAVQOperatorToken>(source, code); }

    void BeginLiteral() { m_literal.clear(); }
    // Text that the literal has already is more than the command itself holds.
    void AppendToLiteral(std::string_view part, std::size_t repeated) {
        m_budget.ChargeText(repeated);
        m_literal.append(part);
    }
    void EndLiteral(const SourceRange& source) { Add<TAVQLiteralToken>(source, m_literal); }

    // Numbers are always converted, their value is wanted.
    [[nodiscard]] static bool MayLeaveUnconverted(std::string_view /*number*/) { return false; }

private:
    template <class Token, class... Arguments>
    void Add(const SourceRange& source, Arguments&&... arguments) {
        std::unique_ptr<TAVQToken, Destroy> token(
            m_arena.New<Token>(source.pBegin, source.pEnd, source.line, source.column,
                               std::forward<Arguments>(arguments)...));
        m_tokens.push_back(std::move(token));
    }

    const CodePage& m_codePage;
    Arena& m_arena;
    Tokens& m_tokens;
    CommandBudget& m_budget;
    std::string m_literal;
};

TAVQTokenVector::TAVQTokenVector(const CodePage& codePage, std::string_view text,
                                 bool skipLeadingSign, int maxTokens, CommandBudget& budget) {
    Read(codePage, text, skipLeadingSign, maxTokens, budget);
}

TAVQTokenVector::TAVQTokenVector(const CodePage& codePage, std::string_view text,
                                 bool skipLeadingSign, int maxTokens) {
    CommandBudget budget;
    Read(codePage, text, skipLeadingSign, maxTokens, budget);
}

void TAVQTokenVector::Read(const CodePage& codePage, std::string_view text, bool skipLeadingSign,
                           int maxTokens, CommandBudget& budget) {
    if (text.data() == nullptr) return;
    Keeper keeper(codePage, m_arena, m_TokVec, budget);
    m_state = TokenScanner(codePage, text, keeper).Run(skipLeadingSign, maxTokens);
}

const TAVQToken* TAVQTokenVector::At(int index) const {
    if (!QUILLET_ASSERT(0 <= index && index < Count(),
                        "0 <= index && index < (int)m_TokVec.size()")) {
        return nullptr;
    }
    return m_TokVec[static_cast<std::size_t>(index)].get();
}

}  // namespace quillet
