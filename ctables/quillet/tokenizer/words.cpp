#include "tokenizer/words.h"

#include "tokenizer/operatorspellings.h"
#include "tokenizer/tavqtoken.h"

namespace quillet {

namespace {

constexpr OperatorSpelling kReservedWords[] = {
    {"LT", TokenCodes::kLessThan}, {"GT", TokenCodes::kGreaterThan},
    {"EQ", TokenCodes::kEquals},   {"LE", TokenCodes::kLtOrEq},
    {"GE", TokenCodes::kGtOrEq},   {"NE", TokenCodes::kNotEqualCode},
    {"NOT", TokenCodes::kNot},     {"TO", TokenCodes::kTo},
    {"WITH", TokenCodes::kWith},   {"AND", TokenCodes::kAnd},
    {"OR", TokenCodes::kOr},       {"BY", TokenCodes::kBy},
    {"ALL", TokenCodes::kAll},
};

constexpr std::size_t LengthOfLongest() {
    std::size_t longest = 0;
    for (const OperatorSpelling& word : kReservedWords) {
        if (word.spelling.size() > longest) longest = word.spelling.size();
    }
    return longest;
}
static_assert(LengthOfLongest() == kLongestReservedWord);

}  // namespace

bool MeansKeyword(std::string_view value, std::string_view keyword) {
    return CompareTextPrefix(value, keyword, kSignificantBytes) == 0;
}

// Most words are longer than any of these.
int ReservedWordOperator(std::string_view word) {
    if (word.size() > kLongestReservedWord) return TokenCodes::kNotOperator;
    return FindOperator(kReservedWords, word);
}

}  // namespace quillet
