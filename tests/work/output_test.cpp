// How the work of a whole conversion, and of writing, grows.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "driver/outputfile.h"
#include "quillet.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"
#include "translator/outputsequence.h"
#include "unit/memorytext.h"

namespace quillet {
namespace {

struct FileCase {
    const char* name;
    std::string before;
    std::string part;
    std::string after;
    std::size_t count;
};

class ConversionWorkTest : public testing::TestWithParam<FileCase> {};

TEST_P(ConversionWorkTest, IsLinear) {
    const FileCase& c = GetParam();
    for (const bool batchMode : {false, true}) {
        SCOPED_TRACE(batchMode);
        Options options;
        options.batchMode = batchMode;
        ExpectLinearWork(c.count, [&](std::size_t count) {
            const std::string text = c.before + Repeat(c.part, count) + c.after;
            EXPECT_GT(ConvertText(text, options).output.size(), 0U);
        });
    }
}

const FileCase kFileCases[] = {
    {"many small commands", "", "LIST x.\n", "", 6500},
    {"many comments", "", "* it's.\n", "", 6500},
    {"many blank lines", "", " \n", "", 50000},
    {"blank lines in a command", "LIST\n", "\n", "x.\n", 50000},
    {"a command of many lines", "LIST\n", " x 1 'a'\n", ".\n", 5000},
    {"a command in one line", "LIST", " x 1 'a'", ".\n", 5000},
    {"one long word", "LIST ", "x", ".\n", 83000},
    {"one long literal", "LIST x '", "x", "'.\n", 83000},
    {"one literal of many parts", "LIST x 'a'", "+'b'", ".\n", 16500},
    {"doubled quotes", "LIST x '", "''", "'.\n", 33000},
    {"a plus and no literal after it", "LIST x 'a'", "+ ", ".\n", 33000},
    {"one long number", "LIST x ", "7", ".\n", 33000},
    {"operators", "LIST x ", "*>", ".\n", 33000},
    {"commas", "LIST x ", ",", ".\n", 83000},
    {"comments in a command", "LIST x\n", "/* x\n", ".\n", 16500},
    {"a long comment", "* x", " it's. so\n", ".\n", 10000},
    {"inline data", "BEGIN DATA\n", "1 2 3\n", "END DATA.\n", 33000},
    {"frames", "", "IGRAPH /NONSENSE.\n", "", 666},
    {"a frame around a command of many lines", "IGRAPH\n", "/NONSENSE\n", ".\n", 5000},
    {"periods in a line", "LIST x", ". ", ".\n", 33000},
};
INSTANTIATE_TEST_SUITE_P(Files, ConversionWorkTest, testing::ValuesIn(kFileCases),
                         NameOfRow<FileCase>);

struct OutputCase {
    const char* name;
    std::string part;
    std::size_t count;
};

class OutputFileWorkTest : public testing::TestWithParam<OutputCase> {};

TEST_P(OutputFileWorkTest, IsLinear) {
    const OutputCase& c = GetParam();
    ExpectLinearWork(c.count, [&c](std::size_t count) {
        MemoryOutput memory;
        OutputFile out(memory);
        for (std::size_t i = 0; i < count; ++i) out.Write(c.part);
        EXPECT_TRUE(out.Finish());
    });
}

const OutputCase kOutputCases[] = {
    {"many lines", "LIST x.\n", 100'000},
    {"many empty lines", "\n", 250'000},
    {"a line in many parts", "x", 250'000},
    {"blanks in many parts", " ", 250'000},
};
INSTANTIATE_TEST_SUITE_P(Texts, OutputFileWorkTest, testing::ValuesIn(kOutputCases),
                         NameOfRow<OutputCase>);

struct PiecesCase {
    const char* name;
    std::vector<std::string> unit;  // "+" puts what follows on the line of the piece before it
    bool join;
};

class OutputSequenceWorkTest : public testing::TestWithParam<PiecesCase> {};

TEST_P(OutputSequenceWorkTest, IsLinear) {
    const PiecesCase& c = GetParam();
    ExpectLinearWork(std::size_t{20'000}, [&c](std::size_t count) {
        OutputSequence sequence;
        for (std::size_t i = 0; i < count; ++i) {
            for (const std::string& piece : c.unit) {
                if (piece == "\n") {
                    sequence.NewLine();
                } else if (piece[0] == '+') {
                    sequence.Add(piece.substr(1), false);
                } else {
                    sequence.Add(piece, true);
                }
            }
        }
        std::size_t bytes = sequence.CurrentLineLength();
        if (c.join) sequence.JoinCurrentLine();
        bytes += sequence.Format(80, 2).size();
        EXPECT_GT(bytes, count);
    });
}

const PiecesCase kPiecesCases[] = {
    {"pieces", {"abc"}, false},
    {"commas", {"+,"}, false},
    {"pieces and commas", {"abcdefgh", "+,"}, false},
    {"breaks", {"a", "\n"}, false},
    {"pieces that are joined", {"abc"}, true},
    {"joined piece by piece", {"a", "b", "\n"}, true},
    {"overlong pieces", {std::string(84, 'a'), "+,"}, false},
};
INSTANTIATE_TEST_SUITE_P(Lines, OutputSequenceWorkTest, testing::ValuesIn(kPiecesCases),
                         NameOfRow<PiecesCase>);

}  // namespace
}  // namespace quillet
