// The commands that a piece of text comes to when it is converted.
#ifndef QUILLET_DRIVER_CONVERTEDCOMMANDS_H
#define QUILLET_DRIVER_CONVERTEDCOMMANDS_H

#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "quillet.h"

namespace quillet {

/// A command of the text, or what replaces a legacy one.
struct ConvertedPiece {
    CommandType type = CommandType::kOrdinary;  ///< Of the source.
    bool isConverted = false;  ///< `text` replaces a legacy command and may be several commands.
    std::string text;          ///< With LF line ends.
};

/// The result of a conversion, command by command. Comment commands are left out.
struct ConvertedCommands {
    std::vector<ConvertedPiece> pieces;
    long legacyCommands = 0;  ///< How many of the pieces are converted.
    bool hasFailed = false;   ///< A legacy command failed, or the text is no syntax.
    std::string failure;      ///< The first reason, in words; else empty.
};

/// Converts `text`, which may have any line ends. Comments of the form that ends with its line are
/// taken out where a line begins with them, and after the period of a command: there, they would
/// keep the next command from being recognized. Assertions go to the innermost handler. Linear in
/// the text and in what it becomes.
[[nodiscard]] ConvertedCommands ConvertCommands(std::string_view text, const CodePage& codePage,
                                                bool batchMode);

/// `text` with LF for each of its line ends: LF, CR LF and CR.
[[nodiscard]] std::string WithLfAlone(std::string_view text);

}  // namespace quillet

#endif  // QUILLET_DRIVER_CONVERTEDCOMMANDS_H
