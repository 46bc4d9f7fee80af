#include "migrate/pattern.h"

#include <algorithm>
#include <utility>

#include "platform/codepage.h"

namespace quillet::migrate {

namespace {

constexpr unsigned kFirstNonAscii = 0x80;
// Above all characters, whose first byte is never 0xFF.
constexpr std::uint32_t kLoneByte = 0xFF000000U;

std::uint32_t Pack(std::string_view bytes) {
    std::uint32_t packed = 0;
    for (const char byte : bytes) packed = packed << 8U | static_cast<unsigned char>(byte);
    return packed;
}

std::string_view FileNameOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }

bool MatchesAny(const std::vector<NamePattern>& patterns, std::string_view path) {
    return std::any_of(patterns.begin(), patterns.end(),
                       [path](const NamePattern& pattern) { return pattern.Matches(path); });
}

}  // namespace

NamePattern::NamePattern(std::string_view pattern)
    : m_isForPath(pattern.find('/') != std::string_view::npos) {
    if (pattern.starts_with('/')) pattern.remove_prefix(1);
    const Characters characters = Fold(pattern);
    for (std::size_t position = 0; position < characters.size();) {
        Element element;
        element.character = characters[position++];
        if (element.character == '*') {
            element.kind = ElementKind::kAnyCharacters;
        } else if (element.character == '?') {
            element.kind = ElementKind::kAnyCharacter;
        } else if (element.character == '[' && ParseSet(characters, position, element)) {
            element.kind = ElementKind::kSet;
        }
        m_elements.push_back(std::move(element));
    }
}

NamePattern::Characters NamePattern::Fold(std::string_view text) {
    Characters characters;
    std::string upper;
    while (!text.empty()) {
        const auto first = static_cast<unsigned char>(text.front());
        if (first < kFirstNonAscii) {
            const bool isSmall = first >= 'a' && first <= 'z';
            characters.push_back(isSmall ? first - ('a' - 'A') : first);
            text.remove_prefix(1);
            continue;
        }
        const std::size_t length = CodePage::Utf8().NonAsciiLength(text.data(), text.size());
        if (length == 0) {
            characters.push_back(kLoneByte + first);
            text.remove_prefix(1);
            continue;
        }
        upper.clear();
        CodePage::Utf8().AppendUpper(text.substr(0, length), upper);
        characters.push_back(Pack(upper));
        text.remove_prefix(length);
    }
    return characters;
}

// `position` stands after the "["; it is moved after the "]" only when there is one.
bool NamePattern::ParseSet(const Characters& pattern, std::size_t& position, Element& element) {
    std::size_t next = position;
    element.isNegated = next < pattern.size() && (pattern[next] == '!' || pattern[next] == '^');
    if (element.isNegated) ++next;
    const std::size_t first = next;
    while (next < pattern.size() && (pattern[next] != ']' || next == first)) {
        const Character low = pattern[next++];
        const bool isRange =
            next + 1 < pattern.size() && pattern[next] == '-' && pattern[next + 1] != ']';
        element.ranges.emplace_back(low, isRange ? pattern[next + 1] : low);
        if (isRange) next += 2;
    }
    if (next >= pattern.size()) return false;
    position = next + 1;
    return true;
}

bool NamePattern::MatchesOne(const Element& element, Character character) {
    switch (element.kind) {
        case ElementKind::kCharacter:
            return element.character == character;
        case ElementKind::kAnyCharacter:
            return true;
        case ElementKind::kAnyCharacters:
            return false;
        case ElementKind::kSet:
            break;
    }
    const bool isInSet =
        std::any_of(element.ranges.begin(), element.ranges.end(), [character](const auto& range) {
            return range.first <= character && character <= range.second;
        });
    return isInSet != element.isNegated;
}

bool NamePattern::Matches(std::string_view path) const {
    const Characters name = Fold(m_isForPath ? path : FileNameOf(path));
    std::size_t element = 0;
    std::size_t position = 0;
    // Where to go on when what follows the last star does not fit: the star takes one more
    // character. Earlier stars need not be looked at again.
    std::size_t elementAfterStar = m_elements.size() + 1;
    std::size_t starEnd = 0;
    while (position < name.size()) {
        if (element < m_elements.size() &&
            m_elements[element].kind == ElementKind::kAnyCharacters) {
            elementAfterStar = ++element;
            starEnd = position;
        } else if (element < m_elements.size() && MatchesOne(m_elements[element], name[position])) {
            ++element;
            ++position;
        } else if (elementAfterStar <= m_elements.size()) {
            element = elementAfterStar;
            position = ++starEnd;
        } else {
            return false;
        }
    }
    return std::all_of(
        m_elements.begin() + static_cast<std::ptrdiff_t>(element), m_elements.end(),
        [](const Element& rest) { return rest.kind == ElementKind::kAnyCharacters; });
}

NameFilter::NameFilter(const std::vector<std::string>& include,
                       const std::vector<std::string>& exclude)
    : m_include(include.begin(), include.end()), m_exclude(exclude.begin(), exclude.end()) {}

void NameFilter::NoteIncluded(std::string_view path, std::vector<bool>& areMatched) const {
    areMatched.resize(m_include.size());
    for (std::size_t index = 0; index < m_include.size(); ++index) {
        if (!areMatched[index]) areMatched[index] = m_include[index].Matches(path);
    }
}

bool NameFilter::Accepts(std::string_view path) const {
    return (m_include.empty() || MatchesAny(m_include, path)) && !MatchesAny(m_exclude, path);
}

}  // namespace quillet::migrate
