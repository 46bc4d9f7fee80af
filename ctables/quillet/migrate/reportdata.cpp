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

constexpr std::array<NamedOutcome, 10> kOutcomes = {{
    {FileOutcome::kConverted, "converted", &Totals::filesConverted},
    {FileOutcome::kChanged, "changed", &Totals::filesChanged},
    {FileOutcome::kPartly, "partly", &Totals::filesPartly},
    {FileOutcome::kUnconverted, "unconverted", &Totals::filesUnconverted},
    {FileOutcome::kOverlooked, "overlooked", &Totals::filesOverlooked},
    {FileOutcome::kStopped, "stopped", &Totals::filesStopped},
    {FileOutcome::kNothing, "nothing-to-convert", &Totals::filesNothing},
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

constexpr std::array<std::pair<FindingKind, std::string_view>, 3> kKindNames = {{
    {FindingKind::kOverlooked, "overlooked"},
    {FindingKind::kChanged, "changed"},
    {FindingKind::kTold, "told"},
}};

constexpr std::array<std::pair<SignOffState, std::string_view>, 2> kSignOffNames = {{
    {SignOffState::kChecked, "checked"},
    {SignOffState::kMended, "mended"},
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
    totals.commandsFound += facts.found;
    totals.commandsConverted += facts.converted;
    totals.commandsFailed += facts.failed;
    totals.commandsUnreadable += facts.unreadable;
    totals.commandsOverlooked += facts.overlooked;
    totals.warnings += facts.warnings;
    totals.findingsChanged += facts.changed;
    totals.findingsTold += facts.told;
    totals.commandsFromMacros += facts.fromMacros;
    totals.macros += facts.listedMacros;
    totals.macroCalls += facts.macroCalls;
    totals.macroCallsConverted += facts.macroCallsConverted;
    totals.macroCallsFailed += facts.macroCallsFailed;
    totals.macroCallsLeft += facts.macroCallsLeft;
}

}  // namespace

std::string_view NameOf(FileOutcome outcome) { return Describe(outcome).name; }

std::optional<FileOutcome> FileOutcomeOf(std::string_view name) {
    for (const NamedOutcome& outcome : kOutcomes) {
        if (outcome.name == name) return outcome.value;
    }
    return std::nullopt;
}

bool IsOfConversion(FileOutcome outcome) {
    return outcome > FileOutcome::kFailed && outcome < FileOutcome::kNothing;
}

std::string_view NameOf(FindingKind kind) { return FindName(kKindNames, kind); }

std::optional<FindingKind> FindingKindOf(std::string_view name) {
    for (const auto& [value, itsName] : kKindNames) {
        if (itsName == name) return value;
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

std::string_view NameOf(SignOffState state) { return FindName(kSignOffNames, state); }

std::optional<SignOffState> SignOffStateOf(std::string_view name) {
    for (const auto& [value, itsName] : kSignOffNames) {
        if (itsName == name) return value;
    }
    return std::nullopt;
}

bool IsLeftAlone(ResultState state) {
    return state == ResultState::kKept || state == ResultState::kEdited;
}

std::int64_t CommandCountOf(const FileFacts& facts) { return facts.copied + facts.listed; }

bool HasCommands(const FileFacts& facts) { return facts.listed > 0; }

bool HasFindings(const FileFacts& facts) {
    return facts.overlooked > 0 || facts.changed > 0 || facts.told > 0;
}

bool HasMacros(const FileFacts& facts) { return facts.listedMacros > 0; }

bool IsAccountedFor(const FileFacts& facts) {
    return facts.found == facts.converted + facts.failed + facts.unreadable + facts.overlooked;
}

void AddName(std::string_view name, std::vector<std::string>& names) {
    const auto place = std::lower_bound(names.begin(), names.end(), name);
    if (place == names.end() || *place != name) names.emplace(place, name);
}

void ForgetConversion(FileFacts& facts) {
    for (const FileNumber& number : kFileNumbers) facts.*number.pMember = 0;
    for (const FileText& text : kReadingTexts) (facts.*text.pMember).clear();
    facts.errors.clear();
    facts.codes.clear();
}

void TakeMacroNumbers(const FileFacts& known, FileFacts& facts) {
    facts.listedMacros = known.listedMacros;
    facts.macroCalls = known.macroCalls;
    facts.macroCallsConverted = known.macroCallsConverted;
    facts.macroCallsFailed = known.macroCallsFailed;
    facts.macroCallsLeft = known.macroCallsLeft;
}

void MarkAsFailed(FileFacts& facts, std::string_view what, const std::error_code& error) {
    facts.outcome = FileOutcome::kFailed;
    facts.result = ResultState::kNone;
    facts.hasSourceChanged = false;
    facts.message = what;
    if (error) facts.message += ": " + DescribeError(error);
}

bool IsLegacyType(std::string_view type) {
    return std::find(kLegacyTypes.begin(), kLegacyTypes.end(), type) != kLegacyTypes.end();
}

Totals TotalsOf(const std::vector<FileEntry>& files) {
    Totals totals;
    for (const FileEntry& file : files) {
        AddFile(file.facts, totals);
        for (const SignOff& signOff : file.signOffs) {
            ++(signOff.state == SignOffState::kChecked ? totals.commandsChecked
                                                       : totals.commandsMendedByHand);
        }
    }
    return totals;
}

void SortByPath(std::vector<FileEntry>& files) {
    std::sort(files.begin(), files.end(), [](const FileEntry& left, const FileEntry& right) {
        return left.facts.path < right.facts.path;
    });
}

int ExitStatusOf(const Totals& totals) {
    if (totals.filesFailed > 0) return kTroubleStatus;
    const bool needsPerson = totals.filesPartly > 0 || totals.filesUnconverted > 0 ||
                             totals.filesOverlooked > 0 || totals.filesStopped > 0 ||
                             totals.filesOutdated > 0 || totals.linksNotFollowed > 0;
    return needsPerson ? kNeedsPersonStatus : kSuccessStatus;
}

}  // namespace quillet::migrate
