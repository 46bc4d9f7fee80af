// Calls of macros in a conversion: what the library says of them, and what it puts in.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "quillet.h"
#include "support/rownames.h"

namespace quillet {
namespace {

// What an expansion came to, kept for longer than the call that tells of it.
struct KeptExpansion {
    long firstLine = 0;
    std::string macro;
    std::string text;
    bool isConverted = false;
    std::vector<CommandOutcome> outcomes;
    std::vector<long> errorLines;
    LegacyFindings found;
};

class Keeper final : public ConversionListener, public ExpansionListener, public TextOutput {
public:
    void OnResultLine(std::string_view line) override { m_resultLines.append(line); }
    void OnDiagnostic(std::string_view line) override { m_diagnostics.append(line); }
    void OnCommand(const CommandReport& report) override {
        if (report.outcome == CommandOutcome::kCopied) return;
        m_commands.push_back(report);
        m_macros.emplace_back(report.macro);
        m_generated.emplace_back(report.generated);
    }
    void OnExpandedCommand(const ExpandedCommand& command) override {
        KeptExpansion kept;
        kept.firstLine = command.firstLine;
        kept.macro = command.macro;
        kept.text = command.text;
        kept.isConverted = command.isConverted;
        for (const CommandReport& report : command.commands) {
            kept.outcomes.push_back(report.outcome);
            kept.errorLines.push_back(report.errorLine);
        }
        kept.found = command.found;
        m_expansions.push_back(std::move(kept));
    }
    bool Write(std::string_view bytes) override {
        m_output.append(bytes);
        return true;
    }

    std::vector<CommandReport> m_commands;  // their texts are gone
    std::vector<std::string> m_macros;
    std::vector<std::string> m_generated;
    std::vector<KeptExpansion> m_expansions;
    std::string m_output;
    std::string m_resultLines;
    std::string m_diagnostics;
};

struct Expanded {
    MacroExpansion macros;
    Outcome outcome = Outcome::kDone;
    LegacyFindings found;
    Keeper kept;
};

void Expand(std::string_view text, Expanded& result, const MacroOptions& options = {}) {
    result.macros = ExpandMacros(text, options);
    FindOptions search;
    search.conversion = options.conversion;
    result.outcome = ConvertExpanded(text, {result.kept, result.kept, result.kept}, result.macros,
                                     search, result.found);
    EXPECT_EQ(result.kept.m_diagnostics, "");
    const LegacyFindings& found = result.found;
    EXPECT_EQ(static_cast<long>(found.commands.size()),
              found.Count(LegacyOutcome::kConverted) + found.Count(LegacyOutcome::kFailed) +
                  found.Count(LegacyOutcome::kUnreadable) +
                  found.Count(LegacyOutcome::kOverlooked));
}

std::string Converted(std::string_view text, const Options& options = {}) {
    return ConvertText(text, options).output;
}

// The lines of `text` that do not begin with "COMMENT --" or " *".
std::string WithoutFrames(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        const std::string_view line = text.substr(0, end);
        if (!line.starts_with("COMMENT --") && !line.starts_with(" *")) result.append(line);
        text.remove_prefix(end);
    }
    return result;
}

constexpr std::string_view kDefinition =
    "DEFINE !f (x=!TOKENS(1))\n"
    "TABLES /TABLE=a BY !x.\n"
    "FREQ !x.\n"
    "!ENDDEFINE.\n";

TEST(ExpandedConversionTest, PutsTheExpansionAfterTheCall) {
    Expanded result;
    Expand(std::string(kDefinition) + "!f x=sex.\nDESCR b.\n", result);
    EXPECT_EQ(result.kept.m_output,
              std::string(kDefinition) +
                  " *!f x=sex.\n"
                  "COMMENT -- Expansion of the macro !f, called in line 5.\n" +
                  Converted("TABLES /TABLE=a BY sex.\nFREQ sex.\n") + "DESCR b.\n");
    ASSERT_EQ(result.kept.m_commands.size(), 1U);
    EXPECT_EQ(result.kept.m_macros[0], "!f");
    EXPECT_EQ(result.kept.m_commands[0].firstLine, 5);
    EXPECT_EQ(result.kept.m_commands[0].generatedLine, 12);
    EXPECT_EQ(result.found.Count(LegacyOutcome::kConverted), 1);
    EXPECT_EQ(result.found.commands.size(), 1U);
    ASSERT_EQ(result.found.findings.size(), 1U);
    EXPECT_EQ(result.found.findings[0].sentence,
              "TABLES in line 2 is in the macro !f of line 1, whose only call, in line 5, was "
              "expanded.");
    EXPECT_EQ(result.found.findings[0].text, "TABLES /TABLE=a BY !x.");
}

#define QUILLET_TABLE_OF(expression)                                  \
    "CTABLES\n  /MRSETS COUNTDUPLICATES=YES\n  /FORMAT EMPTY=BLANK\n" \
    "  /TABLE " expression                                            \
    "\n  /CATEGORIES VAR=ALL EMPTY=EXCLUDE MISSING=EXCLUDE\n"         \
    "  /SLABELS VISIBLE=NO.\n"

struct ExpandRow {
    const char* name;
    const char* text;
    const char* expected;  // without frames and what is commented out
    long converted;
    long failed;
    long overlooked;
};

void PrintTo(const ExpandRow& row, std::ostream* pStream) { *pStream << row.name; }

constexpr ExpandRow kExpandRows[] = {
    {"ACallWithoutLegacyCommandsStays", "DEFINE !f () FREQ a. !ENDDEFINE.\n!f.\n",
     "DEFINE !f () FREQ a. !ENDDEFINE.\n!f.\n", 0, 0, 0},
    {"AMacroWithoutCallIsOverlooked", "DEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE.\nFREQ b.\n",
     "DEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE.\nFREQ b.\n", 0, 0, 1},
    {"ABodyIsNotConverted", "DEFINE !f ()\nFREQ q.\nTABLES /TABLE=a.\n!ENDDEFINE.\n",
     "DEFINE !f ()\nFREQ q.\nTABLES /TABLE=a.\n!ENDDEFINE.\n", 0, 0, 1},
    {"ALegacyCommandWithACallIsExpandedWhole",
     "DEFINE @c () sex + age !ENDDEFINE.\nTABLES /TABLE=@c BY q1.\n",
     "DEFINE @c () sex + age !ENDDEFINE.\n" QUILLET_TABLE_OF("sex[C]+age[C] BY q1[C]"), 1, 0, 0},
    {"AFailedCommandCounts", "DEFINE !f ()\nTABLES /TABLE=.\n!ENDDEFINE.\n!f.\n",
     "DEFINE !f ()\nTABLES /TABLE=.\n!ENDDEFINE.\n"
     "***** Error while parsing or translating input syntax file. Line 4, column 1.\n"
     "***** Unable to parse the syntax of the TABLE subcommand.\n",
     0, 1, 0},
    {"ACallThatIsLeftLeavesTheBodyOverlooked",
     "DEFINE !f (!POSITIONAL !ENCLOSE('(',')'))\nTABLES /TABLE=!1.\n!ENDDEFINE.\n!f a.\n",
     "DEFINE !f (!POSITIONAL !ENCLOSE('(',')'))\nTABLES /TABLE=!1.\n!ENDDEFINE.\n!f a.\n", 0, 0, 1},
    {"AnExpansionThatIsNoSyntaxIsNotPutIn",
     "DEFINE !f (!POSITIONAL !CMDEND)\nTABLES /TABLE=a /TITLE=!UNQUOTE(!1).\n!ENDDEFINE.\n"
     "!f '''x'.\nFREQ a.\n",
     "DEFINE !f (!POSITIONAL !CMDEND)\nTABLES /TABLE=a /TITLE=!UNQUOTE(!1).\n!ENDDEFINE.\n"
     "!f '''x'.\nFREQ a.\n",
     0, 0, 1},
    {"AMacroInAMacroIsExpandedWithIt",
     "DEFINE !i ()\nTABLES /TABLE=a.\n!ENDDEFINE.\nDEFINE !o ()\n!i.\n!ENDDEFINE.\n!o.\n",
     "DEFINE !i ()\nTABLES /TABLE=a.\n!ENDDEFINE.\nDEFINE !o "
     "()\n!i.\n!ENDDEFINE.\n" QUILLET_TABLE_OF("a[C]"),
     1, 0, 0},
    {"ACommentAfterAPeriodDoesNotReachTheFrame",
     "DEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE. /* f */\nEXECUTE. /* x */\n!f. /* y */\n"
     "TABLES /TABLE=b.\n",
     "DEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE. /* f */.\nEXECUTE. /* x */.\n" QUILLET_TABLE_OF(
         "a[C]") QUILLET_TABLE_OF("b[C]"),
     2, 0, 0},
    {"ACallOnTheLineOfADefinition", "DEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE. !f.\n",
     "DEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE.\n" QUILLET_TABLE_OF("a[C]"), 1, 0, 0},
};

class ExpandedConversionRowsTest : public testing::TestWithParam<ExpandRow> {};

TEST_P(ExpandedConversionRowsTest, Becomes) {
    const ExpandRow& row = GetParam();
    Expanded result;
    Expand(row.text, result);
    EXPECT_EQ(WithoutFrames(result.kept.m_output), row.expected);
    EXPECT_EQ(result.found.Count(LegacyOutcome::kConverted), row.converted);
    EXPECT_EQ(result.found.Count(LegacyOutcome::kFailed), row.failed);
    EXPECT_EQ(result.found.Count(LegacyOutcome::kOverlooked), row.overlooked);
}

INSTANTIATE_TEST_SUITE_P(Rows, ExpandedConversionRowsTest, testing::ValuesIn(kExpandRows),
                         NameOfRow<ExpandRow>);

TEST(ExpandedConversionTest, TellsLinesAndColumnsOfTheSource) {
    Expanded result;
    Expand(
        "FREQ a.\n\nDEFINE !f (!POSITIONAL !TOKENS(1))\nTABLES\n  /TABLE=!1\n  BY.\n"
        "!ENDDEFINE.\n\n  !f\n    q.\nTABLES /TABLE=b BY.\n",
        result);
    ASSERT_EQ(result.kept.m_commands.size(), 2U);
    EXPECT_EQ(result.kept.m_commands[0].firstLine, 9);
    EXPECT_EQ(result.kept.m_commands[0].lastLine, 10);
    EXPECT_EQ(result.kept.m_commands[0].errorLine, 9);
    EXPECT_EQ(result.kept.m_commands[0].errorColumn, 3);
    EXPECT_NE(result.kept.m_output.find("Line 9, column 3."), std::string::npos);
    EXPECT_EQ(result.kept.m_commands[1].firstLine, 11);
    EXPECT_EQ(result.kept.m_commands[1].errorLine, 11);
    EXPECT_NE(result.kept.m_output.find("Line 11, column "), std::string::npos);
}

TEST(ExpandedConversionTest, StopsWhereTheTextIsNoSyntax) {
    Expanded result;
    Expand(std::string(kDefinition) + "FREQ 'a.\n!f x=b.\nTABLES /TABLE=c.\n", result);
    EXPECT_EQ(result.outcome, Outcome::kTokenizingError);
    EXPECT_NE(result.kept.m_output.find("Line 5, column "), std::string::npos);
    EXPECT_EQ(result.found.Count(LegacyOutcome::kConverted), 0);
    EXPECT_EQ(result.found.Count(LegacyOutcome::kOverlooked), 2);
    EXPECT_EQ(result.found.commands[0].firstLine, 2);
    EXPECT_EQ(result.found.commands[1].firstLine, 7);
}

TEST(ExpandedConversionTest, KeepsLineEndsAndByteOrderMark) {
    Expanded result;
    Expand(
        "\xEF\xBB\xBF"
        "DEFINE !f ()\r\nTABLES /TABLE=a.\r\n!ENDDEFINE.\r\n!f.\r\n",
        result);
    EXPECT_TRUE(
        result.kept.m_output.starts_with("\xEF\xBB\xBF"
                                         "DEFINE !f ()\r\nTABLES"));
    for (std::size_t at = result.kept.m_output.find('\n'); at != std::string::npos;
         at = result.kept.m_output.find('\n', at + 1)) {
        ASSERT_EQ(result.kept.m_output[at - 1], '\r');
    }
    EXPECT_EQ(result.found.Count(LegacyOutcome::kConverted), 1);
}

TEST(ExpandedConversionTest, EndsCallsInBatchLayoutWithTheirCommands) {
    MacroOptions options;
    options.conversion.batchMode = true;
    Expanded result;
    Expand(
        "DEFINE !f (!POSITIONAL !CMDEND)\n  TABLES /TABLE=!1\n    /TITLE='t'.\n  FREQ !1.\n"
        "!ENDDEFINE\n!f a\n  b\nFREQ c\n",
        result, options);
    ASSERT_EQ(result.kept.m_expansions.size(), 1U);
    EXPECT_EQ(result.kept.m_expansions[0].text, "TABLES /TABLE=a b\n    /TITLE='t'.\nFREQ a b.");
    EXPECT_NE(result.kept.m_output.find("\nFREQ a b.\nFREQ c.\n"), std::string::npos);
}

TEST(ExpandedConversionTest, ResolvesIncludes) {
    MacroOptions options;
    options.name = "main.sps";
    options.findInclude = [](std::string_view path, const std::string& from, IncludedText& file) {
        EXPECT_EQ(from, "main.sps");
        file.name = "lib/macros.sps";
        file.text = "* One.\nDEFINE !f ()\nTABLES /TABLE=a.\n!ENDDEFINE.\n";
        return path == "macros.sps";
    };
    Expanded result;
    Expand("INCLUDE 'macros.sps'.\nINCLUDE 'other.sps'.\n!f.\n", result, options);
    ASSERT_EQ(result.macros.macros.size(), 1U);
    EXPECT_EQ(result.macros.macros[0].file, "lib/macros.sps");
    EXPECT_EQ(result.macros.macros[0].firstLine, 2);
    EXPECT_EQ(result.macros.macros[0].lastLine, 4);
    ASSERT_EQ(result.macros.macros[0].commands.size(), 1U);
    EXPECT_EQ(result.macros.macros[0].commands[0].firstLine, 3);
    ASSERT_EQ(result.macros.faults.size(), 1U);
    EXPECT_EQ(result.macros.faults[0].kind, "include-not-found");
    EXPECT_EQ(result.macros.faults[0].line, 2);
    EXPECT_EQ(result.found.Count(LegacyOutcome::kConverted), 1);
}

TEST(ExpandedConversionTest, EqualsExpandingFirst) {
    std::string text(kDefinition);
    std::string expanded(kDefinition);
    for (const char* pName : {"a", "b1", "\xC3\xA4"}) {
        text.append("!f x=").append(pName).append(".\n");
        const std::string name(pName);
        expanded.append("TABLES /TABLE=a BY ").append(name).append(".\nFREQ ").append(name);
        expanded.append(".\n");
    }
    Expanded result;
    Expand(text, result);
    EXPECT_EQ(
        WithoutFrames(result.kept.m_output),
        std::string(kDefinition) + WithoutFrames(Converted(expanded.substr(kDefinition.size()))));
}

TEST(ConvertExpansionsTest, TellsWhatEachCallWouldGive) {
    const std::string text = std::string(kDefinition) + "!f x=a.\nFREQ c.\n!f x='.\n!f x=.\n";
    const MacroExpansion expansion = ExpandMacros(text, {});
    Keeper keeper;
    ConvertExpansions(text, expansion, {}, keeper);
    ASSERT_EQ(keeper.m_expansions.size(), 3U);
    EXPECT_EQ(keeper.m_expansions[0].firstLine, 5);
    EXPECT_EQ(keeper.m_expansions[0].macro, "!f");
    EXPECT_TRUE(keeper.m_expansions[0].isConverted);
    EXPECT_EQ(keeper.m_expansions[0].outcomes,
              std::vector<CommandOutcome>{CommandOutcome::kConverted});
    EXPECT_FALSE(keeper.m_expansions[1].isConverted);
    EXPECT_EQ(keeper.m_expansions[2].outcomes,
              std::vector<CommandOutcome>{CommandOutcome::kFailed});
    EXPECT_EQ(keeper.m_expansions[2].errorLines, std::vector<long>{8});
    EXPECT_EQ(keeper.m_output, "");
}

}  // namespace
}  // namespace quillet
