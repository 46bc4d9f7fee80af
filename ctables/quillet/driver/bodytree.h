// The body of a macro as a tree: text, what is put into it, conditions and loops.
//
// Expansion runs a body as a program, which is all that it needs. Whoever rewrites a body has to
// know where its parts stand.
#ifndef QUILLET_DRIVER_BODYTREE_H
#define QUILLET_DRIVER_BODYTREE_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "macro/macro.h"
#include "platform/codepage.h"

namespace quillet {

/// A part of a body. Its places are bytes of the macro's body.
struct BodyNode {
    enum class Kind : int {
        kText,
        kSite,       ///< An argument, a variable or a function: its value is put in here.
        kName,       ///< The name of a macro: its expansion is put in here.
        kCondition,  ///< !IF: `header` is "!IF (...)", the first children are the !THEN part.
        kLoop,       ///< !DO: `header` is all that stands before the text that is repeated.
        kLet,
        kOther,  ///< !BREAK, !OFFEXPAND, !ONEXPAND.
    };

    Kind kind = Kind::kText;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t headerEnd = 0;          ///< Of a condition and a loop.
    bool hasElse = false;               ///< Of a condition.
    std::size_t thenEnd = 0;            ///< Of a condition: where !ELSE or !IFEND begins.
    std::size_t elseBegin = 0;          ///< After the word !ELSE.
    std::size_t contentBegin = 0;       ///< After !THEN, or after a loop's header.
    std::size_t contentEnd = 0;         ///< Where !IFEND or !DOEND begins.
    std::vector<BodyNode> children{};   ///< Of a condition those of !THEN, of a loop all.
    std::vector<BodyNode> otherwise{};  ///< Those of !ELSE.
};

/// Tells whether a word, as it is written, calls a macro.
using IsMacroName = std::function<bool(std::string_view word)>;

/// The parts of a macro's body in their order; together they are the whole body. None when its
/// statements do not fit their forms. Linear in the body; not deeper than macros may nest.
[[nodiscard]] std::optional<std::vector<BodyNode>> ParseBody(const macro::Macro& macro,
                                                             const CodePage& codePage,
                                                             const IsMacroName& isMacroName);

}  // namespace quillet

#endif  // QUILLET_DRIVER_BODYTREE_H
