#include "driver/datalines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "driver/outputfile.h"

namespace quillet {
namespace {

using namespace std::string_literals;

bool EndsRight(std::string_view line, bool endsInCrLf) {
    return line.ends_with('\r') == endsInCrLf;
}

// The plain way to say it: line by line.
PlainLines LineByLine(std::string_view text, bool endsInCrLf) {
    PlainLines run;
    while (true) {
        const std::string_view rest = text.substr(run.text.size());
        const std::size_t end = rest.find('\n');
        if (end == std::string_view::npos || end + 1 == rest.size()) return run;
        const std::string_view line = rest.substr(0, end);
        if (IsBlankLine(line) || line.front() == 'e' || line.front() == 'E') return run;
        if (!EndsRight(line, endsInCrLf)) return run;
        run.text = text.substr(0, run.text.size() + end + 1);
        ++run.count;
    }
}

void ExpectRun(const std::string& text, bool endsInCrLf, std::size_t length, long count) {
    const PlainLines run = FindPlainDataLines(text, endsInCrLf);
    EXPECT_EQ(run.text.size(), length) << testing::PrintToString(text) << endsInCrLf;
    EXPECT_EQ(run.count, count) << testing::PrintToString(text) << endsInCrLf;
}

struct DataLineCase {
    const char* name;
    std::string text;
    std::size_t length;
    long lineCount;
};

TEST(DataLinesTest, StopsBeforeALineThatNeedsALook) {
    const DataLineCase cases[] = {
        {"nothing", "", 0, 0},
        {"no line end", "1 2 3", 0, 0},
        {"the last line", "1 2 3\n", 0, 0},
        {"a line and the beginning of one", "1 2\n3", 4, 1},
        {"the last of two lines", "1\n2\n", 2, 1},
        {"an empty line", "1\n2\n\n3\n4\n", 4, 2},
        {"a line of blanks", "1\n2\n \t \n3\n4\n", 4, 2},
        {"blanks without a line end", "1\n2\n \t ", 4, 2},
        {"a line that begins with blanks", " 1\n\t2\n 3\n4\n", 9, 3},
        {"the end of the data", "1\n2\nEND DATA.\nLIST.\n", 4, 2},
        {"the end of the data in small letters", "1\n2\nend data.\nLIST.\n", 4, 2},
        {"a word of data with that letter", "1\neast 2\n3\n4\n", 2, 1},
        {"that letter within a line", "1 e\n e2\n3\n4\n", 10, 3},
        {"a line that ends in CR LF", "1\n2\r\n3\n4\n", 2, 1},
        {"a carriage return within a line", "1\r2\n\r3\n4\n5", 9, 3},
        {"a control character in front", "\0\n\x01 2\n3\n"s, 6, 2},
        {"letters outside ASCII", "\xC3\xA9\n\xE9\n3\n", 5, 2},
    };
    for (const DataLineCase& c : cases) {
        SCOPED_TRACE(c.name);
        ExpectRun(c.text, false, c.length, c.lineCount);
    }
}

TEST(DataLinesTest, WantsTheLineEndOfTheFirstLine) {
    ExpectRun("1\r\n2\r\n3\n4\r\n", true, 6, 2);
    ExpectRun("1\r\n2\r\n3\r\n", true, 6, 2);
    ExpectRun("1\r\r\n2\r\n", true, 4, 1);
    ExpectRun("1\n2\r\n3\r\n", true, 0, 0);
    ExpectRun("1\r\n\r\n3\r\n", true, 3, 1);
    ExpectRun("1\r\n \r\n3\r\n", true, 3, 1);
}

// Lines of all lengths, so that each kind of line stands at each place of a chunk.
TEST(DataLinesTest, FindsWhatLooksAtSingleLinesFind) {
    std::mt19937 random(7);
    const auto below = [&random](unsigned limit) {
        return static_cast<unsigned>(random() % limit);
    };
    const std::string_view specials[] = {"\n",   " \t\n", "E\n",        "e",
                                         "\r\n", " 1\n",  "END DATA\n", "\r"};
    for (int round = 0; round < 4000; ++round) {
        const bool endsInCrLf = below(2) == 1;
        const unsigned longest = 1 + below(200);
        const unsigned rarity = 1 + below(40);
        std::string text;
        for (unsigned lines = below(30); lines > 0; --lines) {
            text += std::string(1 + below(longest), "0 e."[below(4)]);
            text += endsInCrLf ? "\r\n" : "\n";
            if (below(rarity) == 0) text += specials[below(std::size(specials))];
        }
        for (std::size_t begin = 0; begin < std::min<std::size_t>(text.size(), 3); ++begin) {
            const std::string part = text.substr(begin);
            const PlainLines expected = LineByLine(part, endsInCrLf);
            ExpectRun(part, endsInCrLf, expected.text.size(), expected.count);
        }
    }
}

}  // namespace
}  // namespace quillet
