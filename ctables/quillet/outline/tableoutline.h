// What a command for tables says, as plain data: the one shape in which an old command and the new
// one that was written for it can be laid side by side.
#ifndef QUILLET_OUTLINE_TABLEOUTLINE_H
#define QUILLET_OUTLINE_TABLEOUTLINE_H

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace quillet::outline {

// "Asked" is read from a TABLES command, "written" from the MRSETS and CTABLES commands made of it.
// Whatever only one of them fills says so. Lines count from 1 within the text that was read; 0 is
// for what nobody wrote, such as a default. Everything is owned, and nothing nests: trees and lists
// of lists are stretches of one vector, so that no input makes copying or destroying one expensive.

/// "No such place", for indexes.
inline constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

/// A name, or another word. Two names are the same when their keys are.
struct Name {
    std::string text;  ///< As it is spelled; a set of the new command with its "$".
    std::string key;   ///< In upper case. Empty, as `text` is, when there is no name.

    [[nodiscard]] bool IsEmpty() const { return key.empty(); }
};

/// A quoted text, or a number where either may stand. Two are the same when their values are.
struct Literal {
    std::string value;   ///< Without quotes, parts joined; a number as it is spelled.
    std::string source;  ///< As it is spelled, without blanks after it. Empty: there is no text.

    [[nodiscard]] bool IsEmpty() const { return source.empty(); }
};

/// A stretch of a vector: `count` elements, from `first` on.
struct Range {
    std::size_t first = 0;
    std::size_t count = 0;
};

/// The dimensions of a table, in the order in which a command names them.
enum class Axis : unsigned char { kRows, kColumns, kLayers, kNone };
inline constexpr std::size_t kAxes = 3;

/// What a node of a dimension is.
enum class Role : unsigned char {
    kStacking,    ///< The operator "+".
    kNesting,     ///< The operator ">", the outermost operand first.
    kCategory,    ///< A variable whose categories are tabulated.
    kScale,       ///< A variable that is summarized.
    kSet,         ///< A set of multiple responses.
    kTotal,       ///< A total that stands in the table's expression. Asked only.
    kLabels,      ///< The marker for the labels of categories. Asked only.
    kStatistics,  ///< The marker for the labels of statistics. Asked only.
};

/// True for the two operators, which alone have operands.
[[nodiscard]] constexpr bool IsOperator(Role role) {
    return role == Role::kStacking || role == Role::kNesting;
}

/// One node of a dimension.
struct Node {
    Role role = Role::kCategory;
    Name name;            ///< Of variables, sets and totals; of a marker as it is spelled.
    std::size_t end = 0;  ///< The index after the last node of the subtree that begins here.
    bool isInParentheses = false;  ///< Written only: it stands in parentheses, which mean nothing.
    long line = 0;
};

/// A dimension as a tree, root first and each node before its operands, so that the operands of the
/// node at i begin at i + 1 and each next one at the `end` of the one before. Empty: there is no
/// such dimension. An operator has two operands or more, none of which is the same operator: chains
/// and parentheses of one operator come out flat, and no other parentheses are kept.
using Dimension = std::vector<Node>;

/// A format of numbers.
struct Format {
    std::string text;     ///< As it is spelled, as in F8.2; empty when there is none.
    std::string letters;  ///< Its kind in upper case: "F", "DOLLAR", "PCT".
    int width = -1;       ///< In columns; -1 when none is given.
    int decimals = -1;    ///< -1 when none are given.
};

/// What makes 100 percent.
enum class PercentOf : unsigned char {
    kNothing,        ///< The function is no percentage.
    kBaseVariables,  ///< Each group of equal categories of the base variables. Asked only.
    kRow,
    kColumn,
    kLayer,
    kTable,
    kSubtable,
    kLayerRow,
    kLayerColumn,
};

/// What is counted for a percentage, and what it is compared with.
enum class Counted : unsigned char {
    kNothing,
    kCases,        ///< Those in the table: COUNT.
    kValidCases,   ///< VALIDN.
    kAllCases,     ///< Missing ones too: TOTALN.
    kResponses,    ///< RESPONSES.
    kValues,       ///< The sum of a scale variable: SUM.
    kValidValues,  ///< The cases with a valid value of a scale variable. Asked only.
};

/// Where in a table something stands.
struct Place {
    Axis axis = Axis::kNone;
    std::size_t node = kNowhere;  ///< An index into the dimension.
};

/// A function with all that makes one column or row of numbers of it. Asked: as many as there are
/// variables in the function's parentheses, or one when there are none. Written: as many as there
/// are in the lists of the variables, each at the place of its variable.
struct Assignment {
    /// The key is the whole name, "MEAN" for `mea`, in capitals for a name that is not known.
    /// Written: without the U of unweighted ones and without what `percentOf` says ("COUNT" of
    /// UROWPCT.COUNT; "RESPONSES.COUNT" of COLPCT.RESPONSES.COUNT); the text is whole.
    Name function;
    bool isKnown = true;  ///< False: there is no such function.
    bool isUnweighted = false;
    std::string argument;  ///< The number of a percentile, as it is spelled; mostly empty.
    /// The variable, set or total whose function it is. Asked: empty when the function names none,
    /// and so goes wherever it makes sense. Written: the variable of `place`.
    Name on;
    bool isOfTotal = false;  ///< Written only: in the list TOTALS[...] of the variable.
    Literal label;
    Format format;
    PercentOf percentOf = PercentOf::kNothing;
    Counted counted = Counted::kNothing;  ///< Of percentages. Asked: sets may change it.
    Counted against = Counted::kNothing;  ///< Of percentages. Asked: sets may change it.
    /// Asked only: base variables, in `TableOutline::baseVariables`. Those of one function share
    /// theirs. Empty: none are named, and the whole table makes 100 percent.
    Range baseVariables;
    Place place;  ///< Written only.
    long line = 0;
};

enum class Position : unsigned char { kBefore, kAfter };

/// A total of a table. Asked: once for each place where it stands in the expression. Written: once
/// for each line that declares one.
struct Total {
    Name name;      ///< Asked only.
    Literal label;  ///< Empty: none is given. Written: the one that stands there.
    Position position = Position::kAfter;
    Place place;  ///< Asked only: of the node with the role `kTotal`.
    /// Asked only: the node of the same dimension that it totals; a variable, a stacking of which
    /// it totals each operand's outermost variable, or the marker for labels, which stands for all
    /// variables whose labels are there. `kNowhere` when it stands beside nothing that has a total.
    std::size_t totaled = kNowhere;
    std::vector<Name> variables;  ///< Written only: those that the line names.
    long line = 0;
};

/// Texts around a table or a page.
enum class HeadingKind : unsigned char {
    kTitle,
    kPageTitle,
    kCaption,
    kCorner,
    kFootnote,
    kPageFootnote,
};

/// One subcommand that gives texts. All are kept, in the order of the command; of several of a kind
/// the last counts.
struct Heading {
    HeadingKind kind = HeadingKind::kTitle;
    Name subcommand;             ///< As it is spelled; the key is its whole name, "TTITLE".
    std::vector<Literal> texts;  ///< One for each line of the heading. May be empty.
    long line = 0;
};

enum class Direction : unsigned char { kAscending, kDescending };

/// The order of the categories of one variable.
struct Sort {
    Name variable;
    Direction direction = Direction::kDescending;
    Name key;             ///< The function, its key as in `Assignment`. Empty: none is named.
    Name of;              ///< The variable whose function it is. Empty: none is named.
    bool isKnown = true;  ///< False: there is no such function.
    std::size_t subcommand = 0;  ///< Counts the SORT subcommands of the table, from 0.
    long line = 0;
};

/// Where labels stand.
struct LabelPosition {
    Axis axis = Axis::kNone;  ///< `kNone`: nothing is said.
    bool isVisible = true;    ///< Written: as it is said. Asked: with statistics that are named.
    long line = 0;
};

enum class Missing : unsigned char { kExclude, kInclude };

/// A subcommand, or a part of one, that the outline has no member for.
struct Remark {
    enum class Kind : unsigned char {
        kPassedOver,  ///< A subcommand that says nothing about what is in a table, as BOXCHARS.
        kUnknown,     ///< A subcommand of no known name.
        kSetting,     ///< A setting of FORMAT about looks, as CWIDTH(10,8).
        kUnreadable,  ///< What does not fit the form of its subcommand.
    };
    Kind kind = Kind::kUnreadable;
    Name subcommand;   ///< The key is the whole name if it is a known one.
    std::string text;  ///< What stands there, its words one blank apart; at most 200 bytes.
    /// The table whose subcommands it stands among, from 0; `kNowhere` before the first one.
    std::size_t table = kNowhere;
    long line = 0;
};

/// A subcommand that a conversion does not see: a FORMAT before it breaks off, as MISSING without
/// its text, and takes it along. What it asks for is in the outline all the same.
struct TakenByFormat {
    Name subcommand;               ///< The key is the whole name if it is a known one.
    std::size_t table = kNowhere;  ///< Of a TABLE: its table, from 0.
    long line = 0;
};

/// One table.
struct TableOutline {
    Dimension dimensions[kAxes];  ///< By `Axis`.
    /// In the order of the command. Written: by dimension and place.
    std::vector<Assignment> assignments;
    std::vector<Name> baseVariables;  ///< See `Assignment`.
    std::vector<Total> totals;
    std::vector<Heading> headings;
    std::vector<Sort> sorts;
    /// The dimension in which the labels of the statistics stand.
    LabelPosition statisticsLabels;
    /// The dimension in which the labels of the other dimension's categories stand: `kColumns` for
    /// (LABELS) in the columns, and for CLABELS ROW=OPPOSITE.
    LabelPosition categoryLabels;
    Missing missing = Missing::kExclude;
    bool hidesEmptyCategories = true;  ///< Written: EMPTY=EXCLUDE. Asked: always.
    bool hasStatistics = false;        ///< Asked only: there is a STATISTICS subcommand.
    bool hasAutomaticTitle = false;    ///< The command makes the title from the table.
    long line = 0;
};

/// One variable of a list, or all from one to another in the order of the file.
struct VariableRange {
    Name first;
    Name last;  ///< Empty: it is the first alone.
    long line = 0;
};

/// A set of multiple responses as a command defines it.
struct ResponseSet {
    Name name;
    Literal label;
    bool countsOneValue = false;  ///< A set of dichotomies: the cases with `value` are counted.
    Literal value;                ///< Of those; empty also where the command forgot it.
    std::vector<VariableRange> variables;
    long line = 0;
};

/// A total as a TABLES command declares it.
struct DeclaredTotal {
    Name name;
    Literal label;
    Position position = Position::kAfter;
    long line = 0;
};

enum class EmptyCells : unsigned char { kBlank, kZero };
enum class CaseBase : unsigned char { kAnswering, kQualified, kAll };
enum class GroupBase : unsigned char { kCases, kResponses };
enum class AutoLabel : unsigned char { kDefault, kOn, kOff };

/// What holds for all tables of a command. The lines are those of the subcommand that counts.
struct Settings {
    EmptyCells emptyCells = EmptyCells::kBlank;
    bool countsDuplicates = true;  ///< Written: what MRSETS says. Asked: always.
    // Asked only.
    Missing missing = Missing::kExclude;  ///< Each table has it as well.
    CaseBase base = CaseBase::kAnswering;
    GroupBase groupBase = GroupBase::kCases;
    AutoLabel autoLabel = AutoLabel::kDefault;
    // Both again.
    Literal missingText;  ///< What stands in cells without a value.
    long emptyCellsLine = 0;
    long missingTextLine = 0;
    // Asked only.
    long missingLine = 0;
    long baseLine = 0;
    long groupBaseLine = 0;
    long autoLabelLine = 0;
};

/// A whole command.
struct CommandOutline {
    Settings settings;
    std::vector<ResponseSet> sets;
    std::vector<VariableRange> scaleVariables;  ///< Asked only: those of OBSERVATION.
    std::vector<DeclaredTotal> declaredTotals;  ///< Asked only.
    std::vector<TableOutline> tables;
    /// Headings before the first table.
    std::vector<Heading> headings;
    std::vector<Remark> remarks;
    std::vector<TakenByFormat> takenByFormat;  ///< Asked only.
};

}  // namespace quillet::outline

#endif  // QUILLET_OUTLINE_TABLEOUTLINE_H
