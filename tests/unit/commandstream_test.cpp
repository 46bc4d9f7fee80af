#include "driver/commandstream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "memorytext.h"
#include "platform/codepage.h"
#include "platform/linereader.h"
#include "tokenizer/parseerror.h"

namespace quillet {

static std::ostream& operator<<(std::ostream& stream, CommandKind kind) {
    return stream << static_cast<int>(kind);
}

namespace {

using namespace std::string_literals;

constexpr CommandKind kOrdinary = CommandKind::kOrdinary;
constexpr CommandKind kComment = CommandKind::kComment;
constexpr CommandKind kDocument = CommandKind::kDocument;
constexpr CommandKind kInlineData = CommandKind::kInlineData;

struct StreamCommand {
    long startLine;
    CommandKind kind;
    std::string text;

    bool operator==(const StreamCommand& other) const {
        return startLine == other.startLine && kind == other.kind && text == other.text;
    }
};

std::ostream& operator<<(std::ostream& stream, const StreamCommand& command) {
    return stream << command.startLine << ' ' << command.kind << ' '
                  << testing::PrintToString(command.text);
}

using Commands = std::vector<StreamCommand>;

// What a stream makes of a text: its commands, and the error that stopped it, if any.
struct Cut {
    Commands commands;
    bool hasError = false;
    long line = 0;
    int column = 0;
    ParseErrorKind kind = ParseErrorKind::kNone;
};

std::string WholeText(CommandStream& stream) {
    std::string text = stream.CommandText();
    while (stream.HasMoreParts()) {
        text += stream.PlainLines().text;
        stream.ReadNextPart();
        EXPECT_FALSE(stream.CommandText().empty());
        text += stream.CommandText();
    }
    return text;
}

Cut CutIntoCommands(const std::string& text, bool batchMode,
                    const CodePage& codePage = CodePage::Utf8()) {
    MemoryInput input(text);
    LineReader lines(input);
    CommandStream stream(lines, codePage, batchMode);
    Cut cut;
    try {
        while (!stream.ReadCommand()) {
            const long startLine = stream.StartLine();
            const CommandKind kind = stream.CommandKind();
            cut.commands.push_back({startLine, kind, WholeText(stream)});
        }
        EXPECT_TRUE(stream.ReadCommand()) << "the end stays the end";
    } catch (const ParseError& error) {
        cut.hasError = true;
        cut.line = error.Line();
        cut.column = error.Column();
        cut.kind = error.Kind();
    }
    return cut;
}

struct CutCase {
    const char* name;
    std::string text;
    Commands commands;
};

void ExpectCommands(const CutCase& c, bool batchMode) {
    SCOPED_TRACE(c.name);
    for (int run = 0; run < 2; ++run) {
        const Cut cut = CutIntoCommands(c.text, batchMode);
        EXPECT_FALSE(cut.hasError) << "line " << cut.line << ", column " << cut.column;
        EXPECT_EQ(cut.commands, c.commands);
    }
}

const CutCase kBothLayouts[] = {
    {"nothing", "", {}},
    {"blank lines alone", "\n \t\n\r\n", {}},
    {"a command", "FREQ x.\n", {{1, kOrdinary, "FREQ x\n"}}},
    {"no line end", "FREQ x.", {{1, kOrdinary, "FREQ x\n"}}},
    {"no period at the end of the input", "FREQ x", {{1, kOrdinary, "FREQ x\n"}}},
    {"two commands", "FREQ x.\nLIST.\n", {{1, kOrdinary, "FREQ x\n"}, {2, kOrdinary, "LIST\n"}}},
    {"blank lines before a command",
     "\n \t\n  \r\nFREQ x.\n\n\nLIST.\n\n",
     {{4, kOrdinary, "FREQ x\n"}, {7, kOrdinary, "LIST\n"}}},
    {"CR LF", "FREQ x.\r\nLIST.\r\n", {{1, kOrdinary, "FREQ x\n"}, {2, kOrdinary, "LIST\n"}}},
    {"blanks after the period go", "FREQ x. \t \n", {{1, kOrdinary, "FREQ x\n"}}},
    {"a period alone", ".\n", {{1, kOrdinary, "\n"}}},
    {"a period in the line", "FREQ x. y.\n", {{1, kOrdinary, "FREQ x. y\n"}}},
    {"a period in a name", "FREQ x.y.\n", {{1, kOrdinary, "FREQ x.y\n"}}},
    {"two periods", "FREQ x..\n", {{1, kOrdinary, "FREQ x.\n"}}},
    {"two periods apart", "FREQ x. .\n", {{1, kOrdinary, "FREQ x. \n"}}},
    {"a period in a literal", "TITLE 'a. '.\n", {{1, kOrdinary, "TITLE 'a. '\n"}}},
    {"the other quote in a literal", "TITLE \"it's. \".\n", {{1, kOrdinary, "TITLE \"it's. \"\n"}}},
    {"a doubled quote", "TITLE 'it''s. '.\n", {{1, kOrdinary, "TITLE 'it''s. '\n"}}},
    {"a comment after the period goes with it", "FREQ x. /* often\n", {{1, kOrdinary, "FREQ x\n"}}},
    {"a comment directly after the period", "FREQ x./* often\n", {{1, kOrdinary, "FREQ x\n"}}},
    {"a period in a comment at the end of the line", "/* x.\n", {{1, kOrdinary, "/* x.\n"}}},
    {"a period in a closed comment", "FREQ /* x. */ y.\n", {{1, kOrdinary, "FREQ /* x. */ y\n"}}},
    {"a period after a closed comment", "FREQ /* x */.\n", {{1, kOrdinary, "FREQ /* x */\n"}}},
    {"a quote in a comment", "FREQ /* it's */ y.\n", {{1, kOrdinary, "FREQ /* it's */ y\n"}}},
    {"a slash does not open a comment", "FREQ / x.\n", {{1, kOrdinary, "FREQ / x\n"}}},
    {"no comment is closed by its own star", "FREQ /*/ x.\n", {{1, kOrdinary, "FREQ /*/ x.\n"}}},
    {"no period after a closed comment counts for one before it",
     "FREQ x. /* often */\n",
     {{1, kOrdinary, "FREQ x. /* often */\n"}}},
    {"a comment command",
     "* It's a note. And more.\n",
     {{1, kComment, "* It's a note. And more\n"}}},
    {"a star directly before the text", "*It's.\n", {{1, kComment, "*It's\n"}}},
    {"two stars", "**It's.\n", {{1, kComment, "**It's\n"}}},
    {"a starred message", "***** It's.\n", {{1, kComment, "***** It's\n"}}},
    {"a star and a sign", "*> It's.\n", {{1, kComment, "*> It's\n"}}},
    {"COMMENT", "COMMENT It's.\n", {{1, kComment, "COMMENT It's\n"}}},
    {"comment", "comment It's.\n", {{1, kComment, "comment It's\n"}}},
    {"Com", "Com It's.\n", {{1, kComment, "Com It's\n"}}},
    {"COMPUTE, since it begins with COM", "COMPUTE x = 'a.\n", {{1, kComment, "COMPUTE x = 'a\n"}}},
    {"DOCUMENT", "DOCUMENT It's.\n", {{1, kDocument, "DOCUMENT It's\n"}}},
    {"doc", "doc It's.\n", {{1, kDocument, "doc It's\n"}}},
    {"DOCTOR, since it begins with DOC", "DOCTOR it's.\n", {{1, kDocument, "DOCTOR it's\n"}}},
    {"a comment before a comment's period means nothing",
     "* a /* b */ c.\n",
     {{1, kComment, "* a /* b */ c\n"}}},
    {"in a comment command nothing but blanks may follow the period",
     "* a. /* b.\n",
     {{1, kComment, "* a. /* b\n"}}},
    {"blanks after a comment's period", "* a. \t\n", {{1, kComment, "* a\n"}}},
    {"a slash before a star is no comment command",
     "/* a */ b.\n",
     {{1, kOrdinary, "/* a */ b\n"}}},
    {"inline data",
     "BEGIN DATA.\n1 2.\n\n it's /* x\nEND DATA.\nLIST.\n",
     {{1, kInlineData, "BEGIN DATA.\n1 2.\n\n it's /* x\nEND DATA.\n"}, {6, kOrdinary, "LIST\n"}}},
    {"inline data in small letters",
     "begin data\n1.\nend data\nLIST.\n",
     {{1, kInlineData, "begin data\n1.\nend data\n"}, {4, kOrdinary, "LIST\n"}}},
    {"more blanks between BEGIN and DATA",
     "BEGIN \t DATA\n1.\nEND DATA\n",
     {{1, kInlineData, "BEGIN \t DATA\n1.\nEND DATA\n"}}},
    {"the second word may be quoted",
     "BEGIN 'DATA'\n1.\nEND DATA\n",
     {{1, kInlineData, "BEGIN 'DATA'\n1.\nEND DATA\n"}}},
    {"text after DATA",
     "BEGIN DATA it's\n1.\nEND DATA\n",
     {{1, kInlineData, "BEGIN DATA it's\n1.\nEND DATA\n"}}},
    {"END DATA in the first line does not close",
     "BEGIN DATA END DATA\n1.\nEND DATA\n",
     {{1, kInlineData, "BEGIN DATA END DATA\n1.\nEND DATA\n"}}},
    {"no data at all", "BEGIN DATA\nEND DATA.\n", {{1, kInlineData, "BEGIN DATA\nEND DATA.\n"}}},
    {"what only looks like END DATA",
     "BEGIN DATA\n END DATA\nEND  DATA\nEND\tDATA\nEND DAT\nEND\n'END DATA'\nEnd Data\nLIST.\n",
     {{1, kInlineData,
       "BEGIN DATA\n END DATA\nEND  DATA\nEND\tDATA\nEND DAT\nEND\n'END DATA'\nEnd Data\n"},
      {9, kOrdinary, "LIST\n"}}},
    {"END DATA and more after it",
     "BEGIN DATA\n1\nEND DATABASE it's\nLIST.\n",
     {{1, kInlineData, "BEGIN DATA\n1\nEND DATABASE it's\n"}, {4, kOrdinary, "LIST\n"}}},
    {"inline data without an end",
     "BEGIN DATA\n1.\n\n2.",
     {{1, kInlineData, "BEGIN DATA\n1.\n\n2.\n"}}},
    {"inline data and nothing else", "BEGIN DATA", {{1, kInlineData, "BEGIN DATA\n"}}},
    {"blank lines before inline data",
     "\n\nBEGIN DATA\n\nEND DATA\n",
     {{3, kInlineData, "BEGIN DATA\n\nEND DATA\n"}}},
    {"two blocks of inline data",
     "BEGIN DATA\n1\nEND DATA\nBEGIN DATA\n2\nEND DATA\n",
     {{1, kInlineData, "BEGIN DATA\n1\nEND DATA\n"},
      {4, kInlineData, "BEGIN DATA\n2\nEND DATA\n"}}},
    {"BEGIN GPL is ordinary", "BEGIN GPL.\n", {{1, kOrdinary, "BEGIN GPL\n"}}},
    {"BEGIN DATAX is ordinary", "BEGIN DATAX.\n", {{1, kOrdinary, "BEGIN DATAX\n"}}},
    {"BEG DATA is ordinary", "BEG DATA.\n", {{1, kOrdinary, "BEG DATA\n"}}},
    {"BEGIN alone is ordinary", "BEGIN.\n", {{1, kOrdinary, "BEGIN\n"}}},
    {"a lone carriage return ends the command as a line break does",
     "FREQ x.\rLIST.\n",
     {{1, kOrdinary, "FREQ x\n"}}},
    {"a lone carriage return inside a command", "FREQ\rx.\n", {{1, kOrdinary, "FREQ\rx\n"}}},
    {"a NUL byte hides the rest of its line", "FREQ x\0y'.\n"s, {{1, kOrdinary, "FREQ x\0y'.\n"s}}},
    {"a NUL byte in inline data",
     "BEGIN DATA\n1\0.\nEND DATA\n"s,
     {{1, kInlineData, "BEGIN DATA\n1\0.\nEND DATA\n"s}}},
    {"a NUL byte first", "\0FREQ x'\n"s, {{1, kOrdinary, "\0FREQ x'\n"s}}},
    {"multibyte letters", "TITLE 'é. ' ü.\n", {{1, kOrdinary, "TITLE 'é. ' ü\n"}}},
};

TEST(CommandStreamTest, CutsInBothLayouts) {
    for (const CutCase& c : kBothLayouts) {
        ExpectCommands(c, false);
        ExpectCommands(c, true);
    }
}

TEST(CommandStreamTest, EndsACommandAtAPeriod) {
    const CutCase cases[] = {
        {"three lines",
         "FREQ\n  x\n  y.\nLIST.\n",
         {{1, kOrdinary, "FREQ\n  x\n  y\n"}, {4, kOrdinary, "LIST\n"}}},
        {"indented or not", "FREQ\nx\n\ty.\n", {{1, kOrdinary, "FREQ\nx\n\ty\n"}}},
        {"blank lines inside a command belong to it",
         "FREQ\n\n \t\n x.\n\nLIST.\n",
         {{1, kOrdinary, "FREQ\n\n \t\n x\n"}, {6, kOrdinary, "LIST\n"}}},
        {"blank lines at the end of the input", "FREQ x\n\n\n", {{1, kOrdinary, "FREQ x\n\n\n"}}},
        {"an indented line is a new command",
         "FREQ x.\n y.\n",
         {{1, kOrdinary, "FREQ x\n"}, {2, kOrdinary, " y\n"}}},
        {"a comment over three lines",
         "* It's\n\n a. b\n note.\nLIST.\n",
         {{1, kComment, "* It's\n\n a. b\n note\n"}, {5, kOrdinary, "LIST\n"}}},
        {"a DOCUMENT over two lines",
         "DOCUMENT it's\n'so.\n",
         {{1, kDocument, "DOCUMENT it's\n'so\n"}}},
        {"the first line alone tells the kind", "/* x\n* y.\n", {{1, kOrdinary, "/* x\n* y\n"}}},
        {"BEGIN and DATA on two lines are no inline data",
         "BEGIN\nDATA.\n1.\n",
         {{1, kOrdinary, "BEGIN\nDATA\n"}, {3, kOrdinary, "1\n"}}},
        {"a period before a closed comment does not end the command",
         "FREQ x. /* often */\ny.\n",
         {{1, kOrdinary, "FREQ x. /* often */\ny\n"}}},
        {"a comment that its own star does not close hides the period",
         "FREQ /*/ x.\ny.\n",
         {{1, kOrdinary, "FREQ /*/ x.\ny\n"}}},
        {"a literal glued over the line end",
         "TITLE x 'a. '+\n'b. '.\n",
         {{1, kOrdinary, "TITLE x 'a. '+\n'b. '\n"}}},
        {"a sign before a comment word is no part of it",
         "+COMPUTE x = 'a.'.\n",
         {{1, kOrdinary, "+COMPUTE x = 'a.'\n"}}},
        {"a sign before BEGIN DATA",
         "-BEGIN DATA.\n1.\n",
         {{1, kOrdinary, "-BEGIN DATA\n"}, {2, kOrdinary, "1\n"}}},
        {"a NUL byte hides the period after it",
         "FREQ x\0y.\nz.\n"s,
         {{1, kOrdinary, "FREQ x\0y.\nz\n"s}}},
        {"a NUL byte in a comment hides the period after it",
         "* x\0y.\nz.\n"s,
         {{1, kComment, "* x\0y.\nz\n"s}}},
        {"blank lines are no commands of their own after the last period",
         "FREQ x.\n\n \n",
         {{1, kOrdinary, "FREQ x\n"}}},
    };
    for (const CutCase& c : cases) ExpectCommands(c, false);
}

TEST(CommandStreamTest, ContinuesOnIndentedLinesInBatchMode) {
    const CutCase cases[] = {
        {"continuation lines",
         "FREQ\n x\n   y\nLIST\n",
         {{1, kOrdinary, "FREQ\n x\n   y\n"}, {4, kOrdinary, "LIST\n"}}},
        {"a period at the end goes",
         "FREQ\n x.\nLIST.\n",
         {{1, kOrdinary, "FREQ\n x\n"}, {3, kOrdinary, "LIST\n"}}},
        {"a period before a continuation line stays",
         "FREQ x.\n y.\nLIST.\n",
         {{1, kOrdinary, "FREQ x.\n y\n"}, {3, kOrdinary, "LIST\n"}}},
        {"a line that begins with a tab is a new command",
         "FREQ x\n\ty\n z\n",
         {{1, kOrdinary, "FREQ x\n"}, {2, kOrdinary, "\ty\n z\n"}}},
        {"an empty line ends a command, and the next may be indented",
         "FREQ x\n\n y\n z\n",
         {{1, kOrdinary, "FREQ x\n"}, {3, kOrdinary, " y\n z\n"}}},
        {"a line of blanks continues it",
         "FREQ x\n  \n y\nLIST\n",
         {{1, kOrdinary, "FREQ x\n  \n y\n"}, {4, kOrdinary, "LIST\n"}}},
        {"a line of blanks at the end", "FREQ x.\n ", {{1, kOrdinary, "FREQ x.\n \n"}}},
        {"an empty line with CR LF ends it",
         "FREQ x\r\n\r\n y\r\n",
         {{1, kOrdinary, "FREQ x\n"}, {3, kOrdinary, " y\n"}}},
        {"several empty lines",
         "FREQ x\n\n\n\nLIST\n",
         {{1, kOrdinary, "FREQ x\n"}, {5, kOrdinary, "LIST\n"}}},
        {"an indented first line", "  FREQ x\n y\n", {{1, kOrdinary, "  FREQ x\n y\n"}}},
        {"a lone carriage return is no blank",
         "FREQ x\n\ry\n",
         {{1, kOrdinary, "FREQ x\n"}, {2, kOrdinary, "\ry\n"}}},
        {"a comment goes on as well",
         "* It's.\n a. note.\nLIST\n",
         {{1, kComment, "* It's.\n a. note\n"}, {3, kOrdinary, "LIST\n"}}},
        {"a sign before the command stays in its text",
         "+  COMPUTE x = 'a\n-LIST\n",
         {{1, kComment, "+  COMPUTE x = 'a\n"}, {2, kOrdinary, "-LIST\n"}}},
        {"one sign alone is skipped",
         "+-COMPUTE x = 'a.'\n",
         {{1, kOrdinary, "+-COMPUTE x = 'a.'\n"}}},
        {"a sign after a blank is not the first character",
         " +COMPUTE x = 'a.'\n",
         {{1, kOrdinary, " +COMPUTE x = 'a.'\n"}}},
        {"inline data ends at END DATA, not at the margin",
         "BEGIN DATA\n1\n 2\n\nEND DATA\n x\nLIST\n",
         {{1, kInlineData, "BEGIN DATA\n1\n 2\n\nEND DATA\n"},
          {6, kOrdinary, " x\n"},
          {7, kOrdinary, "LIST\n"}}},
        {"a sign before BEGIN DATA",
         "-BEGIN DATA\n1\nEND DATA\n",
         {{1, kInlineData, "-BEGIN DATA\n1\nEND DATA\n"}}},
        {"inline data after a command",
         "LIST\nBEGIN DATA\n1\nEND DATA\n",
         {{1, kOrdinary, "LIST\n"}, {2, kInlineData, "BEGIN DATA\n1\nEND DATA\n"}}},
        {"a literal is not looked at in a line that goes on",
         "TITLE x 'a\n b\nLIST\n",
         {{1, kOrdinary, "TITLE x 'a\n b\n"}, {3, kOrdinary, "LIST\n"}}},
        {"two lines at the margin, periods or not",
         "FREQ x.\nLIST\n",
         {{1, kOrdinary, "FREQ x\n"}, {2, kOrdinary, "LIST\n"}}},
    };
    for (const CutCase& c : cases) ExpectCommands(c, true);
}

struct StreamErrorCase {
    const char* name;
    std::string text;
    bool batchMode;
    std::size_t commandsBefore;
    long line;
    int column;
    ParseErrorKind kind;
};

TEST(CommandStreamTest, ErrorsNameTheLineOfTheFile) {
    constexpr ParseErrorKind kLiteral = ParseErrorKind::kUnclosedLiteral;
    const StreamErrorCase cases[] = {
        {"a literal among the first two tokens: where its scan stopped", "TITLE 'a\n", false, 0, 1,
         9, kLiteral},
        {"a literal first", "'abc\n", false, 0, 1, 5, kLiteral},
        {"a later literal: its opening quote", "TITLE x 'a\n", false, 0, 1, 9, kLiteral},
        {"a later literal, longer", "TITLE x 'abcdef\n", false, 0, 1, 9, kLiteral},
        {"a literal after a closed one", "TITLE 'abc' x \"de\n", false, 0, 1, 15, kLiteral},
        {"a doubled quote and no end", "TITLE x y 'it''s\n", false, 0, 1, 15, kLiteral},
        {"columns count characters", "TITLE éü '한국어' 'a\n", false, 0, 1, 16, kLiteral},
        {"blank lines and commands are counted", "\nLIST.\n\n\nTITLE 'a\n", false, 1, 5, 9,
         kLiteral},
        {"a later line of a command", "LIST.\nTITLE\n x\n y 'a\n", false, 1, 4, 4, kLiteral},
        {"blank lines inside a command are counted", "TITLE\n\n\nx 'a\n", false, 0, 4, 3, kLiteral},
        {"a carriage return ends the line of a literal", "TITLE x 'a\rb'.\n", false, 0, 1, 9,
         kLiteral},
        {"a NUL byte ends it", "TITLE x 'a\0b'.\n"s, false, 0, 1, 9, kLiteral},
        {"a tab is one column", "TITLE\tx\t'a\n", false, 0, 1, 9, kLiteral},
        {"no line end after the literal", "TITLE 'a", false, 0, 1, 9, kLiteral},
        {"glued over the end of the first line, among the first two tokens", "TITLE 'a'+\n'b'.\n",
         false, 0, 1, 12, kLiteral},
        {"an exponent", "LIST 1e\n", false, 0, 1, 8, ParseErrorKind::kExponentWithoutDigits},
        {"an exponent with a sign", "LIST 1e+x.\n", false, 0, 1, 9,
         ParseErrorKind::kExponentWithoutDigits},
        {"a hexadecimal number", "LIST 0x1F.\n", false, 0, 1, 6, ParseErrorKind::kInvalidNumber},
        {"a control character", "LIST.\n\x01.\n", false, 1, 2, 1,
         ParseErrorKind::kInvalidCharacter},
        {"a control character after a word", "LIST \x1F.\n", false, 0, 1, 6,
         ParseErrorKind::kInvalidCharacter},
        {"a comment line hides its command's kind from the look at the first line",
         "/* x\n* it's.\n", false, 0, 2, 5, kLiteral},
        {"batch mode: the first line", "TITLE 'a\n b\n", true, 0, 1, 9, kLiteral},
        {"batch mode: the line read ahead is not counted", "LIST\n\nTITLE x 'ab\nLIST\n", true, 1,
         3, 9, kLiteral},
        {"batch mode: a continuation line", "TITLE x\n y\n  'ab\nLIST\n", true, 0, 3, 3, kLiteral},
        {"batch mode: the last line of the input", "LIST\nTITLE x 'ab", true, 1, 2, 9, kLiteral},
        {"batch mode: blank lines after the command", "TITLE x 'ab\n\n\nLIST\n", true, 0, 1, 9,
         kLiteral},
        {"batch mode: a sign is a column", "+TITLE 'ab\n", true, 0, 1, 11, kLiteral},
    };
    for (const StreamErrorCase& c : cases) {
        SCOPED_TRACE(c.name);
        for (int run = 0; run < 2; ++run) {
            const Cut cut = CutIntoCommands(c.text, c.batchMode);
            ASSERT_TRUE(cut.hasError);
            EXPECT_EQ(cut.commands.size(), c.commandsBefore);
            EXPECT_EQ(cut.line, c.line);
            EXPECT_EQ(cut.column, c.column);
            EXPECT_EQ(cut.kind, c.kind);
        }
    }
}

TEST(CommandStreamTest, ColumnsCountTheCharactersOfTheCodePage) {
    const std::string text = "TITLE é 'é' 'a\n";
    EXPECT_EQ(CutIntoCommands(text, false, CodePage::Utf8()).column, 13);
    EXPECT_EQ(CutIntoCommands(text, false, CodePage::Windows1252()).column, 15);
}

TEST(CommandStreamTest, EveryByteOfAnOldTextIsACharacter) {
    std::string word;
    for (int byte = 0x80; byte < 0x100; ++byte) word += static_cast<char>(byte);
    const Cut cut = CutIntoCommands("TITLE " + word + ".\n", false, CodePage::Windows1252());
    EXPECT_FALSE(cut.hasError);
    EXPECT_EQ(cut.commands, (Commands{{1, kOrdinary, "TITLE " + word + "\n"}}));
}

struct DataPartCase {
    const char* name;
    std::size_t lineLength;
    std::size_t lineCount;
};

// Blocks of every size around those at which a stream may hand out a part.
TEST(CommandStreamTest, InlineDataComesInPartsOfWholeLines) {
    const DataPartCase cases[] = {
        {"short lines", 7, 700000},
        {"lines of 1 KiB", 1023, 4000},
        {"empty lines", 0, 3000000},
        {"lines of 1 MiB", 1048575, 5},
    };
    for (const DataPartCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::string text = "BEGIN DATA.\n";
        const std::string line = std::string(c.lineLength, '7') + "\n";
        text.reserve(text.size() + line.size() * c.lineCount + 100);
        for (std::size_t i = 0; i < c.lineCount; ++i) text += line;
        text += "END DATA.\n";
        for (const bool batchMode : {false, true}) {
            MemoryInput input("LIST.\n" + text + "LIST.\n");
            LineReader lines(input);
            CommandStream stream(lines, CodePage::Utf8(), batchMode);
            ASSERT_FALSE(stream.ReadCommand());
            EXPECT_FALSE(stream.HasMoreParts());
            ASSERT_FALSE(stream.ReadCommand());
            EXPECT_TRUE(stream.HasMoreParts());
            std::string gathered;
            std::size_t longest = 0;
            while (true) {
                const std::string& part = stream.CommandText();
                ASSERT_FALSE(part.empty());
                EXPECT_EQ(part.back(), '\n');
                EXPECT_EQ(stream.StartLine(), 2);
                EXPECT_EQ(stream.CommandKind(), kInlineData);
                longest = std::max(longest, part.size());
                gathered += part;
                if (!stream.HasMoreParts()) break;
                gathered += stream.PlainLines().text;
                stream.ReadNextPart();
            }
            EXPECT_TRUE(gathered == text);
            EXPECT_LE(longest, std::max(std::size_t{2} << 20U, 2 * line.size()));
            ASSERT_FALSE(stream.ReadCommand());
            EXPECT_EQ(stream.CommandText(), "LIST\n");
            EXPECT_EQ(stream.StartLine(), static_cast<long>(c.lineCount) + 4);
            EXPECT_FALSE(stream.HasMoreParts());
            EXPECT_TRUE(stream.ReadCommand());
        }
    }
}

TEST(CommandStreamTest, LongInlineDataMayLackItsEnd) {
    std::string text = "BEGIN DATA.\n";
    for (int i = 0; i < 1000000; ++i) text += "1 2.\n";
    EXPECT_TRUE(CutIntoCommands(text, false).commands == (Commands{{1, kInlineData, text}}));
}

TEST(CommandStreamTest, AReadErrorIsAnEnd) {
    const std::string text = "LIST.\nFREQ\n x.\n";
    for (std::size_t position = 0; position <= text.size(); ++position) {
        SCOPED_TRACE(position);
        MemoryInput input(text);
        input.FailAt(position);
        LineReader lines(input);
        CommandStream stream(lines, CodePage::Utf8(), false);
        std::string gathered;
        while (!stream.ReadCommand()) gathered += stream.CommandText();
        EXPECT_TRUE(lines.Failed());
        const std::string whole = "LIST\nFREQ\n x\n";
        EXPECT_EQ(gathered, whole.substr(0, gathered.size()));
    }
}

// What is cut when the stream goes on after each error.
Cut CutInSpiteOfErrors(const std::string& text, bool batchMode) {
    MemoryInput input(text);
    LineReader lines(input);
    CommandStream stream(lines, CodePage::Utf8(), batchMode);
    Cut cut;
    while (true) {
        try {
            if (stream.ReadCommand()) return cut;
            const CommandKind kind = stream.CommandKind();
            cut.commands.push_back({stream.StartLine(), kind, WholeText(stream)});
        } catch (const ParseError& error) {
            cut.hasError = true;
            cut.line = error.Line();
            stream.GoOnAfterError();
        }
    }
}

TEST(CommandStreamTest, GoesOnAfterAnError) {
    struct Case {
        const char* name;
        std::string text;
        bool batchMode;
        Commands commands;
    };
    const Case cases[] = {
        {"in a first line", "TITLE 'a\nLIST.\n", false, {{2, kOrdinary, "LIST\n"}}},
        {"in a later line",
         "TITLE\n'a\nx.\nLIST.\n",
         false,
         {{3, kOrdinary, "x\n"}, {4, kOrdinary, "LIST\n"}}},
        {"in the last line", "LIST.\nTITLE 'a", false, {{1, kOrdinary, "LIST\n"}}},
        {"several", "'a\n'b\nLIST.\n'c\n", false, {{3, kOrdinary, "LIST\n"}}},
        {"a first line in batch mode", "TITLE 'a\nLIST\n", true, {{2, kOrdinary, "LIST\n"}}},
        {"a last line in batch mode",
         "TITLE\n 'a\nLIST\n x\n",
         true,
         {{3, kOrdinary, "LIST\n x\n"}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Cut cut = CutInSpiteOfErrors(c.text, c.batchMode);
        EXPECT_TRUE(cut.hasError);
        EXPECT_EQ(cut.commands, c.commands);
    }
}

// What is cut when commands end at blank lines, but for line 4.
Commands CutAtBlankLines(const std::string& text, bool batchMode) {
    MemoryInput input(text);
    LineReader lines(input);
    CommandStream stream(lines, CodePage::Utf8(), batchMode);
    stream.EndAtBlankLines([](long line) { return line != 4; });
    Commands commands;
    while (!stream.ReadCommand()) {
        const CommandKind kind = stream.CommandKind();
        const long startLine = stream.StartLine();
        EXPECT_LT(startLine, stream.EndLine() + 1);
        commands.push_back({startLine, kind, WholeText(stream)});
    }
    return commands;
}

TEST(CommandStreamTest, EndsACommandAtABlankLineWhenAskedTo) {
    EXPECT_EQ(
        CutAtBlankLines("FREQ\nx\n \t\nLIST\n\ny.\n", false),
        (Commands{{1, kOrdinary, "FREQ\nx\n"}, {4, kOrdinary, "LIST\n"}, {6, kOrdinary, "y\n"}}));
    EXPECT_EQ(CutAtBlankLines("\n* It's\n\nLIST.\n", false),
              (Commands{{2, kComment, "* It's\n"}, {4, kOrdinary, "LIST\n"}}));
    EXPECT_EQ(CutAtBlankLines("LIST.\n\nFREQ\n\nx.\n", false),
              (Commands{{1, kOrdinary, "LIST\n"}, {3, kOrdinary, "FREQ\n\nx\n"}}));
    EXPECT_EQ(CutAtBlankLines("DOCUMENT a\n\nb.\nBEGIN DATA\n\nEND DATA\n", false),
              (Commands{{1, kDocument, "DOCUMENT a\n\nb\n"},
                        {4, kInlineData, "BEGIN DATA\n\nEND DATA\n"}}));
    EXPECT_EQ(CutAtBlankLines("FREQ\n  \n x\nLIST\n", true),
              (Commands{{1, kOrdinary, "FREQ\n  \n x\n"}, {4, kOrdinary, "LIST\n"}}));
}

}  // namespace
}  // namespace quillet
