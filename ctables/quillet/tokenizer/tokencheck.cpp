#include "tokenizer/tokencheck.h"

#include <cstddef>
#include <cstdint>

#include "tokenizer/commandkind.h"
#include "tokenizer/mbcharpointer.h"
#include "tokenizer/scanning.h"
#include "tokenizer/tokencounter.h"
#include "tokenizer/tokenscanner.h"

namespace quillet {

namespace {

// What can neither be wrong nor begin anything that can: letters and operators outside numbers,
// comments and literals. Not "&", which with a "/" keeps that from opening a comment.
constexpr AsciiSet kHarmless = kNameStart.With(" \t<>=~+-*(),:;?%|{}[]");
constexpr AsciiSet kNumberGoesOn = AsciiSet().With(".eExX");

class TokenChecker {
public:
    TokenChecker(const CodePage& codePage, std::string_view text)
        : m_counter(codePage), m_scanner(codePage, text, m_counter) {}

    void Run(bool skipLeadingSign) {
        // The body of a special command is no syntax.
        if (BeginsAsOrdinary() || !IsSpecial(m_scanner.Run(skipLeadingSign, kTokensForKind))) {
            CheckRest();
        }
    }

private:
    // True when the text begins with a word whose first letter makes it an ordinary command.
    [[nodiscard]] bool BeginsAsOrdinary() {
        const MbCharPointer& cursor = m_scanner.Cursor();
        return kNameStart.HasCode(cursor.Code()) && !MayBeginSpecialCommand(*cursor.Position());
    }

    // The counter's tokens mean nothing from here on.
    void CheckRest() {
        MbCharPointer& cursor = m_scanner.Cursor();
        while (true) {
            SkipHarmlessRun();
            m_scanner.SkipSeparators();
            const std::int32_t code = cursor.Code();
            if (code == 0) return;
            if (code == '/') {
                // No comment, so it is an operator, and nothing makes a longer one of it.
                cursor.Advance();
            } else if (!kHarmless.HasCode(code) && !SkipPlainNumber()) {
                m_scanner.ReadToken();
            }
        }
    }

    // Digits and periods directly after a letter belong to its word and are no number.
    void SkipHarmlessRun() {
        MbCharPointer& cursor = m_scanner.Cursor();
        const char* pBegin = cursor.Position();
        cursor.SkipRun(kHarmless);
        const char* pEnd = cursor.Position();
        if (pEnd != pBegin && kNameStart.Has(pEnd[-1])) m_scanner.SkipNameContinuation();
    }

    // A few digits that nothing follows which could make them a number of another kind; most
    // numbers are of this sort, and none of them can be wrong.
    bool SkipPlainNumber() {
        MbCharPointer& cursor = m_scanner.Cursor();
        const char* pEnd = kDigits.FindEnd(cursor.Position());
        const auto length = static_cast<std::size_t>(pEnd - cursor.Position());
        if (length == 0 || length > kShortNumber || kNumberGoesOn.Has(*pEnd)) return false;
        cursor.SkipRun(kDigits);
        return true;
    }

    TokenCounter m_counter;
    TokenScanner<TokenCounter> m_scanner;
};

}  // namespace

void CheckTokens(const CodePage& codePage, std::string_view text, bool skipLeadingSign) {
    TokenChecker(codePage, text).Run(skipLeadingSign);
}

}  // namespace quillet
