#include "driver/outputwriter.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "driver/outputfile.h"
#include "driver/reasons.h"
#include "memorytext.h"
#include "platform/assertion.h"
#include "tokenizer/parseerror.h"

namespace quillet {
namespace {

using namespace std::string_literals;

// What `write` puts between two lines of its own, so that an empty result shows as such.
template <typename Write>
std::string Written(const Write& write) {
    MemoryOutput memory;
    OutputFile out(memory);
    out.Write("<\n");
    write(out);
    out.Write(">\n");
    EXPECT_TRUE(out.Finish());
    const std::string& text = memory.Text();
    EXPECT_GE(text.size(), 4U);
    EXPECT_EQ(text.substr(0, 2), "<\n");
    EXPECT_EQ(text.substr(text.size() - 2), ">\n");
    return text.substr(2, text.size() - 4);
}

struct WriteCase {
    const char* name;
    std::string text;
    std::size_t indent;
    std::string expected;
};

TEST(OutputWriterTest, WritesACommand) {
    const WriteCase cases[] = {
        {"the period is put back", "FREQ x\n", 0, "FREQ x.\n"},
        {"no line feed at the end", "FREQ x", 0, "FREQ x.\n"},
        {"a period of its own", "FREQ x.\n", 0, "FREQ x.\n"},
        {"a period and no line feed", "FREQ x.", 0, "FREQ x.\n"},
        {"two periods stay", "FREQ x..\n", 0, "FREQ x..\n"},
        {"nothing for nothing", "", 0, ""},
        {"nothing for nothing, indented", "", 5, ""},
        {"several lines, one period", "FREQ\n  x\n  y\n", 0, "FREQ\n  x\n  y.\n"},
        {"a period inside", "FREQ x.\n y\n", 0, "FREQ x.\n y.\n"},
        {"a blank at the end parts it from the period", "FREQ x \n", 0, "FREQ x .\n"},
        {"a blank after a period", "FREQ x. \n", 0, "FREQ x. .\n"},
        {"one line feed alone is taken off", "FREQ x\n\n", 0, "FREQ x\n.\n"},
        {"a line feed alone: an empty line, which is dropped", "\n", 0, ""},
        {"a period alone", ".\n", 0, ".\n"},
        {"blank lines inside are dropped", "FREQ\n\n \t\n  x\n", 0, "FREQ\n  x.\n"},
        {"a NUL byte", "FREQ\0x\n"s, 0, "FREQ\0x.\n"s},
        {"a multibyte character at the end", "FREQ é\n", 0, "FREQ é.\n"},
        {"an old code page", "FREQ \xE9\n", 0, "FREQ \xE9.\n"},
        {"1 blank", "x\n", 1, " x.\n"},
        {"the indentation is that of the first line alone", "x\ny\n", 3, "   x\ny.\n"},
        {"2 blanks", "x\n", 2, "  x.\n"},
        {"20 blanks", "x\n", 20, std::string(20, ' ') + "x.\n"},
        {"21 falls back to one", "x\n", 21, " x.\n"},
        {"25 falls back to one", "x\n", 25, " x.\n"},
        {"a very deep one", "x\n", static_cast<std::size_t>(-1), " x.\n"},
        {"a period is looked for in the text, not in the indentation", "\n", 4, ""},
    };
    for (const WriteCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Written([&](OutputFile& out) { WriteCommand(c.text, out, c.indent); }),
                  c.expected);
    }
}

struct CommentCase {
    const char* name;
    std::string text;
    std::string written;
};

TEST(OutputWriterTest, EndsACommandAfterItsLastLines) {
    const auto written = [](std::string_view lines) {
        return Written([lines](OutputFile& out) {
            out.Write("BEGIN DATA\n");
            WriteLastLines(lines, out);
        });
    };
    EXPECT_EQ(written("1\nEND DATA\n"), "BEGIN DATA\n1\nEND DATA.\n");
    EXPECT_EQ(written("END DATA.\n"), "BEGIN DATA\nEND DATA.\n");
    EXPECT_EQ(written("1 2"), "BEGIN DATA\n1 2.\n");
    EXPECT_EQ(written("\n"), "BEGIN DATA\n.\n");
}

TEST(OutputWriterTest, CommentsACommandOut) {
    const CommentCase cases[] = {
        {"two lines", "TABLES a BY b\n  /FORMAT\n", " *TABLES a BY b\n *  /FORMAT\n *.\n"},
        {"one line", "TABLES\n", " *TABLES\n *.\n"},
        {"no line feed at the end", "TABLES", " *TABLES.\n"},
        {"a period at the end", "TABLES.", " *TABLES.\n"},
        {"nothing", "", " *.\n"},
        {"a line feed", "\n", " *\n *.\n"},
        {"an empty line inside becomes a comment line", "TABLES\n\n/T\n",
         " *TABLES\n *\n */T\n *.\n"},
        {"a period inside", "TABLES a.\n b\n", " *TABLES a.\n * b\n *.\n"},
        {"a lone carriage return is no line end", "a\rb\n", " *a\rb\n *.\n"},
        {"a NUL byte", "a\0b\nc\n"s, " *a\0b\n *c\n *.\n"s},
    };
    for (const CommentCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Written([&](OutputFile& out) { WriteCommentedOut(c.text, out); }), c.written);
    }
}

struct StarCase {
    const char* name;
    std::string message;
    std::string expected;
};

TEST(OutputWriterTest, StarsAMessage) {
    const StarCase cases[] = {
        {"a period is added", std::string(ReasonOf(ErrorKind::kTablesSyntax).message),
         "***** Invalid TABLES command syntax.\n"},
        {"a period is there", std::string(ReasonOf(ErrorKind::kExponentWithoutDigits).message),
         "***** Number has a trailing E[+|-] but no digits after that.\n"},
        {"an exclamation mark is no period", "Look!", "***** Look!.\n"},
        {"an empty message", "", "***** .\n"},
    };
    for (const StarCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Written([&](OutputFile& out) { WriteStarred(c.message, out); }), c.expected);
    }
}

struct WriterErrorCase {
    const char* name;
    ParseError error;
    std::string expected;
};

TEST(OutputWriterTest, ReportsATokenizingError) {
    const WriterErrorCase cases[] = {
        {"a literal", ParseError(3, 14, ParseErrorKind::kUnclosedLiteral),
         "***** Error while tokenizing input syntax file. Line 3, column 14.\n"
         "***** Literal unclosed at the end of a line or command.\n"},
        {"an exponent", ParseError(1, 0, ParseErrorKind::kExponentWithoutDigits),
         "***** Error while tokenizing input syntax file. Line 1, column 0.\n"
         "***** Number has a trailing E[+|-] but no digits after that.\n"},
        {"a number", ParseError(4000000000L, 2147483647, ParseErrorKind::kInvalidNumber),
         "***** Error while tokenizing input syntax file. Line 4000000000, column 2147483647.\n"
         "***** Invalid or out-of-range number.\n"},
        {"a character", ParseError(2, 7, ParseErrorKind::kInvalidCharacter),
         "***** Error while tokenizing input syntax file. Line 2, column 7.\n"
         "***** Encountered a character that is not valid in Korvel syntax.\n"},
        {"no kind: both texts are empty", ParseError(2, 7, ParseErrorKind::kNone),
         "***** .\n***** .\n"},
    };
    for (const WriterErrorCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> assertions;
        const ScopedAssertionHandler handler([&assertions](const AssertionFailure& failure) {
            assertions.emplace_back(failure.text);
        });
        EXPECT_EQ(Written([&](OutputFile& out) { WriteTokenizingError(c.error, out); }),
                  c.expected);
        EXPECT_TRUE(assertions.empty());
    }
}

TEST(OutputWriterTest, AssertsThatAnErrorHasAKnownKind) {
    for (const int kind : {-1, 5, 1000}) {
        SCOPED_TRACE(kind);
        std::vector<std::string> modules;
        const ScopedAssertionHandler handler(
            [&modules](const AssertionFailure& failure) { modules.emplace_back(failure.module); });
        const ParseError error(1, 1, static_cast<ParseErrorKind>(kind));
        MemoryOutput memory;
        OutputFile out(memory);
        WriteTokenizingError(error, out);
        EXPECT_EQ(modules, std::vector<std::string>{"reasons"});
    }
}

}  // namespace
}  // namespace quillet
