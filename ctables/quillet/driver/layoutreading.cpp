// Which layout a text was written for stands nowhere in it. But in the wrong one its commands run
// into each other, or fall apart into pieces that begin with no command's word.
#include "driver/layoutreading.h"

#include <string>
#include <unordered_set>

#include "driver/commandwords.h"
#include "driver/legacywords.h"
#include "driver/linewalker.h"
#include "driver/outputfile.h"
#include "platform/multibyte.h"

namespace quillet {

namespace {

// A sign or two in the first column may be slips; three are a habit.
constexpr long kHabit = 3;

class LayoutReader {
public:
    LayoutReader(const SourceLines& lines, const std::vector<MacroDefinition>& definitions,
                 bool batchMode)
        : m_lines(lines), m_definitions(definitions), m_batchMode(batchMode) {
        for (const MacroDefinition& definition : definitions)
            m_names.insert(InUpperAscii(definition.name));
    }

    LayoutReading Read(const TextCut& cut) {
        m_reading.hasTokenizingError = cut.hasError;
        for (const CommandExtent& extent : cut.extents) {
            if (IsCounted(extent)) Count(extent);
        }
        return m_reading;
    }

private:
    // Comments, documents and data say nothing about the layout, nor do the bodies of macros.
    bool IsCounted(const CommandExtent& extent) {
        if (!extent.isReadable || extent.kind == CommandKind::kDocument ||
            extent.kind == CommandKind::kInlineData) {
            return false;
        }
        m_begin = FirstTextIn(m_lines, extent.firstLine, extent.lastLine, m_batchMode);
        if (IsRealComment(m_lines, extent, m_batchMode)) return false;
        while (m_next < m_definitions.size() && m_definitions[m_next].bodyEnd < m_begin) ++m_next;
        return m_next == m_definitions.size() || m_begin < m_definitions[m_next].bodyBegin;
    }

    [[nodiscard]] std::string_view Rest() const {
        return m_lines.Text().substr(m_begin, kLongestCommandName);
    }

    void Count(const CommandExtent& extent) {
        ++m_reading.commands;
        if (BeginsWithCommandWord()) ++m_reading.withCommandWord;
        if (!HasLastPeriod(extent)) ++m_reading.withoutPeriod;
        const std::string_view line = m_lines.Line(extent.firstLine);
        if (line.starts_with('+') || line.starts_with('-')) ++m_reading.withSign;
    }

    [[nodiscard]] bool BeginsWithCommandWord() const {
        const std::string_view rest = Rest();
        if (rest.starts_with('!') || !CommandAt(rest).empty()) return true;
        // Of these words three letters are enough.
        if (LegacyCommandAt(m_lines.Text(), m_begin) != CommandType::kOrdinary) return true;
        const std::size_t length = WordLength(rest);
        return length > 0 && m_names.contains(InUpperAscii(rest.substr(0, length)));
    }

    // True when a person sees a period at the command's end, whatever comment follows it.
    [[nodiscard]] bool HasLastPeriod(const CommandExtent& extent) const {
        if (extent.isEnded) return true;
        LineWalker walker(m_lines.Line(extent.lastLine), LineContext::kSyntax);
        LinePlace place;
        while (walker.Next(place)) {
            if (place.kind == LinePlace::Kind::kLastPeriod) return true;
        }
        return false;
    }

    const SourceLines& m_lines;
    const std::vector<MacroDefinition>& m_definitions;
    bool m_batchMode;
    std::unordered_set<std::string> m_names;
    LayoutReading m_reading;
    std::size_t m_begin = 0;
    std::size_t m_next = 0;
};

// True when what begins with no command's word is one in ten at most.
bool HasCommandWords(const LayoutReading& reading) {
    return reading.commands > 0 && 10 * reading.withCommandWord >= 9 * reading.commands;
}

// Read in batch layout, a text that was written for it has commands that a reader in interactive
// layout would find no end of. A few runaway comments in a text full of periods do not make one.
bool LooksLikeBatch(const LayoutReading& batch) {
    const long signs = batch.withSign >= kHabit ? batch.withSign : 0;
    return 2 * (batch.withoutPeriod + signs) > batch.commands;
}

bool MayEndCommand(std::string_view line) {
    const std::size_t last = line.find_last_not_of(" \t\r");
    // An open comment may follow the period; inline data ends without one.
    return line[last] == '.' || line.find("/*") != std::string_view::npos ||
           CommandAt(line) == "END DATA";
}

// No fewer commands than there are in batch layout, found without cutting the text: each begins in
// the first column, or after one that is ended, or after a blank line.
long MostBatchCommands(const SourceLines& lines) {
    long count = 0;
    bool isAfterEnd = true;
    for (long number = 1; number <= lines.Count(); ++number) {
        const std::string_view line = lines.Line(number);
        if (IsBlankLine(line)) {
            isAfterEnd = true;
            continue;
        }
        // Only a blank continues a command, a tab does not.
        if (isAfterEnd || line.front() != ' ') ++count;
        isAfterEnd = MayEndCommand(line);
    }
    return count;
}

}  // namespace

const TextCut& LayoutComparison::Cut(bool batchMode) {
    Layout& layout = Of(batchMode);
    if (!layout.cut) {
        CutSettings settings;
        settings.batchMode = batchMode;
        settings.checksTokens = true;
        layout.cut = CutText(m_lines, m_codePage, settings);
    }
    return *layout.cut;
}

const LayoutReading& LayoutComparison::Reading(bool batchMode) {
    Layout& layout = Of(batchMode);
    if (!layout.reading) {
        layout.reading = LayoutReader(m_lines, m_definitions, batchMode).Read(Cut(batchMode));
    }
    return *layout.reading;
}

bool LayoutComparison::ReadsWell(bool batchMode) {
    const LayoutReading& reading = Reading(batchMode);
    return HasCommandWords(reading) && !reading.hasTokenizingError;
}

bool LayoutComparison::IsForTheOther(bool batchMode) {
    const LayoutReading& used = Reading(batchMode);
    if (!batchMode) {
        if (!m_mostBatchCommands) m_mostBatchCommands = MostBatchCommands(m_lines);
        if (*m_mostBatchCommands < 2 * used.withCommandWord) return false;
    }
    const LayoutReading& other = Reading(!batchMode);
    return ReadsWell(!batchMode) && other.withCommandWord >= 2 * used.withCommandWord &&
           LooksLikeBatch(Reading(true)) != batchMode;
}

}  // namespace quillet
