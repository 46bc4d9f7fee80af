#include "translator/termpieces.h"

namespace quillet {

namespace {

constexpr std::size_t kShortLength = 79;

}  // namespace

void KeepTogetherIfShort(OutputSequence& sequence) {
    if (sequence.CurrentLineLength() < kShortLength) sequence.JoinCurrentLine();
}

void TermPieces::Add(std::string_view text) {
    m_text += text;
    m_ends.push_back(m_text.size());
}

void TermPieces::EndTerm(Place begin) {
    if (m_ends.size() == begin.piece || m_text.size() - begin.byte >= kShortLength) return;
    m_ends.resize(begin.piece);
    m_ends.push_back(m_text.size());
}

void TermPieces::AppendTo(OutputSequence& sequence) const {
    const std::string_view text = m_text;
    std::size_t begin = 0;
    for (const std::size_t end : m_ends) {
        sequence.Add(text.substr(begin, end - begin), /*leadingSpace=*/false);
        begin = end;
    }
}

}  // namespace quillet
