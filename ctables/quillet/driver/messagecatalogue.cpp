#include "driver/messagecatalogue.h"

#include <algorithm>
#include <charconv>

namespace quillet {

namespace {

void ReplaceFirst(std::string& message, std::string_view placeholder, std::string_view text) {
    const std::size_t position = message.find(placeholder);
    if (position != std::string::npos) message.replace(position, placeholder.size(), text);
}

}  // namespace

OutOfMemoryLine::OutOfMemoryLine(long line) noexcept {
    constexpr std::string_view kPlaceholder = "%ld";
    constexpr std::size_t kPosition = kNotEnoughMemory.find(kPlaceholder);
    static_assert(kPosition != std::string_view::npos);
    char* pEnd = std::copy_n(kNotEnoughMemory.data(), kPosition, m_text.data());
    pEnd = std::to_chars(pEnd, pEnd + kMostDigits, line).ptr;
    const std::string_view rest = kNotEnoughMemory.substr(kPosition + kPlaceholder.size());
    pEnd = std::copy_n(rest.data(), rest.size(), pEnd);
    m_size = static_cast<std::size_t>(pEnd - m_text.data());
}

std::string FillMessage(std::string_view format, std::string_view text) {
    std::string message(format);
    ReplaceFirst(message, "%s", text);
    return message;
}

std::string MessageOf(const Warning& warning) {
    switch (warning.kind) {
        case WarningKind::kObsoleteSubcommand:
            return FillMessage(kObsoleteSubcommand, warning.name);
        case WarningKind::kUnknownSubcommand:
            return FillMessage(kUnknownSubcommand, warning.name);
        case WarningKind::kObsoleteFormat:
            break;
    }
    return std::string(kObsoleteFormat);
}

std::string FillPosition(std::string_view format, long line, int column) {
    std::string message(format);
    ReplaceFirst(message, "%ld", std::to_string(line));
    ReplaceFirst(message, "%d", std::to_string(column));
    return message;
}

}  // namespace quillet
