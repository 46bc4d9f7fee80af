#include "migrate/reportdata.h"

#include <algorithm>
#include <array>
#include <utility>

#include "migrate/systemfiles.h"

namespace quillet::migrate {

namespace {

constexpr std::array<std::pair<FileOutcome, std::string_view>, 6> kOutcomeNames = {{
    {FileOutcome::kConverted, "converted"},
    {FileOutcome::kPartly, "partly"},
    {FileOutcome::kStopped, "stopped"},
    {FileOutcome::kCopied, "copied"},
    {FileOutcome::kSkipped, "skipped"},
    {FileOutcome::kFailed, "failed"},
}};

constexpr std::array<std::pair<ResultState, std::string_view>, 4> kStateNames = {{
    {ResultState::kNew, "new"},
    {ResultState::kKept, "kept"},
    {ResultState::kEdited, "edited"},
    {ResultState::kOrphaned, "orphaned"},
}};

std::int64_t& CounterOf(FileOutcome outcome, Totals& totals) {
    switch (outcome) {
        case FileOutcome::kConverted:
            return totals.filesConverted;
        case FileOutcome::kPartly:
            return totals.filesPartly;
        case FileOutcome::kStopped:
            return totals.filesStopped;
        case FileOutcome::kCopied:
            return totals.filesCopied;
        case FileOutcome::kSkipped:
            return totals.filesSkipped;
        case FileOutcome::kFailed:
            break;
    }
    return totals.filesFailed;
}

void AddFile(const FileFacts& facts, Totals& totals) {
    ++totals.files;
    ++CounterOf(facts.outcome, totals);
    if (IsLeftAlone(facts.result)) ++totals.filesKept;
    if (facts.result == ResultState::kEdited) ++totals.filesEdited;
    if (facts.hasSourceChanged) ++totals.filesOutdated;
    if (facts.result == ResultState::kOrphaned) ++totals.filesOrphaned;
    if (facts.isLinkNotFollowed) ++totals.linksNotFollowed;
    totals.bytes += facts.bytes;
    totals.commands += facts.copied + facts.converted + facts.failed + facts.unreadable;
    totals.commandsCopied += facts.copied;
    totals.commandsConverted += facts.converted;
    totals.commandsFailed += facts.failed;
    totals.commandsUnreadable += facts.unreadable;
    totals.warnings += facts.warnings;
}

}  // namespace

std::string_view NameOf(FileOutcome outcome) {
    for (const auto& [value, name] : kOutcomeNames) {
        if (value == outcome) return name;
    }
    return {};
}

std::optional<FileOutcome> FileOutcomeOf(std::string_view name) {
    for (const auto& [value, itsName] : kOutcomeNames) {
        if (itsName == name) return value;
    }
    return std::nullopt;
}

std::string_view NameOf(ResultState state) {
    for (const auto& [value, name] : kStateNames) {
        if (value == state) return name;
    }
    return {};
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
    if (totals.filesFailed > 0) return 2;
    const bool needsPerson = totals.filesPartly > 0 || totals.filesStopped > 0 ||
                             totals.filesOutdated > 0 || totals.linksNotFollowed > 0;
    return needsPerson ? 1 : 0;
}

}  // namespace quillet::migrate
