#include "driver/textencoding.h"

#include <cstddef>
#include <string>
#include <vector>

#include "platform/blocksize.h"
#include "platform/codepage.h"

namespace quillet {

namespace {

const CodePage& PageOf(TextEncoding encoding) {
    switch (encoding) {
        case TextEncoding::kUtf8:
            return CodePage::Utf8();
        case TextEncoding::kWindows1252:
            return CodePage::Windows1252();
        case TextEncoding::kSystem:
            break;
    }
    const CodePage* pSystem = CodePage::System();
    return pSystem != nullptr ? *pSystem : CodePage::Windows1252();
}

// UTF-32 in the order of most machines begins in the same way.
bool BeginsAsUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

}  // namespace

const CodePage* ChooseCodePage(TextInput& input, LegacyCodePage legacyCodePage) {
    constexpr std::size_t kMarkSize = 2;
    std::vector<char> block(kBlockSize);
    std::string beginning;
    Utf8Validator validator;
    while (const std::size_t count = input.Read(block.data(), block.size())) {
        const std::string_view piece(block.data(), count);
        beginning.append(piece.substr(0, kMarkSize - beginning.size()));
        if (BeginsAsUtf16(beginning)) return nullptr;
        if (!validator.Add(piece) && beginning.size() == kMarkSize) break;
    }
    if (input.Failed() || !input.Rewind()) return nullptr;
    if (validator.IsValid()) return &CodePage::Utf8();
    return &PageOf(legacyCodePage == LegacyCodePage::kSystem ? TextEncoding::kSystem
                                                             : TextEncoding::kWindows1252);
}

TextEncoding EncodingOf(const CodePage& codePage) {
    if (&codePage == &CodePage::Utf8()) return TextEncoding::kUtf8;
    if (&codePage == &CodePage::Windows1252()) return TextEncoding::kWindows1252;
    return TextEncoding::kSystem;
}

std::string ToUtf8(std::string_view text, TextEncoding encoding) {
    return TextAsUtf8(PageOf(encoding), text);
}

}  // namespace quillet
