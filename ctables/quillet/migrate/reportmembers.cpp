// Every number that a report brings along is added, written, or shown somewhere, so what may stand
// in it is decided once, before any of that. The limits leave room: no sum of numbers in range can
// leave its type before `FileSums` has looked at it.
#include "migrate/reportmembers.h"

#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

#include "migrate/jsonreport.h"

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

constexpr Member kTotalsMembers[] = {
    {"files", MemberKind::kCount},          {"filesConverted", MemberKind::kCount},
    {"filesPartly", MemberKind::kCount},    {"filesStopped", MemberKind::kCount},
    {"filesKept", MemberKind::kCount},      {"filesCopied", MemberKind::kCount},
    {"filesSkipped", MemberKind::kCount},   {"filesFailed", MemberKind::kCount},
    {"bytes", MemberKind::kByteSum},        {"commands", MemberKind::kCount},
    {"commandsCopied", MemberKind::kCount}, {"commandsConverted", MemberKind::kCount},
    {"commandsFailed", MemberKind::kCount}, {"commandsUnreadable", MemberKind::kCount},
    {"warnings", MemberKind::kCount},       {"linksNotFollowed", MemberKind::kCount},
    {"filesEdited", MemberKind::kCount},    {"filesOutdated", MemberKind::kCount},
    {"filesOrphaned", MemberKind::kCount},
};

constexpr Member kShardMembers[] = {
    {"index", MemberKind::kSlice},
    {"count", MemberKind::kSlice},
};

constexpr Member kFileMembers[] = {
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
    {"lines", MemberKind::kCount},
    {"copied", MemberKind::kCount},
    {"converted", MemberKind::kCount},
    {"failed", MemberKind::kCount},
    {"unreadable", MemberKind::kCount},
    {"warnings", MemberKind::kCount},
    {"message", MemberKind::kName},
    {"commands", MemberKind::kArray, ReportPart::kCommands},
};

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

constexpr std::array<std::pair<std::string_view, std::int64_t FileFacts::*>, 5> kSummedMembers = {{
    {"copied", &FileFacts::copied},
    {"converted", &FileFacts::converted},
    {"failed", &FileFacts::failed},
    {"unreadable", &FileFacts::unreadable},
    {"warnings", &FileFacts::warnings},
}};

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
    for (const auto& [name, pMember] : kSummedMembers) {
        const std::int64_t sum = m_sums.*pMember + facts.*pMember;
        if (sum > kMostCount) return name;
        m_sums.*pMember = sum;
    }
    m_commands += facts.copied + facts.converted + facts.failed + facts.unreadable;
    if (m_commands > kMostCount) return "commands";
    return std::nullopt;
}

}  // namespace quillet::migrate
