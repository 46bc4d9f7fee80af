#include "migrate/reportdigest.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "migrate/commandskeleton.h"
#include "migrate/contenthash.h"
#include "migrate/macrocommands.h"
#include "migrate/storedfacts.h"
#include "quillet.h"

namespace quillet::migrate {

namespace {

// On the first line of a command columns count from 2, elsewhere from 1, but for a literal that is
// never closed from 1 on all: equal failures have equal places only when that is evened out.
PlaceInCommand PlaceOfFailure(const CommandFacts& command) {
    if (command.errorLine <= 0) return {};
    const bool isFromTwo = command.errorLine == command.firstLine &&
                           command.error != quillet::NameOf(ErrorKind::kUnclosedLiteral);
    return {command.errorLine - command.firstLine + 1, command.errorColumn - (isFromTwo ? 1 : 0)};
}

// Finds the group of each failure.
class GroupFinder {
public:
    explicit GroupFinder(std::vector<FailureGroup>& groups) : m_groups(groups) {}

    // The number of the group, from 1.
    std::size_t Add(const CommandFacts& command, CommandPlace place) {
        m_hasher.Clear();
        m_hasher.Add(command.error);
        m_hasher.Add("\n");
        m_hasher.Add(SkeletonOf(command.source, PlaceOfFailure(command)));
        const ContentHash hash = m_hasher.Value();
        const auto [found, isNew] =
            m_numbers.try_emplace({hash.high, hash.low}, m_groups.size() + 1);
        if (isNew) m_groups.push_back({command.error, {}});
        m_groups[found->second - 1].places.push_back(place);
        return found->second;
    }

private:
    std::vector<FailureGroup>& m_groups;
    ContentHasher m_hasher;
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::size_t> m_numbers;
};

// The commands of one file, each handed on once.
class FileReading {
public:
    // All are borrowed.
    FileReading(const FileFacts& facts, FileDigest& digest, const TakeListedCommand& take)
        : m_facts(facts), m_digest(digest), m_take(take) {}

    void Take(const FindingFacts& finding) {
        ++m_digest.codes[finding.code];
        m_inMacros.Take(finding);
        if (!IsOverlooked(finding)) return;
        ListedCommand legacy;
        legacy.type = finding.command;
        legacy.outcome = finding.kind;
        legacy.firstLine = finding.firstLine;
        legacy.lastLine = finding.lastLine;
        legacy.reason = finding.code;
        legacy.message = finding.sentence;
        legacy.errorLine = finding.causeLine;
        m_overlooked.push_back(std::move(legacy));
    }

    void FinishFindings() {
        std::stable_sort(m_overlooked.begin(), m_overlooked.end(),
                         [](const ListedCommand& left, const ListedCommand& right) {
                             return left.firstLine < right.firstLine;
                         });
    }

    // True for one that a finding tells of, so that it is none of the failures.
    [[nodiscard]] bool IsToldOf(const CommandFacts& command) const {
        return m_inMacros.Hold(command);
    }

    void Take(const CommandFacts& command, std::size_t group) {
        if (!IsLegacyType(command.type)) return;
        TakeOverlookedBefore(command.firstLine);
        ListedCommand legacy;
        legacy.type = command.type;
        legacy.outcome = command.outcome;
        legacy.firstLine = command.firstLine;
        legacy.lastLine = command.lastLine;
        legacy.reason = command.error;
        legacy.message = command.message;
        legacy.hint = command.hint;
        legacy.errorLine = command.errorLine;
        legacy.errorColumn = command.errorColumn;
        legacy.generatedLine = command.generatedLine;
        legacy.warnings = command.warnings.size();
        legacy.group = group;
        m_take(m_facts, legacy);
    }

    void Finish() {
        for (; m_next < m_overlooked.size(); ++m_next) m_take(m_facts, m_overlooked[m_next]);
    }

private:
    void TakeOverlookedBefore(std::int64_t line) {
        for (; m_next < m_overlooked.size() && m_overlooked[m_next].firstLine < line; ++m_next) {
            m_take(m_facts, m_overlooked[m_next]);
        }
    }

    const FileFacts& m_facts;
    FileDigest& m_digest;
    const TakeListedCommand& m_take;
    std::vector<ListedCommand> m_overlooked;
    std::size_t m_next = 0;  // of those, the first that has not been handed on
    MacroCommands m_inMacros;
};

}  // namespace

bool ReadDigest(const Report& report, ReportDigest& digest, const TakeListedCommand& take) {
    digest = {};
    digest.files.resize(report.files.size());
    GroupFinder groups(digest.groups);
    for (std::size_t index = 0; index < report.files.size(); ++index) {
        const FileEntry& file = report.files[index];
        FileDigest& ofFile = digest.files[index];
        FileReading reading(file.facts, ofFile, take);
        if (!ForEachFinding(file.findings,
                            [&reading](const FindingFacts& finding) { reading.Take(finding); })) {
            return false;
        }
        reading.FinishFindings();
        if (!ForEachMacro(file.macros,
                          [&ofFile](const MacroFacts& macro) { ofFile.macros.push_back(macro); })) {
            return false;
        }
        std::size_t number = 0;
        const bool areRead = ForEachCommand(file.commands, [&](const CommandFacts& command) {
            const CommandPlace place = {index, number++};
            if (reading.IsToldOf(command)) return;
            std::size_t group = 0;
            if (!command.error.empty()) {
                ++ofFile.reasons[command.error];
                group = groups.Add(command, place);
            }
            reading.Take(command, group);
        });
        if (!areRead) return false;
        reading.Finish();
    }
    return true;
}

}  // namespace quillet::migrate
