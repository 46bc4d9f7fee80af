// Commands were copied from one another and given other variables and titles, so one mistake stands
// in hundreds of them. What they have in common is found without parsing them: they are those that
// could not be parsed.
#include "migrate/commandskeleton.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/multibyte.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kErrorMark = "^";
constexpr std::string_view kName = "n";
constexpr std::string_view kNumber = "0";
constexpr std::string_view kLiteral = "''";

// Words that mean something by themselves wherever they stand; sorted. A word after a slash is one
// in any case. What is missing here counts as a name: then commands count as equal that have
// another such word, never the other way round for those that are.
constexpr std::array<std::string_view, 46> kFixedWords = {
    "ALL",       "AND",         "ANSWERING", "APPLY", "ASCENDING",  "BLANK",      "BY",
    "CASES",     "CATEGORICAL", "COUNT",     "CPCT",  "DEFAULT",    "DESCENDING", "EXCLUDE",
    "INCLUDE",   "LABELS",      "MAXIMUM",   "MEAN",  "MEDIAN",     "MINIMUM",    "MISSING",
    "MODE",      "NONE",        "NOT",       "OFF",   "ON",         "OR",         "PTILE",
    "QUALIFIED", "RANGE",       "RESPONSES", "RPCT",  "SCALE",      "STDDEV",     "SUM",
    "THRU",      "TO",          "TOTAL",     "TYPE",  "UNWEIGHTED", "VALIDN",     "VAR",
    "VARIANCE",  "WITH",        "YES",       "ZERO"};

bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

bool IsLetter(char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte == '_' ||
           byte == '$' || byte == '#' || byte == '@' || byte == '!' ||
           static_cast<unsigned char>(byte) >= 0x80;
}

bool IsBlank(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

// Characters go on with such bytes.
bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

// The byte at which a place lies; the end of the text for none.
std::size_t OffsetOf(std::string_view text, PlaceInCommand place) {
    if (place.line < 1) return text.size();
    std::size_t offset = 0;
    for (std::int64_t line = 1; line < place.line; ++line) {
        const std::size_t end = text.find('\n', offset);
        if (end == std::string_view::npos) return text.size();
        offset = end + 1;
    }
    for (std::int64_t column = 1; column < place.column && offset < text.size(); ++column) {
        ++offset;
        while (offset < text.size() && IsContinuation(text[offset])) ++offset;
    }
    return offset;
}

class SkeletonMaker {
public:
    SkeletonMaker(std::string_view text, PlaceInCommand place)
        : m_text(text), m_errorOffset(OffsetOf(text, place)) {}

    std::string Make() {
        while (m_position < m_text.size()) TakeToken();
        return std::move(m_skeleton);
    }

private:
    [[nodiscard]] bool IsAt(std::string_view text) const {
        return m_text.substr(m_position, text.size()) == text;
    }

    void TakeToken() {
        const char byte = m_text[m_position];
        const std::size_t start = m_position;
        if (IsBlank(byte)) {
            ++m_position;
        } else if (IsAt("/*")) {
            SkipComment();
        } else if (byte == '\'' || byte == '"') {
            SkipLiteral(byte);
            Add(kLiteral);
        } else if (IsDigit(byte)) {
            SkipWord();
            Add(kNumber);
        } else if (IsLetter(byte)) {
            SkipWord();
            AddWord(m_text.substr(start, m_position - start));
        } else {
            ++m_position;
            Add({&byte, 1});
        }
    }

    // A comment without an end is one up to the end of its line. Nothing is looked for beyond the
    // end of this one: a line may hold very many.
    void SkipComment() {
        constexpr std::string_view kEnd = "*/";
        m_position += kEnd.size();
        while (m_position < m_text.size() && m_text[m_position] != '\n' && !IsAt(kEnd)) {
            ++m_position;
        }
        if (IsAt(kEnd)) m_position += kEnd.size();
    }
    // Doubled quotation marks end one literal and begin another one, which comes to the same where
    // all of them are one. So does a literal that is never closed and ends with its line.
    void SkipLiteral(char quote) {
        do {
            ++m_position;
            while (m_position < m_text.size() && m_text[m_position] != quote &&
                   m_text[m_position] != '\n') {
                ++m_position;
            }
            if (m_position < m_text.size() && m_text[m_position] == quote) ++m_position;
        } while (m_position < m_text.size() && m_text[m_position] == quote);
    }
    // A period within a word belongs to it, one at its end does not.
    void SkipWord() {
        while (m_position < m_text.size()) {
            const char byte = m_text[m_position];
            const bool isInner =
                byte == '.' && m_position + 1 < m_text.size() &&
                (IsLetter(m_text[m_position + 1]) || IsDigit(m_text[m_position + 1]));
            if (!IsLetter(byte) && !IsDigit(byte) && !isInner) return;
            ++m_position;
        }
    }

    void AddWord(std::string_view word) {
        std::string upper(word);
        std::transform(upper.begin(), upper.end(), upper.begin(), UpperAscii);
        const bool isKept = m_skeleton.empty() || m_skeleton.ends_with("/ ") ||
                            std::binary_search(kFixedWords.begin(), kFixedWords.end(), upper);
        const std::string_view kept = upper;
        Add(isKept ? kept : kName);
    }

    void Add(std::string_view token) {
        if (!m_isMarked && m_position > m_errorOffset) {
            m_isMarked = true;
            m_skeleton.append(kErrorMark);
        }
        m_skeleton.append(token).append(" ");
    }

    std::string_view m_text;
    std::size_t m_errorOffset = 0;
    std::size_t m_position = 0;
    bool m_isMarked = false;
    std::string m_skeleton;
};

}  // namespace

std::string SkeletonOf(std::string_view source, PlaceInCommand place) {
    return SkeletonMaker(source, place).Make();
}

}  // namespace quillet::migrate
