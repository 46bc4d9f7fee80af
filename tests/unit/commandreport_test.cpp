#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "memorytext.h"
#include "quillet.h"

namespace quillet {
namespace {

using namespace std::string_literals;

// A report whose texts are its own.
struct Kept {
    CommandReport report;
    std::string source;
    std::string generated;
    std::string message;
};

class Collector final : public ConversionListener {
public:
    void OnResultLine(std::string_view /*line*/) override {}
    void OnDiagnostic(std::string_view /*line*/) override {}
    void OnEncoding(TextEncoding encoding) override {
        EXPECT_TRUE(kept.empty()) << "comes first";
        encodings.push_back(encoding);
    }
    void OnCommand(const CommandReport& report) override {
        kept.push_back({report, std::string(report.source), std::string(report.generated),
                        std::string(report.message)});
    }

    std::vector<TextEncoding> encodings;
    std::vector<Kept> kept;
};

struct Told {
    Outcome outcome;
    std::string output;
    Collector listener;
};

Told Convert(const std::string& text, bool batchMode = false) {
    Told told;
    MemoryInput input(text);
    MemoryOutput output;
    Options options;
    options.batchMode = batchMode;
    told.outcome = ConvertStream(input, output, told.listener, options);
    told.output = output.Text();
    return told;
}

struct ExpectedReport {
    CommandType type;
    CommandOutcome outcome;
    long firstLine;
    long lastLine;

    bool operator==(const ExpectedReport& other) const {
        return type == other.type && outcome == other.outcome && firstLine == other.firstLine &&
               lastLine == other.lastLine;
    }
};

void PrintTo(const ExpectedReport& report, std::ostream* pStream) {
    *pStream << static_cast<int>(report.type) << ' ' << static_cast<int>(report.outcome) << ' '
             << report.firstLine << '-' << report.lastLine;
}

std::vector<ExpectedReport> OutlineOf(const Told& told) {
    std::vector<ExpectedReport> outline;
    for (const Kept& kept : told.listener.kept) {
        outline.push_back(
            {kept.report.type, kept.report.outcome, kept.report.firstLine, kept.report.lastLine});
    }
    return outline;
}

constexpr auto kCopied = CommandOutcome::kCopied;
constexpr auto kConverted = CommandOutcome::kConverted;
constexpr auto kFailed = CommandOutcome::kFailed;
constexpr auto kUnreadable = CommandOutcome::kUnreadable;

TEST(CommandReportTest, TellsOfEveryCommand) {
    const std::string text =
        "\n* A comment.\nDOCUMENT x\n y.\n\nLIST\n /CASES=10.\n"
        "TABLES /TABLE a\n BY b.\nIGRAPH /X1=VAR(a) /Y=VAR(b) /BAR.\n"
        "BEGIN DATA\n1\n\n2\nEND DATA.\nTABLES /TABLE.\nIGRAPH /BAR.\nLIST";
    const std::vector<ExpectedReport> expected = {
        {CommandType::kComment, kCopied, 2, 2},     {CommandType::kDocument, kCopied, 3, 4},
        {CommandType::kOrdinary, kCopied, 6, 7},    {CommandType::kTables, kConverted, 8, 9},
        {CommandType::kIgraph, kConverted, 10, 10}, {CommandType::kInlineData, kCopied, 11, 15},
        {CommandType::kTables, kFailed, 16, 16},    {CommandType::kIgraph, kFailed, 17, 17},
        {CommandType::kOrdinary, kCopied, 18, 18},
    };
    EXPECT_EQ(OutlineOf(Convert(text)), expected);
}

// A first word that later lines complete decides what a command is, but not where it ends.
TEST(CommandReportTest, TellsOfFirstWordsOverSeveralLines) {
    const std::vector<ExpectedReport> expected = {
        {CommandType::kTables, kConverted, 1, 2},   {CommandType::kIgraph, kFailed, 3, 5},
        {CommandType::kOrdinary, kCopied, 6, 7},    {CommandType::kDocument, kCopied, 8, 9},
        {CommandType::kComment, kCopied, 10, 11},   {CommandType::kComment, kCopied, 12, 13},
        {CommandType::kTables, kConverted, 14, 15}, {CommandType::kOrdinary, kCopied, 16, 17},
    };
    EXPECT_EQ(OutlineOf(Convert("'TA'\n+'BLES' /TABLE a BY b.\n"
                                "'I'\n\n +\"GRAPH\" /X1=VAR(a) /Y=VAR(b) /BAR.\n"
                                "'*'\n+'x' y.\n"
                                "'DO'\n+'C' \\ x.\n"
                                "/* x\nCOMMENT y.\n"
                                "'*'\n+'*' it's.\n"
                                "/* x\nTABLES /TABLE a BY b.\n"
                                "'TA'\n'BLES' /TABLE a BY b.\n")),
              expected);
}

TEST(CommandReportTest, TellsTheLinesInBatchMode) {
    const std::vector<ExpectedReport> expected = {
        {CommandType::kOrdinary, kCopied, 1, 2},
        {CommandType::kTables, kConverted, 3, 4},
        {CommandType::kOrdinary, kCopied, 6, 6},
    };
    EXPECT_EQ(OutlineOf(Convert("LIST\n  x\nTABLES\n /TABLE a BY b\n\nLIST y\n", true)), expected);
}

// Data of more bytes than are handed over at a time.
TEST(CommandReportTest, TellsTheLinesOfLongData) {
    std::string text = "BEGIN DATA\n";
    for (int i = 0; i < 300000; ++i) text += i % 1000 == 0 ? "east\n" : "1 2\n";
    const std::vector<ExpectedReport> expected = {
        {CommandType::kInlineData, kCopied, 1, 300002},
        {CommandType::kOrdinary, kCopied, 303003, 303003},
    };
    EXPECT_EQ(OutlineOf(Convert(text + "END DATA.\n" + std::string(3000, '\n') + "LIST.\n")),
              expected);
}

// The lines of `text` from number `line` on, as many as `sample` has.
std::string LinesFrom(const std::string& text, long line, const std::string& sample) {
    std::size_t begin = 0;
    while (--line > 0) begin = text.find('\n', begin) + 1;
    return text.substr(begin, sample.size());
}

TEST(CommandReportTest, GivesTheTextsOfAConvertedCommand) {
    const Told told = Convert(
        "LIST.\n\nTABLES\n  /AUTOLABEL ON\n  /TABLE a BY b\n  /STATISTICS mean(c).\n"
        "BEGIN DATA\n1\n2\nEND DATA.\nTABLES /MRGROUP m 'M' x y /TABLE m.\n"
        "IGRAPH /X1=VAR(a) /Y=VAR(b) /BAR.\n");
    ASSERT_EQ(told.listener.kept.size(), 5U);
    const Kept& tables = told.listener.kept[1];
    EXPECT_EQ(tables.source, "TABLES\n  /AUTOLABEL ON\n  /TABLE a BY b\n  /STATISTICS mean(c).");
    EXPECT_EQ(tables.report.errorKind, ErrorKind::kNone);
    EXPECT_EQ(tables.message, "");
    for (const std::size_t index : {std::size_t{1}, std::size_t{3}, std::size_t{4}}) {
        const Kept& kept = told.listener.kept[index];
        ASSERT_FALSE(kept.generated.empty());
        EXPECT_EQ(kept.generated.back(), '.');
        EXPECT_EQ(LinesFrom(told.output, kept.report.generatedLine, kept.generated),
                  kept.generated);
    }
    EXPECT_EQ(told.listener.kept[3].generated.substr(0, 6), "MRSETS");
    EXPECT_EQ(told.listener.kept[4].generated.substr(0, 6), "GGRAPH");
}

TEST(CommandReportTest, GivesTheWarnings) {
    const Told told = Convert("TABLES /FORMAT CWIDTH(10) /TABLE a BY b.\nTABLES /TABLE a.\n");
    ASSERT_EQ(told.listener.kept.size(), 2U);
    const Kept& warned = told.listener.kept[0];
    ASSERT_EQ(warned.report.warnings.size(), 1U);
    EXPECT_NE(told.output.find("***** " + warned.report.warnings.front()), std::string::npos);
    // After the warning, not before it.
    EXPECT_EQ(LinesFrom(told.output, warned.report.generatedLine, warned.generated),
              warned.generated);
    EXPECT_TRUE(told.listener.kept[1].report.warnings.empty());
}

struct FailureCase {
    const char* name;
    std::string text;
    CommandOutcome outcome;
    ErrorKind kind;
    long line;
    int column;
    std::string message;
};

TEST(CommandReportTest, TellsWhyACommandFailed) {
    const FailureCase cases[] = {
        {"a subcommand", "LIST.\nTABLES\n /AUTOLABEL XYZ /TABLE a.\n", kFailed,
         ErrorKind::kSubcommandSyntax, 3, 15,
         "Unable to parse the syntax of the AUTOLABEL subcommand"},
        {"a function", "TABLES /TABLE a /STATISTICS foo(a).\n", kFailed,
         ErrorKind::kUnknownFunction, 1, 32, "Unrecognized summary function foo"},
        {"syntax of a graph", "LIST.\nIGRAPH /BAR.\n", kFailed, ErrorKind::kIgraphSyntax, 0, 0,
         "IGRAPH syntax is not valid, and can't be converted!"},
        {"a graph without equivalent", "IGRAPH /X1=VAR(a) /Y=VAR(b) /SPIKE.\n", kFailed,
         ErrorKind::kIgraphNotExpressible, 0, 0,
         "IGRAPH conversion is not possible: spikes have no GPL equivalent"},
        {"an open literal", "LIST.\n\nLIST\n x 'a\n", kUnreadable, ErrorKind::kUnclosedLiteral, 4,
         4, "Literal unclosed at the end of a line or command"},
        {"a number", "LIST.\n\nLIST\n x\n 1e.\n", kUnreadable, ErrorKind::kExponentWithoutDigits, 5,
         3, "Number has a trailing E[+|-] but no digits after that."},
        {"a character in the first line", "LIST.\nLIST \x02.\n", kUnreadable,
         ErrorKind::kInvalidCharacter, 2, 6,
         "Encountered a character that is not valid in Korvel syntax."},
    };
    for (const FailureCase& c : cases) {
        SCOPED_TRACE(c.name);
        const Told told = Convert(c.text);
        ASSERT_FALSE(told.listener.kept.empty());
        const Kept& kept = told.listener.kept.back();
        EXPECT_EQ(kept.report.outcome, c.outcome);
        EXPECT_EQ(NameOf(kept.report.errorKind), NameOf(c.kind));
        EXPECT_EQ(kept.report.errorLine, c.line);
        EXPECT_EQ(kept.report.errorColumn, c.column);
        EXPECT_EQ(kept.message, c.message);
        EXPECT_NE(told.output.find(c.message), std::string::npos);
        EXPECT_EQ(kept.generated, "");
        EXPECT_EQ(kept.report.generatedLine, 0);
        EXPECT_FALSE(kept.source.empty());
        EXPECT_NE(c.text.find(kept.source.substr(0, kept.source.size() - 1)), std::string::npos);
    }
}

// An assertion gives up the command without a reason that a user could be told.
TEST(CommandReportTest, AFailureMayHaveNoReason) {
    const Told told = Convert("TABLES /TABLE a + (STATISTICS) BY b + (STATISTICS).\n");
    ASSERT_EQ(told.listener.kept.size(), 1U);
    const Kept& kept = told.listener.kept.front();
    EXPECT_EQ(kept.report.outcome, kFailed);
    EXPECT_EQ(kept.report.errorKind, ErrorKind::kUnknown);
    EXPECT_EQ(kept.report.errorLine, 0);
    EXPECT_EQ(kept.message, "");
}

TEST(CommandReportTest, AnUnreadableCommandComesWithItsTextSoFar) {
    for (const bool batchMode : {false, true}) {
        const Told told = Convert("LIST.\nFREQ\n /x 'a\n /y.\nLIST.\n", batchMode);
        ASSERT_EQ(told.listener.kept.size(), 2U);
        const Kept& kept = told.listener.kept.back();
        EXPECT_EQ(kept.report.firstLine, 2);
        EXPECT_EQ(kept.report.errorLine, 3);
        EXPECT_EQ(kept.source.substr(0, 12), "FREQ\n /x 'a\n");
        EXPECT_EQ(told.outcome, Outcome::kTokenizingError);
    }
}

TEST(CommandReportTest, TellsTheEncoding) {
    EXPECT_EQ(Convert("* é.\n").listener.encodings, std::vector{TextEncoding::kUtf8});
    EXPECT_EQ(Convert("* \xE9.\n").listener.encodings, std::vector{TextEncoding::kWindows1252});
    EXPECT_EQ(Convert("").listener.encodings, std::vector{TextEncoding::kUtf8});
}

struct EncodingCase {
    TextEncoding encoding;
    std::string text;
    std::string expected;
};

TEST(CommandReportTest, TurnsTextsIntoUtf8) {
    const EncodingCase cases[] = {
        {TextEncoding::kUtf8, "", ""},
        {TextEncoding::kUtf8, "a\n\xC3\xA9\xF0\x9F\x98\x80z", "a\n\xC3\xA9\xF0\x9F\x98\x80z"},
        {TextEncoding::kUtf8, "a\xE9z\xC3", "a\uFFFDz\uFFFD"},
        {TextEncoding::kUtf8, "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
        {TextEncoding::kUtf8, "a\0b"s, "a\0b"s},
        {TextEncoding::kWindows1252, "a\xE9\xFF\xA0z", "a\u00E9\u00FF\u00A0z"},
        {TextEncoding::kWindows1252, "\x80\x9F\x92\x95", "\u20AC\u0178\u2019\u2022"},
        {TextEncoding::kWindows1252, "\x81\x8D", "\xC2\x81\xC2\x8D"},
    };
    for (const EncodingCase& c : cases) {
        EXPECT_EQ(ToUtf8(c.text, c.encoding), c.expected) << testing::PrintToString(c.text);
    }
    EXPECT_EQ(
        ToUtf8(std::string(100, 'x') + "\xE9" + std::string(100, 'y'), TextEncoding::kWindows1252),
        std::string(100, 'x') + "\u00E9" + std::string(100, 'y'));
}

}  // namespace
}  // namespace quillet
