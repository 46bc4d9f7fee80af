// The functions of the new command for tables.
#ifndef QUILLET_OUTLINE_WRITTENFUNCTIONS_H
#define QUILLET_OUTLINE_WRITTENFUNCTIONS_H

#include <optional>
#include <string_view>

#include "outline/tableoutline.h"

namespace quillet::outline {

/// A function as a word of the new command names it.
struct WrittenFunction {
    std::string_view key;  ///< As in `Assignment::function`; a view of the word.
    bool isUnweighted = false;
    PercentOf percentOf = PercentOf::kNothing;
    Counted counted = Counted::kNothing;
    Counted against = Counted::kNothing;
};

/// The function that `word`, in capitals, names; nothing for any other word.
[[nodiscard]] std::optional<WrittenFunction> FindWrittenFunction(std::string_view word);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_WRITTENFUNCTIONS_H
