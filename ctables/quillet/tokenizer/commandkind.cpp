#include "tokenizer/commandkind.h"

#include <cstddef>

#include "tokenizer/mbcharpointer.h"
#include "tokenizer/scanning.h"
#include "tokenizer/tavqtoken.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

constexpr std::size_t kWholeText = 0;

// The first words of commands whose body is no syntax.
struct SpecialWord {
    std::string_view word;
    std::size_t bytesCompared;
    SpecialCommandState state;
};

constexpr SpecialWord kSpecialWords[] = {
    {"*", kSignificantBytes, SpecialCommandState::kComment},
    {"COMMENT", kSignificantBytes, SpecialCommandState::kComment},
    {"**", kSignificantBytes, SpecialCommandState::kComment},
    {"*>", kSignificantBytes, SpecialCommandState::kComment},
    {"DOCUMENT", kSignificantBytes, SpecialCommandState::kDocument},
    {"BEGIN", kWholeText, SpecialCommandState::kBeginSeen},
};

constexpr AsciiSet kSpecialWordStart = [] {
    AsciiSet starts = kQuotes;
    for (const SpecialWord& special : kSpecialWords) {
        const char first = special.word.front();
        starts = starts.WithRange(first, first);
        if ('A' <= first && first <= 'Z') {
            const char small = static_cast<char>(first - 'A' + 'a');
            starts = starts.WithRange(small, small);
        }
    }
    return starts;
}();

}  // namespace

CommandKind KindOf(SpecialCommandState state) {
    switch (state) {
        case SpecialCommandState::kComment:
            return CommandKind::kComment;
        case SpecialCommandState::kDocument:
            return CommandKind::kDocument;
        case SpecialCommandState::kBeginData:
            return CommandKind::kInlineData;
        default:
            return CommandKind::kOrdinary;
    }
}

SpecialCommandState StateAfterFirst(std::string_view value) {
    for (const SpecialWord& special : kSpecialWords) {
        if (CompareTextPrefix(value, special.word, special.bytesCompared) == 0) {
            return special.state;
        }
    }
    return SpecialCommandState::kFirstTokenSeen;
}

SpecialCommandState StateAfterBegin(std::string_view value) {
    // The period of "BEGIN DATA." is part of the word.
    return value == "DATA" || value == "DATA." ? SpecialCommandState::kBeginData
                                               : SpecialCommandState::kFirstTokenSeen;
}

bool MayBeginSpecialCommand(char firstByte) { return kSpecialWordStart.Has(firstByte); }

}  // namespace quillet
