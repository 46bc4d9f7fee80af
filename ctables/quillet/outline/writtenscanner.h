// The words, texts and signs of a generated command.
#ifndef QUILLET_OUTLINE_WRITTENSCANNER_H
#define QUILLET_OUTLINE_WRITTENSCANNER_H

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/codepage.h"

namespace quillet::outline {

enum class WrittenTokenKind : unsigned char {
    kEnd,
    kWord,  ///< A name, a keyword, the name of a function or a format.
    kNumber,
    kLiteral,
    kSign,      ///< One byte that begins none of the others.
    kUnclosed,  ///< A literal without its last quote; the text ends here.
    kTooLong,   ///< A literal whose value would be far longer than the text.
};

/// A plain value; its text is a view of the text that is read.
struct WrittenToken {
    WrittenTokenKind kind = WrittenTokenKind::kEnd;
    std::string_view
        text;  ///< As it stands there; a literal with its quotes, without blanks after it.
    std::size_t offset = 0;  ///< In bytes, from the beginning of the text that is read.
    long line = 1;           ///< From 1.

    [[nodiscard]] bool Is(WrittenTokenKind other) const { return kind == other; }
    [[nodiscard]] bool IsSign(char sign) const {
        return kind == WrittenTokenKind::kSign && text.front() == sign;
    }
    [[nodiscard]] bool IsWord(std::string_view word) const {
        return kind == WrittenTokenKind::kWord && text == word;
    }
};

/// Cuts a generated text, MRSETS and CTABLES command, into tokens.
///
/// A period belongs to the name or number before it, as in `x.` or `5.`, unless it ends a command:
/// one at the end of the text, and one after which the next line begins with CTABLES. That one is a
/// sign. The text and the code page are borrowed. Linear in the text, up to a constant.
class WrittenScanner {
public:
    WrittenScanner(const CodePage& codePage, std::string_view text);

    /// Reads the next token; after the last one `kEnd`, again and again.
    [[nodiscard]] WrittenToken Next();

    /// The value of the literal that was read last: without quotes, its parts joined.
    [[nodiscard]] const std::string& LiteralValue() const { return m_value; }

private:
    [[nodiscard]] char At(std::size_t place) const {
        return place < m_text.size() ? m_text[place] : '\0';
    }
    [[nodiscard]] bool EndsCommand(std::size_t period) const;
    [[nodiscard]] std::size_t AfterCharacter(std::size_t place) const;
    [[nodiscard]] std::size_t AfterName(std::size_t place) const;
    [[nodiscard]] std::size_t AfterMacroWord(std::size_t place) const;
    [[nodiscard]] std::size_t AfterDigits(std::size_t place) const;
    [[nodiscard]] std::size_t AfterNumber(std::size_t place) const;
    [[nodiscard]] bool FindClosingQuote(char quote, std::size_t& place) const;
    [[nodiscard]] bool FindGluedPart(std::size_t& place) const;
    void SkipBlanks();
    [[nodiscard]] WrittenTokenKind ReadLiteral();
    [[nodiscard]] WrittenTokenKind ReadToken();

    const CodePage& m_codePage;
    std::string_view m_text;     // without blanks at its end
    std::size_t m_place = 0;     // where the next token is looked for
    long m_line = 1;             // of `m_place`
    std::string m_value;         // of the last literal
    std::size_t m_repeated = 0;  // bytes of values that stand in the text once and were taken twice
};

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_WRITTENSCANNER_H
