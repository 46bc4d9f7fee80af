#include "driver/outputsequence.h"

#include <algorithm>
#include <utility>

#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "outputsequence";
constexpr std::string_view kComma = ",";

std::string_view TrimLeft(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view Trim(std::string_view text) {
    text = TrimLeft(text);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// Lays out pieces one behind the other. Keeps the place of the last emitted string, which a
// comma may still take along to the next line.
class LineFiller {
public:
    LineFiller(std::size_t width, std::size_t indent)
        : m_width(width), m_indentation(indent, ' ') {}

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
    // Appends a string that a comma behind it may take along to the next line.
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
    std::string piece = leadingSpace ? " " : "";
    piece.append(text);
    m_Sequence.emplace_back(std::move(piece), false);
}

void OutputSequence::Append(const OutputSequence& other) {
    const auto offset = static_cast<std::ptrdiff_t>(m_Sequence.size());
    if (other.m_lastBreak >= 0) m_lastBreak = offset + other.m_lastBreak;
    m_Sequence.insert(m_Sequence.end(), other.m_Sequence.begin(), other.m_Sequence.end());
}

void OutputSequence::NewLine() {
    m_lastBreak = static_cast<std::ptrdiff_t>(m_Sequence.size());
    m_Sequence.emplace_back("\n", true);
}

void OutputSequence::Clear() {
    m_Sequence.clear();
    m_lastBreak = -1;
}

std::size_t OutputSequence::CurrentLineLength() const {
    std::size_t length = 0;
    for (std::size_t i = CurrentLineBegin(); i < m_Sequence.size(); ++i) {
        QUILLET_ASSERT(m_Sequence[i].second == false, "m_Sequence[i].second == false");
        length += m_Sequence[i].first.size();
    }
    return length;
}

void OutputSequence::JoinCurrentLine() {
    const std::size_t begin = CurrentLineBegin();
    if (m_Sequence.size() < begin + 2) return;
    for (std::size_t i = begin + 1; i < m_Sequence.size(); ++i) {
        QUILLET_ASSERT(m_Sequence[i].second == false, "m_Sequence[i].second == false");
        m_Sequence[begin].first.append(m_Sequence[i].first);
    }
    m_Sequence.resize(begin + 1);
}

std::string OutputSequence::Format(std::size_t width, std::size_t indent) const {
    if (m_Sequence.empty()) return {};
    if (!QUILLET_ASSERT(indent < width, "WARNING: Indentation has been forced to size 1.")) {
        indent = 1;
    }
    LineFiller filler(width, indent);
    for (const auto& [text, isBreak] : m_Sequence) {
        if (isBreak) {
            filler.AddBreak();
        } else {
            filler.AddPiece(text);
        }
    }
    return filler.Take();
}

}  // namespace quillet
