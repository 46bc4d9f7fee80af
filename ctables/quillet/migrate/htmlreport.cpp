#include "migrate/htmlreport.h"

#include <algorithm>
#include <map>
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
    return HasCommands(file.facts) || HasFindings(file.facts) || HasMacros(file.facts);
}

std::string CountsJson(const NameCounts& counts) {
    nlohmann::json json = nlohmann::json::object();
    for (const auto& [name, count] : counts) json[name] = count;
    return json.dump();
}

// What goes into a page. All are borrowed.
struct PageContent {
    const Report& report;
    const ReportDigest& digest;
    const PageParts* pParts = nullptr;  // of an index, which has no texts itself
    std::string members = {};           // more of the report, each with a comma before it
};

std::string CountsOf(const FileDigest& ofFile) {
    std::string text =
        ",\"errors\":" + CountsJson(ofFile.reasons) + ",\"codes\":" + CountsJson(ofFile.codes);
    if (ofFile.macros.empty()) return text;
    nlohmann::json macros = nlohmann::json::array();
    for (const MacroFacts& macro : ofFile.macros) {
        macros.push_back({macro.name, macro.calls, macro.converted, macro.failed, macro.left});
    }
    return text + ",\"calledMacros\":" + macros.dump();
}

bool WriteFiles(const PageContent& content, TextOutput& output) {
    std::size_t chunk = 0;
    for (std::size_t index = 0; index < content.report.files.size(); ++index) {
        const FileEntry& file = content.report.files[index];
        std::string text = index == 0 ? "" : ",\n";
        text += content.pParts != nullptr ? OpenShortFileJson(file) : OpenFileJson(file);
        text += CountsOf(content.digest.files[index]);
        if (content.pParts != nullptr) {
            text += ",\"part\":" + std::to_string(content.pParts->partOfFile[index]);
        } else if (HasDetails(file)) {
            text += ",\"chunk\":" + std::to_string(chunk++);
        }
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
    return output.Write("\n]");
}

bool WriteSummaryElement(const PageContent& content, TextOutput& output) {
    ScriptEscaper escaper(output);
    return output.Write(ElementStart("report")) && escaper.Write(OpenReportJson(content.report)) &&
           WriteFiles(content, escaper) && WriteGroups(content.digest, escaper) &&
           escaper.Write(content.members) && escaper.Write("}") && escaper.Finish() &&
           output.Write(kElementEnd);
}

bool WriteChunkElement(const FileEntry& file, std::size_t chunk, TextOutput& output) {
    ScriptEscaper escaper(output);
    return output.Write(ElementStart("chunk-" + std::to_string(chunk))) &&
           escaper.Write("{\"findings\":") && CopyArray(file.findings, escaper) &&
           (file.macros.pFile == nullptr ||
            (escaper.Write(kMacrosMember) && CopyArray(file.macros, escaper))) &&
           escaper.Write(kCommandsMember) && CopyArray(file.commands, escaper) &&
           escaper.Write("}") && escaper.Finish() && output.Write(kElementEnd);
}

bool WriteChunkElements(const Report& report, TextOutput& output) {
    std::size_t chunk = 0;
    for (const FileEntry& file : report.files) {
        if (HasDetails(file) && !WriteChunkElement(file, chunk++, output)) return false;
    }
    return true;
}

// Counts what is written, and keeps none of it.
class SizeOutput final : public TextOutput {
public:
    bool Write(std::string_view bytes) override {
        m_size += bytes.size();
        return true;
    }
    [[nodiscard]] std::uint64_t Size() const { return m_size; }

private:
    std::uint64_t m_size = 0;
};

bool WritePage(const PageContent& content, std::string_view page, TextOutput& output) {
    const std::size_t mark = page.find(kDataMark);
    if (mark == std::string_view::npos) return false;
    return output.Write(page.substr(0, mark)) && WriteSummaryElement(content, output) &&
           (content.pParts != nullptr || WriteChunkElements(content.report, output)) &&
           output.Write(page.substr(mark + kDataMark.size()));
}

// In each part a group has those of its commands that lie there.
std::vector<std::vector<FailureGroup>> GroupsOfParts(const ReportDigest& digest,
                                                     const PageParts& parts) {
    std::vector<std::size_t> placeInPart(parts.partOfFile.size());
    for (const PagePart& part : parts.parts) {
        for (std::size_t place = 0; place < part.files.size(); ++place) {
            placeInPart[part.files[place]] = place;
        }
    }
    std::vector<std::vector<FailureGroup>> groups(parts.parts.size());
    for (const FailureGroup& group : digest.groups) {
        // The files of a part need not follow one another.
        std::map<std::size_t, FailureGroup> ofParts;
        for (const CommandPlace& place : group.places) {
            FailureGroup& ofPart = ofParts[parts.partOfFile[place.file]];
            ofPart.places.push_back({placeInPart[place.file], place.command});
        }
        for (auto& [part, ofPart] : ofParts) {
            ofPart.reason = group.reason;
            groups[part].push_back(std::move(ofPart));
        }
    }
    return groups;
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

bool MeasureFiles(const Report& report, const ReportDigest& digest,
                  std::vector<std::uint64_t>& bytes) {
    // Two numbers, of a file and of a command in it, and the signs around them.
    constexpr std::uint64_t kMostBytesOfPlace = 24;
    // The number of a chunk, twice, and what keeps files apart.
    constexpr std::uint64_t kMostBytesBetween = 60;
    bytes.clear();
    for (std::size_t index = 0; index < report.files.size(); ++index) {
        const FileEntry& file = report.files[index];
        SizeOutput size;
        ScriptEscaper escaper(size);
        if (!escaper.Write(OpenFileJson(file) + CountsOf(digest.files[index])) ||
            !escaper.Finish() || (HasDetails(file) && !WriteChunkElement(file, 0, size))) {
            return false;
        }
        std::uint64_t failed = 0;
        for (const auto& [name, count] : digest.files[index].reasons) {
            failed += static_cast<std::uint64_t>(count);
        }
        bytes.push_back(size.Size() + failed * kMostBytesOfPlace + kMostBytesBetween);
    }
    return true;
}

bool WriteHtmlReport(const Report& report, const ReportDigest& digest, std::string_view page,
                     TextOutput& output) {
    return WritePage({report, digest}, page, output);
}

SplitReport::SplitReport(const Report& report, const ReportDigest& digest, const PageParts& parts,
                         const std::string& pageName)
    : m_report(report),
      m_digest(digest),
      m_parts(parts),
      m_pageName(pageName),
      m_groups(GroupsOfParts(digest, parts)),
      m_signOffs(AllSignOffsJson(report)) {}

std::string SplitReport::NameOfPart(std::size_t part) const {
    const std::size_t extension = m_pageName.rfind('.');
    return m_pageName.substr(0, extension) + PartNameOf(m_parts.parts[part].folder) +
           m_pageName.substr(extension);
}

bool SplitReport::WriteIndex(std::string_view page, TextOutput& output) const {
    nlohmann::json parts = nlohmann::json::array();
    for (std::size_t part = 0; part < m_parts.parts.size(); ++part) {
        const std::string folder = ToUtf8(FolderTextOf(m_parts.parts[part]), TextEncoding::kUtf8);
        parts.push_back({{"name", NameOfPart(part)}, {"folder", folder}});
    }
    return WritePage({m_report, m_digest, &m_parts,
                      ",\n\"allSignOffs\":" + m_signOffs + ",\n\"parts\":" + parts.dump()},
                     page, output);
}

bool SplitReport::WritePart(std::size_t part, std::string_view page, TextOutput& output) const {
    const PagePart& ofPart = m_parts.parts[part];
    Report report;
    report.run = m_report.run;
    ReportDigest digest;
    digest.groups = m_groups[part];
    for (const std::size_t file : ofPart.files) {
        report.files.push_back(m_report.files[file]);
        digest.files.push_back(m_digest.files[file]);
    }
    const nlohmann::json index = m_pageName;
    const nlohmann::json folder = ToUtf8(FolderTextOf(ofPart), TextEncoding::kUtf8);
    return WritePage({report, digest, nullptr,
                      ",\n\"allSignOffs\":" + m_signOffs + ",\n\"index\":" + index.dump() +
                          ",\"folder\":" + folder.dump()},
                     page, output);
}

}  // namespace quillet::migrate
