// A journal is a text of lines. One that begins with "quillet1 " is a record: the checksum of the
// rest follows, a blank, and that rest, a JSON object. One that begins with "[" holds the commands
// or findings of a file, to which a record refers by place and hash. Any other means nothing, so
// that later versions can add to it.
//
// A line is written at once and its end written last, so a crash leaves half a line at the end
// alone; but disks fail, and people open files in editors. Nothing but the checksum is believed.
#include "migrate/journalrecord.h"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

#include "migrate/percentcode.h"

namespace quillet::migrate {

namespace {

using OrderedJson = nlohmann::ordered_json;

constexpr std::string_view kRecordStart = "quillet1 ";
constexpr std::size_t kChecksumSize = 16;

// No such number in a real file comes near it, and a sum of all that memory can hold stays in
// range.
constexpr std::uint64_t kLargestNumber = std::uint64_t{1} << 40U;

constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 62U;

constexpr std::pair<StoredArray::Place, const char*> kPlaces[] = {
    {StoredArray::Place::kJournal, "journal"},
    {StoredArray::Place::kReport, "report"},
};

// Takes members out of an object; the first that is missing or of another kind spoils it all.
class MemberReader {
public:
    explicit MemberReader(const nlohmann::json& object)
        : m_object(object), m_isGood(object.is_object()) {}

    [[nodiscard]] bool IsGood() const { return m_isGood; }
    void Spoil() { m_isGood = false; }

    [[nodiscard]] const nlohmann::json* Find(const char* pName) const {
        if (!m_isGood) return nullptr;
        const auto member = m_object.find(pName);
        return member == m_object.end() ? nullptr : &*member;
    }
    [[nodiscard]] std::string Text(const char* pName) {
        const nlohmann::json* pMember = Find(pName);
        if (pMember != nullptr && pMember->is_string()) return pMember->get<std::string>();
        m_isGood = false;
        return {};
    }
    [[nodiscard]] std::uint64_t Number(const char* pName, std::uint64_t largest) {
        const nlohmann::json* pMember = Find(pName);
        if (pMember != nullptr && pMember->is_number_unsigned()) {
            const auto value = pMember->get<std::uint64_t>();
            if (value <= largest) return value;
        }
        m_isGood = false;
        return 0;
    }
    [[nodiscard]] std::vector<std::string> Texts(const char* pName) {
        std::vector<std::string> texts;
        const nlohmann::json* pMember = Find(pName);
        m_isGood = pMember != nullptr && pMember->is_array();
        if (!m_isGood) return texts;
        for (const nlohmann::json& text : *pMember) {
            m_isGood = m_isGood && text.is_string();
            if (m_isGood) texts.push_back(text.get<std::string>());
        }
        return texts;
    }
    [[nodiscard]] ContentHash Hash(const char* pName) {
        const std::optional<ContentHash> hash = ContentHashOf(Text(pName));
        if (!hash) m_isGood = false;
        return hash.value_or(ContentHash{});
    }

private:
    const nlohmann::json& m_object;
    bool m_isGood;
};

// Relative and without steps upward: whatever else a record says, it is about something in TARGET.
bool IsPathOfResult(std::string_view path) {
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string_view name = path.substr(begin, end - begin);
        if (name.empty() || name == "." || name == "..") return false;
        begin = end + 1;
    }
    return path.find('\0') == std::string_view::npos;
}

bool HasResult(FileOutcome outcome) {
    return outcome != FileOutcome::kSkipped && outcome != FileOutcome::kFailed;
}

void ReadFacts(MemberReader& reader, bool hasFindings, FileFacts& facts) {
    const std::optional<std::string> path = PercentDecode(reader.Text("path"));
    const std::optional<FileOutcome> outcome = FileOutcomeOf(reader.Text("outcome"));
    if (!path || !IsPathOfResult(*path) || !outcome || !HasResult(*outcome)) return reader.Spoil();
    facts.path = *path;
    facts.outcome = *outcome;
    facts.bytes = reader.Number("bytes", kLargestFile);
    for (const FileText& text : kReadingTexts) {
        if (hasFindings || text.isInOldRecords) facts.*text.pMember = reader.Text(text.pName);
    }
    facts.message = reader.Text("message");
    for (const FileNumber& number : kFileNumbers) {
        if (!hasFindings && !number.isInOldRecords) continue;
        if (number.isOptional && reader.Find(number.pName) == nullptr) continue;
        facts.*number.pMember =
            static_cast<std::int64_t>(reader.Number(number.pName, kLargestNumber));
    }
    facts.errors = reader.Texts("errors");
    if (hasFindings) facts.codes = reader.Texts("codes");
}

void ReadIdentity(MemberReader& reader, ResultIdentity& identity) {
    identity.source = reader.Hash("source");
    identity.result = reader.Hash("result");
    identity.version = reader.Text("version");
    identity.options = reader.Text("options");
    if (const nlohmann::json* pAccepted = reader.Find("accepted")) {
        if (!pAccepted->is_boolean()) return reader.Spoil();
        identity.isAccepted = pAccepted->get<bool>();
    }
}

void ReadArray(MemberReader& reader, const char* pName, StoredArray& array) {
    const nlohmann::json* pArray = reader.Find(pName);
    if (pArray == nullptr) return;
    constexpr std::uint64_t kLargestOffset = std::numeric_limits<std::int64_t>::max() / 2;
    MemberReader members(*pArray);
    const std::string place = members.Text("in");
    for (const auto& [value, pPlaceName] : kPlaces) {
        if (place == pPlaceName) array.place = value;
    }
    array.offset = members.Number("offset", kLargestOffset);
    array.length = members.Number("length", kLargestOffset);
    array.hash = members.Hash("hash");
    if (!members.IsGood() || array.place == StoredArray::Place::kNowhere) reader.Spoil();
}

void ReadIncludes(MemberReader& reader, std::vector<IncludeLookup>& includes) {
    const nlohmann::json* pIncludes = reader.Find("includes");
    if (pIncludes == nullptr) return;
    if (!pIncludes->is_array()) return reader.Spoil();
    for (const nlohmann::json& element : *pIncludes) {
        MemberReader members(element);
        IncludeLookup lookup;
        const std::optional<std::string> path = PercentDecode(members.Text("path"));
        const std::optional<std::string> from = PercentDecode(members.Text("from"));
        const std::optional<std::string> file = PercentDecode(members.Text("file"));
        lookup.hash = members.Hash("hash");
        if (!members.IsGood() || !path || !from || !file) return reader.Spoil();
        lookup.path = *path;
        lookup.includingFile = *from;
        lookup.file = *file;
        includes.push_back(std::move(lookup));
    }
}

OrderedJson IncludesJson(const std::vector<IncludeLookup>& includes) {
    OrderedJson array = OrderedJson::array();
    for (const IncludeLookup& lookup : includes) {
        OrderedJson json = OrderedJson::object();
        json["path"] = PercentEncode(lookup.path);
        json["from"] = PercentEncode(lookup.includingFile);
        json["file"] = PercentEncode(lookup.file);
        json["hash"] = TextOf(lookup.hash);
        array.push_back(std::move(json));
    }
    return array;
}

OrderedJson ArrayJson(const StoredArray& array) {
    // Not a null that becomes an object: a broken one would be destroyed if memory ran out then.
    OrderedJson json = OrderedJson::object();
    for (const auto& [value, pName] : kPlaces) {
        if (array.place == value) json["in"] = pName;
    }
    json["offset"] = array.offset;
    json["length"] = array.length;
    json["hash"] = TextOf(array.hash);
    return json;
}

}  // namespace

std::string FormatRecord(const JournalRecord& record) {
    const FileFacts& facts = record.facts;
    const ResultIdentity& identity = record.identity;
    OrderedJson json = {{"path", PercentEncode(facts.path)},
                        {"source", TextOf(identity.source)},
                        {"result", TextOf(identity.result)},
                        {"version", identity.version},
                        {"options", identity.options}};
    if (identity.isAccepted) json["accepted"] = true;
    json["outcome"] = NameOf(facts.outcome);
    json["bytes"] = facts.bytes;
    for (const FileText& text : kReadingTexts) {
        if (record.hasFindings || text.isInOldRecords) json[text.pName] = facts.*text.pMember;
    }
    for (const FileNumber& number : kFileNumbers) {
        if (number.isOptional && facts.*number.pMember == 0) continue;
        if (record.hasFindings || number.isInOldRecords) {
            json[number.pName] = facts.*number.pMember;
        }
    }
    json["message"] = facts.message;
    json["errors"] = facts.errors;
    if (record.hasFindings) json["codes"] = facts.codes;
    if (record.commands.place != StoredArray::Place::kNowhere) {
        json["commands"] = ArrayJson(record.commands);
    }
    if (record.findings.place != StoredArray::Place::kNowhere) {
        json["findings"] = ArrayJson(record.findings);
    }
    if (record.macros.place != StoredArray::Place::kNowhere) {
        json["macros"] = ArrayJson(record.macros);
    }
    if (!record.includes.empty()) json["includes"] = IncludesJson(record.includes);
    // Bytes that are no UTF-8 would throw otherwise.
    const std::string text = json.dump(-1, ' ', false, OrderedJson::error_handler_t::replace);
    std::string line(kRecordStart);
    return line.append(ChecksumOf(text)).append(" ").append(text).append("\n");
}

std::optional<JournalRecord> ParseRecord(std::string_view line) {
    if (line.size() >= kLongestRecord || !line.starts_with(kRecordStart)) return std::nullopt;
    line.remove_prefix(kRecordStart.size());
    if (line.size() <= kChecksumSize || line[kChecksumSize] != ' ') return std::nullopt;
    const std::string_view text = line.substr(kChecksumSize + 1);
    if (line.substr(0, kChecksumSize) != ChecksumOf(text)) return std::nullopt;
    const nlohmann::json json = nlohmann::json::parse(text, nullptr, /*allow_exceptions=*/false);
    MemberReader reader(json);
    JournalRecord record;
    record.hasFindings = reader.Find("found") != nullptr;
    ReadFacts(reader, record.hasFindings, record.facts);
    ReadIdentity(reader, record.identity);
    ReadArray(reader, "commands", record.commands);
    ReadArray(reader, "findings", record.findings);
    ReadArray(reader, "macros", record.macros);
    ReadIncludes(reader, record.includes);
    if (!reader.IsGood()) return std::nullopt;
    return record;
}

void JournalReader::Add(std::string_view piece) {
    while (!piece.empty()) {
        const std::size_t lineFeed = piece.find('\n');
        const std::string_view part = piece.substr(0, lineFeed);
        // What is too long need not be kept; one byte more tells that it is.
        if (m_line.size() < kLongestRecord &&
            (!m_line.empty() || lineFeed == std::string_view::npos)) {
            m_line.append(part.substr(0, kLongestRecord - m_line.size()));
        }
        m_position += part.size();
        if (lineFeed == std::string_view::npos) return;
        ++m_position;
        m_endOfLines = m_position;
        if (std::optional<JournalRecord> record = ParseRecord(m_line.empty() ? part : m_line)) {
            m_take(std::move(*record));
        }
        m_line.clear();
        piece.remove_prefix(lineFeed + 1);
    }
}

}  // namespace quillet::migrate
