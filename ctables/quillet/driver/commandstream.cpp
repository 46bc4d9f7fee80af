#include "driver/commandstream.h"

#include <utility>

#include "driver/datalines.h"
#include "driver/outputfile.h"
#include "platform/assertion.h"
#include "tokenizer/commandend.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tokensurvey.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "commandstream";

// Inline data is handed over in parts of about this many bytes.
constexpr std::size_t kPartSize = 64UL * 1024;

// Calls `tokenize`, which counts lines within the one text it looks at, and makes the line of
// an error that of the file. `line` is the file line of that text.
template <class Function>
auto WithFileLine(long line, Function tokenize) {
    try {
        return tokenize();
    } catch (ParseError& error) {
        error.CountFromFile(line);
        throw;
    }
}

}  // namespace

CommandStream::CommandStream(LineReader& lines, const CodePage& codePage, bool batchMode)
    : m_lines(lines), m_codePage(codePage), m_batchMode(batchMode) {}

bool CommandStream::ReadCommand() {
    m_commandText.clear();
    m_hasMoreParts = false;
    m_startLine = m_lineBuffer.empty() ? m_lineCount + 1 : m_lineCount;
    while (true) {
        const bool isFirstLine = m_commandText.empty();
        FillLineBuffer(/*skipBlankLines=*/isFirstLine);
        if (m_lineBuffer.empty()) return m_commandText.empty();
        if (isFirstLine) ClassifyFirstLine();
        if (!isFirstLine && EndsAtBlankLine()) return false;
        if (m_commandKind == CommandKind::kInlineData) {
            TakeLine(m_lineBuffer, -1);
            ReadInlineData();
            return false;
        }
        if (m_batchMode) {
            if (ReadBatchLine()) return false;
            continue;
        }
        const std::ptrdiff_t ixEnd = FindTerminator(m_lineBuffer, m_lineCount);
        TakeLine(m_lineBuffer, ixEnd);
        if (ixEnd >= 0) return false;
    }
}

// In batch mode the line after the one with the error has been read already, unless the error is
// in the first line of the command.
void CommandStream::GoOnAfterError() {
    if (m_keptLine.empty()) m_lineBuffer.clear();
    m_keptLine.clear();
    m_commandText.clear();
}

// True when the buffered line is blank and ends the command; it stays buffered.
bool CommandStream::EndsAtBlankLine() const {
    return m_endsAt && !m_batchMode && m_commandKind != CommandKind::kDocument &&
           IsBlankLine(m_lineBuffer) && m_endsAt(m_lineCount);
}

void CommandStream::GiveMemoryBack() {
    for (std::string* pText : {&m_commandText, &m_lineBuffer, &m_keptLine}) {
        std::string().swap(*pText);
    }
}

void CommandStream::FillLineBuffer(bool skipBlankLines) {
    if (skipBlankLines && IsBlankLine(m_lineBuffer)) m_lineBuffer.clear();
    while (m_lineBuffer.empty() && !m_atEnd) {
        std::string_view line;
        if (!m_lines.ReadLine(line)) {
            m_atEnd = true;
            return;
        }
        ++m_lineCount;
        if (skipBlankLines) m_startLine = m_lineCount;
        if (skipBlankLines && IsBlankLine(line)) continue;
        m_lineBuffer.assign(line);
        m_lineBuffer += '\n';
    }
}

// Moves `line` to the command; the byte at `ixEnd`, its terminator, becomes the end of the line.
// -1 takes the line as it is.
void CommandStream::TakeLine(std::string& line, std::ptrdiff_t ixEnd) {
    if (ixEnd >= 0) {
        const auto end = static_cast<std::size_t>(ixEnd);
        if (QUILLET_ASSERT(end < line.size(), "ixEnd < m_lineBuffer.size()")) {
            line.resize(end);
            line += '\n';
        }
    }
    m_commandText += line;
    line.clear();
}

void CommandStream::ClassifyFirstLine() {
    m_startLine = m_lineCount;
    TokenSurvey survey = WithFileLine(m_startLine, [this] {
        return SurveyTokens(m_codePage, m_lineBuffer, m_batchMode, kTokensForKind);
    });
    m_commandKind = KindOf(survey);
    m_firstValueMayChange = survey.count == 0 || (survey.count == 1 && survey.firstIsLiteral);
    m_firstValue = std::move(survey.firstValue);
}

// Gathers data lines until the one that closes them, until there is enough for a part, or until
// plain lines follow. A part ends only when a further line is at hand, so that the next part is
// never empty.
void CommandStream::ReadInlineData() {
    m_hasMoreParts = false;
    while (!FindPlainLines()) {
        std::string_view line;
        if (!m_lines.ReadLine(line)) {
            m_atEnd = true;
            return;
        }
        ++m_lineCount;
        if (m_commandText.size() >= kPartSize) {
            m_lineBuffer.assign(line);
            m_lineBuffer += '\n';
            m_hasMoreParts = true;
            return;
        }
        m_commandText.append(line);
        m_commandText += '\n';
        if (IsEndDataLine(m_codePage, line)) return;
    }
}

// Steps over the plain lines that are at hand. There is always a line after them.
bool CommandStream::FindPlainLines() {
    m_plainLines = FindPlainDataLines(m_lines.Unread(), m_lines.FirstLineEndsInCrLf());
    if (m_plainLines.count == 0) return false;
    m_lines.Skip(m_plainLines.text.size());
    m_lineCount += m_plainLines.count;
    m_hasMoreParts = true;
    return true;
}

void CommandStream::ReadNextPart() {
    m_plainLines = {};
    m_commandText.clear();
    const bool isEndData = IsEndDataLine(m_codePage, m_lineBuffer);
    TakeLine(m_lineBuffer, -1);
    m_hasMoreParts = false;
    if (!isEndData) ReadInlineData();
}

// Takes the buffered line once the line after it tells whether the command goes on. True when
// the command is complete; the line after it stays buffered.
bool CommandStream::ReadBatchLine() {
    m_keptLine.swap(m_lineBuffer);
    m_lineBuffer.clear();
    const long keptLineNumber = m_lineCount;
    FillLineBuffer(/*skipBlankLines=*/false);
    const bool goesOn = m_lineBuffer.starts_with(' ');
    TakeLine(m_keptLine, goesOn ? -1 : FindTerminator(m_keptLine, keptLineNumber));
    return !goesOn;
}

// The terminator in `line`, which is line `lineNumber` of the file.
std::ptrdiff_t CommandStream::FindTerminator(const std::string& line, long lineNumber) const {
    const bool isFreeText =
        m_commandKind == CommandKind::kComment || m_commandKind == CommandKind::kDocument;
    return WithFileLine(lineNumber, [&] { return FindCommandEndIn(m_codePage, line, isFreeText); });
}

}  // namespace quillet
