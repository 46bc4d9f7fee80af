// The conversion knows nothing of macros: it cuts their bodies into commands like any other text.
// So a definition is looked for line by line, in whatever command it stands.
#include "driver/macrodefinitions.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "driver/commandwords.h"
#include "driver/linewalker.h"
#include "platform/multibyte.h"

namespace quillet {

namespace {

constexpr std::string_view kDefine = "DEFINE";
constexpr std::string_view kEndDefine = "ENDDEFINE";

std::vector<std::size_t> FindEnds(std::string_view text) {
    std::vector<std::size_t> ends;
    std::size_t mark = text.find('!');
    while (mark != std::string_view::npos) {
        if (BeginsWithWord(text.substr(mark + 1, kEndDefine.size() + 2), kEndDefine)) {
            ends.push_back(mark);
        }
        mark = text.find('!', mark + 1);
    }
    return ends;
}

// A name with its exclamation mark, if it has one.
std::string_view NameAt(std::string_view text) {
    const std::size_t mark = text.starts_with('!') ? 1 : 0;
    return text.substr(0, mark + WordLength(text.substr(mark)));
}

class DefinitionFinder {
public:
    DefinitionFinder(const SourceLines& lines, const std::vector<CommandExtent>& extents)
        : m_lines(lines), m_text(lines.Text()), m_extents(extents), m_ends(FindEnds(m_text)) {}

    std::vector<MacroDefinition> Run() {
        if (m_ends.empty()) return {};
        for (const CommandExtent& extent : m_extents) {
            if (IsSearched(extent)) Search(extent);
        }
        for (std::size_t number = 0; number < m_places.size(); ++number) {
            const bool isLast = number + 1 == m_places.size();
            AddDefinition(m_places[number], isLast ? m_text.size() : m_places[number + 1].offset);
        }
        return std::move(m_found);
    }

private:
    struct Place {
        long line;
        std::size_t offset;
    };

    void Search(const CommandExtent& extent) {
        const LineContext context =
            extent.kind == CommandKind::kComment ? LineContext::kFreeText : LineContext::kSyntax;
        for (long line = extent.firstLine; line <= extent.lastLine; ++line) {
            LineWalker walker(m_lines.Line(line), context);
            LinePlace place;
            while (walker.Next(place)) {
                if (place.kind != LinePlace::Kind::kLastPeriod) {
                    LookAt(line, m_lines.BeginOf(line) + place.offset);
                }
            }
        }
    }

    // Notes the place of a word DEFINE.
    void LookAt(long line, std::size_t offset) {
        if (BeginsWithWord(m_text.substr(offset, kDefine.size() + 2), kDefine)) {
            m_places.push_back({line, offset});
        }
    }

    // `limit` is where the next such word stands.
    void AddDefinition(const Place& place, std::size_t limit) {
        if (!m_found.empty() && place.offset < m_found.back().bodyEnd) return;
        const auto end = std::lower_bound(m_ends.begin(), m_ends.end(), place.offset);
        if (end == m_ends.end()) return;
        limit = std::min(limit, *end);
        const std::size_t begin =
            m_text.find_first_not_of(kWhiteSpace, place.offset + kDefine.size());
        if (begin >= limit) return;
        const std::string_view name = NameAt(m_text.substr(begin, limit - begin));
        if (name.empty()) return;
        const std::optional<std::size_t> bodyBegin = FindBody(begin + name.size(), limit);
        // Without a list of arguments it may be an English sentence.
        if (!bodyBegin && !name.starts_with('!')) return;
        MacroDefinition definition;
        definition.name = std::string(name);
        definition.line = place.line;
        definition.bodyBegin = bodyBegin.value_or(begin + name.size());
        definition.bodyEnd = *end;
        m_found.push_back(std::move(definition));
    }

    // Where the list of arguments that begins at `offset` is over; none when there is no such list
    // before `end`.
    [[nodiscard]] std::optional<std::size_t> FindBody(std::size_t offset, std::size_t end) const {
        const std::string_view text = m_text.substr(0, end);
        std::size_t position = text.find_first_not_of(kWhiteSpace, offset);
        if (position == std::string_view::npos || text[position] != '(') return std::nullopt;
        int depth = 0;
        while (true) {
            position = text.find_first_of("()'\"", position);
            if (position == std::string_view::npos) return std::nullopt;
            const char c = text[position];
            if (c == '(' || c == ')') {
                depth += c == '(' ? 1 : -1;
                if (depth == 0) return position + 1;
            } else {
                position = text.find(c, position + 1);
                if (position == std::string_view::npos) return std::nullopt;
            }
            ++position;
        }
    }

    const SourceLines& m_lines;
    std::string_view m_text;
    const std::vector<CommandExtent>& m_extents;
    std::vector<std::size_t> m_ends;
    std::vector<Place> m_places;
    std::vector<MacroDefinition> m_found;
};

class CallCounter {
public:
    CallCounter(const SourceLines& lines, std::vector<MacroDefinition>& definitions)
        : m_lines(lines), m_definitions(definitions) {}

    void Count(const CommandExtent& extent) {
        for (long line = extent.firstLine; line <= extent.lastLine; ++line) CountIn(line);
    }

private:
    void CountIn(long line) {
        const std::string_view text = m_lines.Line(line);
        const std::size_t begin = m_lines.BeginOf(line);
        std::size_t position = 0;
        while (position < text.size()) {
            const char c = text[position];
            const std::string_view name = NameAt(text.substr(position));
            if (name.size() > 1 || (!name.empty() && name != "!")) {
                Look(name, begin + position, line);
                position += name.size();
            } else if (c == '\'' || c == '"') {
                const std::size_t end = text.find(c, position + 1);
                position = end == std::string_view::npos ? text.size() : end + 1;
            } else if (text.substr(position, 2) == "/*") {
                const std::size_t end = text.find("*/", position + 2);
                position = end == std::string_view::npos ? text.size() : end + 2;
            } else {
                ++position;
            }
        }
    }

    void Look(std::string_view name, std::size_t offset, long line) {
        // A later definition of the same name takes the place of the earlier one.
        while (m_next < m_definitions.size() && m_definitions[m_next].bodyEnd <= offset) {
            m_known[InUpperAscii(m_definitions[m_next].name)] = m_next;
            ++m_next;
        }
        if (m_known.empty()) return;
        const auto known = m_known.find(InUpperAscii(name));
        if (known == m_known.end()) return;
        MacroDefinition& definition = m_definitions[known->second];
        // Where it is defined once more it is not called.
        if (m_next < m_definitions.size() && m_definitions[m_next].bodyBegin > offset &&
            m_definitions[m_next].line <= line) {
            return;
        }
        if (definition.calls == 0) definition.firstCallLine = line;
        ++definition.calls;
    }

    const SourceLines& m_lines;
    std::vector<MacroDefinition>& m_definitions;
    std::unordered_map<std::string, std::size_t> m_known;
    std::size_t m_next = 0;
};

}  // namespace

std::vector<MacroDefinition> FindMacroDefinitions(const SourceLines& lines,
                                                  const std::vector<CommandExtent>& extents) {
    return DefinitionFinder(lines, extents).Run();
}

void CountMacroCalls(const SourceLines& lines, const std::vector<CommandExtent>& extents,
                     bool batchMode, std::vector<MacroDefinition>& definitions) {
    CallCounter counter(lines, definitions);
    for (const CommandExtent& extent : extents) {
        const bool isSyntax =
            extent.kind == CommandKind::kOrdinary ||
            (extent.kind == CommandKind::kComment && !IsRealComment(lines, extent, batchMode));
        if (isSyntax) counter.Count(extent);
    }
}

bool IsSearched(const CommandExtent& extent) {
    if (extent.kind == CommandKind::kInlineData) return !extent.isEnded;
    return extent.kind != CommandKind::kDocument;
}

}  // namespace quillet
