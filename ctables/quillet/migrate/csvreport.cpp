#include "migrate/csvreport.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace quillet::migrate {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kInsteadOfNul = "\xEF\xBF\xBD";
constexpr std::string_view kHeadings =
    "path,command,outcome,firstLine,lastLine,reason,message,hint,errorLine,errorColumn,"
    "generatedLine,warnings,group\r\n";

// What a formula begins with, the wide signs of East Asian scripts included, and the blanks that
// some programs drop before they look.
constexpr std::array<std::string_view, 11> kFormulaStarts = {
    "=",           "+", "-", "@", "\t", "\r", "\n", "\xEF\xBC\x9D", "\xEF\xBC\x8B", "\xEF\xBC\x8D",
    "\xEF\xBC\xA0"};

// 0 stands for a number that is not known.
std::string KnownNumber(std::int64_t number) {
    return number > 0 ? "," + std::to_string(number) : std::string(",");
}

std::string RowOf(const FileFacts& file, const ListedCommand& command) {
    std::string row = CsvText(ToUtf8(file.path, TextEncoding::kUtf8));
    row += "," + CsvText(command.type) + "," + CsvText(command.outcome);
    row += KnownNumber(command.firstLine) + KnownNumber(command.lastLine);
    row += "," + CsvText(command.reason) + "," + CsvText(command.message) + "," +
           CsvText(command.hint);
    row += KnownNumber(command.errorLine) + KnownNumber(command.errorColumn) +
           KnownNumber(command.generatedLine);
    row += "," + std::to_string(command.warnings) +
           KnownNumber(static_cast<std::int64_t>(command.group));
    return row + "\r\n";
}

}  // namespace

std::string CsvText(std::string_view text) {
    const bool isLikeFormula =
        std::any_of(kFormulaStarts.begin(), kFormulaStarts.end(),
                    [text](std::string_view start) { return text.starts_with(start); });
    std::string cell = isLikeFormula ? "\"'" : "\"";
    for (const char byte : text) {
        if (byte == '\0') {
            cell += kInsteadOfNul;
            continue;
        }
        if (byte == '"') cell += byte;
        cell += byte;
    }
    return cell + "\"";
}

bool WriteCsvReport(const Report& report, TextOutput& output, ReportDigest& digest) {
    bool isWritten = output.Write(std::string(kByteOrderMark).append(kHeadings));
    const auto writeRow = [&](const FileFacts& file, const ListedCommand& command) {
        isWritten = isWritten && output.Write(RowOf(file, command));
    };
    return ReadDigest(report, digest, writeRow) && isWritten;
}

}  // namespace quillet::migrate
