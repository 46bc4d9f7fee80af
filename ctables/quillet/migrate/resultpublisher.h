// Gives results their names once they are on the disk.
#ifndef QUILLET_MIGRATE_RESULTPUBLISHER_H
#define QUILLET_MIGRATE_RESULTPUBLISHER_H

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "migrate/journal.h"
#include "migrate/progress.h"
#include "migrate/systemfiles.h"
#include "migrate/targetfolder.h"

namespace quillet::migrate {

/// Collects results that are complete and recorded, and publishes several at a time: to wait for
/// the disk once for each file takes several times as long as all the rest. From any thread.
class ResultPublisher {
public:
    /// Borrows everything.
    ResultPublisher(Journal& journal, const TargetFolder& target, ProgressCounters& progress)
        : m_journal(journal), m_target(target), m_progress(progress) {}

    /// Takes a result for which `NewFile::Complete` and then `Journal::Record` have succeeded, and
    /// what is to be noted when it has its name.
    void Add(std::unique_ptr<NewFile> result, FinishedFile file);

    /// Before work that takes `bytes` begins: publishes what would have to wait for too long.
    void PrepareFor(std::uint64_t bytes);

    /// Publishes all.
    void Flush();

    /// The folders ("" for TARGET) of everything that was published. When nothing is any more.
    [[nodiscard]] const std::set<std::string>& Folders() const { return m_folders; }

private:
    using Clock = std::chrono::steady_clock;

    struct Pending {
        std::unique_ptr<NewFile> result;
        FinishedFile file;
    };

    void Publish(std::vector<Pending> batch);
    void GiveName(NewFile& result, FileFacts& facts) const;

    Journal& m_journal;
    const TargetFolder& m_target;
    ProgressCounters& m_progress;
    std::mutex m_mutex;  // for everything below
    std::vector<Pending> m_pending;
    Clock::time_point m_oldest;
    std::set<std::string> m_folders;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_RESULTPUBLISHER_H
