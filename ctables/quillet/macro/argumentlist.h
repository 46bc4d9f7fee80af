// The argument list of a definition.
#ifndef QUILLET_MACRO_ARGUMENTLIST_H
#define QUILLET_MACRO_ARGUMENTLIST_H

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "macro/fault.h"
#include "macro/lexer.h"
#include "macro/markedtext.h"
#include "platform/codepage.h"

namespace quillet::macro {

/// One argument of a macro, as it is defined.
struct Argument {
    /// How its value is read.
    enum class Kind : int {
        kTokens,      ///< The next `tokenCount` tokens.
        kCharEnd,     ///< The text up to `last`.
        kEnclose,     ///< The text between `first`, which comes next, and `last`.
        kCommandEnd,  ///< The text up to the end of the command.
    };

    std::string name;  ///< Of a keyword argument: in capitals, without "!". Else empty.
    Kind kind = Kind::kTokens;
    std::size_t tokenCount = 0;
    std::string first;  ///< One character, as `last` is.
    std::string last;
    bool expandsMacros = true;
    std::optional<std::string> defaultText;  ///< Without outer blanks, on one line.
};

/// All arguments of a macro. The positional ones come first.
struct ArgumentList {
    std::vector<Argument> arguments;
    std::size_t positionalCount = 0;
    /// Where the keyword arguments stand in `arguments`, by their names.
    std::unordered_map<std::string, std::size_t> keywords;
    /// The positional arguments whose defaults are not empty, in ascending order.
    std::vector<std::size_t> positionalDefaults;
};

/// Reads the list whose opening parenthesis is the next token at `position`, and sets `position`
/// after its closing one. `macroName` is what faults call the macro. False and a fault (without
/// line; `position` tells where) when there is no list or it is written in another way. Linear in
/// what is read.
[[nodiscard]] bool ReadArgumentList(const CodePage& codePage, const Lexer& lexer,
                                    const std::string& macroName, std::size_t& position,
                                    ArgumentList& list, Fault& fault);

/// The bytes [begin, end) of `source` as the value of an argument: without outer white space, and
/// each line break and each comment, with the white space around it, as one blank.
[[nodiscard]] MarkedText ArgumentText(const CodePage& codePage, const MarkedView& source,
                                      std::size_t begin, std::size_t end);

}  // namespace quillet::macro

#endif  // QUILLET_MACRO_ARGUMENTLIST_H
