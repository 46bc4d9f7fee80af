#include "tokenizer/commandend.h"

#include <cstdint>

#include "platform/assertion.h"
#include "platform/multibyte.h"
#include "tokenizer/mbcharpointer.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/scanning.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "commandend";

// What the search for a command's end steps over without looking.
constexpr AsciiSet kNoCommandEnd = kAnyAscii.Without("'\"/.\n\r");
constexpr AsciiSet kNoPeriod = kAnyAscii.Without(".");

// A comment's end: a period that only blanks separate from the end of its line.
std::ptrdiff_t FindFreeTextEnd(MbCharPointer cursor, const char* pBegin) {
    while (true) {
        cursor.SkipRun(kNoPeriod);
        if (cursor.Code() == 0) return -1;
        const bool isPeriod = cursor.Code() == '.';
        const char* pPeriod = cursor.Position();
        cursor.Advance();
        if (!isPeriod) continue;
        cursor.SkipRun(kBlanks);
        if (IsAtLineEnd(cursor)) return pPeriod - pBegin;
    }
}

// Searches the end of a command whose quotes and comments count.
class CommandEndFinder {
public:
    CommandEndFinder(const CodePage& codePage, std::string_view lines)
        : m_cursor(codePage, lines), m_pBegin(lines.data()) {}

    std::ptrdiff_t Find() {
        while (true) {
            m_cursor.SkipRun(kNoCommandEnd);
            const std::int32_t code = m_cursor.Code();
            if (code == 0) return -1;
            if (code == '.') {
                const std::ptrdiff_t offset = m_cursor.Position() - m_pBegin;
                m_cursor.Advance();
                if (IsEndAfterPeriod()) return offset;
            } else if (kQuotes.HasCode(code)) {
                SkipLiteral();
            } else if (IsAtComment(m_cursor)) {
                SkipComment(m_cursor);
            } else if (kLineBreaks.HasCode(code)) {
                SkipBlanksAndLineBreaks();
            } else {
                m_cursor.Advance();
            }
        }
    }

private:
    struct Skipped {
        bool anything = false;
        bool lineBreak = false;
    };

    Skipped SkipBlanksAndLineBreaks() {
        const char* pStart = m_cursor.Position();
        Skipped skipped;
        m_cursor.SkipRun(kBlanks);
        while (kLineBreaks.HasCode(m_cursor.Code())) {
            SkipLineBreak(m_cursor);
            ++m_line;
            skipped.lineBreak = true;
            m_cursor.SkipRun(kBlanks);
        }
        skipped.anything = m_cursor.Position() != pStart;
        return skipped;
    }

    // A doubled quote reads as a literal that ends and a new one that begins.
    void SkipLiteral() {
        const MbCharPointer start = m_cursor;
        const std::int32_t quote = m_cursor.Code();
        m_cursor.Advance();
        if (!SkipLiteralBody(m_cursor, quote)) {
            throw ParseError(m_line, start.Column(), ParseErrorKind::kUnclosedLiteral);
        }
        m_cursor.Advance();
    }

    // Whether the period just passed ends the command: only blanks and comments that run to the
    // end of the line may stand between it and the line break.
    bool IsEndAfterPeriod() {
        while (true) {
            const bool skippedComment = IsAtComment(m_cursor);
            if (skippedComment) SkipComment(m_cursor);
            const Skipped skipped = SkipBlanksAndLineBreaks();
            if (skipped.lineBreak) return true;
            if (skipped.anything && !skippedComment && m_cursor.Code() == 0) return true;
            if (!skipped.anything && !skippedComment) return false;
        }
    }

    MbCharPointer m_cursor;
    const char* m_pBegin;
    int m_line = 1;
};

}  // namespace

std::ptrdiff_t FindCommandEndIn(const CodePage& codePage, std::string_view lines, bool isFreeText) {
    if (!QUILLET_ASSERT(lines.data() != nullptr, "lines")) return -1;
    if (isFreeText) return FindFreeTextEnd(MbCharPointer(codePage, lines), lines.data());
    return CommandEndFinder(codePage, lines).Find();
}

bool IsEndDataLine(const CodePage& codePage, std::string_view line) {
    constexpr std::string_view kEndData = "END DATA";
    // Upper-casing never makes an ASCII letter of another one, nor does it move what stands
    // before the first such letter, so the line's first bytes decide alone.
    if (line.size() < kEndData.size()) return false;
    return TAVQMBstrupr_A(codePage, line.substr(0, kEndData.size())) == kEndData;
}

}  // namespace quillet
