#include "tokenizer/variablenames.h"

#include <algorithm>

#include "platform/multibyte.h"
#include "tokenizer/mbcharpointer.h"

namespace quillet {

namespace {

constexpr AsciiSet kDigits = AsciiSet().WithRange('0', '9');
constexpr AsciiSet kNameCharacters = kDigits.WithRange('A', 'Z').WithRange('a', 'z').With("@#$_.");
constexpr AsciiSet kBadStarts = kDigits.With("._");

constexpr std::string_view kReservedWords[] = {"ALL", "AND", "BY",  "EQ", "GE", "GT",  "LE",
                                               "LT",  "NE",  "NOT", "OR", "TO", "WITH"};
constexpr std::size_t kLongestReservedWord = 4;
constexpr std::size_t kLongestNumberName = 7;

std::string_view WithoutTrailingBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

bool EndsWithCharacter(const CodePage& codePage, std::string_view name, char wanted) {
    return !name.empty() && TAVQMBstrrchr_A(codePage, name, wanted) == name.size() - 1;
}

std::string KeepNameCharacters(const CodePage& codePage, std::string_view text) {
    std::string kept;
    while (!text.empty()) {
        const std::size_t length =
            std::max<std::size_t>(TAVQMBmblen_A(codePage, text.data(), text.size()), 1);
        if (IsNameCharacter(codePage, text)) kept.append(text.substr(0, length));
        text.remove_prefix(length);
    }
    return kept;
}

std::string Truncated(const CodePage& codePage, std::string_view text, std::size_t maxBytes) {
    return std::string(TAVQMBStringTruncate_A(codePage, text, maxBytes));
}

// Makes `name` valid by a sign put in front or characters dropped at its end; the class it ends
// with tells whether that was enough.
NameClass RepairName(const CodePage& codePage, std::string& name) {
    while (true) {
        const NameClass nameClass = ClassifyNameExtended(codePage, name);
        switch (nameClass) {
            case NameClass::kScratch:
            case NameClass::kSystem:
            case NameClass::kReservedWord:
            case NameClass::kBadStart:
                name = Truncated(codePage, name.insert(0, "@"), kMaxNameLength);
                break;
            case NameClass::kEndsWithPeriod:
            case NameClass::kEndsWithUnderscore:
                if (name.size() < 2) return nameClass;
                name.pop_back();
                break;
            default:
                return nameClass;
        }
    }
}

// `name` cut so that "_" and the letters of `attempt` fit behind it.
std::string NameCandidate(const CodePage& codePage, const std::string& name,
                          unsigned long attempt) {
    const std::string suffix = LetterSuffix(attempt);
    std::string candidate = name;
    if (suffix.size() + 2 < kMaxNameLength) {
        const std::size_t room = kMaxNameLength - 1 - suffix.size();
        candidate = Truncated(codePage, name, room);
    }
    return candidate + "_" + suffix;
}

}  // namespace

bool IsNameCharacter(const CodePage& codePage, std::string_view text) {
    if (TAVQMBmblen_A(codePage, text.data(), text.size()) == 0) return false;
    return static_cast<unsigned char>(text.front()) >= 128 || kNameCharacters.Has(text.front());
}

NameClass ClassifyName(const CodePage& codePage, std::string_view name) {
    name = WithoutTrailingBlanks(name);
    if (name.empty() || name.size() > kMaxNameLength) return NameClass::kBadLength;
    for (std::string_view rest = name; !rest.empty();) {
        if (!IsNameCharacter(codePage, rest)) return NameClass::kBadCharacter;
        rest.remove_prefix(TAVQMBmblen_A(codePage, rest.data(), rest.size()));
    }
    if (kBadStarts.Has(name.front())) return NameClass::kBadStart;
    if (name.size() <= kLongestReservedWord) {
        const std::string upper = TAVQMBstrupr_A(codePage, name);
        for (const std::string_view word : kReservedWords) {
            if (upper == word) return NameClass::kReservedWord;
        }
    }
    if (name.front() == '#') return NameClass::kScratch;
    if (name.front() == '$') return NameClass::kSystem;
    return NameClass::kOrdinary;
}

NameClass ClassifyNameExtended(const CodePage& codePage, std::string_view name) {
    const NameClass nameClass = ClassifyName(codePage, name);
    if (nameClass != NameClass::kOrdinary) return nameClass;
    name = WithoutTrailingBlanks(name);
    if (EndsWithCharacter(codePage, name, '.')) return NameClass::kEndsWithPeriod;
    if (EndsWithCharacter(codePage, name, '_')) return NameClass::kEndsWithUnderscore;
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

bool NumberToName(std::string& dest, std::string_view text) {
    text = WithoutTrailingBlanks(text);
    if (text.empty() || text.size() > kLongestNumberName) return false;
    if (!std::all_of(text.begin(), text.end(), [](char c) { return kDigits.Has(c); })) {
        return false;
    }
    dest = "@";
    dest.append(text);
    return true;
}

std::string LetterSuffix(unsigned long n) {
    constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    constexpr auto kCount = static_cast<unsigned long>(kLetters.size());
    std::string suffix(1, kLetters[n % kCount]);
    for (n /= kCount; n > 0; n = (n - 1) / kCount) {
        suffix.insert(suffix.begin(), kLetters[(n - 1) % kCount]);
    }
    return suffix;
}

int AppendNameSuffix(const CodePage& codePage, std::string& dest, std::string_view base,
                     unsigned long n, std::size_t maxLen) {
    const std::string suffix = LetterSuffix(n);
    const std::size_t behindBase = suffix.size() + 2;  // "_", the letters and the final NUL
    constexpr std::size_t kShortestBase = 2;
    if (maxLen < behindBase + kShortestBase) return 1;
    const std::size_t room = maxLen - behindBase;
    std::string name = Truncated(codePage, base, room);
    if (name.empty()) return 1;
    dest = name + "_" + suffix;
    return 0;
}

void MakeValidName(const CodePage& codePage, std::string& name, long n,
                   const std::function<bool(const std::string&)>& isTaken) {
    name = Truncated(codePage, KeepNameCharacters(codePage, name), kMaxNameLength);
    std::string numberName;
    if (NumberToName(numberName, name)) name = numberName;
    if (RepairName(codePage, name) != NameClass::kOrdinary) name = "V" + std::to_string(n);
    if (!isTaken) return;
    std::string candidate = name;
    for (unsigned long attempt = 0; isTaken(candidate); ++attempt) {
        candidate = NameCandidate(codePage, name, attempt);
    }
    name = candidate;
}

}  // namespace quillet
