// The words of macros.
#ifndef QUILLET_MACRO_WORDS_H
#define QUILLET_MACRO_WORDS_H

#include <optional>
#include <string_view>

namespace quillet::macro {

/// Words that begin or end a part of a body, wherever they stand in it.
enum class Statement : int { kIf, kElse, kIfEnd, kDo, kDoEnd, kLet, kBreak, kOffExpand, kOnExpand };

enum class Function : int {
    kLength,
    kConcat,
    kSubstr,
    kIndex,
    kHead,
    kTail,
    kQuote,
    kUnquote,
    kUpcase,
    kBlanks,
    kEval,
};

/// How many operands a function takes.
struct OperandCount {
    int least = 1;
    int most = 1;
};

/// The statement whose whole word, in capitals and with "!", this is.
[[nodiscard]] std::optional<Statement> StatementOf(std::string_view word);

/// The function whose word this is, or begins with at least three letters of it.
[[nodiscard]] std::optional<Function> FunctionOf(std::string_view word);

/// The whole word of a function, in capitals and with "!".
[[nodiscard]] std::string_view WordOf(Function function);

[[nodiscard]] OperandCount OperandCountOf(Function function);

/// Whether `word` is `whole` or its first letters, at least three and the "!". Both are in
/// capitals.
[[nodiscard]] bool IsShortFor(std::string_view word, std::string_view whole);

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_WORDS_H
