// The body of a macro as a list of instructions, which is run once for each call.
#ifndef QUILLET_MACRO_PROGRAM_H
#define QUILLET_MACRO_PROGRAM_H

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "macro/fault.h"

namespace quillet::macro {

/// What an instruction does. Values stand on a stack of texts, the results of conditions on a
/// stack of truth values; text goes to the end of what is being written.
enum class Operation : int {
    kWriteBody,     ///< Writes the bytes [first, second) of the body.
    kEndCommand,    ///< Breaks the line; the blanks that would come next are dropped.
    kWriteSlot,     ///< Writes the value of slot `first`; without one the body's [second, third).
    kWriteValue,    ///< Takes a value and writes it.
    kPushConstant,  ///< Puts constant `first` onto the stack.
    kPushSlot,      ///< The value of slot `first`; without one the body's [second, third).
    kPushAll,       ///< All positional arguments that are not empty.
    kCall,          ///< Takes `second` operands, puts the result of function `first`.
    kStore,         ///< Takes a value into slot `first`.
    kCompare,       ///< Takes two values, puts the truth of relation `first`.
    kTest,          ///< Takes a value, puts its truth.
    kNot,           ///< These take truth values and put one.
    kAnd,
    kOr,
    kJump,        ///< Goes on at instruction `first`.
    kJumpUnless,  ///< Takes a truth value and jumps unless it holds.
    kBeginCount,  ///< Takes first, last and step: a loop over numbers with slot `first`.
    kBeginList,   ///< What is written from here on is the list of a loop.
    kEndList,     ///< The list is whole: a loop over its tokens with slot `first`.
    kNextPass,    ///< Gives the variable its next value; without one ends the loop and jumps.
    kBreak,       ///< Ends the innermost loop and jumps to `first`; `kNowhere`: there is none.
    kOffExpand,   ///< Names that are written from here on are no calls.
    kOnExpand,
};

inline constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

struct Instruction {
    Operation operation = Operation::kWriteBody;
    std::size_t first = 0;
    std::size_t second = 0;
    std::size_t third = 0;
    std::size_t position = 0;  ///< Where it stands in the body, for what goes wrong.
};

enum class Relation : int { kEqual, kNotEqual, kLess, kLessOrEqual, kGreater, kGreaterOrEqual };

/// A slot is a place for a value: of the arguments, in their order, then of all other names.
struct Program {
    std::vector<Instruction> instructions;
    std::vector<std::string> constants;
    /// The statements do not fit their forms: the program must not be run.
    std::optional<Fault> fault;
};

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_PROGRAM_H
