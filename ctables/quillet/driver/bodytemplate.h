// The conversion of a command with stand-ins as a text with places for what they stand for.
#ifndef QUILLET_DRIVER_BODYTEMPLATE_H
#define QUILLET_DRIVER_BODYTEMPLATE_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "macro/lexer.h"
#include "platform/codepage.h"

namespace quillet {

/// A token of a conversion, with the white space before it.
struct TemplateToken {
    std::string space;
    std::string text;
    macro::TokenKind kind = macro::TokenKind::kOther;
    bool isSource = false;  ///< `text` is to be written as it is: nothing is looked for in it.
};

[[nodiscard]] std::vector<TemplateToken> TokensOfTemplate(std::string_view text,
                                                          const CodePage& codePage);

/// A part of a conversion that is repeated for each element of a list or each pass of a loop: the
/// tokens [begin, end), with `separator` between two of them where that is not empty.
struct RepeatedPart {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string separator;
};

/// Pairs of stand-ins: of the first pass and of the second, in lower case.
using PassNames = std::vector<std::pair<std::string, std::string>>;

/// Where `twice`, the conversion for two passes, repeats parts of `once`, the one for a single
/// pass. None when it differs in any other way. Takes time in proportion to the product of the
/// number of tokens and that of those that are repeated; texts of more than a few thousand tokens
/// are refused.
[[nodiscard]] std::optional<std::vector<RepeatedPart>> FindRepeatedParts(
    const std::vector<TemplateToken>& once, const std::vector<TemplateToken>& twice,
    const PassNames& names);

}  // namespace quillet

#endif  // QUILLET_DRIVER_BODYTEMPLATE_H
