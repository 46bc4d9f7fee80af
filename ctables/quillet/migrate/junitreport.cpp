#include "migrate/junitreport.h"

#include "migrate/macrocommands.h"
#include "migrate/storedfacts.h"
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

// A command that is no legacy command is a test all the same when the conversion ends there.
bool IsStoppedByOther(const FileFacts& facts) {
    return facts.outcome == FileOutcome::kStopped && facts.unreadable == 0;
}

Counts CountsOf(const FileFacts& facts) {
    if (facts.outcome == FileOutcome::kFailed) return {1, 0, 1, 0};
    if (!IsOfConversion(facts.outcome) && facts.outcome != FileOutcome::kCopied) {
        return {1, 0, 0, 1};
    }
    const std::int64_t errors = facts.unreadable + (IsStoppedByOther(facts) ? 1 : 0);
    return {facts.converted + facts.failed + errors + facts.overlooked,
            facts.failed + facts.overlooked, errors, 0};
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

std::string TestCase(const std::string& path, const FindingFacts& finding) {
    std::string name = finding.command + ", line " + std::to_string(finding.firstLine);
    if (finding.lastLine > finding.firstLine) name += " to " + std::to_string(finding.lastLine);
    return "    <testcase" + Attribute("classname", path) + Attribute("name", name) +
           ">\n      <failure" + Attribute("type", finding.code) +
           Attribute("message", finding.sentence) + ">" + EscapeXml(finding.text) +
           "</failure>\n    </testcase>\n";
}

// The cases of one file, which are its legacy commands.
class FileCases {
public:
    // Both are borrowed.
    FileCases(const FileEntry& file, TextOutput& output)
        : m_file(file), m_output(output), m_path(PathText(file.facts)) {}

    [[nodiscard]] bool Write() {
        const bool areFindingsRead =
            ForEachFinding(m_file.findings, [this](const FindingFacts& finding) { Take(finding); });
        const bool areCommandsRead =
            ForEachCommand(m_file.commands, [this](const CommandFacts& command) { Take(command); });
        return areFindingsRead && areCommandsRead && WriteOthers() && m_isWritten;
    }

private:
    void Take(const FindingFacts& finding) {
        m_inMacros.Take(finding);
        if (IsOverlooked(finding)) Write(TestCase(m_path, finding));
    }
    // What is no test.
    [[nodiscard]] bool WriteOthers() {
        if (m_file.facts.changed + m_file.facts.told == 0) return true;
        Write("    <system-out>");
        const bool areRead = ForEachFinding(m_file.findings, [this](const FindingFacts& finding) {
            if (!IsOverlooked(finding)) Write(EscapeXml(finding.sentence + "\n"));
        });
        Write("</system-out>\n");
        return areRead;
    }
    void Take(const CommandFacts& command) {
        if (!m_inMacros.Hold(command)) Write(TestCase(m_path, command));
    }
    void Write(const std::string& text) { m_isWritten = m_isWritten && m_output.Write(text); }

    const FileEntry& m_file;
    TextOutput& m_output;
    std::string m_path;
    MacroCommands m_inMacros;
    bool m_isWritten = true;
};

std::string FileCase(const FileFacts& facts) {
    const bool hasFailed = facts.outcome == FileOutcome::kFailed;
    const std::string_view message =
        facts.message.empty() ? std::string_view("nothing to convert") : facts.message;
    return "    <testcase" + Attribute("classname", PathText(facts)) + Attribute("name", "file") +
           "><" + (hasFailed ? "error" : "skipped") + Attribute("message", message) +
           "/></testcase>\n";
}

bool WriteSuite(const FileEntry& file, TextOutput& output) {
    const std::string path = PathText(file.facts);
    if (!output.Write("  <testsuite" + Attribute("name", path) + Attributes(CountsOf(file.facts)) +
                      ">\n")) {
        return false;
    }
    const bool hasCases =
        IsOfConversion(file.facts.outcome) || file.facts.outcome == FileOutcome::kCopied;
    const bool isWritten =
        hasCases ? FileCases(file, output).Write() : output.Write(FileCase(file.facts));
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
