#include "driver/textencoding.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/byteblock.h"
#include "platform/codepage.h"
#include "platform/multibyte.h"
#include "platform/namedcodepage.h"

namespace quillet {

namespace {

// UTF-32 in the order of most machines begins in the same way.
bool BeginsAsUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

// Not to be read by a table: there is a better one.
bool IsUtf8Name(std::string_view name) {
    std::string letters;
    for (const char character : name) {
        if (character == '-' || character == '_') continue;
        letters += LowerAscii(character);
    }
    return letters == "utf8";
}

}  // namespace

const CodePage& CodePageFor(TextEncoding encoding, const CodePage* pNamed) {
    switch (encoding) {
        case TextEncoding::kUtf8:
            return CodePage::Utf8();
        case TextEncoding::kWindows1252:
            return CodePage::Windows1252();
        case TextEncoding::kNamed:
            return pNamed != nullptr ? *pNamed : CodePage::Windows1252();
        case TextEncoding::kSystem:
            break;
    }
    const CodePage* pSystem = CodePage::System();
    return pSystem != nullptr ? *pSystem : CodePage::Windows1252();
}

const CodePage* ChooseCodePage(TextInput& input, const Options& options) {
    constexpr std::size_t kMarkSize = 2;
    ByteBlock block;
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
    if (options.namedCodePage != nullptr) return options.namedCodePage.get();
    return options.legacyCodePage == LegacyCodePage::kSystem
               ? &CodePageFor(TextEncoding::kSystem, nullptr)
               : &CodePage::Windows1252();
}

TextEncoding EncodingOf(const CodePage& codePage, const Options& options) {
    if (&codePage == &CodePage::Utf8()) return TextEncoding::kUtf8;
    if (&codePage == options.namedCodePage.get()) return TextEncoding::kNamed;
    if (&codePage == &CodePage::Windows1252()) return TextEncoding::kWindows1252;
    return TextEncoding::kSystem;
}

std::string ToUtf8(std::string_view text, TextEncoding encoding, const CodePage* pNamed) {
    return TextAsUtf8(CodePageFor(encoding, pNamed), text);
}

std::shared_ptr<const CodePage> FindCodePage(const std::string& name) {
    if (IsUtf8Name(name)) return {std::shared_ptr<void>(), &CodePage::Utf8()};
    return MakeNamedCodePage(name);
}

}  // namespace quillet
