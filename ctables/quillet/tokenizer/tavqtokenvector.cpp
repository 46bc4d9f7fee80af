// A command's tokens are read twice: first all of them, so that whatever is wrong with one is told
// before anything is made of the others, and then whenever the parser wants one. What costs time to
// find is kept from the first reading: the values.
#include "tokenizer/tavqtokenvector.h"

#include <algorithm>
#include <string>

#include "platform/assertion.h"
#include "platform/multibyte.h"
#include "tokenizer/tokencounter.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tavqtokenvector";

// The text, and as much room after it.
std::unique_ptr<char[]> CopyWithRoom(std::string_view text) {
    auto texts = std::make_unique_for_overwrite<char[]>(2 * (text.size() + 1));
    *std::copy(text.begin(), text.end(), texts.get()) = '\0';
    return texts;
}

}  // namespace

// A sink that counts the tokens and keeps their values.
class TAVQTokenVector::Checker {
public:
    static constexpr bool kReadsAgain = false;

    Checker(TAVQTokenVector& vector, CommandBudget& budget) : m_vector(vector), m_budget(budget) {}

    [[nodiscard]] int Count() const { return m_vector.m_count; }
    [[nodiscard]] std::string_view LastValue() const { return m_lastValue; }
    [[nodiscard]] char LastFirstByte() const { return m_lastFirstByte; }

    void AddWord(const SourceRange& source) {
        const std::string_view text = source.Text();
        char* pValue = ValuePlace(text);
        std::size_t done = 0;
        for (; done < text.size() && static_cast<unsigned char>(text[done]) < 0x80; ++done) {
            pValue[done] = UpperAscii(text[done]);
        }
        if (done < text.size()) {
            KeepValue(text, TAVQMBstrupr_A(m_vector.m_codePage, text), text.size());
        } else {
            Add(source, {pValue, text.size()});
            return;
        }
        Add(source, m_vector.ValueOf(text));
    }
    void AddMacroWord(const SourceRange& source) { AddWord(source); }
    void AddNumber(const SourceRange& source, double /*value*/) { Add(source, source.Text()); }
    void AddOperator(const SourceRange& source, int /*code*/) { Add(source, source.Text()); }

    void BeginLiteral() { m_partCount = 0; }
    // Text that the literal has already is more than the command itself holds.
    void AppendToLiteral(std::string_view part, std::size_t repeated) {
        m_budget.ChargeText(repeated);
        if (m_partCount == 0) {
            m_firstPart = part;
        } else {
            if (m_partCount == 1) m_literal = m_firstPart;
            m_literal.append(part);
        }
        ++m_partCount;
    }
    void EndLiteral(const SourceRange& source) {
        if (m_partCount == 1) return Add(source, m_firstPart);
        // A value that is not longer than its source has room; its length is counted anew.
        const std::string_view text = source.Text();
        if (m_literal.size() <= text.size()) {
            std::copy(m_literal.begin(), m_literal.end(), ValuePlace(text));
        } else {
            KeepValue(text, m_literal, 0);
        }
        Add(source, m_literal);
    }

    [[nodiscard]] static bool MayLeaveUnconverted(std::string_view number) {
        return TokenCounter::MayLeaveUnconverted(number);
    }

private:
    [[nodiscard]] char* ValuePlace(std::string_view source) const {
        char* pText = m_vector.m_texts.get();
        return pText + (source.data() - pText) + m_vector.m_size + 1;
    }

    // In its place if it has the `fitting` size; otherwise elsewhere.
    void KeepValue(std::string_view source, std::string_view value, std::size_t fitting) {
        if (value.size() == fitting) {
            std::copy(value.begin(), value.end(), ValuePlace(source));
        } else {
            m_vector.m_otherValues.push_back({source.data(), m_vector.m_arena.Keep(value)});
        }
    }

    // Only the first tokens tell the kind of a command.
    void Add(const SourceRange& source, std::string_view value) {
        if (m_vector.m_count < kTokensForKind) {
            m_lastFirstByte = *source.pBegin;
            m_lastValue = value;
        }
        ++m_vector.m_count;
    }

    TAVQTokenVector& m_vector;
    CommandBudget& m_budget;
    std::string m_lastValue;
    char m_lastFirstByte = '\0';
    std::string_view m_firstPart;  // of the literal
    std::string m_literal;         // all of it, if it has several parts
    int m_partCount = 0;
};

void TAVQTokenVector::Reader::AddWord(const SourceRange& source) {
    Add(TokenCodes::kString, source);
    m_token.texts.value = m_vector.ValueOf(m_token.texts.source);
    m_token.operatorCode = ReservedWordOperator(m_token.texts.value);
}

void TAVQTokenVector::Reader::AddMacroWord(const SourceRange& source) {
    Add(TokenCodes::kString, source);
    m_token.texts.value = m_vector.ValueOf(m_token.texts.source);
}

void TAVQTokenVector::Reader::AddNumber(const SourceRange& source, double value) {
    Add(TokenCodes::kNumber, source);
    m_token.number = value;
}

void TAVQTokenVector::Reader::AddOperator(const SourceRange& source, int code) {
    Add(TokenCodes::kOperator, source);
    m_token.operatorCode = code;
}

void TAVQTokenVector::Reader::BeginLiteral() {
    m_literalSize = 0;
    m_partCount = 0;
}

void TAVQTokenVector::Reader::AppendToLiteral(std::string_view part, std::size_t /*repeated*/) {
    if (m_partCount++ == 0) m_firstPart = part;
    m_literalSize += part.size();
}

void TAVQTokenVector::Reader::EndLiteral(const SourceRange& source) {
    Add(TokenCodes::kLiteral, source);
    std::string_view& value = m_token.texts.value;
    if (m_partCount == 1) {
        value = m_firstPart;
    } else {
        value = m_vector.ValueOf(source.Text());
        if (m_literalSize < value.size()) value = value.substr(0, m_literalSize);
    }
}

void TAVQTokenVector::Reader::Add(TokenCodes::TokenType type, const SourceRange& source) {
    ++m_count;
    m_token.type = type;
    m_token.operatorCode = TokenCodes::kNotOperator;
    m_token.texts = {source.Text(), source.Text()};
    m_token.number = 0.0;
    m_token.line = source.line;
    m_token.column = source.column;
}

TAVQTokenVector::TAVQTokenVector(const CodePage& codePage, std::string_view text,
                                 bool skipLeadingSign, int maxTokens, CommandBudget& budget,
                                 Arena& arena)
    : m_codePage(codePage),
      m_arena(arena),
      m_texts(CopyWithRoom(text)),
      m_size(text.size()),
      m_reader(*this, m_token),
      m_scanner(codePage, {m_texts.get(), m_size}, m_reader),
      m_recent{PlacedToken{-1, m_scanner.Here()}, PlacedToken{-1, m_scanner.Here()},
               PlacedToken{-1, m_scanner.Here()}, PlacedToken{-1, m_scanner.Here()},
               PlacedToken{-1, m_scanner.Here()}, PlacedToken{-1, m_scanner.Here()},
               PlacedToken{-1, m_scanner.Here()}, PlacedToken{-1, m_scanner.Here()}},
      m_jumps{m_recent[0], m_recent[0], m_recent[0], m_recent[0]} {
    CheckText(skipLeadingSign, maxTokens, budget);
}

void TAVQTokenVector::CheckText(bool skipLeadingSign, int maxTokens, CommandBudget& budget) {
    Checker checker(*this, budget);
    TokenScanner scanner(m_codePage, std::string_view(m_texts.get(), m_size), checker);
    scanner.Begin(skipLeadingSign);
    m_milestones.push_back(scanner.Here());
    m_scanner.GoTo(m_milestones.front());
    while (scanner.Step(maxTokens)) {
        const auto milestones = static_cast<int>(m_milestones.size());
        if (m_count == milestones * kMilestone) m_milestones.push_back(scanner.Here());
    }
    m_state = scanner.State();
}

const ScannedToken* TAVQTokenVector::At(int index) {
    if (!QUILLET_ASSERT(0 <= index && index < Count(),
                        "0 <= index && index < (int)m_TokVec.size()")) {
        return nullptr;
    }
    if (index == m_index) return &m_token;
    if (index != m_index + 1) JumpTo(index);
    ReadNext();
    return &m_token;
}

// The token that `m_index` is one before; there is one. What is no token is a comma.
void TAVQTokenVector::ReadNext() {
    ++m_index;
    m_recent[static_cast<std::size_t>(m_index) % kRecentTokens] = {m_index, m_scanner.Here()};
    const int count = m_reader.Count();
    while (m_reader.Count() == count) {
        m_scanner.SkipSeparators();
        m_scanner.ReadToken();
    }
}

// Goes to the place before the token at `index`.
void TAVQTokenVector::JumpTo(int index) {
    const std::size_t leftAt = static_cast<std::size_t>(std::max(m_index, 0)) % kRecentTokens;
    const PlacedToken left = m_recent[leftAt];
    if (const ScannerPlace* pPlace = FindPlace(index)) {
        m_scanner.GoTo(*pPlace);
        m_index = index - 1;
    } else {
        const int milestone = index / kMilestone;
        if (m_index >= index || m_index < milestone * kMilestone) {
            m_scanner.GoTo(m_milestones[static_cast<std::size_t>(milestone)]);
            m_index = milestone * kMilestone - 1;
        }
        while (m_index + 1 < index) ReadNext();
    }
    m_jumps = {left, {index, m_scanner.Here()}, m_jumps[0], m_jumps[1]};
}

// The place before the token at `index`, if it is one of those remembered.
const ScannerPlace* TAVQTokenVector::FindPlace(int index) const {
    const PlacedToken& recent = m_recent[static_cast<std::size_t>(index) % kRecentTokens];
    if (recent.index == index) return &recent.place;
    for (const PlacedToken& token : m_jumps) {
        if (token.index == index) return &token.place;
    }
    return nullptr;
}

// The value that the first reading has put next to the source, or elsewhere.
std::string_view TAVQTokenVector::ValueOf(std::string_view source) const {
    if (!m_otherValues.empty()) {
        const auto found = std::lower_bound(
            m_otherValues.begin(), m_otherValues.end(), source.data(),
            [](const OtherValue& other, const char* pSource) { return other.pSource < pSource; });
        if (found != m_otherValues.end() && found->pSource == source.data()) return found->value;
    }
    return {source.data() + m_size + 1, source.size()};
}

bool TAVQTokenVector::FindPosition(std::string_view source, int& line, int& column) {
    // The last milestone that is not after it is where to begin.
    const auto next = std::upper_bound(m_milestones.begin() + 1, m_milestones.end(), source.data(),
                                       [](const char* pSource, const ScannerPlace& place) {
                                           return pSource < place.cursor.Position();
                                       });
    const auto milestone = static_cast<int>(next - m_milestones.begin()) - 1;
    const int end = std::min(Count(), (milestone + 1) * kMilestone);
    for (int index = milestone * kMilestone; index < end; ++index) {
        const ScannedToken* pToken = At(index);
        if (pToken == nullptr || pToken->texts.source.data() != source.data()) continue;
        line = pToken->line;
        column = pToken->column;
        return true;
    }
    return false;
}

}  // namespace quillet
