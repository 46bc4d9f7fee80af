// The order is what a crash leaves intact: the bytes of the results, the records that tell about
// them, and only then their names. A name that appears therefore stands for a whole file with a
// record, and a record without its result is one of a result that is made again.
#include "migrate/resultpublisher.h"

#include <utility>

namespace quillet::migrate {

namespace {

constexpr std::size_t kBatchSize = 32;
constexpr std::chrono::seconds kLongestWait(1);
// Work on this many bytes may take about as long.
constexpr std::uint64_t kMuchWork = 4UL * 1024 * 1024;

}  // namespace

void ResultPublisher::Add(std::unique_ptr<NewFile> result, FinishedFile file) {
    std::vector<Pending> batch;
    {
        const std::lock_guard lock(m_mutex);
        if (m_pending.empty()) m_oldest = Clock::now();
        m_pending.push_back({std::move(result), std::move(file)});
        if (m_pending.size() < kBatchSize) return;
        batch = std::exchange(m_pending, {});
    }
    Publish(std::move(batch));
}

void ResultPublisher::PrepareFor(std::uint64_t bytes) {
    std::vector<Pending> batch;
    {
        const std::lock_guard lock(m_mutex);
        if (m_pending.empty()) return;
        if (bytes < kMuchWork && Clock::now() - m_oldest < kLongestWait) return;
        batch = std::exchange(m_pending, {});
    }
    Publish(std::move(batch));
}

void ResultPublisher::Flush() {
    std::vector<Pending> batch;
    {
        const std::lock_guard lock(m_mutex);
        batch = std::exchange(m_pending, {});
    }
    Publish(std::move(batch));
}

void ResultPublisher::Publish(std::vector<Pending> batch) {
    if (batch.empty()) return;
    std::error_code journalError;
    std::vector<bool> areSynced;
    areSynced.reserve(batch.size());
    for (const Pending& pending : batch) areSynced.push_back(pending.result->Sync());
    const bool areRecorded = m_journal.Sync(journalError);
    for (std::size_t index = 0; index < batch.size(); ++index) {
        auto& [result, file] = batch[index];
        if (!areRecorded) {
            MarkAsFailed(file.entry.facts, "the result cannot be recorded", journalError);
        } else if (!areSynced[index]) {
            MarkAsFailed(file.entry.facts, "the result cannot be written", result->Error());
        } else {
            GiveName(*result, file.entry.facts);
        }
        if (file.entry.facts.outcome == FileOutcome::kFailed) {
            m_progress.failures.fetch_add(1, std::memory_order_relaxed);
            file.identity.reset();
        } else {
            const std::lock_guard lock(m_mutex);
            m_folders.emplace(FolderPartOf(file.entry.facts.path));
        }
        m_journal.Note(std::move(file));
    }
}

// Someone may have moved the folder meanwhile; then the result would be elsewhere, and this may be
// in the source.
void ResultPublisher::GiveName(NewFile& result, FileFacts& facts) const {
    FolderProblem problem;
    const std::shared_ptr<const Folder> folder =
        m_target.OpenFolder(FolderPartOf(facts.path), problem);
    if (folder == nullptr) return MarkAsFailed(facts, problem.message, {});
    if (folder->Identity() != result.InFolder()->Identity()) {
        return MarkAsFailed(facts, "the folder of its result was replaced while it was converted",
                            {});
    }
    if (!result.Publish(NamePartOf(facts.path))) {
        MarkAsFailed(facts, "the result cannot be written", result.Error());
    }
}

}  // namespace quillet::migrate
