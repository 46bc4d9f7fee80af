#include "tokenizer/namerepair.h"

#include <algorithm>

#include "platform/multibyte.h"
#include "tokenizer/scanning.h"

namespace quillet {

namespace {

constexpr std::size_t kLongestNumberName = 7;

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

// `name` cut so that "_" and the letters of `attempt` fit after it.
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

NameClass ClassifyNameExtended(const CodePage& codePage, std::string_view name) {
    const NameClass nameClass = ClassifyName(codePage, name);
    if (nameClass != NameClass::kOrdinary) return nameClass;
    name = WithoutTrailingBlanks(name);
    if (EndsWithCharacter(codePage, name, '.')) return NameClass::kEndsWithPeriod;
    if (EndsWithCharacter(codePage, name, '_')) return NameClass::kEndsWithUnderscore;
    return NameClass::kOrdinary;
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
    const std::size_t afterBase = suffix.size() + 2;  // "_", the letters and the final NUL
    constexpr std::size_t kShortestBase = 2;
    if (maxLen < afterBase + kShortestBase) return 1;
    const std::size_t room = maxLen - afterBase;
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
