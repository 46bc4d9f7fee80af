#include "driver/legacywords.h"

#include <algorithm>
#include <string>

#include "driver/commandwords.h"
#include "igraph/convertgraph.h"
#include "parser/tbtrtablescommand.h"
#include "platform/multibyte.h"
#include "tokenizer/scanning.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

// The number of letters at `offset` when they are `word`, shortened or not, and nothing that could
// belong to a name follows; else 0.
std::size_t LengthOfWord(std::string_view text, std::size_t offset, std::string_view word) {
    std::size_t length = 0;
    while (length < word.size() && offset + length < text.size() &&
           UpperAscii(text[offset + length]) == word[length]) {
        ++length;
    }
    if (length < kSignificantBytes) return 0;
    if (offset + length == text.size()) return length;
    const char next = text[offset + length];
    const bool goesOn = static_cast<unsigned char>(next) > 127 || kNameContinuation.Has(next);
    return goesOn ? 0 : length;
}

// The offset of the next token; that of the text's end when there is none.
std::size_t SkipSeparators(std::string_view text, std::size_t offset) {
    while (true) {
        offset = std::min(text.find_first_not_of(kWhiteSpace, offset), text.size());
        if (text.substr(offset, 2) != "/*") return offset;
        const std::size_t lineEnd = std::min(text.find_first_of("\r\n", offset), text.size());
        const std::size_t end = text.substr(0, lineEnd).find("*/", offset + 2);
        offset = end == std::string_view::npos ? lineEnd : end + 2;
    }
}

std::string WordInUpperCase(std::string_view text, std::size_t offset) {
    return InUpperAscii(text.substr(offset, WordLength(text.substr(offset, kSignificantBytes))));
}

bool IsSubcommandOf(CommandType type, std::string_view word) {
    return type == CommandType::kTables ? TablesCommand::IsSubcommand(word)
                                        : igraph::IsSubcommand(word);
}

}  // namespace

CommandType LegacyCommandAt(std::string_view text, std::size_t offset) {
    if (offset >= text.size() || !kAsciiLetters.Has(text[offset])) return CommandType::kOrdinary;
    for (const CommandType type : {CommandType::kTables, CommandType::kIgraph}) {
        const std::size_t length = LengthOfWord(text, offset, WordOf(type));
        if (length == 0) continue;
        const std::size_t next = SkipSeparators(text, offset + length);
        if (next == text.size()) continue;
        if (text[next] == '/' || IsSubcommandOf(type, WordInUpperCase(text, next))) return type;
    }
    return CommandType::kOrdinary;
}

std::string_view WordOf(CommandType type) {
    switch (type) {
        case CommandType::kTables:
            return "TABLES";
        case CommandType::kIgraph:
            return "IGRAPH";
        default:
            return {};
    }
}

}  // namespace quillet
