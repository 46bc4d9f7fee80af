// The system's legacy code page, the ANSI code page, and others by name, by the system's own
// conversions.
#include <windows.h>

#include <array>
#include <charconv>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/codepage.h"
#include "platform/multibyte.h"
#include "platform/namedcodepage.h"
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

    // In those of mainframes no letter is where it is expected.
    [[nodiscard]] bool HasAscii() const { return Decode("A0 /") == L"A0 /"; }

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

// A number as a whole text; 0 when it is none.
UINT NumberIn(std::string_view text) {
    UINT number = 0;
    const char* pEnd = text.data() + text.size();
    const auto [pStop, error] = std::from_chars(text.data(), pEnd, number);
    return error == std::errc() && pStop == pEnd ? number : 0;
}

// The system knows its code pages by numbers alone. These are the names that the numbers have
// elsewhere, in lower case.
UINT IdentifierOf(std::string_view name) {
    struct Alias {
        std::string_view name;
        UINT identifier;
    };
    static constexpr Alias kAliases[] = {
        {"big5", 950},      {"euc-jp", 20932}, {"euc-kr", 949},      {"euckr", 949},
        {"gb2312", 936},    {"gbk", 936},      {"koi8-r", 20866},    {"koi8-u", 21866},
        {"latin1", 28591},  {"latin2", 28592}, {"macintosh", 10000}, {"shift-jis", 932},
        {"shift_jis", 932}, {"sjis", 932},
    };
    for (const Alias& alias : kAliases) {
        if (name == alias.name) return alias.identifier;
    }
    constexpr UINT kBeforeIso8859 = 28590;
    constexpr std::string_view kIso8859 = "iso-8859-";
    if (name.starts_with(kIso8859)) {
        const UINT part = NumberIn(name.substr(kIso8859.size()));
        return part > 0 ? kBeforeIso8859 + part : 0;
    }
    for (const std::string_view prefix : {"windows-", "cp", "ibm", ""}) {
        if (!name.starts_with(prefix)) continue;
        const UINT identifier = NumberIn(name.substr(prefix.size()));
        if (identifier != 0) return identifier;
    }
    return 0;
}

}  // namespace

const CodePage* CodePage::System() {
    // The most common one needs no conversions.
    if (GetACP() == kWindows1252) return &Windows1252();
    static const std::unique_ptr<const AnsiCodePage> pCodePage = MakeAnsiCodePage();
    return pCodePage.get();
}

std::unique_ptr<const CodePage> MakeNamedCodePage(const std::string& name) {
    constexpr UINT kMostBytes = 2;  // what a lead byte tells of
    std::string lower = name;
    for (char& letter : lower) {
        letter = LowerAscii(letter);
    }
    const UINT identifier = IdentifierOf(lower);
    CPINFO info{};
    if (identifier == 0 || GetCPInfo(identifier, &info) == FALSE || info.MaxCharSize > kMostBytes) {
        return nullptr;
    }
    auto page = std::make_unique<const AnsiCodePage>(identifier);
    return page->HasAscii() ? std::move(page) : nullptr;
}

}  // namespace quillet
