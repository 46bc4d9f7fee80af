// Bytes in, generated command, what it says out. The first byte chooses how the rest is read: as
// the text of a command in one of two code pages, or each byte as one word of the language. What
// could be read is printed and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "outline/printwritten.h"
#include "outline/readwritten.h"
#include "platform/codepage.h"

namespace {

using namespace quillet::outline;

constexpr std::string_view kWords[] = {
    "MRSETS\n",
    "/MCGROUP NAME=$m VARIABLES=a",
    "/MDGROUP NAME=$n VARIABLES=a TO b VALUE=",
    "LABEL=",
    ".\nCTABLES",
    "CTABLES\n",
    "/MRSETS COUNTDUPLICATES=YES\n",
    "/FORMAT EMPTY=ZERO",
    " MISSING=",
    "\n/TABLE ",
    " BY ",
    "a[C]",
    "x[S]",
    "$m",
    "+",
    ">",
    "(",
    ")",
    "[",
    "]",
    ",",
    "TOTALS[",
    "COUNT",
    "UROWPCT.RESPONSES.COUNT",
    "PTILE 5",
    "F8.2",
    "'it''s'",
    "'a'+\n\"b\" ",
    "'a'+x'",
    "5.",
    "b.",
    "\n/CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=INCLUDE",
    "\n/CATEGORIES VAR=A",
    " B",
    " TOTAL=YES",
    " POSITION=BEFORE",
    " ORDER=A",
    " KEY=COUNT",
    "(x)",
    "\n/CLABELS ROW=OPPOSITE",
    "\n/SLABELS POSITION=ROW",
    " VISIBLE=NO",
    "\n/TITLES TITLE=",
    " CORNER=",
    "/",
    "=",
    ".",
    "\n",
};

void Require(bool condition) {
    if (!condition) std::abort();
}

std::string CommandText(const std::uint8_t* data, std::size_t size) {
    constexpr std::uint8_t kAsWords = 2;
    if (data[0] != kAsWords) return {reinterpret_cast<const char*>(data) + 1, size - 1};
    std::string text;
    for (std::size_t i = 1; i < size; ++i) text += kWords[data[i] % std::size(kWords)];
    return text;
}

void CheckDimension(const Dimension& dimension) {
    std::vector<std::size_t> ends;
    for (std::size_t i = 0; i < dimension.size(); ++i) {
        const Node& node = dimension[i];
        while (!ends.empty() && ends.back() == i) ends.pop_back();
        Require(i == 0 || !ends.empty());
        Require(node.end > i && (ends.empty() || node.end <= ends.back()));
        Require(IsOperator(node.role) ? node.end > i + 2 : node.end == i + 1);
        if (IsOperator(node.role)) ends.push_back(node.end);
    }
    Require(dimension.empty() || dimension[0].end == dimension.size());
}

void CheckTable(const TableOutline& table) {
    for (const Dimension& dimension : table.dimensions) CheckDimension(dimension);
    for (const Assignment& assignment : table.assignments) {
        const auto axis = static_cast<std::size_t>(assignment.place.axis);
        Require(axis < kAxes && assignment.place.node < table.dimensions[axis].size());
        const Node& node = table.dimensions[axis][assignment.place.node];
        Require(!IsOperator(node.role) && node.name.text == assignment.on.text);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 4096;
    if (size == 0 || size > kLongest) return 0;
    const std::string text = CommandText(data, size);
    const quillet::CodePage& codePage =
        data[0] == 1 ? quillet::CodePage::Windows1252() : quillet::CodePage::Utf8();
    CommandOutline outline;
    ReadingError error;
    if (!ReadWritten(codePage, text, outline, error)) {
        Require(!error.message.empty() && error.offset <= text.size() && error.line > 0);
        return 0;
    }
    for (const TableOutline& table : outline.tables) CheckTable(table);
    const std::string printed = PrintWritten(outline);
    Require(ReadWritten(codePage, printed, outline, error));
    Require(PrintWritten(outline) == printed);
    return 0;
}
