// Every text that the user sees.
#ifndef QUILLET_DRIVER_MESSAGECATALOGUE_H
#define QUILLET_DRIVER_MESSAGECATALOGUE_H

#include <string>
#include <string_view>

namespace quillet {

// Standard error. File names follow the texts that end in a blank.
inline constexpr std::string_view kUsageHeading = "Usage:";
inline constexpr std::string_view kUsageLine = " quillet [-b | /b] inputFile outputFile ";
inline constexpr std::string_view kInputOpenError = "Error opening input file ";
inline constexpr std::string_view kOutputOpenError = "Error opening output file ";
inline constexpr std::string_view kInputReadError = "Error reading input file ";
inline constexpr std::string_view kOutputWriteError = "Error writing output file ";
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

// Why a text cannot be cut into tokens.
inline constexpr std::string_view kTokenizingPosition =
    "Error while tokenizing input syntax file. Line %ld, column %d.";

// Why a TABLES command cannot be converted.
inline constexpr std::string_view kTablesPosition =
    "Error while parsing or translating input syntax file. Line %ld, column %d.";

// Kept for completeness; nothing emits them.
inline constexpr std::string_view kDetailedError = "Detailed error message";
inline constexpr std::string_view kParsingError = "A parsing error has occured.";

/// `format` with its "%s" replaced by `text`, whatever the length of either.
[[nodiscard]] std::string FillMessage(std::string_view format, std::string_view text);

/// `format` with its "%ld" and "%d" replaced by a position: `line` from 1, `column` as is.
[[nodiscard]] std::string FillPosition(std::string_view format, long line, int column);

}  // namespace quillet

#endif  // QUILLET_DRIVER_MESSAGECATALOGUE_H
