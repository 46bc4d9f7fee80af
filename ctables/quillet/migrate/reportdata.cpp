#include "migrate/reportdata.h"

#include <algorithm>
#include <array>
#include <utility>

#include "migrate/exitstatus.h"
#include "migrate/systemfiles.h"

namespace quillet::migrate {

namespace {

struct NamedOutcome {
    FileOutcome value = FileOutcome::kFailed;
    std::string_view name;
    std::int64_t Totals::*pCounter = nullptr;
};

constexpr std::array<NamedOutcome, 6> kOutcomes = {{
    {FileOutcome::kConverted, "converted", &Totals::filesConverted},
    {FileOutcome::kPartly, "partly", &Totals::filesPartly},
    {FileOutcome::kStopped, "stopped", &Totals::filesStopped},
    {FileOutcome::kCopied, "copied", &Totals::filesCopied},
    {FileOutcome::kSkipped, "skipped", &Totals::filesSkipped},
    {FileOutcome::kFailed, "failed", &Totals::filesFailed},
}};

constexpr std::array<std::pair<ResultState, std::string_view>, 4> kStateNames = {{
    {ResultState::kNew, "new"},
    {ResultState::kKept, "kept"},
    {ResultState::kEdited, "edited"},
    {ResultState::kOrphaned, "orphaned"},
}};

constexpr std::array<std::pair<CommandOutcome, std::string_view>, 4> kCommandOutcomeNames = {{
    {CommandOutcome::kCopied, "copied"},
    {CommandOutcome::kConverted, "converted"},
    {CommandOutcome::kFailed, "failed"},
    {CommandOutcome::kUnreadable, "unreadable"},
}};

template <class Table, class Value>
std::string_view FindName(const Table& table, Value wanted) {
    for (const auto& [value, name] : table) {
        if (value == wanted) return name;
    }
    return {};
}

const NamedOutcome& Describe(FileOutcome outcome) {
    return *std::find_if(kOutcomes.begin(), kOutcomes.end(),
                         [outcome](const NamedOutcome& named) { return named.value == outcome; });
}

void AddFile(const FileFacts& facts, Totals& totals) {
    ++totals.files;
    ++(totals.*Describe(facts.outcome).pCounter);
    if (IsLeftAlone(facts.result)) ++totals.filesKept;
    if (facts.result == ResultState::kEdited) ++totals.filesEdited;
    if (facts.hasSourceChanged) ++totals.filesOutdated;
    if (facts.result == ResultState::kOrphaned) ++totals.filesOrphaned;
    if (facts.isLinkNotFollowed) ++totals.linksNotFollowed;
    totals.bytes += facts.bytes;
    totals.commands += CommandCountOf(facts);
    totals.commandsCopied += facts.copied;
    totals.commandsConverted += facts.converted;
    totals.commandsFailed += facts.failed;
    totals.commandsUnreadable += facts.unreadable;
    totals.warnings += facts.warnings;
}

}  // namespace

std::string_view NameOf(FileOutcome outcome) { return Describe(outcome).name; }

std::optional<FileOutcome> FileOutcomeOf(std::string_view name) {
    for (const NamedOutcome& outcome : kOutcomes) {
        if (outcome.name == name) return outcome.value;
    }
    return std::nullopt;
}

std::string_view NameOf(ResultState state) { return FindName(kStateNames, state); }

std::string_view NameOf(CommandOutcome outcome) { return FindName(kCommandOutcomeNames, outcome); }

bool IsOutcomeInReport(std::string_view name) {
    return std::any_of(kCommandOutcomeNames.begin(), kCommandOutcomeNames.end(),
                       [name](const auto& named) {
                           return named.first != CommandOutcome::kCopied && named.second == name;
                       });
}

std::optional<ResultState> ResultStateOf(std::string_view name) {
    for (const auto& [value, itsName] : kStateNames) {
        if (itsName == name) return value;
    }
    return std::nullopt;
}

bool IsLeftAlone(ResultState state) {
    return state == ResultState::kKept || state == ResultState::kEdited;
}

std::int64_t CommandCountOf(const FileFacts& facts) {
    return facts.copied + facts.converted + facts.failed + facts.unreadable;
}

bool HasCommands(const FileFacts& facts) { return CommandCountOf(facts) > facts.copied; }

void MarkAsFailed(FileFacts& facts, std::string_view what, const std::error_code& error) {
    facts.outcome = FileOutcome::kFailed;
    facts.result = ResultState::kNone;
    facts.hasSourceChanged = false;
    facts.message = what;
    if (error) facts.message += ": " + DescribeError(error);
}

Totals TotalsOf(const std::vector<FileEntry>& files) {
    Totals totals;
    for (const FileEntry& file : files) AddFile(file.facts, totals);
    return totals;
}

void SortByPath(std::vector<FileEntry>& files) {
    std::sort(files.begin(), files.end(), [](const FileEntry& left, const FileEntry& right) {
        return left.facts.path < right.facts.path;
    });
}

int ExitStatusOf(const Totals& totals) {
    if (totals.filesFailed > 0) return kTroubleStatus;
    const bool needsPerson = totals.filesPartly > 0 || totals.filesStopped > 0 ||
                             totals.filesOutdated > 0 || totals.linksNotFollowed > 0;
    return needsPerson ? kNeedsPersonStatus : kSuccessStatus;
}

}  // namespace quillet::migrate
