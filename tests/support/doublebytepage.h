// A code page for tests, of a kind that no test may expect on its machine.
#ifndef QUILLET_TESTS_SUPPORT_DOUBLEBYTEPAGE_H
#define QUILLET_TESTS_SUPPORT_DOUBLEBYTEPAGE_H

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/codepage.h"

namespace quillet {

/// A double-byte page in which a byte from 0x81 to 0x9F leads a pair, whatever follows it, so that
/// a trail byte may look like any ASCII character.
class DoubleBytePage : public CodePage {
public:
    DoubleBytePage() = default;

    [[nodiscard]] std::size_t NonAsciiLength(const char* bytes,
                                             std::size_t maxBytes) const override {
        const auto lead = static_cast<unsigned char>(*bytes);
        if (lead < 0x81 || lead > 0x9F) return 1;
        return maxBytes < 2 || bytes[1] == '\0' ? 0 : 2;
    }
    void AppendUpper(std::string_view character, std::string& result) const override {
        result += character;
    }
    void AppendAsUtf8(std::string_view /*character*/, std::string& result) const override {
        AppendCodePoint(kReplacementCharacter, result);
    }
};

/// The one that tests share.
[[nodiscard]] inline const CodePage& DoubleByte() {
    static const DoubleBytePage page;
    return page;
}

}  // namespace quillet

#endif  // QUILLET_TESTS_SUPPORT_DOUBLEBYTEPAGE_H
