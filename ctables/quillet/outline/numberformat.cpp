#include "outline/numberformat.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "platform/multibyte.h"

namespace quillet::outline {

namespace {

// The number that `text` begins with, which is cut off; -1 for none.
int TakeNumber(std::string_view& text) {
    constexpr int kMost = std::numeric_limits<int>::max() / 10 - 1;
    int number = -1;
    while (!text.empty() && '0' <= text.front() && text.front() <= '9') {
        number = std::min(std::max(number, 0) * 10 + (text.front() - '0'), kMost);
        text.remove_prefix(1);
    }
    return number;
}

}  // namespace

Format MakeFormat(const CodePage& codePage, std::string_view word) {
    const std::size_t letters = std::min(word.find_first_of("0123456789."), word.size());
    Format format;
    format.text = word;
    format.letters = TAVQMBstrupr_A(codePage, word.substr(0, letters));
    word.remove_prefix(letters);
    format.width = TakeNumber(word);
    if (word.starts_with('.')) word.remove_prefix(1);
    format.decimals = TakeNumber(word);
    return format;
}

}  // namespace quillet::outline
