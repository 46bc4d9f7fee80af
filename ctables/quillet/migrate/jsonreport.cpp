#include "migrate/jsonreport.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <nlohmann/json.hpp>
#include <utility>

#include "platform/codepage.h"

namespace quillet::migrate {

namespace {

using OrderedJson = nlohmann::ordered_json;

constexpr std::string_view kFormat = "quillet-report";
constexpr std::int64_t kFormatVersion = 1;
constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr const char* kTimeFormat = "%Y-%m-%dT%H:%M:%SZ";

std::string Dump(const OrderedJson& value) {
    // Bytes that are no UTF-8 would throw otherwise.
    return value.dump(-1, ' ', false, OrderedJson::error_handler_t::replace);
}

std::string DumpOpen(const OrderedJson& object) {
    std::string text = Dump(object);
    text.pop_back();
    return text;
}

bool IsUtf8(std::string_view bytes) {
    Utf8Validator validator;
    return validator.Add(bytes) && validator.IsValid();
}

std::string_view NameOf(CommandType type) {
    switch (type) {
        case CommandType::kTables:
            return "TABLES";
        case CommandType::kIgraph:
            return "IGRAPH";
        case CommandType::kOrdinary:
        case CommandType::kComment:
        case CommandType::kDocument:
        case CommandType::kInlineData:
            break;
    }
    return "command";
}

std::string_view NameOf(CommandOutcome outcome) {
    switch (outcome) {
        case CommandOutcome::kCopied:
            return "copied";
        case CommandOutcome::kConverted:
            return "converted";
        case CommandOutcome::kFailed:
            return "failed";
        case CommandOutcome::kUnreadable:
            break;
    }
    return "unreadable";
}

OrderedJson TotalsJson(const Totals& totals) {
    return {{"files", totals.files},
            {"filesConverted", totals.filesConverted},
            {"filesPartly", totals.filesPartly},
            {"filesStopped", totals.filesStopped},
            {"filesKept", totals.filesKept},
            {"filesCopied", totals.filesCopied},
            {"filesSkipped", totals.filesSkipped},
            {"filesFailed", totals.filesFailed},
            {"linksNotFollowed", totals.linksNotFollowed},
            {"bytes", totals.bytes},
            {"commands", totals.commands},
            {"commandsCopied", totals.commandsCopied},
            {"commandsConverted", totals.commandsConverted},
            {"commandsFailed", totals.commandsFailed},
            {"commandsUnreadable", totals.commandsUnreadable},
            {"warnings", totals.warnings}};
}

OrderedJson ShardJson(const std::optional<Shard>& shard) {
    if (!shard) return nullptr;
    return {{"index", shard->index}, {"count", shard->count}};
}

void AddError(std::string_view error, std::vector<std::string>& errors) {
    const auto place = std::lower_bound(errors.begin(), errors.end(), error);
    if (place == errors.end() || *place != error) errors.emplace(place, error);
}

}  // namespace

std::string CommandJson(const CommandReport& command, TextEncoding encoding) {
    OrderedJson json = {{"type", NameOf(command.type)},
                        {"outcome", NameOf(command.outcome)},
                        {"firstLine", command.firstLine},
                        {"lastLine", command.lastLine},
                        {"source", ToUtf8(command.source, encoding)}};
    if (command.outcome == CommandOutcome::kConverted) {
        json["generated"] = ToUtf8(command.generated, encoding);
        json["generatedLine"] = command.generatedLine;
    } else {
        json["error"] = NameOf(command.errorKind);
        json["errorLine"] = command.errorLine;
        json["errorColumn"] = command.errorColumn;
        json["message"] = ToUtf8(command.message, encoding);
    }
    OrderedJson& warnings = json["warnings"] = OrderedJson::array();
    for (const std::string& warning : command.warnings) {
        warnings.push_back(ToUtf8(warning, encoding));
    }
    return Dump(json);
}

std::string OpenFileJson(const FileFacts& facts) {
    OrderedJson json = {{"path", ToUtf8(facts.path, TextEncoding::kUtf8)}};
    if (!IsUtf8(facts.path)) json["rawPath"] = PercentEncode(facts.path);
    json["outcome"] = NameOf(facts.outcome);
    if (facts.isKept) json["kept"] = true;
    if (facts.isLinkNotFollowed) json["linkNotFollowed"] = true;
    json["bytes"] = facts.bytes;
    json["modified"] = facts.modified;
    json["encoding"] = facts.encoding;
    json["lines"] = facts.lines;
    json["copied"] = facts.copied;
    json["converted"] = facts.converted;
    json["failed"] = facts.failed;
    json["unreadable"] = facts.unreadable;
    json["warnings"] = facts.warnings;
    json["message"] = facts.message;
    return DumpOpen(json);
}

std::string OpenReportJson(const Report& report) {
    const RunFacts& run = report.run;
    constexpr double kMilli = 1000;
    const OrderedJson json = {{"format", kFormat},
                              {"formatVersion", kFormatVersion},
                              {"quilletVersion", QUILLET_VERSION},
                              {"source", ToUtf8(run.source, TextEncoding::kUtf8)},
                              {"target", ToUtf8(run.target, TextEncoding::kUtf8)},
                              {"batchMode", run.batchMode},
                              {"dryRun", run.dryRun},
                              {"interrupted", run.isInterrupted},
                              {"shard", ShardJson(run.shard)},
                              {"started", FormatTime(run.started)},
                              {"seconds", std::round(run.seconds * kMilli) / kMilli},
                              {"totals", TotalsJson(TotalsOf(report.files))}};
    return DumpOpen(json) + ",\n\"files\":[\n";
}

bool CopyCommands(const CommandsPlace& place, TextOutput& output) {
    if (place.pFile == nullptr) return output.Write("[]");
    return CopyStoredText(*place.pFile, place.offset, place.length, [&output](std::string& block) {
        // Outside of strings, where alone they can stand, line ends mean nothing.
        std::erase_if(block, [](char byte) { return byte == '\n' || byte == '\r'; });
        return output.Write(block);
    });
}

bool WriteJsonReport(const Report& report, TextOutput& output) {
    if (!output.Write(OpenReportJson(report))) return false;
    bool isFirst = true;
    for (const FileEntry& file : report.files) {
        const std::string_view separator = std::exchange(isFirst, false) ? "" : ",\n";
        if (!output.Write(separator) || !output.Write(OpenFileJson(file.facts)) ||
            !output.Write(kCommandsMember) || !CopyCommands(file.commands, output) ||
            !output.Write("}")) {
            return false;
        }
    }
    return output.Write("\n]}\n");
}

namespace {

struct FileNumber {
    std::string_view name;
    std::int64_t FileFacts::*pMember;
};

constexpr std::array<FileNumber, 7> kFileNumbers = {{
    {"modified", &FileFacts::modified},
    {"lines", &FileFacts::lines},
    {"copied", &FileFacts::copied},
    {"converted", &FileFacts::converted},
    {"failed", &FileFacts::failed},
    {"unreadable", &FileFacts::unreadable},
    {"warnings", &FileFacts::warnings},
}};

// Takes the parser's events, so that nothing is kept but what is wanted.
class ReportReader final : public nlohmann::json_sax<nlohmann::json> {
public:
    // `fileDepth` is the number of open objects and arrays inside a file's object.
    ReportReader(StoredText& text, int fileDepth, Report& report)
        : m_text(text), m_fileDepth(fileDepth), m_report(report) {}

    bool null() override { return true; }
    bool boolean(bool value) override {
        if (m_depth == m_fileDepth && m_key == "kept") m_entry.facts.isKept = value;
        if (m_depth == m_fileDepth && m_key == "linkNotFollowed") {
            m_entry.facts.isLinkNotFollowed = value;
        }
        if (!IsAboutRun()) return true;
        if (m_key == "batchMode") m_report.run.batchMode = value;
        if (m_key == "dryRun") m_report.run.dryRun = value;
        if (m_key == "interrupted") m_report.run.isInterrupted = value;
        return true;
    }
    bool number_integer(number_integer_t value) override { return TakeNumber(value); }
    bool number_unsigned(number_unsigned_t value) override {
        if (m_depth == m_fileDepth && m_key == "bytes") m_entry.facts.bytes = value;
        return TakeNumber(static_cast<std::int64_t>(value));
    }
    bool number_float(number_float_t value, const string_t& /*text*/) override {
        if (IsAboutRun() && m_key == "seconds") m_report.run.seconds = value;
        return true;
    }
    bool string(string_t& value) override {
        if (m_depth == m_fileDepth) return TakeFileText(value);
        if (IsAboutRun()) TakeRunText(value);
        if (m_isInCommands && m_depth == m_fileDepth + 2 && m_key == "error") {
            AddError(value, m_entry.facts.errors);
        }
        return true;
    }
    bool binary(binary_t& /*value*/) override { return false; }

    bool start_object(std::size_t /*size*/) override {
        ++m_depth;
        m_isInShard = m_depth == 2 && m_key == "shard";
        if (m_isInShard) m_shard = Shard{0, 0};
        if (IsFileObject()) {
            m_entry = {};
            m_hasPath = m_hasOutcome = false;
        }
        return true;
    }
    bool key(string_t& value) override {
        m_key = value;
        return true;
    }
    bool end_object() override {
        const bool isFile = IsFileObject();
        m_isInShard = false;
        --m_depth;
        if (!isFile) return true;
        if (!m_hasPath || !m_hasOutcome) return false;
        m_report.files.push_back(std::move(m_entry));
        return true;
    }
    bool start_array(std::size_t /*size*/) override {
        ++m_depth;
        if (m_fileDepth > 1 && m_depth == 2) m_isInFiles = m_key == "files";
        if (m_depth == m_fileDepth + 1 && m_key == "commands") {
            m_isInCommands = true;
            m_entry.commands.offset = m_text.Position() - 1;
        }
        return true;
    }
    bool end_array() override {
        if (m_isInCommands && m_depth == m_fileDepth + 1) {
            m_isInCommands = false;
            m_entry.commands.pFile = &m_text.File();
            m_entry.commands.length = m_text.Position() - m_entry.commands.offset;
        }
        if (m_depth == 2) m_isInFiles = false;
        --m_depth;
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::json::exception& /*exception*/) override {
        return false;
    }

    // True when what was read calls itself a report of a version that is known.
    [[nodiscard]] bool SawFormat() const { return m_hasFormat && m_hasFormatVersion; }
    [[nodiscard]] std::optional<Shard> SeenShard() const {
        const bool isValid = m_shard && m_shard->index >= 1 && m_shard->index <= m_shard->count;
        return isValid ? m_shard : std::nullopt;
    }

private:
    [[nodiscard]] bool IsAboutRun() const { return m_fileDepth > 1 && m_depth == 1; }
    [[nodiscard]] bool IsFileObject() const {
        return m_depth == m_fileDepth && (m_fileDepth == 1 || m_isInFiles);
    }

    bool TakeNumber(std::int64_t value) {
        if (m_depth == m_fileDepth) TakeFileNumber(value);
        if (IsAboutRun() && m_key == "formatVersion") m_hasFormatVersion = value == kFormatVersion;
        if (IsAboutRun() && m_key == "seconds") m_report.run.seconds = static_cast<double>(value);
        if (m_isInShard) TakeShardNumber(value);
        return true;
    }
    void TakeFileNumber(std::int64_t value) {
        for (const FileNumber& number : kFileNumbers) {
            if (number.name == m_key) m_entry.facts.*number.pMember = value;
        }
    }
    void TakeShardNumber(std::int64_t value) {
        if (value < 0 || value > UINT32_MAX) return;
        if (m_key == "index") m_shard->index = static_cast<std::uint32_t>(value);
        if (m_key == "count") m_shard->count = static_cast<std::uint32_t>(value);
    }
    bool TakeFileText(string_t& value) {
        FileFacts& facts = m_entry.facts;
        if (m_key == "path" && facts.path.empty()) facts.path = value;
        if (m_key == "path") m_hasPath = true;
        if (m_key == "encoding") facts.encoding = value;
        if (m_key == "message") facts.message = value;
        if (m_key == "rawPath") {
            const std::optional<std::string> path = PercentDecode(value);
            if (!path) return false;
            facts.path = *path;
        }
        if (m_key == "outcome") {
            const std::optional<FileOutcome> outcome = FileOutcomeOf(value);
            if (!outcome) return false;
            facts.outcome = *outcome;
            m_hasOutcome = true;
        }
        return true;
    }
    void TakeRunText(const string_t& value) {
        if (m_key == "format") m_hasFormat = value == kFormat;
        if (m_key == "source") m_report.run.source = value;
        if (m_key == "target") m_report.run.target = value;
        if (m_key == "started") m_report.run.started = ParseTime(value);
    }

    StoredText& m_text;
    int m_fileDepth;
    Report& m_report;
    int m_depth = 0;
    std::string m_key;  // the last one, and so that of a value at the depth it was met at
    FileEntry m_entry;
    std::optional<Shard> m_shard;
    bool m_isInShard = false;
    bool m_isInFiles = false;
    bool m_isInCommands = false;
    bool m_hasPath = false;
    bool m_hasOutcome = false;
    bool m_hasFormat = false;
    bool m_hasFormatVersion = false;
};

bool Parse(StoredText& text, ReportReader& reader, bool isWhole) {
    return nlohmann::json::sax_parse(StoredTextIterator(&text), StoredTextIterator(), &reader,
                                     nlohmann::json::input_format_t::json, isWhole) &&
           !text.Failed();
}

CommandFacts CommandFactsOf(const nlohmann::json& json) {
    CommandFacts facts;
    facts.type = json.value("type", "");
    facts.outcome = json.value("outcome", "");
    facts.firstLine = json.value("firstLine", std::int64_t{0});
    facts.lastLine = json.value("lastLine", std::int64_t{0});
    facts.source = json.value("source", "");
    facts.generated = json.value("generated", "");
    facts.error = json.value("error", "");
    facts.errorLine = json.value("errorLine", std::int64_t{0});
    facts.errorColumn = json.value("errorColumn", std::int64_t{0});
    facts.message = json.value("message", "");
    facts.warnings = json.value("warnings", std::vector<std::string>{});
    return facts;
}

int DigitOf(char character) {
    const std::size_t digit = kHexDigits.find(character);
    return digit == std::string_view::npos ? -1 : static_cast<int>(digit);
}

bool StaysInPercentEncoding(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9') ||
           std::string_view("-._~/").find(byte) != std::string_view::npos;
}

}  // namespace

bool ReadJsonReport(const StoredFile& file, Report& report, std::string& error) {
    constexpr int kFileDepth = 3;  // the report, its files, a file
    StoredText text(file, 0, file.Size());
    ReportReader reader(text, kFileDepth, report);
    const bool isRead = Parse(text, reader, true);
    if (isRead && reader.SawFormat()) {
        report.run.shard = reader.SeenShard();
        return true;
    }
    error =
        isRead ? "this is no report of a version that is known"
               : "this is no report, or it is damaged near byte " + std::to_string(text.Position());
    return false;
}

std::optional<FileEntry> ReadFileLine(StoredText& text) {
    Report report;
    ReportReader reader(text, 1, report);
    if (text.IsAtEnd() || !Parse(text, reader, false)) return std::nullopt;
    if (report.files.size() != 1 || text.IsAtEnd() || text.Current() != '\n') return std::nullopt;
    text.Advance();
    return std::move(report.files.front());
}

bool ForEachCommand(const CommandsPlace& place,
                    const std::function<void(const CommandFacts&)>& take) {
    if (place.pFile == nullptr) return true;
    StoredText text(*place.pFile, place.offset, place.offset + place.length);
    try {
        const auto takeAndDrop = [&take](int depth, nlohmann::json::parse_event_t event,
                                         nlohmann::json& value) {
            if (depth != 1 || event != nlohmann::json::parse_event_t::object_end) return true;
            take(CommandFactsOf(value));
            return false;
        };
        const nlohmann::json rest =
            nlohmann::json::parse(StoredTextIterator(&text), StoredTextIterator(), takeAndDrop);
        return rest.is_array() && !text.Failed();
    } catch (const nlohmann::json::exception&) {
        return false;
    }
}

std::string PercentEncode(std::string_view bytes) {
    constexpr unsigned kDigitBits = 4;
    constexpr unsigned kDigitMask = 15;
    std::string text;
    for (const char byte : bytes) {
        if (StaysInPercentEncoding(byte)) {
            text += byte;
            continue;
        }
        const unsigned value = static_cast<unsigned char>(byte);
        text += '%';
        text += kHexDigits[value >> kDigitBits];
        text += kHexDigits[value & kDigitMask];
    }
    return text;
}

std::optional<std::string> PercentDecode(std::string_view text) {
    constexpr int kBase = 16;
    std::string bytes;
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (text[position] != '%') {
            bytes += text[position];
            continue;
        }
        if (text.size() - position < 3) return std::nullopt;
        const int high = DigitOf(text[position + 1]);
        const int low = DigitOf(text[position + 2]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes += static_cast<char>(high * kBase + low);
        position += 2;
    }
    return bytes;
}

std::string FormatTime(std::int64_t secondsSince1970) {
    const std::time_t time = secondsSince1970;
    std::tm parts{};
    std::array<char, 32> text{};
    if (gmtime_r(&time, &parts) == nullptr) return {};
    return {text.data(), std::strftime(text.data(), text.size(), kTimeFormat, &parts)};
}

std::int64_t ParseTime(const std::string& text) {
    std::tm parts{};
    const char* pEnd = strptime(text.c_str(), kTimeFormat, &parts);
    return pEnd != nullptr && *pEnd == '\0' ? timegm(&parts) : 0;
}

}  // namespace quillet::migrate
