#include "translator/outputsequence.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "platform/assertion.h"

namespace quillet {
namespace {

constexpr const char* kIndentWarning = "WARNING: Indentation has been forced to size 1.";

// One piece as it is added: "\n" is a forced break, a text in front of which a "+" stands is
// added without a leading space, any other with one.
void AddAll(OutputSequence& sequence, const std::vector<std::string>& pieces) {
    for (const std::string& piece : pieces) {
        if (piece == "\n") {
            sequence.NewLine();
        } else if (piece[0] == '+') {
            sequence.Add(piece.substr(1), false);
        } else {
            sequence.Add(piece, true);
        }
    }
}

struct FormatCase {
    const char* name;
    std::vector<std::string> pieces;  // see AddAll
    std::size_t width;
    std::size_t indent;
    std::string expected;
};

std::vector<FormatCase> FormatCases() {
    return {
        {"empty", {}, 5, 3, ""},
        {"empty at width 80", {}, 80, 2, ""},
        {"an overlong piece stays whole, unindented", {"+abcdefg"}, 5, 3, "abcdefg"},
        {"a forced break is followed by an indented line",
         {"\n", "+123456789"},
         5,
         3,
         "\n   123456789"},
        {"the leading blank is dropped at a line start",
         {"\n", "+123456789", "ab"},
         5,
         3,
         "\n   123456789\n   ab"},
        {"a line of exactly the width stays",
         {"\n", "+123456789", "ab", "ab"},
         8,
         3,
         "\n   123456789\n   ab ab"},
        {"a comma takes the piece before it along",
         {"\n", "+123456789", "ab", "ab", "+,", "cd"},
         8,
         3,
         "\n   123456789\n   ab\n   ab,\n   cd"},
        {"the first piece has no blank and no indentation", {"ab"}, 5, 3, "ab"},
        {"pieces on one line keep their blanks", {"+a", "b", "+c"}, 5, 3, "a bc"},
        {"the leading blank counts", {"+abcd", "e"}, 5, 2, "abcd\n  e"},
        {"without the blank it fits", {"+abcd", "+e"}, 5, 2, "abcde"},
        {"one byte more moves the whole piece", {"+ab", "cde"}, 5, 2, "ab\n  cde"},
        {"a piece's own blanks are dropped at a line start too",
         {"+  ab", "+   cd"},
         5,
         2,
         "ab\n  cd"},
        {"blanks inside and after a piece stay", {"+a b ", "c"}, 80, 2, "a b  c"},
        {"the indentation counts toward the width",
         {"+aaaaa", "bb", "+c", "+d"},
         5,
         2,
         "aaaaa\n  bbc\n  d"},
        {"an indentation of 0", {"+aaaaa", "bb", "\n", "+c"}, 5, 0, "aaaaa\nbb\nc"},
        {"an overlong piece in the middle", {"+a", "bbbbbbbbb", "c"}, 5, 2, "a\n  bbbbbbbbb\n  c"},
        {"breaks in a row", {"+a", "\n", "\n", "b"}, 5, 2, "a\n\n  b"},
        {"a break at the end", {"+a", "\n"}, 5, 2, "a\n"},
        {"only a break", {"\n"}, 5, 2, "\n"},
        {"a break starts the count anew",
         {"+abc", "\n", "+de", "f", "g"},
         7,
         2,
         "abc\n  de f\n  g"},
        {"a comma that fits exactly", {"+abcd", "+,"}, 5, 3, "abcd,"},
        {"the comma does not fit after the only piece", {"+abcde", "+,"}, 5, 3, "\n   abcde,"},
        {"a comma after a comma never breaks", {"+abcde", "+,", "+,"}, 5, 3, "\n   abcde,,"},
        {"a comma after a comma that fitted", {"+abcd", "+,", "+,", "+,"}, 5, 3, "abcd,,,"},
        {"a comma with a blank is no lone comma", {"+abcde", ","}, 5, 3, "abcde\n   ,"},
        {"a comma with a neighbor is no lone comma", {"+abcde", "+,x"}, 5, 2, "abcde\n  ,x"},
        {"the moved piece loses its blank; the line goes on after the comma",
         {"+abcd", "xyz", "+,", "+q"},
         8,
         3,
         "abcd\n   xyz,q"},
        {"the line after the comma is full",
         {"+abcd", "xyz", "+,", "q"},
         8,
         3,
         "abcd\n   xyz,\n   q"},
        {"the moved piece had no blank", {"+abcd", "+wxyz", "+,"}, 8, 3, "abcd\n   wxyz,"},
        {"a moved piece may be too long for the line",
         {"+a", "bcdef", "+,", "g"},
         7,
         3,
         "a\n   bcdef,\n   g"},
        {"bytes count, not characters", {"+éé", "+é"}, 5, 1, "éé\n é"},
        {"the indentation may be all but one of the width", {"+abcde", "f"}, 5, 4, "abcde\n    f"},
    };
}

TEST(OutputSequenceTest, LaysOutPieces) {
    for (int round = 0; round < 2; ++round) {
        for (const FormatCase& c : FormatCases()) {
            SCOPED_TRACE(c.name);
            std::vector<std::string> assertions;
            const ScopedAssertionHandler handler(
                [&](const AssertionFailure& f) { assertions.emplace_back(f.text); });
            OutputSequence sequence;
            AddAll(sequence, c.pieces);
            EXPECT_EQ(sequence.Format(c.width, c.indent), c.expected);
            EXPECT_EQ(sequence.Format(c.width, c.indent), c.expected);
            EXPECT_EQ(sequence.IsEmpty(), c.pieces.empty());
            EXPECT_TRUE(assertions.empty());
        }
    }
}

TEST(OutputSequenceTest, OneSequenceThroughItsLife) {
    OutputSequence sequence;
    EXPECT_TRUE(sequence.IsEmpty());
    sequence.NewLine();
    EXPECT_FALSE(sequence.IsEmpty());
    sequence.Add("123456789", false);
    EXPECT_EQ(sequence.Format(5, 3), "\n   123456789");
    sequence.Add("ab", true);
    EXPECT_EQ(sequence.Format(5, 3), "\n   123456789\n   ab");
    sequence.Add("ab", true);
    EXPECT_EQ(sequence.Format(8, 3), "\n   123456789\n   ab ab");
    sequence.Add(",", false);
    sequence.Add("cd", true);
    EXPECT_EQ(sequence.Format(8, 3), "\n   123456789\n   ab\n   ab,\n   cd");
    EXPECT_EQ(sequence.CurrentLineLength(), 19U);
    sequence.JoinCurrentLine();
    EXPECT_EQ(sequence.Format(8, 3), "\n   123456789 ab ab, cd");
    EXPECT_EQ(sequence.CurrentLineLength(), 19U);
}

struct WarningCase {
    const char* name;
    std::size_t width;
    std::size_t indent;
    bool warned;
    std::string expected;  // of the pieces "abcde" and " f"
};

TEST(OutputSequenceTest, ForcesAnIndentationThatLeavesNoRoom) {
    const WarningCase cases[] = {
        {"one less than the width", 5, 4, false, "abcde\n    f"},
        {"the width", 5, 5, true, "abcde\n f"},
        {"more than the width", 5, 60, true, "abcde\n f"},
        {"a width of one without indentation", 1, 0, false, "abcde\nf"},
        {"a width of one with indentation", 1, 1, true, "abcde\n f"},
    };
    for (int round = 0; round < 2; ++round) {
        for (const WarningCase& c : cases) {
            SCOPED_TRACE(c.name);
            std::vector<std::string> assertions;
            const ScopedAssertionHandler handler(
                [&](const AssertionFailure& f) { assertions.emplace_back(f.text); });
            OutputSequence sequence;
            sequence.Add("abcde", false);
            sequence.Add("f", true);
            EXPECT_EQ(sequence.Format(c.width, c.indent), c.expected);
            EXPECT_EQ(assertions, c.warned ? std::vector<std::string>{kIndentWarning}
                                           : std::vector<std::string>{});
        }
    }
}

TEST(OutputSequenceTest, AnEmptySequenceIsNeverWarnedAbout) {
    std::vector<std::string> assertions;
    const ScopedAssertionHandler handler(
        [&](const AssertionFailure& f) { assertions.emplace_back(f.text); });
    for (const std::size_t width : {0U, 1U, 5U, 80U}) {
        for (const std::size_t indent : {0U, 1U, 5U, 200U}) {
            EXPECT_EQ(OutputSequence().Format(width, indent), "");
        }
    }
    EXPECT_TRUE(assertions.empty());
}

TEST(OutputSequenceTest, MeasuresTheCurrentLine) {
    OutputSequence sequence;
    EXPECT_EQ(sequence.CurrentLineLength(), 0U);
    sequence.Add("ab", false);
    EXPECT_EQ(sequence.CurrentLineLength(), 2U);
    sequence.Add("é", true);
    EXPECT_EQ(sequence.CurrentLineLength(), 5U);
    sequence.NewLine();
    EXPECT_EQ(sequence.CurrentLineLength(), 0U);
    sequence.Add("abc", true);
    EXPECT_EQ(sequence.CurrentLineLength(), 4U);
    sequence.NewLine();
    sequence.NewLine();
    EXPECT_EQ(sequence.CurrentLineLength(), 0U);
    sequence.Add("x", false);
    EXPECT_EQ(sequence.CurrentLineLength(), 1U);
}

struct JoinCase {
    const char* name;
    std::vector<std::string> before;
    std::vector<std::string> after;
    std::size_t width;
    std::string expected;  // with indentation 2
};

TEST(OutputSequenceTest, JoinsTheCurrentLineOnly) {
    const JoinCase cases[] = {
        {"nothing to join", {}, {}, 5, ""},
        {"nothing after the break", {"+abc", "def", "\n"}, {}, 5, "abc\n  def\n"},
        {"one piece", {"+abc"}, {"def"}, 5, "abc\n  def"},
        {"one piece after the break", {"\n", "+abc"}, {"d"}, 5, "\n  abc\n  d"},
        {"the first line", {"+abc", "def", "ghi"}, {}, 5, "abc def ghi"},
        {"only pieces after the last break",
         {"+abc", "def", "\n", "gh", "ij"},
         {},
         5,
         "abc\n  def\n  gh ij"},
        {"pieces added later may be broken off",
         {"+ab", "cd"},
         {"ef", "gh"},
         5,
         "ab cd\n  ef\n  gh"},
        {"a joined line before a break", {"+abc", "def"}, {"\n", "+d"}, 5, "abc def\n  d"},
        {"a comma joined to its piece is no lone comma any more",
         {"+ab", "+,"},
         {"+,"},
         3,
         "\n  ab,,"},
    };
    for (const JoinCase& c : cases) {
        SCOPED_TRACE(c.name);
        OutputSequence sequence;
        AddAll(sequence, c.before);
        const std::size_t length = sequence.CurrentLineLength();
        sequence.JoinCurrentLine();
        EXPECT_EQ(sequence.CurrentLineLength(), length);
        AddAll(sequence, c.after);
        EXPECT_EQ(sequence.Format(c.width, 2), c.expected);
    }
}

// Adds pieces of all lengths, joins the last ones now and then, and breaks lines.
void AddManyPieces(OutputSequence& sequence, unsigned seed) {
    std::mt19937 random(seed);
    OutputSequence::Place begin = sequence.Here();
    for (int step = 0; step < 20000; ++step) {
        switch (random() % 8) {
            case 0:
                sequence.Add(",", false);
                break;
            case 1:
                if (sequence.Here().byte - begin.byte < 79) sequence.JoinSince(begin);
                break;
            case 2:
                begin = sequence.Here();
                break;
            case 3:
                if (random() % 50 == 0) {
                    sequence.NewLine();
                    begin = sequence.Here();
                } else if (random() % 300 == 0) {
                    sequence.Add(std::string(10000, 'l'), true);
                }
                break;
            default:
                sequence.Add(std::string(1 + random() % 20, 'a'), random() % 2 == 0);
                break;
        }
    }
    if (sequence.CurrentLineLength() < 79) sequence.JoinCurrentLine();
}

TEST(OutputSequenceTest, LayingOutMeanwhileIsLayingOutAtTheEnd) {
    for (const unsigned seed : {1U, 2U, 3U, 4U}) {
        SCOPED_TRACE(seed);
        OutputSequence collected;
        AddManyPieces(collected, seed);
        std::string text = "before ";
        OutputSequence laidOut(text, 80, 2);
        AddManyPieces(laidOut, seed);
        EXPECT_GT(text.size(), 50000U);
        EXPECT_EQ(laidOut.Here().piece, collected.Here().piece);
        EXPECT_EQ(laidOut.Here().byte, collected.Here().byte);
        EXPECT_EQ(laidOut.CurrentLineLength(), collected.CurrentLineLength());
        laidOut.Finish();
        EXPECT_EQ(text, "before " + collected.Format(80, 2));
    }
}

TEST(OutputSequenceTest, NothingLaidOutIsNothingAdded) {
    std::string text;
    OutputSequence sequence(text, 80, 2);
    EXPECT_TRUE(sequence.IsEmpty());
    sequence.Finish();
    EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace quillet
