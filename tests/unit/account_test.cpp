#include "outline/account.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

#include "accountof.h"
#include "support/rownames.h"

namespace quillet::outline {
namespace {

struct AccountCase {
    const char* name;
    std::string command;
    std::string summary;
};

void PrintTo(const AccountCase& accountCase, std::ostream* pStream) {
    *pStream << accountCase.name;
}

AccountContext Macros() { return {{"@COL", "OTHER"}, {}}; }

class AccountTest : public testing::TestWithParam<AccountCase> {};

TEST_P(AccountTest, HasTheLightAndTheNotes) {
    const Account account = AccountOf(GetParam().command, Macros());
    EXPECT_EQ(SummaryOf(account), GetParam().summary);
    EXPECT_TRUE(account.isComplete);
    ExpectSums(account);
}

// The examples of the guide that are converted.
const AccountCase kAccountExamples[] = {
    {"the frame", "TABLES /TABLE=region BY sex.", "same"},
    {"an expression", "TABLES /OBSERVATION=income /TABLE=region + (sex > agegroup) BY income.",
     "same"},
    {"nestings over stackings",
     "TABLES /TABLE=region > (sex + agegroup) BY year > (quarter + month).", "same"},
    {"a scale variable outermost",
     "TABLES /OBSERVATION=income /TABLE=income > region BY sex /STATISTICS=MEAN(income).", "same"},
    {"labels and formats",
     "TABLES /OBSERVATION=income\n"
     "  /TABLE=region BY income\n"
     "  /STATISTICS=MEAN(income 'Average' (F8.2)) PTILE 25 (income) UNWEIGHTED COUNT(income (F6.0) "
     "'n').",
     "same"},
    {"functions without variables",
     "TABLES /OBSERVATION=income age\n"
     "  /TABLE=region BY income + age + sex\n"
     "  /STATISTICS=COUNT() MEAN(age 'Mean age') SUM(income).",
     "same"},
    {"a set without a function", "TABLES /MRGROUP=media tv radio press /TABLE=media.", "same"},
    {"three bases",
     "TABLES /TABLE=region BY sex\n"
     "  /STATISTICS=CPCT(region 'of row':region) CPCT(region 'of column':sex) CPCT(region 'of "
     "all').",
     "same"},
    {"a base in one term of a stacking",
     "TABLES /TABLE=region BY sex + agegroup /STATISTICS=CPCT(region:sex).",
     "more | statistic-twice"},
    {"a following and a preceding total",
     "TABLES /FTOTAL=total 'All regions' /PTOTAL=both\n"
     "  /TABLE=region + total BY both + sex.",
     "same"},
    {"a total at several variables",
     "TABLES /OBSERVATION=income /FTOTAL=total\n"
     "  /TABLE=region + total + sex + total BY income > (year + quarter) + total.",
     "same"},
    {"a total with a function",
     "TABLES /FTOTAL=total 'All' /TABLE=region + total\n"
     "  /STATISTICS=COUNT(region total) CPCT(region).",
     "more | total-shows-more"},
    {"sets and their percentages",
     "TABLES /MRGROUP=newspapers \"Papers read\" paper1 TO paper5\n"
     "  /MDGROUP=media tv radio press (1)\n"
     "  /TABLE=newspapers BY sex + media\n"
     "  /STATISTICS=COUNT(newspapers) RPCT(newspapers:sex media).",
     "same"},
    {"labels in the columns", "TABLES /TABLE=q1 + q2 + q3 BY (LABELS) /STATISTICS=COUNT() CPCT().",
     "same"},
    {"labels of statistics in the rows",
     "TABLES /OBSERVATION=income /TABLE=region > (STATISTICS) BY income /STATISTICS=MEAN(income).",
     "same"},
    {"sorted categories",
     "TABLES /OBSERVATION=income /TABLE=region BY sex > income\n"
     "  /STATISTICS=MEAN(income)\n"
     "  /SORT=ASCENDING region sex (MEAN(income)).",
     "same"},
    {"titles",
     "TABLES /AUTOLABEL=ON\n"
     "  /TABLE=region /TITLE='Regions' \"by number of cases\" /CORNER='Region' /CAPTION='Survey of "
     "1998'\n"
     "  /TABLE=sex\n"
     "  /TABLE=agegroup /CORNER='Age'.",
     "same"},
    {"empty cells and missing values",
     "TABLES /FORMAT=ZERO MISSING('n.a.') /MISSING=INCLUDE /TABLE=region BY sex.", "same"},
    {"BREAK", "TABLES /BREAK=BY region /TABLE=sex BY agegroup /TABLE=year BY quarter.", "same"},
    {"dropped subcommands",
     "TABLES /FORMAT=CWIDTH(12,8) /BOXCHARS='-|' /LAYOUT=wide /TABLE=region\n"
     "  /FOOTNOTE='Source: survey'.",
     "less | (format-dropped), (subcommand-dropped), subcommand-dropped, title-dropped"},
    {"a table taken by FORMAT",
     "TABLES /FORMAT=MISSING /BREAK=BY region /TABLE=sex /TABLE=agegroup /TABLE=year.",
     "less | (format-dropped), table-dropped"},
};
INSTANTIATE_TEST_SUITE_P(Examples, AccountTest, testing::ValuesIn(kAccountExamples),
                         NameOfRow<AccountCase>);

// Tables that are not what was asked for.
const AccountCase kAccountDifferences[] = {
    {"statistic lost with its total",
     "TABLES /PTOTAL=n 'Base' /FTOTAL=t 'All' /TABLE=region BY n + q1 + t "
     "/STATISTICS=COUNT(n 'Cases') CPCT(q1 '%':region).",
     "less | statistic-lost, total-lost"},
    {"statistic of a variable that is not there",
     "TABLES /TABLE=region /STATISTICS=COUNT(region) MEAN(age).", "less | statistic-lost"},
    {"statistic of another dimension",
     "TABLES /TABLE=region BY sex /STATISTICS=COUNT(region) CPCT(sex).", "less | statistic-lost"},
    {"statistic that fits no term", "TABLES /TABLE=region /STATISTICS=COUNT(region) MEAN().",
     "less | statistic-lost"},
    {"statistic of a total across",
     "TABLES /FTOTAL=t /TABLE=region BY sex + t /STATISTICS=COUNT(region) CPCT(t).",
     "less | statistic-lost"},
    {"statistic twice", "TABLES /TABLE=one + region BY q1 /STATISTICS=CPCT(q1 '':region).",
     "more | statistic-twice"},
    {"statistic moved",
     "TABLES /PTOTAL=t n /TABLE=t + sex + age BY n + sex /STATISTICS=COUNT(n '' sex) "
     "CPCT(sex:sex age).",
     "differs | base-differs, statistic-lost, statistic-moved, total-extra, total-lost"},
    {"statistic of another variable",
     "TABLES /OBSERVATION=income /TABLE=income > region /STATISTICS=MEAN(region).",
     "differs | statistic-moved"},
    {"mean of a category", "TABLES /TABLE=q1 /STATISTICS=MEAN(q1).",
     "differs | statistic-impossible"},
    {"percentage of a sum of a category", "TABLES /TABLE=q1 /STATISTICS=SPCT(q1).",
     "differs | statistic-impossible"},
    {"responses of a category", "TABLES /TABLE=q1 /STATISTICS=RESPONSES(q1).",
     "differs | statistic-impossible"},
    {"percentage of responses of a category", "TABLES /TABLE=q1 /STATISTICS=RPCT(q1).",
     "differs | statistic-impossible"},
    {"mean of a set", "TABLES /MRGROUP=m a b /TABLE=m /STATISTICS=MEAN(m).",
     "differs | statistic-impossible"},
    {"base elsewhere", "TABLES /TABLE=q1 BY tban /STATISTICS=CPCT(q1:sban).",
     "differs | base-elsewhere"},
    {"base within a nesting", "TABLES /TABLE=a > b /STATISTICS=CPCT(b:a).",
     "differs | base-differs"},
    {"base that counts within the outer variable",
     "TABLES /TABLE=q1 > q2 BY a /STATISTICS=CPCT(q2:a).", "differs | base-differs"},
    {"base of both dimensions", "TABLES /TABLE=a BY b /STATISTICS=CPCT(a:a b).",
     "differs | base-differs"},
    {"base of rows within layers", "TABLES /TABLE=a BY b BY c /STATISTICS=CPCT(a:a).",
     "differs | base-differs"},
    {"base of one of two rows", "TABLES /TABLE=a > c BY b /STATISTICS=CPCT(c:a).",
     "differs | base-differs"},
    {"base in one nested column", "TABLES /TABLE=a BY b > c /STATISTICS=CPCT(a:c).",
     "differs | base-differs"},
    {"total lost beside labels",
     "TABLES /FTOTAL=t /TABLE=(LABELS) + t BY (q1 + q2) /STATISTICS=COUNT.", "less | total-lost"},
    {"total lost to a later one", "TABLES /FTOTAL=t 'T' u 'U' /TABLE=region + t + u.",
     "less | total-lost"},
    {"total lost alone in its dimension", "TABLES /FTOTAL=t /TABLE=region BY t.",
     "less | total-lost"},
    {"total shows more", "TABLES /FTOTAL=n /TABLE=q1 + n BY sex /STATISTICS=COUNT(n '') CPCT(q1).",
     "more | total-shows-more"},
    {"total extra", "TABLES /FTOTAL=t /TABLE=region + t BY (region > sex).", "more | total-extra"},
    {"set of one", "TABLES /MRGROUP=m 'x' q1 /TABLE=m.", "differs | set-of-one"},
    {"set name clash", "TABLES /MRGROUP=newspapers a b /MRGROUP=newspaperb c d /TABLE=newspapers.",
     "differs | set-name-clash"},
    {"set declared twice", "TABLES /MRGROUP=m a b /MRGROUP=m c d /TABLE=m.",
     "differs | set-name-clash"},
    {"scale lost", "TABLES /FORMAT MISSING /OBSERVATION x /TABLE x /STATISTICS MEAN(x).",
     "differs | (format-dropped), scale-lost, statistic-impossible, table-dropped"},
    {"total as a category", "TABLES /FORMAT MISSING /FTOTAL t /TABLE x + t.",
     "differs | (format-dropped), scale-lost, table-dropped"},
    {"set as a category", "TABLES /FORMAT MISSING /MRGROUP m a b /TABLE m.",
     "differs | (format-dropped), scale-lost, table-dropped"},
    {"table dropped", "TABLES /FORMAT MISSING /TABLE a /TABLE b.",
     "less | (format-dropped), table-dropped"},
    {"table dropped of two alike",
     "TABLES /FORMAT MISSING /TABLE a /TABLE a BY b /STATISTICS=COUNT(a).",
     "less | (format-dropped), table-dropped"},
    {"setting dropped", "TABLES /FORMAT MISSING /MISSING INCLUDE /TABLE b.",
     "less | (format-dropped), table-dropped"},
    {"automatic title dropped", "TABLES /FORMAT MISSING /AUTOLABEL ON /TABLE b.",
     "less | (format-dropped), table-dropped"},
    {"counted otherwise", "TABLES /FORMAT MISSING /BASE ALL /TABLE b /STATISTICS CPCT(b).",
     "differs | (format-dropped), base-differs, table-dropped"},
    {"macro name", "TABLES /TABLE=@col BY q1.", "differs | macro-name"},
    {"set with the name of a macro", "TABLES /MRGROUP=@col a b /TABLE=@col.",
     "differs | macro-name"},
    {"sort by a percentage", "TABLES /TABLE q1 BY sex /SORT q1 (CPCT).", "less | sort-changed"},
    {"second sort", "TABLES /TABLE q1 BY sex /SORT q1 /SORT sex.", "less | sort-changed"},
    {"title of a table", "TABLES /TABLE=a /TTITLE 'a'.", "less | title-dropped"},
    {"title replaced", "TABLES /TABLE=a /TITLE 'a' /TITLE 'b'.", "less | title-dropped"},
    {"title before an automatic one", "TABLES /AUTOLABEL=ON /TABLE=a /TTITLE 'a'.",
     "less | title-dropped"},
    {"page title", "TABLES /TABLE=a /PTITLE='a'.", "less | title-dropped"},
    {"footnotes", "TABLES /TABLE=a /FOOTNOTE='a' /TFOOTNOTE='b' /PFOOTNOTE='c'.",
     "less | title-dropped"},
    {"lost zero", "TABLES /FORMAT CWIDTH(10,8) ZERO /TABLE=a.",
     "less | (format-dropped), format-dropped"},
    {"zero of an earlier FORMAT", "TABLES /FORMAT ZERO /FORMAT MISSING('-') /TABLE=a.",
     "less | format-dropped"},
    {"subcommand without effect", "TABLES /FOO x /TABLE=a.", "less | subcommand-dropped"},
    {"unknown subcommand", "TABLES /LAYOUT=wide /TABLE=a.", "less | subcommand-dropped"},
    {"several notes", "TABLES /TABLE=q1 BY a /STATISTICS=MEAN(q1) CPCT(q1:z) /TTITLE 'x'.",
     "differs | base-elsewhere, statistic-impossible, title-dropped"},
    {"percentage of the outer columns", "TABLES /TABLE=a BY b > c /STATISTICS=CPCT(a:a b).",
     "differs | base-differs"},
    {"percentage within an outer row and the columns",
     "TABLES /TABLE=a > b BY c /STATISTICS=CPCT(b:a c).", "differs | base-differs"},
    {"percentage with a base in another table row",
     "TABLES /TABLE=a + b BY c /STATISTICS=CPCT(a:a c) COUNT(b).", "differs | base-differs"},
};
INSTANTIATE_TEST_SUITE_P(Differences, AccountTest, testing::ValuesIn(kAccountDifferences),
                         NameOfRow<AccountCase>);

// Tables that look like those, and are what was asked for.
const AccountCase kAccountNearMisses[] = {
    {"function of an outer variable", "TABLES /TABLE=a > b /STATISTICS=COUNT(a).", "same"},
    {"function of both variables of a term", "TABLES /TABLE=a > b BY c /STATISTICS=COUNT(a b).",
     "same"},
    {"function of one term", "TABLES /TABLE=a + b BY c /STATISTICS=COUNT(a).", "same"},
    {"functions without variables everywhere",
     "TABLES /OBSERVATION=x /TABLE=a + x BY c /STATISTICS=COUNT() MEAN().", "same"},
    {"function of a scale variable in several terms",
     "TABLES /OBSERVATION=x /TABLE=x > (a + b) /STATISTICS=MEAN(x) COUNT(a).", "same"},
    {"the same function twice", "TABLES /TABLE=a BY b /STATISTICS=COUNT(a 'n') COUNT(a 'n').",
     "same"},
    {"default of a set", "TABLES /MRGROUP=m a b /TABLE=sex BY m + region.", "same"},
    {"default of a set beside a function",
     "TABLES /MRGROUP=m a b /TABLE=m + region /STATISTICS=COUNT(region).", "same"},
    {"percentages of a set",
     "TABLES /MRGROUP=m a b /TABLE=m BY sex /STATISTICS=RPCT(m:sex) CPCT(m:sex) "
     "CSPCT(m) RESPONSES(m) CASES(m).",
     "same"},
    {"percentages with settings",
     "TABLES /BASE=ALL /GBASE=RESPONSES /MRGROUP=m a b /TABLE=m + q BY sex "
     "/STATISTICS=CPCT(m q:sex) RPCT(m).",
     "same"},
    {"percentage without a base",
     "TABLES /TABLE=a > b BY c + d BY e /STATISTICS=CPCT(b) U CPCT(a).", "same"},
    {"percentage of rows", "TABLES /TABLE=a BY b /STATISTICS=CPCT(a:a).", "same"},
    {"percentage of columns", "TABLES /TABLE=a BY b /STATISTICS=CPCT(a:b).", "same"},
    {"percentage of nested columns", "TABLES /TABLE=a BY b > c /STATISTICS=CPCT(a:b c).", "same"},
    {"percentage of layers", "TABLES /TABLE=a BY b BY c /STATISTICS=CPCT(a:c).", "same"},
    {"percentage of columns and layers", "TABLES /TABLE=a BY b BY c /STATISTICS=CPCT(a:b c).",
     "same"},
    {"percentage of rows and layers", "TABLES /TABLE=a BY b BY c /STATISTICS=CPCT(a:a c).", "same"},
    {"percentage within every nested row", "TABLES /TABLE=a > b BY c /STATISTICS=CPCT(b:a b).",
     "same"},
    {"percentage of every column of a stacking",
     "TABLES /TABLE=a BY b + c /STATISTICS=CPCT(a:b c).", "same"},
    {"percentage of a sum",
     "TABLES /OBSERVATION=x /TABLE=region BY sex > x /STATISTICS=SPCT(x:region).", "same"},
    {"percentage of a total", "TABLES /FTOTAL=t /TABLE=a + t BY b /STATISTICS=CPCT(t:b).", "same"},
    {"base that is a total", "TABLES /FTOTAL=t /TABLE=a + t BY b /STATISTICS=CPCT(a:t).", "same"},
    {"percentages under one label", "TABLES /TABLE=a BY b /STATISTICS=CPCT(a:a) CPCT(a:b) CPCT(a).",
     "same"},
    {"total without a statistic",
     "TABLES /FTOTAL=t /TABLE=a + t BY b /STATISTICS=COUNT(a) CPCT(a:b).", "same"},
    {"total with just its own statistic",
     "TABLES /FTOTAL=t 'T' /TABLE=a + t BY b /STATISTICS=COUNT(t).", "same"},
    {"total of several variables",
     "TABLES /FTOTAL=t /TABLE=a + t + b + t BY c + t /STATISTICS=COUNT(a).", "same"},
    {"total of a nesting", "TABLES /FTOTAL=t /PTOTAL=p /TABLE=(a > b) + t BY p + (c + d).", "same"},
    {"the same total at a variable in two dimensions", "TABLES /FTOTAL=t /TABLE=a + t BY a + t.",
     "same"},
    {"a variable twice without a total", "TABLES /FTOTAL=t /TABLE=a BY (a > b) + (c + t).", "same"},
    {"total of a set with a long name",
     "TABLES /MRGROUP=newspapers a b /FTOTAL=t /TABLE=newspapers + t.", "same"},
    {"total labeled in lower case", "TABLES /FTOTAL=total /TABLE=a + total.", "same"},
    {"set with a range", "TABLES /MRGROUP=m q1 TO q9 /TABLE=m.", "same"},
    {"set of one that no table uses", "TABLES /MRGROUP=m q1 /TABLE=a.", "same"},
    {"sets that differ in their first seven bytes",
     "TABLES /MRGROUP=newspap a b /MRGROUP=newspeper c d /TABLE=newspap.", "same"},
    {"sorted by what is asked", "TABLES /OBSERVATION=x /TABLE=a BY x /SORT=ASCENDING a (MEAN(x)).",
     "same"},
    {"sorted by counts in another dimension",
     "TABLES /OBSERVATION=x /TABLE=a BY x /SORT=a /STATISTICS=MEAN(x).", "same"},
    {"a variable sorted by two keys", "TABLES /TABLE=a /SORT=a (COUNT) a (COUNT(a)).", "same"},
    {"sort repeated", "TABLES /TABLE=a /SORT=a /SORT=a.", "same"},
    {"title that ends an automatic one", "TABLES /AUTOLABEL=ON /TABLE=a /TITLE.", "same"},
    {"title replaced by the same text", "TABLES /TABLE=a /TITLE 'a' /TITLE 'a'.", "same"},
    {"white space in literals",
     "TABLES /FTOTAL=t 'All of  them'\n /TABLE=a + t /TITLE='x'\n  'y'  'z'.", "same"},
    {"a FORMAT that takes a subcommand about looks",
     "TABLES /FORMAT MISSING /BOXCHARS='x' /TABLE=a.",
     "same | (format-dropped), (subcommand-dropped)"},
    {"FORMAT about looks", "TABLES /FORMAT CWIDTH(10,8) NBOX /TABLE=a.", "same | (format-dropped)"},
    {"FORMAT with both settings", "TABLES /FORMAT ZERO BLANK MISSING('x') /TABLE=a.", "same"},
    {"subcommands about looks",
     "TABLES /BOXCHARS='-' /FONTCHARS='x' /CONTINUED='c' /INDEX='i' /WRITE='f' "
     "/TABLE=a.",
     "same | (subcommand-dropped)"},
    {"markers", "TABLES /TABLE=(STATISTICS) BY a > (LABELS) /STATISTICS=COUNT(a).", "same"},
    {"labels in the layers", "TABLES /TABLE=a BY b BY (LABELS).", "same"},
    {"missing values", "TABLES /MISSING=INCLUDE /TABLE=a /TABLE=b.", "same"},
    {"a variable twice in one dimension", "TABLES /TABLE=a + (b > a) /STATISTICS=COUNT(a).",
     "same"},
    {"a longer macro name", "TABLES /TABLE=@column BY q1.", "same"},
};
INSTANTIATE_TEST_SUITE_P(NearMisses, AccountTest, testing::ValuesIn(kAccountNearMisses),
                         NameOfRow<AccountCase>);

struct ChangeCase {
    const char* name;
    std::string command;
    std::string_view from;  // in what was written
    std::string_view to;
    std::string summary;
};

void PrintTo(const ChangeCase& changeCase, std::ostream* pStream) { *pStream << changeCase.name; }

class AccountChangeTest : public testing::TestWithParam<ChangeCase> {};

TEST_P(AccountChangeTest, IsNoticed) {
    const ChangeCase& row = GetParam();
    EXPECT_EQ(AccountOf(row.command).light, Light::kSame);
    const Account account = AccountOf(row.command, {}, [&row](std::string& written) {
        const std::size_t place = written.find(row.from);
        ASSERT_NE(place, std::string::npos) << written;
        written.replace(place, row.from.size(), row.to);
    });
    EXPECT_EQ(SummaryOf(account), row.summary);
    ExpectSums(account);
}

constexpr const char* kPlain =
    "TABLES /OBSERVATION=income /FTOTAL=t 'All' /FORMAT=ZERO MISSING('-')\n"
    "  /TABLE=region + t BY sex BY year /STATISTICS=CPCT(region 'share' (F5.1):sex year) "
    "COUNT(region 'n')\n"
    "  /SORT=region /TITLE='one' /CORNER='two'\n"
    "  /TABLE=region > (year + sex) BY income /STATISTICS=MEAN(income) PTILE 25(income).";
constexpr const char* kNested = "TABLES /TABLE=region > year BY sex /STATISTICS=COUNT(year).";
constexpr const char* kSets =
    "TABLES /MDGROUP=media 'Media' tv radio (1) /TABLE=media BY sex /STATISTICS=RPCT(media:sex).";

const ChangeCase kAccountChanges[] = {
    {"another base", kPlain, "COLPCT", "ROWPCT", "differs | base-differs"},
    {"another count", kPlain, "COLPCT.VALIDN", "COLPCT.COUNT", "differs | base-differs"},
    {"another function", kPlain, "[MEAN", "[MEDIAN", "less | statistic-extra, statistic-lost"},
    {"a function less", kPlain, "[MEAN,", "[", "less | statistic-lost"},
    {"a function more", kPlain, "[MEAN,", "[MODE,MEAN,", "more | statistic-extra"},
    {"functions exchanged", kPlain, "[MEAN,PTILE 25]", "[PTILE 25,MEAN]",
     "differs | table-differs"},
    {"another percentile", kPlain, "PTILE 25", "PTILE 75",
     "less | statistic-extra, statistic-lost"},
    {"unweighted", kPlain, "COUNT,'n'", "UCOUNT,'n'", "less | statistic-extra, statistic-lost"},
    {"another label", kPlain, "'share'", "'part'", "less | statistic-extra, statistic-lost"},
    {"another format", kPlain, "F5.1", "F5.2", "less | statistic-extra, statistic-lost"},
    {"a list on the outer variable", kNested, "region[C]>year[C][COUNT]",
     "region[C][COUNT]>year[C]", "differs | statistic-moved"},
    {"a variable less", kPlain, "(year[C]+sex[C])", "year[C]", "differs | table-differs"},
    {"another variable", kPlain, "BY year[C]", "BY age[C]",
     "differs | base-differs, table-differs"},
    {"a scale variable as a category", kPlain, "income[S]", "income[C]",
     "differs | scale-lost, statistic-impossible"},
    {"a category as a scale variable", kPlain, "BY sex[C]", "BY sex[S]", "differs | table-differs"},
    {"a dimension that is another one", kSets, "BY sex[C]", "BY $media",
     "differs | base-differs, table-differs"},
    {"a total less", kPlain, "/CATEGORIES VAR=REGION TOTAL=YES POSITION=AFTER LABEL='All' \n", "\n",
     "less | total-lost"},
    {"a total before", kPlain, "AFTER", "BEFORE", "less | total-extra, total-lost"},
    {"another total label", kPlain, "LABEL='All'", "LABEL='Some'",
     "less | total-extra, total-lost"},
    {"another place for statistics", kPlain, "POSITION=ROW", "POSITION=COLUMN",
     "differs | table-differs"},
    {"no labels of statistics", kPlain, "POSITION=ROW", "POSITION=ROW VISIBLE=NO",
     "differs | table-differs"},
    {"missing values", kPlain, "MISSING=EXCLUDE", "MISSING=INCLUDE", "differs | setting-differs"},
    {"empty categories", kPlain, "VAR=ALL EMPTY=EXCLUDE", "VAR=ALL EMPTY=INCLUDE",
     "differs | setting-differs"},
    {"empty cells", kPlain, "EMPTY=ZERO", "EMPTY=BLANK", "less | format-dropped"},
    {"missing text", kPlain, "MISSING='-'", "MISSING='+'", "differs | setting-differs"},
    {"duplicates", kPlain, "COUNTDUPLICATES=YES", "COUNTDUPLICATES=NO",
     "differs | setting-differs"},
    {"another order", kPlain, "ORDER=D", "ORDER=A", "less | sort-changed"},
    {"another sort key", kPlain, "KEY=COUNT", "KEY=MEAN(income)", "less | sort-changed"},
    {"another title", kPlain, "'one'", "'three'", "less | text-extra, title-dropped"},
    {"title and corner exchanged", kPlain,
     "CORNER=", "CAPTION=", "less | text-extra, title-dropped"},
    {"another set label", kSets, "'Media'", "'Others'", "differs | setting-differs"},
    {"another set variable", kSets, "radio", "press", "differs | setting-differs"},
    {"another counted value", kSets, "VALUE=1", "VALUE=2", "differs | setting-differs"},
};
INSTANTIATE_TEST_SUITE_P(Changes, AccountChangeTest, testing::ValuesIn(kAccountChanges),
                         NameOfRow<ChangeCase>);

[[nodiscard]] std::string TextsOf(const Account& account) {
    std::string texts;
    for (const AccountNote& note : account.notes) {
        texts += std::to_string(note.line) + ": " + note.text + '\n';
    }
    return texts;
}

TEST(AccountNotesTest, SayWhatIsMeantAndWhere) {
    EXPECT_EQ(
        TextsOf(AccountOf("TABLES /FTOTAL=t 'All'\n  /TABLE=a > b BY c + t\n"
                          "  /STATISTICS=CPCT(b:a)\n  COUNT(t)\n  /FOOTNOTE='Source'.")),
        "3: 100 percent of CPCT(b) were each category of a, and are each combination of a and "
        "b in the new table.\n"
        "4: COUNT(t) is not in the new table, because the total t has no statistics of its own "
        "there.\n"
        "5: The text of FOOTNOTE is not in the new command: 'Source'. It can be added with "
        "/TITLES CAPTION='Source'\n");
}

TEST(AccountNotesTest, TellOfCommandsThatAreLost) {
    AccountContext context;
    context.lostCommands.push_back({"GET", 3});
    const Account account = AccountOf("TABLES /TABLE=a.", context);
    EXPECT_EQ(SummaryOf(account), "differs | command-lost");
    EXPECT_EQ(TextsOf(account), "3: GET stands in the text of this command, and no longer runs.\n");
}

TEST(AccountNotesTest, HaveNamesOfTheirOwn) {
    std::set<std::string_view> names;
    for (auto code = static_cast<int>(NoteCode::kStatisticLost);
         code <= static_cast<int>(NoteCode::kTooLarge); ++code) {
        EXPECT_TRUE(names.insert(NameOf(static_cast<NoteCode>(code))).second);
    }
}

TEST(AccountNotesTest, CutLongTexts) {
    const std::string title(5000, 'x');
    const Account account = AccountOf("TABLES /TABLE=a /TTITLE='" + title + "'.");
    ASSERT_EQ(account.notes.size(), 1U);
    EXPECT_LT(account.notes.front().text.size(), 1000U);
}

// Each entry points to what it is about.
TEST(AccountEntriesTest, SayWhereThingsWent) {
    const Account account = AccountOf(
        "TABLES /FTOTAL=t /TABLE=one + region BY q1 + t /STATISTICS=CPCT(q1:region) COUNT(z).");
    std::string entries;
    for (const AccountEntry& entry : account.entries) {
        if (entry.subject == Subject::kSetting) continue;
        entries += std::to_string(static_cast<int>(entry.subject)) + ' ' +
                   std::to_string(static_cast<int>(entry.fate)) + ' ' +
                   (entry.asked == kNowhere ? "-" : std::to_string(entry.asked)) + " ->";
        for (std::size_t at = 0; at < entry.written.count; ++at) {
            entries += ' ' + std::to_string(account.written[entry.written.first + at]);
        }
        entries += '\n';
    }
    // The total is kept, the percentage is there twice, and nothing is left of the last function.
    EXPECT_EQ(entries, "1 0 0 -> 0\n0 1 0 -> 0 1\n0 3 1 ->\n");
}

TEST(AccountLimitsTest, StopAtWhatMultipliesTooFar) {
    // Ten factors of four have a million terms, which are too many for functions on all of them.
    TableOutline table;
    Dimension& rows = table.dimensions[0];
    rows.push_back({Role::kNesting, {}, 0, false, 1});
    for (int factor = 0; factor < 12; ++factor) {
        const std::size_t stacking = rows.size();
        rows.push_back({Role::kStacking, {}, 0, false, 1});
        for (int operand = 0; operand < 4; ++operand) {
            const std::string name = "V" + std::to_string(factor * 4 + operand);
            rows.push_back({Role::kCategory, {name, name}, rows.size() + 1, false, 1});
        }
        rows[stacking].end = rows.size();
    }
    rows.front().end = rows.size();
    CommandOutline command;
    command.tables.push_back(table);
    const Account account = CompareOutlines(CodePage::Utf8(), command, command, {});
    EXPECT_FALSE(account.isComplete);
    EXPECT_EQ(SummaryOf(account), "differs | too-large");
}

TEST(AccountLimitsTest, TakeLongTables) {
    std::string rows = "v0";
    for (int variable = 1; variable < 5000; ++variable) {
        rows += " + v" + std::to_string(variable);
    }
    const Account account = AccountOf("TABLES /TABLE=" + rows + " BY a > b BY c + d" +
                                      " /STATISTICS=COUNT() CPCT(v17 v4000:a b).");
    EXPECT_TRUE(account.isComplete);
    EXPECT_EQ(account.statistics.kept, 5002U);
    ExpectSums(account);
}

TEST(AccountLimitsTest, TakeDeepNestings) {
    std::string rows = "v0";
    for (int variable = 1; variable < 5000; ++variable) {
        rows += " > v" + std::to_string(variable);
    }
    const Account account =
        AccountOf("TABLES /TABLE=" + rows + " BY a /STATISTICS=COUNT(v7) CPCT(v9:a).");
    EXPECT_TRUE(account.isComplete);
    EXPECT_EQ(account.statistics.kept, 2U);
}

TEST(AccountTest, IsOfNothingForNothing) {
    const Account account = CompareOutlines(CodePage::Utf8(), {}, {}, {});
    EXPECT_EQ(SummaryOf(account), "same");
    EXPECT_TRUE(account.entries.empty());
}

}  // namespace
}  // namespace quillet::outline
