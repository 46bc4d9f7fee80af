#include "driver/linewalker.h"

#include <algorithm>
#include <iterator>

#include "driver/commandwords.h"
#include "tokenizer/scanning.h"

namespace quillet {

namespace {

constexpr std::string_view kOpensComment = "/*";
constexpr std::string_view kClosesComment = "*/";

// Where anything but plain text may begin.
constexpr std::string_view kStops = "'\"/.";
constexpr std::string_view kStopsInMacro = "'\"/.!)";

// Macro words that a command may follow directly.
constexpr std::string_view kBeforeCommands[] = {"THEN",  "ELSE",     "IFEND",    "DOEND",
                                                "BREAK", "ONEXPAND", "OFFEXPAND"};

// A lone carriage return is white space of its line.
bool IsBlank(char c) { return kBlanks.Has(c) || c == '\r'; }

}  // namespace

bool LineWalker::Next(LinePlace& place) {
    place = {};
    if (!m_hasBegun) {
        m_hasBegun = true;
        if (FindBeginning(place)) return true;
    }
    const std::string_view stops = m_context == LineContext::kMacroBody ? kStopsInMacro : kStops;
    while (true) {
        m_position = std::min(m_line.find_first_of(stops, m_position), m_line.size());
        if (m_position == m_line.size()) return false;
        const char stop = m_line[m_position];
        if (stop == '.') {
            if (LookAfterPeriod(place)) return true;
        } else if (stop == '!' || stop == ')') {
            if (LookAfterMacro(place)) return true;
        } else if (stop != '/') {
            SkipQuote();
        } else if (IsAt(kOpensComment)) {
            static_cast<void>(SkipBlanksAndComments());
        } else {
            ++m_position;
        }
    }
}

bool LineWalker::FindBeginning(LinePlace& place) {
    if (m_line.starts_with('+') || m_line.starts_with('-')) {
        place.sign = m_line.front();
        ++m_position;
    }
    place.comment = SkipBlanksAndComments();
    place.offset = m_position;
    return m_position < m_line.size() || place.comment == LinePlace::Comment::kClosed;
}

// At a period. In syntax one that only blanks and comments follow is the line's last; a comment
// command's star after it counts as a comment.
bool LineWalker::LookAfterPeriod(LinePlace& place) {
    const std::size_t period = m_position++;
    const std::size_t begin = m_position;
    place.comment = SkipBlanksAndComments();
    if (m_position == m_line.size()) {
        place.kind = LinePlace::Kind::kLastPeriod;
        place.offset = period;
        return true;
    }
    if (m_position == begin) return false;
    if (m_line[m_position] == '*') {
        place.kind = LinePlace::Kind::kLastPeriod;
        place.comment = LinePlace::Comment::kStar;
        place.offset = period;
        return true;
    }
    place.kind = LinePlace::Kind::kAfterPeriod;
    place.offset = m_position;
    return true;
}

// At an exclamation mark or a closing parenthesis.
bool LineWalker::LookAfterMacro(LinePlace& place) {
    if (m_line[m_position] == ')') {
        ++m_position;
    } else if (!SkipMacroWord()) {
        return false;
    }
    const std::size_t begin = m_position;
    SkipBlanks();
    if (m_position == begin || m_position == m_line.size()) return false;
    place.kind = LinePlace::Kind::kAfterMacro;
    place.offset = m_position;
    return true;
}

// True for a word that a command may follow.
bool LineWalker::SkipMacroWord() {
    ++m_position;
    const std::string_view rest = m_line.substr(m_position);
    m_position += WordLength(rest);
    return std::any_of(std::begin(kBeforeCommands), std::end(kBeforeCommands),
                       [rest](std::string_view word) { return BeginsWithWord(rest, word); });
}

// At a quote. In a comment it is an apostrophe when a letter stands before it or no other follows.
void LineWalker::SkipQuote() {
    const char quote = m_line[m_position];
    const bool isAfterLetter =
        m_position > 0 && (static_cast<unsigned char>(m_line[m_position - 1]) > 127 ||
                           kNameContinuation.Has(m_line[m_position - 1]));
    const std::size_t end = m_line.find(quote, m_position + 1);
    const bool isOpen = end == std::string_view::npos;
    if (m_context == LineContext::kFreeText && (isOpen || isAfterLetter)) {
        ++m_position;
    } else {
        m_position = isOpen ? m_line.size() : end + 1;
    }
}

void LineWalker::SkipBlanks() {
    while (m_position < m_line.size() && IsBlank(m_line[m_position])) ++m_position;
}

// What the last comment was. One that is not closed goes to the line's end.
LinePlace::Comment LineWalker::SkipBlanksAndComments() {
    LinePlace::Comment comment = LinePlace::Comment::kNone;
    SkipBlanks();
    while (IsAt(kOpensComment)) {
        const std::size_t end = m_line.find(kClosesComment, m_position + kOpensComment.size());
        const bool isClosed = end != std::string_view::npos;
        comment = isClosed ? LinePlace::Comment::kClosed : LinePlace::Comment::kUnclosed;
        m_position = isClosed ? end + kClosesComment.size() : m_line.size();
        SkipBlanks();
    }
    return comment;
}

}  // namespace quillet
