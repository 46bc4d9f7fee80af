// The subcommands that hold for all tables of a command: what they declare, and what they set.
#include <cstddef>
#include <utility>
#include <vector>

#include "outline/askedreading.h"

namespace quillet::outline {

namespace {

// A name, or one and the last of those up to which it reaches.
VariableRange TakeVariables(TokenCursor& cursor) {
    VariableRange variables;
    variables.line = cursor.Peek().line;
    variables.first = NameOf(cursor.Take());
    if (cursor.Peek().Is(TokenCodes::kTo) && cursor.PeekAt(1).IsWord()) {
        cursor.Take();
        variables.last = NameOf(cursor.Take());
    }
    return variables;
}

// What sets something to one of a few words: the place of the word in the list, or `count` where
// none is given. Anything else there is a remark.
template <std::size_t kCount>
std::size_t TakeSetting(AskedReading& reading, TokenPointers tokens,
                        const std::string_view (&words)[kCount]) {
    TokenCursor cursor(tokens);
    std::size_t found = kCount;
    for (std::size_t index = 0; index < kCount; ++index) {
        const CommandToken& token = cursor.Peek();
        const bool isAll = words[index] == "ALL" && token.Is(TokenCodes::kAll);
        if (isAll || token.Means(words[index])) found = index;
    }
    if (found < kCount) cursor.Take();
    if (!cursor.AtEnd()) reading.SkipRest(cursor);
    return found;
}

// MISSING('-') of FORMAT. False, and nothing is taken, when something else is there.
bool TakeMissingText(TokenCursor& cursor, Settings& settings) {
    const bool isWhole = cursor.PeekAt(1).Is(TokenCodes::kLeftParen) &&
                         cursor.PeekAt(2).IsLiteral() &&
                         cursor.PeekAt(3).Is(TokenCodes::kRightParen);
    if (!isWhole) return false;
    settings.missingTextLine = cursor.Peek().line;
    cursor.Take();
    cursor.Take();
    settings.missingText = LiteralOf(cursor.Take());
    cursor.Take();
    return true;
}

void ReadFormatSetting(AskedReading& reading, TokenCursor& cursor, Settings& settings) {
    const CommandToken& word = cursor.Peek();
    const std::size_t begin = cursor.Position();
    const bool isMissing = word.Means("MISSING");
    if (isMissing && TakeMissingText(cursor, settings)) return;
    cursor.Take();
    if (word.Means("BLANK") || word.Means("ZERO")) {
        settings.emptyCells = word.Means("ZERO") ? EmptyCells::kZero : EmptyCells::kBlank;
        settings.emptyCellsLine = word.line;
        return;
    }
    cursor.TakeParenthesized();
    reading.Note(isMissing ? Remark::Kind::kUnreadable : Remark::Kind::kSetting,
                 cursor.Since(begin));
}

}  // namespace

void ReadObservation(AskedReading& reading, TokenPointers tokens) {
    TokenCursor cursor(tokens);
    while (!cursor.AtEnd()) {
        if (cursor.Peek().IsWord()) {
            reading.Outline().scaleVariables.push_back(TakeVariables(cursor));
        } else {
            reading.SkipTo(cursor, IsWord);
        }
    }
}

void ReadDeclaredTotals(AskedReading& reading, TokenPointers tokens, Position position) {
    TokenCursor cursor(tokens);
    while (!cursor.AtEnd()) {
        if (!cursor.Peek().IsWord()) {
            reading.SkipTo(cursor, IsWord);
            continue;
        }
        DeclaredTotal total;
        total.line = cursor.Peek().line;
        total.name = NameOf(cursor.Take());
        if (cursor.Peek().IsLiteral()) total.label = LiteralOf(cursor.Take());
        total.position = position;
        reading.Outline().declaredTotals.push_back(std::move(total));
    }
}

void ReadSet(AskedReading& reading, TokenPointers tokens, bool countsOneValue, long line) {
    TokenCursor cursor(tokens);
    ResponseSet set;
    set.line = line;
    set.countsOneValue = countsOneValue;
    if (!cursor.AtEnd() && !cursor.Peek().IsWord()) reading.SkipTo(cursor, IsWord);
    if (!cursor.AtEnd()) set.name = NameOf(cursor.Take());
    if (cursor.Peek().IsLiteral()) set.label = LiteralOf(cursor.Take());
    while (!cursor.AtEnd()) {
        const CommandToken& value = cursor.PeekAt(1);
        const bool isValue =
            countsOneValue && set.value.IsEmpty() && cursor.Peek().Is(TokenCodes::kLeftParen) &&
            (value.IsLiteral() || value.IsNumber()) && cursor.PeekAt(2).Is(TokenCodes::kRightParen);
        if (isValue) {
            set.value = LiteralOf(value);
            for (int taken = 0; taken < 3; ++taken) cursor.Take();
        } else if (cursor.Peek().IsWord()) {
            set.variables.push_back(TakeVariables(cursor));
        } else if (cursor.Peek().Is(TokenCodes::kLeftParen)) {
            reading.SkipParenthesized(cursor);
        } else {
            reading.SkipTo(cursor, [](const CommandToken& token) {
                return token.IsWord() || token.Is(TokenCodes::kLeftParen);
            });
        }
    }
    reading.Outline().sets.push_back(std::move(set));
}

void ReadAutoLabel(AskedReading& reading, TokenPointers tokens, long line) {
    static constexpr std::string_view kWords[] = {"ON", "OFF", "DEFAULT"};
    static constexpr AutoLabel kValues[] = {AutoLabel::kOn, AutoLabel::kOff, AutoLabel::kDefault,
                                            AutoLabel::kDefault};
    Settings& settings = reading.Outline().settings;
    settings.autoLabel = kValues[TakeSetting(reading, tokens, kWords)];
    settings.autoLabelLine = line;
}

void ReadBase(AskedReading& reading, TokenPointers tokens, long line) {
    static constexpr std::string_view kWords[] = {"ANSWERING", "QUALIFIED", "ALL"};
    static constexpr CaseBase kValues[] = {CaseBase::kAnswering, CaseBase::kQualified,
                                           CaseBase::kAll, CaseBase::kAnswering};
    Settings& settings = reading.Outline().settings;
    settings.base = kValues[TakeSetting(reading, tokens, kWords)];
    settings.baseLine = line;
}

void ReadGroupBase(AskedReading& reading, TokenPointers tokens, long line) {
    static constexpr std::string_view kWords[] = {"CASES", "RESPONSES"};
    static constexpr GroupBase kValues[] = {GroupBase::kCases, GroupBase::kResponses,
                                            GroupBase::kCases};
    Settings& settings = reading.Outline().settings;
    settings.groupBase = kValues[TakeSetting(reading, tokens, kWords)];
    settings.groupBaseLine = line;
}

void ReadMissing(AskedReading& reading, TokenPointers tokens, long line) {
    static constexpr std::string_view kWords[] = {"EXCLUDE", "INCLUDE"};
    static constexpr Missing kValues[] = {Missing::kExclude, Missing::kInclude, Missing::kExclude};
    Settings& settings = reading.Outline().settings;
    settings.missing = kValues[TakeSetting(reading, tokens, kWords)];
    settings.missingLine = line;
}

void ReadFormat(AskedReading& reading, TokenPointers tokens) {
    TokenCursor cursor(tokens);
    while (!cursor.AtEnd()) {
        if (cursor.Peek().IsWord()) {
            ReadFormatSetting(reading, cursor, reading.Outline().settings);
        } else {
            reading.SkipTo(cursor, IsWord);
        }
    }
}

// A setting that the conversion does not know, or that is not as it should be, is where it stops to
// read the FORMAT, so that nothing else is lost.
FormatEnd EndOfFormat(TokenPointers tokens) {
    TokenCursor cursor(tokens);
    while (!cursor.AtEnd()) {
        const CommandToken& setting = cursor.Take();
        if (setting.Means("BLANK") || setting.Means("ZERO")) continue;
        if (!setting.Means("MISSING")) return FormatEnd::kWhole;
        if (cursor.AtEnd()) return FormatEnd::kBrokenOff;
        if (!cursor.TakeOperator(TokenCodes::kLeftParen)) return FormatEnd::kWhole;
        if (cursor.AtEnd()) return FormatEnd::kBrokenOff;
        if (!cursor.Take().IsLiteral()) return FormatEnd::kWhole;
        if (cursor.AtEnd()) return FormatEnd::kBrokenOff;
        if (!cursor.TakeOperator(TokenCodes::kRightParen)) return FormatEnd::kWhole;
    }
    return tokens.empty() ? FormatEnd::kEmpty : FormatEnd::kWhole;
}

}  // namespace quillet::outline
