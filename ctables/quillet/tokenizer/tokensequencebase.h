// The cursor through which every reader sees the tokens of one command.
#ifndef QUILLET_TOKENIZER_TOKENSEQUENCEBASE_H
#define QUILLET_TOKENIZER_TOKENSEQUENCEBASE_H

#include <cstddef>
#include <iosfwd>
#include <string_view>

#include "platform/arena.h"
#include "platform/commandbudget.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

/// A cursor over tokens. A new sequence stands on its first token, and the first `Next` makes
/// that token current again, so a reader may read first or advance first.
///
/// `TAVQTokenSequence` is the only kind in the program. The operations are virtual, and in this
/// order, because that is the given interface of a sequence; it lets a reader depend on no more
/// than this, and be tested with tokens that no text gives.
class TokenSequenceBase : public TokenCodes {
public:
    virtual ~TokenSequenceBase() = default;

    /// Makes the next token current. False, and the sequence is at its end, when there is none.
    virtual bool Next() = 0;
    /// Index of the current token, from 0; the token count at the end.
    [[nodiscard]] virtual int CurrentIndex() const = 0;
    /// Sets which token, from 0, the following `Next` makes current.
    virtual void SetNextIndex(int index) = 0;
    [[nodiscard]] virtual int Count() const = 0;

    /// The current token's type; `kAtEnd` at the end.
    [[nodiscard]] virtual int Type() const = 0;
    /// The current token's operator code; `kNotOperator` at the end.
    [[nodiscard]] virtual int Operator() const = 0;
    /// Display text: a literal's contents, any other token's source text. Sets `chars` and
    /// `length` (bytes) and returns the length; null and 0 at the end. This and the other texts
    /// live as long as the sequence.
    virtual std::size_t GetText(const char*& chars, std::size_t& length) const = 0;
    /// The same for the value text: a word in upper case, a literal's contents.
    virtual std::size_t GetValueText(const char*& chars, std::size_t& length) const = 0;
    /// The current number's value; 0.0 at the end and for other tokens.
    [[nodiscard]] virtual double NumberValue() const = 0;
    /// Line of the current token, from 1 within the command; asserts and gives 0 at the end.
    [[nodiscard]] virtual int Line() const = 0;
    /// Column of the current token in characters (see `TAVQToken::GetPosition`); 0 at the end.
    [[nodiscard]] virtual int Column() const = 0;
    /// As `GetText`, for the source text.
    virtual std::size_t GetSourceText(const char*& chars, std::size_t& length) const = 0;

    /// Writes the current token's listing; nothing at the end.
    virtual void DumpCurrent(std::ostream& stream) const = 0;
    /// The current token's `CompareText` on its value text; -1 at the end.
    [[nodiscard]] virtual int CompareCurrent(std::string_view text, std::size_t count) const = 0;
    /// The current token, good for as long as the sequence; none at the end.
    [[nodiscard]] virtual TAVQToken CloneCurrent() = 0;
    /// Where the token of this sequence stands whose source text is `source`: sets `line` and
    /// `column` as `Line` and `Column` give them. False, and nothing is set, when there is none,
    /// and for a sequence that does not know.
    [[nodiscard]] virtual bool FindPosition(std::string_view /*source*/, int& /*line*/,
                                            int& /*column*/) {
        return false;
    }

    /// What the command may still ask for beyond its own size. Whoever reads the tokens and
    /// multiplies what they say charges it.
    [[nodiscard]] CommandBudget& Budget() { return m_budget; }

    /// What is made of the command lies here: see there who owns what.
    [[nodiscard]] Arena& Memory() { return m_memory; }

    TokenSequenceBase(const TokenSequenceBase&) = delete;
    TokenSequenceBase& operator=(const TokenSequenceBase&) = delete;

protected:
    TokenSequenceBase() = default;

private:
    CommandBudget m_budget;
    Arena m_memory;
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TOKENSEQUENCEBASE_H
