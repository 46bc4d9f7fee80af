#include "platform/interruption.h"

#include <pthread.h>
#include <unistd.h>

#include <system_error>

namespace quillet {

namespace {

// Wakes the waiting thread at the end, and means nothing otherwise.
constexpr int kWakeUp = SIGUSR1;

bool IsIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

// A thread that waits may do whatever it needs, which a signal handler may not.
Interruption::Interruption(std::stop_source& stop, int status) : m_stop(stop), m_status(status) {
    sigemptyset(&m_signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        if (!IsIgnored(signal)) sigaddset(&m_signals, signal);
    }
    sigaddset(&m_signals, kWakeUp);
    pthread_sigmask(SIG_BLOCK, &m_signals, &m_earlierMask);
    try {
        m_thread = std::thread([this] { Wait(); });
    } catch (const std::system_error&) {
        // The system allows for no further thread. Signals then do what they always do.
        pthread_sigmask(SIG_SETMASK, &m_earlierMask, nullptr);
    }
}

Interruption::~Interruption() {
    if (!m_thread.joinable()) return;
    m_isOver = true;
    pthread_kill(m_thread.native_handle(), kWakeUp);
    m_thread.join();
    pthread_sigmask(SIG_SETMASK, &m_earlierMask, nullptr);
}

void Interruption::Wait() {
    while (!m_isOver) {
        int signal = 0;
        if (sigwait(&m_signals, &signal) != 0 || signal == kWakeUp) continue;
        if (!m_stop.request_stop()) _exit(m_status);
    }
}

}  // namespace quillet
