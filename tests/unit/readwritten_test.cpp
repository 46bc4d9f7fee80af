#include "outline/readwritten.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/codepage.h"
#include "support/doublebytepage.h"
#include "support/rownames.h"

namespace quillet::outline {
namespace {

std::string_view AxisWord(Axis axis) {
    static constexpr std::string_view kWords[] = {"rows", "columns", "layers", "nowhere"};
    return kWords[static_cast<std::size_t>(axis)];
}

// The tree in front of its operands: +(a:C >(b:C x:S) $m).
std::string ShowDimension(const Dimension& dimension) {
    std::string text;
    std::vector<std::size_t> ends;
    for (std::size_t i = 0; i < dimension.size(); ++i) {
        const Node& node = dimension[i];
        if (!text.empty() && text.back() != '(') text += " ";
        if (IsOperator(node.role)) {
            text += node.role == Role::kStacking ? "+(" : ">(";
            ends.push_back(node.end);
            continue;
        }
        text += node.name.text;
        if (node.role == Role::kCategory) text += ":C";
        if (node.role == Role::kScale) text += ":S";
        while (!ends.empty() && ends.back() == i + 1) {
            text += ")";
            ends.pop_back();
        }
    }
    return text;
}

std::string_view ShowPercentage(PercentOf percentOf) {
    static constexpr std::string_view kWords[] = {"",         "base variables", "row",
                                                  "column",   "layer",          "table",
                                                  "subtable", "layer row",      "layer column"};
    return kWords[static_cast<std::size_t>(percentOf)];
}

std::string_view ShowCounted(Counted counted) {
    static constexpr std::string_view kWords[] = {"nothing",   "cases",  "valid cases", "all cases",
                                                  "responses", "values", "valid values"};
    return kWords[static_cast<std::size_t>(counted)];
}

std::string ShowAssignment(const Assignment& assignment, const TableOutline& table) {
    std::string text(AxisWord(assignment.place.axis));
    const Dimension& dimension = table.dimensions[static_cast<std::size_t>(assignment.place.axis)];
    EXPECT_EQ(assignment.on.key, dimension.at(assignment.place.node).name.key);
    EXPECT_TRUE(assignment.isKnown);
    text.append(" ").append(std::to_string(assignment.place.node)).append(" ");
    text.append(assignment.on.text).append(assignment.isOfTotal ? " total: " : ": ");
    text.append(assignment.isUnweighted ? "unweighted " : "").append(assignment.function.key);
    if (!assignment.argument.empty()) text.append(" ").append(assignment.argument);
    if (assignment.percentOf != PercentOf::kNothing) {
        text.append(" % ").append(ShowPercentage(assignment.percentOf)).append(", ");
        text.append(ShowCounted(assignment.counted)).append(" of ");
        text.append(ShowCounted(assignment.against));
    }
    if (!assignment.label.IsEmpty()) text.append(" <").append(assignment.label.value).append(">");
    if (assignment.format.text.empty()) return text + "\n";
    text.append(" ").append(assignment.format.letters).append(":");
    text.append(std::to_string(assignment.format.width)).append(":");
    return text.append(std::to_string(assignment.format.decimals)).append("\n");
}

std::string ShowHeading(const Heading& heading) {
    static constexpr std::string_view kWords[] = {"title",  "page title", "caption",
                                                  "corner", "footnote",   "page footnote"};
    std::string text(kWords[static_cast<std::size_t>(heading.kind)]);
    EXPECT_EQ(heading.subcommand.key, "TITLES");
    for (const Literal& line : heading.texts) text.append(" <").append(line.value).append(">");
    return text + "\n";
}

std::string ShowSort(const Sort& sort) {
    std::string text = "sort " + sort.variable.text;
    text += sort.direction == Direction::kAscending ? " up" : " down";
    if (!sort.key.IsEmpty()) text += " by " + sort.key.key;
    if (!sort.of.IsEmpty()) text += " of " + sort.of.text;
    return text + "\n";
}

std::string ShowTotal(const Total& total) {
    std::string text = total.position == Position::kAfter ? "total after" : "total before";
    for (const Name& variable : total.variables) text += " " + variable.text;
    if (!total.label.IsEmpty()) text += " <" + total.label.value + ">";
    return text + "\n";
}

std::string ShowLabels(std::string_view what, const LabelPosition& labels) {
    if (labels.line == 0) return {};
    std::string text(what);
    if (labels.axis != Axis::kNone) text.append(" in the ").append(AxisWord(labels.axis));
    return text.append(labels.isVisible ? "\n" : " hidden\n");
}

// A line for each thing that is said of a table.
std::string ShowTable(const TableOutline& table) {
    std::string text;
    for (std::size_t i = 0; i < kAxes; ++i) {
        if (table.dimensions[i].empty()) continue;
        text.append(AxisWord(static_cast<Axis>(i))).append(" ");
        text.append(ShowDimension(table.dimensions[i])).append("\n");
    }
    for (const Assignment& assignment : table.assignments)
        text += ShowAssignment(assignment, table);
    if (table.hidesEmptyCategories) text += "empty hidden\n";
    if (table.missing == Missing::kInclude) text += "missing included\n";
    for (const Total& total : table.totals) text += ShowTotal(total);
    text += ShowLabels("labels", table.categoryLabels);
    text += ShowLabels("statistics", table.statisticsLabels);
    for (const Sort& sort : table.sorts) text += ShowSort(sort);
    for (const Heading& heading : table.headings) text += ShowHeading(heading);
    if (table.hasAutomaticTitle) text += "automatic title\n";
    return text;
}

std::string ShowSet(const ResponseSet& set) {
    std::string text = set.countsOneValue ? "dichotomies " : "categories ";
    text += set.name.text;
    if (!set.label.IsEmpty()) text += " <" + set.label.value + ">";
    text += ":";
    for (const VariableRange& range : set.variables) {
        text += " " + range.first.text;
        if (!range.last.IsEmpty()) text += "..." + range.last.text;
    }
    if (!set.value.IsEmpty()) text += " = <" + set.value.value + ">";
    return text + "\n";
}

std::string ShowCommand(const CommandOutline& outline) {
    std::string text;
    for (const ResponseSet& set : outline.sets) text += ShowSet(set);
    if (outline.settings.countsDuplicates) text += "duplicates count\n";
    if (outline.settings.emptyCells == EmptyCells::kZero) text += "zero cells\n";
    if (!outline.settings.missingText.IsEmpty()) {
        text += "missing cells <" + outline.settings.missingText.value + ">\n";
    }
    for (const TableOutline& table : outline.tables) text += ShowTable(table);
    return text;
}

struct ReadCase {
    const char* name;
    const char* text;
    const char* outline;
};

void PrintTo(const ReadCase& readCase, std::ostream* pStream) { *pStream << readCase.name; }

class ReadWrittenTest : public testing::TestWithParam<ReadCase> {};

// With "CTABLES /TABLE " in front where the text does not begin with a command.
std::string WholeCommand(std::string_view text) {
    const bool isWhole = text.starts_with("CTABLES") || text.starts_with("MRSETS");
    return (isWhole ? "" : "CTABLES /TABLE ") + std::string(text);
}

TEST_P(ReadWrittenTest, TellsWhatIsWritten) {
    const std::string text = WholeCommand(GetParam().text);
    for (const std::string_view end : {"", ".", ".\n"}) {
        CommandOutline outline;
        ReadingError error;
        EXPECT_TRUE(ReadWritten(CodePage::Utf8(), text + std::string(end), outline, error))
            << error.message << " at " << error.offset;
        EXPECT_EQ(ShowCommand(outline), GetParam().outline);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, ReadWrittenTest,
    testing::Values(ReadCase{"a categorical variable", "a[C]", "rows a:C\n"},
                    ReadCase{"a scale variable", "a[S]", "rows a:S\n"},
                    ReadCase{"a set", "$a", "rows $a\n"},
                    ReadCase{"a system variable", "$a[C]", "rows $a:C\n"},
                    ReadCase{"a variable called C", "C[C]", "rows C:C\n"},
                    ReadCase{"a stacking", "a[C]+$b", "rows +(a:C $b)\n"},
                    ReadCase{"a nesting", "a[C]>b[S]", "rows >(a:C b:S)\n"},
                    ReadCase{"nestings in a stacking", "a[C]>b[C]+c[C]>d[C]",
                             "rows +(>(a:C b:C) >(c:C d:C))\n"},
                    ReadCase{"parentheses", "a[C]>(b[C]+c[C])", "rows >(a:C +(b:C c:C))\n"},
                    ReadCase{"parentheses without need", "a[C]+(b[C]>c[C])",
                             "rows +(a:C >(b:C c:C))\n"},
                    ReadCase{"two dimensions", "a[C] BY b[C]", "rows a:C\ncolumns b:C\n"},
                    ReadCase{"three dimensions", "a[C] BY b[C]\n  BY c[C]",
                             "rows a:C\ncolumns b:C\nlayers c:C\n"},
                    ReadCase{"no rows", " BY b[C]", "columns b:C\n"},
                    ReadCase{"no columns", "a[C] BY  BY c[C]", "rows a:C\nlayers c:C\n"},
                    ReadCase{"layers alone", " BY  BY c[C]", "layers c:C\n"},
                    ReadCase{"over several lines", "a[C]+\n  (b[C]>\n  c[C]) BY \n  d[C]",
                             "rows +(a:C >(b:C c:C))\ncolumns d:C\n"},
                    ReadCase{"names like keywords", "TABLE[C]+TOTALS[C] BY VAR[C]",
                             "rows +(TABLE:C TOTALS:C)\ncolumns VAR:C\n"}),
    NameOfRow<ReadCase>);

INSTANTIATE_TEST_SUITE_P(
    Statistics, ReadWrittenTest,
    testing::Values(
        ReadCase{"one", "a[C][COUNT]", "rows a:C\nrows 0 a: COUNT\n"},
        ReadCase{"two", "a[S][MEAN,SUM]", "rows a:S\nrows 0 a: MEAN\nrows 0 a: SUM\n"},
        ReadCase{"of a set", "$a[RESPONSES]", "rows $a\nrows 0 $a: RESPONSES\n"},
        ReadCase{"of a set that begins like a mark", "$a[C]", "rows $a:C\n"},
        ReadCase{"in a nesting", "a[S][MEAN]>b[C]", "rows >(a:S b:C)\nrows 1 a: MEAN\n"},
        ReadCase{"in two terms", "a[C]>b[C][COUNT]+c[C][COUNT]",
                 "rows +(>(a:C b:C) c:C)\nrows 3 b: COUNT\nrows 4 c: COUNT\n"},
        ReadCase{"in the columns", "a[C] BY b[C][COUNT]",
                 "rows a:C\ncolumns b:C\ncolumns 0 b: COUNT\n"},
        ReadCase{"in the layers", " BY  BY b[C][COUNT]", "layers b:C\nlayers 0 b: COUNT\n"},
        ReadCase{"a number", "a[S][PTILE 25,PTILE -2.5]",
                 "rows a:S\nrows 0 a: PTILE 25\nrows 0 a: PTILE -2.5\n"},
        ReadCase{"a label", "a[S][MEAN,'My mean' ,SUM]",
                 "rows a:S\nrows 0 a: MEAN <My mean>\nrows 0 a: SUM\n"},
        ReadCase{"a format", "a[S][MEAN,F8.2,SUM]",
                 "rows a:S\nrows 0 a: MEAN F:8:2\nrows 0 a: SUM\n"},
        ReadCase{"label and format", "a[S][MEAN,\"m\",pct5]",
                 "rows a:S\nrows 0 a: MEAN <m> PCT:5:-1\n"},
        ReadCase{"number, label and format", "a[S][PTILE 5.,'m',x.]",
                 "rows a:S\nrows 0 a: PTILE 5. <m> X:-1:-1\n"},
        ReadCase{"a format of a macro", "a[S][MEAN,!fmt]", "rows a:S\nrows 0 a: MEAN !FMT:-1:-1\n"},
        ReadCase{"a format in small letters is no function", "a[S][MEAN,count]",
                 "rows a:S\nrows 0 a: MEAN COUNT:-1:-1\n"},
        ReadCase{"a function where a format could be", "a[S][MEAN,SUM]",
                 "rows a:S\nrows 0 a: MEAN\nrows 0 a: SUM\n"},
        ReadCase{"an empty label", "a[S][MEAN,'']", "rows a:S\nrows 0 a: MEAN <>\n"},
        ReadCase{"unweighted", "a[C][UCOUNT]", "rows a:C\nrows 0 a: unweighted COUNT\n"},
        ReadCase{
            "all that summarize",
            "a[S][MAXIMUM,MEAN,MEDIAN,MINIMUM,MODE,RANGE,SEMEAN,STDDEV,SUM,VALIDN,VARIANCE]",
            "rows a:S\nrows 0 a: MAXIMUM\nrows 0 a: MEAN\nrows 0 a: MEDIAN\nrows 0 a: MINIMUM\n"
            "rows 0 a: MODE\nrows 0 a: RANGE\nrows 0 a: SEMEAN\nrows 0 a: STDDEV\n"
            "rows 0 a: SUM\nrows 0 a: VALIDN\nrows 0 a: VARIANCE\n"},
        ReadCase{"a total's", "a[C][COUNT,TOTALS[COUNT,'n']]",
                 "rows a:C\nrows 0 a: COUNT\nrows 0 a total: COUNT <n>\n"},
        ReadCase{"a total's alone", "a[C][TOTALS[COUNT]]", "rows a:C\nrows 0 a total: COUNT\n"},
        ReadCase{
            "a total's of a set", "$a[RESPONSES,TOTALS[RESPONSES,COUNT]]",
            "rows $a\nrows 0 $a: RESPONSES\nrows 0 $a total: RESPONSES\nrows 0 $a total: COUNT\n"},
        ReadCase{"a total's after a format", "a[C][COUNT,F5.0,TOTALS[COUNT,F5.0]]",
                 "rows a:C\nrows 0 a: COUNT F:5:0\nrows 0 a total: COUNT F:5:0\n"},
        ReadCase{"a format called like that list", "a[C][COUNT,TOTALS]",
                 "rows a:C\nrows 0 a: COUNT TOTALS:-1:-1\n"}),
    NameOfRow<ReadCase>);

INSTANTIATE_TEST_SUITE_P(
    Percentages, ReadWrittenTest,
    testing::Values(ReadCase{"of a row", "a[C][ROWPCT.COUNT]",
                             "rows a:C\nrows 0 a: COUNT % row, cases of cases\n"},
                    ReadCase{"of a column", "a[C][COLPCT.VALIDN]",
                             "rows a:C\nrows 0 a: VALIDN % column, valid cases of valid cases\n"},
                    ReadCase{"of a layer", "a[C][LAYERPCT.TOTALN]",
                             "rows a:C\nrows 0 a: TOTALN % layer, all cases of all cases\n"},
                    ReadCase{"of the table", "a[S][TABLEPCT.SUM]",
                             "rows a:S\nrows 0 a: SUM % table, values of values\n"},
                    ReadCase{"of a subtable", "a[C][SUBTABLEPCT.COUNT]",
                             "rows a:C\nrows 0 a: COUNT % subtable, cases of cases\n"},
                    ReadCase{"of a layer's row", "a[C][LAYERROWPCT.COUNT]",
                             "rows a:C\nrows 0 a: COUNT % layer row, cases of cases\n"},
                    ReadCase{"of a layer's column", "a[C][LAYERCOLPCT.COUNT]",
                             "rows a:C\nrows 0 a: COUNT % layer column, cases of cases\n"},
                    ReadCase{"cases of responses", "$a[ROWPCT.COUNT.RESPONSES]",
                             "rows $a\nrows 0 $a: COUNT.RESPONSES % row, cases of responses\n"},
                    ReadCase{"responses of cases", "$a[ROWPCT.RESPONSES.COUNT]",
                             "rows $a\nrows 0 $a: RESPONSES.COUNT % row, responses of cases\n"},
                    ReadCase{"responses of responses", "$a[ROWPCT.RESPONSES]",
                             "rows $a\nrows 0 $a: RESPONSES % row, responses of responses\n"},
                    ReadCase{
                        "unweighted percentages", "a[C][UROWPCT.COUNT,'%',PCT5.1]",
                        "rows a:C\nrows 0 a: unweighted COUNT % row, cases of cases <%> PCT:5:1\n"},
                    ReadCase{"with two bases", "a[C][ROWPCT.COUNT,'%',TABLEPCT.COUNT,'%']",
                             "rows a:C\nrows 0 a: COUNT % row, cases of cases <%>\n"
                             "rows 0 a: COUNT % table, cases of cases <%>\n"}),
    NameOfRow<ReadCase>);

INSTANTIATE_TEST_SUITE_P(
    Categories, ReadWrittenTest,
    testing::Values(
        ReadCase{"empty hidden", "a[C] /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=EXCLUDE",
                 "rows a:C\nempty hidden\n"},
        ReadCase{"missing included", "a[C] /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=INCLUDE",
                 "rows a:C\nempty hidden\nmissing included\n"},
        ReadCase{"empty shown", "a[C] /CATEGORIES VAR=ALL EMPTY=INCLUDE", "rows a:C\n"},
        ReadCase{"a following total", "a[C] /CATEGORIES VAR=A TOTAL=YES POSITION=AFTER LABEL='All'",
                 "rows a:C\ntotal after A <All>\n"},
        ReadCase{"a preceding total",
                 "a[C] /CATEGORIES VAR=A B $C TOTAL=YES POSITION=BEFORE LABEL=\"T\"",
                 "rows a:C\ntotal before A B $C <T>\n"},
        ReadCase{"a total without position and label", "a[C] /CATEGORIES VAR=A TOTAL=YES",
                 "rows a:C\ntotal after A\n"},
        ReadCase{"two totals",
                 "a[C] /CATEGORIES VAR=A TOTAL=YES LABEL='x' /CATEGORIES VAR=B TOTAL=YES LABEL='y'",
                 "rows a:C\ntotal after A <x>\ntotal after B <y>\n"},
        ReadCase{"totals of variables called like settings",
                 "a[C] /CATEGORIES VAR=TOTAL LABEL TOTAL TOTAL=YES POSITION=AFTER",
                 "rows a:C\ntotal after TOTAL LABEL TOTAL\n"},
        ReadCase{"a total's settings in another order",
                 "a[C] /CATEGORIES VAR=A LABEL='x' POSITION=BEFORE TOTAL=YES",
                 "rows a:C\ntotal before A <x>\n"},
        ReadCase{"ascending by a count", "a[C] /CATEGORIES VAR=a ORDER=A KEY=COUNT",
                 "rows a:C\nsort a up by COUNT\n"},
        ReadCase{"descending by a variable's mean", "a[C] /CATEGORIES VAR=$a ORDER=D KEY=MEAN(x)",
                 "rows a:C\nsort $a down by MEAN of x\n"},
        ReadCase{"by itself", "a[C] /CATEGORIES VAR=a ORDER=D", "rows a:C\nsort a down\n"},
        ReadCase{"by a count of a set", "a[C] /CATEGORIES VAR=ORDER ORDER=D KEY=COUNT($m)",
                 "rows a:C\nsort ORDER down by COUNT of $m\n"}),
    NameOfRow<ReadCase>);

INSTANTIATE_TEST_SUITE_P(
    Labels, ReadWrittenTest,
    testing::Values(
        ReadCase{"of categories in the rows", "a[C] /CLABELS COL=OPPOSITE",
                 "rows a:C\nlabels in the rows\n"},
        ReadCase{"of categories in the columns", "a[C] /CLABELS ROW=OPPOSITE",
                 "rows a:C\nlabels in the columns\n"},
        ReadCase{"of statistics in the rows", "a[C] /SLABELS POSITION=ROW",
                 "rows a:C\nstatistics in the rows\n"},
        ReadCase{"of statistics in the columns", "a[C] /SLABELS POSITION=COLUMN",
                 "rows a:C\nstatistics in the columns\n"},
        ReadCase{"of statistics in the layers", "a[C] /SLABELS POSITION=LAYER VISIBLE=NO",
                 "rows a:C\nstatistics in the layers hidden\n"},
        ReadCase{"of statistics hidden", "a[C] /SLABELS VISIBLE=NO",
                 "rows a:C\nstatistics hidden\n"},
        ReadCase{"of statistics shown", "a[C] /SLABELS VISIBLE=YES", "rows a:C\nstatistics\n"}),
    NameOfRow<ReadCase>);

INSTANTIATE_TEST_SUITE_P(
    Headings, ReadWrittenTest,
    testing::Values(ReadCase{"a title", "a[C] /TITLES TITLE='x'", "rows a:C\ntitle <x>\n"},
                    ReadCase{"a title of two lines", "a[C] /TITLES TITLE='x'  \"y\"",
                             "rows a:C\ntitle <x> <y>\n"},
                    ReadCase{"all of them", "a[C] /TITLES TITLE='x' CAPTION='y' 'z'\n  CORNER='w'",
                             "rows a:C\ntitle <x>\ncaption <y> <z>\ncorner <w>\n"},
                    ReadCase{"a caption", "a[C] /TITLES CAPTION='x'", "rows a:C\ncaption <x>\n"},
                    ReadCase{"a corner", "a[C] /TITLE CORNER='x'", "rows a:C\ncorner <x>\n"},
                    ReadCase{"an automatic title", "a[C] /TITLES TITLE=')TABLE'",
                             "rows a:C\ntitle <)TABLE>\nautomatic title\n"},
                    ReadCase{"an automatic title and a corner",
                             "a[C] /TITLES TITLE=')TABLE' CORNER='x'",
                             "rows a:C\ntitle <)TABLE>\ncorner <x>\nautomatic title\n"},
                    ReadCase{"a caption that is no automatic title",
                             "a[C] /TITLES CAPTION=')TABLE'", "rows a:C\ncaption <)TABLE>\n"},
                    ReadCase{"empty ones", "a[C] /TITLES TITLE='' CORNER=\"\"",
                             "rows a:C\ntitle <>\ncorner <>\n"},
                    ReadCase{"glued ones", "a[C] /TITLES TITLE='x'+\n'y' CAPTION='z' + 'w'",
                             "rows a:C\ntitle <xy>\ncaption <z> <w>\n"}),
    NameOfRow<ReadCase>);

INSTANTIATE_TEST_SUITE_P(
    Commands, ReadWrittenTest,
    testing::Values(
        ReadCase{"duplicates", "CTABLES\n  /MRSETS COUNTDUPLICATES=YES\n  /TABLE a[C]",
                 "duplicates count\nrows a:C\n"},
        ReadCase{"no duplicates", "CTABLES /MRSETS COUNTDUPLICATES=NO /TABLE a[C]", "rows a:C\n"},
        ReadCase{"blank cells", "CTABLES /FORMAT EMPTY=BLANK /TABLE a[C]", "rows a:C\n"},
        ReadCase{"zero cells", "CTABLES /FORMAT EMPTY=ZERO /TABLE a[C]", "zero cells\nrows a:C\n"},
        ReadCase{"missing cells", "CTABLES /FORMAT EMPTY=ZERO MISSING='n''a' /TABLE a[C]",
                 "zero cells\nmissing cells <n'a>\nrows a:C\n"},
        ReadCase{"two tables", "a[C] /SLABELS VISIBLE=NO /TABLE b[C] /TITLES TITLE='x'",
                 "rows a:C\nstatistics hidden\nrows b:C\ntitle <x>\n"},
        ReadCase{"categories", "MRSETS\n  /MCGROUP NAME=$m VARIABLES=a b.\nCTABLES /TABLE $m",
                 "categories $m: a b\nrows $m\n"},
        ReadCase{"categories with a label",
                 "MRSETS /MCGROUP NAME=$m LABEL='x'  VARIABLES=a TO b c.\nCTABLES /TABLE $m",
                 "categories $m <x>: a...b c\nrows $m\n"},
        ReadCase{"dichotomies", "MRSETS /MDGROUP NAME=$m VARIABLES=a VALUE=1.\nCTABLES /TABLE $m",
                 "dichotomies $m: a = <1>\nrows $m\n"},
        ReadCase{"dichotomies of a text",
                 "MRSETS /MDGROUP NAME=$m VARIABLES=a VALUE='yes' .\nCTABLES /TABLE $m",
                 "dichotomies $m: a = <yes>\nrows $m\n"},
        ReadCase{"dichotomies without a value",
                 "MRSETS /MDGROUP NAME=$m VARIABLES=a.\nCTABLES /TABLE $m",
                 "dichotomies $m: a\nrows $m\n"},
        ReadCase{"a number that ends in a period",
                 "MRSETS /MDGROUP NAME=$m VARIABLES=a VALUE=-1..\nCTABLES /TABLE $m",
                 "dichotomies $m: a = <-1.>\nrows $m\n"},
        ReadCase{"names that end in periods",
                 "MRSETS /MCGROUP NAME=$m. VARIABLES=a. b..\nCTABLES /TABLE $m.[COUNT]",
                 "categories $m.: a. b.\nrows $m.\nrows 0 $m.: COUNT\n"},
        ReadCase{"variables called like settings",
                 "MRSETS /MDGROUP NAME=$m VARIABLES=VALUE LABEL VALUE=2.\nCTABLES /TABLE $m",
                 "dichotomies $m: VALUE LABEL = <2>\nrows $m\n"},
        ReadCase{"two sets",
                 "MRSETS\n  /MCGROUP NAME=$m VARIABLES=a\n  /MDGROUP NAME=$n VARIABLES=b VALUE=1"
                 ".\nCTABLES /TABLE $m>$n",
                 "categories $m: a\ndichotomies $n: b = <1>\nrows >($m $n)\n"},
        ReadCase{"a member called like the next command",
                 "MRSETS\n  /MCGROUP NAME=$m VARIABLES=b.\n  CTABLES c.\nCTABLES /TABLE $m",
                 "categories $m: b. CTABLES c\nrows $m\n"}),
    NameOfRow<ReadCase>);

// A text that cannot be read. What is wrong stands after the mark.
struct WrongCase {
    const char* name;
    const char* text;
    const char* message;
};

void PrintTo(const WrongCase& wrongCase, std::ostream* pStream) { *pStream << wrongCase.name; }

class ReadWrittenErrorTest : public testing::TestWithParam<WrongCase> {};

TEST_P(ReadWrittenErrorTest, TellsWhatIsWrongAndWhere) {
    constexpr std::string_view kMark = "¤";
    std::string text = WholeCommand(GetParam().text);
    const std::size_t offset = text.find(kMark);
    ASSERT_NE(offset, std::string::npos);
    text.erase(offset, kMark.size());
    for (int i = 0; i < 2; ++i) {
        CommandOutline outline;
        ReadingError error;
        EXPECT_FALSE(ReadWritten(CodePage::Utf8(), text, outline, error));
        EXPECT_EQ(error.message, GetParam().message);
        EXPECT_EQ(error.offset, offset);
        EXPECT_EQ(error.line,
                  1 + std::count(text.begin(), text.begin() + static_cast<long>(offset), '\n'));
        EXPECT_TRUE(outline.tables.empty());
        EXPECT_TRUE(outline.sets.empty());
    }
}

constexpr const char* kVariable = "a variable is expected";
constexpr const char* kFunction = "a function is expected";
constexpr const char* kEndOfList = "the end of the list of statistics is expected";
constexpr const char* kNoSetting = "there is no such setting here";
constexpr const char* kNoValue = "the setting has no such value";
constexpr const char* kSettingExpected = "a setting is expected";
constexpr const char* kLiteralExpected = "a quoted text is expected";
constexpr const char* kEnd = "a subcommand or the end is expected";
constexpr const char* kSettingTwice = "the setting stands here twice";
constexpr const char* kTwice = "the subcommand stands here twice";

INSTANTIATE_TEST_SUITE_P(
    Commands, ReadWrittenErrorTest,
    testing::Values(
        WrongCase{"nothing", "CTABLES¤", "a table is expected"},
        WrongCase{"another word", "CTABLES /¤TABEL a[C]", "there is no such subcommand here"},
        WrongCase{"a subcommand before the table", "CTABLES /¤SLABELS VISIBLE=NO /TABLE a[C]",
                  "there is no such subcommand here"},
        WrongCase{"a subcommand that is none", "a[C] /¤SLABEL VISIBLE=NO",
                  "there is no such subcommand here"},
        WrongCase{"small letters", "a[C] /¤slabels VISIBLE=NO", "there is no such subcommand here"},
        WrongCase{"text after the end", "a[C]. ¤/TABLE b[C]", kEnd},
        WrongCase{"another command", "a[C].\n¤CTABLES /TABLE b[C]", kEnd},
        WrongCase{"a word after the table", "a[C] ¤b[C]", kEnd},
        WrongCase{"a fourth dimension", "a[C] BY b[C] BY c[C] ¤BY d[C]", kEnd},
        WrongCase{"MRSETS without a command after it", "MRSETS /MCGROUP NAME=$m VARIABLES=a.¤",
                  "CTABLES is expected"},
        WrongCase{"MRSETS without a set", "MRSETS¤.\nCTABLES /TABLE a[C]", "a set is expected"},
        WrongCase{"a set of no known kind",
                  "MRSETS /¤MXGROUP NAME=$m VARIABLES=a.\nCTABLES /TABLE $m", "a set is expected"},
        WrongCase{"a set without a name", "MRSETS /MCGROUP VARIABLES=a¤.\nCTABLES /TABLE $m",
                  "NAME= is expected"},
        WrongCase{"a set without variables", "MRSETS /MCGROUP NAME=$m¤.\nCTABLES /TABLE $m",
                  "VARIABLES= is expected"},
        WrongCase{"a set with a setting that is none",
                  "MRSETS /MCGROUP NAME=$m VARIABLES=a LABELS=¤'x'.\nCTABLES /TABLE $m",
                  kNoSetting},
        WrongCase{"a value of a set of categories",
                  "MRSETS /MCGROUP NAME=$m VARIABLES=a VALUE=¤1.\nCTABLES /TABLE $m", kNoSetting},
        WrongCase{"a value that is a word",
                  "MRSETS /MDGROUP NAME=$m VARIABLES=a VALUE=¤yes.\nCTABLES /TABLE $m",
                  kLiteralExpected},
        WrongCase{"a range without an end",
                  "MRSETS /MCGROUP NAME=$m VARIABLES=a TO¤.\nCTABLES /TABLE $m",
                  "a name is expected"},
        WrongCase{"sets without a period",
                  "MRSETS /MCGROUP NAME=$m VARIABLES=a\nCTABLES /¤TABLE $m", "a set is expected"},
        WrongCase{"duplicates that are neither",
                  "CTABLES /MRSETS COUNTDUPLICATES=¤MAYBE /TABLE a[C]", "YES or NO is expected"},
        WrongCase{"MRSETS without its setting", "CTABLES /MRSETS ¤/TABLE a[C]",
                  "COUNTDUPLICATES= is expected"},
        WrongCase{"FORMAT without its setting", "CTABLES /FORMAT ¤/TABLE a[C]",
                  "EMPTY= is expected"},
        WrongCase{"empty cells that are neither", "CTABLES /FORMAT EMPTY=¤NIL /TABLE a[C]",
                  "BLANK or ZERO is expected"},
        WrongCase{"missing cells without a text",
                  "CTABLES /FORMAT EMPTY=ZERO MISSING=¤x /TABLE a[C]", kLiteralExpected},
        WrongCase{"duplicates twice",
                  "CTABLES /MRSETS COUNTDUPLICATES=NO /¤MRSETS COUNTDUPLICATES=NO /TABLE a[C]",
                  kTwice},
        WrongCase{"FORMAT twice", "CTABLES /FORMAT EMPTY=ZERO /¤FORMAT EMPTY=ZERO /TABLE a[C]",
                  kTwice},
        WrongCase{"a set with two labels",
                  "MRSETS /MCGROUP NAME=$m LABEL='x' ¤LABEL='y' VARIABLES=a.\nCTABLES /TABLE $m",
                  kSettingTwice},
        WrongCase{"FORMAT with another setting", "CTABLES /FORMAT EMPTY=ZERO ¤WIDTH=3 /TABLE a[C]",
                  kNoSetting}),
    NameOfRow<WrongCase>);

INSTANTIATE_TEST_SUITE_P(
    Expressions, ReadWrittenErrorTest,
    testing::Values(
        WrongCase{"no expression", "¤/SLABELS VISIBLE=NO", kVariable},
        WrongCase{"nothing after BY", "a[C] BY ¤/SLABELS VISIBLE=NO", kVariable},
        WrongCase{"nothing at the end", "a[C] BY¤", kVariable},
        WrongCase{"nothing after a plus", "a[C]+ BY ¤b[C]",
                  "the measurement mark of a variable is missing"},
        WrongCase{"two signs", "a[C]+¤>b[C]", kVariable}, WrongCase{"a literal", "¤'a'", kVariable},
        WrongCase{"no mark", "a¤+b[C]", "the measurement mark of a variable is missing"},
        WrongCase{"a list without a mark", "a[¤COUNT]",
                  "the measurement mark of a variable is missing"},
        WrongCase{"another mark", "$a[¤N]", kFunction},
        WrongCase{"a parenthesis that is not closed", "(a[C]+b[C] ¤BY c[C]",
                  "a closing parenthesis is missing"},
        WrongCase{"a parenthesis that is not open", "a[C]+b[C]¤)", kEnd},
        WrongCase{"nothing in parentheses", "(¤)", kVariable},
        WrongCase{
            "a name that is too long",
            "¤aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"
            "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"
            "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"
            "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa[C]",
            "the name is too long"},
        WrongCase{"an empty list", "a[C][¤]", kFunction},
        WrongCase{"an empty list of totals", "a[C][COUNT,TOTALS[¤]]", kFunction},
        WrongCase{"a function that is none", "a[C][¤AVERAGE]", kFunction},
        WrongCase{"a second function that is none", "a[C][COUNT,'x',F8.2,¤AVERAGE]", kFunction},
        WrongCase{"a percentage that is none", "a[C][¤ROWPCT.MEAN]", kFunction},
        WrongCase{"a base that is none", "a[C][¤ROW.COUNT]", kFunction},
        WrongCase{"a function in small letters", "a[C][¤count]", kFunction},
        WrongCase{"a label in front", "a[C][¤'x',COUNT]", kFunction},
        WrongCase{"two labels", "a[C][COUNT,'x',¤'y']", kFunction},
        WrongCase{"a label after a format", "a[C][COUNT,F8.2,¤'y']", kFunction},
        WrongCase{"no comma", "a[C][COUNT ¤'x']", kEndOfList},
        WrongCase{"two numbers", "a[C][PTILE 5 ¤6]", kEndOfList},
        WrongCase{"a comma at the end", "a[C][COUNT,¤]", kFunction},
        WrongCase{"a list that is not closed", "a[C][COUNT ¤BY b[C]", kEndOfList},
        WrongCase{"a totals' list that is not last", "a[C][TOTALS[COUNT]¤,COUNT]", kEndOfList},
        WrongCase{"a totals' list that is not closed", "a[C][TOTALS[COUNT] ¤BY b[C]", kEndOfList},
        WrongCase{"totals in totals", "a[C][TOTALS[¤TOTALS[COUNT]]]", kFunction},
        WrongCase{"two lists", "a[C][COUNT]¤[COUNT]", kEnd},
        WrongCase{"a label that is not closed", "a[C][COUNT,¤'x]", "a quoted text is not closed"},
        WrongCase{"a literal that is not closed anywhere", "a[C] ¤'x",
                  "a quoted text is not closed"}),
    NameOfRow<WrongCase>);

INSTANTIATE_TEST_SUITE_P(
    Subcommands, ReadWrittenErrorTest,
    testing::Values(
        WrongCase{"categories of nothing", "a[C] /CATEGORIES ¤ALL EMPTY=EXCLUDE",
                  "VAR= is expected"},
        WrongCase{"categories of no variable", "a[C] /CATEGORIES VAR=¤EMPTY=EXCLUDE", kVariable},
        WrongCase{"categories without a setting", "a[C] /CATEGORIES VAR=a¤", kSettingExpected},
        WrongCase{"empty ones of one variable", "a[C] /CATEGORIES VAR=a ¤EMPTY=EXCLUDE",
                  "this setting is for all variables"},
        WrongCase{"empty ones that are neither", "a[C] /CATEGORIES VAR=ALL EMPTY=¤YES", kNoValue},
        WrongCase{"missing ones that are neither", "a[C] /CATEGORIES VAR=ALL MISSING=¤NO",
                  kNoValue},
        WrongCase{"a total among empty ones", "a[C] /CATEGORIES VAR=ALL EMPTY=EXCLUDE TOTAL=¤YES",
                  kNoSetting},
        WrongCase{"a total that is none", "a[C] /CATEGORIES VAR=a TOTAL=NO¤",
                  "TOTAL=YES is expected"},
        WrongCase{"a total's label alone", "a[C] /CATEGORIES VAR=a LABEL='x'¤",
                  "TOTAL=YES is expected"},
        WrongCase{"a total in the middle", "a[C] /CATEGORIES VAR=a TOTAL=YES POSITION=¤MIDDLE",
                  kNoValue},
        WrongCase{"a total's label that is a word", "a[C] /CATEGORIES VAR=a TOTAL=YES LABEL=¤x",
                  kLiteralExpected},
        WrongCase{"a key of a total", "a[C] /CATEGORIES VAR=a TOTAL=YES KEY=¤COUNT", kNoSetting},
        WrongCase{"an order of two variables", "a[C] /CATEGORIES VAR=a b ¤ORDER=A",
                  "there is more than one variable to sort"},
        WrongCase{"no order", "a[C] /CATEGORIES VAR=a ORDER=¤X", kNoValue},
        WrongCase{"a key that is none", "a[C] /CATEGORIES VAR=a ORDER=A KEY=¤AVERAGE", kFunction},
        WrongCase{"a key that is a text", "a[C] /CATEGORIES VAR=a ORDER=A KEY=¤'x'", kFunction},
        WrongCase{"a key of nothing", "a[C] /CATEGORIES VAR=a ORDER=A KEY=MEAN(¤)",
                  "a name is expected"},
        WrongCase{"a key that is not closed", "a[C] /CATEGORIES VAR=a ORDER=A KEY=MEAN(x¤",
                  "a closing parenthesis is missing"},
        WrongCase{"another setting of an order", "a[C] /CATEGORIES VAR=a ORDER=A EMPTY=¤EXCLUDE",
                  kNoSetting},
        WrongCase{"two orders", "a[C] /CATEGORIES VAR=a ORDER=A ¤ORDER=D", kSettingTwice},
        WrongCase{"two positions", "a[C] /SLABELS POSITION=ROW ¤POSITION=ROW", kSettingTwice},
        WrongCase{"two titles", "a[C] /TITLES TITLE='x' ¤TITLE='y'", kSettingTwice},
        WrongCase{"an order without settings", "a[C] /CATEGORIES VAR=a ¤/SLABELS VISIBLE=NO",
                  kSettingExpected},
        WrongCase{"labels without a setting", "a[C] /CLABELS ¤AUTO", kSettingExpected},
        WrongCase{"labels of the layers", "a[C] /CLABELS LAYER=¤OPPOSITE", kNoSetting},
        WrongCase{"labels elsewhere", "a[C] /CLABELS ROW=¤LAYER", kNoValue},
        WrongCase{"labels twice", "a[C] /CLABELS ROW=OPPOSITE /¤CLABELS COL=OPPOSITE", kTwice},
        WrongCase{"statistics' labels without a setting", "a[C] /SLABELS¤", kSettingExpected},
        WrongCase{"statistics' labels nowhere", "a[C] /SLABELS POSITION=¤COL", kNoValue},
        WrongCase{"statistics' labels that are neither", "a[C] /SLABELS VISIBLE=¤OFF", kNoValue},
        WrongCase{"another setting of statistics' labels", "a[C] /SLABELS COL=¤OPPOSITE",
                  kNoSetting},
        WrongCase{"statistics' labels twice", "a[C] /SLABELS VISIBLE=NO /¤SLABELS VISIBLE=NO",
                  kTwice},
        WrongCase{"titles without a setting", "a[C] /TITLES ¤'x'", kSettingExpected},
        WrongCase{"titles without a text", "a[C] /TITLES TITLE=¤CAPTION='x'", kLiteralExpected},
        WrongCase{"another kind of title", "a[C] /TITLES ¤FOOTNOTE='x'", kNoSetting},
        WrongCase{"titles twice", "a[C] /TITLES TITLE='x' /¤TITLES CAPTION='y'", kTwice},
        WrongCase{"a title that is not closed", "a[C]\n  /TITLES TITLE='x'\n ¤\"y\n",
                  "a quoted text is not closed"}),
    NameOfRow<WrongCase>);

TEST(ReadWrittenTest, CountsLines) {
    const std::string text =
        "MRSETS\n"
        "  /MCGROUP NAME=$m VARIABLES=a\n  b.\n"
        "CTABLES\n"
        "  /MRSETS COUNTDUPLICATES=YES\n"
        "  /FORMAT EMPTY=ZERO MISSING=\n  '-'\n"
        "  /TABLE x[C]+\n  (y[C]>\n  z[C]) BY $m[COUNT,\n  RESPONSES]\n"
        "  /CATEGORIES VAR=A TOTAL=YES\n"
        "  /CLABELS COL=OPPOSITE\n"
        "  /SLABELS POSITION=ROW\n"
        "  /CATEGORIES VAR=x ORDER=A\n"
        "  /TITLES TITLE='a'+\n'b'\n  CORNER='c'.\n";
    CommandOutline outline;
    ReadingError error;
    ASSERT_TRUE(ReadWritten(CodePage::Utf8(), text, outline, error)) << error.message;
    EXPECT_EQ(outline.sets.at(0).line, 2);
    EXPECT_EQ(outline.sets.at(0).variables.at(1).line, 3);
    EXPECT_EQ(outline.settings.emptyCellsLine, 6);
    EXPECT_EQ(outline.settings.missingTextLine, 6);
    const TableOutline& table = outline.tables.at(0);
    EXPECT_EQ(table.line, 8);
    std::string lines;
    for (const Node& node : table.dimensions[0]) lines += std::to_string(node.line) + " ";
    EXPECT_EQ(lines, "8 8 9 9 10 ");
    EXPECT_EQ(table.assignments.at(0).line, 10);
    EXPECT_EQ(table.assignments.at(1).line, 11);
    EXPECT_EQ(table.totals.at(0).line, 12);
    EXPECT_EQ(table.categoryLabels.line, 13);
    EXPECT_EQ(table.statisticsLabels.line, 14);
    EXPECT_EQ(table.sorts.at(0).line, 15);
    EXPECT_EQ(table.headings.at(0).line, 16);
    EXPECT_EQ(table.headings.at(1).line, 18);
}

TEST(ReadWrittenTest, ReadsNamesInTheirCodePage) {
    CommandOutline outline;
    ReadingError error;
    ASSERT_TRUE(ReadWritten(DoubleByte(), "CTABLES /TABLE \x81[\x81]x[C][COUNT]", outline, error));
    EXPECT_EQ(outline.tables.at(0).dimensions[0].at(0).name.text, "\x81[\x81]x");
    EXPECT_EQ(outline.tables.at(0).dimensions[0].at(0).name.key, "\x81[\x81]X");
    ASSERT_TRUE(ReadWritten(CodePage::Utf8(), "CTABLES /TABLE größe[C]", outline, error));
    EXPECT_EQ(outline.tables.at(0).dimensions[0].at(0).name.key, "GRÖßE");
}

TEST(ReadWrittenTest, TakesAnyDepthAndLength) {
    constexpr std::size_t kCount = 50000;
    std::string deep = "CTABLES /TABLE ";
    std::string wide = deep + "a[C][COUNT";
    for (std::size_t i = 0; i < kCount; ++i) {
        deep += i % 2 == 0 ? "a[C]+(" : "a[C]>(";
        wide += ",COUNT]+a[C]>b[C][COUNT,'x'";
    }
    CommandOutline outline;
    ReadingError error;
    EXPECT_FALSE(ReadWritten(CodePage::Utf8(), deep, outline, error));
    EXPECT_EQ(error.offset, deep.size());
    ASSERT_TRUE(
        ReadWritten(CodePage::Utf8(), deep + "a[C]" + std::string(kCount, ')'), outline, error));
    EXPECT_EQ(outline.tables.at(0).dimensions[0].size(), 2 * kCount + 1);
    ASSERT_TRUE(ReadWritten(CodePage::Utf8(), wide + "]", outline, error));
    EXPECT_EQ(outline.tables.at(0).assignments.size(), 2 * kCount + 1);
}

}  // namespace
}  // namespace quillet::outline
