// What became of everything that an old command for tables asked for.
#ifndef QUILLET_OUTLINE_ACCOUNT_H
#define QUILLET_OUTLINE_ACCOUNT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "outline/tableoutline.h"
#include "platform/codepage.h"

namespace quillet::outline {

/// How a new table compares with the old one, the best first.
enum class Light : unsigned char { kSame, kMore, kLess, kDiffers };

/// "same", "more", "less" or "differs".
[[nodiscard]] std::string_view NameOf(Light light);

/// What a note is about; "accountnotes.def" lists them.
enum class NoteCode : unsigned char {
#define QUILLET_NOTE(code, name, light, sentence) code,
#include "outline/accountnotes.def"
};

/// A short name of lower-case words and hyphens, such as "base-differs", that stays the same in all
/// versions.
[[nodiscard]] std::string_view NameOf(NoteCode code);

/// Something about the new tables that is not, or may not be, as it was.
struct AccountNote {
    NoteCode code = NoteCode::kStatisticLost;
    Light light = Light::kSame;
    std::string text;  ///< One sentence, in the code page of the outlines; at most a few lines.
    /// The table that was asked for, or, where nothing asked for it, the one that is written;
    /// `kNowhere` for what concerns the whole command.
    std::size_t table = kNowhere;
    long line = 0;  ///< Of what was asked for; 0 where nothing was.
};

/// What an entry of an account is about, and what its indexes count.
enum class Subject : unsigned char {
    kStatistic,  ///< `TableOutline::assignments`, once for each term, or total of a term.
    kTotal,      ///< `TableOutline::totals`, once for each variable that is totaled.
    kHeading,    ///< `TableOutline::headings`; those of the command when there is no table.
    kSort,       ///< `TableOutline::sorts`
    kTable,      ///< `CommandOutline::tables`
    kSet,        ///< `CommandOutline::sets`
    kRemark,     ///< `CommandOutline::remarks`
    kSetting,    ///< One of `Settings`, or of a table's; the index is an `AccountedSetting`.
};

/// What is set once, for a command or a table.
enum class AccountedSetting : unsigned char {
    kEmptyCells,
    kMissingText,
    kDuplicates,
    kMissing,
    kEmptyCategories,
    kStatisticsLabels,
    kCategoryLabels,
    kAutomaticTitle,
};

/// What became of something.
enum class Fate : unsigned char {
    kKept,
    kTwice,    ///< A percentage that is written with several bases.
    kMoved,    ///< A function that is only in one of the places where it was wanted.
    kLost,     ///< A statistic or total that is nowhere.
    kDropped,  ///< Anything else that is nowhere.
    kExtra,    ///< Written, though nothing asked for it.
};

/// One line of an account.
struct AccountEntry {
    Subject subject = Subject::kStatistic;
    Fate fate = Fate::kKept;
    std::size_t askedTable = kNowhere;    ///< The table that was asked for.
    std::size_t writtenTable = kNowhere;  ///< The table that was written for it.
    /// Into the list that `subject` names. `kNowhere` for what is extra, and for a function that
    /// nobody named, but that a set has when nothing is named for it.
    std::size_t asked = kNowhere;
    /// A stretch of `Account::written`: the indexes of what was written for it.
    Range written;
    bool isOfTotal = false;  ///< Of statistics: in the list of a total.
    Place place;             ///< Of a statistic or total: the variable in the written table.
    long line = 0;           ///< Of what was asked for.
    long writtenLine = 0;    ///< Of the first thing that was written for it.
};

/// How the statistics of a command came through. Always
/// `asked` = `kept` + `twice` + `moved` + `lost`, and
/// `written` = `kept` + `writtenTwice` + `writtenMoved` + `extra`.
struct Tally {
    std::size_t asked = 0;
    std::size_t kept = 0;
    std::size_t twice = 0;
    std::size_t moved = 0;
    std::size_t lost = 0;
    std::size_t written = 0;       ///< All functions in the lists of the new command.
    std::size_t writtenTwice = 0;  ///< For what is twice: a function for each base.
    std::size_t writtenMoved = 0;  ///< For what is moved.
    std::size_t extra = 0;
};

/// The whole account of a command.
struct Account {
    Light light = Light::kSame;         ///< The worst of the notes.
    std::vector<AccountNote> notes;     ///< By line, those of nothing that was asked for first.
    std::vector<AccountEntry> entries;  ///< By table.
    std::vector<std::size_t> written;   ///< See `AccountEntry::written`.
    Tally statistics;
    /// False when terms multiply to more than can be compared, or there is too much of anything;
    /// there is a note on that, and the tally is of no use.
    bool isComplete = true;
};

/// A command that stands in the text of another one.
struct LostCommand {
    std::string name;
    long line = 0;
};

/// What is known of a command besides its own text.
struct AccountContext {
    /// In upper case and in any order: the names that macros have, of which none can be that of a
    /// variable. Words with a "!" need not be among them.
    std::vector<std::string> macroNames;
    std::vector<LostCommand> lostCommands;
};

/// Compares what a command asked for with what was written for it. Nothing is borrowed.
///
/// Each function is looked for in the list of every term of the table in which it should be, each
/// total at every variable that it totals, each text and setting at its table. Of percentages the
/// groups of cells that make 100 percent are compared, for all cells of the table.
///
/// Takes any outlines; never fails. Linear in both but for a logarithm and for what multiplies: the
/// terms of a nesting of stackings, functions by terms, and base variables by terms. For these
/// there is a limit, far beyond what a table on paper can be.
[[nodiscard]] Account CompareOutlines(const CodePage& codePage, const CommandOutline& asked,
                                      const CommandOutline& written, const AccountContext& context);

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_ACCOUNT_H
