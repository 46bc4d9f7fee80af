// The tokens of one command, kept.
#ifndef QUILLET_TOKENIZER_TAVQTOKENVECTOR_H
#define QUILLET_TOKENIZER_TAVQTOKENVECTOR_H

#include <memory>
#include <string_view>
#include <vector>

#include "platform/arena.h"
#include "platform/codepage.h"
#include "platform/commandbudget.h"
#include "tokenizer/commandkind.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

/// The tokens of one command, kept. They lie one after the other in a few pieces of memory, which
/// are given back together with the vector.
///
/// Texts are byte strings in `codePage` whose bytes are followed by a NUL (as those of a
/// `std::string` are); a NUL among them ends the text for the tokenizer. Lines of a
/// `ParseError` count from 1 within the text; its column counts characters, from 1 on the first
/// line and from 0 on every later one.
class TAVQTokenVector {
public:
    /// Tokenizes `text`; throws `ParseError`, or `CommandTooLarge` when literals repeat more text
    /// than `budget` allows. With `skipLeadingSign` a "+" or "-" that is the first character is
    /// stepped over. `maxTokens` above 0 stops after that many tokens; a special command stops by
    /// itself, since its body is no syntax. Linear in the text and what the literals repeat.
    TAVQTokenVector(const CodePage& codePage, std::string_view text, bool skipLeadingSign,
                    int maxTokens, CommandBudget& budget);

    /// The same with a budget of its own.
    TAVQTokenVector(const CodePage& codePage, std::string_view text, bool skipLeadingSign,
                    int maxTokens);

    ~TAVQTokenVector() = default;
    TAVQTokenVector(const TAVQTokenVector&) = delete;
    TAVQTokenVector& operator=(const TAVQTokenVector&) = delete;

    [[nodiscard]] int Count() const { return static_cast<int>(m_TokVec.size()); }

    /// The token at `index`, from 0; null, after an assertion, when there is none.
    [[nodiscard]] const TAVQToken* At(int index) const;

    /// `kOrdinary`, `kComment`, `kDocument` or `kBeginData`.
    [[nodiscard]] SpecialCommandState State() const { return m_state; }

private:
    // A token's text may have memory of its own; the token itself has not.
    struct Destroy {
        void operator()(TAVQToken* pToken) const { pToken->~TAVQToken(); }
    };
    using Tokens = std::vector<std::unique_ptr<TAVQToken, Destroy>>;

    class Keeper;

    void Read(const CodePage& codePage, std::string_view text, bool skipLeadingSign, int maxTokens,
              CommandBudget& budget);

    Arena m_arena;
    Tokens m_TokVec;
    SpecialCommandState m_state = SpecialCommandState::kOrdinary;
};

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_TAVQTOKENVECTOR_H
