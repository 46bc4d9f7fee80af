// How the work of reading grows: lines, inline data, numbers, commands.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "driver/commandstream.h"
#include "driver/datalines.h"
#include "platform/codepage.h"
#include "platform/linereader.h"
#include "platform/numberconversion.h"
#include "support/repetition.h"
#include "support/rownames.h"
#include "support/work.h"
#include "tokenizer/parseerror.h"
#include "unit/memorytext.h"

namespace quillet {
namespace {

struct LinesCase {
    const char* name;
    std::string part;
    std::size_t count;
    std::size_t pieceSize = kNever;
};

class LineReaderWorkTest : public testing::TestWithParam<LinesCase> {};

TEST_P(LineReaderWorkTest, IsLinear) {
    const LinesCase& c = GetParam();
    ExpectLinearWork(c.count, [&c](std::size_t count) {
        MemoryInput input(Repeat(c.part, count), c.pieceSize);
        LineReader reader(input);
        EXPECT_FALSE(reader.FirstLineEndsInCrLf() && c.part.back() != '\n');
        std::size_t length = 0;
        std::string_view line;
        while (reader.ReadLine(line)) length += line.size();
        EXPECT_LE(length, count * c.part.size());
    });
}

const LinesCase kLinesCases[] = {
    {"many lines", "LIST x.\r\n", 100'000},
    {"empty lines", "\n", 400'000},
    {"one long line", "x", 1'000'000},
    {"one long line in small pieces", "x", 400'000, 100},
    {"a line of carriage returns", "\r", 400'000},
};
INSTANTIATE_TEST_SUITE_P(Texts, LineReaderWorkTest, testing::ValuesIn(kLinesCases),
                         NameOfRow<LinesCase>);

class DataLinesWorkTest : public testing::TestWithParam<LinesCase> {};

TEST_P(DataLinesWorkTest, IsLinear) {
    const LinesCase& c = GetParam();
    ExpectLinearWork(c.count, [&c](std::size_t count) {
        const std::string text = Repeat(c.part, count);
        EXPECT_LT(FindPlainDataLines(text, false).text.size(), text.size());
    });
}

const LinesCase kDataCases[] = {
    {"short lines", "1\n", 200'000},
    {"short lines that begin with a blank", " 1\n", 200'000},
    {"a single line", "1 ", 200'000},
    {"blanks", " ", 200'000},
};
INSTANTIATE_TEST_SUITE_P(Texts, DataLinesWorkTest, testing::ValuesIn(kDataCases),
                         NameOfRow<LinesCase>);

TEST(NumberWorkTest, IsLinear) {
    for (const std::string before : {"", "0.", "1e", "0x"}) {
        SCOPED_TRACE(before);
        for (const char digit : {'0', '7'}) {
            ExpectLinearWork(std::size_t{200'000}, [&](std::size_t count) {
                const std::string text = before + std::string(count, digit);
                EXPECT_EQ(*ConvertNumber(text.c_str()).pEnd, '\0');
            });
        }
    }
}

struct CommandsCase {
    const char* name;
    std::string before;
    std::string part;
    std::size_t count;
};

class CommandStreamWorkTest : public testing::TestWithParam<CommandsCase> {};

TEST_P(CommandStreamWorkTest, IsLinear) {
    const CommandsCase& c = GetParam();
    for (const bool batchMode : {false, true}) {
        SCOPED_TRACE(batchMode);
        ExpectLinearWork(c.count, [&](std::size_t count) {
            MemoryInput input(c.before + Repeat(c.part, count));
            LineReader lines(input);
            CommandStream stream(lines, CodePage::Utf8(), batchMode);
            try {
                while (!stream.ReadCommand()) {
                    while (stream.HasMoreParts()) stream.ReadNextPart();
                }
            } catch (const ParseError& error) {
                EXPECT_EQ(error.Kind(), ParseErrorKind::kUnclosedLiteral);
            }
        });
    }
}

const CommandsCase kCommandsCases[] = {
    {"many small commands", "", "LIST x.\n", 15'000},
    {"many blank lines", "", " \n", 125'000},
    {"a command of many lines", "LIST\n", " x\n", 50'000},
    {"a command of many blank lines", "LIST\n", "\n", 125'000},
    {"a comment of many lines", "* x\n", " it's. so\n", 25'000},
    {"one long line of words", "LIST", " x", 75'000},
    {"one long line of periods", "LIST ", ". ", 75'000},
    {"one long line of periods and comments", "LIST ", ". /**/", 25'000},
    {"one long line of literals", "LIST x", " 'a'", 50'000},
    {"one long line of comments", "LIST x", " /* */", 25'000},
    {"a long comment line of periods", "* ", ". ", 75'000},
    {"a long comment line of periods and blanks", "* .", " ", 250'000},
    {"one long word", "LIST ", "x", 250'000},
    {"one long literal", "LIST x 'a' '", "x", 250'000},
    {"slashes", "LIST ", "/", 250'000},
    {"lines of inline data", "BEGIN DATA\n", "1 2 3\n", 75'000},
    {"one long line of inline data", "BEGIN DATA\n", "1 2 3 ", 125'000},
    {"blocks of inline data", "", "BEGIN DATA\n1\nEND DATA\n", 10'000},
};
INSTANTIATE_TEST_SUITE_P(Texts, CommandStreamWorkTest, testing::ValuesIn(kCommandsCases),
                         NameOfRow<CommandsCase>);

}  // namespace
}  // namespace quillet
