// Words of the language: how many of their bytes count, and which of them are reserved.
#ifndef QUILLET_TOKENIZER_WORDS_H
#define QUILLET_TOKENIZER_WORDS_H

#include <cstddef>
#include <string_view>

namespace quillet {

/// Users abbreviate words to three letters, and whatever follows these has never mattered. So this
/// many bytes of a word decide what it means; a shorter word is one that ends there.
inline constexpr std::size_t kSignificantBytes = 3;

/// True when `value`, the value text of a token, means `keyword`, which is in upper case.
[[nodiscard]] bool MeansKeyword(std::string_view value, std::string_view keyword);

/// The operator code of a reserved word (ALL, AND, BY, EQ, GE, GT, LE, LT, NE, NOT, OR, TO, WITH);
/// `kNotOperator` for every other word. `word` is in upper case and all of it counts.
[[nodiscard]] int ReservedWordOperator(std::string_view word);

/// The length of the longest reserved word, in bytes.
inline constexpr std::size_t kLongestReservedWord = 4;

}  // namespace quillet

#endif  // QUILLET_TOKENIZER_WORDS_H
