// Shows how far a run has come.
#ifndef QUILLET_MIGRATE_PROGRESS_H
#define QUILLET_MIGRATE_PROGRESS_H

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

namespace quillet::migrate {

/// Counted by all threads of a run.
struct ProgressCounters {
    std::uint64_t allFiles = 0;  ///< Set before the threads start.
    std::uint64_t allBytes = 0;
    std::atomic<std::uint64_t> files = 0;
    std::atomic<std::uint64_t> bytes = 0;
    std::atomic<std::uint64_t> commands = 0;
    std::atomic<std::uint64_t> failures = 0;  ///< Of commands and of files.
    std::atomic<std::uint64_t> overlooked = 0;
};

/// "12/40 files (30%), 600 commands, 7 failures, 2 overlooked, 3.2 MB/s, 5 s left".
[[nodiscard]] std::string FormatProgress(const ProgressCounters& counters, double seconds);

/// "5 s", "3 min 20 s", "2 h 5 min".
[[nodiscard]] std::string FormatDuration(double seconds);

/// While it lives, writes to standard error: on a terminal one line that changes, elsewhere a
/// line every ten seconds.
class ProgressDisplay {
public:
    /// Borrows `counters`. When `isQuiet` nothing is shown.
    ProgressDisplay(const ProgressCounters& counters, bool isQuiet);
    ~ProgressDisplay();
    ProgressDisplay(const ProgressDisplay&) = delete;
    ProgressDisplay& operator=(const ProgressDisplay&) = delete;

private:
    void Run(const std::stop_token& stop);
    void Show() const;

    const ProgressCounters& m_counters;
    bool m_isTerminal;
    std::chrono::steady_clock::time_point m_start;
    std::mutex m_mutex;
    std::condition_variable_any m_wakeUp;
    std::jthread m_thread;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_PROGRESS_H
