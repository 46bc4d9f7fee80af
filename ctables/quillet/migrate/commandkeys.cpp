// Lines move whenever somebody works on a file, so a command is known by its text. Copies of one
// text are told apart by their order, which is all that there is, and which holds as long as there
// are as many of them.
#include "migrate/commandkeys.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "migrate/macrocommands.h"
#include "migrate/storedfacts.h"
#include "quillet.h"

namespace quillet::migrate {

namespace {

constexpr std::size_t kHashDigits = 16;
constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::string_view kOuterBlanks = " \t\n\v\f\r";

// What was overlooked is cut out from its word on; the same command, once it is met, brings along
// the blanks around it, and the sign that begins it in batch layout.
std::string_view BareTextOf(std::string_view text) {
    std::size_t begin = text.find_first_not_of(kOuterBlanks);
    if (begin != std::string_view::npos && (text[begin] == '+' || text[begin] == '-')) {
        begin = text.find_first_not_of(kOuterBlanks, begin + 1);
    }
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kOuterBlanks) + 1 - begin);
}

// Which of several equal ones it is, and of how many, stays open.
KeyedCommand WithKey(std::string_view text, const std::string& type, bool isConverted,
                     std::int64_t firstLine) {
    KeyedCommand command;
    command.key.hash = TextHashOf(BareTextOf(text));
    command.type = type;
    command.isConverted = isConverted;
    command.firstLine = firstLine;
    return command;
}

}  // namespace

std::string TextHashOf(std::string_view text) {
    constexpr std::uint64_t kOffset = 0xCBF29CE484222325;
    constexpr std::uint64_t kPrime = 0x100000001B3;
    constexpr unsigned kBitsOfDigit = 4;
    std::uint64_t hash = kOffset;
    for (const char byte : text) hash = (hash ^ static_cast<unsigned char>(byte)) * kPrime;
    std::string digits(kHashDigits, '0');
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, hash >>= kBitsOfDigit) {
        *digit = kDigits[hash % kDigits.size()];
    }
    return digits;
}

bool IsTextHash(std::string_view text) {
    return text.size() == kHashDigits && text.find_first_not_of(kDigits) == std::string_view::npos;
}

bool ReadKeyedCommands(const FileEntry& file, std::vector<KeyedCommand>& commands) {
    commands.clear();
    std::vector<KeyedCommand> overlooked;
    MacroCommands inMacros;
    const bool areFindingsRead = ForEachFinding(file.findings, [&](const FindingFacts& finding) {
        inMacros.Take(finding);
        if (!IsOverlooked(finding)) return;
        overlooked.push_back(WithKey(finding.text, finding.command, false, finding.firstLine));
    });
    const bool areRead =
        areFindingsRead && ForEachCommand(file.commands, [&](const CommandFacts& command) {
            if (inMacros.Hold(command)) return;
            const bool isConverted = command.outcome == NameOf(CommandOutcome::kConverted);
            commands.push_back(
                WithKey(command.source, command.type, isConverted, command.firstLine));
        });
    if (!areRead) return false;
    std::move(overlooked.begin(), overlooked.end(), std::back_inserter(commands));
    std::stable_sort(commands.begin(), commands.end(),
                     [](const KeyedCommand& left, const KeyedCommand& right) {
                         return left.firstLine < right.firstLine;
                     });
    std::unordered_map<std::string_view, std::int64_t> counts;
    for (KeyedCommand& command : commands) command.key.number = ++counts[command.key.hash];
    for (KeyedCommand& command : commands) command.key.copies = counts[command.key.hash];
    return true;
}

}  // namespace quillet::migrate
