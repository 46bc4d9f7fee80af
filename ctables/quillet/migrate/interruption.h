// Lets the user stop a run from outside.
#ifndef QUILLET_MIGRATE_INTERRUPTION_H
#define QUILLET_MIGRATE_INTERRUPTION_H

#include <atomic>
#include <csignal>
#include <stop_token>
#include <thread>

namespace quillet::migrate {

/// While it lives, the first SIGINT, SIGTERM or SIGHUP requests a stop, and the second ends the
/// program at once. Signals that the program was started to ignore stay ignored. To be made
/// before other threads are: they inherit what it arranges.
class Interruption {
public:
    explicit Interruption(std::stop_source& stop);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

private:
    void Wait();

    std::stop_source& m_stop;
    sigset_t m_signals{};
    sigset_t m_earlierMask{};
    std::atomic<bool> m_isOver = false;
    std::thread m_thread;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_INTERRUPTION_H
