#include "platform/linereader.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "memorytext.h"

namespace quillet {
namespace {

using namespace std::string_literals;

using Lines = std::vector<std::string>;

Lines ReadLines(LineReader& reader) {
    Lines lines;
    std::string_view line;
    while (reader.ReadLine(line)) lines.emplace_back(line);
    EXPECT_FALSE(reader.ReadLine(line)) << "the end stays the end";
    return lines;
}

struct LineCase {
    const char* name;
    std::string text;
    Lines lines;
    bool crLf;  // the first line ends so
};

const LineCase kLineCases[] = {
    {"nothing", "", {}, false},
    {"a line", "a\n", {"a"}, false},
    {"no line end", "a", {"a"}, false},
    {"an empty line", "\n", {""}, false},
    {"empty lines", "\n\na\n\n", {"", "", "a", ""}, false},
    {"blanks are kept", "  a \n\t\n", {"  a ", "\t"}, false},
    {"CR LF", "a\r\nb\r\n", {"a", "b"}, true},
    {"CR LF, the last line without", "a\r\nb", {"a", "b"}, true},
    {"an empty line with CR LF", "\r\n", {""}, true},
    {"CR LF first", "a\r\nb\n", {"a", "b"}, true},
    {"LF first", "a\nb\r\n", {"a", "b"}, false},
    {"a lone CR", "a\rb\n", {"a\rb"}, false},
    {"a lone CR in a line with CR LF", "a\rb\r\n", {"a\rb"}, true},
    {"a lone CR at the end", "a\r", {"a\r"}, false},
    {"a lone CR first", "\ra\n", {"\ra"}, false},
    {"nothing but a CR", "\r", {"\r"}, false},
    {"two CRs before an LF: one is the line's own", "a\r\r\nb\n", {"a\r", "b"}, true},
    {"LF CR", "a\n\rb\n", {"a", "\rb"}, false},
    {"NUL bytes", "a\0b\n\0\n"s, {"a\0b"s, "\0"s}, false},
    {"bytes above 127", "\xFF\n\x80\n", {"\xFF", "\x80"}, false},
    {"no line end is a line end but these",
     "a\v\f\x85\xE2\x80\xA8z\n",
     {"a\v\f\x85\xE2\x80\xA8z"},
     false},
};

TEST(LineReaderTest, CutsATextIntoLines) {
    for (const LineCase& c : kLineCases) {
        SCOPED_TRACE(c.name);
        for (const std::size_t pieceSize :
             {kNever, std::size_t{1}, std::size_t{2}, std::size_t{3}}) {
            MemoryInput input(c.text, pieceSize);
            LineReader reader(input);
            EXPECT_EQ(ReadLines(reader), c.lines);
            EXPECT_FALSE(reader.Failed());
        }
    }
}

TEST(LineReaderTest, TellsTheFirstLineEnd) {
    for (const LineCase& c : kLineCases) {
        SCOPED_TRACE(c.name);
        for (const std::size_t pieceSize : {kNever, std::size_t{1}, std::size_t{2}}) {
            MemoryInput input(c.text, pieceSize);
            LineReader reader(input);
            EXPECT_EQ(reader.FirstLineEndsInCrLf(), c.crLf);
            EXPECT_EQ(reader.FirstLineEndsInCrLf(), c.crLf) << "asked again";
            EXPECT_EQ(ReadLines(reader), c.lines) << "the look costs no line";
        }
    }
}

TEST(LineReaderTest, RemembersTheFirstLineEnd) {
    for (const LineCase& c : kLineCases) {
        SCOPED_TRACE(c.name);
        MemoryInput input(c.text);
        LineReader reader(input);
        EXPECT_EQ(ReadLines(reader), c.lines);
        EXPECT_EQ(reader.FirstLineEndsInCrLf(), c.crLf);
    }
}

TEST(LineReaderTest, LinesCanBeTakenAsTheyStand) {
    MemoryInput input("a\r\nb\r\nc\n\nd");
    LineReader reader(input);
    std::string_view line;
    EXPECT_EQ(reader.Unread(), "");
    ASSERT_TRUE(reader.ReadLine(line));
    EXPECT_EQ(line, "a");
    EXPECT_EQ(reader.Unread(), "b\r\nc\n\nd");
    reader.Skip(5);
    EXPECT_EQ(ReadLines(reader), (Lines{"", "d"}));
    EXPECT_EQ(reader.Unread(), "");
}

TEST(LineReaderTest, TellsTheEndOfALongFirstLine) {
    for (const std::string end : {"\r\n", "\n", ""}) {
        SCOPED_TRACE(end.size());
        const std::string first(3000000, 'x');
        MemoryInput input(first + end + (end.empty() ? "" : "b\n"), 5000);
        LineReader reader(input);
        EXPECT_EQ(reader.FirstLineEndsInCrLf(), end == "\r\n");
        const Lines lines = ReadLines(reader);
        ASSERT_EQ(lines.size(), end.empty() ? 1U : 2U);
        EXPECT_TRUE(lines[0] == first);
    }
}

struct MarkCase {
    const char* name;
    std::string text;
    bool hasMark;
    Lines lines;
};

TEST(LineReaderTest, StepsOverAByteOrderMark) {
    const MarkCase cases[] = {
        {"a mark",
         "\xEF\xBB\xBF"
         "a\n",
         true,
         {"a"}},
        {"none", "a\n", false, {"a"}},
        {"nothing at all", "", false, {}},
        {"a mark alone", "\xEF\xBB\xBF", true, {}},
        {"a mark and a line end", "\xEF\xBB\xBF\n", true, {""}},
        {"two: the second is text",
         "\xEF\xBB\xBF\xEF\xBB\xBF"
         "a\n",
         true,
         {"\xEF\xBB\xBF"
          "a"}},
        {"two thirds of a mark", "\xEF\xBB", false, {"\xEF\xBB"}},
        {"one third", "\xEF", false, {"\xEF"}},
        {"nearly a mark",
         "\xEF\xBB\xBE"
         "a\n",
         false,
         {"\xEF\xBB\xBE"
          "a"}},
        {"a mark in the second line",
         "a\n\xEF\xBB\xBF"
         "b\n",
         false,
         {"a",
          "\xEF\xBB\xBF"
          "b"}},
        {"after a blank", " \xEF\xBB\xBF\n", false, {" \xEF\xBB\xBF"}},
        {"a mark of another kind",
         "\xFF\xFE"
         "a\n",
         false,
         {"\xFF\xFE"
          "a"}},
    };
    for (const MarkCase& c : cases) {
        SCOPED_TRACE(c.name);
        for (const std::size_t pieceSize : {kNever, std::size_t{1}, std::size_t{2}}) {
            MemoryInput input(c.text, pieceSize);
            LineReader reader(input);
            EXPECT_EQ(reader.SkipByteOrderMark(), c.hasMark);
            EXPECT_EQ(ReadLines(reader), c.lines);
        }
    }
}

TEST(LineReaderTest, TellsTheFirstLineEndAfterAMark) {
    for (const std::size_t pieceSize : {kNever, std::size_t{1}}) {
        MemoryInput input(
            "\xEF\xBB\xBF"
            "a\r\nb\n",
            pieceSize);
        LineReader reader(input);
        EXPECT_TRUE(reader.SkipByteOrderMark());
        EXPECT_TRUE(reader.FirstLineEndsInCrLf());
        EXPECT_EQ(ReadLines(reader), (Lines{"a", "b"}));
    }
}

struct ReadFailureCase {
    const char* name;
    std::size_t position;
    Lines lines;
};

TEST(LineReaderTest, DeliversNoLineThatAnErrorCutsShort) {
    const std::string text = "ab\ncd\r\nef\n";
    const ReadFailureCase cases[] = {
        {"at once", 0, {}},
        {"in the first line", 1, {}},
        {"before a line feed", 2, {}},
        {"between two lines", 3, {"ab"}},
        {"between CR and LF", 6, {"ab"}},
        {"in the last line", 8, {"ab", "cd"}},
        {"in place of the end", 10, {"ab", "cd", "ef"}},
    };
    for (const ReadFailureCase& c : cases) {
        SCOPED_TRACE(c.name);
        for (const std::size_t pieceSize : {kNever, std::size_t{1}, std::size_t{4}}) {
            MemoryInput input(text, pieceSize);
            input.FailAt(c.position);
            LineReader reader(input);
            EXPECT_EQ(ReadLines(reader), c.lines);
            EXPECT_TRUE(reader.Failed());
        }
    }
}

TEST(LineReaderTest, ReadsLinesOfAnyLength) {
    Lines lines;
    const std::vector<std::size_t> lengths = {0, 1,      65535,  65536,  65537,
                                              3, 300000, 131071, 131072, 2};
    for (const std::size_t length : lengths) {
        lines.emplace_back(length, static_cast<char>('a' + static_cast<char>(lines.size())));
    }
    for (const std::string end : {"\n", "\r\n"}) {
        std::string text;
        for (const std::string& line : lines) text += line + end;
        for (const std::size_t pieceSize : {kNever, std::size_t{4096}, std::size_t{4097}}) {
            MemoryInput input(text, pieceSize);
            LineReader reader(input);
            EXPECT_TRUE(ReadLines(reader) == lines) << pieceSize;
        }
    }
}

TEST(LineReaderTest, ReadsFromWhereTheInputStands) {
    MemoryInput input("ab\ncd\n");
    char buffer[3];
    ASSERT_EQ(input.Read(buffer, sizeof buffer), 3U);
    LineReader reader(input);
    EXPECT_EQ(ReadLines(reader), Lines{"cd"});
}

}  // namespace
}  // namespace quillet
