#include "migrate/timetext.h"

#include <algorithm>
#include <chrono>

#include "platform/numbertext.h"

namespace quillet::migrate {

std::string FormatTime(std::int64_t secondsSince1970) {
    const std::chrono::sys_seconds time{
        std::chrono::seconds(std::clamp(secondsSince1970, kFirstTime, kLastTime))};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    const auto digits = [](auto number, int width) {
        return PaddedText(static_cast<std::uint64_t>(number), width);
    };
    return digits(static_cast<int>(date.year()), 4) + "-" +
           digits(static_cast<unsigned>(date.month()), 2) + "-" +
           digits(static_cast<unsigned>(date.day()), 2) + "T" + digits(clock.hours().count(), 2) +
           ":" + digits(clock.minutes().count(), 2) + ":" + digits(clock.seconds().count(), 2) +
           "Z";
}

std::optional<std::int64_t> ParseTime(std::string_view text) {
    constexpr std::string_view kPattern = "0000-00-00T00:00:00Z";
    if (text.size() != kPattern.size()) return std::nullopt;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const bool isDigit = text[index] >= '0' && text[index] <= '9';
        if (kPattern[index] == '0' ? !isDigit : text[index] != kPattern[index]) return std::nullopt;
    }
    const auto number = [text](std::size_t position, std::size_t length) {
        constexpr unsigned kBase = 10;
        unsigned value = 0;
        for (const char digit : text.substr(position, length)) {
            value = value * kBase + static_cast<unsigned>(digit - '0');
        }
        return value;
    };
    const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(number(0, 4))),
                                           std::chrono::month(number(5, 2)),
                                           std::chrono::day(number(8, 2))};
    const std::chrono::hours hours(number(11, 2));
    const std::chrono::minutes minutes(number(14, 2));
    const std::chrono::seconds seconds(number(17, 2));
    if (!date.ok() || hours >= std::chrono::days(1) || minutes >= std::chrono::hours(1) ||
        seconds >= std::chrono::minutes(1)) {
        return std::nullopt;
    }
    const std::chrono::sys_seconds time = std::chrono::sys_days{date} + hours + minutes + seconds;
    return time.time_since_epoch().count();
}

}  // namespace quillet::migrate
