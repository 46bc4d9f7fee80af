#include "platform/multibyte.h"

#include <algorithm>

namespace quillet {

namespace {

// As `TAVQMBmblen_A`, but a byte that begins no character counts as one, so that a walk goes on.
std::size_t StepLength(const CodePage& codePage, std::string_view text) {
    return std::max<std::size_t>(TAVQMBmblen_A(codePage, text.data(), text.size()), 1);
}

}  // namespace

std::string TAVQMBstrupr_A(const CodePage& codePage, std::string_view text) {
    std::string result(text);
    std::size_t done = 0;
    for (; done < result.size() && static_cast<unsigned char>(result[done]) < 0x80; ++done) {
        result[done] = UpperAscii(result[done]);
    }
    text.remove_prefix(done);
    result.resize(done);
    while (!text.empty()) {
        const std::size_t length = TAVQMBmblen_A(codePage, text.data(), text.size());
        if (length <= 1 && static_cast<unsigned char>(text.front()) < 0x80) {
            result += UpperAscii(text.front());
        } else if (length == 0) {
            result += text.front();
        } else {
            codePage.AppendUpper(text.substr(0, length), result);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::string_view TAVQMBStringTruncate_A(const CodePage& codePage, std::string_view text,
                                        std::size_t maxBytes) {
    if (text.size() <= maxBytes) return text;
    std::size_t end = 0;
    while (end < text.size()) {
        const std::size_t length = StepLength(codePage, text.substr(end));
        if (end + length > maxBytes) break;
        end += length;
    }
    return text.substr(0, end);
}

std::size_t TAVQMBstrrchr_A(const CodePage& codePage, std::string_view text, char wanted) {
    std::size_t found = std::string_view::npos;
    for (std::size_t position = 0; position < text.size();
         position += StepLength(codePage, text.substr(position))) {
        if (text[position] == wanted) found = position;
    }
    return found;
}

int TAVQMBqstricmp_A(const CodePage& codePage, std::string_view left, std::string_view right) {
    return TAVQMBstrupr_A(codePage, left).compare(TAVQMBstrupr_A(codePage, right));
}

}  // namespace quillet
