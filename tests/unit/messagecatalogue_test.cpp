#include "driver/messagecatalogue.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

namespace quillet {
namespace {

using namespace std::string_literals;

struct TextCase {
    std::string_view text;
    std::string_view expected;
};

TEST(MessageCatalogueTest, SaysExactlyThis) {
    const TextCase cases[] = {
        {kUsageHeading, "Usage:"},
        {kUsageLine, " quillet [-b | /b] inputFile outputFile "},
        {kInputOpenError, "Error opening input file "},
        {kOutputOpenError, "Error opening output file "},
        {kInputReadError, "Error reading input file "},
        {kOutputWriteError, "Error writing output file "},
        {kStandardOutputError, "Error writing standard output"},
        {kConversionFailed, "Syntax conversion failed. See output file for details."},
        {kTablesSucceeded, "Tables conversion was successful!\n"},
        {kTablesFailed, "Tables conversion failed!\n"},
        {kIgraphSucceeded, "Igraph conversion was successful!\n"},
        {kIgraphFailed, "Igraph conversion failed!\n"},
        {kBeginTablesComment,
         "COMMENT -- Begin commenting out TABLES command to be converted to CTABLES."},
        {kEndTablesComment, "COMMENT -- End commenting out TABLES command."},
        {kBeginCtables, "COMMENT -- Begin CTABLES command."},
        {kEndCtables, "COMMENT -- End CTABLES command."},
        {kBeginIgraphComment,
         "COMMENT -- Begin commenting out IGRAPH command to be converted to GGRAPH."},
        {kEndIgraphComment, "COMMENT -- End commenting out IGRAPH command."},
        {kBeginGgraph, "COMMENT -- Begin GGRAPH command."},
        {kEndGgraph, "COMMENT -- End GGRAPH command."},
        {kTokenizingPosition, "Error while tokenizing input syntax file. Line %ld, column %d."},
        {kTablesPosition,
         "Error while parsing or translating input syntax file. Line %ld, column %d."},
        {kDetailedError, "Detailed error message"},
        {kParsingError, "A parsing error has occured."},
    };
    for (const TextCase& c : cases) EXPECT_EQ(c.text, c.expected);
}

struct FillCase {
    const char* name;
    std::string_view format;
    std::string text;
    std::string expected;
};

TEST(MessageCatalogueTest, PutsATextIn) {
    const std::string longName(100000, 'n');
    const FillCase cases[] = {
        {"in the middle", "Obsolete subcommand %s has been ignored.", "BASE",
         "Obsolete subcommand BASE has been ignored."},
        {"at the end", "Unrecognized summary function %s", "AVG",
         "Unrecognized summary function AVG"},
        {"at the beginning", "%s.", "x", "x."},
        {"nothing else", "%s", "x", "x"},
        {"an empty text", "a %s b", "", "a  b"},
        {"no place for it", "Invalid TABLES command syntax", "x", "Invalid TABLES command syntax"},
        {"an empty format", "", "x", ""},
        {"the text looks like a place itself", "<%s>", "%s", "<%s>"},
        {"the text holds other format letters", "<%s>", "%d%n%", "<%d%n%>"},
        {"a text of many bytes is put in whole", "<%s>", longName, "<" + longName + ">"},
        {"a multibyte text", "<%s>", "größe", "<größe>"},
        {"bytes of an old code page", "<%s>", "gr\xF6\xDF", "<gr\xF6\xDF>"},
    };
    for (const FillCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(FillMessage(c.format, c.text), c.expected);
    }
}

struct PositionCase {
    const char* name;
    std::string_view format;
    long line;
    int column;
    std::string expected;
};

TEST(MessageCatalogueTest, PutsAPositionIn) {
    constexpr long kLongest = std::numeric_limits<long>::max();
    constexpr int kWidest = std::numeric_limits<int>::max();
    const PositionCase cases[] = {
        {"the first place of a file", kTokenizingPosition, 1, 1,
         "Error while tokenizing input syntax file. Line 1, column 1."},
        {"column 0", kTokenizingPosition, 12, 0,
         "Error while tokenizing input syntax file. Line 12, column 0."},
        {"the other text", kTablesPosition, 7, 31,
         "Error while parsing or translating input syntax file. Line 7, column 31."},
        {"the largest numbers", kTokenizingPosition, kLongest, kWidest,
         "Error while tokenizing input syntax file. Line " + std::to_string(kLongest) +
             ", column " + std::to_string(kWidest) + "."},
        {"below zero", "%ld/%d", -1, -2, "-1/-2"},
        {"no place", "nothing", 1, 2, "nothing"},
        {"a line alone", "line %ld", 3, 4, "line 3"},
    };
    for (const PositionCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(FillPosition(c.format, c.line, c.column), c.expected);
    }
}

}  // namespace
}  // namespace quillet
