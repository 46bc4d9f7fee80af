// Functions as the old and the new command name them.
#ifndef QUILLET_OUTLINE_ACCOUNTFUNCTIONS_H
#define QUILLET_OUTLINE_ACCOUNTFUNCTIONS_H

#include <string>
#include <string_view>

#include "outline/tableoutline.h"

namespace quillet::outline {

/// What a function needs to be computed from.
enum class FunctionKind : unsigned char { kCases, kResponses, kValues };

/// The kind of a function that is asked for, by its key.
[[nodiscard]] FunctionKind KindOfFunction(std::string_view askedKey);

/// True for a function, by its key in the new command, that categories have no values for.
[[nodiscard]] bool NeedsValues(std::string_view writtenKey);

/// True for one, by its key in the new command, that sets alone can answer.
[[nodiscard]] bool NeedsSet(std::string_view writtenKey);

/// The key in the new command of a function that is asked for, in a term with or without a set.
[[nodiscard]] std::string_view WrittenFunctionKey(const Assignment& asked, bool hasSet,
                                                  const Settings& settings);

/// All that a function looks like but its name, the same text for the same looks.
[[nodiscard]] std::string LooksOf(const Assignment& assignment);

/// "UNWEIGHTED PTILE 25(income)".
[[nodiscard]] std::string TextOfFunction(const Assignment& asked);

/// "PTILE 25 'Quarter'".
[[nodiscard]] std::string TextOfWritten(const Assignment& written);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ACCOUNTFUNCTIONS_H
