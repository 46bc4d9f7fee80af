// Every byte is a character in a legacy code page, so a wrong one never fails: it shows letters
// where no language has them. In the languages of the West a letter outside ASCII stands in a word
// with others from ASCII.
#include "driver/encodingdoubt.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "driver/commandwords.h"
#include "platform/multibyte.h"
#include "tokenizer/scanning.h"

namespace quillet {

namespace {

// What a byte above 127 is, read in the Western code page.
enum class ByteKind { kAscii, kControl, kLetter, kSymbol };

bool IsOneOf(unsigned char byte, std::string_view bytes) {
    return bytes.find(static_cast<char>(byte)) != std::string_view::npos;
}

ByteKind KindOf(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) return ByteKind::kAscii;
    if (IsOneOf(byte, "\x81\x8D\x8F\x90\x9D")) return ByteKind::kControl;
    if (IsOneOf(byte, "\x83\x8A\x8C\x8E\x9A\x9C\x9E\x9F")) return ByteKind::kLetter;
    return byte >= 0xC0 && !IsOneOf(byte, "\xD7\xF7") ? ByteKind::kLetter : ByteKind::kSymbol;
}

// What is counted in a text.
struct Counts {
    long controls = 0;
    long letters = 0;        // outside ASCII
    long strangers = 0;      // of these, next to no letter that they belong to
    long cyrillicWords = 0;  // letters that stand among their like alone
    long doubleBytes = 0;    // pairs as the code pages of the Far East have them
    long bytes = 0;          // above 127
    long lowBytes = 0;       // of these, those that no pair of EUC-KR has
};

class WesternReader {
public:
    explicit WesternReader(std::string_view text) : m_text(text) {}

    Counts Count() {
        for (std::size_t position = 0; position < m_text.size(); ++position) {
            const ByteKind kind = KindOf(m_text[position]);
            if (kind != ByteKind::kAscii) CountByte(m_text[position]);
            if (kind == ByteKind::kControl) ++m_counts.controls;
            if (kind == ByteKind::kLetter) CountLetter(position);
            if (kind == ByteKind::kSymbol) CountSymbol(position);
        }
        return m_counts;
    }

private:
    [[nodiscard]] char ByteAt(std::size_t position) const {
        return position < m_text.size() ? m_text[position] : ' ';
    }
    [[nodiscard]] char Before(std::size_t position) const {
        return position > 0 ? m_text[position - 1] : ' ';
    }

    void CountByte(char c) {
        constexpr unsigned char kFirstOfEuc = 0xA1;
        ++m_counts.bytes;
        if (static_cast<unsigned char>(c) < kFirstOfEuc) ++m_counts.lowBytes;
    }

    // A word of one letter and a doubled letter are found in the languages of the West as well.
    void CountLetter(std::size_t position) {
        ++m_counts.letters;
        const char before = Before(position);
        const char after = ByteAt(position + 1);
        const char self = m_text[position];
        if (kAsciiLetters.Has(before) || kAsciiLetters.Has(after)) return;
        const bool isAlone =
            KindOf(before) == ByteKind::kAscii && KindOf(after) == ByteKind::kAscii;
        const bool isDoubled = (before == self && kAsciiLetters.Has(Before(position - 1))) ||
                               (after == self && kAsciiLetters.Has(ByteAt(position + 2)));
        if (isAlone || isDoubled) return;
        ++m_counts.strangers;
        if (KindOf(before) != ByteKind::kSymbol && KindOf(after) != ByteKind::kSymbol) {
            ++m_counts.cyrillicWords;
        } else {
            ++m_counts.doubleBytes;
        }
    }

    // A sign in the middle of a word is a letter of another code page. Catalan has the raised dot
    // there.
    void CountSymbol(std::size_t position) {
        const bool isInWord =
            kAsciiLetters.Has(Before(position)) && kAsciiLetters.Has(ByteAt(position + 1));
        if (!isInWord || IsOneOf(static_cast<unsigned char>(m_text[position]), "\xB7\xAD\x92")) {
            return;
        }
        ++m_counts.letters;
        ++m_counts.strangers;
    }

    std::string_view m_text;
    Counts m_counts;
};

std::string GuessOf(const Counts& counts) {
    // Of the pairs of Shift JIS most begin with a low byte.
    if (2 * counts.doubleBytes > counts.strangers) {
        return 4 * counts.lowBytes > counts.bytes ? "SHIFT_JIS" : "EUC-KR";
    }
    if (counts.controls > counts.letters / 10) return "SHIFT_JIS";
    return 2 * counts.cyrillicWords > counts.letters ? "windows-1251" : "windows-1250";
}

// "windows-1252", "CP1252" and "1252" are the same, and so are "UTF-8" and "utf8".
std::string Normalized(std::string_view name) {
    std::string normal;
    for (const char c : name) {
        if (kAsciiLetters.Has(c) || kDigits.Has(c)) normal += UpperAscii(c);
    }
    for (const std::string_view prefix : {"WINDOWS", "CP", "MS"}) {
        if (normal.starts_with(prefix)) normal.erase(0, prefix.size());
    }
    // Whoever names this one means the code page that has all its characters.
    const bool isLatin1 = normal == "ISO88591" || normal == "LATIN1";
    return isLatin1 ? "1252" : normal;
}

}  // namespace

EncodingDoubt DoubtEncoding(std::string_view text, const CodePage& codePage,
                            std::string_view readAs) {
    EncodingDoubt doubt;
    if (&codePage == &CodePage::Utf8()) return doubt;
    const bool isWestern = &codePage == &CodePage::Windows1252();
    const std::string_view read = isWestern ? "windows-1252" : readAs;
    const std::string_view named = EncodingNamedBy(text);
    if (!named.empty() && !read.empty() && Normalized(named) != Normalized(read)) {
        return {EncodingDoubt::Reason::kOtherName, std::string(named)};
    }
    if (!isWestern) return doubt;
    const Counts counts = WesternReader(text).Count();
    if (counts.controls == 0 && 5 * counts.strangers <= counts.letters) return doubt;
    return {EncodingDoubt::Reason::kLooksWrong, GuessOf(counts)};
}

std::string_view EncodingNamedBy(std::string_view text) {
    constexpr std::string_view kWord = "ENCODING:";
    const auto skip = [&text](std::string_view bytes) {
        text.remove_prefix(std::min(text.find_first_not_of(bytes), text.size()));
    };
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    text = text.substr(0, text.find('\n'));
    skip(" \t");
    if (!text.starts_with('*')) return {};
    skip("*");
    skip(" \t");
    const bool isNamed = text.size() > kWord.size() &&
                         std::equal(kWord.begin(), kWord.end(), text.begin(),
                                    [](char upper, char c) { return UpperAscii(c) == upper; });
    if (!isNamed) return {};
    text.remove_prefix(kWord.size());
    skip(" \t");
    const std::size_t end = text.find_last_not_of(" \t\r.");
    return text.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

}  // namespace quillet
