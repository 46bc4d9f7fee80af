#include "macro/fault.h"

#include <cstddef>

namespace quillet::macro {

namespace {

struct Words {
    std::string_view name;
    std::string_view message;
};

constexpr Words kWords[] = {
#define QUILLET_MACRO_FAULT(kind, name, message) {name, message},
#include "macro/faults.def"
};

const Words& WordsOf(FaultKind kind) { return kWords[static_cast<std::size_t>(kind)]; }

}  // namespace

std::string_view NameOf(FaultKind kind) { return WordsOf(kind).name; }

std::string ReasonText(const Fault& fault) {
    constexpr std::string_view kPlace = "%s";
    const std::string_view message = WordsOf(fault.kind).message;
    const std::size_t place = message.find(kPlace);
    std::string text(message.substr(0, place));
    if (place != std::string_view::npos) {
        text += fault.name;
        text += message.substr(place + kPlace.size());
    }
    text += " (line ";
    text += std::to_string(fault.line);
    if (!fault.file.empty()) text.append(" of ").append(fault.file);
    text += ')';
    return text;
}

}  // namespace quillet::macro
