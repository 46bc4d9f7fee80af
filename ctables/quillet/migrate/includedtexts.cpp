// An included file is read as it would be if it was converted itself: encoding, layout and blank
// lines are settled in the same order. Many files include the same few, so what was read is kept;
// of most there is nothing to be kept but that they define no macro.
#include "migrate/includedtexts.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "migrate/filetree.h"
#include "migrate/legacysearch.h"
#include "migrate/recodedtext.h"
#include "migrate/systemfiles.h"
#include "platform/codepage.h"
#include "platform/multibyte.h"

namespace quillet::migrate {

namespace {

// Larger files are read each time that they are included.
constexpr std::uint64_t kMostBytesKept = 64UL * 1024 * 1024;

bool IsWordAt(std::string_view text, std::size_t position, std::string_view word) {
    if (text.size() - position < word.size()) return false;
    for (std::size_t index = 0; index < word.size(); ++index) {
        if (LowerAscii(text[position + index]) != word[index]) return false;
    }
    return true;
}

// Each byte of a code page in which every byte is a character, by that character in UTF-8.
using BytesOfCharacters = std::unordered_map<std::string, char>;

BytesOfCharacters BytesIn(const TextInEncoding& encoding) {
    constexpr int kFirst = 128;
    constexpr int kLast = 255;
    BytesOfCharacters bytes;
    for (int value = kFirst; value <= kLast; ++value) {
        const char byte = static_cast<char>(value);
        bytes.emplace(ToUtf8({&byte, 1}, encoding.encoding, encoding.named.get()), byte);
    }
    return bytes;
}

// A text of UTF-8 in another encoding. What that lacks, or has in two bytes, becomes "?": it
// stands in no name that the including file could call.
std::string FromUtf8(std::string_view text, const TextInEncoding& target) {
    const BytesOfCharacters bytes = BytesIn(target);
    std::string result;
    while (!text.empty()) {
        const bool isAscii = (static_cast<unsigned char>(text[0]) & 0x80U) == 0;
        const std::size_t length =
            isAscii ? 1
                    : std::max(CodePage::Utf8().NonAsciiLength(text.data(), text.size()),
                               std::size_t{1});
        const auto found = bytes.find(std::string(text.substr(0, length)));
        result += isAscii ? text[0] : found == bytes.end() ? '?' : found->second;
        text.remove_prefix(length);
    }
    return result;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return (static_cast<unsigned char>(byte) & 0x80U) == 0; });
}

}  // namespace

TextInEncoding EncodingOfText(std::string_view text, const std::shared_ptr<const CodePage>& named) {
    Utf8Validator validator;
    if (validator.Add(text) && validator.IsValid()) return {};
    if (named != nullptr) return {TextEncoding::kNamed, named};
    return {TextEncoding::kSystem, nullptr};
}

bool MayHoldMacros(std::string_view text) {
    constexpr std::string_view kDefine = "define";
    constexpr std::array<std::string_view, 2> kIncludes = {"include", "insert"};
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char letter = LowerAscii(text[position]);
        if (letter == 'd' && IsWordAt(text, position, kDefine)) return true;
        if (letter != 'i') continue;
        for (const std::string_view word : kIncludes) {
            if (IsWordAt(text, position, word)) return true;
        }
    }
    return false;
}

Options SettledText::ConversionOptions() const {
    Options options;
    options.batchMode = batchMode;
    options.legacyCodePage = LegacyCodePage::kSystem;
    options.namedCodePage = encoding.named;
    return options;
}

bool IncludedTexts::Find(std::string_view path, const std::string& includingFile,
                         const TextInEncoding& target, IncludedText& file, IncludeLookup& lookup) {
    lookup = {std::string(path), includingFile, {}, {}};
    const std::optional<std::string> found = m_findPath(path, includingFile);
    if (!found) return false;
    const std::shared_ptr<const SettledText> text = Read(*found);
    if (text == nullptr) return false;
    lookup.file = *found;
    lookup.hash = text->hash;
    file.name = *found;
    file.batchMode = text->batchMode;
    const bool isInTarget =
        text->encoding.encoding == target.encoding &&
        (target.encoding != TextEncoding::kNamed || text->encoding.named == target.named);
    if (isInTarget || IsAscii(text->text)) {
        file.text = text->text;
        return true;
    }
    file.text = ToUtf8(text->text, text->encoding.encoding, text->encoding.named.get());
    if (target.encoding != TextEncoding::kUtf8) file.text = FromUtf8(file.text, target);
    return true;
}

bool IncludedTexts::AreTheSame(const std::vector<IncludeLookup>& lookups) {
    return std::all_of(lookups.begin(), lookups.end(), [this](const IncludeLookup& lookup) {
        if (IsCallsLookup(lookup)) return true;
        const std::optional<std::string> found = m_findPath(lookup.path, lookup.includingFile);
        const std::shared_ptr<const SettledText> text = found ? Read(*found) : nullptr;
        if (text == nullptr) return lookup.file.empty();
        return *found == lookup.file && text->hash == lookup.hash;
    });
}

std::shared_ptr<const SettledText> IncludedTexts::Read(const std::string& path) {
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_texts.find(path);
        if (found != m_texts.end()) return found->second;
    }
    // Two threads may read the same file, and find the same.
    std::shared_ptr<const SettledText> text = ReadFile(path);
    const std::lock_guard lock(m_mutex);
    const std::uint64_t size = text != nullptr ? text->text.size() : 0;
    if (m_textBytes + size <= kMostBytesKept && m_texts.emplace(path, text).second) {
        m_textBytes += size;
    }
    return text;
}

std::shared_ptr<const SettledText> IncludedTexts::ReadFile(const std::string& path) const {
    constexpr std::size_t kFirstLine = 200;
    std::error_code error;
    const std::unique_ptr<SourceFile> source = SourceFile::Open(m_settings.sourceRoot, path, error);
    if (source == nullptr) return nullptr;
    const Content content = LookAtContent(*source);
    auto result = std::make_shared<SettledText>();
    result->hash = HashRest(*source);
    if (source->Failed() || !source->Rewind()) return nullptr;

    std::optional<ByteOrder> byteOrder;
    if (content == Content::kUtf16LittleEndian) byteOrder = ByteOrder::kLittleEndian;
    if (content == Content::kUtf16BigEndian) byteOrder = ByteOrder::kBigEndian;
    if (!byteOrder && content != Content::kText) return nullptr;
    std::optional<Utf16Input> decoded;
    if (byteOrder) decoded.emplace(*source, *byteOrder);
    ReadText(decoded ? static_cast<TextInput&>(*decoded) : *source, result->text);
    if (source->Failed() || (decoded && decoded->IsInvalid())) return nullptr;
    if (!MayHoldMacros(result->text)) {
        result->text.clear();
        return result;
    }
    if (result->text.find('\n') == std::string::npos) {
        std::replace(result->text.begin(), result->text.end(), '\r', '\n');
    }
    const Encoding* pNamed = m_settings.encodingRules.ForPath(path);
    if (pNamed == nullptr) {
        const std::string_view text = result->text;
        const std::string_view name = EncodingNamedIn(text.substr(0, kFirstLine));
        if (!name.empty()) pNamed = m_settings.encodings.Find(name);
    }
    result->encoding = EncodingOfText(result->text, pNamed != nullptr ? pNamed->codePage : nullptr);
    Options options = result->ConversionOptions();
    const Layout layout = m_settings.layoutRules.ForPath(path);
    options.batchMode = layout == Layout::kAuto ? ChooseLayout(result->text, options).batchMode
                                                : layout == Layout::kBatch;
    result->batchMode = options.batchMode;
    if (m_settings.endsAtBlankLines) result->text = EndAtBlankLines(result->text, options);
    return result;
}

}  // namespace quillet::migrate
