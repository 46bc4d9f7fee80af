// What kind of command a text is: its first two tokens tell.
#ifndef QUILLET_TOKENIZER_COMMANDKIND_H
#define QUILLET_TOKENIZER_COMMANDKIND_H

#include <string_view>

namespace quillet {

enum class CommandKind : int {
    kOrdinary = 0,
    kComment = 1,
    kDocument = 2,
    kInlineData = 3,  ///< BEGIN DATA and the lines up to END DATA.
};

/// What the first one or two tokens say about a command.
enum class SpecialCommandState : int {
    kOrdinary = 0,
    kFirstTokenSeen = 1,
    kBeginSeen = 2,  ///< The first token was BEGIN; the second decides.
    kComment = 3,
    kDocument = 4,
    kBeginData = 5,
};

/// This many tokens tell the kind of a command.
inline constexpr int kTokensForKind = 2;

/// True for a command whose body is no syntax, so that its tokens end here.
[[nodiscard]] constexpr bool IsSpecial(SpecialCommandState state) {
    return state >= SpecialCommandState::kComment;
}

/// The kind of the command whose tokens led to `state`.
[[nodiscard]] CommandKind KindOf(SpecialCommandState state);

/// The state after a first token with the value text `value`.
[[nodiscard]] SpecialCommandState StateAfterFirst(std::string_view value);

/// The state after a second token with the value text `value`, when the first one was BEGIN.
[[nodiscard]] SpecialCommandState StateAfterBegin(std::string_view value);

/// False when no token whose source text begins with `firstByte` leads to anything else than
/// `kFirstTokenSeen`. True for every quote: the word may stand in a literal.
[[nodiscard]] bool MayBeginSpecialCommand(char firstByte);

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_COMMANDKIND_H
