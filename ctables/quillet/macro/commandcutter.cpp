// Macros are looked for in texts that nothing else has read yet, some of which no command stream
// would ever see: the expansion of a macro, an argument. So what ends a command is asked anew here,
// line by line, and nothing is an error.
#include "macro/commandcutter.h"

#include <vector>

namespace quillet::macro {

namespace {

constexpr std::string_view kEndDefine = "!ENDDEFINE";

// Whether `word` is `wanted`, which is in capitals.
bool IsWord(std::string_view word, std::string_view wanted) {
    if (word.size() != wanted.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        const char letter = word[i];
        const bool isSmall = 'a' <= letter && letter <= 'z';
        if ((isSmall ? static_cast<char>(letter - 'a' + 'A') : letter) != wanted[i]) return false;
    }
    return true;
}

bool BeginsWith(std::string_view word, std::string_view wanted) {
    return IsWord(word.substr(0, wanted.size()), wanted);
}

}  // namespace

bool CommandCutter::Next(Command& command) {
    command = {};
    const bool isFragment = m_content == Content::kFragment && m_next == 0;
    command.begin = FindBegin();
    if (command.begin >= m_lexer.Text().size()) return false;
    if (!isFragment) command.kind = KindAt(command.begin);
    FindEnd(command);
    m_next = command.next;
    return true;
}

std::size_t CommandCutter::FindBegin() const {
    std::size_t position = m_next;
    while (true) {
        const bool isLineBegin = position == 0 || IsLineBreak(m_lexer.At(position - 1));
        const char byte = m_lexer.At(position);
        if (m_layout.batchMode && isLineBegin && (byte == '+' || byte == '-')) {
            return m_lexer.SkipBlanks(position + 1);
        }
        if (position >= m_lexer.Text().size()) return position;
        if (IsSpace(byte)) {
            ++position;
        } else if (m_lexer.IsAtComment(position)) {
            position = m_lexer.CommentEnd(position);
        } else {
            return position;
        }
    }
}

Command::Kind CommandCutter::KindAt(std::size_t position) const {
    if (m_lexer.At(position) == '*') return Command::Kind::kComment;
    if (!m_lexer.IsAtName(position)) return Command::Kind::kOrdinary;
    const Token first = m_lexer.TokenAt(position);
    const std::string_view word = m_lexer.TextOf(first);
    if (BeginsWith(word, "COM") && !BeginsWith(word, "COMP")) return Command::Kind::kComment;
    if (BeginsWith(word, "DOC")) return Command::Kind::kDocument;
    if (m_content == Content::kFile && IsWord(word, "DEFINE")) return Command::Kind::kDefinition;
    if (IsWord(word, "BEGIN")) {
        const Token second = m_lexer.NextToken(first.end);
        const bool isSameLine = second.begin < m_lexer.LineEnd(position);
        const std::string_view data = m_lexer.TextOf(second);
        if (isSameLine && (IsWord(data, "DATA") || IsWord(data, "DATA."))) {
            return Command::Kind::kInlineData;
        }
    }
    return Command::Kind::kOrdinary;
}

void CommandCutter::FindEnd(Command& command) const {
    if (command.kind == Command::Kind::kDefinition) return FindDefinitionEnd(command);
    if (command.kind == Command::Kind::kInlineData) return FindDataEnd(command);
    if (m_layout.batchMode) return FindBatchEnd(command);
    const bool isFreeText = command.kind != Command::Kind::kOrdinary;
    std::size_t position = command.begin;
    while (true) {
        const std::size_t lineEnd = m_lexer.LineEnd(position);
        command.isEnded = FindPeriod(isFreeText, position, lineEnd, command.end);
        if (command.isEnded) {
            command.next = command.end + 1;
            return;
        }
        command.end = command.next = lineEnd;
        if (lineEnd == m_lexer.Text().size()) return;
        position = m_lexer.LineBreakEnd(lineEnd);
        if (!m_layout.endAtBlankLines) continue;
        const std::size_t text = m_lexer.SkipBlanks(position);
        if (text < m_lexer.Text().size() && IsLineBreak(m_lexer.At(text))) return;
    }
}

void CommandCutter::FindDataEnd(Command& command) const {
    std::size_t position = command.begin;
    do {
        position = m_lexer.LineEnd(position);
        if (position == m_lexer.Text().size()) break;
        position = m_lexer.LineBreakEnd(position);
    } while (!BeginsWith(m_lexer.Text().substr(position), "END DATA"));
    command.end = command.next = m_lexer.LineEnd(position);
}

void CommandCutter::FindDefinitionEnd(Command& command) const {
    const std::string_view text = m_lexer.Text();
    command.end = text.find('!', command.begin);
    while (command.end != std::string_view::npos) {
        const Token word = m_lexer.TokenAt(command.end);
        if (IsWord(m_lexer.TextOf(word), kEndDefine)) {
            command.isEnded = true;
            const std::size_t after = m_lexer.SkipBlanks(word.end);
            command.next = m_lexer.At(after) == '.' ? after + 1 : word.end;
            return;
        }
        command.end = text.find('!', word.end);
    }
    command.end = command.next = text.size();
}

void CommandCutter::FindBatchEnd(Command& command) const {
    std::size_t lineBegin = command.begin;
    std::size_t lineEnd = m_lexer.LineEnd(lineBegin);
    while (lineEnd < m_lexer.Text().size()) {
        const std::size_t next = m_lexer.LineBreakEnd(lineEnd);
        if (m_lexer.At(next) != ' ') break;
        lineBegin = next;
        lineEnd = m_lexer.LineEnd(next);
    }
    command.next = lineEnd;
    const bool isFreeText = command.kind != Command::Kind::kOrdinary;
    command.isEnded = FindPeriod(isFreeText, lineBegin, lineEnd, command.end);
    if (!command.isEnded) command.end = lineEnd;
}

// The period at the end of the line [begin, end) that ends a command. In free text quotes and
// comments mean nothing before it.
bool CommandCutter::FindPeriod(bool isFreeText, std::size_t begin, std::size_t end,
                               std::size_t& period) const {
    if (isFreeText) return FindFreeTextPeriod(begin, end, period);
    std::size_t position = begin;
    while (position < end) {
        const char byte = m_lexer.At(position);
        if (IsQuote(byte)) {
            bool isClosed = false;
            const std::size_t literalEnd = m_lexer.LiteralEnd(position, isClosed);
            // Somebody forgot the quote, but hardly that the command ends here.
            if (!isClosed) return FindFreeTextPeriod(position, end, period);
            position = literalEnd;
        } else if (m_lexer.IsAtComment(position)) {
            position = m_lexer.CommentEnd(position);
        } else if (byte == '.' && m_lexer.IsRestOfLineEmpty(position + 1)) {
            period = position;
            return true;
        } else {
            ++position;
        }
    }
    return false;
}

// Goes from the end of the line to its beginning: looking from each period to the end of the line
// could take as many looks as there are periods, for periods inside of comments count.
bool CommandCutter::FindFreeTextPeriod(std::size_t begin, std::size_t end,
                                       std::size_t& period) const {
    std::vector<char> isEmptyFrom(end - begin + 1, 0);
    isEmptyFrom.back() = 1;
    std::size_t commentEnd = end;  // of a comment that begins at the position
    bool isFound = false;
    for (std::size_t position = end; position-- > begin;) {
        if (position + 4 <= end && m_lexer.At(position + 2) == '*' &&
            m_lexer.At(position + 3) == '/') {
            commentEnd = position + 4;
        }
        const char byte = m_lexer.At(position);
        const bool isNextEmpty = isEmptyFrom[position + 1 - begin] != 0;
        if (IsBlank(byte)) {
            isEmptyFrom[position - begin] = isNextEmpty ? 1 : 0;
        } else if (byte == '/' && position + 1 < end && m_lexer.At(position + 1) == '*') {
            isEmptyFrom[position - begin] = isEmptyFrom[commentEnd - begin];
        } else if (byte == '.' && isNextEmpty) {
            period = position;
            isFound = true;
        }
    }
    return isFound;
}

}  // namespace quillet::macro
