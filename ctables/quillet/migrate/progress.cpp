#include "migrate/progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <system_error>

#include "platform/numbertext.h"
#include "platform/process.h"
#include "platform/system.h"

namespace quillet::migrate {

namespace {

using namespace std::chrono_literals;

constexpr auto kTerminalInterval = 200ms;
constexpr auto kPlainInterval = 10s;
constexpr double kMegabyte = 1e6;
constexpr double kPercent = 100;
// Back to the line's beginning, and what is after the cursor goes away.
constexpr std::string_view kLineStart = "\r";
constexpr std::string_view kClearRest = "\x1b[K";

}  // namespace

std::string FormatDuration(double seconds) {
    constexpr std::int64_t kSixty = 60;
    // A run that hardly moves would take longer than whole numbers can tell. What is no number at
    // all counts as no time.
    constexpr double kLongest = 1e12;
    const auto whole =
        static_cast<std::int64_t>(std::ceil(std::fmin(std::fmax(seconds, 0), kLongest)));
    if (whole < kSixty) return std::to_string(whole) + " s";
    const std::int64_t minutes = whole / kSixty;
    if (minutes < kSixty) {
        return std::to_string(minutes) + " min " + std::to_string(whole % kSixty) + " s";
    }
    return std::to_string(minutes / kSixty) + " h " + std::to_string(minutes % kSixty) + " min";
}

std::string FormatProgress(const ProgressCounters& counters, double seconds) {
    const auto bytes = static_cast<double>(counters.bytes.load());
    const auto allBytes = static_cast<double>(counters.allBytes);
    const double share = allBytes > 0 ? std::fmin(bytes / allBytes, 1) : 1;
    std::string text = std::to_string(counters.files.load()) + "/" +
                       std::to_string(counters.allFiles) + " files (" +
                       std::to_string(static_cast<int>(share * kPercent)) + "%), " +
                       std::to_string(counters.commands.load()) + " commands, " +
                       std::to_string(counters.failures.load()) + " failures, " +
                       std::to_string(counters.overlooked.load()) + " overlooked";
    if (seconds > 0) text += ", " + FixedText(bytes / kMegabyte / seconds, 1) + " MB/s";
    if (share > 0) text += ", " + FormatDuration(seconds * (1 - share) / share) + " left";
    return text;
}

ProgressDisplay::ProgressDisplay(const ProgressCounters& counters, bool isQuiet)
    : m_counters(counters),
      m_isTerminal(IsErrorTerminal()),
      m_start(std::chrono::steady_clock::now()) {
    if (isQuiet) return;
    try {
        m_thread = std::jthread([this](const std::stop_token& stop) { Run(stop); });
    } catch (const std::system_error&) {
        // The system allows for no further thread. The work is worth more than its display.
    }
}

ProgressDisplay::~ProgressDisplay() {
    if (!m_thread.joinable()) return;
    m_thread.request_stop();
    m_thread.join();
    if (m_isTerminal) WriteToStream(stderr, std::string(kLineStart).append(kClearRest));
}

void ProgressDisplay::Run(const std::stop_token& stop) {
    const std::chrono::milliseconds interval = m_isTerminal ? kTerminalInterval : kPlainInterval;
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested()) {
        m_wakeUp.wait_for(lock, stop, interval, [] { return false; });
        if (!stop.stop_requested()) Show();
    }
}

void ProgressDisplay::Show() const {
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
    std::string text = FormatProgress(m_counters, elapsed.count());
    if (!m_isTerminal) {
        WriteToStream(stderr, text.append("\n"));
        return;
    }
    // A line that is wrapped could not be written over.
    text.resize(std::min(text.size(), ErrorTerminalWidth() - 1));
    WriteToStream(stderr, std::string(kLineStart).append(text).append(kClearRest));
}

}  // namespace quillet::migrate
