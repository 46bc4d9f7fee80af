#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "outline/tableoutline.h"
#include "outline/writtencursor.h"
#include "outline/writtenfunctions.h"
#include "outline/writtentable.h"

namespace quillet::outline {

// What stands after a table's expression.

namespace {

constexpr std::string_view kUnknownSetting = "there is no such setting here";
constexpr std::string_view kUnknownValue = "the setting has no such value";

template <class Value>
struct Choice {
    std::string_view word;
    Value value;
};

template <class Value, std::size_t kCount>
[[nodiscard]] bool ReadChoice(WrittenCursor& cursor,
                              const std::array<Choice<Value>, kCount>& choices, Value& value) {
    const auto* const pChoice =
        std::find_if(choices.begin(), choices.end(),
                     [&cursor](const Choice<Value>& choice) { return cursor.Take(choice.word); });
    if (pChoice == choices.end()) return cursor.Fail(kUnknownValue);
    value = pChoice->value;
    return true;
}

constexpr std::array<Choice<Missing>, 2> kMissingWords = {
    {{"EXCLUDE", Missing::kExclude}, {"INCLUDE", Missing::kInclude}}};
constexpr std::array<Choice<Direction>, 2> kDirections = {
    {{"A", Direction::kAscending}, {"D", Direction::kDescending}}};
constexpr std::array<Choice<Position>, 2> kPositions = {
    {{"AFTER", Position::kAfter}, {"BEFORE", Position::kBefore}}};
constexpr std::array<Choice<Axis>, 3> kAxisWords = {
    {{"ROW", Axis::kRows}, {"COLUMN", Axis::kColumns}, {"LAYER", Axis::kLayers}}};
constexpr std::array<Choice<bool>, 2> kYesOrNo = {{{"YES", true}, {"NO", false}}};

// A CATEGORIES subcommand says one of three things: what becomes of empty and missing categories of
// all variables, where some have a total, or the order of those of one variable.
class CategoriesReader {
public:
    CategoriesReader(WrittenCursor& cursor, TableOutline& table)
        : m_cursor(cursor), m_table(table), m_line(cursor.Current().line) {}

    [[nodiscard]] bool Read() {
        if (!m_cursor.ExpectSetting("VAR", "VAR= is expected")) return false;
        while (m_cursor.IsAtName()) {
            m_names.emplace_back();
            if (!m_cursor.ReadName(m_names.back())) return false;
        }
        if (m_names.empty()) return m_cursor.Fail("a variable is expected");
        if (IsAtOneOf({"EMPTY", "MISSING"})) return ReadAll();
        if (IsAtOneOf({"TOTAL", "POSITION", "LABEL"})) return ReadTotal();
        return ReadSort();
    }

private:
    [[nodiscard]] bool IsAtOneOf(std::initializer_list<std::string_view> settings) const {
        return m_cursor.IsAtSetting() && std::find(settings.begin(), settings.end(),
                                                   m_cursor.Current().text) != settings.end();
    }

    [[nodiscard]] bool ReadAll() {
        if (m_names.size() != 1 || m_names.front().text != "ALL") {
            return m_cursor.Fail("this setting is for all variables");
        }
        std::string_view setting;
        while (m_cursor.IsAtSetting()) {
            if (!m_cursor.ReadSetting(setting)) return false;
            if (setting == "EMPTY") {
                Missing empty = Missing::kExclude;
                if (!ReadChoice(m_cursor, kMissingWords, empty)) return false;
                m_table.hidesEmptyCategories = empty == Missing::kExclude;
            } else if (setting != "MISSING") {
                return m_cursor.Fail(kUnknownSetting);
            } else if (!ReadChoice(m_cursor, kMissingWords, m_table.missing)) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] bool ReadTotal() {
        Total total;
        total.line = m_line;
        bool hasTotal = false;
        std::string_view setting;
        while (m_cursor.IsAtSetting()) {
            if (!m_cursor.ReadSetting(setting)) return false;
            bool isRead = false;
            if (setting == "TOTAL") {
                isRead = ReadChoice(m_cursor, kYesOrNo, hasTotal);
            } else if (setting == "POSITION") {
                isRead = ReadChoice(m_cursor, kPositions, total.position);
            } else if (setting == "LABEL") {
                isRead = m_cursor.ReadLiteral(total.label);
            } else {
                return m_cursor.Fail(kUnknownSetting);
            }
            if (!isRead) return false;
        }
        if (!hasTotal) return m_cursor.Fail("TOTAL=YES is expected");
        total.variables = std::move(m_names);
        m_table.totals.push_back(std::move(total));
        return true;
    }

    [[nodiscard]] bool ReadSort() {
        if (m_names.size() != 1) return m_cursor.Fail("there is more than one variable to sort");
        Sort sort;
        sort.variable = std::move(m_names.front());
        sort.direction = Direction::kAscending;
        sort.line = m_line;
        bool saysSomething = false;
        std::string_view setting;
        while (m_cursor.IsAtSetting()) {
            saysSomething = true;
            if (!m_cursor.ReadSetting(setting)) return false;
            if (setting == "KEY") {
                if (!ReadKey(sort)) return false;
            } else if (setting != "ORDER") {
                return m_cursor.Fail(kUnknownSetting);
            } else if (!ReadChoice(m_cursor, kDirections, sort.direction)) {
                return false;
            }
        }
        if (!saysSomething) return m_cursor.Fail("a setting is expected");
        m_table.sorts.push_back(std::move(sort));
        return true;
    }

    [[nodiscard]] bool ReadKey(Sort& sort) {
        if (!m_cursor.Current().Is(WrittenTokenKind::kWord) ||
            !FindWrittenFunction(m_cursor.Current().text)) {
            return m_cursor.Fail("a function is expected");
        }
        if (!m_cursor.ReadName(sort.key)) return false;
        if (!m_cursor.Take('(')) return true;
        return m_cursor.ReadName(sort.of) &&
               m_cursor.Expect(')', "a closing parenthesis is missing");
    }

    WrittenCursor& m_cursor;
    TableOutline& m_table;
    long m_line;
    std::vector<Name> m_names;
};

[[nodiscard]] bool ReadCategories(WrittenCursor& cursor, TableOutline& table) {
    return CategoriesReader(cursor, table).Read();
}

// The labels of one dimension go to the opposite one.
[[nodiscard]] bool ReadCategoryLabels(WrittenCursor& cursor, TableOutline& table) {
    LabelPosition& labels = table.categoryLabels;
    labels.line = cursor.Current().line;
    std::string_view setting;
    if (!cursor.ReadSetting(setting)) return false;
    if (setting == "COL") {
        labels.axis = Axis::kRows;
    } else if (setting == "ROW") {
        labels.axis = Axis::kColumns;
    } else {
        return cursor.Fail(kUnknownSetting);
    }
    return cursor.Expect("OPPOSITE", kUnknownValue);
}

[[nodiscard]] bool ReadStatisticsLabels(WrittenCursor& cursor, TableOutline& table) {
    LabelPosition& labels = table.statisticsLabels;
    labels.line = cursor.Current().line;
    if (!cursor.IsAtSetting()) return cursor.Fail("a setting is expected");
    std::string_view setting;
    while (cursor.IsAtSetting()) {
        if (!cursor.ReadSetting(setting)) return false;
        if (setting == "POSITION") {
            if (!ReadChoice(cursor, kAxisWords, labels.axis)) return false;
        } else if (setting != "VISIBLE") {
            return cursor.Fail(kUnknownSetting);
        } else if (!ReadChoice(cursor, kYesOrNo, labels.isVisible)) {
            return false;
        }
    }
    return true;
}

// What the new command fills in itself.
constexpr std::string_view kAutomaticTitle = "')TABLE'";

constexpr std::array<Choice<HeadingKind>, 3> kHeadings = {{{"TITLE", HeadingKind::kTitle},
                                                           {"CAPTION", HeadingKind::kCaption},
                                                           {"CORNER", HeadingKind::kCorner}}};

[[nodiscard]] bool ReadHeadings(WrittenCursor& cursor, TableOutline& table,
                                std::string_view subcommand) {
    if (!cursor.IsAtSetting()) return cursor.Fail("a setting is expected");
    while (cursor.IsAtSetting()) {
        Heading heading;
        heading.line = cursor.Current().line;
        heading.subcommand = {std::string(subcommand), "TITLES"};
        const auto* const pKind = std::find_if(
            kHeadings.begin(), kHeadings.end(),
            [&cursor](const auto& choice) { return cursor.Current().IsWord(choice.word); });
        if (pKind == kHeadings.end()) return cursor.Fail(kUnknownSetting);
        heading.kind = pKind->value;
        std::string_view setting;
        if (!cursor.ReadSetting(setting)) return false;
        do {
            heading.texts.emplace_back();
            if (!cursor.ReadLiteral(heading.texts.back())) return false;
        } while (cursor.Current().Is(WrittenTokenKind::kLiteral));
        if (heading.kind == HeadingKind::kTitle && heading.texts.size() == 1 &&
            heading.texts.front().source == kAutomaticTitle) {
            table.hasAutomaticTitle = true;
        }
        table.headings.push_back(std::move(heading));
    }
    return true;
}

}  // namespace

bool ReadTableSubcommand(WrittenCursor& cursor, TableOutline& table) {
    constexpr std::string_view kTwice = "the subcommand stands here twice";
    if (cursor.Take("CATEGORIES")) return ReadCategories(cursor, table);
    if (cursor.Current().IsWord("CLABELS")) {
        if (table.categoryLabels.line != 0) return cursor.Fail(kTwice);
        cursor.Advance();
        return ReadCategoryLabels(cursor, table);
    }
    if (cursor.Current().IsWord("SLABELS")) {
        if (table.statisticsLabels.line != 0) return cursor.Fail(kTwice);
        cursor.Advance();
        return ReadStatisticsLabels(cursor, table);
    }
    for (const std::string_view word : {"TITLES", "TITLE"}) {
        if (!cursor.Current().IsWord(word)) continue;
        if (!table.headings.empty()) return cursor.Fail(kTwice);
        cursor.Advance();
        return ReadHeadings(cursor, table, word);
    }
    return cursor.Fail("there is no such subcommand here");
}

}  // namespace quillet::outline
