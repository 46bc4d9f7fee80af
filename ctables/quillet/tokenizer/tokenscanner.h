// The tokenizer proper: cuts a text into tokens and hands them to whoever wants them.
//
// Old files live on habits of the tokenizer that nobody would invent today; each is told where it
// is kept. It stands in a header because what is done with the tokens is compiled into it: most
// commands are only looked at, and no token of theirs is ever built.
#ifndef QUILLET_TOKENIZER_TOKENSCANNER_H
#define QUILLET_TOKENIZER_TOKENSCANNER_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/assertion.h"
#include "platform/codepage.h"
#include "platform/numberconversion.h"
#include "tokenizer/commandkind.h"
#include "tokenizer/mbcharpointer.h"
#include "tokenizer/operatorspellings.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/scanning.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

/// The bytes [pBegin, pEnd) of the text and where they start: a line from 1, and a column in
/// characters, from 1 on the first line and from 0 on every later one.
struct SourceRange {
    const char* pBegin;
    const char* pEnd;
    int line;
    int column;

    [[nodiscard]] std::string_view Text() const {
        return {pBegin, static_cast<std::size_t>(pEnd - pBegin)};
    }
};

/// A place between two tokens, to which every scanner of the same text may be sent.
struct ScannerPlace {
    MbCharPointer cursor;
    int line = 0;
};

/// Reads the tokens of one text, each of which goes to the sink.
///
/// A sink has `AddWord`, `AddMacroWord`, `AddNumber` (with the value), `AddOperator` (with its
/// code), and for a literal `BeginLiteral`, then `AppendToLiteral` for each part of its value (and
/// how many bytes of that the literal has already), then `EndLiteral`. `Count` tells how many
/// tokens it has been given; of the last one, if it is one of the first two, `LastValue` gives the
/// value text and `LastFirstByte` the first byte of the source text. `MayLeaveUnconverted` tells
/// that nobody asks for the value of a number and that it cannot be wrong. `kReadsAgain` tells that
/// the text has been read before, so that what there is to report has been reported.
///
/// The text, its code page and the sink are borrowed. Linear in the text.
template <class Sink>
class TokenScanner {
public:
    /// The bytes of `text` must be followed by a NUL, as those of a `std::string` are.
    TokenScanner(const CodePage& codePage, std::string_view text, Sink& sink)
        : m_cursor(codePage, text), m_sink(sink) {}

    /// Reads up to the end of the text, up to `maxTokens` tokens if that is above 0, or up to the
    /// token that tells a special command. With `skipLeadingSign` a "+" or "-" that is the first
    /// character is stepped over. Returns `kOrdinary` or the state of a special command. Throws
    /// `ParseError`.
    SpecialCommandState Run(bool skipLeadingSign, int maxTokens) {
        Begin(skipLeadingSign);
        while (Step(maxTokens)) {
        }
        return State();
    }

    /// The same step by step: `Begin`, and then `Step` for as long as it gives true.
    void Begin(bool skipLeadingSign) {
        if (skipLeadingSign && (m_cursor.Code() == '+' || m_cursor.Code() == '-')) {
            m_cursor.Advance();
        }
    }
    /// Reads one token, or a comma. False when there is none, or none more is wanted.
    bool Step(int maxTokens) {
        const int count = m_sink.Count();
        if ((maxTokens > 0 && count >= maxTokens) || IsSpecial(m_state)) return false;
        SkipSeparators();
        if (m_cursor.Code() == 0) return false;
        ReadToken();
        if (m_sink.Count() > count) ClassifyCommand();
        return true;
    }
    [[nodiscard]] SpecialCommandState State() const {
        return IsSpecial(m_state) ? m_state : SpecialCommandState::kOrdinary;
    }

    [[nodiscard]] ScannerPlace Here() const { return {m_cursor, m_line}; }
    void GoTo(const ScannerPlace& place) {
        m_cursor = place.cursor;
        m_line = place.line;
    }

    /// Where the scanner stands. Whoever moves it must not pass a line break.
    [[nodiscard]] MbCharPointer& Cursor() { return m_cursor; }

    /// Steps over blanks, line breaks and comments.
    void SkipSeparators() {
        while (true) {
            m_cursor.SkipRun(kBlanks);
            if (kLineBreaks.HasCode(m_cursor.Code())) {
                SkipLineBreak(m_cursor);
                ++m_line;
            } else if (IsAtComment(m_cursor)) {
                SkipComment(m_cursor);
            } else {
                return;
            }
        }
    }

    /// Steps over what may follow the first character of a name.
    void SkipNameContinuation() {
        m_cursor.SkipRun(kNameContinuation);
        while (IsNonAscii(m_cursor.Code())) {
            m_cursor.Advance();
            m_cursor.SkipRun(kNameContinuation);
        }
    }

    /// Reads the token that begins here, or a comma, which is none. Throws `ParseError`.
    void ReadToken() {
        const std::int32_t code = m_cursor.Code();
        if (IsNameStart(code)) {
            ReadWord();
        } else if (kQuotes.HasCode(code)) {
            ReadLiteral();
        } else if (code == '!') {
            ReadMacroWord();
        } else if (!ReadNumber() && !ReadOperator()) {
            QUILLET_ASSERT(IsInvalidUnquoted(code), "IsInvalidUnquoted( currChar.Code() )");
            throw ParseError(m_line, m_cursor.Column(), ParseErrorKind::kInvalidCharacter);
        }
    }

private:
    // Assertions of the tokenizer name the module whose tokens these are.
    static constexpr std::string_view kModule = "tavqtokenvector";

    // What is skipped after a closing quote, while a "+" may still follow.
    static constexpr AsciiSet kLiteralGap = AsciiSet().With(" \n\r");

    [[nodiscard]] static bool IsInvalidUnquoted(std::int32_t code) {
        constexpr std::int32_t kNeverDelivered = 3895;
        return (code > 0 && code < 32 && code != '\t' && code != '\n' && code != '\r') ||
               code == kNeverDelivered;
    }

    // What was read since `start`.
    [[nodiscard]] SourceRange SourceSince(const MbCharPointer& start) const {
        return {start.Position(), m_cursor.Position(), m_line, start.Column()};
    }

    [[nodiscard]] ParseError ErrorHere(ParseErrorKind kind) const {
        return {m_line, m_cursor.Column(), kind};
    }

    void ReadWord() {
        const MbCharPointer start = m_cursor;
        SkipNameContinuation();
        m_sink.AddWord(SourceSince(start));
    }

    // "!*", "!" and digits, or "!" and a name.
    void ReadMacroWord() {
        const MbCharPointer start = m_cursor;
        const std::int32_t code = m_cursor.Advance();
        if (code == '*') {
            m_cursor.Advance();
        } else if (kDigits.HasCode(code)) {
            m_cursor.SkipRun(kDigits);
        } else {
            SkipNameContinuation();
        }
        m_sink.AddMacroWord(SourceSince(start));
    }

    // A "+" after a closing quote glues the next literal to this one, in whatever quotes. Three
    // habits are kept because old files live on them: a "+" that no quote follows is dropped
    // once a blank stood before it; directly after the quote it makes the literal go on, its
    // text so far repeated; and line breaks skipped here are not counted.
    void ReadLiteral() {
        const MbCharPointer start = m_cursor;
        std::int32_t quote = m_cursor.Code();
        m_cursor.Advance();
        const char* pPart = m_cursor.Position();
        std::size_t repeated = 0;
        m_sink.BeginLiteral();
        while (true) {
            if (!SkipLiteralBody(m_cursor, quote)) {
                throw ErrorHere(ParseErrorKind::kUnclosedLiteral);
            }
            const std::string_view part = TextSince(pPart);
            m_sink.AppendToLiteral(part, std::exchange(repeated, 0));
            const char* pQuote = m_cursor.Position();
            if (m_cursor.Advance() == quote) {
                m_sink.AppendToLiteral({pQuote, 1}, 0);
                m_cursor.Advance();
                pPart = m_cursor.Position();
            } else if (m_cursor.Code() == '+') {
                m_cursor.Advance();
                m_cursor.SkipRun(kLiteralGap);
                if (!OpenNextPart(quote, pPart)) repeated = part.size();
            } else if (!FindGluedPart(quote, pPart)) {
                break;
            }
        }
        m_sink.EndLiteral(SourceSince(start));
    }

    [[nodiscard]] std::string_view TextSince(const char* pBegin) const {
        return {pBegin, static_cast<std::size_t>(m_cursor.Position() - pBegin)};
    }

    // Steps over a quote at the cursor, which opens the next part. False when there is none.
    bool OpenNextPart(std::int32_t& quote, const char*& pPart) {
        if (!kQuotes.HasCode(m_cursor.Code())) return false;
        quote = m_cursor.Code();
        m_cursor.Advance();
        pPart = m_cursor.Position();
        return true;
    }

    bool FindGluedPart(std::int32_t& quote, const char*& pPart) {
        while (true) {
            m_cursor.SkipRun(kLiteralGap);
            if (m_cursor.Code() != '+') return false;
            m_cursor.Advance();
            if (OpenNextPart(quote, pPart)) return true;
        }
    }

    // False, and nothing is consumed, when the text here is no number.
    bool ReadNumber() {
        if (!kDigits.HasCode(m_cursor.Code()) && m_cursor.Code() != '.') return false;
        const MbCharPointer start = m_cursor;
        m_cursor.SkipRun(kDigits);
        if (m_cursor.Code() == '.') {
            m_cursor.Advance();
            m_cursor.SkipRun(kDigits);
        }
        if (TextSince(start.Position()) == ".") {
            m_cursor = start;
            return false;
        }
        SkipExponent();
        const double value = ConvertNumberSince(start);
        m_sink.AddNumber(SourceSince(start), value);
        return true;
    }

    void SkipExponent() {
        if (m_cursor.Code() != 'E' && m_cursor.Code() != 'e') return;
        m_cursor.Advance();
        if (m_cursor.Code() == '+' || m_cursor.Code() == '-') m_cursor.Advance();
        if (!kDigits.HasCode(m_cursor.Code())) {
            throw ErrorHere(ParseErrorKind::kExponentWithoutDigits);
        }
        m_cursor.SkipRun(kDigits);
    }

    // The conversion runs on the source text and has its own idea of where a number ends: a
    // hexadecimal number goes on after the zero that was counted here.
    double ConvertNumberSince(const MbCharPointer& start) {
        const bool looksHexadecimal = m_cursor.Code() == 'x' || m_cursor.Code() == 'X';
        if (!looksHexadecimal && Sink::MayLeaveUnconverted(TextSince(start.Position()))) return 0.0;
        const ConvertedNumber number = ConvertNumber(start.Position());
        if (number.pEnd != m_cursor.Position()) {
            throw ParseError(m_line, start.Column(), ParseErrorKind::kInvalidNumber);
        }
        if constexpr (!Sink::kReadsAgain) QUILLET_ASSERT(!number.outOfRange, "errno != ERANGE");
        return number.value;
    }

    // False, and nothing is consumed, when the character here is no operator.
    bool ReadOperator() {
        const MbCharPointer start = m_cursor;
        int code = OneCharacterOperator(m_cursor.Code());
        if (code == TokenCodes::kNotOperator) return false;
        m_cursor.Advance();
        if (kSecondOperatorCharacter.HasCode(m_cursor.Code())) ReadLongerOperator(start, code);
        if (code != TokenCodes::kComma) m_sink.AddOperator(SourceSince(start), code);
        return true;
    }

    // After the first character of an operator, at one that may be its second.
    void ReadLongerOperator(const MbCharPointer& start, int& code) {
        const int longerCode = FindOperator(kTwoCharacterOperators, {start.Position(), 2});
        if (longerCode == TokenCodes::kNotOperator) return;
        code = longerCode;
        m_cursor.Advance();
        if (longerCode == TokenCodes::kElemMult && m_cursor.Code() == '*') {
            code = TokenCodes::kElemPower;
            m_cursor.Advance();
        }
    }

    void ClassifyCommand() {
        if (m_state == SpecialCommandState::kOrdinary) {
            QUILLET_ASSERT(m_sink.Count() == 1, "Count() == 1");
            // Most commands begin with a letter that none of the words has.
            m_state = MayBeginSpecialCommand(m_sink.LastFirstByte())
                          ? StateAfterFirst(m_sink.LastValue())
                          : SpecialCommandState::kFirstTokenSeen;
        } else if (m_state == SpecialCommandState::kBeginSeen) {
            QUILLET_ASSERT(m_sink.Count() == 2, "Count() == 2");
            m_state = StateAfterBegin(m_sink.LastValue());
        }
    }

    MbCharPointer m_cursor;
    Sink& m_sink;
    int m_line = 1;
    SpecialCommandState m_state = SpecialCommandState::kOrdinary;
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TOKENSCANNER_H
