// Bytes in, TABLES command, what it asks for out. The first byte chooses how the rest is read: as
// the text of a command in one of two code pages, or, structure-aware, each byte as one word of
// the language.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "outline/askedcommand.h"
#include "platform/assertion.h"
#include "platform/codepage.h"
#include "reachableassertions.h"

namespace {

using namespace quillet::outline;

constexpr std::string_view kWords[] = {
    "/AUTOLABEL=ON",
    "/BASE=ALL",
    "/BOXCHARS x",
    "/BREAK",
    "/CAPTION",
    "/CORNER",
    "/FORMAT",
    "/FTOTAL",
    "/GBASE=RESPONSES",
    "/MDGROUP",
    "/MISSING=",
    "/MRGROUP",
    "/OBSERVATION",
    "/PTOTAL",
    "/SORT",
    "/STATISTICS",
    "/TABLE",
    "/TITLE",
    "/TTITLE",
    "/XYZ",
    "/",
    "//",
    "/TABLE x + t",
    "/TABLE=(x > y + n) > (z + t) BY (STATISTICS)",
    "/STATISTICS=CPCT(x 'a' (F8.2) t : y z)",
    "/FTOTAL t 'all' u",
    "/PTOTAL n",
    "/OBSERVATION q1 TO q9",
    "/FORMAT MISSING('-') CWIDTH(1)",
    "/BREAK + t BY r",
    "BY",
    "TO",
    "ALL",
    "GT",
    "x",
    "y",
    "z",
    "t",
    "u",
    "n",
    "q5",
    "!m",
    "$g",
    "averyveryverylongwordthatismorethansixtyfourbytesandsonovariablename",
    "(",
    ")",
    "((",
    "))",
    "+",
    ">",
    "-",
    ":",
    "=",
    ",",
    "*",
    "(STATISTICS)",
    "(LABELS)",
    "(F8.2)",
    "(1)",
    "ZERO",
    "MISSING",
    "U",
    "ON",
    "ASCENDING",
    "COUNT",
    "CPCT",
    "RPCT",
    "MEAN",
    "PTILE 25",
    "7",
    "-1",
    "1e999",
    "'text'",
    "\"other\"",
    "'a'+'b'",
    "'a'+x'",
    "''",
    "\n",
    "/* c */",
    "/* d\n",
    ".",
    "x. /* e */",
    "\xC3\xA4",
};

std::string CommandText(const std::uint8_t* data, std::size_t size) {
    if (data[0] < 2) {
        return "TABLES " + std::string(reinterpret_cast<const char*>(data) + 1, size - 1);
    }
    std::string text = "TABLES";
    for (std::size_t index = 1; index < size; ++index) {
        text += ' ';
        text += kWords[data[index] % std::size(kWords)];
    }
    return text;
}

void Require(bool condition) {
    if (!condition) std::abort();
}

// Nothing but a character that is none may fail an assertion.
void OnAssertion(const quillet::AssertionFailure& failure) {
    Require(quillet::fuzz::IsReachableByTokenizing(failure.text));
}

// A whole tree, in which no operator has an operand of its own kind, or less than two.
void CheckTree(const Dimension& dimension) {
    std::vector<std::size_t> open;
    std::vector<int> operands;
    for (std::size_t at = 0; at < dimension.size(); ++at) {
        const Node& node = dimension[at];
        Require(node.end > at);
        Require(open.empty() ? at == 0 && node.end == dimension.size()
                             : node.end <= dimension[open.back()].end);
        if (!open.empty()) {
            Require(node.role != dimension[open.back()].role || !IsOperator(node.role));
            ++operands.back();
        }
        Require(node.name.IsEmpty() == IsOperator(node.role));
        if (IsOperator(node.role)) {
            open.push_back(at);
            operands.push_back(0);
        } else {
            Require(node.end == at + 1);
        }
        while (!open.empty() && dimension[open.back()].end == at + 1) {
            Require(operands.back() >= 2);
            open.pop_back();
            operands.pop_back();
        }
    }
    Require(open.empty());
}

void CheckTotals(const TableOutline& table) {
    for (const Total& total : table.totals) {
        Require(total.place.axis != Axis::kNone);
        const Dimension& dimension = table.dimensions[static_cast<std::size_t>(total.place.axis)];
        Require(total.place.node < dimension.size());
        Require(dimension[total.place.node].role == Role::kTotal);
        if (total.totaled == kNowhere) continue;
        Require(total.totaled < dimension.size());
        const Role role = dimension[total.totaled].role;
        Require(role == Role::kCategory || role == Role::kSet || role == Role::kLabels ||
                role == Role::kStacking);
    }
}

// Lines count from 1, and there are no more than the text has.
class LineCheck {
public:
    explicit LineCheck(std::string_view text)
        : m_count(1 + static_cast<long>(std::count_if(text.begin(), text.end(), [](char character) {
                      return character == '\n' || character == '\r';
                  }))) {}

    void operator()(long line) const { Require(1 <= line && line <= m_count); }

private:
    long m_count;
};

void CheckTable(const TableOutline& table, const LineCheck& checkLine) {
    checkLine(table.line);
    for (const Dimension& dimension : table.dimensions) {
        CheckTree(dimension);
        for (const Node& node : dimension) checkLine(node.line);
    }
    CheckTotals(table);
    for (const Total& total : table.totals) checkLine(total.line);
    Require(table.hasStatistics || table.assignments.empty());
    for (const Assignment& assignment : table.assignments) {
        checkLine(assignment.line);
        Require(!assignment.function.IsEmpty());
        const Range& bases = assignment.baseVariables;
        Require(bases.first <= table.baseVariables.size());
        Require(bases.count <= table.baseVariables.size() - bases.first);
        const bool isPercentage = assignment.percentOf != PercentOf::kNothing;
        Require(isPercentage == (assignment.counted != Counted::kNothing));
        Require(isPercentage == (assignment.against != Counted::kNothing));
    }
    for (const Sort& sort : table.sorts) {
        checkLine(sort.line);
        Require(!sort.variable.IsEmpty() && (sort.of.IsEmpty() || !sort.key.IsEmpty()));
    }
    for (const Heading& heading : table.headings) checkLine(heading.line);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 4096;
    if (size == 0 || size > kLongest) return 0;
    const quillet::ScopedAssertionHandler handler(OnAssertion);
    const std::string text = CommandText(data, size);
    const quillet::CodePage& codePage =
        data[0] == 1 ? quillet::CodePage::Windows1252() : quillet::CodePage::Utf8();
    const CommandOutline outline = ReadAskedCommand(codePage, text, false);

    const LineCheck checkLine(text);
    for (const TableOutline& table : outline.tables) CheckTable(table, checkLine);
    for (const DeclaredTotal& total : outline.declaredTotals) checkLine(total.line);
    for (const VariableRange& range : outline.scaleVariables) checkLine(range.line);
    for (const ResponseSet& set : outline.sets) checkLine(set.line);
    for (const Heading& heading : outline.headings) checkLine(heading.line);
    for (const Remark& remark : outline.remarks) {
        checkLine(remark.line);
        Require(remark.text.size() <= 200);
        Require(remark.table == kNowhere || remark.table < outline.tables.size());
    }
    return 0;
}
