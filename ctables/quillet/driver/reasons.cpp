#include "driver/reasons.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>

#include "driver/messagecatalogue.h"
#include "platform/assertion.h"

namespace quillet {

namespace {

constexpr std::string_view kModule = "reasons";

// The rows stand in the order of the kinds, of which the first has none.
constexpr bool StandsWhereItsKindSays() {
    for (std::size_t row = 0; row < std::size(kReasons); ++row) {
        if (static_cast<std::size_t>(kReasons[row].kind) != row + 1) return false;
    }
    return std::size(kReasons) == static_cast<std::size_t>(ErrorKind::kUnknown);
}
static_assert(StandsWhereItsKindSays());

constexpr std::string_view kNotEnoughMemory =
    kReasons[static_cast<std::size_t>(ErrorKind::kOutOfMemory) - 1].message;

}  // namespace

const Reason& ReasonOf(ErrorKind kind) {
    const Reason& unknown = kReasons[std::size(kReasons) - 1];
    if (kind == ErrorKind::kNone) return unknown;
    const auto number = static_cast<std::size_t>(kind);
    return QUILLET_ASSERT(number <= std::size(kReasons), "0") ? kReasons[number - 1] : unknown;
}

std::string_view NameOf(ErrorKind kind) {
    return kind == ErrorKind::kNone ? "none" : ReasonOf(kind).name;
}

ErrorKind ErrorKindOf(ParseErrorKind kind) {
    switch (kind) {
        case ParseErrorKind::kNone:
            return ErrorKind::kUnknown;
#define QUILLET_TOKENIZING_REASON(kind, name, message, heading) \
    case ParseErrorKind::kind:                                  \
        return ErrorKind::kind;
#include "quillet-messages.def"
    }
    QUILLET_ASSERT(false, "0");
    return ErrorKind::kUnknown;
}

ErrorKind ErrorKindOf(TablesErrorKind kind) {
    switch (kind) {
        case TablesErrorKind::kNone:
            return ErrorKind::kUnknown;
#define QUILLET_TABLES_REASON(kind, name, message, heading) \
    case TablesErrorKind::kind:                             \
        return ErrorKind::kind;
#include "quillet-messages.def"
    }
    QUILLET_ASSERT(false, "0");
    return ErrorKind::kUnknown;
}

OutOfMemoryLine::OutOfMemoryLine(long line) noexcept {
    constexpr std::string_view kPlaceholder = "%ld";
    constexpr std::size_t kPosition = kNotEnoughMemory.find(kPlaceholder);
    constexpr std::size_t kMostDigits = 20;
    static_assert(kPosition != std::string_view::npos);
    static_assert(kNotEnoughMemory.size() + kMostDigits <= kMostBytes);
    char* pEnd = std::copy_n(kNotEnoughMemory.data(), kPosition, m_text.data());
    pEnd = std::to_chars(pEnd, pEnd + kMostDigits, line).ptr;
    const std::string_view rest = kNotEnoughMemory.substr(kPosition + kPlaceholder.size());
    pEnd = std::copy_n(rest.data(), rest.size(), pEnd);
    m_size = static_cast<std::size_t>(pEnd - m_text.data());
}

std::optional<std::string_view> FilledIn(std::string_view format, std::string_view message) {
    constexpr std::string_view kPlaceholder = "%s";
    const std::size_t position = format.find(kPlaceholder);
    if (position == std::string_view::npos) {
        return message == format ? std::optional(std::string_view()) : std::nullopt;
    }
    const std::string_view before = format.substr(0, position);
    const std::string_view after = format.substr(position + kPlaceholder.size());
    if (message.size() < before.size() + after.size() || !message.starts_with(before) ||
        !message.ends_with(after)) {
        return std::nullopt;
    }
    return message.substr(before.size(), message.size() - before.size() - after.size());
}

std::string MessageOf(const Warning& warning) {
    switch (warning.kind) {
#define QUILLET_WARNING(kind, message) \
    case WarningKind::kind:            \
        return FillMessage(message, warning.name);
#include "quillet-messages.def"
    }
    QUILLET_ASSERT(false, "0");
    return {};
}

}  // namespace quillet
