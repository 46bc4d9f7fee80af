// What the readers of the subcommands of TABLES share.
#ifndef QUILLET_OUTLINE_ASKEDREADING_H
#define QUILLET_OUTLINE_ASKEDREADING_H

#include <cstddef>
#include <string_view>
#include <utility>

#include "outline/commandtokens.h"
#include "outline/tableoutline.h"
#include "platform/codepage.h"
#include "platform/commandbudget.h"

namespace quillet::outline {

/// True for a word; for those who look for one.
[[nodiscard]] inline bool IsWord(const CommandToken& token) { return token.IsWord(); }

/// Walks over the arguments of one subcommand, from first to last.
class TokenCursor {
public:
    /// The tokens are borrowed.
    explicit TokenCursor(TokenPointers tokens) : m_tokens(tokens) {}

    [[nodiscard]] bool AtEnd() const { return m_at == m_tokens.size(); }
    /// The token here; at the end, one of no kind.
    [[nodiscard]] const CommandToken& Peek() const;
    /// The token `distance` further on; one of no kind where there is none.
    [[nodiscard]] const CommandToken& PeekAt(std::size_t distance) const;
    /// Steps over the token here, of which there must be one, and gives it.
    const CommandToken& Take();
    /// Steps over an operator of this code. False when there is another token.
    bool TakeOperator(int code);
    /// Steps over the parenthesis here and all up to the one that closes it, or to the end. False
    /// when there is none.
    bool TakeParenthesized();

    [[nodiscard]] std::size_t Position() const { return m_at; }
    /// What was stepped over since `position`.
    [[nodiscard]] TokenPointers Since(std::size_t position) const {
        return m_tokens.subspan(position, m_at - position);
    }

private:
    TokenPointers m_tokens;
    std::size_t m_at = 0;
};

/// The subcommand that is being read, and where its remarks go.
class AskedReading {
public:
    /// Both are borrowed.
    AskedReading(const CodePage& codePage, CommandOutline& outline)
        : m_codePage(codePage), m_outline(outline) {}

    /// From here on remarks are about this subcommand.
    void Begin(Name subcommand) { m_subcommand = std::move(subcommand); }

    /// Adds a remark on some tokens; none on none.
    void Note(Remark::Kind kind, TokenPointers tokens);
    void Unreadable(TokenPointers tokens) { Note(Remark::Kind::kUnreadable, tokens); }
    /// The same for text on a line.
    void Note(Remark::Kind kind, std::string_view text, long line);

    /// Steps over the token here and all up to the next one for which `isWanted` holds, with a
    /// remark that they cannot be read.
    template <typename Predicate>
    void SkipTo(TokenCursor& cursor, const Predicate& isWanted) {
        const std::size_t begin = cursor.Position();
        if (!cursor.AtEnd()) cursor.Take();
        while (!cursor.AtEnd() && !isWanted(cursor.Peek())) cursor.Take();
        Unreadable(cursor.Since(begin));
    }

    /// The same up to the end.
    void SkipRest(TokenCursor& cursor) {
        SkipTo(cursor, [](const CommandToken& /*token*/) { return false; });
    }

    /// The same for what stands in the parentheses that open here.
    void SkipParenthesized(TokenCursor& cursor);

    [[nodiscard]] const CodePage& Page() const { return m_codePage; }
    [[nodiscard]] CommandOutline& Outline() { return m_outline; }
    /// What repeats text or nodes asks here first.
    [[nodiscard]] CommandBudget& Budget() { return m_budget; }

private:
    const CodePage& m_codePage;
    CommandOutline& m_outline;
    CommandBudget m_budget;
    Name m_subcommand;
};

/// Reads the expression of a table: up to three dimensions. Variables get the role `kCategory`.
/// Linear.
void ReadExpression(AskedReading& reading, TokenPointers tokens, TableOutline& table);

/// Reads a STATISTICS subcommand to the assignments of a table.
void ReadStatistics(AskedReading& reading, TokenPointers tokens, TableOutline& table);

/// Reads a SORT subcommand; `number` counts those of its table, from 0.
void ReadSort(AskedReading& reading, TokenPointers tokens, std::size_t number, TableOutline& table);

/// Reads a subcommand that stands for all tables and declares names: OBSERVATION, FTOTAL, PTOTAL,
/// MRGROUP or MDGROUP.
void ReadObservation(AskedReading& reading, TokenPointers tokens);
void ReadDeclaredTotals(AskedReading& reading, TokenPointers tokens, Position position);
void ReadSet(AskedReading& reading, TokenPointers tokens, bool countsOneValue, long line);

/// Reads a subcommand that sets something: AUTOLABEL, BASE, GBASE, MISSING or FORMAT. `line` is
/// that of its word.
void ReadAutoLabel(AskedReading& reading, TokenPointers tokens, long line);
void ReadBase(AskedReading& reading, TokenPointers tokens, long line);
void ReadGroupBase(AskedReading& reading, TokenPointers tokens, long line);
void ReadMissing(AskedReading& reading, TokenPointers tokens, long line);
void ReadFormat(AskedReading& reading, TokenPointers tokens);

/// How a conversion comes to the end of a FORMAT.
enum class FormatEnd : unsigned char {
    kWhole,      ///< What follows is read, or the FORMAT itself is not.
    kEmpty,      ///< Without a setting: a subcommand that belongs to a table is lost after it.
    kBrokenOff,  ///< In the midst of a setting: whatever follows is lost.
};
[[nodiscard]] FormatEnd EndOfFormat(TokenPointers tokens);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ASKEDREADING_H
