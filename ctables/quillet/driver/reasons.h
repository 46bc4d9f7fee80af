// The table of reasons why a command could not be converted, and the words of warnings.
#ifndef QUILLET_DRIVER_REASONS_H
#define QUILLET_DRIVER_REASONS_H

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "parser/tbtrtablescommand.h"
#include "parser/warning.h"
#include "quillet.h"
#include "tokenizer/parseerror.h"

namespace quillet {

/// A row of the table; "quillet-messages.def" has the rows and says what the columns are.
struct Reason {
    ErrorKind kind;
    std::string_view name;
    std::string_view message;
    std::string_view heading;
};

inline constexpr Reason kReasons[] = {
#define QUILLET_REASON(kind, name, message, heading) {ErrorKind::kind, name, message, heading},
#include "quillet-messages.def"
};

/// The row of `kind`. For `kNone` and for a kind that there is not, the row of `kUnknown`; the
/// latter is a bug and asserts.
[[nodiscard]] const Reason& ReasonOf(ErrorKind kind);

/// The public name of a reason: `kNone` of each sort is `kUnknown`, for a failure without a reason.
/// A kind that there is not is a bug and asserts; it is `kUnknown`, too.
[[nodiscard]] ErrorKind ErrorKindOf(ParseErrorKind kind);
[[nodiscard]] ErrorKind ErrorKindOf(TablesErrorKind kind);

/// The message of `kOutOfMemory` for a command, made without asking for memory.
class OutOfMemoryLine {
public:
    /// `line`, from 1, is the one on which the command begins.
    explicit OutOfMemoryLine(long line) noexcept;

    /// Good as long as this object.
    [[nodiscard]] std::string_view Text() const { return {m_text.data(), m_size}; }

private:
    static constexpr std::size_t kMostBytes = 100;

    std::array<char, kMostBytes> m_text{};
    std::size_t m_size = 0;
};

/// What stands in `message` in place of the "%s" of `format`; nothing when it was not made of that.
/// A format without "%s" gives an empty text.
[[nodiscard]] std::optional<std::string_view> FilledIn(std::string_view format,
                                                       std::string_view message);

/// The words of `warning`.
[[nodiscard]] std::string MessageOf(const Warning& warning);

}  // namespace quillet

#endif  // QUILLET_DRIVER_REASONS_H
