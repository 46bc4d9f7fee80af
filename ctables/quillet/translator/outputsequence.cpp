#include "translator/outputsequence.h"

#include <algorithm>
#include <utility>

#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "outputsequence";
constexpr std::string_view kComma = ",";

// What a sequence has room for from its first piece on. A table is put together from half a dozen
// sequences, and few are larger.
constexpr std::size_t kFirstPieces = 16;
constexpr std::size_t kFirstBytes = 120;

std::string_view TrimLeft(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view Trim(std::string_view text) {
    text = TrimLeft(text);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// Lays out pieces one after the other. Keeps the place of the last emitted string, which a
// comma may still take along to the next line.
class LineFiller {
public:
    // `size` bytes will be laid out.
    LineFiller(std::size_t width, std::size_t indent, std::size_t size)
        : m_width(width), m_indentation(indent, ' ') {
        m_text.reserve(size + size / 16);
    }

    void AddBreak() {
        Emit("\n");
        m_lineLength = 0;
        m_isFirstPiece = false;
    }

    void AddPiece(std::string_view piece) {
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

    [[nodiscard]] std::string Take() { return std::move(m_text); }

private:
    // Appends a string that a comma after it may take along to the next line.
    void Emit(std::string_view text) {
        m_lastEmitted = m_text.size();
        m_text.append(text);
    }

    void StartLine(std::string_view piece) {
        if (!m_isFirstPiece) m_text.append(m_indentation);
        Emit(TrimLeft(piece));
        m_lineLength = (m_isFirstPiece ? 0 : m_indentation.size()) + TrimLeft(piece).size();
    }

    void BreakLine() {
        m_text.append("\n").append(m_indentation);
        m_lineLength = m_indentation.size();
    }

    // A comma never starts a line: the string before it moves to the new line and the comma
    // follows, even if that makes the line too long. A comma does not move another comma.
    void AddCommaBeyondMargin() {
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

    std::size_t m_width;
    std::string m_indentation;
    std::string m_text;
    std::size_t m_lastEmitted = 0;  // where the last emitted string begins
    std::size_t m_lineLength = 0;
    bool m_isFirstPiece = true;  // the very first piece is not indented
};

}  // namespace

void OutputSequence::Add(std::string_view text, bool leadingSpace) {
    if (m_ends.capacity() == 0) {
        m_ends.reserve(kFirstPieces);
        m_text.reserve(kFirstBytes);
    }
    if (leadingSpace) m_text += ' ';
    m_text += text;
    m_ends.push_back(m_text.size());
}

void OutputSequence::Append(const OutputSequence& other) {
    const Place begin = Here();
    m_text += other.m_text;
    for (const std::size_t end : other.m_ends) m_ends.push_back(begin.byte + end);
    for (const std::size_t piece : other.m_breaks) m_breaks.push_back(begin.piece + piece);
}

void OutputSequence::NewLine() {
    m_breaks.push_back(m_ends.size());
    Add("\n", /*leadingSpace=*/false);
}

void OutputSequence::Clear() {
    m_text.clear();
    m_ends.clear();
    m_breaks.clear();
}

OutputSequence::Place OutputSequence::CurrentLine() const {
    if (m_breaks.empty()) return {};
    return {m_breaks.back() + 1, m_ends[m_breaks.back()]};
}

void OutputSequence::JoinSince(Place begin) {
    const bool hasBreak = !m_breaks.empty() && m_breaks.back() >= begin.piece;
    QUILLET_ASSERT(!hasBreak, "m_Sequence[i].second == false");
    if (hasBreak || m_ends.size() < begin.piece + 2) return;
    m_ends.resize(begin.piece);
    m_ends.push_back(m_text.size());
}

std::string OutputSequence::Format(std::size_t width, std::size_t indent) const {
    if (m_ends.empty()) return {};
    if (!QUILLET_ASSERT(indent < width, "WARNING: Indentation has been forced to size 1.")) {
        indent = 1;
    }
    LineFiller filler(width, indent, m_text.size());
    const std::string_view text = m_text;
    std::size_t begin = 0;
    auto nextBreak = m_breaks.begin();
    for (std::size_t piece = 0; piece < m_ends.size(); ++piece) {
        if (nextBreak != m_breaks.end() && *nextBreak == piece) {
            filler.AddBreak();
            ++nextBreak;
        } else {
            filler.AddPiece(text.substr(begin, m_ends[piece] - begin));
        }
        begin = m_ends[piece];
    }
    return filler.Take();
}

}  // namespace quillet
