// Tokens: the words, numbers, quoted literals and operators of one command.
#ifndef QUILLET_TOKENIZER_TAVQTOKEN_H
#define QUILLET_TOKENIZER_TAVQTOKEN_H

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace quillet {

/// The codes that tokens and token sequences share.
struct TokenCodes {
    enum TokenType : int {
        kAtEnd = 1,  ///< No token: the sequence is past its last one.
        kString = 2,
        kNumber = 3,
        kLiteral = 4,
        kOperator = 5,
    };

    enum OperatorCode : int {
        kNotOperator = 0,
        kLessThan = 1,
        kGreaterThan = 2,
        kEquals = 3,
        kLtOrEq = 4,
        kGtOrEq = 5,
        // 6 is "not equal"; it has no name, in listings neither.
        kNot = 7,
        kPlus = 8,
        kMinus = 9,
        kAsterisk = 10,
        kSlash = 11,
        kPower = 12,
        kLeftParen = 13,
        kRightParen = 14,
        kComma = 15,
        kColon = 16,
        kSemicolon = 17,
        kPeriod = 18,
        kUnderscore = 19,
        kQuestionMark = 20,
        kPercent = 21,
        kVerticalBar = 22,
        kAmpersand = 23,
        kLeftBrace = 24,
        kRightBrace = 25,
        kElemMult = 26,
        kElemDiv = 27,
        kElemPower = 28,
        kXtabNest = 29,
        kTo = 30,
        kWith = 31,
        kAnd = 32,
        kOr = 33,
        kBy = 34,
        kAll = 35,
        kLeftSqBracket = 36,
        kRightSqBracket = 37,
    };

    /// The operator code of "~=", "<>" and the word NE.
    static constexpr int kNotEqualCode = 6;
};

/// The name of a token type for listings; "kAtEnd" for a value that is none.
[[nodiscard]] std::string_view TokenTypeName(int type);

/// The name of an operator code for listings; "kNotOperator" for a value without a name.
[[nodiscard]] std::string_view OperatorName(int operatorCode);

/// One lexical unit of a command, with the source text it was made from.
class TAVQToken : public TokenCodes {
public:
    virtual ~TAVQToken() = default;

    [[nodiscard]] virtual int Type() const = 0;
    [[nodiscard]] virtual std::unique_ptr<TAVQToken> Clone() const = 0;

    /// Writes the diagnostic listing, each line after `indent` tabs (after none when `indent`
    /// is above 20).
    virtual void Dump(std::ostream& stream, unsigned indent) const = 0;

    /// The source text when `raw`, otherwise the value text: upper case for words, without the
    /// quotes for literals. Numbers and operators have only their source text. The reference
    /// lives as long as the token.
    [[nodiscard]] virtual const std::string& Text(bool raw) const;

    /// The value of a number token, 0.0 for every other.
    [[nodiscard]] virtual double NumberValue() const;

    /// The code of an operator, or the one that a word carries; otherwise `kNotOperator`.
    [[nodiscard]] virtual int Operator() const;

    /// Where the token starts. `line` counts from 1 within the command. `column` counts
    /// characters, from 1 on the first line and from 0 on every later one.
    virtual void GetPosition(int& line, int& column) const;

    /// Compares `Text(raw)` with `text` as unsigned bytes: below, equal to or above zero. With a
    /// `count` above 0 only the first `count` bytes of each side take part.
    [[nodiscard]] virtual int CompareText(std::string_view text, std::size_t count, bool raw) const;

protected:
    /// The source text is the bytes from `pBegin` up to, not including, `pEnd`.
    TAVQToken(const char* pBegin, const char* pEnd, int line, int column);
    TAVQToken(const TAVQToken&) = default;
    TAVQToken& operator=(const TAVQToken&) = default;

    /// Writes what every listing begins with: type name and position.
    void DumpHead(std::ostream& stream, unsigned indent) const;

private:
    std::string m_text;
    int m_line;
    int m_column;
};

/// The rule of `CompareText`, for texts that are not in a token: see there.
[[nodiscard]] int CompareTextPrefix(std::string_view left, std::string_view right,
                                    std::size_t count);

/// A word: a name or keyword.
class TAVQStringToken : public TAVQToken {
public:
    TAVQStringToken(const char* pBegin, const char* pEnd, int line, int column, std::string value,
                    int operatorCode);

    [[nodiscard]] int Type() const override { return kString; }
    [[nodiscard]] std::unique_ptr<TAVQToken> Clone() const override;
    void Dump(std::ostream& stream, unsigned indent) const override;
    [[nodiscard]] const std::string& Text(bool raw) const override;
    [[nodiscard]] int Operator() const override { return m_operatorCode; }

private:
    std::string m_value;
    int m_operatorCode;
};

/// A number.
class TAVQNumberToken : public TAVQToken {
public:
    TAVQNumberToken(const char* pBegin, const char* pEnd, int line, int column, double value);

    [[nodiscard]] int Type() const override { return kNumber; }
    [[nodiscard]] std::unique_ptr<TAVQToken> Clone() const override;
    void Dump(std::ostream& stream, unsigned indent) const override;
    [[nodiscard]] double NumberValue() const override { return m_value; }

private:
    double m_value;
};

/// A quoted literal; the source text keeps its quotes.
class TAVQLiteralToken : public TAVQToken {
public:
    TAVQLiteralToken(const char* pBegin, const char* pEnd, int line, int column, std::string value);

    [[nodiscard]] int Type() const override { return kLiteral; }
    [[nodiscard]] std::unique_ptr<TAVQToken> Clone() const override;
    void Dump(std::ostream& stream, unsigned indent) const override;
    [[nodiscard]] const std::string& Text(bool raw) const override;

private:
    std::string m_value;
};

/// An operator or a punctuation mark.
class TAVQOperatorToken : public TAVQToken {
public:
    TAVQOperatorToken(const char* pBegin, const char* pEnd, int line, int column, int operatorCode);

    [[nodiscard]] int Type() const override { return kOperator; }
    [[nodiscard]] std::unique_ptr<TAVQToken> Clone() const override;
    void Dump(std::ostream& stream, unsigned indent) const override;
    [[nodiscard]] int Operator() const override { return m_operatorCode; }

private:
    int m_operatorCode;
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TAVQTOKEN_H
