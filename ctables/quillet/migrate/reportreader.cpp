#include "migrate/reportreader.h"

#include <algorithm>
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

void AddError(std::string_view error, std::vector<std::string>& errors) {
    const auto place = std::lower_bound(errors.begin(), errors.end(), error);
    if (place == errors.end() || *place != error) errors.emplace(place, error);
}

// Far more than a report of ours has. What does not know such a limit itself, as the browser that
// shows the page, is not to be tried.
constexpr std::size_t kMostDepth = 64;

// They are kept sorted, and there are only so many reasons.
constexpr std::size_t kMostErrorsOfFile = 256;

// Takes the parser's events, so that nothing is kept but what is wanted. The first thing that does
// not belong into a report ends it, with `Problem` set.
class ReportReader final : public nlohmann::json_sax<nlohmann::json> {
public:
    // `root` is what the text is, `kReport` or `kFile`.
    ReportReader(StoredText& text, ReportPart root, Report& report)
        : m_text(text), m_root(root), m_report(report) {}

    bool null() override {
        const Member member = NextValue();
        return member.kind == MemberKind::kAnything || member.kind == MemberKind::kObjectOrNull ||
               RefuseKind(member.kind);
    }
    bool boolean(bool value) override {
        const Member member = NextValue();
        if (member.kind == MemberKind::kAnything) return true;
        if (member.kind != MemberKind::kTruth) return RefuseKind(member.kind);
        if (Part() == ReportPart::kFile) TakeFileFlag(member.name, value);
        if (member.name == "batchMode") m_report.run.batchMode = value;
        if (member.name == "dryRun") m_report.run.dryRun = value;
        if (member.name == "interrupted") m_report.run.isInterrupted = value;
        return true;
    }
    bool number_integer(number_integer_t value) override { return TakeNumber(value); }
    bool number_unsigned(number_unsigned_t value) override { return TakeNumber(value); }
    bool number_float(number_float_t value, const string_t& /*text*/) override {
        const Member member = NextValue();
        if (!MayHold(member.kind, value)) return RefuseKind(member.kind);
        if (member.kind == MemberKind::kSeconds) m_report.run.seconds = value;
        return true;
    }
    bool string(string_t& value) override {
        const Member member = NextValue();
        switch (member.kind) {
            case MemberKind::kAnything:
            case MemberKind::kText:
                return true;
            case MemberKind::kName:
                return value.size() <= kMostNameBytes ? TakeName(member.name, value)
                                                      : RefuseLength(kMostNameBytes);
            case MemberKind::kDate:
                return TakeDate(value);
            default:
                return RefuseKind(member.kind);
        }
    }
    bool binary(binary_t& /*value*/) override { return false; }

    bool start_object(std::size_t /*size*/) override {
        const Member member = NextValue();
        if (member.kind != MemberKind::kAnything && member.kind != MemberKind::kObject &&
            member.kind != MemberKind::kObjectOrNull) {
            return RefuseKind(member.kind);
        }
        if (!Enter(member.inner, /*isArray=*/false)) return false;
        if (member.inner == ReportPart::kShard) m_shard = Shard{0, 0};
        if (member.inner == ReportPart::kFile) {
            m_entry = {};
            m_hasPath = m_hasRawPath = m_hasOutcome = false;
        }
        return true;
    }
    bool key(string_t& value) override {
        m_text.Mark();
        Level& level = m_levels.back();
        std::size_t index = 0;
        level.hasMember = true;
        level.pMember = FindMember(level.part, value, index);
        if (level.pMember == nullptr) return true;
        const std::uint32_t bit = std::uint32_t{1} << index;
        if ((level.seenMembers & bit) != 0) return Refuse("stands there twice");
        level.seenMembers |= bit;
        return true;
    }
    bool end_object() override {
        const ReportPart part = Leave();
        if (part == ReportPart::kShard) return FinishShard();
        if (part == ReportPart::kFile) return FinishFile();
        return part != ReportPart::kReport || FinishReport();
    }
    bool start_array(std::size_t /*size*/) override {
        const Member member = NextValue();
        if (member.kind != MemberKind::kAnything && member.kind != MemberKind::kArray) {
            return RefuseKind(member.kind);
        }
        if (member.inner == ReportPart::kCommands) {
            m_entry.commands.offset = m_text.Position() - 1;
        }
        return Enter(member.inner, /*isArray=*/true);
    }
    bool end_array() override {
        if (Leave() != ReportPart::kCommands) return true;
        m_entry.commands.pFile = &m_text.File();
        m_entry.commands.length = m_text.Position() - m_entry.commands.offset;
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::json::exception& exception) override {
        constexpr int kNumberOutOfRange = 406;
        if (m_text.IsTooLong()) return RefuseLength(m_text.LongestStep());
        if (exception.id == kNumberOutOfRange) return Refuse("is a number out of range");
        return false;
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
        std::uint32_t seenMembers = 0;
        std::uint64_t count = 0;  // of an array's elements so far, the one being read included
    };

    bool Refuse(std::string_view what) {
        m_problem = Place();
        if (m_problem.empty()) m_problem = "it";
        m_problem.append(" ").append(what);
        return false;
    }
    bool RefuseKind(MemberKind kind) { return Refuse("is not " + Describe(kind)); }
    bool RefuseLength(std::uint64_t most) {
        return Refuse("is longer than " + std::to_string(most) + " bytes");
    }

    // What is known about the value that begins.
    Member NextValue() {
        m_text.Mark();
        if (m_levels.empty()) return {{}, MemberKind::kObject, m_root};
        Level& level = m_levels.back();
        if (level.isArray) {
            ++level.count;
            return ElementOf(level.part);
        }
        return level.pMember != nullptr ? *level.pMember : Member{};
    }

    bool Enter(ReportPart part, bool isArray) {
        if (m_levels.size() == kMostDepth) {
            return Refuse("is nested deeper than " + std::to_string(kMostDepth) + " levels");
        }
        m_levels.push_back({part, isArray});
        return true;
    }
    ReportPart Leave() {
        m_text.Mark();
        const ReportPart part = m_levels.back().part;
        m_levels.pop_back();
        return part;
    }
    [[nodiscard]] ReportPart Part() const { return m_levels.back().part; }

    template <class Number>
    bool TakeNumber(Number value) {
        const Member member = NextValue();
        if (!MayHold(member.kind, value)) return RefuseKind(member.kind);
        if (member.kind == MemberKind::kSeconds) m_report.run.seconds = static_cast<double>(value);
        if (member.kind == MemberKind::kSlice) {
            const auto number = static_cast<std::uint32_t>(value);
            (member.name == "index" ? m_shard->index : m_shard->count) = number;
        }
        if (member.kind == MemberKind::kBytes) {
            m_entry.facts.bytes = static_cast<std::uint64_t>(value);
        }
        if (Part() == ReportPart::kFile) {
            TakeFileNumber(member.name, static_cast<std::int64_t>(value));
        }
        return member.name != "formatVersion" ||
               TakeFormatVersion(static_cast<std::int64_t>(value) == kFormatVersion);
    }
    bool TakeFormatVersion(bool isKnown) {
        m_hasFormatVersion = isKnown;
        return isKnown || Refuse("is none that is known");
    }
    void TakeFileNumber(std::string_view name, std::int64_t value) {
        if (name == "modified") m_entry.facts.modified = value;
        for (const FileNumber& number : kFileNumbers) {
            if (number.pName == name) m_entry.facts.*number.pMember = value;
        }
    }
    bool TakeName(std::string_view name, const string_t& value) {
        switch (Part()) {
            case ReportPart::kReport:
                return TakeRunName(name, value);
            case ReportPart::kFile:
                return TakeFileName(name, value);
            case ReportPart::kCommand:
                return TakeCommandName(name, value);
            default:
                return true;
        }
    }
    void TakeFileFlag(std::string_view name, bool value) {
        FileFacts& facts = m_entry.facts;
        if (name == "sourceChanged") facts.hasSourceChanged = value;
        if (name == "linkNotFollowed") facts.isLinkNotFollowed = value;
        // Reports of old versions have no member that tells more.
        if (name == "kept" && value && facts.result == ResultState::kNone) {
            facts.result = ResultState::kKept;
        }
    }
    bool TakeFileName(std::string_view name, const string_t& value) {
        FileFacts& facts = m_entry.facts;
        if (name == "path") {
            m_hasPath = true;
            return m_hasRawPath || TakePath(value);
        }
        if (name == "rawPath") {
            m_hasRawPath = true;
            const std::optional<std::string> path = PercentDecode(value);
            return path ? TakePath(*path) : Refuse("is not what it should be");
        }
        if (name == "encoding") facts.encoding = value;
        if (name == "message") facts.message = value;
        if (name == "result") {
            const std::optional<ResultState> state = ResultStateOf(value);
            if (!state) return Refuse("is no state of a result");
            facts.result = *state;
        }
        if (name == "outcome") {
            const std::optional<FileOutcome> outcome = FileOutcomeOf(value);
            if (!outcome) return Refuse("is no outcome of a file");
            facts.outcome = *outcome;
            m_hasOutcome = true;
        }
        return true;
    }
    bool TakePath(const std::string& path) {
        m_entry.facts.path = path;
        return path.size() <= kMostPathBytes || RefuseLength(kMostPathBytes);
    }
    bool TakeCommandName(std::string_view name, const string_t& value) {
        if (name == "outcome" && !IsOutcomeInReport(value)) {
            return Refuse("is no outcome of a command");
        }
        if (name != "error") return true;
        AddError(value, m_entry.facts.errors);
        return m_entry.facts.errors.size() <= kMostErrorsOfFile ||
               Refuse("is one reason more than a file can have");
    }
    bool TakeRunName(std::string_view name, const string_t& value) {
        if (name == "source") m_report.run.source = value;
        if (name == "target") m_report.run.target = value;
        if (name != "format") return true;
        m_hasFormat = value == kFormat;
        return m_hasFormat || Refuse("is not that of a report");
    }
    bool TakeDate(const string_t& value) {
        const std::optional<std::int64_t> time = ParseTime(value);
        if (!time) return RefuseKind(MemberKind::kDate);
        m_report.run.started = *time;
        return true;
    }

    bool FinishShard() {
        if (m_shard->index == 0 || m_shard->count == 0) return Refuse("lacks its index or count");
        if (m_shard->index > m_shard->count) return Refuse("has an index beyond its count");
        m_report.run.shard = m_shard;
        return true;
    }
    bool FinishFile() {
        if (!m_hasPath || !m_hasOutcome) return Refuse("lacks its path or outcome");
        if (!m_report.files.empty()) {
            const std::string& before = m_report.files.back().facts.path;
            if (m_entry.facts.path == before)
                return Refuse("is the same file as the one before it");
            if (m_entry.facts.path < before) return Refuse("is not in the order of the paths");
        }
        if (const std::optional<std::string_view> member = m_sums.Add(m_entry.facts)) {
            return Refuse("makes the sum of all \"" + std::string(*member) + "\" too large");
        }
        m_report.files.push_back(std::move(m_entry));
        return true;
    }
    bool FinishReport() {
        const RunFacts& run = m_report.run;
        if (!m_hasFormat || !m_hasFormatVersion) {
            m_problem = "it lacks its format or formatVersion";
        } else if (run.seconds > static_cast<double>(kLastTime - run.started)) {
            m_problem = "by started and seconds the run ended after the year 9999";
        }
        return m_problem.empty();
    }

    StoredText& m_text;
    ReportPart m_root;
    Report& m_report;
    std::string m_problem;
    std::vector<Level> m_levels;
    FileEntry m_entry;
    FileSums m_sums;
    std::optional<Shard> m_shard;
    bool m_hasPath = false;
    bool m_hasRawPath = false;
    bool m_hasOutcome = false;
    bool m_hasFormat = false;
    bool m_hasFormatVersion = false;
};

bool Parse(StoredText& text, ReportReader& reader, bool isWhole) {
    return nlohmann::json::sax_parse(StoredTextIterator(&text), StoredTextIterator(), &reader,
                                     nlohmann::json::input_format_t::json, isWhole) &&
           !text.Failed();
}

// The file may have been written to since it was first read, so its numbers are looked at again.
bool TakeNumber(const nlohmann::json& command, const char* pName, MemberKind kind,
                std::int64_t& number) {
    const auto found = command.find(pName);
    if (found == command.end()) return true;
    if (found->is_number_unsigned()) {
        const auto value = found->get<std::uint64_t>();
        number = static_cast<std::int64_t>(value);
        return MayHold(kind, value);
    }
    if (!found->is_number_integer()) return false;
    number = found->get<std::int64_t>();
    return MayHold(kind, number);
}

// Nothing where numbers are wrong; throws where texts are.
std::optional<CommandFacts> CommandFactsOf(const nlohmann::json& json) {
    CommandFacts facts;
    if (!TakeNumber(json, "firstLine", MemberKind::kCount, facts.firstLine) ||
        !TakeNumber(json, "lastLine", MemberKind::kCount, facts.lastLine) ||
        !TakeNumber(json, "errorLine", MemberKind::kCount, facts.errorLine) ||
        !TakeNumber(json, "errorColumn", MemberKind::kColumn, facts.errorColumn)) {
        return std::nullopt;
    }
    facts.type = json.value("type", "");
    facts.outcome = json.value("outcome", "");
    facts.source = json.value("source", "");
    facts.generated = json.value("generated", "");
    facts.error = json.value("error", "");
    facts.message = json.value("message", "");
    facts.warnings = json.value("warnings", std::vector<std::string>{});
    return facts;
}

}  // namespace

bool ReadJsonReport(const StoredFile& file, Report& report, std::string& error,
                    std::uint64_t longestText) {
    StoredText text(file, 0, file.Size(), longestText);
    ReportReader reader(text, ReportPart::kReport, report);
    if (Parse(text, reader, true)) return true;
    if (!reader.Problem().empty()) {
        error = "this is no report, or it is damaged: " + reader.Problem();
        return false;
    }
    error = "this is no report, or it is damaged near byte " + std::to_string(text.Position());
    const std::string place = reader.Place();
    if (!place.empty()) error.append(" (").append(place).append(")");
    return false;
}

bool ForEachCommand(const CommandsPlace& place,
                    const std::function<void(const CommandFacts&)>& take) {
    if (place.pFile == nullptr) return true;
    StoredText text(*place.pFile, place.offset, place.offset + place.length);
    bool isValid = true;
    try {
        const auto takeAndDrop = [&](int depth, nlohmann::json::parse_event_t event,
                                     nlohmann::json& value) {
            if (depth != 1 || event != nlohmann::json::parse_event_t::object_end) return true;
            const std::optional<CommandFacts> facts = CommandFactsOf(value);
            isValid = isValid && facts;
            if (isValid) take(*facts);
            return false;
        };
        const nlohmann::json rest =
            nlohmann::json::parse(StoredTextIterator(&text), StoredTextIterator(), takeAndDrop);
        return isValid && rest.is_array() && !text.Failed();
    } catch (const nlohmann::json::exception&) {
        return false;
    }
}

}  // namespace quillet::migrate
