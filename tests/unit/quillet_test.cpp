#include "quillet.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <ostream>
#include <random>
#include <regex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "memorytext.h"
#include "platform/assertion.h"

namespace quillet {

static std::ostream& operator<<(std::ostream& stream, Outcome outcome) {
    return stream << static_cast<int>(outcome);
}

namespace {

using namespace std::string_literals;

const std::string kMark = "\xEF\xBB\xBF";
const std::string kIgraphSource =
    "COMMENT -- Begin commenting out IGRAPH command to be converted to GGRAPH.\n";
const std::string kIgraphFailure =
    "COMMENT -- End commenting out IGRAPH command.\n"
    "COMMENT -- Begin GGRAPH command.\n"
    "*IGRAPH syntax is not valid, and can't be converted!.\n"
    "COMMENT -- End GGRAPH command.\n";
const std::string kTablesSource =
    "COMMENT -- Begin commenting out TABLES command to be converted to CTABLES.\n";
const std::string kTablesResult =
    "COMMENT -- End commenting out TABLES command.\n"
    "COMMENT -- Begin CTABLES command.\n";
const std::string kTablesEnd = "COMMENT -- End CTABLES command.\n";

std::string TokenizingError(long line, int column, const std::string& reason) {
    return "***** Error while tokenizing input syntax file. Line " + std::to_string(line) +
           ", column " + std::to_string(column) + ".\n***** " + reason + ".\n";
}

const std::string kLiteralReason = "Literal unclosed at the end of a line or command";
const std::string kExponentReason = "Number has a trailing E[+|-] but no digits after that";
const std::string kNumberReason = "Invalid or out-of-range number";
const std::string kCharacterReason = "Encountered a character that is not valid in Korvel syntax";

class Listener final : public ConversionListener {
public:
    void OnResultLine(std::string_view line) override {
        EXPECT_FALSE(line.empty());
        EXPECT_EQ(line.back(), '\n');
        resultLines += line;
    }
    void OnDiagnostic(std::string_view line) override {
        EXPECT_EQ(line.find('\n'), std::string_view::npos);
        diagnostics += std::string(line) + '\n';
    }

    std::string resultLines;
    std::string diagnostics;
};

Options InBatchMode(bool batchMode) {
    Options options;
    options.batchMode = batchMode;
    return options;
}

// Converts in memory and as a stream of pieces of several sizes, and expects the same of all.
Conversion Convert(const std::string& text, const Options& options) {
    Conversion conversion = ConvertText(text, options);
    for (const std::size_t pieceSize : {kNever, std::size_t{1}, std::size_t{5}}) {
        MemoryInput input(text, pieceSize);
        MemoryOutput output;
        Listener listener;
        EXPECT_EQ(ConvertStream(input, output, listener, options), conversion.outcome);
        EXPECT_EQ(output.Text(), conversion.output);
        EXPECT_EQ(listener.resultLines, conversion.resultLines);
        EXPECT_EQ(listener.diagnostics, conversion.diagnostics);
    }
    return conversion;
}

struct CopyCase {
    const char* name;
    std::string text;
    std::string expected;
};

void ExpectCopied(const CopyCase& c, bool batchMode) {
    SCOPED_TRACE(c.name);
    const Conversion conversion = Convert(c.text, InBatchMode(batchMode));
    EXPECT_EQ(conversion.output, c.expected);
    EXPECT_EQ(conversion.outcome, Outcome::kDone);
    EXPECT_EQ(conversion.resultLines, "");
    EXPECT_EQ(conversion.diagnostics, "");
    EXPECT_EQ(Convert(c.expected, InBatchMode(batchMode)).output, c.expected) << "again";
}

TEST(QuilletTest, CopiesWhatItDoesNotConvert) {
    const CopyCase cases[] = {
        {"nothing", "", "\n"},
        {"blank lines", "\n \t\n", "\n"},
        {"a command", "FREQ x.\n", "FREQ x.\n"},
        {"no line end", "FREQ x.", "FREQ x.\n"},
        {"no period", "FREQ x", "FREQ x.\n"},
        {"what follows the period goes", "FREQ x. /* often\n", "FREQ x.\n"},
        {"blank lines between commands", "\nA.\n\n \nB.\n\t\nC.\n\n", "A.\nB.\nC.\n"},
        {"blank lines inside inline data", "BEGIN DATA\n1\n\n \n2\nEND DATA.\n",
         "BEGIN DATA\n1\n2\nEND DATA.\n"},
        {"a period alone is nothing", "A.\n.\nB.\n", "A.\nB.\n"},
        {"nothing but a period", ".\n", "\n"},
        {"spelling and blanks are kept", "  freq \t X , 'a''b' /* c */ y  .\n",
         "  freq \t X , 'a''b' /* c */ y  .\n"},
        {"comments", "* It's.\nCOMMENT \"x.\nDOCUMENT /* y.\n",
         "* It's.\nCOMMENT \"x.\nDOCUMENT /* y.\n"},
        {"COMPUTE is free text as COM is", "COMPUTE x = '\\ 1e.\n", "COMPUTE x = '\\ 1e.\n"},
        {"DOCTOR is free text as DOC is", "DOCTOR x = '\\ 1e.\n", "DOCTOR x = '\\ 1e.\n"},
        {"inline data", "BEGIN DATA.\n1 it's 1e \\.\nEND DATA.\n",
         "BEGIN DATA.\n1 it's 1e \\.\nEND DATA.\n"},
        {"inline data whose last line has no period", "BEGIN DATA.\n1.\nEND DATA\nLIST.\n",
         "BEGIN DATA.\n1.\nEND DATA.\nLIST.\n"},
        {"inline data without an end", "BEGIN DATA.\n1 2\n3 4", "BEGIN DATA.\n1 2\n3 4.\n"},
        {"a first word of two letters", "TA x.\nIG y.\n", "TA x.\nIG y.\n"},
        {"another first word", "CTABLES /TABLE=a.\nGGRAPH.\n", "CTABLES /TABLE=a.\nGGRAPH.\n"},
        {"the word elsewhere", "LIST TABLES IGRAPH.\n", "LIST TABLES IGRAPH.\n"},
        {"after a slash", "/TABLES x.\n", "/TABLES x.\n"},
        {"after a comment, which leaves a slash", "/* x */ TABLES y.\n", "/* x */ TABLES y.\n"},
        {"a macro of that name", "!TABLES x.\n", "!TABLES x.\n"},
        {"a literal is compared as it is written", "'tables' x.\n", "'tables' x.\n"},
        {"a literal that is not glued", "'TA'\n'BLES' x.\n", "'TA'\n'BLES' x.\n"},
        {"a blank keeps a plus from its literal", "'TA'\n+ 'BLES' x.\n", "'TA'\n+ 'BLES' x.\n"},
        {"so does a line end", "'TA' +\n'BLES' x.\n", "'TA' +\n'BLES' x.\n"},
        {"a comment keeps literals apart", "'TA'\n/* x\n+'BLES' y.\n", "'TA'\n/* x\n+'BLES' y.\n"},
        {"so does a comment on the first line", "'TA' /* x\n+'BLES' y.\n",
         "'TA' /* x\n+'BLES' y.\n"},
        {"so does a tab", "'TA'\t\n+'BLES' y.\n", "'TA'\t\n+'BLES' y.\n"},
        {"a period ends the command before it is glued", "'TA'.\n+'BLES' y.\n",
         "'TA'.\n+'BLES' y.\n"},
        {"a second token ends the word", "'TA' x\n+'BLES' y.\n", "'TA' x\n+'BLES' y.\n"},
        {"small letters are not glued into a keyword", "'ta'\n+'bles' x.\n", "'ta'\n+'bles' x.\n"},
        {"glued free text, whose end is that of a command", "'DO'\n+'C' \\ x. y\nz.\n",
         "'DO'\n+'C' \\ x. y\nz.\n"},
        {"inline data is not made by gluing, but not looked at either",
         "'BEG'\n+'IN' DATA.\nLIST.\n", "'BEG'\n+'IN' DATA.\nLIST.\n"},
        {"a comment command that is closed on its first line", "'*'. x\n+'x'.\n",
         "'*'. x\n+'x'.\n"},
        {"a comment command whose text goes on", "'*' it's\n+'x' \\.\n", "'*' it's\n+'x' \\.\n"},
        {"two asterisks are glued into a comment", "'*'\n+'*' \\.\n", "'*'\n+'*' \\.\n"},
        {"a glued word that is no comment", "'*'\n+'x' y.\n", "'*'\n+'x' y.\n"},
        {"inline data whose second word a plus follows", "BEGIN 'DATA'\n+'X' \\\nEND DATA.\n",
         "BEGIN 'DATA'\n+'X' \\\nEND DATA.\n"},
        {"a number", "1 TABLES.\n", "1 TABLES.\n"},
        {"a literal glued over a line end", "X y 'a'+\n'b'.\n", "X y 'a'+\n'b'.\n"},
        {"a NUL byte hides the word after it", "\0TABLES x.\n"s, "\0TABLES x.\n"s},
        {"a NUL byte hides what is no syntax", "LIST x\0'\\.\nFREQ.\n"s, "LIST x\0'\\.\nFREQ.\n"s},
        {"NUL bytes in comments and data", "* a\0b\n c.\nBEGIN DATA\n\0\nEND DATA.\n"s,
         "* a\0b\n c.\nBEGIN DATA\n\0\nEND DATA.\n"s},
        {"multibyte characters", "TITLE 'größe 한국어' é.\n", "TITLE 'größe 한국어' é.\n"},
        {"an old code page",
         "TITLE 'gr\xF6\xDF"
         "e' \xE9.\n",
         "TITLE 'gr\xF6\xDF"
         "e' \xE9.\n"},
        {"a dotless i makes no IGRAPH",
         "\xC4\xB1"
         "graph x.\n",
         "\xC4\xB1"
         "graph x.\n"},
        {"a lone carriage return", "* a\rb.\n", "* a\rb.\n"},
        {"a period after a closed comment at the end", "LIST. /* x */\n", "LIST. /* x */.\n"},
        {"numbers of all kinds", "X 1 .5 5. 1e5 1E-5 1e+5.\n", "X 1 .5 5. 1e5 1E-5 1e+5.\n"},
    };
    for (const CopyCase& c : cases) ExpectCopied(c, false);
}

TEST(QuilletTest, CopiesInBatchMode) {
    const CopyCase cases[] = {
        {"periods are put in", "FREQ x\nLIST\n", "FREQ x.\nLIST.\n"},
        {"periods are kept", "FREQ x.\nLIST.\n", "FREQ x.\nLIST.\n"},
        {"continuation lines", "FREQ\n x\n y\nLIST\n", "FREQ\n x\n y.\nLIST.\n"},
        {"a period before a continuation line", "FREQ x.\n y\n", "FREQ x.\n y.\n"},
        {"a blank line inside a command", "FREQ x\n \n y\n", "FREQ x\n y.\n"},
        {"a line with a tab", "FREQ x\n\ty\n", "FREQ x.\n\ty.\n"},
        {"signs stay", "+FREQ x\n-  LIST\n", "+FREQ x.\n-  LIST.\n"},
        {"a sign before a comment", "+COMMENT it's\n-DOCUMENT it's\n",
         "+COMMENT it's.\n-DOCUMENT it's.\n"},
        {"a sign before BEGIN DATA", "+BEGIN DATA\nit's\nEND DATA\n",
         "+BEGIN DATA\nit's\nEND DATA.\n"},
        {"inline data", "BEGIN DATA\n1\n 2\nEND DATA\nLIST\n",
         "BEGIN DATA\n1\n 2\nEND DATA.\nLIST.\n"},
    };
    for (const CopyCase& c : cases) ExpectCopied(c, true);
}

TEST(QuilletTest, KeepsLineEndsAndMark) {
    const CopyCase cases[] = {
        {"CR LF", "A.\r\nB.\r\n", "A.\r\nB.\r\n"},
        {"CR LF, the last line without", "A.\r\nB.", "A.\r\nB.\r\n"},
        {"CR LF first, then LF", "A.\r\nB\n x.\n", "A.\r\nB\r\n x.\r\n"},
        {"LF first, then CR LF", "A.\nB\r\n x.\r\n", "A.\nB\n x.\n"},
        {"CR LF after a blank first line", "\r\nA.\n", "A.\r\n"},
        {"LF after a blank first line", "\nA.\r\n", "A.\n"},
        {"CR LF alone", "\r\n", "\r\n"},
        {"no line end at all", "A", "A.\n"},
        {"CR LF in inline data", "BEGIN DATA\r\n1\r\n\r\nEND DATA.\r\n",
         "BEGIN DATA\r\n1\r\nEND DATA.\r\n"},
        {"a mark", kMark + "A.\n", kMark + "A.\n"},
        {"a mark before blank lines", kMark + "\n \nA.\n", kMark + "A.\n"},
        {"a mark alone", kMark, kMark + "\n"},
        {"a mark and a line end", kMark + "\r\n", kMark + "\r\n"},
        {"a mark and CR LF", kMark + "A\r\n x.\r\n", kMark + "A\r\n x.\r\n"},
        {"a mark before a comment with an apostrophe", kMark + "* it's.\n", kMark + "* it's.\n"},
        {"a mark before DOCUMENT", kMark + "DOCUMENT it's.\n", kMark + "DOCUMENT it's.\n"},
        {"a mark before inline data", kMark + "BEGIN DATA\nit's\nEND DATA.\n",
         kMark + "BEGIN DATA\nit's\nEND DATA.\n"},
        {"a second mark is a letter of the first word", kMark + kMark + "TABLES x.\n",
         kMark + kMark + "TABLES x.\n"},
        {"a mark further on", "A.\n" + kMark + "TABLES x.\n", "A.\n" + kMark + "TABLES x.\n"},
        {"a mark before bytes of an old code page", kMark + "A \xE9.\n", kMark + "A \xE9.\n"},
    };
    for (const CopyCase& c : cases) ExpectCopied(c, false);
    ExpectCopied({"a mark before a sign", kMark + "+COMMENT it's\n", kMark + "+COMMENT it's.\n"},
                 true);
}

// More than a stream hands out at a time, so that the block is written in parts.
// What the output holds for `lines`, all of which belong to one block of inline data.
std::string CopiedData(const std::vector<std::string>& lines, std::string_view lineEnd) {
    std::string output;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string line = lines[i];
        // The period that ends the command stands after its last line, blank or not.
        if (i + 1 == lines.size() && !line.ends_with('.')) line += '.';
        if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
        output.append(line).append(lineEnd);
    }
    return output;
}

// Runs of lines go through in other ways than single lines; nobody must see a difference.
TEST(QuilletTest, CopiesInlineDataLineByLine) {
    std::mt19937 random(11);
    const auto below = [&random](unsigned limit) {
        return static_cast<unsigned>(random() % limit);
    };
    const std::string_view specials[] = {"",           "  ",  "e",  "END", "E1.",
                                         " END DATA.", "\t1", "\r", "1\r"};
    for (int round = 0; round < 1500; ++round) {
        const std::string lineEnd = below(2) == 1 ? "\r\n" : "\n";
        const unsigned rarity = 1 + below(20);
        std::vector<std::string> lines = {"BEGIN DATA"};
        std::string text = lines.front() + lineEnd;
        for (unsigned count = below(40); count > 0; --count) {
            lines.emplace_back(1 + below(90), '7');
            if (below(rarity) == 0) lines.back() = specials[below(std::size(specials))];
            // A line end of the other kind, now and then.
            const bool endsInCrLf = (lineEnd == "\r\n") != (below(4 * rarity) == 0);
            text.append(lines.back()).append(endsInCrLf ? "\r\n" : "\n");
            // A CR before an LF makes a line end of both.
            if (!endsInCrLf && lines.back().ends_with('\r')) lines.back().pop_back();
        }
        if (below(2) == 1) {
            lines.emplace_back("END DATA.");
            text.append(lines.back()).append(lineEnd);
        }
        EXPECT_EQ(Convert(text, Options()).output, CopiedData(lines, lineEnd))
            << testing::PrintToString(text);
    }
}

TEST(QuilletTest, CopiesLongInlineData) {
    std::string data;
    std::string expected;
    for (int i = 0; i < 400001; ++i) {
        const std::string line = std::to_string(i) + " it's 1e.\n";
        data += line + (i % 3 == 0 ? " \n\n" : "");
        expected += line;
    }
    struct EndCase {
        const char* name;
        std::string end;
        std::string expectedEnd;
    };
    const EndCase cases[] = {
        {"with a period", "END DATA.\nLIST.\n", "END DATA.\nLIST.\n"},
        {"without a period", "END DATA\nLIST\n", "END DATA.\nLIST.\n"},
        {"without an end", "1 2", "1 2.\n"},
        {"without an end, after a period", "", ""},
        {"without an end, after blank lines", " \n\n", ".\n"},
        {"an error after it", "END DATA\nLIST 'x\n",
         "END DATA.\n" + TokenizingError(666672, 8, kLiteralReason)},
    };
    for (const EndCase& c : cases) {
        for (const bool batchMode : {false, true}) {
            SCOPED_TRACE(c.name);
            const Conversion conversion =
                ConvertText("BEGIN DATA\n" + data + c.end, InBatchMode(batchMode));
            EXPECT_TRUE(conversion.output == "BEGIN DATA\n" + expected + c.expectedEnd)
                << conversion.output.substr(conversion.output.size() - 200);
            EXPECT_EQ(conversion.diagnostics, "");
        }
    }
}

struct FrameCase {
    const char* name;
    std::string text;
    bool batchMode;
    std::string commentedOut;
};

const FrameCase kIgraphCases[] = {
    {"one line", "IGRAPH /NONSENSE.\n", false, " *IGRAPH /NONSENSE\n *.\n"},
    {"several lines", "IGRAPH\n  /NONSENSE\n  /MORE.\n", false,
     " *IGRAPH\n *  /NONSENSE\n *  /MORE\n *.\n"},
    {"a blank line inside becomes a comment line", "IGRAPH\n\n/NONSENSE.\n", false,
     " *IGRAPH\n *\n */NONSENSE\n *.\n"},
    {"small letters", "igraph /nonsense.\n", false, " *igraph /nonsense\n *.\n"},
    {"three letters", "Igr /NONSENSE.\n", false, " *Igr /NONSENSE\n *.\n"},
    {"another word that begins so", "IGRETTE /NONSENSE.\n", false, " *IGRETTE /NONSENSE\n *.\n"},
    {"no period at the end", "IGRAPH /NONSENSE", false, " *IGRAPH /NONSENSE\n *.\n"},
    {"a quoted word", "'IGRAPH' /NONSENSE.\n", false, " *'IGRAPH' /NONSENSE\n *.\n"},
    {"a word glued over a line end", "'I'\n\n  +\"GRAPH\" /NONSENSE.\n", false,
     " *'I'\n *\n *  +\"GRAPH\" /NONSENSE\n *.\n"},
    {"after a comment line", "/* x.\nIGRAPH /NONSENSE.\n", false,
     " */* x.\n *IGRAPH /NONSENSE\n *.\n"},
    {"after commas", ",, IGRAPH /NONSENSE.\n", false, " *,, IGRAPH /NONSENSE\n *.\n"},
    {"indented", "  IGRAPH /NONSENSE.\n", false, " *  IGRAPH /NONSENSE\n *.\n"},
    {"batch mode", "IGRAPH\n /NONSENSE\nLIST", true, " *IGRAPH\n * /NONSENSE\n *.\n"},
    {"batch mode, a sign", "+IGRAPH /NONSENSE\nLIST", true, " *+IGRAPH /NONSENSE\n *.\n"},
};

TEST(QuilletTest, FramesAnIgraphCommandThatCannotBeConverted) {
    for (const FrameCase& c : kIgraphCases) {
        SCOPED_TRACE(c.name);
        const Conversion conversion = Convert(c.text, InBatchMode(c.batchMode));
        const std::string after = c.batchMode ? "LIST.\n" : "";
        EXPECT_EQ(conversion.output, kIgraphSource + c.commentedOut + kIgraphFailure + after);
        EXPECT_EQ(conversion.outcome, Outcome::kDone);
        EXPECT_EQ(conversion.resultLines, "Igraph conversion failed!\n");
        EXPECT_EQ(conversion.diagnostics, "");
        EXPECT_EQ(Convert(conversion.output, InBatchMode(c.batchMode)).output, conversion.output);
    }
}

TEST(QuilletTest, ASignBeforeAWordCountsInTheDefaultLayout) {
    ExpectCopied({"IGRAPH", "+IGRAPH /NONSENSE.\n", "+IGRAPH /NONSENSE.\n"}, false);
    ExpectCopied({"TABLES", "-TABLES /NONSENSE.\n", "-TABLES /NONSENSE.\n"}, false);
}

const FrameCase kTablesCases[] = {
    {"one line", "TABLES.\n", false, " *TABLES\n *.\n"},
    {"several lines", "TABLES a\n BY b.\n", false, " *TABLES a\n * BY b\n *.\n"},
    {"tab", "tab.\n", false, " *tab\n *.\n"},
    {"TABLE", "TABLE.\n", false, " *TABLE\n *.\n"},
    {"Tabulate", "Tabulate.\n", false, " *Tabulate\n *.\n"},
    {"TAB and letters outside ASCII", "TABé.\n", false, " *TABé\n *.\n"},
    {"a quoted word", "'TABLES'.\n", false, " *'TABLES'\n *.\n"},
    {"a word glued over a line end", "'TA'\n+'BLES'.\n", false, " *'TA'\n *+'BLES'\n *.\n"},
    {"a word glued of three lines", "'T'\n\n+'A'\n+'B'.\n", false,
     " *'T'\n *\n *+'A'\n *+'B'\n *.\n"},
    {"a word glued after a comment line", "/* x\n'TA'\n+'B'.\n", false,
     " */* x\n *'TA'\n *+'B'\n *.\n"},
    {"batch mode, a glued word", "'TA'\n  +'BLES'\n", true, " *'TA'\n *  +'BLES'\n *.\n"},
    {"batch mode, a sign and a glued word", "+'TA'\n +'BLES'\n", true,
     " *+'TA'\n * +'BLES'\n *.\n"},
    {"batch mode", "TABLES a\n BY b.\n c\n", true, " *TABLES a\n * BY b.\n * c\n *.\n"},
    {"batch mode, a sign", "-TABLES\n", true, " *-TABLES\n *.\n"},
};

// What stands between the CTABLES lines is the conversion's own business.
TEST(QuilletTest, FramesATablesCommand) {
    for (const FrameCase& c : kTablesCases) {
        SCOPED_TRACE(c.name);
        const Conversion conversion = Convert("A.\n" + c.text + "B.\n", InBatchMode(c.batchMode));
        const std::string begin = "A.\n" + kTablesSource + c.commentedOut + kTablesResult;
        const std::string end = kTablesEnd + "B.\n";
        ASSERT_GE(conversion.output.size(), begin.size() + end.size());
        EXPECT_EQ(conversion.output.substr(0, begin.size()), begin);
        EXPECT_EQ(conversion.output.substr(conversion.output.size() - end.size()), end);
        EXPECT_EQ(conversion.outcome, Outcome::kDone);
        EXPECT_TRUE(conversion.resultLines == "Tables conversion failed!\n" ||
                    conversion.resultLines == "Tables conversion was successful!\n")
            << conversion.resultLines;
    }
}

TEST(QuilletTest, FramesHaveTheLineEndsOfTheInput) {
    const Conversion conversion = Convert(kMark + "IGRAPH\r\n/NONSENSE.\r\n", Options());
    std::string expected = kMark + kIgraphSource + " *IGRAPH\n */NONSENSE\n *.\n" + kIgraphFailure;
    for (std::size_t at = 0; (at = expected.find('\n', at)) != std::string::npos; at += 2) {
        expected.insert(at, 1, '\r');
    }
    EXPECT_EQ(conversion.output, expected);
}

TEST(QuilletTest, GivesAResultLineForEachCommand) {
    const Conversion conversion = Convert("IGRAPH /NONSENSE.\nLIST.\nigr /NONSENSE.\n", Options());
    EXPECT_EQ(conversion.resultLines, "Igraph conversion failed!\nIgraph conversion failed!\n");
}

struct ReadErrorCase {
    const char* name;
    std::string text;
    bool batchMode;
    std::string copied;
    long line;
    int column;
    std::string reason;
    bool asserts = false;  // the character is none of those that are expected to be invalid
};

TEST(QuilletTest, ATokenizingErrorEndsTheRun) {
    const ReadErrorCase cases[] = {
        {"the third command", "A.\nB.\nC 'x\nD.\n", false, "A.\nB.\n", 3, 5, kLiteralReason},
        {"the first command", "'x\n", false, "", 1, 3, kLiteralReason},
        {"the line end of the literal", "A.\nTITLE x 'a\n", false, "A.\n", 2, 9, kLiteralReason},
        {"found by the whole look at a command: the line counts within it",
         "A.\nB.\nLIST x y 1e.\n", false, "A.\nB.\n", 1, 12, kExponentReason},
        {"on a later line of the command: columns count from 0", "A.\nLIST x\n  y 1e.\n", false,
         "A.\n", 2, 6, kExponentReason},
        {"a bad number in the command", "A.\nLIST x\n 0x1F.\n", false, "A.\n", 2, 1, kNumberReason},
        {"a bad character in the command", "A.\nLIST x\n\n\x02.\n", false, "A.\n", 3, 0,
         kCharacterReason},
        {"the same among the first two tokens: the line of the file", "A.\n\nLIST \x02.\n", false,
         "A.\n", 3, 6, kCharacterReason},
        {"a backslash", "A.\nLIST x\n\\.\n", false, "A.\n", 2, 0, kCharacterReason, true},
        {"a word that gluing makes another one than a comment's", "A.\n'*'\n+'x' \\ y.\n", false,
         "A.\n", 1, 10, kCharacterReason, true},
        {"the same in batch mode", "A\n'**'\n +'x' \\ y\nB\n", true, "A.\n", 1, 12,
         kCharacterReason, true},
        {"a literal that its line leaves open, glued to a comment's first word",
         "A.\n'*'\n+'x y.\n", false, "A.\n", 1, 10, kLiteralReason},
        {"a circumflex", "A.\nLIST x\n ^.\n", false, "A.\n", 2, 1, kCharacterReason, true},
        {"a grave accent", "A.\nLIST x\n `.\n", false, "A.\n", 2, 1, kCharacterReason, true},
        {"DEL", "A.\nLIST x\n \x7F.\n", false, "A.\n", 2, 1, kCharacterReason, true},
        {"a literal in a line that goes on in batch mode: where the scan stopped",
         "A\nLIST x y 'z\n b\nC\n", true, "A.\n", 1, 12, kLiteralReason},
        {"batch mode, last line", "A\nLIST\n x 'z\nC\n", true, "A.\n", 3, 4, kLiteralReason},
        {"TABLES is not begun before its tokens are known", "A.\nTABLES x y 1e.\nB.\n", false,
         "A.\n", 1, 14, kExponentReason},
        {"nothing of a command with an error is copied", "A.\nB\n c\n 'd\n", false, "A.\n", 4, 2,
         kLiteralReason},
        {"columns count characters", "LIST é 'é' 1e.\n", false, "", 1, 14, kExponentReason},
        {"they are bytes when the whole is no UTF-8", "LIST é 'é' 1e.\n* \xFF.\n", false, "", 1, 16,
         kExponentReason},
        {"also when a character is cut off by the end", "LIST é 'é' 1e.\n* \xC3", false, "", 1, 16,
         kExponentReason},
        {"also for a surrogate", "LIST é 'é' 1e.\n* \xED\xA0\x80.\n", false, "", 1, 16,
         kExponentReason},
        {"a mark is no column", kMark + "LIST é 1e.\n", false, kMark, 1, 10, kExponentReason},
        {"line breaks after a literal are not counted", "LIST x 'a'\n\n 1e.\n", false, "", 1, 16,
         kExponentReason},
    };
    for (const ReadErrorCase& c : cases) {
        SCOPED_TRACE(c.name);
        for (int run = 0; run < 2; ++run) {
            const Conversion conversion = Convert(c.text, InBatchMode(c.batchMode));
            EXPECT_EQ(conversion.outcome, Outcome::kTokenizingError);
            EXPECT_EQ(conversion.output, c.copied + TokenizingError(c.line, c.column, c.reason));
            EXPECT_EQ(conversion.resultLines, "");
            const std::regex expected(
                c.asserts ? "(Assertion failed: IsInvalidUnquoted\\( currChar\\.Code\\(\\) \\), "
                            "tavqtokenvector:[0-9]+\n)+"
                          : "");
            EXPECT_TRUE(std::regex_match(conversion.diagnostics, expected))
                << conversion.diagnostics;
            const Conversion again = Convert(conversion.output, InBatchMode(c.batchMode));
            EXPECT_EQ(again.output, conversion.output);
            EXPECT_EQ(again.outcome, Outcome::kDone);
        }
    }
}

TEST(QuilletTest, AnErrorKeepsTheConversionsBeforeIt) {
    const Conversion conversion = Convert("IGRAPH /NONSENSE.\nB 'x\nC.\n", Options());
    EXPECT_EQ(conversion.outcome, Outcome::kTokenizingError);
    EXPECT_EQ(conversion.output, kIgraphSource + " *IGRAPH /NONSENSE\n *.\n" + kIgraphFailure +
                                     TokenizingError(2, 5, kLiteralReason));
    EXPECT_EQ(conversion.resultLines, "Igraph conversion failed!\n");
}

TEST(QuilletTest, AssertionsAreDiagnostics) {
    const Conversion conversion = Convert("LIST a b 1e999.\nFREQ x.\n", Options());
    EXPECT_EQ(conversion.output, "LIST a b 1e999.\nFREQ x.\n") << "copied as it is written";
    EXPECT_EQ(conversion.outcome, Outcome::kDone);
    EXPECT_TRUE(
        std::regex_match(conversion.diagnostics,
                         std::regex("Assertion failed: errno != ERANGE, tavqtokenvector:[0-9]+\n")))
        << conversion.diagnostics;
}

TEST(QuilletTest, OnlyItsOwnAssertionsAreDiagnostics) {
    std::vector<std::string> texts;
    const ScopedAssertionHandler handler(
        [&texts](const AssertionFailure& failure) { texts.emplace_back(failure.text); });
    ReportAssertion({"before", "test", 1});
    EXPECT_NE(ConvertText("LIST a b 1e999.\n", Options()).diagnostics, "");
    ReportAssertion({"after", "test", 1});
    EXPECT_EQ(texts, (std::vector<std::string>{"before", "after"}));
}

TEST(QuilletTest, TouchesNoConsole) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    (void)ConvertText("LIST a b 1e999.\nIGRAPH /NONSENSE.\nLIST \\.\n", Options());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(QuilletTest, ASystemWithoutALegacyCodePageReadsWindows1252) {
    Options options;
    options.legacyCodePage = LegacyCodePage::kSystem;
    const Conversion conversion = Convert("LIST \xE9\xE9 1e.\n", options);
    EXPECT_EQ(conversion.output, TokenizingError(1, 11, kExponentReason));
}

TEST(QuilletTest, TwoConversionsRunSideBySide) {
    const auto convertMany = [](const std::string& text, const Options& options,
                                const Conversion& expected, int& differences) {
        for (int i = 0; i < 300; ++i) {
            const Conversion conversion = ConvertText(text, options);
            if (conversion.output != expected.output ||
                conversion.resultLines != expected.resultLines ||
                conversion.diagnostics != expected.diagnostics ||
                conversion.outcome != expected.outcome) {
                ++differences;
            }
        }
    };
    const std::string first = "LIST a b 1e999.\nIGRAPH /NONSENSE.\nTITLE 'é' 1e.\n";
    const std::string second =
        "+LIST a b 1e999 1e-999\n+COMMENT it's \xE9\nTABLES x\n y\nBEGIN DATA\n1\nEND DATA\nLIST "
        "\\\n";
    const Conversion firstResult = ConvertText(first, InBatchMode(false));
    const Conversion secondResult = ConvertText(second, InBatchMode(true));
    EXPECT_NE(firstResult.diagnostics, "");
    EXPECT_NE(secondResult.diagnostics, "");
    EXPECT_NE(firstResult.diagnostics, secondResult.diagnostics);
    int firstDifferences = 0;
    int secondDifferences = 0;
    std::thread other(
        [&] { convertMany(second, InBatchMode(true), secondResult, secondDifferences); });
    convertMany(first, InBatchMode(false), firstResult, firstDifferences);
    other.join();
    EXPECT_EQ(firstDifferences, 0);
    EXPECT_EQ(secondDifferences, 0);
}

// Whether two conversions that give the same also share nothing is what the thread sanitizer sees.
TEST(QuilletTest, ManyThreadsConvertWhatOneConverts) {
    struct Work {
        std::string text;
        Options options;
        Conversion expected;
    };
    std::vector<Work> works;
    for (const char* pText :
         {"TABLES /OBSERVATION x /TABLE=a+b>c BY d /STATISTICS=MEAN(x 'm') COUNT(a (F5.1)).\n",
          "TABLES /FTOTAL t 'all' /MRGROUP $m 'set' p q /TABLE=$m+t BY s /STATISTICS=CPCT($m).\n",
          "TABLES /BREAK a /TABLE=x BY nofunc /STATISTICS=NOFUNC(x).\n",
          "IGRAPH /X1=VAR(x) TYPE=CATEGORICAL /Y=VAR(y) /BAR(MEAN) LABEL VAL.\n",
          "IGRAPH /VIEWNAME='v' /X1=VAR(x) /Y=VAR(y) /SCATTER COINCIDENT=JITTER(3).\n",
          "IGRAPH /X1=VAR(x) /HISTOGRAM /BOX.\n", "LIST a 1e999 -1e-999.\n",
          "TITLE '\xC3\xA4 \xEC\x84\xB1'.\nTABLES /TABLE=\xC3\xA4 /TITLE '\xEB\xB3\x84'.\n",
          "TITLE '\xE4\xF6'.\nTABLES /TABLE=\xE4\xF6 /TITLE '\xFC'.\n",
          "BEGIN DATA\n1 2\nEND DATA.\nDOCUMENT it's.\nLIST 'x.\n"}) {
        for (const bool isBatch : {false, true}) {
            for (const LegacyCodePage page :
                 {LegacyCodePage::kWindows1252, LegacyCodePage::kSystem}) {
                Options options;
                options.batchMode = isBatch;
                options.legacyCodePage = page;
                works.push_back({pText, options, ConvertText(pText, options)});
            }
        }
    }
    constexpr std::size_t kThreads = 4;
    constexpr std::size_t kRounds = 10;
    std::vector<std::size_t> differences(kThreads);
    {
        std::vector<std::jthread> threads;
        for (std::size_t thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&works, thread, &count = differences[thread]] {
                for (std::size_t step = 0; step < kRounds * works.size(); ++step) {
                    // Each thread is somewhere else.
                    const Work& work = works[(step * (2 * thread + 1) + thread) % works.size()];
                    const Conversion conversion = ConvertText(work.text, work.options);
                    const bool isSame = conversion.output == work.expected.output &&
                                        conversion.resultLines == work.expected.resultLines &&
                                        conversion.diagnostics == work.expected.diagnostics &&
                                        conversion.outcome == work.expected.outcome;
                    if (!isSame) ++count;
                }
            });
        }
    }
    EXPECT_EQ(differences, std::vector<std::size_t>(kThreads));
    // The texts are what they are meant to be: most of them are converted, to many results.
    const auto holds = [&works](std::string_view text) {
        return std::count_if(works.begin(), works.end(), [text](const Work& work) {
            return work.expected.output.find(text) != std::string::npos;
        });
    };
    EXPECT_GE(holds("CTABLES\n"), 12);
    EXPECT_GE(holds("GGRAPH\n"), 8);
}

// Commands, a frame and inline data, so that an error can come anywhere.
std::string MixedText() {
    std::string text = "GET FILE='x'.\nIGRAPH\n /NONSENSE.\n\n* It's.\nBEGIN DATA\n";
    for (int i = 0; i < 20; ++i) text += "1 2 3\n";
    return text + "END DATA.\nLIST\n x.\n";
}

TEST(QuilletTest, TellsWhenTheInputFails) {
    const std::string text = MixedText();
    const Conversion whole = ConvertText(text, Options());
    const std::size_t igraphEnd = text.find("\n\n");
    for (const int pass : {0, 1}) {
        for (std::size_t position = 0; position <= text.size(); ++position) {
            SCOPED_TRACE(position);
            MemoryInput input(text, 16);
            input.FailAt(position, pass);
            MemoryOutput output;
            Listener listener;
            EXPECT_EQ(ConvertStream(input, output, listener, Options()), Outcome::kReadError);
            // What comes out, if anything, is right; a command that was cut short is not there.
            const std::string& result = output.Text();
            if (result != "\n") {
                EXPECT_EQ(result, whole.output.substr(0, result.size()));
            }
            EXPECT_TRUE(position == text.size() || result.size() < whole.output.size());
            EXPECT_EQ(listener.resultLines, position < igraphEnd ? "" : listener.resultLines);
            EXPECT_EQ(listener.resultLines,
                      whole.resultLines.substr(0, listener.resultLines.size()));
        }
    }
}

TEST(QuilletTest, AnInputThatCannotBeReadAgainHasFailed) {
    MemoryInput input("LIST x.\n");
    input.RefuseToRewind();
    MemoryOutput output;
    Listener listener;
    EXPECT_EQ(ConvertStream(input, output, listener, Options()), Outcome::kReadError);
}

struct EncodingChangeCase {
    const char* name;
    std::string before;
    std::string after;
    Outcome outcome = Outcome::kReadError;
};

// Both readings are compared by their length, as far as the first one went.
TEST(QuilletTest, TellsWhenTheInputIsAnotherTheSecondTime) {
    const std::string large(1000000, 'x');
    const std::string latin1 = "* \xE9.\n";
    const EncodingChangeCase cases[] = {
        {"shorter by a line", "LIST x.\nLIST y.\n", "LIST x.\n"},
        {"shorter by a byte", "LIST x.\n", "LIST x."},
        {"longer by a line", "LIST x.\n", "LIST x.\nLIST y.\n"},
        {"longer by a byte", "LIST x.\n", "LIST x.\n\n"},
        {"emptied", "LIST x.\n", ""},
        {"no longer empty", "", "LIST x.\n"},
        {"cut in inline data", "BEGIN DATA\n1\n2\nEND DATA.\n", "BEGIN DATA\n1\n"},
        {"large, and cut", "LIST.\n* " + large + ".\n", "LIST.\n* " + large},
        {"no UTF-8, and cut before the place that told so", "LIST x.\n" + latin1, "LIST x.\n"},
        {"no UTF-8, and emptied", latin1 + large, ""},
        {"the same", "LIST x.\n", "LIST x.\n", Outcome::kDone},
        {"the same, no UTF-8", latin1 + "LIST x.\n", latin1 + "LIST x.\n", Outcome::kDone},
        {"the same and empty", "", "", Outcome::kDone},
    };
    for (const EncodingChangeCase& c : cases) {
        for (const std::size_t pieceSize : {kNever, std::size_t{1}, std::size_t{5}}) {
            SCOPED_TRACE(c.name + (" in pieces of "s + std::to_string(pieceSize)));
            MemoryInput input(c.before, pieceSize);
            input.BecomeAfterwards(c.after);
            MemoryOutput output;
            Listener listener;
            EXPECT_EQ(ConvertStream(input, output, listener, Options()), c.outcome);
        }
    }
}

TEST(QuilletTest, AnInputThatHasChangedWasNotRead) {
    for (const char* pText : {"", "LIST x.\n", "LIST \xE9.\n", "LIST 'x.\n"}) {
        SCOPED_TRACE(pText);
        MemoryInput input(pText);
        input.ClaimToHaveChanged();
        MemoryOutput output;
        Listener listener;
        EXPECT_EQ(ConvertStream(input, output, listener, Options()), Outcome::kReadError);
        MemoryOutput failing(0);
        MemoryInput other(pText);
        other.ClaimToHaveChanged();
        EXPECT_EQ(ConvertStream(other, failing, listener, Options()), Outcome::kWriteError);
    }
}

TEST(QuilletTest, RefusesUtf16) {
    const CopyCase cases[] = {
        {"little end first", "\xFF\xFEL\0I\0"s, ""},
        {"big end first", "\xFE\xFF\0L\0I"s, ""},
        {"four bytes a character", "\xFF\xFE\0\0L\0\0\0"s, ""},
        {"the mark alone", "\xFF\xFE", ""},
        {"the other mark alone", "\xFE\xFF", ""},
        {"without a zero byte", "\xFF\xFELIST x.\n", ""},
    };
    for (const CopyCase& c : cases) {
        SCOPED_TRACE(c.name);
        const Conversion conversion = Convert(c.text, Options());
        EXPECT_EQ(conversion.outcome, Outcome::kReadError);
        EXPECT_EQ(conversion.output, "");
    }
    const CopyCase others[] = {
        {"half of a mark", "\xFF", "\xFF.\n"},
        {"the other half", "\xFE", "\xFE.\n"},
        {"a mark and something before it", "* \xFF\xFE.\n", "* \xFF\xFE.\n"},
        {"half a mark twice", "\xFF\xFFLIST.\n", "\xFF\xFFLIST.\n"},
        {"a zero byte and no mark", "\0L\0I"s, "\0L\0I.\n"s},
    };
    for (const CopyCase& c : others) ExpectCopied(c, false);
}

TEST(QuilletTest, TellsWhenTheOutputFails) {
    std::string text;
    for (int i = 0; i < 200000; ++i) text += "LIST x y z.\n";
    MemoryOutput whole;
    {
        MemoryInput input(text);
        Listener listener;
        ASSERT_EQ(ConvertStream(input, whole, listener, Options()), Outcome::kDone);
        ASSERT_TRUE(whole.Text() == text);
        ASSERT_GT(whole.Writes(), 2U);
    }
    for (const std::size_t failing : {std::size_t{0}, std::size_t{1}, whole.Writes() - 1}) {
        SCOPED_TRACE(failing);
        MemoryInput input(text);
        MemoryOutput output(failing);
        Listener listener;
        EXPECT_EQ(ConvertStream(input, output, listener, Options()), Outcome::kWriteError);
        EXPECT_EQ(output.WritesAfterFailure(), 0U);
        EXPECT_TRUE(output.Text() == text.substr(0, output.Text().size()));
        EXPECT_LT(output.Text().size(), text.size());
    }
}

TEST(QuilletTest, TellsWhenASmallOutputFails) {
    for (const std::string& text : {""s, "LIST x.\n"s, "IGRAPH /NONSENSE.\n"s, kMark}) {
        SCOPED_TRACE(text);
        MemoryInput input(text);
        MemoryOutput output(0);
        Listener listener;
        EXPECT_EQ(ConvertStream(input, output, listener, Options()), Outcome::kWriteError);
        EXPECT_EQ(output.WritesAfterFailure(), 0U);
    }
}

TEST(QuilletTest, ACommandThatMemoryIsNotEnoughForEndsTheRun) {
    struct Case {
        const char* name;
        std::string before;  // read before memory runs out
        std::string output;  // without the message
        int line;
        bool batchMode = false;
    };
    const Case cases[] = {
        {"at once", "", "", 1},
        {"in the first command", "LIST\n", "", 1},
        {"after commands", "LIST.\nFREQ a.\nTABLES\n  /TABLE\n", "LIST.\nFREQ a.\n", 3},
        {"before the first line of a command", "LIST.\n", "LIST.\n", 2},
        {"blank lines count", "LIST.\n\n \nFREQ\n", "LIST.\n", 4},
        {"in the middle of a line", "LIST.\nFREQ a b", "LIST.\n", 2},
        {"batch mode", "LIST\nFREQ\n a\n", "LIST.\n", 2, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryInput input(c.before + "x\n");
        input.RunOutOfMemoryAt(c.before.size());
        MemoryOutput output;
        Listener listener;
        EXPECT_EQ(ConvertStream(input, output, listener, InBatchMode(c.batchMode)),
                  Outcome::kOutOfMemory);
        const std::string message =
            "Not enough memory for the command that begins in line " + std::to_string(c.line) + ".";
        EXPECT_EQ(output.Text(), c.output + "***** " + message + "\n");
        EXPECT_EQ(listener.diagnostics, message + "\n");
    }
}

// A text far larger than the memory that its conversion may take.
class RepeatingInput final : public TextInput {
public:
    RepeatingInput(std::string before, std::string part, std::size_t count, std::string after)
        : m_before(std::move(before)),
          m_part(std::move(part)),
          m_count(count),
          m_after(std::move(after)) {}

    [[nodiscard]] std::size_t Size() const {
        return m_before.size() + m_part.size() * m_count + m_after.size();
    }

    std::size_t Read(char* buffer, std::size_t size) override {
        std::size_t done = 0;
        while (done < size) {
            const std::string_view next = Next();
            if (next.empty()) break;
            const std::size_t length = std::min(next.size(), size - done);
            next.copy(buffer + done, length);
            done += length;
            m_position += length;
        }
        return done;
    }
    bool Rewind() override {
        m_position = 0;
        return true;
    }
    [[nodiscard]] bool Failed() const override { return false; }

private:
    [[nodiscard]] std::string_view Next() const {
        std::size_t position = m_position;
        if (position < m_before.size()) return std::string_view(m_before).substr(position);
        position -= m_before.size();
        if (position < m_part.size() * m_count) {
            return std::string_view(m_part).substr(position % m_part.size());
        }
        position -= m_part.size() * m_count;
        return std::string_view(m_after).substr(position);
    }

    std::string m_before;
    std::string m_part;
    std::size_t m_count;
    std::string m_after;
    std::size_t m_position = 0;
};

class CountingOutput final : public TextOutput {
public:
    bool Write(std::string_view bytes) override {
        m_size += bytes.size();
        return true;
    }
    [[nodiscard]] std::size_t Size() const { return m_size; }

private:
    std::size_t m_size = 0;
};

// In KiB, as Linux counts.
long PeakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

constexpr std::size_t kMebibyte = std::size_t{1} << 20U;
constexpr int kTooMuchMemory = 10;

// In a process of its own, whose peak no other test has raised before.
[[noreturn]] void ExitAfterConverting(RepeatingInput input, bool batchMode, long limit) {
    CountingOutput output;
    Listener listener;
    const long before = PeakMemory();
    if (ConvertStream(input, output, listener, InBatchMode(batchMode)) != Outcome::kDone) {
        std::_Exit(1);
    }
    const long growth = PeakMemory() - before;
    std::cerr << "grew by " << growth << " KiB" << std::endl;
    if (output.Size() != input.Size()) std::_Exit(2);
    std::_Exit(growth > limit ? kTooMuchMemory : 0);
}

bool HasInstrumentedMemory() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#elif defined(__has_feature)
    return __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
    return false;
#endif
}

TEST(QuilletDeathTest, InlineDataOfAnySizeNeedsLittleMemory) {
    if (HasInstrumentedMemory()) GTEST_SKIP() << "the sanitizer keeps memory that was given back";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string line = "0001 17 3.25 'a label' \xED\x95\x9C\xEA\xB5\xAD 2 2 1\n";
    const auto input = [&line](std::size_t size) {
        return RepeatingInput("LIST.\nBEGIN DATA\n", line, size / line.size(),
                              "END DATA.\nLIST.\n");
    };
    EXPECT_EXIT(ExitAfterConverting(input(300 * kMebibyte), false, 4096),
                testing::ExitedWithCode(0), "");
    EXPECT_EXIT(ExitAfterConverting(input(50 * kMebibyte), true, 4096), testing::ExitedWithCode(0),
                "");
}

TEST(QuilletDeathTest, AnyNumberOfCommandsNeedsLittleMemory) {
    if (HasInstrumentedMemory()) GTEST_SKIP() << "the sanitizer keeps memory that was given back";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string commands =
        "* It's a note.\nRECODE x (1=2) (ELSE=SYSMIS) INTO y.\nLIST\n x.\n";
    EXPECT_EXIT(
        ExitAfterConverting({"", commands, 20 * kMebibyte / commands.size(), ""}, false, 4096),
        testing::ExitedWithCode(0), "");
}

// One command of a size, and what it is made of.
struct LargeCommand {
    const char* name;
    const char* begin;
    const char* part;
    const char* end;
    std::size_t factor;  // how many times its size may be needed, besides 4 MiB and its output
};

std::vector<LargeCommand> LargeCommands() {
    return {
        {"CopiedWords", "LIST\n", " x y z\n", " a.\n", 4},
        {"CopiedOnOneLine", "LIST", " x y z", " a.\n", 4},
        {"LongNames", "TABLES /TABLE a\n", " + a_variable_name\n", " BY sex.\n", 16},
        {"ShortNames", "TABLES /TABLE a\n", "+ab+c\n", " BY sex.\n", 16},
        {"NestedNames", "TABLES /TABLE a\n", ">ab>c\n", " BY sex.\n", 16},
        {"Tables", "TABLES\n", " /TABLE a BY b\n", ".\n", 16},
        {"Labels", "TABLES /TABLE a /TITLE\n", " 'A label of some length'\n", ".\n", 16},
        {"Statistics", "TABLES /TABLE a BY b /STATISTICS\n", " MEAN(a (F8.2) 'Average')\n", ".\n",
         16},
        {"Sorting", "TABLES /TABLE a BY b /SORT\n", " income\n", ".\n", 16},
        {"Sets", "TABLES /MRGROUP m\n", " answer\n", " /TABLE m.\n", 16},
        {"NotATable", "TABLES /TABLE a\n", "+ab+c\n", " BY BY sex.\n", 16},
        {"Series", "IGRAPH /X1=VAR(age) /Y=VAR(income)\n", " /LINE(MEAN) KEY=ON STYLE=LINE\n",
         ".\n", 16},
        {"CategoryOrders", "IGRAPH /X1=VAR(age) /Y=VAR(income) /SCATTER\n",
         " /CATORDER VAR(age) (ASCENDING VALUES OMITEMPTY)\n", ".\n", 16},
        {"NotAGraph", "IGRAPH /X1=VAR(age)\n", " a b\n", ".\n", 16},
    };
}

class LargeCommandDeathTest : public testing::TestWithParam<LargeCommand> {};

// In a process of its own.
[[noreturn]] void ExitAfterOneCommand(RepeatingInput input, std::size_t factor) {
    const auto size = static_cast<long>(input.Size());
    CountingOutput output;
    Listener listener;
    const long before = PeakMemory();
    if (ConvertStream(input, output, listener, {}) != Outcome::kDone) std::_Exit(1);
    const long growth = PeakMemory() - before;
    const long limit =
        4096 + (static_cast<long>(factor) * size + static_cast<long>(output.Size())) / 1024;
    std::cerr << "grew by " << growth << " KiB of " << limit << std::endl;
    std::_Exit(growth > limit ? kTooMuchMemory : 0);
}

TEST_P(LargeCommandDeathTest, NeedsAFewTimesItsSize) {
    if (HasInstrumentedMemory()) GTEST_SKIP() << "the sanitizer keeps memory that was given back";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const LargeCommand& command = GetParam();
    for (const std::size_t size : {kMebibyte, 16 * kMebibyte}) {
        const RepeatingInput input(command.begin, command.part,
                                   size / std::string_view(command.part).size(), command.end);
        EXPECT_EXIT(ExitAfterOneCommand(input, command.factor), testing::ExitedWithCode(0), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, LargeCommandDeathTest, testing::ValuesIn(LargeCommands()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace quillet
