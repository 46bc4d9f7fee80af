#include "tokenizer/variablenames.h"

#include <string>

#include "platform/multibyte.h"
#include "tokenizer/mbcharpointer.h"
#include "tokenizer/scanning.h"
#include "tokenizer/tavqtoken.h"
#include "tokenizer/words.h"

namespace quillet {

namespace {

constexpr AsciiSet kBadStarts = kDigits.With("._");

bool IsReservedWord(const CodePage& codePage, std::string_view name) {
    return name.size() <= kLongestReservedWord &&
           ReservedWordOperator(TAVQMBstrupr_A(codePage, name)) != TokenCodes::kNotOperator;
}

}  // namespace

std::string_view WithoutTrailingBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

bool IsNameCharacter(const CodePage& codePage, std::string_view text) {
    if (TAVQMBmblen_A(codePage, text.data(), text.size()) == 0) return false;
    return static_cast<unsigned char>(text.front()) >= 128 || kNameContinuation.Has(text.front());
}

NameClass ClassifyName(const CodePage& codePage, std::string_view name) {
    name = WithoutTrailingBlanks(name);
    if (name.empty() || name.size() > kMaxNameLength) return NameClass::kBadLength;
    for (std::string_view rest = name; !rest.empty();) {
        if (!IsNameCharacter(codePage, rest)) return NameClass::kBadCharacter;
        rest.remove_prefix(TAVQMBmblen_A(codePage, rest.data(), rest.size()));
    }
    if (kBadStarts.Has(name.front())) return NameClass::kBadStart;
    if (IsReservedWord(codePage, name)) return NameClass::kReservedWord;
    if (name.front() == '#') return NameClass::kScratch;
    if (name.front() == '$') return NameClass::kSystem;
    return NameClass::kOrdinary;
}

int VariableNameClass(const CodePage& codePage, const TokenSequenceBase& sequence) {
    if (sequence.Type() != TokenSequenceBase::kString) return 0;
    const char* chars = nullptr;
    std::size_t length = 0;
    sequence.GetSourceText(chars, length);
    switch (ClassifyName(codePage, {chars, length})) {
        case NameClass::kOrdinary:
            return 1;
        case NameClass::kScratch:
            return 2;
        case NameClass::kSystem:
            return 3;
        default:
            return 0;
    }
}

}  // namespace quillet
