#include "driver/failedcommand.h"

#include <algorithm>
#include <optional>

#include "driver/commandwords.h"
#include "driver/reasons.h"
#include "platform/commandbudget.h"
#include "platform/multibyte.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

// The command as the conversion has read it: without the period that ends it.
std::string WithoutLastPeriod(std::string_view text) {
    text = text.substr(0, text.find_last_not_of(kWhiteSpace) + 1);
    if (text.ends_with('.')) text.remove_suffix(1);
    return std::string(text);
}

PlacedToken CurrentToken(const TAVQTokenSequence& tokens, long firstLine) {
    PlacedToken token;
    token.type = tokens.Type();
    token.operatorCode = tokens.Operator();
    const char* pChars = nullptr;
    std::size_t length = 0;
    tokens.GetSourceText(pChars, length);
    token.source = {pChars, length};
    tokens.GetValueText(pChars, length);
    token.value = {pChars, length};
    token.line = firstLine + tokens.Line() - 1;
    token.column = tokens.Column();
    return token;
}

}  // namespace

bool PlacedToken::Means(std::string_view keyword) const {
    return type == TokenCodes::kString && MeansKeyword(value, keyword);
}

FailedCommand::FailedCommand(const CommandReport& report, const CodePage& codePage, bool batchMode)
    : m_report(report), m_codePage(codePage) {
    ReadTokens(batchMode);
    FindParts();
    FindError();
}

void FailedCommand::ReadTokens(bool batchMode) {
    const std::string text = WithoutLastPeriod(m_report.source);
    try {
        m_sequence = std::make_unique<TAVQTokenSequence>(m_codePage, text, batchMode, 0);
    } catch (const ParseError&) {
        return;
    } catch (const CommandTooLarge&) {
        return;
    }
    m_sequence->SetNextIndex(0);
    while (m_sequence->Next()) m_tokens.push_back(CurrentToken(*m_sequence, m_report.firstLine));
}

void FailedCommand::FindParts() {
    CommandPart part;
    for (std::size_t index = 0; index < m_tokens.size(); ++index) {
        if (!m_tokens[index].Is(TokenCodes::kSlash)) continue;
        part.end = index;
        m_parts.push_back(part);
        part.first = index + 1;
    }
    part.end = m_tokens.size();
    m_parts.push_back(part);
}

// The place is the end of what was not understood, so it is the last token that begins before.
void FailedCommand::FindError() {
    m_error = m_tokens.size();
    if (m_report.errorLine == 0) return;
    const auto after =
        std::partition_point(m_tokens.begin(), m_tokens.end(), [this](const PlacedToken& token) {
            return token.line < m_report.errorLine ||
                   (token.line == m_report.errorLine && token.column < m_report.errorColumn);
        });
    if (after != m_tokens.begin()) m_error = static_cast<std::size_t>(after - m_tokens.begin()) - 1;
}

const CommandPart* FailedCommand::ErrorPart() const {
    if (!HasErrorToken()) return nullptr;
    const auto part =
        std::partition_point(m_parts.begin(), m_parts.end(),
                             [this](const CommandPart& one) { return one.end < m_error; });
    return part == m_parts.end() ? nullptr : &*part;
}

const CommandPart* FailedCommand::BrokenPart() const {
    const CommandPart* pPart = ErrorPart();
    if (pPart == nullptr || pPart == m_parts.data() || m_error != pPart->first) return pPart;
    const CommandPart* pBefore = pPart - 1;
    const std::optional<std::string_view> name =
        FilledIn(ReasonOf(m_report.errorKind).message, m_report.message);
    const auto isNamed = [&](const CommandPart& part) {
        return name && !name->empty() && part.first < part.end && At(part.first).Means(*name);
    };
    const bool hasOperands = pPart->end - pPart->first > 2;
    return isNamed(*pPart) && (!hasOperands || !isNamed(*pBefore)) ? pPart : pBefore;
}

std::string_view FailedCommand::NameOf(const CommandPart& part) const {
    return part.first < part.end && At(part.first).IsWord() ? At(part.first).source
                                                            : std::string_view();
}

std::string FailedCommand::TextOf(std::size_t first, std::size_t end) const {
    std::string text;
    for (std::size_t index = first; index < end; ++index) {
        const bool isTight = At(index).Is(TokenCodes::kRightParen) || index == first ||
                             At(index - 1).Is(TokenCodes::kLeftParen);
        if (!isTight) text += ' ';
        text += At(index).source;
    }
    return text;
}

std::string Quoted(const CodePage& codePage, std::string_view text) {
    constexpr std::size_t kMostBytes = 160;
    const std::string_view line = text.substr(0, text.find('\n'));
    const std::string_view shown = TAVQMBStringTruncate_A(codePage, line, kMostBytes);
    std::string quoted = "`";
    quoted.append(shown);
    if (shown.size() < text.size()) quoted += "...";
    return quoted + "`";
}

}  // namespace quillet
