// The system's legacy code page: the ANSI code page, by the system's own conversions.
#include <windows.h>

#include <array>
#include <memory>
#include <string>

#include "platform/codepage.h"
#include "platform/unicodeuppercase.h"

namespace quillet {

namespace {

constexpr UINT kAscii = 20127;
constexpr UINT kWindows1252 = 1252;

class AnsiCodePage final : public CodePage {
public:
    explicit AnsiCodePage(UINT identifier) : m_identifier(identifier) {
        for (std::size_t byte = 128; byte < m_isSingleByte.size(); ++byte) {
            const char text = static_cast<char>(static_cast<unsigned char>(byte));
            m_isSingleByte[byte] = !IsLeadByte(text) && Decode({&text, 1}).size() == 1;
        }
    }

    [[nodiscard]] std::size_t NonAsciiLength(const char* bytes,
                                             std::size_t maxBytes) const override {
        if (m_isSingleByte[static_cast<unsigned char>(*bytes)]) return 1;
        if (maxBytes < 2 || bytes[1] == '\0' || !IsLeadByte(*bytes)) return 0;
        return Decode({bytes, 2}).size() == 1 ? 2 : 0;
    }

    // The capitals are those of every other system; this one only says how they are written.
    void AppendUpper(std::string_view character, std::string& result) const override {
        const std::wstring wide = Decode(character);
        if (wide.size() == 1) {
            const char32_t capital = SimpleUppercase(static_cast<char32_t>(wide.front()));
            if (capital != static_cast<char32_t>(wide.front()) && capital < kEndOfPlane0) {
                const std::string converted = Encode(static_cast<wchar_t>(capital));
                if (!converted.empty() && static_cast<unsigned char>(converted[0]) >= 0x80) {
                    result.append(converted);
                    return;
                }
            }
        }
        result.append(character);
    }

    void AppendAsUtf8(std::string_view character, std::string& result) const override {
        const std::wstring wide = Decode(character);
        AppendCodePoint(
            wide.size() == 1 ? static_cast<char32_t>(wide.front()) : kReplacementCharacter, result);
    }

private:
    static constexpr char32_t kEndOfPlane0 = 0x10000;

    [[nodiscard]] bool IsLeadByte(char byte) const {
        return IsDBCSLeadByteEx(m_identifier, static_cast<BYTE>(byte)) != 0;
    }

    // One character; empty when the bytes form none.
    [[nodiscard]] std::wstring Decode(std::string_view bytes) const {
        std::array<wchar_t, 4> wide{};
        const int length = MultiByteToWideChar(m_identifier, MB_ERR_INVALID_CHARS, bytes.data(),
                                               static_cast<int>(bytes.size()), wide.data(),
                                               static_cast<int>(wide.size()));
        return {wide.data(), static_cast<std::size_t>(length)};
    }

    // Empty when the code page has no such character; one that looks like it will not do.
    [[nodiscard]] std::string Encode(wchar_t wide) const {
        std::array<char, 8> bytes{};
        BOOL isReplaced = FALSE;
        const int length =
            WideCharToMultiByte(m_identifier, WC_NO_BEST_FIT_CHARS, &wide, 1, bytes.data(),
                                static_cast<int>(bytes.size()), nullptr, &isReplaced);
        if (isReplaced != FALSE) return {};
        return {bytes.data(), static_cast<std::size_t>(length)};
    }

    UINT m_identifier;
    std::array<bool, 256> m_isSingleByte{};
};

std::unique_ptr<const AnsiCodePage> MakeAnsiCodePage() {
    const UINT identifier = GetACP();
    if (identifier == CP_UTF8 || identifier == kAscii) return nullptr;
    return std::make_unique<const AnsiCodePage>(identifier);
}

}  // namespace

const CodePage* CodePage::System() {
    // The most common one needs no conversions.
    if (GetACP() == kWindows1252) return &Windows1252();
    static const std::unique_ptr<const AnsiCodePage> pCodePage = MakeAnsiCodePage();
    return pCodePage.get();
}

}  // namespace quillet
