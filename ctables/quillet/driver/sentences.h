// The sentences for people, whose gaps are filled with the words of a command.
#ifndef QUILLET_DRIVER_SENTENCES_H
#define QUILLET_DRIVER_SENTENCES_H

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

/// `sentence` with the text that `partFor(name)` gives in place of each {name}. Braces in that
/// text stay as they are. Every brace of `sentence` that opens is closed.
template <class PartFor>
[[nodiscard]] std::string FillSentence(std::string_view sentence, PartFor partFor) {
    std::string filled;
    while (true) {
        const std::size_t open = sentence.find('{');
        filled.append(sentence.substr(0, open));
        if (open == std::string_view::npos) return filled;
        const std::size_t close = sentence.find('}', open);
        filled += partFor(sentence.substr(open + 1, close - open - 1));
        sentence.remove_prefix(close + 1);
    }
}

}  // namespace quillet

#endif  // QUILLET_DRIVER_SENTENCES_H
