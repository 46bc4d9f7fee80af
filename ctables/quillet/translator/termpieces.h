// Text that is kept on one line where it fits on one.
#ifndef QUILLET_TRANSLATOR_TERMPIECES_H
#define QUILLET_TRANSLATOR_TERMPIECES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "driver/outputsequence.h"

namespace quillet {

/// Makes one piece of the current line of `sequence`, so that it is never broken, if it fits on
/// a line of a command (is shorter than 79 bytes).
void KeepTogetherIfShort(OutputSequence& sequence);

/// The pieces of terms that stand in other terms. Does what an `OutputSequence` for each term
/// would do, but does not copy a piece once for every term around it.
class TermPieces {
public:
    /// The place where a term begins.
    struct Place {
        std::size_t piece = 0;
        std::size_t byte = 0;
    };

    /// Appends a piece.
    void Add(std::string_view text);

    /// The place behind the last piece.
    [[nodiscard]] Place Here() const { return {m_ends.size(), m_text.size()}; }

    /// Ends the term that began at `begin`: as `KeepTogetherIfShort`. Constant time.
    void EndTerm(Place begin);

    /// Appends the pieces to `sequence`.
    void AppendTo(OutputSequence& sequence) const;

private:
    std::string m_text;
    std::vector<std::size_t> m_ends;  // where the pieces end in m_text
};

}  // namespace quillet

#endif  // QUILLET_TRANSLATOR_TERMPIECES_H
