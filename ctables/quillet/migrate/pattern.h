// Patterns for file names, as `--include` and `--exclude` take them.
#ifndef QUILLET_MIGRATE_PATTERN_H
#define QUILLET_MIGRATE_PATTERN_H

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillet::migrate {

/// A pattern of characters of which `*` stands for any number of characters, `?` for one and
/// `[a-z]` for one of a set (`[!a-z]`: one that is not in it; a "]" comes first in its set). A
/// "[" that opens no set stands for itself. Letter case does not count.
///
/// A pattern with a "/" is matched against the whole relative path, in which `*` goes across
/// folders, any other against the file name alone. A "/" in front only tells that.
///
/// Names are bytes: what is UTF-8 is matched by characters, each other byte is one of its own.
class NamePattern {
public:
    explicit NamePattern(std::string_view pattern);

    /// `path` is relative and has "/" between its folders. Cost: at most the product of the two
    /// lengths.
    [[nodiscard]] bool Matches(std::string_view path) const;

private:
    // A character is represented by its bytes in capitals, the first one in the highest place.
    using Character = std::uint32_t;
    using Characters = std::vector<Character>;

    enum class ElementKind { kCharacter, kAnyCharacter, kAnyCharacters, kSet };
    struct Element {
        ElementKind kind = ElementKind::kCharacter;
        Character character = 0;
        bool isNegated = false;
        std::vector<std::pair<Character, Character>> ranges;
    };

    [[nodiscard]] static Characters Fold(std::string_view text);
    [[nodiscard]] static bool ParseSet(const Characters& pattern, std::size_t& position,
                                       Element& element);
    [[nodiscard]] static bool MatchesOne(const Element& element, Character character);

    bool m_isForPath;
    std::vector<Element> m_elements;
};

/// Which names are wanted.
class NameFilter {
public:
    /// Without an `include` pattern every name is included.
    NameFilter(const std::vector<std::string>& include, const std::vector<std::string>& exclude);

    [[nodiscard]] bool Accepts(std::string_view path) const;

    /// Sets the value of each `include` pattern that matches `path`, be that excluded or not.
    void NoteIncluded(std::string_view path, std::vector<bool>& areMatched) const;

private:
    std::vector<NamePattern> m_include;
    std::vector<NamePattern> m_exclude;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_PATTERN_H
