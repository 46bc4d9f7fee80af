// A walk through the lines of what the conversion takes for one command, with the eyes of a person:
// a command begins where a line does, or after a period, and ends at a period that no text follows.
#include "driver/meantcommands.h"

#include <algorithm>

#include "driver/commandwords.h"
#include "driver/legacywords.h"
#include "driver/linewalker.h"
#include "driver/outputfile.h"

namespace quillet {

namespace {

// The first definition that ends after `offset`.
std::vector<MacroDefinition>::const_iterator FirstNotOver(
    const std::vector<MacroDefinition>& definitions, std::size_t offset) {
    return std::partition_point(
        definitions.begin(), definitions.end(),
        [offset](const MacroDefinition& definition) { return definition.bodyEnd <= offset; });
}

// The offset after the last byte before `offset` that is no white space.
std::size_t EndOfText(std::string_view text, std::size_t offset) {
    const std::size_t last = text.substr(0, offset).find_last_not_of(kWhiteSpace);
    return last == std::string_view::npos ? 0 : last + 1;
}

// True after an operator or a word that wants something after it: no command begins there.
bool WantsMore(std::string_view text) {
    if (text.empty()) return false;
    if (std::string_view("=+-*/>(,:&|").find(text.back()) != std::string_view::npos) return true;
    return text.size() > 2 && BeginsWithWord(text.substr(text.size() - 2), "BY") &&
           (text[text.size() - 3] == ' ' || text[text.size() - 3] == '\t');
}

class MeantCommandFinder {
public:
    MeantCommandFinder(const SourceLines& lines, const CommandExtent& extent, bool batchMode,
                       const std::vector<MacroDefinition>& definitions,
                       const MeantCommandSearch& search, std::vector<MeantCommand>& found)
        : m_lines(lines),
          m_text(lines.Text()),
          m_extent(extent),
          m_definitions(definitions),
          m_search(search),
          m_found(found),
          m_isComment(IsRealComment(lines, extent, batchMode)),
          m_openCommandLine(extent.firstLine) {}

    void Run() {
        for (long line = m_extent.firstLine; line <= m_extent.lastLine; ++line) {
            if (IsBlankLine(m_lines.Line(line))) {
                m_isAfterBlankLine = true;
                m_hasBlankLine = true;
            } else {
                Walk(line);
            }
        }
        Close(m_lines.EndOf(m_extent.lastLine));
    }

private:
    void Walk(long line) {
        m_line = line;
        m_lineBegin = m_lines.BeginOf(line);
        LineWalker walker(m_lines.Line(line), ContextOfLine());
        LinePlace place;
        while (walker.Next(place)) {
            if (place.kind == LinePlace::Kind::kLastPeriod) {
                EndAtPeriod(place);
            } else if (m_lineBegin + place.offset < m_lines.EndOf(line)) {
                LookAt(place);
            } else if (m_isFirst) {
                m_closedCommentLine = line;
            }
        }
    }

    [[nodiscard]] LineContext ContextOfLine() const {
        const auto next = FirstNotOver(m_definitions, m_lineBegin);
        if (next != m_definitions.end() && next->bodyBegin < m_lines.EndOf(m_line)) {
            return LineContext::kMacroBody;
        }
        const bool isFreeText = m_isComment || m_extent.kind == CommandKind::kInlineData;
        return isFreeText ? LineContext::kFreeText : LineContext::kSyntax;
    }

    [[nodiscard]] bool IsInBody(std::size_t offset) const {
        return DefinitionAround(m_definitions, offset) != nullptr;
    }

    void EndAtPeriod(const LinePlace& place) {
        using Comment = LinePlace::Comment;
        Close(m_lineBegin + place.offset + 1);
        // COMPUTE is cut like a comment, in which no text may follow the period.
        const bool keepsOpen =
            place.comment == Comment::kClosed || place.comment == Comment::kStar ||
            (place.comment == Comment::kUnclosed && m_extent.kind == CommandKind::kComment);
        if (keepsOpen) m_commentAfterPeriodLine = m_line;
    }

    // Text begins here.
    void LookAt(const LinePlace& place) {
        using Kind = LinePlace::Kind;
        const std::size_t offset = m_lineBegin + place.offset;
        const bool isBeginning = place.kind == Kind::kBeginning;
        if (m_isFirst && place.comment == LinePlace::Comment::kClosed) m_closedCommentLine = m_line;
        const CommandType type = LegacyCommandAt(m_text, offset);
        const bool isPlace = place.kind != Kind::kAfterMacro || IsInBody(offset);
        if (offset == m_search.ownPlace) {
            m_openCommandLine = m_line;
        } else if (type != CommandType::kOrdinary && isPlace) {
            AddLegacy(place, offset, type);
        } else if (isBeginning && !m_isFirst) {
            LookAtOther(place, offset);
        } else if (place.kind == Kind::kAfterPeriod) {
            LookAtOtherAfterPeriod(offset);
        }
        if (isBeginning) m_isAfterBlankLine = false;
        m_isFirst = false;
    }

    void AddLegacy(const LinePlace& place, std::size_t offset, CommandType type) {
        MeantCommand& command = Add(MeantCommand::Sort::kLegacy, offset);
        command.type = type;
        command.sign = place.sign;
        command.isAfterPeriod = place.kind == LinePlace::Kind::kAfterPeriod;
        Restart();
    }

    // True when what stands after a period shows that it was the end.
    [[nodiscard]] bool BeginsSomething(std::size_t offset) const {
        return (m_text[offset] == '!' && IsInBody(offset)) ||
               !CommandAt(m_text.substr(offset, kLongestCommandName)).empty();
    }

    // Not a legacy command, but perhaps another.
    void LookAtOther(const LinePlace& place, std::size_t offset) {
        const std::string_view name = CommandAt(m_text.substr(offset, kLongestCommandName));
        if (name.empty()) return;
        const bool isInFirstColumn = offset == m_lineBegin || place.sign != '\0';
        const bool isSetOff = m_isAfterBlankLine || m_commentAfterPeriodLine != 0;
        const bool isInBody = IsInBody(offset);
        if (!isInFirstColumn && (m_isComment || !isSetOff)) return;
        const bool isTold = m_search.isInResult && !isInBody;
        if (isTold && m_search.isLegacy) {
            if (IsFirstSubcommand()) return;
            if (!isSetOff && WantsMore(m_text.substr(0, EndOfText(m_text, m_lineBegin)))) return;
            Add(MeantCommand::Sort::kLost, offset).name = name;
        } else if (isTold && m_isAfterBlankLine && m_extent.kind != CommandKind::kInlineData) {
            Add(MeantCommand::Sort::kSwallowed, offset).name = name;
        } else if (m_isComment) {
            return;
        } else {
            Close(m_lineBegin);
        }
        Restart();
    }

    // A legacy command's first subcommand needs no slash, and it may be called as a command is.
    [[nodiscard]] bool IsFirstSubcommand() const {
        if (!m_search.ownPlace || *m_search.ownPlace >= m_lineBegin) return false;
        const std::size_t begin = *m_search.ownPlace;
        const std::string_view before =
            m_text.substr(begin, EndOfText(m_text, m_lineBegin) - begin);
        return WordLength(before) == before.size();
    }

    // The same on a line that a period has begun anew.
    void LookAtOtherAfterPeriod(std::size_t offset) {
        const std::string_view name = CommandAt(m_text.substr(offset, kLongestCommandName));
        const bool isTold = m_search.isInResult && m_search.isLegacy && !IsInBody(offset);
        if (isTold && !name.empty()) {
            Add(MeantCommand::Sort::kLost, offset).name = name;
            Restart();
        } else if (BeginsSomething(offset)) {
            Close(offset);
        }
    }

    MeantCommand& Add(MeantCommand::Sort sort, std::size_t offset) {
        Close(offset);
        MeantCommand command;
        command.sort = sort;
        command.offset = offset;
        command.line = m_line;
        command.isFirst = m_isFirst;
        command.closedCommentLine = m_closedCommentLine;
        command.commentAfterPeriodLine = m_commentAfterPeriodLine;
        command.openCommandLine = m_openCommandLine;
        command.isAfterBlankLine = m_hasBlankLine;
        m_found.push_back(command);
        m_isOpen = true;
        return m_found.back();
    }

    // Another command begins in this line.
    void Restart() {
        m_openCommandLine = m_line;
        m_commentAfterPeriodLine = 0;
        m_hasBlankLine = false;
        m_closedCommentLine = 0;
    }

    // The command found last ends before `offset`, if it has not ended before.
    void Close(std::size_t offset) {
        if (!m_isOpen) return;
        m_isOpen = false;
        MeantCommand& command = m_found.back();
        const MacroDefinition* pDefinition = DefinitionAround(m_definitions, command.offset);
        if (pDefinition != nullptr) offset = std::min(offset, pDefinition->bodyEnd);
        command.end = std::max(EndOfText(m_text, offset), command.offset);
    }

    const SourceLines& m_lines;
    std::string_view m_text;
    const CommandExtent& m_extent;
    const std::vector<MacroDefinition>& m_definitions;
    const MeantCommandSearch& m_search;
    std::vector<MeantCommand>& m_found;
    bool m_isComment;
    bool m_isOpen = false;  // the command found last has no end yet
    bool m_isFirst = true;
    bool m_isAfterBlankLine = false;  // directly
    bool m_hasBlankLine = false;      // since the command before began
    long m_closedCommentLine = 0;
    long m_commentAfterPeriodLine = 0;
    long m_openCommandLine;
    long m_line = 0;
    std::size_t m_lineBegin = 0;
};

}  // namespace

void FindMeantCommands(const SourceLines& lines, const CommandExtent& extent, bool batchMode,
                       const std::vector<MacroDefinition>& definitions,
                       const MeantCommandSearch& search, std::vector<MeantCommand>& found) {
    MeantCommandFinder(lines, extent, batchMode, definitions, search, found).Run();
}

const MacroDefinition* DefinitionAround(const std::vector<MacroDefinition>& definitions,
                                        std::size_t offset) {
    const auto next = FirstNotOver(definitions, offset);
    if (next == definitions.end() || offset < next->bodyBegin) return nullptr;
    return &*next;
}

}  // namespace quillet
