#include "tokenizer/tavqtokenvector.h"

#include <array>
#include <limits>
#include <utility>

#include "platform/assertion.h"
#include "platform/multibyte.h"
#include "platform/numberconversion.h"
#include "tokenizer/mbcharpointer.h"
#include "tokenizer/parseerror.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "tavqtokenvector";

constexpr AsciiSet kDigits = AsciiSet().WithRange('0', '9');
constexpr AsciiSet kNameStart = AsciiSet().WithRange('A', 'Z').WithRange('a', 'z').With("#$@");
constexpr AsciiSet kNameContinuation = kNameStart.WithRange('0', '9').With("._");
constexpr AsciiSet kBlanks = AsciiSet().With(" \t");
constexpr AsciiSet kQuotes = AsciiSet().With("'\"");
constexpr AsciiSet kLineBreaks = AsciiSet().With("\n\r");
constexpr AsciiSet kAnyAscii = AsciiSet().WithRange('\x01', '\x7F');
constexpr AsciiSet kLiteralBody = kAnyAscii.Without("'\"\n\r");
constexpr AsciiSet kCommentBody = kAnyAscii.Without("*\n\r");
// What the search for a command's end steps over without looking.
constexpr AsciiSet kNoCommandEnd = kAnyAscii.Without("'\"/.\n\r");
constexpr AsciiSet kNoPeriod = kAnyAscii.Without(".");
// What can neither be wrong nor begin anything that can: letters and operators outside numbers,
// comments and literals. Not "&", which with a "/" keeps that from opening a comment.
constexpr AsciiSet kHarmless = kNameStart.With(" \t<>=~+-*(),:;?%|{}[]");
// A decimal number of at most this many bytes and without an exponent can neither be out of
// range nor end early.
constexpr std::size_t kShortNumber = 15;
constexpr AsciiSet kNumberGoesOn = AsciiSet().With(".eExX");
// How the source text of a token can begin whose value is compared with the special words.
constexpr AsciiSet kSpecialWordStart = kQuotes.With("*BbCcDd");
// What is skipped behind a closing quote, while a "+" may still follow.
constexpr AsciiSet kLiteralGap = AsciiSet().With(" \n\r");

bool IsNonAscii(std::int32_t code) { return code < 0 || code > 127; }

bool IsNameStart(std::int32_t code) { return IsNonAscii(code) || kNameStart.HasCode(code); }

bool IsInvalidUnquoted(std::int32_t code) {
    constexpr std::int32_t kNeverDelivered = 3895;
    return (code > 0 && code < 32 && code != '\t' && code != '\n' && code != '\r') ||
           code == kNeverDelivered;
}

// True when the cursor stands on "/" and "*" follows.
bool IsAtComment(const MbCharPointer& cursor) {
    return cursor.Code() == '/' && cursor.Position()[1] == '*';
}

// Steps over LF, CR, CR LF or LF CR. The first character of the new line has column 0.
void SkipLineBreak(MbCharPointer& cursor) {
    const std::int32_t first = cursor.Code();
    const std::int32_t second = cursor.Advance();
    if (second != first && (second == '\n' || second == '\r')) cursor.Advance();
    cursor.SetColumn(0);
}

// From the "/" that opens a comment to the "/" that closes it, which is left in place: readers
// of the text have always seen it as an operator. Without one, to the end of the line.
void SkipComment(MbCharPointer& cursor) {
    cursor.Advance();
    cursor.Advance();
    while (true) {
        cursor.SkipRun(kCommentBody);
        const std::int32_t code = cursor.Code();
        if (code == 0 || kLineBreaks.HasCode(code)) return;
        const bool closes = code == '*' && cursor.Position()[1] == '/';
        cursor.Advance();
        if (closes) return;
    }
}

struct OperatorSpelling {
    std::string_view spelling;
    int code;
};

constexpr OperatorSpelling kOneCharacterOperators[] = {
    {"<", TokenCodes::kLessThan},       {">", TokenCodes::kGreaterThan},
    {"=", TokenCodes::kEquals},         {"~", TokenCodes::kNot},
    {"+", TokenCodes::kPlus},           {"-", TokenCodes::kMinus},
    {"*", TokenCodes::kAsterisk},       {"/", TokenCodes::kSlash},
    {"(", TokenCodes::kLeftParen},      {")", TokenCodes::kRightParen},
    {",", TokenCodes::kComma},          {":", TokenCodes::kColon},
    {";", TokenCodes::kSemicolon},      {".", TokenCodes::kPeriod},
    {"_", TokenCodes::kUnderscore},     {"?", TokenCodes::kQuestionMark},
    {"%", TokenCodes::kPercent},        {"|", TokenCodes::kVerticalBar},
    {"&", TokenCodes::kAmpersand},      {"{", TokenCodes::kLeftBrace},
    {"}", TokenCodes::kRightBrace},     {"[", TokenCodes::kLeftSqBracket},
    {"]", TokenCodes::kRightSqBracket},
};

constexpr OperatorSpelling kTwoCharacterOperators[] = {
    {"<=", TokenCodes::kLtOrEq},       {">=", TokenCodes::kGtOrEq},
    {"~=", TokenCodes::kNotEqualCode}, {"<>", TokenCodes::kNotEqualCode},
    {"**", TokenCodes::kPower},        {"&*", TokenCodes::kElemMult},
    {"&/", TokenCodes::kElemDiv},      {"*>", TokenCodes::kXtabNest},
};

// What the two-character operators end in.
constexpr AsciiSet kSecondOperatorCharacter = AsciiSet().With("=>*/");

constexpr OperatorSpelling kWordOperators[] = {
    {"LT", TokenCodes::kLessThan}, {"GT", TokenCodes::kGreaterThan},
    {"EQ", TokenCodes::kEquals},   {"LE", TokenCodes::kLtOrEq},
    {"GE", TokenCodes::kGtOrEq},   {"NE", TokenCodes::kNotEqualCode},
    {"NOT", TokenCodes::kNot},     {"TO", TokenCodes::kTo},
    {"WITH", TokenCodes::kWith},   {"AND", TokenCodes::kAnd},
    {"OR", TokenCodes::kOr},       {"BY", TokenCodes::kBy},
    {"ALL", TokenCodes::kAll},
};

// The code of `spelling` in a table, `kNotOperator` when it is not there.
template <std::size_t kCount>
constexpr int FindOperator(const OperatorSpelling (&table)[kCount], std::string_view spelling) {
    for (const OperatorSpelling& entry : table) {
        if (entry.spelling == spelling) return entry.code;
    }
    return TokenCodes::kNotOperator;
}

// The one-character operators by their byte; every byte of ordinary text is looked up here.
constexpr auto kOperatorByByte = [] {
    std::array<int, 128> codes{};
    for (const OperatorSpelling& entry : kOneCharacterOperators) {
        codes[static_cast<unsigned char>(entry.spelling[0])] = entry.code;
    }
    return codes;
}();

int OneCharacterOperator(std::int32_t code) {
    return IsNonAscii(code) ? TokenCodes::kNotOperator
                            : kOperatorByByte[static_cast<std::size_t>(code)];
}

// The first words of commands whose body is no syntax.
struct SpecialWord {
    std::string_view word;
    std::size_t count = 0;  // bytes compared; 0 compares the whole text
    SpecialCommandState state = SpecialCommandState::kFirstTokenSeen;
};

constexpr SpecialWord kSpecialWords[] = {
    {"*", 3, SpecialCommandState::kComment},         {"COMMENT", 3, SpecialCommandState::kComment},
    {"**", 3, SpecialCommandState::kComment},        {"*>", 3, SpecialCommandState::kComment},
    {"DOCUMENT", 3, SpecialCommandState::kDocument}, {"BEGIN", 0, SpecialCommandState::kBeginSeen},
};

// The bytes [pBegin, pEnd) of the text and where they start.
struct SourceRange {
    const char* pBegin;
    const char* pEnd;
    int line;
    int column;

    [[nodiscard]] std::string_view Text() const {
        return {pBegin, static_cast<std::size_t>(pEnd - pBegin)};
    }
};

// A sink that builds every token.
class TokenKeeper {
public:
    TokenKeeper(const CodePage& codePage, std::vector<std::unique_ptr<TAVQToken>>& tokens,
                CommandBudget& budget)
        : m_codePage(codePage), m_tokens(tokens), m_budget(budget) {}

    [[nodiscard]] int Count() const { return static_cast<int>(m_tokens.size()); }
    [[nodiscard]] std::string_view LastValue() const { return m_tokens.back()->Text(false); }
    [[nodiscard]] char LastFirstByte() const { return m_tokens.back()->Text(true).front(); }

    void AddWord(const SourceRange& source) {
        std::string value = TAVQMBstrupr_A(m_codePage, source.Text());
        const int operatorCode = FindOperator(kWordOperators, value);
        Add<TAVQStringToken>(source, std::move(value), operatorCode);
    }
    void AddMacroWord(const SourceRange& source) {
        Add<TAVQStringToken>(source, TAVQMBstrupr_A(m_codePage, source.Text()),
                             static_cast<int>(TokenCodes::kNotOperator));
    }
    void AddNumber(const SourceRange& source, double value) { Add<TAVQNumberToken>(source, value); }
    void AddOperator(const SourceRange& source, int code) { Add<TAVQOperatorToken>(source, code); }

    void BeginLiteral() { m_literal.clear(); }
    // `repeated` bytes of the part are in the literal already (see `ReadLiteral`).
    void AppendToLiteral(std::string_view part, std::size_t repeated) {
        m_budget.ChargeText(repeated);
        m_literal.append(part);
    }
    void EndLiteral(const SourceRange& source) { Add<TAVQLiteralToken>(source, m_literal); }

    // Numbers are always converted, their value is wanted.
    [[nodiscard]] static bool MayLeaveUnconverted(std::string_view /*number*/) { return false; }

private:
    template <class Token, class... Arguments>
    void Add(const SourceRange& source, Arguments&&... arguments) {
        m_tokens.push_back(std::make_unique<Token>(source.pBegin, source.pEnd, source.line,
                                                   source.column,
                                                   std::forward<Arguments>(arguments)...));
    }

    const CodePage& m_codePage;
    std::vector<std::unique_ptr<TAVQToken>>& m_tokens;
    CommandBudget& m_budget;
    std::string m_literal;
};

// A sink that counts the tokens. Of the first two, which decide the command's kind, it remembers
// where they are, and makes a value of them only when it is asked for.
class TokenCounter {
public:
    explicit TokenCounter(const CodePage& codePage) : m_codePage(codePage) {}

    [[nodiscard]] int Count() const { return m_count; }
    [[nodiscard]] std::string LastValue() const { return ValueOf(m_last, m_literal); }
    [[nodiscard]] std::string FirstValue() const { return ValueOf(m_first, m_firstLiteral); }
    [[nodiscard]] bool FirstIsLiteral() const { return m_first.type == TokenCodes::kLiteral; }
    [[nodiscard]] char LastFirstByte() const { return m_last.text.front(); }

    void AddWord(const SourceRange& source) { Add(source, TokenCodes::kString); }
    void AddMacroWord(const SourceRange& source) { Add(source, TokenCodes::kString); }
    void AddNumber(const SourceRange& source, double /*value*/) {
        Add(source, TokenCodes::kNumber);
    }
    void AddOperator(const SourceRange& source, int /*code*/) {
        Add(source, TokenCodes::kOperator);
    }

    void BeginLiteral() { m_literal.clear(); }
    void AppendToLiteral(std::string_view part, std::size_t /*repeated*/) {
        if (m_count >= 2 || m_literal.size() >= kValueBytes) return;
        m_literal.append(part.substr(0, kValueBytes));
    }
    void EndLiteral(const SourceRange& source) {
        if (m_count == 0) m_firstLiteral = m_literal;
        Add(source, TokenCodes::kLiteral);
    }

    [[nodiscard]] static bool MayLeaveUnconverted(std::string_view number) {
        return number.size() <= kShortNumber &&
               number.find_first_of("eE") == std::string_view::npos;
    }

private:
    // Longer than every text that a value is compared with, whatever the comparison's length.
    static constexpr std::size_t kValueBytes = 8;

    struct SeenToken {
        std::string_view text;
        TokenCodes::TokenType type = TokenCodes::kAtEnd;
    };

    void Add(const SourceRange& source, TokenCodes::TokenType type) {
        if (m_count < 2) {
            m_last = {source.Text(), type};
            if (m_count == 0) m_first = m_last;
        }
        ++m_count;
    }

    // The beginning of the token's value; `literal` is what it is for a literal.
    [[nodiscard]] std::string ValueOf(const SeenToken& token, const std::string& literal) const {
        if (token.type == TokenCodes::kLiteral) return literal;
        const std::string_view text = TAVQMBStringTruncate_A(m_codePage, token.text, kValueBytes);
        return token.type == TokenCodes::kString ? TAVQMBstrupr_A(m_codePage, text)
                                                 : std::string(text);
    }

    const CodePage& m_codePage;
    int m_count = 0;
    SeenToken m_first;
    SeenToken m_last;
    std::string m_firstLiteral;
    std::string m_literal;
};

// The tokenizer proper; what becomes of the tokens is the sink's business.
template <class Sink>
class Tokenizer {
public:
    Tokenizer(const CodePage& codePage, std::string_view text, Sink& sink)
        : m_cursor(codePage, text), m_sink(sink) {}

    SpecialCommandState Run(bool skipLeadingSign, int maxTokens) {
        const int limit = maxTokens > 0 ? maxTokens : std::numeric_limits<int>::max();
        if (skipLeadingSign && (m_cursor.Code() == '+' || m_cursor.Code() == '-')) {
            m_cursor.Advance();
        }
        while (m_sink.Count() < limit && m_state < SpecialCommandState::kComment) {
            SkipSeparators();
            if (m_cursor.Code() == 0) break;
            const int count = m_sink.Count();
            ReadToken();
            if (m_sink.Count() > count) ClassifyCommand();
        }
        return m_state >= SpecialCommandState::kComment ? m_state : SpecialCommandState::kOrdinary;
    }

    // True when the text begins with a word whose first letter makes it an ordinary command.
    [[nodiscard]] bool BeginsAsOrdinary() const {
        return kNameStart.HasCode(m_cursor.Code()) && !kSpecialWordStart.HasCode(m_cursor.Code());
    }

    // Looks for errors alone in what `Run` has left; the sink's tokens from here on mean nothing.
    void CheckRest() {
        while (true) {
            SkipHarmlessRun();
            SkipSeparators();
            const std::int32_t code = m_cursor.Code();
            if (code == 0) return;
            if (code == '/') {
                // No comment, so it is an operator, and nothing makes a longer one of it.
                m_cursor.Advance();
            } else if (!kHarmless.HasCode(code) && !SkipPlainNumber()) {
                ReadToken();
            }
        }
    }

private:
    // Digits and periods directly behind a letter belong to its word and are no number.
    void SkipHarmlessRun() {
        const char* pBegin = m_cursor.Position();
        m_cursor.SkipRun(kHarmless);
        const char* pEnd = m_cursor.Position();
        if (pEnd != pBegin && kNameStart.Has(pEnd[-1])) SkipNameContinuation();
    }

    // A few digits that nothing follows which could make them a number of another kind; most
    // numbers are of this sort, and none of them can be wrong.
    bool SkipPlainNumber() {
        const char* pEnd = kDigits.FindEnd(m_cursor.Position());
        const auto length = static_cast<std::size_t>(pEnd - m_cursor.Position());
        if (length == 0 || length > kShortNumber || kNumberGoesOn.Has(*pEnd)) return false;
        m_cursor.SkipRun(kDigits);
        return true;
    }

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

    // What was read since `start`.
    [[nodiscard]] SourceRange SourceSince(const MbCharPointer& start) const {
        return {start.Position(), m_cursor.Position(), m_line, start.Column()};
    }

    [[nodiscard]] ParseError ErrorHere(ParseErrorKind kind) const {
        return {m_line, m_cursor.Column(), kind};
    }

    void SkipNameContinuation() {
        m_cursor.SkipRun(kNameContinuation);
        while (IsNonAscii(m_cursor.Code())) {
            m_cursor.Advance();
            m_cursor.SkipRun(kNameContinuation);
        }
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

    // A "+" behind a closing quote glues the next literal to this one, in whatever quotes. Three
    // habits are kept because old files live on them: a "+" that no quote follows is dropped
    // once a blank stood before it; directly behind the quote it makes the literal go on, its
    // text so far repeated; and line breaks skipped here are not counted.
    void ReadLiteral() {
        const MbCharPointer start = m_cursor;
        std::int32_t quote = m_cursor.Code();
        m_cursor.Advance();
        const char* pPart = m_cursor.Position();
        std::size_t repeated = 0;
        m_sink.BeginLiteral();
        while (true) {
            SkipLiteralBody(quote);
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

    // To the closing quote; a literal must not run over the end of its line.
    void SkipLiteralBody(std::int32_t quote) {
        m_cursor.SkipRun(kLiteralBody);
        while (m_cursor.Code() != quote) {
            if (m_cursor.Code() == 0 || kLineBreaks.HasCode(m_cursor.Code())) {
                throw ErrorHere(ParseErrorKind::kUnclosedLiteral);
            }
            m_cursor.Advance();
            m_cursor.SkipRun(kLiteralBody);
        }
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
    // hexadecimal number goes on behind the zero that was counted here.
    double ConvertNumberSince(const MbCharPointer& start) {
        const bool looksHexadecimal = m_cursor.Code() == 'x' || m_cursor.Code() == 'X';
        if (!looksHexadecimal && Sink::MayLeaveUnconverted(TextSince(start.Position()))) return 0.0;
        const ConvertedNumber number = ConvertNumber(start.Position());
        if (number.pEnd != m_cursor.Position()) {
            throw ParseError(m_line, start.Column(), ParseErrorKind::kInvalidNumber);
        }
        QUILLET_ASSERT(!number.outOfRange, "errno != ERANGE");
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

    // Behind the first character of an operator, at one that may be its second.
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
            ClassifyFirstToken();
        } else if (m_state == SpecialCommandState::kBeginSeen) {
            ClassifySecondToken();
        }
    }

    void ClassifyFirstToken() {
        QUILLET_ASSERT(m_sink.Count() == 1, "Count() == 1");
        m_state = SpecialCommandState::kFirstTokenSeen;
        // Most commands begin with a letter that none of the words has.
        if (!kSpecialWordStart.Has(m_sink.LastFirstByte())) return;
        const auto value = m_sink.LastValue();
        for (const SpecialWord& special : kSpecialWords) {
            if (CompareTextPrefix(value, special.word, special.count) == 0) {
                m_state = special.state;
                return;
            }
        }
    }

    // The period of "BEGIN DATA." is part of the word.
    void ClassifySecondToken() {
        QUILLET_ASSERT(m_sink.Count() == 2, "Count() == 2");
        const auto value = m_sink.LastValue();
        m_state = value == "DATA" || value == "DATA." ? SpecialCommandState::kBeginData
                                                      : SpecialCommandState::kFirstTokenSeen;
    }

    MbCharPointer m_cursor;
    Sink& m_sink;
    int m_line = 1;
    SpecialCommandState m_state = SpecialCommandState::kOrdinary;
};

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
        if (cursor.Code() == 0 || kLineBreaks.HasCode(cursor.Code())) return pPeriod - pBegin;
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
                if (IsEndBehindPeriod()) return offset;
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
        m_cursor.SkipRun(kLiteralBody);
        while (m_cursor.Code() != quote) {
            if (m_cursor.Code() == 0 || kLineBreaks.HasCode(m_cursor.Code())) {
                throw ParseError(m_line, start.Column(), ParseErrorKind::kUnclosedLiteral);
            }
            m_cursor.Advance();
            m_cursor.SkipRun(kLiteralBody);
        }
        m_cursor.Advance();
    }

    // Whether the period just passed ends the command: only blanks and comments that run to the
    // end of the line may stand between it and the line break.
    bool IsEndBehindPeriod() {
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

TAVQTokenVector::TAVQTokenVector(const CodePage& codePage, std::string_view text,
                                 bool skipLeadingSign, int maxTokens, CommandBudget& budget) {
    if (text.data() == nullptr) return;
    TokenKeeper keeper(codePage, m_TokVec, budget);
    m_state = Tokenizer<TokenKeeper>(codePage, text, keeper).Run(skipLeadingSign, maxTokens);
}

TAVQTokenVector::TAVQTokenVector(const CodePage& codePage, std::string_view text,
                                 bool skipLeadingSign, int maxTokens) {
    CommandBudget budget;
    *this = TAVQTokenVector(codePage, text, skipLeadingSign, maxTokens, budget);
}

const TAVQToken* TAVQTokenVector::At(int index) const {
    if (!QUILLET_ASSERT(0 <= index && index < Count(),
                        "0 <= index && index < (int)m_TokVec.size()")) {
        return nullptr;
    }
    return m_TokVec[static_cast<std::size_t>(index)].get();
}

void CheckTokens(const CodePage& codePage, std::string_view text, bool skipLeadingSign) {
    constexpr int kTokensForKind = 2;
    TokenCounter counter(codePage);
    Tokenizer<TokenCounter> tokenizer(codePage, text, counter);
    if (tokenizer.BeginsAsOrdinary() ||
        tokenizer.Run(skipLeadingSign, kTokensForKind) < SpecialCommandState::kComment) {
        tokenizer.CheckRest();
    }
}

TokenSurvey SurveyTokens(const CodePage& codePage, std::string_view text, bool skipLeadingSign,
                         int maxTokens) {
    if (text.data() == nullptr) return {};
    TokenCounter counter(codePage);
    TokenSurvey survey;
    survey.state = Tokenizer<TokenCounter>(codePage, text, counter).Run(skipLeadingSign, maxTokens);
    survey.count = counter.Count();
    survey.firstValue = counter.FirstValue();
    survey.firstIsLiteral = counter.FirstIsLiteral();
    return survey;
}

bool IsEndDataLine(const CodePage& codePage, std::string_view line) {
    constexpr std::string_view kEndData = "END DATA";
    // Upper-casing never makes an ASCII letter of another one, nor does it move what stands
    // before the first such letter, so the line's first bytes decide alone.
    if (line.size() < kEndData.size()) return false;
    return TAVQMBstrupr_A(codePage, line.substr(0, kEndData.size())) == kEndData;
}

std::ptrdiff_t FindCommandEndIn(const CodePage& codePage, std::string_view lines, bool isFreeText) {
    if (!QUILLET_ASSERT(lines.data() != nullptr, "lines")) return -1;
    if (isFreeText) return FindFreeTextEnd(MbCharPointer(codePage, lines), lines.data());
    return CommandEndFinder(codePage, lines).Find();
}

}  // namespace quillet
