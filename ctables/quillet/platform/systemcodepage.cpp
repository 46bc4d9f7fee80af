// The system's legacy code page, by the C library's own conversions.
#include <langinfo.h>

#include <array>
#include <clocale>
#include <cwchar>
#include <cwctype>
#include <memory>
#include <string>

#include "platform/codepage.h"

namespace quillet {

namespace {

// Makes a locale the current thread's for as long as the object lives.
class ScopedThreadLocale {
public:
    explicit ScopedThreadLocale(locale_t locale) : m_previous(uselocale(locale)) {}
    ~ScopedThreadLocale() { uselocale(m_previous); }
    ScopedThreadLocale(const ScopedThreadLocale&) = delete;
    ScopedThreadLocale& operator=(const ScopedThreadLocale&) = delete;

private:
    locale_t m_previous;
};

struct LocaleDeleter {
    using pointer = locale_t;
    void operator()(locale_t locale) const { freelocale(locale); }
};
using OwnedLocale = std::unique_ptr<locale_t, LocaleDeleter>;

class LocaleCodePage final : public CodePage {
public:
    explicit LocaleCodePage(OwnedLocale locale) : m_locale(std::move(locale)) {
        for (std::size_t byte = 128; byte < m_isSingleByte.size(); ++byte) {
            const char text = static_cast<char>(static_cast<unsigned char>(byte));
            m_isSingleByte[byte] = Measure(&text, 1) == 1;
        }
    }

    [[nodiscard]] std::size_t NonAsciiLength(const char* bytes,
                                             std::size_t maxBytes) const override {
        if (m_isSingleByte[static_cast<unsigned char>(*bytes)]) return 1;
        return Measure(bytes, maxBytes);
    }

    void AppendUpper(std::string_view character, std::string& result) const override {
        const ScopedThreadLocale scope(m_locale.get());
        wchar_t wide = 0;
        std::mbstate_t state{};
        if (std::mbrtowc(&wide, character.data(), character.size(), &state) == character.size()) {
            const auto capital = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(wide)));
            std::string converted(static_cast<std::size_t>(MB_CUR_MAX), '\0');
            state = {};
            const std::size_t length = std::wcrtomb(converted.data(), capital, &state);
            if (length <= converted.size() && static_cast<unsigned char>(converted[0]) >= 0x80) {
                result.append(converted, 0, length);
                return;
            }
        }
        result.append(character);
    }

    void AppendAsUtf8(std::string_view character, std::string& result) const override {
        const ScopedThreadLocale scope(m_locale.get());
        wchar_t wide = 0;
        std::mbstate_t state{};
        // A wide character is its code point here.
        const bool isCharacter =
            std::mbrtowc(&wide, character.data(), character.size(), &state) == character.size();
        AppendCodePoint(isCharacter ? static_cast<char32_t>(wide) : kReplacementCharacter, result);
    }

private:
    // Byte length of the character at `bytes`, 0 when there is none within `maxBytes`.
    std::size_t Measure(const char* bytes, std::size_t maxBytes) const {
        const ScopedThreadLocale scope(m_locale.get());
        std::mbstate_t state{};
        const std::size_t length = std::mbrlen(bytes, maxBytes, &state);
        return length <= maxBytes ? length : 0;  // the error values are above every length
    }

    OwnedLocale m_locale;
    std::array<bool, 256> m_isSingleByte{};
};

std::unique_ptr<const LocaleCodePage> MakeSystemCodePage() {
    const char* pName = std::setlocale(LC_CTYPE, nullptr);
    OwnedLocale locale(newlocale(LC_CTYPE_MASK, pName != nullptr ? pName : "C", nullptr));
    if (locale == nullptr) return nullptr;
    const std::string codeset = nl_langinfo_l(CODESET, locale.get());
    for (const char* pNotLegacy : {"UTF-8", "utf8", "ANSI_X3.4-1968", "US-ASCII", "ASCII", "646"}) {
        if (codeset == pNotLegacy) return nullptr;
    }
    return std::make_unique<const LocaleCodePage>(std::move(locale));
}

}  // namespace

const CodePage* CodePage::System() {
    static const std::unique_ptr<const LocaleCodePage> pCodePage = MakeSystemCodePage();
    return pCodePage.get();
}

}  // namespace quillet
