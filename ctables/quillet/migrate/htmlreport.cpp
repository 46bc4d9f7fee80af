#include "migrate/htmlreport.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "migrate/jsonreport.h"
#include "migrate/reportpage.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kElementEnd = "</script>\n";
// U+2028 and U+2029 but for their last byte.
constexpr std::string_view kSeparatorStart = "\xE2\x80";

std::string ElementStart(std::string_view id) {
    return std::string(R"(<script type="application/json" id=")").append(id).append("\">");
}

constexpr std::string_view kLessThan = R"(\u003c)";
constexpr std::string_view kLineSeparator = R"(\u2028)";
constexpr std::string_view kParagraphSeparator = R"(\u2029)";

// What the escaper has to look at twice.
bool IsSpecial(char byte) { return byte == '<' || byte == kSeparatorStart[0]; }

// Beside the facts that all files have.
bool HasDetails(const FileEntry& file) {
    return HasCommands(file.facts) || HasFindings(file.facts);
}

std::string CountsJson(const NameCounts& counts) {
    nlohmann::json json = nlohmann::json::object();
    for (const auto& [name, count] : counts) json[name] = count;
    return json.dump();
}

bool WriteFiles(const Report& report, const ReportDigest& digest, TextOutput& output) {
    std::size_t chunk = 0;
    for (std::size_t index = 0; index < report.files.size(); ++index) {
        const FileEntry& file = report.files[index];
        const FileDigest& ofFile = digest.files[index];
        std::string text = index == 0 ? "" : ",\n";
        text += OpenFileJson(file);
        text += ",\"errors\":" + CountsJson(ofFile.reasons);
        text += ",\"codes\":" + CountsJson(ofFile.codes);
        if (HasDetails(file)) text += ",\"chunk\":" + std::to_string(chunk++);
        text += "}";
        if (!output.Write(text)) return false;
    }
    return output.Write("\n]");
}

// Those of several commands, each place as the numbers of its file and of the command in it.
bool WriteGroups(const ReportDigest& digest, TextOutput& output) {
    if (!output.Write(",\n\"groups\":[")) return false;
    bool isFirst = true;
    for (const FailureGroup& group : digest.groups) {
        if (group.places.size() < 2) continue;
        nlohmann::json places = nlohmann::json::array();
        for (const CommandPlace& place : group.places) {
            places.push_back({place.file, place.command});
        }
        const nlohmann::json json = {{"error", group.reason}, {"places", std::move(places)}};
        if (!output.Write(std::exchange(isFirst, false) ? "\n" : ",\n") ||
            !output.Write(json.dump())) {
            return false;
        }
    }
    return output.Write("\n]}");
}

bool WriteSummaryElement(const Report& report, const ReportDigest& digest, TextOutput& output) {
    ScriptEscaper escaper(output);
    return output.Write(ElementStart("report")) && escaper.Write(OpenReportJson(report)) &&
           WriteFiles(report, digest, escaper) && WriteGroups(digest, escaper) &&
           escaper.Finish() && output.Write(kElementEnd);
}

bool WriteChunkElements(const Report& report, TextOutput& output) {
    std::size_t chunk = 0;
    for (const FileEntry& file : report.files) {
        if (!HasDetails(file)) continue;
        ScriptEscaper escaper(output);
        if (!output.Write(ElementStart("chunk-" + std::to_string(chunk++))) ||
            !escaper.Write("{\"findings\":") || !CopyArray(file.findings, escaper) ||
            !escaper.Write(kCommandsMember) || !CopyArray(file.commands, escaper) ||
            !escaper.Write("}") || !escaper.Finish() || !output.Write(kElementEnd)) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string_view ReportPage() { return {kReportPage, sizeof kReportPage}; }

bool ScriptEscaper::Write(std::string_view bytes) {
    std::string escaped;
    escaped.reserve(m_pending.size() + bytes.size());
    for (std::size_t position = 0; position < bytes.size();) {
        if (m_pending.empty()) {
            // Nearly everything goes through as it is.
            const char* const pBegin = bytes.data() + position;
            const char* const pEnd = std::find_if(pBegin, bytes.data() + bytes.size(), IsSpecial);
            escaped.append(pBegin, pEnd);
            position += static_cast<std::size_t>(pEnd - pBegin);
        }
        if (position < bytes.size()) TakeSpecial(bytes[position++], escaped);
    }
    return m_output.Write(escaped);
}

void ScriptEscaper::TakeSpecial(char byte, std::string& escaped) {
    if (m_pending.size() < kSeparatorStart.size() && byte == kSeparatorStart[m_pending.size()]) {
        m_pending += byte;
        return;
    }
    if (m_pending == kSeparatorStart && (byte == '\xA8' || byte == '\xA9')) {
        escaped += byte == '\xA8' ? kLineSeparator : kParagraphSeparator;
        m_pending.clear();
        return;
    }
    // No separator after all; in text that is not UTF-8 another one may begin right here.
    escaped += std::exchange(m_pending, {});
    if (byte == kSeparatorStart[0]) {
        m_pending += byte;
    } else if (byte == '<') {
        escaped += kLessThan;
    } else {
        escaped += byte;
    }
}

bool ScriptEscaper::Finish() { return m_output.Write(std::exchange(m_pending, {})); }

bool WriteHtmlReport(const Report& report, const ReportDigest& digest, std::string_view page,
                     TextOutput& output) {
    const std::size_t mark = page.find(kDataMark);
    if (mark == std::string_view::npos) return false;
    return output.Write(page.substr(0, mark)) && WriteSummaryElement(report, digest, output) &&
           WriteChunkElements(report, output) && output.Write(page.substr(mark + kDataMark.size()));
}

}  // namespace quillet::migrate
