#include "tokenizer/tavqtokensequence.h"

#include <ostream>

#include "platform/assertion.h"
#include "tokenizer/commandend.h"
#include "tokenizer/tavqtokenvector.h"
#include "tokenizer/variablenames.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tavqtokensequence";

// Lends `text` out, or null and 0 when there is none.
std::size_t Lend(const std::string_view* pText, const char*& chars, std::size_t& length) {
    chars = pText != nullptr ? pText->data() : nullptr;
    length = pText != nullptr ? pText->size() : 0;
    return length;
}

}  // namespace

struct TAVQTokenSequence::Implementation {
    unsigned m_curr = 0;       // the current token; the count at the end
    unsigned m_nextIndex = 0;  // the token that the next advance makes current
    TAVQTokenVector m_tokenVec;
    const CodePage& m_codePage;
    const ScannedToken* m_pToken = nullptr;  // the current token; null at the end

    void GoTo(unsigned index) {
        m_curr = index;
        const auto position = static_cast<int>(index);
        m_pToken = position < m_tokenVec.Count() ? m_tokenVec.At(position) : nullptr;
    }
};

TAVQTokenSequence::TAVQTokenSequence(const CodePage& codePage, const std::string& text,
                                     bool skipLeadingSign, int maxTokens)
    : m_pImp(new Implementation{
          0, 0, TAVQTokenVector(codePage, text, skipLeadingSign, maxTokens, Budget(), Memory()),
          codePage}) {
    m_pImp->GoTo(0);
}

TAVQTokenSequence::~TAVQTokenSequence() = default;

const ScannedToken* TAVQTokenSequence::Current() const { return m_pImp->m_pToken; }

bool TAVQTokenSequence::Next() {
    const auto count = static_cast<unsigned>(m_pImp->m_tokenVec.Count());
    if (m_pImp->m_nextIndex >= count) {
        m_pImp->GoTo(count);
        return false;
    }
    m_pImp->GoTo(m_pImp->m_nextIndex++);
    return true;
}

int TAVQTokenSequence::CurrentIndex() const { return static_cast<int>(m_pImp->m_curr); }

void TAVQTokenSequence::SetNextIndex(int index) {
    m_pImp->m_nextIndex = static_cast<unsigned>(index);
}

int TAVQTokenSequence::Count() const { return m_pImp->m_tokenVec.Count(); }

int TAVQTokenSequence::Type() const {
    const ScannedToken* pToken = Current();
    return pToken != nullptr ? pToken->type : kAtEnd;
}

int TAVQTokenSequence::Operator() const {
    const ScannedToken* pToken = Current();
    return pToken != nullptr ? pToken->operatorCode : kNotOperator;
}

std::size_t TAVQTokenSequence::GetText(const char*& chars, std::size_t& length) const {
    const ScannedToken* pToken = Current();
    if (pToken != nullptr && pToken->type != kLiteral) return GetSourceText(chars, length);
    return GetValueText(chars, length);
}

std::size_t TAVQTokenSequence::GetValueText(const char*& chars, std::size_t& length) const {
    const ScannedToken* pToken = Current();
    return Lend(pToken != nullptr ? &pToken->texts.value : nullptr, chars, length);
}

double TAVQTokenSequence::NumberValue() const {
    const ScannedToken* pToken = Current();
    return pToken != nullptr ? pToken->number : 0.0;
}

int TAVQTokenSequence::Line() const {
    const ScannedToken* pToken = Current();
    if (!QUILLET_ASSERT(pToken != nullptr, "m_pImp->m_curr < m_pImp->m_tokenVec.Count()")) return 0;
    return pToken->line;
}

int TAVQTokenSequence::Column() const {
    const ScannedToken* pToken = Current();
    return pToken != nullptr ? pToken->column : 0;
}

std::size_t TAVQTokenSequence::GetSourceText(const char*& chars, std::size_t& length) const {
    const ScannedToken* pToken = Current();
    return Lend(pToken != nullptr ? &pToken->texts.source : nullptr, chars, length);
}

void TAVQTokenSequence::DumpCurrent(std::ostream& stream) const {
    const ScannedToken* pToken = Current();
    if (pToken == nullptr) return;
    TAVQToken(pToken->type, pToken->texts).Dump(stream, 0, pToken->line, pToken->column);
}

int TAVQTokenSequence::CompareCurrent(std::string_view text, std::size_t count) const {
    const ScannedToken* pToken = Current();
    return pToken != nullptr ? CompareTextPrefix(pToken->texts.value, text, count) : -1;
}

// Few tokens have texts that the token itself cannot find.
TAVQToken TAVQTokenSequence::CloneCurrent() {
    const ScannedToken* pToken = Current();
    if (pToken == nullptr) return {};
    if (const auto token = TAVQToken::Of(pToken->type, pToken->texts)) return *token;
    return {pToken->type, *Memory().New<TokenTexts>(pToken->texts)};
}

bool TAVQTokenSequence::FindPosition(std::string_view source, int& line, int& column) {
    const bool isFound = m_pImp->m_tokenVec.FindPosition(source, line, column);
    m_pImp->GoTo(m_pImp->m_curr);
    return isFound;
}

CommandKind TAVQTokenSequence::CommandKind() const { return KindOf(m_pImp->m_tokenVec.State()); }

int TAVQTokenSequence::CurrentNameClass() const {
    return VariableNameClass(m_pImp->m_codePage, *this);
}

bool TAVQTokenSequence::IsEndData(const CodePage& codePage, std::string_view line) {
    return IsEndDataLine(codePage, line);
}

std::ptrdiff_t TAVQTokenSequence::FindCommandEnd(const CodePage& codePage, std::string_view lines,
                                                 bool isFreeText) {
    return FindCommandEndIn(codePage, lines, isFreeText);
}

}  // namespace quillet
