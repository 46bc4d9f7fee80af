// Code pages by name, by the C library's own conversions.
//
// A converter has a state, so no two threads can share one. Characters of one or two bytes, which
// are nearly all that there are, are looked up in tables that are made once; only for longer ones a
// converter is opened each time.
#include "platform/namedcodepage.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/unicodeuppercase.h"

namespace quillet {

namespace {

constexpr std::size_t kAsciiBytes = 0x80;
constexpr std::size_t kBytes = 0x100;
constexpr std::size_t kLongestCharacter = 4;  // bytes, of GB18030 and EUC-TW
constexpr std::size_t kCodePointSize = 4;
constexpr const char* kCodePoints = "UTF-32LE";

// In the tables, in place of a code point.
constexpr char32_t kNoCharacter = 0xFFFFFFFF;
constexpr char32_t kIncomplete = 0xFFFFFFFE;  // the beginning of longer ones
constexpr char32_t kSeveral = 0xFFFFFFFD;     // a character that is several code points

unsigned char IndexOf(char byte) { return static_cast<unsigned char>(byte); }

char ByteAt(std::size_t index) { return static_cast<char>(static_cast<unsigned char>(index)); }

class Converter {
public:
    Converter(const char* pTo, const char* pFrom) : m_converter(iconv_open(pTo, pFrom)) {}
    ~Converter() {
        if (IsOpen()) static_cast<void>(iconv_close(m_converter));
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    [[nodiscard]] bool IsOpen() const {
        // The system's own way of saying that there is none.
        return m_converter != reinterpret_cast<iconv_t>(-1);  // NOLINT
    }

    // `bytes`, which are to be one character, in the other encoding. Empty when they are none, or
    // one that the other does not have.
    [[nodiscard]] std::string Convert(std::string_view bytes) {
        std::array<char, kLongestCharacter> input{};
        std::array<char, 4 * kCodePointSize> output{};
        std::size_t inputLeft = bytes.copy(input.data(), input.size());
        std::size_t outputLeft = output.size();
        char* pInput = input.data();
        char* pOutput = output.data();
        static_cast<void>(iconv(m_converter, nullptr, nullptr, nullptr, nullptr));
        errno = 0;
        const bool isExact =
            iconv(m_converter, &pInput, &inputLeft, &pOutput, &outputLeft) == 0 &&
            // A letter may have been kept back that could be joined by a mark after it.
            iconv(m_converter, nullptr, nullptr, &pOutput, &outputLeft) == 0;
        m_isIncomplete = !isExact && errno == EINVAL;
        return isExact ? std::string(output.data(), pOutput) : std::string();
    }

    // The bytes converted last could be the beginning of a character.
    [[nodiscard]] bool IsIncomplete() const { return m_isIncomplete; }

private:
    iconv_t m_converter;
    bool m_isIncomplete = false;
};

// What `bytes` mean, for a converter to `kCodePoints`; one of the values above when they are not
// exactly one code point.
char32_t Decode(Converter& decoder, std::string_view bytes) {
    const std::string text = decoder.Convert(bytes);
    if (text.empty()) return decoder.IsIncomplete() ? kIncomplete : kNoCharacter;
    if (text.size() != kCodePointSize) return kSeveral;
    char32_t codePoint = 0;
    for (std::size_t index = kCodePointSize; index > 0; --index) {
        codePoint = codePoint << 8U | IndexOf(text[index - 1]);
    }
    return codePoint;
}

// `codePoint` for a converter from `kCodePoints`; empty when the encoding does not have it.
std::string Encode(Converter& encoder, char32_t codePoint) {
    std::string text;
    for (std::size_t index = 0; index < kCodePointSize; ++index) {
        text += ByteAt(codePoint >> (8U * index) & 0xFFU);
    }
    return encoder.Convert(text);
}

bool IsCharacter(char32_t value) { return value != kNoCharacter && value != kIncomplete; }

class IconvCodePage final : public CodePage {
public:
    IconvCodePage(std::string name, Converter& decoder, Converter& encoder)
        : m_name(std::move(name)), m_loaded(kCodePoints, m_name.c_str()) {
        m_singles.fill(kNoCharacter);
        for (std::size_t lead = kAsciiBytes; lead < kBytes; ++lead) {
            const std::string bytes(1, ByteAt(lead));
            m_singles[lead] = Note(bytes, decoder, encoder);
            if (m_singles[lead] == kIncomplete) NotePairs(bytes, decoder, encoder);
        }
    }

    [[nodiscard]] std::size_t NonAsciiLength(const char* bytes,
                                             std::size_t maxBytes) const override {
        const char32_t single = m_singles[IndexOf(*bytes)];
        if (single != kIncomplete) return IsCharacter(single) ? 1 : 0;
        if (maxBytes < 2) return 0;
        const char32_t pair = PairAt(bytes);
        if (pair != kIncomplete) return IsCharacter(pair) ? 2 : 0;
        Converter decoder(kCodePoints, m_name.c_str());
        for (std::size_t length = 3; length <= std::min(maxBytes, kLongestCharacter); ++length) {
            const char32_t value =
                decoder.IsOpen() ? Decode(decoder, {bytes, length}) : kNoCharacter;
            if (value != kIncomplete) return IsCharacter(value) ? length : 0;
        }
        return 0;
    }

    void AppendUpper(std::string_view character, std::string& result) const override {
        const auto found = m_capitals.find(std::string(character));
        result.append(found != m_capitals.end() ? found->second : character);
    }

    void AppendAsUtf8(std::string_view character, std::string& result) const override {
        const char32_t known = character.size() == 1   ? m_singles[IndexOf(character.front())]
                               : character.size() == 2 ? PairAt(character.data())
                                                       : kSeveral;
        if (known != kSeveral) {
            AppendCodePoint(IsCharacter(known) ? known : kReplacementCharacter, result);
            return;
        }
        Converter converter("UTF-8", m_name.c_str());
        const std::string text = converter.IsOpen() ? converter.Convert(character) : std::string();
        if (text.empty()) AppendCodePoint(kReplacementCharacter, result);
        result.append(text);
    }

private:
    // Finds out what `bytes` are, and their capital.
    char32_t Note(const std::string& bytes, Converter& decoder, Converter& encoder) {
        const char32_t value = Decode(decoder, bytes);
        if (!IsCharacter(value) || value == kSeveral) return value;
        const char32_t capital = SimpleUppercase(value);
        if (capital == value) return value;
        std::string upper = Encode(encoder, capital);
        if (!upper.empty() && IndexOf(upper.front()) >= kAsciiBytes) {
            m_capitals.emplace(bytes, std::move(upper));
        }
        return value;
    }

    void NotePairs(const std::string& lead, Converter& decoder, Converter& encoder) {
        m_firstPairs[IndexOf(lead.front())] = m_pairs.size();
        for (std::size_t trail = 0; trail < kBytes; ++trail) {
            m_pairs.push_back(Note(lead + ByteAt(trail), decoder, encoder));
        }
    }

    // Of a lead that is incomplete alone.
    [[nodiscard]] char32_t PairAt(const char* bytes) const {
        return m_pairs[m_firstPairs[IndexOf(bytes[0])] + IndexOf(bytes[1])];
    }

    std::string m_name;
    // Never used: while one is open, the C library keeps the code of this conversion loaded,
    // instead of loading and unloading it around each character.
    Converter m_loaded;
    std::array<char32_t, kBytes> m_singles{};
    std::array<std::size_t, kBytes> m_firstPairs{};  // of each lead, in the following
    std::vector<char32_t> m_pairs;
    std::unordered_map<std::string, std::string> m_capitals;
};

// The backslash and the tilde are other characters in some encodings of Asia; as bytes of syntax
// they mean the same there.
bool HasAscii(Converter& decoder) {
    for (std::size_t byte = 1; byte < kAsciiBytes; ++byte) {
        if (byte == '\\' || byte == '~') continue;
        if (Decode(decoder, std::string(1, ByteAt(byte))) != byte) return false;
    }
    return true;
}

}  // namespace

std::unique_ptr<const CodePage> MakeNamedCodePage(const std::string& name) {
    // The system takes an empty name for that of its own, and what follows a slash as a wish.
    if (name.empty() || name.find('/') != std::string::npos) return nullptr;
    Converter decoder(kCodePoints, name.c_str());
    Converter encoder(name.c_str(), kCodePoints);
    if (!decoder.IsOpen() || !encoder.IsOpen() || !HasAscii(decoder)) return nullptr;
    return std::make_unique<const IconvCodePage>(name, decoder, encoder);
}

}  // namespace quillet
