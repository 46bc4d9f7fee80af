#include "migrate/reportdata.h"

#include <algorithm>
#include <array>
#include <utility>

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
    if (facts.isKept) ++totals.filesKept;
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
    const bool needsSomeone =
        totals.filesPartly > 0 || totals.filesStopped > 0 || totals.linksNotFollowed > 0;
    return needsSomeone ? 1 : 0;
}

}  // namespace quillet::migrate
