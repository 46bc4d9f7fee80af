// One TABLES command while it is converted: its tokens as the grammar sees them, the parse tree,
// and what there is to tell the user.
#ifndef QUILLET_PARSER_TBTRTABLESCOMMAND_H
#define QUILLET_PARSER_TBTRTABLESCOMMAND_H

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "parser/tbtrparsenode.h"
#include "parser/warning.h"
#include "platform/codepage.h"
#include "tokenizer/tavqtoken.h"
#include "tokenizer/tokensequencebase.h"

namespace quillet {

/// The part of a command that a token or a grammar symbol covers; both ends are included.
///
/// Lines count from 1 within the command. Columns start as the tokenizer counts them and run on
/// in bytes. A new location is that of a command of which nothing was read. The names are those
/// that the parser generator knows.
struct TablesLocation {
    int first_line = 1;
    int first_column = 1;
    int last_line = 1;
    int last_column = 1;
};

static_assert(std::is_trivially_copyable_v<TablesLocation>,
              "the parser copies its location stack byte by byte");

/// Why a command cannot be converted.
enum class TablesErrorKind : int {
    kNone = 0,
#define QUILLET_TABLES_REASON(kind, name, message, heading) kind,
#include "quillet-messages.def"
};

/// One reason why a command cannot be converted.
struct ReportEntry {
    TablesErrorKind kind = TablesErrorKind::kNone;
    int line = 0;                       ///< From 1 within the command.
    int column = 0;                     ///< As stored; the user is shown one more.
    NodeType subcommand = kNoNodeType;  ///< The subcommand's token code; 0 where none.
    std::string text;                   ///< A function or variable name; may be empty.
};

/// What a command had too little of.
enum class Shortage {
    kNone,
    kBudget,  ///< It asks for more than any command may.
    kMemory,  ///< The system had no more; another time it may have.
};

/// A token as the grammar sees it, and where it stands. At the end of the command the code is 0 and
/// there is no token.
struct TablesToken {
    NodeType code = kNoNodeType;
    TAVQToken token;
    int line = 0;    ///< From 1 within the command.
    int column = 0;  ///< As the tokenizer counts.

    [[nodiscard]] bool HasToken() const { return token.Type() != TokenCodes::kAtEnd; }
};

/// Hands out the tokens of one TABLES command with their grammar codes, and collects the result.
///
/// What the grammar never sees: the word TABLES, "=" and "," signs, BREAK subcommands (their
/// tokens come again at the end of every TABLE subcommand instead), and a sign before a number
/// (the two become one number). Linear in the tokens delivered; BREAK alone makes them more than
/// the command has, since every table gets its variables. All tables but the first that does are
/// charged for them.
class TablesCommand {
public:
    /// `pTokSeq` holds the whole command, the word TABLES as its first token; where it stands
    /// does not matter. It and `codePage` must outlive this object. A null sequence asserts when
    /// it is read and counts as an empty command.
    TablesCommand(const CodePage& codePage, TokenSequenceBase* pTokSeq);

    /// The next token; throws `CommandTooLarge` when BREAK would make too many of them. Slashes are
    /// delivered as `SP_SLASH`, and one is made up in front of a
    /// first subcommand that has none. After the end every further call gives the end again.
    [[nodiscard]] TablesToken NextToken();

    /// Passes over tokens so that the next one delivered is the next slash, or the end.
    void SkipToNextSlash();

    void SetParseResult(NodeOwner root);
    /// The root of the tree; null before a successful parse, after a failed one, and once
    /// released.
    [[nodiscard]] TbTrParseNode* ParseResult() const { return m_parseResult.get(); }
    [[nodiscard]] NodeOwner ReleaseParseResult();

    /// The budget of the command. The sequence must not be null.
    [[nodiscard]] CommandBudget& Budget() const { return m_pTokSeq->Budget(); }

    /// Where the nodes of its tree lie. The sequence must not be null.
    [[nodiscard]] Arena& Memory() const { return m_pTokSeq->Memory(); }

    /// Where the token `token` of the command ends, in the way of `TablesLocation`; 0 for a token
    /// that is not one of its text. Linear in the text.
    void FindEnd(const TAVQToken& token, int& line, int& column) const;

    void AddReport(ReportEntry entry);
    /// The first report, which is the one that counts; of kind `kNone` when there is none. That a
    /// command was given up comes before all others.
    [[nodiscard]] ReportEntry FirstReport() const;

    /// Notes that the command is too large to be converted, at the token that is the current one.
    /// From now on there are no more tokens. Takes no memory.
    void GiveUp(Shortage shortage) noexcept;
    /// What the command was given up for; `kNone` when it was not.
    [[nodiscard]] Shortage GivenUpFor() const { return m_shortage; }

    void AddWarning(Warning warning);
    /// In the order raised.
    [[nodiscard]] const std::vector<Warning>& Warnings() const { return m_warnings; }

    /// Records where the next TABLE subcommand stands.
    void AddTableLocation(const TablesLocation& location);
    /// Where the TABLE subcommands stand, one for each table group of the tree, in order. A
    /// location ends with the last token that the table expression was parsed from.
    [[nodiscard]] const std::vector<TablesLocation>& TableLocations() const {
        return m_tableLocations;
    }

    /// The name of a subcommand or keyword for messages; empty for a code that has none.
    [[nodiscard]] static std::string_view NameOfCode(NodeType code);

    /// True when `word`, in upper case, names a subcommand.
    [[nodiscard]] static bool IsSubcommand(std::string_view word);

    /// Where a trace of the parse is written, for developers; null, the default, writes none.
    void SetTrace(std::ostream* pTrace) { m_pTrace = pTrace; }
    [[nodiscard]] std::ostream* Trace() const { return m_pTrace; }

private:
    [[nodiscard]] bool AtEnd() const;
    [[nodiscard]] bool AtOperator(int operatorCode) const;
    [[nodiscard]] bool AtSubcommandEnd() const;
    /// Makes the token at `index` the current one; the token count goes to the end.
    void GoTo(int index);
    /// Goes to the next token that is neither "=" nor ",".
    void Advance();

    [[nodiscard]] TablesToken FirstToken();
    [[nodiscard]] TablesToken EndSubcommand();
    [[nodiscard]] TablesToken DeliverSlash(const TAVQToken& slashToken);
    [[nodiscard]] TablesToken DeliverCurrent();

    [[nodiscard]] bool AtBreakWord() const;
    /// Goes from the word BREAK to the slash, or the end, that closes its subcommand.
    void TakeOutBreak();
    /// Goes from a slash to the next one that no BREAK follows, or to the end.
    void TakeOutBreaksAfterSlash();

    [[nodiscard]] NodeType KeywordCode() const;
    [[nodiscard]] NodeType ClassifyOperator() const;
    [[nodiscard]] NodeType ClassifyWord() const;
    [[nodiscard]] NodeType ClassifyPlainWord() const;
    /// The keyword that the current word is in the current subcommand; 0 when it is a name there.
    [[nodiscard]] NodeType SettingCode() const;
    /// The sign that is the current token and the number right after it as one token; none, and
    /// the sign stays current, when no number follows.
    [[nodiscard]] TAVQToken MergeSign();
    void CountToken(NodeType& code);
    void ChargeCopy(const TAVQToken& token);

    const CodePage& m_codePage;
    TokenSequenceBase* m_pTokSeq;
    int m_position = 0;  // 0 before the first token, 1 for the word after a slash
    int m_parenthesisDepth = 0;
    NodeType m_currentSubcommand = kNoNodeType;
    std::optional<int> m_breakStart;   // index of the first token of the last BREAK seen
    std::optional<int> m_returnPoint;  // while BREAK tokens are replayed: where to go on
    std::optional<int> m_replayed;     // the BREAK whose tokens have been delivered before
    bool m_isCopying = false;          // they are being delivered once more

    NodeOwner m_parseResult;
    Shortage m_shortage = Shortage::kNone;
    TablesLocation m_placeGivenUp;
    std::vector<ReportEntry> m_reports;
    std::vector<Warning> m_warnings;
    std::vector<TablesLocation> m_tableLocations;
    std::ostream* m_pTrace = nullptr;
};

}  // namespace quillet

#endif  // QUILLET_PARSER_TBTRTABLESCOMMAND_H
