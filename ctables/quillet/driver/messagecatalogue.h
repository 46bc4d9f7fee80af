// Every text that the user sees.
#ifndef QUILLET_DRIVER_MESSAGECATALOGUE_H
#define QUILLET_DRIVER_MESSAGECATALOGUE_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "parser/warning.h"

namespace quillet {

// Standard error. File names follow the texts that end in a blank.
inline constexpr std::string_view kUsageHeading = "Usage:";
inline constexpr std::string_view kUsageLine = " quillet [-b | /b] inputFile outputFile ";
inline constexpr std::string_view kInputOpenError = "Error opening input file ";
inline constexpr std::string_view kOutputOpenError = "Error opening output file ";
inline constexpr std::string_view kInputReadError = "Error reading input file ";
inline constexpr std::string_view kOutputWriteError = "Error writing output file ";
inline constexpr std::string_view kNotEnoughMemory =
    "Not enough memory for the command that begins in line %ld.";
inline constexpr std::string_view kStandardOutputError = "Error writing standard output";
inline constexpr std::string_view kConversionFailed =
    "Syntax conversion failed. See output file for details.";

// Standard output, one line a command.
inline constexpr std::string_view kTablesSucceeded = "Tables conversion was successful!\n";
inline constexpr std::string_view kTablesFailed = "Tables conversion failed!\n";
inline constexpr std::string_view kIgraphSucceeded = "Igraph conversion was successful!\n";
inline constexpr std::string_view kIgraphFailed = "Igraph conversion failed!\n";

// The comments that frame a converted command in the output.
inline constexpr std::string_view kBeginTablesComment =
    "COMMENT -- Begin commenting out TABLES command to be converted to CTABLES.";
inline constexpr std::string_view kEndTablesComment =
    "COMMENT -- End commenting out TABLES command.";
inline constexpr std::string_view kBeginCtables = "COMMENT -- Begin CTABLES command.";
inline constexpr std::string_view kEndCtables = "COMMENT -- End CTABLES command.";
inline constexpr std::string_view kBeginIgraphComment =
    "COMMENT -- Begin commenting out IGRAPH command to be converted to GGRAPH.";
inline constexpr std::string_view kEndIgraphComment =
    "COMMENT -- End commenting out IGRAPH command.";
inline constexpr std::string_view kBeginGgraph = "COMMENT -- Begin GGRAPH command.";
inline constexpr std::string_view kEndGgraph = "COMMENT -- End GGRAPH command.";

// Why an IGRAPH command cannot be converted, written as a comment; also
// igraph/gpl/expressibility.cpp.
inline constexpr std::string_view kIgraphNotValid =
    "IGRAPH syntax is not valid, and can't be converted!";
inline constexpr std::string_view kIgraphTooLargeText =
    "IGRAPH conversion is not possible: the command is too large";

// Why a text cannot be cut into tokens.
inline constexpr std::string_view kTokenizingPosition =
    "Error while tokenizing input syntax file. Line %ld, column %d.";
inline constexpr std::string_view kUnclosedLiteralText =
    "Literal unclosed at the end of a line or command";
inline constexpr std::string_view kExponentWithoutDigitsText =
    "Number has a trailing E[+|-] but no digits after that.";
inline constexpr std::string_view kInvalidNumberText = "Invalid or out-of-range number";
inline constexpr std::string_view kInvalidCharacterText =
    "Encountered a character that is not valid in Korvel syntax.";

// Why a TABLES command cannot be converted.
inline constexpr std::string_view kTablesPosition =
    "Error while parsing or translating input syntax file. Line %ld, column %d.";
inline constexpr std::string_view kBadSubcommand =
    "Unable to parse the syntax of the %s subcommand";
inline constexpr std::string_view kObservationRangeText =
    "TABLES commands using TO on the OBSERVATION subcommand cannot be converted.";
inline constexpr std::string_view kBadParenthesizedWord =
    "The table expression contains a word in parentheses that is not a keyword or variable name.";
inline constexpr std::string_view kBadTablesSyntax = "Invalid TABLES command syntax";
inline constexpr std::string_view kUnknownFunctionText = "Unrecognized summary function %s";
inline constexpr std::string_view kUnknownSortFunctionText =
    "Unrecognized function %s on SORT subcommand";
inline constexpr std::string_view kTotalAssociatesWrongly =
    "Total variable wrongly associates with %s on TABLE subcommand.";
inline constexpr std::string_view kTotalFollowsNothing =
    "Following total %s on a TABLE subcommand does not follow anything.";
inline constexpr std::string_view kTotalPrecedesNothing =
    "Preceding total %s on a TABLE subcommand does not precede anything.";
inline constexpr std::string_view kTotalWithoutStack =
    "Total variable %s does not stack with anything.";
inline constexpr std::string_view kTotalStacksWithScale =
    "Total variable %s stacks with a scale variable.";
inline constexpr std::string_view kTableTooLargeText =
    "The table expression is too large to be converted.";

// Warnings about what a conversion leaves out.
inline constexpr std::string_view kObsoleteSubcommand = "Obsolete subcommand %s has been ignored.";
inline constexpr std::string_view kUnknownSubcommand =
    "Unrecognized or obsolete subcommand %s has been ignored.";
inline constexpr std::string_view kObsoleteFormat =
    "Obsolete form of the FORMAT subcommand has been ignored.";

// Kept for completeness; nothing emits them.
inline constexpr std::string_view kDetailedError = "Detailed error message";
inline constexpr std::string_view kParsingError = "A parsing error has occured.";

/// The line of `kNotEnoughMemory` for a command, made without asking for memory.
class OutOfMemoryLine {
public:
    /// `line`, from 1, is the one on which the command begins.
    explicit OutOfMemoryLine(long line) noexcept;

    /// Good as long as this object.
    [[nodiscard]] std::string_view Text() const { return {m_text.data(), m_size}; }

private:
    static constexpr std::size_t kMostDigits = 20;

    std::array<char, kNotEnoughMemory.size() + kMostDigits> m_text{};
    std::size_t m_size = 0;
};

/// `format` with its "%s" replaced by `text`, whatever the length of either.
[[nodiscard]] std::string FillMessage(std::string_view format, std::string_view text);

/// The words of `warning`.
[[nodiscard]] std::string MessageOf(const Warning& warning);

/// `format` with its "%ld" and "%d" replaced by a position: `line` from 1, `column` as is.
[[nodiscard]] std::string FillPosition(std::string_view format, long line, int column);

}  // namespace quillet

#endif  // QUILLET_DRIVER_MESSAGECATALOGUE_H
