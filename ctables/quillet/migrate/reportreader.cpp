// Nothing of a report is believed, and nothing is kept but what the result needs. The parser tells
// of one value after the other; the table of members says what each may hold; and the few values
// that matter are put together where the object ends that they belong to. So the largest report
// takes no more memory than its files' entries and its longest text.
#include "migrate/reportreader.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "migrate/percentcode.h"
#include "migrate/reportmembers.h"
#include "migrate/storedtext.h"
#include "migrate/timetext.h"

namespace quillet::migrate {

namespace {

using nlohmann::json;

// Far more than a report of ours has. What does not know such a limit itself, as the browser that
// shows the page, is not to be tried.
constexpr std::size_t kMostDepth = 64;

// They are kept sorted, and there are only so many reasons, and codes of findings.
constexpr std::size_t kMostNamesOfFile = 256;

std::string TextOf(const json& object, const char* pName) {
    return object.value(pName, std::string());
}

// Of members that have been looked at, each for itself.
RunFacts RunFactsOf(const json& report) {
    RunFacts run;
    run.source = TextOf(report, "source");
    run.target = TextOf(report, "target");
    run.layout = TextOf(report, "layout");
    run.dryRun = report.value("dryRun", false);
    run.isInterrupted = report.value("interrupted", false);
    run.started = ParseTime(TextOf(report, "started")).value_or(0);
    run.seconds = report.value("seconds", 0.0);
    return run;
}

// The same for a file; of its commands nothing is known.
FileFacts FileFactsOf(const json& file) {
    FileFacts facts;
    facts.path = file.contains("rawPath")
                     ? PercentDecode(TextOf(file, "rawPath")).value_or(std::string())
                     : TextOf(file, "path");
    facts.outcome = FileOutcomeOf(TextOf(file, "outcome")).value_or(FileOutcome::kFailed);
    // Reports of old versions have no member that tells more.
    const bool isKept = file.value("kept", false);
    facts.result = ResultStateOf(TextOf(file, "result"))
                       .value_or(isKept ? ResultState::kKept : ResultState::kNone);
    facts.hasSourceChanged = file.value("sourceChanged", false);
    facts.isLinkNotFollowed = file.value("linkNotFollowed", false);
    facts.bytes = file.value("bytes", std::uint64_t{0});
    facts.modified = file.value("modified", std::int64_t{0});
    for (const FileText& text : kReadingTexts) facts.*text.pMember = TextOf(file, text.pName);
    for (const FileNumber& number : kFileNumbers) {
        facts.*number.pMember = file.value(number.pName, std::int64_t{0});
    }
    facts.message = TextOf(file, "message");
    return facts;
}

// Takes the parser's events. The first thing that does not belong into a report ends it, with
// `Problem` set.
class ReportReader final : public nlohmann::json_sax<json> {
public:
    // With `skipsTexts` nothing inside of commands and findings is looked at.
    ReportReader(StoredText& text, Report& report, bool skipsTexts)
        : m_text(text), m_report(report), m_skipsTexts(skipsTexts) {}

    bool null() override { return TakeValue(nullptr); }
    bool boolean(bool value) override { return TakeValue(value); }
    bool number_integer(number_integer_t value) override { return TakeValue(value); }
    bool number_unsigned(number_unsigned_t value) override { return TakeValue(value); }
    bool number_float(number_float_t value, const string_t& /*text*/) override {
        return TakeValue(value);
    }
    bool string(string_t& value) override { return TakeValue(std::move(value)); }
    bool binary(binary_t& /*value*/) override { return false; }
    bool start_object(std::size_t /*size*/) override { return Enter(json::object()); }
    bool start_array(std::size_t /*size*/) override { return Enter(json::array()); }
    bool end_object() override { return Leave(); }
    bool end_array() override { return Leave(); }

    bool key(string_t& name) override {
        m_text.Mark();
        Level& level = m_levels.back();
        level.hasMember = true;
        level.pMember = FindMember(level.part, name);
        if (level.pMember == nullptr || level.values.emplace(name, nullptr).second) return true;
        return Refuse("stands there twice");
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const json::exception& exception) override {
        constexpr int kNumberOutOfRange = 406;
        if (m_text.IsTooLong()) {
            return Refuse("is longer than " + std::to_string(m_text.LongestStep()) + " bytes");
        }
        return exception.id == kNumberOutOfRange && Refuse("is a number out of range");
    }

    // Why reading ended: a whole sentence after "this is no report". Nothing when the text is no
    // JSON, or cannot be read.
    [[nodiscard]] const std::string& Problem() const { return m_problem; }

    // The member that was read last, such as "files[3].bytes"; empty where there is none.
    [[nodiscard]] std::string Place() const {
        std::string place;
        for (const Level& level : m_levels) {
            if (level.isArray && level.count > 0) {
                place.append("[").append(std::to_string(level.count - 1)).append("]");
            } else if (!level.isArray && level.hasMember) {
                if (!place.empty()) place += '.';
                // A name that anybody may have chosen is not worth showing.
                place += level.pMember != nullptr ? level.pMember->name : "(another member)";
            }
        }
        return place;
    }

private:
    // An object or array that is open.
    struct Level {
        ReportPart part = ReportPart::kUnknown;
        bool isArray = false;
        bool hasMember = false;
        const Member* pMember = nullptr;  // whose value is being read; null for one not known
        std::uint64_t count = 0;       // of an array's elements so far, the one being read included
        json values = json::object();  // of the members that are known; null for what is not kept
    };

    bool Refuse(std::string_view what) {
        m_problem = Place();
        if (m_problem.empty()) m_problem = "it";
        m_problem.append(" ").append(what);
        return false;
    }

    // What is known about the value that begins; nothing but "anything" where there is no more.
    Member NextMember() {
        m_text.Mark();
        if (m_levels.empty()) return {{}, MemberKind::kObject, ReportPart::kReport};
        Level& level = m_levels.back();
        if (level.isArray) {
            ++level.count;
            return ElementOf(level.part);
        }
        return level.pMember != nullptr ? *level.pMember : Member{};
    }

    bool TakeValue(json value) {
        const Member member = NextMember();
        const std::string problem = ProblemOf(member.kind, value);
        if (!problem.empty()) return Refuse(problem);
        if (m_levels.back().part == ReportPart::kCommand) {
            return member.name != "error" ||
                   TakeName(value.get_ref<const std::string&>(), "reason", m_entry.facts.errors);
        }
        if (m_levels.back().part == ReportPart::kFinding) {
            return member.name != "code" ||
                   TakeName(value.get_ref<const std::string&>(), "code", m_entry.facts.codes);
        }
        // Neither what nobody knows has a name nor what stands in an array.
        if (!member.name.empty()) {
            m_levels.back().values[std::string(member.name)] = std::move(value);
        }
        return true;
    }
    bool TakeName(const std::string& name, const char* pWhat, std::vector<std::string>& names) {
        AddName(name, names);
        return names.size() <= kMostNamesOfFile ||
               Refuse(std::string("is one ") + pWhat + " more than a file can have");
    }

    // `empty` is an object or an array.
    bool Enter(const json& empty) {
        const Member member = NextMember();
        const std::string problem = ProblemOf(member.kind, empty);
        if (!problem.empty()) return Refuse(problem);
        if (m_levels.size() == kMostDepth) {
            return Refuse("is nested deeper than " + std::to_string(kMostDepth) + " levels");
        }
        if (member.inner == ReportPart::kFile) m_entry = {};
        if (member.inner == ReportPart::kCommands) {
            m_entry.commands = {&m_text.File(), m_text.Position() - 1, 0};
        }
        if (member.inner == ReportPart::kFindings) {
            m_entry.findings = {&m_text.File(), m_text.Position() - 1, 0};
        }
        if (member.inner == ReportPart::kMacros) {
            m_entry.macros = {&m_text.File(), m_text.Position() - 1, 0};
        }
        m_levels.push_back({member.inner, empty.is_array()});
        // The parser has read the bracket, and nothing after it.
        const bool isOfTexts = member.inner == ReportPart::kCommands ||
                               member.inner == ReportPart::kFindings ||
                               member.inner == ReportPart::kMacros;
        if (m_skipsTexts && isOfTexts) m_text.SkipToEndOfPart();
        return true;
    }

    bool Leave() {
        m_text.Mark();
        const Level level = std::move(m_levels.back());
        m_levels.pop_back();
        switch (level.part) {
            case ReportPart::kShard:
                return FinishShard(level.values);
            case ReportPart::kCommands:
                m_entry.commands.length = m_text.Position() - m_entry.commands.offset;
                return true;
            case ReportPart::kFindings:
                m_entry.findings.length = m_text.Position() - m_entry.findings.offset;
                return true;
            case ReportPart::kMacros:
                m_entry.macros.length = m_text.Position() - m_entry.macros.offset;
                return true;
            case ReportPart::kFile:
                return FinishFile(level.values);
            case ReportPart::kReport:
                return FinishReport(level.values);
            default:
                return true;
        }
    }
    bool FinishShard(const json& shard) {
        if (shard.size() < 2) return Refuse("lacks its index or count");
        m_shard = Shard{shard["index"].get<std::uint32_t>(), shard["count"].get<std::uint32_t>()};
        return m_shard->index <= m_shard->count || Refuse("has an index beyond its count");
    }
    bool FinishFile(const json& file) {
        if (!file.contains("path") || !file.contains("outcome")) {
            return Refuse("lacks its path or outcome");
        }
        FileFacts facts = FileFactsOf(file);
        facts.errors = std::move(m_entry.facts.errors);
        facts.codes = std::move(m_entry.facts.codes);
        if (!m_report.files.empty()) {
            const std::string& before = m_report.files.back().facts.path;
            if (facts.path == before) return Refuse("is the same file as the one before it");
            if (facts.path < before) return Refuse("is not in the order of the paths");
        }
        if (!IsAccountedFor(facts)) {
            return Refuse("has found another number of commands than it accounts for");
        }
        if (const std::optional<std::string_view> member = m_sums.Add(facts)) {
            return Refuse("makes the sum of all \"" + std::string(*member) + "\" too large");
        }
        m_report.files.push_back(
            {std::move(facts), m_entry.commands, m_entry.findings, m_entry.macros});
        return true;
    }
    bool FinishReport(const json& report) {
        if (!report.contains("format") || !report.contains("formatVersion")) {
            return Refuse("lacks its format or formatVersion");
        }
        m_report.run = RunFactsOf(report);
        m_report.run.shard = m_shard;
        if (m_report.run.seconds > static_cast<double>(kLastTime - m_report.run.started)) {
            m_problem = "by started and seconds the run ended after the year 9999";
        }
        return m_problem.empty();
    }

    StoredText& m_text;
    Report& m_report;
    bool m_skipsTexts;
    std::string m_problem;
    std::vector<Level> m_levels;
    FileEntry m_entry;  // of the file that is being read: its errors and its commands
    FileSums m_sums;
    std::optional<Shard> m_shard;
};

}  // namespace

bool ReadJsonReport(const StoredFile& file, Report& report, std::string& error,
                    std::uint64_t longestText) {
    StoredText text(file, 0, file.Size(), longestText);
    ReportReader reader(text, report, /*skipsTexts=*/false);
    if (json::sax_parse(StoredTextIterator(&text), StoredTextIterator(), &reader) &&
        !text.Failed()) {
        return true;
    }
    error = "this is no report, or it is damaged";
    if (!reader.Problem().empty()) {
        error.append(": ").append(reader.Problem());
        return false;
    }
    error.append(" near byte ").append(std::to_string(text.Position()));
    const std::string place = reader.Place();
    if (!place.empty()) error.append(" (").append(place).append(")");
    return false;
}

bool ReadFilesOfReport(const StoredFile& file, Report& report) {
    StoredText text(file, 0, file.Size(), kLongestText);
    ReportReader reader(text, report, /*skipsTexts=*/true);
    return json::sax_parse(StoredTextIterator(&text), StoredTextIterator(), &reader) &&
           !text.Failed();
}

}  // namespace quillet::migrate
