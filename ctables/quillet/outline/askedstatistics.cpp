// STATISTICS and SORT, the two subcommands that name functions.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "outline/askedreading.h"
#include "outline/askedwords.h"
#include "outline/numberformat.h"
#include "platform/multibyte.h"
#include "tokenizer/variablenames.h"

namespace quillet::outline {

namespace {

bool IsWordOrRightParen(const CommandToken& token) {
    return token.IsWord() || token.Is(TokenCodes::kRightParen);
}

// The name stands in each assignment of the function, so it is no longer than a name may be.
Name FunctionName(const CodePage& codePage, const CommandToken& word) {
    const FunctionWord* pFunction = FindFunction(word);
    if (pFunction != nullptr) return KeywordName(codePage, word, pFunction->word);
    return KeywordName(codePage, word,
                       TAVQMBStringTruncate_A(codePage, word.value, kMaxNameLength));
}

class StatisticsReader {
public:
    StatisticsReader(AskedReading& reading, TokenPointers tokens, TableOutline& table)
        : m_reading(reading), m_cursor(tokens), m_table(table) {}

    void Read() {
        while (!m_cursor.AtEnd()) {
            const CommandToken& token = m_cursor.Peek();
            if (!token.IsWord()) {
                m_reading.SkipTo(m_cursor, IsWord);
            } else if (token.Means("UNWEIGHTED") || token.Means("U")) {
                ReadUnweighted();
            } else {
                ReadFunction(false);
            }
        }
    }

private:
    void ReadUnweighted() {
        const std::size_t begin = m_cursor.Position();
        m_cursor.Take();
        if (m_cursor.Peek().IsWord()) {
            ReadFunction(true);
        } else {
            m_reading.Unreadable(m_cursor.Since(begin));
        }
    }

    void ReadFunction(bool isUnweighted) {
        const CommandToken& word = m_cursor.Take();
        const FunctionWord* pFunction = FindFunction(word);
        Assignment function;
        function.function = FunctionName(m_reading.Page(), word);
        function.isKnown = pFunction != nullptr;
        function.isUnweighted = isUnweighted;
        function.line = word.line;
        if (m_cursor.Peek().IsNumber()) {
            function.argument = m_cursor.Take().value.substr(0, kMaxNameLength);
        }
        const std::size_t first = m_table.assignments.size();
        const std::size_t paren = m_cursor.Position();
        if (m_cursor.TakeOperator(TokenCodes::kLeftParen)) {
            ReadArguments(function);
            if (!m_cursor.TakeOperator(TokenCodes::kRightParen)) {
                m_reading.Unreadable(m_cursor.Since(paren).first(1));
            }
        }
        if (m_table.assignments.size() == first) Add(function);
        for (std::size_t index = first; index < m_table.assignments.size(); ++index) {
            m_table.assignments[index].baseVariables = function.baseVariables;
        }
    }

    // Up to the closing parenthesis, or to the end.
    void ReadArguments(Assignment& function) {
        if (StartsDisplay(m_cursor.Peek())) {
            Assignment assignment = function;
            ReadDisplay(assignment);
            Add(std::move(assignment));
        }
        while (!m_cursor.AtEnd() && !m_cursor.Peek().Is(TokenCodes::kRightParen)) {
            if (m_cursor.Peek().IsWord()) {
                ReadVariable(function);
            } else if (m_cursor.Peek().Is(TokenCodes::kColon)) {
                ReadBaseVariables(function);
            } else {
                SkipArgument();
            }
        }
    }

    void ReadVariable(const Assignment& function) {
        Assignment assignment = function;
        const CommandToken& variable = m_cursor.Take();
        assignment.on = NameOf(variable);
        assignment.line = variable.line;
        ReadDisplay(assignment);
        Add(std::move(assignment));
    }

    [[nodiscard]] static bool StartsDisplay(const CommandToken& token) {
        return token.IsLiteral() || token.Is(TokenCodes::kLeftParen);
    }

    // A label and a format in parentheses, in any order, at most one of each.
    void ReadDisplay(Assignment& assignment) {
        while (StartsDisplay(m_cursor.Peek())) {
            if (m_cursor.Peek().IsLiteral()) {
                if (!assignment.label.IsEmpty()) return;
                assignment.label = LiteralOf(m_cursor.Take());
            } else {
                const bool isFormat =
                    m_cursor.PeekAt(1).IsWord() && m_cursor.PeekAt(2).Is(TokenCodes::kRightParen);
                if (!isFormat || !assignment.format.text.empty()) return;
                m_cursor.Take();
                assignment.format = MakeFormat(m_reading.Page(), m_cursor.Take().source);
                m_cursor.Take();
            }
        }
    }

    void ReadBaseVariables(Assignment& function) {
        const std::size_t colon = m_cursor.Position();
        m_cursor.Take();
        std::vector<Name>& variables = m_table.baseVariables;
        if (function.baseVariables.count == 0) function.baseVariables.first = variables.size();
        if (!m_cursor.Peek().IsWord()) m_reading.Unreadable(m_cursor.Since(colon));
        while (!m_cursor.AtEnd() && !m_cursor.Peek().Is(TokenCodes::kRightParen)) {
            if (m_cursor.Peek().IsWord()) {
                variables.push_back(NameOf(m_cursor.Take()));
            } else {
                m_reading.SkipTo(m_cursor, IsWordOrRightParen);
            }
        }
        function.baseVariables.count = variables.size() - function.baseVariables.first;
    }

    // Steps over what is no argument; what stands in parentheses there as a whole.
    void SkipArgument() {
        if (m_cursor.Peek().Is(TokenCodes::kLeftParen)) {
            m_reading.SkipParenthesized(m_cursor);
        } else {
            m_reading.SkipTo(m_cursor, [](const CommandToken& token) {
                return IsWordOrRightParen(token) || token.Is(TokenCodes::kLeftParen) ||
                       token.Is(TokenCodes::kColon);
            });
        }
    }

    void Add(Assignment assignment) { m_table.assignments.push_back(std::move(assignment)); }

    AskedReading& m_reading;
    TokenCursor m_cursor;
    TableOutline& m_table;
};

// Takes (MEAN) or (MEAN(income)) after a variable, where it is there.
void TakeSortFunction(const CodePage& codePage, TokenCursor& cursor, Sort& sort) {
    if (!cursor.Peek().Is(TokenCodes::kLeftParen) || !cursor.PeekAt(1).IsWord()) return;
    const CommandToken& function = cursor.PeekAt(1);
    const bool isPlain = cursor.PeekAt(2).Is(TokenCodes::kRightParen);
    const bool hasVariable = cursor.PeekAt(2).Is(TokenCodes::kLeftParen) &&
                             cursor.PeekAt(3).IsWord() &&
                             cursor.PeekAt(4).Is(TokenCodes::kRightParen) &&
                             cursor.PeekAt(5).Is(TokenCodes::kRightParen);
    if (!isPlain && !hasVariable) return;
    sort.key = FunctionName(codePage, function);
    sort.isKnown = FindFunction(function) != nullptr;
    if (hasVariable) sort.of = NameOf(cursor.PeekAt(3));
    const std::size_t count = isPlain ? 3 : 6;
    for (std::size_t taken = 0; taken < count; ++taken) cursor.Take();
}

}  // namespace

void ReadStatistics(AskedReading& reading, TokenPointers tokens, TableOutline& table) {
    table.hasStatistics = true;
    StatisticsReader(reading, tokens, table).Read();
}

void ReadSort(AskedReading& reading, TokenPointers tokens, std::size_t number,
              TableOutline& table) {
    TokenCursor cursor(tokens);
    Direction direction = Direction::kDescending;
    if (cursor.Peek().Means("ASCENDING") || cursor.Peek().Means("DESCENDING")) {
        if (cursor.Take().Means("ASCENDING")) direction = Direction::kAscending;
    }
    while (!cursor.AtEnd()) {
        if (!cursor.Peek().IsWord()) {
            reading.SkipTo(cursor, IsWord);
            continue;
        }
        const CommandToken& variable = cursor.Take();
        Sort sort;
        sort.variable = NameOf(variable);
        sort.direction = direction;
        sort.subcommand = number;
        sort.line = variable.line;
        TakeSortFunction(reading.Page(), cursor, sort);
        // No word in other parentheses is a variable.
        while (cursor.Peek().Is(TokenCodes::kLeftParen)) reading.SkipParenthesized(cursor);
        table.sorts.push_back(std::move(sort));
    }
}

}  // namespace quillet::outline
