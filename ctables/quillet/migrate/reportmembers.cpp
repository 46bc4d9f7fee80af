// Every number that a report brings along is added, written, or shown somewhere, so what may stand
// in it is decided once, before any of that. The limits leave room: no sum of numbers in range can
// leave its type before `FileSums` has looked at it.
#include "migrate/reportmembers.h"

#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <span>
#include <variant>

#include "migrate/timetext.h"

namespace quillet::migrate {

namespace {

// From the first time that can be written to the last.
constexpr std::int64_t kMostSeconds = kLastTime - kFirstTime;
constexpr std::int64_t kInt64Max = std::numeric_limits<std::int64_t>::max();

constexpr Member kReportMembers[] = {
    {"format", MemberKind::kName},
    {"formatVersion", MemberKind::kCount},
    {"quilletVersion", MemberKind::kName},
    {"source", MemberKind::kName},
    {"target", MemberKind::kName},
    {"batchMode", MemberKind::kTruth},
    {"dryRun", MemberKind::kTruth},
    {"interrupted", MemberKind::kTruth},
    {"shard", MemberKind::kObjectOrNull, ReportPart::kShard},
    {"started", MemberKind::kDate},
    {"seconds", MemberKind::kSeconds},
    {"totals", MemberKind::kObject, ReportPart::kTotals},
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
    {"path", MemberKind::kName},
    {"rawPath", MemberKind::kName},
    {"outcome", MemberKind::kName},
    {"kept", MemberKind::kTruth},
    {"result", MemberKind::kName},
    {"sourceChanged", MemberKind::kTruth},
    {"linkNotFollowed", MemberKind::kTruth},
    {"bytes", MemberKind::kBytes},
    {"modified", MemberKind::kTime},
    {"encoding", MemberKind::kName},
    {"message", MemberKind::kName},
    {"commands", MemberKind::kArray, ReportPart::kCommands},
};

constexpr auto kFileMembers = [] {
    std::array<Member, std::size(kOtherFileMembers) + kFileNumbers.size()> members;
    std::size_t count = 0;
    for (const Member& member : kOtherFileMembers) members[count++] = member;
    for (const FileNumber& number : kFileNumbers) {
        members[count++] = {number.pName, MemberKind::kCount};
    }
    return members;
}();

constexpr Member kCommandMembers[] = {
    {"type", MemberKind::kName},           {"outcome", MemberKind::kName},
    {"firstLine", MemberKind::kCount},     {"lastLine", MemberKind::kCount},
    {"source", MemberKind::kText},         {"generated", MemberKind::kText},
    {"generatedLine", MemberKind::kCount}, {"error", MemberKind::kName},
    {"errorLine", MemberKind::kCount},     {"errorColumn", MemberKind::kColumn},
    {"message", MemberKind::kText},        {"warnings", MemberKind::kArray, ReportPart::kWarnings},
};

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
        case ReportPart::kCommand:
            return kCommandMembers;
        case ReportPart::kFiles:
        case ReportPart::kCommands:
        case ReportPart::kWarnings:
        case ReportPart::kUnknown:
            break;
    }
    return {};
}

struct NumberRange {
    std::int64_t least = 0;
    std::uint64_t most = 0;
};

// Nothing for members that hold no whole number.
std::optional<NumberRange> RangeOf(MemberKind kind) {
    switch (kind) {
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

}  // namespace

const Member* FindMember(ReportPart part, std::string_view name, std::size_t& index) {
    const std::span<const Member> members = MembersOf(part);
    for (index = 0; index < members.size(); ++index) {
        if (members[index].name == name) return &members[index];
    }
    return nullptr;
}

Member ElementOf(ReportPart part) {
    switch (part) {
        case ReportPart::kFiles:
            return {{}, MemberKind::kObject, ReportPart::kFile};
        case ReportPart::kCommands:
            return {{}, MemberKind::kObject, ReportPart::kCommand};
        case ReportPart::kWarnings:
            return {{}, MemberKind::kText};
        default:
            return {};
    }
}

bool MayHold(MemberKind kind, std::int64_t value) {
    if (value >= 0) return MayHold(kind, static_cast<std::uint64_t>(value));
    const std::optional<NumberRange> range = RangeOf(kind);
    return kind == MemberKind::kAnything || (range && value >= range->least);
}

bool MayHold(MemberKind kind, std::uint64_t value) {
    if (kind == MemberKind::kAnything) return true;
    if (kind == MemberKind::kSeconds) return MayHold(kind, static_cast<double>(value));
    const std::optional<NumberRange> range = RangeOf(kind);
    if (!range || value > range->most) return false;
    return range->least <= 0 || value >= static_cast<std::uint64_t>(range->least);
}

bool MayHold(MemberKind kind, double value) {
    if (kind == MemberKind::kAnything) return true;
    // What is no number at all is not between these two either.
    return kind == MemberKind::kSeconds && value >= 0 && value <= static_cast<double>(kMostSeconds);
}

std::string Describe(MemberKind kind) {
    switch (kind) {
        case MemberKind::kTruth:
            return "true or false";
        case MemberKind::kName:
        case MemberKind::kText:
            return "a text";
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
        default:
            break;
    }
    const std::optional<NumberRange> range = RangeOf(kind);
    if (!range) return "anything";
    return "a whole number from " + std::to_string(range->least) + " to " +
           std::to_string(range->most);
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
