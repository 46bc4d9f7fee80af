// Lets the user stop the program from outside. There is no Windows side yet.
#ifndef QUILLET_PLATFORM_INTERRUPTION_H
#define QUILLET_PLATFORM_INTERRUPTION_H

#include <atomic>
#include <csignal>
#include <stop_token>
#include <thread>

namespace quillet {

/// While it lives, the first SIGINT, SIGTERM or SIGHUP requests a stop, and the second ends the
/// program at once, with the exit status that it was given. Signals that the program was started to
/// ignore stay ignored. To be made before other threads are: they inherit what it arranges.
class Interruption {
public:
    /// Borrows `stop`.
    Interruption(std::stop_source& stop, int status);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

private:
    void Wait();

    std::stop_source& m_stop;
    int m_status;
    sigset_t m_signals{};
    sigset_t m_earlierMask{};
    std::atomic<bool> m_isOver = false;
    std::thread m_thread;
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_INTERRUPTION_H
