#include "migrate/encodings.h"

#include <algorithm>

#include "platform/multibyte.h"

namespace quillet::migrate {

namespace {

constexpr std::string_view kBlanks = " \t";

std::string InLowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerAscii);
    return lower;
}

void SkipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
}

// Takes `word`, in lower case, from the beginning of `text`.
bool Take(std::string_view& text, std::string_view word) {
    if (InLowerCase(text.substr(0, word.size())) != word) return false;
    text.remove_prefix(word.size());
    return true;
}

// Files of UTF-16 without a byte-order mark come from systems whose own order it is.
std::optional<ByteOrder> ByteOrderOf(std::string_view name) {
    if (name == "utf-16" || name == "utf16" || name == "utf-16le") return ByteOrder::kLittleEndian;
    if (name == "utf-16be") return ByteOrder::kBigEndian;
    return std::nullopt;
}

}  // namespace

std::string EncodingKeyOf(std::string_view name) { return InLowerCase(name); }

const Encoding* Encodings::Find(std::string_view name) {
    std::string key = EncodingKeyOf(name);
    const std::lock_guard lock(m_mutex);
    const auto found = m_found.find(key);
    if (found != m_found.end()) return found->second.get();
    Encoding encoding{std::string(name), nullptr, ByteOrderOf(key)};
    if (!encoding.byteOrder) encoding.codePage = FindCodePage(encoding.name);
    const bool isKnown = encoding.byteOrder || encoding.codePage != nullptr;
    return m_found
        .emplace(std::move(key),
                 isKnown ? std::make_unique<const Encoding>(std::move(encoding)) : nullptr)
        .first->second.get();
}

const Encoding* EncodingRules::ForPath(std::string_view path) const {
    const auto rule = std::find_if(m_rules.rbegin(), m_rules.rend(), [path](const auto& candidate) {
        return candidate.first.Matches(path);
    });
    return rule != m_rules.rend() ? rule->second : m_pForAll;
}

std::string_view EncodingNamedIn(std::string_view beginning) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (beginning.starts_with(kByteOrderMark)) beginning.remove_prefix(kByteOrderMark.size());
    std::string_view line = beginning.substr(0, beginning.find_first_of("\r\n"));
    SkipBlanks(line);
    if (!Take(line, "*")) return {};
    SkipBlanks(line);
    if (!Take(line, "encoding")) return {};
    SkipBlanks(line);
    if (!Take(line, ":")) return {};
    SkipBlanks(line);
    const std::size_t last = line.find_last_not_of(" \t.");
    line = line.substr(0, last == std::string_view::npos ? 0 : last + 1);
    return line.find_first_of(kBlanks) == std::string_view::npos ? line : std::string_view();
}

}  // namespace quillet::migrate
