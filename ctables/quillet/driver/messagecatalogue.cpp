#include "driver/messagecatalogue.h"

#include <cstddef>

namespace quillet {

namespace {

void ReplaceFirst(std::string& message, std::string_view placeholder, std::string_view text) {
    const std::size_t position = message.find(placeholder);
    if (position != std::string::npos) message.replace(position, placeholder.size(), text);
}

}  // namespace

std::string FillMessage(std::string_view format, std::string_view text) {
    std::string message(format);
    ReplaceFirst(message, "%s", text);
    return message;
}

std::string FillPosition(std::string_view format, long line, int column) {
    std::string message(format);
    ReplaceFirst(message, "%ld", std::to_string(line));
    ReplaceFirst(message, "%d", std::to_string(column));
    return message;
}

}  // namespace quillet
