#include "migrate/junitreport.h"

#include "migrate/reportreader.h"
#include "platform/numbertext.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr unsigned char kFirstPrintable = 0x20;
constexpr int kTimeDecimals = 3;

struct Counts {
    std::int64_t tests = 0;
    std::int64_t failures = 0;
    std::int64_t errors = 0;
    std::int64_t skipped = 0;
};

Counts CountsOf(const FileFacts& facts) {
    if (facts.outcome == FileOutcome::kFailed) return {1, 0, 1, 0};
    if (facts.outcome == FileOutcome::kSkipped) return {1, 0, 0, 1};
    return {facts.converted + facts.failed + facts.unreadable, facts.failed, facts.unreadable, 0};
}

Counts CountsOf(const std::vector<FileEntry>& files) {
    Counts sum;
    for (const FileEntry& file : files) {
        const Counts counts = CountsOf(file.facts);
        sum.tests += counts.tests;
        sum.failures += counts.failures;
        sum.errors += counts.errors;
        sum.skipped += counts.skipped;
    }
    return sum;
}

std::string Attribute(std::string_view name, std::string_view value) {
    return std::string(" ").append(name).append("=\"").append(EscapeXml(value)).append("\"");
}

std::string Attributes(const Counts& counts) {
    return Attribute("tests", std::to_string(counts.tests)) +
           Attribute("failures", std::to_string(counts.failures)) +
           Attribute("errors", std::to_string(counts.errors)) +
           Attribute("skipped", std::to_string(counts.skipped));
}

std::string PathText(const FileFacts& facts) { return ToUtf8(facts.path, TextEncoding::kUtf8); }

std::string PlaceText(const CommandFacts& command) {
    if (command.errorLine <= 0) return {};
    return "Line " + std::to_string(command.errorLine) + ", column " +
           std::to_string(command.errorColumn) + "\n";
}

std::string CaseName(const CommandFacts& command) {
    std::string name = command.type + ", line " + std::to_string(command.firstLine);
    if (command.lastLine > command.firstLine) name += " to " + std::to_string(command.lastLine);
    return name;
}

std::string Problem(std::string_view element, const CommandFacts& command) {
    return "      <" + std::string(element) + Attribute("type", command.error) +
           Attribute("message", command.message) + ">" +
           EscapeXml(PlaceText(command) + command.source) + "</" + std::string(element) + ">\n";
}

std::string Warnings(const CommandFacts& command) {
    if (command.warnings.empty()) return {};
    std::string lines;
    for (const std::string& warning : command.warnings) lines += warning + "\n";
    return "      <system-out>" + EscapeXml(lines) + "</system-out>\n";
}

std::string TestCase(const std::string& path, const CommandFacts& command) {
    std::string text = "    <testcase" + Attribute("classname", path) +
                       Attribute("name", CaseName(command)) + ">\n";
    if (command.outcome == NameOf(CommandOutcome::kFailed)) text += Problem("failure", command);
    if (command.outcome == NameOf(CommandOutcome::kUnreadable)) text += Problem("error", command);
    return text + Warnings(command) + "    </testcase>\n";
}

std::string FileCase(const FileFacts& facts) {
    const bool hasFailed = facts.outcome == FileOutcome::kFailed;
    return "    <testcase" + Attribute("classname", PathText(facts)) + Attribute("name", "file") +
           "><" + (hasFailed ? "error" : "skipped") + Attribute("message", facts.message) +
           "/></testcase>\n";
}

bool WriteSuite(const FileEntry& file, TextOutput& output) {
    const std::string path = PathText(file.facts);
    if (!output.Write("  <testsuite" + Attribute("name", path) + Attributes(CountsOf(file.facts)) +
                      ">\n")) {
        return false;
    }
    bool isWritten = true;
    if (file.facts.outcome == FileOutcome::kFailed || file.facts.outcome == FileOutcome::kSkipped) {
        isWritten = output.Write(FileCase(file.facts));
    } else {
        const auto writeCase = [&](const CommandFacts& command) {
            isWritten = isWritten && output.Write(TestCase(path, command));
        };
        if (!ForEachCommand(file.commands, writeCase)) return false;
    }
    return isWritten && output.Write("  </testsuite>\n");
}

// U+FFFE and U+FFFF are no characters of XML either.
bool IsNoncharacter(std::string_view text) {
    return text.starts_with("\xEF\xBF\xBE") || text.starts_with("\xEF\xBF\xBF");
}

}  // namespace

std::string EscapeXml(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char byte = text[position];
        switch (byte) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\t':
            case '\n':
            case '\r':
                escaped += "&#" + std::to_string(static_cast<int>(byte)) + ";";
                break;
            default:
                if (IsNoncharacter(text.substr(position))) {
                    escaped += kReplacement;
                    position += kReplacement.size() - 1;
                } else if (static_cast<unsigned char>(byte) < kFirstPrintable) {
                    escaped += kReplacement;
                } else {
                    escaped += byte;
                }
        }
    }
    return escaped;
}

bool WriteJunitReport(const Report& report, TextOutput& output) {
    if (!output.Write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" +
                      Attribute("name", "quillet-migrate") + Attributes(CountsOf(report.files)) +
                      Attribute("time", FixedText(report.run.seconds, kTimeDecimals)) + ">\n")) {
        return false;
    }
    for (const FileEntry& file : report.files) {
        if (!WriteSuite(file, output)) return false;
    }
    return output.Write("</testsuites>\n");
}

}  // namespace quillet::migrate
