// Every number that a report brings along is added, written, or shown somewhere, so what may stand
// in it is decided once, before any of that. The limits leave room: no sum of numbers in range can
// leave its type before `FileSums` has looked at it.
#include "migrate/reportmembers.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
#include <span>
#include <variant>

#include "migrate/commandkeys.h"
#include "migrate/percentcode.h"
#include "migrate/timetext.h"

namespace quillet::migrate {

namespace {

// From the first time that can be written to the last.
constexpr std::int64_t kMostSeconds = kLastTime - kFirstTime;
constexpr std::int64_t kInt64Max = std::numeric_limits<std::int64_t>::max();

constexpr Member kReportMembers[] = {
    {"format", MemberKind::kFormatName},
    {"formatVersion", MemberKind::kVersion},
    {"quilletVersion", MemberKind::kName},
    {"source", MemberKind::kName},
    {"target", MemberKind::kName},
    {"layout", MemberKind::kName},
    {"dryRun", MemberKind::kTruth},
    {"interrupted", MemberKind::kTruth},
    {"shard", MemberKind::kObjectOrNull, ReportPart::kShard},
    {"started", MemberKind::kDate},
    {"seconds", MemberKind::kSeconds},
    {"totals", MemberKind::kObject, ReportPart::kTotals},
    {"sinceLastRun", MemberKind::kObjectOrNull, ReportPart::kSinceLastRun},
    {"otherSignOffs", MemberKind::kArray, ReportPart::kSignOffs},
    {"files", MemberKind::kArray, ReportPart::kFiles},
};

constexpr auto kTotalsMembers = [] {
    std::array<Member, kTotalNumbers.size()> members;
    for (std::size_t index = 0; index < members.size(); ++index) {
        const TotalNumber& number = kTotalNumbers[index];
        const bool isCount = std::holds_alternative<std::int64_t Totals::*>(number.member);
        members[index] = {number.pName, isCount ? MemberKind::kCount : MemberKind::kByteSum};
    }
    return members;
}();

constexpr Member kShardMembers[] = {
    {"index", MemberKind::kSlice},
    {"count", MemberKind::kSlice},
};

constexpr Member kOtherFileMembers[] = {
    {"path", MemberKind::kPath},
    {"rawPath", MemberKind::kRawPath},
    {"outcome", MemberKind::kFileOutcome},
    {"kept", MemberKind::kTruth},
    {"result", MemberKind::kResultState},
    {"sourceChanged", MemberKind::kTruth},
    {"linkNotFollowed", MemberKind::kTruth},
    {"bytes", MemberKind::kBytes},
    {"modified", MemberKind::kTime},
    {"message", MemberKind::kName},
    {"signOffs", MemberKind::kArray, ReportPart::kSignOffs},
    {"changes", MemberKind::kObject, ReportPart::kChanges},
    {"findings", MemberKind::kArray, ReportPart::kFindings},
    {"macros", MemberKind::kArray, ReportPart::kMacros},
    {"commands", MemberKind::kArray, ReportPart::kCommands},
};

constexpr auto kFileMembers = [] {
    std::array<Member, std::size(kOtherFileMembers) + kReadingTexts.size() + kFileNumbers.size()>
        members;
    std::size_t count = 0;
    for (const Member& member : kOtherFileMembers) members[count++] = member;
    for (const FileText& text : kReadingTexts) members[count++] = {text.pName, MemberKind::kName};
    for (const FileNumber& number : kFileNumbers) {
        members[count++] = {number.pName, MemberKind::kCount};
    }
    return members;
}();

constexpr Member kFindingMembers[] = {
    {"code", MemberKind::kName},          {"kind", MemberKind::kFindingKind},
    {"command", MemberKind::kTextOrNull}, {"firstLine", MemberKind::kCount},
    {"lastLine", MemberKind::kCount},     {"causeLine", MemberKind::kCount},
    {"macro", MemberKind::kTextOrNull},   {"sentence", MemberKind::kText},
    {"text", MemberKind::kText},
};

constexpr Member kCommandMembers[] = {
    {"type", MemberKind::kName},          {"outcome", MemberKind::kCommandOutcome},
    {"firstLine", MemberKind::kCount},    {"lastLine", MemberKind::kCount},
    {"source", MemberKind::kText},        {"macro", MemberKind::kText},
    {"generated", MemberKind::kText},     {"generatedLine", MemberKind::kCount},
    {"error", MemberKind::kName},         {"errorLine", MemberKind::kCount},
    {"errorColumn", MemberKind::kColumn}, {"message", MemberKind::kText},
    {"hint", MemberKind::kText},          {"warnings", MemberKind::kArray, ReportPart::kWarnings},
};

constexpr Member kSignOffMembers[] = {
    {"path", MemberKind::kPath},     {"rawPath", MemberKind::kRawPath},
    {"hash", MemberKind::kTextHash}, {"number", MemberKind::kCount},
    {"copies", MemberKind::kCount},  {"state", MemberKind::kSignOffState},
    {"remark", MemberKind::kName},   {"firstLine", MemberKind::kCount},
};

constexpr Member kSinceLastRunMembers[] = {
    {"started", MemberKind::kDate}, {"mended", MemberKind::kCount},
    {"new", MemberKind::kCount},    {"stillFailing", MemberKind::kCount},
    {"gone", MemberKind::kCount},
};

constexpr Member kChangesMembers[] = {
    {"mended", MemberKind::kArray, ReportPart::kLines},
    {"new", MemberKind::kArray, ReportPart::kLines},
    {"gone", MemberKind::kArray, ReportPart::kLines},
};

struct NumberRange {
    std::int64_t least = 0;
    std::uint64_t most = 0;
};

// Nothing for members that hold no whole number.
std::optional<NumberRange> RangeOf(MemberKind kind) {
    switch (kind) {
        case MemberKind::kVersion:
        case MemberKind::kCount:
            return NumberRange{0, kMostCount};
        case MemberKind::kBytes:
            return NumberRange{0, kInt64Max};
        case MemberKind::kByteSum:
            return NumberRange{0, std::numeric_limits<std::uint64_t>::max()};
        case MemberKind::kTime:
            return NumberRange{std::numeric_limits<std::int64_t>::min(), kInt64Max};
        case MemberKind::kColumn:
            return NumberRange{0, std::numeric_limits<int>::max()};
        case MemberKind::kSlice:
            return NumberRange{1, std::numeric_limits<std::uint32_t>::max()};
        default:
            return std::nullopt;
    }
}

// How a member of this kind has to look.
std::string Describe(MemberKind kind) {
    switch (kind) {
        case MemberKind::kTruth:
            return "true or false";
        case MemberKind::kDate:
            return "a time such as \"2026-11-21T09:30:00Z\"";
        case MemberKind::kSeconds:
            return "a number from 0 to " + std::to_string(kMostSeconds);
        case MemberKind::kObject:
            return "an object";
        case MemberKind::kObjectOrNull:
            return "an object or null";
        case MemberKind::kArray:
            return "an array";
        case MemberKind::kTextOrNull:
            return "a text or null";
        default:
            break;
    }
    const std::optional<NumberRange> range = RangeOf(kind);
    if (!range) return "a text";
    return "a whole number from " + std::to_string(range->least) + " to " +
           std::to_string(range->most);
}

bool IsInRange(const nlohmann::json& value, const NumberRange& range) {
    if (value.is_number_unsigned()) {
        const auto number = value.get<std::uint64_t>();
        return number <= range.most &&
               (range.least <= 0 || number >= static_cast<std::uint64_t>(range.least));
    }
    // Only numbers below zero, and "-0", are kept with a sign.
    return value.is_number_integer() && value.get<std::int64_t>() >= range.least;
}

bool HasForm(const nlohmann::json& value, MemberKind kind) {
    switch (kind) {
        case MemberKind::kAnything:
            return true;
        case MemberKind::kTruth:
            return value.is_boolean();
        case MemberKind::kDate:
            return value.is_string() && ParseTime(value.get_ref<const std::string&>());
        case MemberKind::kSeconds:
            // What is no number at all is not between these two either.
            return value.is_number() && value.get<double>() >= 0 &&
                   value.get<double>() <= static_cast<double>(kMostSeconds);
        case MemberKind::kObject:
            return value.is_object();
        case MemberKind::kObjectOrNull:
            return value.is_object() || value.is_null();
        case MemberKind::kArray:
            return value.is_array();
        case MemberKind::kTextOrNull:
            return value.is_string() || value.is_null();
        default:
            break;
    }
    const std::optional<NumberRange> range = RangeOf(kind);
    return range ? IsInRange(value, *range) : value.is_string();
}

std::string TooLong(std::size_t most) {
    return "is longer than " + std::to_string(most) + " bytes";
}

// A path that leads out of the folder it is in would lead whoever opens the page anywhere.
bool IsPathBelow(std::string_view path) {
    for (std::size_t begin = 0;;) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string_view part = path.substr(begin, end - begin);
        if (part.empty() || part == "." || part == "..") return false;
        if (end == path.size()) return true;
        begin = end + 1;
    }
}

std::string ProblemOfPath(const std::string& path) {
    if (path.size() > kMostPathBytes) return TooLong(kMostPathBytes);
    return IsPathBelow(path) ? "" : "is no path of a file below a folder";
}

std::string ProblemOfText(MemberKind kind, const std::string& text) {
    if (text.size() > kMostNameBytes) return TooLong(kMostNameBytes);
    switch (kind) {
        case MemberKind::kFormatName:
            return text == kFormat ? "" : "is not that of a report";
        case MemberKind::kPath:
            return ProblemOfPath(text);
        case MemberKind::kRawPath: {
            const std::optional<std::string> path = PercentDecode(text);
            return path ? ProblemOfPath(*path) : "is not what it should be";
        }
        case MemberKind::kFileOutcome:
            return FileOutcomeOf(text) ? "" : "is no outcome of a file";
        case MemberKind::kResultState:
            return ResultStateOf(text) ? "" : "is no state of a result";
        case MemberKind::kCommandOutcome:
            return IsOutcomeInReport(text) ? "" : "is no outcome of a command";
        case MemberKind::kFindingKind:
            return FindingKindOf(text) ? "" : "is no kind of finding";
        case MemberKind::kSignOffState:
            return SignOffStateOf(text) ? "" : "is no state of a sign-off";
        case MemberKind::kTextHash:
            return IsTextHash(text) ? "" : "is no hash of a text";
        default:
            return {};
    }
}

}  // namespace

std::span<const Member> MembersOf(ReportPart part) {
    switch (part) {
        case ReportPart::kReport:
            return kReportMembers;
        case ReportPart::kTotals:
            return kTotalsMembers;
        case ReportPart::kShard:
            return kShardMembers;
        case ReportPart::kFile:
            return kFileMembers;
        case ReportPart::kFinding:
            return kFindingMembers;
        case ReportPart::kCommand:
            return kCommandMembers;
        case ReportPart::kSignOff:
            return kSignOffMembers;
        case ReportPart::kSinceLastRun:
            return kSinceLastRunMembers;
        case ReportPart::kChanges:
            return kChangesMembers;
        case ReportPart::kFiles:
        case ReportPart::kFindings:
        case ReportPart::kMacros:
        case ReportPart::kCommands:
        case ReportPart::kWarnings:
        case ReportPart::kSignOffs:
        case ReportPart::kLines:
        case ReportPart::kUnknown:
            break;
    }
    return {};
}

const Member* FindMember(ReportPart part, std::string_view name) {
    const std::span<const Member> members = MembersOf(part);
    const auto found = std::find_if(members.begin(), members.end(),
                                    [name](const Member& member) { return member.name == name; });
    return found == members.end() ? nullptr : &*found;
}

Member ElementOf(ReportPart part) {
    switch (part) {
        case ReportPart::kFiles:
            return {{}, MemberKind::kObject, ReportPart::kFile};
        case ReportPart::kFindings:
            return {{}, MemberKind::kObject, ReportPart::kFinding};
        case ReportPart::kCommands:
            return {{}, MemberKind::kObject, ReportPart::kCommand};
        case ReportPart::kSignOffs:
            return {{}, MemberKind::kObject, ReportPart::kSignOff};
        case ReportPart::kLines:
            return {{}, MemberKind::kCount};
        case ReportPart::kWarnings:
            return {{}, MemberKind::kText};
        default:
            return {};
    }
}

std::string ProblemOf(MemberKind kind, const nlohmann::json& value) {
    if (!HasForm(value, kind)) return "is not " + Describe(kind);
    if (kind == MemberKind::kVersion && value.get<std::int64_t>() != kFormatVersion) {
        return "is none that is known";
    }
    // Any other text may be long, for it is not kept.
    const bool isLookedAt = value.is_string() && kind != MemberKind::kText &&
                            kind != MemberKind::kTextOrNull && kind != MemberKind::kAnything;
    return isLookedAt ? ProblemOfText(kind, value.get_ref<const std::string&>()) : std::string();
}

std::optional<std::string_view> FileSums::Add(const FileFacts& facts) {
    if (facts.bytes > std::numeric_limits<std::uint64_t>::max() - m_sums.bytes) return "bytes";
    m_sums.bytes += facts.bytes;
    for (const FileNumber& number : kFileNumbers) {
        if (!number.isSummed) continue;
        const std::int64_t sum = m_sums.*number.pMember + facts.*number.pMember;
        if (sum > kMostCount) return number.pName;
        m_sums.*number.pMember = sum;
    }
    m_commands += CommandCountOf(facts);
    if (m_commands > kMostCount) return "commands";
    return std::nullopt;
}

}  // namespace quillet::migrate
