// Bytes choose among the constructs of the language; the TABLES command that comes out is
// converted from end to end. Most of them parse, so it is the translator that is tried here, and
// the reader of what it writes.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>

#include "outline/printwritten.h"
#include "outline/readwritten.h"
#include "platform/codepage.h"
#include "quillet.h"
#include "reachableassertions.h"

namespace {

class CommandWriter {
public:
    CommandWriter(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    std::string Write() {
        m_text = "TABLES";
        while (Choose(4) != 0) WriteGlobal();
        do {
            WriteTable();
        } while (Choose(3) == 0 && m_size > 0);
        return m_text + ".\n";
    }

private:
    // A number below `limit`; 0 when the bytes are used up, so that every choice comes to an end.
    std::size_t Choose(std::size_t limit) {
        if (m_size == 0) return 0;
        --m_size;
        return *m_data++ % limit;
    }

    template <std::size_t kCount>
    void AddOneOf(const std::array<std::string_view, kCount>& texts) {
        Add(texts[Choose(kCount)]);
    }

    void Add(std::string_view text) { m_text.append(Choose(8) == 7 ? "\n  " : " ").append(text); }

    void AddVariable() {
        AddOneOf(std::array<std::string_view, 16>{
            "a", "b", "c", "scale1", "scale2", "t1", "t2", "p1", "$mr", "multiple_set",
            "m\xC3\xA4ngel_w\xC3\xB6rter", "averyveryverylongvariablename_1", "TABLE", "d", "E",
            "tot"});
    }

    void AddVariables() {
        do {
            AddVariable();
            if (Choose(6) == 5) {
                Add("TO");
                AddVariable();
            }
        } while (Choose(3) != 0);
    }

    void AddLiteral() {
        AddOneOf(std::array<std::string_view, 6>{"'label'", "\"other label\"", "'it''s'", "''",
                                                 "'a label that is so long that it does not fit on "
                                                 "a line of eighty columns whatever is'",
                                                 "'\xEC\x84\xB1\xEB\xB3\x84'"});
    }

    void MaybeLiteral() {
        if (Choose(2) == 1) AddLiteral();
    }

    void WriteGlobal() {
        switch (Choose(10)) {
            case 0:
                Add("/OBSERVATION scale1 scale2");
                break;
            case 1:
                Add("/FTOTAL t1");
                MaybeLiteral();
                Add("t2");
                MaybeLiteral();
                break;
            case 2:
                Add("/PTOTAL p1");
                MaybeLiteral();
                break;
            case 3:
                Add("/MRGROUP $mr");
                MaybeLiteral();
                AddVariables();
                break;
            case 4:
                Add("/MDGROUP multiple_set");
                MaybeLiteral();
                AddVariables();
                AddOneOf(std::array<std::string_view, 3>{"(1)", "('yes')", "(-2.5)"});
                break;
            case 5:
                AddOneOf(std::array<std::string_view, 4>{"/BASE ALL", "/BASE QUALIFIED",
                                                         "/BASE ANSWERING", "/BASE"});
                break;
            case 6:
                AddOneOf(
                    std::array<std::string_view, 3>{"/GBASE CASES", "/GBASE RESPONSES", "/GBASE"});
                break;
            case 7:
                AddOneOf(std::array<std::string_view, 5>{
                    "/FORMAT ZERO", "/FORMAT BLANK MISSING('-')", "/FORMAT CWIDTH(10)", "/FORMAT",
                    "/FORMAT MISSING('.') BLANK ZERO"});
                break;
            case 8:
                AddOneOf(std::array<std::string_view, 4>{"/MISSING INCLUDE", "/MISSING EXCLUDE",
                                                         "/AUTOLABEL ON", "/AUTOLABEL OFF"});
                break;
            default:
                AddOneOf(std::array<std::string_view, 3>{"/BREAK + d", "/BOXCHARS x", "/XYZ y"});
                break;
        }
    }

    void WriteExpression(int depth) {
        const std::size_t kind = Choose(depth > 5 ? 4 : 9);
        switch (kind) {
            case 0:
            case 1:
            case 2:
                AddVariable();
                break;
            case 3:
                AddOneOf(std::array<std::string_view, 3>{"(STATISTICS)", "(LABELS)", "a"});
                break;
            case 4:
            case 5:
                WriteOperation("+", depth);
                break;
            case 6:
                WriteOperation(">", depth);
                break;
            default:
                Add("(");
                WriteOperation(kind == 7 ? "+" : ">", depth);
                Add(")");
                break;
        }
    }

    void WriteOperation(std::string_view sign, int depth) {
        WriteExpression(depth + 1);
        do {
            Add(sign);
            WriteExpression(depth + 1);
        } while (Choose(3) == 2);
    }

    void WriteTable() {
        Add("/TABLE");
        WriteExpression(0);
        for (int dimensions = 1; dimensions < 3 && Choose(2) == 1; ++dimensions) {
            Add("BY");
            WriteExpression(0);
        }
        while (Choose(3) != 0) WriteLocal();
    }

    void WriteLocal() {
        switch (Choose(5)) {
            case 0:
            case 1:
                Add("/STATISTICS");
                do {
                    WriteFunction();
                } while (Choose(3) != 0);
                break;
            case 2:
                WriteTexts();
                break;
            case 3:
                WriteSort();
                break;
            default:
                AddOneOf(std::array<std::string_view, 2>{"/BREAK > b", "/INDEX x"});
                break;
        }
    }

    void AddFunctionName() {
        AddOneOf(std::array<std::string_view, 20>{
            "COUNT",  "CPCT",   "MEAN",     "SUM",    "CASES",  "RESPONSES", "RPCT",
            "CSPCT",  "SPCT",   "VPCT",     "PTILE",  "MEDIAN", "MODE",      "VALIDN",
            "HPTILE", "STDDEV", "VARIANCE", "nofunc", "mea",    "EPTILE"});
    }

    void WriteFunction() {
        if (Choose(5) == 1) Add("U");
        AddFunctionName();
        if (Choose(5) == 1) Add("25");
        if (Choose(2) == 0) return;
        Add("(");
        if (Choose(2) == 1) AddVariable();
        if (Choose(2) == 1) AddOneOf(std::array<std::string_view, 3>{"(F8.2)", "(PCT5.1)", "'n'"});
        MaybeLiteral();
        if (Choose(2) == 1) {
            Add(":");
            AddVariables();
        }
        Add(")");
    }

    void WriteTexts() {
        AddOneOf(std::array<std::string_view, 3>{"/TITLE", "/CAPTION", "/CORNER"});
        while (Choose(3) != 0) AddLiteral();
    }

    void WriteSort() {
        AddOneOf(std::array<std::string_view, 3>{"/SORT", "/SORT ASCENDING", "/SORT DESCENDING"});
        do {
            AddVariable();
            if (Choose(2) == 0) continue;
            Add("(");
            AddFunctionName();
            if (Choose(2) == 1) {
                Add("(");
                AddVariable();
                Add(")");
            }
            Add(")");
        } while (Choose(3) != 0);
    }

    const std::uint8_t* m_data;
    std::size_t m_size;
    std::string m_text;
};

[[noreturn]] void Fail(std::string_view reason, const std::string& command,
                       const std::string& output) {
    std::fprintf(stderr, "%.*s\n--- command\n%s--- output\n%s", static_cast<int>(reason.size()),
                 reason.data(), command.c_str(), output.c_str());
    std::abort();
}

// `line` is one that `quillet::AssertionLine` has made.
bool IsReachable(std::string_view line) {
    constexpr std::string_view kBeginning = "Assertion failed: ";
    if (!line.starts_with(kBeginning)) return false;
    line.remove_prefix(kBeginning.size());
    return quillet::fuzz::IsReachableByTables(line.substr(0, line.rfind(", ")));
}

void CheckDiagnostics(const quillet::Conversion& conversion, const std::string& command) {
    std::string_view rest = conversion.diagnostics;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(line.size() + 1);
        if (!IsReachable(line)) Fail(line, command, conversion.output);
    }
}

std::string WithoutWhiteSpace(std::string_view text) {
    std::string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result),
                 [](char c) { return c != ' ' && c != '\n'; });
    return result;
}

// What is written can be read, and is the same when it is printed.
void CheckWritten(const quillet::Conversion& conversion, const std::string& command) {
    constexpr std::string_view kBegin = "COMMENT -- Begin CTABLES command.\n";
    std::string_view written = conversion.output;
    written.remove_prefix(std::min(written.size(), written.find(kBegin)));
    if (written.empty()) return;
    written.remove_prefix(kBegin.size());
    written = written.substr(0, written.find("COMMENT -- End CTABLES command."));
    while (written.starts_with("*****")) written.remove_prefix(written.find('\n') + 1);
    if (written.empty()) return;
    quillet::outline::CommandOutline outline;
    quillet::outline::ReadingError error;
    if (!ReadWritten(quillet::CodePage::Utf8(), written, outline, error)) {
        Fail(error.message, command, conversion.output);
    }
    if (WithoutWhiteSpace(PrintWritten(outline)) != WithoutWhiteSpace(written)) {
        Fail("not printed alike", command, conversion.output);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string command = CommandWriter(data, size).Write();
    const quillet::Conversion conversion = quillet::ConvertText(command, quillet::Options{});
    CheckDiagnostics(conversion, command);
    if (conversion.outcome != quillet::Outcome::kDone) Fail("stopped", command, conversion.output);
    CheckWritten(conversion, command);
    // What comes out holds no legacy command any more.
    const quillet::Conversion again = quillet::ConvertText(conversion.output, quillet::Options{});
    if (again.output != conversion.output) Fail("not repeatable", command, conversion.output);
    return 0;
}
