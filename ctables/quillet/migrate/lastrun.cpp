// Between two runs somebody has worked on the sources, or asked for something else. What they want
// to know is which commands are put right by that, and which went wrong. The report of the last run
// tells what was known then; the journal does not, for it has records of results alone.
//
// A command that was put right has another text now, so equal texts are looked for first, and what
// lies between two of them, there and here, is taken for the same.
#include "migrate/lastrun.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "migrate/reportreader.h"
#include "migrate/storedtext.h"
#include "migrate/systemfiles.h"

namespace quillet::migrate {

namespace {

constexpr std::size_t kNoPlace = std::numeric_limits<std::size_t>::max();

// The places of the longest part of `numbers` that ascends, `kNoPlace` passed over.
std::vector<std::size_t> LongestAscent(const std::vector<std::size_t>& numbers) {
    std::vector<std::size_t> ends;  // by length, the place where an ascent ends lowest
    std::vector<std::size_t> before(numbers.size(), kNoPlace);
    for (std::size_t place = 0; place < numbers.size(); ++place) {
        if (numbers[place] == kNoPlace) continue;
        const auto end = std::lower_bound(
            ends.begin(), ends.end(), numbers[place],
            [&numbers](std::size_t other, std::size_t number) { return numbers[other] < number; });
        if (end != ends.begin()) before[place] = *(end - 1);
        if (end == ends.end()) {
            ends.push_back(place);
        } else {
            *end = place;
        }
    }
    std::vector<std::size_t> ascent;
    for (std::size_t place = ends.empty() ? kNoPlace : ends.back(); place != kNoPlace;
         place = before[place]) {
        ascent.push_back(place);
    }
    std::reverse(ascent.begin(), ascent.end());
    return ascent;
}

class CommandComparison {
public:
    // All are borrowed.
    CommandComparison(const std::vector<KeyedCommand>& before, const std::vector<KeyedCommand>& now,
                      FileChanges& changes, ChangeSums& sums)
        : m_changes(changes), m_sums(sums) {
        for (const KeyedCommand& command : before) {
            if (IsLegacyType(command.type)) m_before.push_back(&command);
        }
        for (const KeyedCommand& command : now) {
            if (IsLegacyType(command.type)) m_now.push_back(&command);
        }
    }

    void Run() {
        Match();
        std::vector<bool> isMatched(m_before.size());
        for (std::size_t place = 0; place < m_now.size(); ++place) {
            if (m_matches[place] == kNoPlace) continue;
            isMatched[m_matches[place]] = true;
            Tell(m_before[m_matches[place]], m_now[place]);
        }
        std::size_t nextBefore = 0;
        std::size_t nextNow = 0;
        const auto compareGap = [&](std::size_t endBefore, std::size_t endNow) {
            Commands there;
            Commands here;
            for (; nextBefore < endBefore; ++nextBefore) {
                if (!isMatched[nextBefore]) there.push_back(m_before[nextBefore]);
            }
            for (; nextNow < endNow; ++nextNow) {
                if (m_matches[nextNow] == kNoPlace) here.push_back(m_now[nextNow]);
            }
            CompareGap(there, here);
        };
        for (const std::size_t place : LongestAscent(m_matches)) {
            compareGap(m_matches[place], place);
        }
        compareGap(m_before.size(), m_now.size());
        std::sort(m_changes.mended.begin(), m_changes.mended.end());
        std::sort(m_changes.failing.begin(), m_changes.failing.end());
        std::sort(m_changes.gone.begin(), m_changes.gone.end());
    }

private:
    using Commands = std::vector<const KeyedCommand*>;

    [[nodiscard]] bool AreEqual(std::size_t before, std::size_t now) const {
        return m_before[before]->key.hash == m_now[now]->key.hash;
    }

    // Finds for each command of now the one with its text. Whoever mends one of several copies
    // would shift all others, so what is equal at both ends is matched first.
    void Match() {
        m_matches.assign(m_now.size(), kNoPlace);
        std::size_t begin = 0;
        std::size_t endBefore = m_before.size();
        std::size_t endNow = m_now.size();
        for (; begin < endBefore && begin < endNow && AreEqual(begin, begin); ++begin) {
            m_matches[begin] = begin;
        }
        while (begin < endBefore && begin < endNow && AreEqual(endBefore - 1, endNow - 1)) {
            m_matches[--endNow] = --endBefore;
        }
        std::unordered_map<std::string_view, std::vector<std::size_t>> places;
        for (std::size_t place = endBefore; place-- > begin;) {
            places[m_before[place]->key.hash].push_back(place);
        }
        for (std::size_t place = begin; place < endNow; ++place) {
            const auto found = places.find(m_now[place]->key.hash);
            if (found == places.end() || found->second.empty()) continue;
            m_matches[place] = found->second.back();
            found->second.pop_back();
        }
    }

    // What stands between two commands that are still there, then and now.
    void CompareGap(const Commands& there, const Commands& here) {
        for (const std::string_view type : kLegacyTypes) {
            const auto next = [&type](const Commands& commands, std::size_t& place) {
                while (place < commands.size() && commands[place]->type != type) ++place;
                return place < commands.size() ? commands[place++] : nullptr;
            };
            std::size_t before = 0;
            std::size_t now = 0;
            for (;;) {
                const KeyedCommand* pBefore = next(there, before);
                const KeyedCommand* pNow = next(here, now);
                if (pBefore == nullptr && pNow == nullptr) break;
                Tell(pBefore, pNow);
            }
        }
    }

    // Null where there was none, or is none any more.
    void Tell(const KeyedCommand* pBefore, const KeyedCommand* pNow) {
        const bool hasFailed = pBefore != nullptr && !pBefore->isConverted;
        if (pNow == nullptr) {
            if (!hasFailed) return;
            ++m_sums.gone;
            m_changes.gone.push_back(pBefore->firstLine);
        } else if (pNow->isConverted) {
            if (!hasFailed) return;
            ++m_sums.mended;
            m_changes.mended.push_back(pNow->firstLine);
        } else if (hasFailed) {
            ++m_sums.stillFailing;
        } else {
            ++m_sums.failing;
            m_changes.failing.push_back(pNow->firstLine);
        }
    }

    FileChanges& m_changes;
    ChangeSums& m_sums;
    Commands m_before;
    Commands m_now;
    std::vector<std::size_t> m_matches;  // for each of now the place of the one before, or kNoPlace
};

// False, too, when either cannot be read.
bool HoldTheSame(const ArrayPlace& left, const ArrayPlace& right) {
    if (left.length != right.length) return false;
    if (left.pFile == nullptr || right.pFile == nullptr) return left.pFile == right.pFile;
    std::string other;
    std::uint64_t offset = right.offset;
    return CopyStoredText(*left.pFile, left.offset, left.length, [&](const std::string& block) {
        other.resize(block.size());
        const std::ptrdiff_t count = right.pFile->ReadAt(offset, other.data(), other.size());
        offset += other.size();
        return count == static_cast<std::ptrdiff_t>(other.size()) && other == block;
    });
}

std::int64_t FailedIn(const FileFacts& facts) {
    return facts.failed + facts.unreadable + facts.overlooked;
}

// What is there to be read, or is known not to be there any more.
bool IsKnown(const FileFacts& facts) {
    return facts.outcome != FileOutcome::kFailed &&
           (facts.outcome != FileOutcome::kSkipped || facts.result == ResultState::kOrphaned);
}

class ReportComparison {
public:
    ReportComparison(const Report& before, Report& now) : m_before(before), m_now(now) {}

    // False when the commands of now cannot be read; those from before, `IsReadable` tells.
    [[nodiscard]] bool Run() {
        m_sums.started = m_before.run.started;
        const FileEntry none;
        auto before = m_before.files.begin();
        for (FileEntry& file : m_now.files) {
            for (; before != m_before.files.end() && before->facts.path < file.facts.path;
                 ++before) {
                TellGone(*before);
            }
            const bool isFound =
                before != m_before.files.end() && before->facts.path == file.facts.path;
            const bool isComparable = IsKnown(file.facts) && (!isFound || IsKnown(before->facts));
            if (isComparable && !Compare(isFound ? *before : none, file)) return false;
            if (isFound) ++before;
        }
        for (; before != m_before.files.end(); ++before) TellGone(*before);
        return true;
    }

    [[nodiscard]] bool IsReadable() const { return m_isReadable; }
    [[nodiscard]] const ChangeSums& Sums() const { return m_sums; }

private:
    // A run that was stopped has not come to all files.
    void TellGone(const FileEntry& file) {
        if (!m_now.run.isInterrupted) m_sums.gone += FailedIn(file.facts);
    }

    [[nodiscard]] bool Compare(const FileEntry& before, FileEntry& now) {
        // Nearly all files are as they were.
        if (HoldTheSame(before.commands, now.commands) &&
            HoldTheSame(before.findings, now.findings)) {
            m_sums.stillFailing += FailedIn(now.facts);
            return true;
        }
        std::vector<KeyedCommand> commandsBefore;
        std::vector<KeyedCommand> commandsNow;
        if (!ReadKeyedCommands(before, commandsBefore)) m_isReadable = false;
        if (!ReadKeyedCommands(now, commandsNow)) return false;
        CompareCommands(commandsBefore, commandsNow, now.changes, m_sums);
        return true;
    }

    const Report& m_before;
    Report& m_now;
    ChangeSums m_sums;
    bool m_isReadable = true;
};

}  // namespace

void CompareCommands(const std::vector<KeyedCommand>& before, const std::vector<KeyedCommand>& now,
                     FileChanges& changes, ChangeSums& sums) {
    CommandComparison(before, now, changes, sums).Run();
}

bool CompareWithLastRun(const TargetFolder& target, Report& report) {
    std::error_code ignored;
    const std::unique_ptr<StoredFile> file =
        StoredFile::Open(*target.RootFolder(), target.ReportName(".json"), ignored);
    Report before;
    // Of most files nothing has changed, so their commands are compared as they stand there.
    if (file == nullptr || !ReadFilesOfReport(*file, before)) return true;
    ReportComparison comparison(before, report);
    if (!comparison.Run()) return false;
    if (comparison.IsReadable()) {
        report.sinceLastRun = comparison.Sums();
    } else {
        for (FileEntry& entry : report.files) entry.changes = {};
    }
    return true;
}

}  // namespace quillet::migrate
