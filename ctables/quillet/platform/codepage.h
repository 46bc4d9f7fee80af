// Code pages: how the bytes of a syntax file group into characters, and their upper case.
#ifndef QUILLET_PLATFORM_CODEPAGE_H
#define QUILLET_PLATFORM_CODEPAGE_H

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

/// The code page that a text is read in. Immutable; the objects live until the program ends.
///
/// In every code page the bytes 1 to 127, where a character starts, are the ASCII characters;
/// the derived classes are asked about the other bytes only.
class CodePage {
public:
    virtual ~CodePage() = default;

    /// Byte length of the character that starts at `bytes`, whose first byte is 128 or more.
    /// Looks at no more than `maxBytes` (at least 1) bytes; 0 when they begin no character.
    [[nodiscard]] virtual std::size_t NonAsciiLength(const char* bytes,
                                                     std::size_t maxBytes) const = 0;

    /// Appends the upper-case form of `character`, one whole character outside ASCII, to
    /// `result`. A letter without a single upper-case letter in this page, or with one inside
    /// ASCII, is appended as it is: no keyword may hide behind a dotless i or a long s.
    virtual void AppendUpper(std::string_view character, std::string& result) const = 0;

    /// Appends `character`, one whole character outside ASCII, in UTF-8. Bytes that are no
    /// character become U+FFFD.
    virtual void AppendAsUtf8(std::string_view character, std::string& result) const = 0;

    [[nodiscard]] static const CodePage& Utf8();
    [[nodiscard]] static const CodePage& Windows1252();

    /// The system's legacy code page, or null when its code page is UTF-8 or plain ASCII.
    ///
    /// On POSIX systems that is the codeset of the process's LC_CTYPE locale at the first call
    /// (`EnableLocale` sets it from the user's), on Windows the ANSI code page.
    [[nodiscard]] static const CodePage* System();

protected:
    CodePage() = default;
    CodePage(const CodePage&) = default;
    CodePage& operator=(const CodePage&) = default;
};

/// Appends `codePoint`, from 0 to U+10FFFF, in UTF-8.
void AppendCodePoint(char32_t codePoint, std::string& result);

/// What stands in for bytes that are no character.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

/// `text`, in `codePage`, in UTF-8. Each byte that is no character becomes U+FFFD.
[[nodiscard]] std::string TextAsUtf8(const CodePage& codePage, std::string_view text);

/// Decides whether a text that arrives in pieces is valid UTF-8.
class Utf8Validator {
public:
    /// Takes the next piece. Returns false as soon as the text can no longer be UTF-8.
    [[nodiscard]] bool Add(std::string_view piece);

    /// True when all pieces together are valid UTF-8, none of them ending inside a character.
    [[nodiscard]] bool IsValid() const { return m_valid && m_pending.empty(); }

private:
    bool m_valid = true;
    std::string m_pending;  // the first bytes of a character that a piece ended in
};

}  // namespace quillet

#endif  // QUILLET_PLATFORM_CODEPAGE_H
