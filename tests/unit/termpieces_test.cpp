#include "translator/termpieces.h"

#include <gtest/gtest.h>

#include <string>

namespace quillet {
namespace {

// With a width of 1 every piece stands on a line of its own.
std::string PieceLines(const OutputSequence& sequence) { return sequence.Format(1, 0); }

TEST(TermPiecesTest, KeepsAShortLineTogether) {
    for (const std::size_t length : {77u, 78u, 79u, 80u}) {
        SCOPED_TRACE(length);
        OutputSequence sequence;
        sequence.Add(std::string(length - 1, 'a'), false);
        sequence.Add("b", false);
        KeepTogetherIfShort(sequence);
        const std::string separator = length < 79 ? "" : "\n";
        EXPECT_EQ(PieceLines(sequence), std::string(length - 1, 'a') + separator + "b");
    }
}

TEST(TermPiecesTest, OnlyTheCurrentLineCounts) {
    OutputSequence sequence;
    sequence.Add(std::string(100, 'x'), false);
    sequence.Add("y", false);
    sequence.NewLine();
    sequence.Add("a", false);
    sequence.Add("b", true);
    KeepTogetherIfShort(sequence);
    EXPECT_EQ(PieceLines(sequence), std::string(100, 'x') + "\ny\na b");
}

TEST(TermPiecesTest, KeepsTermsInsideTermsTogether) {
    OutputSequence sequence;
    sequence.Add("before", false);
    const OutputSequence::Place outer = sequence.Here();
    sequence.Add(std::string(60, 'a'), false);
    const OutputSequence::Place inner = sequence.Here();
    sequence.Add("(", false);
    sequence.Add("b", false);
    KeepTogetherIfShort(sequence, inner);
    sequence.Add(std::string(30, 'c'), false);
    KeepTogetherIfShort(sequence, outer);
    EXPECT_EQ(PieceLines(sequence),
              "before\n" + std::string(60, 'a') + "\n(b\n" + std::string(30, 'c'));
}

TEST(TermPiecesTest, ATermIsShortBelow79Bytes) {
    for (const std::size_t length : {77u, 78u, 79u, 80u}) {
        SCOPED_TRACE(length);
        OutputSequence sequence;
        sequence.Add("x", false);
        const OutputSequence::Place begin = sequence.Here();
        sequence.Add(std::string(length - 1, 'a'), false);
        sequence.Add("b", false);
        KeepTogetherIfShort(sequence, begin);
        const std::string separator = length < 79 ? "" : "\n";
        EXPECT_EQ(PieceLines(sequence), "x\n" + std::string(length - 1, 'a') + separator + "b");
    }
}

TEST(TermPiecesTest, AnEmptyTermMakesNoPiece) {
    OutputSequence sequence;
    KeepTogetherIfShort(sequence, sequence.Here());
    EXPECT_TRUE(sequence.IsEmpty());
}

}  // namespace
}  // namespace quillet
