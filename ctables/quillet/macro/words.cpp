#include "macro/words.h"

#include <cstddef>
#include <limits>

namespace quillet::macro {

namespace {

constexpr int kAnyNumber = std::numeric_limits<int>::max();

struct FunctionWord {
    std::string_view word;
    OperandCount operands;
};

// By their values.
constexpr FunctionWord kFunctions[] = {
    {"!LENGTH", {1, 1}}, {"!CONCAT", {1, kAnyNumber}},
    {"!SUBSTR", {2, 3}}, {"!INDEX", {2, 2}},
    {"!HEAD", {1, 1}},   {"!TAIL", {1, 1}},
    {"!QUOTE", {1, 1}},  {"!UNQUOTE", {1, 1}},
    {"!UPCASE", {1, 1}}, {"!BLANKS", {1, 1}},
    {"!EVAL", {1, 1}},
};

constexpr std::string_view kStatements[] = {
    "!IF", "!ELSE", "!IFEND", "!DO", "!DOEND", "!LET", "!BREAK", "!OFFEXPAND", "!ONEXPAND",
};

}  // namespace

std::optional<Statement> StatementOf(std::string_view word) {
    for (std::size_t i = 0; i < std::size(kStatements); ++i) {
        if (word == kStatements[i]) return static_cast<Statement>(i);
    }
    return std::nullopt;
}

std::optional<Function> FunctionOf(std::string_view word) {
    for (std::size_t i = 0; i < std::size(kFunctions); ++i) {
        if (IsShortFor(word, kFunctions[i].word)) return static_cast<Function>(i);
    }
    return std::nullopt;
}

std::string_view WordOf(Function function) {
    return kFunctions[static_cast<std::size_t>(function)].word;
}

OperandCount OperandCountOf(Function function) {
    return kFunctions[static_cast<std::size_t>(function)].operands;
}

bool IsShortFor(std::string_view word, std::string_view whole) {
    constexpr std::size_t kLeastLength = 4;
    return word.size() >= kLeastLength && whole.starts_with(word);
}

}  // namespace quillet::macro
