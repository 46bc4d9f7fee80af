#include "translator/subcommands.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "conversionhelper.h"

namespace quillet {
namespace {

// The subcommands that begin with `word`, each on a line.
std::string Converted(const std::string& source, std::string_view word) {
    const TablesConversion conversion = ConvertTablesCommand("TABLES " + source);
    if (!conversion.translated) return "<failed>";
    std::string lines;
    for (const std::string& subcommand : SubcommandsOf(conversion.text, word)) {
        if (!lines.empty()) lines += "\n";
        lines += subcommand;
    }
    return lines;
}

struct Case {
    const char* name;
    const char* source;
    const char* expected;
};

TEST(SubcommandsTest, WritesTheFormat) {
    const Case cases[] = {
        {"none", "/TABLE a", "/FORMAT EMPTY=BLANK"},
        {"blank", "/FORMAT BLANK /TABLE a", "/FORMAT EMPTY=BLANK"},
        {"zero", "/FORMAT ZERO /TABLE a", "/FORMAT EMPTY=ZERO"},
        {"zero, then blank", "/FORMAT ZERO BLANK /TABLE a", "/FORMAT EMPTY=BLANK"},
        {"blank, then zero", "/FORMAT BLANK ZERO /TABLE a", "/FORMAT EMPTY=ZERO"},
        {"missing", "/FORMAT MISSING('-') /TABLE a", "/FORMAT EMPTY=BLANK MISSING='-'"},
        {"both", "/FORMAT ZERO MISSING(\"n.a.\") /TABLE a", "/FORMAT EMPTY=ZERO MISSING=\"n.a.\""},
        {"both, the other way round", "/FORMAT MISSING('-') ZERO /TABLE a",
         "/FORMAT EMPTY=ZERO MISSING='-'"},
        {"the last missing text", "/FORMAT MISSING('-') MISSING('x') /TABLE a",
         "/FORMAT EMPTY=BLANK MISSING='x'"},
        {"the last subcommand alone", "/FORMAT ZERO MISSING('-') /FORMAT BLANK /TABLE a",
         "/FORMAT EMPTY=BLANK"},
        {"once for all tables", "/FORMAT ZERO /TABLE a /TABLE b", "/FORMAT EMPTY=ZERO"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Converted(c.source, "/FORMAT"), c.expected);
    }
}

TEST(SubcommandsTest, OfTheSettingsInAFormatTheLastCount) {
    // The parser leaves one of each. A tree made by hand is read in order.
    ParsedCommand parsed("TABLES /FORMAT ZERO MISSING('x') /TABLE a");
    TbTrParseNode& format = *parsed.Globals()->GetChild(0);
    format.AddChild(MakeNode(TestArena(), TB_BLANK));
    format.AddChild(MakeNode(TestArena(), SP_SLITERAL, *format.GetChild(1)->GetToken()));
    const GlobalSettings settings(parsed.Globals());
    OutputSequence out;
    out.Add("old", false);
    ASSERT_TRUE(WriteGlobalFormat(settings, out));
    EXPECT_EQ(out.Format(1, 0), "old\n/FORMAT EMPTY=\nBLANK\nMISSING=\n'x'");
}

TEST(SubcommandsTest, AFormatHasOnlyKnownSettings) {
    const AssertionRecorder assertions;
    ParsedCommand parsed("TABLES /FORMAT ZERO /TABLE a");
    parsed.Globals()->GetChild(0)->GetChild(0)->SetNodeType(TB_ON);
    OutputSequence out;
    EXPECT_FALSE(WriteGlobalFormat(GlobalSettings(parsed.Globals()), out));
    EXPECT_EQ(assertions.Texts(), std::vector<std::string>({"nodeType == SP_SLITERAL"}));
}

TEST(SubcommandsTest, WritesTitles) {
    const Case cases[] = {
        {"none", "/TABLE a", ""},
        {"a title", "/TABLE a /TITLE 'One'", "/TITLES TITLE='One'"},
        {"a title of two texts", "/TABLE a /TITLE 'One'\"Two\"", "/TITLES TITLE='One' \"Two\""},
        {"a title of three texts", "/TABLE a /TITLE 'One'\"Two\"'Three'",
         "/TITLES TITLE='One' \"Two\" 'Three'"},
        {"a title without text", "/TABLE a /TITLE", ""},
        {"the last title", "/TABLE a /TITLE 'One'/TITLE 'Two'", "/TITLES TITLE='Two'"},
        {"the last title, without text", "/TABLE a /TITLE 'One'/TITLE", ""},
        {"a caption", "/TABLE a /CAPTION 'One'", "/TITLES CAPTION='One'"},
        {"a caption of two texts", "/TABLE a /CAPTION 'One'\"Two\"",
         "/TITLES CAPTION='One' \"Two\""},
        {"the last caption", "/TABLE a /CAPTION 'One'/CAPTION 'Two'", "/TITLES CAPTION='Two'"},
        {"a corner", "/TABLE a /CORNER 'One'", "/TITLE CORNER='One'"},
        {"a corner of two texts", "/TABLE a /CORNER 'One'\"Two\"", "/TITLE CORNER='One' \"Two\""},
        {"the last corner", "/TABLE a /CORNER 'One'/CORNER 'Two'", "/TITLE CORNER='Two'"},
        {"title and corner", "/TABLE a /CORNER 'C'/TITLE 'T'", "/TITLES TITLE='T' CORNER='C'"},
        {"caption and corner", "/TABLE a /CORNER 'C'/CAPTION 'P'",
         "/TITLES CAPTION='P' CORNER='C'"},
        {"all three", "/TABLE a /CORNER 'C'\"D\"/CAPTION 'P'/TITLE 'T'",
         "/TITLES TITLE='T' CAPTION='P' CORNER='C' \"D\""},
        {"quotes as they are", "/TABLE a /TITLE 'It''s'/CAPTION \"a \"\"b\"\"\"",
         "/TITLES TITLE='It''s' CAPTION=\"a \"\"b\"\"\""},
        {"automatic labels", "/AUTOLABEL ON /TABLE a", "/TITLES TITLE=')TABLE'"},
        {"automatic labels off", "/AUTOLABEL OFF /TABLE a", ""},
        {"automatic labels by default", "/AUTOLABEL DEFAULT /TABLE a", ""},
        {"automatic labels taken back", "/AUTOLABEL ON /AUTOLABEL OFF /TABLE a", ""},
        {"automatic labels with a title", "/AUTOLABEL ON /TABLE a /TITLE 'T'", "/TITLES TITLE='T'"},
        {"automatic labels with a title without text", "/AUTOLABEL ON /TABLE a /TITLE", ""},
        {"automatic labels with a caption and a corner",
         "/AUTOLABEL ON /TABLE a /CAPTION 'P'/CORNER 'C'",
         "/TITLES TITLE=')TABLE' CAPTION='P' CORNER='C'"},
        {"each table its own", "/TABLE a /TITLE 'A'/TABLE b /TABLE c /CORNER 'C'",
         "/TITLES TITLE='A'\n/TITLE CORNER='C'"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Converted(c.source, "/TITLE"), c.expected);
    }
}

TEST(SubcommandsTest, BreaksTitlesBetweenTexts) {
    ParsedCommand parsed("TABLES /TABLE a /TITLE 'a'\"b\"/CAPTION 'c'\"d\"/CORNER 'e'\"f\"");
    OutputSequence out;
    out.Add("old", false);
    WriteTitles(parsed.Group(), GlobalSettings(nullptr), out);
    EXPECT_EQ(out.Format(2, 0),
              "old\n/TITLES TITLE=\n'a'\n\"b\"\nCAPTION=\n'c'\n\"d\"\nCORNER=\n'e'\n\"f\"");
    ParsedCommand corner("TABLES /TABLE a /CORNER 'e'");
    OutputSequence alone;
    WriteTitles(corner.Group(), GlobalSettings(nullptr), alone);
    EXPECT_EQ(alone.Format(2, 0), "\n/TITLE\nCORNER=\n'e'");
}

// The categories lines but the one for all variables.
std::string ConvertedSort(const std::string& source) {
    std::string lines = Converted(source, "/CATEGORIES VAR=");
    const std::size_t end = lines.find('\n');
    return end == std::string::npos ? "" : lines.substr(end + 1);
}

TEST(SubcommandsTest, WritesTheSortOrder) {
    const Case cases[] = {
        {"none", "/TABLE a", ""},
        {"by counts, descending", "/TABLE a /SORT a", "/CATEGORIES VAR=a ORDER=D KEY=COUNT"},
        {"ascending", "/TABLE a /SORT ASCENDING a", "/CATEGORIES VAR=a ORDER=A KEY=COUNT"},
        {"descending", "/TABLE a /SORT DESCENDING a", "/CATEGORIES VAR=a ORDER=D KEY=COUNT"},
        {"several variables, in order", "/TABLE a + b /SORT ASCENDING b a",
         "/CATEGORIES VAR=b ORDER=A KEY=COUNT\n/CATEGORIES VAR=a ORDER=A KEY=COUNT"},
        {"the first subcommand", "/TABLE a + b /SORT b /SORT ASCENDING a",
         "/CATEGORIES VAR=b ORDER=D KEY=COUNT"},
        {"by a statistic", "/OBSERVATION s /TABLE a > s /SORT a (MEAN(s))",
         "/CATEGORIES VAR=a ORDER=D KEY=MEAN(s)"},
        {"by a statistic without a variable", "/TABLE a /SORT a (MEDIAN)",
         "/CATEGORIES VAR=a ORDER=D KEY=MEDIAN"},
        {"by an abbreviated statistic", "/TABLE a /SORT a (med(Xyz))",
         "/CATEGORIES VAR=a ORDER=D KEY=MEDIAN(Xyz)"},
        {"by the statistic of a set", "/MRGROUP LongGroup x /TABLE a /SORT a (COUNT(LongGroup))",
         "/CATEGORIES VAR=a ORDER=D KEY=COUNT($LongGro)"},
        {"a sorted set", "/MRGROUP LongGroup x /TABLE LongGroup /SORT longgroup",
         "/CATEGORIES VAR=$longgro ORDER=D KEY=COUNT"},
        {"by a count function", "/TABLE a /SORT a (COUNT)", "/CATEGORIES VAR=a ORDER=D KEY=COUNT"},
        {"by a percentage", "/TABLE a /SORT a (CPCT)", "/CATEGORIES VAR=a ORDER=D KEY=COUNT"},
        {"by a percentage of responses", "/TABLE a /SORT a (RPCT)",
         "/CATEGORIES VAR=a ORDER=D KEY=COUNT"},
        {"by a percentage of a sum", "/TABLE a /SORT a (SPCT(x))",
         "/CATEGORIES VAR=a ORDER=D KEY=COUNT(x)"},
        {"by cases", "/TABLE a /SORT a (CASES)", "/CATEGORIES VAR=a ORDER=D KEY=RESPONSES"},
        {"spelling is kept", "/TABLE aBc /SORT AbC", "/CATEGORIES VAR=AbC ORDER=D KEY=COUNT"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ConvertedSort(c.source), c.expected);
    }
}

TEST(SubcommandsTest, OtherDimensionsAreSortedByTheCountsOfTheMagnet) {
    const Case cases[] = {
        {"rows, statistics in the columns", "/TABLE a BY Bb /SORT a",
         "/CATEGORIES VAR=a ORDER=D KEY=COUNT(Bb)"},
        {"columns, statistics in the columns", "/TABLE a BY b /SORT b",
         "/CATEGORIES VAR=b ORDER=D KEY=COUNT"},
        {"anywhere in the columns", "/TABLE a BY x > (y + b) /SORT B",
         "/CATEGORIES VAR=B ORDER=D KEY=COUNT"},
        {"nowhere in the table", "/TABLE a BY b /SORT c", "/CATEGORIES VAR=c ORDER=D KEY=COUNT(b)"},
        {"by the first magnet", "/OBSERVATION s /TABLE a BY x + s /SORT a",
         "/CATEGORIES VAR=a ORDER=D KEY=COUNT(x)"},
        {"by a magnet that is not the first variable",
         "/OBSERVATION s /TABLE a BY x > s + y /SORT a", "/CATEGORIES VAR=a ORDER=D KEY=COUNT(s)"},
        {"by a magnet that is a set", "/MRGROUP LongGroup x /TABLE a BY LongGroup /SORT a",
         "/CATEGORIES VAR=a ORDER=D KEY=COUNT($LongGro)"},
        {"by a percentage", "/TABLE a BY b /SORT a (CPCT)",
         "/CATEGORIES VAR=a ORDER=D KEY=COUNT(b)"},
        {"by a count function", "/TABLE a BY b /SORT a (COUNT)",
         "/CATEGORIES VAR=a ORDER=D KEY=COUNT(b)"},
        {"a key with a variable stays", "/TABLE a BY b /SORT a (CPCT(c))",
         "/CATEGORIES VAR=a ORDER=D KEY=COUNT(c)"},
        {"any other key stays", "/TABLE a BY b /SORT a (MEAN)",
         "/CATEGORIES VAR=a ORDER=D KEY=MEAN"},
        {"layers", "/OBSERVATION s /TABLE a BY b BY s > c /SORT c b",
         "/CATEGORIES VAR=c ORDER=D KEY=COUNT\n/CATEGORIES VAR=b ORDER=D KEY=COUNT(s)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ConvertedSort(c.source), c.expected);
    }
}

TEST(SubcommandsTest, BreaksTheSortOrderBetweenItems) {
    ParsedCommand parsed("TABLES /TABLE a BY b /SORT ASCENDING a b");
    TablesCommand command(CodePage::Utf8(), nullptr);
    const TranslationContext context(command, CodePage::Utf8(), parsed.Globals());
    const TbTrParseNode& columns = *parsed.Table().GetChild(1);
    OutputSequence out;
    out.Add("old", false);
    ASSERT_TRUE(WriteSort(parsed.Group(), columns, &columns, context, out));
    EXPECT_EQ(out.Format(3, 2),
              "old\n  /CATEGORIES VAR=\n  a\n  ORDER=\n  A\n  KEY=\n  COUNT(b)\n"
              "  /CATEGORIES VAR=\n  b\n  ORDER=\n  A\n  KEY=\n  COUNT");
}

TEST(SubcommandsTest, ReportsUnknownSortFunctions) {
    struct ErrorCase {
        const char* source;
        int line;
        int column;
        const char* text;
    };
    const ErrorCase cases[] = {
        {"TABLES /TABLE a /SORT a (Xyz)", 1, 28, "Xyz"},
        {"TABLES /TABLE a\n/SORT a b (MO(x))", 2, 12, "MO"},
        {"TABLES /TABLE a /SORT a (MEAN) b (wrong) c (worse)", 1, 39, "wrong"},
    };
    for (const ErrorCase& c : cases) {
        SCOPED_TRACE(c.source);
        const TablesConversion conversion = ConvertTablesCommand(c.source);
        EXPECT_TRUE(conversion.parsed);
        EXPECT_FALSE(conversion.translated);
        EXPECT_EQ(conversion.text, "");
        EXPECT_EQ(conversion.report.kind, TablesErrorKind::kUnknownSortFunction);
        EXPECT_EQ(conversion.report.line, c.line);
        EXPECT_EQ(conversion.report.column, c.column);
        EXPECT_EQ(conversion.report.text, c.text);
        EXPECT_TRUE(conversion.assertions.empty());
    }
}

TEST(SubcommandsTest, WithoutAMagnetASortIsByCounts) {
    ParsedCommand parsed("TABLES /TABLE a BY b /SORT a");
    TbTrParseNode& columns = *parsed.Table().GetChild(1);
    const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
    const TbTrParseNode noName(SP_VARNAME);
    const std::pair<const TbTrParseNode*, const char*> cases[] = {{nullptr, "pFirstMagnetVar"},
                                                                  {&noName, "pFirstMagnetVarTok"}};
    for (const auto& [pMagnet, assertion] : cases) {
        const AssertionRecorder assertions;
        OutputSequence out;
        EXPECT_TRUE(WriteSort(parsed.Group(), columns, pMagnet, context, out));
        EXPECT_EQ(out.Format(80, 2), "\n  /CATEGORIES VAR=a ORDER=D KEY=COUNT");
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>({assertion}));
    }
}

TEST(SubcommandsTest, AssertsTheShapeOfASort) {
    struct DamageCase {
        void (*damage)(TbTrParseNode& sort);
        const char* assertion;
    };
    const DamageCase cases[] = {
        {[](TbTrParseNode& sort) { sort.GetChild(0)->SetNodeType(SP_VARNAME); },
         "pSortVar && pSortVar->GetNodeType() == TBI_SORTVAR"},
        {[](TbTrParseNode& sort) { sort.AddFirstChild(MakeNode(TestArena(), TB_ON)); },
         "pSortVar && pSortVar->GetNodeType() == TBI_SORTVAR"},
        {[](TbTrParseNode& sort) { sort.GetChild(0)->SetToken({}); }, "pSortVarTok"},
        {[](TbTrParseNode& sort) { sort.GetChild(0)->GetChild(0)->SetToken({}); }, "pSortFuncTok"},
    };
    for (const DamageCase& c : cases) {
        SCOPED_TRACE(c.assertion);
        const AssertionRecorder assertions;
        ParsedCommand parsed("TABLES /TABLE a /SORT a (MEAN)");
        ASSERT_TRUE(parsed.Parsed());
        c.damage(*parsed.Group().GetChild(1));
        const TranslationContext context(parsed.Command(), CodePage::Utf8(), parsed.Globals());
        const TbTrParseNode& rows = *parsed.Table().GetChild(0);
        OutputSequence out;
        EXPECT_FALSE(WriteSort(parsed.Group(), rows, &rows, context, out));
        EXPECT_EQ(assertions.Texts(), std::vector<std::string>({c.assertion}));
    }
}

}  // namespace
}  // namespace quillet
