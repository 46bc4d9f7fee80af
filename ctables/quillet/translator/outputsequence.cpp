#include "translator/outputsequence.h"

#include <algorithm>
#include <utility>

#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "outputsequence";
constexpr std::string_view kComma = ",";

// What a sequence has room for from its first piece on; few need more.
constexpr std::size_t kFirstPieces = 16;
constexpr std::size_t kFirstBytes = 120;

// What is waiting to be laid out is laid out when it is this much.
constexpr std::size_t kMostWaiting = std::size_t{4} * 1024;

std::string_view TrimLeft(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view Trim(std::string_view text) {
    text = TrimLeft(text);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace

void LineFiller::AddBreak() {
    Emit("\n");
    m_lineLength = 0;
    m_isFirstPiece = false;
}

void LineFiller::AddPiece(std::string_view piece) {
    if (m_lineLength == 0) {
        StartLine(piece);
    } else if (m_lineLength + piece.size() <= m_width) {
        Emit(piece);
        m_lineLength += piece.size();
    } else if (piece != kComma) {
        BreakLine();
        Emit(TrimLeft(piece));
        m_lineLength += TrimLeft(piece).size();
    } else {
        AddCommaBeyondMargin();
    }
    m_isFirstPiece = false;
}

// Appends a string that a comma after it may take along to the next line.
void LineFiller::Emit(std::string_view text) {
    m_lastEmitted = m_text.size();
    m_text.append(text);
}

void LineFiller::StartLine(std::string_view piece) {
    if (!m_isFirstPiece) m_text.append(m_indentation);
    Emit(TrimLeft(piece));
    m_lineLength = (m_isFirstPiece ? 0 : m_indentation.size()) + TrimLeft(piece).size();
}

void LineFiller::BreakLine() {
    m_text.append("\n").append(m_indentation);
    m_lineLength = m_indentation.size();
}

// A comma never starts a line: the string before it moves to the new line and the comma
// follows, even if that makes the line too long. A comma does not move another comma.
void LineFiller::AddCommaBeyondMargin() {
    const std::string last = m_text.substr(m_lastEmitted);
    if (Trim(last) != kComma) {
        m_text.resize(m_lastEmitted);
        BreakLine();
        Emit(TrimLeft(last));
        m_lineLength += TrimLeft(last).size();
    }
    Emit(kComma);
    m_lineLength += kComma.size();
}

OutputSequence::OutputSequence(std::string& text, std::size_t width, std::size_t indent) {
    m_filler.emplace(text, width, indent);
}

void OutputSequence::Add(std::string_view text, bool leadingSpace) {
    if (m_ends.capacity() == 0) {
        m_ends.reserve(kFirstPieces);
        m_text.reserve(kFirstBytes);
    }
    if (leadingSpace) m_text += ' ';
    m_text += text;
    m_ends.push_back(m_text.size());
    if (m_filler && m_text.size() >= kMostWaiting) LayOutBefore(m_text.size() - kLongestJoin);
}

void OutputSequence::NewLine() {
    m_breaks.push_back(m_ends.size());
    m_text += '\n';
    m_ends.push_back(m_text.size());
    m_line = Here();
}

void OutputSequence::JoinSince(Place begin) {
    const bool hasBreak = m_line.piece > begin.piece;
    QUILLET_ASSERT(!hasBreak, "m_Sequence[i].second == false");
    if (hasBreak || Here().piece < begin.piece + 2) return;
    if (!QUILLET_ASSERT(begin.piece >= m_first.piece, "begin.piece >= m_first.piece")) return;
    m_ends.resize(begin.piece - m_first.piece);
    m_ends.push_back(m_text.size());
}

std::string OutputSequence::Format(std::size_t width, std::size_t indent) const {
    if (m_ends.empty()) return {};
    if (!QUILLET_ASSERT(indent < width, "WARNING: Indentation has been forced to size 1.")) {
        indent = 1;
    }
    std::string text;
    text.reserve(m_text.size() + m_text.size() / 16);
    LineFiller filler(text, width, indent);
    LayOut(m_ends.size(), filler);
    return text;
}

void OutputSequence::Finish() {
    if (m_filler) LayOutBefore(m_text.size() + 1);
}

// Hands the first `count` pieces to `filler`; how many of them are forced breaks is the result.
std::size_t OutputSequence::LayOut(std::size_t count, LineFiller& filler) const {
    const std::string_view text = m_text;
    std::size_t begin = 0;
    std::size_t breakCount = 0;
    for (std::size_t piece = 0; piece < count; ++piece) {
        if (breakCount < m_breaks.size() && m_breaks[breakCount] == piece) {
            filler.AddBreak();
            ++breakCount;
        } else {
            filler.AddPiece(text.substr(begin, m_ends[piece] - begin));
        }
        begin = m_ends[piece];
    }
    return breakCount;
}

// Lays out the pieces that end before the byte `end` of the text here, and forgets them.
void OutputSequence::LayOutBefore(std::size_t end) {
    const auto endPiece = std::lower_bound(m_ends.begin(), m_ends.end(), end);
    if (endPiece == m_ends.begin()) return;
    const auto count = static_cast<std::size_t>(endPiece - m_ends.begin());
    const std::size_t size = m_ends[count - 1];
    const std::size_t breakCount = LayOut(count, *m_filler);
    m_text.erase(0, size);
    m_ends.erase(m_ends.begin(), endPiece);
    for (std::size_t& pieceEnd : m_ends) pieceEnd -= size;
    m_breaks.erase(m_breaks.begin(), m_breaks.begin() + static_cast<std::ptrdiff_t>(breakCount));
    for (std::size_t& piece : m_breaks) piece -= count;
    m_first.piece += count;
    m_first.byte += size;
}

}  // namespace quillet
