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

TEST(TermPiecesTest, EndsTermsInsideTerms) {
    TermPieces pieces;
    pieces.Add("before");
    const TermPieces::Place outer = pieces.Here();
    pieces.Add(std::string(60, 'a'));
    const TermPieces::Place inner = pieces.Here();
    pieces.Add("(");
    pieces.Add("b");
    pieces.EndTerm(inner);
    pieces.Add(std::string(30, 'c'));
    pieces.EndTerm(outer);
    OutputSequence sequence;
    pieces.AppendTo(sequence);
    EXPECT_EQ(PieceLines(sequence),
              "before\n" + std::string(60, 'a') + "\n(b\n" + std::string(30, 'c'));
}

TEST(TermPiecesTest, ATermIsShortBelow79Bytes) {
    for (const std::size_t length : {77u, 78u, 79u, 80u}) {
        SCOPED_TRACE(length);
        TermPieces pieces;
        pieces.Add("x");
        const TermPieces::Place begin = pieces.Here();
        pieces.Add(std::string(length - 1, 'a'));
        pieces.Add("b");
        pieces.EndTerm(begin);
        OutputSequence sequence;
        pieces.AppendTo(sequence);
        const std::string separator = length < 79 ? "" : "\n";
        EXPECT_EQ(PieceLines(sequence), "x\n" + std::string(length - 1, 'a') + separator + "b");
    }
}

TEST(TermPiecesTest, AnEmptyTermMakesNoPiece) {
    TermPieces pieces;
    pieces.EndTerm(pieces.Here());
    OutputSequence sequence;
    pieces.AppendTo(sequence);
    EXPECT_TRUE(sequence.IsEmpty());
}

}  // namespace
}  // namespace quillet
