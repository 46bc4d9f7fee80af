#include "outline/readwritten.h"

#include <string_view>
#include <utility>

#include "outline/writtencursor.h"
#include "outline/writtentable.h"

namespace quillet::outline {

// The reader knows the new command alone and shares nothing with what writes it: it is a witness
// of what was written, and a mistake that both made would not be seen.

namespace {

constexpr std::string_view kSubcommandTwice = "the subcommand stands here twice";

class CommandReader {
public:
    CommandReader(WrittenCursor& cursor, CommandOutline& outline)
        : m_cursor(cursor), m_outline(outline) {}

    [[nodiscard]] bool Read() {
        // What holds when nothing is said.
        m_outline.settings.countsDuplicates = false;
        if (m_cursor.Take("MRSETS") && !ReadSets()) return false;
        if (!m_cursor.Expect("CTABLES", "CTABLES is expected")) return false;
        while (m_cursor.Take('/')) {
            if (!ReadSubcommand()) return false;
        }
        if (m_outline.tables.empty()) return m_cursor.Fail("a table is expected");
        static_cast<void>(m_cursor.Take('.'));
        return m_cursor.Current().Is(WrittenTokenKind::kEnd) ||
               m_cursor.Fail("a subcommand or the end is expected");
    }

private:
    [[nodiscard]] bool ReadSets() {
        do {
            if (!m_cursor.Expect('/', "a set is expected")) return false;
            ResponseSet set;
            set.line = m_cursor.Current().line;
            if (m_cursor.Take("MDGROUP")) {
                set.countsOneValue = true;
            } else if (!m_cursor.Expect("MCGROUP", "a set is expected")) {
                return false;
            }
            if (!ReadSet(set)) return false;
            m_outline.sets.push_back(std::move(set));
        } while (!m_cursor.Take('.'));
        return true;
    }

    [[nodiscard]] bool ReadSet(ResponseSet& set) {
        std::string_view setting;
        while (m_cursor.IsAtSetting()) {
            if (!m_cursor.ReadSetting(setting)) return false;
            bool isRead = false;
            if (setting == "NAME") {
                isRead = m_cursor.ReadName(set.name);
            } else if (setting == "LABEL") {
                isRead = m_cursor.ReadLiteral(set.label);
            } else if (setting == "VARIABLES") {
                isRead = ReadMembers(set);
            } else if (setting == "VALUE" && set.countsOneValue) {
                isRead = m_cursor.ReadLiteralOrNumber(set.value);
            } else {
                return m_cursor.Fail("there is no such setting here");
            }
            if (!isRead) return false;
        }
        if (set.name.IsEmpty()) return m_cursor.Fail("NAME= is expected");
        return !set.variables.empty() || m_cursor.Fail("VARIABLES= is expected");
    }

    [[nodiscard]] bool ReadMembers(ResponseSet& set) {
        while (m_cursor.IsAtName()) {
            VariableRange range;
            range.line = m_cursor.Current().line;
            if (!m_cursor.ReadName(range.first)) return false;
            if (m_cursor.Take("TO") && !m_cursor.ReadName(range.last)) return false;
            set.variables.push_back(std::move(range));
        }
        return true;
    }

    [[nodiscard]] bool ReadSubcommand() {
        if (m_cursor.Current().IsWord("TABLE")) {
            m_outline.tables.emplace_back();
            TableOutline& table = m_outline.tables.back();
            table.line = m_cursor.Current().line;
            table.hidesEmptyCategories = false;
            m_cursor.Advance();
            return ReadTableExpression(m_cursor, table);
        }
        if (!m_outline.tables.empty()) {
            return ReadTableSubcommand(m_cursor, m_outline.tables.back());
        }
        if (m_cursor.Current().IsWord("FORMAT")) return ReadFormat();
        if (m_cursor.Current().IsWord("MRSETS")) return ReadDuplicates();
        return m_cursor.Fail("there is no such subcommand here");
    }

    [[nodiscard]] bool ReadDuplicates() {
        if (std::exchange(m_saysDuplicates, true)) return m_cursor.Fail(kSubcommandTwice);
        m_cursor.Advance();
        if (!m_cursor.ExpectSetting("COUNTDUPLICATES", "COUNTDUPLICATES= is expected")) {
            return false;
        }
        bool& counts = m_outline.settings.countsDuplicates;
        counts = m_cursor.Take("YES");
        return counts || m_cursor.Expect("NO", "YES or NO is expected");
    }

    [[nodiscard]] bool ReadFormat() {
        Settings& settings = m_outline.settings;
        if (settings.emptyCellsLine != 0) return m_cursor.Fail(kSubcommandTwice);
        settings.emptyCellsLine = m_cursor.Current().line;
        m_cursor.Advance();
        if (!m_cursor.ExpectSetting("EMPTY", "EMPTY= is expected")) return false;
        if (m_cursor.Take("ZERO")) {
            settings.emptyCells = EmptyCells::kZero;
        } else if (!m_cursor.Expect("BLANK", "BLANK or ZERO is expected")) {
            return false;
        }
        if (!m_cursor.IsAtSetting()) return true;
        settings.missingTextLine = m_cursor.Current().line;
        return m_cursor.ExpectSetting("MISSING", "there is no such setting here") &&
               m_cursor.ReadLiteral(settings.missingText);
    }

    WrittenCursor& m_cursor;
    CommandOutline& m_outline;
    bool m_saysDuplicates = false;
};

}  // namespace

bool ReadWritten(const CodePage& codePage, std::string_view text, CommandOutline& outline,
                 ReadingError& error) {
    outline = {};
    error = {};
    WrittenCursor cursor(codePage, text, error);
    if (CommandReader(cursor, outline).Read()) return true;
    outline = {};
    return false;
}

}  // namespace quillet::outline
