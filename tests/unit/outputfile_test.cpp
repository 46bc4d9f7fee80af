#include "driver/outputfile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "memorytext.h"

namespace quillet {
namespace {

using namespace std::string_literals;

struct FilterCase {
    const char* name;
    std::string text;
    std::string expected;
    std::string expectedCrLf;
};

const FilterCase kFilterCases[] = {
    {"nothing becomes a line end", "", "\n", "\r\n"},
    {"an empty line alone", "\n", "\n", "\r\n"},
    {"blank lines alone", " \n\t\n\n \t \n", "\n", "\r\n"},
    {"blanks without a line end", "  \t", "\n", "\r\n"},
    {"a line", "a\n", "a\n", "a\r\n"},
    {"the last line gets its end", "a", "a\n", "a\r\n"},
    {"blanks after the last line", "a\n  ", "a\n", "a\r\n"},
    {"empty lines go", "\n\na\n\n\nb\n\n", "a\nb\n", "a\r\nb\r\n"},
    {"blank lines go", " \na\n\t\n \t \nb\n  \n", "a\nb\n", "a\r\nb\r\n"},
    {"a carriage return is as good as a blank", "\r\na\n \r\n\r\r\n\t\r \n", "a\n", "a\r\n"},
    {"a kept line is kept whole", "  a \t\n\tb\n", "  a \t\n\tb\n", "  a \t\r\n\tb\r\n"},
    {"a carriage return in a line stays", "a\rb\n\rc\n", "a\rb\n\rc\n", "a\rb\r\n\rc\r\n"},
    {"a carriage return before the line end stays", "a\r\nb\n", "a\r\nb\n", "a\r\r\nb\r\n"},
    {"other white space is text", "\v\n\f\n\xC2\xA0\n\xA0\n", "\v\n\f\n\xC2\xA0\n\xA0\n",
     "\v\r\n\f\r\n\xC2\xA0\r\n\xA0\r\n"},
    {"a NUL byte is text", "\0\n \0 \n"s, "\0\n \0 \n"s, "\0\r\n \0 \r\n"s},
    {"a period is text", ".\n", ".\n", ".\r\n"},
    {"a byte-order mark is text", "\xEF\xBB\xBF\n", "\xEF\xBB\xBF\n", "\xEF\xBB\xBF\r\n"},
};

TEST(OutputFileTest, DropsBlankLines) {
    for (const FilterCase& c : kFilterCases) {
        SCOPED_TRACE(c.name);
        for (const bool crLf : {false, true}) {
            MemoryOutput memory;
            OutputFile out(memory);
            if (crLf) out.UseCrLf();
            out.Write(c.text);
            EXPECT_TRUE(out.Finish());
            EXPECT_FALSE(out.Failed());
            EXPECT_EQ(memory.Text(), crLf ? c.expectedCrLf : c.expected);
        }
    }
}

TEST(OutputFileTest, ALineMayComeInParts) {
    for (const FilterCase& c : kFilterCases) {
        SCOPED_TRACE(c.name);
        for (std::size_t size = 1; size <= c.text.size(); ++size) {
            for (const bool crLf : {false, true}) {
                MemoryOutput memory;
                OutputFile out(memory);
                if (crLf) out.UseCrLf();
                for (std::size_t at = 0; at < c.text.size(); at += size) {
                    out.Write(std::string_view(c.text).substr(at, size));
                    out.Write("");
                }
                EXPECT_TRUE(out.Finish());
                EXPECT_EQ(memory.Text(), crLf ? c.expectedCrLf : c.expected) << size;
            }
        }
    }
}

struct BlankCase {
    const char* name;
    std::string_view line;
    bool isBlank;
};

TEST(OutputFileTest, TellsBlankLines) {
    using namespace std::string_view_literals;
    const BlankCase cases[] = {
        {"empty", "", true},
        {"a line feed", "\n", true},
        {"all four", " \t\n\r \r\n", true},
        {"a letter", "  x", false},
        {"a letter in front", "x  ", false},
        {"vertical tab", "\v", false},
        {"form feed", "\f", false},
        {"NUL", "\0"sv, false},
        {"no-break space", "\xC2\xA0", false},
        {"a period", " . ", false},
        {"many blanks and then a letter", "                                        x", false},
    };
    for (const BlankCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(IsBlankLine(c.line), c.isBlank);
    }
}

// More than any buffer that an output of this kind may keep.
constexpr std::size_t kLargeSize = std::size_t{8} << 20U;
constexpr std::size_t kBufferLimit = std::size_t{2} << 20U;

std::string Repeat(std::string_view part, std::size_t count) {
    std::string text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i) text += part;
    return text;
}

TEST(OutputFileTest, HandsOnWhatItHasInBlocks) {
    const std::string_view lines = "LIST VARIABLES=a b c.\n   /CASES=10\n";
    const std::size_t count = kLargeSize / lines.size();
    const std::string text = Repeat(std::string(lines) + " \n\n", count);
    MemoryOutput memory;
    OutputFile out(memory);
    constexpr std::size_t kPart = 1000;
    for (std::size_t at = 0; at < text.size(); at += kPart) {
        out.Write(std::string_view(text).substr(at, kPart));
    }
    EXPECT_GT(memory.Text().size() + kBufferLimit, lines.size() * count);
    EXPECT_LE(memory.LongestWrite(), kBufferLimit);
    EXPECT_LT(memory.Writes(), text.size() / kPart / 4) << "a write for every part is slow";
    EXPECT_TRUE(out.Finish());
    EXPECT_TRUE(memory.Text() == Repeat(lines, count));
}

PlainLines Plain(std::string_view text) {
    return {text, static_cast<long>(std::count(text.begin(), text.end(), '\n'))};
}

TEST(OutputFileTest, TakesPlainLinesAsTheyStand) {
    for (const std::size_t count : {std::size_t{1}, std::size_t{100}, kLargeSize / 8}) {
        SCOPED_TRACE(count);
        const std::string lines = Repeat("1 2 3\r\n", count);
        MemoryOutput memory;
        OutputFile out(memory);
        out.UseCrLf();
        out.Write("a\n\n");
        out.WritePlainLines(Plain(lines));
        out.WritePlainLines({});
        out.Write("\n \nb\n");
        out.WritePlainLines(Plain(lines));
        EXPECT_TRUE(out.Finish());
        EXPECT_TRUE(memory.Text() == "a\r\n" + lines + "b\r\n" + lines);
    }
}

TEST(OutputFileTest, CountsTheLinesThatItKeeps) {
    MemoryOutput memory;
    OutputFile out(memory);
    EXPECT_EQ(out.LineCount(), 0);
    out.Write("\n \n");
    EXPECT_EQ(out.LineCount(), 0);
    out.Write("a\n\nb");
    EXPECT_EQ(out.LineCount(), 1);
    out.Write("\n");
    EXPECT_EQ(out.LineCount(), 2);
    out.WritePlainLines(Plain("1\n2\n3\n"));
    EXPECT_EQ(out.LineCount(), 5);
}

TEST(OutputFileTest, PlainLinesAreLinesOfTheOutput) {
    MemoryOutput memory;
    OutputFile out(memory);
    out.WritePlainLines(Plain("1\n"));
    EXPECT_TRUE(out.Finish());
    EXPECT_EQ(memory.Text(), "1\n");
}

TEST(OutputFileTest, GathersFewPlainLines) {
    MemoryOutput memory;
    OutputFile out(memory);
    const std::size_t count = kLargeSize / 6;
    for (std::size_t i = 0; i < count; ++i) out.WritePlainLines(Plain("1 2 3\n"));
    EXPECT_LE(memory.LongestWrite(), kBufferLimit);
    EXPECT_LT(memory.Writes(), count / 100);
    EXPECT_TRUE(out.Finish());
    EXPECT_TRUE(memory.Text() == Repeat("1 2 3\n", count));
}

TEST(OutputFileTest, TellsWhenPlainLinesAreNotTaken) {
    const std::string lines = Repeat("1 2 3\n", kLargeSize / 6);
    for (const std::size_t failing : {std::size_t{0}, std::size_t{1}}) {
        SCOPED_TRACE(failing);
        MemoryOutput memory(failing);
        OutputFile out(memory);
        out.Write("a\n");
        out.WritePlainLines(Plain(lines));
        EXPECT_TRUE(out.Failed());
        out.WritePlainLines(Plain(lines));
        EXPECT_FALSE(out.Finish());
        EXPECT_EQ(memory.WritesAfterFailure(), 0U);
        EXPECT_EQ(memory.Text(), failing == 0 ? "" : "a\n");
    }
}

TEST(OutputFileTest, TellsWhenAWriteFails) {
    const std::string text = Repeat("LIST x.\n\n", kLargeSize / 9);
    MemoryOutput whole;
    OutputFile wholeOut(whole);
    wholeOut.Write(text);
    ASSERT_TRUE(wholeOut.Finish());
    ASSERT_GT(whole.Writes(), 2U);
    for (const std::size_t failing : {std::size_t{0}, std::size_t{1}, whole.Writes() - 1}) {
        SCOPED_TRACE(failing);
        MemoryOutput memory(failing);
        OutputFile out(memory);
        EXPECT_FALSE(out.Failed());
        out.Write(text);
        out.Write(text);
        EXPECT_TRUE(out.Failed());
        EXPECT_FALSE(out.Finish());
        EXPECT_TRUE(out.Failed());
        EXPECT_EQ(memory.WritesAfterFailure(), 0U);
        EXPECT_EQ(memory.Text(), whole.Text().substr(0, memory.Text().size()));
    }
}

TEST(OutputFileTest, TellsWhenTheLastWriteFails) {
    for (const std::string_view text : {"", "a", "a\n", "\n\n"}) {
        SCOPED_TRACE(text);
        MemoryOutput memory(0);
        OutputFile out(memory);
        out.Write(text);
        EXPECT_FALSE(out.Finish());
        EXPECT_TRUE(out.Failed());
        EXPECT_EQ(memory.WritesAfterFailure(), 0U);
    }
}

}  // namespace
}  // namespace quillet
